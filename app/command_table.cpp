#include "app/command_table.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>

namespace quench {

namespace {

using namespace std::string_view_literals;

constexpr bool Toolbar = true;
constexpr bool Exists = true;

// The first desktop has the project lifecycle, the Calculation screen, Units, Exit and the window
// arrangement; the other screens arrive later and stay out of the menus until then.
constexpr std::array Table{
    CommandEntry{"ToolNew"sv, Menu::File, "&New"sv, Toolbar, Exists},
    CommandEntry{"ToolOpen"sv, Menu::File, "&Open..."sv, Toolbar, Exists},
    CommandEntry{"ToolClose"sv, Menu::File, "&Close"sv, !Toolbar, Exists},
    CommandEntry{"ToolSave"sv, Menu::File, "&Save"sv, Toolbar, Exists},
    CommandEntry{"ToolSaveAs"sv, Menu::File, "Save &As..."sv, !Toolbar, Exists},
    CommandEntry{"ToolOpenDosQUENCHProject"sv, Menu::File, "Convert &DOS QUENCH Project Files..."sv,
                 !Toolbar, Exists},
    CommandEntry{"ToolSaveAsDosQUENCHProject"sv, Menu::File, "Save as DOS &QUENCH Project..."sv,
                 !Toolbar, Exists},
    CommandEntry{"ToolOpenAutocadDatafile"sv, Menu::File, "Import AutoCAD &Data File..."sv,
                 !Toolbar, Exists},
    // Drawings are exchanged as DXF files on this platform.
    CommandEntry{"ToolReadFromDWG"sv, Menu::File, "&Read from DXF Drawing..."sv, !Toolbar, Exists},
    CommandEntry{"CalculatedSizestoDWG"sv, Menu::File,
                 "&Write Calculated Sizes to DXF Drawing..."sv, !Toolbar, Exists},
    CommandEntry{"ToolPreview"sv, Menu::File, "Print Pre&view"sv, Toolbar, Exists},
    CommandEntry{"ToolPrint"sv, Menu::File, "&Print"sv, Toolbar, Exists},
    CommandEntry{"ToolPrinterSetup"sv, Menu::File, "Printer Set&up..."sv, !Toolbar, Exists},
    CommandEntry{"ToolExit"sv, Menu::File, "E&xit"sv, !Toolbar, Exists},

    CommandEntry{"ToolGPD"sv, Menu::Project, "&General Project Data"sv, Toolbar, Exists},
    CommandEntry{"ToolEnterEditPipeData"sv, Menu::Project, "&Enter/Edit Pipe Data"sv, Toolbar,
                 Exists},
    CommandEntry{"ToolNodalEditor"sv, Menu::Project, "Enter/Edit Pipe &Node Data"sv, Toolbar,
                 Exists},
    CommandEntry{"ToolCalculation"sv, Menu::Project, "&Calculation"sv, Toolbar, Exists},

    CommandEntry{"ToolReportOptions"sv, Menu::Reports, "Report &Options..."sv, Toolbar, Exists},
    CommandEntry{"ToolDXF_Graph"sv, Menu::Reports, "Save Graph as AutoCAD D&XF File..."sv, !Toolbar,
                 Exists},

    CommandEntry{"ToolPipeDB"sv, Menu::Libraries, "&Pipe Materials Library"sv, Toolbar, Exists},
    CommandEntry{"ToolPumpDB"sv, Menu::Libraries, "&Fire Pump Database"sv, Toolbar, Exists},

    CommandEntry{"ToolUnits"sv, Menu::Tools, "Data &Units..."sv, Toolbar, Exists},
    CommandEntry{"ToolOptions"sv, Menu::Tools, "&Options..."sv, !Toolbar, Exists},
    CommandEntry{"ToolProjectExplorer"sv, Menu::Tools, "Project &Explorer"sv, Toolbar, !Exists},
    CommandEntry{"ToolCalculator"sv, Menu::Tools, "&Calculator"sv, !Toolbar, !Exists},
    CommandEntry{"ToolBranchLineCalculator"sv, Menu::Tools, "&Branch Line Calculator"sv, !Toolbar,
                 Exists},
    CommandEntry{"ToolSprinklerCalculator"sv, Menu::Tools, "&Sprinkler K-Factor Calculator"sv,
                 !Toolbar, Exists},
    CommandEntry{"ToolVantorToolbar"sv, Menu::Tools, "Vantor &Toolbar"sv, !Toolbar, !Exists},
    CommandEntry{"ToolAlignTop"sv, Menu::Tools, "Toolbar at To&p"sv, !Toolbar, !Exists},
    CommandEntry{"ToolAlignLeft"sv, Menu::Tools, "Toolbar at &Left"sv, !Toolbar, !Exists},
    CommandEntry{"ToolAlignRight"sv, Menu::Tools, "Toolbar at &Right"sv, !Toolbar, !Exists},
    CommandEntry{"ToolAlignBottom"sv, Menu::Tools, "Toolbar at Bott&om"sv, !Toolbar, !Exists},
    CommandEntry{"ToolCustomizeToolbar"sv, Menu::Tools, "Customi&ze Toolbar..."sv, !Toolbar,
                 !Exists},

    CommandEntry{"WindowCascade"sv, Menu::Window, "&Cascade"sv, !Toolbar, Exists},
    CommandEntry{"WindowTileHorizontal"sv, Menu::Window, "Tile &Horizontal"sv, !Toolbar, Exists},
    CommandEntry{"WindowTileVertical"sv, Menu::Window, "Tile &Vertical"sv, !Toolbar, Exists},
    CommandEntry{"WindowArrangeIcons"sv, Menu::Window, "&Arrange Icons"sv, !Toolbar, Exists},
    CommandEntry{"WindowClose"sv, Menu::Window, "C&lose Window"sv, !Toolbar, Exists},
    CommandEntry{"WindowCloseAll"sv, Menu::Window, "Close All &Project Windows"sv, !Toolbar,
                 Exists},
    CommandEntry{"WindowResetFullSize"sv, Menu::Window, "&Reset to Full Size"sv, !Toolbar, Exists},
    CommandEntry{"WindowResetAllFullSize"sv, Menu::Window, "Reset All to &Full Size"sv, !Toolbar,
                 Exists},

    CommandEntry{"ToolContents"sv, Menu::Help, "&Contents"sv, !Toolbar, !Exists},
    CommandEntry{"ToolSearchForHelp"sv, Menu::Help, "&Search for Help On..."sv, !Toolbar, !Exists},
    CommandEntry{"ToolOverview"sv, Menu::Help, "&Overview"sv, !Toolbar, !Exists},
    CommandEntry{"ToolReadme"sv, Menu::Help, "&Readme"sv, !Toolbar, !Exists},
    CommandEntry{"ToolTutorial"sv, Menu::Help, "&Tutorial"sv, !Toolbar, !Exists},
    CommandEntry{"ToolFrequentlyAskedQuestions"sv, Menu::Help, "&Frequently Asked Questions"sv,
                 !Toolbar, !Exists},
    CommandEntry{"ToolTipOfTheDay"sv, Menu::Help, "Tip of the &Day"sv, !Toolbar, Exists},
    CommandEntry{"ToolSendMailToTechSupport"sv, Menu::Help, "Send &Mail to Technical Support"sv,
                 !Toolbar, !Exists},
    CommandEntry{"tbCheckForUpdate"sv, Menu::Help, "Check for &Updates"sv, !Toolbar, !Exists},
    CommandEntry{"ToolFreeSoftware"sv, Menu::Help, "Free Software"sv, !Toolbar, !Exists},
    CommandEntry{"ToolNewsRoom"sv, Menu::Help, "News Room"sv, !Toolbar, !Exists},
    CommandEntry{"ToolProgramUpdates"sv, Menu::Help, "Program Updates"sv, !Toolbar, !Exists},
    CommandEntry{"ToolTrainingServices"sv, Menu::Help, "Training Services"sv, !Toolbar, !Exists},
    CommandEntry{"ToolVantorHomePage"sv, Menu::Help, "Vantor Home Page"sv, !Toolbar, !Exists},
    CommandEntry{"ToolAboutVantorSoftware"sv, Menu::Help, "About &Vantor Software"sv, !Toolbar,
                 !Exists},
    CommandEntry{"ToolAboutQUENCH"sv, Menu::Help, "&About QUENCH"sv, !Toolbar, Exists},
};

// DisableActiveBarTools: "File", then "Project", then "Reports".
constexpr std::array DisableList{
    "ToolClose"sv,
    "ToolSave"sv,
    "ToolSaveAs"sv,
    "ToolPreview"sv,
    "ToolPrint"sv,
    "ToolSaveAsDosQUENCHProject"sv,
    "CalculatedSizestoDWG"sv,
    "ToolGPD"sv,
    "ToolEnterEditPipeData"sv,
    "ToolNodalEditor"sv,
    "ToolCalculation"sv,
    "ToolReportOptions"sv,
    "ToolDXF_Graph"sv,
};

constexpr auto EnableList = [] {
    std::array<std::string_view, DisableList.size() + 2> list{};
    std::copy(DisableList.begin(), DisableList.end(), list.begin());
    list[DisableList.size()] = "ToolPipeDB"sv;
    list[DisableList.size() + 1] = "ToolPumpDB"sv;
    return list;
}();

constexpr std::string_view RecentFilePrefix = "RecentFile";

// The entries whose screen exists and that the test picks, in table order.
template <typename Pick>
std::vector<const CommandEntry*> AvailableEntries(Pick pick) {
    std::vector<const CommandEntry*> entries;
    for (const CommandEntry& entry : Table) {
        if (entry.Available && pick(entry)) {
            entries.push_back(&entry);
        }
    }
    return entries;
}

} // namespace

std::span<const CommandEntry> CommandTable() {
    return Table;
}

const CommandEntry* FindCommand(std::string_view key) {
    const auto found = std::find_if(Table.begin(), Table.end(),
                                    [&](const CommandEntry& entry) { return entry.Key == key; });
    return found != Table.end() ? &*found : nullptr;
}

std::string_view MenuCaption(Menu menu) {
    switch (menu) {
    case Menu::File:
        return "&File";
    case Menu::Project:
        return "&Project";
    case Menu::Reports:
        return "&Reports";
    case Menu::Libraries:
        return "&Libraries";
    case Menu::Tools:
        return "&Tools";
    case Menu::Window:
        return "&Window";
    case Menu::Help:
        return "&Help";
    }
    return "";
}

std::vector<const CommandEntry*> MenuCommands(Menu menu) {
    return AvailableEntries([menu](const CommandEntry& entry) { return entry.Menu == menu; });
}

std::vector<const CommandEntry*> ToolbarCommands() {
    return AvailableEntries([](const CommandEntry& entry) { return entry.OnToolbar; });
}

std::optional<int> RecentFileIndex(std::string_view key) {
    if (!key.starts_with(RecentFilePrefix) || key.size() == RecentFilePrefix.size()) {
        return std::nullopt;
    }
    const std::string_view digits = key.substr(RecentFilePrefix.size());
    int index = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), index);
    if (error != std::errc() || end != digits.data() + digits.size() || index < 0) {
        return std::nullopt;
    }
    return index;
}

std::string RecentFileKey(int index) {
    return std::string(RecentFilePrefix) + std::to_string(index);
}

std::span<const std::string_view> DisabledWithoutProject() {
    return DisableList;
}

std::span<const std::string_view> EnabledWithProject() {
    return EnableList;
}

CommandAvailability::CommandAvailability() {
    for (const CommandEntry& entry : Table) {
        enabled_[std::string(entry.Key)] = true;
    }
    for (const std::string_view key : EnableList) {
        enabled_[std::string(key)] = false;
    }
}

void CommandAvailability::DisableActiveBarTools() {
    for (const std::string_view key : DisableList) {
        enabled_[std::string(key)] = false;
    }
}

void CommandAvailability::EnableActiveBarTools() {
    for (const std::string_view key : EnableList) {
        enabled_[std::string(key)] = true;
    }
}

bool CommandAvailability::IsEnabled(std::string_view key) const {
    const auto found = enabled_.find(key);
    return found != enabled_.end() && found->second;
}

bool CommandAvailability::CanRun(std::string_view key) const {
    if (RecentFileIndex(key)) {
        return true;
    }
    const CommandEntry* entry = FindCommand(key);
    return entry != nullptr && entry->Available && IsEnabled(key);
}

std::string FrameTitle(std::string_view projectFileName) {
    const std::string name =
        std::filesystem::path(std::string(projectFileName)).filename().string();
    if (projectFileName.empty() || EqualsIgnoreCase(name, "UNTITLED.HID")) {
        return "Quench - (UNTITLED)";
    }
    return "Quench - " + std::string(projectFileName);
}

} // namespace quench
