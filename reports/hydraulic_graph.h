#pragma once

// The water supply graph of the report's last section: the supply curves of the hydrant tests and
// the demand point on a chart whose flow axis is raised to the 1.85 power, with the hydrant data
// and the demand point data beneath. The drawing is made as lines and texts in page twips,
// independent of any canvas, and then drawn through the report canvas.

#include "core/project.h"
#include "core/units.h"
#include "reports/dxf_graph.h"
#include "reports/report_canvas.h"

#include <string>
#include <vector>

namespace quench {

class ReportDocument;

// GraphFirstSprinklerPressure: from the inflow node (found by the inflow marks of the working
// rows) pipe by pipe along the active rows down to the first node with a K-factor, summing the
// losses of the devices 51 to 53 passed.
struct FirstSprinklerWalk {
    std::string InflowNode;
    std::string SprinklerNode; // empty when no sprinkler is reached
    double DeviceLoss = 0;     // psi
    double ElevationRise = 0;  // ft, from the inflow node up to the sprinkler node

    // The device losses plus 0.433 psi per foot of rise.
    double RequiredPressure() const { return DeviceLoss + 0.433 * ElevationRise; }
};
FirstSprinklerWalk GraphFirstSprinklerPressure(const Project& project);

enum class GraphInk { Frame, Grid, Supply, SecondSupply, Demand, Text };

struct GraphLine {
    int X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
    GraphInk Ink = GraphInk::Frame;
};

struct GraphText {
    int X = 0, Y = 0; // top left
    std::string Text;
    GraphInk Ink = GraphInk::Text;
    bool Bold = false;
};

struct GraphDrawing {
    std::vector<GraphLine> Lines;
    std::vector<GraphText> Texts;
    double PressureTop = 0; // in the units shown
    double FlowFactor = 0;
    int ChartLeft = 0, ChartTop = 0, ChartWidth = 0, ChartHeight = 0;
};

struct GraphArea {
    int Left = 0, Top = 0, Width = 0, Height = 0;
};

// The drawing of the graph in the area; the values in US units, shown in `system`.
GraphDrawing HydraulicGraphDrawing(const GraphData& data, double firstSprinklerPressure,
                                   MeasureSystem system, const GraphArea& area);

// The colour of an ink: the chart's colours, or black for every ink but the grid's grey.
Rgb GraphInkColor(GraphInk ink, bool colorGraphs);

// Draws the graph of the document's project in the area.
void DrawHydraulicGraph(ReportDocument& document, const GraphArea& area);

} // namespace quench
