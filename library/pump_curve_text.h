#pragma once

// The text of a fitted pump curve as the fire pump screen shows it under its points:
// "Head = 126 + 0.1Q + -2.36E-04Q^2", cut to the degree in use.

#include "library/pump_curve.h"

#include <string>

namespace quench {

// One coefficient: "##0.######" from an absolute value of 1 up, "Scientific" below (a point left
// alone by the whole-number picture is dropped, so that 120 reads "120").
std::string CoefficientText(double coefficient);

// "Head = " a0 " + " a1 "Q + " a2 "Q^2" ... up to the power pointCount - 1 (3 to 5 points). A
// multiplier of Q that prints as "1" is left out, and one that prints as "-1" keeps only its "-".
std::string PumpCurveText(const PumpCoefficientArray& coefficients, int pointCount);

} // namespace quench
