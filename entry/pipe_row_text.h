#pragma once

// A pipe row as its row editor shows it, and the row editor written back. ShowRow formats every
// field in the unit on screen; SaveCurrentRow converts the texts the user touched back into US
// units and leaves every other value as it is in the row, so display rounding never changes
// stored data.

#include "core/project.h"
#include "core/units.h"
#include "entry/pipe_table_columns.h"

#include <array>
#include <bitset>
#include <string>

namespace quench {

enum class TextColour { Black, Red, Green };

// The texts of one row editor and the fields the edit in progress has touched.
struct RowTexts {
    std::array<std::string, PipeColumnCount> Text;
    std::bitset<PipeColumnCount> Touched;

    const std::string& operator[](PipeColumn column) const {
        return Text[static_cast<std::size_t>(column)];
    }
    // A text typed by the user: it is written back at the next save.
    void Set(PipeColumn column, std::string text) {
        Text[static_cast<std::size_t>(column)] = std::move(text);
        Touched.set(static_cast<std::size_t>(column));
    }
};

struct RowView {
    RowTexts Texts;
    TextColour DiameterColour = TextColour::Black; // red: open to autosizing
    TextColour StatusColour = TextColour::Black;
    bool BeginningIsInflow = false; // the inflow mark on the node field
    bool EndingIsInflow = false;
    bool NonSprinklerFlowEnabledB = true; // a sprinkler node has no other flow to type
    bool NonSprinklerFlowEnabledE = true;
    bool Blank = false; // a free row: shown empty

    const std::string& operator[](PipeColumn column) const { return Texts[column]; }
};

constexpr const char* ActiveCaption = "Active";
constexpr const char* InactiveCaption = "Inact";

// The row of a table that nothing was typed into: node texts "", K "0", numbers 0, Active,
// the project's default material.
PipeRecord EmptyPipeRow(const Project& project);
// A row as a new project leaves it (file defaults): not yet an empty row of the table.
bool IsUntypedRow(const PipeRecord& row, const Project& project);

// The material field's text: the number, or M, B, A, P for the devices.
std::string MaterialText(Integer material);
// A material field's text as a number: 1 to 50, 51 to 54 for the letters, 0 for anything else.
Integer MaterialOfText(std::string_view text);

// The default K as the header shows it, without "Dflt=".
std::string DefaultKFactorText(const Project& project, MeasureSystem system,
                               char decimalCharacter = '.');

// ShowRow: the row editor of pipe row `row`.
RowView ShowRow(const Project& project, int row, MeasureSystem system, char decimalCharacter = '.');

// SaveCurrentRow: the touched texts into pipe row `row`, in US units. Node, K and group texts
// are stored trimmed; the fitting text is left to the fitting parse; Status and Eq Len are not
// texts to save. Returns true when the row changed.
bool SaveCurrentRow(Project& project, int row, const RowTexts& texts, MeasureSystem system,
                    char decimalCharacter = '.');

} // namespace quench
