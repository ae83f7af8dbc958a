#include "reports/report_sections.h"

namespace quench {

namespace {

// The area of the page below the titles that the supply and demand chart fills. The chart itself
// is drawn here once the graph is part of the reports; until then the page carries its frame and
// titles only.
void DrawGraphArea(ReportDocument& /*document*/, int /*left*/, int /*top*/, int /*width*/,
                   int /*height*/) {}

} // namespace

void HydraulicGraphSection(ReportDocument& document) {
    document.BeginSection(OutputTitle(document), "Hydraulic Supply/Demand Graph");
    ReportCanvas& canvas = document.Canvas;
    DrawGraphArea(document, canvas.MarginLeft, canvas.CurrentY, canvas.ContentWidth(),
                  canvas.ContentBottom() - canvas.CurrentY);
}

} // namespace quench
