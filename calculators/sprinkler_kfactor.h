#pragma once

// The sprinkler K-factor calculator: Q = K * sqrt(P) solved for whichever of the three values the
// user lacks, on three independent lines. Flows are in gpm, pressures in psi; a line with an input
// of 0 (or below) has no result, and its field is left empty.

#include "core/units.h"

#include <optional>
#include <string>

namespace quench {

// Line 1: K = Q / sqrt(P).
std::optional<double> KFactorOf(double flow, double pressure);
// Line 2: Q = K * sqrt(P).
std::optional<double> FlowOf(double kFactor, double pressure);
// Line 3: P = (Q / K)^2.
std::optional<double> PressureOf(double kFactor, double flow);

// The three lines as the screen holds them: every value in the unit shown in `Units`.
struct KFactorLines {
    MeasureSystem Units = MeasureSystem::US;
    double FlowRate = 0, ResidualPressure = 0; // line 1
    double SecondKFactor = 0, SecondPressure = 0;
    double ThirdKFactor = 0, ThirdFlow = 0;
};

// The texts of the three result fields, in the units shown, formatted "0.0#"; empty where the
// line has no result.
struct KFactorResults {
    std::string KFactor;
    std::string Flow;
    std::string Pressure;
};

KFactorResults CalculateKFactorLines(const KFactorLines& lines);

// A result for a field: the US value shown in the system's unit of its kind through "0.0#",
// or empty when there is none.
std::string CalculatorResultText(std::optional<double> usValue, UnitKind kind,
                                 MeasureSystem system);

// The text "Close" writes back to the field that opened the calculator: the result, or "0.0"
// when the result field is empty, formatted "0.0#".
std::string ReturnedValueText(const std::string& resultText);

// A field's text taken as an input when a calculator opens: the K-factor words "Dflt" and
// "Value" are no number and give nothing.
std::optional<double> OpeningValue(const std::string& fieldText);

} // namespace quench
