// Autosizing down to branch-line sizes: the default library lists every fitting length of the
// sizes under 2 in., so with the ungrouped minimum at 1 in. the branch lines of a tree are sized
// from 1 in. up, each pipe within the velocity and friction limits at the flow it carries.

#include "solver/autosizing.h"
#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

constexpr double MaximumVelocity = 20; // ft/s
constexpr double MaximumFriction = 15; // psi per 100 ft

// The smallest size of the material at or above the minimum whose seven fitting lengths are all
// given and which meets both limits at the flow: the size the limits allow.
double SmallestAllowedSize(int material, double flow, double minimum, double cFactor) {
    for (const PipeDiameterRecord& size : DefaultLibrary().Material(material).Diameters) {
        const bool complete = std::all_of(size.FitEqLen.begin(), size.FitEqLen.end(),
                                          [](Single length) { return length > 0; });
        if (size.Nominal == 0 || size.Nominal < minimum || !complete) {
            continue;
        }
        if (SizingVelocity(flow, size.Inner) <= MaximumVelocity &&
            SizingFriction(flow, size.Inner, cFactor) <= MaximumFriction) {
            return size.Nominal;
        }
    }
    return 0;
}

// Calculated with sizing: every open pipe within both limits and 1 in. at least, and 1 to 1.5 in.
// where the 1 in. size meets both limits at its flow.
void ExpectBranchSizes(Project& project) {
    CalculationRun run;
    run.Dialogs.Script(Answer::Yes);
    ASSERT_TRUE(run.Calculate(project)) << run.Dialogs.LastText();

    int sized = 0;
    int small = 0;
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[static_cast<std::size_t>(pipe)];
        if (!IsSizable(record)) {
            continue;
        }
        ++sized;
        const double flow = std::fabs(record.Flow);
        const std::string name = record.BegNode + "-" + record.EndNode;
        EXPECT_GE(record.NominalDiameter, 1.0) << name;
        EXPECT_LE(SizingVelocity(flow, record.InsideDiameter), MaximumVelocity) << name;
        EXPECT_LE(SizingFriction(flow, record.InsideDiameter, record.CFactor), MaximumFriction)
            << name;
        // Where the minimum size itself meets both limits, the pipe stays within 1 to 1.5 in.
        // (sizing steps down by velocity and keeps a size in hand).
        const double allowed = SmallestAllowedSize(record.Material, flow, 1, record.CFactor);
        ASSERT_GT(allowed, 0) << name;
        if (allowed <= 1) {
            EXPECT_LE(record.NominalDiameter, 1.5) << name << " at " << flow << " gpm";
            ++small;
        }
    }
    EXPECT_EQ(sized, 20);
    // At least the last pipe of every branch line, feeding one sprinkler, is such a pipe.
    EXPECT_GE(small, 4);
}

// The tree of the test: a 4" cross main with four branch lines of five sprinklers, every branch
// pipe open to sizing, sized from a 1 in. minimum at the damping given.
void BuildOpenTree(Project& project, Integer initialDamping, Integer minimumDamping) {
    NetworkBuilder network(project);
    BuildTreeOpenToSizing(network, 4, 5);
    network.DemandMode(7, 0.15f);
    CalculationData& data = project.CalculationData;
    data.MaxWaterVelocity = MaximumVelocity;
    data.MaxFrictionalLoss = MaximumFriction;
    data.TypeGroupMinDiameter[0] = 1; // pipes of no type group: 1 in. at least
    data.InitialDampingFactor = initialDamping;
    data.MinimumDampingFactor = minimumDamping;
}

TEST(AutosizingBranchSizes, BranchLinesTakeOneToOneAndAHalfInchWhereTheLimitsAllow) {
    for (const auto& [initial, minimum] : {std::pair{4, 1}, {40, 30}}) {
        SCOPED_TRACE("damping " + std::to_string(initial) + "/" + std::to_string(minimum));
        Project project;
        BuildOpenTree(project, static_cast<Integer>(initial), static_cast<Integer>(minimum));
        ExpectBranchSizes(project);
    }
}

} // namespace
} // namespace quench
