#include "entry/help_lists.h"

#include "core/formats.h"
#include "core/text.h"
#include "entry/help_texts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>

namespace quench {

namespace {

using namespace std::string_view_literals;

constexpr std::array KFactorKeys{"EEPipeDataKFactorB"sv,    "EEPipeDataKFactorE"sv,
                                 "EEPipeDataTreeKFactor"sv, "EEPipeDataGridKFactor"sv,
                                 "NodeDataKFactor"sv,       "BranchLineSprinkler"sv,
                                 "KFactKfactor"sv};
constexpr std::array NonStandardFittingKeys{"EEPipeDataNonStandardFitting"sv,
                                            "BranchLineNonStandardFitting"sv};
constexpr std::array FittingKeys{"EEPipeDataStandardFitting"sv, "BranchLineStandardFitting"sv};
constexpr std::array FocusBackKeys{"EEPipeDataNode"sv, "EEPipeDataMeterLoss"sv,
                                   "EEPipeDataNonStandardFitting"sv, "EEPipeDataPipeType"sv,
                                   "EEPipeDataEquivLength"sv};

// Global edit's value lists: the key, the list's title and the word of its lead-ins.
struct ValueListKey {
    std::string_view Key;
    std::string_view Title;
    std::string_view Items;
};

constexpr std::array ValueListKeys{
    ValueListKey{"GlobalCurrentElevation", "Elevation", "Elevations"},
    ValueListKey{"GlobalNewElevation", "Elevation", "Elevations"},
    ValueListKey{"GlobalCurrentKFactor", "K-Factor", "K-Factors"},
    ValueListKey{"GlobalNewKFactor", "K-Factor", "K-Factors"},
    ValueListKey{"GlobalCurrentSprkArea", "{W} Area", "{W} Areas"},
    ValueListKey{"GlobalCurrentMaterial", "Materials", "Materials"},
    ValueListKey{"GlobalCurrentDiameter", "Diameters", "Diameters"},
    ValueListKey{"GlobalNewDiameter", "Diameters", "Diameters"},
    ValueListKey{"GlobalCurrentLength", "Lengths", "Lengths"},
    ValueListKey{"GlobalNewLength", "Lengths", "Lengths"},
    ValueListKey{"GlobalCurrentStatus", "Status", "Status values"},
    ValueListKey{"GlobalNewStatus", "Status", "Status values"},
};

// The sprinkler discharge characteristics of NFPA 13 by orifice: nominal orifice, orifice
// type, percent of the nominal 1/2 in. discharge, nominal K.
constexpr std::array<std::array<std::string_view, 4>, 8> OrificeRows{{
    {"1/4", "Small", "25", "1.4"},
    {"5/16", "Small", "33.3", "1.9"},
    {"3/8", "Small", "50", "2.8"},
    {"7/16", "Small", "75", "4.2"},
    {"1/2", "Standard", "100", "5.6"},
    {"17/32", "Large", "140", "8.0"},
    {"5/8", "Large", "200", "11.2"},
    {"3/4", "Large", "250", "14.0"},
}};

// End points of the density/area curves of NFPA 13: density in gpm/ft², area in ft², curve.
constexpr std::array<std::array<std::string_view, 3>, 10> DensityRows{{
    {"0.10", "1500", "Light Hazard"},
    {"0.07", "3000", "Light"},
    {"0.15", "1500", "Ordinary 1"},
    {"0.12", "4000", "Ordinary 1"},
    {"0.20", "1500", "Ordinary 2"},
    {"0.17", "4000", "Ordinary 2"},
    {"0.30", "2500", "Ex. Haz. Gp. 1"},
    {"0.25", "5000", "Ex. Haz. Gp. 1"},
    {"0.40", "2500", "Ex. Haz. Gp. 2"},
    {"0.35", "5000", "Ex. Haz. Gp. 2"},
}};

template <std::size_t N>
bool IsOneOf(std::string_view key, const std::array<std::string_view, N>& keys) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

std::string Small(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return text;
}

PickList KFactorList(const std::string& word) {
    return {"K-Factor",
            {"Ref Num", "Description"},
            {{"Dflt", "Default value specified in GPD screen"},
             {"None", "Non-" + word + " node"},
             {"Inact", "Inactivate " + Small(word) + " node"},
             {"Value", "A K-Factor different from Default value"}},
            "",
            ""};
}

PickList OneColumnList(std::string title, std::string heading,
                       std::initializer_list<std::string_view> rows) {
    PickList list{std::move(title), {}, {}, "", ""};
    if (!heading.empty()) {
        list.Headings.push_back(std::move(heading));
    }
    for (const std::string_view row : rows) {
        list.Rows.push_back({std::string(row)});
    }
    return list;
}

PickList DefaultKFactorList() {
    PickList list{"Default System K-Factor",
                  {"Nom. Orifice (inch)", "Orifice Type", "% of 1/2\" Discharge (gpm)", "K"},
                  {},
                  "",
                  ""};
    for (const auto& row : OrificeRows) {
        list.Rows.push_back(
            {std::string(row[0]), std::string(row[1]), std::string(row[2]), std::string(row[3])});
    }
    return list;
}

PickList DensityList() {
    PickList list{"Minimum Desired Density",
                  {"Density gpm/ft²", "Area Of Sprinkler Operation (ft²)", "Hazard"},
                  {},
                  "",
                  ""};
    for (const auto& row : DensityRows) {
        list.Rows.push_back({std::string(row[0]), std::string(row[1]), std::string(row[2])});
    }
    return list;
}

PickList MaximumAreaList(const std::string& word, MeasureSystem system) {
    const bool si = system == MeasureSystem::SI;
    PickList list{"Maximum Area Per " + word,
                  {"Hazard", si ? "Protection Area (m²)" : "Protection Area (ft²)"},
                  {},
                  "",
                  ""};
    list.Rows = {{"Light Hazard", si ? "21" : "225"},
                 {"Ordinary Hazard", si ? "12" : "130"},
                 {"Extra Hazard", si ? "9.3" : "100"},
                 {"High-Piled Storage", si ? "9.3" : "100"}};
    return list;
}

PickList GroupsInUse(const Project& project, bool areaGroups) {
    PickList list{areaGroups ? "Nodal Area Group" : "Pipe Type Group", {}, {}, "", ""};
    std::set<std::string> seen;
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (!HasBothNodes(pipe)) {
            continue;
        }
        std::vector<std::string> values;
        if (areaGroups) {
            values = {Trim(pipe.AreaGroupB), Trim(pipe.AreaGroupE)};
        } else if (pipe.TypeGroup != 0) {
            values = {std::to_string(pipe.TypeGroup)};
        }
        for (const std::string& value : values) {
            if (!value.empty() && seen.insert(value).second) {
                list.Rows.push_back({value});
            }
        }
    }
    return list;
}

PickList NamesList(std::string title, const std::vector<std::string>& names) {
    PickList list{std::move(title), {}, {}, "", ""};
    for (const std::string& name : names) {
        list.Rows.push_back({name});
    }
    return list;
}

const ValueListKey* FindValueListKey(std::string_view key) {
    const auto found = std::find_if(ValueListKeys.begin(), ValueListKeys.end(),
                                    [key](const ValueListKey& entry) { return entry.Key == key; });
    return found != ValueListKeys.end() ? &*found : nullptr;
}

PickList ValueList(const ValueListKey& entry, const std::string& word,
                   const std::vector<std::string>& values) {
    PickList list = NamesList(WithDischargeWord(entry.Title, word), values);
    const std::string items = WithDischargeWord(entry.Items, word);
    list.EntryLabel = entry.Key.starts_with("GlobalCurrent")
                          ? "Following are the " + items + " specified:"
                          : "Following are some possible choices for " + items + ":";
    return list;
}

// The list of a key and the column its pick returns; nothing for a plain window.
std::optional<std::pair<PickList, std::size_t>> ListOf(const HelpRequest& request,
                                                       const Project& project,
                                                       const HelpSources& sources,
                                                       const std::string& word) {
    const std::string_view key = request.Key;
    if (IsOneOf(key, KFactorKeys)) {
        return std::pair{KFactorList(word), 0};
    }
    if (IsOneOf(key, NonStandardFittingKeys)) {
        return std::pair{PickList{"Non-Standard Fittings", {}, {}, "", ""}, 0};
    }
    if (sources.Library != nullptr) {
        if (auto list = LibraryPickList(key, *sources.Library, project, request.MaterialText)) {
            return std::pair{std::move(*list), 0};
        }
    }
    if (key == "GPDDefaultKFactor") {
        return std::pair{DefaultKFactorList(), 3};
    }
    if (key == "GPDSprinklerSystemType") {
        return std::pair{OneColumnList(word + " System Type", "Type", {"Wet", "Dry"}), 0};
    }
    if (key == "GPDHazardDescription") {
        return std::pair{OneColumnList("Hazard Description", "",
                                       {"Light Hazard", "Ordinary 1", "Ordinary 2",
                                        "Ex. Haz. Gp. 1 ", "Ex. Haz. Gp. 2"}),
                         0};
    }
    if (key == "GPDMinDesiredDensity") {
        return std::pair{DensityList(), 0};
    }
    if (key == "GPDMaxAreaPerSpinkler") {
        return std::pair{MaximumAreaList(word, sources.System), 1};
    }
    if (key == "EEPipeDataGlobalPipeTypeGroup" || key == "EEPipeDataGlobalNodeAreaGroup") {
        return std::pair{GroupsInUse(project, key == "EEPipeDataGlobalNodeAreaGroup"), 0};
    }
    if (const ValueListKey* entry = FindValueListKey(key)) {
        return std::pair{ValueList(*entry, word, sources.Values), 0};
    }
    if (key == "FirePumpCopyPump") {
        return std::pair{NamesList("Copy Pump", sources.PumpNames), 0};
    }
    if (key == "AddFitRoughness") {
        return std::pair{sources.System == MeasureSystem::SI
                             ? OneColumnList("Roughness", "", {"0.051", "0.102"})
                             : OneColumnList("Roughness", "", {"0.002", "0.004"}),
                         0};
    }
    if (key == "PrimaryTypeOfDischarge") {
        return std::pair{OneColumnList("Primary Type Of Discharge", "", {"Sprinkler", "Hose"}), 0};
    }
    return std::nullopt;
}

std::vector<HelpCalculatorButton> CalculatorsOf(std::string_view key) {
    if (IsOneOf(key, KFactorKeys)) {
        std::vector<HelpCalculatorButton> buttons;
        if (key != "KFactKfactor") {
            buttons.push_back(
                {HelpCalculator::SprinklerKFactor, "&Open Sprinkler K-Factor Calculator"});
        }
        if (key != "BranchLineSprinkler") {
            buttons.push_back(
                {HelpCalculator::BranchLine, "Open &Branch Line K-Factor Calculator"});
        }
        return buttons;
    }
    if (IsOneOf(key, NonStandardFittingKeys)) {
        return {{HelpCalculator::AdditionalFitting, "&Open Additional Fitting Length Calculator"}};
    }
    return {};
}

// Two texts name the same value: alike without regard to case, or the same number.
bool SameValue(std::string_view left, std::string_view right) {
    const std::string a = Trim(left);
    const std::string b = Trim(right);
    if (a.empty() || b.empty()) {
        return false;
    }
    if (EqualsIgnoreCase(a, b)) {
        return true;
    }
    const auto isNumber = [](const std::string& text) {
        return text.find_first_not_of("0123456789.-") == std::string::npos &&
               text.find_first_of("0123456789") != std::string::npos;
    };
    return isNumber(a) && isNumber(b) && ToNumber(a) == ToNumber(b);
}

int RowHolding(const PickList& list, std::size_t column, std::string_view text) {
    for (std::size_t row = 0; row < list.Rows.size(); ++row) {
        if (column < list.Rows[row].size() && SameValue(list.Rows[row][column], text)) {
            return static_cast<int>(row);
        }
    }
    return -1;
}

} // namespace

HelpContent LoadHelp(const HelpRequest& request, const Project& project,
                     const HelpSources& sources) {
    const std::string word = DischargeWordOf(project.SystemData.PrimaryDischargeName);
    const HelpText text = HelpTextOf(request.Key, word);
    HelpContent content;
    content.Title = text.Title;
    content.Description = text.Description;
    auto list = ListOf(request, project, sources, word);
    if (!list) {
        return content;
    }
    content.WithList = true;
    content.List = std::move(list->first);
    content.ValueColumn = list->second;
    if (!content.List.Title.empty()) {
        content.Title = content.List.Title;
    }
    content.SelectedRow = RowHolding(content.List, content.ValueColumn, request.FieldText);
    content.FittingEntry = IsOneOf(std::string_view(request.Key), FittingKeys);
    content.EntryLimits = TextAttributeOf(content.FittingEntry ? TextFieldKind::FittingText
                                                               : TextFieldKind::DeviceShortName);
    content.EntryLabel = content.List.EntryLabel.empty() ? "Value:" : content.List.EntryLabel;
    content.Calculators = CalculatorsOf(request.Key);
    return content;
}

std::optional<std::string> PickedValue(const HelpContent& content, int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= content.List.Rows.size()) {
        return std::nullopt;
    }
    const std::vector<std::string>& cells = content.List.Rows[static_cast<std::size_t>(row)];
    if (content.ValueColumn >= cells.size()) {
        return std::nullopt;
    }
    // A list may pad its cells for their look ("Ex. Haz. Gp. 1 "): the field gets the value.
    return Trim(cells[content.ValueColumn]);
}

std::optional<std::string> TypedValue(const HelpContent& content, std::string_view text) {
    std::string value = Trim(text);
    if (value.empty()) {
        return std::nullopt;
    }
    if (content.EntryLimits.MaxLength > 0 &&
        value.size() > static_cast<std::size_t>(content.EntryLimits.MaxLength)) {
        value.resize(static_cast<std::size_t>(content.EntryLimits.MaxLength));
    }
    if (content.FittingEntry) {
        std::transform(value.begin(), value.end(), value.begin(), [](unsigned char character) {
            return static_cast<char>(std::toupper(character));
        });
    }
    return value;
}

std::string_view HelpReturnWord(std::string_view screen) {
    if (screen == "frmEEPipeData") {
        return "UpdateEEPipeDataFromHelpWindow";
    }
    if (screen == "frmCalculation") {
        return "UpdateCalculationDataFromHelpWindow";
    }
    if (screen == "frmGPD") {
        return "UpdateGPDFromHelpWindow";
    }
    if (screen == "frmNodalEditor") {
        return "UpdateNodeDataFromHelpWindow";
    }
    if (screen == "frmAddFitCalc") {
        return "UpdateFittingCalculator";
    }
    return {};
}

std::string_view HelpCloseWord(std::string_view key) {
    return IsOneOf(key, FocusBackKeys) ? "SetFocusAfterHelpWindow"sv : std::string_view();
}

} // namespace quench
