#pragma once

// Window positions kept in the settings, one section a form, in twips.

#include "core/settings.h"

#include <string_view>

#include <QWidget>

namespace quench::gui {

// Puts the window where it stood last time (its present geometry is the design value), inside
// the screen. An MDI child whose neighbours are maximised keeps its place.
void RestorePlacement(QWidget& window, const IniFileHandler& settings, std::string_view section,
                      bool childrenMaximized = false);

void SavePlacement(const QWidget& window, const IniFileHandler& settings, std::string_view section);

} // namespace quench::gui
