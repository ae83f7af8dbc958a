#include "gui/validated_field.h"

#include "entry/field_rules.h"
#include "gui/qt_text.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QTimer>

namespace quench::gui {

namespace {

// The model's texts are 8-bit characters; what Latin-1 cannot hold becomes '?'.
FieldState StateOf(const QLineEdit& field) {
    FieldState state;
    state.Text = Latin1(field.text());
    if (field.hasSelectedText()) {
        state.SelectionStart = static_cast<int>(field.selectionStart());
        state.SelectionLength = static_cast<int>(field.selectedText().size());
    } else {
        state.SelectionStart = static_cast<int>(field.cursorPosition());
    }
    return state;
}

} // namespace

ValidatedField::ValidatedField(QWidget* parent) : QLineEdit(parent) {
    // A file dropped on a field is a file dropped on the program, not text for the field.
    setAcceptDrops(false);
    // Pasting, cutting, deleting and undoing reach the text without a key of their own: the test
    // on change catches them.
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (!guard_) {
            AfterUserChange(text);
        }
    });
}

void ValidatedField::SetNumberRules(const NumberAttribute& attribute, char decimalCharacter) {
    number_ = attribute;
    decimalCharacter_ = decimalCharacter;
    setAlignment(Qt::AlignRight);
}

void ValidatedField::SetTextRules(const TextAttribute& attribute) {
    number_.reset();
    text_ = attribute;
    if (attribute.MaxLength > 0) {
        setMaxLength(attribute.MaxLength);
    }
}

void ValidatedField::SetTextQuietly(const QString& text) {
    guard_ = true;
    setText(text);
    guard_ = false;
}

void ValidatedField::AfterUserChange(const QString& text) {
    const std::string tested = number_ ? TestOnChange(Latin1(text), *number_, decimalCharacter_)
                                       : TestTextOnChange(Latin1(text), text_);
    const QString accepted = Latin1(tested);
    if (accepted != text) {
        SetTextQuietly(accepted);
        setCursorPosition(static_cast<int>(accepted.size()));
    }
    emit Edited(accepted);
}

// True when the key was handled here (taken or refused); false lets the line edit have it.
bool ValidatedField::FilterKey(char key) {
    const FieldState state = StateOf(*this);
    const KeyOutcome outcome =
        number_ ? FilterNumberKey(key, state, *number_, {decimalCharacter_, true})
                : FilterTextKey(key, state, text_);
    if (!outcome.Accepted) {
        return true; // a refused key leaves no trace
    }
    const QString result = Latin1(outcome.Field.Text);
    if (result != text()) {
        SetTextQuietly(result);
        setCursorPosition(outcome.Field.SelectionStart);
        AfterUserChange(result);
    }
    return true;
}

void ValidatedField::keyPressEvent(QKeyEvent* event) {
    if (isReadOnly() || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (event->key() == Qt::Key_Backspace) {
        FilterKey(BackspaceKey);
        return;
    }
    const QString typed = event->text();
    if (typed.size() == 1 && typed.at(0).isPrint()) {
        // A character the project file cannot hold (beyond Latin-1) is refused like any other.
        const char key = typed.at(0).toLatin1();
        if (key != 0) {
            FilterKey(key);
        }
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void ValidatedField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // The whole text is selected, so that typing replaces it; after a click as well, once the
    // click has placed the cursor.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        QTimer::singleShot(0, this, [this] {
            if (hasFocus()) {
                selectAll();
            }
        });
    }
    emit StatusTextWanted(statusText_);
}

void ValidatedField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // Another window taking the focus is no leaving of the field.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        emit StatusTextWanted(QString());
        emit Left();
    }
}

} // namespace quench::gui
