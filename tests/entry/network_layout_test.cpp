#include "entry/network_layout.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace quench {
namespace {

NetworkSketch Rectangle(double width, double height) {
    NetworkSketch sketch;
    const std::size_t a = sketch.Add(100, 0, 0, false);
    const std::size_t b = sketch.Add(110, width, 0, true);
    const std::size_t c = sketch.Add(120, width, height, true);
    sketch.Connect(a, b);
    sketch.Connect(b, c);
    return sketch;
}

TEST(NetworkLayout, TheNetworkIsScaledEvenlyAndCentredInTheDrawingArea) {
    // Wide: the width governs, the height is centred.
    NetworkDrawing wide = DrawNetwork(Rectangle(100, 10));
    ASSERT_EQ(wide.Nodes.size(), 3u);
    const DrawingPoint a = wide.Nodes[0].At;
    const DrawingPoint c = wide.Nodes[2].At;
    EXPECT_EQ(a.X + c.X, DrawingWidth);
    EXPECT_NEAR(a.Y + c.Y, DrawingHeight, 1);
    const double scale = (c.X - a.X) / 100.0;
    EXPECT_NEAR((c.Y - a.Y) / 10.0, scale, 0.01);
    EXPECT_LT(c.X - a.X, DrawingWidth);
    EXPECT_GT(c.X - a.X, DrawingWidth * 3 / 4);
    // Tall: the height governs.
    const NetworkDrawing tall = DrawNetwork(Rectangle(10, 100));
    EXPECT_GT(tall.Nodes[2].At.Y - tall.Nodes[0].At.Y, DrawingHeight * 3 / 4);
    EXPECT_LT(tall.Nodes[2].At.Y - tall.Nodes[0].At.Y, DrawingHeight);
    EXPECT_EQ(tall.Nodes[0].At.X + tall.Nodes[2].At.X, DrawingWidth);
    // The pipes join the nodes' places.
    ASSERT_EQ(wide.Lines.size(), 2u);
    EXPECT_EQ(wide.Lines[1].From, wide.Nodes[1].At);
    EXPECT_EQ(wide.Lines[1].To, c);
    EXPECT_TRUE(wide.Nodes[1].Sprinkler);
    EXPECT_FALSE(wide.Nodes[0].Sprinkler);
}

TEST(NetworkLayout, EverythingStaysInsideTheDrawingArea) {
    for (const auto& [width, height] :
         {std::pair{1000.0, 1.0}, std::pair{1.0, 1000.0}, std::pair{0.0, 50.0},
          std::pair{50.0, 0.0}, std::pair{0.0, 0.0}, std::pair{66.0, 40.0}}) {
        const NetworkDrawing drawing = DrawNetwork(Rectangle(width, height));
        for (const DrawingNode& node : drawing.Nodes) {
            EXPECT_GE(node.At.X, 0);
            EXPECT_LE(node.At.X, DrawingWidth);
            EXPECT_GE(node.At.Y, 0);
            EXPECT_LE(node.At.Y, DrawingHeight);
        }
        ASSERT_FALSE(drawing.Dots.empty());
        for (const Dot& dot : drawing.Dots) {
            EXPECT_GE(dot.Left, 0) << width << " x " << height;
            EXPECT_LE(dot.Left + DotSize, DrawingWidth) << width << " x " << height;
            EXPECT_GE(dot.Top, 0) << width << " x " << height;
            EXPECT_LE(dot.Top + DotSize, DrawingHeight) << width << " x " << height;
        }
    }
    // A single node sits in the middle.
    NetworkSketch one;
    one.Add(5, 12, 34, false);
    const NetworkDrawing drawing = DrawNetwork(one);
    EXPECT_EQ(drawing.Nodes[0].At, (DrawingPoint{DrawingWidth / 2, DrawingHeight / 2}));
    EXPECT_TRUE(DrawNetwork(NetworkSketch{}).Dots.empty());
}

TEST(NetworkLayout, NeighboursOnALineHaveTheirNumbersOnAlternateSides) {
    NetworkSketch line;
    for (int i = 0; i < 4; ++i) {
        line.Add(1000 + i, 3.0 - i, 0, true); // added right to left
    }
    const NetworkDrawing drawing = DrawNetwork(line);
    // Four numbers of four digits: the dots of each lie in one band above or below the line.
    const int y = drawing.Nodes[0].At.Y;
    const auto above = std::ranges::count_if(drawing.Dots, [y](const Dot& d) { return d.Top < y; });
    const auto below = std::ranges::count_if(drawing.Dots, [y](const Dot& d) { return d.Top > y; });
    EXPECT_EQ(above + below, static_cast<long>(drawing.Dots.size()));
    EXPECT_GT(above, 0);
    EXPECT_GT(below, 0);
    // The leftmost node (added last) has its number above, its right neighbour below.
    const DrawingPoint leftmost = drawing.Nodes[3].At;
    const auto aboveLeftmost = std::ranges::count_if(drawing.Dots, [&](const Dot& d) {
        return d.Top < y && d.Left >= leftmost.X && d.Left < leftmost.X + 300;
    });
    EXPECT_GT(aboveLeftmost, 0);
    const auto belowLeftmost = std::ranges::count_if(drawing.Dots, [&](const Dot& d) {
        return d.Top > y && d.Left >= leftmost.X && d.Left < drawing.Nodes[2].At.X;
    });
    EXPECT_EQ(belowLeftmost, 0);
}

TEST(NetworkLayout, PrintoutLimitMessagesJoinWhatWasExceeded) {
    EXPECT_EQ(TreePrintoutLimitMessage(20, 20, 15), "");
    EXPECT_EQ(TreePrintoutLimitMessage(21, 3, 4),
              "Tree printout limited to 20 sprinklers per left branch, so not all of the tree "
              "will be displayed here.");
    EXPECT_EQ(TreePrintoutLimitMessage(1, 21, 4),
              "Tree printout limited to 20 sprinklers per right branch, so not all of the tree "
              "will be displayed here.");
    EXPECT_EQ(TreePrintoutLimitMessage(1, 2, 16),
              "Tree printout limited to 15 branches, so not all of the tree will be displayed "
              "here.");
    EXPECT_EQ(TreePrintoutLimitMessage(30, 30, 30),
              "Tree printout limited to 20 sprinklers per left branch, 20 sprinklers per right "
              "branch, 15 branches, so not all of the tree will be displayed here.");
    EXPECT_EQ(GridPrintoutLimitMessage(40, 15), "");
    EXPECT_EQ(GridPrintoutLimitMessage(41, 15),
              "Grid printout limited to 40 sprinklers per branch, so not all of the grid will be "
              "displayed here.");
    EXPECT_EQ(GridPrintoutLimitMessage(2, 16),
              "Grid printout limited to 15 branches, so not all of the grid will be displayed "
              "here.");
    EXPECT_EQ(GridPrintoutLimitMessage(41, 16),
              "Grid printout limited to 40 sprinklers per branch, 15 branches, so not all of the "
              "grid will be displayed here.");
}

} // namespace
} // namespace quench
