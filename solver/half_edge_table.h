#pragma once

// The solver's working table: one row per pipe end. A pipe from A to B stands twice, as A to B
// among A's rows and as B to A among B's, so that the rows of a node lie together and one run of
// rows is one node equation. Rows are 1-based like the model's tables.

#include "core/project.h"

#include <vector>

namespace quench {

struct HalfEdge {
    int FromNode = 0;
    int ToNode = 0;
    double KFactor = 0; // on the node's first row only
    double Diameter = 0;
    double Length = 0;
    double FromHead = 0; // psi, elevation included
    double FromElevationHead = 0;
    double FixedFlow = 0; // on the node's first row only
    double ToHead = 0;
    double SprinklerFlow = 0;
    double Residual = 0; // FromHead less FromElevationHead
    double Flow = 0;     // signed, from FromNode to ToNode
    double Slope = 0;    // d(Flow) / d(head difference)
    int Material = 0;

    // Indexes kept beside the row so that no lookup needs a search. Each gives the row that a
    // search of the tables in order would find.
    int Pipe = 0;         // first pipe of CalcPipeRecord joining the two nodes, either way round
    int Reverse = 0;      // the row of the other end of that pipe, 0 when there is none
    int FromPosition = 0; // rows of NodeRecord of the two nodes, 0 when not a node
    int ToPosition = 0;
};

struct HalfEdgeTable {
    std::vector<HalfEdge> Rows; // 1..Count
    int Count = 0;
    int DistinctNodes = 0; // runs of rows with one FromNode

    // By node position in NodeRecord (1-based): the node's first and last row, 0 when it has none.
    std::vector<int> FirstRow;
    std::vector<int> LastRow;
    // By node number (0 to 10000): its first position in NodeRecord, 0 when it is no node.
    std::vector<int> PositionOfNumber;

    HalfEdge& operator[](int row) { return Rows[static_cast<std::size_t>(row)]; }
    const HalfEdge& operator[](int row) const { return Rows[static_cast<std::size_t>(row)]; }

    int PositionOf(int number) const {
        return number >= 0 && number < static_cast<int>(PositionOfNumber.size())
                   ? PositionOfNumber[static_cast<std::size_t>(number)]
                   : 0;
    }
    int FirstRowOf(int number) const {
        const int position = PositionOf(number);
        return position == 0 ? 0 : FirstRow[static_cast<std::size_t>(position)];
    }
    int LastRowOf(int number) const {
        const int position = PositionOf(number);
        return position == 0 ? 0 : LastRow[static_cast<std::size_t>(position)];
    }
};

// The node number a text of CalcPipeRecord stands for ("10000" for the first inflow).
int NodeNumberOf(const std::string& text);

} // namespace quench
