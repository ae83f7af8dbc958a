#include "solver/flow_imbalance.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

constexpr double LitresPerGallon = 3.7853;
constexpr double FlowTolerance = 0.01;

} // namespace

double NodeFlowImbalance(const RunContext& context, const SolverState& state, int position) {
    const HalfEdgeTable& edges = state.Edges;
    const auto& node = context.Project.NodeRecord[static_cast<std::size_t>(position)];
    // The supply holds its pressure; the flow it gives is whatever the network takes.
    if (node.Number == FirstInflowNode || position >= static_cast<int>(edges.FirstRow.size())) {
        return -node.FixedFlow;
    }
    // The node's own run of rows holds one row for each pipe end at the node, so each pipe,
    // parallel pipes included, counts exactly once, with the flow the node's equation sees. The
    // flows are summed with their signs: two equal flows into a node add, they never cancel.
    double sprinkler = 0;
    double sum = 0;
    const int first = edges.FirstRow[static_cast<std::size_t>(position)];
    const int last = edges.LastRow[static_cast<std::size_t>(position)];
    for (int row = first; row != 0 && row <= last; ++row) {
        const HalfEdge& edge = edges[row];
        if (std::fabs(edge.SprinklerFlow) > std::fabs(sprinkler)) {
            sprinkler = edge.SprinklerFlow;
        }
        sum -= edge.Flow;
    }
    return sum - sprinkler - node.FixedFlow;
}

double MeasureFlowImbalance(const RunContext& context, SolverState& state) {
    double largest = 0;
    for (int position = 1; position <= context.Project.NumberOfNodes; ++position) {
        const double imbalance = NodeFlowImbalance(context, state, position);
        largest = std::max(largest, std::fabs(imbalance));
    }
    const double factor = context.Project.UnitSystem == 1 ? LitresPerGallon : 1.0;
    if (std::fabs(largest * factor) > FlowTolerance) {
        state.NotConverged = 1;
    }
    return largest;
}

void MeasureFlowImbalanceIfAsked(RunContext& context, SolverState& state) {
    if (!state.Options.UseFlowImbalance) {
        state.CriteriaWord.clear();
        return;
    }
    if (state.NotConverged != 0) {
        state.CriteriaWord = "pressure ";
        return;
    }
    state.CriteriaWord = "flow ";
    if (state.StatusText.rfind("finished meeting pressure", 0) == 0) {
        state.StatusText = "finished meeting flow imbalance criteria";
        context.Progress.SetStatusText(state.StatusText);
    }
    MeasureFlowImbalance(context, state);
}

} // namespace quench
