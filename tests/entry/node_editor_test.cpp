#include "entry/node_editor.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

// Rows of a network: each pair of numbers one pipe.
void AddPipe(Project& project, int row, int from, int to) {
    PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
    pipe.BegNode = std::to_string(from);
    pipe.EndNode = std::to_string(to);
    pipe.KFactorB = "0";
    pipe.KFactorE = "0";
    pipe.Active = True;
    project.NumberOfPipeRows = std::max<Integer>(project.NumberOfPipeRows, row);
}

std::vector<int> NodesOf(const std::vector<NodeLine>& lines) {
    std::vector<int> nodes;
    for (const NodeLine& line : lines) {
        nodes.push_back(line.Node);
    }
    return nodes;
}

TEST(NodeLines, EachNodeOnceTheInflowLastWithTheDataOfItsFirstRow) {
    Project project;
    AddPipe(project, 1, 600, 20);
    AddPipe(project, 2, 20, 500);
    AddPipe(project, 3, 30, 20);
    project.PipeRecord[1].ElevationE = 12;
    project.PipeRecord[3].ElevationE = 99; // a later copy: the first row speaks for the node
    project.PipeRecord[2].EndIsInflow = 1;
    project.InflowNode = 500;
    const std::vector<NodeLine> lines = RefreshNodeLines(project);
    EXPECT_EQ(NodesOf(lines), (std::vector<int>{20, 30, 600, 500}));
    EXPECT_FLOAT_EQ(lines[0].Data.Elevation, 12);
    EXPECT_EQ(InflowNodeOf(project), 500);

    // A row with one node only names nothing yet; a deleted row leaves no node behind.
    project.PipeRecord[4].BegNode = "700";
    EXPECT_EQ(RefreshNodeLines(project).size(), 4u);
    EXPECT_TRUE(RefreshNodeLines(Project()).empty());
}

TEST(NodeLines, AnEditReachesEveryRowOfTheNodeAcrossGapsInTheTable) {
    Project project;
    AddPipe(project, 1, 10, 20);
    AddPipe(project, 2, 20, 30);
    AddPipe(project, 7, 40, 20); // three deleted rows stand before it
    NodeEditor editor(project, MeasureSystem::US);
    const int line = editor.LineOf(20);
    ASSERT_EQ(line, 1);
    project.InputChanged = 0;
    EXPECT_EQ(editor.Change(line, NodeField::Elevation, "15.5"), "15.5");
    EXPECT_FLOAT_EQ(project.PipeRecord[1].ElevationE, 15.5f);
    EXPECT_FLOAT_EQ(project.PipeRecord[2].ElevationB, 15.5f);
    EXPECT_FLOAT_EQ(project.PipeRecord[7].ElevationE, 15.5f);
    EXPECT_FLOAT_EQ(project.PipeRecord[1].ElevationB, 0); // node 10 is untouched
    EXPECT_TRUE(IsTrue(project.InputChanged));

    // Every value of the node travels together, the K-factor's words as they stand.
    editor.Change(line, NodeField::KFactor, "D");
    editor.Change(line, NodeField::AreaGroup, "ab");
    editor.Change(line, NodeField::SprinklerArea, "130");
    for (const auto& [row, end] : {std::pair{1, NodeEnd::Ending}, std::pair{2, NodeEnd::Beginning},
                                   std::pair{7, NodeEnd::Ending}}) {
        const NodeData data = NodeDataAt(project.PipeRecord[static_cast<std::size_t>(row)], end);
        EXPECT_EQ(data.KFactor, "Dflt") << row;
        EXPECT_EQ(data.AreaGroup, "AB") << row;
        EXPECT_FLOAT_EQ(data.SprinklerArea, 130) << row;
    }
    editor.Refresh();
    EXPECT_EQ(editor.Text(line, NodeField::KFactor), "Dflt");
    EXPECT_EQ(editor.Text(line, NodeField::Elevation), "15.5");
    EXPECT_EQ(editor.Text(line, NodeField::SprinklerArea), "130.0");
}

TEST(NodeLines, SaveNodeLinesWritesEveryLine) {
    Project project;
    AddPipe(project, 1, 10, 20);
    AddPipe(project, 2, 20, 30);
    std::vector<NodeLine> lines = RefreshNodeLines(project);
    for (NodeLine& line : lines) {
        line.Data.PressEstimate = static_cast<Single>(line.Node);
    }
    SaveNodeLines(project, lines);
    EXPECT_FLOAT_EQ(project.PipeRecord[1].PressEstimateB, 10);
    EXPECT_FLOAT_EQ(project.PipeRecord[1].PressEstimateE, 20);
    EXPECT_FLOAT_EQ(project.PipeRecord[2].PressEstimateB, 20);
    EXPECT_FLOAT_EQ(project.PipeRecord[2].PressEstimateE, 30);
    EXPECT_EQ(RefreshNodeLines(project), lines);
}

TEST(NodeEditorFields, KeysLimitsAndUnits) {
    Project project;
    AddPipe(project, 1, 10, 20);
    project.PipeRecord[1].KFactorE = "5.6";
    NodeEditor editor(project, MeasureSystem::US);
    // D, I, N give the words; a group takes capitals only; a minus only where the range has one.
    EXPECT_EQ(editor.FilterKey(NodeField::KFactor, 'I', {"", 0, 0}).Field.Text, "Inact");
    EXPECT_FALSE(editor.FilterKey(NodeField::AreaGroup, '1', {"A", 1, 0}).Accepted);
    EXPECT_EQ(editor.FilterKey(NodeField::AreaGroup, 'B', {"A", 1, 0}).Field.Text, "AB");
    EXPECT_FALSE(editor.FilterKey(NodeField::PressureEstimate, '-', {"", 0, 0}).Accepted);
    EXPECT_TRUE(editor.FilterKey(NodeField::Elevation, '-', {"", 0, 0}).Accepted);
    EXPECT_FALSE(editor.FilterKey(NodeField::NonSprinklerFlow, '9', {"325", 3, 0}).Accepted);
    EXPECT_EQ(editor.TestOnChange(NodeField::AreaGroup, "A1"), "");
    EXPECT_EQ(editor.StatusText(NodeField::SprinklerArea),
              "Range: 0.0 to 3,276.5     Units: Feet²");

    // An emptied number shows 0 on leaving and is stored so.
    const int line = editor.LineOf(20);
    editor.Change(line, NodeField::PressureEstimate, "");
    const LeaveOutcome left = editor.Leave(line, NodeField::PressureEstimate, "");
    EXPECT_EQ(left.Text, "0.0");
    EXPECT_FALSE(left.TooLow);

    // SI: the K unit and the lengths convert on the way in and out.
    NodeEditor metric(project, MeasureSystem::SI);
    EXPECT_EQ(metric.Text(line, NodeField::KFactor), "80.64");
    EXPECT_EQ(metric.Change(line, NodeField::Elevation, "3.048"), ""); // one decimal at most
    metric.Change(line, NodeField::Elevation, "6.1");
    EXPECT_NEAR(project.PipeRecord[1].ElevationE, 6.1 / 0.3048, 1e-4);
    EXPECT_EQ(metric.Heading(NodeField::NonSprinklerFlow), "Non-Sprinkler\nFlow");
    project.SystemData.PrimaryDischargeName = "Hose";
    EXPECT_EQ(metric.Heading(NodeField::SprinklerArea), "Hose\nArea");
}

TEST(NodeEditorRows, VisibleRowCommands) {
    EXPECT_FALSE(CanRemoveVisibleRow(1));
    EXPECT_TRUE(CanRemoveVisibleRow(2));
    EXPECT_TRUE(CanAddVisibleRow(3, 4));
    EXPECT_FALSE(CanAddVisibleRow(4, 4));
}

} // namespace
} // namespace quench
