#include "entry/grid_inputs.h"

#include "core/formats.h"
#include "entry/builder_input_text.h"
#include "entry/field_rules.h"

namespace quench {

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
    const BuilderFieldText field(system, decimalCharacter);
    const auto length = [&](Single value) { return field.Length(value); };
    const auto diameter = [&](Single value) { return field.Diameter(value); };
    inputs.Network = {field.Whole(data.NodalNumberingIncrement),
                      field.Whole(data.SourceNode),
                      length(data.SourceEntryPoint),
                      length(data.DistanceToFirstBranch),
                      length(data.DistanceBetweenBranchLines),
                      field.Whole(data.NumberOfBranchLines),
                      length(data.LeftDistanceToFirstSprinkler),
                      length(data.DistanceBetweenSprinklers),
                      field.Whole(data.SprinklersPerBranchLine),
                      length(data.RightDistanceToPerimeter)};
    inputs.PerimeterMaterial = field.Whole(data.PerimeterMaterial);
    inputs.PerimeterTypeGroup = field.Whole(data.PerimeterTypeGroup);
    inputs.PerimeterDiameter = diameter(data.PerimeterDiameter);
    inputs.BranchMaterial = field.Whole(data.BranchMaterial);
    inputs.BranchTypeGroup = field.Whole(data.BranchTypeGroup);
    inputs.BranchDiameter = diameter(data.BranchDiameter);
    inputs.Elevation = length(data.Elevation);
    inputs.KFactor = field.KFactor(data.KFactor);
    inputs.AreaGroup = data.AreaGroup;
    inputs.SprinklerArea = field.Area(data.SprinklerArea);
    return inputs;
}

void StoreGridInputs(const GridInputs& inputs, GridBuilderData& data) {
    const BuilderFieldText field(inputs.System, inputs.DecimalCharacter);
    const auto whole = [&](const std::string& text) { return field.StoredWhole(text); };
    const auto stored = [&](const std::string& text, UnitKind unit) {
        return field.Stored(text, unit);
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
