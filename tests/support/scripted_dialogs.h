#pragma once

#include "core/dialogs.h"

#include <deque>
#include <string>
#include <vector>

namespace quench::testing {

// Records every box and answers questions from a script; with the script empty a question gets
// its default button.
class ScriptedDialogs final : public Dialogs {
public:
    struct Shown {
        MessageStyle Style;
        std::string Title;
        std::string Text;
        bool WasQuestion = false;
    };

    void ShowMessage(MessageStyle style, std::string_view title, std::string_view text) override;
    Answer Ask(Buttons buttons, Answer defaultAnswer, MessageStyle style, std::string_view title,
               std::string_view text) override;

    void Script(Answer answer) { answers_.push_back(answer); }

    const std::vector<Shown>& All() const { return shown_; }
    bool Empty() const { return shown_.empty(); }
    // The text of the last box, or "" when none was shown.
    std::string LastText() const;
    std::string LastTitle() const;

private:
    std::deque<Answer> answers_;
    std::vector<Shown> shown_;
};

} // namespace quench::testing
