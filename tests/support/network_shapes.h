#pragma once

// Whole test networks of a given shape and size: a tree (a cross main with dead-end branch
// lines) and a grid (branch lines between two mains, optionally joined at more columns), fed
// through a riser from the inflow node 1. Every branch line node is a sprinkler of K 5.6
// covering 100 ft²; those of the branch lines farthest from the riser (the design area) flow,
// the others are inactive.

#include "tests/support/network_builder.h"

namespace quench::testing {

struct ShapeOptions {
    Single MainDiameter = 4;    // in, Schedule 40
    Single BranchDiameter = 2;  // in
    Single RiserDiameter = 6;   // in
    Single Spacing = 10;        // ft between nodes
    Single RiserLength = 20;    // ft
    Single ElevationPerRow = 0; // ft, rising away from the riser
    double KFactor = 5.6;
    Single Area = 100;          // ft² per sprinkler
    int CrossEvery = 0;         // grid: also join the branch lines at every n-th column
    int FlowingBranchLines = 3; // the farthest lines whose sprinklers flow; 0 for all
    int FlowingPerLine = 8;     // on those lines, the farthest sprinklers that flow; 0 for all
};

// Presets: floors rising 1.5 ft a branch line; an 8" main and riser for the largest shapes; branch
// lines joined every third column with 3" mains.
ShapeOptions Rising();
ShapeOptions LongMain();
ShapeOptions Meshed();

// A branch line of four K 5.6 sprinklers at nodes 20 to 50 on 1" pipe 10 ft apart, fed from node
// 10, the inflow.
void BuildBranchLine(NetworkBuilder& network);

// The node number of a place in the lattice of a shape.
int LatticeNode(int row, int column, int columns);

// A cross main of `branches` nodes with a branch line of `sprinklers` sprinklers at each.
// Pipes: branches + branches * sprinklers, plus the riser.
void BuildTree(NetworkBuilder& network, int branches, int sprinklers,
               const ShapeOptions& options = {});

// The same tree with every sprinkler flowing and every branch line pipe open to sizing (no
// diameter, not fixed): what autosizing is given.
void BuildTreeOpenToSizing(NetworkBuilder& network, int branches, int sprinklers,
                           ShapeOptions options = {});

// `rows` branch lines of `columns` nodes each; mains join the first and last columns.
// Pipes: rows * (columns - 1) + 2 * (rows - 1), more with cross joins, plus the riser.
void BuildGrid(NetworkBuilder& network, int rows, int columns, const ShapeOptions& options = {});

// A grid of rows by columns, or a tree of that many branch lines and sprinklers.
void BuildShape(NetworkBuilder& network, bool grid, int rows, int columns,
                const ShapeOptions& options = {});

} // namespace quench::testing
