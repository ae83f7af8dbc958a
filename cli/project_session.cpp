#include "cli/project_session.h"

#include "cli/command.h"
#include "core/record_file.h"
#include "core/settings.h"

#include <vector>

namespace quench::cli {

std::string Quoted(const std::filesystem::path& file) {
    return "\"" + file.string() + "\"";
}

void MessageLines::ShowMessage(MessageStyle, std::string_view title, std::string_view text) {
    if (!title.empty()) {
        err_ << title << ": ";
    }
    err_ << text << '\n';
}

ProjectSession::ProjectSession(Project& project, Dialogs& dialogs,
                               const std::filesystem::path& file)
    : file_(file), lifecycle_(project, dialogs, host_, IniFileHandler{}, file.parent_path()) {}

bool ProjectSession::Open(std::ostream& err, std::string_view verb) {
    const std::filesystem::path project = ProjectFileOf(file_);
    if (IsWorkingFileName(project)) {
        UsageError(err, "cannot " + std::string(verb) + " " + Quoted(file_) +
                            ": it is a working file; open its project in Quench to recover it");
        return false;
    }
    // The desktop's Open tells only "File not found"; a name that is there but cannot be read as
    // a file (a directory, a device, no permission) is told with its reason.
    std::error_code ignored;
    std::vector<std::uint8_t> head;
    std::string reason;
    if (std::filesystem::exists(project, ignored) && !ReadFileHead(project, 0, head, reason)) {
        UsageError(err, "cannot " + std::string(verb) + " " + Quoted(file_) + ": " + reason);
        return false;
    }
    lifecycle_.Open(file_);
    if (host_.FoundWorkingFile) {
        UsageError(err, "the working file " + Quoted(WorkingFileOf(project)) +
                            " of an unfinished session exists; open the project in Quench to "
                            "recover it");
    }
    return lifecycle_.ProjectIsLoaded();
}

} // namespace quench::cli
