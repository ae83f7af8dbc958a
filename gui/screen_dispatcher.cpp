#include "gui/screen_dispatcher.h"

namespace quench::gui {

void ScreenDispatcher::Register(std::string_view screen, Handler handler) {
    handlers_[std::string(screen)] = std::move(handler);
}

void ScreenDispatcher::Unregister(std::string_view screen) {
    const auto found = handlers_.find(screen);
    if (found != handlers_.end()) {
        handlers_.erase(found);
    }
}

void ScreenDispatcher::Send(std::string_view screen, std::string_view command) {
    const auto found = handlers_.find(screen);
    if (found != handlers_.end()) {
        // A copy: the handler may close its screen, which unregisters it.
        const Handler handler = found->second;
        handler(command);
    }
}

} // namespace quench::gui
