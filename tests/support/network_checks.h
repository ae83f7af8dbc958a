#pragma once

// Checks of a posted solution: every pipe obeys the friction law and every node balances, and
// the pressures and flows agree with the independent reference solver of the same equations.

#include "core/project.h"
#include "tests/support/reference_solver.h"

#include <string>

namespace quench::testing {

struct Agreement {
    double WorstPressure = 0; // psi, posted residual against the reference
    int WorstPressureNode = 0;
    double WorstFlow = 0; // gpm, posted pipe flow against the reference
    bool Converged = false;
};

// The largest difference between a posted sprinkler discharge and K·√P at its posted pressure.
double WorstSprinklerLawError(const Project& project);

// The C value of a material of the default library.
double DefaultCValue(int material);

// The posted results against the reference solver in Supply mode at the given inflow pressure.
Agreement CompareWithSupplyReference(const Project& project, double inflowPressure);

// The posted results against the reference solution given.
Agreement CompareWithReference(const Project& project, const ReferenceSolution& reference);

} // namespace quench::testing
