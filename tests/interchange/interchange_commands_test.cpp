#include "app/interchange_commands.h"
#include "core/atomic_write.h"
#include "core/project_file.h"
#include "interchange/legacy_project.h"
#include "tests/interchange/test_drawing.h"
#include "tests/support/network_builder.h"
#include "tests/support/network_shapes.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <deque>
#include <memory>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

// A desktop whose file dialogs answer from a script and that records what it was asked.
class ScriptedHost final : public LifecycleHost, public DrawingOptionsChooser {
public:
    std::deque<std::optional<std::filesystem::path>> Files;
    std::vector<std::string> Titles;
    std::vector<std::string> Screens;
    std::vector<std::string> Status;
    std::optional<DrawingImportOptions> Options = DrawingImportOptions{};

    std::optional<std::filesystem::path> ChooseOpenFile(const FileDialogRequest& r) override {
        return Next(r);
    }
    std::optional<std::filesystem::path> ChooseSaveFile(const FileDialogRequest& r) override {
        return Next(r);
    }
    void OpenProjectScreen(std::string_view screen) override { Screens.emplace_back(screen); }
    void ShowStatusText(std::string_view text) override { Status.emplace_back(text); }
    std::optional<DrawingImportOptions> ChooseDrawingOptions(const DrawingImportOptions&) override {
        return Options;
    }

private:
    std::optional<std::filesystem::path> Next(const FileDialogRequest& request) {
        Titles.push_back(request.Title + " | " + request.FilterName);
        if (Files.empty()) {
            return std::nullopt;
        }
        auto file = Files.front();
        Files.pop_front();
        return file;
    }
};

struct Desk {
    ScratchDirectory Scratch;
    std::unique_ptr<Project> Model = std::make_unique<Project>();
    ScriptedDialogs Dialogs;
    ScriptedHost Host;
    ProjectLifecycle Lifecycle{*Model, Dialogs, Host, IniFileHandler(Scratch / "quench.ini"),
                               Scratch.Path()};
    InterchangeCommands Commands{
        *Model, Dialogs, Host, Lifecycle, DefaultLibrary(), IniFileHandler(Scratch / "quench.ini"),
        Host};
};

TEST(InterchangeCommands, CadDataAndDrawingImportsBecomeNewProjects) {
    Desk desk;
    desk.Host.Files = {SourceDirectory() / "examples" / "riser_and_branch.qnc"};
    desk.Commands.OpenCadDataFile();
    EXPECT_EQ(desk.Host.Titles.at(0), "Open Autocad File... | Autocad File (*.qnc)");
    ASSERT_TRUE(desk.Lifecycle.ProjectIsLoaded());
    EXPECT_TRUE(desk.Lifecycle.IsUntitled());
    EXPECT_EQ(desk.Model->NumberOfPipeRows, 8);
    EXPECT_EQ(desk.Model->InputChanged, 1);
    EXPECT_EQ(desk.Host.Screens, (std::vector<std::string>{"frmEEPipeData", "frmCalculation"}));

    desk.Host.Screens.clear();
    desk.Dialogs.Script(Answer::No); // do not save the imported project
    desk.Host.Files = {SourceDirectory() / "examples" / "small_tree.dxf"};
    desk.Commands.ReadFromDrawing();
    EXPECT_EQ(desk.Model->NumberOfPipeRows, 11);
    EXPECT_EQ(desk.Dialogs.LastTitle(), "DXF Drawing Import Options");
    EXPECT_NE(desk.Dialogs.LastText().find("8 sprinklers"), std::string::npos);
    EXPECT_EQ(desk.Host.Status.front(),
              "Reading Drawing... Reading the pipe network from the DXF drawing");
    // The options chosen are kept for the next time.
    const auto kept = ReadDrawingOptions(IniFileHandler(desk.Scratch / "quench.ini"));
    EXPECT_EQ(kept.PipeLayers, std::vector<std::string>{"PIPE"});
    EXPECT_DOUBLE_EQ(kept.SnapFeet, 0.01);

    // A refused file says why and keeps the open project.
    ASSERT_TRUE(WriteFileAtomically(desk.Scratch / "big.qnc", "2000,0,0,1,0,0\n"));
    desk.Host.Files = {desk.Scratch / "big.qnc"};
    desk.Commands.OpenCadDataFile();
    EXPECT_EQ(desk.Dialogs.LastTitle(), "Autocad File Not Loaded");
    EXPECT_EQ(desk.Model->NumberOfPipeRows, 11);
    // Cancel at the file dialog does nothing.
    desk.Commands.ReadFromDrawing();
    EXPECT_EQ(desk.Model->NumberOfPipeRows, 11);
}

TEST(InterchangeCommands, LegacyProjectsInAndOut) {
    Desk desk;
    const auto source = std::make_unique<Project>();
    NetworkBuilder network(*source);
    BuildBranchLine(network);
    network.SupplyMode(50);
    ASSERT_TRUE(WriteDosFile(*source, desk.Scratch / "old.qnd"));

    desk.Host.Files = {desk.Scratch / "old.qnd", desk.Scratch / "new.qnw"};
    desk.Commands.OpenDosProject();
    EXPECT_EQ(desk.Host.Titles.at(0), "Open DOS QUENCH Project File... | DOS QUENCH File (*.qnd)");
    EXPECT_EQ(desk.Host.Titles.at(1), "Save DOS QUENCH Project file as Windows QUENCH Project "
                                      "File... | QUENCH File (*.qnw)");
    EXPECT_EQ(desk.Host.Status.front(), "Converting... Converting DOS QUENCH Project File to "
                                        "Windows QUENCH Project File");
    ASSERT_TRUE(desk.Lifecycle.ProjectIsLoaded());
    EXPECT_EQ(desk.Lifecycle.ProjectFileName(), desk.Scratch / "new.qnw");
    EXPECT_EQ(desk.Model->NumberOfPipeRows, 4);
    EXPECT_EQ(desk.Host.Screens.back(), "frmEEPipeData");

    desk.Host.Files = {desk.Scratch / "back.qnd"};
    desk.Commands.SaveAsDosProject();
    EXPECT_EQ(desk.Host.Titles.back(), "Save Windows QUENCH Project File as DOS QUENCH Project "
                                       "file... | QUENCH for DOS File (*.qnd)");
    const auto back = std::make_unique<Project>();
    ASSERT_TRUE(ReadDosFile(*back, desk.Scratch / "back.qnd"));
    EXPECT_EQ(back->NumberOfPipeRows, 4);

    // Sizes into a drawing need results first.
    desk.Host.Files = {SourceDirectory() / "examples" / "small_tree.dxf", desk.Scratch / "out.dxf"};
    desk.Commands.SizesToDrawing();
    EXPECT_EQ(desk.Dialogs.LastTitle(), "Sizes Not Written");
    EXPECT_FALSE(std::filesystem::exists(desk.Scratch / "out.dxf"));
}

} // namespace
} // namespace quench
