#pragma once

// The commands of the main frame as data: every key that a menu entry or toolbar button delivers
// to the one dispatcher, with its menu, caption, toolbar flag, and whether the screen or action
// behind it exists yet (a key whose screen does not exist stays out of the menus). Availability
// while no project is open follows DisableActiveBarTools and EnableActiveBarTools.

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

enum class Menu { File, Project, Reports, Libraries, Tools, Window, Help };

struct CommandEntry {
    std::string_view Key;
    quench::Menu Menu;
    std::string_view Caption; // "&" marks the access key
    bool OnToolbar = false;
    bool Available = false; // its screen or action exists in this build
};

std::span<const CommandEntry> CommandTable();

// The entry of a key (exact spelling), or null. "RecentFile" plus a number is not in the table.
const CommandEntry* FindCommand(std::string_view key);

// The menu's caption: "&File", "&Project", "&Reports", "&Libraries", "&Tools", "&Window", "&Help".
std::string_view MenuCaption(Menu menu);

// The entries of a menu that exist in this build, in table order.
std::vector<const CommandEntry*> MenuCommands(Menu menu);
std::vector<const CommandEntry*> ToolbarCommands();

// "RecentFile3" is the entry at place 3 of the recent files list; nothing for another key.
std::optional<int> RecentFileIndex(std::string_view key);
std::string RecentFileKey(int index);

// The commands that need an open project, in the order the two functions name them.
std::span<const std::string_view> DisabledWithoutProject();
// The same list and the two library screens.
std::span<const std::string_view> EnabledWithProject();

// Which commands can be given now. At start the commands of EnableActiveBarTools are off (no
// project is open); the library screens come on with the first project and stay on, since
// DisableActiveBarTools does not name them.
class CommandAvailability {
public:
    CommandAvailability();

    void DisableActiveBarTools();
    void EnableActiveBarTools();

    // Whether the two functions have the command on; true for a command they never touch.
    // False for an unknown key.
    bool IsEnabled(std::string_view key) const;
    // Enabled, and its screen exists in this build. A recent-file key can always run.
    bool CanRun(std::string_view key) const;

private:
    std::map<std::string, bool, std::less<>> enabled_;
};

// The title of the main frame: "Quench - " and the project's file name, or "(UNTITLED)" for a
// project that has no name yet ("UNTITLED.HID").
std::string FrameTitle(std::string_view projectFileName);

} // namespace quench
