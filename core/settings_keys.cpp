#include "core/settings_keys.h"

#include "core/formats.h"
#include "core/text.h"

#include <array>

namespace quench {

namespace {

using namespace std::string_view_literals;

// Report check boxes are stored as 1 or 0, font flags as Boolean texts. A blank default leaves
// the choice to the screen that uses the key (a colour of the scheme, no page range, no logo).
constexpr std::array Table{
    SettingDefinition{sections::Options, "ConfirmPipeDeletion"sv, "True"sv},
    SettingDefinition{sections::Options, "NumOfPipesToDisplay"sv, "6"sv},
    SettingDefinition{sections::Options, "Double-clicking in Explorer"sv, "0"sv},
    SettingDefinition{sections::Options, "Show Explorer at Startup"sv, "False"sv},
    SettingDefinition{sections::Options, "Show Tips at Startup"sv, "False"sv},
    SettingDefinition{sections::Options, "OpenLastProject"sv, "False"sv},
    SettingDefinition{sections::Options, "NewProjectsCopyAutoload"sv, "False"sv},
    SettingDefinition{sections::Options, "NumberOfPreviousProjectsOnFileMenu"sv, "8"sv},
    SettingDefinition{sections::Options, "AutoSave"sv, "True"sv},
    SettingDefinition{sections::Options, "AutoSaveInterval"sv, "5"sv},
    SettingDefinition{sections::Paths, "ProjectPath"sv, ""sv},
    SettingDefinition{sections::RecentFiles, "File0"sv, ""sv},
    SettingDefinition{sections::RecentFiles, "LastOpened"sv, ""sv},
    SettingDefinition{sections::Units, "Metric"sv, "False"sv},
    SettingDefinition{sections::Colors, "ShowDefaultColors"sv, "True"sv},
    SettingDefinition{sections::GPDForm, "TabOnTop"sv, "0"sv},
    SettingDefinition{sections::EnterEditPipeData, "TabOnTop"sv, "0"sv},
    SettingDefinition{sections::Calculation, "TabOnTop"sv, "0"sv},
    SettingDefinition{sections::Miscellaneous, "WallpaperPictureOrColorOption"sv, ""sv},
    SettingDefinition{sections::Miscellaneous, "WallpaperLastCustomColorSelected"sv, ""sv},
    SettingDefinition{sections::Miscellaneous, "WallpaperPictureFilename"sv, ""sv},
    SettingDefinition{sections::Miscellaneous, "MostRecentBackgroundColorWhetherCustomOrDefault"sv,
                      ""sv},
    SettingDefinition{sections::Miscellaneous, "WallPaperCenterTileStretchOrFit"sv, ""sv},
    SettingDefinition{sections::Miscellaneous, "NumberOfNodeRows"sv, "10"sv},
    SettingDefinition{sections::Miscellaneous, "RepositionTags"sv, "False"sv},
    SettingDefinition{sections::Miscellaneous, "ExcludeDiameters"sv, "False"sv},
    SettingDefinition{sections::Miscellaneous, "ChangeColors"sv, "False"sv},
    SettingDefinition{sections::Miscellaneous, "ExcludeFittings"sv, "False"sv},
    SettingDefinition{sections::Miscellaneous, "IncludeNStdData"sv, "False"sv},
    SettingDefinition{sections::Miscellaneous, "TagFactor"sv, "1"sv},
    SettingDefinition{sections::ReportOptions, "chkTitlePage"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkGeneralProjectData"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkInputNodeData"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkInputPipeData"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkInputPipeFittingData"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkInputPumpData"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkOutputNodeGroup"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkOutputPipeData"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkOutputSprinkler"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkOutputSummary"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "chkHydraulicGraph"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "lblMainHeader"sv, ""sv},
    SettingDefinition{sections::ReportOptions, "lblMainHeaderText"sv, ""sv},
    SettingDefinition{sections::ReportOptions, "MainHeaderFont"sv, "Arial"sv},
    SettingDefinition{sections::ReportOptions, "MainHeaderFontSize"sv, "16"sv},
    SettingDefinition{sections::ReportOptions, "MainHeaderFontBold"sv, "True"sv},
    SettingDefinition{sections::ReportOptions, "MainHeaderFontItalic"sv, "False"sv},
    SettingDefinition{sections::ReportOptions, "lblSecondaryHeader"sv, ""sv},
    SettingDefinition{sections::ReportOptions, "lblSecondaryHeaderText"sv, ""sv},
    SettingDefinition{sections::ReportOptions, "SecondaryHeaderFont"sv, "Arial"sv},
    SettingDefinition{sections::ReportOptions, "SecondaryHeaderFontSize"sv, "14"sv},
    SettingDefinition{sections::ReportOptions, "SecondaryHeaderFontBold"sv, "True"sv},
    SettingDefinition{sections::ReportOptions, "SecondaryHeaderFontItalic"sv, "False"sv},
    SettingDefinition{sections::ReportOptions, "lblBody"sv, ""sv},
    SettingDefinition{sections::ReportOptions, "lblBodyText"sv, ""sv},
    SettingDefinition{sections::ReportOptions, "BodyFont"sv, "Arial"sv},
    SettingDefinition{sections::ReportOptions, "BodyFontSize"sv, "10"sv},
    SettingDefinition{sections::ReportOptions, "BodyFontBold"sv, "False"sv},
    SettingDefinition{sections::ReportOptions, "BodyFontItalic"sv, "False"sv},
    SettingDefinition{sections::ReportOptions, "chkPageNumbers"sv, "1"sv},
    SettingDefinition{sections::ReportOptions, "chkDate"sv, "1"sv},
    SettingDefinition{sections::ReportOptions, "chkFilename"sv, "1"sv},
    SettingDefinition{sections::ReportOptions, "txtStartingPageNo"sv, ""sv},
    SettingDefinition{sections::ReportOptions, "txtEndingPageNo"sv, ""sv},
    SettingDefinition{sections::ReportOptions, "txtLineSpacing"sv, "100"sv},
    SettingDefinition{sections::ReportOptions, "chkColorGraphs"sv, "1"sv},
    SettingDefinition{sections::ReportOptions, "chkAutoRefresh"sv, "1"sv},
    SettingDefinition{sections::ReportOptions, "chkPrintLogo"sv, "0"sv},
    SettingDefinition{sections::ReportOptions, "txtTitlePageLogo"sv, ""sv},
};

std::string RecentFileKey(int index) {
    return "File" + std::to_string(index);
}

} // namespace

std::span<const SettingDefinition> SettingsTable() {
    return Table;
}

const SettingDefinition* FindSetting(std::string_view section, std::string_view key) {
    for (const SettingDefinition& definition : Table) {
        if (EqualsIgnoreCase(definition.Section, section) &&
            EqualsIgnoreCase(definition.Key, key)) {
            return &definition;
        }
    }
    return nullptr;
}

std::string_view SettingDefault(std::string_view section, std::string_view key) {
    const SettingDefinition* definition = FindSetting(section, key);
    return definition != nullptr ? definition->Default : std::string_view();
}

std::string ReadSetting(const IniFileHandler& ini, std::string_view section, std::string_view key) {
    return ini.MyGetAppProfileString(section, key, SettingDefault(section, key));
}

bool ReadFlagSetting(const IniFileHandler& ini, std::string_view section, std::string_view key) {
    return ini.MyGetAppProfileBoolean(section, key,
                                      EqualsIgnoreCase(SettingDefault(section, key), "True"));
}

Integer ReadIntegerSetting(const IniFileHandler& ini, std::string_view section,
                           std::string_view key) {
    return ini.MyGetAppProfileInteger(section, key, CInt(ToNumber(SettingDefault(section, key))));
}

bool ConfirmPipeDeletion(const IniFileHandler& ini) {
    return ReadFlagSetting(ini, sections::Options, "ConfirmPipeDeletion");
}

Integer NumOfPipesToDisplay(const IniFileHandler& ini) {
    return ReadIntegerSetting(ini, sections::Options, "NumOfPipesToDisplay");
}

Integer DoubleClickingInExplorer(const IniFileHandler& ini) {
    return ReadIntegerSetting(ini, sections::Options, "Double-clicking in Explorer");
}

bool ShowExplorerAtStartup(const IniFileHandler& ini) {
    return ReadFlagSetting(ini, sections::Options, "Show Explorer at Startup");
}

bool ShowTipsAtStartup(const IniFileHandler& ini) {
    return ReadFlagSetting(ini, sections::Options, "Show Tips at Startup");
}

bool OpenLastProject(const IniFileHandler& ini) {
    return ReadFlagSetting(ini, sections::Options, "OpenLastProject");
}

bool NewProjectsCopyAutoload(const IniFileHandler& ini) {
    return ReadFlagSetting(ini, sections::Options, "NewProjectsCopyAutoload");
}

Integer NumberOfPreviousProjectsOnFileMenu(const IniFileHandler& ini) {
    return ReadIntegerSetting(ini, sections::Options, "NumberOfPreviousProjectsOnFileMenu");
}

bool AutoSave(const IniFileHandler& ini) {
    return ReadFlagSetting(ini, sections::Options, "AutoSave");
}

Integer AutoSaveInterval(const IniFileHandler& ini) {
    return ReadIntegerSetting(ini, sections::Options, "AutoSaveInterval");
}

std::string ProjectPath(const IniFileHandler& ini) {
    return ReadSetting(ini, sections::Paths, "ProjectPath");
}

bool WriteProjectPath(const IniFileHandler& ini, std::string_view directory) {
    return ini.MyWriteAppProfileString(sections::Paths, "ProjectPath", directory);
}

std::string RecentFile(const IniFileHandler& ini, int index) {
    return ini.MyGetAppProfileString(sections::RecentFiles, RecentFileKey(index), "");
}

bool WriteRecentFile(const IniFileHandler& ini, int index, std::string_view file) {
    return ini.MyWriteAppProfileString(sections::RecentFiles, RecentFileKey(index), file);
}

std::string LastOpened(const IniFileHandler& ini) {
    return ReadSetting(ini, sections::RecentFiles, "LastOpened");
}

bool WriteLastOpened(const IniFileHandler& ini, std::string_view file) {
    return ini.MyWriteAppProfileString(sections::RecentFiles, "LastOpened", file);
}

bool Metric(const IniFileHandler& ini) {
    return ReadFlagSetting(ini, sections::Units, "Metric");
}

bool WriteMetric(const IniFileHandler& ini, bool metric) {
    return ini.MyWriteAppProfileBoolean(sections::Units, "Metric", metric);
}

bool ShowDefaultColors(const IniFileHandler& ini) {
    return ReadFlagSetting(ini, sections::Colors, "ShowDefaultColors");
}

Integer TabOnTop(const IniFileHandler& ini, std::string_view formSection) {
    return ini.MyGetAppProfileInteger(formSection, "TabOnTop", 0);
}

bool WriteTabOnTop(const IniFileHandler& ini, std::string_view formSection, Integer tab) {
    return ini.MyWriteAppProfileString(formSection, "TabOnTop", std::to_string(tab));
}

Integer NumberOfNodeRows(const IniFileHandler& ini) {
    return ReadIntegerSetting(ini, sections::Miscellaneous, "NumberOfNodeRows");
}

} // namespace quench
