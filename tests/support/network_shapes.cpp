#include "tests/support/network_shapes.h"

namespace quench::testing {

namespace {

constexpr int RiserNode = 1;

void Riser(NetworkBuilder& network, int top, const ShapeOptions& options) {
    network.Pipe(RiserNode, top, options.RiserLength, options.RiserDiameter);
    network.Inflow(RiserNode);
}

void Sprinklers(NetworkBuilder& network, int node, int row, int rows, int place, int places,
                const ShapeOptions& options) {
    const bool flowing =
        (options.FlowingBranchLines == 0 || row >= rows - options.FlowingBranchLines) &&
        (options.FlowingPerLine == 0 || place > places - options.FlowingPerLine);
    if (flowing) {
        network.Sprinkler(node, options.KFactor);
    } else {
        network.Sprinkler(node, std::string("Inact"));
    }
    network.Area(node, options.Area);
}

} // namespace

ShapeOptions Rising() {
    ShapeOptions options;
    options.ElevationPerRow = 1.5;
    return options;
}

ShapeOptions LongMain() {
    ShapeOptions options;
    options.MainDiameter = 8;
    options.RiserDiameter = 8;
    return options;
}

ShapeOptions Meshed() {
    ShapeOptions options;
    options.CrossEvery = 3;
    options.MainDiameter = 3;
    return options;
}

void BuildBranchLine(NetworkBuilder& network) {
    network.Pipe(10, 20, 10, 1);
    network.Pipe(20, 30, 10, 1);
    network.Pipe(30, 40, 10, 1);
    network.Pipe(40, 50, 10, 1);
    for (int node : {20, 30, 40, 50}) {
        network.Sprinkler(node, 5.6);
    }
    network.Inflow(10);
}

int LatticeNode(int row, int column, int columns) {
    return 10 + row * columns + column;
}

void BuildTree(NetworkBuilder& network, int branches, int sprinklers, const ShapeOptions& options) {
    const int columns = sprinklers + 1;
    Riser(network, LatticeNode(0, 0, columns), options);
    for (int row = 0; row < branches; ++row) {
        if (row > 0) {
            network.Pipe(LatticeNode(row - 1, 0, columns), LatticeNode(row, 0, columns),
                         options.Spacing, options.MainDiameter);
        }
        for (int column = 1; column < columns; ++column) {
            network.Pipe(LatticeNode(row, column - 1, columns), LatticeNode(row, column, columns),
                         options.Spacing, options.BranchDiameter);
        }
    }
    for (int row = 0; row < branches; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int node = LatticeNode(row, column, columns);
            network.Elevation(node, options.ElevationPerRow * row);
            if (column > 0) {
                Sprinklers(network, node, row, branches, column, sprinklers, options);
            }
        }
    }
}

void BuildTreeOpenToSizing(NetworkBuilder& network, int branches, int sprinklers,
                           ShapeOptions options) {
    options.FlowingBranchLines = 0;
    options.FlowingPerLine = 0;
    BuildTree(network, branches, sprinklers, options);
    Project& project = network.Model();
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (pipe.Diameter == options.BranchDiameter) {
            pipe.Diameter = 0;
            pipe.DiameterFixed = False;
        }
    }
}

void BuildGrid(NetworkBuilder& network, int rows, int columns, const ShapeOptions& options) {
    Riser(network, LatticeNode(0, 0, columns), options);
    for (int row = 0; row < rows; ++row) {
        for (int column = 1; column < columns; ++column) {
            network.Pipe(LatticeNode(row, column - 1, columns), LatticeNode(row, column, columns),
                         options.Spacing, options.BranchDiameter);
        }
    }
    for (int row = 1; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const bool main = column == 0 || column == columns - 1;
            const bool cross = options.CrossEvery > 0 && column % options.CrossEvery == 0;
            if (main || cross) {
                network.Pipe(LatticeNode(row - 1, column, columns),
                             LatticeNode(row, column, columns), options.Spacing,
                             main ? options.MainDiameter : options.BranchDiameter);
            }
        }
    }
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int node = LatticeNode(row, column, columns);
            network.Elevation(node, options.ElevationPerRow * row);
            if (column > 0 && column < columns - 1) {
                Sprinklers(network, node, row, rows, column, columns - 2, options);
            }
        }
    }
}

void BuildShape(NetworkBuilder& network, bool grid, int rows, int columns,
                const ShapeOptions& options) {
    if (grid) {
        BuildGrid(network, rows, columns, options);
    } else {
        BuildTree(network, rows, columns, options);
    }
}

} // namespace quench::testing
