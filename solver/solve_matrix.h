#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

enum class MatrixOutcome {
    Solved,
    ZeroPivot, // the elimination met a zero pivot: the solve may start again from its set-up
    Failed,    // the run stops: its diagnostic is on the run context, AbortFlag is set
};

// The step's corrections into Correction: eliminated in the fill-reducing order, or in node order
// with no pivoting where that order decides the step; then the convergence test. Sets
// NotConverged, MaximumImbalance and AverageImbalance.
MatrixOutcome SolveMatrix(RunContext& context, SolverState& state);

// The words of a failed elimination.
std::string NoSolutionMessage(const std::string& reason);

// The progress figure of the iteration display, "#0.00%".
std::string ProgressPercentText(double imbalance, double tolerance, float iterationLimit);

} // namespace quench
