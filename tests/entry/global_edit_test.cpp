#include "entry/global_edit.h"
#include "entry/pipe_row_text.h"
#include "entry/pipe_table.h"
#include "entry/undo_stack.h"
#include "tests/support/network_builder.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using enum GlobalItem;
using testing::ScriptedDialogs;
namespace words = global_edit_words;

class GlobalEditTest : public ::testing::Test {
protected:
    // A pipe of material 1, 1 in., 10 ft, active, between two nodes.
    PipeRecord& Pipe(int row, int begin, int end) {
        PipeRecord& record = Row(row);
        record = EmptyPipeRow(project);
        record.BegNode = std::to_string(begin);
        record.EndNode = std::to_string(end);
        record.Material = 1;
        record.Diameter = 1;
        record.DiameterFixed = True;
        record.Length = 10;
        project.NumberOfPipeRows =
            static_cast<Integer>(std::max<int>(project.NumberOfPipeRows, row));
        return record;
    }
    // A branch line 10-20-30-40-50 in rows 1 to 4.
    void Line() {
        for (int row = 1; row <= 4; ++row) {
            Pipe(row, row * 10, row * 10 + 10);
        }
    }
    PipeRecord& Row(int row) { return project.PipeRecord[static_cast<std::size_t>(row)]; }
    void Check(GlobalItem item, std::string current, std::string fresh) {
        edit.Entry(item) = {true, std::move(current), std::move(fresh)};
    }
    void SelectNodes(GlobalFrame frame, std::string from, std::string to) {
        edit.Selection(frame) = {SelectionChoice::NodeRange, std::move(from), std::move(to), ""};
    }

    Project project;
    ScriptedDialogs dialogs;
    UndoStack undo;
    GlobalEdit edit{project, testing::DefaultLibrary(), dialogs, undo};
};

TEST_F(GlobalEditTest, AnItemCheckHasThreeStatesEachWithItsOwnWords) {
    Line();
    SelectNodes(GlobalFrame::Pipe, "10", "50");

    // State 1: no current value. The question names the item and the frame's rows; No ends it.
    Check(Diameter, "", "2");
    EXPECT_EQ(edit.StateOf(Diameter), ItemState::Unspecified);
    dialogs.Script(Answer::No);
    EXPECT_TRUE(edit.Execute(GlobalFrame::Pipe).Stopped);
    ASSERT_EQ(dialogs.All().size(), 1u);
    EXPECT_TRUE(dialogs.All()[0].WasQuestion);
    EXPECT_EQ(dialogs.LastTitle(), "Warning");
    EXPECT_EQ(dialogs.LastText(),
              "You have not entered a specified current value or selected one from the drop down "
              "list by clicking the downward arrow by the current pipe Diameter data field.  So "
              "the change you are making will be applied to all pipes in the specified range.  "
              "Are you sure you want to continue?");
    EXPECT_EQ(Row(1).Diameter, 1.0f);

    // State 2: no new value; Material and Status say "Specify".
    Check(Diameter, "1", "");
    EXPECT_EQ(edit.StateOf(Diameter), ItemState::NoNewValue);
    EXPECT_TRUE(edit.Execute(GlobalFrame::Pipe).Stopped);
    EXPECT_EQ(dialogs.LastTitle(), "Input Data Error");
    EXPECT_EQ(dialogs.LastText(),
              "Since you have checked the Pipe Diameter check box, you should enter a new value "
              "which the specified current value will change to, then click the Execute button "
              "again.");
    Check(Diameter, "1", "33"); // beyond the field's limits
    EXPECT_EQ(edit.StateOf(Diameter), ItemState::NoNewValue);
    edit.Entry(Diameter).Checked = false;
    Check(Material, "1", "");
    edit.Execute(GlobalFrame::Pipe);
    EXPECT_EQ(dialogs.LastText(),
              "Since you have checked the Pipe Material check box, you should Specify a new value "
              "which the specified current value will change to, then click the Execute button "
              "again.");

    // State 3: a current value the selection does not hold.
    Check(Material, "1", "2");
    Check(Length, "12", "15");
    EXPECT_EQ(edit.StateOf(Length), ItemState::NotInList);
    EXPECT_TRUE(edit.Execute(GlobalFrame::Pipe).Stopped);
    EXPECT_EQ(dialogs.LastText(),
              "The current pipe Length you input is not one of the Lengths you specified in the "
              "project. You may choose one from the drop down list by clicking the downward arrow "
              "button by the data field");
    // The good Material item before it was not applied: no half of a command.
    EXPECT_EQ(Row(1).Material, 1);
    EXPECT_FALSE(undo.CanUndo());

    // Both fields empty: two messages naming the item.
    edit.Entry(Length) = {};
    Check(Elevation, "", "");
    const std::size_t before = dialogs.All().size();
    EXPECT_TRUE(edit.Execute(GlobalFrame::Node).Stopped);
    ASSERT_EQ(dialogs.All().size(), before + 2);
    EXPECT_EQ(dialogs.All()[before].Text, "Select a current value for elevation.");
    EXPECT_EQ(dialogs.All()[before + 1].Text, "Select a new value for elevation.");

    // An exact zero that the selection does not hold counts as no current value; with one, and
    // a current value within 0.001 of the list, the item is ready.
    SelectNodes(GlobalFrame::Node, "10", "50");
    Check(Elevation, "0", "5");
    EXPECT_EQ(edit.StateOf(Elevation), ItemState::Ready); // every elevation is 0
    Row(1).ElevationB = 3;
    Row(2).ElevationB = 3;
    Row(3).ElevationB = 3;
    Row(4).ElevationB = 3;
    Row(1).ElevationE = 3;
    Row(2).ElevationE = 3;
    Row(3).ElevationE = 3;
    Row(4).ElevationE = 3;
    EXPECT_EQ(edit.StateOf(Elevation), ItemState::Unspecified);
    Check(Elevation, "3.0004", "5");
    EXPECT_EQ(edit.StateOf(Elevation), ItemState::Ready);

    // Yes to the question changes every row of the selection.
    Check(Material, "", "2");
    dialogs.Script(Answer::Yes);
    const GlobalOutcome outcome = edit.Execute(GlobalFrame::Pipe);
    EXPECT_EQ(outcome.Count, 4);
    EXPECT_EQ(dialogs.LastText(), "4 changes made");
    EXPECT_EQ(Row(4).Material, 2);
}

TEST_F(GlobalEditTest, ARangeTypedEitherWayRoundSelectsTheSameRowsAndEnds) {
    Line();
    GlobalSelection forward{SelectionChoice::NodeRange, "20", "40", ""};
    GlobalSelection backward{SelectionChoice::NodeRange, "40", "20", ""};
    EXPECT_EQ(SelectedPipes(project, forward), (std::vector{1, 2, 3, 4}));
    EXPECT_EQ(SelectedPipes(project, backward), SelectedPipes(project, forward));
    EXPECT_EQ(SelectedEnds(project, backward), SelectedEnds(project, forward));
    // Nodes 20, 30 and 40 at the ends where the rows name them.
    EXPECT_EQ(SelectedEnds(project, forward).size(), 6u);
    const std::vector<RowEnd> ends = SelectedEnds(project, backward);
    EXPECT_EQ(ends.front(), (RowEnd{1, NodeEnd::Ending}));
    EXPECT_EQ(ends.back(), (RowEnd{4, NodeEnd::Beginning}));

    // Executed backwards: the elevation of nodes 20 to 40 and of no other.
    SelectNodes(GlobalFrame::Node, "40", "20");
    Check(Elevation, "0", "7.5");
    EXPECT_EQ(edit.Execute(GlobalFrame::Node).Count, static_cast<int>(ends.size()));
    EXPECT_EQ(Row(1).ElevationB, 0.0f);
    EXPECT_EQ(Row(1).ElevationE, 7.5f);
    EXPECT_EQ(Row(3).ElevationE, 7.5f);
    EXPECT_EQ(Row(4).ElevationE, 0.0f);

    // Groups: a pipe type group equals the field; an area group contains the field's text.
    Row(2).TypeGroup = 3;
    EXPECT_EQ(SelectedPipes(project, {SelectionChoice::Group, "", "", "3"}), (std::vector{2}));
    Row(3).AreaGroupE = "NORTH";
    EXPECT_EQ(SelectedEnds(project, {SelectionChoice::Group, "", "", "or"}),
              (std::vector{RowEnd{3, NodeEnd::Ending}}));
    EXPECT_EQ(SelectedEnds(project, {SelectionChoice::All, "", "", ""}).size(), 8u);
}

TEST_F(GlobalEditTest, RelativeElevationRaisesEveryCopyOfANodeOnce) {
    // Node 20 is named in three rows.
    Pipe(1, 10, 20).ElevationE = 4;
    Pipe(2, 20, 30).ElevationB = 4;
    Pipe(3, 20, 40).ElevationB = 4;
    Pipe(4, 40, 50);
    SelectNodes(GlobalFrame::Node, "20", "20");
    edit.RelativeElevation = true;
    Check(Elevation, "4", "2");
    EXPECT_EQ(edit.Execute(GlobalFrame::Node).Count, 3);
    EXPECT_EQ(dialogs.LastText(), "3 changes made");
    EXPECT_EQ(Row(1).ElevationE, 6.0f);
    EXPECT_EQ(Row(2).ElevationB, 6.0f);
    EXPECT_EQ(Row(3).ElevationB, 6.0f);
    EXPECT_EQ(Row(3).ElevationE, 0.0f);
    EXPECT_EQ(project.InputChanged, True);

    // The current value is compared at one decimal: 6.04 stands as 6.0, 6.06 does not.
    Row(1).ElevationE = 6.04f;
    Row(2).ElevationB = 6.04f;
    Row(3).ElevationB = 6.04f;
    Row(4).ElevationB = 6.06f;
    SelectNodes(GlobalFrame::Node, "10", "50");
    Check(Elevation, "6.0", "-1");
    EXPECT_EQ(edit.Execute(GlobalFrame::Node).Count, 3);
    EXPECT_NEAR(Row(1).ElevationE, 5.04, 1e-5);
    EXPECT_EQ(Row(4).ElevationB, 6.06f);
    // Absolute replaces; in SI a metre typed is stored in feet.
    edit.RelativeElevation = false;
    edit.SwitchUnits(MeasureSystem::SI);
    Check(Elevation, "", "3");
    dialogs.Script(Answer::Yes);
    edit.Execute(GlobalFrame::Node);
    EXPECT_NEAR(Row(4).ElevationE, 3 / 0.3048, 1e-3);
}

TEST_F(GlobalEditTest, KFactorWordsAreValuesOfTheirOwn) {
    Line();
    Row(1).KFactorE = "5.6";
    Row(2).KFactorB = "5.6";
    Row(2).KFactorE = "None";
    Row(3).KFactorB = "None";
    Row(3).KFactorE = "8";
    Row(4).KFactorB = "8";
    Row(4).KFactorE = "Dflt";
    SelectNodes(GlobalFrame::Node, "20", "50");
    // The list: words as they stand, numbers as numbers, in order of appearance.
    EXPECT_EQ(edit.CurrentValues(KFactor),
              (std::vector<std::string>{"5.6", "None", "8.0", "Dflt"}));
    EXPECT_EQ(edit.HelpValues("GlobalCurrentKFactor"), edit.CurrentValues(KFactor));
    EXPECT_EQ(edit.HelpValues("GlobalNewStatus"), (std::vector<std::string>{"Active", "Inactive"}));

    // "None" selects the nodes that have no sprinkler, not the zero of a number.
    Check(KFactor, "none", "Dflt");
    EXPECT_EQ(edit.StateOf(KFactor), ItemState::Ready);
    EXPECT_EQ(edit.Execute(GlobalFrame::Node).Count, 2);
    EXPECT_EQ(Row(2).KFactorE, "Dflt");
    EXPECT_EQ(Row(3).KFactorB, "Dflt");
    EXPECT_EQ(Row(1).KFactorE, "5.6");

    // A number compared at two decimals; the new one stored as a number.
    Check(KFactor, "5.60", "11.2");
    EXPECT_EQ(edit.Execute(GlobalFrame::Node).Count, 2);
    EXPECT_EQ(Row(1).KFactorE, "11.2");
    EXPECT_EQ(Row(2).KFactorB, "11.2");
    // "Value" asks for a number: no new value yet. "Inact" is not in the list.
    Check(KFactor, "", "Value");
    EXPECT_EQ(edit.StateOf(KFactor), ItemState::NoNewValue);
    Check(KFactor, "Inact", "None");
    EXPECT_EQ(edit.StateOf(KFactor), ItemState::NotInList);
    EXPECT_TRUE(edit.Execute(GlobalFrame::Node).Stopped);
    EXPECT_EQ(dialogs.LastText(),
              "The current Nodal K-Factor you input is not one of the K-Factors you specified in "
              "the project. You may choose one from the drop down list by clicking the downward "
              "arrow button by the data field");

    // The keys of the fields: D, I and N give the words; a material is 1 to 50 or a device letter.
    const auto typed = [this](GlobalItem item, std::string text, char key) {
        const int end = static_cast<int>(text.size());
        const KeyOutcome outcome = edit.FilterKey(item, key, {std::move(text), end, 0});
        return outcome.Accepted ? outcome.Field.Text : std::string("refused");
    };
    EXPECT_EQ(typed(KFactor, "", 'd'), "Dflt");
    EXPECT_EQ(typed(KFactor, "5", '.'), "5.");
    EXPECT_EQ(typed(Material, "", 'm'), "M");
    EXPECT_EQ(typed(Material, "", '0'), "refused");
    EXPECT_EQ(typed(Material, "5", '1'), "refused");
    EXPECT_EQ(typed(Material, "5", '0'), "50");
    EXPECT_EQ(typed(Elevation, "", '-'), "-");
    EXPECT_EQ(typed(SprinklerArea, "", '-'), "refused");
    EXPECT_EQ(typed(Diameter, "1", 'x'), "refused");
    EXPECT_EQ(typed(Status, "ACTIV", 'e'), "ACTIVE");

    // With hose as the discharge the sprinkler words change.
    project.SystemData.PrimaryDischargeName = "Hose";
    edit.Entry(KFactor) = {};
    Check(SprinklerArea, "", "");
    edit.Execute(GlobalFrame::Node);
    EXPECT_EQ(dialogs.LastText(), "Select a new value for hose area.");
    EXPECT_EQ(edit.Caption(SprinklerArea), "Flow Area");
}

TEST_F(GlobalEditTest, PipeItemsWriteAsTheRowFieldsDo) {
    Line();
    SelectNodes(GlobalFrame::Pipe, "30", "30");
    Check(Diameter, "1", "0");
    EXPECT_EQ(edit.Execute(GlobalFrame::Pipe).Count, 2);
    EXPECT_EQ(Row(2).Diameter, 0.0f);
    EXPECT_EQ(Row(2).DiameterFixed, False); // open to autosizing
    EXPECT_EQ(Row(1).DiameterFixed, True);
    edit.Entry(Diameter) = {};
    Check(Material, "1", "M");
    Check(Length, "10.00", "12.5");
    Check(Status, "Active", "inactive");
    EXPECT_EQ(edit.Execute(GlobalFrame::Pipe).Count, 6);
    EXPECT_EQ(Row(3).Material, MaterialMeter);
    EXPECT_EQ(Row(3).Length, 12.5f);
    EXPECT_EQ(Row(3).TotalEquivLength, 12.5f);
    EXPECT_EQ(Row(3).Active, False);
    EXPECT_EQ(Row(1).Active, True);
    EXPECT_EQ(edit.CurrentValues(Material), (std::vector<std::string>{"M"}));
    // Nothing that matches: the message says so and the tables have no new step.
    const bool could = undo.CanUndo();
    Check(Material, "M", "2");
    edit.Entry(Length) = {};
    edit.Entry(Status) = {};
    SelectNodes(GlobalFrame::Pipe, "1", "9");
    EXPECT_EQ(edit.StateOf(Material), ItemState::NotInList);
    edit.Entry(Material) = {true, "", "2"};
    dialogs.Script(Answer::Yes);
    EXPECT_EQ(edit.Execute(GlobalFrame::Pipe).Count, 0);
    EXPECT_EQ(dialogs.LastText(), "No matches found");
    EXPECT_EQ(undo.CanUndo(), could);
}

TEST_F(GlobalEditTest, DeleteAndDuplicateOfPipesAndNodes) {
    Line();
    // A node's range of one node deletes every pipe touching it; nothing is closed up.
    SelectNodes(GlobalFrame::Node, "30", "30");
    dialogs.Script(Answer::No);
    EXPECT_TRUE(edit.Delete(GlobalFrame::Node).Stopped);
    EXPECT_EQ(dialogs.LastTitle(), "Confirm Node Delete");
    EXPECT_EQ(dialogs.LastText(), "Delete selected nodes?");
    EXPECT_EQ(Row(2).BegNode, "20");
    dialogs.Script(Answer::Yes);
    EXPECT_EQ(edit.Delete(GlobalFrame::Node).Count, 2);
    EXPECT_EQ(dialogs.LastText(), "2 pipes deleted");
    EXPECT_TRUE(IsBlankRow(Row(2)));
    EXPECT_TRUE(IsBlankRow(Row(3)));
    EXPECT_EQ(Row(4).BegNode, "40");
    EXPECT_EQ(project.NumberOfPipeRows, 4);

    // Pipes: the option off asks nothing; nothing selected is no match.
    SelectNodes(GlobalFrame::Pipe, "10", "10");
    const std::size_t shown = dialogs.All().size();
    EXPECT_EQ(edit.Delete(GlobalFrame::Pipe, false).Count, 1);
    EXPECT_EQ(dialogs.All().size(), shown + 1);
    EXPECT_EQ(dialogs.LastText(), "1 pipes deleted");
    edit.Delete(GlobalFrame::Pipe, false);
    EXPECT_EQ(dialogs.LastText(), "No matches found");
}

TEST_F(GlobalEditTest, DuplicatesAreJoinedEndToBeginningAboveTheHighestNode) {
    Pipe(1, 100, 110);
    Pipe(2, 110, 140).BegIsInflow = 1;
    Row(2).ElevationE = 9;
    Row(2).KFactorE = "5.6";
    SelectNodes(GlobalFrame::Pipe, "140", "100");
    dialogs.Script(Answer::Yes);
    EXPECT_EQ(edit.Duplicate(GlobalFrame::Pipe).Count, 2);
    EXPECT_EQ(dialogs.All().front().Title, "Confirm Pipe Duplication");
    EXPECT_EQ(dialogs.LastText(), "2 pipes duplicated");
    EXPECT_EQ(Row(3).BegNode, "150");
    EXPECT_EQ(Row(3).EndNode, "160");
    EXPECT_EQ(Row(4).BegNode, "160");
    EXPECT_EQ(Row(4).EndNode, "170");
    EXPECT_EQ(Row(4).BegIsInflow, 0);
    EXPECT_EQ(Row(4).ElevationE, 9.0f);
    EXPECT_EQ(Row(4).KFactorE, "5.6");
    EXPECT_EQ(Row(4).Length, Row(2).Length);
    // Node 160 has one set of data in both rows naming it.
    EXPECT_EQ(NodeDataAt(Row(3), NodeEnd::Ending), NodeDataAt(Row(4), NodeEnd::Beginning));
    EXPECT_EQ(project.NumberOfPipeRows, 4);

    // No room: the command stops with what it has done and says so.
    SelectNodes(GlobalFrame::Node, "100", "170");
    Pipe(5, 9980, 9985);
    dialogs.Script(Answer::Yes);
    EXPECT_EQ(edit.Duplicate(GlobalFrame::Node).Count, 0);
    EXPECT_EQ(dialogs.LastTitle(), "Error");
    EXPECT_EQ(dialogs.LastText(), "There is not enough space to duplicate all the selected pipes.");
    EXPECT_TRUE(IsBlankRow(Row(6)));
}

TEST_F(GlobalEditTest, DuplicatesFillTheTableToItsLastRow) {
    for (int row = 1; row <= MaxPipes - 2; ++row) {
        Pipe(row, row, row + 1);
    }
    SelectNodes(GlobalFrame::Pipe, "1", "3"); // rows 1, 2 and 3; two rows are left
    dialogs.Script(Answer::Yes);
    EXPECT_EQ(edit.Duplicate(GlobalFrame::Pipe).Count, 2);
    EXPECT_EQ(dialogs.LastText(), "There is not enough space to duplicate all the selected pipes.");
    EXPECT_EQ(Row(MaxPipes - 1).BegNode, "1000");
    EXPECT_EQ(Row(MaxPipes).BegNode, "1010");
    EXPECT_EQ(Row(MaxPipes).EndNode, "1020");
    EXPECT_EQ(project.NumberOfPipeRows, MaxPipes);
}

TEST_F(GlobalEditTest, AGapInTheTableEndsEveryWalk) {
    Line();
    ClearPipeRow(project, 3); // rows 1, 2, a gap, row 4
    Pipe(5, 20, 60);
    edit.Selection(GlobalFrame::Node) = {SelectionChoice::All, "", "", ""};
    Check(SprinklerArea, "", "130");
    dialogs.Script(Answer::Yes);
    EXPECT_EQ(edit.Execute(GlobalFrame::Node).Count, 4);
    EXPECT_EQ(Row(2).SprinklerAreaE, 130.0f);
    EXPECT_EQ(Row(4).SprinklerAreaE, 0.0f); // behind the gap: not reached
    // A node changed before the gap keeps one set of data in every row naming it.
    EXPECT_EQ(Row(5).SprinklerAreaB, 130.0f);
    EXPECT_EQ(Row(5).SprinklerAreaE, 0.0f);
    EXPECT_EQ(edit.CurrentValues(SprinklerArea), (std::vector<std::string>{"130.0"}));
    edit.Selection(GlobalFrame::Pipe) = {SelectionChoice::All, "", "", ""};
    EXPECT_EQ(SelectedPipes(project, edit.Selection(GlobalFrame::Pipe)), (std::vector{1, 2}));
}

TEST_F(GlobalEditTest, OneUndoRevertsAWholeExecute) {
    Line();
    const TableSnapshot before = TakeSnapshot(project);
    SelectNodes(GlobalFrame::Node, "10", "50");
    Check(KFactor, "", "5.6");
    Check(Elevation, "", "12");
    dialogs.Script(Answer::Yes);
    dialogs.Script(Answer::Yes);
    EXPECT_EQ(edit.Execute(GlobalFrame::Node).Count, 16);
    const TableSnapshot after = TakeSnapshot(project);
    ASSERT_TRUE(undo.CanUndo());
    EXPECT_TRUE(undo.Undo(project));
    EXPECT_EQ(TakeSnapshot(project), before);
    EXPECT_FALSE(undo.CanUndo());
    EXPECT_TRUE(undo.Redo(project));
    EXPECT_EQ(TakeSnapshot(project), after);
    // Delete and Duplicate are one step each too.
    SelectNodes(GlobalFrame::Pipe, "10", "20");
    dialogs.Script(Answer::Yes);
    edit.Duplicate(GlobalFrame::Pipe);
    dialogs.Script(Answer::Yes);
    edit.Delete(GlobalFrame::Pipe);
    undo.Undo(project);
    undo.Undo(project);
    EXPECT_EQ(TakeSnapshot(project), after);
}

} // namespace
} // namespace quench
