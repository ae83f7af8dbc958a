#pragma once

// Pipe autosizing, in Demand mode: between solutions each pipe open to sizing is tested against
// the limits of water velocity and friction loss at the flow it carries. A pipe over a limit
// moves up one library size; a pipe inside them moves down to one size above the smallest that
// still meets them. Pipes of one type group share one size. The network is solved again until no
// size changes.

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// Ten values per pipe, filled once before the passes: length, fitting counts, extra length.
void BuildFittingTable(const Project& project, SolverState& state);

// A pipe the sizing step may change: a library material and no diameter fixed by the user.
bool IsSizable(const CalcPipeRecord& pipe);

// One sizing step over the ungrouped pipes, then the groups, then the rule that no pipe grows
// downstream when it is asked for. Sizes are judged only on a solution within the tolerance.
// True when a diameter moved, or when the solution was not yet fit to judge.
bool SizingStep(RunContext& context, SolverState& state);

// At an accepted solution: each pipe open to sizing that stands over a limit gets its note in
// SizingNotes. False when one of them could still take a larger allowed size.
bool SizesSettled(RunContext& context, SolverState& state);

// The half-edge rows take the lengths of their pipes after sizing.
void RefreshLengths(const Project& project, SolverState& state);

// The velocity (ft/s) and the friction (psi per 100 ft) of a pipe of an inside diameter carrying
// a flow, by the friction law of the solver.
double SizingVelocity(double flow, double insideDiameter);
double SizingFriction(double flow, double insideDiameter, double cFactor);

} // namespace quench
