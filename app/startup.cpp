#include "app/startup.h"

#include "core/settings_keys.h"
#include "core/text.h"
#include "entry/program_options.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace quench {

namespace {

// Every table at full capacity; a project that has them already keeps them as they are.
void AllocateTables(Project& project) {
    project.PipeRecord.resize(MaxPipes + 1);
    project.WorkPipeRecord.resize(MaxPipes + 1);
    project.CalcPipeRecord.resize(MaxPipes + 1);
    project.NodeRecord.resize(MaxNodes + 1);
    project.PipeResultRecord.resize(MaxPipes + 1);
    project.NodeRecordSI.resize(MaxNodes + 1);
    project.CalcPipeRecordSI.resize(MaxPipes + 1);
    project.PipeResultRecordSI.resize(MaxPipes + 1);
}

void PutModelDefaults(Project& project) {
    project.LoadingTemplate = false;
    ResetProject(project);
    project.SystemData.PrimaryDischargeName = "Sprinkler";
    project.SystemData.SprinklerSystemType = "wet";
}

// The report layout: each key of the section as stored, or its default. One read of the file.
std::map<std::string, std::string> ReadReportOptions(const IniFileHandler& ini) {
    const std::map<std::string, std::string> stored =
        ini.MyGetAppProfileSection(sections::ReportOptions);
    std::map<std::string, std::string> options;
    for (const SettingDefinition& setting : SettingsTable()) {
        if (setting.Section != sections::ReportOptions) {
            continue;
        }
        const auto found = std::find_if(stored.begin(), stored.end(), [&](const auto& entry) {
            return EqualsIgnoreCase(entry.first, setting.Key);
        });
        options[std::string(setting.Key)] =
            found != stored.end() ? found->second : std::string(setting.Default);
    }
    return options;
}

void FindDirectories(StartupState& state, const DirectoryEnvironment& environment) {
    state.ProgramDirectory = environment.ProgramDirectory;
    state.ProgramDirectoryWritable = environment.ProgramDirectoryWritable;
    state.UserSettingsFile = UserSettingsStore(environment).AppProfileFileName;
    state.CommonDirectory = FindCommonDirectory(environment);
    const std::filesystem::path writable = WritableDataDirectory(environment);
    state.IniFileName = writable / SettingsFileName;
    state.ToolbarLayoutFile = writable / ToolbarLayoutFileName;

    const ProjectsDirectory projects =
        FindProjectsDirectory(IniFileHandler(state.IniFileName), environment);
    state.ProjectsDirectory = projects.Directory;
    state.ProjectsDirectoryFound = projects.Outcome;
    state.AutoloadNeeded = projects.AutoloadNeeded;
    if (projects.Outcome == ProjectsDirectoryOutcome::MustAsk) {
        state.Outcome = StartupOutcome::AskProjectsDirectory;
    }
}

void FindLibraries(StartupState& state, const DirectoryEnvironment& environment) {
    const LibraryDirectory libraries = PrepareLibraryDirectory(environment);
    state.LibraryDirectory = libraries.Directory;
    state.PipeLibraryFile = libraries.Directory / PipeLibraryFileName;
    state.PumpDatabaseFile = libraries.Directory / PumpDatabaseFileName;
    state.LibrariesCopied = libraries.Copied;
}

void ReadFrameSettings(StartupState& state, const IniFileHandler& ini) {
    state.ShowExplorerAtStartup = ShowExplorerAtStartup(ini);
    state.ShowTipsAtStartup = ShowTipsAtStartup(ini);
    state.Metric = Metric(ini);
}

} // namespace

char DecimalCharacterOf(const std::locale& locale) {
    std::ostringstream text;
    text.imbue(locale);
    text << 1.1;
    const std::string number = text.str();
    return number.size() >= 2 ? number[1] : '.';
}

char UserDecimalCharacter() {
    try {
        return DecimalCharacterOf(std::locale(""));
    } catch (const std::runtime_error&) {
        return '.'; // a locale named in the environment that the system does not have
    }
}

StartupState RunStartup(Project& project, Dialogs& dialogs, SingleInstance& instance,
                        const DirectoryEnvironment& environment, char decimalCharacter) {
    StartupState state;
    if (instance.Acquire(InstanceLockFile(environment)) ==
        SingleInstance::Outcome::AlreadyRunning) {
        dialogs.ShowMessage(MessageStyle::Information, ProgramTitle, AlreadyRunningText);
        state.Outcome = StartupOutcome::AlreadyRunning;
        return state;
    }
    RecordQuenchDirectory(environment);

    state.ProjectClosing = true;
    state.ProjectIsLoaded = false;
    FindDirectories(state, environment);
    const IniFileHandler ini(state.IniFileName);
    state.ShowDefaultColors = ShowDefaultColors(ini);
    PutModelDefaults(project);
    state.ReportOptions = ReadReportOptions(ini);

    state.LogoFileName = LogoFileName;
    state.MaxPipes = MaxPipes;
    // The user may choose the decimal character in the options; the locale's is the default.
    state.DecimalCharacter = ReadProgramOptions(ini, decimalCharacter).DecimalCharacter;
    AllocateTables(project);

    FindLibraries(state, environment);
    ReadFrameSettings(state, ini);
    return state;
}

bool ChooseProjectsDirectory(StartupState& state, const std::filesystem::path& directory) {
    const ProjectsDirectory chosen =
        UseProjectsDirectory(IniFileHandler(state.IniFileName), directory);
    if (chosen.Directory.empty()) {
        return false;
    }
    state.ProjectsDirectory = chosen.Directory;
    state.ProjectsDirectoryFound = chosen.Outcome;
    state.AutoloadNeeded = chosen.AutoloadNeeded;
    if (state.Outcome == StartupOutcome::AskProjectsDirectory) {
        state.Outcome = StartupOutcome::Ready;
    }
    return true;
}

} // namespace quench
