#include "entry/builder_captions.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(BuilderCaptions, HoseProjectsNameHosesWhereSprinklerProjectsNameSprinklers) {
    EXPECT_EQ(TreeInputCaption(0, false), "Nodal Numbering Increment:");
    EXPECT_EQ(TreeInputCaption(4, false), "Distance Between Branch Line");
    EXPECT_EQ(TreeInputCaption(4, true), "Distance Between Branch Line");
    EXPECT_EQ(TreeInputCaption(7, false), "Left Side Distance from Cross Main to First Sprinkler");
    EXPECT_EQ(TreeInputCaption(7, true), "Left Side Distance from Cross Main to First Hose");
    EXPECT_EQ(TreeInputCaption(9, false), "Left Side Distance Bet. Sprinklers");
    EXPECT_EQ(TreeInputCaption(10, true), "Right Side Distance Between Hoses");
    EXPECT_EQ(GridInputCaption(1, true), "Grid Source Node Number");
    EXPECT_EQ(GridInputCaption(4, false), "Distance Between Branch Lines");
    EXPECT_EQ(GridInputCaption(7, true), "Distance Between Hoses");
    EXPECT_EQ(GridInputCaption(8, false), "Number Of Sprinkler Heads Per Branch Line");
    EXPECT_EQ(GridInputCaption(9, true), "Right Side Distance from Last Hose To Perimeter");
    // Every row has a caption; none past the last.
    for (int index = 0; index < TreeCaptionCount; ++index) {
        EXPECT_FALSE(TreeInputCaption(index, true).empty()) << index;
    }
    for (int index = 0; index < GridCaptionCount; ++index) {
        EXPECT_FALSE(GridInputCaption(index, false).empty()) << index;
    }
    EXPECT_TRUE(TreeInputCaption(TreeCaptionCount, false).empty());
    EXPECT_TRUE(GridInputCaption(-1, true).empty());
}

} // namespace
} // namespace quench
