#include "app/directories.h"

#include "core/atomic_write.h"
#include "core/settings_keys.h"

#include <cstdlib>
#include <unistd.h>

namespace quench {

namespace fs = std::filesystem;

namespace {

fs::path Environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? fs::path(value) : fs::path();
}

bool IsDirectory(const fs::path& path) {
    std::error_code ignored;
    return !path.empty() && fs::is_directory(path, ignored);
}

bool Exists(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

// Makes the directory and its parents; true when it exists afterwards and files can be made in it.
bool MakeWritableDirectory(const fs::path& directory) {
    if (directory.empty()) {
        return false;
    }
    std::error_code ignored;
    fs::create_directories(directory, ignored);
    return IsWritableDirectory(directory);
}

bool HasShippedData(const fs::path& directory) {
    return Exists(directory / PipeLibraryFileName) || Exists(directory / PumpDatabaseFileName);
}

} // namespace

std::filesystem::path ExecutableDirectory() {
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    if (!error && executable.has_parent_path()) {
        return executable.parent_path();
    }
    return fs::current_path(error);
}

std::filesystem::path DocumentsFromUserDirs(std::string_view text, const fs::path& home) {
    constexpr std::string_view key = "XDG_DOCUMENTS_DIR=";
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        std::string_view line = text.substr(start, end - start);
        start = end + 1;
        if (!line.starts_with(key)) {
            continue;
        }
        line.remove_prefix(key.size());
        if (line.size() >= 2 && line.front() == '"' && line.back() == '"') {
            line = line.substr(1, line.size() - 2);
        }
        constexpr std::string_view homeVariable = "$HOME";
        if (line.starts_with(homeVariable)) {
            line.remove_prefix(homeVariable.size());
            while (line.starts_with('/')) {
                line.remove_prefix(1);
            }
            return line.empty() ? home : home / line;
        }
        return line.starts_with('/') ? fs::path(line) : fs::path();
    }
    return {};
}

DirectoryEnvironment ProcessEnvironment() {
    DirectoryEnvironment environment;
    environment.ProgramDirectory = ExecutableDirectory();
    environment.ProgramDirectoryWritable = IsWritableDirectory(environment.ProgramDirectory);
    environment.Home = Environment("HOME");
    environment.ConfigHome = Environment("XDG_CONFIG_HOME");
    if (environment.ConfigHome.empty() && !environment.Home.empty()) {
        environment.ConfigHome = environment.Home / ".config";
    }
    environment.DocumentsDirectory = Environment("XDG_DOCUMENTS_DIR");
    if (environment.DocumentsDirectory.empty() && !environment.ConfigHome.empty()) {
        std::string userDirs;
        if (ReadWholeFile(environment.ConfigHome / "user-dirs.dirs", userDirs)) {
            environment.DocumentsDirectory = DocumentsFromUserDirs(userDirs, environment.Home);
        }
    }
    environment.RuntimeDirectory = Environment("XDG_RUNTIME_DIR");
    return environment;
}

bool IsWritableDirectory(const fs::path& directory) {
    return IsDirectory(directory) && ::access(directory.c_str(), W_OK | X_OK) == 0;
}

std::filesystem::path UserConfigDirectory(const DirectoryEnvironment& environment) {
    const fs::path base = !environment.ConfigHome.empty() ? environment.ConfigHome
                          : !environment.Home.empty()     ? environment.Home / ".config"
                                                          : fs::temp_directory_path();
    return base / "quench";
}

std::filesystem::path ShippedDataDirectory(const DirectoryEnvironment& environment) {
    const fs::path installed = environment.ProgramDirectory.parent_path() / "share" / "quench";
    if (!HasShippedData(environment.ProgramDirectory) && HasShippedData(installed)) {
        return installed;
    }
    return environment.ProgramDirectory;
}

std::filesystem::path WritableDataDirectory(const DirectoryEnvironment& environment) {
    // An installed copy (its data in ../share/quench) writes nothing beside the program, even
    // when run by a user who could.
    const bool installed = ShippedDataDirectory(environment) != environment.ProgramDirectory;
    if (environment.ProgramDirectoryWritable && !installed) {
        return environment.ProgramDirectory;
    }
    return UserConfigDirectory(environment);
}

IniFileHandler UserSettingsStore(const DirectoryEnvironment& environment) {
    return IniFileHandler(UserConfigDirectory(environment) / UserSettingsFileName);
}

bool RecordQuenchDirectory(const DirectoryEnvironment& environment) {
    const IniFileHandler store = UserSettingsStore(environment);
    const std::string program = environment.ProgramDirectory.string();
    if (store.MyGetAppProfileString(sections::ProgramFolders, "QuenchDirectory", "") == program) {
        return true;
    }
    return store.MyWriteAppProfileString(sections::ProgramFolders, "QuenchDirectory", program);
}

std::filesystem::path FindCommonDirectory(const DirectoryEnvironment& environment) {
    const IniFileHandler store = UserSettingsStore(environment);
    const fs::path stored =
        store.MyGetAppProfileString(sections::ProgramFolders, "CommonDirectory", "");
    if (IsDirectory(stored)) {
        return stored;
    }
    const fs::path common = ShippedDataDirectory(environment);
    store.MyWriteAppProfileString(sections::ProgramFolders, "CommonDirectory", common.string());
    return common;
}

std::filesystem::path DefaultProjectsDirectory(const DirectoryEnvironment& environment) {
    const fs::path documents = !environment.DocumentsDirectory.empty()
                                   ? environment.DocumentsDirectory
                                   : environment.Home / "Documents";
    return documents / ProjectsFolderName;
}

ProjectsDirectory UseProjectsDirectory(const IniFileHandler& ini, const fs::path& directory) {
    ProjectsDirectory result;
    if (!MakeWritableDirectory(directory)) {
        return result;
    }
    result.Directory = directory;
    result.Outcome = ProjectsDirectoryOutcome::Stored;
    result.AutoloadNeeded = !Exists(directory / AutoloadFileName);
    if (ProjectPath(ini) != directory.string()) {
        WriteProjectPath(ini, directory.string());
    }
    return result;
}

ProjectsDirectory FindProjectsDirectory(const IniFileHandler& ini,
                                        const DirectoryEnvironment& environment) {
    const fs::path stored = ProjectPath(ini);
    if (!stored.empty() && IsWritableDirectory(stored)) {
        ProjectsDirectory result;
        result.Directory = stored;
        result.Outcome = ProjectsDirectoryOutcome::Stored;
        result.AutoloadNeeded = !Exists(stored / AutoloadFileName);
        return result;
    }
    if (environment.Home.empty() && environment.DocumentsDirectory.empty()) {
        return {};
    }
    ProjectsDirectory result = UseProjectsDirectory(ini, DefaultProjectsDirectory(environment));
    if (!result.Directory.empty()) {
        result.Outcome = ProjectsDirectoryOutcome::Default;
    }
    return result;
}

LibraryDirectory PrepareLibraryDirectory(const DirectoryEnvironment& environment) {
    LibraryDirectory result;
    result.Directory = WritableDataDirectory(environment);
    const fs::path shipped = ShippedDataDirectory(environment);
    if (result.Directory == shipped) {
        return result;
    }
    MakeWritableDirectory(result.Directory);
    for (const std::string_view name : {PipeLibraryFileName, PumpDatabaseFileName, TipsFileName}) {
        const fs::path source = shipped / name;
        const fs::path target = result.Directory / name;
        if (!Exists(source) || Exists(target)) {
            continue;
        }
        std::string bytes;
        const bool copied = ReadWholeFile(source, bytes) && WriteFileAtomically(target, bytes);
        (copied ? result.Copied : result.Failed).emplace_back(name);
    }
    return result;
}

std::string DirectoryNotFoundText(std::string_view subject, std::string_view file) {
    return "QUENCH encountered an error while trying to find the directory on your hard disk "
           "where the " +
           std::string(subject) + " are located.  Please locate the file " + std::string(file) +
           " in the following dialog...";
}

std::string DirectoryGivenUpText(std::string_view subject) {
    return "The " + std::string(subject) +
           " directory was not found.  Since QUENCH requires files in this directory, the "
           "program will now end.";
}

} // namespace quench
