#include "gui/report_source.h"

namespace quench::gui {

ReportOutcome ReportSource::Build(PaintedDocument& document, const ReportOptions& options,
                                  bool warn) const {
    PaintCanvas canvas(document);
    if (Model == nullptr) {
        canvas.StartDoc();
        canvas.EndDoc();
        return ReportOutcome{1, {}};
    }
    ReportInput input(*Model);
    input.Library = Library;
    input.PumpDatabase = PumpDatabase;
    input.ProjectFileName = FileName ? FileName() : std::string();
    input.Printed = Now();
    if (!CompanyLine.empty()) {
        input.CompanyLine = CompanyLine;
    }
    input.Dialogs = warn ? Boxes : nullptr;
    return BuildReport(canvas, input, options);
}

} // namespace quench::gui
