#pragma once

// A desktop without windows for the lifecycle scenarios: a scratch projects directory and
// settings file, scripted answers to the file dialogs and to frmTempFile, and a record of what
// the lifecycle asked the desktop to do.

#include "app/project_lifecycle.h"
#include "core/atomic_write.h"
#include "core/project_file.h"
#include "core/settings_keys.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <deque>
#include <memory>

#include <gtest/gtest.h>

namespace quench::testing {

class ScriptedHost final : public LifecycleHost {
public:
    std::deque<std::optional<std::filesystem::path>> OpenFiles;
    std::deque<std::optional<std::filesystem::path>> SaveFiles;
    std::deque<TempFileChoice> TempChoices;

    std::vector<FileDialogRequest> Requests;
    std::vector<std::string> TempTitles;
    std::vector<std::string> StatusTexts;
    std::vector<std::string> OpenedScreens;
    std::vector<std::string> Screens; // open now
    int Unloads = 0;
    int BusyDepth = 0;

    void SetBusy(bool busy) override { BusyDepth += busy ? 1 : -1; }
    std::vector<std::string> OpenProjectScreens() const override { return Screens; }
    void UnloadProjectScreens() override {
        ++Unloads;
        Screens.clear();
    }
    void OpenProjectScreen(std::string_view screen) override {
        OpenedScreens.emplace_back(screen);
        Screens.emplace_back(screen);
    }
    void ShowStatusText(std::string_view text) override { StatusTexts.emplace_back(text); }
    std::optional<std::filesystem::path> ChooseOpenFile(const FileDialogRequest& request) override {
        return Next(OpenFiles, request);
    }
    std::optional<std::filesystem::path> ChooseSaveFile(const FileDialogRequest& request) override {
        return Next(SaveFiles, request);
    }
    TempFileChoice ChooseTempFileAction(std::string_view title) override {
        TempTitles.emplace_back(title);
        if (TempChoices.empty()) {
            return TempFileChoice::DoNotOpen;
        }
        const TempFileChoice choice = TempChoices.front();
        TempChoices.pop_front();
        return choice;
    }

private:
    std::optional<std::filesystem::path>
    Next(std::deque<std::optional<std::filesystem::path>>& script,
         const FileDialogRequest& request) {
        Requests.push_back(request);
        if (script.empty()) {
            return std::nullopt;
        }
        auto next = script.front();
        script.pop_front();
        return next;
    }
};

// One run of the program on the scratch directories. A second session on the same fixture is a
// new start after the first one ended (or was killed).
struct Session {
    explicit Session(const std::filesystem::path& projects, const std::filesystem::path& ini)
        : Model(std::make_unique<Project>()),
          Lifecycle(*Model, Dialogs, Host, IniFileHandler(ini), projects) {}

    std::unique_ptr<Project> Model;
    ScriptedDialogs Dialogs;
    ScriptedHost Host;
    ProjectLifecycle Lifecycle;
};

class LifecycleTest : public ::testing::Test {
protected:
    std::filesystem::path Projects() const { return scratch_ / "projects"; }
    std::filesystem::path IniFile() const { return scratch_ / "QUENCH.ini"; }
    IniFileHandler Settings() const { return IniFileHandler(IniFile()); }

    void SetUp() override { std::filesystem::create_directories(Projects()); }

    std::unique_ptr<Session> Start() { return std::make_unique<Session>(Projects(), IniFile()); }

    // A project file with a title and one pipe row.
    std::filesystem::path WriteSample(const std::string& name, const std::string& title) {
        const auto project = std::make_unique<Project>();
        project->ProjectData.Title = title;
        project->PipeRecord[1].BegNode = "10";
        project->PipeRecord[1].EndNode = "20";
        project->PipeRecord[1].Length = 12.5f;
        project->NumberOfPipeRows = 1;
        const std::filesystem::path file = Projects() / name;
        EXPECT_EQ(WriteProject(*project, file), WriteOutcome::Written);
        return file;
    }

    // The title stored in a project file.
    static std::string TitleIn(const std::filesystem::path& file) {
        const auto project = std::make_unique<Project>();
        EXPECT_TRUE(ReadProjectHeader(*project, file));
        return project->ProjectData.Title;
    }

    static bool Exists(const std::filesystem::path& file) { return std::filesystem::exists(file); }

private:
    ScratchDirectory scratch_;
};

} // namespace quench::testing
