#include "app/startup.h"
#include "core/settings_keys.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <fstream>

#include <gtest/gtest.h>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::ScratchDirectory;
using testing::ScriptedDialogs;

DirectoryEnvironment ScratchEnvironment(const ScratchDirectory& scratch, bool writable = true) {
    DirectoryEnvironment environment;
    environment.ProgramDirectory = scratch / "bin";
    environment.ProgramDirectoryWritable = writable;
    environment.Home = scratch / "home";
    environment.ConfigHome = scratch / "home" / ".config";
    environment.RuntimeDirectory = scratch / "run";
    fs::create_directories(environment.ProgramDirectory);
    fs::create_directories(environment.Home);
    fs::create_directories(environment.RuntimeDirectory);
    return environment;
}

TEST(Startup, FirstStartFindsEverythingAndPutsTheDefaults) {
    ScratchDirectory scratch;
    const DirectoryEnvironment environment = ScratchEnvironment(scratch);
    std::ofstream(scratch / "bin" / "PIPE.DAT") << "pipes";
    Project project;
    project.SystemData.DefaultKFactor = 8;
    project.PipeRecord[5].BegNode = "10";
    ScriptedDialogs dialogs;
    SingleInstance instance;

    const StartupState state = RunStartup(project, dialogs, instance, environment, ',');
    EXPECT_EQ(state.Outcome, StartupOutcome::Ready);
    EXPECT_TRUE(dialogs.Empty());
    EXPECT_TRUE(instance.Held());

    EXPECT_EQ(state.ProgramDirectory, scratch / "bin");
    EXPECT_TRUE(state.ProgramDirectoryWritable);
    EXPECT_EQ(state.CommonDirectory, scratch / "bin");
    EXPECT_EQ(state.IniFileName, scratch / "bin" / "QUENCH.ini");
    EXPECT_EQ(state.ToolbarLayoutFile, scratch / "bin" / "toolbar.lyt");
    EXPECT_EQ(state.LibraryDirectory, scratch / "bin");
    EXPECT_EQ(state.PipeLibraryFile, scratch / "bin" / "PIPE.DAT");
    EXPECT_EQ(state.PumpDatabaseFile, scratch / "bin" / "Pump.Dat");
    EXPECT_EQ(state.ProjectsDirectory, scratch / "home" / "Documents" / "Quench Projects");
    EXPECT_EQ(state.ProjectsDirectoryFound, ProjectsDirectoryOutcome::Default);
    EXPECT_TRUE(state.AutoloadNeeded);
    EXPECT_EQ(ProjectPath(IniFileHandler(state.IniFileName)), state.ProjectsDirectory.string());
    EXPECT_EQ(UserSettingsStore(environment)
                  .MyGetAppProfileString("Program Folders", "QuenchDirectory", ""),
              (scratch / "bin").string());

    EXPECT_EQ(state.LogoFileName, "qnlogo.wmf");
    EXPECT_EQ(state.MaxPipes, 1000);
    EXPECT_EQ(state.DecimalCharacter, ',');
    EXPECT_TRUE(state.ProjectClosing);
    EXPECT_FALSE(state.ProjectIsLoaded);
    EXPECT_TRUE(state.ShowDefaultColors);
    EXPECT_FALSE(state.Metric);
    EXPECT_FALSE(state.ShowExplorerAtStartup);
    EXPECT_FALSE(state.ShowTipsAtStartup);
    EXPECT_EQ(state.ReportOptions.size(), 39u);
    EXPECT_EQ(state.ReportOptions.at("BodyFont"), "Arial");

    // The model holds its defaults at full size.
    EXPECT_EQ(project.SystemData.DefaultKFactor, 0);
    EXPECT_EQ(project.SystemData.PrimaryDischargeName, "Sprinkler");
    EXPECT_EQ(project.SystemData.SprinklerSystemType, "wet");
    EXPECT_EQ(project.PipeRecord[5].BegNode, "");
    EXPECT_EQ(project.PipeRecord.size(), static_cast<std::size_t>(MaxPipes + 1));
    EXPECT_EQ(project.NodeRecordSI.size(), static_cast<std::size_t>(MaxNodes + 1));
}

TEST(Startup, StoredSettingsAreReadAndDeletingThemRestoresTheDefaults) {
    ScratchDirectory scratch;
    const DirectoryEnvironment environment = ScratchEnvironment(scratch);
    const IniFileHandler ini(scratch / "bin" / "QUENCH.ini");
    ASSERT_TRUE(WriteMetric(ini, true));
    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "Show Tips at Startup", "True"));
    ASSERT_TRUE(ini.MyWriteAppProfileString("Colors", "ShowDefaultColors", "False"));
    ASSERT_TRUE(ini.MyWriteAppProfileString("ReportOptions", "bodyfont", "DejaVu Sans"));
    fs::create_directories(scratch / "jobs");
    ASSERT_TRUE(WriteProjectPath(ini, (scratch / "jobs").string()));

    Project project;
    ScriptedDialogs dialogs;
    {
        SingleInstance instance;
        const StartupState state = RunStartup(project, dialogs, instance, environment, '.');
        EXPECT_TRUE(state.Metric);
        EXPECT_TRUE(state.ShowTipsAtStartup);
        EXPECT_FALSE(state.ShowDefaultColors);
        EXPECT_EQ(state.ReportOptions.at("BodyFont"), "DejaVu Sans");
        EXPECT_EQ(state.ProjectsDirectory, scratch / "jobs");
        EXPECT_EQ(state.ProjectsDirectoryFound, ProjectsDirectoryOutcome::Stored);
    }
    fs::remove(ini.AppProfileFileName);
    SingleInstance instance;
    const StartupState fresh = RunStartup(project, dialogs, instance, environment, '.');
    EXPECT_FALSE(fresh.Metric);
    EXPECT_FALSE(fresh.ShowTipsAtStartup);
    EXPECT_TRUE(fresh.ShowDefaultColors);
    EXPECT_EQ(fresh.ReportOptions.at("BodyFont"), "Arial");
    EXPECT_EQ(fresh.ProjectsDirectoryFound, ProjectsDirectoryOutcome::Default);
}

TEST(Startup, ASecondStartStopsWithItsMessageAndTouchesNothing) {
    ScratchDirectory scratch;
    const DirectoryEnvironment environment = ScratchEnvironment(scratch);
    Project first;
    ScriptedDialogs firstDialogs;
    SingleInstance running;
    ASSERT_EQ(RunStartup(first, firstDialogs, running, environment, '.').Outcome,
              StartupOutcome::Ready);

    Project second;
    second.SystemData.DefaultKFactor = 5.6f;
    ScriptedDialogs dialogs;
    SingleInstance instance;
    const StartupState state = RunStartup(second, dialogs, instance, environment, '.');
    EXPECT_EQ(state.Outcome, StartupOutcome::AlreadyRunning);
    ASSERT_EQ(dialogs.All().size(), 1u);
    EXPECT_EQ(dialogs.LastText(), "QUENCH is already running.");
    EXPECT_FALSE(instance.Held());
    EXPECT_TRUE(running.Held());
    EXPECT_EQ(second.SystemData.DefaultKFactor, 5.6f);
    EXPECT_TRUE(state.IniFileName.empty());
}

TEST(Startup, AnInstalledCopyKeepsItsSettingsAndLibrariesWithTheUser) {
    ScratchDirectory scratch;
    const DirectoryEnvironment environment = ScratchEnvironment(scratch, false);
    std::ofstream(scratch / "bin" / "PIPE.DAT") << "pipes";
    std::ofstream(scratch / "bin" / "Pump.Dat") << "pumps";
    Project project;
    ScriptedDialogs dialogs;
    SingleInstance instance;
    const StartupState state = RunStartup(project, dialogs, instance, environment, '.');
    const fs::path config = scratch / "home" / ".config" / "quench";
    EXPECT_FALSE(state.ProgramDirectoryWritable);
    EXPECT_EQ(state.IniFileName, config / "QUENCH.ini");
    EXPECT_EQ(state.ToolbarLayoutFile, config / "toolbar.lyt");
    EXPECT_EQ(state.LibraryDirectory, config);
    EXPECT_EQ(state.LibrariesCopied, (std::vector<std::string>{"PIPE.DAT", "Pump.Dat"}));
    EXPECT_TRUE(fs::exists(config / "PIPE.DAT"));
    EXPECT_TRUE(fs::exists(config / "QUENCH.ini")); // the projects directory was written there
    EXPECT_FALSE(fs::exists(scratch / "bin" / "QUENCH.ini"));
}

TEST(Startup, WithNoProjectsDirectoryTheUserChoosesOne) {
    ScratchDirectory scratch;
    DirectoryEnvironment environment = ScratchEnvironment(scratch);
    std::ofstream(scratch / "file") << "x";
    environment.Home = scratch / "file" / "home";
    Project project;
    ScriptedDialogs dialogs;
    SingleInstance instance;
    StartupState state = RunStartup(project, dialogs, instance, environment, '.');
    EXPECT_EQ(state.Outcome, StartupOutcome::AskProjectsDirectory);
    EXPECT_TRUE(state.ProjectsDirectory.empty());
    EXPECT_TRUE(dialogs.Empty()); // the desktop asks, not the start-up
    // The rest of the start went on.
    EXPECT_EQ(state.MaxPipes, 1000);
    EXPECT_FALSE(state.IniFileName.empty());

    EXPECT_FALSE(ChooseProjectsDirectory(state, scratch / "file" / "projects"));
    EXPECT_EQ(state.Outcome, StartupOutcome::AskProjectsDirectory);
    ASSERT_TRUE(ChooseProjectsDirectory(state, scratch / "projects"));
    EXPECT_EQ(state.Outcome, StartupOutcome::Ready);
    EXPECT_EQ(state.ProjectsDirectory, scratch / "projects");
    EXPECT_TRUE(state.AutoloadNeeded);
    EXPECT_EQ(ProjectPath(IniFileHandler(state.IniFileName)), (scratch / "projects").string());
}

// A locale that writes numbers with a decimal comma.
struct CommaNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST(Startup, TheOptionsDecimalCharacterWinsOverTheLocales) {
    ScratchDirectory scratch;
    const DirectoryEnvironment environment = ScratchEnvironment(scratch);
    std::ofstream(scratch / "bin" / "PIPE.DAT") << "pipes";
    ASSERT_TRUE(IniFileHandler(scratch / "bin" / "QUENCH.ini")
                    .MyWriteAppProfileString("Options", "DecimalCharacter", "."));
    Project project;
    ScriptedDialogs dialogs;
    SingleInstance instance;
    EXPECT_EQ(RunStartup(project, dialogs, instance, environment, ',').DecimalCharacter, '.');
}

TEST(Startup, DecimalCharacterIsTheSecondCharacterOfOnePointOne) {
    EXPECT_EQ(DecimalCharacterOf(std::locale::classic()), '.');
    EXPECT_EQ(DecimalCharacterOf(std::locale(std::locale::classic(), new CommaNumbers)), ',');
    const char user = UserDecimalCharacter();
    EXPECT_TRUE(user == '.' || user == ',') << user;
}

} // namespace
} // namespace quench
