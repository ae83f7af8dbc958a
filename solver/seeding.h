#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// Where the heads come from: as the option "Use Residual Pressure Estimates" says, or from the
// start pressure whatever it says.
enum class Seeding { AsOptions, FromStartPressure };

// Every head from the start value, the supplies (Supply mode) from their given pressures; with
// the option "Use Residual Pressure Estimates" from the estimates of the pipe rows instead.
void SeedHeads(RunContext& context, SolverState& state, Seeding seeding = Seeding::AsOptions);

// The next rung of the start-pressure ladder (9 psi forty times, then 9, 10, 12, 16, ...), and the
// heads seeded again. Nothing above 32000 psi, nor while estimates are in use unless the heads
// are asked to come from the start pressure.
void BumpStartPressure(RunContext& context, SolverState& state,
                       Seeding seeding = Seeding::AsOptions);

// "Update Estimates In Case of Oscillation": every head rebuilt from the pipe sizes at the node,
// and the supply's row given the whole demand at the minimum pressure plus ten percent.
void UpdateEstimates(RunContext& context, SolverState& state);

} // namespace quench
