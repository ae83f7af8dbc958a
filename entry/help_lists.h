#pragma once

// What a help window shows for a help key: frmHelp, a title and a text, or frmHelpWithList, a
// title, a text, a pick list, a box for a typed value and the buttons that open a calculator.
// A pick returns one column of the chosen row (the first, unless the list says otherwise) to
// the field that asked; the screen takes it through its dispatcher word.

#include "core/project.h"
#include "core/units.h"
#include "entry/field_attributes.h"
#include "entry/library_pick_lists.h"
#include "library/pipe_library.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

// The calculators a help window can open.
enum class HelpCalculator { SprinklerKFactor, BranchLine, AdditionalFitting };

struct HelpCalculatorButton {
    HelpCalculator Calculator;
    std::string Caption; // "&Open Sprinkler K-Factor Calculator"
};

// The field that opened a help window: ShowFieldHelp's input.
struct HelpRequest {
    std::string Key;          // CurrentHelpKey
    int OriginRow = 0;        // HelpOriginRow: the pipe row, or the line of a screen
    std::string FieldText;    // HelpFieldText: the field's text when the window opened
    std::string Screen;       // the screen that takes the choice, such as "frmGPD"
    std::string MaterialText; // the material field of the row, for the diameter list
};

// What the lists are made of beside the project: the library, the pump database's names, and
// the values a caller gathers itself (global edit's value lists).
struct HelpSources {
    const PipeLibrary* Library = nullptr;
    std::vector<std::string> PumpNames;
    std::vector<std::string> Values;
    MeasureSystem System = MeasureSystem::US;
};

struct HelpContent {
    bool WithList = false; // frmHelpWithList, otherwise frmHelp
    std::string Title;
    std::string Description;
    PickList List;
    std::size_t ValueColumn = 0; // the column a pick returns
    int SelectedRow = -1;        // the row that holds the field's text, -1 for none
    std::string EntryLabel;      // lblDefaultValue
    TextAttribute EntryLimits;   // what txtDefaultValue takes
    bool FittingEntry = false;   // txtDefaultValue follows the standard fitting rule
    std::vector<HelpCalculatorButton> Calculators;
};

// The window of a key, its texts in the project's discharge word. An unknown key is a plain
// window with an empty title and text.
HelpContent LoadHelp(const HelpRequest& request, const Project& project,
                     const HelpSources& sources);

// The value of a pick: the list's value column of a row; nothing for a row out of range.
std::optional<std::string> PickedValue(const HelpContent& content, int row);

// The value typed into txtDefaultValue, as the field gets it: trimmed, in capitals for the
// standard fitting rule; nothing for an empty text.
std::optional<std::string> TypedValue(const HelpContent& content, std::string_view text);

// The dispatcher word by which a screen takes a help window's choice ("UpdateGPDFromHelpWindow").
// Empty for a screen that takes none.
std::string_view HelpReturnWord(std::string_view screen);

// "SetFocusAfterHelpWindow" for the pipe screen's keys that want the focus back after a plain
// help window, empty otherwise.
std::string_view HelpCloseWord(std::string_view key);

// The state of the help windows that screens read when their return word arrives.
struct HelpState {
    std::string CurrentHelpKey;
    std::string HelpSelection;
    int HelpOriginRow = 0;
    std::string HelpFieldText;
    bool HelpWindowOpen = false;
};

} // namespace quench
