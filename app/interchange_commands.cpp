#include "app/interchange_commands.h"

#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/project_file.h"
#include "interchange/cad_data_file.h"
#include "interchange/drawing_results.h"
#include "interchange/legacy_project.h"

#include <memory>

namespace quench {

namespace {

constexpr std::string_view OptionsSection = "Miscellaneous";

// Clears the busy cursor and the status text however the command ends.
class StatusScope {
public:
    StatusScope(LifecycleHost& host, std::string_view caption, std::string_view label)
        : host_(host) {
        host_.SetBusy(true);
        host_.ShowStatusText(std::string(caption) + " " + std::string(label));
    }
    ~StatusScope() {
        host_.ShowStatusText("");
        host_.SetBusy(false);
    }
    StatusScope(const StatusScope&) = delete;
    StatusScope& operator=(const StatusScope&) = delete;

private:
    LifecycleHost& host_;
};

bool WriteNewProjectFile(const Project& project, const std::filesystem::path& file,
                         std::string& error) {
    std::vector<std::uint8_t> image;
    return LayProjectImage(project, image, &error) &&
           WriteFileAtomically(
               file, std::string_view(reinterpret_cast<const char*>(image.data()), image.size()),
               &error);
}

} // namespace

DrawingImportOptions ReadDrawingOptions(const IniFileHandler& settings) {
    DrawingImportOptions options;
    const std::string layers =
        settings.MyGetAppProfileString(OptionsSection, "DxfPipeLayers", "PIPE");
    if (!SplitLayerList(layers).empty()) {
        options.PipeLayers = SplitLayerList(layers);
    }
    const std::string snap = settings.MyGetAppProfileString(OptionsSection, "DxfSnap", "0.01");
    if (IsNumeric(snap) && ToNumber(snap) >= 0) {
        options.SnapFeet = ToNumber(snap);
    }
    options.Unit = DrawingUnitNamed(settings.MyGetAppProfileString(OptionsSection, "DxfUnits", ""));
    options.ExcludeFittings =
        settings.MyGetAppProfileBoolean(OptionsSection, "ExcludeFittings", false);
    options.ExcludeDiameters =
        settings.MyGetAppProfileBoolean(OptionsSection, "ExcludeDiameters", false);
    options.NumberFromTexts =
        settings.MyGetAppProfileBoolean(OptionsSection, "DxfNumberFromTexts", true);
    return options;
}

void WriteDrawingOptions(const IniFileHandler& settings, const DrawingImportOptions& options) {
    std::string layers;
    for (const auto& word : options.PipeLayers) {
        layers += (layers.empty() ? "" : ",") + word;
    }
    settings.MyWriteAppProfileString(OptionsSection, "DxfPipeLayers", layers);
    settings.MyWriteAppProfileString(OptionsSection, "DxfSnap", NumberText(options.SnapFeet));
    settings.MyWriteAppProfileString(OptionsSection, "DxfUnits",
                                     options.Unit ? options.Unit->Name : "");
    settings.MyWriteAppProfileBoolean(OptionsSection, "ExcludeFittings", options.ExcludeFittings);
    settings.MyWriteAppProfileBoolean(OptionsSection, "ExcludeDiameters", options.ExcludeDiameters);
    settings.MyWriteAppProfileBoolean(OptionsSection, "DxfNumberFromTexts",
                                      options.NumberFromTexts);
}

std::optional<std::filesystem::path> InterchangeCommands::Choose(bool save, std::string_view title,
                                                                 std::string_view filter,
                                                                 std::string_view pattern,
                                                                 std::string_view extension) {
    FileDialogRequest request;
    request.Title = title;
    request.FilterName = filter;
    request.Pattern = pattern;
    request.DefaultExtension = extension;
    request.Directory = lifecycle_.ProjectsDirectory();
    return save ? host_.ChooseSaveFile(request) : host_.ChooseOpenFile(request);
}

bool InterchangeCommands::BecomeNewProject(const Project& imported) {
    lifecycle_.New();
    if (!lifecycle_.ProjectIsLoaded() || !lifecycle_.IsUntitled() ||
        project_.NumberOfPipeRows != 0) {
        return false;
    }
    project_ = imported;
    project_.InputChanged = 1;
    host_.ProjectStateChanged();
    host_.OpenProjectScreen(PipeDataScreen);
    host_.OpenProjectScreen(CalculationScreenName);
    return true;
}

void InterchangeCommands::OpenDosProject() {
    const auto legacy = Choose(false, legacy_texts::OpenTitle, legacy_texts::OpenFilter,
                               legacy_texts::OpenPattern, "qnd");
    if (!legacy) {
        return;
    }
    const auto target =
        Choose(true, legacy_texts::SaveNewTitle, legacy_texts::SaveNewFilter, "*.qnw", "qnw");
    if (!target) {
        return;
    }
    const auto converted = std::make_unique<Project>();
    {
        const StatusScope status(host_, legacy_texts::ConvertingCaption,
                                 legacy_texts::ConvertingLabel);
        std::string error;
        if (!ReadDosFile(*converted, *legacy, &error) ||
            !WriteNewProjectFile(*converted, *target, error)) {
            dialogs_.ShowMessage(MessageStyle::Critical, legacy_texts::ConvertingCaption,
                                 "\"" + legacy->string() + "\": " + error);
            return;
        }
    }
    lifecycle_.Open(*target);
    if (lifecycle_.ProjectIsLoaded() && lifecycle_.ProjectFileName() == *target) {
        host_.OpenProjectScreen(PipeDataScreen);
    }
}

void InterchangeCommands::SaveAsDosProject() {
    host_.WriteBackEditors();
    const auto target = Choose(true, legacy_texts::ExportTitle, legacy_texts::ExportFilter, "*.qnd",
                               legacy_texts::ExportExtension.substr(1));
    if (!target) {
        return;
    }
    const StatusScope status(host_, "Saving...", target->filename().string());
    std::string error;
    if (!WriteDosFile(project_, *target, &error)) {
        dialogs_.ShowMessage(MessageStyle::Critical, legacy_texts::ExportTitle,
                             "\"" + target->string() + "\" cannot be written: " + error);
    }
}

void InterchangeCommands::OpenCadDataFile() {
    const auto file = Choose(false, cad_data_texts::OpenTitle, cad_data_texts::OpenFilter,
                             cad_data_texts::OpenPattern, cad_data_texts::DefaultExtension);
    if (!file) {
        return;
    }
    const auto imported = std::make_unique<Project>();
    const CadDataOutcome outcome = ReadCadDataFile(*imported, *file, library_);
    if (!outcome.Loaded) {
        dialogs_.ShowMessage(MessageStyle::Critical, outcome.Title, outcome.Message);
        return;
    }
    BecomeNewProject(*imported);
}

void InterchangeCommands::ReadFromDrawing() {
    const auto file = Choose(false, drawing_texts::OpenTitle, drawing_texts::OpenFilter,
                             drawing_texts::OpenPattern, drawing_texts::DefaultExtension);
    if (!file) {
        return;
    }
    const auto options = chooser_.ChooseDrawingOptions(ReadDrawingOptions(settings_));
    if (!options) {
        return;
    }
    WriteDrawingOptions(settings_, *options);
    const auto imported = std::make_unique<Project>();
    DrawingImportOutcome outcome;
    {
        const StatusScope status(host_, drawing_texts::ReadingCaption, drawing_texts::ReadingLabel);
        outcome = ImportDrawingFile(*imported, *file, *options, library_);
    }
    if (!outcome.Loaded) {
        dialogs_.ShowMessage(MessageStyle::Critical, outcome.Title, outcome.Message);
        return;
    }
    if (BecomeNewProject(*imported)) {
        std::string notes;
        for (const auto& note : outcome.Notes) {
            notes += (notes.empty() ? "" : "\n") + note;
        }
        dialogs_.ShowMessage(MessageStyle::Information, drawing_texts::OptionsTitle, notes);
    }
}

void InterchangeCommands::SizesToDrawing() {
    host_.WriteBackEditors();
    const auto drawing = Choose(false, drawing_texts::OpenTitle, drawing_texts::OpenFilter,
                                drawing_texts::OpenPattern, drawing_texts::DefaultExtension);
    if (!drawing) {
        return;
    }
    const auto target = Choose(true, drawing_results_texts::SaveTitle, drawing_texts::OpenFilter,
                               drawing_texts::OpenPattern, drawing_texts::DefaultExtension);
    if (!target) {
        return;
    }
    DrawingResultsOutcome outcome;
    {
        const StatusScope status(host_, "Writing...", target->filename().string());
        outcome = WriteResultsDrawing(project_, *drawing, *target, ReadDrawingOptions(settings_));
    }
    if (!outcome.Written) {
        dialogs_.ShowMessage(MessageStyle::Critical, outcome.Title, outcome.Message);
        return;
    }
    dialogs_.ShowMessage(MessageStyle::Information, drawing_results_texts::SaveTitle,
                         std::to_string(outcome.Pipes) + " pipes and " +
                             std::to_string(outcome.Nodes) + " nodes were written to \"" +
                             target->filename().string() + "\".");
}

} // namespace quench
