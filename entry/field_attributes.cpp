#include "entry/field_attributes.h"

#include "core/formats.h"
#include "core/text.h"

#include <cmath>

namespace quench {

NumberAttribute NumberAttributeOf(NumberFieldKind kind) {
    switch (kind) {
    case NumberFieldKind::NodeNumber:
        return {0, 0, 9999, 0};
    case NumberFieldKind::KFactor:
        return {0, 0, 326.99f, 2};
    case NumberFieldKind::Elevation:
        return {0, -3276.5f, 3276.5f, 1};
    case NumberFieldKind::PressureEstimate:
        return {0, 0, 3276.5f, 2};
    case NumberFieldKind::SprinklerArea:
        return {0, 0, 3276.5f, 1};
    case NumberFieldKind::NonSprinklerFlow:
        return {0, 0, 3250, 1};
    case NumberFieldKind::MaterialNumber:
        return {0, 1, 50, 0};
    case NumberFieldKind::TypeGroup:
        return {0, 0, 10, 0};
    case NumberFieldKind::DeviceLoss:
        return {0, 0, 99999.99f, 2};
    case NumberFieldKind::Diameter:
        return {0, 0, 32, 3};
    case NumberFieldKind::Length:
        return {0, 0, 9999.99f, 2};
    case NumberFieldKind::NonStandardFittingLength:
        return {0, 0, 999.9f, 1};
    case NumberFieldKind::CValue:
        return {0, 0.01f, 200, 2};
    case NumberFieldKind::SmallMeasure:
        return {0, 0, 99.99f, 2};
    case NumberFieldKind::HeadLoss:
        return {0, 0, 500, 2};
    case NumberFieldKind::FineRate:
        return {0, 0, 99.9999f, 4};
    case NumberFieldKind::Viscosity:
        return {0, 0, 9.9999f, 4};
    case NumberFieldKind::Roughness:
        return {0, 0, 0.01f, 4};
    case NumberFieldKind::PumpCurvePoint:
        return {0, -9999, 9999, 2};
    case NumberFieldKind::PressureLimit:
        return {0, 0, 999.99f, 2};
    case NumberFieldKind::InflowPressure:
        return {0, 0, 10000, 0};
    case NumberFieldKind::ImbalanceLimit:
        return {0, 0.0000001f, 1, 7};
    case NumberFieldKind::DampingFactor:
        return {0, 1, 100, 0};
    case NumberFieldKind::MaximumIterations:
        return {0, 1, 1000000, 0};
    }
    return {};
}

TextAttribute TextAttributeOf(TextFieldKind kind) {
    switch (kind) {
    case TextFieldKind::AreaGroup:
        return {0, 6};
    case TextFieldKind::FittingText:
    case TextFieldKind::DeviceShortName:
        return {0, 10};
    case TextFieldKind::DeviceName:
        return {0, 30};
    case TextFieldKind::DeviceAbbreviation:
        return {0, 4};
    case TextFieldKind::GeneralText:
        return {0, 50};
    case TextFieldKind::Comment:
        return {0, 200};
    }
    return {};
}

namespace {

double Scale(int decimals) {
    return std::pow(10.0, decimals);
}

// A converted limit is rounded inwards to the field's decimals, so that the range the status line
// shows is exactly the range the field takes.
Single RoundUp(double value, int decimals) {
    const double scale = Scale(decimals);
    return static_cast<Single>(std::ceil(value * scale - 1e-9) / scale);
}

Single RoundDown(double value, int decimals) {
    const double scale = Scale(decimals);
    return static_cast<Single>(std::floor(value * scale + 1e-9) / scale);
}

std::string RangeNumber(double value, const NumberAttribute& attribute) {
    std::string picture = "#,###,###,###,##0";
    if (attribute.Decimals > 0) {
        picture += "." + std::string(static_cast<std::size_t>(attribute.Decimals), '0');
    }
    if ((attribute.Flags & UnsignedRangeFlag) != 0) {
        value = std::fabs(value);
    }
    std::string text = TrimLeft(Format(value, picture));
    if ((attribute.Flags & PercentFlag) != 0) {
        text = "%" + text;
    }
    return text;
}

} // namespace

NumberAttribute ConvertAttribute(const NumberAttribute& source, std::optional<UnitKind> unit,
                                 MeasureSystem system) {
    if (!unit || system == MeasureSystem::US) {
        return source;
    }
    NumberAttribute converted = source;
    converted.Min = RoundUp(ShownValue(*unit, source.Min, system), source.Decimals);
    converted.Max = RoundDown(ShownValue(*unit, source.Max, system), source.Decimals);
    return converted;
}

std::string ShowRange(const NumberAttribute& attribute) {
    return "Range: " + RangeNumber(attribute.Min, attribute) + " to " +
           RangeNumber(attribute.Max, attribute);
}

std::string ShowTextLength(const TextAttribute& attribute) {
    return "Up to " + std::to_string(attribute.MaxLength) + " characters";
}

std::string ShowUnits(std::string_view unitWord) {
    return "Units: " + std::string(unitWord);
}

std::string UnitWordOnScreen(std::optional<UnitKind> unit, MeasureSystem system) {
    if (!unit) {
        return "None";
    }
    if (system == MeasureSystem::US) {
        switch (*unit) {
        case UnitKind::Fine_Length:
            return "Inch";
        case UnitKind::Length:
            return "Feet";
        case UnitKind::Area:
            return "Feet²";
        default:
            break;
        }
    }
    return std::string(UnitWord(*unit, system));
}

} // namespace quench
