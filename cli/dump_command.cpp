// quench dump FILE: the whole project in FILE as JSON on standard output.

#include "cli/command.h"
#include "core/project_file.h"
#include "core/project_json.h"

#include <filesystem>
#include <memory>
#include <ostream>

namespace quench::cli {

namespace {

int RunDump(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    if (arguments.size() != 1 || arguments.front().empty()) {
        return UsageError(err, "usage: quench dump FILE");
    }
    const std::filesystem::path file = arguments.front();
    // A damaged file is read as far as it goes and shown as read; only a file that cannot be
    // opened at all is an error.
    const auto project = std::make_unique<Project>();
    std::string error;
    if (!ReadProject(*project, file, &error)) {
        return UsageError(err, "cannot read \"" + file.string() + "\": " + error);
    }
    WriteProjectJson(*project, out);
    return ExitSuccess;
}

const CommandRegistration registration("dump", "FILE",
                                       "Print the project in FILE, every record and table, as "
                                       "JSON.",
                                       RunDump);

} // namespace

} // namespace quench::cli
