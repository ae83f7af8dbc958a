// Whole networks in Demand mode: the posted solution balances, every flowing sprinkler holds at
// least the minimum pressure and its density, the HMD node holds its target, and the inflow
// pressure is the least that meets all of that, as the independent solver finds it.

#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

constexpr double DensityTolerance = 0.0001;

void ExpectDemandSound(const Project& project, double minimum, double density) {
    const BalanceReport balance = MeasurePostedBalance(project, DefaultCValue);
    EXPECT_TRUE(balance.PipesObeyLaw) << "pipe law off by " << balance.WorstPipeLawError;
    EXPECT_LE(std::fabs(balance.WorstNodeImbalance), 0.01) << "at node " << balance.WorstNode;
    EXPECT_LE(WorstSprinklerLawError(project), 0.01);

    const CalculationData& data = project.CalculationData;
    double lowestPressure = 1e9;
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& node = project.NodeRecord[row];
        if (node.KFactor <= 0) {
            continue;
        }
        lowestPressure = std::min(lowestPressure, node.ResidualPressure);
        // No sprinkler stands below the minimum by more than the imbalance tolerance allows.
        EXPECT_GE(node.ResidualPressure, minimum - 1e-5)
            << "node " << node.Number << " below by " << minimum - node.ResidualPressure;
        if (density > 0) {
            EXPECT_GE(node.Discharge / node.SprinklerArea, density - DensityTolerance)
                << "node " << node.Number;
        }
    }
    // The HMD node is the sprinkler at the lowest pressure, held at its target.
    EXPECT_NEAR(NodeOf(project, data.HMDNodeNumber).ResidualPressure, lowestPressure, 1e-5);
    EXPECT_NEAR(data.HMDActualResidualPressure, lowestPressure, 1e-5);

    const ReferenceNetwork network = NetworkFromProject(project, DefaultCValue);
    const DemandSolution reference = SolveDemand(network, {minimum, density});
    // A reference that finds nothing checks nothing: that fails the test.
    ASSERT_TRUE(reference.Converged) << "the reference solver did not converge on this network";
    EXPECT_NEAR(data.InflowResidualPressure, reference.InflowResidual, 0.1);
    const Agreement agreement = CompareWithReference(project, reference.Solution);
    EXPECT_LE(agreement.WorstPressure, 0.1) << "at node " << agreement.WorstPressureNode;
}

struct Shape {
    const char* Name;
    bool Grid;
    int Rows;
    int Columns;
    Single Minimum;
    Single Density;
    ShapeOptions Options;
};

// The test's name in listings: the shape's name, not its bytes.
void PrintTo(const Shape& shape, std::ostream* out) {
    *out << shape.Name;
}

class DemandNetworks : public ::testing::TestWithParam<Shape> {};

TEST_P(DemandNetworks, TheLeastSupplyThatMeetsEveryRequirement) {
    const Shape& shape = GetParam();
    Project project;
    NetworkBuilder network(project);
    BuildShape(network, shape.Grid, shape.Rows, shape.Columns, shape.Options);
    network.DemandMode(shape.Minimum, shape.Density);
    CalculationRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_TRUE(run.Dialogs.Empty()) << run.Dialogs.LastText();
    ExpectDemandSound(project, shape.Minimum, shape.Density);
}

ShapeOptions UnevenAreas() {
    ShapeOptions options;
    options.Area = 130;
    options.FlowingPerLine = 6;
    return options;
}

INSTANTIATE_TEST_SUITE_P(Shapes, DemandNetworks,
                         ::testing::Values(Shape{"Tree40", false, 5, 7, 7, 0, {}},
                                           Shape{"Tree40Density", false, 5, 7, 7, 0.2f, {}},
                                           Shape{"Tree200", false, 20, 9, 10, 0, {}},
                                           Shape{"Tree200Density", false, 20, 9, 7, 0.15f, {}},
                                           Shape{"Tree1000", false, 99, 9, 7, 0.1f, LongMain()},
                                           Shape{"Grid40", true, 4, 10, 7, 0, {}},
                                           Shape{"Grid40Density", true, 4, 10, 7, 0.2f, {}},
                                           Shape{"Grid200", true, 10, 19, 7, 0, {}},
                                           Shape{"Grid200Density", true, 10, 19, 7, 0.2f, {}},
                                           Shape{"Grid1000", true, 24, 40, 7, 0.1f, LongMain()},
                                           Shape{"RisingTree", false, 10, 8, 7, 0.1f, Rising()},
                                           Shape{"RisingGrid", true, 10, 12, 10, 0, Rising()},
                                           Shape{"MeshedGrid", true, 12, 13, 7, 0.15f, Meshed()},
                                           Shape{"WideAreas", true, 8, 12, 7, 0.2f, UnevenAreas()}),
                         [](const ::testing::TestParamInfo<Shape>& shape) {
                             return std::string(shape.param.Name);
                         });

// Networks of every shape and size the generator makes, with random sizes, elevations, K-factors,
// design areas, minimum pressures and densities (a fixed seed, so that a failure repeats).
TEST(DemandNetworks, RandomNetworksAreSound) {
    std::mt19937 random(11);
    for (int trial = 0; trial < 60; ++trial) {
        SCOPED_TRACE("trial " + std::to_string(trial));
        Project project;
        NetworkBuilder network(project);
        ShapeOptions options;
        const bool grid = random() % 2 == 1;
        const int rows = 2 + static_cast<int>(random() % 8);
        const int columns = 4 + static_cast<int>(random() % 10);
        options.ElevationPerRow = static_cast<Single>(random() % 3) * 0.7f;
        options.BranchDiameter = random() % 2 == 1 ? 1.5f : 2.0f;
        options.CrossEvery = grid && random() % 2 == 1 ? 3 : 0;
        options.Area = static_cast<Single>(80 + random() % 100);
        options.FlowingBranchLines = 1 + static_cast<int>(random() % 3);
        options.FlowingPerLine = 2 + static_cast<int>(random() % 6);
        options.KFactor = random() % 2 == 1 ? 5.6 : 8.0;
        options.RiserLength = static_cast<Single>(10 + random() % 30);
        BuildShape(network, grid, rows, columns, options);
        const Single minimum = static_cast<Single>(7 + random() % 10);
        const Single density = static_cast<Single>(random() % 3) * 0.1f;
        network.DemandMode(minimum, density);
        CalculationRun run(project);
        ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
        ExpectDemandSound(project, minimum, density);
    }
}

} // namespace
} // namespace quench
