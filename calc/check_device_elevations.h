#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// Both nodes of each device stand at the same elevation; the first device that does not stops
// the run.
void CheckDeviceElevations(RunContext& context, const SolverState& state);

} // namespace quench
