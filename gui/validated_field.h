#pragma once

// The one input field every screen uses: a line edit whose keys go through the key filter of its
// attribute before they reach it, whose text is tested on every change, and which tells the
// status line its range and units while it has the focus. What an accepted edit means, and the
// test on leaving, belong to the screen that owns the field.

#include "entry/field_attributes.h"

#include <optional>

#include <QLineEdit>

namespace quench::gui {

class ValidatedField : public QLineEdit {
    Q_OBJECT

public:
    explicit ValidatedField(QWidget* parent = nullptr);

    void SetNumberRules(const NumberAttribute& attribute, char decimalCharacter);
    void SetTextRules(const TextAttribute& attribute);
    // The text of the status line while the field has the focus.
    void SetStatusText(const QString& text) { statusText_ = text; }
    const QString& StatusText() const { return statusText_; }

    // Text written by the program: no edit is reported.
    void SetTextQuietly(const QString& text);

signals:
    // An accepted change by the user, with the text as the field now holds it.
    void Edited(const QString& text);
    // The user left the field.
    void Left();
    void StatusTextWanted(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void AfterUserChange(const QString& text);
    bool FilterKey(char key);

    std::optional<NumberAttribute> number_;
    TextAttribute text_{};
    char decimalCharacter_ = '.';
    QString statusText_;
    bool guard_ = false;
};

} // namespace quench::gui
