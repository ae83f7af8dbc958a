#include "core/project.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

// Rows are reached by the model's own row numbers, whatever their integer type; row 0 is there.
TEST(Table, RowsByTheModelsNumbers) {
    Table<int> table(5, 0);
    for (int row = 1; row <= 4; ++row) {
        table[row] = row * 10;
    }
    const Integer small = 2;
    const Long wide = 3;
    const std::size_t unsignedRow = 4;
    EXPECT_EQ(table[small], 20);
    EXPECT_EQ(table[wide], 30);
    EXPECT_EQ(table[unsignedRow], 40);
    EXPECT_EQ(table[0], 0);

    int sum = 0;
    for (int value : table.Rows(3)) {
        sum += value;
    }
    EXPECT_EQ(sum, 60); // rows 1 to 3, not row 0 and not row 4
    const Table<int>& constant = table;
    EXPECT_EQ(constant.Rows(4).back(), 40);
    EXPECT_TRUE(constant.Rows(0).empty());
}

// A snapshot of a table is a plain vector of its rows and puts the table back as it was.
TEST(Table, SnapshotsRoundTrip) {
    Project project;
    project.PipeRecord[7].BegNode = "70";
    const std::vector<PipeRecord> snapshot = project.PipeRecord;
    project.PipeRecord[7].BegNode = "71";
    project.PipeRecord = snapshot;
    EXPECT_EQ(project.PipeRecord[7].BegNode, "70");
    EXPECT_EQ(project.PipeRecord.size(), snapshot.size());
}

// The solver's internal inflow number is given back as the number the user typed.
TEST(TypedNode, TheInflowByItsOwnNumber) {
    Project project;
    project.InflowNode = 5;
    EXPECT_EQ(TypedNodeNumber(project, InflowNodeCode), 5);
    EXPECT_EQ(TypedNodeNumber(project, 40), 40);
    EXPECT_EQ(TypedNodeText(project, " 10000 "), "5");
    EXPECT_EQ(TypedNodeText(project, "10000.0"), "5");
    EXPECT_EQ(TypedNodeText(project, " 40 "), "40");
    EXPECT_EQ(TypedNodeText(project, "100000"), "100000");
    EXPECT_EQ(TypedNodeText(project, ""), "");
}

} // namespace
} // namespace quench
