#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// After a converged solve: each device's virtual length is scaled by the ratio of the drop found
// to the drop stated, until they agree within 0.1 psi; a pump or a device without loss becomes a
// near short of length 0. Returns whether any length changed.
bool CheckDevices(RunContext& context, SolverState& state);

} // namespace quench
