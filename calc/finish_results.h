#pragma once

#include "calc/pump.h"
#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// After the solve: the pump inlet and boost, the summary of CalculationData, the supply's
// pressure and flow, and the result rows of the reports, one per pipe in the direction of flow
// under its upstream node, the inflow pipe first. A stop sets AbortFlag. A pump curve that asks
// for another pass leaves before the rows are written.
PumpStep FinishResults(RunContext& context, const SolverState& state, PumpPasses& pump);

} // namespace quench
