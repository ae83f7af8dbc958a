#pragma once

// The dialogs seam shown as message boxes over the main frame.

#include "core/dialogs.h"

#include <QPointer>
#include <QWidget>

namespace quench::gui {

class QtDialogs final : public Dialogs {
public:
    void SetParent(QWidget* parent) { parent_ = parent; }

    void ShowMessage(MessageStyle style, std::string_view title, std::string_view text) override;
    Answer Ask(Buttons buttons, Answer defaultAnswer, MessageStyle style, std::string_view title,
               std::string_view text) override;

private:
    QPointer<QWidget> parent_;
};

} // namespace quench::gui
