#pragma once

// The pipe table of the Enter/Edit Pipe Data screen without its widgets: every edit of a field
// and every command of its toolbar, on the model. The screen, the tests and the command line
// call the same operations. An edit comes in two steps, as from a row editor: the change (each
// accepted key; node data are spread at once, so every row naming the node changes together)
// and the leaving (the checks that need the whole text, the fetch of a node's data).

#include "core/dialogs.h"
#include "core/project.h"
#include "core/units.h"
#include "entry/field_rules.h"
#include "entry/node_data_sync.h"
#include "entry/pipe_row_text.h"
#include "entry/pipe_table_columns.h"
#include "library/pipe_library.h"

#include <string>
#include <string_view>
#include <vector>

namespace quench {

namespace pipe_table_words {
inline constexpr std::string_view Title = "Enter/Edit Pipe Data";
inline constexpr std::string_view SameNodes =
    "Beginning and ending node can not be the same designation";
inline constexpr std::string_view DuplicatePipe =
    "Invalid Node. There is a pipe section has the same beginning node and end node number or "
    "value. You need to use another beginning or end node number for this pipe section.";
inline constexpr std::string_view MaterialBeforeDiameter =
    "A pipe material must be chosen for this pipe before a diameter can be entered.";
inline constexpr std::string_view MaterialBeforeLength =
    "Select pipe material before entering pipe length.";
inline constexpr std::string_view NoNodeForStatus =
    "Beginning node number or end node number haven't been specified.";
inline constexpr std::string_view TooManyPipes =
    "You can not add more pipe sections as the maximum pipe sections for current version is ";
inline constexpr std::string_view CopyPipeTitle = "Copy pipe data?";
inline constexpr std::string_view CopyPipe =
    "Do you want to copy the values from the current pipe to the new pipe?";
inline constexpr std::string_view ConfirmDeleteTitle = "Confirm Pipe Delete";
inline constexpr std::string_view ClearAllTitle = "Clear all pipes";
inline constexpr std::string_view ClearAll =
    "WARNING!  This operation will clear all existing pipes from your project.  Are you sure you "
    "want to continue?";
inline constexpr std::string_view InflowTwoPipes =
    "Inflow node should only have one pipe section connected to it.";
inline constexpr std::string_view InputDataErrorTitle = "Input Data Error";
inline constexpr std::string_view InflowSprinkler =
    "Inflow Node can not be a Sprinkler Node. Specify a zero K-Factor for this node if you want "
    "this node to be the inflow node or choose another node as the inflow node.";
inline constexpr std::string_view InflowFlow =
    "A Zero Non-Sprinkler Flow of System Inflow Node Must Be Given.";
inline constexpr std::string_view NoInflow = "No Inflow Node Has Been Specified.";
} // namespace pipe_table_words

// What an edit did: the rows to show again (the edited row first), the text the field shows
// now, and what the screen must do next.
struct PipeEdit {
    std::vector<int> Rows;
    std::string Text;
    bool Refused = false;       // the text was emptied or set to the limit
    bool FocusMaterial = false; // a diameter or length needs a material first
    bool OpenPumpScreen = false;
    bool NodesChanged = false; // the node list is to be rebuilt and the node editor refreshed
};

class PipeTable {
public:
    PipeTable(Project& project, const PipeLibrary& library, Dialogs& dialogs,
              MeasureSystem system = MeasureSystem::US, char decimalCharacter = '.');

    Project& Model() { return project_; }
    const Project& Model() const { return project_; }
    MeasureSystem System() const { return system_; }
    char DecimalCharacter() const { return decimalCharacter_; }
    void SwitchUnits(MeasureSystem system) { system_ = system; }

    RowView Show(int row) const { return ShowRow(project_, row, system_, decimalCharacter_); }

    // The limits of a column in the unit on screen, and its status line text.
    NumberAttribute Attribute(PipeColumn column) const;
    std::string StatusText(PipeColumn column) const;

    // A key typed into a field of row `row`, with the field as it stands. Keys are capitals on
    // this screen. A refused key leaves no trace; a diameter or length key in a row without a
    // material gives its message and asks for the material field.
    KeyOutcome FilterKey(int row, PipeColumn column, char key, const FieldState& field,
                         bool* focusMaterial = nullptr);
    // The test on change: the text the field can hold ("" when it is emptied).
    std::string TestOnChange(PipeColumn column, std::string_view text) const;

    // The user changed a field's text (already through FilterKey). The row is saved, node data
    // spread, the equivalent length recalculated where it depends on the field.
    PipeEdit Change(int row, PipeColumn column, std::string_view text);
    // The user leaves a field holding `text`.
    PipeEdit Leave(int row, PipeColumn column, std::string_view text);
    // A whole text at once, as a pick from a help list or a pasted cell: change, then leave.
    PipeEdit Enter(int row, PipeColumn column, std::string_view text);
    // Before the current row is left for another: both ends spread once more.
    std::vector<int> LeaveRow(int row);

    // The Status button of row `row`; with a selection of rows its first and last row toggle
    // too. Returns the rows toggled.
    std::vector<int> ToggleStatus(int row, int selectionFirst = 0, int selectionLast = 0);

    // The toolbar commands. `row` is CurrentPipe. AddPipe returns the new row (0 when none);
    // DeletePipe and the others return whether they changed the table.
    int AddPipe(int row);
    bool DeletePipe(int row, bool confirm = true);
    bool ClearPipes();
    void SortPipes();
    // The end is the node field in use (or last left) of the row.
    bool MarkInflowNode(int row, NodeEnd end);
    bool UnmarkInflowNode(int row);

    // "Enter/Edit Pipe Data: Pipe 5 of 1000   12 Pipes Defined".
    std::string Caption(int row) const;
    // "Enter/Edit Pipe Data: 12 Pipes Defined".
    std::string ShortCaption() const;
    // "Dflt=5.6".
    std::string DefaultKFactorLabel() const;
    // "Total Sprk Area = 1040.0".
    std::string SprinklerAreaLabel() const;
    // Leaving the screen: false (with the information box) when no row carries an inflow flag.
    bool CheckInflowOnLeaving();

private:
    PipeEdit ChangeNodeNumber(int row, PipeColumn column, const std::string& text);
    PipeEdit ChangeNodeData(int row, PipeColumn column, const std::string& text);
    PipeEdit ChangePipeField(int row, PipeColumn column, const std::string& text);
    PipeEdit ChangeFitting(int row, const std::string& text, bool parse);
    KeyOutcome FilterLossKey(int row, char key, const FieldState& field);
    PipeEdit ChooseLossCurve(int row);
    void FollowMaterialWithLoss(int row);
    PipeEdit LeaveNodeNumber(int row, PipeColumn column, std::string_view text);
    PipeEdit LeaveNumber(int row, PipeColumn column, std::string_view text);
    bool SaveField(int row, PipeColumn column, const std::string& text);
    bool MarkChecks(int row, NodeEnd end);
    PipeRecord& Record(int row);

    Project& project_;
    const PipeLibrary& library_;
    Dialogs& dialogs_;
    MeasureSystem system_;
    char decimalCharacter_;
    bool syncInProgress_ = false;
};

// The rows in use: the highest row whose two node texts are both filled.
Integer CountPipeRows(const Project& project);

// The next multiple of ten above the highest node number of all rows.
int NextFreeNodeNumber(const Project& project);

// ClearPipeRow: the row to the empty row of the table, its working row too; the pressure
// estimates stay.
void ClearPipeRow(Project& project, int row);

// The sprinkler area total in ft²: over the distinct nodes that carry a K other than 0, each
// node's area from the first row naming it, the project's maximum area per sprinkler where 0.
double SprinklerAreaTotal(const Project& project);

} // namespace quench
