#pragma once

// The closing look at a Demand solution: every flowing sprinkler against what it needs, the larger
// of the minimum residual pressure and the pressure that gives it the required density over its
// area, (density · area / K)². The least supply holds the sprinkler that is worst off exactly at
// its need; when the rounds end elsewhere (sprinklers of other K-factors or areas can need more
// than the one with the lowest pressure) that sprinkler is held and the network solved again.

#include "core/project.h"
#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

struct GoverningSprinkler {
    int Number = 0;              // the node, 0 when no sprinkler flows
    double Pressure = 0;         // psi, its residual in the solution
    double Requirement = 0;      // psi it needs
    bool DensityGoverns = false; // its need comes from the density, not the minimum pressure
};

// The flowing sprinkler with the lowest share of its requirement in the posted results.
GoverningSprinkler FindGoverningSprinkler(const Project& project, double minimumPressure,
                                          double requiredDensity);

// The sprinkler meets its need without a surplus worth another solution: within 0.01 psi, or
// when density governs, within 0.0001 of the density.
bool HoldsItsRequirement(const GoverningSprinkler& sprinkler, double requiredDensity);

// The heads of the state are one solution: flows recomputed from them balance at every node.
// Rounds that lift a node to a new target between solutions leave heads that do not.
bool HeadsAreOneSolution(const RunContext& context, SolverState& state);

} // namespace quench
