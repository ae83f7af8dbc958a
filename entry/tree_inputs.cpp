#include "entry/tree_inputs.h"

#include "core/formats.h"
#include "entry/builder_input_text.h"
#include "entry/field_rules.h"

namespace quench {

double TreeInputs::Value(int index) const {
    return ValueOf(Network[static_cast<std::size_t>(index)]);
}

double TreeInputs::ValueOf(const std::string& text) const {
    return FieldValue(text, DecimalCharacter);
}

TreeInputs TreeInputsFromData(const TreeBuilderData& data, MeasureSystem system,
                              char decimalCharacter) {
    TreeInputs inputs;
    inputs.System = system;
    inputs.DecimalCharacter = decimalCharacter;
    const BuilderFieldText field(system, decimalCharacter);
    const auto length = [&](Single value) { return field.Length(value); };
    const auto diameter = [&](Single value) { return field.Diameter(value); };
    inputs.Network = {field.Whole(data.NodalNumberingIncrement),
                      field.Whole(data.SourceNode),
                      field.Whole(data.ExitNode),
                      length(data.LengthOfCrossMain),
                      length(data.DistanceBetweenBranchLines),
                      length(data.LengthOfLeftBranchLine),
                      length(data.LengthOfRightBranchLine),
                      length(data.LeftDistanceToFirstSprinkler),
                      length(data.RightDistanceToFirstSprinkler),
                      length(data.LeftDistanceBetweenSprinklers),
                      length(data.RightDistanceBetweenSprinklers)};
    inputs.CrossMaterial = field.Whole(data.CrossMaterial);
    inputs.CrossTypeGroup = field.Whole(data.CrossTypeGroup);
    inputs.CrossDiameter = diameter(data.CrossDiameter);
    inputs.BranchMaterial = field.Whole(data.BranchMaterial);
    inputs.BranchTypeGroup = field.Whole(data.BranchTypeGroup);
    inputs.BranchDiameter = diameter(data.BranchDiameter);
    inputs.Elevation = length(data.Elevation);
    inputs.KFactor = field.KFactor(data.KFactor);
    inputs.AreaGroup = data.AreaGroup;
    inputs.SprinklerArea = field.Area(data.SprinklerArea);
    inputs.MaxSpaceBetweenBranches = length(data.MaxSpaceBetweenBranches);
    inputs.MaxSpaceBetweenSprinklers = length(data.MaxSpaceBetweenSprinklers);
    return inputs;
}

void StoreTreeInputs(const TreeInputs& inputs, TreeBuilderData& data) {
    const BuilderFieldText field(inputs.System, inputs.DecimalCharacter);
    const auto whole = [&](const std::string& text) { return field.StoredWhole(text); };
    const auto stored = [&](const std::string& text, UnitKind unit) {
        return field.Stored(text, unit);
    };
    const auto length = [&](int index) {
        return stored(inputs.Network[static_cast<std::size_t>(index)], UnitKind::Length);
    };
    data.NodalNumberingIncrement = whole(inputs.Network[TreeIncrement]);
    data.SourceNode = whole(inputs.Network[TreeSourceNode]);
    data.ExitNode = whole(inputs.Network[TreeExitNode]);
    data.LengthOfCrossMain = length(TreeCrossMainLength);
    data.DistanceBetweenBranchLines = length(TreeBranchSpacing);
    data.LengthOfLeftBranchLine = length(TreeLeftLength);
    data.LengthOfRightBranchLine = length(TreeRightLength);
    data.LeftDistanceToFirstSprinkler = length(TreeLeftFirst);
    data.RightDistanceToFirstSprinkler = length(TreeRightFirst);
    data.LeftDistanceBetweenSprinklers = length(TreeLeftSpacing);
    data.RightDistanceBetweenSprinklers = length(TreeRightSpacing);
    data.CrossMaterial = whole(inputs.CrossMaterial);
    data.CrossTypeGroup = whole(inputs.CrossTypeGroup);
    data.CrossDiameter = stored(inputs.CrossDiameter, UnitKind::Fine_Length);
    data.BranchMaterial = whole(inputs.BranchMaterial);
    data.BranchTypeGroup = whole(inputs.BranchTypeGroup);
    data.BranchDiameter = stored(inputs.BranchDiameter, UnitKind::Fine_Length);
    data.Elevation = stored(inputs.Elevation, UnitKind::Length);
    data.KFactor = stored(inputs.KFactor, UnitKind::K_Factor);
    data.AreaGroup = inputs.AreaGroup;
    data.SprinklerArea = BuilderStoredValue(inputs.SprinklerArea, UnitKind::Area, inputs.System,
                                            inputs.DecimalCharacter);
    data.MaxSpaceBetweenBranches = stored(inputs.MaxSpaceBetweenBranches, UnitKind::Length);
    data.MaxSpaceBetweenSprinklers = stored(inputs.MaxSpaceBetweenSprinklers, UnitKind::Length);
}

} // namespace quench
