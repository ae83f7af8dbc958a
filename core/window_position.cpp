#include "core/window_position.h"

#include "core/text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace quench {

namespace {

// One side: the length no longer than the screen's, the start moved in from either end.
void KeepInside(Long& start, Long& length, Long screenStart, Long screenLength) {
    length = std::clamp<Long>(length, 0, std::max<Long>(screenLength, 0));
    const Long last = screenStart + std::max<Long>(screenLength, 0) - length;
    start = std::clamp(start, screenStart, last);
}

WindowState StateFromNumber(Integer number, WindowState fallback) {
    switch (number) {
    case static_cast<Integer>(WindowState::Normal):
    case static_cast<Integer>(WindowState::Minimized):
        return WindowState::Normal;
    case static_cast<Integer>(WindowState::Maximized):
        return WindowState::Maximized;
    default:
        return fallback;
    }
}

} // namespace

bool SavePosition(const IniFileHandler& ini, std::string_view section,
                  const WindowPosition& position) {
    std::vector<std::pair<std::string_view, Long>> values{
        {"WindowState", static_cast<Long>(position.State)}};
    if (position.State == WindowState::Normal) {
        const WindowRectangle& rectangle = position.Rectangle;
        values.insert(values.end(), {{"Left", rectangle.Left},
                                     {"Top", rectangle.Top},
                                     {"Width", rectangle.Width},
                                     {"Height", rectangle.Height}});
    }
    // One write for all the keys; the other keys of the section (a form's tab) stay, and a key
    // stored in another case is replaced, not doubled.
    std::map<std::string, std::string> keys = ini.MyGetAppProfileSection(section);
    for (const auto& [name, value] : values) {
        std::erase_if(keys, [&](const auto& entry) { return EqualsIgnoreCase(entry.first, name); });
        keys[std::string(name)] = std::to_string(value);
    }
    return ini.MyWriteAppProfileSection(section, keys);
}

WindowPosition RestorePosition(const IniFileHandler& ini, std::string_view section,
                               const WindowPosition& design, const WindowRectangle& screen,
                               bool childrenMaximized) {
    if (childrenMaximized) {
        return design;
    }
    WindowPosition position;
    WindowRectangle& rectangle = position.Rectangle;
    rectangle.Left = ini.MyGetAppProfileLong(section, "Left", design.Rectangle.Left);
    rectangle.Top = ini.MyGetAppProfileLong(section, "Top", design.Rectangle.Top);
    rectangle.Width = ini.MyGetAppProfileLong(section, "Width", design.Rectangle.Width);
    rectangle.Height = ini.MyGetAppProfileLong(section, "Height", design.Rectangle.Height);
    position.State = StateFromNumber(
        ini.MyGetAppProfileInteger(section, "WindowState", static_cast<Integer>(design.State)),
        design.State);
    rectangle = KeepInsideScreen(rectangle, screen);
    return position;
}

WindowRectangle KeepInsideScreen(const WindowRectangle& rectangle, const WindowRectangle& screen) {
    WindowRectangle inside = rectangle;
    KeepInside(inside.Left, inside.Width, screen.Left, screen.Width);
    KeepInside(inside.Top, inside.Height, screen.Top, screen.Height);
    return inside;
}

} // namespace quench
