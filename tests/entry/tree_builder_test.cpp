#include "entry/builder_words.h"
#include "entry/tree_builder.h"
#include "tests/support/network_builder.h"
#include "tests/support/scripted_dialogs.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::DefaultLibrary;
using testing::ScriptedDialogs;
namespace words = builder_words;

// The layout of the worked example: one piece of cross main, one space on each side.
TreeInputs ExampleInputs() {
    TreeInputs inputs;
    inputs.Network = {"10", "100", "", "12", "12", "20", "22", "8", "10", "12", "12"};
    inputs.CrossMaterial = "1";
    inputs.CrossTypeGroup = "2";
    inputs.CrossDiameter = "2";
    inputs.BranchMaterial = "1";
    inputs.BranchTypeGroup = "1";
    inputs.BranchDiameter = "1";
    inputs.Elevation = "12.5";
    inputs.KFactor = "5.6";
    inputs.AreaGroup = "A";
    inputs.SprinklerArea = "100";
    inputs.MaxSpaceBetweenBranches = "0";
    inputs.MaxSpaceBetweenSprinklers = "0";
    return inputs;
}

std::unique_ptr<Project> NewProject() {
    auto project = std::make_unique<Project>();
    project->SystemData.DefaultKFactor = 5.6f;
    project->SystemData.MaximumAreaPerSprinkler = 130;
    return project;
}

// Rows of other numbers in rows 1 to `count`, ending in digit 1 so that no conflict is asked.
void TypeRows(Project& project, int count) {
    for (int row = 1; row <= count; ++row) {
        PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        record.BegNode = std::to_string(5001 + 10 * row);
        record.EndNode = std::to_string(5001 + 10 * row + 10);
        record.Active = True;
        record.Length = 7;
    }
    project.NumberOfPipeRows = static_cast<Integer>(count);
}

struct ExpectedRow {
    int Begin, End;
    const char* KBegin;
    const char* KEnd;
    Single Length;
    const char* Fitting;
    Single EquivLength;
};

void ExpectRows(const Project& project, int first, const std::vector<ExpectedRow>& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ExpectedRow& want = rows[i];
        const PipeRecord& row = project.PipeRecord[first + i];
        SCOPED_TRACE("row " + std::to_string(first + i));
        EXPECT_EQ(row.BegNode, std::to_string(want.Begin));
        EXPECT_EQ(row.EndNode, std::to_string(want.End));
        EXPECT_EQ(row.KFactorB, want.KBegin);
        EXPECT_EQ(row.KFactorE, want.KEnd);
        EXPECT_FLOAT_EQ(row.Length, want.Length);
        EXPECT_EQ(row.FittingText, want.Fitting);
        EXPECT_FLOAT_EQ(row.TotalEquivLength, want.EquivLength);
        EXPECT_EQ(row.Active, True);
    }
}

TEST(TreeBuilder, WorkedExampleRowForRow) {
    auto project = NewProject();
    ScriptedDialogs dialogs;
    const BuildResult result = CreateTree(*project, DefaultLibrary(), dialogs, ExampleInputs());
    ASSERT_TRUE(result.Built());
    EXPECT_TRUE(dialogs.Empty());
    EXPECT_EQ(result.FirstRow, 1);
    EXPECT_EQ(result.RowsWritten, 10);
    EXPECT_EQ(result.ExitNode, 180);
    EXPECT_EQ(project->NumberOfPipeRows, 10);
    EXPECT_EQ(project->InputChanged, True);
    // Schedule 40 steel: a 2 in. tee is 10 ft; the 1 in. branch pipes carry no fittings.
    ExpectRows(*project, 1,
               {{100, 110, "0", "0", 10, "T", 20},
                {120, 130, "5.6", "5.6", 12, "", 12},
                {130, 110, "5.6", "0", 8, "", 8},
                {110, 140, "0", "5.6", 10, "", 10},
                {140, 150, "5.6", "5.6", 12, "", 12},
                {110, 180, "0", "0", 12, "T", 22},
                {160, 170, "5.6", "5.6", 12, "", 12},
                {170, 180, "5.6", "0", 8, "", 8},
                {180, 190, "0", "5.6", 10, "", 10},
                {190, 200, "5.6", "5.6", 12, "", 12}});
    const PipeRecord& leadIn = project->PipeRecord[1];
    EXPECT_EQ(leadIn.AreaGroupB, "");
    EXPECT_EQ(leadIn.AreaGroupE, "A");
    EXPECT_EQ(leadIn.Material, 1);
    EXPECT_FLOAT_EQ(leadIn.Diameter, 2);
    EXPECT_EQ(leadIn.TypeGroup, 2);
    EXPECT_EQ(leadIn.DiameterFixed, True);
    EXPECT_FLOAT_EQ(leadIn.SprinklerAreaB, 0);
    EXPECT_FLOAT_EQ(leadIn.SprinklerAreaE, 0);
    EXPECT_FLOAT_EQ(leadIn.ElevationB, 12.5f);
    const PipeRecord& branch = project->PipeRecord[3];
    EXPECT_EQ(branch.TypeGroup, 1);
    EXPECT_FLOAT_EQ(branch.SprinklerAreaB, 100);
    EXPECT_FLOAT_EQ(branch.SprinklerAreaE, 100); // the cross main end keeps the area, not the K
    EXPECT_EQ(branch.AreaGroupB, "A");
    EXPECT_FLOAT_EQ(branch.ElevationE, 12.5f);
    EXPECT_EQ(branch.BegIsInflow, 0);
}

TEST(TreeBuilder, LayoutPlacesEveryPipeWithoutTouchingTheRows) {
    auto project = NewProject();
    const TreeLayout layout = LayOutTree(ExampleInputs(), *project);
    EXPECT_EQ(project->NumberOfPipeRows, 0);
    EXPECT_TRUE(project->PipeRecord[1].BegNode.empty());
    EXPECT_EQ(layout.Spacing.Rows, 2);
    EXPECT_EQ(layout.Spacing.SprinklersPerRow(), 4);
    EXPECT_EQ(layout.ExitNode, 180);
    ASSERT_EQ(layout.Pipes.size(), 10u);
    EXPECT_EQ(layout.Pipes[0].Kind, BuilderPipeKind::Feed);
    EXPECT_EQ(layout.Pipes[0].Begin, (LayoutPoint{0, -10}));
    // Row 1 runs from the left end (8 + 12 to the left) through the cross main to the right end.
    EXPECT_EQ(layout.Pipes[1].Begin, (LayoutPoint{-20, 0}));
    EXPECT_EQ(layout.Pipes[2].End, (LayoutPoint{0, 0}));
    EXPECT_EQ(layout.Pipes[4].End, (LayoutPoint{22, 0}));
    EXPECT_EQ(layout.Pipes[5].Kind, BuilderPipeKind::CrossMain);
    EXPECT_EQ(layout.Pipes[5].End, (LayoutPoint{0, 12}));
    EXPECT_EQ(layout.Pipes[9].Line, 2);
    EXPECT_EQ(layout.Pipes[9].End, (LayoutPoint{22, 12}));
}

TreeSpacing SpacingOf(std::vector<std::pair<int, std::string>> changes,
                      const std::string& maxBranch = "0", const std::string& maxSprinkler = "0") {
    TreeInputs inputs = ExampleInputs();
    for (const auto& [index, text] : changes) {
        inputs.Network[static_cast<std::size_t>(index)] = text;
    }
    inputs.MaxSpaceBetweenBranches = maxBranch;
    inputs.MaxSpaceBetweenSprinklers = maxSprinkler;
    return CalculateTreeSpacing(inputs);
}

TEST(TreeBuilder, BranchRowsRoundHalfUpAndObeyTheMaximum) {
    TreeSpacing spacing = SpacingOf({{TreeCrossMainLength, "50"}, {TreeBranchSpacing, "12"}});
    EXPECT_EQ(spacing.Pieces, 4);
    EXPECT_DOUBLE_EQ(spacing.BranchSpacing, 12.5);
    EXPECT_EQ(spacing.Rows, 5);
    spacing = SpacingOf({{TreeCrossMainLength, "50"}, {TreeBranchSpacing, "11"}});
    EXPECT_EQ(spacing.Pieces, 5);
    EXPECT_DOUBLE_EQ(spacing.BranchSpacing, 10);
    // A quotient of exactly one half rounds up: 30 / 12 = 2.5.
    spacing = SpacingOf({{TreeCrossMainLength, "30"}, {TreeBranchSpacing, "12"}});
    EXPECT_EQ(spacing.Pieces, 3);
    // The spacing shown is rounded to one decimal: 50 / 3.
    spacing = SpacingOf({{TreeCrossMainLength, "50"}, {TreeBranchSpacing, "16"}});
    EXPECT_DOUBLE_EQ(spacing.BranchSpacing, 16.7);
    EXPECT_EQ(SpacingText(spacing.BranchSpacing, ','), "16,7");
    EXPECT_EQ(SpacingText(20.0 / 3), "6.7");
    spacing = SpacingOf({{TreeCrossMainLength, "50"}, {TreeBranchSpacing, "12"}}, "10");
    EXPECT_EQ(spacing.Pieces, 5);
    EXPECT_DOUBLE_EQ(spacing.BranchSpacing, 10);
    EXPECT_EQ(spacing.Rows, 6);
    // No cross main gives one row.
    spacing = SpacingOf({{TreeCrossMainLength, "0"}});
    EXPECT_EQ(spacing.Rows, 1);
    EXPECT_DOUBLE_EQ(spacing.BranchSpacing, 0);
}

TEST(TreeBuilder, SidesRoundUpWithATolerance) {
    // 0.5 / 50 is exactly 0.01 past the whole part: one more space. 0.45 / 50 is not.
    TreeSpacing spacing = SpacingOf({{TreeLeftLength, "8.5"},
                                     {TreeLeftSpacing, "50"},
                                     {TreeRightLength, "10.45"},
                                     {TreeRightSpacing, "50"}});
    EXPECT_EQ(spacing.LeftSpaces, 1);
    EXPECT_EQ(spacing.LeftCount, 2);
    EXPECT_DOUBLE_EQ(spacing.LeftSpacing, 0.5);
    EXPECT_EQ(spacing.RightSpaces, 0);
    EXPECT_EQ(spacing.RightCount, 1);
    EXPECT_DOUBLE_EQ(spacing.RightSpacing, 0);
    spacing = SpacingOf({{TreeLeftLength, "8.45"},
                         {TreeLeftSpacing, "50"},
                         {TreeRightLength, "10.5"},
                         {TreeRightSpacing, "50"}});
    EXPECT_EQ(spacing.LeftSpaces, 0);
    EXPECT_EQ(spacing.RightSpaces, 1);
    // 20 / 6 = 3.33 needs four spaces of 5 ft.
    spacing = SpacingOf({{TreeLeftLength, "28"}, {TreeLeftSpacing, "6"}});
    EXPECT_EQ(spacing.LeftSpaces, 4);
    EXPECT_DOUBLE_EQ(spacing.LeftSpacing, 5);
    EXPECT_EQ(spacing.LeftCount, 5);
}

TEST(TreeBuilder, RightMaximumLoopReadsTheLeftLengths) {
    // Left: (30 - 6) / 8 = 3 spaces of 8, within the maximum of 10. Right: (40 - 4) / 12 = 3
    // spaces of 12, over it: the loop divides the left side's 24 ft until a space fits.
    TreeSpacing spacing = SpacingOf({{TreeLeftLength, "30"},
                                     {TreeLeftFirst, "6"},
                                     {TreeLeftSpacing, "8"},
                                     {TreeRightLength, "40"},
                                     {TreeRightFirst, "4"},
                                     {TreeRightSpacing, "12"}},
                                    "0", "10");
    EXPECT_EQ(spacing.LeftSpaces, 3);
    EXPECT_DOUBLE_EQ(spacing.LeftSpacing, 8);
    EXPECT_EQ(spacing.LeftCount, 4);
    EXPECT_EQ(spacing.RightSpaces, 3); // the pipes keep the first division
    EXPECT_DOUBLE_EQ(spacing.RightSpacing, 6);
    EXPECT_EQ(spacing.RightCount, 5);
    EXPECT_EQ(spacing.SprinklersPerRow(), 9);
    EXPECT_EQ(spacing.PipesRequired, 2 * (3 + 2 + 3) + 1 + 1);

    // The rows follow nR = 3 pipes of 6 ft, and the next cross main node counts cL and cR.
    TreeInputs inputs = ExampleInputs();
    inputs.Network[TreeLeftLength] = "30";
    inputs.Network[TreeLeftFirst] = "6";
    inputs.Network[TreeLeftSpacing] = "8";
    inputs.Network[TreeRightLength] = "40";
    inputs.Network[TreeRightFirst] = "4";
    inputs.Network[TreeRightSpacing] = "12";
    inputs.MaxSpaceBetweenSprinklers = "10";
    auto project = NewProject();
    const TreeLayout layout = LayOutTree(inputs, *project);
    ASSERT_EQ(layout.Pipes.size(), 18u);
    for (int pipe = 6; pipe <= 8; ++pipe) {
        EXPECT_FLOAT_EQ(layout.Pipes[static_cast<std::size_t>(pipe)].Row.Length, 6) << pipe;
    }
    // Row 1's cross main node is 110; the next is 110 + (2 * 4 + 5 + 1) * 10.
    EXPECT_EQ(layout.Pipes[9].Row.BegNode, "110");
    EXPECT_EQ(layout.Pipes[9].Row.EndNode, "250");
    EXPECT_EQ(layout.ExitNode, 250);
}

TEST(TreeBuilder, NoLeftSpacingGivesOneLeftPipePerRow) {
    TreeInputs inputs = ExampleInputs();
    inputs.Network[TreeLeftSpacing] = "0";
    auto project = NewProject();
    const TreeLayout layout = LayOutTree(inputs, *project);
    EXPECT_EQ(layout.Spacing.LeftSpaces, 0);
    EXPECT_EQ(layout.Spacing.LeftCount, 1);
    EXPECT_EQ(layout.Spacing.PipesRequired, 2 * (0 + 2 + 1) + 1 + 1);
    ASSERT_EQ(layout.Pipes.size(), 8u);
    // Lead-in 100-110; row 1: 120-110 (8 ft), 110-130, 130-140; cross main 110 to
    // 110 + (2 * 1 + 2 + 1) * 10; row 2 from 150.
    EXPECT_EQ(layout.Pipes[1].Row.BegNode, "120");
    EXPECT_EQ(layout.Pipes[1].Row.EndNode, "110");
    EXPECT_FLOAT_EQ(layout.Pipes[1].Row.Length, 8);
    EXPECT_EQ(layout.Pipes[2].Row.EndNode, "130");
    EXPECT_EQ(layout.Pipes[4].Row.EndNode, "160");
    EXPECT_EQ(layout.Pipes[5].Row.BegNode, "150");
    EXPECT_EQ(layout.Pipes[5].Row.EndNode, "160");
}

TEST(TreeBuilder, CheckNamesTheMissingInput) {
    BuilderFocus focus;
    EXPECT_TRUE(CheckTreeInputs(ExampleInputs(), &focus));
    EXPECT_EQ(focus.Control, BuilderControl::None);

    // The exit node and the cross main length are not tested.
    TreeInputs inputs = ExampleInputs();
    inputs.Network[TreeExitNode] = "";
    inputs.Network[TreeCrossMainLength] = "0";
    EXPECT_TRUE(CheckTreeInputs(inputs));

    for (const int index : {TreeIncrement, TreeSourceNode, TreeBranchSpacing, TreeLeftLength,
                            TreeRightLength, TreeLeftFirst, TreeRightFirst}) {
        inputs = ExampleInputs();
        inputs.Network[static_cast<std::size_t>(index)] = index % 2 == 0 ? "" : "0";
        ScriptedDialogs dialogs;
        EXPECT_FALSE(CheckTreeInputs(inputs, dialogs, &focus)) << index;
        EXPECT_EQ(focus, (BuilderFocus{BuilderControl::NetworkInput, index}));
        ASSERT_EQ(dialogs.All().size(), 1u);
        EXPECT_EQ(dialogs.LastTitle(), words::InputDataErrorTitle);
        EXPECT_EQ(dialogs.LastText(), words::InputMissing);
    }
    // One of the two sprinkler spacings may be missing, not both.
    inputs = ExampleInputs();
    inputs.Network[TreeLeftSpacing] = "";
    EXPECT_TRUE(CheckTreeInputs(inputs));
    inputs.Network[TreeRightSpacing] = "0";
    EXPECT_FALSE(CheckTreeInputs(inputs, &focus));
    EXPECT_EQ(focus, (BuilderFocus{BuilderControl::NetworkInput, TreeRightSpacing}));

    // A material that is no number is told before the missing input.
    inputs = ExampleInputs();
    inputs.BranchMaterial = "X";
    ScriptedDialogs dialogs;
    EXPECT_FALSE(CheckTreeInputs(inputs, dialogs, &focus));
    EXPECT_EQ(focus.Control, BuilderControl::BranchMaterial);
    ASSERT_EQ(dialogs.All().size(), 2u);
    EXPECT_EQ(dialogs.All()[0].Text, words::TreeMaterial);
    EXPECT_EQ(dialogs.All()[1].Text, words::InputMissing);
    inputs = ExampleInputs();
    inputs.CrossMaterial = "0";
    EXPECT_FALSE(CheckTreeInputs(inputs, &focus));
    EXPECT_EQ(focus.Control, BuilderControl::MainMaterial);

    // A failed check builds nothing.
    auto project = NewProject();
    ScriptedDialogs quiet;
    EXPECT_EQ(CreateTree(*project, DefaultLibrary(), quiet, inputs).Stop, BuildStop::MissingInput);
    EXPECT_EQ(project->NumberOfPipeRows, 0);
}

// Two spaces left and one right: P = 2 * (2 + 2 + 1) + 1 + 1 = 12.
TreeInputs TwelvePipeInputs() {
    TreeInputs inputs = ExampleInputs();
    inputs.Network[TreeLeftLength] = "32";
    return inputs;
}

TEST(TreeBuilder, ConfirmPipeAddAnswers) {
    ASSERT_EQ(CalculateTreeSpacing(TwelvePipeInputs()).PipesRequired, 12);

    // No writes from row 1 over the old rows; rows 13 to 20 stay behind the new ones.
    auto project = NewProject();
    TypeRows(*project, 20);
    ScriptedDialogs dialogs;
    dialogs.Script(Answer::No);
    BuildResult result = CreateTree(*project, DefaultLibrary(), dialogs, TwelvePipeInputs());
    ASSERT_TRUE(result.Built());
    ASSERT_EQ(dialogs.All().size(), 1u);
    EXPECT_EQ(dialogs.LastTitle(), words::ConfirmPipeAddTitle);
    EXPECT_EQ(dialogs.LastText(), words::ConfirmTreePipeAdd);
    EXPECT_EQ(result.FirstRow, 1);
    EXPECT_EQ(project->PipeRecord[1].BegNode, "100");
    EXPECT_EQ(project->PipeRecord[12].EndNode, "220");
    for (int row = 13; row <= 20; ++row) {
        EXPECT_EQ(project->PipeRecord[row].BegNode, std::to_string(5001 + 10 * row)) << row;
    }
    EXPECT_EQ(project->NumberOfPipeRows, 20);

    // Yes appends behind the rows.
    project = NewProject();
    TypeRows(*project, 20);
    dialogs = {};
    dialogs.Script(Answer::Yes);
    result = CreateTree(*project, DefaultLibrary(), dialogs, TwelvePipeInputs());
    ASSERT_TRUE(result.Built());
    EXPECT_EQ(result.FirstRow, 21);
    EXPECT_EQ(project->PipeRecord[21].BegNode, "100");
    EXPECT_EQ(project->PipeRecord[1].BegNode, "5011");
    EXPECT_EQ(project->NumberOfPipeRows, 32);

    // Cancel leaves everything as it was.
    project = NewProject();
    TypeRows(*project, 20);
    dialogs = {};
    dialogs.Script(Answer::Cancel);
    result = CreateTree(*project, DefaultLibrary(), dialogs, TwelvePipeInputs());
    EXPECT_EQ(result.Stop, BuildStop::Cancelled);
    EXPECT_EQ(project->NumberOfPipeRows, 20);
    EXPECT_EQ(project->PipeRecord[1].BegNode, "5011");
    EXPECT_TRUE(project->PipeRecord[21].BegNode.empty());
    EXPECT_EQ(project->InputChanged, False);

    // No, then a stop: the count of rows comes back with the table untouched.
    project = NewProject();
    TypeRows(*project, 20);
    project->PipeRecord[15].BegNode = "100";
    dialogs = {};
    dialogs.Script(Answer::No);
    result = CreateTree(*project, DefaultLibrary(), dialogs, TwelvePipeInputs());
    EXPECT_EQ(result.Stop, BuildStop::SourceNode);
    EXPECT_EQ(project->NumberOfPipeRows, 20);
    EXPECT_EQ(project->PipeRecord[1].BegNode, "5011");
}

TEST(TreeBuilder, SourceNodeConflicts) {
    // The source node itself in a row: refused, and the table stays.
    auto project = NewProject();
    TypeRows(*project, 3);
    project->PipeRecord[2].EndNode = "100";
    ScriptedDialogs dialogs;
    dialogs.Script(Answer::Yes);
    BuildResult result = CreateTree(*project, DefaultLibrary(), dialogs, ExampleInputs());
    EXPECT_EQ(result.Stop, BuildStop::SourceNode);
    EXPECT_EQ(dialogs.LastText(), words::SourceNodeExists);
    EXPECT_EQ(project->NumberOfPipeRows, 3);
    EXPECT_TRUE(project->PipeRecord[4].BegNode.empty());

    // Replacing the table, a row that the tree writes over does not count.
    dialogs = {};
    dialogs.Script(Answer::No);
    result = CreateTree(*project, DefaultLibrary(), dialogs, ExampleInputs());
    EXPECT_TRUE(result.Built());
    EXPECT_EQ(dialogs.All().size(), 1u);

    // A higher number with the same last digit asks; No stops, Yes goes on.
    project = NewProject();
    TypeRows(*project, 3);
    project->PipeRecord[3].EndNode = "310";
    dialogs = {};
    dialogs.Script(Answer::Yes);
    dialogs.Script(Answer::No);
    result = CreateTree(*project, DefaultLibrary(), dialogs, ExampleInputs());
    EXPECT_EQ(result.Stop, BuildStop::NodeConflict);
    EXPECT_EQ(dialogs.LastTitle(), words::NodeConflictTitle);
    EXPECT_EQ(dialogs.LastText(), words::NodeConflict);
    EXPECT_EQ(project->NumberOfPipeRows, 3);
    dialogs = {};
    dialogs.Script(Answer::Yes);
    dialogs.Script(Answer::Yes);
    EXPECT_TRUE(CreateTree(*project, DefaultLibrary(), dialogs, ExampleInputs()).Built());
    EXPECT_EQ(project->NumberOfPipeRows, 13);
}

TEST(TreeBuilder, DuplicateNodesAreAsked) {
    // With an increment of 5 the new numbers end in 5 and 0: an active row beginning at 105
    // clashes without being a possible conflict of the source node.
    TreeInputs inputs = ExampleInputs();
    inputs.Network[TreeIncrement] = "5";
    auto project = NewProject();
    TypeRows(*project, 2);
    project->PipeRecord[1].BegNode = "105";
    project->PipeRecord[1].EndNode = "107";
    ScriptedDialogs dialogs;
    dialogs.Script(Answer::Yes);
    dialogs.Script(Answer::No);
    BuildResult result = CreateTree(*project, DefaultLibrary(), dialogs, inputs);
    EXPECT_EQ(result.Stop, BuildStop::DuplicateNodes);
    ASSERT_EQ(dialogs.All().size(), 2u);
    EXPECT_EQ(dialogs.LastTitle(), words::DuplicateNodesTitle);
    EXPECT_EQ(dialogs.LastText(), words::DuplicateNodes);
    EXPECT_EQ(project->NumberOfPipeRows, 2);
    EXPECT_TRUE(project->PipeRecord[3].BegNode.empty());
    // An inactive row does not clash.
    project->PipeRecord[1].Active = False;
    dialogs = {};
    dialogs.Script(Answer::Yes);
    EXPECT_TRUE(CreateTree(*project, DefaultLibrary(), dialogs, inputs).Built());
    EXPECT_EQ(dialogs.All().size(), 1u);
    // Replacing the table asks nothing about clashes.
    project = NewProject();
    TypeRows(*project, 2);
    project->PipeRecord[1].BegNode = "105";
    project->PipeRecord[1].EndNode = "107";
    dialogs = {};
    dialogs.Script(Answer::No);
    EXPECT_TRUE(CreateTree(*project, DefaultLibrary(), dialogs, inputs).Built());
    EXPECT_EQ(dialogs.All().size(), 1u);
}

TEST(TreeBuilder, RoomAndNodeNumbers) {
    auto project = NewProject();
    TypeRows(*project, 990); // row 991 + 10 - 2 = 999 still fits
    for (int row = 1; row <= 990; ++row) {
        project->PipeRecord[row].BegNode = std::to_string(row % 9000 + 1001);
        project->PipeRecord[row].EndNode = std::to_string(row % 9000 + 2001);
    }
    ScriptedDialogs dialogs;
    dialogs.Script(Answer::Yes);
    EXPECT_TRUE(CreateTree(*project, DefaultLibrary(), dialogs, ExampleInputs()).Built());
    EXPECT_EQ(project->NumberOfPipeRows, 1000);

    project = NewProject();
    TypeRows(*project, 991);
    dialogs = {};
    dialogs.Script(Answer::Yes);
    const BuildResult result = CreateTree(*project, DefaultLibrary(), dialogs, ExampleInputs());
    EXPECT_EQ(result.Stop, BuildStop::NoRoom);
    EXPECT_EQ(dialogs.LastText(), std::string(words::TreeNoRoom) + "1000.");
    EXPECT_EQ(project->NumberOfPipeRows, 991);

    // Numbers past 9999 are refused before anything is written.
    project = NewProject();
    TreeInputs inputs = ExampleInputs();
    inputs.Network[TreeSourceNode] = "9900";
    dialogs = {};
    EXPECT_EQ(CreateTree(*project, DefaultLibrary(), dialogs, inputs).Stop, BuildStop::NodeNumbers);
    EXPECT_EQ(dialogs.LastText(), words::NodeNumbersTooHigh);
    EXPECT_EQ(project->NumberOfPipeRows, 0);
}

TEST(TreeBuilder, DefaultsAndUnits) {
    // K 0 is the project's default K as a number; area 0 its maximum area; an open diameter is
    // left to sizing.
    auto project = NewProject();
    TreeInputs inputs = ExampleInputs();
    inputs.KFactor = "0";
    inputs.SprinklerArea = "";
    inputs.BranchDiameter = "0";
    const TreeLayout layout = LayOutTree(inputs, *project);
    const PipeRecord& row = layout.Pipes[1].Row;
    EXPECT_EQ(row.KFactorB, "5.6");
    EXPECT_FLOAT_EQ(row.SprinklerAreaB, 130);
    EXPECT_EQ(row.DiameterFixed, False);
    EXPECT_EQ(layout.Pipes[0].Row.DiameterFixed, True);

    // Inputs on a metric screen are stored in US units.
    inputs = ExampleInputs();
    inputs.System = MeasureSystem::SI;
    inputs.DecimalCharacter = ',';
    inputs.Network[TreeLeftLength] = "6,096"; // 20 ft
    inputs.Network[TreeLeftFirst] = "2,4384"; // 8 ft
    inputs.Network[TreeLeftSpacing] = "3,6576";
    const TreeLayout metric = LayOutTree(inputs, *project);
    EXPECT_NEAR(metric.Pipes[2].Row.Length, 8, 1e-4);
    EXPECT_NEAR(metric.Pipes[1].Row.Length, 12, 1e-4);

    // The stored inputs come back as the same texts.
    TreeBuilderData data;
    StoreTreeInputs(ExampleInputs(), data);
    EXPECT_FLOAT_EQ(data.LengthOfLeftBranchLine, 20);
    EXPECT_EQ(data.SourceNode, 100);
    const TreeInputs again = TreeInputsFromData(data, MeasureSystem::US);
    TreeInputs expected = ExampleInputs();
    expected.Network[TreeExitNode] = "0";
    EXPECT_EQ(again.Network, expected.Network);
    EXPECT_EQ(again.Elevation, "12.5");
    EXPECT_EQ(again.KFactor, "5.6");
}

} // namespace
} // namespace quench
