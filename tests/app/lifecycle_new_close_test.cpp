#include "tests/app/lifecycle_fixture.h"

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::LifecycleTest;

class LifecycleNewClose : public LifecycleTest {};

TEST_F(LifecycleNewClose, NewMakesTheUnnamedProject) {
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    EXPECT_EQ(lifecycle.Title(), "Quench");
    EXPECT_FALSE(lifecycle.Commands().IsEnabled("ToolSave"));

    session->Model->ProjectData.Title = "left over";
    lifecycle.New();
    EXPECT_TRUE(lifecycle.ProjectIsLoaded());
    EXPECT_EQ(lifecycle.ProjectFileName(), Projects() / "Untitled.hid");
    EXPECT_EQ(lifecycle.TempFileName(), Projects() / "Untitled.tmp");
    EXPECT_EQ(lifecycle.Title(), "Quench - (UNTITLED)");
    EXPECT_TRUE(lifecycle.Commands().IsEnabled("ToolSave"));
    EXPECT_TRUE(lifecycle.Commands().IsEnabled("ToolPipeDB"));
    EXPECT_EQ(session->Model->ProjectData.Title, "");
    EXPECT_TRUE(Exists(Projects() / "Untitled.tmp"));
    EXPECT_EQ(ProjectPath(Settings()), Projects().string());
    EXPECT_EQ(session->Host.BusyDepth, 0);

    // An untouched new project closes without a question.
    EXPECT_TRUE(lifecycle.Close());
    EXPECT_TRUE(session->Dialogs.Empty());
    EXPECT_FALSE(lifecycle.ProjectIsLoaded());
    EXPECT_FALSE(Exists(Projects() / "Untitled.tmp"));
    EXPECT_FALSE(lifecycle.Commands().IsEnabled("ToolSave"));
    EXPECT_TRUE(lifecycle.Commands().IsEnabled("ToolPipeDB"));
    EXPECT_EQ(LastOpened(Settings()), "");
}

TEST_F(LifecycleNewClose, CloseAfterAnEditAsksAndFollowsEachAnswer) {
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    lifecycle.New();
    session->Model->ProjectData.Title = "Warehouse";
    session->Model->InputChanged = True;

    // Cancel: the project stays open with its working file.
    session->Dialogs.Script(Answer::Cancel);
    EXPECT_FALSE(lifecycle.Close());
    ASSERT_EQ(session->Dialogs.All().size(), 1u);
    EXPECT_EQ(session->Dialogs.LastTitle(), "Project has changed");
    EXPECT_EQ(session->Dialogs.LastText(),
              "The project file has changed.  Do you wish to save this project?");
    EXPECT_TRUE(lifecycle.ProjectIsLoaded());
    EXPECT_FALSE(lifecycle.KeepProjectOpen());
    EXPECT_EQ(session->Model->ProjectData.Title, "Warehouse");
    EXPECT_TRUE(Exists(lifecycle.TempFileName()));

    // Yes on an unnamed project is Save As; giving up the name dialog keeps the project open.
    session->Dialogs.Script(Answer::Yes);
    EXPECT_FALSE(lifecycle.Close());
    EXPECT_TRUE(lifecycle.ProjectIsLoaded());
    ASSERT_EQ(session->Host.Requests.size(), 1u);
    EXPECT_EQ(session->Host.Requests[0].Title, "Save File As...");
    EXPECT_EQ(session->Host.Requests[0].FilterName, "QUENCH File (*.qnw)");
    EXPECT_EQ(session->Host.Requests[0].DefaultExtension, "qnw");

    // Yes with a name: the project is saved there and closed.
    session->Dialogs.Script(Answer::Yes);
    session->Host.SaveFiles.push_back(Projects() / "warehouse");
    EXPECT_TRUE(lifecycle.Close());
    EXPECT_FALSE(lifecycle.ProjectIsLoaded());
    EXPECT_EQ(TitleIn(Projects() / "warehouse.qnw"), "Warehouse");
    EXPECT_FALSE(Exists(Projects() / "warehouse.tmp"));
    EXPECT_EQ(LastOpened(Settings()), (Projects() / "warehouse.qnw").string());
    EXPECT_EQ(lifecycle.RecentFileList(),
              std::vector<std::string>{(Projects() / "warehouse.qnw").string()});
}

TEST_F(LifecycleNewClose, NoDiscardsTheWorkingFile) {
    const fs::path file = WriteSample("plant.qnw", "Plant");
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    lifecycle.Open(file);
    ASSERT_TRUE(lifecycle.ProjectIsLoaded());
    session->Model->ProjectData.Title = "Plant, changed";
    session->Dialogs.Script(Answer::No);
    EXPECT_TRUE(lifecycle.Close());
    EXPECT_FALSE(Exists(Projects() / "plant.tmp"));
    EXPECT_EQ(TitleIn(file), "Plant");
    // The named file is what a later open shows.
    lifecycle.Open(file);
    EXPECT_EQ(session->Model->ProjectData.Title, "Plant");
    EXPECT_EQ(ProjectPath(Settings()), Projects().string());
}

TEST_F(LifecycleNewClose, NewTakesTheTemplatesGeneralDataAndSettingsWithoutItsNetwork) {
    const fs::path autoload = WriteSample("AUTOLOAD.QNW", "Office standard");
    {
        // The template's calculation settings.
        auto project = std::make_unique<Project>();
        ASSERT_TRUE(ReadProject(*project, autoload));
        project->CalculationData.MinPressureAtHMDNode = 7;
        project->CalculationData.InitialDampingFactor = 12;
        ASSERT_EQ(WriteProject(*project, autoload), WriteOutcome::Written);
    }
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    lifecycle.New();
    EXPECT_EQ(session->Model->ProjectData.Title, "");

    ASSERT_TRUE(Settings().MyWriteAppProfileBoolean("Options", "NewProjectsCopyAutoload", true));
    lifecycle.New();
    const Project& model = *session->Model;
    EXPECT_EQ(model.ProjectData.Title, "Office standard");
    EXPECT_FLOAT_EQ(model.CalculationData.MinPressureAtHMDNode, 7);
    EXPECT_EQ(model.CalculationData.InitialDampingFactor, 12);
    EXPECT_EQ(model.NumberOfPipeRows, 0);
    EXPECT_EQ(model.PipeRecord[1].BegNode, "");
    EXPECT_FALSE(model.LoadingTemplate);
    // The template itself is untouched.
    EXPECT_EQ(TitleIn(autoload), "Office standard");
}

TEST_F(LifecycleNewClose, ScreensThatWereOpenComeBackWithTheNextProject) {
    const fs::path file = WriteSample("plant.qnw", "Plant");
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    lifecycle.Open(file);
    EXPECT_TRUE(session->Host.OpenedScreens.empty());
    session->Host.Screens = {std::string(CalculationScreenName)};
    EXPECT_TRUE(lifecycle.Close());
    EXPECT_EQ(TabOnTop(Settings(), "Calculation"), 1);
    EXPECT_EQ(TabOnTop(Settings(), "GPDForm"), 0);
    EXPECT_TRUE(session->Host.Screens.empty());

    lifecycle.Open(file);
    EXPECT_EQ(session->Host.OpenedScreens,
              std::vector<std::string>{std::string(CalculationScreenName)});
}

TEST_F(LifecycleNewClose, TheWayDownRemovesOnlyThisSessionsFiles) {
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    lifecycle.New();
    session->Dialogs.Script(Answer::Yes);
    session->Model->InputChanged = True;
    session->Host.SaveFiles.push_back(Projects() / "site.qnw");
    ASSERT_TRUE(lifecycle.QueryUnload());
    lifecycle.Unload();
    EXPECT_TRUE(Exists(Projects() / "site.qnw"));
    EXPECT_FALSE(Exists(Projects() / "site.tmp"));
    EXPECT_FALSE(Exists(Projects() / "Untitled.tmp"));
    EXPECT_FALSE(Exists(Projects() / "Untitled.hid"));
    EXPECT_EQ(LastOpened(Settings()), (Projects() / "site.qnw").string());

    // Cancel at the question keeps the program running with the project.
    auto second = Start();
    second->Lifecycle.Open(Projects() / "site.qnw");
    second->Model->InputChanged = True;
    second->Dialogs.Script(Answer::Cancel);
    EXPECT_FALSE(second->Lifecycle.QueryUnload());
    EXPECT_TRUE(second->Lifecycle.ProjectIsLoaded());
    EXPECT_TRUE(Exists(Projects() / "site.tmp"));
}

} // namespace
} // namespace quench
