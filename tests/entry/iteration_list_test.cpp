#include "entry/iteration_list.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

IterationRow Row(long iteration, double average = 0.5) {
    IterationRow row;
    row.Iteration = iteration;
    row.AverageImbalance = average;
    row.MaximumImbalance = 2.25;
    row.AllowableImbalance = 0.005;
    row.DampingFactor = 10;
    return row;
}

TEST(IterationList, TitleAndFormats) {
    EXPECT_EQ(DisplayingTitle(true, 12, 11), "Employing Demand Mode With 12 Pipes and 11 Nodes");
    EXPECT_EQ(DisplayingTitle(false, 3, 4), "Employing Supply Mode With 3 Pipes and 4 Nodes");
    const IterationCells cells = FormatIteration(Row(7, 0.0000123456));
    EXPECT_EQ(cells[0], "7");
    EXPECT_EQ(cells[1], "0.0000123456");
    EXPECT_EQ(cells[2], "2.25");
    EXPECT_EQ(cells[3], "0.005");
    EXPECT_EQ(cells[4], "10");
    // From 0.1 up the plain number; the allowable imbalance keeps eight decimals at most.
    IterationRow row = Row(1, 0.1);
    row.AllowableImbalance = 0.000000123;
    EXPECT_EQ(FormatIteration(row)[1], "0.1");
    EXPECT_EQ(FormatIteration(row)[3], "0.00000012");
}

TEST(IterationList, ElevenRowsThatScroll) {
    IterationList list;
    for (long iteration = 1; iteration <= 11; ++iteration) {
        list.Show(Row(iteration));
    }
    EXPECT_EQ(list.Rows().front()[0], "1");
    EXPECT_EQ(list.Rows().back()[0], "11");
    list.Show(Row(12));
    list.Show(Row(13));
    EXPECT_EQ(list.Rows().front()[0], "3");
    EXPECT_EQ(list.Rows()[9][0], "12");
    EXPECT_EQ(list.Rows().back()[0], "13");
    // A new pass starts again at iteration 1 with an empty list.
    list.Show(Row(1));
    EXPECT_EQ(list.Rows().front()[0], "1");
    EXPECT_TRUE(list.Rows()[1][0].empty());
    list.Show(Row(2));
    EXPECT_EQ(list.Rows()[1][0], "2");
}

} // namespace
} // namespace quench
