// Every check before the solve, in its order, with its exact words: a bad project is refused with
// the message of the first check that fails, and nothing is posted.

#include "calc/messages.h"
#include "tests/support/network_shapes.h"

#include <functional>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

struct Expected {
    std::string Text;
    std::string Title = "";
    MessageStyle Style = MessageStyle::Plain;
};

class Validation : public ::testing::Test {
protected:
    // A sound branch line of four sprinklers, fed at 50 psi through node 10.
    Validation() : network_(project_) {
        BuildBranchLine(network_);
        network_.SupplyMode(50);
    }

    // The run stops at the expected message, the last one shown, and posts nothing.
    void ExpectRefused(const Expected& expected) {
        ExpectRefused(expected, CalculationScreenFromProject(project_));
    }

    void ExpectRefused(const Expected& expected, const CalculationScreen& screen) {
        const auto before = project_.PipeRecord;
        const Integer inputChanged = project_.InputChanged = True;
        run_.Calculate(project_, screen);
        EXPECT_FALSE(run_.Posted);
        ASSERT_FALSE(run_.Dialogs.Empty());
        const auto& shown = run_.Dialogs.All().back();
        EXPECT_EQ(shown.Text, expected.Text);
        EXPECT_EQ(shown.Title, expected.Title);
        EXPECT_EQ(shown.Style, expected.Style);
        EXPECT_EQ(project_.InputChanged, inputChanged);
        for (int row = 1; row <= project_.NumberOfPipeRows; ++row) {
            EXPECT_EQ(project_.PipeRecord[row].PressEstimateB,
                      before[static_cast<std::size_t>(row)].PressEstimateB);
            EXPECT_EQ(project_.PipeRecord[row].PressEstimateE,
                      before[static_cast<std::size_t>(row)].PressEstimateE);
        }
    }

    CalculationScreen Screen() const { return CalculationScreenFromProject(project_); }

    PipeRecord& Row(int row) { return project_.PipeRecord[row]; }

    Project project_;
    NetworkBuilder network_;
    CalculationRun run_;
};

Expected ScreenError(const std::string& text) {
    return {text, messages::InputDataErrorTitle, MessageStyle::Information};
}

TEST_F(Validation, TheSoundProjectPosts) {
    run_.Calculate(project_);
    EXPECT_TRUE(run_.Posted) << run_.Dialogs.LastText();
    EXPECT_TRUE(run_.Dialogs.Empty());
    EXPECT_GT(Row(4).PressEstimateE, 0);
}

TEST_F(Validation, BlankRowBetweenFilledRows) {
    network_.Pipe(50, 60, 10, 1);
    Row(5) = PipeRecord{};
    network_.Pipe(60, 70, 10, 1);
    ExpectRefused({messages::NoBlankRows, "QUENCH", MessageStyle::Plain});
}

TEST_F(Validation, CalculationScreenChecksInOrder) {
    CalculationScreen screen = Screen();
    screen.optSupplyMode = false;
    ExpectRefused(ScreenError("You must choose a calculation mode."), screen);

    screen = Screen();
    screen.lblSystemInflowNodeNumber.clear();
    ExpectRefused(ScreenError("You must specify an Inflow node to perform calculation."), screen);

    screen = Screen();
    screen.txtInflowResidualPressure1 = "0";
    ExpectRefused(ScreenError("You must specify positive Residual Pressure for Inflow Node 10 to "
                              "perform Supply Mode calculation."),
                  screen);
    screen.txtInflowResidualPressure1 = "-3";
    ExpectRefused(ScreenError("You must specify positive Residual Pressure for Inflow Node 10 to "
                              "perform Supply Mode calculation."),
                  screen);

    screen = Screen();
    screen.lblSecondInflowNodeNumber = "30";
    screen.txtInflowResidualPressure2.clear();
    ExpectRefused(ScreenError("You must specify Residual Pressure for inflow node 30"), screen);

    screen = Screen();
    screen.lblThirdInflowNodeNumber = "40";
    screen.txtInflowResidualPressure3.clear();
    ExpectRefused(ScreenError("You must specify Residual Pressure for inflow node 40"), screen);

    screen = Screen();
    screen.optSupplyMode = false;
    screen.optDemandMode = true;
    screen.txtMinPressureAtHMDNode.clear();
    ExpectRefused(ScreenError("You must specify Minimum Residual Pressure At HMD Sprinkler Node to "
                              "perform Demand Mode calculation."),
                  screen);

    screen = Screen();
    screen.optMaximumNodalPressure = false;
    ExpectRefused(ScreenError("You must choose an imbalance standard. Maximum Nodal Pressure or "
                              "Average Nodal Pressure."),
                  screen);
    screen.optAverageNodalPressure = true;
    ExpectRefused(
        ScreenError("You should specify Average Nodal Pressure imbalance for the calculation."),
        screen);
    screen = Screen();
    screen.txtMaximumNodePressureImbalance.clear();
    ExpectRefused(
        ScreenError("You should specify Maximum Nodal Pressure imbalance for the calculation."),
        screen);

    screen = Screen();
    screen.txtInitialOscillationDampingFactor = "0";
    ExpectRefused(ScreenError("You should specify Initial Damping Factor."), screen);
    screen = Screen();
    screen.txtMinimumOscillationDampingFactor.clear();
    ExpectRefused(ScreenError("You should specify Minimum Damping Factor."), screen);
    screen = Screen();
    screen.txtInitialOscillationDampingFactor = "1";
    screen.txtMinimumOscillationDampingFactor = "2";
    ExpectRefused(ScreenError("The minimum damping factor must be either equal to or less than "
                              "the initial damping factor."),
                  screen);
}

TEST_F(Validation, AZeroPressureAtTheThirdInflowIsAccepted) {
    CalculationScreen screen = Screen();
    screen.lblThirdInflowNodeNumber = "40";
    screen.txtInflowResidualPressure3 = "0";
    run_.Calculate(project_, screen);
    EXPECT_TRUE(run_.Posted) << run_.Dialogs.LastText();
}

TEST_F(Validation, TheSizingQuestionAndItsLimits) {
    Row(2).Diameter = 0;
    Row(2).DiameterFixed = False;
    // No: the run stops at the question.
    ExpectRefused({messages::AutosizeQuestion, "Input Data", MessageStyle::Question});
    EXPECT_TRUE(run_.Dialogs.All().back().WasQuestion);
    // Yes without a velocity or friction limit.
    run_.Dialogs.Script(Answer::Yes);
    ExpectRefused(ScreenError(messages::SizingLimitsMissing));
    // Yes with a limit: sizing is for Demand mode only, so the Supply run is refused, and the
    // stored Demand flag is set beside the Supply flag.
    project_.CalculationData.MaxWaterVelocity = 20;
    run_.Dialogs.Script(Answer::Yes);
    ExpectRefused({"The pipe section #2's diameter has not been specified, You have to input the "
                   "diameter for this pipe section if you want to run Supply mode or you must run "
                   "Demand mode to autosize pipes.",
                   "", MessageStyle::Warning});
    EXPECT_NE(project_.CalculationData.DemandMode, 0);
    EXPECT_NE(project_.CalculationData.SupplyMode, 0);
}

TEST_F(Validation, TheInflowNodeChecks) {
    Row(1).BegIsInflow = 0;
    ExpectRefused({"There is no inflow node specified.", "", MessageStyle::Warning});

    Row(1).BegIsInflow = 1;
    network_.Pipe(10, 60, 10, 1);
    ExpectRefused({"Inflow node 10 should only have one pipe section connected to it.", "",
                   MessageStyle::Warning});
}

TEST_F(Validation, AMarkOnABlankEndIsNoValidInflow) {
    Row(1).BegIsInflow = 0;
    PipeRecord& blank = Row(5);
    blank = PipeRecord{};
    blank.Active = True;
    blank.BegIsInflow = 1;
    ExpectRefused({"Specify a valid inflow node.", "", MessageStyle::Warning});
}

TEST_F(Validation, DuplicatedPipes) {
    network_.Pipe(50, 51, 10, 1);
    network_.Pipe(51, 52, 10, 1);
    network_.Pipe(52, 51, 10, 1);
    ExpectRefused({"There is a duplicated pipe section 52 - 51"});
}

TEST_F(Validation, OfThreeEqualPipesTheFirstIsFaultedWithTheNextOneNamed) {
    network_.Pipe(71, 72, 10, 1);
    network_.Pipe(72, 71, 12, 1);
    network_.Pipe(71, 72, 14, 1);
    ExpectRefused({"There is a duplicated pipe section 72 - 71"});
}

TEST_F(Validation, ValueDuplicatedPipesSayTheyMayBeValueDuplicates) {
    network_.Pipe(50, 100, 10, 1);
    network_.Pipe(100, 50, 10, 1);
    ExpectRefused({"There is an actual or value-duplicated pipe section 100 - 50"});
}

TEST_F(Validation, NetworkChecksInOrder) {
    Project twoPipes;
    NetworkBuilder small(twoPipes);
    small.Pipe(10, 20, 10, 1);
    small.Pipe(20, 30, 10, 1);
    small.Sprinkler(30, 5.6).Inflow(10).SupplyMode(50);
    CalculationRun tooSmall(twoPipes);
    EXPECT_FALSE(tooSmall.Posted);
    EXPECT_EQ(tooSmall.Dialogs.LastText(), "System must have more than 2 pipes.");

    Row(3).EndNode = "0";
    ExpectRefused({"Pipe 3 contains a node 0, which is not allowed.  Nodes must be a number from 1 "
                   "to 9999."});
    Row(3).EndNode = "30";
    ExpectRefused({"Pipe #3 has the same beginning and ending node, 30, which is not allowed.  "
                   "Re-enter the nodes in this pipe 30-30."});
    Row(3).EndNode = "";
    ExpectRefused({"All pipes must have a beginning and end node entered.  You need to enter a "
                   "beginning or ending node for pipe 3."});
}

TEST_F(Validation, AnIsolatedPartOfTheNetwork) {
    network_.Pipe(100, 110, 10, 1);
    network_.Pipe(110, 120, 10, 1);
    ExpectRefused(
        {"Node 100 belongs to an isolated section of the network.", "", MessageStyle::Information});
}

TEST_F(Validation, AnInactivePipeCutsTheNetwork) {
    Row(2).Active = False;
    ExpectRefused(
        {"Node 30 belongs to an isolated section of the network.", "", MessageStyle::Information});
}

TEST_F(Validation, DensityNeedsAnAreaForEachSprinkler) {
    project_.CalculationData.SupplyMode = 0;
    project_.CalculationData.DemandMode = 1;
    project_.CalculationData.MinPressureAtHMDNode = 7;
    project_.SystemData.MinimumDesiredDensity = 0.1f;
    ExpectRefused({"You need to specify the Maximum Area Per Sprinkler or Area of Sprinkler "
                   "Operation on the GPD screen.",
                   "", MessageStyle::Warning});
    EXPECT_EQ(run_.Dialogs.All().size(), 1u); // shown once, in its turn
}

TEST_F(Validation, PipeRowChecks) {
    Row(2).Length = 0;
    ExpectRefused({"PIPE SEGMENT 20 - 30 (PIPE 2) MUST HAVE A NON-ZERO LENGTH."});
    Row(2).Length = -5;
    ExpectRefused({"Pipe length is negative for pipe #2.  You must enter this pipe length as a "
                   "value greater than or equal to zero for calculations to proceed."});
    Row(2).Length = 10;

    Row(3).Diameter = 1.1f;
    ExpectRefused({"Pipe section 30 - 40 cannot have a 1.1 inch diameter."});
    Row(3).Diameter = -2;
    ExpectRefused(
        {"The pipe diameter is negative for pipe #3.  You must enter a pipe diameter as a "
         "value greater than or equal to zero for calculations to proceed."});
    Row(3).Diameter = 1;

    Row(3).Material = 0;
    ExpectRefused({"The pipe material number is zero for pipe #3.  You must enter a pipe material "
                   "number as a value greater than zero, or choose a letter designation (e.g. M "
                   "for meter), for calculations to proceed."});
    Row(3).Material = -1;
    ExpectRefused({"The pipe material number is negative for pipe #3.  You must enter a pipe "
                   "material number as a value greater than zero, or choose a letter designation "
                   "(e.g. M for meter), for calculations to proceed."});
    Row(3).Material = 1;

    Row(4).NonStandardFitLength = -1;
    ExpectRefused({"Non-standard fitting length is negative for pipe #4.  You must enter this "
                   "non-standard fitting length as a value greater than or equal to zero for "
                   "calculations to proceed."});
    Row(4).NonStandardFitLength = 0;
}

TEST_F(Validation, OnlyTheEndNodesKFactorIsRefusedWhenNegative) {
    Row(1).KFactorB = "-5.6";
    run_.Calculate(project_);
    EXPECT_TRUE(run_.Posted) << run_.Dialogs.LastText();
    Row(2).KFactorE = "-5.6";
    ExpectRefused(
        {"K-Factor is negative for node 30.  You must enter a K-Factor as a value greater "
         "than or equal to zero at this node for calculations to proceed."});
}

TEST_F(Validation, NegativeAreasAndFlows) {
    Row(3).SprinklerAreaB = -1;
    ExpectRefused(
        {"Sprinkler area is negative for node 30.  You must enter a sprinkler area as a "
         "value greater than or equal to zero at this node for calculations to proceed."});
    Row(3).SprinklerAreaB = 0;
    Row(3).NonSprinklerFlowE = -1;
    ExpectRefused({"Non-sprinkler flow is negative for node 40.  You must enter a non-sprinkler "
                   "flow as a value greater than or equal to zero at this node for calculations to "
                   "proceed."});
}

TEST_F(Validation, SomethingMustFlow) {
    for (int row = 1; row <= 4; ++row) {
        Row(row).KFactorB = "None";
        Row(row).KFactorE = "Inact";
    }
    ExpectRefused({"No sprinkler or non-sprinkler flow entered.  This project must have a flow "
                   "device entered to run calculations.  Enter a non-zero value in the K-Factor "
                   "column or the NSprk Flow column."});
    project_.SystemData.PrimaryDischargeName = "Hose";
    ExpectRefused({"No hose or fixed flow entered.  This project must have a flow device entered "
                   "to run calculations.  Enter a non-zero value in the K-Factor column or the "
                   "Fixed Flow column."});
}

TEST_F(Validation, SizingBoundsMustExistInTheMaterial) {
    project_.CalculationData.SupplyMode = 0;
    project_.CalculationData.DemandMode = 1;
    project_.CalculationData.MinPressureAtHMDNode = 7;
    project_.CalculationData.MaxWaterVelocity = 20;
    Row(2).Diameter = 0;
    Row(2).DiameterFixed = False;
    Row(2).TypeGroup = 1;
    project_.CalculationData.TypeGroupMinDiameter[1] = 20;
    run_.Dialogs.Script(Answer::Yes);
    ExpectRefused({"MIN AUTOSIZING DIAMETER FOR GROUPED PIPES IS TOO LARGE FOR MATERIAL #1"});
    Row(2).Material = 30; // a free slot of the library: no sizes at all
    run_.Dialogs.Script(Answer::Yes);
    ExpectRefused({"The Pipe Material #30 Does Not Have Any Valid Diameters To Size. You should "
                   "select a pipe material with valid pipe sizes from the Pipe Library Database."});
}

TEST_F(Validation, DevicesStandLevel) {
    network_.Device(50, 55, MaterialMeter, 5);
    network_.Pipe(55, 60, 10, 1);
    network_.Elevation(55, 1);
    ExpectRefused({"Meter 50-55 nodes have different elevation."});
    Row(5).Material = MaterialAlarmDevice;
    ExpectRefused({"Alarm Check Valve 50-55 nodes have different elevation."});
}

// A tree of 1000 pipes has 1001 nodes, one more than the node table and the file hold: the run
// is refused, and the project's counts stay within what a save can store.
TEST(Capacity, ANetworkOfMoreNodesThanTheTableHoldsIsRefused) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(1, 2, 10, 2);
    network.Inflow(1);
    for (int node = 2; node <= 1000; ++node) {
        network.Pipe(node, node + 1, 10, 2);
    }
    network.Sprinkler(1001, 5.6);
    network.SupplyMode(50);
    CalculationRun run(project);
    EXPECT_FALSE(run.Posted);
    EXPECT_EQ(run.Dialogs.LastText(), "The network has 1001 nodes.  A project holds at most 1000 "
                                      "nodes, so this network cannot be calculated or saved with "
                                      "its results.");
    EXPECT_LE(project.NumberOfNodes, MaxNodes);
    EXPECT_LE(project.NumberOfPipes, MaxPipes);
}

} // namespace
} // namespace quench
