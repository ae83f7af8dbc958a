#include "tests/support/scripted_dialogs.h"

namespace quench::testing {

void ScriptedDialogs::ShowMessage(MessageStyle style, std::string_view title,
                                  std::string_view text) {
    shown_.push_back(Shown{style, std::string(title), std::string(text), false});
}

Answer ScriptedDialogs::Ask(Buttons, Answer defaultAnswer, MessageStyle style,
                            std::string_view title, std::string_view text) {
    shown_.push_back(Shown{style, std::string(title), std::string(text), true});
    if (answers_.empty()) {
        return defaultAnswer;
    }
    const Answer answer = answers_.front();
    answers_.pop_front();
    return answer;
}

std::string ScriptedDialogs::LastText() const {
    return shown_.empty() ? "" : shown_.back().Text;
}

std::string ScriptedDialogs::LastTitle() const {
    return shown_.empty() ? "" : shown_.back().Title;
}

} // namespace quench::testing
