// "Converge to 0.01 flow imbalance": the flow balance that the run reports for each node is the
// balance of the flows it posts, on meshed networks whose mirrored halves carry equal flows, and
// the option ends in a solution that the independent solver confirms.

#include "core/formats.h"
#include "core/text.h"
#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"

#include <cmath>
#include <map>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

constexpr int InflowNumber = 10000;

// Two mains of `columns` nodes (11.. and 31..) joined at their ends and by a branch line of
// `sprinklers` K 5.6 sprinklers (101.., 201.., ...) at each inner column, fed through a riser at
// the middle of the first main: each half mirrors the other, so the two pipes that meet at the
// middle of the far main carry the same flow.
void BuildCentreFedGrid(NetworkBuilder& network, int columns, int sprinklers) {
    const int first = 11;
    const int second = 31;
    network.Pipe(1, 2, 100, 6);
    network.Pipe(2, first + columns / 2, 16, 4);
    for (int column = 1; column < columns; ++column) {
        network.Pipe(first + column - 1, first + column, 10, 2.5f);
        network.Pipe(second + column - 1, second + column, 10, 2.5f);
    }
    network.Pipe(first, second, 20, 2.5f);
    network.Pipe(first + columns - 1, second + columns - 1, 20, 2.5f);
    for (int column = 1; column < columns - 1; ++column) {
        int previous = first + column;
        for (int place = 0; place < sprinklers; ++place) {
            const int node = 100 * column + 1 + place;
            network.Pipe(previous, node, place == 0 ? 5 : 10, 1.5f);
            previous = node;
        }
        network.Pipe(previous, second + column, 5, 1.5f);
        for (int place = 0; place < sprinklers; ++place) {
            network.Sprinkler(100 * column + 1 + place, 5.6).Area(100 * column + 1 + place, 100);
        }
    }
    network.Inflow(1);
}

int PostedNumber(const std::string& text) {
    return static_cast<int>(ToNumber(Trim(text)));
}

// Each node's flow balance summed from the posted pipe flows and discharges alone: what enters
// through the pipes less what the sprinkler and the fixed flow take.
std::map<int, double> PostedBalances(const Project& project) {
    std::map<int, double> balance;
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& node = project.NodeRecord[row];
        balance[node.Number] -= node.FixedFlow + (node.KFactor > 0 ? node.Discharge : 0.0);
    }
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
        balance[PostedNumber(record.BegNode)] -= record.Flow;
        balance[PostedNumber(record.EndNode)] += record.Flow;
    }
    return balance;
}

// Every node's reported imbalance is the balance of its posted flows and lies within 0.01 gpm;
// the maximum carries the sign of the largest and the average is the mean of the sizes.
void ExpectReportedBalancesArePosted(const Project& project) {
    const std::map<int, double> posted = PostedBalances(project);
    double largest = 0;
    double sizes = 0;
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& node = project.NodeRecord[row];
        if (node.Number == InflowNumber) {
            continue;
        }
        SCOPED_TRACE("node " + std::to_string(node.Number));
        EXPECT_NEAR(node.FlowImbalance, posted.at(node.Number), 1e-6);
        EXPECT_LE(std::fabs(node.FlowImbalance), 0.01);
        if (std::fabs(node.FlowImbalance) > std::fabs(largest)) {
            largest = node.FlowImbalance;
        }
        sizes += std::fabs(node.FlowImbalance);
    }
    EXPECT_DOUBLE_EQ(project.MaxNodeFlowImbalanceResult, largest);
    EXPECT_NEAR(project.AvgNodeFlowImbalanceResult, sizes / project.NumberOfNodes, 1e-9);
}

void AskForFlowBalance(Project& project, Integer initialDamping, Integer minimumDamping) {
    CalculationData& data = project.CalculationData;
    data.UseFlowImbalance = 1;
    data.MaximumNodePressureImbalance = 0.001;
    data.InitialDampingFactor = initialDamping;
    data.MinimumDampingFactor = minimumDamping;
}

TEST(FlowBalance, MirroredGridInSupplyModeBalancesEveryNode) {
    for (const auto& [initial, minimum] : {std::pair{8, 4}, {40, 30}, {4, 1}}) {
        SCOPED_TRACE("damping " + std::to_string(initial) + "/" + std::to_string(minimum));
        Project project;
        NetworkBuilder network(project);
        BuildCentreFedGrid(network, 7, 2);
        network.SupplyMode(42.6);
        AskForFlowBalance(project, static_cast<Integer>(initial), static_cast<Integer>(minimum));
        CalculationRun run(project);
        ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
        EXPECT_TRUE(run.Dialogs.Empty()) << run.Dialogs.LastText();
        ExpectReportedBalancesArePosted(project);
        const Agreement agreement = CompareWithSupplyReference(project, 42.6);
        ASSERT_TRUE(agreement.Converged);
        EXPECT_LE(agreement.WorstPressure, 0.05) << "at node " << agreement.WorstPressureNode;
        EXPECT_LE(agreement.WorstFlow, 0.1);
    }
}

TEST(FlowBalance, MirroredGridInDemandModeMeetsTheLeastSupply) {
    for (const auto& [sprinklers, density] : {std::pair{2, 0.0f}, {3, 0.198f}, {4, 0.15f}}) {
        SCOPED_TRACE("sprinklers " + std::to_string(sprinklers));
        Project project;
        NetworkBuilder network(project);
        BuildCentreFedGrid(network, 9, sprinklers);
        network.DemandMode(15.1f, density);
        AskForFlowBalance(project, 40, 30);
        CalculationRun run(project);
        ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
        EXPECT_TRUE(run.Dialogs.Empty()) << run.Dialogs.LastText();
        ExpectReportedBalancesArePosted(project);
        const DemandSolution reference =
            SolveDemand(NetworkFromProject(project, DefaultCValue), {15.1, density});
        ASSERT_TRUE(reference.Converged);
        EXPECT_NEAR(project.CalculationData.InflowResidualPressure, reference.InflowResidual, 0.1);
        EXPECT_LE(CompareWithReference(project, reference.Solution).WorstPressure, 0.1);
    }
}

// The meshed shapes of the suite with the option on, in both modes: the flow rounds end with
// every node within 0.01 gpm instead of chasing an imbalance that the posted flows do not have.
TEST(FlowBalance, MeshedShapesBalanceEveryNodeInBothModes) {
    for (const bool demand : {false, true}) {
        for (const ShapeOptions& options : {ShapeOptions{}, Meshed(), Rising()}) {
            SCOPED_TRACE(demand ? "demand" : "supply");
            Project project;
            NetworkBuilder network(project);
            BuildGrid(network, 5, 9, options);
            if (demand) {
                network.DemandMode(10, 0.15f);
            } else {
                network.SupplyMode(55);
            }
            AskForFlowBalance(project, 8, 4);
            CalculationRun run(project);
            ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
            ExpectReportedBalancesArePosted(project);
        }
    }
}

// A random tree, looped tree or grid of the generator's shapes, with random sizes, elevations,
// K-factors and design areas. A looped tree joins the ends of its first two branch lines.
void BuildRandomNetwork(NetworkBuilder& network, std::mt19937& random, int kind) {
    ShapeOptions options;
    const int rows = 2 + static_cast<int>(random() % 6);
    const int columns = 4 + static_cast<int>(random() % 8);
    options.ElevationPerRow = static_cast<Single>(random() % 3) * 0.7f;
    options.BranchDiameter = random() % 2 == 1 ? 1.5f : 2.0f;
    options.CrossEvery = kind == 2 && random() % 2 == 1 ? 3 : 0;
    options.Area = static_cast<Single>(80 + random() % 100);
    options.FlowingBranchLines = 1 + static_cast<int>(random() % 3);
    options.FlowingPerLine = 2 + static_cast<int>(random() % 6);
    options.KFactor = random() % 2 == 1 ? 5.6 : 8.0;
    options.RiserLength = static_cast<Single>(10 + random() % 30);
    if (kind == 1) {
        const int last = columns; // a tree's lines have columns sprinklers after the main
        network.Pipe(LatticeNode(0, last, last + 1), LatticeNode(1, last, last + 1),
                     options.Spacing, options.BranchDiameter);
    }
    BuildShape(network, kind == 2, rows, columns, options);
}

// Fresh random networks of every kind in both modes with the flow balance asked for: each run
// ends, balances every node within 0.01 gpm as its posted flows show, and agrees with the
// independent solver. The seeds are fixed so that a failure repeats; each gives other networks.
TEST(FlowBalance, RandomNetworksBalanceAndMatchTheReference) {
    const std::pair<Integer, Integer> dampings[] = {{2, 1}, {4, 1}, {8, 4}, {40, 30}};
    for (const unsigned seed : {3u, 17u, 29u, 41u, 53u}) {
        std::mt19937 random(seed);
        for (int trial = 0; trial < 6; ++trial) {
            const int kind = trial % 3; // tree, looped tree, grid
            const bool demand = trial >= 3;
            SCOPED_TRACE("seed " + std::to_string(seed) + " trial " + std::to_string(trial));
            Project project;
            NetworkBuilder network(project);
            BuildRandomNetwork(network, random, kind);
            const Single minimum = static_cast<Single>(7 + random() % 10);
            const Single density = static_cast<Single>(random() % 3) * 0.1f;
            const double supply = 50 + random() % 30;
            if (demand) {
                network.DemandMode(minimum, density);
            } else {
                network.SupplyMode(supply);
            }
            const auto& [initial, least] = dampings[random() % 4];
            AskForFlowBalance(project, initial, least);
            CalculationRun run(project);
            ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
            ExpectReportedBalancesArePosted(project);
            const BalanceReport balance = MeasurePostedBalance(project, DefaultCValue);
            EXPECT_TRUE(balance.PipesObeyLaw) << "pipe law off by " << balance.WorstPipeLawError;
            if (demand) {
                const DemandSolution reference =
                    SolveDemand(NetworkFromProject(project, DefaultCValue), {minimum, density});
                ASSERT_TRUE(reference.Converged);
                EXPECT_NEAR(project.CalculationData.InflowResidualPressure,
                            reference.InflowResidual, 0.1);
                EXPECT_LE(CompareWithReference(project, reference.Solution).WorstPressure, 0.1);
            } else {
                const Agreement agreement = CompareWithSupplyReference(project, supply);
                ASSERT_TRUE(agreement.Converged);
                EXPECT_LE(agreement.WorstPressure, 0.05);
                EXPECT_LE(agreement.WorstFlow, 0.1);
            }
        }
    }
}

} // namespace
} // namespace quench
