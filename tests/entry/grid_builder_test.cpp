#include "entry/builder_words.h"
#include "entry/grid_builder.h"
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

// The worked example: two branch lines of two heads; the grid is 4 + 10 + 6 = 20 ft wide.
GridInputs ExampleInputs() {
    GridInputs inputs;
    inputs.Network = {"10", "100", "5", "8", "12", "2", "4", "10", "2", "6"};
    inputs.PerimeterMaterial = "1";
    inputs.PerimeterTypeGroup = "2";
    inputs.PerimeterDiameter = "2";
    inputs.BranchMaterial = "1";
    inputs.BranchTypeGroup = "1";
    inputs.BranchDiameter = "1";
    inputs.Elevation = "15";
    inputs.KFactor = "8";
    inputs.AreaGroup = "B";
    inputs.SprinklerArea = "120";
    return inputs;
}

std::unique_ptr<Project> NewProject() {
    auto project = std::make_unique<Project>();
    project->SystemData.DefaultKFactor = 5.6f;
    project->SystemData.MaximumAreaPerSprinkler = 130;
    return project;
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
    }
}

TEST(GridBuilder, WorkedExampleRowForRow) {
    auto project = NewProject();
    ScriptedDialogs dialogs;
    const BuildResult result = CreateGrid(*project, DefaultLibrary(), dialogs, ExampleInputs());
    ASSERT_TRUE(result.Built());
    EXPECT_TRUE(dialogs.Empty());
    EXPECT_EQ(result.RowsWritten, 13);
    EXPECT_EQ(project->NumberOfPipeRows, 13);
    EXPECT_EQ(project->InputChanged, True);
    // Schedule 40 steel 2 in.: a tee 10 ft, an elbow 5 ft; 1 in. branch pipes have no fittings.
    ExpectRows(*project, 1,
               {{100, 110, "0", "0", 10, "T", 20},
                {110, 120, "0", "0", 5, "E", 10},
                {110, 130, "0", "0", 15, "E", 20},
                {120, 140, "0", "0", 8, "T", 18},
                {130, 170, "0", "0", 8, "T", 18},
                {140, 150, "0", "8", 4, "", 4},
                {140, 180, "0", "0", 12, "T", 22},
                {150, 160, "8", "8", 10, "", 10},
                {160, 170, "8", "0", 6, "", 6},
                {170, 210, "0", "0", 12, "T", 22},
                {180, 190, "0", "8", 4, "", 4},
                {190, 200, "8", "8", 10, "", 10},
                {200, 210, "8", "0", 6, "", 6}});
    const PipeRecord& feed = project->PipeRecord[1];
    EXPECT_EQ(feed.AreaGroupB, "");
    EXPECT_EQ(feed.AreaGroupE, "B");
    EXPECT_FLOAT_EQ(feed.SprinklerAreaE, 0);
    EXPECT_EQ(feed.TypeGroup, 2);
    const PipeRecord& first = project->PipeRecord[6];
    EXPECT_FLOAT_EQ(first.SprinklerAreaB, 0); // the side node is no sprinkler
    EXPECT_FLOAT_EQ(first.SprinklerAreaE, 120);
    EXPECT_EQ(first.TypeGroup, 1);
    EXPECT_FLOAT_EQ(first.ElevationB, 15);
    EXPECT_EQ(first.AreaGroupB, "B");
    const PipeRecord& last = project->PipeRecord[9];
    EXPECT_FLOAT_EQ(last.SprinklerAreaB, 120);
    EXPECT_FLOAT_EQ(last.SprinklerAreaE, 0);
}

TEST(GridBuilder, LayoutPlacesThePerimeterAndLines) {
    auto project = NewProject();
    const GridLayout layout = LayOutGrid(ExampleInputs(), *project);
    EXPECT_EQ(project->NumberOfPipeRows, 0);
    EXPECT_EQ(layout.BranchLines, 2);
    EXPECT_EQ(layout.HeadsPerLine, 2);
    EXPECT_DOUBLE_EQ(layout.Width, 20);
    EXPECT_EQ(layout.PipesRequired, 13);
    ASSERT_EQ(layout.Pipes.size(), 13u);
    EXPECT_EQ(layout.Pipes[0].Kind, BuilderPipeKind::Feed);
    EXPECT_EQ(layout.Pipes[0].Begin, (LayoutPoint{5, -10}));
    EXPECT_EQ(layout.Pipes[1].End, (LayoutPoint{0, 0}));
    EXPECT_EQ(layout.Pipes[2].End, (LayoutPoint{20, 0}));
    EXPECT_EQ(layout.Pipes[4].End, (LayoutPoint{20, 8}));
    EXPECT_EQ(layout.Pipes[6].Kind, BuilderPipeKind::Perimeter);
    EXPECT_EQ(layout.Pipes[6].End, (LayoutPoint{0, 20}));
    EXPECT_EQ(layout.Pipes[7].Begin, (LayoutPoint{4, 8}));
    EXPECT_EQ(layout.Pipes[12].Kind, BuilderPipeKind::Branch);
    EXPECT_EQ(layout.Pipes[12].Line, 2);
    EXPECT_EQ(layout.Pipes[12].End, (LayoutPoint{20, 20}));
}

TEST(GridBuilder, OneLineAndOneHead) {
    auto project = NewProject();
    GridInputs inputs = ExampleInputs();
    inputs.Network[GridBranchLines] = "1";
    inputs.Network[GridHeadsPerLine] = "4";
    GridLayout layout = LayOutGrid(inputs, *project);
    EXPECT_EQ(layout.PipesRequired, 4 + 1 + 5);
    ASSERT_EQ(layout.Pipes.size(), 10u);
    for (std::size_t pipe = 5; pipe < 10; ++pipe) {
        EXPECT_EQ(layout.Pipes[pipe].Kind, BuilderPipeKind::Branch) << pipe;
    }

    // One head: two pipes a line, 4 and 6 ft, with the head between them.
    inputs = ExampleInputs();
    inputs.Network[GridHeadsPerLine] = "1";
    ScriptedDialogs dialogs;
    ASSERT_TRUE(CreateGrid(*project, DefaultLibrary(), dialogs, inputs).Built());
    EXPECT_EQ(project->NumberOfPipeRows, 2 * 2 + 5 + 2);
    // Width 4 + 6 = 10: the top side to the right corner is 5 ft; the right side ends at
    // 100 + 40 + 20 = 160.
    ExpectRows(*project, 3,
               {{110, 130, "0", "0", 5, "E", 10},
                {120, 140, "0", "0", 8, "T", 18},
                {130, 160, "0", "0", 8, "T", 18},
                {140, 150, "0", "8", 4, "", 4},
                {140, 170, "0", "0", 12, "T", 22},
                {150, 160, "8", "0", 6, "", 6},
                {160, 190, "0", "0", 12, "T", 22},
                {170, 180, "0", "8", 4, "", 4},
                {180, 190, "8", "0", 6, "", 6}});
}

TEST(GridBuilder, EntryPointBeyondTheWidth) {
    auto project = NewProject();
    GridInputs inputs = ExampleInputs();
    inputs.Network[GridSourceEntryPoint] = "32.5";
    const GridLayout layout = LayOutGrid(inputs, *project);
    EXPECT_FLOAT_EQ(layout.Pipes[1].Row.Length, 32.5f);
    EXPECT_FLOAT_EQ(layout.Pipes[2].Row.Length, 12.5f);
    EXPECT_EQ(layout.Pipes[2].End, (LayoutPoint{20, 0}));
}

TEST(GridBuilder, DefaultKIsANumber) {
    auto project = NewProject();
    GridInputs inputs = ExampleInputs();
    inputs.KFactor = "0";
    inputs.SprinklerArea = "0";
    const GridLayout layout = LayOutGrid(inputs, *project);
    const PipeRecord& head = layout.Pipes[7].Row;
    EXPECT_EQ(head.KFactorB, "5.6");
    EXPECT_EQ(head.KFactorE, "5.6");
    EXPECT_FLOAT_EQ(head.SprinklerAreaB, 130);
    EXPECT_EQ(layout.Pipes[5].Row.KFactorB, "0");
}

TEST(GridBuilder, CheckAndQuestions) {
    BuilderFocus focus;
    EXPECT_TRUE(CheckGridInputs(ExampleInputs(), &focus));
    for (int index = 0; index < GridInputCount; ++index) {
        GridInputs inputs = ExampleInputs();
        inputs.Network[static_cast<std::size_t>(index)] = index % 2 == 0 ? "0" : "";
        ScriptedDialogs dialogs;
        EXPECT_FALSE(CheckGridInputs(inputs, dialogs, &focus)) << index;
        EXPECT_EQ(focus, (BuilderFocus{BuilderControl::NetworkInput, index}));
        EXPECT_EQ(dialogs.LastText(), words::InputMissing);
    }
    GridInputs inputs = ExampleInputs();
    inputs.PerimeterMaterial = "P";
    ScriptedDialogs dialogs;
    EXPECT_FALSE(CheckGridInputs(inputs, dialogs, &focus));
    EXPECT_EQ(focus.Control, BuilderControl::MainMaterial);
    ASSERT_EQ(dialogs.All().size(), 2u);
    EXPECT_EQ(dialogs.All()[0].Text, words::GridMaterial);

    // Over existing rows: the grid's words; No writes from row 1.
    auto project = NewProject();
    ASSERT_TRUE(CreateGrid(*project, DefaultLibrary(), dialogs, ExampleInputs()).Built());
    dialogs = {};
    dialogs.Script(Answer::No);
    GridInputs other = ExampleInputs();
    other.Network[GridBranchLines] = "1";
    BuildResult result = CreateGrid(*project, DefaultLibrary(), dialogs, other);
    ASSERT_TRUE(result.Built());
    EXPECT_EQ(dialogs.LastText(), words::ConfirmGridPipeAdd);
    EXPECT_EQ(result.RowsWritten, 8);
    EXPECT_EQ(project->NumberOfPipeRows, 13);
    EXPECT_EQ(project->PipeRecord[9].BegNode, "160"); // an old row behind the new ones

    // Yes over the same numbers: the clash is asked; No stops.
    dialogs = {};
    dialogs.Script(Answer::Yes);
    dialogs.Script(Answer::No);
    result = CreateGrid(*project, DefaultLibrary(), dialogs, ExampleInputs());
    EXPECT_EQ(result.Stop, BuildStop::DuplicateNodes);
    EXPECT_EQ(dialogs.LastTitle(), words::DuplicateNodesTitle);
    EXPECT_EQ(project->NumberOfPipeRows, 13);

    // Room: 38 lines of 20 heads need 38 * 21 + 5 + 74 = 877 rows, too many behind 13.
    inputs = ExampleInputs();
    inputs.Network[GridBranchLines] = "38";
    inputs.Network[GridHeadsPerLine] = "20";
    inputs.Network[GridSourceNode] = "1";
    inputs.Network[GridIncrement] = "1";
    dialogs = {};
    dialogs.Script(Answer::Yes);
    dialogs.Script(Answer::Yes);
    ASSERT_TRUE(CreateGrid(*project, DefaultLibrary(), dialogs, inputs).Built());
    EXPECT_EQ(project->NumberOfPipeRows, 13 + 877);
    dialogs = {};
    dialogs.Script(Answer::Yes);
    result = CreateGrid(*project, DefaultLibrary(), dialogs, inputs);
    EXPECT_EQ(result.Stop, BuildStop::NoRoom);
    EXPECT_EQ(dialogs.LastText(), std::string(words::GridNoRoom) + "1000.");
}

TEST(GridBuilder, StoredInputsComeBack) {
    GridBuilderData data;
    StoreGridInputs(ExampleInputs(), data);
    EXPECT_EQ(data.NumberOfBranchLines, 2);
    EXPECT_FLOAT_EQ(data.SourceEntryPoint, 5);
    EXPECT_FLOAT_EQ(data.KFactor, 8);
    const GridInputs again = GridInputsFromData(data, MeasureSystem::US);
    EXPECT_EQ(again.Network, ExampleInputs().Network);
    EXPECT_EQ(again.AreaGroup, "B");
    EXPECT_EQ(again.PerimeterDiameter, "2");
}

} // namespace
} // namespace quench
