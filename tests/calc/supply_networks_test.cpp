#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"

#include <cmath>
#include <ostream>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

// A posted Supply-mode solution obeys the equations (pipe law, sprinkler law, node balance) and
// agrees with the independent solver, which must converge for the comparison to count.
void ExpectSound(const Project& project, double inflowPressure) {
    const BalanceReport balance = MeasurePostedBalance(project, DefaultCValue);
    EXPECT_TRUE(balance.PipesObeyLaw) << "pipe law off by " << balance.WorstPipeLawError;
    EXPECT_LE(std::fabs(balance.WorstNodeImbalance), 0.01) << "at node " << balance.WorstNode;
    EXPECT_LE(WorstSprinklerLawError(project), 0.01);
    const Agreement agreement = CompareWithSupplyReference(project, inflowPressure);
    ASSERT_TRUE(agreement.Converged) << "the reference solver did not converge on this network";
    EXPECT_LE(agreement.WorstPressure, 0.05) << "at node " << agreement.WorstPressureNode;
    EXPECT_LE(agreement.WorstFlow, 0.1);
}

struct Shape {
    const char* Name;
    bool Grid;
    int Rows;
    int Columns;
    ShapeOptions Options;
};

// The test's name in listings: the shape's name, not its bytes.
void PrintTo(const Shape& shape, std::ostream* out) {
    *out << shape.Name;
}

class SupplyNetworks : public ::testing::TestWithParam<Shape> {};

TEST_P(SupplyNetworks, PostedSolutionBalancesAndMatchesTheReference) {
    const Shape& shape = GetParam();
    Project project;
    NetworkBuilder network(project);
    BuildShape(network, shape.Grid, shape.Rows, shape.Columns, shape.Options);
    network.SupplyMode(60);
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_TRUE(run.Dialogs.Empty()) << run.Dialogs.LastText();
    ExpectSound(project, 60);
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, 60, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, SupplyNetworks,
    ::testing::Values(Shape{"Tree40", false, 5, 7, {}}, Shape{"Tree200", false, 20, 9, {}},
                      Shape{"Tree1000", false, 99, 9, LongMain()}, Shape{"Grid40", true, 4, 10, {}},
                      Shape{"Grid200", true, 10, 19, {}},
                      Shape{"Grid1000", true, 24, 40, LongMain()},
                      Shape{"RisingTree", false, 10, 8, Rising()},
                      Shape{"RisingGrid", true, 10, 12, Rising()},
                      Shape{"MeshedGrid", true, 12, 13, Meshed()}),
    [](const ::testing::TestParamInfo<Shape>& shape) { return std::string(shape.param.Name); });

} // namespace
} // namespace quench
