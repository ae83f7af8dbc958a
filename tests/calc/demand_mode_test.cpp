// Demand mode against hand arithmetic and on the shapes where its rounds have to work: the most
// remote sprinkler held at the minimum pressure and the network walked back to the source; the
// density governing over the minimum pressure; a loop and a grid where the HMD node moves; a dry
// system; peaking by area group; fixed flows.

#include "solver/density.h"
#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

constexpr double K = 5.6;
constexpr double OneInch = 1.049;
constexpr double TwoInch = 2.067;

double Discharge(double pressure) {
    return SprinklerFlow(K, pressure);
}

// The classic hand method from a pressure at the last sprinkler: the pressures at 50, 40, 30, 20
// and at the supply, and the flow.
struct HandResult {
    std::vector<double> Pressures;
    double Supply = 0;
    double Flow = 0;
};

HandResult WalkBack(double last) {
    HandResult hand;
    double pressure = last;
    for (int sprinkler = 0; sprinkler < 4; ++sprinkler) {
        hand.Pressures.push_back(pressure);
        hand.Flow += Discharge(pressure);
        pressure += FrictionDrop(hand.Flow, OneInch, 10);
    }
    hand.Supply = pressure;
    return hand;
}

void ExpectHandResult(const Project& project, const HandResult& hand) {
    const int nodes[] = {50, 40, 30, 20};
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(NodeOf(project, nodes[i]).ResidualPressure,
                    hand.Pressures[static_cast<std::size_t>(i)], 0.005)
            << nodes[i];
    }
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, hand.Supply, 0.005);
    EXPECT_NEAR(project.CalculationData.InflowFlow, hand.Flow, 0.01);
}

TEST(DemandMode, TheMostRemoteSprinklerHoldsTheMinimumPressure) {
    Project project;
    NetworkBuilder network(project);
    BuildBranchLine(network);
    network.DemandMode(10);
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    ExpectHandResult(project, WalkBack(10));
    const CalculationData& data = project.CalculationData;
    EXPECT_EQ(data.HMDNodeNumber, 50);
    EXPECT_EQ(data.HMDActualResidualPressure, 10);
    EXPECT_NEAR(data.HMDActualFlow, Discharge(10), 1e-5); // K is held as a Single
    EXPECT_NEAR(data.SprinklerFlow, WalkBack(10).Flow, 0.01);
}

TEST(DemandMode, DensityGovernsOverTheMinimumPressure) {
    // 0.2 gpm/ft² over 100 ft² is 20 gpm at the last sprinkler: (20 / 5.6)² = 12.755 psi, above
    // the minimum of 7.
    Project project;
    NetworkBuilder network(project);
    BuildBranchLine(network);
    for (int node : {20, 30, 40, 50}) {
        network.Area(node, 100);
    }
    network.DemandMode(7, 0.2f);
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    const double required = (20 / K) * (20 / K);
    ExpectHandResult(project, WalkBack(required));
    EXPECT_EQ(project.CalculationData.HMDNodeNumber, 50);
    EXPECT_NEAR(project.CalculationData.HMDActualResidualPressure, required, 0.005);
}

TEST(DemandMode, ADrySystemSharesTheAreaOfOperation) {
    // No area per sprinkler: the area of operation of 1500 ft² over the 10 sprinklers that flowed
    // last time gives 150 ft² each; the factor 1.3 of a dry system only reaches the summary.
    Project project;
    NetworkBuilder network(project);
    BuildBranchLine(network);
    network.DemandMode(7, 0.1f);
    project.SystemData.AreaOfSprinklerOperation = 1500;
    project.SystemData.SprinklerSystemType = "Dry";
    project.CalculationData.NumberOfFlowingSprinklers = 10;
    ScriptedDialogs dialogs;
    NoProgress progress;
    NoScreens screens;
    Calculation dry(project, DefaultLibrary(), dialogs, progress, screens);
    ASSERT_TRUE(dry.Calculate(CalculationScreenFromProject(project))) << dialogs.LastText();
    EXPECT_EQ(NodeOf(project, 50).SprinklerArea, 150);
    EXPECT_EQ(dry.Context().DryAreaFactor, 1.3f);
    // 0.1 × 150 = 15 gpm asks (15 / 5.6)² = 7.17 psi of the last sprinkler, above 7.
    ExpectHandResult(project, WalkBack((15 / K) * (15 / K)));
}

// A riser to a three-pipe loop with two sprinklers, where the density governs.
TEST(DemandMode, ARiserWithALoopMeetsTheDensityAtTheLeastPressure) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(1, 10, 20, 2);
    network.Pipe(10, 20, 10, 1.25f);
    network.Pipe(20, 30, 10, 1.25f);
    network.Pipe(10, 30, 15, 1.25f);
    for (int node : {20, 30}) {
        network.Sprinkler(node, K).Area(node, 130);
    }
    for (int node : {10, 20, 30}) {
        network.Elevation(node, 10);
    }
    network.Inflow(1).DemandMode(7, 0.2f);
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    const double required = (0.2 * 130 / K) * (0.2 * 130 / K);
    for (int node : {20, 30}) {
        EXPECT_GE(NodeOf(project, node).Discharge / 130, 0.2 - 0.0001);
        EXPECT_GE(NodeOf(project, node).ResidualPressure, required - 0.01);
    }
    const DemandSolution reference =
        SolveDemand(NetworkFromProject(project, DefaultCValue), {7, 0.2});
    ASSERT_TRUE(reference.Converged);
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, reference.InflowResidual, 0.1);
    EXPECT_NEAR(project.CalculationData.HMDActualResidualPressure, required, 0.01);
}

// A loop fed at one corner: the first guess of the HMD node (the first dead-end sprinkler in the
// table) is near the supply, and the HMD node has to move to the far side.
TEST(DemandMode, TheHmdNodeMovesToTheFarSideOfALoop) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(1, 10, 10, 2);
    network.Pipe(10, 11, 5, 1); // a short dead end near the supply
    network.Pipe(10, 20, 30, 1.25f);
    network.Pipe(20, 30, 30, 1.25f);
    network.Pipe(10, 40, 30, 1.25f);
    network.Pipe(40, 30, 30, 1.25f);
    for (int node : {11, 20, 30, 40}) {
        network.Sprinkler(node, K);
    }
    network.Inflow(1).DemandMode(10);
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_EQ(project.CalculationData.HMDNodeNumber, 30);
    EXPECT_NEAR(NodeOf(project, 30).ResidualPressure, 10, 1e-9);
    const DemandSolution reference =
        SolveDemand(NetworkFromProject(project, DefaultCValue), {10, 0});
    ASSERT_TRUE(reference.Converged);
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, reference.InflowResidual, 0.1);
}

TEST(DemandMode, FixedFlowsAreDrawnBesideTheSprinklers) {
    // A hose of 50 gpm at node 30 besides the sprinklers: the flow at the supply carries it.
    Project project;
    NetworkBuilder network(project);
    network.Pipe(1, 10, 10, 2);
    network.Pipe(10, 20, 10, 1.5f);
    network.Pipe(20, 30, 10, 1.5f);
    network.Pipe(30, 40, 10, 1);
    network.Sprinkler(40, K).FixedFlow(30, 50).Inflow(1).DemandMode(10);
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_NEAR(project.CalculationData.InflowFlow, Discharge(10) + 50, 0.01);
    EXPECT_NEAR(project.CalculationData.NonSprinklerFlow, 50, 1e-9);
    const BalanceReport balance = MeasurePostedBalance(project, DefaultCValue);
    EXPECT_LE(std::fabs(balance.WorstNodeImbalance), 0.01);
    const DemandSolution reference =
        SolveDemand(NetworkFromProject(project, DefaultCValue), {10, 0});
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, reference.InflowResidual, 0.1);
}

TEST(DemandMode, AProjectWithoutSprinklersIsWarnedAndRunsOn) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(1, 10, 10, 2);
    network.Pipe(10, 20, 10, 1.5f);
    network.Pipe(20, 30, 10, 1.5f);
    network.FixedFlow(30, 100).Inflow(1).DemandMode(10);
    CalculationRun run(project);
    ASSERT_FALSE(run.Dialogs.Empty());
    EXPECT_EQ(run.Dialogs.All().front().Text.rfind("WARNING: No sprinkler flow entered and running "
                                                   "in Demand mode.",
                                                   0),
              0u);
}

// Two area groups and a sprinkler of no group. Peaking finds the HMD node over the whole system,
// then only its group's sprinklers, and the one of no group, flow.
TEST(DemandMode, PeakingFlowsTheWorstGroupAndTheSprinklersOfNoGroup) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(1, 10, 10, 2);
    network.Pipe(10, 20, 10, 1.25f);
    network.Pipe(20, 30, 10, 1.25f); // group A, near
    network.Pipe(10, 40, 10, 1.25f);
    network.Pipe(40, 50, 40, 1.25f); // group B, far
    network.Pipe(50, 60, 10, 1.25f);
    network.Pipe(10, 70, 10, 1.25f); // no group
    for (int node : {30, 50, 60, 70}) {
        network.Sprinkler(node, K);
    }
    network.Group(30, "A").Group(50, "B").Group(60, "B");
    network.Inflow(1).DemandMode(10);
    project.CalculationData.UseAutomaticPeaking = 1;
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_EQ(project.CalculationData.HMDNodeNumber, 60);
    EXPECT_EQ(NodeOf(project, 30).Discharge, 0); // the other group is off
    EXPECT_GT(NodeOf(project, 50).Discharge, 0);
    EXPECT_GT(NodeOf(project, 70).Discharge, 0); // no group: always flowing
    EXPECT_EQ(project.CalculationData.NumberOfFlowingSprinklers, 3);
    EXPECT_NEAR(NodeOf(project, 60).ResidualPressure, 10, 1e-9);
}

TEST(DemandMode, PeakingNeedsTwoDifferentGroups) {
    Project project;
    NetworkBuilder network(project);
    BuildBranchLine(network);
    for (int node : {10, 20, 30, 40, 50}) {
        network.Group(node, "A");
    }
    network.DemandMode(10);
    project.CalculationData.UseAutomaticPeaking = 1;
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted);
    EXPECT_EQ(project.CalculationData.NumberOfFlowingSprinklers, 4);
    ExpectHandResult(project, WalkBack(10));
}

TEST(DemandMode, KTextsThatNameNoSprinkler) {
    EXPECT_TRUE(IsValidKText("5.6"));
    EXPECT_TRUE(IsValidKText("Dflt"));
    EXPECT_FALSE(IsValidKText("Inact"));
    EXPECT_FALSE(IsValidKText("None"));
    EXPECT_FALSE(IsValidKText("Value"));
    EXPECT_FALSE(IsValidKText("0"));
}

} // namespace
} // namespace quench
