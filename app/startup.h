#pragma once

// The part of start-up that needs no window, in its order: the one-instance test, the program's
// folders in the user's store, the directories, the settings file, the model's defaults, the
// capacities and the decimal character, the tables at full size, and the settings that the main
// frame reads when it loads. The desktop follows the record it returns (splash, frame, dialogs);
// the tests read it.

#include "app/directories.h"
#include "app/single_instance.h"
#include "core/dialogs.h"
#include "core/project.h"
#include "core/settings.h"

#include <filesystem>
#include <locale>
#include <map>
#include <string>
#include <vector>

namespace quench {

inline constexpr std::string_view LogoFileName = "qnlogo.wmf";
inline constexpr std::string_view ProgramTitle = "QUENCH";

enum class StartupOutcome {
    Ready,                // the frame can come up
    AskProjectsDirectory, // no projects directory could be made: the user must choose one
    AlreadyRunning,       // another copy runs; its message has been shown: end here
};

struct StartupState {
    StartupOutcome Outcome = StartupOutcome::Ready;

    std::filesystem::path ProgramDirectory;
    bool ProgramDirectoryWritable = false;
    std::filesystem::path CommonDirectory;
    std::filesystem::path ProjectsDirectory; // empty while the user must choose one
    ProjectsDirectoryOutcome ProjectsDirectoryFound = ProjectsDirectoryOutcome::MustAsk;
    bool AutoloadNeeded = false; // make "AUTOLOAD.QNW" in the projects directory
    std::filesystem::path IniFileName;
    std::filesystem::path UserSettingsFile; // the program folders of the user's store
    std::filesystem::path LibraryDirectory; // "PIPE.DAT" and "Pump.Dat"
    std::filesystem::path PipeLibraryFile;
    std::filesystem::path PumpDatabaseFile;
    std::filesystem::path ToolbarLayoutFile;
    std::vector<std::string> LibrariesCopied; // shipped libraries copied for the user this time

    std::string LogoFileName;
    int MaxPipes = 0;
    char DecimalCharacter = '.';

    // Flags of the program at the end of the windowless steps.
    bool ProjectClosing = true; // held until the frame has loaded
    bool ProjectIsLoaded = false;

    // What the frame's load reads.
    bool ShowDefaultColors = true;
    std::map<std::string, std::string> ReportOptions; // every key, stored or default
    bool ShowExplorerAtStartup = false;
    bool ShowTipsAtStartup = false;
    bool Metric = false; // SI is the default unit system
};

// The character the locale writes as decimal point: the second character of the text of 1.1.
char DecimalCharacterOf(const std::locale& locale);
// The same for the user's locale (the environment's), or "." when it cannot be made.
char UserDecimalCharacter();

// Runs the windowless steps. The lock stays held by `instance` for the life of the run.
StartupState RunStartup(Project& project, Dialogs& dialogs, SingleInstance& instance,
                        const DirectoryEnvironment& environment,
                        char decimalCharacter = UserDecimalCharacter());

// After AskProjectsDirectory: the directory the user chose. False when it cannot serve (the
// outcome stays); otherwise the state is Ready with the directory written to ProjectPath.
bool ChooseProjectsDirectory(StartupState& state, const std::filesystem::path& directory);

} // namespace quench
