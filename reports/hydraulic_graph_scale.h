#pragma once

// The scales of the water supply graph: the top of the pressure axis, the factor of the flow axis
// (whose labels read hundreds of the unit), the flow axis raised to the 1.85 power on which a
// supply curve is a straight line, and the supply curve of a hydrant test.

#include <optional>

namespace quench {

inline constexpr double FlowAxisPower = 1.85;
inline constexpr int FlowGridLines = 20;

// The top of the pressure axis for the largest pressure shown (50, 100, 200, 500, 1000, 1500,
// then the next hundred above).
double PressureAxisTop(double largestPressure);

// The flow axis factor F for the largest flow shown: the axis runs from 0 to 10 and a label
// times F reads hundreds of the unit.
double FlowScaleFactor(double largestFlow);

// Where a flow stands on the flow axis, as a fraction of its length: (Q / (F x 1000))^1.85.
double FlowAxisFraction(double flow, double factor);

// The place of grid line i (1 to 20) as a fraction of the axis, (i x 0.05)^1.85, and its label
// i / 2.
double FlowGridFraction(int line);
double FlowGridLabel(int line);

// P(Q) = S - k x Q^1.85 with k = (S - R) / Qt^1.85, of a hydrant test in US units.
struct SupplyCurve {
    double StaticPressure = 0;
    double Coefficient = 0;

    double Pressure(double flow) const;
    // The flow at which the pressure falls to 0: exp(ln(S / k) / 1.85) with e taken as
    // 2.71828; none when the curve never falls to 0 (k of 0).
    std::optional<double> FlowAtNoPressure() const;
};

// The curve of a test; none when the test flow is 0 (nothing to draw).
std::optional<SupplyCurve> SupplyCurveOf(double staticPressure, double residualPressure,
                                         double testFlow);

// The straight piece drawn on the chart: from (0, S) to where the curve meets 0, or, when that
// lies beyond the axis, to the axis end and the pressure there.
struct CurvePiece {
    double Flow1 = 0, Pressure1 = 0, Flow2 = 0, Pressure2 = 0;
};
CurvePiece ChartPiece(const SupplyCurve& curve, double axisEndFlow);

} // namespace quench
