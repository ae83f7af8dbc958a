#pragma once

// The command words that screens send each other ("UpdatePressure", "Calculate", ...) go through
// one dispatcher. The desktop routes them to the open screen of that name; without a desktop the
// words go nowhere.

#include <string_view>

namespace quench {

class Screens {
public:
    virtual ~Screens() = default;

    // screen: the form's name, such as "frmEEPipeData"; command: the word it is sent.
    virtual void Send(std::string_view screen, std::string_view command) = 0;
};

class NoScreens final : public Screens {
public:
    void Send(std::string_view, std::string_view) override {}
};

} // namespace quench
