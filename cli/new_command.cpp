// quench new FILE: a new, empty project written to FILE.

#include "cli/command.h"
#include "core/project_file.h"

#include <filesystem>
#include <memory>
#include <ostream>

namespace quench::cli {

namespace {

std::string Quoted(const std::filesystem::path& file) {
    return "\"" + file.string() + "\"";
}

int RunNew(const Arguments& arguments, std::ostream& /*out*/, std::ostream& err) {
    if (arguments.size() != 1 || arguments.front().empty()) {
        return UsageError(err, "usage: quench new FILE");
    }
    const std::filesystem::path file = arguments.front();
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored)) {
        return UsageError(err, "cannot write " + Quoted(file) + ": it is a directory");
    }
    // Like every save, the new project is laid over what the file held: records beyond its end
    // stay as they were.
    const auto project = std::make_unique<Project>();
    std::string error;
    if (WriteProject(*project, file, &error) != WriteOutcome::Written) {
        return UsageError(err, "cannot write " + Quoted(file) + ": " + error);
    }
    return ExitSuccess;
}

const CommandRegistration registration("new", "FILE", "Write a new, empty project to FILE.",
                                       RunNew);

} // namespace

} // namespace quench::cli
