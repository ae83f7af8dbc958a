#include "reports/hydraulic_graph_scale.h"

#include <cmath>

namespace quench {

double PressureAxisTop(double largestPressure) {
    constexpr double steps[][2] = {{50, 50},   {100, 100},   {200, 200},
                                   {500, 500}, {1000, 1000}, {1500, 1500}};
    for (const auto& [below, top] : steps) {
        if (largestPressure < below) {
            return top;
        }
    }
    return std::floor(largestPressure / 100) * 100 + 100;
}

double FlowScaleFactor(double largestFlow) {
    if (largestFlow < 100) {
        return 0.1;
    }
    if (largestFlow < 200) {
        return 0.2;
    }
    if (largestFlow < 1000) {
        return 1;
    }
    if (largestFlow < 10000) {
        return std::floor(largestFlow / 1000) + 1;
    }
    constexpr double steps[][2] = {
        {20000, 20}, {50000, 50}, {100000, 100}, {200000, 200}, {500000, 500}};
    for (const auto& [below, factor] : steps) {
        if (largestFlow < below) {
            return factor;
        }
    }
    return 1000;
}

double FlowAxisFraction(double flow, double factor) {
    return std::pow(flow / (factor * 100 * 10), FlowAxisPower);
}

double FlowGridFraction(int line) {
    return std::pow(line * 0.05, FlowAxisPower);
}

double FlowGridLabel(int line) {
    return line / 2.0;
}

double SupplyCurve::Pressure(double flow) const {
    return StaticPressure - Coefficient * std::pow(flow, FlowAxisPower);
}

std::optional<double> SupplyCurve::FlowAtNoPressure() const {
    if (!(Coefficient > 0) || !(StaticPressure > 0)) {
        return std::nullopt;
    }
    return std::pow(2.71828, std::log(StaticPressure / Coefficient) / FlowAxisPower);
}

std::optional<SupplyCurve> SupplyCurveOf(double staticPressure, double residualPressure,
                                         double testFlow) {
    if (!(testFlow > 0)) {
        return std::nullopt;
    }
    return SupplyCurve{staticPressure,
                       (staticPressure - residualPressure) / std::pow(testFlow, FlowAxisPower)};
}

CurvePiece ChartPiece(const SupplyCurve& curve, double axisEndFlow) {
    CurvePiece piece{0, curve.StaticPressure, axisEndFlow, 0};
    const auto noPressure = curve.FlowAtNoPressure();
    if (noPressure && *noPressure <= axisEndFlow) {
        piece.Flow2 = *noPressure;
    } else {
        piece.Pressure2 = curve.Pressure(axisEndFlow);
    }
    return piece;
}

} // namespace quench
