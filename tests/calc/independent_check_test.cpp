// The independent check of a posted result: networks calculated by the Calculate command and then
// solved again by the gradient method; posted results altered by hand must fail it, naming the
// node or pipe that was altered.

#include "calc/gradient_solver.h"
#include "calc/independent_check.h"
#include "tests/support/network_builder.h"
#include "tests/support/network_shapes.h"

#include <cmath>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

std::unique_ptr<Project> Calculated(void (*build)(NetworkBuilder&)) {
    auto project = std::make_unique<Project>();
    NetworkBuilder network(*project);
    build(network);
    CalculationRun run;
    EXPECT_TRUE(run.Calculate(*project));
    return project;
}

void ExpectPasses(const Project& project, const std::string& name) {
    const CheckVerdict verdict = CheckPostedResults(project);
    EXPECT_TRUE(verdict.Solved) << name;
    EXPECT_TRUE(verdict.Passed) << name << ": " << CheckVerdictText(verdict);
    EXPECT_LE(verdict.MaxPressureDifference, CheckPressureAllowance) << name;
    EXPECT_LE(verdict.WorstSprinklerShortfall, CheckSprinklerAllowance) << name;
    EXPECT_LT(verdict.MaxFlowImbalance, 0.1) << name;
}

int RowOfNode(const Project& project, int number) {
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        if (project.NodeRecord[static_cast<std::size_t>(row)].Number == number) {
            return row;
        }
    }
    return 0;
}

TEST(IndependentCheck, PassesOnCalculatedNetworksOfBothModes) {
    const auto demandGrid = Calculated([](NetworkBuilder& network) {
        BuildGrid(network, 4, 6, Rising());
        network.DemandMode(7, 0.15f);
    });
    ExpectPasses(*demandGrid, "Demand grid");
    const auto supplyTree = Calculated([](NetworkBuilder& network) {
        BuildTree(network, 4, 5);
        network.SupplyMode(60);
    });
    ExpectPasses(*supplyTree, "Supply tree");
    const auto meshed = Calculated([](NetworkBuilder& network) {
        BuildGrid(network, 5, 9, Meshed());
        network.SupplyMode(55);
    });
    ExpectPasses(*meshed, "Supply meshed grid");
    EXPECT_EQ(CheckVerdictText(CheckPostedResults(*meshed)).rfind("Independent check: passed", 0),
              0u);
    const auto demandTree = Calculated([](NetworkBuilder& network) {
        BuildTree(network, 3, 4);
        network.DemandMode(10);
    });
    ExpectPasses(*demandTree, "Demand tree");
}

TEST(IndependentCheck, PassesWithAPumpAndADevice) {
    const auto pumped = Calculated([](NetworkBuilder& network) {
        network.Pipe(10, 12, 20, 2);
        network.Device(12, 15, MaterialFirePump, 25);
        network.Pipe(15, 20, 10, 2);
        network.Device(20, 25, MaterialBackflowPreventer, 6);
        network.Pipe(25, 30, 10, 1);
        network.Pipe(30, 40, 10, 1);
        network.Pipe(40, 50, 10, 1);
        network.Sprinkler(30, 5.6).Sprinkler(40, 5.6).Sprinkler(50, 5.6).Inflow(10);
        network.SupplyMode(30);
    });
    ExpectPasses(*pumped, "Supply with a pump and a backflow preventer");
    const auto demand = Calculated([](NetworkBuilder& network) {
        network.Pipe(10, 20, 20, 2);
        network.Device(20, 25, MaterialAlarmDevice, 4);
        network.Pipe(25, 30, 10, 1.5f);
        network.Pipe(30, 40, 10, 1);
        network.Pipe(40, 50, 10, 1);
        network.Sprinkler(30, 5.6).Sprinkler(40, 5.6).Sprinkler(50, 5.6).Inflow(10);
        network.FixedFlow(40, 10);
        network.DemandMode(12);
    });
    ExpectPasses(*demand, "Demand with an alarm valve and a fixed flow");
}

TEST(IndependentCheck, FailsOnAlteredResultsAndNamesWhatWasAltered) {
    const auto grid = Calculated([](NetworkBuilder& network) {
        BuildGrid(network, 4, 6);
        network.DemandMode(7);
    });
    ASSERT_TRUE(CheckPostedResults(*grid).Passed);
    const int number = LatticeNode(2, 3, 6);
    const int row = RowOfNode(*grid, number);
    ASSERT_GT(row, 0);

    Project pressure = *grid;
    pressure.NodeRecord[static_cast<std::size_t>(row)].ResidualPressure += 1;
    const CheckVerdict byPressure = CheckPostedResults(pressure);
    EXPECT_FALSE(byPressure.Passed);
    EXPECT_EQ(byPressure.WorstNode, number);
    EXPECT_NEAR(byPressure.MaxPressureDifference, 1, 0.01);
    EXPECT_NE(CheckVerdictText(byPressure).find("node " + std::to_string(number)),
              std::string::npos);
    EXPECT_NE(CheckVerdictText(byPressure).find("failed"), std::string::npos);
    EXPECT_FALSE(CheckPostedResults(Project{}).Solved); // no run, nothing to solve

    // A pipe flow moved by 1 gpm: named by its two nodes, and the nodes at its ends unbalanced.
    Project flow = *grid;
    auto& pipe = flow.CalcPipeRecord[3];
    pipe.Flow += 1;
    const CheckVerdict byFlow = CheckPostedResults(flow);
    EXPECT_FALSE(byFlow.Passed);
    const int begin = std::stoi(pipe.BegNode);
    EXPECT_EQ(byFlow.WorstPipeBegin, begin == InflowNodeCode ? flow.InflowNode : begin);
    EXPECT_NEAR(byFlow.MaxFlowDifference, 1, 0.01);
    EXPECT_NEAR(byFlow.MaxFlowImbalance, 1, 0.01);
}

TEST(IndependentCheck, JudgesFlowingSprinklersAgainstTheirRequirementInDemandMode) {
    const auto line = Calculated([](NetworkBuilder& network) {
        BuildBranchLine(network);
        network.DemandMode(10);
    });
    ASSERT_TRUE(CheckPostedResults(*line).Passed);
    // The stored minimum raised by 0.5 psi: pressures and flows still agree, but the farthest
    // sprinkler stands short of the new minimum.
    Project raised = *line;
    raised.CalculationData.MinPressureAtHMDNode += 0.5f;
    const CheckVerdict verdict = CheckPostedResults(raised);
    EXPECT_FALSE(verdict.Passed);
    EXPECT_LE(verdict.MaxPressureDifference, CheckPressureAllowance);
    EXPECT_EQ(verdict.ShortSprinkler, 50);
    EXPECT_NEAR(verdict.WorstSprinklerShortfall, 0.5, 0.02);
    // A density asking more than the minimum is measured by the sprinkler's area.
    Project dense = *line;
    dense.CalculationData.DesignDensity = 0.5f;
    for (int row = 1; row <= dense.NumberOfNodes; ++row) {
        dense.NodeRecord[static_cast<std::size_t>(row)].SprinklerArea = 100;
    }
    EXPECT_FALSE(CheckPostedResults(dense).Passed);
    // In Supply mode there is no requirement to meet.
    raised.CalculationData.SupplyMode = 1;
    EXPECT_LE(CheckPostedResults(raised).WorstSprinklerShortfall, 0);
}

// The gradient method alone, on networks whose answer follows from the laws directly.
TEST(GradientSolver, ObeysThePipeAndSprinklerLaws) {
    GradientNetwork network;
    network.Nodes = {{1, 0, 0, 0, true, 50},
                     {2, 10, 5.6, 0, false, 0},
                     {3, 30, 5.6, 0, false, 0},
                     {4, 0, 0, 0, false, 0}};
    network.Links = {{0, 1, false, 1.049, 100, 120, 0},
                     {1, 2, false, 1.049, 50, 120, 0},
                     {0, 3, false, 1.049, 10, 120, 0}}; // 4: a dead end with no demand
    const GradientSolution solution = SolveGradient(network);
    ASSERT_TRUE(solution.Converged);
    const double c = std::pow(120, 1.85) * std::pow(1.049, 4.87) / 4.52;
    const auto head = [&](int n) {
        return solution.Residual[n] + 0.433 * network.Nodes[n].Elevation;
    };
    EXPECT_NEAR(solution.LinkFlow[0], std::pow(c / 100 * (head(0) - head(1)), 0.5405), 1e-6);
    EXPECT_NEAR(solution.Discharge[1], 5.6 * std::sqrt(solution.Residual[1]), 1e-9);
    EXPECT_NEAR(solution.LinkFlow[0], solution.Discharge[1] + solution.LinkFlow[1], 1e-6);
    EXPECT_NEAR(solution.Residual[3], 50, 1e-9);
    EXPECT_EQ(solution.LinkFlow[2], 0);

    // Raised above what the supply reaches, the top sprinkler stops and its line drains to none.
    network.Nodes[2].Elevation = 200;
    const GradientSolution dry = SolveGradient(network);
    ASSERT_TRUE(dry.Converged);
    EXPECT_EQ(dry.Discharge[2], 0);
    EXPECT_LT(dry.Residual[2], 0);
    EXPECT_NEAR(dry.LinkFlow[0], dry.Discharge[1], 1e-6);

    // With no supply there is nothing to solve.
    network.Nodes[0].HeldPressure = false;
    EXPECT_FALSE(SolveGradient(network).Converged);
}

TEST(GradientSolver, HoldsDeviceLossesAndFeedsFromTwoSupplies) {
    GradientNetwork network;
    network.Nodes = {{1, 0, 0, 0, true, 60},
                     {2, 0, 0, 0, false, 0},
                     {3, 0, 0, 0, false, 0},
                     {4, 0, 5.6, 0, false, 0},
                     {5, 0, 0, 0, true, 40}};
    network.Links = {{0, 1, false, 2.067, 20, 120, 0},
                     {1, 2, true, 0, 0, 0, 5},
                     {2, 3, false, 1.049, 30, 120, 0},
                     {4, 3, false, 1.049, 30, 120, 0}};
    const GradientSolution solution = SolveGradient(network);
    ASSERT_TRUE(solution.Converged);
    EXPECT_NEAR(solution.Residual[1] - solution.Residual[2], 5, 1e-9);
    EXPECT_NEAR(solution.LinkFlow[1], solution.LinkFlow[0], 1e-6);
    EXPECT_NEAR(solution.LinkFlow[2] + solution.LinkFlow[3], solution.Discharge[3], 1e-6);
    // The second supply feeds the sprinkler or takes from the first, as the heads fall.
    EXPECT_EQ(solution.LinkFlow[3] > 0, solution.Residual[4] > solution.Residual[3]);
    EXPECT_GT(std::fabs(solution.LinkFlow[3]), 0.1);
    EXPECT_NEAR(solution.Residual[4], 40, 1e-9);
}

} // namespace
} // namespace quench
