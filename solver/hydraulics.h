#pragma once

// The hydraulic formulas, all in US units: flow in gpm, pressure in psi, length in feet,
// diameter in inches. The constants are fixed decimals; none is derived from another.

#include "core/project.h"
#include "solver/solver_state.h"

namespace quench {

constexpr double FlowExponent = 0.5405;  // the inverse of the friction law's 1.85
constexpr double SlopeExponent = 0.4595; // its complement
constexpr double CFactorExponent = 1.85;
constexpr double DiameterExponent = 4.87;
constexpr double ConductanceDivisor = 4.52;
constexpr double ElevationHeadPerFoot = 0.433;     // psi per foot of elevation
constexpr double SeedingHeadPerFoot = 0.432900433; // only where estimates are rebuilt
constexpr double SmallestHeadDifference = 1E-06;
constexpr double ZeroLengthDivisor = 0.0001;
constexpr double VelocityFactor = 0.4085;
constexpr double VelocityPressureFactor = 0.001123;
constexpr double DeviceDiameter = 2.067;
constexpr double DeviceStartLength = 100;
constexpr Integer DeviceCValue = 120;

inline bool IsDeviceCode(int material) {
    return material >= MaterialMeter && material <= MaterialFirePump;
}

// C^1.85 × d^4.87 / 4.52 / L.
double PipeConductance(double cFactor, double diameter, double length);

// ft/s from gpm and the inside diameter; 0 for no diameter.
double Velocity(double flow, double insideDiameter);

// psi, always positive.
double VelocityPressure(double flow, double insideDiameter);

// The conductance of every half-edge row: pipes from the inside diameter of their pipe, devices
// from the row's virtual diameter with a zero length taken as 0.0001.
void ComputeConductances(const Project& project, SolverState& state);

// Flow and slope of every row from the head difference, and the residual pressure and sprinkler
// flow of its node. Rows into the supply carry no water back into it.
void ComputeFlows(SolverState& state);

// Flow and slope of one row from its heads and conductance.
void ComputeRowFlow(HalfEdge& row, double conductance);

} // namespace quench
