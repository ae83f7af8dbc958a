#include "entry/node_editor.h"

#include "core/formats.h"
#include "core/text.h"
#include "entry/general_data_words.h"
#include "entry/help_texts.h"
#include "entry/k_factor_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace quench {

namespace {

using Kind = NumberFieldKind;

constexpr std::array<NodeFieldInfo, NodeFieldCount> Fields{{
    {"txtNodeKFact", "K\nFactor", Kind::KFactor, UnitKind::K_Factor, "NodeDataKFactor"},
    {"txtNodePressEst", "Pressure\nEstimate", Kind::PressureEstimate, UnitKind::Pressure,
     "NodeDataPressEst"},
    {"txtNodeElevation", "Node\nElevation", Kind::Elevation, UnitKind::Length, "NodeDataElevation"},
    {"txtNodeNonSprkFlow", "Non-Sprinkler\nFlow", Kind::NonSprinklerFlow, UnitKind::Volumetric_Flow,
     "NodeDataNonSprkFlow"},
    {"txtNodeSprinklerArea", "Sprinkler\nArea", Kind::SprinklerArea, UnitKind::Area,
     "NodeDataSprinklerArea"},
    {"txtNodeAreaGroup", "Area\nGroup", std::nullopt, std::nullopt, "AreaGroup"},
}};

constexpr std::string_view LinePicture = "##0.0#";

bool NamesBoth(const PipeRecord& row) {
    return NodeNumberAt(row, NodeEnd::Beginning) != 0 && NodeNumberAt(row, NodeEnd::Ending) != 0;
}

// The first row that names a node, and the end at which it does; row 0 when none does.
std::pair<int, NodeEnd> FirstRowOf(const Project& project, int node) {
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        if (!NamesBoth(record)) {
            continue;
        }
        const NodePlace place = PlaceOfNode(record, node);
        if (place != NodePlace::None) {
            return {row, place == NodePlace::Beginning ? NodeEnd::Beginning : NodeEnd::Ending};
        }
    }
    return {0, NodeEnd::Beginning};
}

Single* NumberOf(NodeData& data, NodeField field) {
    switch (field) {
    case NodeField::PressureEstimate:
        return &data.PressEstimate;
    case NodeField::Elevation:
        return &data.Elevation;
    case NodeField::NonSprinklerFlow:
        return &data.NonSprinklerFlow;
    case NodeField::SprinklerArea:
        return &data.SprinklerArea;
    default:
        return nullptr;
    }
}

bool IsCapitalLetter(char key) {
    return key >= 'A' && key <= 'Z';
}

} // namespace

const NodeFieldInfo& FieldInfo(NodeField field) {
    return Fields.at(static_cast<std::size_t>(field));
}

int InflowNodeOf(const Project& project) {
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        if (record.BegIsInflow != 0) {
            return static_cast<int>(NodeNumberAt(record, NodeEnd::Beginning));
        }
        if (record.EndIsInflow != 0) {
            return static_cast<int>(NodeNumberAt(record, NodeEnd::Ending));
        }
    }
    return project.InflowNode;
}

std::vector<NodeLine> RefreshNodeLines(const Project& project) {
    // One pass over the rows: each node with the data of the first row naming it.
    std::map<int, NodeData> nodes;
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        if (NamesBoth(record)) {
            for (const NodeEnd end : {NodeEnd::Beginning, NodeEnd::Ending}) {
                nodes.try_emplace(static_cast<int>(NodeNumberAt(record, end)),
                                  NodeDataAt(record, end));
            }
        }
    }
    std::vector<NodeLine> lines;
    lines.reserve(nodes.size());
    for (const auto& [node, data] : nodes) {
        lines.push_back({node, data});
    }
    // The inflow node is held as 10000 in the derived list, so it stands last.
    const int inflow = InflowNodeOf(project);
    const auto inflowPlace = std::find_if(
        lines.begin(), lines.end(), [inflow](const NodeLine& line) { return line.Node == inflow; });
    if (inflow != 0 && inflowPlace != lines.end()) {
        std::rotate(inflowPlace, inflowPlace + 1, lines.end());
    }
    return lines;
}

void SaveNodeLines(Project& project, const std::vector<NodeLine>& lines) {
    for (const NodeLine& line : lines) {
        const auto [row, end] = FirstRowOf(project, line.Node);
        if (row == 0) {
            continue;
        }
        SetNodeData(project.PipeRecord[static_cast<std::size_t>(row)], end, line.Data);
        // Every other row of the node, wherever it stands in the table, gets the same values.
        SyncNodeData(project, row, end, SyncDirection::Spread);
    }
}

bool CanAddVisibleRow(int visibleRows, int lineCount) {
    return visibleRows < lineCount;
}

bool CanRemoveVisibleRow(int visibleRows) {
    return visibleRows > 1;
}

NodeEditor::NodeEditor(Project& project, MeasureSystem system, char decimalCharacter)
    : project_(project), system_(system), decimalCharacter_(decimalCharacter) {
    Refresh();
}

void NodeEditor::Refresh() {
    lines_ = RefreshNodeLines(project_);
}

int NodeEditor::LineOf(int node) const {
    const auto found = std::find_if(lines_.begin(), lines_.end(),
                                    [node](const NodeLine& line) { return line.Node == node; });
    return found != lines_.end() ? static_cast<int>(found - lines_.begin()) : -1;
}

std::string NodeEditor::NodeNumberText(int line) const {
    return std::to_string(lines_.at(static_cast<std::size_t>(line)).Node);
}

std::string NodeEditor::Text(int line, NodeField field) const {
    NodeData data = lines_.at(static_cast<std::size_t>(line)).Data;
    if (field == NodeField::KFactor) {
        return KFactorFieldText(data.KFactor, system_, decimalCharacter_);
    }
    if (field == NodeField::AreaGroup) {
        return Trim(data.AreaGroup);
    }
    const double stored = *NumberOf(data, field);
    const double shown = ShownValue(*FieldInfo(field).Unit, stored, system_);
    return FieldText(shown, Attribute(field), decimalCharacter_, LinePicture);
}

std::string NodeEditor::Heading(NodeField field) const {
    std::string heading(FieldInfo(field).Heading);
    const std::size_t at = heading.find(SprinklerDischarge);
    if (at != std::string::npos) {
        heading.replace(at, SprinklerDischarge.size(),
                        DischargeWordOf(project_.SystemData.PrimaryDischargeName));
    }
    return heading;
}

NumberAttribute NodeEditor::Attribute(NodeField field) const {
    const NodeFieldInfo& info = FieldInfo(field);
    if (!info.Number) {
        return {};
    }
    return ConvertAttribute(NumberAttributeOf(*info.Number), info.Unit, system_);
}

std::string NodeEditor::StatusText(NodeField field) const {
    const NodeFieldInfo& info = FieldInfo(field);
    if (!info.Number) {
        return ShowTextLength(TextAttributeOf(TextFieldKind::AreaGroup)) + "     " +
               ShowUnits("Text");
    }
    return ShowRange(Attribute(field)) + "     " + ShowUnits(UnitWordOnScreen(info.Unit, system_));
}

KeyOutcome NodeEditor::FilterKey(NodeField field, char key, const FieldState& state) const {
    if (field == NodeField::KFactor) {
        return FilterKFactorKey(key, state, Attribute(field), {decimalCharacter_, true});
    }
    if (field == NodeField::AreaGroup) {
        if (key != BackspaceKey && !IsCapitalLetter(key)) {
            return {};
        }
        return FilterTextKey(key, state, TextAttributeOf(TextFieldKind::AreaGroup));
    }
    return FilterNumberKey(key, state, Attribute(field), {decimalCharacter_, true});
}

std::string NodeEditor::TestOnChange(NodeField field, std::string_view text) const {
    if (field == NodeField::KFactor) {
        return TestKFactorOnChange(text, Attribute(field), decimalCharacter_);
    }
    if (field == NodeField::AreaGroup) {
        const std::string group = ToUpper(text);
        const bool letters = std::all_of(group.begin(), group.end(), IsCapitalLetter);
        return letters ? TestTextOnChange(group, TextAttributeOf(TextFieldKind::AreaGroup))
                       : std::string();
    }
    return quench::TestOnChange(text, Attribute(field), decimalCharacter_);
}

std::string NodeEditor::Change(int line, NodeField field, std::string_view text) {
    NodeLine& edited = lines_.at(static_cast<std::size_t>(line));
    const std::string kept = TestOnChange(field, text);
    if (field == NodeField::KFactor) {
        edited.Data.KFactor = KFactorToStore(kept, system_, decimalCharacter_);
    } else if (field == NodeField::AreaGroup) {
        edited.Data.AreaGroup = kept;
    } else {
        const double value = FieldValue(Trim(kept), decimalCharacter_);
        *NumberOf(edited.Data, field) =
            static_cast<Single>(StoredValue(*FieldInfo(field).Unit, value, system_));
    }
    SaveNodeLines(project_, {edited});
    project_.InputChanged = True;
    return kept;
}

LeaveOutcome NodeEditor::Leave(int line, NodeField field, std::string_view text) {
    if (!FieldInfo(field).Number) {
        return {std::string(text), false};
    }
    if (field == NodeField::KFactor && KFactorWord(text)) {
        return {std::string(text), false};
    }
    LeaveOutcome outcome = LeaveNumberField(text, Attribute(field), decimalCharacter_, "0.0");
    if (outcome.Text != text) {
        Change(line, field, outcome.Text);
    }
    return outcome;
}

} // namespace quench
