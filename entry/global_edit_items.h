#pragma once

// The items a global edit changes, the words its messages use for them, and their values: the
// value of an item at a row or a node end as the screen shows it, the list of the distinct values
// in a selection, and the compare of a stored value with the current field at the item's decimals.

#include "core/project.h"
#include "core/units.h"
#include "entry/field_attributes.h"
#include "entry/global_edit_selection.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

// In the order in which an Execute applies them.
enum class GlobalItem { Material, Diameter, Length, Status, KFactor, SprinklerArea, Elevation };
constexpr int GlobalItemCount = 7;

struct GlobalItemInfo {
    GlobalFrame Frame;
    std::string_view Caption; // the check box: "Material", "Sprk Area"
    // The controls are chkGlobalNew<Name>, txtGlobalCurrent<Name> and txtGlobalNew<Name>; the
    // help keys GlobalCurrent<Name> and GlobalNew<Name>.
    std::string_view Name;
    int Decimals; // the compare's; Status compares its words
    std::optional<UnitKind> Unit;
    std::optional<NumberFieldKind> Number; // the field's limits; none for Material and Status
    std::string_view CheckWord;            // "Pipe Diameter"
    std::string_view ListWord;             // "pipe Diameter"
    std::string_view ListWords;            // "Diameters"
    std::string_view EmptyName;            // "diameter"; none for Material and Status
    bool Specify;                          // the word "Specify" in place of "enter"
};

const GlobalItemInfo& ItemInfo(GlobalItem item);
GlobalItem ItemAt(int index);
// The items of one frame, in their order.
std::vector<GlobalItem> ItemsOf(GlobalFrame frame);

constexpr const char* ActiveStatusWord = "Active";
constexpr const char* InactiveStatusWord = "Inactive";
constexpr const char* ValueKWord = "Value"; // a help list's "type a number" choice

// One value of an item: a word (K-factor words, the status) or a number in the unit on screen
// (a material by its number).
struct GlobalValue {
    std::string Word;
    double Number = 0;

    bool IsWord() const { return !Word.empty(); }
    bool operator==(const GlobalValue&) const = default;
};

// The value of a pipe item at a row, or of a node item at a row's end.
GlobalValue ValueAt(const PipeRecord& record, GlobalItem item, NodeEnd end, MeasureSystem system);

// The value a field's text stands for: none for an empty text or one that is no value of the
// item (a word where a number belongs, "Value" in a K-factor field).
std::optional<GlobalValue> ValueOfText(GlobalItem item, std::string_view text,
                                       char decimalCharacter = '.');

// The text of a value as the lists show it: a material by its number or letter, numbers with
// the item's decimals.
std::string ValueText(GlobalItem item, const GlobalValue& value, char decimalCharacter = '.');

// The compare of an Execute: both rounded to the item's decimals; words alike without regard
// to case. A word never equals a number.
bool SameAtDecimals(GlobalItem item, const GlobalValue& stored, const GlobalValue& current);

// The distinct values of an item in a selection, in order of appearance, numbers rounded to the
// item's decimals.
std::vector<GlobalValue> ValueList(const Project& project, GlobalItem item,
                                   const GlobalSelection& selection, MeasureSystem system);

// The lookup of the check: a word in the list, or a number within 0.001 of one of its numbers.
bool InValueList(const std::vector<GlobalValue>& list, const GlobalValue& value);

} // namespace quench
