#include "solver/flow_imbalance.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quench {

namespace {

constexpr double LitresPerGallon = 3.7853;
constexpr double FlowTolerance = 0.01;
constexpr double CancellingFlow = 0.0001;
constexpr int MaximumTouchingRows = 64;

bool IsReverseOfCounted(const HalfEdgeTable& edges, const HalfEdge& row, const int* counted,
                        int countedRows) {
    for (int i = 0; i < countedRows; ++i) {
        const HalfEdge& other = edges[counted[i]];
        if (other.FromNode == row.ToNode && other.ToNode == row.FromNode) {
            return true;
        }
    }
    return false;
}

} // namespace

double NodeFlowImbalance(const RunContext& context, const SolverState& state, int position) {
    const Project& project = context.Project;
    const HalfEdgeTable& edges = state.Edges;
    const auto& node = project.NodeRecord[static_cast<std::size_t>(position)];
    int number = node.Number;
    if (number == FirstInflowNode) {
        number = project.InflowNode;
    }
    // The rows touching the node in table order: its own rows and the other ends of its pipes.
    std::array<int, MaximumTouchingRows> touching{};
    int touchingRows = 0;
    const int own = edges.PositionOf(number);
    if (own != 0 && edges.FirstRow[static_cast<std::size_t>(own)] != 0) {
        for (int row = edges.FirstRow[static_cast<std::size_t>(own)];
             row <= edges.LastRow[static_cast<std::size_t>(own)]; ++row) {
            if (touchingRows + 2 > MaximumTouchingRows) {
                break;
            }
            touching[static_cast<std::size_t>(touchingRows++)] = row;
            const int reverse = edges[row].Reverse;
            if (reverse != 0) {
                touching[static_cast<std::size_t>(touchingRows++)] = reverse;
            }
        }
    }
    std::sort(touching.begin(), touching.begin() + touchingRows);
    const int* end = std::unique(touching.data(), touching.data() + touchingRows);
    touchingRows = static_cast<int>(end - touching.data());

    double sprinkler = 0;
    double sum = 0;
    std::array<int, MaximumTouchingRows> counted{};
    int countedRows = 0;
    for (int i = 0; i < touchingRows; ++i) {
        const HalfEdge& row = edges[touching[static_cast<std::size_t>(i)]];
        if (row.FromNode == number && std::fabs(row.SprinklerFlow) > std::fabs(sprinkler)) {
            sprinkler = row.SprinklerFlow;
        }
        if (IsReverseOfCounted(edges, row, counted.data(), countedRows)) {
            continue;
        }
        counted[static_cast<std::size_t>(countedRows++)] = touching[static_cast<std::size_t>(i)];
        if (std::fabs(std::fabs(sum) - std::fabs(row.Flow)) < CancellingFlow) {
            sum = std::fabs(sum) - std::fabs(row.Flow);
        } else if (row.FromNode == number) {
            sum -= row.Flow;
        } else {
            sum += row.Flow;
        }
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
