#pragma once

// What an input field takes: the limits of a numeric field (held in US units, converted to the
// unit on screen at the moment of use) and the length of a text field, one record per kind of
// field, and the status line texts that tell the user the range and the units.

#include "core/types.h"
#include "core/units.h"

#include <optional>
#include <string>
#include <string_view>

namespace quench {

struct NumberAttribute {
    Integer Flags = 0;
    Single Min = 0;
    Single Max = 0;
    Integer Decimals = 0;
};

struct TextAttribute {
    Integer Flags = 0;
    Integer MaxLength = 0;
};

// Flags of a number attribute: the range shown without signs, and shown as a percentage.
constexpr Integer UnsignedRangeFlag = 1;
constexpr Integer PercentFlag = 4;

enum class NumberFieldKind {
    NodeNumber,
    KFactor,
    Elevation,
    PressureEstimate,
    SprinklerArea,
    NonSprinklerFlow,
    MaterialNumber,
    TypeGroup,
    DeviceLoss,
    Diameter,
    Length,
    NonStandardFittingLength,
    CValue,
    SmallMeasure, // pipe costs, weights, type group sizing bounds
    HeadLoss,
    FineRate, // density of the additional fitting calculator, labor rate
    Viscosity,
    Roughness,
    PumpCurvePoint,
    PressureLimit, // minimum pressure at the HMD node, sizing limits
    InflowPressure,
    ImbalanceLimit,
    DampingFactor,
    MaximumIterations,
};

enum class TextFieldKind {
    AreaGroup,
    FittingText,
    DeviceShortName,
    DeviceName,
    DeviceAbbreviation,
    GeneralText, // general text fields and the calculation comment
    Comment,     // comments and the hazard description
};

// The fixed table of attributes.
NumberAttribute NumberAttributeOf(NumberFieldKind kind);
TextAttribute TextAttributeOf(TextFieldKind kind);

// The limits in the unit on screen: Min and Max through the unit's conversion, Decimals kept.
// With no unit kind (a count, a factor) the attribute stays as it is.
NumberAttribute ConvertAttribute(const NumberAttribute& source, std::optional<UnitKind> unit,
                                 MeasureSystem system);

// "Range: 0.00 to 999.99": each limit through "#,###,###,###,##0" with one "0" per decimal.
std::string ShowRange(const NumberAttribute& attribute);
// "Up to 50 characters".
std::string ShowTextLength(const TextAttribute& attribute);
// "Units: psi". The word of a field without a unit is "None", of a text field "Text".
std::string ShowUnits(std::string_view unitWord);

// The word the status line uses for a unit: "Inch", "Feet", "Feet²" in US units, the unit's own
// word otherwise; "None" without a unit.
std::string UnitWordOnScreen(std::optional<UnitKind> unit, MeasureSystem system);

} // namespace quench
