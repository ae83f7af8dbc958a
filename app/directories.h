#pragma once

// The directories of a run: where the program and its shipped data lie, where the settings and
// the user's copies of the libraries live, and where projects go. Everything the process learns
// from outside (home, configuration directory, documents, the executable) comes in through
// DirectoryEnvironment, so a test runs the whole search in a scratch directory.

#include "core/settings.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

inline constexpr std::string_view SettingsFileName = "QUENCH.ini";
inline constexpr std::string_view UserSettingsFileName = "VantorSoftware.ini";
inline constexpr std::string_view PipeLibraryFileName = "PIPE.DAT";
inline constexpr std::string_view PumpDatabaseFileName = "Pump.Dat";
inline constexpr std::string_view TipsFileName = "TIPOFDAY.TXT";
inline constexpr std::string_view ToolbarLayoutFileName = "toolbar.lyt";
inline constexpr std::string_view AutoloadFileName = "AUTOLOAD.QNW";
inline constexpr std::string_view ProjectsFolderName = "Quench Projects";

struct DirectoryEnvironment {
    std::filesystem::path ProgramDirectory; // the directory of the executable
    bool ProgramDirectoryWritable = false;  // false in an installed copy
    std::filesystem::path Home;
    std::filesystem::path ConfigHome;         // $XDG_CONFIG_HOME, or Home/.config
    std::filesystem::path DocumentsDirectory; // $XDG_DOCUMENTS_DIR or user-dirs.dirs; may be empty
    std::filesystem::path RuntimeDirectory;   // $XDG_RUNTIME_DIR; may be empty
};

// The environment of this process.
DirectoryEnvironment ProcessEnvironment();

// The directory of the running executable (from /proc/self/exe), or the current directory.
std::filesystem::path ExecutableDirectory();

// The documents directory named in a user-dirs.dirs text (XDG_DOCUMENTS_DIR="$HOME/Documents"),
// or empty.
std::filesystem::path DocumentsFromUserDirs(std::string_view text,
                                            const std::filesystem::path& home);

// True when files can be made in the directory.
bool IsWritableDirectory(const std::filesystem::path& directory);

// $XDG_CONFIG_HOME/quench.
std::filesystem::path UserConfigDirectory(const DirectoryEnvironment& environment);

// Where the shipped "PIPE.DAT" and "Pump.Dat" lie: beside the executable, or in an installed
// copy in ../share/quench.
std::filesystem::path ShippedDataDirectory(const DirectoryEnvironment& environment);

// Where the program keeps what it writes ("QUENCH.ini", "toolbar.lyt", the libraries): the
// program's directory when it is writable and not an installed copy (whose data lie in
// ../share/quench), otherwise the user's configuration directory.
std::filesystem::path WritableDataDirectory(const DirectoryEnvironment& environment);

// The user's settings store of the maker's products: "Program Folders" keys.
IniFileHandler UserSettingsStore(const DirectoryEnvironment& environment);

// Writes QuenchDirectory of "Program Folders" when it differs from the program's directory.
// False when the store cannot be written.
bool RecordQuenchDirectory(const DirectoryEnvironment& environment);

// The maker's common directory: the stored CommonDirectory when it exists, otherwise the directory
// of the program's data (the program ships no common files), written back to the store.
std::filesystem::path FindCommonDirectory(const DirectoryEnvironment& environment);

enum class ProjectsDirectoryOutcome {
    Stored,  // ProjectPath names a usable directory
    Default, // the default folder in the documents, made if it was missing
    MustAsk, // nothing usable could be made: the user must choose a directory
};

struct ProjectsDirectory {
    std::filesystem::path Directory; // empty when MustAsk
    ProjectsDirectoryOutcome Outcome = ProjectsDirectoryOutcome::MustAsk;
    bool AutoloadNeeded = false; // the directory has no "AUTOLOAD.QNW": the caller makes one
};

// The default projects folder: "Quench Projects" in the user's documents.
std::filesystem::path DefaultProjectsDirectory(const DirectoryEnvironment& environment);

// ProjectPath of "Paths" when it names a writable directory; otherwise the default folder, made
// when missing and written back to ProjectPath. No dialog is opened here.
ProjectsDirectory FindProjectsDirectory(const IniFileHandler& ini,
                                        const DirectoryEnvironment& environment);

// A directory the user chose: taken when it is (or can be made) a writable directory, and then
// written to ProjectPath.
ProjectsDirectory UseProjectsDirectory(const IniFileHandler& ini,
                                       const std::filesystem::path& directory);

struct LibraryDirectory {
    std::filesystem::path Directory;
    std::vector<std::string> Copied; // shipped files copied for the user to edit
    std::vector<std::string> Failed; // shipped files that could not be copied
};

// The directory of "PIPE.DAT", "Pump.Dat" and "TIPOFDAY.TXT". When it is the user's configuration
// directory, the shipped files that exist and that the user has no copy of yet are copied there.
LibraryDirectory PrepareLibraryDirectory(const DirectoryEnvironment& environment);

// The texts of the boxes when a directory is not found. subject: "Quench project files";
// file: "AUTOLOAD.QNW".
inline constexpr std::string_view DirectoryNotFoundTitle = "Directory Not Found";
inline constexpr std::string_view FileNotFoundTitle = "File Not Found";
std::string DirectoryNotFoundText(std::string_view subject, std::string_view file);
std::string DirectoryGivenUpText(std::string_view subject);

} // namespace quench
