#pragma once

// A project opened by a command through the lifecycle, as the desktop opens it: the named file
// copied to its working file (which marks the session while it runs), saved into the named file,
// and the working file gone when the command ends, whatever way it ends.

#include "app/project_lifecycle.h"
#include "core/dialogs.h"
#include "core/project.h"

#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>

namespace quench::cli {

std::string Quoted(const std::filesystem::path& file);

// The lifecycle's host without windows: a working file left by an unfinished session is noted
// and left alone.
class CommandLineHost final : public LifecycleHost {
public:
    TempFileChoice ChooseTempFileAction(std::string_view) override {
        FoundWorkingFile = true;
        return TempFileChoice::DoNotOpen;
    }
    bool FoundWorkingFile = false;
};

// The boxes of a command that asks nothing: each message one line on err, "Title: text"; a
// question takes its default answer.
class MessageLines final : public Dialogs {
public:
    explicit MessageLines(std::ostream& err) : err_(err) {}
    void ShowMessage(MessageStyle style, std::string_view title, std::string_view text) override;
    Answer Ask(Buttons, Answer answer, MessageStyle, std::string_view, std::string_view) override {
        return answer;
    }

private:
    std::ostream& err_;
};

class ProjectSession {
public:
    // No settings: a command leaves the desktop's recent files and folders as they were.
    ProjectSession(Project& project, Dialogs& dialogs, const std::filesystem::path& file);
    ~ProjectSession() { lifecycle_.Unload(); }
    ProjectSession(const ProjectSession&) = delete;
    ProjectSession& operator=(const ProjectSession&) = delete;

    // False, with the reason on err, when the project could not be opened; verb names what the
    // command would have done ("calculate").
    bool Open(std::ostream& err, std::string_view verb);
    bool Save() { return lifecycle_.SaveBeforeUnload(); }

private:
    std::filesystem::path file_;
    CommandLineHost host_;
    ProjectLifecycle lifecycle_;
};

} // namespace quench::cli
