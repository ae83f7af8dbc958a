#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// The device rows of CalcPipeRecord (materials 51 to 54) into the solver's device list, each with
// the loss it must hold: the stated loss, or 0 for the pump and for a device without one.
void CollectDevices(RunContext& context, SolverState& state);

} // namespace quench
