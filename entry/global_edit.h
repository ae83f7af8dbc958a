#pragma once

// Global edit: the two frames of the pipe screen that change many rows at once, the "Pipe" frame
// over whole rows and the "Node" frame over the ends of rows, without their widgets. Each frame
// has its selection, a current and a new field with a check box for each item, and the commands
// Execute, Delete and Duplicate. A command is one step of the tables' Undo history. Every check
// runs before the first change, so that no half of a command is applied.

#include "core/dialogs.h"
#include "core/project.h"
#include "core/units.h"
#include "entry/field_rules.h"
#include "entry/global_edit_items.h"
#include "entry/global_edit_selection.h"
#include "entry/undo_stack.h"
#include "library/pipe_library.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

namespace global_edit_words {
inline constexpr std::string_view Title = "Global Edit";
inline constexpr std::string_view WarningTitle = "Warning";
inline constexpr std::string_view InputDataErrorTitle = "Input Data Error";
inline constexpr std::string_view ErrorTitle = "Error";
inline constexpr std::string_view NoMatches = "No matches found";
inline constexpr std::string_view ChangesMade = " changes made";
inline constexpr std::string_view PipesDeleted = " pipes deleted";
inline constexpr std::string_view PipesDuplicated = " pipes duplicated";
inline constexpr std::string_view ConfirmPipeDeleteTitle = "Confirm Pipe Delete";
inline constexpr std::string_view ConfirmPipeDelete = "Delete selected pipes?";
inline constexpr std::string_view ConfirmNodeDeleteTitle = "Confirm Node Delete";
inline constexpr std::string_view ConfirmNodeDelete = "Delete selected nodes?";
inline constexpr std::string_view ConfirmPipeDuplicateTitle = "Confirm Pipe Duplication";
inline constexpr std::string_view ConfirmPipeDuplicate = "Duplicate selected pipes?";
inline constexpr std::string_view ConfirmNodeDuplicateTitle = "Confirm Node Duplication";
inline constexpr std::string_view ConfirmNodeDuplicate = "Duplicate selected nodes?";
inline constexpr std::string_view NoRoom =
    "There is not enough space to duplicate all the selected pipes.";
} // namespace global_edit_words

// One item's check box and its two fields, as typed.
struct GlobalEntry {
    bool Checked = false;
    std::string Current;
    std::string New;
};

// How an item's fields stand when Execute checks them.
enum class ItemState {
    Ready,       // a current value of the list and a new value
    Unspecified, // state 1: no current value; the change goes to the whole selection
    NoNewValue,  // state 2: no new value, or one beyond the limits of the field
    NotInList,   // state 3: the current value is none of the selection's
    BothEmpty,   // neither field typed, for the items that name it so
};

// What a command did: stopped by a check or an answer, or done with its count.
struct GlobalOutcome {
    bool Stopped = false;
    int Count = 0;
};

class GlobalEdit {
public:
    GlobalEdit(Project& project, const PipeLibrary& library, Dialogs& dialogs, UndoStack& undo,
               MeasureSystem system = MeasureSystem::US, char decimalCharacter = '.');

    MeasureSystem System() const { return system_; }
    char DecimalCharacter() const { return decimalCharacter_; }
    void SwitchUnits(MeasureSystem system) { system_ = system; }

    GlobalSelection& Selection(GlobalFrame frame);
    const GlobalSelection& Selection(GlobalFrame frame) const;
    GlobalEntry& Entry(GlobalItem item);
    const GlobalEntry& Entry(GlobalItem item) const;
    // optElevRelative: a new elevation is added to the one stored (optElevAbsolute: replaces it).
    bool RelativeElevation = false;

    // The limits of an item's fields in the unit on screen (none for Material and Status).
    std::optional<NumberAttribute> Attribute(GlobalItem item) const;
    // The check box's caption in the project's discharge word ("Flow Area" for hose).
    std::string Caption(GlobalItem item) const;

    // A key typed into an item's current or new field (keys are capitals on this screen): D, I
    // and N give the K-factor's words, a material takes 1 to 50 or one of the letters M, B, A,
    // P, a status letters, the other items the number rule of their limits.
    KeyOutcome FilterKey(GlobalItem item, char key, const FieldState& field) const;

    // The distinct values of an item in its frame's selection, as the lists show them.
    std::vector<std::string> CurrentValues(GlobalItem item) const;
    // The values a help list of global edit offers under its key ("GlobalCurrentDiameter",
    // "GlobalNewKFactor", ...): the current ones from the selection, the new ones the words of
    // the item and the values found in the whole table.
    std::vector<std::string> HelpValues(std::string_view key) const;

    // The check of one item, without a message.
    ItemState StateOf(GlobalItem item) const;

    // cmdPipeExecute / cmdNodeExecute.
    GlobalOutcome Execute(GlobalFrame frame);
    // cmdPipeDelete / cmdNodeDelete. `confirm` is the option ConfirmPipeDeletion; the node
    // frame always asks.
    GlobalOutcome Delete(GlobalFrame frame, bool confirm = true);
    // cmdPipeDuplicate / cmdNodeDuplicate.
    GlobalOutcome Duplicate(GlobalFrame frame);

private:
    bool CheckItem(GlobalItem item);
    int Apply(GlobalItem item, std::vector<RowEnd>& changedEnds);
    int ApplyToPipes(GlobalItem item, const GlobalValue* current, const std::string& text);
    int ApplyToEnds(GlobalItem item, const GlobalValue* current, const std::string& text,
                    std::vector<RowEnd>& changedEnds);
    void WriteNodeValue(GlobalItem item, const RowEnd& end, const std::string& text);
    std::vector<int> SourceRows(GlobalFrame frame) const;
    int DuplicateRows(const std::vector<int>& sources);
    void Tell(std::string_view text);
    void AfterStructuralChange(bool changed);

    Project& project_;
    const PipeLibrary& library_;
    Dialogs& dialogs_;
    UndoStack& undo_;
    MeasureSystem system_;
    char decimalCharacter_;
    GlobalSelection pipeSelection_;
    GlobalSelection nodeSelection_;
    std::array<GlobalEntry, GlobalItemCount> entries_;
};

} // namespace quench
