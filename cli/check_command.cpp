// quench check FILE: the independent check of the results stored in FILE.

#include "calc/independent_check.h"
#include "cli/command.h"
#include "core/project_file.h"

#include <filesystem>
#include <memory>
#include <ostream>

namespace quench::cli {

namespace {

int RunCheck(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    if (arguments.size() != 1 || arguments.front().empty() ||
        arguments.front().rfind("--", 0) == 0) {
        return UsageError(err, "usage: quench check FILE");
    }
    const std::filesystem::path file = arguments.front();
    const auto project = std::make_unique<Project>();
    std::string error;
    if (!ReadProject(*project, file, &error)) {
        return UsageError(err, "cannot read \"" + file.string() + "\": " + error);
    }
    if (project->NumberOfPipes <= 0 || project->NumberOfNodes <= 0) {
        return UsageError(err, "\"" + file.string() +
                                   "\" holds no calculated results; run quench calc first");
    }
    const CheckVerdict verdict = CheckPostedResults(*project);
    out << CheckVerdictText(verdict) << '\n';
    return verdict.Passed ? ExitSuccess : ExitStopped;
}

const CommandRegistration registration(
    "check", "FILE",
    "Solve the network of FILE again by a second method and compare its stored results: exit 0 "
    "when every pressure and flow agrees, 1 when one does not.",
    RunCheck);

} // namespace

} // namespace quench::cli
