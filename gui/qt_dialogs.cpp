#include "gui/qt_dialogs.h"

#include "gui/cursor_pause.h"
#include "gui/qt_text.h"

#include <QMessageBox>

namespace quench::gui {

namespace {

QMessageBox::Icon IconOf(MessageStyle style) {
    switch (style) {
    case MessageStyle::Plain:
        return QMessageBox::NoIcon;
    case MessageStyle::Information:
        return QMessageBox::Information;
    case MessageStyle::Warning:
        return QMessageBox::Warning;
    case MessageStyle::Critical:
        return QMessageBox::Critical;
    case MessageStyle::Question:
        return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton ButtonOf(Answer answer) {
    switch (answer) {
    case Answer::Ok:
        return QMessageBox::Ok;
    case Answer::Cancel:
        return QMessageBox::Cancel;
    case Answer::Yes:
        return QMessageBox::Yes;
    case Answer::No:
        return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButtons ButtonsOf(Buttons buttons) {
    switch (buttons) {
    case Buttons::Ok:
        return QMessageBox::Ok;
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

} // namespace

void QtDialogs::ShowMessage(MessageStyle style, std::string_view title, std::string_view text) {
    QMessageBox box(IconOf(style), Text(title), Text(text), QMessageBox::Ok, parent_.data());
    const CursorPause pause;
    box.exec();
}

Answer QtDialogs::Ask(Buttons buttons, Answer defaultAnswer, MessageStyle style,
                      std::string_view title, std::string_view text) {
    QMessageBox box(IconOf(style), Text(title), Text(text), ButtonsOf(buttons), parent_.data());
    box.setDefaultButton(ButtonOf(defaultAnswer));
    const CursorPause pause;
    switch (box.exec()) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    default:
        // The box closed without a button: the answer that gives nothing up.
        return buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
    }
}

} // namespace quench::gui
