#include "reports/hydraulic_graph.h"
#include "reports/report_sections.h"

namespace quench {

void HydraulicGraphSection(ReportDocument& document) {
    document.BeginSection(OutputTitle(document), "Hydraulic Supply/Demand Graph");
    ReportCanvas& canvas = document.Canvas;
    DrawHydraulicGraph(document, {canvas.MarginLeft, canvas.CurrentY, canvas.ContentWidth(),
                                  canvas.ContentBottom() - canvas.CurrentY});
}

} // namespace quench
