#include "entry/builder_input_text.h"

#include "core/formats.h"
#include "entry/field_rules.h"
#include "entry/k_factor_text.h"

#include <algorithm>

namespace quench {

std::string BuilderInputText(double stored, std::optional<UnitKind> unit, MeasureSystem system,
                             int decimals, char decimalCharacter) {
    const double shown = unit ? ShownValue(*unit, stored, system) : stored;
    std::string picture = "0";
    if (decimals > 0) {
        picture += "." + std::string(static_cast<std::size_t>(decimals), '#');
    }
    std::string text = Format(shown, picture);
    if (!text.empty() && text.back() == '.') {
        text.pop_back();
    }
    std::replace(text.begin(), text.end(), '.', decimalCharacter);
    return text;
}

double BuilderStoredValue(std::string_view text, std::optional<UnitKind> unit, MeasureSystem system,
                          char decimalCharacter) {
    const double shown = FieldValue(text, decimalCharacter);
    return unit ? StoredValue(*unit, shown, system) : shown;
}

bool IsBuilderNumber(std::string_view text, char decimalCharacter) {
    std::string number(text);
    if (decimalCharacter != '.') {
        if (number.find('.') != std::string::npos) {
            return false;
        }
        std::replace(number.begin(), number.end(), decimalCharacter, '.');
    }
    return IsNumeric(number);
}

BuilderPipeData BuilderPipeDataOf(std::string_view material, std::string_view typeGroup,
                                  std::string_view diameter, const BuilderTexts& texts) {
    BuilderPipeData data;
    data.Material = CInt(FieldValue(material, texts.DecimalCharacter));
    data.TypeGroup = CInt(FieldValue(typeGroup, texts.DecimalCharacter));
    data.Diameter = static_cast<Single>(
        BuilderStoredValue(diameter, UnitKind::Fine_Length, texts.System, texts.DecimalCharacter));
    return data;
}

BuilderNodeData BuilderNodeDataOf(std::string_view kFactor, std::string_view area,
                                  std::string_view elevation, std::string_view areaGroup,
                                  const BuilderTexts& texts, const Project& project) {
    BuilderNodeData data;
    if (FieldValue(kFactor, texts.DecimalCharacter) == 0) {
        data.KFactor =
            KFactorToStore(NumberText(project.SystemData.DefaultKFactor), MeasureSystem::US);
    } else {
        data.KFactor = KFactorToStore(kFactor, texts.System, texts.DecimalCharacter);
    }
    const double stored =
        BuilderStoredValue(area, UnitKind::Area, texts.System, texts.DecimalCharacter);
    data.SprinklerArea =
        stored == 0 ? project.SystemData.MaximumAreaPerSprinkler : static_cast<Single>(stored);
    data.Elevation = static_cast<Single>(
        BuilderStoredValue(elevation, UnitKind::Length, texts.System, texts.DecimalCharacter));
    data.AreaGroup = std::string(areaGroup);
    return data;
}

namespace {

constexpr int LengthDecimals = 2;
constexpr int DiameterDecimals = 3;
constexpr int FactorDecimals = 2;

} // namespace

std::string BuilderFieldText::Whole(Integer value) {
    return std::to_string(value);
}

std::string BuilderFieldText::Length(Single feet) const {
    return BuilderInputText(feet, UnitKind::Length, system_, LengthDecimals, decimalCharacter_);
}

std::string BuilderFieldText::Diameter(Single inches) const {
    return BuilderInputText(inches, UnitKind::Fine_Length, system_, DiameterDecimals,
                            decimalCharacter_);
}

std::string BuilderFieldText::KFactor(Single kFactor) const {
    return BuilderInputText(kFactor, UnitKind::K_Factor, system_, FactorDecimals,
                            decimalCharacter_);
}

std::string BuilderFieldText::Area(double squareFeet) const {
    return BuilderInputText(squareFeet, UnitKind::Area, system_, FactorDecimals, decimalCharacter_);
}

Integer BuilderFieldText::StoredWhole(std::string_view text) const {
    return CInt(FieldValue(text, decimalCharacter_));
}

Single BuilderFieldText::Stored(std::string_view text, UnitKind unit) const {
    return static_cast<Single>(BuilderStoredValue(text, unit, system_, decimalCharacter_));
}

} // namespace quench
