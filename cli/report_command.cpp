// quench report FILE -o OUT.pdf: the project's report from its stored results, every section or
// those of --sections, as a PDF and/or as plain text. The project file is only read.

#include "app/directories.h"
#include "cli/command.h"
#include "core/atomic_write.h"
#include "core/project_file.h"
#include "core/text.h"
#include "library/pipe_library_file.h"
#include "reports/build_report.h"
#include "reports/text_canvas.h"

#ifdef QUENCH_REPORT_PDF
#include "gui/report_painter/report_pdf_module.h"

#include <dlfcn.h>
#endif

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>

namespace quench::cli {

namespace {

constexpr const char* Usage = "FILE -o OUT.pdf [--sections LIST] [--text OUT.txt] [--si | --us]";

struct ReportArguments {
    std::filesystem::path File;
    std::filesystem::path Pdf;
    std::filesystem::path Text;
    ReportOptions Options = DefaultReportOptions();
    std::optional<MeasureSystem> Units;
};

std::string Quoted(const std::filesystem::path& file) {
    return "\"" + file.string() + "\"";
}

// "title,pipes,summary": the sections named; every other one off.
bool ParseSections(std::string_view list, ReportOptions& options, std::ostream& err) {
    options.Sections.fill(false);
    std::size_t start = 0;
    while (start <= list.size()) {
        const std::size_t end = std::min(list.find(',', start), list.size());
        const std::string word = Trim(list.substr(start, end - start));
        if (!word.empty()) {
            const auto section = SectionFromWord(word);
            if (!section) {
                UsageError(err, "unknown section \"" + word +
                                    "\"; the sections are title, general, nodes, pipes, pump, "
                                    "groups, pipe-output, sprinklers, summary, graph");
                return false;
            }
            options.Set(*section, true);
        }
        start = end + 1;
    }
    return true;
}

std::optional<ReportArguments> ParseArguments(const Arguments& arguments, std::ostream& err) {
    ReportArguments parsed;
    parsed.Options.Sections.fill(true);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "-o" || word == "--text" || word == "--sections") {
            if (i + 1 == arguments.size() || arguments[i + 1].empty()) {
                UsageError(err, word + (word == "--sections" ? " needs a list of sections"
                                                             : " needs a file name"));
                return std::nullopt;
            }
            const std::string& value = arguments[++i];
            if (word == "-o") {
                parsed.Pdf = value;
            } else if (word == "--text") {
                parsed.Text = value;
            } else if (!ParseSections(value, parsed.Options, err)) {
                return std::nullopt;
            }
        } else if (word == "--si" || word == "--us") {
            const MeasureSystem units = word == "--si" ? MeasureSystem::SI : MeasureSystem::US;
            if (parsed.Units && *parsed.Units != units) {
                UsageError(err, "--si and --us exclude each other");
                return std::nullopt;
            }
            parsed.Units = units;
        } else if (word.rfind("-", 0) == 0 || !parsed.File.empty() || word.empty()) {
            UsageError(err, std::string("usage: quench report ") + Usage);
            return std::nullopt;
        } else {
            parsed.File = word;
        }
    }
    if (parsed.File.empty() || (parsed.Pdf.empty() && parsed.Text.empty())) {
        UsageError(err, std::string("usage: quench report ") + Usage);
        return std::nullopt;
    }
    return parsed;
}

bool ReadReportProject(const std::filesystem::path& file, Project& project, std::ostream& err) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        UsageError(err, "cannot read " + Quoted(file) + ": no such project file");
        return false;
    }
    if (ToLower(file.extension().string()) == ".qnd") {
        UsageError(err, "cannot report " + Quoted(file) + ": a DOS project file; convert it first");
        return false;
    }
    ResetProject(project);
    std::string reason;
    if (!ReadProject(project, file, &reason)) {
        UsageError(err, "cannot read " + Quoted(file) + ": " + reason);
        return false;
    }
    if (project.NumberOfPipeRows > MaxPipes || project.NumberOfNodes > MaxNodes ||
        project.NumberOfPipes > MaxPipes ||
        project.CalculationData.NumberOfUniquePipeSections > MaxPipes) {
        UsageError(err, "cannot report " + Quoted(file) +
                            ": it holds more pipes or nodes than a project may have");
        return false;
    }
    return true;
}

// The files of the libraries beside the program, read without copying anything.
struct Libraries {
    PipeLibrary Pipes;
    std::filesystem::path Pumps;
};

Libraries FindLibraries() {
    const DirectoryEnvironment environment = ProcessEnvironment();
    Libraries found;
    for (const auto& directory :
         {WritableDataDirectory(environment), ShippedDataDirectory(environment)}) {
        const auto library = directory / std::string(PipeLibraryFileName);
        std::error_code error;
        if (!found.Pipes.FileFound && std::filesystem::is_regular_file(library, error)) {
            found.Pipes = LoadPipeLibrary(library);
        }
        const auto pumps = directory / std::string(PumpDatabaseFileName);
        if (found.Pumps.empty() && std::filesystem::is_regular_file(pumps, error)) {
            found.Pumps = pumps;
        }
    }
    return found;
}

// A box of the report (the warning of changed inputs) as a line on stderr.
class ReportDialogs final : public Dialogs {
public:
    explicit ReportDialogs(std::ostream& err) : err_(err) {}
    void ShowMessage(MessageStyle, std::string_view title, std::string_view text) override {
        err_ << title << ": " << text << '\n';
    }
    Answer Ask(Buttons, Answer defaultAnswer, MessageStyle, std::string_view,
               std::string_view) override {
        return defaultAnswer;
    }

private:
    std::ostream& err_;
};

bool WriteText(const ReportInput& input, const ReportArguments& arguments, std::ostream& err) {
    TextCanvas canvas;
    BuildReport(canvas, input, arguments.Options);
    std::string reason;
    if (!WriteFileAtomically(arguments.Text, canvas.Result(), &reason)) {
        UsageError(err, "cannot write " + Quoted(arguments.Text) + ": " + reason);
        return false;
    }
    return true;
}

#ifdef QUENCH_REPORT_PDF
// The PDF writer of the module, loaded once; nullptr with the reason when it cannot be.
WriteReportPdfFunction LoadPdfWriter(std::string& reason) {
    const std::filesystem::path here = ExecutableDirectory();
    for (const std::filesystem::path& module :
         {here / ReportPdfModuleFile, here / ".." / "lib" / "quench" / ReportPdfModuleFile}) {
        if (void* handle = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL)) {
            if (void* function = ::dlsym(handle, ReportPdfFunctionName)) {
                return reinterpret_cast<WriteReportPdfFunction>(function);
            }
        }
    }
    const char* why = ::dlerror();
    reason = "the PDF writer " + std::string(ReportPdfModuleFile) + " cannot be loaded" +
             (why != nullptr ? std::string(" (") + why + ")" : std::string());
    return nullptr;
}
#endif

bool WritePdf(const ReportInput& input, const ReportArguments& arguments, std::ostream& err) {
#ifdef QUENCH_REPORT_PDF
    std::string reason;
    const WriteReportPdfFunction writer = LoadPdfWriter(reason);
    if (writer == nullptr || !writer(input, arguments.Options, arguments.Pdf, &reason)) {
        UsageError(err, "cannot write " + Quoted(arguments.Pdf) + ": " + reason);
        return false;
    }
    return true;
#else
    (void)input;
    UsageError(err, "cannot write " + Quoted(arguments.Pdf) +
                        ": this quench was built without Qt; use --text");
    return false;
#endif
}

int RunReport(const Arguments& words, std::ostream& /*out*/, std::ostream& err) {
    const std::optional<ReportArguments> arguments = ParseArguments(words, err);
    if (!arguments) {
        return ExitUsage;
    }
    const auto project = std::make_unique<Project>();
    if (!ReadReportProject(arguments->File, *project, err)) {
        return ExitUsage;
    }
    const Libraries libraries = FindLibraries();
    ReportDialogs dialogs(err);
    ReportInput input(*project);
    input.Library = libraries.Pipes.FileFound ? &libraries.Pipes : nullptr;
    input.PumpDatabase = libraries.Pumps;
    input.ProjectFileName = arguments->File.filename().string();
    input.Printed = Now();
    input.Units = arguments->Units;
    input.Dialogs = &dialogs;
    if (!arguments->Text.empty() && !WriteText(input, *arguments, err)) {
        return ExitUsage;
    }
    // The warning of changed inputs is told once.
    input.Dialogs = arguments->Text.empty() ? &dialogs : nullptr;
    if (!arguments->Pdf.empty() && !WritePdf(input, *arguments, err)) {
        return ExitUsage;
    }
    return ExitSuccess;
}

const CommandRegistration registration(
    "report", Usage,
    "Write the report of the project in FILE from its stored results (no calculation): -o a "
    "PDF, --text plain text; LIST is comma-separated from title, general, nodes, pipes, pump, "
    "groups, pipe-output, sprinklers, summary, graph (default every section); --si or --us "
    "overrides the project's units.",
    RunReport);

} // namespace

} // namespace quench::cli
