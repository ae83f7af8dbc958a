#include "app/project_lifecycle.h"

#include "app/directories.h"
#include "app/recent_files.h"
#include "app/start_file.h"
#include "core/atomic_write.h"
#include "core/linked_copy.h"
#include "core/project_file.h"
#include "core/record_file.h"
#include "core/settings_keys.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

namespace quench {

namespace fs = std::filesystem;
namespace texts = lifecycle_texts;

namespace {

bool Exists(const fs::path& file) {
    std::error_code ignored;
    return fs::exists(file, ignored);
}

bool IsRegularFile(const fs::path& file) {
    std::error_code ignored;
    return fs::is_regular_file(file, ignored);
}

bool HasExtension(const fs::path& file, std::string_view extension) {
    return EqualsIgnoreCase(file.extension().string(), extension);
}

// A file name as the lifecycle keeps it: absolute, so that the names derived from it, the title
// and the recent list do not depend on the current directory.
fs::path Absolute(const fs::path& file) {
    std::error_code ignored;
    fs::path absolute = fs::absolute(file, ignored);
    return absolute.empty() ? file : absolute.lexically_normal();
}

// The table counts the model can hold: a file beyond them would never be written again, so every
// later edit would be lost.
bool CountsWithinCapacity(const Project& project) {
    const auto within = [](Integer count) { return count >= 0 && count <= MaxPipes; };
    return within(project.NumberOfPipeRows) && within(project.NumberOfPipes) &&
           within(project.NumberOfNodes) &&
           within(project.CalculationData.NumberOfUniquePipeSections);
}

// The screens whose place is remembered, with their settings sections.
struct RememberedScreen {
    std::string_view Screen;
    std::string_view Section;
};

constexpr std::array RememberedScreens{
    RememberedScreen{GeneralDataScreen, sections::GPDForm},
    RememberedScreen{PipeDataScreen, sections::EnterEditPipeData},
    RememberedScreen{CalculationScreenName, sections::Calculation},
};

} // namespace

fs::path ProjectFileOf(fs::path file) {
    if (!file.has_extension()) {
        file += ProjectExtension;
    }
    return Absolute(file);
}

fs::path WorkingFileOf(const fs::path& projectFile) {
    return fs::path(projectFile).replace_extension(".tmp");
}

bool IsWorkingFileName(const fs::path& file) {
    return HasExtension(file, ".tmp");
}

class ProjectLifecycle::BusyCursor {
public:
    explicit BusyCursor(LifecycleHost& host) : host_(host) { host_.SetBusy(true); }
    ~BusyCursor() { host_.SetBusy(false); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

private:
    LifecycleHost& host_;
};

ProjectLifecycle::ProjectLifecycle(Project& project, Dialogs& dialogs, LifecycleHost& host,
                                   IniFileHandler settings, fs::path projectsDirectory)
    : project_(project), dialogs_(dialogs), host_(host), settings_(std::move(settings)),
      projectsDirectory_(std::move(projectsDirectory)) {}

bool ProjectLifecycle::IsUntitled() const {
    return EqualsIgnoreCase(projectFileName_.filename().string(), UntitledProjectName);
}

std::string ProjectLifecycle::Title() const {
    return projectIsLoaded_ ? FrameTitle(projectFileName_.string()) : std::string("Quench");
}

std::vector<std::string> ProjectLifecycle::RecentFileList() const {
    return RecentFiles(settings_).Entries();
}

fs::path ProjectLifecycle::UntitledWorkingFile() const {
    return projectsDirectory_ / UntitledWorkingName;
}

fs::path ProjectLifecycle::UntitledProjectFile() const {
    return projectsDirectory_ / UntitledProjectName;
}

void ProjectLifecycle::SetNames(const fs::path& projectFile) {
    projectFileName_ = projectFile;
    tempFileName_ = WorkingFileOf(projectFile);
    backupFileName_ = fs::path(projectFile).replace_extension(".bak");
}

void ProjectLifecycle::ClearNames() {
    projectFileName_.clear();
    tempFileName_.clear();
    backupFileName_.clear();
}

void ProjectLifecycle::SetUntitledNames() {
    projectFileName_ = UntitledProjectFile();
    tempFileName_ = UntitledWorkingFile();
    backupFileName_.clear();
}

// --- New

void ProjectLifecycle::New() {
    const BusyCursor busy(host_);
    UnloadScreens();
    if (!projectClosing_ && projectIsLoaded_ && !CloseOpenProject()) {
        return;
    }
    SetUntitledNames();
    untitledOwned_ = true;
    ResetProject(project_);
    project_.UnitSystem = Metric(settings_) ? 1 : 0;
    const fs::path autoload = projectsDirectory_ / AutoloadFileName;
    if (NewProjectsCopyAutoload(settings_) && Exists(autoload)) {
        // The template's general data and calculation settings, without its network.
        project_.LoadingTemplate = true;
        ReadProjectHeader(project_, autoload);
        if (CopyFile(autoload, tempFileName_)) {
            ReadProject(project_, tempFileName_);
        }
        ResetProject(project_);
        project_.LoadingTemplate = false;
    }
    // The unnamed file is the new project as it starts, so an untouched project closes quietly.
    std::string error;
    if (WriteProject(project_, tempFileName_, &error) != WriteOutcome::Written ||
        !CopyFile(tempFileName_, projectFileName_, &error)) {
        ShowSaveError(tempFileName_, error);
        Closed();
        return;
    }
    WriteProjectPath(settings_, projectsDirectory_.string());
    Loaded();
}

// --- Open

void ProjectLifecycle::Open(const std::optional<fs::path>& file) {
    const BusyCursor busy(host_);
    if (file) {
        OpenNamed(*file);
        return;
    }
    if (projectClosing_ && Exists(UntitledWorkingFile())) {
        RecoverUntitled();
        return;
    }
    FileDialogRequest request;
    request.Title = "Open";
    request.FilterName = "QUENCH File (*.QNW)";
    request.Pattern = "*.QNW";
    request.Directory =
        projectIsLoaded_ && !IsUntitled() ? projectFileName_.parent_path() : projectsDirectory_;
    const std::optional<fs::path> chosen = host_.ChooseOpenFile(request);
    if (chosen) {
        OpenNamed(*chosen);
    }
}

void ProjectLifecycle::RecoverUntitled() {
    ResetProject(project_);
    const Answer answer = dialogs_.Ask(Buttons::OkCancel, Answer::Ok, MessageStyle::Warning,
                                       texts::UnsavedTempTitle, texts::UnsavedTemp);
    if (answer == Answer::Cancel) {
        return; // the file stays for a later start
    }
    SetUntitledNames();
    if (!CanBeOpened(tempFileName_)) {
        ClosedAfterFailure(texts::TempFileUnusable);
        return;
    }
    untitledOwned_ = true;
    if (!CopyFile(tempFileName_, projectFileName_)) {
        ClosedAfterFailure(texts::DiskUnusable);
        return;
    }
    if (!ReadProject(project_, tempFileName_)) {
        ClosedAfterFailure(texts::TempFileUnusable);
        return;
    }
    WriteProjectPath(settings_, projectsDirectory_.string());
    Loaded();
    WriteWorkingFile();
}

bool ProjectLifecycle::CanBeOpened(const fs::path& file) {
    std::vector<std::uint8_t> bytes;
    std::string reason;
    const auto reach = static_cast<std::size_t>(LastRecordNumber) * ProjectRecordLength;
    return ReadFileHead(file, reach, bytes, reason) && FitsTheModel(bytes);
}

// The bytes read as a project apart from the model, which stays as it is.
bool ProjectLifecycle::FitsTheModel(const std::vector<std::uint8_t>& bytes) {
    const auto candidate = std::make_unique<Project>();
    ReadProjectFileBytes(*candidate, bytes);
    return CountsWithinCapacity(*candidate);
}

void ProjectLifecycle::OpenNamed(fs::path file) {
    file = ProjectFileOf(std::move(file));
    if (!IsRegularFile(file)) {
        dialogs_.ShowMessage(MessageStyle::Critical, texts::ProgramTitle, texts::FileNotFound);
        return;
    }
    if (HasExtension(file, LegacyExtension)) {
        dialogs_.ShowMessage(MessageStyle::Information, texts::ProgramTitle, texts::DosProject);
        return;
    }
    // A working file opened as a project would be its own copy.
    if (IsWorkingFileName(file)) {
        ShowOpenError(texts::OldProjectStays);
        return;
    }
    // The file is read once, and tried before the open project is given up, so a file that
    // cannot be a project leaves the open one as it was.
    std::vector<std::uint8_t> bytes;
    std::string reason;
    if (!ReadFileHead(file, std::numeric_limits<std::size_t>::max(), bytes, reason) ||
        !TryFile(bytes)) {
        ShowOpenError(texts::OldProjectStays);
        return;
    }
    UnloadScreens();
    if (!projectClosing_ && projectIsLoaded_ && !CloseOpenProject()) {
        return;
    }
    SetNames(file);
    if (Exists(tempFileName_)) {
        const std::string title = std::string(texts::TempFileDetectedTitle) + file.string();
        switch (host_.ChooseTempFileAction(title)) {
        case TempFileChoice::OpenTemporary:
            if (!CanBeOpened(tempFileName_)) {
                ClosedAfterFailure(texts::TempFileUnusable);
                return;
            }
            if (!CopyFile(tempFileName_, projectFileName_)) {
                ClosedAfterFailure(texts::DiskUnusable);
                return;
            }
            ResetProject(project_);
            if (!ReadProject(project_, tempFileName_)) {
                ClosedAfterFailure(texts::TempFileUnusable);
                return;
            }
            break;
        case TempFileChoice::OpenSaved:
            if (!LoadWorkingCopy(bytes)) {
                return;
            }
            break;
        case TempFileChoice::DoNotOpen:
            Closed();
            return;
        }
    } else if (!LoadWorkingCopy(bytes)) {
        return;
    }
    // The second hydrant test's numbers are held as numbers here, so the old decimal character
    // adjustment of their texts has nothing to do.
    Loaded();
    RecentFiles(settings_).Add(projectFileName_.string());
    host_.ProjectStateChanged();
    OpenRememberedScreens();
}

bool ProjectLifecycle::TryFile(const std::vector<std::uint8_t>& bytes) {
    readAhead_ = !projectIsLoaded_;
    if (!readAhead_) {
        return FitsTheModel(bytes);
    }
    ResetProject(project_);
    ReadProjectFileBytes(project_, bytes);
    if (!CountsWithinCapacity(project_)) {
        ResetProject(project_);
        readAhead_ = false;
    }
    return readAhead_;
}

// The working copy of a file that stays on the disk as it was: a crash loses nothing that a sync
// would keep. Where it can, the copy is a second name of the named file, else the bytes read are
// written. The model is read from the same bytes.
bool ProjectLifecycle::LoadWorkingCopy(const std::vector<std::uint8_t>& bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (!MakeLinkedCopy(projectFileName_, tempFileName_, bytes.size()) &&
        !WriteFileAtomically(tempFileName_, text, nullptr, Durability::Unsynced)) {
        readAhead_ = false;
        ClosedAfterFailure(texts::DiskUnusable);
        return false;
    }
    if (!readAhead_) {
        ResetProject(project_);
        ReadProjectFileBytes(project_, bytes);
    }
    readAhead_ = false;
    return true;
}

void ProjectLifecycle::Loaded() {
    projectIsLoaded_ = true;
    resultsFresh_ = false;
    autoSaveCounter_ = 0;
    commands_.EnableActiveBarTools();
    host_.ProjectStateChanged();
}

void ProjectLifecycle::ClosedAfterFailure(std::string_view text) {
    ShowOpenError(text);
    Closed();
}

// No project is open now (the one that was has been closed on the way): nothing of it is kept.
void ProjectLifecycle::Closed() {
    ResetProject(project_);
    ClearNames();
    projectIsLoaded_ = false;
    commands_.DisableActiveBarTools();
    host_.ProjectStateChanged();
}

void ProjectLifecycle::OpenRecentFile(int place) {
    const std::vector<std::string> entries = RecentFileList();
    if (place >= 0 && place < static_cast<int>(entries.size())) {
        Open(fs::path(entries[static_cast<std::size_t>(place)]));
    }
}

void ProjectLifecycle::DropFiles(const std::vector<fs::path>& files) {
    if (files.size() > 1) {
        dialogs_.ShowMessage(MessageStyle::Information, texts::TooManyFilesTitle,
                             texts::TooManyFiles);
        return;
    }
    if (files.size() == 1 && HasExtension(files.front(), ProjectExtension)) {
        Open(files.front());
    }
}

// --- The project-changed test

void ProjectLifecycle::IsProjectOpenOrChanged() {
    if (!projectIsLoaded_) {
        return;
    }
    // What the screens hold is in the model; the working file gets it before the compare. A
    // working file that cannot be written compares as changed, so nothing goes unasked.
    const bool written = WriteWorkingFile();
    const bool changed = !written || CompareProjectFiles(tempFileName_, projectFileName_) ||
                         IsTrue(project_.InputChanged);
    if (changed) {
        const Answer answer =
            dialogs_.Ask(Buttons::YesNoCancel, Answer::Yes, MessageStyle::Question,
                         texts::ProjectChangedTitle, texts::ProjectChanged);
        if (answer == Answer::Yes) {
            if (Save()) {
                RemoveFile(tempFileName_); // saved: the two files are the same now
            } else {
                keepProjectOpen_ = true;
            }
        } else if (answer == Answer::No) {
            RemoveFile(tempFileName_);
        } else {
            keepProjectOpen_ = true;
        }
    } else {
        RemoveFile(tempFileName_);
    }
    if (!keepProjectOpen_) {
        ResetProject(project_);
        projectIsLoaded_ = false;
    }
}

// The test, and its Cancel turned into "the operation stops": false when the project stays.
bool ProjectLifecycle::CloseOpenProject() {
    IsProjectOpenOrChanged();
    if (keepProjectOpen_) {
        keepProjectOpen_ = false;
        host_.ProjectStateChanged();
        return false;
    }
    return true;
}

// --- Save and Save As

bool ProjectLifecycle::Save() {
    host_.WriteBackEditors();
    if (!projectIsLoaded_) {
        return false;
    }
    if (IsUntitled()) {
        return SaveAs();
    }
    // The working file and its copy over the named file, from one image.
    std::string error;
    fs::path failed;
    if (SaveProject(project_, tempFileName_, projectFileName_, &error, &failed) !=
        WriteOutcome::Written) {
        if (!error.empty()) {
            ShowSaveError(failed, error);
        }
        return false;
    }
    autoSaveCounter_ = 0;
    return true;
}

bool ProjectLifecycle::SaveBeforeUnload() {
    host_.WriteBackEditors();
    if (!projectIsLoaded_ || IsUntitled()) {
        return Save();
    }
    std::string error;
    if (WriteProject(project_, projectFileName_, &error) != WriteOutcome::Written) {
        if (!error.empty()) {
            ShowSaveError(projectFileName_, error);
        }
        return false;
    }
    autoSaveCounter_ = 0;
    return true;
}

bool ProjectLifecycle::SaveAs() {
    host_.WriteBackEditors();
    if (!projectIsLoaded_) {
        return false;
    }
    FileDialogRequest request;
    request.Title = "Save File As...";
    request.FilterName = "QUENCH File (*.qnw)";
    request.Pattern = "*.qnw";
    request.DefaultExtension = "qnw";
    request.Directory = IsUntitled() ? projectsDirectory_ : projectFileName_.parent_path();
    fs::path file;
    for (;;) {
        const std::optional<fs::path> chosen = host_.ChooseSaveFile(request);
        if (!chosen) {
            return false;
        }
        file = *chosen;
        if (!file.has_extension() || HasExtension(file, ProjectExtension)) {
            break;
        }
        dialogs_.ShowMessage(MessageStyle::Critical, texts::SaveAsErrorTitle, texts::SaveAsError);
    }
    file = ProjectFileOf(file);
    std::string error;
    if (!WriteWorkingFile() || !CopyFile(tempFileName_, file, &error)) {
        if (!error.empty()) {
            ShowSaveError(file, error);
        }
        return false;
    }
    // The old working file stays where it is; the new name gets its own.
    SetNames(file);
    if (!CopyFile(projectFileName_, tempFileName_, &error)) {
        ShowSaveError(tempFileName_, error);
    }
    autoSaveCounter_ = 0;
    RecentFiles(settings_).Add(projectFileName_.string());
    host_.ProjectStateChanged();
    return true;
}

// --- Close and the way down

bool ProjectLifecycle::Close() {
    host_.WriteBackEditors();
    UnloadScreens();
    if (!projectClosing_ && projectIsLoaded_ && !CloseOpenProject()) {
        return false;
    }
    ResetProject(project_);
    projectIsLoaded_ = false;
    resultsFresh_ = false;
    if (!projectFileName_.empty()) {
        WriteProjectPath(settings_, projectFileName_.parent_path().string());
    }
    WriteLastOpened();
    commands_.DisableActiveBarTools();
    host_.ProjectStateChanged();
    return true;
}

void ProjectLifecycle::WriteLastOpened() {
    const bool named = HasExtension(projectFileName_, ProjectExtension);
    quench::WriteLastOpened(settings_, named ? projectFileName_.string() : std::string());
}

// Close writes LastOpened and ProjectPath, as the way down asks.
bool ProjectLifecycle::QueryUnload() {
    if (projectIsLoaded_) {
        WriteWorkingFile();
    }
    return Close();
}

void ProjectLifecycle::Unload() {
    if (projectIsLoaded_) {
        RemoveFile(tempFileName_);
    }
    if (untitledOwned_) {
        RemoveFile(UntitledProjectFile());
        RemoveFile(UntitledWorkingFile());
    }
}

// --- Auto-save and the start

void ProjectLifecycle::AutoSaveTick() {
    autoSaveIsOn_ = AutoSave(settings_);
    if (!autoSaveIsOn_) {
        return;
    }
    ++autoSaveCounter_;
    if (autoSaveCounter_ < std::max<int>(1, AutoSaveInterval(settings_))) {
        return;
    }
    autoSaveCounter_ = 0;
    if (!projectIsLoaded_) {
        return;
    }
    host_.ShowStatusText(texts::Autosaving);
    std::string error;
    const bool written = WriteProject(project_, tempFileName_, &error) == WriteOutcome::Written;
    host_.ShowStatusText(written ? std::string() : "Autosave failed: " + error);
}

void ProjectLifecycle::RunStartFile(std::string_view commandLine) {
    // The start holds off the closing prompts; the unnamed project of a failed session is only
    // offered now.
    projectClosing_ = true;
    const StartFile start =
        DecideStartFile(commandLine, OpenLastProject(settings_), LastOpened(settings_),
                        projectsDirectory_, Exists(UntitledWorkingFile()));
    if (start.What == StartFile::Action::Open) {
        Open(start.File);
    } else if (start.What == StartFile::Action::Recover) {
        Open();
    }
    projectClosing_ = false;
}

// --- Screens

void ProjectLifecycle::RecordOpenScreens() {
    if (!projectIsLoaded_) {
        return;
    }
    const std::vector<std::string> open = host_.OpenProjectScreens();
    for (const RememberedScreen& remembered : RememberedScreens) {
        const bool isOpen = std::find(open.begin(), open.end(), remembered.Screen) != open.end();
        if ((TabOnTop(settings_, remembered.Section) != 0) != isOpen) {
            WriteTabOnTop(settings_, remembered.Section, isOpen ? 1 : 0);
        }
    }
}

void ProjectLifecycle::UnloadScreens() {
    RecordOpenScreens();
    host_.UnloadProjectScreens();
}

void ProjectLifecycle::OpenRememberedScreens() {
    for (const RememberedScreen& remembered : RememberedScreens) {
        if (TabOnTop(settings_, remembered.Section) != 0) {
            host_.OpenProjectScreen(remembered.Screen);
        }
    }
}

// --- Files

bool ProjectLifecycle::WriteWorkingFile() {
    std::string error;
    // A project beyond the tables' capacity is not written either: the user must hear of it.
    const WriteOutcome outcome = WriteProject(project_, tempFileName_, &error);
    if (outcome != WriteOutcome::Written) {
        ShowSaveError(tempFileName_, error);
    }
    return outcome == WriteOutcome::Written;
}

bool ProjectLifecycle::CopyFile(const fs::path& from, const fs::path& to, std::string* error,
                                Durability durability) {
    std::string bytes;
    if (!ReadWholeFile(from, bytes)) {
        if (error != nullptr) {
            *error = "cannot read " + from.string();
        }
        return false;
    }
    return WriteFileAtomically(to, bytes, error, durability);
}

void ProjectLifecycle::RemoveFile(const fs::path& file) {
    std::error_code ignored;
    if (!file.empty()) {
        fs::remove(file, ignored);
    }
}

void ProjectLifecycle::ShowOpenError(std::string_view text) {
    dialogs_.ShowMessage(MessageStyle::Critical, texts::OpenErrorTitle, text);
}

void ProjectLifecycle::ShowSaveError(const fs::path& file, std::string_view error) {
    dialogs_.ShowMessage(MessageStyle::Critical, texts::SaveErrorTitle,
                         "An error occurred while trying to save your project to " + file.string() +
                             ": " + std::string(error) +
                             ".  Your changes are still open in QUENCH.");
}

} // namespace quench
