#include "solver/hmd.h"
#include "solver/peaking.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

// A branch of sprinkler nodes 20, 30, 40 off node 10, as half-edge rows at given residuals: 10
// joins each of them, each of them only 10.
SolverState Star(double p20, double p30, double p40) {
    SolverState state;
    HalfEdgeTable& edges = state.Edges;
    edges.Rows.resize(7);
    edges.Count = 6;
    edges.PositionOfNumber.assign(FirstInflowNode + 1, 0);
    edges.FirstRow = {0, 1, 4, 5, 6};
    edges.LastRow = {0, 3, 4, 5, 6};
    const int numbers[] = {10, 20, 30, 40};
    for (int position = 1; position <= 4; ++position) {
        edges.PositionOfNumber[static_cast<std::size_t>(numbers[position - 1])] = position;
    }
    const double pressures[] = {50, p20, p30, p40};
    for (int i = 0; i < 3; ++i) {
        HalfEdge& out = edges[i + 1];
        out.FromNode = 10;
        out.ToNode = numbers[i + 1];
        out.FromPosition = 1;
        out.ToPosition = i + 2;
        out.Reverse = i + 4;
        HalfEdge& back = edges[i + 4];
        back.FromNode = numbers[i + 1];
        back.ToNode = 10;
        back.FromPosition = i + 2;
        back.ToPosition = 1;
        back.Reverse = i + 1;
        back.KFactor = 5.6;
        back.FromElevationHead = 0.433 * 10;
        back.Residual = pressures[i + 1];
        back.FromHead = back.FromElevationHead + back.Residual;
        back.ToHead = 50;
        out.FromHead = 50;
        out.ToHead = back.FromHead;
    }
    state.TargetPressure = 10;
    state.Options.DemandMode = true;
    return state;
}

TEST(Hmd, TheLowestSprinklerMoreThanABandBelowBecomesTheHmdAndIsHeld) {
    Project project;
    SolverState state = Star(9.5, 9.2, 9.195);
    state.HmdNode = 20;
    FindHmd(project, state);
    // 30 is lowest by more than 0.01 below the running minimum; 40 within the band of it.
    EXPECT_EQ(state.HmdNode, 30);
    EXPECT_EQ(state.HmdResidual, 10);
    const HalfEdge& held = state.Edges[5];
    EXPECT_EQ(held.Residual, 10);
    EXPECT_NEAR(held.FromHead, 0.433 * 10 + 10, 1e-12);
    EXPECT_NEAR(state.Edges[2].ToHead, held.FromHead, 1e-12); // every copy of the head
    EXPECT_NEAR(state.HmdFlow, 5.6 * std::sqrt(10.0), 1e-12);
    EXPECT_NEAR(state.Edges[6].Residual, 9.195, 1e-12); // within the band: left as solved
}

TEST(Hmd, WithinTheBandTheHmdDoesNotMove) {
    Project project;
    SolverState state = Star(10, 9.995, 10.2);
    state.HmdNode = 20;
    FindHmd(project, state);
    EXPECT_EQ(state.HmdNode, 20);
    EXPECT_EQ(state.HmdResidual, 10);
}

TEST(Hmd, ALockedChoiceIsNotHeld) {
    Project project;
    SolverState state = Star(9.5, 9.2, 9.8);
    state.Retesting.HmdLock = true;
    FindHmd(project, state);
    EXPECT_EQ(state.HmdNode, 30);
    EXPECT_NEAR(state.HmdResidual, 9.2, 1e-12);
    EXPECT_NEAR(state.Edges[5].Residual, 9.2, 1e-12);
}

TEST(Hmd, TheFirstGuessIsADeadEndSprinkler) {
    SolverState state = Star(20, 20, 20);
    PickFirstHmd(state);
    EXPECT_EQ(state.HmdNode, 20);
    EXPECT_EQ(state.PreviousHmdNode, 20);
    EXPECT_EQ(state.Edges[4].Residual, 10);
}

TEST(Peaking, GroupLetters) {
    std::string groups = "A1 b";
    EXPECT_TRUE(HasGroupLeft(groups));
    EXPECT_EQ(TakeGroup(groups), 'A');
    EXPECT_EQ(TakeGroup(groups), 'b');
    EXPECT_EQ(TakeGroup(groups), 0);
    EXPECT_FALSE(HasGroupLeft(groups));
    EXPECT_FALSE(HasGroupLeft("12 -"));
}

TEST(Peaking, TwoDifferentGroupsSwitchItOn) {
    Project project;
    project.NumberOfNodes = 3;
    EXPECT_FALSE(HasAreaGroups(project)); // no node with a group
    for (int i = 1; i <= 3; ++i) {
        project.NodeRecord[static_cast<std::size_t>(i)].AreaGroup = "A";
    }
    EXPECT_FALSE(HasAreaGroups(project)); // one and the same group
    project.NodeRecord[3].AreaGroup = "";
    EXPECT_TRUE(HasAreaGroups(project)); // an empty group differs too
    project.NodeRecord[3].AreaGroup = "B";
    EXPECT_TRUE(HasAreaGroups(project));
}

} // namespace
} // namespace quench
