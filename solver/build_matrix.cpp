#include "solver/build_matrix.h"

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
    state.ColumnOfPosition.assign(static_cast<std::size_t>(positions) + 1, 0);
    int column = 0;
    for (int position = 1; position <= positions; ++position) {
        const int first = edges.FirstRow[static_cast<std::size_t>(position)];
        if (first != 0 && !HasFixedHead(state, edges[first].FromNode)) {
            state.ColumnOfPosition[static_cast<std::size_t>(position)] = ++column;
        }
    }
}

int RightHandSideColumn(const SolverState& state) {
    return state.Edges.DistinctNodes + state.EquationExtra + 1;
}

namespace {

void AddToElement(SparseMatrix& matrix, int row, int column, double value) {
    matrix.SetElement(row, column, matrix.GetElement(row, column) + value);
}

int ColumnOf(const SolverState& state, int position) {
    return position == 0 ? 0 : state.ColumnOfPosition[static_cast<std::size_t>(position)];
}

} // namespace

void BuildMatrix(SolverState& state) {
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
