#pragma once

// The subcommands of the quench command. Each command lives in a file of its own and registers
// itself with a CommandRegistration object, so adding one touches no shared table.

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace quench::cli {

// Exit status of the command line.
constexpr int ExitSuccess = 0;
constexpr int ExitStopped = 1; // a check, the solver or Cancel stopped a run
constexpr int ExitUsage = 2;   // a usage or file error

using Arguments = std::vector<std::string>;
using CommandFunction = int (*)(const Arguments& arguments, std::ostream& out, std::ostream& err);

struct Command {
    std::string Name;
    std::string Usage;   // the arguments, as in "FILE [--json OUT]"
    std::string Summary; // one line for --help
    CommandFunction Run = nullptr;
};

struct CommandRegistration {
    CommandRegistration(std::string_view name, std::string_view usage, std::string_view summary,
                        CommandFunction run);
};

const std::vector<Command>& Commands();

// Runs one command line (without the program name) and returns its exit status.
int RunCommandLine(const Arguments& arguments, std::ostream& out, std::ostream& err);

// One line on err, "quench: " and the text, and the usage status.
int UsageError(std::ostream& err, std::string_view text);

} // namespace quench::cli
