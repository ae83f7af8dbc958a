#pragma once

// What the program opens when it starts: the project named on the command line, or the last
// project when the options ask for it, or the unnamed project a failed session left behind.

#include <filesystem>
#include <string_view>

namespace quench {

struct StartFile {
    enum class Action {
        Nothing, // no name and nothing to recover
        Recover, // "Untitled.tmp" is there: Open with no name offers it
        Open,    // Open with File as the file given
    };
    Action What = Action::Nothing;
    std::filesystem::path File;
};

// The name given, trimmed (or LastOpened when nothing is given and openLastProject is set), gets
// the projects directory in front when it names no directory. A project file (".qnw") is opened as
// given; any other name follows the old rule and gets ".TEM" added unless it ends in it, so that a
// name with no such file ends in "Error: File not found.". The name is made absolute.
StartFile DecideStartFile(std::string_view commandLine, bool openLastProject,
                          std::string_view lastOpened,
                          const std::filesystem::path& projectsDirectory, bool untitledTempExists);

} // namespace quench
