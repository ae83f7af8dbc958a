#pragma once

#include "library/pump_curve.h"
#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// Before the first solution in Supply mode: the pump curve's boost at the flow the driver chose
// for this pass, at the flow of an earlier solution, or with all the sprinklers at 7 psi.
void ComputePumpBoost(const RunContext& context, SolverState& state);

// The flow nearest `to`, on the way from `from`, at which the first supply lifted by the curve's
// boost keeps a pressure above 0: beyond its run-out a pump curve gives a boost so negative that
// the network would have no water to solve for.
double FlowKeepingSupplyPositive(const PumpCoefficientArray& curve, double supplyPressure,
                                 double from, double to);

// The HMD node of Supply mode: the sprinkler with the lowest residual pressure, its pressure and
// flow (0 at a negative pressure).
void FindLowestResidual(const Project& project, SolverState& state);

// The same search, setting the HMD node only.
void FindLowestResidualNode(const Project& project, SolverState& state);

} // namespace quench
