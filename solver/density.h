#pragma once

// The density requirement of Demand mode: every flowing sprinkler must discharge at least the
// required density over the area it covers, which asks of it the pressure (density·area / K)².

#include "core/project.h"
#include "solver/solver_state.h"

#include <string>

namespace quench {

constexpr double NoFlowingSprinkler = 9999999;

// A K-factor text that names a sprinkler: a number other than 0, or "Dflt".
bool IsValidKText(const std::string& text);

// The K-factor of such a text: the project's default for "Dflt", else its value.
double KFactorOfText(const Project& project, const std::string& text);

// The lowest density of the flowing sprinklers (flow over area), each node's density kept beside
// it; 9999999 when no sprinkler flows.
double FindMinDensity(const Project& project, SolverState& state);

// The pressure the density asks of the HMD node, seeded before the first solution.
void SeedDensityPressure(const Project& project, SolverState& state);

// The pressure the density asks of the flowing sprinklers, the target following it above the
// minimum pressure.
void UpdateDensityPressure(const Project& project, SolverState& state);

// The sprinkler with the lowest density becomes the node that controls by density.
void SwitchToDensityNode(const Project& project, SolverState& state);

// The density node becomes the HMD node, held at the density pressure.
void ApplyDensityNode(const Project& project, SolverState& state);

} // namespace quench
