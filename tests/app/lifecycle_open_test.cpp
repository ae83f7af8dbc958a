#include "tests/app/lifecycle_fixture.h"

#include <fstream>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::LifecycleTest;

class LifecycleOpen : public LifecycleTest {
protected:
    // A file whose pipe count is beyond the capacity: it would never be written again.
    fs::path WriteDamagedSample(const std::string& name) {
        const fs::path file = WriteSample(name, "Damaged");
        std::string bytes;
        EXPECT_TRUE(ReadWholeFile(file, bytes));
        bytes.at(5000) = static_cast<char>(0xD0); // NumberOfPipeRows = 2000
        bytes.at(5001) = static_cast<char>(0x07);
        EXPECT_TRUE(WriteFileAtomically(file, bytes));
        return file;
    }
};

TEST_F(LifecycleOpen, OpenWorksOnACopyAndSaveCopiesItBack) {
    const fs::path file = WriteSample("plant.qnw", "Plant");
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    // The file dialog; a name without an extension gets ".qnw".
    session->Host.OpenFiles.push_back(Projects() / "plant");
    lifecycle.Open();
    ASSERT_EQ(session->Host.Requests.size(), 1u);
    EXPECT_EQ(session->Host.Requests[0].Title, "Open");
    EXPECT_EQ(session->Host.Requests[0].FilterName, "QUENCH File (*.QNW)");
    EXPECT_EQ(session->Host.Requests[0].Pattern, "*.QNW");
    ASSERT_TRUE(lifecycle.ProjectIsLoaded());
    EXPECT_TRUE(session->Dialogs.Empty());
    EXPECT_EQ(lifecycle.ProjectFileName(), file);
    EXPECT_EQ(lifecycle.TempFileName(), Projects() / "plant.tmp");
    EXPECT_EQ(lifecycle.BackupFileName(), Projects() / "plant.bak");
    EXPECT_EQ(lifecycle.Title(), "Quench - " + file.string());
    EXPECT_TRUE(Exists(lifecycle.TempFileName()));
    EXPECT_EQ(session->Model->ProjectData.Title, "Plant");
    EXPECT_EQ(session->Model->PipeRecord[1].BegNode, "10");
    EXPECT_EQ(lifecycle.RecentFileList(), std::vector<std::string>{file.string()});

    // Auto-save writes the working file only, at the interval's tick.
    ASSERT_TRUE(Settings().MyWriteAppProfileString("Options", "AutoSaveInterval", "2"));
    session->Model->ProjectData.Title = "Plant, revised";
    lifecycle.AutoSaveTick();
    EXPECT_EQ(lifecycle.AutoSaveCounter(), 1);
    EXPECT_EQ(TitleIn(lifecycle.TempFileName()), "Plant");
    lifecycle.AutoSaveTick();
    EXPECT_EQ(lifecycle.AutoSaveCounter(), 0);
    EXPECT_EQ(session->Host.StatusTexts, (std::vector<std::string>{"Autosaving...", ""}));
    EXPECT_EQ(TitleIn(lifecycle.TempFileName()), "Plant, revised");
    EXPECT_EQ(TitleIn(file), "Plant");
    // Auto-save switched off counts nothing.
    ASSERT_TRUE(Settings().MyWriteAppProfileBoolean("Options", "AutoSave", false));
    lifecycle.AutoSaveTick();
    EXPECT_FALSE(lifecycle.AutoSaveIsOn());
    EXPECT_EQ(lifecycle.AutoSaveCounter(), 0);

    EXPECT_TRUE(lifecycle.Save());
    EXPECT_EQ(TitleIn(file), "Plant, revised");
    EXPECT_TRUE(session->Dialogs.Empty());
    EXPECT_FALSE(Exists(Projects() / "plant.bak")); // the backup name is only kept
}

TEST_F(LifecycleOpen, SaveAsRefusesAnotherExtensionAndLeavesTheOldWorkingFile) {
    const fs::path file = WriteSample("plant.qnw", "Plant");
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    lifecycle.Open(file);
    session->Model->ProjectData.Title = "Plant B";
    session->Host.SaveFiles = {Projects() / "plant-b.txt", Projects() / "plant-b.QNW"};
    EXPECT_TRUE(lifecycle.SaveAs());
    ASSERT_EQ(session->Dialogs.All().size(), 1u);
    EXPECT_EQ(session->Dialogs.LastTitle(), "File Save As Error");
    EXPECT_EQ(session->Dialogs.LastText(),
              "It is not necessary to specify the filename's extension.  Although, if you "
              "specify the filename's extension, it must be \"qnw\".");
    EXPECT_EQ(session->Host.Requests.size(), 2u);
    EXPECT_FALSE(Exists(Projects() / "plant-b.txt"));
    EXPECT_EQ(lifecycle.ProjectFileName(), Projects() / "plant-b.QNW");
    EXPECT_EQ(lifecycle.TempFileName(), Projects() / "plant-b.tmp");
    EXPECT_EQ(TitleIn(Projects() / "plant-b.QNW"), "Plant B");
    EXPECT_EQ(TitleIn(Projects() / "plant-b.tmp"), "Plant B");
    EXPECT_TRUE(Exists(Projects() / "plant.tmp"));
    EXPECT_EQ(TitleIn(file), "Plant");
    EXPECT_EQ(lifecycle.RecentFileList().front(), (Projects() / "plant-b.QNW").string());

    // Giving up the dialog saves nothing.
    EXPECT_FALSE(lifecycle.SaveAs());
}

TEST_F(LifecycleOpen, FilesThatCannotBeOpenedLeaveTheOpenProject) {
    const fs::path file = WriteSample("plant.qnw", "Plant");
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    lifecycle.Open(file);
    session->Model->ProjectData.Title = "Plant, typed";

    lifecycle.Open(Projects() / "missing.qnw");
    EXPECT_EQ(session->Dialogs.LastText(), "Error: File not found.");

    std::ofstream(Projects() / "old.qnd") << "legacy";
    lifecycle.Open(Projects() / "old.qnd");
    EXPECT_EQ(session->Dialogs.LastText(),
              "This is a DOS QUENCH Project File.  Please select Convert DOS QUENCH Project "
              "Files from the File menu.");

    const fs::path damaged = WriteDamagedSample("damaged.qnw");
    lifecycle.Open(damaged);
    EXPECT_EQ(session->Dialogs.LastTitle(), "Project File Open Error");
    EXPECT_EQ(session->Dialogs.LastText(),
              "An error occured while trying to open your project.  The project that was open "
              "when you attempted this operation is the current project.");
    EXPECT_FALSE(Exists(Projects() / "damaged.tmp"));

    // A directory with a project's name is no project either.
    fs::create_directories(Projects() / "folder.qnw");
    lifecycle.Open(Projects() / "folder.qnw");
    EXPECT_EQ(session->Dialogs.LastText(), "Error: File not found.");

    EXPECT_EQ(session->Dialogs.All().size(), 4u);
    EXPECT_TRUE(lifecycle.ProjectIsLoaded());
    EXPECT_EQ(lifecycle.ProjectFileName(), file);
    EXPECT_EQ(session->Model->ProjectData.Title, "Plant, typed");
    EXPECT_EQ(lifecycle.RecentFileList(), std::vector<std::string>{file.string()});
}

// With nothing open the file is read straight into the model: a damaged one must still leave
// nothing behind, and the next file opens as if the first had never been tried.
TEST_F(LifecycleOpen, WithNothingOpenADamagedFileLeavesNothingOpen) {
    const fs::path damaged = WriteDamagedSample("damaged.qnw");
    const fs::path file = WriteSample("plant.qnw", "Plant");
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    lifecycle.Open(damaged);
    EXPECT_EQ(session->Dialogs.LastTitle(), "Project File Open Error");
    EXPECT_FALSE(lifecycle.ProjectIsLoaded());
    EXPECT_FALSE(Exists(Projects() / "damaged.tmp"));
    EXPECT_EQ(session->Model->ProjectData.Title, "");
    EXPECT_EQ(session->Model->NumberOfPipeRows, 0);

    lifecycle.Open(file);
    ASSERT_TRUE(lifecycle.ProjectIsLoaded());
    EXPECT_EQ(session->Model->ProjectData.Title, "Plant");
    EXPECT_EQ(session->Model->PipeRecord[1].BegNode, "10");
    EXPECT_EQ(TitleIn(lifecycle.TempFileName()), "Plant");

    // Opened over an open project, the same bytes are tried apart and then read into the model.
    lifecycle.Open(damaged);
    EXPECT_EQ(session->Model->ProjectData.Title, "Plant");
    EXPECT_TRUE(lifecycle.ProjectIsLoaded());
}

TEST_F(LifecycleOpen, OpeningAnotherProjectAsksAboutTheOpenOne) {
    const fs::path plant = WriteSample("plant.qnw", "Plant");
    const fs::path office = WriteSample("office.qnw", "Office");
    auto session = Start();
    ProjectLifecycle& lifecycle = session->Lifecycle;
    lifecycle.Open(plant);
    session->Model->ProjectData.Title = "Plant, typed";

    // Cancel: nothing else happens.
    session->Dialogs.Script(Answer::Cancel);
    lifecycle.Open(office);
    EXPECT_EQ(lifecycle.ProjectFileName(), plant);
    EXPECT_EQ(session->Model->ProjectData.Title, "Plant, typed");

    // Yes saves it and opens the other.
    session->Dialogs.Script(Answer::Yes);
    lifecycle.Open(office);
    EXPECT_EQ(lifecycle.ProjectFileName(), office);
    EXPECT_EQ(session->Model->ProjectData.Title, "Office");
    EXPECT_EQ(TitleIn(plant), "Plant, typed");
    EXPECT_FALSE(Exists(Projects() / "plant.tmp"));
    EXPECT_EQ(lifecycle.RecentFileList(),
              (std::vector<std::string>{office.string(), plant.string()}));

    // The recent list opens by place; dropping two files opens none.
    session->Dialogs.Script(Answer::No);
    lifecycle.OpenRecentFile(1);
    EXPECT_EQ(lifecycle.ProjectFileName(), plant);
    lifecycle.DropFiles({office, plant});
    EXPECT_EQ(session->Dialogs.LastTitle(), "Too Many Files Dropped");
    EXPECT_EQ(session->Dialogs.LastText(), "Only one file may be dropped into QUENCH at a time.");
    EXPECT_EQ(lifecycle.ProjectFileName(), plant);
    lifecycle.DropFiles({Projects() / "notes.txt"});
    EXPECT_EQ(lifecycle.ProjectFileName(), plant);
    lifecycle.DropFiles({office});
    EXPECT_EQ(lifecycle.ProjectFileName(), office);
}

TEST_F(LifecycleOpen, AWorkingFileLeftBehindOffersThreeChoices) {
    const fs::path file = WriteSample("plant.qnw", "Plant");
    const fs::path working = Projects() / "plant.tmp";
    ASSERT_TRUE(Settings().MyWriteAppProfileString("Options", "AutoSaveInterval", "1"));
    // A session edits, auto-saves and is killed: no way down runs.
    const auto killedAfterAutoSave = [&] {
        auto killed = Start();
        killed->Host.TempChoices = {TempFileChoice::OpenSaved};
        killed->Lifecycle.Open(file);
        killed->Model->ProjectData.Title = "Plant, unsaved";
        killed->Lifecycle.AutoSaveTick();
    };
    killedAfterAutoSave();
    ASSERT_EQ(TitleIn(working), "Plant, unsaved");
    ASSERT_EQ(TitleIn(file), "Plant");

    // Do not open: nothing is touched, and the way down leaves the file for later.
    auto session = Start();
    session->Host.TempChoices = {TempFileChoice::DoNotOpen};
    session->Lifecycle.Open(file);
    ASSERT_EQ(session->Host.TempTitles.size(), 1u);
    EXPECT_EQ(session->Host.TempTitles[0], "Temporary File Detected:  " + file.string());
    EXPECT_FALSE(session->Lifecycle.ProjectIsLoaded());
    EXPECT_TRUE(session->Lifecycle.QueryUnload());
    session->Lifecycle.Unload();
    EXPECT_EQ(TitleIn(working), "Plant, unsaved");
    EXPECT_EQ(TitleIn(file), "Plant");

    // Choosing not to open, with another project open before, leaves no project and no tools.
    session = Start();
    const fs::path other = WriteSample("other.qnw", "Other");
    session->Lifecycle.Open(other);
    ASSERT_TRUE(session->Lifecycle.Commands().IsEnabled("ToolSave"));
    session->Lifecycle.Open(file);
    EXPECT_FALSE(session->Lifecycle.ProjectIsLoaded());
    EXPECT_FALSE(session->Lifecycle.Commands().IsEnabled("ToolSave"));
    EXPECT_EQ(session->Lifecycle.Title(), "Quench");
    EXPECT_FALSE(Exists(Projects() / "other.tmp"));
    EXPECT_EQ(TitleIn(working), "Plant, unsaved");

    // The saved version: the working file is replaced by the named file.
    session = Start();
    session->Host.TempChoices = {TempFileChoice::OpenSaved};
    session->Lifecycle.Open(file);
    EXPECT_TRUE(session->Lifecycle.ProjectIsLoaded());
    EXPECT_EQ(session->Model->ProjectData.Title, "Plant");
    EXPECT_EQ(TitleIn(working), "Plant");
    EXPECT_TRUE(session->Dialogs.Empty());

    // The working file, recommended: the edits come back and become the named file too.
    killedAfterAutoSave();
    session = Start();
    session->Host.TempChoices = {TempFileChoice::OpenTemporary};
    session->Lifecycle.Open(file);
    EXPECT_TRUE(session->Lifecycle.ProjectIsLoaded());
    EXPECT_EQ(session->Model->ProjectData.Title, "Plant, unsaved");
    EXPECT_EQ(TitleIn(file), "Plant, unsaved");
    EXPECT_TRUE(session->Dialogs.Empty());
}

} // namespace
} // namespace quench
