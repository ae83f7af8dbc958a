// quench pipes FILE [--import TABLE.csv [--sort]]: the pipe table of a project as CSV on standard
// output, or the project's rows replaced by a CSV table through the pipe table's own rules and the
// project saved as Save does.

#include "cli/command.h"
#include "cli/library_arguments.h"
#include "cli/project_session.h"
#include "core/atomic_write.h"
#include "core/project_file.h"
#include "core/text.h"
#include "entry/pipe_table.h"
#include "entry/pipe_table_csv.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>

namespace quench::cli {

namespace {

constexpr const char* Usage = "FILE [--import TABLE.csv [--sort]] [--library FILE]";

struct PipesArguments {
    std::filesystem::path File;
    std::filesystem::path Import;
    bool Sort = false;
    LibraryArguments Library;
};

std::optional<PipesArguments> ParseArguments(const Arguments& arguments, std::ostream& err) {
    PipesArguments parsed;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "--import" || word == "--library") {
            if (i + 1 == arguments.size() || arguments[i + 1].empty()) {
                UsageError(err, word + " needs a file name");
                return std::nullopt;
            }
            (word == "--import" ? parsed.Import : parsed.Library.Library) = arguments[++i];
        } else if (word == "--sort") {
            parsed.Sort = true;
        } else if (word.rfind("--", 0) == 0 || !parsed.File.empty() || word.empty()) {
            UsageError(err, std::string("usage: quench pipes ") + Usage);
            return std::nullopt;
        } else {
            parsed.File = word;
        }
    }
    if (parsed.File.empty() || (parsed.Sort && parsed.Import.empty())) {
        UsageError(err, std::string("usage: quench pipes ") + Usage);
        return std::nullopt;
    }
    return parsed;
}

bool ReadNamedProject(const std::filesystem::path& file, Project& project, std::ostream& err) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        UsageError(err, "cannot read " + Quoted(file) + ": no such project file");
        return false;
    }
    std::string reason;
    if (!ReadProject(project, file, &reason)) {
        UsageError(err, "cannot read " + Quoted(file) + ": " + reason);
        return false;
    }
    if (project.NumberOfPipeRows > MaxPipes || project.NumberOfPipeRows < 0) {
        UsageError(err, "cannot open " + Quoted(file) + ": it holds more pipes than a project may");
        return false;
    }
    return true;
}

int Import(const PipesArguments& arguments, std::ostream& err) {
    std::string table;
    if (std::string reason; !ReadWholeFile(arguments.Import, table, &reason)) {
        return UsageError(err, "cannot read " + Quoted(arguments.Import) + ": " + reason);
    }
    const std::optional<PipeLibrary> library = LoadCommandLibrary(arguments.Library, err);
    if (!library) {
        return ExitUsage;
    }
    const auto project = std::make_unique<Project>();
    MessageLines dialogs(err);
    ProjectSession session(*project, dialogs, arguments.File);
    if (!session.Open(err, "import into")) {
        return ExitUsage;
    }
    const PipeCsvImport imported = ImportPipeRowsCsv(*project, *library, table);
    if (!imported.Accepted) {
        err << "quench: " << arguments.Import.string() << ": " << imported.Refusal << '\n';
        return ExitStopped; // the named file is left as it was
    }
    for (const std::string& warning : imported.Warnings) {
        err << "quench: warning: " << warning << '\n';
    }
    if (arguments.Sort) {
        NoDialogs quiet;
        PipeTable(*project, *library, quiet).SortPipes();
    }
    return session.Save() ? ExitSuccess : ExitUsage;
}

int RunPipes(const Arguments& words, std::ostream& out, std::ostream& err) {
    const std::optional<PipesArguments> arguments = ParseArguments(words, err);
    if (!arguments) {
        return ExitUsage;
    }
    if (!arguments->Import.empty()) {
        return Import(*arguments, err);
    }
    const auto project = std::make_unique<Project>();
    if (!ReadNamedProject(arguments->File, *project, err)) {
        return ExitUsage;
    }
    out << PipeRowsCsv(*project);
    return ExitSuccess;
}

const CommandRegistration registration(
    "pipes", Usage,
    "Print the pipe rows of FILE as CSV; --import replaces them by the rows of TABLE.csv as "
    "typed rows (node data of a node's first row kept, equivalent lengths recalculated) and "
    "saves FILE, --sort then sorts them as the Sort command does.",
    RunPipes);

} // namespace

} // namespace quench::cli
