#include "solver/solve_matrix.h"

#include "core/formats.h"
#include "solver/build_matrix.h"
#include "solver/flow_imbalance.h"
#include "solver/solver_messages.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace quench {

std::string NoSolutionMessage(const std::string& reason) {
    return "No Solution. " + reason + " Check data for discontinuities.";
}

std::string ProgressPercentText(double imbalance, double tolerance, float iterationLimit) {
    if (!(tolerance < 1)) {
        return "";
    }
    const double figure = 100 - 100 * std::fabs(imbalance - tolerance) / (1 - tolerance);
    if (figure > 100.009 || figure < 0 || iterationLimit <= 10) {
        return "0.00%";
    }
    return Format(figure / 100, "#0.00%");
}

namespace {

MatrixOutcome ZeroPivot(RunContext& context, SolverState& state) {
    if (state.Gauge >= 50 || state.RecoveryUsed) {
        context.Stop({MessageStyle::Plain, "", NoSolutionMessage("")});
        return MatrixOutcome::Failed;
    }
    state.RecoveryUsed = true;
    return MatrixOutcome::ZeroPivot;
}

bool IsHmdPlace(const RunContext& context, const SolverState& state, int place) {
    return place <= context.Project.NumberOfNodes &&
           context.Project.NodeRecord[static_cast<std::size_t>(place)].Number == state.HmdNode;
}

double RoundToSixDecimals(double value) {
    return ToNumber(Format(value, "#0.000000"));
}

// The convergence test on the corrections, from the last row up. A row's index stands for the
// node of that place in the node table when the HMD node is left out of the test.
void TestConvergence(RunContext& context, SolverState& state) {
    const int n = state.RowCount;
    const bool maximumTest = state.Options.UseMaximumTest;
    const double tolerance = state.Options.Tolerance;
    const double lastCorrection = std::fabs(state.Correction[static_cast<std::size_t>(n)]);
    state.NotConverged = 0;
    double sum = lastCorrection;
    state.MaximumImbalance = lastCorrection;
    if (maximumTest && lastCorrection > tolerance) {
        state.NotConverged = 1;
    }
    for (int k = n - 1; k >= 1; --k) {
        const double magnitude = std::fabs(state.Correction[static_cast<std::size_t>(k)]);
        const bool hmdPlace = IsHmdPlace(context, state, k);
        if (maximumTest && magnitude > tolerance && !hmdPlace) {
            state.NotConverged = 1;
        }
        if (!hmdPlace) {
            sum += magnitude;
        }
        if (magnitude > state.MaximumImbalance) {
            state.MaximumImbalance = magnitude;
        }
    }
    state.AverageImbalance = n == 0 ? 0.0 : sum / n;
    double shown = state.MaximumImbalance;
    if (state.Options.UseAverageTest) {
        if (state.AverageImbalance > tolerance) {
            state.NotConverged = 1;
        }
        shown = state.AverageImbalance;
    }
    if (state.ProgressTurn) {
        context.Progress.SetPercentText(
            ProgressPercentText(shown, tolerance, context.IterationLimit));
    }
    state.AverageImbalance = RoundToSixDecimals(state.AverageImbalance);
    state.MaximumImbalance = RoundToSixDecimals(state.MaximumImbalance);
}

// By column of the last node-order step, the column of the same node now (0 for none), the columns
// above the nodes' kept; empty when every column kept its number, none when the right side moved
// (no row can then be taken over).
std::optional<std::vector<int>> RenumberedColumns(const SolverState& state) {
    const std::vector<int>& last = state.NodeOrderColumns;
    const std::vector<int>& now = state.ColumnOfPosition;
    const int rightSide = RightHandSideColumn(state);
    if (last.empty() || state.NodeOrderRightSide != rightSide) {
        return std::nullopt;
    }
    if (last == now) {
        return std::vector<int>{};
    }
    const int lastNodes = *std::max_element(last.begin(), last.end());
    std::vector<int> renumbered(static_cast<std::size_t>(std::max(lastNodes, rightSide)) + 1, 0);
    for (int column = lastNodes + 1; column <= rightSide; ++column) {
        renumbered[static_cast<std::size_t>(column)] = column;
    }
    for (std::size_t position = 1; position < last.size(); ++position) {
        if (last[position] > 0) {
            renumbered[static_cast<std::size_t>(last[position])] =
                position < now.size() ? now[position] : 0;
        }
    }
    return renumbered;
}

MatrixOutcome SolveInNodeOrder(RunContext& context, SolverState& state) {
    ++state.NodeOrderSteps;
    std::optional<std::vector<int>> renumbered = RenumberedColumns(state);
    if (!renumbered) {
        state.NodeOrder.Forget();
        renumbered.emplace();
    }
    state.NodeOrderColumns = state.ColumnOfPosition;
    state.NodeOrderRightSide = RightHandSideColumn(state);
    switch (state.NodeOrder.Solve(state.Matrix, state.RowCount, state.Correction, *renumbered)) {
    case NodeOrderOutcome::ZeroPivot:
        return ZeroPivot(context, state);
    case NodeOrderOutcome::ZeroDiagonal:
        context.Stop({MessageStyle::Plain, "", NoSolutionMessage("Zero diagonal element.")});
        return MatrixOutcome::Failed;
    case NodeOrderOutcome::Solved:
        break;
    }
    return MatrixOutcome::Solved;
}

// Every row has its diagonal and its right side: an element of the node-order rows exists once a
// number other than 0 has been stored in it, even when later additions bring it back to 0.
bool RowsComplete(const SolverState& state) {
    const std::vector<unsigned char>& stored = state.Layout.RightSideStored;
    return state.Elimination.DiagonalsSet() &&
           std::find(stored.begin(), stored.end(), 0) == stored.end();
}

// The ordered elimination takes the step unless the node order's own behaviour decides it: the
// run's first step, a row without its diagonal or its right side, a negligible pivot.
bool SolvedInOrder(SolverState& state) {
    EquationLayout& layout = state.Layout;
    if (!layout.Built) {
        return false;
    }
    layout.Built = false;
    const bool due = state.NodeOrderDue;
    state.NodeOrderDue = false;
    if (due || !RowsComplete(state)) {
        BuildNodeOrderMatrix(state);
        return false;
    }
    if (!state.Elimination.Solve(state.Correction)) {
        BuildNodeOrderMatrix(state);
        return false;
    }
    ++state.OrderedSteps;
    return true;
}

bool AllFinite(const SolverState& state) {
    for (int k = 1; k <= state.RowCount; ++k) {
        if (!std::isfinite(state.Correction[static_cast<std::size_t>(k)])) {
            return false;
        }
    }
    return true;
}

} // namespace

MatrixOutcome SolveMatrix(RunContext& context, SolverState& state) {
    if (state.RowCount < 1) {
        state.Layout.Built = false;
        state.NotConverged = 0;
        state.MaximumImbalance = 0;
        state.AverageImbalance = 0;
        return MatrixOutcome::Solved;
    }
    if (state.Correction.size() <= static_cast<std::size_t>(state.RowCount)) {
        state.Correction.resize(static_cast<std::size_t>(state.RowCount) + 1, 0.0);
    }
    if (!SolvedInOrder(state)) {
        const MatrixOutcome solved = SolveInNodeOrder(context, state);
        if (solved != MatrixOutcome::Solved) {
            return solved;
        }
    }
    TestConvergence(context, state);
    if (!AllFinite(state)) {
        context.Stop({MessageStyle::Plain, "", ResultsOutOfRangeMessage});
        return MatrixOutcome::Failed;
    }
    MeasureFlowImbalanceIfAsked(context, state);
    return MatrixOutcome::Solved;
}

} // namespace quench
