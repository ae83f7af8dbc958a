#pragma once

// The rows that the tree and grid builders make. A builder first plans its pipes, each with its
// place in the drawing, without touching the table; the same plan is drawn by "Display Network"
// and written by the build, so the preview shows exactly the rows a build writes.

#include "core/project.h"

#include <string>
#include <vector>

namespace quench {

// What a planned pipe is in the layout.
enum class BuilderPipeKind {
    Feed,      // the lead-in of a tree, the feed of a grid
    CrossMain, // a piece of a tree's cross main between two rows
    Branch,    // a pipe of a branch line
    Perimeter, // a pipe of a grid's perimeter (top and sides)
};

// A point of the drawing in the length unit of the builder's inputs. X grows to the right, Y
// grows away from the source: down a tree's cross main, down a grid's sides. The source end of
// the feed lies at a negative Y.
struct LayoutPoint {
    double X = 0;
    double Y = 0;

    bool operator==(const LayoutPoint&) const = default;
};

// One row as the build will write it (US units, as stored), with its place in the drawing.
struct PlacedPipe {
    PipeRecord Row;
    BuilderPipeKind Kind = BuilderPipeKind::Branch;
    int Line = 0; // the tree row or grid branch line, 1-based; 0 for the feed and top side
    LayoutPoint Begin;
    LayoutPoint End;
};

// The pipe data of one kind of builder pipe, in US units.
struct BuilderPipeData {
    Integer Material = 0;
    Integer TypeGroup = 0;
    Single Diameter = 0;
};

// The node data a builder gives every node it makes, in US units. KFactor is the stored text.
struct BuilderNodeData {
    std::string KFactor;
    Single Elevation = 0;
    Single SprinklerArea = 0;
    std::string AreaGroup;
};

// A branch pipe from `node` to node + increment, which `node` becomes: the branch data, both ends
// sprinklers with the node data. The row is cleared first, as an empty row of the table.
PlacedPipe& AddBranchPipe(std::vector<PlacedPipe>& pipes, const Project& project, long long& node,
                          long long increment, const BuilderPipeData& pipe,
                          const BuilderNodeData& nodes, Single length);

// A cross main (or perimeter) pipe from `begin` to `end`: both K-factors "0", no sprinkler
// areas, the elevation and group of the node data.
PlacedPipe& AddCrossPipe(std::vector<PlacedPipe>& pipes, const Project& project, long long begin,
                         long long end, const BuilderPipeData& pipe, const BuilderNodeData& nodes,
                         Single length);

// Sets the fitting counters and text of a row to one fitting of a kind (3 is a tee).
void SetOneFitting(PipeRecord& row, int kind);

constexpr int ElbowFitting = 1;
constexpr int TeeFitting = 3;

// The most pipes a builder plans; a layout of more is refused for room before it is planned.
constexpr long long BuilderPlanLimit = 10LL * MaxPipes;

// The fixed length of a tree's lead-in and a grid's feed, in feet.
constexpr Single FeedLength = 10;

} // namespace quench
