#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

// The mode of a run: Supply when its option is on (the two options exclude each other on the
// screen; a run may leave the Demand flag set beside it).
inline bool IsSupplyMode(const CalculationData& data) {
    return data.SupplyMode != 0;
}

// The minimum density a run must meet: 0 in Supply mode; otherwise the Calculation screen's
// density (current) or the general project data's.
double RequiredDensity(const Project& project, bool current);

// The settings of CalculationData into the solver: target pressure, limits, damping, supplies,
// tolerance, mode, the C values of the materials and the sizing bounds.
void LoadCalculationOptions(const RunContext& context, SolverState& state);

} // namespace quench
