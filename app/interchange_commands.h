#pragma once

// The File menu's exchange commands: a legacy DOS project in and out, a CAD data file in, a DXF
// drawing in, and the calculated sizes into a DXF drawing. Each runs its file dialogs, status
// texts and messages through the lifecycle's host and the dialogs, over interchange/. An import
// becomes the open project and opens the pipe table.

#include "app/project_lifecycle.h"
#include "core/dialogs.h"
#include "core/project.h"
#include "core/settings.h"
#include "interchange/drawing_import.h"
#include "library/pipe_library.h"

#include <optional>

namespace quench {

// The desktop's small dialog of drawing import options; nothing when cancelled.
class DrawingOptionsChooser {
public:
    virtual ~DrawingOptionsChooser() = default;
    virtual std::optional<DrawingImportOptions>
    ChooseDrawingOptions(const DrawingImportOptions& current) = 0;
};

// The drawing options as the settings keep them (section "Miscellaneous").
DrawingImportOptions ReadDrawingOptions(const IniFileHandler& settings);
void WriteDrawingOptions(const IniFileHandler& settings, const DrawingImportOptions& options);

class InterchangeCommands {
public:
    InterchangeCommands(Project& project, Dialogs& dialogs, LifecycleHost& host,
                        ProjectLifecycle& lifecycle, const PipeLibrary& library,
                        IniFileHandler settings, DrawingOptionsChooser& chooser)
        : project_(project), dialogs_(dialogs), host_(host), lifecycle_(lifecycle),
          library_(library), settings_(std::move(settings)), chooser_(chooser) {}

    void OpenDosProject();   // ToolOpenDosQUENCHProject
    void SaveAsDosProject(); // ToolSaveAsDosQUENCHProject
    void OpenCadDataFile();  // ToolOpenAutocadDatafile
    void ReadFromDrawing();  // ToolReadFromDWG
    void SizesToDrawing();   // CalculatedSizestoDWG

private:
    std::optional<std::filesystem::path> Choose(bool save, std::string_view title,
                                                std::string_view filter, std::string_view pattern,
                                                std::string_view extension);
    // A new project holding the imported model; false when the user kept the open one.
    bool BecomeNewProject(const Project& imported);

    Project& project_;
    Dialogs& dialogs_;
    LifecycleHost& host_;
    ProjectLifecycle& lifecycle_;
    const PipeLibrary& library_;
    IniFileHandler settings_;
    DrawingOptionsChooser& chooser_;
};

} // namespace quench
