#include "app/directories.h"
#include "core/atomic_write.h"
#include "core/settings_keys.h"
#include "tests/support/scratch_directory.h"

#include <fstream>

#include <gtest/gtest.h>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::ScratchDirectory;

void WriteText(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

std::string FileText(const fs::path& file) {
    std::string text;
    ReadWholeFile(file, text);
    return text;
}

// A program in scratch/bin, a user in scratch/home.
DirectoryEnvironment ScratchEnvironment(const ScratchDirectory& scratch, bool writable = true) {
    DirectoryEnvironment environment;
    environment.ProgramDirectory = scratch / "bin";
    environment.ProgramDirectoryWritable = writable;
    environment.Home = scratch / "home";
    environment.ConfigHome = scratch / "home" / ".config";
    fs::create_directories(environment.ProgramDirectory);
    fs::create_directories(environment.Home);
    return environment;
}

TEST(Directories, TheProcessKnowsWhereItRuns) {
    const DirectoryEnvironment environment = ProcessEnvironment();
    EXPECT_TRUE(fs::exists(environment.ProgramDirectory / "app_tests"));
    EXPECT_EQ(ExecutableDirectory(), environment.ProgramDirectory);
    EXPECT_FALSE(environment.ConfigHome.empty());
}

TEST(Directories, SettingsAndLibrariesLiveBesideAWritableProgram) {
    ScratchDirectory scratch;
    DirectoryEnvironment environment = ScratchEnvironment(scratch);
    WriteText(scratch / "bin" / "PIPE.DAT", "pipes");
    EXPECT_EQ(WritableDataDirectory(environment), scratch / "bin");
    const LibraryDirectory beside = PrepareLibraryDirectory(environment);
    EXPECT_EQ(beside.Directory, scratch / "bin");
    EXPECT_TRUE(beside.Copied.empty());

    // An installed copy: the user's configuration directory takes the files the user may edit.
    environment.ProgramDirectoryWritable = false;
    const fs::path config = scratch / "home" / ".config" / "quench";
    EXPECT_EQ(UserConfigDirectory(environment), config);
    EXPECT_EQ(WritableDataDirectory(environment), config);
    const LibraryDirectory copied = PrepareLibraryDirectory(environment);
    EXPECT_EQ(copied.Directory, config);
    EXPECT_EQ(copied.Copied, std::vector<std::string>{"PIPE.DAT"}); // only what exists
    EXPECT_TRUE(copied.Failed.empty());
    EXPECT_EQ(FileText(config / "PIPE.DAT"), "pipes");
    EXPECT_FALSE(fs::exists(config / "Pump.Dat"));

    // The user's edited copy is never overwritten.
    WriteText(config / "PIPE.DAT", "edited");
    WriteText(scratch / "bin" / "Pump.Dat", "pumps");
    const LibraryDirectory again = PrepareLibraryDirectory(environment);
    EXPECT_EQ(again.Copied, std::vector<std::string>{"Pump.Dat"});
    EXPECT_EQ(FileText(config / "PIPE.DAT"), "edited");
    EXPECT_EQ(FileText(config / "Pump.Dat"), "pumps");
    EXPECT_TRUE(PrepareLibraryDirectory(environment).Copied.empty());
}

TEST(Directories, AnInstalledLayoutShipsItsDataInShare) {
    ScratchDirectory scratch;
    DirectoryEnvironment environment = ScratchEnvironment(scratch, false);
    environment.ProgramDirectory = scratch / "usr" / "bin";
    fs::create_directories(environment.ProgramDirectory);
    EXPECT_EQ(ShippedDataDirectory(environment), environment.ProgramDirectory);
    WriteText(scratch / "usr" / "share" / "quench" / "Pump.Dat", "pumps");
    WriteText(scratch / "usr" / "share" / "quench" / "TIPOFDAY.TXT", "tips");
    EXPECT_EQ(ShippedDataDirectory(environment), scratch / "usr" / "share" / "quench");
    const LibraryDirectory libraries = PrepareLibraryDirectory(environment);
    EXPECT_EQ(libraries.Copied, (std::vector<std::string>{"Pump.Dat", "TIPOFDAY.TXT"}));
    EXPECT_EQ(FileText(libraries.Directory / "Pump.Dat"), "pumps");
    EXPECT_EQ(FileText(libraries.Directory / "TIPOFDAY.TXT"), "tips");

    // Run by a user who may write to the program's directory, it still writes nothing there.
    environment.ProgramDirectoryWritable = true;
    EXPECT_EQ(WritableDataDirectory(environment), UserConfigDirectory(environment));
    EXPECT_EQ(PrepareLibraryDirectory(environment).Directory, UserConfigDirectory(environment));
    EXPECT_FALSE(fs::exists(environment.ProgramDirectory / "Pump.Dat"));
}

TEST(Directories, ProjectsDirectoryIsMadeOnFirstStart) {
    ScratchDirectory scratch;
    const DirectoryEnvironment environment = ScratchEnvironment(scratch);
    const IniFileHandler ini(scratch / "bin" / "QUENCH.ini");
    const fs::path expected = scratch / "home" / "Documents" / "Quench Projects";
    EXPECT_EQ(DefaultProjectsDirectory(environment), expected);

    const ProjectsDirectory first = FindProjectsDirectory(ini, environment);
    EXPECT_EQ(first.Outcome, ProjectsDirectoryOutcome::Default);
    EXPECT_EQ(first.Directory, expected);
    EXPECT_TRUE(fs::is_directory(expected));
    EXPECT_TRUE(first.AutoloadNeeded);
    EXPECT_EQ(ProjectPath(ini), expected.string());

    // Next start: the stored directory; the template is asked for until it is there.
    const ProjectsDirectory second = FindProjectsDirectory(ini, environment);
    EXPECT_EQ(second.Outcome, ProjectsDirectoryOutcome::Stored);
    EXPECT_TRUE(second.AutoloadNeeded);
    WriteText(expected / "AUTOLOAD.QNW", "template");
    EXPECT_FALSE(FindProjectsDirectory(ini, environment).AutoloadNeeded);

    // A stored directory of the user's choice is kept; one that is gone falls back on the default.
    fs::create_directories(scratch / "jobs");
    ASSERT_TRUE(WriteProjectPath(ini, (scratch / "jobs").string()));
    EXPECT_EQ(FindProjectsDirectory(ini, environment).Directory, scratch / "jobs");
    fs::remove(scratch / "jobs");
    const ProjectsDirectory fallback = FindProjectsDirectory(ini, environment);
    EXPECT_EQ(fallback.Outcome, ProjectsDirectoryOutcome::Default);
    EXPECT_EQ(fallback.Directory, expected);
    EXPECT_FALSE(fallback.AutoloadNeeded);
    EXPECT_EQ(ProjectPath(ini), expected.string());
}

TEST(Directories, DocumentsFollowTheUsersDirectories) {
    ScratchDirectory scratch;
    DirectoryEnvironment environment = ScratchEnvironment(scratch);
    environment.DocumentsDirectory = scratch / "home" / "Dokumente";
    EXPECT_EQ(DefaultProjectsDirectory(environment),
              scratch / "home" / "Dokumente" / "Quench Projects");

    const fs::path home = "/home/me";
    EXPECT_EQ(DocumentsFromUserDirs("# comment\nXDG_DESKTOP_DIR=\"$HOME/Desktop\"\n"
                                    "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n",
                                    home),
              fs::path("/home/me/Dokumente"));
    EXPECT_EQ(DocumentsFromUserDirs("XDG_DOCUMENTS_DIR=\"/srv/docs\"", home),
              fs::path("/srv/docs"));
    EXPECT_EQ(DocumentsFromUserDirs("XDG_DOCUMENTS_DIR=\"$HOME/\"", home), home);
    EXPECT_EQ(DocumentsFromUserDirs("XDG_DOCUMENTS_DIR=\"relative\"", home), fs::path());
    EXPECT_EQ(DocumentsFromUserDirs("", home), fs::path());
    EXPECT_EQ(DocumentsFromUserDirs(std::string("\0\xff[", 3), home), fs::path());
}

TEST(Directories, WhenNothingCanBeMadeTheUserIsAsked) {
    ScratchDirectory scratch;
    DirectoryEnvironment environment = ScratchEnvironment(scratch);
    WriteText(scratch / "file", "x");
    environment.Home = scratch / "file" / "home"; // under a file: nothing can be made there
    const IniFileHandler ini(scratch / "bin" / "QUENCH.ini");
    const ProjectsDirectory found = FindProjectsDirectory(ini, environment);
    EXPECT_EQ(found.Outcome, ProjectsDirectoryOutcome::MustAsk);
    EXPECT_TRUE(found.Directory.empty());
    EXPECT_EQ(ProjectPath(ini), "");

    EXPECT_TRUE(UseProjectsDirectory(ini, scratch / "file" / "x").Directory.empty());
    const ProjectsDirectory chosen = UseProjectsDirectory(ini, scratch / "chosen");
    EXPECT_EQ(chosen.Outcome, ProjectsDirectoryOutcome::Stored);
    EXPECT_TRUE(chosen.AutoloadNeeded);
    EXPECT_EQ(ProjectPath(ini), (scratch / "chosen").string());

    EXPECT_EQ(DirectoryNotFoundText("Quench project files", "AUTOLOAD.QNW"),
              "QUENCH encountered an error while trying to find the directory on your hard disk "
              "where the Quench project files are located.  Please locate the file "
              "AUTOLOAD.QNW in the following dialog...");
    EXPECT_EQ(DirectoryGivenUpText("Vantor Software common"),
              "The Vantor Software common directory was not found.  Since QUENCH requires files "
              "in this directory, the program will now end.");
}

TEST(Directories, ProgramFoldersInTheUsersStore) {
    ScratchDirectory scratch;
    const DirectoryEnvironment environment = ScratchEnvironment(scratch);
    const IniFileHandler store = UserSettingsStore(environment);
    EXPECT_EQ(store.AppProfileFileName,
              scratch / "home" / ".config" / "quench" / "VantorSoftware.ini");

    ASSERT_TRUE(RecordQuenchDirectory(environment));
    EXPECT_EQ(store.MyGetAppProfileString("Program Folders", "QuenchDirectory", ""),
              (scratch / "bin").string());
    const auto stamp = fs::last_write_time(store.AppProfileFileName);
    ASSERT_TRUE(RecordQuenchDirectory(environment)); // the same: not written again
    EXPECT_EQ(fs::last_write_time(store.AppProfileFileName), stamp);

    // No common files are shipped: the program's data directory serves and is written back.
    EXPECT_EQ(FindCommonDirectory(environment), scratch / "bin");
    EXPECT_EQ(store.MyGetAppProfileString("Program Folders", "CommonDirectory", ""),
              (scratch / "bin").string());
    fs::create_directories(scratch / "common");
    store.MyWriteAppProfileString("Program Folders", "CommonDirectory",
                                  (scratch / "common").string());
    EXPECT_EQ(FindCommonDirectory(environment), scratch / "common");
    fs::remove(scratch / "common");
    EXPECT_EQ(FindCommonDirectory(environment), scratch / "bin");
}

} // namespace
} // namespace quench
