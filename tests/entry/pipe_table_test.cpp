#include "entry/pipe_table.h"
#include "entry/pipe_table_clipboard.h"
#include "entry/undo_stack.h"
#include "tests/support/network_builder.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using enum PipeColumn;
using testing::ScriptedDialogs;
namespace words = pipe_table_words;

class PipeTableTest : public ::testing::Test {
protected:
    // A row typed field by field, as the keyboard does: each field changed, then left.
    void Type(int row, PipeColumn column, std::string_view text) { table.Enter(row, column, text); }
    void TypePipe(int row, const char* begin, const char* end, const char* length = "10") {
        Type(row, BegNode, begin);
        Type(row, EndNode, end);
        Type(row, Material, "1");
        Type(row, Diameter, "1");
        Type(row, Length, length);
    }
    PipeRecord& Row(int row) { return project.PipeRecord[static_cast<std::size_t>(row)]; }

    Project project;
    ScriptedDialogs dialogs;
    PipeTable table{project, testing::DefaultLibrary(), dialogs};
};

TEST_F(PipeTableTest, NodeDataFollowTheNodeIntoEveryRow) {
    TypePipe(1, "10", "20");
    Type(1, KFactorE, "5.6");
    Type(1, ElevationE, "12.5");
    Type(1, AreaGroupE, "ab");
    Type(1, PressEstimateE, "7.25");
    // A new reference to node 20 takes over all of its data, pressure estimate included.
    TypePipe(2, "20", "30");
    EXPECT_EQ(NodeDataAt(Row(2), NodeEnd::Beginning), NodeDataAt(Row(1), NodeEnd::Ending));
    EXPECT_EQ(Row(2).KFactorB, "5.6");
    EXPECT_EQ(Row(2).AreaGroupB, "AB");
    // An edit of either row shows in the other while it is typed.
    const PipeEdit edit = table.Change(2, ElevationB, "14");
    EXPECT_EQ(edit.Rows, (std::vector{2, 1}));
    EXPECT_EQ(Row(1).ElevationE, 14.0f);
    table.Change(1, KFactorE, "I");
    EXPECT_EQ(Row(2).KFactorB, "Inact");
    EXPECT_EQ(project.InputChanged, True);
}

TEST_F(PipeTableTest, SavingARowNeverRoundsWhatWasNotTyped) {
    TypePipe(1, "10", "20");
    Row(1).ElevationB = 12.34f; // from a file: finer than the field shows
    Row(1).Length = 10.125f;
    RowView view = table.Show(1);
    EXPECT_EQ(view[ElevationB], "12.3");
    RowTexts texts = view.Texts;
    texts.Set(TypeGroup, "3");
    EXPECT_TRUE(SaveCurrentRow(project, 1, texts, MeasureSystem::US));
    EXPECT_EQ(Row(1).ElevationB, 12.34f);
    EXPECT_EQ(Row(1).Length, 10.125f);
    EXPECT_EQ(Row(1).TypeGroup, 3);
    // In SI the typed metres become feet; an untouched field still keeps its stored value.
    texts = ShowRow(project, 1, MeasureSystem::SI).Texts;
    texts.Set(ElevationE, "3");
    SaveCurrentRow(project, 1, texts, MeasureSystem::SI);
    EXPECT_NEAR(Row(1).ElevationE, 3 / 0.3048, 1e-3);
    EXPECT_EQ(Row(1).ElevationB, 12.34f);
}

TEST_F(PipeTableTest, ShowRowTextsAndColours) {
    TypePipe(1, "10", "20");
    Type(1, Diameter, "0");
    Type(1, KFactorB, "D");
    Type(1, FittingText, "3E2F");
    RowView view = table.Show(1);
    EXPECT_EQ(view.DiameterColour, TextColour::Red); // open to autosizing
    EXPECT_EQ(view[Diameter], "0.0");
    EXPECT_EQ(view[KFactorB], "Dflt");
    EXPECT_EQ(view[FittingText], "2F3E");
    EXPECT_EQ(view[Active], "Active");
    EXPECT_EQ(view.StatusColour, TextColour::Green);
    Type(1, Diameter, "1.25");
    view = table.Show(1);
    EXPECT_EQ(view.DiameterColour, TextColour::Black);
    EXPECT_EQ(view[Diameter], "1.25");
    EXPECT_TRUE(IsTrue(Row(1).DiameterFixed));
    // Device letters and the loss field; a pump row with a curve shows "Curve" and keeps -4.
    Type(1, Material, "m");
    EXPECT_EQ(Row(1).Material, MaterialMeter);
    EXPECT_EQ(table.Show(1)[Material], "M");
    table.Change(1, Material, "P");
    EXPECT_TRUE(table.Change(1, Material, "").Rows.size() == 1);
    EXPECT_EQ(Row(1).Material, project.SystemData.DefaultPipeMaterial);
    EXPECT_TRUE(table.Enter(1, Material, "P").OpenPumpScreen);
    Row(1).DeviceLoss = NotGiven;
    project.CalculationData.PumpCoefficients = {100, -0.01, 0, 0, 0};
    EXPECT_EQ(table.Show(1)[DeviceLoss], "Curve");
    table.Enter(1, DeviceLoss, "Curve");
    EXPECT_EQ(Row(1).DeviceLoss, NotGiven);
    Type(1, DeviceLoss, "5.5");
    EXPECT_EQ(Row(1).DeviceLoss, 5.5f);
    // A blank row shows nothing.
    EXPECT_TRUE(table.Show(2).Blank);
}

TEST_F(PipeTableTest, APumpRowTakesItsBoostFromTheCurveUntilOneIsTyped) {
    project.CalculationData.PumpCoefficients = {100, -0.01, 0, 0, 0};
    TypePipe(1, "10", "20");
    EXPECT_EQ(Row(1).DeviceLoss, 0.0f);
    // Made a pump, the row leaves its boost to the curve: no 0 to clear first.
    EXPECT_TRUE(table.Enter(1, Material, "p").OpenPumpScreen);
    EXPECT_EQ(Row(1).DeviceLoss, NotGiven);
    EXPECT_EQ(table.Show(1)[DeviceLoss], "Curve");
    // The same letter again opens nothing and changes nothing.
    EXPECT_FALSE(table.Enter(1, Material, "P").OpenPumpScreen);
    Type(1, DeviceLoss, "12.5");
    EXPECT_EQ(Row(1).DeviceLoss, 12.5f);
    // "Curve" typed in either case clears the typed boost.
    project.InputChanged = False;
    PipeEdit edit = table.Enter(1, DeviceLoss, "curve");
    EXPECT_EQ(Row(1).DeviceLoss, NotGiven);
    EXPECT_EQ(edit.Text, "Curve");
    EXPECT_FALSE(edit.Refused);
    EXPECT_EQ(project.InputChanged, True);
    // On the keyboard C writes the whole word; a digit or Backspace over it starts afresh.
    const auto key = [this](char pressed, std::string text) {
        const int end = static_cast<int>(text.size());
        const KeyOutcome outcome = table.FilterKey(1, DeviceLoss, pressed, {text, end, 0});
        return outcome.Accepted ? outcome.Field.Text : std::string("refused");
    };
    EXPECT_EQ(key('c', "12.5"), "Curve");
    EXPECT_EQ(key('U', "Curve"), "refused");
    EXPECT_EQ(key('7', "Curve"), "7");
    EXPECT_EQ(key(BackspaceKey, "Curve"), "");
    // Without a curve the pump row shows an empty Loss, the boost still left to the pump screen.
    project.CalculationData.PumpCoefficients = {};
    EXPECT_EQ(table.Show(1)[DeviceLoss], "");
    // A row that stops being a pump shows a loss of 0 again; there the word means nothing.
    Type(1, Material, "M");
    EXPECT_EQ(Row(1).DeviceLoss, 0.0f);
    Type(1, DeviceLoss, "3");
    EXPECT_EQ(key('C', "3.00"), "refused");
    edit = table.Enter(1, DeviceLoss, "Curve");
    EXPECT_TRUE(edit.Refused);
    EXPECT_EQ(edit.Text, "3.00");
    EXPECT_EQ(Row(1).DeviceLoss, 3.0f);
    // A pasted "Curve" is taken by a pump row only.
    EXPECT_FALSE(PasteCells(table, 1, DeviceLoss, "Curve").Refused.empty());
    EXPECT_EQ(Row(1).DeviceLoss, 3.0f);
    // A meter made a pump drops its loss: a loss is no boost.
    Type(1, Material, "P");
    EXPECT_EQ(Row(1).DeviceLoss, NotGiven);
    Type(1, DeviceLoss, "40");
    EXPECT_TRUE(PasteCells(table, 1, DeviceLoss, "CURVE").Refused.empty());
    EXPECT_EQ(Row(1).DeviceLoss, NotGiven);
    // Undo takes the material and the loss back together.
    UndoStack undo;
    undo.Record(project, [this] { Type(1, Material, "1"); });
    EXPECT_EQ(Row(1).DeviceLoss, 0.0f);
    undo.Undo(project);
    EXPECT_EQ(Row(1).Material, MaterialFirePump);
    EXPECT_EQ(Row(1).DeviceLoss, NotGiven);
}

TEST_F(PipeTableTest, KeysOfTheFields) {
    const auto key = [this](PipeColumn column, char pressed, std::string text = "") {
        const KeyOutcome outcome =
            table.FilterKey(1, column, pressed, {text, static_cast<int>(text.size()), 0});
        return outcome.Accepted ? outcome.Field.Text : std::string("refused");
    };
    EXPECT_EQ(key(KFactorB, 'd'), "Dflt");
    EXPECT_EQ(key(KFactorB, 'I'), "Inact");
    EXPECT_EQ(key(KFactorE, 'N'), "None");
    EXPECT_EQ(key(KFactorB, 'N', "5.6"), "refused"); // not over a number without a selection
    EXPECT_EQ(key(KFactorB, '6', "5."), "5.6");
    EXPECT_EQ(key(BegNode, '.', "12"), "refused");
    EXPECT_EQ(key(BegNode, '9', "999"), "9999");
    EXPECT_EQ(key(BegNode, '9', "9999"), "refused");
    EXPECT_EQ(key(Material, 'p'), "P");
    EXPECT_EQ(key(Material, 'X'), "refused");
    EXPECT_EQ(key(Material, '0'), "refused");
    EXPECT_EQ(key(Material, '5', "P"), "refused"); // a number and a letter do not mix
    EXPECT_EQ(key(Material, '1', "5"), "refused");
    EXPECT_EQ(key(Material, '0', "5"), "50");
    EXPECT_EQ(key(AreaGroupB, 'q', "ABCDE"), "ABCDEQ");
    EXPECT_EQ(key(AreaGroupB, 'Q', "ABCDEF"), "refused");
    EXPECT_EQ(key(AreaGroupB, '1'), "refused");
    EXPECT_EQ(key(ElevationB, '-'), "-");
    EXPECT_EQ(key(PressEstimateB, '-'), "refused");
    EXPECT_EQ(key(FittingText, 'e', "2F"), "2FE");
    EXPECT_EQ(key(Active, 'A'), "refused");
    EXPECT_EQ(key(EquivLength, '1'), "refused");
    // A diameter or length needs a material.
    Row(1).Material = 0;
    bool focusMaterial = false;
    EXPECT_FALSE(table.FilterKey(1, Diameter, '1', {}, &focusMaterial).Accepted);
    EXPECT_TRUE(focusMaterial);
    EXPECT_EQ(dialogs.LastText(), words::MaterialBeforeDiameter);
    EXPECT_FALSE(table.FilterKey(1, Length, '.', {}).Accepted);
    EXPECT_EQ(dialogs.LastText(), words::MaterialBeforeLength);
}

TEST_F(PipeTableTest, LeavingFieldsAndRows) {
    TypePipe(1, "10", "20");
    // The same number at both ends: the field left is emptied.
    EXPECT_TRUE(table.Enter(1, EndNode, "10").Refused);
    EXPECT_EQ(dialogs.LastText(), words::SameNodes);
    EXPECT_EQ(Row(1).EndNode, "");
    Type(1, EndNode, "20");
    // A second pipe between the same two nodes, either way round.
    TypePipe(2, "20", "30");
    Type(2, EndNode, "10");
    Type(2, BegNode, "10");
    EXPECT_EQ(Row(2).BegNode, "10");
    table.Enter(2, EndNode, "20");
    EXPECT_EQ(dialogs.LastText(), words::DuplicatePipe);
    EXPECT_EQ(Row(2).EndNode, "");
    // Below the minimum: the minimum, with its message. An empty number field shows 0.
    const PipeEdit low = table.Leave(1, ElevationB, "-4000");
    EXPECT_TRUE(low.Refused);
    EXPECT_EQ(low.Text, "-3276.5");
    const PipeEdit empty = table.Leave(1, ElevationB, "");
    EXPECT_EQ(empty.Text, "0.0");
    EXPECT_EQ(Row(1).ElevationB, 0.0f);
    // A fitting text that ends in a number is reported when the field is left.
    table.Change(1, FittingText, "E2");
    EXPECT_EQ(Row(1).FittingText, "E");
    table.Leave(1, FittingText, "E2");
    EXPECT_EQ(dialogs.LastTitle(), "No Fitting Type Entered");
}

TEST_F(PipeTableTest, AddPipeFillsTheFirstFreeRowAndNumbersTheCopy) {
    for (int row = 1; row <= 5; ++row) {
        TypePipe(row, std::to_string(row * 10).c_str(), std::to_string(row * 10 + 10).c_str());
    }
    dialogs.Script(Answer::Yes); // the deletion
    EXPECT_TRUE(table.DeletePipe(3));
    EXPECT_EQ(dialogs.LastText(), "Delete pipe number 3?");
    EXPECT_TRUE(IsBlankRow(Row(3))); // not closed up
    EXPECT_EQ(project.NumberOfPipeRows, 5);
    dialogs.Script(Answer::No);
    EXPECT_EQ(table.AddPipe(5), 3);
    EXPECT_TRUE(IsBlankRow(Row(3)));
    // Copying with the highest node at 60 (a multiple of ten) and then at 142.
    Row(2).ElevationB = 9;
    dialogs.Script(Answer::Yes);
    const int copy = table.AddPipe(2);
    EXPECT_EQ(copy, 3);
    EXPECT_EQ(Row(3).BegNode, "70");
    EXPECT_EQ(Row(3).EndNode, "80");
    EXPECT_EQ(Row(3).Length, Row(2).Length);
    Row(4).EndNode = "140";
    EXPECT_EQ(NextFreeNodeNumber(project), 150);
    Row(4).EndNode = "142";
    EXPECT_EQ(NextFreeNodeNumber(project), 150);
    // No copy and a declined deletion change nothing.
    dialogs.Script(Answer::No);
    EXPECT_FALSE(table.DeletePipe(4));
    EXPECT_EQ(Row(4).EndNode, "142");
    EXPECT_EQ(table.Caption(4), "Enter/Edit Pipe Data: Pipe 4 of 1000   5 Pipes Defined");
    EXPECT_EQ(table.ShortCaption(), "Enter/Edit Pipe Data: 5 Pipes Defined");
}

TEST_F(PipeTableTest, AddPipeRefusedOnAFullTable) {
    for (int row = 1; row <= MaxPipes; ++row) {
        Row(row).BegNode = std::to_string(row);
        Row(row).EndNode = std::to_string(row + 1);
    }
    EXPECT_EQ(table.AddPipe(1), 0);
    EXPECT_EQ(dialogs.LastText(), "You can not add more pipe sections as the maximum pipe "
                                  "sections for current version is 1000.");
}

TEST_F(PipeTableTest, SortPipesOrdersByTheSmallerNodeAndDropsBadRows) {
    TypePipe(1, "30", "10", "1");
    TypePipe(2, "10", "20", "2");
    TypePipe(3, "40", "20", "3");
    TypePipe(5, "5", "50", "5");
    Row(6).BegNode = "0";
    Row(6).EndNode = "60";
    Row(7).BegNode = "70";
    Row(7).EndNode = "70";
    Row(1).PressEstimateB = 3; // estimates of cleared rows stay
    table.SortPipes();
    ASSERT_EQ(project.NumberOfPipeRows, 4);
    EXPECT_EQ(Row(1).Length, 5.0f); // (5,50)
    EXPECT_EQ(Row(2).Length, 1.0f); // (30,10) before (10,20): table order among smaller 10
    EXPECT_EQ(Row(3).Length, 2.0f);
    EXPECT_EQ(Row(4).Length, 3.0f); // (40,20)
    EXPECT_TRUE(IsBlankRow(Row(5)));
    EXPECT_TRUE(IsBlankRow(Row(6)));
    EXPECT_TRUE(IsBlankRow(Row(7)));

    dialogs.Script(Answer::Cancel);
    EXPECT_FALSE(table.ClearPipes());
    EXPECT_EQ(project.NumberOfPipeRows, 4);
    dialogs.Script(Answer::Yes);
    EXPECT_TRUE(table.ClearPipes());
    EXPECT_EQ(project.NumberOfPipeRows, 0);
    EXPECT_EQ(Row(1).KFactorB, "0");
    EXPECT_TRUE(IsTrue(Row(1).Active));
}

TEST_F(PipeTableTest, InflowMarkNeedsOnePipeNoSprinklerAndNoFlow) {
    TypePipe(1, "1", "10");
    TypePipe(2, "1", "20");
    EXPECT_FALSE(table.MarkInflowNode(1, NodeEnd::Beginning));
    EXPECT_EQ(dialogs.LastText(), words::InflowTwoPipes);
    table.ToggleStatus(2);
    EXPECT_FALSE(IsTrue(Row(2).Active));
    EXPECT_TRUE(table.MarkInflowNode(1, NodeEnd::Beginning));
    EXPECT_EQ(Row(1).BegIsInflow, 1);
    EXPECT_EQ(project.InflowNode, 1);
    EXPECT_EQ(project.CalculationData.SystemInflowNode, 1);
    EXPECT_TRUE(table.Show(1).BeginningIsInflow);
    EXPECT_TRUE(table.Show(2).BeginningIsInflow);
    EXPECT_TRUE(table.CheckInflowOnLeaving());
    // Marking another node moves the one mark.
    EXPECT_TRUE(table.MarkInflowNode(2, NodeEnd::Ending));
    EXPECT_EQ(Row(1).BegIsInflow, 0);
    EXPECT_EQ(project.InflowNode, 20);
    EXPECT_TRUE(table.UnmarkInflowNode(2));
    EXPECT_EQ(Row(2).EndIsInflow, 0);
    EXPECT_EQ(project.InflowNode, 0);
    EXPECT_FALSE(table.CheckInflowOnLeaving());
    EXPECT_EQ(dialogs.LastText(), words::NoInflow);
    // A sprinkler or a fixed flow is no inflow; the words follow the discharge.
    Type(1, KFactorE, "5.6");
    EXPECT_FALSE(table.MarkInflowNode(1, NodeEnd::Ending));
    EXPECT_EQ(dialogs.LastTitle(), words::InputDataErrorTitle);
    EXPECT_EQ(dialogs.LastText(), words::InflowSprinkler);
    project.SystemData.PrimaryDischargeName = "Hose";
    Type(1, KFactorE, "0");
    Type(1, NonSprinklerFlowE, "25");
    EXPECT_FALSE(table.MarkInflowNode(1, NodeEnd::Ending));
    EXPECT_EQ(dialogs.LastText(), "A Zero Non-Hose Flow of System Inflow Node Must Be Given.");
    Type(1, NonSprinklerFlowE, "0");
    Type(1, KFactorE, "");
    EXPECT_TRUE(table.MarkInflowNode(1, NodeEnd::Ending));
    EXPECT_EQ(Row(1).KFactorE, "0"); // an empty K is set to 0
}

TEST_F(PipeTableTest, StatusTogglesTheRowAndTheEdgesOfASelection) {
    TypePipe(1, "10", "20");
    TypePipe(2, "20", "30");
    TypePipe(3, "30", "40");
    EXPECT_EQ(table.ToggleStatus(2, 1, 3), (std::vector{2, 1, 3}));
    EXPECT_FALSE(IsTrue(Row(1).Active));
    EXPECT_EQ(table.Show(1)[Active], "Inact");
    EXPECT_EQ(table.Show(1).StatusColour, TextColour::Red);
    table.ToggleStatus(1);
    EXPECT_TRUE(IsTrue(Row(1).Active));
    // A row without both nodes can not be activated.
    Row(4).Active = False;
    Row(4).BegNode = "50";
    EXPECT_TRUE(table.ToggleStatus(4).empty());
    EXPECT_EQ(dialogs.LastText(), words::NoNodeForStatus);
}

TEST_F(PipeTableTest, SprinklerAreaTotalCountsEachSprinklerNodeOnce) {
    project.SystemData.MaximumAreaPerSprinkler = 130;
    project.SystemData.DefaultKFactor = 5.6f;
    TypePipe(1, "10", "20");
    TypePipe(2, "20", "30");
    TypePipe(3, "30", "40");
    Type(1, KFactorE, "5.6");
    Type(1, SprinklerAreaE, "100");
    Type(2, KFactorE, "D"); // the default K adds nothing
    Type(3, KFactorE, "8"); // area 0: the maximum area per sprinkler
    EXPECT_DOUBLE_EQ(SprinklerAreaTotal(project), 230.0);
    EXPECT_EQ(table.SprinklerAreaLabel(), "Total Sprk Area = 230.0");
    EXPECT_EQ(table.DefaultKFactorLabel(), "Dflt=5.6");
    project.SystemData.PrimaryDischargeName = "Hose";
    EXPECT_EQ(table.SprinklerAreaLabel(), "Total Flow Area = 230.0");
    EXPECT_EQ(ColumnCaption(NonSprinklerFlowB, project), "Fixed Flow");
    EXPECT_EQ(ColumnCaption(SprinklerAreaE, project), "Flow Area");
}

TEST_F(PipeTableTest, UndoTakesBackAnEditWithItsSpread) {
    TypePipe(1, "10", "20");
    TypePipe(2, "20", "30");
    UndoStack undo;
    EXPECT_TRUE(undo.Record(project, [&] { table.Enter(2, ElevationB, "25"); }));
    EXPECT_EQ(Row(1).ElevationE, 25.0f);
    EXPECT_FALSE(undo.Record(project, [&] { table.Enter(2, ElevationB, "25"); }));
    EXPECT_TRUE(undo.Undo(project));
    EXPECT_EQ(Row(1).ElevationE, 0.0f);
    EXPECT_EQ(Row(2).ElevationB, 0.0f);
    EXPECT_TRUE(undo.Redo(project));
    EXPECT_EQ(Row(1).ElevationE, 25.0f);
    // A command is one step, the inflow node with it.
    undo.Record(project, [&] { table.MarkInflowNode(1, NodeEnd::Beginning); });
    dialogs.Script(Answer::Yes);
    undo.Record(project, [&] { table.DeletePipe(2); });
    EXPECT_TRUE(undo.Undo(project));
    EXPECT_EQ(project.NumberOfPipeRows, 2);
    EXPECT_TRUE(undo.Undo(project));
    EXPECT_EQ(project.InflowNode, 0);
    EXPECT_FALSE(undo.CanRedo() == false);
    // A new edit drops what could be redone.
    undo.Record(project, [&] { table.Enter(1, Length, "20"); });
    EXPECT_FALSE(undo.CanRedo());
}

TEST_F(PipeTableTest, PastedCellsGoThroughTheFieldRules) {
    const std::string block = "10\t5.6\t12.5\n"
                              "20\tx\t-9999\n";
    const PasteOutcome outcome = PasteCells(table, 1, BegNode, block);
    EXPECT_EQ(Row(1).BegNode, "10");
    EXPECT_EQ(Row(1).KFactorB, "5.6");
    EXPECT_EQ(Row(1).ElevationB, 12.5f);
    EXPECT_EQ(Row(2).BegNode, "20");
    ASSERT_EQ(outcome.Refused.size(), 2u);
    EXPECT_EQ(outcome.Refused[0], "Row 2, KFact: \"x\" was refused");
    EXPECT_EQ(outcome.Refused[1], "Row 2, Elev: \"-9999\" was refused");
    EXPECT_EQ(Row(2).KFactorB, "0"); // left as it was
    // Rows copied out come back the same through a paste elsewhere.
    TypePipe(1, "10", "20");
    Type(1, FittingText, "2E");
    const std::string copied = CopyCells(table, 1, 1, BegNode, EquivLength);
    const PasteOutcome again = PasteCells(table, 5, BegNode, "");
    EXPECT_TRUE(again.Refused.empty());
    Row(1).BegNode = "11";
    Row(1).EndNode = "21";
    EXPECT_TRUE(PasteCells(table, 3, BegNode, copied).Refused.empty());
    EXPECT_EQ(CopyCells(table, 3, 3, BegNode, EquivLength), copied);
    EXPECT_NE(PasteReport(outcome).find("Row 2, Elev"), std::string::npos);
}

} // namespace
} // namespace quench
