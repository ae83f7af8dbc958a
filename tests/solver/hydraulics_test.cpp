#include "solver/apply_corrections.h"
#include "solver/hydraulics.h"
#include "solver/seeding.h"
#include "tests/support/network_builder.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(Hydraulics, TheFrictionLawAndItsSlope) {
    // C 120, 2.067 in, 100 ft: c = 120^1.85 · 2.067^4.87 / 4.52 / 100.
    const double c = std::pow(120.0, 1.85) * std::pow(2.067, 4.87) / 4.52 / 100;
    EXPECT_NEAR(PipeConductance(120, 2.067, 100), c, 1e-9 * c);
    HalfEdge row;
    row.FromHead = 50;
    row.ToHead = 45;
    ComputeRowFlow(row, c);
    EXPECT_NEAR(row.Flow, std::pow(5 * c, 0.5405), 1e-9);
    EXPECT_NEAR(row.Slope, 0.5405 * std::pow(c, 0.5405) / std::pow(5.0, 0.4595), 1e-9);
    row.FromHead = 45;
    row.ToHead = 50;
    ComputeRowFlow(row, c);
    EXPECT_NEAR(row.Flow, -std::pow(5 * c, 0.5405), 1e-9);
    EXPECT_GT(row.Slope, 0);
}

TEST(Hydraulics, EqualHeadsMoveNoWaterAndKeepAFiniteSlope) {
    HalfEdge row;
    row.FromHead = row.ToHead = 30;
    ComputeRowFlow(row, 1000);
    EXPECT_EQ(row.Flow, 0);
    EXPECT_NEAR(row.Slope, 0.5405 * std::pow(1000.0, 0.5405) / std::pow(1e-6, 0.4595), 1e-3);
    ComputeRowFlow(row, 0);
    EXPECT_EQ(row.Flow, 0);
    EXPECT_EQ(row.Slope, 0); // a zero conductance adds nothing to the diagonal
}

SolverState TwoRows(double fromHead, double toHead, double kFactor) {
    SolverState state;
    state.Edges.Rows.resize(3);
    state.Edges.Count = 2;
    state.Conductance = {0, 100, 100};
    HalfEdge& out = state.Edges[1];
    out.FromNode = 20;
    out.ToNode = FirstInflowNode;
    out.FromHead = fromHead;
    out.ToHead = toHead;
    out.KFactor = kFactor;
    HalfEdge& in = state.Edges[2];
    in.FromNode = FirstInflowNode;
    in.ToNode = 20;
    in.FromHead = toHead;
    in.ToHead = fromHead;
    return state;
}

TEST(Hydraulics, SprinklersAndTheSupplysCheckValve) {
    SolverState state = TwoRows(40, 50, 5.6);
    ComputeFlows(state);
    EXPECT_NEAR(state.Edges[1].SprinklerFlow, 5.6 * std::sqrt(40.0), 1e-12);
    EXPECT_LT(state.Edges[1].Flow, 0); // water comes from the supply
    EXPECT_GT(state.Edges[2].Flow, 0);

    // A row would carry water into the supply: it is closed, and its residual and sprinkler
    // flow are left as they stood.
    state = TwoRows(60, 50, 5.6);
    state.Edges[1].SprinklerFlow = 12;
    ComputeFlows(state);
    EXPECT_EQ(state.Edges[1].Flow, 0);
    EXPECT_EQ(state.Edges[1].Slope, 0);
    EXPECT_EQ(state.Edges[1].SprinklerFlow, 12);

    // A negative residual stops a sprinkler; an exact zero leaves its last flow.
    state = TwoRows(-2, 50, 5.6);
    ComputeFlows(state);
    EXPECT_EQ(state.Edges[1].SprinklerFlow, 0);
    state = TwoRows(0, 50, 5.6);
    state.Edges[1].SprinklerFlow = 3;
    ComputeFlows(state);
    EXPECT_EQ(state.Edges[1].SprinklerFlow, 3);
}

TEST(Hydraulics, VelocityAndVelocityPressure) {
    EXPECT_NEAR(Velocity(100, 2.067), 0.4085 * 100 / (2.067 * 2.067), 1e-12);
    EXPECT_EQ(Velocity(100, 0), 0);
    EXPECT_NEAR(VelocityPressure(-100, 2.067), 0.001123 * 10000 / std::pow(2.067, 4), 1e-12);
}

struct Damping : testing::SolverHarness {
    // One node with one row, whose correction the step applies.
    Damping() {
        Model.NumberOfNodes = 1;
        Model.NodeRecord[1].Number = 20;
        State.Edges.Rows.resize(2);
        State.Edges.Count = 1;
        State.Edges.DistinctNodes = 1;
        State.Edges[1].FromNode = 20;
        State.Edges[1].FromPosition = 1;
        State.Edges[1].FromHead = 100;
        State.ColumnOfPosition = {0, 1};
        State.Correction = {0, 0, 0, 0};
        State.CorrectionSign = {0, 0, 0, 0};
        State.RowCount = 1;
        State.DampingFactor = 5;
        State.MinimumDamping = 1;
        State.Options.DemandMode = false;
    }

    double Step(int iteration, double correction, bool converged) {
        State.Iteration = static_cast<Integer>(iteration);
        State.Correction[1] = correction;
        State.NotConverged = converged ? 0 : 1;
        const double before = State.Edges[1].FromHead;
        EXPECT_TRUE(ApplyCorrections(Context, State));
        return before - State.Edges[1].FromHead;
    }
};

TEST(Damping, TheFactorStepsDownToTwoAndTurnsAreCut) {
    Damping damping;
    damping.State.LastAverage = 10;
    EXPECT_NEAR(damping.Step(1, 8, false), 8.0 / 4, 1e-12); // improving: 5 becomes 4
    EXPECT_NEAR(damping.Step(2, 4, false), 4.0 / 3, 1e-12);
    EXPECT_NEAR(damping.Step(3, 2, false), 2.0 / 2, 1e-12);
    EXPECT_NEAR(damping.Step(4, 1, false), 1.0 / 2, 1e-12); // never under 2 while iterating
    // From the third iteration a correction that turns its sign is cut to 40 percent.
    EXPECT_NEAR(damping.Step(5, -0.5, false), -0.4 * 0.5 / 2, 1e-12);
    EXPECT_EQ(damping.State.Iteration, 5);
    // An average that grows by more than a quarter does not count the iteration.
    EXPECT_NEAR(damping.Step(6, -1, false), -1.0 / 2, 1e-12);
    EXPECT_EQ(damping.State.Iteration, 5);
}

TEST(Damping, WithinToleranceTheWholeStepEarlyAndNoneLater) {
    Damping damping;
    damping.State.LastAverage = 10;
    EXPECT_NEAR(damping.Step(2, 0.25, true), 0.25, 1e-12);
    EXPECT_EQ(damping.State.DampingFactor, 4); // the factor in force stays for the next step
    EXPECT_NEAR(damping.Step(4, 0.25, true), 0.0, 1e-12);
}

TEST(Damping, DivergenceStopsTheRun) {
    Damping damping;
    damping.State.Iteration = 4;
    damping.State.Correction[1] = 2e6;
    damping.State.NotConverged = 1;
    EXPECT_FALSE(ApplyCorrections(damping.Context, damping.State));
    EXPECT_EQ(damping.Context.AbortFlag, 1);
    // The kernel shows nothing itself: the run's loop shows what it recorded.
    EXPECT_TRUE(damping.Dialogs.Empty());
    ASSERT_EQ(damping.Context.Diagnostics.size(), 1u);
    EXPECT_EQ(damping.Context.Diagnostics[0].Text,
              "DIVERGENCE OCCURRED.  CHECK FOR OVERSIZED, MISSING PIPES");
}

TEST(Damping, TheStartPressureLadder) {
    Damping damping;
    damping.State.Options.DemandMode = true;
    for (int bump = 0; bump <= 40; ++bump) {
        BumpStartPressure(damping.Context, damping.State);
        ASSERT_EQ(damping.State.StartPressure, 9.0f);
    }
    // Then 2^(bumps - 40) + 8.
    const float expected[] = {10, 12, 16, 24, 40};
    for (float value : expected) {
        BumpStartPressure(damping.Context, damping.State);
        EXPECT_EQ(damping.State.StartPressure, value);
    }
    EXPECT_EQ(damping.State.Edges[1].FromHead, 40); // the heads are seeded again
    damping.State.StartPressure = 32001;
    BumpStartPressure(damping.Context, damping.State);
    EXPECT_EQ(damping.State.StartPressure, 32001.0f); // the ladder stops above 32000
}

} // namespace
} // namespace quench
