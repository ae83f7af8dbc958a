#pragma once

// The life of a project: New, Open, Save, Save As, Close, the project-changed test, auto-save, the
// recent files list, the start file routine, dropped files and the way down.
//
// A project is never edited in its named file. Opening copies the named file to a working file
// beside it (".tmp"); the model is written to the working file; a Save copies the working file
// over the named file. A session that ends badly leaves the working file behind, and the next
// Open of the project offers it. An unnamed project is "Untitled.hid" with the working file
// "Untitled.tmp" in the projects directory. Every file is replaced through a temporary file and a
// rename, so that a kill at any moment leaves either the old or the new file.
//
// Windows, file dialogs and the busy cursor belong to the desktop; the lifecycle reaches them
// through LifecycleHost, and every message and question goes through Dialogs.

#include "app/command_table.h"
#include "core/atomic_write.h"
#include "core/dialogs.h"
#include "core/project.h"
#include "core/settings.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

namespace lifecycle_texts {
inline constexpr std::string_view ProgramTitle = "QUENCH";
inline constexpr std::string_view OpenErrorTitle = "Project File Open Error";
inline constexpr std::string_view DiskUnusable =
    "An error occured while trying to open your project.  The disk or directory that you are "
    "using is full or corrupted, so you must change directories or free up disk space in order "
    "to access this file.";
inline constexpr std::string_view OldProjectStays =
    "An error occured while trying to open your project.  The project that was open when you "
    "attempted this operation is the current project.";
inline constexpr std::string_view TempFileUnusable =
    "An error occured while trying to open the temp file left from your project.  The file must "
    "not be usable.";
inline constexpr std::string_view FileNotFound = "Error: File not found.";
inline constexpr std::string_view DosProject =
    "This is a DOS QUENCH Project File.  Please select Convert DOS QUENCH Project Files from the "
    "File menu.";
inline constexpr std::string_view ProjectChangedTitle = "Project has changed";
inline constexpr std::string_view ProjectChanged =
    "The project file has changed.  Do you wish to save this project?";
inline constexpr std::string_view UnsavedTempTitle = "Unsaved Temporary File Exists";
inline constexpr std::string_view UnsavedTemp =
    "An unsaved temporary file left by a previous QUENCH session has been found.  This is a file "
    "the was in the process of being edited when QUENCH or Windows encountered a problem.  QUENCH "
    "will attempt to recover this file.";
inline constexpr std::string_view SaveAsErrorTitle = "File Save As Error";
inline constexpr std::string_view SaveAsError =
    "It is not necessary to specify the filename's extension.  Although, if you specify the "
    "filename's extension, it must be \"qnw\".";
inline constexpr std::string_view SaveErrorTitle = "Project File Save Error";
inline constexpr std::string_view TooManyFilesTitle = "Too Many Files Dropped";
inline constexpr std::string_view TooManyFiles =
    "Only one file may be dropped into QUENCH at a time.";
inline constexpr std::string_view Autosaving = "Autosaving...";
inline constexpr std::string_view TempFileDetectedTitle = "Temporary File Detected:  ";
inline constexpr std::string_view TempFileDetected =
    "QUENCH has detected a temporary file which was in use when this project was last being "
    "edited.  Please select an option below.";
// Each choice of frmTempFile is shown on two lines.
inline constexpr std::string_view OpenTemporaryFirst =
    "Open the temporary file and preserve the most recent inputs";
inline constexpr std::string_view OpenTemporarySecond = "(recommended).";
inline constexpr std::string_view OpenSavedFirst =
    "Delete the temporary file and open the most recently";
inline constexpr std::string_view OpenSavedSecond = "saved version of this project.";
inline constexpr std::string_view DoNotOpen = "Do not open this project right now.";
} // namespace lifecycle_texts

inline constexpr std::string_view UntitledProjectName = "Untitled.hid";
inline constexpr std::string_view UntitledWorkingName = "Untitled.tmp";
inline constexpr std::string_view ProjectExtension = ".qnw";
inline constexpr std::string_view LegacyExtension = ".qnd";

// The one rule for the files of a project, for the desktop and every command that saves: a name
// without an extension is a ".qnw" project; its working file is the name with ".tmp" in place of
// the extension, beside it. A ".tmp" file is a working file and never opened as a project.
std::filesystem::path ProjectFileOf(std::filesystem::path file);
std::filesystem::path WorkingFileOf(const std::filesystem::path& projectFile);
bool IsWorkingFileName(const std::filesystem::path& file);

// The answer of frmTempFile.
enum class TempFileChoice { OpenTemporary, OpenSaved, DoNotOpen };

struct FileDialogRequest {
    std::string Title;
    std::string FilterName; // "QUENCH File (*.QNW)"
    std::string Pattern;    // "*.QNW"
    std::string DefaultExtension;
    std::filesystem::path Directory;
};

// The project screens whose place is remembered ("TabOnTop" of their settings sections).
inline constexpr std::string_view GeneralDataScreen = "frmGPD";
inline constexpr std::string_view PipeDataScreen = "frmEEPipeData";
inline constexpr std::string_view CalculationScreenName = "frmCalculation";

// What the desktop does for the lifecycle. The defaults do nothing, as a run without windows needs.
class LifecycleHost {
public:
    virtual ~LifecycleHost() = default;

    virtual void SetBusy(bool /*busy*/) {}
    // Each open screen stores what is being typed (FormsWriteBack).
    virtual void WriteBackEditors() {}
    // The names of the open project screens; close them all; open one.
    virtual std::vector<std::string> OpenProjectScreens() const { return {}; }
    virtual void UnloadProjectScreens() {}
    virtual void OpenProjectScreen(std::string_view /*screen*/) {}
    // The project was opened, closed, renamed or saved: title, commands and recent files follow.
    virtual void ProjectStateChanged() {}
    virtual void ShowStatusText(std::string_view /*text*/) {}

    // Nothing when the user cancels.
    virtual std::optional<std::filesystem::path> ChooseOpenFile(const FileDialogRequest&) {
        return std::nullopt;
    }
    virtual std::optional<std::filesystem::path> ChooseSaveFile(const FileDialogRequest&) {
        return std::nullopt;
    }
    // frmTempFile, under the title given.
    virtual TempFileChoice ChooseTempFileAction(std::string_view /*title*/) {
        return TempFileChoice::DoNotOpen;
    }
};

class ProjectLifecycle {
public:
    ProjectLifecycle(Project& project, Dialogs& dialogs, LifecycleHost& host,
                     IniFileHandler settings, std::filesystem::path projectsDirectory);

    // The flags of the program.
    bool ProjectIsLoaded() const { return projectIsLoaded_; }
    bool ProjectClosing() const { return projectClosing_; }
    void SetProjectClosing(bool closing) { projectClosing_ = closing; }
    bool KeepProjectOpen() const { return keepProjectOpen_; }
    int AutoSaveCounter() const { return autoSaveCounter_; }
    bool AutoSaveIsOn() const { return autoSaveIsOn_; }
    // The output tables in memory are the last run's (cleared by opening and closing a project).
    bool ResultsFresh() const { return resultsFresh_; }
    void SetResultsFresh(bool fresh) { resultsFresh_ = fresh; }

    const std::filesystem::path& ProjectFileName() const { return projectFileName_; }
    const std::filesystem::path& TempFileName() const { return tempFileName_; }
    const std::filesystem::path& BackupFileName() const { return backupFileName_; }
    const std::filesystem::path& ProjectsDirectory() const { return projectsDirectory_; }
    bool IsUntitled() const;

    // "Quench - " and the file name while a project is open, "Quench" otherwise.
    std::string Title() const;
    const CommandAvailability& Commands() const { return commands_; }
    std::vector<std::string> RecentFileList() const;

    // The commands.
    void New();
    // With no file: the unnamed project left by a failed session (at start-up only), otherwise
    // the file dialog. With a file, as the recent list, a drop or the command line give it.
    void Open(const std::optional<std::filesystem::path>& file = std::nullopt);
    bool Save();
    // Save as the last step of a session that ends at once (a command): only the named file is
    // written and synced; the working file is left for Unload to remove.
    bool SaveBeforeUnload();
    bool SaveAs();
    bool Close();
    void OpenRecentFile(int place);
    void DropFiles(const std::vector<std::filesystem::path>& files);

    // Before anything that would lose the open project: writes the model to the working file
    // and, when it differs from the named file or the input changed, asks whether to save.
    void IsProjectOpenOrChanged();

    // One tick of the auto-save timer, a minute.
    void AutoSaveTick();

    // At start-up, with the command line's file name (may be empty).
    void RunStartFile(std::string_view commandLine);

    // The way down: true when the program may end (the user did not cancel), then Unload.
    bool QueryUnload();
    void Unload();

private:
    class BusyCursor;

    void SetNames(const std::filesystem::path& projectFile);
    void SetUntitledNames();
    void ClearNames();
    std::filesystem::path UntitledWorkingFile() const;
    std::filesystem::path UntitledProjectFile() const;

    void RecoverUntitled();
    void OpenNamed(std::filesystem::path file);
    bool TryFile(const std::vector<std::uint8_t>& bytes);
    bool LoadWorkingCopy(const std::vector<std::uint8_t>& bytes);
    static bool CanBeOpened(const std::filesystem::path& file);
    static bool FitsTheModel(const std::vector<std::uint8_t>& bytes);
    void Loaded();
    void ClosedAfterFailure(std::string_view text);
    void Closed();
    bool CloseOpenProject();

    void RecordOpenScreens();
    void UnloadScreens();
    void OpenRememberedScreens();

    bool WriteWorkingFile();
    bool CopyFile(const std::filesystem::path& from, const std::filesystem::path& to,
                  std::string* error = nullptr, Durability durability = Durability::Synced);
    void RemoveFile(const std::filesystem::path& file);
    void ShowOpenError(std::string_view text);
    void ShowSaveError(const std::filesystem::path& file, std::string_view error);
    void WriteLastOpened();

    Project& project_;
    Dialogs& dialogs_;
    LifecycleHost& host_;
    IniFileHandler settings_;
    std::filesystem::path projectsDirectory_;
    CommandAvailability commands_;

    std::filesystem::path projectFileName_;
    std::filesystem::path tempFileName_;
    std::filesystem::path backupFileName_;

    bool projectIsLoaded_ = false;
    // The model already holds the file being opened: nothing was open to keep, so the file was
    // read straight into it when it was tried.
    bool readAhead_ = false;
    bool projectClosing_ = false;
    bool keepProjectOpen_ = false;
    bool resultsFresh_ = false;
    bool autoSaveIsOn_ = true;
    int autoSaveCounter_ = 0;
    // "Untitled.tmp" and "Untitled.hid" were made by this session, so they go at its end. Files
    // of a failed session that were not recovered stay for the next start to offer.
    bool untitledOwned_ = false;
};

} // namespace quench
