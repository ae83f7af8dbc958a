// quench convert IN OUT: a project to or from the exchange formats, chosen by the extensions.
//   .qnd -> .qnw   .qnw -> .qnd   .qnc -> .qnw   .dxf -> .qnw   .qnw -> .dxf   .qnw -> .inp

#include "cli/command.h"
#include "cli/library_arguments.h"
#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/project_file.h"
#include "core/text.h"
#include "interchange/cad_data_file.h"
#include "interchange/drawing_import.h"
#include "interchange/drawing_results.h"
#include "interchange/epanet_export.h"
#include "interchange/legacy_project.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>

namespace quench::cli {

namespace {

constexpr const char* Usage =
    "IN OUT [--layers NAMES] [--snap FEET] [--units UNIT] [--drawing DRAWING.dxf]";

struct ConvertArguments {
    std::filesystem::path In;
    std::filesystem::path Out;
    std::filesystem::path Drawing;
    DrawingImportOptions Options;
};

std::string Quoted(const std::filesystem::path& file) {
    return "\"" + file.string() + "\"";
}

std::string Extension(const std::filesystem::path& file) {
    return ToLower(file.extension().string());
}

std::optional<ConvertArguments> Refuse(std::ostream& err, const std::string& text = {}) {
    UsageError(err, text.empty() ? std::string("usage: quench convert ") + Usage : text);
    return std::nullopt;
}

// An option's value into the arguments; false with a message when it is not usable.
bool TakeOption(const std::string& option, const std::string& value, ConvertArguments& parsed,
                std::ostream& err) {
    if (option == "--layers") {
        parsed.Options.PipeLayers = SplitLayerList(value);
        if (parsed.Options.PipeLayers.empty()) {
            UsageError(err, "--layers needs at least one layer name");
            return false;
        }
    } else if (option == "--snap") {
        if (!IsNumeric(value) || ToNumber(value) < 0) {
            UsageError(err, "--snap needs a distance in feet of 0 or more, not \"" + value + "\"");
            return false;
        }
        parsed.Options.SnapFeet = ToNumber(value);
    } else if (option == "--units") {
        parsed.Options.Unit = DrawingUnitNamed(value);
        if (!parsed.Options.Unit) {
            UsageError(err, "--units takes in, ft, mm, cm or m, not \"" + value + "\"");
            return false;
        }
    } else {
        parsed.Drawing = value;
    }
    return true;
}

std::optional<ConvertArguments> ParseArguments(const Arguments& arguments, std::ostream& err) {
    ConvertArguments parsed;
    std::vector<std::string> files;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "--layers" || word == "--snap" || word == "--units" || word == "--drawing") {
            if (i + 1 == arguments.size() || arguments[i + 1].empty()) {
                return Refuse(err, word + " needs a value");
            }
            if (!TakeOption(word, arguments[++i], parsed, err)) {
                return std::nullopt;
            }
        } else if (word.empty() || word.rfind("--", 0) == 0) {
            return Refuse(err);
        } else {
            files.push_back(word);
        }
    }
    if (files.size() != 2) {
        return Refuse(err);
    }
    parsed.In = files[0];
    parsed.Out = files[1];
    return parsed;
}

// Reads a project file; a file error is reported and gives false.
bool ReadProjectFile(Project& project, const std::filesystem::path& file, std::ostream& err) {
    std::string error;
    if (!ReadProject(project, file, &error)) {
        UsageError(err, "cannot read " + Quoted(file) + ": " + error);
        return false;
    }
    return true;
}

// A whole new project file, never laid over an old one's bytes.
bool WriteProjectFile(const Project& project, const std::filesystem::path& file,
                      std::ostream& err) {
    std::vector<std::uint8_t> image;
    std::string error;
    if (!LayProjectImage(project, image, &error) ||
        !WriteFileAtomically(
            file, std::string_view(reinterpret_cast<const char*>(image.data()), image.size()),
            &error)) {
        UsageError(err, "cannot write " + Quoted(file) + ": " + error);
        return false;
    }
    return true;
}

int LegacyToProject(const ConvertArguments& files, std::ostream& err) {
    const auto project = std::make_unique<Project>();
    std::string error;
    if (!ReadDosFile(*project, files.In, &error)) {
        return UsageError(err, "cannot read " + Quoted(files.In) + ": " + error);
    }
    return WriteProjectFile(*project, files.Out, err) ? ExitSuccess : ExitUsage;
}

int ProjectToLegacy(const ConvertArguments& files, std::ostream& err) {
    const auto project = std::make_unique<Project>();
    if (!ReadProjectFile(*project, files.In, err)) {
        return ExitUsage;
    }
    std::string error;
    if (!WriteDosFile(*project, files.Out, &error)) {
        return UsageError(err, "cannot write " + Quoted(files.Out) + ": " + error);
    }
    return ExitSuccess;
}

int CadDataToProject(const ConvertArguments& files, std::ostream& err) {
    const std::optional<PipeLibrary> library = LoadCommandLibrary(LibraryArguments{}, err);
    if (!library) {
        return ExitUsage;
    }
    const auto project = std::make_unique<Project>();
    std::string text;
    if (std::string reason; !ReadWholeFile(files.In, text, &reason)) {
        return UsageError(err, "cannot read " + Quoted(files.In) + ": " + reason);
    }
    const CadDataOutcome outcome = ReadCadData(*project, text, *library);
    if (!outcome.Loaded) {
        err << outcome.Title << ": " << outcome.Message << '\n';
        return ExitStopped;
    }
    return WriteProjectFile(*project, files.Out, err) ? ExitSuccess : ExitUsage;
}

int DrawingToProject(const ConvertArguments& files, std::ostream& err) {
    const std::optional<PipeLibrary> library = LoadCommandLibrary(LibraryArguments{}, err);
    if (!library) {
        return ExitUsage;
    }
    std::string text;
    if (std::string reason; !ReadWholeFile(files.In, text, &reason)) {
        return UsageError(err, "cannot read " + Quoted(files.In) + ": " + reason);
    }
    const auto project = std::make_unique<Project>();
    DrawingContent content;
    DrawingImportOutcome outcome;
    if (!ReadDrawing(text, content)) {
        outcome.Title = drawing_texts::RefusedTitle;
        outcome.Message = Quoted(files.In) + " is no DXF drawing that can be read.";
    } else {
        outcome = ImportDrawing(*project, content, files.Options, *library);
    }
    if (!outcome.Loaded) {
        err << outcome.Title << ": " << outcome.Message << '\n';
        return ExitStopped;
    }
    for (const auto& note : outcome.Notes) {
        err << note << '\n';
    }
    return WriteProjectFile(*project, files.Out, err) ? ExitSuccess : ExitUsage;
}

int ProjectToDrawing(const ConvertArguments& files, std::ostream& out, std::ostream& err) {
    if (files.Drawing.empty()) {
        return UsageError(err, "writing a .dxf needs --drawing IN.dxf, the drawing to annotate");
    }
    const auto project = std::make_unique<Project>();
    if (!ReadProjectFile(*project, files.In, err)) {
        return ExitUsage;
    }
    std::string text;
    if (std::string reason; !ReadWholeFile(files.Drawing, text, &reason)) {
        return UsageError(err, "cannot read " + Quoted(files.Drawing) + ": " + reason);
    }
    std::string annotated;
    const auto outcome = AnnotateDrawing(*project, text, files.Options, annotated);
    if (!outcome.Written) {
        err << outcome.Title << ": " << outcome.Message << '\n';
        return ExitStopped;
    }
    std::string error;
    if (!WriteFileAtomically(files.Out, annotated, &error)) {
        return UsageError(err, "cannot write " + Quoted(files.Out) + ": " + error);
    }
    out << outcome.Pipes << " pipes and " << outcome.Nodes << " nodes annotated.\n";
    return ExitSuccess;
}

int ProjectToEpanet(const ConvertArguments& files, std::ostream& err) {
    const auto project = std::make_unique<Project>();
    if (!ReadProjectFile(*project, files.In, err)) {
        return ExitUsage;
    }
    std::string text;
    const EpanetOutcome outcome = LayEpanetInput(*project, text);
    if (!outcome.Written) {
        err << outcome.Message << '\n';
        return ExitStopped;
    }
    std::string error;
    if (!WriteFileAtomically(files.Out, text, &error)) {
        return UsageError(err, "cannot write " + Quoted(files.Out) + ": " + error);
    }
    return ExitSuccess;
}

int RunConvert(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    const auto parsed = ParseArguments(arguments, err);
    if (!parsed) {
        return ExitUsage;
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(parsed->Out, ignored)) {
        return UsageError(err, "cannot write " + Quoted(parsed->Out) + ": it is a directory");
    }
    const std::string from = Extension(parsed->In);
    const std::string to = Extension(parsed->Out);
    if (from == ".qnd" && to == ".qnw") {
        return LegacyToProject(*parsed, err);
    }
    if (from == ".qnw" && to == ".qnd") {
        return ProjectToLegacy(*parsed, err);
    }
    if (from == ".qnc" && to == ".qnw") {
        return CadDataToProject(*parsed, err);
    }
    if (from == ".dxf" && to == ".qnw") {
        return DrawingToProject(*parsed, err);
    }
    if (from == ".qnw" && to == ".dxf") {
        return ProjectToDrawing(*parsed, out, err);
    }
    if (from == ".qnw" && to == ".inp") {
        return ProjectToEpanet(*parsed, err);
    }
    return UsageError(err, "cannot convert " + (from.empty() ? "a file" : from) + " to " +
                               (to.empty() ? "a file" : to) +
                               "; see quench convert --help for the formats");
}

const CommandRegistration registration(
    "convert", Usage,
    "Convert IN to OUT by their extensions: .qnd <-> .qnw, .qnc -> .qnw, .dxf -> .qnw, "
    ".qnw -> .dxf (with --drawing), .qnw -> .inp.",
    RunConvert);

} // namespace

} // namespace quench::cli
