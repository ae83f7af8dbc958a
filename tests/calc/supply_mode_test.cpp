// Tiny networks in Supply mode against hand arithmetic. Each hand calculation walks from the far
// end back to the supply, the classic way: a pressure at the last sprinkler gives its flow, the
// friction law gives the drop of each pipe, and the sum of the drops is the supply pressure that
// the run is then given. The run must find the same pressures and flows.

#include "calc/calculation.h"
#include "solver/hydraulics.h"
#include "tests/support/network_builder.h"
#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

constexpr double K = 5.6;
constexpr double OneInch = 1.049; // inside diameter of 1" Schedule 40
constexpr double TwoInch = 2.067;

double Discharge(double pressure) {
    return SprinklerFlow(K, pressure);
}

TEST(SupplyMode, BranchLineOfFourSprinklersMatchesTheHandMethod) {
    // 1" pipe, 10 ft between sprinklers, the last one at 10 psi.
    double pressure = 10.0;
    double flow = 0;
    std::vector<double> expected; // at 50, 40, 30, 20
    for (int sprinkler = 0; sprinkler < 4; ++sprinkler) {
        expected.push_back(pressure);
        flow += Discharge(pressure);
        pressure += FrictionDrop(flow, OneInch, 10.0);
    }
    const double supply = pressure; // node 10, 10 ft before the first sprinkler

    Project project;
    NetworkBuilder network(project);
    BuildBranchLine(network);
    network.SupplyMode(supply);

    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_NEAR(NodeOf(project, 50).ResidualPressure, expected[0], 0.005);
    EXPECT_NEAR(NodeOf(project, 40).ResidualPressure, expected[1], 0.005);
    EXPECT_NEAR(NodeOf(project, 30).ResidualPressure, expected[2], 0.005);
    EXPECT_NEAR(NodeOf(project, 20).ResidualPressure, expected[3], 0.005);
    EXPECT_NEAR(project.CalculationData.InflowFlow, flow, 0.01);
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, supply, 1e-9);
    // The HMD of Supply mode is the sprinkler with the lowest pressure.
    EXPECT_EQ(project.CalculationData.HMDNodeNumber, 50);
    EXPECT_NEAR(project.CalculationData.HMDActualResidualPressure, expected[0], 0.005);
    EXPECT_NEAR(project.CalculationData.HMDActualFlow, Discharge(expected[0]), 0.01);
    EXPECT_EQ(project.CalculationData.NumberOfFlowingSprinklers, 4);
    EXPECT_NEAR(project.CalculationData.SprinklerFlow, flow, 0.01);
}

TEST(SupplyMode, ASymmetricLoopSplitsTheFlowInHalves) {
    // Riser 10-20 of 2", a square loop 20-30-50 and 20-40-50 of 1" pipes of 15 ft, a cross
    // pipe 30-40, and one sprinkler at 50 held at 20 psi. By symmetry each side carries half of
    // the flow and the cross pipe none.
    const double flow = Discharge(20);
    const double side = FrictionDrop(flow / 2, OneInch, 15);
    const double p30 = 20 + side;
    const double p20 = p30 + side;
    const double supply = p20 + FrictionDrop(flow, TwoInch, 8);

    Project project;
    NetworkBuilder network(project);
    network.Pipe(10, 20, 8, 2);
    network.Pipe(20, 30, 15, 1);
    network.Pipe(20, 40, 15, 1);
    network.Pipe(30, 50, 15, 1);
    network.Pipe(40, 50, 15, 1);
    network.Pipe(30, 40, 15, 1);
    network.Sprinkler(50, K).Inflow(10).SupplyMode(supply);

    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_NEAR(NodeOf(project, 50).ResidualPressure, 20, 0.005);
    EXPECT_NEAR(NodeOf(project, 30).ResidualPressure, p30, 0.005);
    EXPECT_NEAR(NodeOf(project, 40).ResidualPressure, p30, 0.005);
    EXPECT_NEAR(NodeOf(project, 20).ResidualPressure, p20, 0.005);
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
        const bool riser = record.EndNode == "10000";
        const bool cross = record.BegNode == "30" && record.EndNode == "40";
        const double expected = riser ? flow : cross ? 0.0 : flow / 2;
        EXPECT_NEAR(std::fabs(record.Flow), expected, 0.01)
            << record.BegNode << "-" << record.EndNode;
    }
}

TEST(SupplyMode, ElevationCostsPointFourThreeThreePsiAFoot) {
    // The supply at 0 ft, a 2" riser up 12 ft to node 20, then two sprinklers at 12 ft. The last
    // sprinkler at 15 psi.
    const double q40 = Discharge(15);
    const double p30 = 15 + FrictionDrop(q40, OneInch, 10);
    const double q30 = Discharge(p30);
    const double p20 = p30 + FrictionDrop(q40 + q30, OneInch, 10);
    const double supply = p20 + FrictionDrop(q40 + q30, TwoInch, 12) + 0.433 * 12;

    Project project;
    NetworkBuilder network(project);
    network.Pipe(10, 20, 12, 2);
    network.Pipe(20, 30, 10, 1);
    network.Pipe(30, 40, 10, 1);
    network.Sprinkler(30, K).Sprinkler(40, K);
    network.Elevation(20, 12).Elevation(30, 12).Elevation(40, 12);
    network.Inflow(10).SupplyMode(supply);

    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_NEAR(NodeOf(project, 40).ResidualPressure, 15, 0.005);
    EXPECT_NEAR(NodeOf(project, 30).ResidualPressure, p30, 0.005);
    EXPECT_NEAR(NodeOf(project, 20).ResidualPressure, p20, 0.005);
    // The riser's elevation pressure stands in its result row.
    const PipeResultRecord& riser = project.PipeResultRecord[1];
    EXPECT_EQ(riser.BegNode, 10);
    EXPECT_NEAR(riser.ElevationPressure, 0.433 * 12, 1e-9);
}

TEST(SupplyMode, AMeterHoldsItsLossWithinATenthOfAPsi) {
    // Supply 10, meter 10-15 of 6 psi, then 1" pipes to two sprinklers; the last at 12 psi.
    const double q30 = Discharge(12);
    const double p20 = 12 + FrictionDrop(q30, OneInch, 10);
    const double q20 = Discharge(p20);
    const double p15 = p20 + FrictionDrop(q30 + q20, OneInch, 10);
    const double supply = p15 + 6;

    Project project;
    NetworkBuilder network(project);
    network.Device(10, 15, MaterialMeter, 6);
    network.Pipe(15, 20, 10, 1);
    network.Pipe(20, 30, 10, 1);
    network.Sprinkler(20, K).Sprinkler(30, K);
    network.Inflow(10).SupplyMode(supply);

    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    const double drop = NodeOf(project, 10).ResidualPressure - NodeOf(project, 15).ResidualPressure;
    EXPECT_NEAR(drop, 6, 0.1);
    // Downstream of the meter the network follows the pressure the meter leaves.
    EXPECT_NEAR(NodeOf(project, 30).ResidualPressure, 12 + (6 - drop), 0.05);
    // The meter's result row is a device row carrying its loss.
    bool found = false;
    for (int row = 1; row <= project.CalculationData.NumberOfUniquePipeSections; ++row) {
        const PipeResultRecord& result = project.PipeResultRecord[row];
        if (result.DeviceFlag == 2) {
            found = true;
            EXPECT_EQ(result.FrictionPressure, 6);
            EXPECT_EQ(result.BegNode, 10);
        }
    }
    EXPECT_TRUE(found);
}

TEST(SupplyMode, ATypedPumpBoostLiftsTheSupply) {
    // The pump at the supply adds 25 psi: the network runs as from a supply of 20 + 25.
    Project pumped;
    NetworkBuilder network(pumped);
    network.Device(10, 15, MaterialFirePump, 25);
    network.Pipe(15, 20, 10, 1);
    network.Pipe(20, 30, 10, 1);
    network.Sprinkler(20, K).Sprinkler(30, K);
    network.Inflow(10).SupplyMode(20);
    CalculationRun run(pumped);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();

    Project direct;
    NetworkBuilder plain(direct);
    plain.Pipe(15, 20, 10, 1);
    plain.Pipe(20, 30, 10, 1);
    plain.Pipe(30, 40, 10, 1); // a third pipe, the checks ask for more than two
    plain.Sprinkler(20, K).Sprinkler(30, K);
    plain.Inflow(15).SupplyMode(45);
    CalculationRun reference(direct);
    ASSERT_TRUE(reference.Posted) << reference.Dialogs.LastText();

    EXPECT_NEAR(pumped.CalculationData.InflowResidualPressure, 45, 1e-9);
    EXPECT_NEAR(NodeOf(pumped, 30).ResidualPressure, NodeOf(direct, 30).ResidualPressure, 0.005);
    // The pump is carried as a near short, whose flow the pressure tolerance pins less tightly
    // than a pipe's.
    EXPECT_NEAR(pumped.CalculationData.InflowFlow, direct.CalculationData.InflowFlow, 0.1);
    EXPECT_NEAR(pumped.CalculationData.SprinklerFlow, direct.CalculationData.SprinklerFlow, 0.01);
    EXPECT_EQ(pumped.PipeRecord[1].DeviceLoss, 25); // the typed boost stays as typed
    EXPECT_EQ(pumped.CalculationData.InflowResidualPressure1, 20);
}

TEST(SupplyMode, ResultsArePostedBackIntoTheRows) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(20, 30, 10, 1); // typed against the flow: 30 is fed from 20? no, from the riser
    network.Pipe(10, 20, 10, 1);
    network.Pipe(40, 30, 10, 1);
    network.Pipe(20, 50, 10, 1);
    network.Sprinkler(40, K).Sprinkler(30, K);
    network.Inflow(10).SupplyMode(40);
    project.InputChanged = True;

    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_EQ(project.InputChanged, 0);
    // Estimates take the nodes' pressures, the supply's own number included.
    EXPECT_FLOAT_EQ(project.PipeRecord[2].PressEstimateB, 40);
    EXPECT_FLOAT_EQ(project.PipeRecord[3].PressEstimateB,
                    static_cast<Single>(NodeOf(project, 40).ResidualPressure));
    EXPECT_FLOAT_EQ(project.PipeRecord[1].PressEstimateE,
                    static_cast<Single>(NodeOf(project, 30).ResidualPressure));

    // Result rows follow the flow, each under its upstream node, the supply's pipe first.
    const auto& results = project.PipeResultRecord;
    ASSERT_EQ(project.CalculationData.NumberOfUniquePipeSections, 4);
    EXPECT_EQ(results[1].BegNode, 10);
    EXPECT_EQ(results[1].EndNode, 20);
    for (int row = 1; row <= 4; ++row) {
        const PipeResultRecord& result = results[static_cast<std::size_t>(row)];
        EXPECT_GE(result.Flow, 0);
        EXPECT_GE(result.ResidualB, result.ResidualE - 1e-9);
        EXPECT_EQ(result.DeviceFlag, 1);
    }
    // 30-40 is typed 40-30 but flows from 30 to 40; the dead end 20-50 carries nothing and
    // keeps its stored direction.
    bool turned = false;
    bool dry = false;
    for (int row = 1; row <= 4; ++row) {
        const PipeResultRecord& result = results[static_cast<std::size_t>(row)];
        turned = turned || (result.BegNode == 30 && result.EndNode == 40);
        dry = dry || (result.BegNode == 20 && result.EndNode == 50 && result.Flow == 0);
    }
    EXPECT_TRUE(turned);
    EXPECT_TRUE(dry);
}

TEST(SupplyMode, ASecondSupplyFeedsTheOtherEnd) {
    // A line of sprinklers fed at both ends at 30 psi: by symmetry each supply delivers half and
    // the middle sprinkler is fed from both sides.
    Project project;
    NetworkBuilder network(project);
    network.Pipe(10, 20, 10, 1);
    network.Pipe(20, 30, 10, 1);
    network.Pipe(30, 40, 10, 1);
    network.Pipe(40, 50, 10, 1);
    network.Sprinkler(20, K).Sprinkler(30, K).Sprinkler(40, K);
    network.Inflow(10).SupplyMode(30);
    project.CalculationData.SecondInflowNode = 50;
    project.CalculationData.InflowResidualPressure2 = 30;
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_NEAR(NodeOf(project, 50).ResidualPressure, 30, 1e-9);
    EXPECT_NEAR(NodeOf(project, 20).ResidualPressure, NodeOf(project, 40).ResidualPressure, 0.005);
    const double total = NodeOf(project, 20).Discharge + NodeOf(project, 30).Discharge +
                         NodeOf(project, 40).Discharge;
    EXPECT_NEAR(project.CalculationData.InflowFlow, total / 2, 0.01);
    // A second supply below the network's pressure takes no water from it.
    project.CalculationData.InflowResidualPressure2 = 5;
    CalculationRun lower(project);
    ASSERT_TRUE(lower.Posted) << lower.Dialogs.LastText();
    EXPECT_NEAR(project.CalculationData.InflowFlow, project.CalculationData.SprinklerFlow, 0.01);
}

struct CancellingProgress final : Progress {
    int Yields = 0;
    bool Yield() override { return ++Yields >= 2; }
};

TEST(SupplyMode, CancelPostsNothing) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(10, 20, 10, 1);
    network.Pipe(20, 30, 10, 1);
    network.Pipe(30, 40, 10, 1);
    network.Sprinkler(30, K).Sprinkler(40, K).Inflow(10).SupplyMode(40);
    project.InputChanged = True;

    ScriptedDialogs dialogs;
    CancellingProgress progress;
    NoScreens screens;
    Calculation calculation(project, DefaultLibrary(), dialogs, progress, screens);
    EXPECT_FALSE(calculation.Calculate(CalculationScreenFromProject(project)));
    EXPECT_EQ(calculation.Context().CancelRequested, 1);
    EXPECT_EQ(calculation.Context().AbortFlag, 1);
    EXPECT_FALSE(calculation.Context().ResultsFresh);
    EXPECT_TRUE(dialogs.Empty());
    EXPECT_EQ(project.InputChanged, True);
    EXPECT_EQ(project.PipeRecord[1].PressEstimateB, 0);
}

struct RecordingProgress final : Progress {
    std::vector<IterationRow> Rows;
    std::vector<int> Gauge;
    void ShowIteration(const IterationRow& row) override { Rows.push_back(row); }
    void SetGauge(int value) override { Gauge.push_back(value); }
};

TEST(SupplyMode, TheIterationDisplayFollowsTheRun) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(10, 20, 10, 1);
    network.Pipe(20, 30, 10, 1);
    network.Pipe(30, 40, 10, 1);
    network.Sprinkler(30, K).Sprinkler(40, K).Inflow(10).SupplyMode(40);
    ScriptedDialogs dialogs;
    RecordingProgress progress;
    NoScreens screens;
    Calculation calculation(project, DefaultLibrary(), dialogs, progress, screens);
    ASSERT_TRUE(calculation.Calculate(CalculationScreenFromProject(project)));
    ASSERT_GE(progress.Rows.size(), 3u);
    EXPECT_EQ(progress.Rows.front().Iteration, 0);
    EXPECT_EQ(progress.Rows.back().AllowableImbalance, 0.000001);
    // The gauge: 10 at the start, 30 for the first solution, 50 after it, then 90 and 100.
    EXPECT_EQ(progress.Gauge.front(), 10);
    EXPECT_EQ(progress.Gauge.back(), 100);
}

} // namespace
} // namespace quench
