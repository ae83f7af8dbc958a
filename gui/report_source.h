#pragma once

// What the report screens need of the open project: the model, the libraries, the file name and
// the message boxes, and the document built from them with the options given.

#include "core/dialogs.h"
#include "core/project.h"
#include "gui/report_painter/painted_document.h"
#include "library/pipe_library.h"
#include "reports/build_report.h"

#include <filesystem>
#include <functional>
#include <string>

namespace quench::gui {

struct ReportSource {
    const Project* Model = nullptr;
    const PipeLibrary* Library = nullptr;
    std::filesystem::path PumpDatabase;
    std::function<std::string()> FileName; // the open project's file name, as it is now
    Dialogs* Boxes = nullptr;
    std::string CompanyLine; // the company line of the options, printed in the page header

    // The report painted from the project as it stands. With warn false the warning of changed
    // inputs is not shown (a rebuild of a screen already open).
    ReportOutcome Build(PaintedDocument& document, const ReportOptions& options, bool warn) const;
};

} // namespace quench::gui
