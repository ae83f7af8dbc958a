#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// The flow balance of the node at a position of NodeRecord: the flow into it less its sprinkler
// and fixed flow, each pipe counted once.
double NodeFlowImbalance(const RunContext& context, const SolverState& state, int position);

// The largest node imbalance; above 0.01 (gpm, or L/min in a metric project) NotConverged is set.
double MeasureFlowImbalance(const RunContext& context, SolverState& state);

// After the back substitution: with the option "Converge to 0.01 flow imbalance" on and the
// pressures converged, measure the flows too; sets the word of the status line.
void MeasureFlowImbalanceIfAsked(RunContext& context, SolverState& state);

} // namespace quench
