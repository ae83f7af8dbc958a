#include "calculators/additional_fitting.h"

#include "calculators/sprinkler_kfactor.h"
#include "core/formats.h"

#include <cmath>

namespace quench {

namespace {

constexpr double PsiPerFootOfWater = 0.433127;
constexpr double LargestDiameter = 99999;

bool AllPositive(const AdditionalFittingInput& input) {
    return input.HeadLoss > 0 && input.FlowRate > 0 && input.Diameter > 0 && input.Density > 0 &&
           input.Viscosity > 0;
}

// Feet of loss per 100 ft of pipe; nothing when the friction factor does not settle.
std::optional<double> LossPerHundredFeet(const AdditionalFittingInput& input) {
    const double d = input.Diameter;
    const double velocity = 0.4085 * input.FlowRate / (d * d);
    if (input.Model == FrictionModel::CValue) {
        return 4.52 * std::pow(input.FlowRate, 1.85) /
               (std::pow(input.CValue, 1.85) * std::pow(d, 4.87)) * 100 / PsiPerFootOfWater;
    }
    const double roughnessFeet = input.Roughness * 0.0833;
    const double reynolds = velocity * d * input.Density * 300 / input.Viscosity;
    const auto factor = ColebrookFrictionFactor(reynolds, 24 * roughnessFeet / d);
    if (!factor) {
        return std::nullopt;
    }
    return *factor * velocity * velocity * 18.63354037 / d;
}

} // namespace

std::optional<double> ColebrookFrictionFactor(double reynolds, double relativeRoughnessTerm) {
    const double reynoldsTerm = 18.7 / reynolds;
    double factor = 0.01;
    double previous = reynolds;
    int rounds = 0;
    // Written so that a factor that is no number keeps looping into the round limit.
    while (!(std::fabs(factor - previous) <= 0.001)) {
        if (++rounds > MaximumColebrookRounds) {
            return std::nullopt;
        }
        previous = factor;
        const double x =
            1.74 - 2 * std::log10(relativeRoughnessTerm + reynoldsTerm / std::sqrt(previous));
        factor = 1 / (x * x);
    }
    return factor;
}

AdditionalFittingOutcome CalculateAdditionalFitting(const AdditionalFittingInput& input,
                                                    Dialogs& dialogs) {
    AdditionalFittingOutcome outcome;
    if (!AllPositive(input)) {
        dialogs.ShowMessage(MessageStyle::Information, ValuesNotPositiveTitle,
                            ValuesNotPositiveText);
        return outcome;
    }
    if (input.Model == FrictionModel::Roughness && input.Roughness == 0) {
        dialogs.ShowMessage(MessageStyle::Information, "", NoRoughnessText);
        outcome.Focus = AdditionalFittingField::Roughness;
        return outcome;
    }
    if (input.Model == FrictionModel::CValue && input.CValue == 0) {
        dialogs.ShowMessage(MessageStyle::Information, "", NoCValueText);
        outcome.Focus = AdditionalFittingField::CValue;
        return outcome;
    }
    const double head = input.HeadLoss / PsiPerFootOfWater;
    if (input.Diameter >= LargestDiameter || input.Diameter <= 0) {
        dialogs.ShowMessage(MessageStyle::Information, InvalidDiameterTitle, InvalidDiameterText);
        return outcome;
    }
    const auto loss = LossPerHundredFeet(input);
    if (!loss) {
        dialogs.ShowMessage(MessageStyle::Information, "", FrictionFactorFailedText);
        return outcome;
    }
    outcome.Calculated = true;
    if (*loss != 0 && std::isfinite(*loss)) {
        outcome.Length = 100 * head / *loss;
    }
    return outcome;
}

AdditionalFittingFields AdditionalFittingDefaults(MeasureSystem units, double innerDiameter) {
    AdditionalFittingFields fields;
    fields.Units = units;
    fields.CValue = 130;
    fields.Model = FrictionModel::Roughness;
    if (units == MeasureSystem::US) {
        fields.HeadLoss = 1;
        fields.FlowRate = 100;
        fields.Diameter = innerDiameter > 0 ? innerDiameter : 2;
        fields.Density = 62.37;
        fields.Viscosity = 1.12444;
        fields.Roughness = 0.002;
        return fields;
    }
    // The metric defaults are round figures of their own, not conversions of the US ones.
    fields.HeadLoss = 6.985;
    fields.FlowRate = 378.5;
    fields.Diameter =
        innerDiameter > 0 ? RoundTo(ToSI(UnitKind::Fine_Length, innerDiameter), 3) : 63.5;
    fields.Density = 1000;
    fields.Viscosity = 1.1244;
    fields.Roughness = 0.051;
    return fields;
}

AdditionalFittingInput ToCalculationUnits(const AdditionalFittingFields& fields) {
    const MeasureSystem units = fields.Units;
    AdditionalFittingInput input;
    input.HeadLoss = StoredValue(UnitKind::Pressure_Drop, fields.HeadLoss, units);
    input.FlowRate = StoredValue(UnitKind::Volumetric_Flow, fields.FlowRate, units);
    input.Diameter = StoredValue(UnitKind::Fine_Length, fields.Diameter, units);
    input.Density = StoredValue(UnitKind::Density, fields.Density, units);
    // Centipoise on the screen in both systems (one cP is one mN-s/m²).
    input.Viscosity =
        ConvertValue(UnitKind::Dynamic_Viscosity, fields.Viscosity, "cP", "lb/hr-ft").value_or(0);
    input.Roughness = StoredValue(UnitKind::Fine_Length, fields.Roughness, units);
    input.CValue = fields.CValue;
    input.Model = fields.Model;
    return input;
}

std::string AdditionalLengthText(const std::optional<double>& feet, MeasureSystem units) {
    return CalculatorResultText(feet, UnitKind::Length, units);
}

} // namespace quench
