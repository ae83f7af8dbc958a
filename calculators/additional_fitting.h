#pragma once

// The additional fitting calculator: a manufacturer's pressure loss of a non-standard fitting at
// a given flow turned into the equivalent length of pipe, by Darcy-Weisbach with the Colebrook
// friction factor (from a roughness) or by Hazen-Williams (from a C value).

#include "core/dialogs.h"
#include "core/units.h"

#include <optional>
#include <string>

namespace quench {

enum class FrictionModel { Roughness, CValue };

// The inputs in the units of the calculation.
struct AdditionalFittingInput {
    double HeadLoss = 1;        // psi
    double FlowRate = 100;      // gpm
    double Diameter = 2;        // inch
    double Density = 62.37;     // lb/ft³
    double Viscosity = 1.12444; // lb/ft-h
    double Roughness = 0.002;   // inch
    double CValue = 130;        //
    FrictionModel Model = FrictionModel::Roughness;
};

// Which field a refusal sends the focus to.
enum class AdditionalFittingField { None, Roughness, CValue };

struct AdditionalFittingOutcome {
    bool Calculated = false;      // false: a message stopped the calculation
    std::optional<double> Length; // feet; none when the friction loss is 0
    AdditionalFittingField Focus = AdditionalFittingField::None;
};

inline constexpr const char* ValuesNotPositiveTitle = "Values must be greater than zero";
inline constexpr const char* ValuesNotPositiveText =
    "All values must be greater than zero.  Please try again.";
inline constexpr const char* NoRoughnessText = "You need to enter a value for roughness.";
inline constexpr const char* NoCValueText = "You need to enter a value for C Value.";
inline constexpr const char* InvalidDiameterTitle = "Invalid Pipe Diameter";
inline constexpr const char* InvalidDiameterText =
    "Invalid Diameter entered for given pipe section.  Please check the inputs and try again.";
inline constexpr const char* FrictionFactorFailedText = "i don't know what this error is";
inline constexpr int MaximumColebrookRounds = 50;

// The checks in their order, each showing its message and stopping; then the friction loss of
// the model chosen and the length 100 * head / loss.
AdditionalFittingOutcome CalculateAdditionalFitting(const AdditionalFittingInput& input,
                                                    Dialogs& dialogs);

// The Colebrook friction factor by the loose iteration of the screen (tolerance 0.001 on f);
// nothing when it needs more than 50 rounds.
std::optional<double> ColebrookFrictionFactor(double reynolds, double relativeRoughnessTerm);

// The fields as the screen shows them: head loss psi/kPa, flow gpm/Lpm, diameter inch/mm,
// density lb/ft³/kg/m³, viscosity cP (the same number in mN-s/m²), roughness inch/mm.
struct AdditionalFittingFields {
    MeasureSystem Units = MeasureSystem::US;
    double HeadLoss = 0, FlowRate = 0, Diameter = 0, Density = 0, Viscosity = 0, Roughness = 0,
           CValue = 0;
    FrictionModel Model = FrictionModel::Roughness;
};

// The defaults the screen opens with; the diameter is the current pipe's inner diameter (inches),
// 2 inches when that is 0 (an autosized pipe).
AdditionalFittingFields AdditionalFittingDefaults(MeasureSystem units, double innerDiameter);

// The fields converted to the units of the calculation.
AdditionalFittingInput ToCalculationUnits(const AdditionalFittingFields& fields);

// The result field's text: the length in the length unit shown, "0.0#".
std::string AdditionalLengthText(const std::optional<double>& feet, MeasureSystem units);

} // namespace quench
