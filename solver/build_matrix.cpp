#include "solver/build_matrix.h"

#include <algorithm>
#include <cmath>

namespace quench {

bool HasFixedHead(const SolverState& state, int number) {
    const SolverOptions& options = state.Options;
    if (options.DemandMode) {
        return number == state.HmdNode;
    }
    return number == FirstInflowNode ||
           (options.InflowNode2 != 0 && number == options.InflowNode2) ||
           (options.InflowNode3 != 0 && number == options.InflowNode3);
}

void AssignColumns(SolverState& state) {
    const HalfEdgeTable& edges = state.Edges;
    const int positions = static_cast<int>(edges.FirstRow.size()) - 1;
    state.ColumnOfPosition.assign(static_cast<std::size_t>(std::max(positions, 0)) + 1, 0);
    int column = 0;
    for (int position = 1; position <= positions; ++position) {
        const int first = edges.FirstRow[static_cast<std::size_t>(position)];
        if (first != 0 && !HasFixedHead(state, edges[first].FromNode)) {
            state.ColumnOfPosition[static_cast<std::size_t>(position)] = ++column;
        }
    }
    AssignEdgeColumns(state);
}

void AssignEdgeColumns(SolverState& state) {
    const HalfEdgeTable& edges = state.Edges;
    const auto columnOf = [&state](int position) {
        return position == 0 ? 0 : state.ColumnOfPosition[static_cast<std::size_t>(position)];
    };
    const std::size_t rows = static_cast<std::size_t>(std::max(edges.Count, 0)) + 1;
    state.FromColumn.assign(rows, 0);
    state.ToColumn.assign(rows, 0);
    for (int row = 1; row <= edges.Count; ++row) {
        state.FromColumn[static_cast<std::size_t>(row)] = columnOf(edges[row].FromPosition);
        state.ToColumn[static_cast<std::size_t>(row)] = columnOf(edges[row].ToPosition);
    }
}

int RightHandSideColumn(const SolverState& state) {
    return state.Edges.DistinctNodes + state.EquationExtra + 1;
}

namespace {

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

int ColumnOf(const SolverState& state, int position) {
    return position == 0 ? 0 : state.ColumnOfPosition[At(position)];
}

// The row, diagonal column and neighbour column of one half-edge in the equations.
struct EquationPlace {
    int Edge = 0;
    int Row = 0;
    int Diagonal = 0;
    int Neighbour = 0;
};

// The places of every half-edge that adds to the equations, in the order the equations are
// built: rows by runs of one node, the held node's rows left out.
std::vector<EquationPlace> EquationPlaces(const SolverState& state, int& rows) {
    const HalfEdgeTable& edges = state.Edges;
    const bool demand = state.Options.DemandMode;
    std::vector<EquationPlace> places;
    int row = 1;
    for (int at = 1; at <= edges.Count; ++at) {
        const HalfEdge& edge = edges[at];
        if (demand && edge.FromNode == state.HmdNode) {
            continue;
        }
        if (!demand && edge.FromNode == FirstInflowNode) {
            --row;
            continue;
        }
        if (HasFixedHead(state, edge.FromNode)) {
            continue;
        }
        const bool neighbour = demand || edge.ToNode != FirstInflowNode;
        places.push_back(EquationPlace{at, row, ColumnOf(state, edge.FromPosition),
                                       neighbour ? ColumnOf(state, edge.ToPosition) : 0});
        if (demand && at == edges.Count) {
            break;
        }
        if (at < edges.Count && edges[at + 1].FromNode != edge.FromNode) {
            ++row;
        }
    }
    rows = row;
    return places;
}

// One row per column with the diagonal in its own column, as the ordered elimination needs.
bool SquareEquations(const SolverState& state, const std::vector<EquationPlace>& places, int rows) {
    const int columns =
        state.ColumnOfPosition.empty()
            ? 0
            : *std::max_element(state.ColumnOfPosition.begin(), state.ColumnOfPosition.end());
    if (columns != rows || rows < 1) {
        return false;
    }
    return std::all_of(places.begin(), places.end(), [rows](const EquationPlace& place) {
        return place.Row >= 1 && place.Row <= rows && place.Diagonal == place.Row &&
               place.Neighbour >= 0 && place.Neighbour <= rows && place.Neighbour != place.Row;
    });
}

bool LayoutIsCurrent(const SolverState& state) {
    const EquationLayout& layout = state.Layout;
    const SolverOptions& options = state.Options;
    return layout.HalfEdgeBuild == state.HalfEdgeBuilds &&
           layout.DemandMode == options.DemandMode &&
           (!options.DemandMode || layout.HmdNode == state.HmdNode) &&
           layout.InflowNode2 == options.InflowNode2 && layout.InflowNode3 == options.InflowNode3;
}

void LayOutEquations(SolverState& state) {
    EquationLayout& layout = state.Layout;
    layout.HalfEdgeBuild = state.HalfEdgeBuilds;
    layout.DemandMode = state.Options.DemandMode;
    layout.HmdNode = state.HmdNode;
    layout.InflowNode2 = state.Options.InflowNode2;
    layout.InflowNode3 = state.Options.InflowNode3;
    AssignColumns(state);
    int rows = 0;
    const std::vector<EquationPlace> places = EquationPlaces(state, rows);
    layout.RowCount = rows;
    layout.NodeOrderOnly = !SquareEquations(state, places, rows);
    const std::size_t size = At(state.Edges.Count) + 1;
    layout.DiagonalSlot.assign(size, -1);
    layout.NeighbourSlot.assign(size, -1);
    layout.RightSideSlot.assign(size, -1);
    layout.RowOfEdge.assign(size, 0);
    layout.RightSideStored.assign(At(rows) + 1, 1);
    if (layout.NodeOrderOnly) {
        return;
    }
    std::vector<std::pair<int, int>> pattern;
    pattern.reserve(places.size());
    for (const EquationPlace& place : places) {
        if (place.Neighbour != 0) {
            pattern.emplace_back(place.Row, place.Neighbour);
        }
    }
    OrderedElimination& elimination = state.Elimination;
    elimination.Analyse(rows, pattern);
    for (const EquationPlace& place : places) {
        layout.DiagonalSlot[At(place.Edge)] = elimination.DiagonalSlot(place.Row);
        layout.NeighbourSlot[At(place.Edge)] =
            place.Neighbour == 0 ? -1 : elimination.Slot(place.Row, place.Neighbour);
        layout.RightSideSlot[At(place.Edge)] = elimination.RightSideSlot(place.Row);
        layout.RowOfEdge[At(place.Edge)] = place.Row;
    }
}

void AddToElement(SparseMatrix& matrix, int row, int column, double value) {
    matrix.SetElement(row, column, matrix.GetElement(row, column) + value);
}

} // namespace

void BuildMatrix(SolverState& state) {
    const HalfEdgeTable& edges = state.Edges;
    const bool demand = state.Options.DemandMode;
    state.EquationExtra = demand ? 1 : 0;
    if (!LayoutIsCurrent(state)) {
        LayOutEquations(state);
    }
    EquationLayout& layout = state.Layout;
    if (layout.NodeOrderOnly) {
        layout.Built = false;
        BuildNodeOrderMatrix(state);
        return;
    }
    state.Elimination.ClearValues();
    double* const values = state.Elimination.Values().data();
    const int* const diagonals = layout.DiagonalSlot.data();
    const int* const neighbours = layout.NeighbourSlot.data();
    const int* const rightSides = layout.RightSideSlot.data();
    const int* const rowOf = layout.RowOfEdge.data();
    unsigned char* const stored = layout.RightSideStored.data();
    std::fill(layout.RightSideStored.begin() + 1, layout.RightSideStored.end(), 0);
    double total = demand ? state.HmdFlow : 0.0;
    for (int at = 1; at <= edges.Count; ++at) {
        const int diagonal = diagonals[at];
        if (diagonal < 0) {
            continue;
        }
        const HalfEdge& edge = edges[at];
        const double slope = std::fabs(edge.Slope);
        values[diagonal] += slope;
        if (neighbours[at] >= 0) {
            values[neighbours[at]] = -slope;
        }
        double& rightSide = values[rightSides[at]];
        if (demand && at == edges.Count) {
            rightSide = edge.Flow - total;
            stored[rowOf[at]] |= rightSide != 0;
            break;
        }
        total += edge.SprinklerFlow + edge.FixedFlow;
        rightSide += edge.Flow + edge.FixedFlow + edge.SprinklerFlow;
        stored[rowOf[at]] |= rightSide != 0;
    }
    state.RowCount = layout.RowCount;
    layout.Built = true;
}

void BuildNodeOrderMatrix(SolverState& state) {
    const HalfEdgeTable& edges = state.Edges;
    const bool demand = state.Options.DemandMode;
    state.EquationExtra = demand ? 1 : 0;
    AssignColumns(state);
    const int rightSide = RightHandSideColumn(state);
    SparseMatrix& matrix = state.Matrix;
    matrix.Clear(matrix.RowCapacity());
    int row = 1;
    double total = demand ? state.HmdFlow : 0.0;
    for (int at = 1; at <= edges.Count; ++at) {
        const HalfEdge& edge = edges[at];
        if (demand && edge.FromNode == state.HmdNode) {
            continue;
        }
        if (!demand && edge.FromNode == FirstInflowNode) {
            --row;
            continue;
        }
        if (HasFixedHead(state, edge.FromNode)) {
            continue; // a second or third supply
        }
        const double slope = std::fabs(edge.Slope);
        AddToElement(matrix, row, ColumnOf(state, edge.FromPosition), slope);
        if (demand || edge.ToNode != FirstInflowNode) {
            const int neighbour = ColumnOf(state, edge.ToPosition);
            if (neighbour != 0) {
                matrix.SetElement(row, neighbour, -slope);
            }
        }
        if (demand && at == edges.Count) {
            matrix.SetElement(row, rightSide, edge.Flow - total);
            break;
        }
        total += edge.SprinklerFlow + edge.FixedFlow;
        AddToElement(matrix, row, rightSide, edge.Flow + edge.FixedFlow + edge.SprinklerFlow);
        if (at < edges.Count && edges[at + 1].FromNode != edge.FromNode) {
            ++row;
        }
    }
    state.RowCount = row;
}

} // namespace quench
