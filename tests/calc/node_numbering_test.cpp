// A network's results do not depend on how its nodes are numbered: the same grid numbered along
// its lines and numbered at random posts the same pressures and flows in both modes and at both
// dampings, the equations of most steps solved in their fill-reducing order.

#include "calc/calculation.h"
#include "calc/calculation_screen.h"
#include "core/formats.h"
#include "solver/solver_state.h"
#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

struct Numbering {
    bool Demand;
    int InitialDamping;
    int MinimumDamping;
};

void PrintTo(const Numbering& numbering, std::ostream* out) {
    *out << (numbering.Demand ? "Demand" : "Supply") << numbering.InitialDamping;
}

void BuildNetwork(Project& project, const Numbering& numbering) {
    NetworkBuilder network(project);
    BuildGrid(network, 8, 12, Meshed());
    if (numbering.Demand) {
        network.DemandMode(7, 0.15f);
    } else {
        network.SupplyMode(60);
    }
    project.CalculationData.InitialDampingFactor = static_cast<Single>(numbering.InitialDamping);
    project.CalculationData.MinimumDampingFactor = static_cast<Single>(numbering.MinimumDamping);
}

// Every node but the supply gets a number drawn at random from 2 to 9999.
std::map<int, int> Renumber(Project& project) {
    std::map<int, int> numbers;
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        numbers[static_cast<int>(ToNumber(pipe.BegNode))] = 0;
        numbers[static_cast<int>(ToNumber(pipe.EndNode))] = 0;
    }
    std::vector<int> drawn(9998);
    std::iota(drawn.begin(), drawn.end(), 2);
    std::mt19937 random(1125);
    std::shuffle(drawn.begin(), drawn.end(), random);
    std::size_t next = 0;
    for (auto& [old, number] : numbers) {
        number = old == project.InflowNode ? old : drawn[next++];
    }
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        pipe.BegNode = std::to_string(numbers[static_cast<int>(ToNumber(pipe.BegNode))]);
        pipe.EndNode = std::to_string(numbers[static_cast<int>(ToNumber(pipe.EndNode))]);
    }
    return numbers;
}

struct Outcome {
    bool Posted = false;
    long NodeOrderSteps = 0;
    long OrderedSteps = 0;
};

Outcome Calculate(Project& project) {
    ScriptedDialogs dialogs;
    NoProgress progress;
    NoScreens screens;
    Calculation calculation(project, DefaultLibrary(), dialogs, progress, screens);
    Outcome run;
    run.Posted = calculation.Calculate(CalculationScreenFromProject(project));
    run.NodeOrderSteps = calculation.State().NodeOrderSteps;
    run.OrderedSteps = calculation.State().OrderedSteps;
    return run;
}

class NodeNumbering : public ::testing::TestWithParam<Numbering> {};

TEST_P(NodeNumbering, ResultsDoNotDependOnTheNumbers) {
    Project lined;
    BuildNetwork(lined, GetParam());
    Project shuffled;
    BuildNetwork(shuffled, GetParam());
    const std::map<int, int> numbers = Renumber(shuffled);

    const Outcome first = Calculate(lined);
    const Outcome second = Calculate(shuffled);
    ASSERT_TRUE(first.Posted);
    ASSERT_TRUE(second.Posted);
    // The run's first step takes the node order; the others the ordered elimination.
    EXPECT_GE(second.NodeOrderSteps, 1);
    EXPECT_GT(second.OrderedSteps, 10 * second.NodeOrderSteps);

    // Within the run's own tolerance: round-off may move the step at which it stops. In Demand
    // mode the HMD rounds scan the nodes in their order and accept the HMD node within 0.01 psi
    // of its target, so the numbers may move the accepted solution within that band.
    const double tolerance =
        GetParam().Demand ? 0.01 : 10 * lined.CalculationData.MaximumNodePressureImbalance + 1e-6;
    const double flowTolerance = GetParam().Demand ? 0.05 : 1e-3;
    for (const auto& [old, number] : numbers) {
        EXPECT_NEAR(NodeOf(lined, old).ResidualPressure, NodeOf(shuffled, number).ResidualPressure,
                    tolerance)
            << "node " << old << " numbered " << number;
    }
    EXPECT_NEAR(lined.CalculationData.InflowResidualPressure,
                shuffled.CalculationData.InflowResidualPressure, tolerance);
    EXPECT_NEAR(lined.CalculationData.InflowFlow, shuffled.CalculationData.InflowFlow,
                flowTolerance);
    // Pipes by their two nodes: the calculated pipe table is in node order, which the numbers
    // change.
    std::map<std::pair<int, int>, double> flows;
    for (int pipe = 1; pipe <= shuffled.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = shuffled.CalcPipeRecord[static_cast<std::size_t>(pipe)];
        const int begin = static_cast<int>(ToNumber(record.BegNode));
        const int end = static_cast<int>(ToNumber(record.EndNode));
        flows[{begin, end}] = record.Flow;
        flows[{end, begin}] = -record.Flow;
    }
    ASSERT_EQ(lined.NumberOfPipes, shuffled.NumberOfPipes);
    const auto renumbered = [&numbers](const std::string& text) {
        const int number = static_cast<int>(ToNumber(text));
        return number == FirstInflowNode ? number : numbers.at(number); // the supply keeps its
    };
    for (int pipe = 1; pipe <= lined.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = lined.CalcPipeRecord[static_cast<std::size_t>(pipe)];
        const int begin = renumbered(record.BegNode);
        const int end = renumbered(record.EndNode);
        const auto found = flows.find(std::make_pair(begin, end));
        ASSERT_NE(found, flows.end()) << record.BegNode << "-" << record.EndNode;
        EXPECT_NEAR(record.Flow, found->second, flowTolerance)
            << record.BegNode << "-" << record.EndNode;
    }
    const BalanceReport balance = MeasurePostedBalance(shuffled, DefaultCValue);
    EXPECT_TRUE(balance.PipesObeyLaw) << "pipe law off by " << balance.WorstPipeLawError;
    EXPECT_LE(std::fabs(balance.WorstNodeImbalance), 0.01) << "at node " << balance.WorstNode;
}

INSTANTIATE_TEST_SUITE_P(Modes, NodeNumbering,
                         ::testing::Values(Numbering{false, 2, 1}, Numbering{false, 65, 60},
                                           Numbering{true, 2, 1}, Numbering{true, 65, 60}));

} // namespace
} // namespace quench
