#pragma once

// How the program talks to a person: a message box or a question. The desktop shows real boxes;
// the command line prints "Title: text" and answers from its options; tests use a scripted fake
// that records every message, so that the exact words can be checked.

#include <string_view>

namespace quench {

enum class MessageStyle { Plain, Information, Warning, Critical, Question };

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };

enum class Answer { Ok, Cancel, Yes, No };

class Dialogs {
public:
    virtual ~Dialogs() = default;

    virtual void ShowMessage(MessageStyle style, std::string_view title, std::string_view text) = 0;

    // The answer of the person, or the default button when nobody can answer.
    virtual Answer Ask(Buttons buttons, Answer defaultAnswer, MessageStyle style,
                       std::string_view title, std::string_view text) = 0;
};

// Nobody to talk to: messages go nowhere and every question gets its default button.
class NoDialogs final : public Dialogs {
public:
    void ShowMessage(MessageStyle, std::string_view, std::string_view) override {}
    Answer Ask(Buttons, Answer defaultAnswer, MessageStyle, std::string_view,
               std::string_view) override {
        return defaultAnswer;
    }
};

} // namespace quench
