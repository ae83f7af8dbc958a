// The outer rounds of Demand mode on a small star of rows whose residuals a test sets: the
// supply 10000 joins sprinklers 20, 30 and 40 (K 5.6), each of which joins only the supply. The
// rounds are driven into the paths that whole networks seldom take: the HMD node flipping between
// two nodes, the re-test's repeat, the exits where density takes over, and the turning rule with
// its new start and its rebuilt estimates.

#include "solver/demand_rounds.h"
#include "tests/support/network_builder.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

constexpr double Target = 10;

struct Star : testing::SolverHarness {
    explicit Star(double p20 = 10, double p30 = 10.5, double p40 = 11) {
        const int numbers[] = {FirstInflowNode, 20, 30, 40};
        const double pressures[] = {50, p20, p30, p40};
        Model.NumberOfNodes = 4;
        Model.NumberOfPipes = 3;
        HalfEdgeTable& edges = State.Edges;
        edges.Rows.resize(7);
        edges.Count = 6;
        edges.PositionOfNumber.assign(FirstInflowNode + 1, 0);
        edges.FirstRow = {0, 1, 4, 5, 6};
        edges.LastRow = {0, 3, 4, 5, 6};
        State.NodeKText = {"", "", "5.6", "5.6", "5.6"};
        State.NodeKFactor = {0, 0, 5.6, 5.6, 5.6};
        State.NodeDensity.assign(5, 0.0);
        State.Conductance.assign(7, 1.0);
        for (int position = 1; position <= 4; ++position) {
            NodeRecord& node = Model.NodeRecord[static_cast<std::size_t>(position)];
            node.Number = static_cast<Integer>(numbers[position - 1]);
            node.ResidualPressure = pressures[position - 1];
            node.KFactor = position == 1 ? 0 : 5.6;
            node.SprinklerArea = position == 1 ? 0 : 100;
            node.Discharge = node.KFactor * std::sqrt(node.ResidualPressure);
            edges.PositionOfNumber[static_cast<std::size_t>(numbers[position - 1])] = position;
        }
        for (int i = 0; i < 3; ++i) {
            Model.CalcPipeRecord[static_cast<std::size_t>(i + 1)].NominalDiameter = 1;
            HalfEdge& out = edges[i + 1];
            out.FromNode = FirstInflowNode;
            out.ToNode = numbers[i + 1];
            out.FromPosition = 1;
            out.ToPosition = i + 2;
            out.Reverse = i + 4;
            out.Pipe = i + 1;
            HalfEdge& back = edges[i + 4];
            back.FromNode = numbers[i + 1];
            back.ToNode = FirstInflowNode;
            back.FromPosition = i + 2;
            back.ToPosition = 1;
            back.Reverse = i + 1;
            back.Pipe = i + 1;
            back.KFactor = 5.6;
            back.Residual = pressures[i + 1];
            back.FromHead = back.Residual;
            back.ToHead = 50;
            out.FromHead = 50;
            out.ToHead = back.FromHead;
        }
        State.TargetPressure = Target;
        State.Options.DemandMode = true;
        State.Options.MinimumResidual = static_cast<float>(Target);
        State.HmdNode = 20;
        State.PreviousHmdNode = 20;
        State.HmdResidual = p20;
    }

    // A sprinkler's residual in the rows, every copy of its head.
    void SetResidual(int number, double residual) {
        const int row = State.Edges.FirstRowOf(number);
        State.Edges[row].Residual = residual;
        State.Edges[row].FromHead = residual;
        State.Edges[State.Edges[row].Reverse].ToHead = residual;
        Model.NodeRecord[static_cast<std::size_t>(State.Edges.PositionOf(number))]
            .ResidualPressure = residual;
    }

    double HeadOf(int number) { return State.Edges[State.Edges.FirstRowOf(number)].FromHead; }
};

TEST(DemandRounds, AMovedHmdNodeIsSolvedForAndTenFlipsMakeACycle) {
    Star star;
    star.SetResidual(30, 9.5);
    EXPECT_EQ(HmdRound(star.Context, star.State), Phase::PassStart);
    EXPECT_EQ(star.State.HmdNode, 30);
    EXPECT_EQ(star.State.Turning.HmdChanges, 1);
    EXPECT_EQ(star.State.TotalPasses, 1);
    EXPECT_NEAR(star.HeadOf(30), Target, 1e-12); // held at the target from here

    // Back and forth between 20 and 30, short of the target (the choice is locked, so the node is
    // not lifted): the tenth flip counts a cycle, and the passes may run to 2000 iterations.
    Star flip;
    flip.SetResidual(30, 9.5);
    flip.State.PreviousHmdNode = 30; // 30 was the HMD node before 20
    flip.State.Turning.FlipCount = 9;
    flip.State.Retesting.HmdLock = true;
    EXPECT_EQ(HmdRound(flip.Context, flip.State), Phase::PassStart);
    EXPECT_EQ(flip.State.Turning.FlipCount, 10);
    EXPECT_EQ(flip.State.Turning.FlipCycles, 1);
    EXPECT_EQ(flip.Context.IterationLimit, 2000);

    // After four cycles the move is no reason to solve again: the shortfall brings a new start
    // pressure instead, and another pass while it grows.
    Star cycling;
    cycling.SetResidual(30, 9.5);
    cycling.State.PreviousHmdNode = 30;
    cycling.State.Turning.FlipCount = 9;
    cycling.State.Turning.FlipCycles = 3;
    cycling.State.Retesting.HmdLock = true;
    const float start = cycling.State.StartPressure;
    EXPECT_EQ(HmdRound(cycling.Context, cycling.State), Phase::PassStart);
    EXPECT_EQ(cycling.State.Turning.FlipCycles, 4);
    EXPECT_EQ(cycling.State.Turning.FlipCount, 1);
    EXPECT_EQ(cycling.State.Turning.HmdChanges, 1);
    EXPECT_NEAR(cycling.State.Turning.LastShortfall, 0.5, 1e-12);
    EXPECT_NE(cycling.State.StartPressure, start);
    EXPECT_NEAR(cycling.HeadOf(40), cycling.State.StartPressure, 1e-6); // heads seeded again
}

TEST(DemandRounds, AFlipBetweenNodesThatHoldTheTargetIsSettled) {
    Star star;
    star.SetResidual(30, 9.5);
    star.State.PreviousHmdNode = 30;
    star.State.Turning.FlipCount = 9;
    // The new node is held at the target: the flip is settled and the round goes on to peaking.
    EXPECT_EQ(HmdRound(star.Context, star.State), Phase::Peaking);
    EXPECT_EQ(star.State.Turning.FlipCycles, 31000);
    EXPECT_EQ(star.State.HmdResidual, Target);
    EXPECT_EQ(star.State.DensityNode, 0);
}

TEST(DemandRounds, DensityTakesOverFromTheHmdNodeOrLeavesIt) {
    // Sprinklers of 300 ft² at 0.1 gpm/ft² need 28.7 psi: the lowest density node is held at it.
    Star governs;
    governs.Model.SystemData.MinimumDesiredDensity = 0.1f;
    for (int position = 2; position <= 4; ++position) {
        governs.Model.NodeRecord[static_cast<std::size_t>(position)].SprinklerArea = 300;
    }
    governs.State.Retesting.HmdLock = true;
    governs.State.Turning.LastShortfall = 100; // the shortfall no longer grows: the round goes on
    EXPECT_EQ(HmdRound(governs.Context, governs.State), Phase::PassStart);
    const double required = (0.1 * 300 / 5.6) * (0.1 * 300 / 5.6);
    EXPECT_EQ(governs.State.DensityNode, 20);
    EXPECT_EQ(governs.State.HmdNode, 20);
    EXPECT_NEAR(governs.State.TargetPressure, required, 1e-4);
    EXPECT_NEAR(governs.HeadOf(20), governs.State.TargetPressure, 1e-12);

    // At 100 ft² the density asks for 3.2 psi, under the residual held: the round goes on.
    Star met;
    met.Model.SystemData.MinimumDesiredDensity = 0.1f;
    EXPECT_EQ(HmdRound(met.Context, met.State), Phase::Peaking);
    EXPECT_EQ(met.State.TargetPressure, Target);

    // A density pressure between the residual and a higher target: the target governs, and the
    // density node is let go.
    Star pressure;
    pressure.Model.SystemData.MinimumDesiredDensity = 0.1f;
    pressure.State.RestartFlag = true; // the density pressure stands as a restart left it
    pressure.State.DensityPressure = 9.8;
    pressure.State.DensityNode = 30;
    pressure.State.Retesting.HmdLock = true;
    pressure.SetResidual(20, 9.5);
    pressure.State.Turning.LastShortfall = 100;
    EXPECT_EQ(HmdRound(pressure.Context, pressure.State), Phase::Peaking);
    EXPECT_EQ(pressure.State.DensityNode, 0);
    EXPECT_NEAR(pressure.State.HmdResidual, 9.5, 1e-12);
}

TEST(DemandRounds, TheRetestRepeatsUntilTheHmdNodeHoldsThenLooksOnceMore) {
    Star star;
    star.State.Targeting.HighWater = 10.5; // a higher pressure was seen for this target
    star.State.Targeting.HighWaterSet = true;
    EXPECT_EQ(Retest(star.Context, star.State), Phase::PassStart);
    EXPECT_TRUE(star.State.Retesting.RepeatPending);
    EXPECT_TRUE(star.State.Retesting.SecondLook);
    EXPECT_EQ(star.State.Targeting.HmdPressureRound, 1);
    // The second look finds it holding: back to the device check.
    EXPECT_EQ(Retest(star.Context, star.State), Phase::AfterDevices);
    EXPECT_FALSE(star.State.Retesting.RepeatPending);
    EXPECT_EQ(star.State.Targeting.HmdPressureRound, 2);

    // Still short of the target: another pass, and the second look starts again.
    Star shortOf;
    shortOf.State.Targeting.HighWater = 10.5;
    shortOf.State.Targeting.HighWaterSet = true;
    shortOf.State.Retesting.HmdLock = true;
    shortOf.SetResidual(30, 9.5);
    shortOf.State.Retesting.SecondLook = true;
    EXPECT_EQ(Retest(shortOf.Context, shortOf.State), Phase::PassStart);
    EXPECT_FALSE(shortOf.State.Retesting.SecondLook);
    EXPECT_EQ(shortOf.State.Turning.FlipCount, 1);

    // Nothing below the highest pressure and no density node: the solution is complete.
    Star holds;
    EXPECT_EQ(Retest(holds.Context, holds.State), Phase::CompleteSolution);
}

// The target check with a density node whose choice is locked and an HMD node that has moved.
Star Turning(int turnCycles, Long overshootRounds) {
    Star star;
    star.State.DensityNode = 30;
    star.State.Retesting.HmdLock = true;
    star.State.HmdResidual = 9.5;
    star.State.HmdNode = 30;
    star.State.PreviousHmdNode = 20;
    star.State.Turning.TwoAgoHmd = 30;
    star.State.Turning.FlipCount = 9;
    star.State.Turning.TurnCycles = turnCycles;
    star.State.Overshooting.OvershootRounds = overshootRounds;
    star.SetResidual(30, 9.5);
    return star;
}

TEST(DemandRounds, AnHmdNodeTurningWhileTheTargetMovesGetsANewStart) {
    // Ten turns make a cycle; below five cycles the check goes on to the density loop's side.
    Star few = Turning(0, 0);
    few.Model.SystemData.MinimumDesiredDensity = 0.01f;
    const Phase next = TargetCheck(few.Context, few.State);
    EXPECT_EQ(few.State.Turning.TurnCycles, 1);
    EXPECT_EQ(few.State.Turning.FlipCount, 10);
    EXPECT_NE(next, Phase::SetUp);

    // The fifth cycle with no overshoot round yet: a new start pressure, a new pass.
    Star fifth = Turning(4, 0);
    const float start = fifth.State.StartPressure;
    EXPECT_EQ(TargetCheck(fifth.Context, fifth.State), Phase::PassStart);
    EXPECT_EQ(fifth.State.Turning.TurnCycles, 0);
    EXPECT_NE(fifth.State.StartPressure, start);
    EXPECT_EQ(fifth.State.Overshooting.LastStart, fifth.State.StartPressure);

    // After an overshoot round the start steps back, and with "Update Estimates In Case of
    // Oscillation" the heads are rebuilt from the pipe sizes and the supply's row is given the
    // whole demand at the minimum pressure plus ten percent.
    Star rebuilt = Turning(4, 1);
    rebuilt.Context.UpdateEstimatesOnOscillation = true;
    rebuilt.State.Overshooting.LastStart = 9;
    rebuilt.State.StartPressure = 4;
    EXPECT_EQ(TargetCheck(rebuilt.Context, rebuilt.State), Phase::PassStart);
    EXPECT_EQ(rebuilt.State.StartPressure, 5);
    EXPECT_NEAR(rebuilt.State.Edges[1].FixedFlow, -1.1 * 5.6 * 3 * std::sqrt(Target), 1e-9);
    EXPECT_NEAR(rebuilt.HeadOf(40), Target + 1, 1e-9); // minimum + 1" ^ 2.2

    // Within 0.01 psi of the target after ten turns: the solve starts over.
    Star close = Turning(0, 0);
    close.SetResidual(30, 9.995);
    close.State.HmdResidual = 9.995;
    EXPECT_EQ(TargetCheck(close.Context, close.State), Phase::SetUp);
}

TEST(DemandRounds, TheCountOfHmdChangesStaysWithinItsRange) {
    SolverState state;
    state.Turning.HmdChanges = 102;
    CapHmdChanges(state);
    EXPECT_EQ(state.Turning.HmdChanges, 102);
    state.Turning.HmdChanges = 103;
    CapHmdChanges(state);
    EXPECT_EQ(state.Turning.HmdChanges, 31);
}

TEST(DemandRounds, AnOverPressuredHmdNodeHalvesTheStartPressure) {
    Star star;
    star.State.HmdResidual = 10.5;
    star.State.StartPressure = 9;
    star.State.StartBumps = 4;
    star.State.Turning.FlipCycles = 3;
    EXPECT_EQ(Overshoot(star.Context, star.State), Phase::PassStart);
    EXPECT_EQ(star.State.StartPressure, 4.5f);
    EXPECT_EQ(star.State.Overshooting.LastStart, 4.5f);
    EXPECT_EQ(star.State.Overshooting.StepBack,
              -9.0f); // the first round steps back by the start it had
    EXPECT_EQ(star.State.StartBumps, 3);
    EXPECT_EQ(star.State.Turning.FlipCycles, 0);
    EXPECT_EQ(star.State.Overshooting.BestHmdNode, 20);
    EXPECT_NEAR(star.HeadOf(40), 4.5, 1e-6);
    // A second round halves again; the best node stays that of the lowest overshoot.
    star.State.HmdResidual = 10.8;
    star.State.HmdNode = 30;
    Overshoot(star.Context, star.State);
    EXPECT_EQ(star.State.StartPressure, 2.25f);
    EXPECT_EQ(star.State.Overshooting.OvershootRounds, 2);
    EXPECT_EQ(star.State.Overshooting.BestHmdNode, 20);
}

TEST(DemandRounds, TargetRoundsThatKeepMissingPushTheDensityOrClimbTheLadder) {
    // More than forty rounds below the highest pressure, with density required: the density
    // loop, pushed 1 % above the ratio.
    Star density;
    density.Model.SystemData.MinimumDesiredDensity = 0.1f;
    density.State.Targeting.HighWater = 0;
    density.State.Targeting.HmdPressureRound = 40;
    density.State.Retesting.HmdLock = true;
    density.State.Targeting.LowestSeen = 10.5;
    EXPECT_EQ(TargetCheck(density.Context, density.State), Phase::DensityCheck);
    EXPECT_EQ(density.State.Density.DensityFactor, 1.01f);
    EXPECT_EQ(density.State.Targeting.HmdPressureRound, 41);

    // Without density the start pressure climbs, even with estimates in use.
    Star ladder;
    ladder.State.Options.UseEstimates = true;
    ladder.State.Targeting.HighWater = 0;
    ladder.State.Targeting.HmdPressureRound = 40;
    ladder.State.Retesting.HmdLock = true;
    ladder.State.Targeting.LowestSeen = 10.5;
    const float start = ladder.State.StartPressure;
    EXPECT_EQ(TargetCheck(ladder.Context, ladder.State), Phase::ConvergenceCheck);
    EXPECT_NE(ladder.State.StartPressure, start);
    EXPECT_TRUE(ladder.State.Options.UseEstimates);
    EXPECT_NEAR(ladder.HeadOf(40), ladder.State.StartPressure, 1e-6);

    // An HMD node below the target with no density node marks the pass for another solution.
    Star marked;
    marked.State.HmdResidual = 9.5;
    EXPECT_EQ(TargetCheck(marked.Context, marked.State), Phase::AfterDevices);
    EXPECT_TRUE(marked.State.PassMark);
}

TEST(DemandRounds, TheClosingTestsSendAnHmdNodeBelowTheMinimumBackToTheStart) {
    Star star;
    star.Model.SystemData.MinimumDesiredDensity = 0.1f;
    star.State.Density.MinimumDensity = 0.2; // every sprinkler well over the density
    star.State.HmdResidual = Target;
    EXPECT_EQ(ClosingTests(star.Context, star.State), Phase::Close);
    star.State.HmdResidual = 9.995; // under the minimum, if only within the band
    star.State.Density.MinimumDensity = 0.1;
    EXPECT_EQ(ClosingTests(star.Context, star.State), Phase::SetUp);
}

} // namespace
} // namespace quench
