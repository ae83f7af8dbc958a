#pragma once

// Where each half-edge row puts its numbers in the node equations: the places of its diagonal,
// its neighbour and its right side among the values of the ordered elimination. Worked out when
// the half-edge table is built and again when the node held fixed changes, not at every step.

#include <vector>

namespace quench {

struct EquationLayout {
    // What the layout was worked out for.
    long HalfEdgeBuild = -1;
    bool DemandMode = false;
    int HmdNode = 0;
    int InflowNode2 = 0;
    int InflowNode3 = 0;

    // The equations do not stand one row per column with its diagonal (a supply with several
    // pipes in Supply mode, a pipe whose ends are one node): they take the elimination in node
    // order at every step.
    bool NodeOrderOnly = true;
    int RowCount = 0;

    // By half-edge row; -1 for a row that adds nothing to the equations.
    std::vector<int> DiagonalSlot;
    std::vector<int> NeighbourSlot;
    std::vector<int> RightSideSlot;

    // The values hold the equations of this step.
    bool Built = false;
    // By equation row: a right side other than 0 was stored in this step.
    std::vector<unsigned char> RightSideStored;
    std::vector<int> RowOfEdge; // by half-edge row, 0 for none
};

} // namespace quench
