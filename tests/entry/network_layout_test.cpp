#include "entry/grid_builder.h"
#include "entry/network_layout.h"
#include "entry/tree_builder.h"

#include <algorithm>
#include <memory>
#include <set>

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
    const PicturePoint a = wide.Nodes[0].At;
    const PicturePoint c = wide.Nodes[2].At;
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
        for (const PictureNode& node : drawing.Nodes) {
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
    EXPECT_EQ(drawing.Nodes[0].At, (PicturePoint{DrawingWidth / 2, DrawingHeight / 2}));
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
    const PicturePoint leftmost = drawing.Nodes[3].At;
    const auto aboveLeftmost = std::ranges::count_if(drawing.Dots, [&](const Dot& d) {
        return d.Top < y && d.Left >= leftmost.X && d.Left < leftmost.X + 300;
    });
    EXPECT_GT(aboveLeftmost, 0);
    const auto belowLeftmost = std::ranges::count_if(drawing.Dots, [&](const Dot& d) {
        return d.Top > y && d.Left >= leftmost.X && d.Left < drawing.Nodes[2].At.X;
    });
    EXPECT_EQ(belowLeftmost, 0);
}

std::unique_ptr<Project> NewProject() {
    auto project = std::make_unique<Project>();
    project->SystemData.DefaultKFactor = 5.6f;
    project->SystemData.MaximumAreaPerSprinkler = 130;
    return project;
}

// A tree of two rows with one space on each side: the worked example's numbers.
TreeInputs SmallTree() {
    TreeInputs inputs;
    inputs.Network = {"10", "100", "", "12", "12", "20", "22", "8", "10", "12", "12"};
    inputs.CrossMaterial = "1";
    inputs.BranchMaterial = "1";
    inputs.KFactor = "5.6";
    return inputs;
}

GridInputs GridOf(const char* lines, const char* heads) {
    GridInputs inputs;
    inputs.Network = {"10", "100", "5", "6", "10", lines, "4", "8", heads, "3"};
    inputs.PerimeterMaterial = "1";
    inputs.BranchMaterial = "1";
    inputs.KFactor = "5.6";
    return inputs;
}

const SketchNode* Find(const NetworkSketch& sketch, int number) {
    const auto found = std::ranges::find(sketch.Nodes, number, &SketchNode::Number);
    return found != sketch.Nodes.end() ? &*found : nullptr;
}

TEST(NetworkLayout, APlannedTreeIsSketchedWithItsNumbersAndSprinklers) {
    const auto project = NewProject();
    const TreeLayout tree = LayOutTree(SmallTree(), *project);
    const NetworkSketch sketch = SketchOfPlan(tree.Pipes, TreePrintedPart);
    EXPECT_EQ(sketch.Pipes.size(), tree.Pipes.size());
    std::set<int> numbers;
    for (const SketchNode& node : sketch.Nodes) {
        numbers.insert(node.Number);
    }
    EXPECT_EQ(numbers, (std::set<int>{100, 110, 120, 130, 140, 150, 160, 170, 180, 190, 200}));
    EXPECT_EQ(sketch.Nodes.size(), numbers.size());
    for (const int plain : {100, 110, 180}) {
        EXPECT_FALSE(Find(sketch, plain)->Sprinkler) << plain;
    }
    for (const int sprinkler : {120, 130, 140, 150, 160, 170, 190, 200}) {
        EXPECT_TRUE(Find(sketch, sprinkler)->Sprinkler) << sprinkler;
    }
    // The cross main runs down from the lead-in; the left side lies left of it.
    EXPECT_LT(Find(sketch, 100)->Y, Find(sketch, 110)->Y);
    EXPECT_LT(Find(sketch, 110)->Y, Find(sketch, 180)->Y);
    EXPECT_LT(Find(sketch, 120)->X, Find(sketch, 130)->X);
    EXPECT_LT(Find(sketch, 130)->X, Find(sketch, 110)->X);
    EXPECT_GT(Find(sketch, 150)->X, Find(sketch, 140)->X);
    // Eleven numbers of three digits in the picture.
    const NetworkDrawing drawing = DrawNetwork(sketch);
    std::size_t dots = 0;
    for (const int number : numbers) {
        dots += DottedNumber(std::to_string(number), 0, 0).size();
    }
    EXPECT_EQ(drawing.Dots.size(), dots);
}

TEST(NetworkLayout, ThePrintedFormShowsThePartWithinItsLimits) {
    const auto project = NewProject();
    // 16 rows, 25 sprinklers on the left and one on the right of each.
    TreeInputs big = SmallTree();
    big.Network = {"1", "100", "", "150", "10", "32", "10", "8", "10", "1", "0"};
    const TreeLayout tree = LayOutTree(big, *project);
    ASSERT_EQ(tree.Spacing.Rows, 16);
    ASSERT_EQ(tree.Spacing.LeftCount, 25);
    EXPECT_EQ(TreePrintoutLimitMessage(tree.Spacing.LeftCount, tree.Spacing.RightCount,
                                       tree.Spacing.Rows),
              "Tree printout limited to 20 sprinklers per left branch, 15 branches, so not all "
              "of the tree will be displayed here.");
    const NetworkSketch sketch = SketchOfPlan(tree.Pipes, TreePrintedPart);
    // The source, then 20 left sprinklers, the cross main node and one right sprinkler a row.
    EXPECT_EQ(sketch.Nodes.size(), 1u + 15u * 22u);
    EXPECT_EQ(sketch.Pipes.size(), sketch.Nodes.size() - 1); // still one tree
    const auto sprinklers = std::ranges::count_if(sketch.Nodes, &SketchNode::Sprinkler);
    EXPECT_EQ(sprinklers, 15 * 21);
    // Nothing past row 15, nor further out than the 20th sprinkler (8 + 19 spaces of 1).
    for (const SketchNode& node : sketch.Nodes) {
        EXPECT_LE(node.Y, 14 * 10.0);
        EXPECT_GE(node.X, -27.0);
    }
    // Heads are counted where they stand, also when a K of 0 leaves them no sprinklers.
    big.KFactor = "0";
    project->SystemData.DefaultKFactor = 0;
    const NetworkSketch dry = SketchOfPlan(LayOutTree(big, *project).Pipes, TreePrintedPart);
    EXPECT_EQ(dry.Nodes.size(), sketch.Nodes.size());
    EXPECT_EQ(std::ranges::count_if(dry.Nodes, &SketchNode::Sprinkler), 0);
    // The whole tree when there is no limit.
    EXPECT_EQ(SketchOfPlan(tree.Pipes, {100, 100}).Pipes.size(), tree.Pipes.size());

    const GridLayout grid = LayOutGrid(GridOf("16", "41"), *project);
    EXPECT_EQ(GridPrintoutLimitMessage(grid.HeadsPerLine, grid.BranchLines),
              "Grid printout limited to 40 sprinklers per branch, 15 branches, so not all of the "
              "grid will be displayed here.");
    const NetworkSketch gridSketch = SketchOfPlan(grid.Pipes, GridPrintedPart);
    EXPECT_EQ(std::ranges::count_if(gridSketch.Nodes, &SketchNode::Sprinkler), 15 * 40);
    // The feed and the top, 40 branch pipes a line, the sides between the 15 lines.
    EXPECT_EQ(gridSketch.Pipes.size(), 5u + 15u * 40u + 14u * 2u);
    // A small grid is drawn whole: its perimeter closes.
    const GridLayout small = LayOutGrid(GridOf("2", "2"), *project);
    const NetworkSketch smallSketch = SketchOfPlan(small.Pipes, GridPrintedPart);
    EXPECT_EQ(smallSketch.Pipes.size(), small.Pipes.size());
    EXPECT_EQ(smallSketch.Nodes.size(), 12u); // 100 to 210
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
