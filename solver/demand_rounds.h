#pragma once

// The outer rounds of Demand mode around the Newton iteration: choosing the HMD node again, the
// re-test of its pressure, the target check, the density loop, the overshoot of the start
// pressure and the closing tests. Each returns the phase where the solve goes on.

#include "solver/run_context.h"
#include "solver/solve_phase.h"
#include "solver/solver_state.h"

namespace quench {

// After each solution leaves the iteration: the count of HMD changes kept within its range.
void CapHmdChanges(SolverState& state);

// After a solution: the HMD node found again; a move sends the solve back to a new pass.
Phase HmdRound(RunContext& context, SolverState& state);

// The HMD node's pressure tested against the highest target seen.
Phase Retest(RunContext& context, SolverState& state);

// After a complete solution: the target against the density pressure and the highest pressure.
Phase TargetCheck(RunContext& context, SolverState& state);

// Every flowing sprinkler at its density, else a new target and a restart.
Phase DensityLoop(RunContext& context, SolverState& state);

// The density loop's new target from the lowest density found.
Phase RaiseForDensity(RunContext& context, SolverState& state);

// An HMD node above its target: a lower start pressure and a new pass.
Phase Overshoot(RunContext& context, SolverState& state);

// The accepted solution's last tests of the minimum pressure and the density.
Phase ClosingTests(RunContext& context, SolverState& state);

// The lowest density of the flowing sprinklers that cover an area, 0 when none flows.
double LowestFlowingDensity(const Project& project);

struct LowestDensity {
    double Density = 0;
    int Number = 0; // the node, 0 when none flows
};
LowestDensity LowestDensityNode(const Project& project);

} // namespace quench
