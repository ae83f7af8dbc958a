#include "solver/copy_results.h"

#include "solver/hydraulics.h"

namespace quench {

int PipeRow(const SolverState& state, int beginNumber, int endNumber) {
    const HalfEdgeTable& edges = state.Edges;
    const int position = edges.PositionOf(beginNumber);
    if (position == 0) {
        return 0;
    }
    const int first = edges.FirstRow[static_cast<std::size_t>(position)];
    const int last = edges.LastRow[static_cast<std::size_t>(position)];
    for (int row = first; row != 0 && row <= last; ++row) {
        if (edges[row].ToNode == endNumber) {
            return row;
        }
    }
    return 0;
}

void CopyResults(Project& project, SolverState& state) {
    HalfEdgeTable& edges = state.Edges;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        auto& node = project.NodeRecord[static_cast<std::size_t>(position)];
        const int row = edges.FirstRowOf(node.Number);
        if (row == 0) {
            continue;
        }
        const HalfEdge& first = edges[row];
        node.WorkPressure = first.FromHead;
        node.Discharge = node.KFactor > 0 ? first.SprinklerFlow : 0.0;
        node.ResidualPressure = first.Residual;
    }
    if (edges.Count > 0) {
        edges[edges.Count].FixedFlow = -edges[edges.Count].Flow;
    }
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        auto& record = project.CalcPipeRecord[static_cast<std::size_t>(pipe)];
        const int row = PipeRow(state, NodeNumberOf(record.BegNode), NodeNumberOf(record.EndNode));
        if (row == 0) {
            continue;
        }
        record.Flow = edges[row].Flow;
        record.Velocity = Velocity(record.Flow, record.InsideDiameter);
    }
}

} // namespace quench
