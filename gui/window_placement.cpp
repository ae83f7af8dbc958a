#include "gui/window_placement.h"

#include "core/window_position.h"

#include <QGuiApplication>
#include <QScreen>

namespace quench::gui {

namespace {

WindowRectangle ToTwips(const QRect& rectangle) {
    return {rectangle.x() * TwipsPerPixel, rectangle.y() * TwipsPerPixel,
            rectangle.width() * TwipsPerPixel, rectangle.height() * TwipsPerPixel};
}

QRect ToPixels(const WindowRectangle& rectangle) {
    return {static_cast<int>(rectangle.Left / TwipsPerPixel),
            static_cast<int>(rectangle.Top / TwipsPerPixel),
            static_cast<int>(rectangle.Width / TwipsPerPixel),
            static_cast<int>(rectangle.Height / TwipsPerPixel)};
}

// The area a window may take: the parent's for a child, the screen's for a top-level window.
QRect Area(const QWidget& window) {
    if (!window.isWindow() && window.parentWidget() != nullptr) {
        return window.parentWidget()->rect();
    }
    const QScreen* screen =
        window.screen() != nullptr ? window.screen() : QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
}

QRect Geometry(const QWidget& window) {
    return window.isWindow() ? window.normalGeometry() : window.geometry();
}

} // namespace

void RestorePlacement(QWidget& window, const IniFileHandler& settings, std::string_view section,
                      bool childrenMaximized) {
    WindowPosition design;
    design.Rectangle = ToTwips(Geometry(window));
    const WindowPosition position =
        RestorePosition(settings, section, design, ToTwips(Area(window)), childrenMaximized);
    window.setGeometry(ToPixels(position.Rectangle));
    if (position.State == WindowState::Maximized) {
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    }
}

void SavePlacement(const QWidget& window, const IniFileHandler& settings,
                   std::string_view section) {
    WindowPosition position;
    position.Rectangle = ToTwips(Geometry(window));
    position.State = window.isMaximized()   ? WindowState::Maximized
                     : window.isMinimized() ? WindowState::Minimized
                                            : WindowState::Normal;
    SavePosition(settings, section, position);
}

} // namespace quench::gui
