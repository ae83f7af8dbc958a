#pragma once

// The rules of the node data editor (frmNodalEditor) without its widgets. The screen has no data
// of its own: it shows the pipe rows arranged by node, one line for each distinct node, the
// inflow node last, each line holding the data of the first row that names the node. An edit of
// a line is written into every pipe row that names the node.

#include "core/project.h"
#include "core/units.h"
#include "entry/field_attributes.h"
#include "entry/field_rules.h"
#include "entry/node_data_sync.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

enum class NodeField {
    KFactor,
    PressureEstimate,
    Elevation,
    NonSprinklerFlow,
    SprinklerArea,
    AreaGroup
};
constexpr int NodeFieldCount = 6;

struct NodeFieldInfo {
    std::string_view Control;
    std::string_view Heading;              // two lines, "Sprinkler" standing for the discharge word
    std::optional<NumberFieldKind> Number; // none: the area group's text
    std::optional<UnitKind> Unit;
    std::string_view HelpKey;
};

const NodeFieldInfo& FieldInfo(NodeField field);

constexpr std::string_view NodeEditorTitle = "Enter/Edit Pipe Node Data";
constexpr std::string_view NodeNumberHeading = "Node\nNumber";
constexpr std::string_view NodeNumberHelpKey = "NodeNumber";
constexpr const char* NodeEditorScreenName = "frmNodalEditor";
constexpr std::string_view UpdateNodeDataWord = "UpdateNodeDataFromHelpWindow";
// What the node editor is sent when the pipe rows changed under it.
constexpr std::string_view RefreshNodeLinesWord = "RefreshNodeLines";
// What the node editor sends the pipe screen after it wrote a node's data into the rows: the
// screen shows its visible rows and its area total again.
constexpr std::string_view NodeDataChangedWord = "NodeDataChanged";

struct NodeLine {
    int Node = 0; // the number as typed; the inflow node keeps its own
    NodeData Data;

    bool operator==(const NodeLine&) const = default;
};

// The distinct node numbers of the rows that name both their nodes, ascending, the inflow node
// last, each with the six values of the first row naming it.
std::vector<NodeLine> RefreshNodeLines(const Project& project);

// Every line into every row that names its node, at the end where it stands there.
void SaveNodeLines(Project& project, const std::vector<NodeLine>& lines);

// The node of the inflow: the first row with an inflow flag, else InflowNode; 0 for none.
int InflowNodeOf(const Project& project);

// "AddVisibleRow" while lines are hidden; "RemoveVisibleRow" while more than one shows.
bool CanAddVisibleRow(int visibleRows, int lineCount);
bool CanRemoveVisibleRow(int visibleRows);

class NodeEditor {
public:
    NodeEditor(Project& project, MeasureSystem system, char decimalCharacter = '.');

    MeasureSystem System() const { return system_; }
    char DecimalCharacter() const { return decimalCharacter_; }
    void SwitchUnits(MeasureSystem system) { system_ = system; }

    // RefreshNodeLines: the lines again from the rows.
    void Refresh();
    const std::vector<NodeLine>& Lines() const { return lines_; }
    int LineCount() const { return static_cast<int>(lines_.size()); }
    // The line of a node, -1 when no line has it.
    int LineOf(int node) const;

    // What a line's fields show, in the unit on screen: numbers with "##0.0#", the K-factor's
    // words as they stand.
    std::string NodeNumberText(int line) const;
    std::string Text(int line, NodeField field) const;

    // The column heading in the discharge word ("Non-Hose\nFlow").
    std::string Heading(NodeField field) const;
    NumberAttribute Attribute(NodeField field) const;
    std::string StatusText(NodeField field) const;

    // A key typed into a field (keys are capitals): D, I and N give the K-factor's words, an area
    // group takes letters A to Z only.
    KeyOutcome FilterKey(NodeField field, char key, const FieldState& state) const;
    std::string TestOnChange(NodeField field, std::string_view text) const;

    // A change of a field: the line takes the text and is saved into every row of its node, and
    // InputChanged is set. Returns the text the field shows now.
    std::string Change(int line, NodeField field, std::string_view text);
    // Leaving a field: below the minimum the minimum, with TooLow for the message; an empty
    // number shows 0.
    LeaveOutcome Leave(int line, NodeField field, std::string_view text);

private:
    Project& project_;
    MeasureSystem system_;
    char decimalCharacter_;
    std::vector<NodeLine> lines_;
};

} // namespace quench
