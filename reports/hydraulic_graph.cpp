#include "reports/hydraulic_graph.h"

#include "calc/build_working_rows.h"
#include "core/formats.h"
#include "core/text.h"
#include "reports/hydraulic_graph_scale.h"
#include "reports/report_document.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <utility>

namespace quench {

namespace {

constexpr int AxisLabelMargin = 1100; // twips left of the chart for the pressure labels
constexpr int RightMargin = 300;
constexpr int TopMargin = 200;
constexpr int LineStep = 260; // twips between text lines
constexpr int LabelGap = 380; // the least distance between two flow labels

bool IsDevice(Integer material) {
    return material >= 51 && material <= 53;
}

// The chart's plot: values in the units shown to page twips.
struct Plot {
    GraphDrawing& Drawing;
    double Top = 0;    // pressure at the top
    double Factor = 1; // F of the flow axis

    int X(double flow) const {
        const double fraction = std::clamp(FlowAxisFraction(flow, Factor), 0.0, 1.0);
        return Drawing.ChartLeft + static_cast<int>(std::lround(fraction * Drawing.ChartWidth));
    }
    int Y(double pressure) const {
        const double fraction = std::clamp(pressure / Top, 0.0, 1.0);
        return Drawing.ChartTop + Drawing.ChartHeight -
               static_cast<int>(std::lround(fraction * Drawing.ChartHeight));
    }
    void Line(int x1, int y1, int x2, int y2, GraphInk ink) const {
        Drawing.Lines.push_back({x1, y1, x2, y2, ink});
    }
    void Text(int x, int y, std::string text, GraphInk ink = GraphInk::Text,
              bool bold = false) const {
        Drawing.Texts.push_back({x, y, std::move(text), ink, bold});
    }
};

void DrawFrameAndGrid(const Plot& plot, MeasureSystem system) {
    const GraphDrawing& d = plot.Drawing;
    const int left = d.ChartLeft;
    const int right = d.ChartLeft + d.ChartWidth;
    const int top = d.ChartTop;
    const int bottom = d.ChartTop + d.ChartHeight;
    for (int division = 1; division < 10; ++division) {
        const int y = plot.Y(plot.Top * division / 10);
        plot.Line(left, y, right, y, GraphInk::Grid);
    }
    for (int division = 0; division <= 10; ++division) {
        const double pressure = plot.Top * division / 10;
        plot.Text(left - 600, plot.Y(pressure) - 90, NumberText(pressure));
    }
    int lastLabel = -LabelGap;
    for (int line = 1; line <= FlowGridLines; ++line) {
        const int x = left + static_cast<int>(std::lround(FlowGridFraction(line) * d.ChartWidth));
        if (line < FlowGridLines) {
            plot.Line(x, top, x, bottom, GraphInk::Grid);
        }
        // Labels that would overlap the one before are left out where the scale crowds them.
        if (x - lastLabel >= LabelGap || line == FlowGridLines) {
            plot.Text(x - 100, bottom + 60, NumberText(FlowGridLabel(line) * plot.Factor));
            lastLabel = x;
        }
    }
    plot.Line(left, top, right, top, GraphInk::Frame);
    plot.Line(right, top, right, bottom, GraphInk::Frame);
    plot.Line(right, bottom, left, bottom, GraphInk::Frame);
    plot.Line(left, bottom, left, top, GraphInk::Frame);
    const bool si = system == MeasureSystem::SI;
    plot.Text(left + d.ChartWidth / 2 - 900, bottom + 320,
              si ? "Flowrate(x100)  Lpm" : "Flowrate(x100)  gpm");
    plot.Text(left - AxisLabelMargin + 50, top - 230, si ? "Pressure  kPa" : "Pressure  psi");
}

// A supply curve as one straight line on the chart, with its title near its middle.
void DrawCurve(const Plot& plot, const SupplyCurve& curve, MeasureSystem system,
               const std::string& title, GraphInk ink, int titleShift) {
    const double axisEnd = StoredValue(UnitKind::Volumetric_Flow, plot.Factor * 1000, system);
    const CurvePiece piece = ChartPiece(curve, axisEnd);
    auto flow = [system](double us) { return ShownValue(UnitKind::Volumetric_Flow, us, system); };
    auto pressure = [system](double us) { return ShownValue(UnitKind::Pressure_Drop, us, system); };
    const int x1 = plot.X(flow(piece.Flow1));
    const int y1 = plot.Y(pressure(piece.Pressure1));
    const int x2 = plot.X(flow(piece.Flow2));
    const int y2 = plot.Y(pressure(piece.Pressure2));
    plot.Line(x1, y1, x2, y2, ink);
    plot.Text((x1 + x2) / 2 + 100, (y1 + y2) / 2 - 260 + titleShift, title, ink);
}

void DrawDemandPoint(const Plot& plot, double flow, double pressure) {
    const int x = plot.X(flow);
    const int y = plot.Y(pressure);
    constexpr int half = 60;
    plot.Line(x - half, y - half, x + half, y - half, GraphInk::Demand);
    plot.Line(x + half, y - half, x + half, y + half, GraphInk::Demand);
    plot.Line(x + half, y + half, x - half, y + half, GraphInk::Demand);
    plot.Line(x - half, y + half, x - half, y - half, GraphInk::Demand);
}

std::string Shown(float value) {
    return NumberText(value);
}

void DrawTextBlocks(const Plot& plot, const GraphData& data,
                    const std::optional<SupplyCurve>& curve, double firstSprinklerPressure,
                    MeasureSystem system, int left, int width, int top) {
    const bool si = system == MeasureSystem::SI;
    const std::string psi = si ? " kPa" : " psi";
    const std::string gpm = si ? " Lpm" : " gpm";
    auto p = [system](double us) {
        return static_cast<float>(ShownValue(UnitKind::Pressure_Drop, us, system));
    };
    auto q = [system](double us) {
        return static_cast<float>(ShownValue(UnitKind::Volumetric_Flow, us, system));
    };
    int y = top;
    plot.Text(left, y, "Adjusted Hydrant Data", GraphInk::Text, true);
    auto testLines = [&](Single s, Single r, Single flow) {
        plot.Text(left, y += LineStep, "Static Pressure: " + Shown(p(s)) + psi);
        plot.Text(left, y += LineStep, "Test Residual Pressure: " + Shown(p(r)) + psi);
        plot.Text(left, y += LineStep, "Test Flow Rate: " + Shown(q(flow)) + gpm);
    };
    testLines(data.StaticPressure, data.ResidualPressure, data.TestFlow);
    if (HasSecondTest(data)) {
        testLines(data.SecondStaticPressure, data.SecondResidualPressure, data.SecondTestFlow);
    }

    const int right = left + width / 3;
    y = top;
    plot.Text(right, y, "Demand Point Data", GraphInk::Text, true);
    plot.Text(right, y += LineStep,
              "Calculated Residual Pressure: " + Format(p(data.DemandPressure), "##0.00") + psi);
    plot.Text(right, y += LineStep,
              "Calculated Flow Rate: " + Format(q(data.DemandFlow), "##0.00") + gpm);
    if (curve) {
        const double excess = curve->Pressure(data.DemandFlow) - data.DemandPressure;
        plot.Text(right, y += LineStep,
                  "Excess Available Inflow Residual Pressure: " + Format(p(excess), "##0.00") +
                      psi);
    }
    plot.Text(right, y += LineStep,
              "Pressure Required For First Sprinkler Downstream From Inflow Node To Flow: " +
                  Format(p(firstSprinklerPressure), "##0.00") + psi);
}

// One step of the walk: the row and the node it reaches.
struct WalkStep {
    int Row = 0;
    std::string Node;
};

// The active rows at a node, in row order, with the nodes they reach.
std::vector<WalkStep> StepsFrom(const Project& project, int rows, const std::string& node) {
    std::vector<WalkStep> steps;
    for (int row = 1; row <= rows; ++row) {
        const WorkPipeRecord& pipe = project.WorkPipeRecord[static_cast<std::size_t>(row)];
        if (!IsTrue(pipe.Active)) {
            continue;
        }
        if (Trim(pipe.BegNode) == node) {
            steps.push_back({row, Trim(pipe.EndNode)});
        } else if (Trim(pipe.EndNode) == node) {
            steps.push_back({row, Trim(pipe.BegNode)});
        }
    }
    return steps;
}

// The K-factor and elevation of a row's end at the node.
std::pair<Single, Single> EndData(const WorkPipeRecord& pipe, const std::string& node) {
    return Trim(pipe.EndNode) == node ? std::pair{pipe.KFactorE, pipe.ElevationE}
                                      : std::pair{pipe.KFactorB, pipe.ElevationB};
}

} // namespace

FirstSprinklerWalk GraphFirstSprinklerPressure(const Project& project) {
    FirstSprinklerWalk walk;
    const int rows = std::clamp<int>(project.NumberOfPipeRows, 0,
                                     static_cast<int>(project.WorkPipeRecord.size()) - 1);
    double inflowElevation = 0;
    for (int row = 1; row <= rows && walk.InflowNode.empty(); ++row) {
        const WorkPipeRecord& pipe = project.WorkPipeRecord[static_cast<std::size_t>(row)];
        if (pipe.BegIsInflow != 0) {
            walk.InflowNode = Trim(pipe.BegNode);
            inflowElevation = pipe.ElevationB;
        } else if (pipe.EndIsInflow != 0) {
            walk.InflowNode = Trim(pipe.EndNode);
            inflowElevation = pipe.ElevationE;
        }
    }
    // Depth first in row order: a branch that ends without a sprinkler is left for the next.
    std::vector<std::vector<WalkStep>> pending{StepsFrom(project, rows, walk.InflowNode)};
    std::vector<int> path;
    std::set<std::string> visited{walk.InflowNode};
    while (!pending.empty() && !walk.InflowNode.empty()) {
        if (pending.back().empty()) {
            pending.pop_back();
            if (!path.empty()) {
                path.pop_back();
            }
            continue;
        }
        const WalkStep step = pending.back().front();
        pending.back().erase(pending.back().begin());
        if (!visited.insert(step.Node).second) {
            continue;
        }
        path.push_back(step.Row);
        const WorkPipeRecord& pipe = project.WorkPipeRecord[static_cast<std::size_t>(step.Row)];
        const auto [kFactor, elevation] = EndData(pipe, step.Node);
        if (kFactor > 0) {
            walk.SprinklerNode = step.Node;
            walk.ElevationRise = elevation - inflowElevation;
            for (const int row : path) {
                const WorkPipeRecord& passed =
                    project.WorkPipeRecord[static_cast<std::size_t>(row)];
                if (IsDevice(passed.Material) && passed.DeviceLoss > 0) {
                    walk.DeviceLoss += passed.DeviceLoss;
                }
            }
            break;
        }
        pending.push_back(StepsFrom(project, rows, step.Node));
    }
    return walk;
}

GraphDrawing HydraulicGraphDrawing(const GraphData& data, double firstSprinklerPressure,
                                   MeasureSystem system, const GraphArea& area) {
    GraphDrawing drawing;
    auto p = [system](double us) { return ShownValue(UnitKind::Pressure_Drop, us, system); };
    auto q = [system](double us) { return ShownValue(UnitKind::Volumetric_Flow, us, system); };
    drawing.PressureTop = PressureAxisTop(
        std::max({p(data.StaticPressure), p(data.SecondStaticPressure), p(data.DemandPressure)}));
    drawing.FlowFactor =
        FlowScaleFactor(std::max({q(data.TestFlow), q(data.SecondTestFlow), q(data.DemandFlow)}));
    drawing.ChartLeft = area.Left + AxisLabelMargin;
    drawing.ChartTop = area.Top + TopMargin + 300;
    drawing.ChartWidth = std::max(area.Width - AxisLabelMargin - RightMargin, 1000);
    drawing.ChartHeight =
        std::clamp(area.Height - 3800, 1500, static_cast<int>(drawing.ChartWidth * 0.75));

    const Plot plot{drawing, drawing.PressureTop, drawing.FlowFactor};
    DrawFrameAndGrid(plot, system);
    const auto curve = SupplyCurveOf(data.StaticPressure, data.ResidualPressure, data.TestFlow);
    if (curve) {
        DrawCurve(plot, *curve, system, "Supply Curve", GraphInk::Supply, 0);
    }
    if (HasSecondTest(data)) {
        const auto second = SupplyCurveOf(data.SecondStaticPressure, data.SecondResidualPressure,
                                          data.SecondTestFlow);
        const std::string title =
            system == MeasureSystem::SI
                ? "Supply Curve with " +
                      Format(ShownValue(UnitKind::Volumetric_Flow, data.ExteriorHoseFlow, system),
                             "#.0#") +
                      " L/min exterior hose"
                : "Supply Curve with " + std::to_string(data.ExteriorHoseFlow) +
                      " gpm exterior hose";
        DrawCurve(plot, *second, system, title, GraphInk::SecondSupply, 520);
    }
    DrawDemandPoint(plot, q(data.DemandFlow), p(data.DemandPressure));
    DrawTextBlocks(plot, data, curve, firstSprinklerPressure, system, area.Left, area.Width,
                   drawing.ChartTop + drawing.ChartHeight + 800);
    return drawing;
}

Rgb GraphInkColor(GraphInk ink, bool colorGraphs) {
    if (ink == GraphInk::Grid) {
        return {192, 192, 192};
    }
    if (!colorGraphs) {
        return {0, 0, 0};
    }
    switch (ink) {
    case GraphInk::Supply:
        return {0, 0, 200};
    case GraphInk::SecondSupply:
        return {0, 128, 0};
    case GraphInk::Demand:
        return {200, 0, 0};
    default:
        return {0, 0, 0};
    }
}

void DrawHydraulicGraph(ReportDocument& document, const GraphArea& area) {
    auto working = std::make_unique<Project>(document.Model);
    BuildWorkingRows(*working);
    const double firstSprinkler = GraphFirstSprinklerPressure(*working).RequiredPressure();
    // The values in US units: the report's SI copies are converted back by the drawing itself.
    const GraphData data = GraphDataOf(document.Model.SystemData);
    const GraphDrawing drawing = HydraulicGraphDrawing(data, firstSprinkler, document.System, area);

    ReportCanvas& canvas = document.Canvas;
    const bool color = document.Options.ColorGraphs;
    const Rgb pen = canvas.PenColor;
    const int penWidth = canvas.PenWidth;
    const Rgb textColor = canvas.TextColor;
    const FontSpec font = canvas.Font;
    for (const GraphLine& line : drawing.Lines) {
        canvas.PenColor = GraphInkColor(line.Ink, color);
        canvas.PenWidth = line.Ink == GraphInk::Grid ? 5 : 15;
        canvas.Line(line.X1, line.Y1, line.X2, line.Y2);
    }
    canvas.Font.Size = 8;
    for (const GraphText& text : drawing.Texts) {
        canvas.TextColor = GraphInkColor(text.Ink, color);
        canvas.Font.Bold = text.Bold;
        canvas.CurrentX = text.X;
        canvas.CurrentY = text.Y;
        canvas.Text(text.Text);
    }
    canvas.PenColor = pen;
    canvas.PenWidth = penWidth;
    canvas.TextColor = textColor;
    canvas.Font = font;
}

} // namespace quench
