#include "tests/app/lifecycle_fixture.h"

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::LifecycleTest;

class LifecycleRecovery : public LifecycleTest {};

TEST_F(LifecycleRecovery, AnUnnamedProjectKilledAfterAnAutoSaveComesBack) {
    ASSERT_TRUE(Settings().MyWriteAppProfileString("Options", "AutoSaveInterval", "1"));
    {
        auto killed = Start();
        killed->Lifecycle.RunStartFile("");
        EXPECT_FALSE(killed->Lifecycle.ProjectIsLoaded());
        killed->Lifecycle.New();
        killed->Model->ProjectData.Title = "Typed before the auto-save";
        killed->Model->PipeRecord[1].BegNode = "1";
        killed->Model->PipeRecord[1].EndNode = "2";
        killed->Model->NumberOfPipeRows = 1;
        killed->Lifecycle.AutoSaveTick();
        killed->Model->ProjectData.Title = "Typed after it";
        // Killed: no way down.
    }
    ASSERT_TRUE(Exists(Projects() / "Untitled.tmp"));

    // Cancel leaves the file for a later start.
    auto declined = Start();
    declined->Dialogs.Script(Answer::Cancel);
    declined->Lifecycle.RunStartFile("");
    ASSERT_EQ(declined->Dialogs.All().size(), 1u);
    EXPECT_EQ(declined->Dialogs.LastTitle(), "Unsaved Temporary File Exists");
    EXPECT_EQ(declined->Dialogs.LastText(),
              "An unsaved temporary file left by a previous QUENCH session has been found.  This "
              "is a file the was in the process of being edited when QUENCH or Windows "
              "encountered a problem.  QUENCH will attempt to recover this file.");
    EXPECT_FALSE(declined->Lifecycle.ProjectIsLoaded());
    declined->Lifecycle.Unload();
    ASSERT_TRUE(Exists(Projects() / "Untitled.tmp"));

    auto session = Start();
    session->Lifecycle.RunStartFile("");
    ProjectLifecycle& lifecycle = session->Lifecycle;
    ASSERT_TRUE(lifecycle.ProjectIsLoaded());
    EXPECT_FALSE(lifecycle.ProjectClosing());
    EXPECT_EQ(lifecycle.Title(), "Quench - (UNTITLED)");
    EXPECT_EQ(session->Model->ProjectData.Title, "Typed before the auto-save");
    EXPECT_EQ(session->Model->PipeRecord[1].EndNode, "2");
    EXPECT_TRUE(Exists(Projects() / "Untitled.hid"));

    // Saved under a name, it stops being the unnamed project.
    session->Host.SaveFiles.push_back(Projects() / "recovered");
    EXPECT_TRUE(lifecycle.Save());
    EXPECT_EQ(TitleIn(Projects() / "recovered.qnw"), "Typed before the auto-save");
    ASSERT_TRUE(lifecycle.QueryUnload());
    lifecycle.Unload();
    EXPECT_FALSE(Exists(Projects() / "Untitled.tmp"));
    auto next = Start();
    next->Lifecycle.RunStartFile("");
    EXPECT_FALSE(next->Lifecycle.ProjectIsLoaded());
    EXPECT_TRUE(next->Dialogs.Empty());
}

TEST_F(LifecycleRecovery, TheStartFileRoutine) {
    const fs::path file = WriteSample("plant.qnw", "Plant");
    auto session = Start();
    // A project file on the command line, relative to the projects directory.
    session->Lifecycle.RunStartFile("  plant.qnw ");
    EXPECT_TRUE(session->Lifecycle.ProjectIsLoaded());
    EXPECT_EQ(session->Lifecycle.ProjectFileName(), file);
    ASSERT_TRUE(session->Lifecycle.QueryUnload());
    session->Lifecycle.Unload();
    EXPECT_EQ(LastOpened(Settings()), file.string());
    EXPECT_FALSE(Exists(Projects() / "plant.tmp"));

    // Any other name follows the old ".TEM" rule and is not found.
    session = Start();
    session->Lifecycle.RunStartFile("plant");
    EXPECT_EQ(session->Dialogs.LastText(), "Error: File not found.");
    EXPECT_FALSE(session->Lifecycle.ProjectIsLoaded());

    // The last project, when the options ask for it.
    session = Start();
    ASSERT_TRUE(Settings().MyWriteAppProfileBoolean("Options", "OpenLastProject", true));
    session->Lifecycle.RunStartFile("");
    EXPECT_TRUE(session->Lifecycle.ProjectIsLoaded());
    EXPECT_EQ(session->Lifecycle.ProjectFileName(), file);
}

} // namespace
} // namespace quench
