#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// The totals of the accepted solution: flowing sprinklers and flows, each pipe's elevation and
// velocity pressure and friction per foot, the largest velocity, the pressure and flow
// imbalances of the nodes.
void BuildSummary(RunContext& context, SolverState& state);

} // namespace quench
