#pragma once

#include "core/project.h"
#include "solver/solver_state.h"

namespace quench {

constexpr double NoFlowingSprinkler = 9999999;

// The lowest density of the flowing sprinklers (flow over area), each node's density kept beside
// it; 9999999 when no sprinkler flows.
double FindMinDensity(const Project& project, SolverState& state);

} // namespace quench
