#pragma once

// The picture of a network that a builder would make, as the "Display Network" window shows and
// prints it: the nodes where they lie, scaled and centred into a drawing area of 6600 by 4000
// units, the pipes as lines and every node's number in the dot font beside it. Nothing here
// touches the pipe rows.

#include "entry/builder_pipes.h"
#include "entry/dot_font.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quench {

inline constexpr int DrawingWidth = 6600;
inline constexpr int DrawingHeight = 4000;

// The printed form shows at most this much of a network; the builders themselves have no limit.
inline constexpr int TreePrintedSprinklers = 20; // on each left and each right branch
inline constexpr int GridPrintedSprinklers = 40; // on each branch line
inline constexpr int PrintedBranches = 15;

// A network to draw: nodes in feet, x to the right and y downwards, and pipes between them.
struct SketchNode {
    int Number = 0;
    double X = 0;
    double Y = 0;
    bool Sprinkler = false;
};

struct SketchPipe {
    std::size_t From = 0; // places in the node list
    std::size_t To = 0;
};

struct NetworkSketch {
    std::vector<SketchNode> Nodes;
    std::vector<SketchPipe> Pipes;

    // Adds a node and returns its place in the list.
    std::size_t Add(int number, double x, double y, bool sprinkler);
    void Connect(std::size_t from, std::size_t to) { Pipes.push_back({from, to}); }
};

// The part of a planned network that the printed form shows: the first branch lines, and on
// each side of a line the sprinklers nearest to its start (a tree's cross main, a grid's left
// side). A pipe is drawn when all of it lies in that part.
struct PrintedPart {
    long long Lines = PrintedBranches;
    long long SprinklersPerSide = TreePrintedSprinklers;
};
inline constexpr PrintedPart TreePrintedPart{PrintedBranches, TreePrintedSprinklers};
inline constexpr PrintedPart GridPrintedPart{PrintedBranches, GridPrintedSprinklers};

// The sketch of a builder's planned pipes: a node for each number at each place (a number that a
// plan gives two places is drawn at both), a sprinkler where the row's K text at that end is not
// "0".
NetworkSketch SketchOfPlan(const std::vector<PlacedPipe>& pipes, const PrintedPart& part);

// A point of the drawing area, in drawing units.
struct PicturePoint {
    int X = 0;
    int Y = 0;

    bool operator==(const PicturePoint&) const = default;
};

struct PictureLine {
    PicturePoint From;
    PicturePoint To;
};

struct PictureNode {
    PicturePoint At;
    bool Sprinkler = false;
};

struct NetworkDrawing {
    std::vector<PictureLine> Lines;
    std::vector<PictureNode> Nodes;
    std::vector<Dot> Dots; // the node numbers, each dot a DotSize block
};

// How feet become drawing units: the same scale both ways, the network's extent centred.
struct PictureScale {
    double Factor = 1;
    double OffsetX = 0;
    double OffsetY = 0;

    PicturePoint Place(double x, double y) const;
};

// The scale that fits the sketch inside the drawing area with room for the numbers round it.
PictureScale FitSketch(const NetworkSketch& sketch);

NetworkDrawing DrawNetwork(const NetworkSketch& sketch);

// The message when a network passes the printed form's limits; empty when it fits.
std::string TreePrintoutLimitMessage(long long leftSprinklers, long long rightSprinklers,
                                     long long branches);
std::string GridPrintoutLimitMessage(long long sprinklersPerBranch, long long branches);

} // namespace quench
