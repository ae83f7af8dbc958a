#pragma once

// The columns of the pipe table: one per field of a row editor, the beginning node's fields
// first, then the ending node's, then the pipe's. Each column knows its control name, its caption
// in both discharge words, its limits, its unit and the help key of its button.

#include "core/project.h"
#include "core/units.h"
#include "entry/field_attributes.h"

#include <optional>
#include <string>
#include <string_view>

namespace quench {

enum class PipeColumn : int {
    BegNode,
    KFactorB,
    ElevationB,
    PressEstimateB,
    SprinklerAreaB,
    AreaGroupB,
    NonSprinklerFlowB,
    EndNode,
    KFactorE,
    ElevationE,
    PressEstimateE,
    SprinklerAreaE,
    AreaGroupE,
    NonSprinklerFlowE,
    Active,
    Material,
    TypeGroup,
    DeviceLoss,
    Diameter,
    Length,
    FittingText,
    NonStandardFitLength,
    EquivLength,
    Count,
};

constexpr int PipeColumnCount = static_cast<int>(PipeColumn::Count);

struct PipeColumnInfo {
    std::string_view Control; // "txtBNodeNumber"
    std::string_view Caption; // "Sprk Area"; the discharge words switch it for "Hose"
    std::string_view HelpKey; // "EEPipeDataNode"
    std::optional<NumberFieldKind> Number;
    std::optional<TextFieldKind> Text;
    std::optional<UnitKind> Unit;
};

const PipeColumnInfo& ColumnInfo(PipeColumn column);
PipeColumn ColumnAt(int index);
int IndexOf(PipeColumn column);

// The node end a column belongs to; none for the pipe's own columns.
enum class ColumnEnd { None, Beginning, Ending };
ColumnEnd EndOfColumn(PipeColumn column);
// The column of the same field at the other end (a B field for its E field and back).
PipeColumn NodeColumn(PipeColumn column, bool ending);
// True for the six columns of a node's data (not the node number itself).
bool IsNodeDataColumn(PipeColumn column);

// "Sprinkler" or "Hose": the project's primary discharge word.
bool IsHoseDischarge(const Project& project);
std::string DischargeWord(const Project& project);
// A caption or message in the project's words: "Sprk" becomes "Flow", "NSprk" "Fixed",
// "Sprinkler" "Hose" (also in small letters) where the discharge is hose.
std::string InDischargeWords(std::string_view text, const Project& project);

std::string ColumnCaption(PipeColumn column, const Project& project);

} // namespace quench
