#include "core/formats.h"
#include "reports/hydraulic_graph.h"
#include "reports/hydraulic_graph_scale.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(HydraulicGraphScale, PressureTopsAtTheEdgesOfTheirRanges) {
    const std::pair<double, double> cases[] = {
        {0, 50},      {49.99, 50},    {50, 100},    {99.9, 100},  {100, 200},   {199, 200},
        {200, 500},   {499, 500},     {500, 1000},  {999, 1000},  {1000, 1500}, {1499.9, 1500},
        {1500, 1600}, {1599.9, 1600}, {1600, 1700}, {2345, 2400},
    };
    for (const auto& [largest, top] : cases) {
        EXPECT_EQ(PressureAxisTop(largest), top) << largest;
    }
}

TEST(HydraulicGraphScale, FlowFactorsStepByStep) {
    const std::pair<double, double> cases[] = {
        {0, 0.1},      {99.9, 0.1},   {100, 0.2},     {199, 0.2},  {200, 1},     {999, 1},
        {1000, 2},     {1999, 2},     {2000, 3},      {5500, 6},   {9000, 10},   {9999, 10},
        {10000, 20},   {19999, 20},   {20000, 50},    {49999, 50}, {50000, 100}, {100000, 200},
        {200000, 500}, {499999, 500}, {500000, 1000}, {9e6, 1000},
    };
    for (const auto& [largest, factor] : cases) {
        EXPECT_EQ(FlowScaleFactor(largest), factor) << largest;
    }
    // The axis end is F x 1000 and stands at the full length; half the flow at 0.5^1.85.
    EXPECT_DOUBLE_EQ(FlowAxisFraction(2000, 2), 1);
    EXPECT_NEAR(FlowAxisFraction(1000, 2), std::pow(0.5, 1.85), 1e-15);
    EXPECT_NEAR(FlowGridFraction(10), std::pow(0.5, 1.85), 1e-15);
    EXPECT_EQ(FlowGridFraction(20), 1);
    EXPECT_EQ(FlowGridLabel(7), 3.5);
}

TEST(HydraulicGraphScale, SupplyCurvesAreCutAtZeroOrAtTheAxisEnd) {
    const auto curve = SupplyCurveOf(80, 60, 1000);
    ASSERT_TRUE(curve);
    EXPECT_NEAR(curve->Pressure(1000), 60, 1e-12);
    EXPECT_NEAR(curve->Pressure(0), 80, 1e-12);
    const double noPressure = std::pow(2.71828, std::log(80 / curve->Coefficient) / 1.85);
    EXPECT_NEAR(curve->FlowAtNoPressure().value(), noPressure, 1e-9);
    CurvePiece piece = ChartPiece(*curve, 3000);
    EXPECT_EQ(piece.Pressure1, 80);
    EXPECT_NEAR(piece.Flow2, noPressure, 1e-9);
    EXPECT_EQ(piece.Pressure2, 0);
    piece = ChartPiece(*curve, 1500);
    EXPECT_EQ(piece.Flow2, 1500);
    EXPECT_NEAR(piece.Pressure2, curve->Pressure(1500), 1e-12);

    // S equal to R: a flat line at S to the axis end.
    const auto flat = SupplyCurveOf(70, 70, 500);
    ASSERT_TRUE(flat);
    EXPECT_FALSE(flat->FlowAtNoPressure());
    piece = ChartPiece(*flat, 1000);
    EXPECT_EQ(piece.Pressure2, 70);
    EXPECT_EQ(piece.Flow2, 1000);
    // No test flow: no curve.
    EXPECT_FALSE(SupplyCurveOf(70, 50, 0));
}

GraphData Tested() {
    GraphData data;
    data.StaticPressure = 80;
    data.ResidualPressure = 50;
    data.TestFlow = 1000;
    data.DemandPressure = 45;
    data.DemandFlow = 750;
    return data;
}

constexpr GraphArea Area{720, 2000, 10800, 12000};

std::vector<std::string> TextsOf(const GraphDrawing& drawing) {
    std::vector<std::string> texts;
    for (const auto& text : drawing.Texts) {
        texts.push_back(text.Text);
    }
    return texts;
}

bool Has(const GraphDrawing& drawing, const std::string& text) {
    const auto texts = TextsOf(drawing);
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

int Count(const GraphDrawing& drawing, GraphInk ink) {
    return static_cast<int>(
        std::count_if(drawing.Lines.begin(), drawing.Lines.end(),
                      [ink](const GraphLine& line) { return line.Ink == ink; }));
}

TEST(HydraulicGraph, TheCurveIsAStraightLineAndTheDemandPointSitsOnTheScale) {
    const GraphDrawing drawing = HydraulicGraphDrawing(Tested(), 3.2, MeasureSystem::US, Area);
    EXPECT_EQ(drawing.PressureTop, 100);
    EXPECT_EQ(drawing.FlowFactor, 2);
    ASSERT_EQ(Count(drawing, GraphInk::Supply), 1);
    const auto supply = *std::find_if(drawing.Lines.begin(), drawing.Lines.end(),
                                      [](const GraphLine& l) { return l.Ink == GraphInk::Supply; });
    const int bottom = drawing.ChartTop + drawing.ChartHeight;
    EXPECT_EQ(supply.X1, drawing.ChartLeft);
    EXPECT_EQ(supply.Y1, bottom - static_cast<int>(std::lround(0.8 * drawing.ChartHeight)));
    // 80 psi falling to 50 at 1000 gpm meets 0 psi before 2000 gpm.
    const double noPressure = SupplyCurveOf(80, 50, 1000)->FlowAtNoPressure().value();
    EXPECT_EQ(supply.Y2, bottom);
    EXPECT_NEAR(supply.X2, drawing.ChartLeft + FlowAxisFraction(noPressure, 2) * drawing.ChartWidth,
                1);
    // The demand mark surrounds (750 gpm, 45 psi).
    ASSERT_EQ(Count(drawing, GraphInk::Demand), 4);
    const auto mark = *std::find_if(drawing.Lines.begin(), drawing.Lines.end(),
                                    [](const GraphLine& l) { return l.Ink == GraphInk::Demand; });
    const double x = drawing.ChartLeft + FlowAxisFraction(750, 2) * drawing.ChartWidth;
    const double y = bottom - 0.45 * drawing.ChartHeight;
    EXPECT_NEAR((mark.X1 + mark.X2) / 2.0, x, 1);
    EXPECT_NEAR(mark.Y1 + 60, y, 1);
    // Twenty flow grid lines, the last on the frame; nine pressure lines; the frame.
    EXPECT_EQ(Count(drawing, GraphInk::Grid), 19 + 9);
    EXPECT_EQ(Count(drawing, GraphInk::Frame), 4);

    EXPECT_TRUE(Has(drawing, "Flowrate(x100)  gpm"));
    EXPECT_TRUE(Has(drawing, "Pressure  psi"));
    EXPECT_TRUE(Has(drawing, "Supply Curve"));
    EXPECT_TRUE(Has(drawing, "20")); // the last flow label, 10 x F
    EXPECT_TRUE(Has(drawing, "Static Pressure: 80 psi"));
    EXPECT_TRUE(Has(drawing, "Test Residual Pressure: 50 psi"));
    EXPECT_TRUE(Has(drawing, "Test Flow Rate: 1000 gpm"));
    EXPECT_TRUE(Has(drawing, "Calculated Residual Pressure: 45.00 psi"));
    EXPECT_TRUE(Has(drawing, "Calculated Flow Rate: 750.00 gpm"));
    const double excess = SupplyCurveOf(80, 50, 1000)->Pressure(750) - 45;
    EXPECT_TRUE(Has(drawing, "Excess Available Inflow Residual Pressure: " +
                                 Format(excess, "##0.00") + " psi"));
    EXPECT_TRUE(Has(drawing, "Pressure Required For First Sprinkler Downstream From Inflow Node "
                             "To Flow: 3.20 psi"));
}

TEST(HydraulicGraph, SecondTestsZeroFlowAndSiUnits) {
    GraphData data = Tested();
    data.SecondStaticPressure = 75;
    data.SecondResidualPressure = 50;
    data.SecondTestFlow = 900;
    data.ExteriorHoseFlow = 250;
    GraphDrawing drawing = HydraulicGraphDrawing(data, 0, MeasureSystem::US, Area);
    EXPECT_EQ(Count(drawing, GraphInk::SecondSupply), 1);
    EXPECT_TRUE(Has(drawing, "Supply Curve with 250 gpm exterior hose"));
    EXPECT_TRUE(Has(drawing, "Static Pressure: 75 psi"));

    data.SecondTestFlow = 0; // given in part
    drawing = HydraulicGraphDrawing(data, 0, MeasureSystem::US, Area);
    EXPECT_EQ(Count(drawing, GraphInk::SecondSupply), 0);
    EXPECT_FALSE(Has(drawing, "Static Pressure: 75 psi"));

    data.TestFlow = 0; // no test flow: the axes alone
    drawing = HydraulicGraphDrawing(data, 0, MeasureSystem::US, Area);
    EXPECT_EQ(Count(drawing, GraphInk::Supply), 0);
    EXPECT_EQ(Count(drawing, GraphInk::Frame), 4);
    EXPECT_EQ(Count(drawing, GraphInk::Demand), 4);

    // SI: the scales in kPa and L/min, the values converted last.
    drawing = HydraulicGraphDrawing(Tested(), 0, MeasureSystem::SI, Area);
    EXPECT_EQ(drawing.PressureTop, 1000); // 80 psi is 551.6 kPa
    EXPECT_EQ(drawing.FlowFactor, 4);     // 1000 gpm is 3785 L/min
    EXPECT_TRUE(Has(drawing, "Flowrate(x100)  Lpm"));
    EXPECT_TRUE(Has(drawing, "Pressure  kPa"));
    EXPECT_TRUE(Has(drawing,
                    "Calculated Flow Rate: " +
                        Format(static_cast<float>(ToSI(UnitKind::Volumetric_Flow, 750)), "##0.00") +
                        " Lpm"));
    GraphData hose = Tested();
    hose.SecondStaticPressure = 75;
    hose.SecondResidualPressure = 50;
    hose.SecondTestFlow = 900;
    hose.ExteriorHoseFlow = 250;
    drawing = HydraulicGraphDrawing(hose, 0, MeasureSystem::SI, Area);
    EXPECT_TRUE(Has(drawing, "Supply Curve with 946.35 L/min exterior hose"));

    EXPECT_EQ(GraphInkColor(GraphInk::Supply, false), (Rgb{0, 0, 0}));
    EXPECT_NE(GraphInkColor(GraphInk::Supply, true), (Rgb{0, 0, 0}));
}

// Working rows of a small tree: supply 1 - 2 (a backflow preventer of 4.5 psi) - 3, a dead end
// 3 - 4, and 3 - 5 - 6 with the first sprinkler at 6, 12 ft above the supply.
std::unique_ptr<Project> WalkedTree() {
    auto project = std::make_unique<Project>();
    auto row = [&](int index, const char* begin, const char* end, Single kEnd, Single elevation) {
        WorkPipeRecord& pipe = project->WorkPipeRecord[static_cast<std::size_t>(index)];
        pipe.BegNode = begin;
        pipe.EndNode = end;
        pipe.KFactorE = kEnd;
        pipe.ElevationB = 2;
        pipe.ElevationE = elevation;
        pipe.Active = True;
        pipe.Material = 1;
    };
    row(1, "1", "2", 0, 2);
    row(2, "3", "4", 0, 2);
    row(3, "2", "3", 0, 2);
    row(4, "3", "5", 0, 10);
    row(5, "5", "6", 5.6f, 14);
    project->WorkPipeRecord[1].BegIsInflow = 1;
    project->WorkPipeRecord[3].Material = 52;
    project->WorkPipeRecord[3].DeviceLoss = 4.5f;
    project->NumberOfPipeRows = 5;
    return project;
}

TEST(GraphFirstSprinklerPressure, WalksPastDeadEndsAndSumsTheDevicesOnTheWay) {
    auto project = WalkedTree();
    FirstSprinklerWalk walk = GraphFirstSprinklerPressure(*project);
    EXPECT_EQ(walk.InflowNode, "1");
    EXPECT_EQ(walk.SprinklerNode, "6");
    EXPECT_FLOAT_EQ(walk.DeviceLoss, 4.5f);
    EXPECT_FLOAT_EQ(walk.ElevationRise, 12);
    EXPECT_NEAR(walk.RequiredPressure(), 4.5 + 0.433 * 12, 1e-5);

    // A sprinkler at the far end of the inflow row ends the walk there.
    project->WorkPipeRecord[1].KFactorE = 5.6f;
    walk = GraphFirstSprinklerPressure(*project);
    EXPECT_EQ(walk.SprinklerNode, "2");
    EXPECT_EQ(walk.DeviceLoss, 0);
    EXPECT_EQ(walk.ElevationRise, 0);

    // An inactive row is not walked: no sprinkler is reached.
    project->WorkPipeRecord[1].KFactorE = 0;
    project->WorkPipeRecord[4].Active = False;
    walk = GraphFirstSprinklerPressure(*project);
    EXPECT_EQ(walk.SprinklerNode, "");
    EXPECT_EQ(walk.RequiredPressure(), 0);
}

} // namespace
} // namespace quench
