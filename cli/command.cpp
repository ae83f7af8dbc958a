#include "cli/command.h"

#include <algorithm>
#include <ostream>

#ifndef QUENCH_VERSION_TEXT
#define QUENCH_VERSION_TEXT "601.30"
#endif

namespace quench::cli {

namespace {

std::vector<Command>& Registry() {
    static std::vector<Command> commands;
    return commands;
}

void PrintHelp(std::ostream& out) {
    out << "Usage: quench COMMAND [ARGUMENTS]\n"
           "Hydraulic calculation of fire sprinkler systems.\n\n"
           "Commands:\n";
    std::vector<Command> sorted = Commands();
    std::sort(sorted.begin(), sorted.end(),
              [](const Command& a, const Command& b) { return a.Name < b.Name; });
    for (const auto& command : sorted) {
        out << "  quench " << command.Name;
        if (!command.Usage.empty()) {
            out << ' ' << command.Usage;
        }
        out << "\n      " << command.Summary << '\n';
    }
    out << "\n  quench --version\n      Print the program's version.\n"
           "  quench --help\n      Print this text.\n\n"
           "Exit status: 0 success, 1 a run was stopped (a check, the solver or Cancel),\n"
           "2 a usage or file error.\n";
}

} // namespace

CommandRegistration::CommandRegistration(std::string_view name, std::string_view usage,
                                         std::string_view summary, CommandFunction run) {
    Registry().push_back(Command{std::string(name), std::string(usage), std::string(summary), run});
}

const std::vector<Command>& Commands() {
    return Registry();
}

int UsageError(std::ostream& err, std::string_view text) {
    err << "quench: " << text << '\n';
    return ExitUsage;
}

int RunCommandLine(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    if (arguments.empty()) {
        PrintHelp(err);
        return ExitUsage;
    }
    const std::string& name = arguments.front();
    if (name == "--help" || name == "-h" || name == "help") {
        PrintHelp(out);
        return ExitSuccess;
    }
    if (name == "--version") {
        out << "quench " << QUENCH_VERSION_TEXT << '\n';
        return ExitSuccess;
    }
    for (const auto& command : Commands()) {
        if (command.Name == name) {
            return command.Run(Arguments(arguments.begin() + 1, arguments.end()), out, err);
        }
    }
    return UsageError(err, "unknown command \"" + name + "\"; see quench --help");
}

} // namespace quench::cli
