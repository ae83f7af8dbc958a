#pragma once

// The settings the program keeps in "QUENCH.ini": every section and key in use with its default,
// and typed accessors that read and write through the handler. The defaults stand in one table, so
// a missing key, a deleted file and the options screen's "defaults" all agree.

#include "core/settings.h"
#include "core/types.h"

#include <span>
#include <string>
#include <string_view>

namespace quench {

namespace sections {
inline constexpr std::string_view Options = "Options";
inline constexpr std::string_view Paths = "Paths";
inline constexpr std::string_view RecentFiles = "RecentFiles";
inline constexpr std::string_view Units = "Units";
inline constexpr std::string_view Colors = "Colors";
inline constexpr std::string_view Miscellaneous = "Miscellaneous";
inline constexpr std::string_view ReportOptions = "ReportOptions";
// Forms with a section of their own (positions, and the tab that was on top).
inline constexpr std::string_view MDIForm = "MDIForm";
inline constexpr std::string_view GPDForm = "GPDForm";
inline constexpr std::string_view EnterEditPipeData = "EnterEditPipeData";
inline constexpr std::string_view Calculation = "Calculation";
// The user's own store (not "QUENCH.ini"): the program folders of the maker's products.
inline constexpr std::string_view ProgramFolders = "Program Folders";
} // namespace sections

struct SettingDefinition {
    std::string_view Section;
    std::string_view Key;
    std::string_view Default; // as stored: "True"/"False" for flags, "1"/"0" for report checks
};

// Every setting of "QUENCH.ini" in use, section by section. Keys numbered at run time ("File0",
// "File1", ...) stand once, as "File0".
std::span<const SettingDefinition> SettingsTable();

// The definition of a key (sections and keys compare without regard to case), or null.
const SettingDefinition* FindSetting(std::string_view section, std::string_view key);

// The default text of a key of the table; "" for a key that is not in it.
std::string_view SettingDefault(std::string_view section, std::string_view key);

// Reads of a key of the table with its default from the table.
std::string ReadSetting(const IniFileHandler& ini, std::string_view section, std::string_view key);
bool ReadFlagSetting(const IniFileHandler& ini, std::string_view section, std::string_view key);
Integer ReadIntegerSetting(const IniFileHandler& ini, std::string_view section,
                           std::string_view key);

// "Options"
bool ConfirmPipeDeletion(const IniFileHandler& ini);
Integer NumOfPipesToDisplay(const IniFileHandler& ini);
Integer DoubleClickingInExplorer(const IniFileHandler& ini);
bool ShowExplorerAtStartup(const IniFileHandler& ini);
bool ShowTipsAtStartup(const IniFileHandler& ini);
bool OpenLastProject(const IniFileHandler& ini);
bool NewProjectsCopyAutoload(const IniFileHandler& ini);
Integer NumberOfPreviousProjectsOnFileMenu(const IniFileHandler& ini);
bool AutoSave(const IniFileHandler& ini);
// Minutes between auto-saves, as stored.
Integer AutoSaveInterval(const IniFileHandler& ini);

// "Paths": the projects directory; "" when none is stored.
std::string ProjectPath(const IniFileHandler& ini);
bool WriteProjectPath(const IniFileHandler& ini, std::string_view directory);

// "RecentFiles": entry "File" + index, and the project open when the program last ended.
std::string RecentFile(const IniFileHandler& ini, int index);
bool WriteRecentFile(const IniFileHandler& ini, int index, std::string_view file);
std::string LastOpened(const IniFileHandler& ini);
bool WriteLastOpened(const IniFileHandler& ini, std::string_view file);

// "Units": SI is the default unit system of the data screens.
bool Metric(const IniFileHandler& ini);
bool WriteMetric(const IniFileHandler& ini, bool metric);

// "Colors"
bool ShowDefaultColors(const IniFileHandler& ini);

// "TabOnTop" of a form's section: which tab was on top when the last project closed.
Integer TabOnTop(const IniFileHandler& ini, std::string_view formSection);
bool WriteTabOnTop(const IniFileHandler& ini, std::string_view formSection, Integer tab);

// "Miscellaneous"
Integer NumberOfNodeRows(const IniFileHandler& ini);

} // namespace quench
