#pragma once

// The texts of the builders' input fields: a stored value shown as the field shows it, and the
// value of a typed text.

#include "core/project.h"
#include "core/units.h"
#include "entry/builder_pipes.h"

#include <optional>
#include <string>
#include <string_view>

namespace quench {

// A stored US value as the text of a field in the system on screen, with at most `decimals`
// decimals and none that are 0 ("12.5", "10"). No unit kind: a count or a factor.
std::string BuilderInputText(double stored, std::optional<UnitKind> unit, MeasureSystem system,
                             int decimals, char decimalCharacter);

// The US value to store for a field's text.
double BuilderStoredValue(std::string_view text, std::optional<UnitKind> unit, MeasureSystem system,
                          char decimalCharacter);

// Whether a text is a number, with the field's decimal character.
bool IsBuilderNumber(std::string_view text, char decimalCharacter);

// The fields of both builders' tabs: stored US values shown in the system on screen, and the
// values to store for typed texts.
class BuilderFieldText {
public:
    BuilderFieldText(MeasureSystem system, char decimalCharacter)
        : system_(system), decimalCharacter_(decimalCharacter) {}

    static std::string Whole(Integer value);
    std::string Length(Single feet) const;
    std::string Diameter(Single inches) const;
    std::string KFactor(Single kFactor) const;
    std::string Area(double squareFeet) const;

    Integer StoredWhole(std::string_view text) const;
    Single Stored(std::string_view text, UnitKind unit) const;

private:
    MeasureSystem system_;
    char decimalCharacter_;
};

// The texts that describe the fields of a builder, as typed.
struct BuilderTexts {
    MeasureSystem System = MeasureSystem::US;
    char DecimalCharacter = '.';
};

// The pipe data of a material, type group and diameter field.
BuilderPipeData BuilderPipeDataOf(std::string_view material, std::string_view typeGroup,
                                  std::string_view diameter, const BuilderTexts& texts);

// The node data of the K-factor, sprinkler area, elevation and area group fields. A K of 0 is
// the project's default K, written as a number; an area of 0 the maximum area per sprinkler.
BuilderNodeData BuilderNodeDataOf(std::string_view kFactor, std::string_view area,
                                  std::string_view elevation, std::string_view areaGroup,
                                  const BuilderTexts& texts, const Project& project);

} // namespace quench
