#include "entry/pump_point_units.h"

#include "core/formats.h"
#include "library/pump_curve_text.h"

#include <cmath>

namespace quench {

UnitKind PumpPressureKind(bool feetOfHead) {
    return feetOfHead ? UnitKind::Length : UnitKind::Pressure_Drop;
}

std::string ShownPumpText(UnitKind kind, std::string_view held, MeasureSystem system) {
    if (system == MeasureSystem::US || !IsNumeric(held)) {
        return std::string(held);
    }
    std::string shown = Format(ToSI(kind, ToNumber(held)), "##0.###");
    if (shown.ends_with('.')) {
        shown.pop_back(); // a whole number shows without its point
    }
    return shown == "-0" ? "0" : shown;
}

std::string HeldPumpText(UnitKind kind, std::string_view shown, MeasureSystem system) {
    if (system == MeasureSystem::US || !IsNumeric(shown)) {
        return std::string(shown);
    }
    return NumberText(FromSI(kind, ToNumber(shown)));
}

std::vector<CurvePoint> ShownPumpPoints(const std::vector<CurvePoint>& points, bool feetOfHead,
                                        MeasureSystem system) {
    std::vector<CurvePoint> shown;
    shown.reserve(points.size());
    for (const CurvePoint& point : points) {
        shown.push_back({ShownValue(UnitKind::Volumetric_Flow, point.Flow, system),
                         ShownValue(PumpPressureKind(feetOfHead), point.Pressure, system)});
    }
    return shown;
}

// P'(q') = b P(q' / a) with q' = a q and P' = b P: the k-th coefficient becomes b a_k / a^k.
PumpCoefficientArray ShownPumpCoefficients(const PumpCoefficientArray& coefficients,
                                           bool feetOfHead, MeasureSystem system) {
    const double flowFactor = ShownValue(UnitKind::Volumetric_Flow, 1.0, system);
    const double pressureFactor = ShownValue(PumpPressureKind(feetOfHead), 1.0, system);
    PumpCoefficientArray shown{};
    for (std::size_t power = 0; power < shown.size(); ++power) {
        shown[power] =
            pressureFactor * coefficients[power] / std::pow(flowFactor, static_cast<double>(power));
    }
    return shown;
}

std::string ShownPumpCurveText(const PumpCoefficientArray& coefficients, int pointCount,
                               bool feetOfHead, MeasureSystem system) {
    return PumpCurveText(ShownPumpCoefficients(coefficients, feetOfHead, system), pointCount);
}

std::string PumpFlowUnit(MeasureSystem system) {
    return std::string(UnitWord(UnitKind::Volumetric_Flow, system));
}

std::string PumpPressureUnit(bool feetOfHead, MeasureSystem system) {
    return std::string(UnitWord(PumpPressureKind(feetOfHead), system));
}

} // namespace quench
