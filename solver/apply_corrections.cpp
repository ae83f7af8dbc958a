#include "solver/apply_corrections.h"

#include "solver/build_matrix.h"
#include "solver/solver_messages.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

constexpr double OscillationCut = 0.4;
constexpr double GrowthAllowance = 1.25;
constexpr double DivergenceAfterThirdIteration = 1000000;
constexpr double Divergence = 1E+20;

// Sign memory and the 40 percent cut; returns the mean absolute correction.
double ReviewCorrections(const RunContext& context, SolverState& state) {
    const Project& project = context.Project;
    double sum = 0;
    for (int i = 1; i <= state.RowCount; ++i) {
        double& correction = state.Correction[static_cast<std::size_t>(i)];
        const bool hmdPlace =
            i <= project.NumberOfNodes &&
            project.NodeRecord[static_cast<std::size_t>(i)].Number == state.HmdNode;
        sum += hmdPlace ? 0.0 : std::fabs(correction);
        if (state.NotConverged == 0) {
            continue;
        }
        const double sign = correction < 0 ? -1.0 : 1.0;
        double& lastSign = state.CorrectionSign[static_cast<std::size_t>(i)];
        if (state.Iteration >= 3 && sign != lastSign) {
            correction = OscillationCut * correction;
        }
        if (state.Iteration >= 2) {
            lastSign = sign;
        }
    }
    return state.RowCount == 0 ? 0.0 : std::fabs(sum / state.RowCount);
}

// The damping factor for this step; returns the fraction w of the correction to apply.
double Damp(SolverState& state, double average) {
    if (average < state.LastAverage) {
        if (state.DampingFactor > state.MinimumDamping) {
            --state.DampingFactor;
        }
        if (state.DampingFactor < 2) {
            state.DampingFactor = 2;
        }
    } else if (average > GrowthAllowance * state.LastAverage) {
        --state.Iteration;
    }
    state.LastAverage = average;
    state.ShownDamping = state.DampingFactor;
    // A solve already within tolerance takes the whole correction: a full step for this
    // iteration only, the factor in force stays for the next.
    return state.NotConverged == 0 ? 1.0 : 1.0 / state.DampingFactor;
}

// The heads of both ends of every row, by the columns laid out with the equations; a node
// without a column (a held node) takes no correction.
void UpdateHeads(SolverState& state, double w) {
    HalfEdgeTable& edges = state.Edges;
    if (state.FromColumn.size() != static_cast<std::size_t>(std::max(edges.Count, 0)) + 1) {
        AssignEdgeColumns(state); // columns set without the equations being laid out
    }
    if (state.Correction.empty()) {
        state.Correction.resize(1);
    }
    state.Correction[0] = 0; // column 0 is no column
    const double* const correction = state.Correction.data();
    const int* const from = state.FromColumn.data();
    const int* const to = state.ToColumn.data();
    for (int row = 1; row <= edges.Count; ++row) {
        HalfEdge& edge = edges[row];
        edge.FromHead = edge.FromHead - w * correction[from[row]];
        edge.ToHead = edge.ToHead - w * correction[to[row]];
    }
    if (state.Options.DemandMode && edges.Count > 0) {
        const std::size_t beyond = static_cast<std::size_t>(edges.DistinctNodes) + 1;
        const double extra = beyond < state.Correction.size() ? state.Correction[beyond] : 0.0;
        edges[edges.Count].FixedFlow = edges[edges.Count].FixedFlow - w * extra;
    }
}

} // namespace

bool ApplyCorrections(RunContext& context, SolverState& state) {
    const double average = ReviewCorrections(context, state);
    if (state.NotConverged == 0 && state.Iteration > 3) {
        return true; // within tolerance past the third iteration: the heads stand
    }
    if ((average >= DivergenceAfterThirdIteration && state.Iteration > 3) ||
        average >= Divergence) {
        context.Stop({MessageStyle::Plain, "", CorrectionDivergenceMessage});
        context.Progress.CloseDisplay();
        return false;
    }
    UpdateHeads(state, Damp(state, average));
    return true;
}

} // namespace quench
