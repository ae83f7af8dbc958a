#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// The damped Newton iteration on the node heads and the outer rounds around it, from the
// prepared tables (NodeRecord, CalcPipeRecord, the device list in the state) to an accepted
// solution copied into the tables with its summary. A failure shows its message and sets
// AbortFlag; Cancel leaves with CancelRequested set. Nothing is returned.
void SolveNetwork(RunContext& context, SolverState& state);

} // namespace quench
