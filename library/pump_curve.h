#pragma once

// The fire pump curve: the polynomial through 3, 4 or 5 points of (flow, pressure), found by
// Gaussian elimination, its evaluation, and the project's own pump in CalculationData.
//
// The curve is fitted in the unit the points were typed in: psi, or feet of head when the pump's
// flag says so. Where the curve gives a pressure to the hydraulics, feet of head become psi at
// 0.433 psi per foot, the same factor the hydraulics use for elevation head, so that a pump
// lifting water by H feet balances exactly an elevation of H feet.

#include "core/project.h"

#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace quench {

constexpr int MinimumCurvePoints = 3;
constexpr int MaximumCurvePoints = PumpCurvePoints; // 5
constexpr Single UnusedPumpPoint = -10000.0f;       // a point of the project's curve not in use
constexpr double PsiPerFootOfHead = 0.433;

struct CurvePoint {
    double Flow = 0;     // gpm
    double Pressure = 0; // psi or feet of head

    friend bool operator==(const CurvePoint&, const CurvePoint&) = default;
};

// a0 to a4: Head = a0 + a1 Q + a2 Q^2 + a3 Q^3 + a4 Q^4; the unused ones are 0.
using PumpCoefficientArray = std::array<Double, MaximumCurvePoints>;

using GaussMatrix = std::array<std::array<double, MaximumCurvePoints>, MaximumCurvePoints>;
using GaussVector = std::array<double, MaximumCurvePoints>;

// Solves the first `size` rows and columns of matrix x = rightSide by forward elimination and back
// substitution in row order, without exchanging rows. Matrix and right side are overwritten.
// False on a zero pivot or a result that is not a finite number.
bool Gauss(GaussMatrix& matrix, GaussVector& rightSide, int size, GaussVector& solution);

enum class CurveFitStatus {
    Fitted,
    TooFewPoints,   // fewer than three points
    IdenticalFlows, // two points share a flow
    Overflow,       // values so large that the arithmetic fails
};

struct CurveFit {
    CurveFitStatus Status = CurveFitStatus::TooFewPoints;
    PumpCoefficientArray Coefficients{};
    int PointCount = 0; // the degree in use is PointCount - 1
};

// The polynomial of degree n - 1 through all n points, n from 3 to 5 (points after the fifth are
// not taken). The order of the points does not matter.
CurveFit FitPumpCurve(std::span<const CurvePoint> points);

// The words shown when a fit is refused; "" for a fitted curve.
std::string_view CurveFitMessage(CurveFitStatus status);

// a0 + a1 Q + a2 Q^2 + a3 Q^3 + a4 Q^4, the powers raised as 2.0, 3.0 and 4.0.
double EvaluatePumpCurve(const PumpCoefficientArray& coefficients, double flow);

double FeetOfHeadToPsi(double feet);

// True for a number that a pump curve field can hold (-9999 to 9999): a value outside, such as the
// unused mark -10000, NaN or a damaged huge value, is no point.
bool IsCurveValue(double value);

// A stored pair that is a point of a curve: both values curve values, and not the pair (0, 0) that
// a reset project or a record of zeros holds where no point was ever given.
bool IsCurvePoint(double flow, double pressure);

// The points in use of the project's pump, in slot order.
std::vector<CurvePoint> ProjectPumpPoints(const CalculationData& data);

// One slot of the project's curve: a point, or nothing (stored as -10000).
struct CurveSlot {
    bool Used = false;
    CurvePoint Point;
};
using CurveSlotArray = std::array<CurveSlot, MaximumCurvePoints>;

// Puts a curve into the project: the points of the used slots, -10000 in the others, the
// coefficients, PumpDefined (1 when the pressures are feet of head, the value of the screen's
// check box) and PumpSource (the record number of the database pump, or -1 for typed points).
void StoreProjectPump(CalculationData& data, const CurveSlotArray& slots,
                      const PumpCoefficientArray& coefficients, bool feetOfHead, Integer source);

// No curve: every point -10000, every coefficient 0, no source.
void ClearProjectPump(CalculationData& data);

// The project's coefficients as a curve in psi, converted from feet of head where the pump says so.
PumpCoefficientArray ProjectPumpCoefficientsInPsi(const CalculationData& data);

} // namespace quench
