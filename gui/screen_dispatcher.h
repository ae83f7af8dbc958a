#pragma once

// The command words between screens ("ShowTab2", "UpdatePressure", ...): each open screen takes
// the words sent to its name; a word for a screen that is not open goes nowhere.

#include "core/screens.h"

#include <functional>
#include <map>
#include <string>

namespace quench::gui {

class ScreenDispatcher final : public Screens {
public:
    using Handler = std::function<void(std::string_view command)>;

    void Register(std::string_view screen, Handler handler);
    void Unregister(std::string_view screen);

    void Send(std::string_view screen, std::string_view command) override;

private:
    std::map<std::string, Handler, std::less<>> handlers_;
};

} // namespace quench::gui
