#pragma once

// Where a form stands on the screen, kept in the form's own section of the settings ("MDIForm",
// "GPDForm", ...) as "Left", "Top", "Width", "Height" in twips and "WindowState". The desktop turns
// its rectangles into twips and back; these functions hold the rules.

#include "core/settings.h"
#include "core/types.h"

#include <string_view>

namespace quench {

// 1440 twips to the inch; a screen of 96 dots to the inch has 15 twips to the pixel.
constexpr Long TwipsPerPixel = 15;

enum class WindowState : Integer { Normal = 0, Minimized = 1, Maximized = 2 };

struct WindowRectangle {
    Long Left = 0;
    Long Top = 0;
    Long Width = 0;
    Long Height = 0;
};

struct WindowPosition {
    WindowRectangle Rectangle;
    WindowState State = WindowState::Normal;
};

// Writes the state, and the rectangle while the form is in its normal state (the rectangle of a
// maximised or minimised form is not the one to come back to). False when the file is not written.
bool SavePosition(const IniFileHandler& ini, std::string_view section,
                  const WindowPosition& position);

// The position to give a form: each key read with the form's design value as default, a form
// that was minimised comes back normal, and the rectangle is kept inside the screen. An MDI child
// opened while the other children are maximised keeps its design position: it is maximised too.
WindowPosition RestorePosition(const IniFileHandler& ini, std::string_view section,
                               const WindowPosition& design, const WindowRectangle& screen,
                               bool childrenMaximized = false);

// The rectangle moved (and, if it is larger, shrunk) so that it lies wholly on the screen.
WindowRectangle KeepInsideScreen(const WindowRectangle& rectangle, const WindowRectangle& screen);

} // namespace quench
