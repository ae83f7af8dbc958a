#include "entry/node_data_sync.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

PipeRecord& Row(Project& project, int row, const char* begin, const char* end) {
    PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
    record.BegNode = begin;
    record.EndNode = end;
    return record;
}

NodeData Sprinkler(const char* k, Single elevation) {
    return {k, elevation, 7.5f, 130.0f, "A", 0.0f};
}

TEST(NodeDataSync, FetchTakesTheFirstOtherRowNamingTheNode) {
    Project project;
    SetNodeData(Row(project, 1, "10", "20"), NodeEnd::Ending, Sprinkler("5.6", 12.5f));
    SetNodeData(Row(project, 2, "20", "30"), NodeEnd::Beginning, Sprinkler("8.0", 3.0f));
    Row(project, 3, "40", "20");

    // The new reference at row 3's end takes over everything of row 1's end, pressure included.
    EXPECT_EQ(SyncNodeData(project, 3, NodeEnd::Ending, SyncDirection::Fetch), (std::vector{3}));
    EXPECT_EQ(NodeDataAt(project.PipeRecord[3], NodeEnd::Ending), Sprinkler("5.6", 12.5f));
    // A node nobody else names, an empty node text, a row out of the table: nothing changes.
    const PipeRecord before = project.PipeRecord[3];
    EXPECT_TRUE(SyncNodeData(project, 3, NodeEnd::Beginning, SyncDirection::Fetch).empty());
    project.PipeRecord[4].BegNode = "20";
    EXPECT_TRUE(SyncNodeData(project, 4, NodeEnd::Ending, SyncDirection::Fetch).empty());
    EXPECT_TRUE(SyncNodeData(project, 0, NodeEnd::Ending, SyncDirection::Fetch).empty());
    EXPECT_EQ(project.PipeRecord[3], before);
}

TEST(NodeDataSync, FetchSkipsRowsWithoutBothNodesAndReadsTheEndWhereTheNodeStands) {
    Project project;
    SetNodeData(Row(project, 1, "20", ""), NodeEnd::Beginning, Sprinkler("1.0", 1.0f));
    SetNodeData(Row(project, 2, "30", "20"), NodeEnd::Ending, Sprinkler("Dflt", 9.0f));
    SetNodeData(Row(project, 3, "20", "50"), NodeEnd::Beginning, Sprinkler("None", 2.0f));
    EXPECT_EQ(SyncNodeData(project, 3, NodeEnd::Beginning, SyncDirection::Fetch), (std::vector{3}));
    EXPECT_EQ(NodeDataAt(project.PipeRecord[3], NodeEnd::Beginning), Sprinkler("Dflt", 9.0f));
}

TEST(NodeDataSync, SpreadWritesEveryOtherRowAtItsOwnEnd) {
    Project project;
    Row(project, 1, "10", "20");
    Row(project, 2, "20", "30");
    Row(project, 3, "30", "40");
    Row(project, 5, "25", "20");
    Row(project, 6, "20", ""); // not a whole row yet: left alone
    const NodeData typed{"5.6", -2.5f, 0.0f, 100.0f, "AB", 12.0f};
    SetNodeData(project.PipeRecord[2], NodeEnd::Beginning, typed);

    EXPECT_EQ(SyncNodeData(project, 2, NodeEnd::Beginning, SyncDirection::Spread),
              (std::vector{1, 5}));
    EXPECT_EQ(NodeDataAt(project.PipeRecord[1], NodeEnd::Ending), typed);
    EXPECT_EQ(NodeDataAt(project.PipeRecord[5], NodeEnd::Ending), typed);
    EXPECT_NE(NodeDataAt(project.PipeRecord[6], NodeEnd::Beginning), typed);
    EXPECT_NE(NodeDataAt(project.PipeRecord[3], NodeEnd::Beginning), typed);
    // The other end of each row and the pipe's own data stay as they were.
    EXPECT_EQ(NodeDataAt(project.PipeRecord[1], NodeEnd::Beginning),
              (NodeData{"None", 0, 0, 0, "", 0}));
    EXPECT_EQ(project.PipeRecord[1].Length, 0.0f);
    // A second spread of the same data has nothing left to change.
    EXPECT_TRUE(SyncNodeData(project, 2, NodeEnd::Beginning, SyncDirection::Spread).empty());
}

TEST(NodeDataSync, SpreadOfBothEndsListsEachRowOnce) {
    Project project;
    Row(project, 1, "10", "20");
    Row(project, 2, "20", "10");
    Row(project, 3, "10", "30");
    SetNodeData(project.PipeRecord[1], NodeEnd::Beginning, Sprinkler("5.6", 1.0f));
    SetNodeData(project.PipeRecord[1], NodeEnd::Ending, Sprinkler("4.2", 2.0f));
    EXPECT_EQ(SpreadBothEnds(project, 1), (std::vector{2, 3}));
    EXPECT_EQ(NodeDataAt(project.PipeRecord[2], NodeEnd::Ending), Sprinkler("5.6", 1.0f));
    EXPECT_EQ(NodeDataAt(project.PipeRecord[2], NodeEnd::Beginning), Sprinkler("4.2", 2.0f));
    EXPECT_EQ(NodeDataAt(project.PipeRecord[3], NodeEnd::Beginning), Sprinkler("5.6", 1.0f));
}

TEST(NodeDataSync, NodesMatchByNumber) {
    Project project;
    SetNodeData(Row(project, 1, " 010", "20"), NodeEnd::Beginning, Sprinkler("2.8", 4.0f));
    Row(project, 2, "10", "30");
    EXPECT_EQ(SyncNodeData(project, 2, NodeEnd::Beginning, SyncDirection::Fetch), (std::vector{2}));
    EXPECT_EQ(NodeDataAt(project.PipeRecord[2], NodeEnd::Beginning), Sprinkler("2.8", 4.0f));
    EXPECT_EQ(PlaceOfNode(project.PipeRecord[1], 20), NodePlace::Ending);
    EXPECT_EQ(PlaceOfNode(project.PipeRecord[1], 30), NodePlace::None);
}

} // namespace
} // namespace quench
