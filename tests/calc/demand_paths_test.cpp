// Whole Demand networks that take the seldom paths of the rounds around the Newton iteration: the
// HMD node moving between the ends of two equal branch lines and turning between them, the new
// start pressure when the HMD node ends a round short of its target, and the density exit of the
// HMD round on grids and trees governed by density, with elevations. Each is checked as every
// engine result is: posted, balanced, every flowing sprinkler at or above its need, the least
// inflow pressure the independent solver finds, and the product's own independent check.

#include "calc/independent_check.h"
#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

struct Requirement {
    Single Minimum = 7; // psi
    Single Density = 0; // gpm/ft²
};

// Two equal branch lines of `each` sprinklers either side of a tee at the top of a 20 ft riser
// from the inflow node 1: nodes 101.. on one side, 201.. on the other, each `rise` ft above the
// one before it. The two far ends are mirror images, so the HMD node moves between them.
void BuildTee(NetworkBuilder& network, int each, double kFactor, Single area, Single diameter,
              Single rise) {
    network.Pipe(1, 2, 20, 4);
    network.Inflow(1);
    for (int side = 1; side <= 2; ++side) {
        int previous = 2;
        for (int place = 1; place <= each; ++place) {
            const int node = 100 * side + place;
            network.Pipe(previous, node, 10, diameter);
            network.Sprinkler(node, kFactor).Area(node, area);
            network.Elevation(node, rise * static_cast<Single>(place));
            previous = node;
        }
    }
}

void SetDamping(Project& project, Integer initial, Integer least, bool flowImbalance) {
    CalculationData& data = project.CalculationData;
    data.InitialDampingFactor = initial;
    data.MinimumDampingFactor = least;
    data.UseFlowImbalance = flowImbalance ? 1 : 0;
}

// The checks of a posted Demand result.
void ExpectLeastSupplyMeetingEverySprinkler(const Project& project, const CalculationRun& run,
                                            const Requirement& requirement) {
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    const BalanceReport balance = MeasurePostedBalance(project, DefaultCValue);
    EXPECT_TRUE(balance.PipesObeyLaw) << "pipe law off by " << balance.WorstPipeLawError;
    EXPECT_LT(balance.WorstNodeImbalance, 0.1) << "at node " << balance.WorstNode;
    int flowing = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const NodeRecord& node = project.NodeRecord[static_cast<std::size_t>(position)];
        if (node.Discharge <= 0 || node.KFactor <= 0) {
            continue;
        }
        ++flowing;
        const double densityFlow = requirement.Density * node.SprinklerArea / node.KFactor;
        const double need = std::max<double>(requirement.Minimum, densityFlow * densityFlow);
        EXPECT_GE(node.ResidualPressure, need - CheckSprinklerAllowance) << "node " << node.Number;
    }
    EXPECT_GT(flowing, 0);
    const DemandSolution reference = SolveDemand(NetworkFromProject(project, DefaultCValue),
                                                 {requirement.Minimum, requirement.Density});
    ASSERT_TRUE(reference.Converged);
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, reference.InflowResidual, 0.1);
    const CheckVerdict verdict = CheckPostedResults(project);
    EXPECT_TRUE(verdict.Passed) << CheckVerdictText(verdict);
}

struct TeeCase {
    int Each = 3;
    double KFactor = 5.6;
    Single Area = 220;
    Single Diameter = 1.5f;
    Single Rise = 0;
    Requirement Need;
    Integer InitialDamping = 4;
    Integer MinimumDamping = 1;
    bool FlowImbalance = false;
    bool OscillationEstimate = false;
};

std::string Describe(const TeeCase& test) {
    return std::to_string(test.Each) + " a side, K " + std::to_string(test.KFactor) + ", " +
           std::to_string(test.Diameter) + " in, rise " + std::to_string(test.Rise) + ", min " +
           std::to_string(test.Need.Minimum) + ", density " + std::to_string(test.Need.Density);
}

// The mirror-image ends of a tee trade the HMD choice: a moved node is solved for again, the
// node that ends a round short of its target brings a new start pressure, and the target check
// meets the HMD node changed under a held density node (the turning rule). Every variant ends
// at the least supply that meets every sprinkler.
TEST(DemandPaths, TwoEqualBranchLinesTradeTheHmdNodeAndEndAtTheLeastSupply) {
    const TeeCase cases[] = {
        {3, 5.6, 220, 1.5f, 0, {12, 0.2f}, 4, 1, true, false},
        {3, 8.0, 190, 1.5f, 0, {12, 0.3f}, 2, 1, false, true},
        {3, 5.6, 160, 2.0f, 0, {11, 0.2f}, 4, 1, true, true},
        {3, 8.0, 220, 2.0f, 3.0f, {7, 0.2f}, 4, 1, false, false},
        {3, 5.6, 190, 1.5f, 3.0f, {7, 0.2f}, 2, 1, true, false},
        {3, 8.0, 220, 1.5f, 1.5f, {10, 0.3f}, 2, 1, false, false},
        {5, 5.6, 220, 1.5f, 0, {14, 0.1f}, 4, 1, false, false},
        {6, 5.6, 130, 2.0f, -1.5f, {13, 0.3f}, 8, 4, true, true},
    };
    for (const TeeCase& test : cases) {
        SCOPED_TRACE(Describe(test));
        Project project;
        NetworkBuilder network(project);
        BuildTee(network, test.Each, test.KFactor, test.Area, test.Diameter, test.Rise);
        network.DemandMode(test.Need.Minimum, test.Need.Density);
        SetDamping(project, test.InitialDamping, test.MinimumDamping, test.FlowImbalance);
        CalculationScreen screen = CalculationScreenFromProject(project);
        screen.chkOscillationEstimate = test.OscillationEstimate;
        CalculationRun run;
        run.Calculate(project, screen);
        ExpectLeastSupplyMeetingEverySprinkler(project, run, test.Need);
        // The mirror images end at one pressure: neither far end is favoured.
        EXPECT_NEAR(NodeOf(project, 100 + test.Each).ResidualPressure,
                    NodeOf(project, 200 + test.Each).ResidualPressure, 0.02);
    }
}

// Grids and trees governed by density, level, rising and falling away from the riser, with
// joined branch lines: the HMD round's density exit finds the density met at the sprinkler of
// the lowest density, and the run ends at every sprinkler's need.
TEST(DemandPaths, DensityGovernedGridsAndTreesMeetEverySprinklerAtTheLeastSupply) {
    struct ShapeCase {
        bool Grid = true;
        int Rows = 3;
        int Columns = 6;
        Single Rise = 0;
        int CrossEvery = 0;
        Single Area = 130;
        Requirement Need;
    };
    const ShapeCase cases[] = {
        {true, 3, 6, 0, 0, 130, {7, 0.2f}},      {true, 4, 8, 1.5f, 2, 160, {10, 0.3f}},
        {true, 5, 5, -1.5f, 0, 190, {7, 0.1f}},  {false, 3, 6, 0, 0, 220, {12, 0.2f}},
        {false, 4, 5, 3.0f, 0, 100, {16, 0.3f}}, {true, 2, 10, 0, 2, 220, {7, 0.3f}},
    };
    for (const ShapeCase& test : cases) {
        SCOPED_TRACE(std::string(test.Grid ? "grid " : "tree ") + std::to_string(test.Rows) +
                     " x " + std::to_string(test.Columns) + ", rise " + std::to_string(test.Rise));
        Project project;
        NetworkBuilder network(project);
        ShapeOptions options;
        options.ElevationPerRow = test.Rise;
        options.CrossEvery = test.CrossEvery;
        options.Area = test.Area;
        options.BranchDiameter = 1.5f;
        options.FlowingBranchLines = 2;
        options.FlowingPerLine = 4;
        BuildShape(network, test.Grid, test.Rows, test.Columns, options);
        network.DemandMode(test.Need.Minimum, test.Need.Density);
        SetDamping(project, 4, 1, false);
        CalculationRun run(project);
        ExpectLeastSupplyMeetingEverySprinkler(project, run, test.Need);
    }
}

} // namespace
} // namespace quench
