#include "entry/global_edit_items.h"

#include "core/formats.h"
#include "core/text.h"
#include "entry/field_rules.h"
#include "entry/k_factor_text.h"
#include "entry/pipe_row_text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quench {

namespace {

using enum GlobalItem;

constexpr std::array<GlobalItemInfo, GlobalItemCount> Items{{
    {GlobalFrame::Pipe, "Material", "Material", 0, std::nullopt, std::nullopt, "Pipe Material",
     "pipe material", "materials", "", true},
    {GlobalFrame::Pipe, "Diameter", "Diameter", 3, UnitKind::Fine_Length, NumberFieldKind::Diameter,
     "Pipe Diameter", "pipe Diameter", "Diameters", "diameter", false},
    {GlobalFrame::Pipe, "Length", "Length", 2, UnitKind::Length, NumberFieldKind::Length,
     "Pipe Length", "pipe Length", "Lengths", "length", false},
    {GlobalFrame::Pipe, "Status", "Status", 0, std::nullopt, std::nullopt, "Pipe Status",
     "pipe Status", "Status", "", true},
    {GlobalFrame::Node, "K-Factor", "KFactor", 2, UnitKind::K_Factor, NumberFieldKind::KFactor,
     "Nodal K-Factor", "Nodal K-Factor", "K-Factors", "K-Factor", false},
    {GlobalFrame::Node, "Sprk Area", "SprkArea", 1, UnitKind::Area, NumberFieldKind::SprinklerArea,
     "Nodal Sprinkler Area", "Nodal Sprinkler Area", "sprinkler areas", "sprinkler area", false},
    {GlobalFrame::Node, "Elevation", "Elevation", 1, UnitKind::Length, NumberFieldKind::Elevation,
     "Nodal Elevation", "Nodal Elevation", "Elevation", "elevation", false},
}};

double Shown(const GlobalItemInfo& info, double stored, MeasureSystem system) {
    return info.Unit ? ShownValue(*info.Unit, stored, system) : stored;
}

GlobalValue Number(double value) {
    return {"", value};
}

GlobalValue KFactorValue(const std::string& text, MeasureSystem system) {
    if (auto word = KFactorWord(text)) {
        return {*word, 0};
    }
    return Number(ShownValue(UnitKind::K_Factor, ToNumber(text), system));
}

// The picture a list shows a number with.
std::string_view PictureOf(GlobalItem item) {
    switch (item) {
    case Diameter:
        return "##0.0##";
    case Length:
        return "0.00";
    case KFactor:
        return "0.0#";
    default:
        return "0.0";
    }
}

} // namespace

const GlobalItemInfo& ItemInfo(GlobalItem item) {
    return Items[static_cast<std::size_t>(item)];
}

GlobalItem ItemAt(int index) {
    return static_cast<GlobalItem>(std::clamp(index, 0, GlobalItemCount - 1));
}

std::vector<GlobalItem> ItemsOf(GlobalFrame frame) {
    std::vector<GlobalItem> items;
    for (int index = 0; index < GlobalItemCount; ++index) {
        if (ItemInfo(ItemAt(index)).Frame == frame) {
            items.push_back(ItemAt(index));
        }
    }
    return items;
}

GlobalValue ValueAt(const PipeRecord& record, GlobalItem item, NodeEnd end, MeasureSystem system) {
    const GlobalItemInfo& info = ItemInfo(item);
    const bool ending = end == NodeEnd::Ending;
    switch (item) {
    case Material:
        return Number(record.Material);
    case Diameter:
        return Number(Shown(info, record.Diameter, system));
    case Length:
        return Number(Shown(info, record.Length, system));
    case Status:
        return {IsTrue(record.Active) ? ActiveStatusWord : InactiveStatusWord, 0};
    case KFactor:
        return KFactorValue(ending ? record.KFactorE : record.KFactorB, system);
    case SprinklerArea:
        return Number(Shown(info, ending ? record.SprinklerAreaE : record.SprinklerAreaB, system));
    case Elevation:
        return Number(Shown(info, ending ? record.ElevationE : record.ElevationB, system));
    }
    return {};
}

std::optional<GlobalValue> ValueOfText(GlobalItem item, std::string_view text,
                                       char decimalCharacter) {
    const std::string trimmed = Trim(text);
    if (trimmed.empty()) {
        return std::nullopt;
    }
    switch (item) {
    case Material: {
        const Integer material = MaterialOfText(ToUpper(trimmed));
        return material != 0 ? std::optional(Number(material)) : std::nullopt;
    }
    case Status:
        for (const char* word : {ActiveStatusWord, InactiveStatusWord}) {
            if (EqualsIgnoreCase(trimmed, word)) {
                return GlobalValue{word, 0};
            }
        }
        return std::nullopt;
    case KFactor:
        if (auto word = KFactorWord(trimmed)) {
            return GlobalValue{*word, 0};
        }
        break;
    default:
        break;
    }
    std::string number = trimmed;
    std::replace(number.begin(), number.end(), decimalCharacter, '.');
    if (!IsNumeric(number)) {
        return std::nullopt;
    }
    return Number(FieldValue(trimmed, decimalCharacter));
}

std::string ValueText(GlobalItem item, const GlobalValue& value, char decimalCharacter) {
    if (value.IsWord()) {
        return value.Word;
    }
    if (item == Material) {
        return MaterialText(static_cast<Integer>(value.Number));
    }
    return FieldText(value.Number, NumberAttribute{}, decimalCharacter, PictureOf(item));
}

bool SameAtDecimals(GlobalItem item, const GlobalValue& stored, const GlobalValue& current) {
    if (stored.IsWord() || current.IsWord()) {
        return EqualsIgnoreCase(stored.Word, current.Word);
    }
    const int decimals = ItemInfo(item).Decimals;
    return RoundTo(stored.Number, decimals) == RoundTo(current.Number, decimals);
}

std::vector<GlobalValue> ValueList(const Project& project, GlobalItem item,
                                   const GlobalSelection& selection, MeasureSystem system) {
    std::vector<GlobalValue> list;
    const auto gather = [&](int row, NodeEnd end) {
        const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        if (item == Diameter && record.Diameter == NotGiven) {
            return; // no diameter to list
        }
        GlobalValue value = ValueAt(record, item, end, system);
        if (!value.IsWord()) {
            value.Number = RoundTo(value.Number, ItemInfo(item).Decimals);
        }
        if (std::find(list.begin(), list.end(), value) == list.end()) {
            list.push_back(std::move(value));
        }
    };
    if (ItemInfo(item).Frame == GlobalFrame::Pipe) {
        for (int row : SelectedPipes(project, selection)) {
            gather(row, NodeEnd::Beginning);
        }
    } else {
        for (const RowEnd& end : SelectedEnds(project, selection)) {
            gather(end.Row, end.End);
        }
    }
    return list;
}

bool InValueList(const std::vector<GlobalValue>& list, const GlobalValue& value) {
    return std::any_of(list.begin(), list.end(), [&value](const GlobalValue& entry) {
        if (entry.IsWord() || value.IsWord()) {
            return EqualsIgnoreCase(entry.Word, value.Word);
        }
        return std::abs(entry.Number - value.Number) < 0.001;
    });
}

} // namespace quench
