#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// Applies the corrections of the last solve to the heads, divided by the damping factor: a node
// whose correction turns sign is cut to 40 percent, an iteration whose average correction grows
// by a quarter is not counted, and past the third iteration a converged solve leaves the heads
// alone. False when the average correction shows divergence (the message is shown and AbortFlag
// set).
bool ApplyCorrections(RunContext& context, SolverState& state);

} // namespace quench
