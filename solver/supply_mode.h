#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// Before the first solution in Supply mode: the pump curve's boost at the flow of an earlier
// solution, the last pump flow, or all the sprinklers at 7 psi.
void ComputePumpBoost(const RunContext& context, SolverState& state);

// The HMD node of Supply mode: the sprinkler with the lowest residual pressure, its pressure and
// flow (0 at a negative pressure).
void FindLowestResidual(const Project& project, SolverState& state);

// The same search, setting the HMD node only.
void FindLowestResidualNode(const Project& project, SolverState& state);

} // namespace quench
