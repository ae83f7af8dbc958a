// quench pipes FILE [--import TABLE.csv [--sort]]: the pipe table of a project as CSV on standard
// output, or the project's rows replaced by a CSV table through the pipe table's own rules and the
// project saved as Save does.

#include "cli/command.h"
#include "cli/library_arguments.h"
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

std::string Quoted(const std::filesystem::path& file) {
    return "\"" + file.string() + "\"";
}

// The working file of a project: the name with ".tmp" in place of its last four characters, or
// ".tmp" added where that would be the project itself.
std::filesystem::path WorkingFileOf(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    std::string working =
        name.size() >= 4 ? name.substr(0, name.size() - 4) + ".tmp" : name + ".tmp";
    if (working == name) {
        working = name + ".tmp";
    }
    return file.parent_path() / working;
}

// Removes the working file when the command ends, whatever way it ends.
class WorkingFile {
public:
    explicit WorkingFile(std::filesystem::path file) : file_(std::move(file)) {}
    ~WorkingFile() {
        if (made_) {
            std::error_code ignored;
            std::filesystem::remove(file_, ignored);
        }
    }
    WorkingFile(const WorkingFile&) = delete;
    WorkingFile& operator=(const WorkingFile&) = delete;

    const std::filesystem::path& Path() const { return file_; }
    void Made() { made_ = true; }

private:
    std::filesystem::path file_;
    bool made_ = false;
};

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

// Open: the named file copied to its working file and read from there.
bool OpenProject(const std::filesystem::path& file, WorkingFile& working, Project& project,
                 std::ostream& err) {
    std::error_code error;
    if (std::filesystem::exists(working.Path(), error)) {
        UsageError(err, "the working file " + Quoted(working.Path()) +
                            " of an unfinished session exists; open the project in Quench to "
                            "recover it");
        return false;
    }
    std::string bytes;
    if (!ReadWholeFile(file, bytes)) {
        UsageError(err, "cannot read " + Quoted(file));
        return false;
    }
    std::string reason;
    if (!WriteFileAtomically(working.Path(), bytes, &reason)) {
        UsageError(err, "cannot write the working file " + Quoted(working.Path()) + ": " + reason);
        return false;
    }
    working.Made();
    return ReadNamedProject(working.Path(), project, err);
}

// Save: the model to the working file, then the named file replaced by a copy of it.
bool SaveProject(const std::filesystem::path& file, const WorkingFile& working,
                 const Project& project, std::ostream& err) {
    std::string reason;
    const WriteOutcome written = WriteProject(project, working.Path(), &reason);
    if (written != WriteOutcome::Written) {
        UsageError(err, "cannot save " + Quoted(file) + ": " +
                            (written == WriteOutcome::Skipped
                                 ? std::string("the network has more nodes than a project may hold")
                                 : reason));
        return false;
    }
    std::string bytes;
    if (!ReadWholeFile(working.Path(), bytes) || !WriteFileAtomically(file, bytes, &reason)) {
        UsageError(err, "cannot save " + Quoted(file) + ": " + reason);
        return false;
    }
    return true;
}

// Dialogs of a command that asks nothing: the sort shows no box.
class NoDialogs final : public Dialogs {
public:
    void ShowMessage(MessageStyle, std::string_view, std::string_view) override {}
    Answer Ask(Buttons, Answer answer, MessageStyle, std::string_view, std::string_view) override {
        return answer;
    }
};

int Import(const PipesArguments& arguments, std::ostream& err) {
    std::string table;
    if (!ReadWholeFile(arguments.Import, table)) {
        return UsageError(err, "cannot read " + Quoted(arguments.Import));
    }
    const std::optional<PipeLibrary> library = LoadCommandLibrary(arguments.Library, err);
    if (!library) {
        return ExitUsage;
    }
    WorkingFile working(WorkingFileOf(arguments.File));
    const auto project = std::make_unique<Project>();
    if (!OpenProject(arguments.File, working, *project, err)) {
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
        NoDialogs dialogs;
        PipeTable(*project, *library, dialogs).SortPipes();
    }
    return SaveProject(arguments.File, working, *project, err) ? ExitSuccess : ExitUsage;
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
