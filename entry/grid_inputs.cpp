#include "entry/grid_inputs.h"

#include "core/formats.h"
#include "entry/builder_input_text.h"
#include "entry/field_rules.h"

namespace quench {

namespace {

constexpr int LengthDecimals = 2;
constexpr int DiameterDecimals = 3;

std::string Whole(Integer value) {
    return std::to_string(value);
}

} // namespace

double GridInputs::Value(int index) const {
    return ValueOf(Network[static_cast<std::size_t>(index)]);
}

double GridInputs::ValueOf(const std::string& text) const {
    return FieldValue(text, DecimalCharacter);
}

GridInputs GridInputsFromData(const GridBuilderData& data, MeasureSystem system,
                              char decimalCharacter) {
    GridInputs inputs;
    inputs.System = system;
    inputs.DecimalCharacter = decimalCharacter;
    const auto length = [&](Single value) {
        return BuilderInputText(value, UnitKind::Length, system, LengthDecimals, decimalCharacter);
    };
    const auto diameter = [&](Single value) {
        return BuilderInputText(value, UnitKind::Fine_Length, system, DiameterDecimals,
                                decimalCharacter);
    };
    inputs.Network = {Whole(data.NodalNumberingIncrement),
                      Whole(data.SourceNode),
                      length(data.SourceEntryPoint),
                      length(data.DistanceToFirstBranch),
                      length(data.DistanceBetweenBranchLines),
                      Whole(data.NumberOfBranchLines),
                      length(data.LeftDistanceToFirstSprinkler),
                      length(data.DistanceBetweenSprinklers),
                      Whole(data.SprinklersPerBranchLine),
                      length(data.RightDistanceToPerimeter)};
    inputs.PerimeterMaterial = Whole(data.PerimeterMaterial);
    inputs.PerimeterTypeGroup = Whole(data.PerimeterTypeGroup);
    inputs.PerimeterDiameter = diameter(data.PerimeterDiameter);
    inputs.BranchMaterial = Whole(data.BranchMaterial);
    inputs.BranchTypeGroup = Whole(data.BranchTypeGroup);
    inputs.BranchDiameter = diameter(data.BranchDiameter);
    inputs.Elevation = length(data.Elevation);
    inputs.KFactor =
        BuilderInputText(data.KFactor, UnitKind::K_Factor, system, 2, decimalCharacter);
    inputs.AreaGroup = data.AreaGroup;
    inputs.SprinklerArea =
        BuilderInputText(data.SprinklerArea, UnitKind::Area, system, 2, decimalCharacter);
    return inputs;
}

void StoreGridInputs(const GridInputs& inputs, GridBuilderData& data) {
    const auto whole = [&](const std::string& text) {
        return CInt(FieldValue(text, inputs.DecimalCharacter));
    };
    const auto stored = [&](const std::string& text, UnitKind unit) {
        return static_cast<Single>(
            BuilderStoredValue(text, unit, inputs.System, inputs.DecimalCharacter));
    };
    const auto length = [&](int index) {
        return stored(inputs.Network[static_cast<std::size_t>(index)], UnitKind::Length);
    };
    data.NodalNumberingIncrement = whole(inputs.Network[GridIncrement]);
    data.SourceNode = whole(inputs.Network[GridSourceNode]);
    data.SourceEntryPoint = length(GridSourceEntryPoint);
    data.DistanceToFirstBranch = length(GridFirstBranch);
    data.DistanceBetweenBranchLines = length(GridBranchSpacing);
    data.NumberOfBranchLines = whole(inputs.Network[GridBranchLines]);
    data.LeftDistanceToFirstSprinkler = length(GridLeftFirst);
    data.DistanceBetweenSprinklers = length(GridHeadSpacing);
    data.SprinklersPerBranchLine = whole(inputs.Network[GridHeadsPerLine]);
    data.RightDistanceToPerimeter = length(GridRightToPerimeter);
    data.PerimeterMaterial = whole(inputs.PerimeterMaterial);
    data.PerimeterTypeGroup = whole(inputs.PerimeterTypeGroup);
    data.PerimeterDiameter = stored(inputs.PerimeterDiameter, UnitKind::Fine_Length);
    data.BranchMaterial = whole(inputs.BranchMaterial);
    data.BranchTypeGroup = whole(inputs.BranchTypeGroup);
    data.BranchDiameter = stored(inputs.BranchDiameter, UnitKind::Fine_Length);
    data.Elevation = stored(inputs.Elevation, UnitKind::Length);
    data.KFactor = stored(inputs.KFactor, UnitKind::K_Factor);
    data.AreaGroup = inputs.AreaGroup;
    data.SprinklerArea = stored(inputs.SprinklerArea, UnitKind::Area);
}

} // namespace quench
