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

// Hand arithmetic: the drop of a C 120 pipe carrying a flow by the program's law
// Q = (c·h)^0.5405 with c = C^1.85·d^4.87/4.52/L, and a sprinkler's flow K·√P.
double FrictionDrop(double flow, double insideDiameter, double length);
double SprinklerFlow(double kFactor, double pressure);

// The largest difference between a posted sprinkler discharge and K·√P at its posted pressure.
double WorstSprinklerLawError(const Project& project);

// The C value of a material of the default library.
double DefaultCValue(int material);

// The posted results against the reference solver in Supply mode at the given inflow pressure.
Agreement CompareWithSupplyReference(const Project& project, double inflowPressure);

// The posted results against the reference solution given.
Agreement CompareWithReference(const Project& project, const ReferenceSolution& reference);

} // namespace quench::testing
