#include "solver/solve_matrix.h"

#include "core/formats.h"
#include "solver/build_matrix.h"
#include "solver/flow_imbalance.h"
#include "solver/solver_messages.h"

#include <algorithm>
#include <cmath>

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

// Rows grouped by the column of their first element, so that the rows a pivot column touches are
// found without walking every row below it.
class HeadColumnIndex {
public:
    void Build(const SparseMatrix& matrix, int rows, std::vector<int>& heads,
               std::vector<int>& next) {
        heads_ = &heads;
        next_ = &next;
        heads.assign(static_cast<std::size_t>(rows) + 2, 0);
        next.assign(static_cast<std::size_t>(rows) + 2, 0);
        rows_ = rows;
        for (int row = rows; row >= 1; --row) {
            const int head = matrix.RowHead(row);
            if (head != 0) {
                Add(row, matrix.Element(head).Column);
            }
        }
    }
    void Add(int row, int column) {
        if (column < 1 || column > rows_) {
            return;
        }
        (*next_)[static_cast<std::size_t>(row)] = (*heads_)[static_cast<std::size_t>(column)];
        (*heads_)[static_cast<std::size_t>(column)] = row;
    }
    // Takes the list of rows whose first element is in the column.
    int Take(int column) {
        const int first = (*heads_)[static_cast<std::size_t>(column)];
        (*heads_)[static_cast<std::size_t>(column)] = 0;
        return first;
    }
    int Next(int row) const { return (*next_)[static_cast<std::size_t>(row)]; }

private:
    std::vector<int>* heads_ = nullptr;
    std::vector<int>* next_ = nullptr;
    int rows_ = 0;
};

// Row i less factor × the rest of the pivot row, merged in column order.
void SubtractPivotRow(SparseMatrix& matrix, int row, int pivotRest, double factor) {
    int previous = 0;
    int at = matrix.RowHead(row);
    for (int pivot = pivotRest; pivot != 0; pivot = matrix.Element(pivot).Next) {
        const int column = matrix.Element(pivot).Column;
        const double value = matrix.Element(pivot).Value;
        while (at != 0 && matrix.Element(at).Column < column) {
            previous = at;
            at = matrix.Element(at).Next;
        }
        if (at != 0 && matrix.Element(at).Column == column) {
            matrix.Element(at).Value = matrix.Element(at).Value - factor * value;
            continue;
        }
        const int created = matrix.NewElement(column, -factor * value, at);
        if (previous == 0) {
            matrix.SetRowHead(row, created);
        } else {
            matrix.Element(previous).Next = created;
        }
        previous = created;
    }
}

// Removes the row's first element (the one in the pivot column); a row left empty keeps a zero
// element in its own column as its diagonal.
void DropFirstElement(SparseMatrix& matrix, int row) {
    const int next = matrix.Element(matrix.RowHead(row)).Next;
    if (next != 0) {
        matrix.SetRowHead(row, next);
    } else {
        matrix.SetRowHead(row, matrix.NewElement(row, 0, 0));
    }
}

MatrixOutcome ZeroPivot(RunContext& context, SolverState& state) {
    if (state.Gauge >= 50 || state.RecoveryUsed) {
        context.Stop({MessageStyle::Plain, "", NoSolutionMessage("")});
        return MatrixOutcome::Failed;
    }
    state.RecoveryUsed = true;
    return MatrixOutcome::ZeroPivot;
}

MatrixOutcome Eliminate(RunContext& context, SolverState& state) {
    SparseMatrix& matrix = state.Matrix;
    const int n = state.RowCount;
    HeadColumnIndex index;
    index.Build(matrix, n, state.BucketHeads, state.BucketNext);
    for (int k = 1; k <= n - 1; ++k) {
        int pivot = matrix.RowHead(k);
        while (pivot != 0 && matrix.Element(pivot).Column < k) {
            pivot = matrix.Element(pivot).Next;
        }
        if (pivot == 0 || matrix.Element(pivot).Value == 0) {
            return ZeroPivot(context, state);
        }
        const double pivotValue = matrix.Element(pivot).Value;
        const int rest = matrix.Element(pivot).Next;
        for (int row = index.Take(k); row != 0;) {
            const int following = index.Next(row);
            if (row > k) {
                const double factor = matrix.Element(matrix.RowHead(row)).Value / pivotValue;
                DropFirstElement(matrix, row);
                SubtractPivotRow(matrix, row, rest, factor);
                index.Add(row, matrix.Element(matrix.RowHead(row)).Column);
            }
            row = following;
        }
    }
    return MatrixOutcome::Solved;
}

double& CorrectionAt(SolverState& state, int column) {
    if (column >= static_cast<int>(state.Correction.size())) {
        state.Correction.resize(static_cast<std::size_t>(column) + 1, 0.0);
    }
    return state.Correction[static_cast<std::size_t>(column)];
}

bool IsHmdPlace(const RunContext& context, const SolverState& state, int place) {
    return place <= context.Project.NumberOfNodes &&
           context.Project.NodeRecord[static_cast<std::size_t>(place)].Number == state.HmdNode;
}

// Correction of row k from its diagonal, the known corrections and its right side (the last
// element; a row with its diagonal alone has a right side of 0).
bool SolveRow(SolverState& state, int k) {
    SparseMatrix& matrix = state.Matrix;
    const int head = matrix.RowHead(k);
    const double diagonal = head == 0 ? 0.0 : matrix.Element(head).Value;
    if (diagonal == 0) {
        return false;
    }
    double sum = 0;
    double rightSide = 0;
    for (int at = matrix.Element(head).Next; at != 0; at = matrix.Element(at).Next) {
        const SparseElement& element = matrix.Element(at);
        if (element.Next == 0) {
            rightSide = element.Value;
        } else {
            sum += element.Value * CorrectionAt(state, element.Column);
        }
    }
    CorrectionAt(state, k) = (rightSide - sum) / diagonal;
    return true;
}

double RoundToSixDecimals(double value) {
    return ToNumber(Format(value, "#0.000000"));
}

// Corrections from the last row up; false at a zero diagonal.
bool SubstituteBack(SolverState& state) {
    SparseMatrix& matrix = state.Matrix;
    const int n = state.RowCount;
    const int last = matrix.RowHead(n);
    double& lastCorrection = CorrectionAt(state, n);
    lastCorrection = 0;
    if (last != 0 && matrix.Element(last).Value != 0) {
        const int next = matrix.Element(last).Next;
        const double rightSide = next == 0 ? 0.0 : matrix.Element(next).Value;
        lastCorrection = rightSide / matrix.Element(last).Value;
    }
    for (int k = n - 1; k >= 1; --k) {
        if (!SolveRow(state, k)) {
            return false;
        }
    }
    return true;
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

MatrixOutcome SolveInNodeOrder(RunContext& context, SolverState& state) {
    ++state.NodeOrderSteps;
    const MatrixOutcome eliminated = Eliminate(context, state);
    if (eliminated != MatrixOutcome::Solved) {
        return eliminated;
    }
    if (!SubstituteBack(state)) {
        context.Stop({MessageStyle::Plain, "", NoSolutionMessage("Zero diagonal element.")});
        return MatrixOutcome::Failed;
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
