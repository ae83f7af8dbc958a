#include "calculators/sprinkler_kfactor.h"

#include "core/formats.h"
#include "core/text.h"

#include <cmath>

namespace quench {

namespace {

constexpr const char* ResultPicture = "0.0#";

bool BothGiven(double first, double second) {
    return first > 0 && second > 0;
}

} // namespace

std::optional<double> KFactorOf(double flow, double pressure) {
    if (!BothGiven(flow, pressure)) {
        return std::nullopt;
    }
    return flow / std::sqrt(pressure);
}

std::optional<double> FlowOf(double kFactor, double pressure) {
    if (!BothGiven(kFactor, pressure)) {
        return std::nullopt;
    }
    return kFactor * std::sqrt(pressure);
}

std::optional<double> PressureOf(double kFactor, double flow) {
    if (!BothGiven(kFactor, flow)) {
        return std::nullopt;
    }
    const double ratio = flow / kFactor;
    return ratio * ratio;
}

std::string CalculatorResultText(std::optional<double> usValue, UnitKind kind,
                                 MeasureSystem system) {
    if (!usValue || !std::isfinite(*usValue)) {
        return {};
    }
    return Format(ShownValue(kind, *usValue, system), ResultPicture);
}

KFactorResults CalculateKFactorLines(const KFactorLines& lines) {
    const MeasureSystem units = lines.Units;
    auto stored = [units](UnitKind kind, double shown) { return StoredValue(kind, shown, units); };
    constexpr UnitKind flow = UnitKind::Volumetric_Flow;
    constexpr UnitKind pressure = UnitKind::Pressure_Drop;
    constexpr UnitKind kFactor = UnitKind::K_Factor;

    KFactorResults results;
    results.KFactor = CalculatorResultText(
        KFactorOf(stored(flow, lines.FlowRate), stored(pressure, lines.ResidualPressure)), kFactor,
        units);
    results.Flow = CalculatorResultText(
        FlowOf(stored(kFactor, lines.SecondKFactor), stored(pressure, lines.SecondPressure)), flow,
        units);
    results.Pressure = CalculatorResultText(
        PressureOf(stored(kFactor, lines.ThirdKFactor), stored(flow, lines.ThirdFlow)), pressure,
        units);
    return results;
}

std::string ReturnedValueText(const std::string& resultText) {
    const std::string trimmed = Trim(resultText);
    return Format(trimmed.empty() ? 0.0 : ToNumber(trimmed), ResultPicture);
}

std::optional<double> OpeningValue(const std::string& fieldText) {
    const std::string trimmed = Trim(fieldText);
    if (!IsNumeric(trimmed)) {
        return std::nullopt;
    }
    return ToNumber(trimmed);
}

} // namespace quench
