#pragma once

// frmTempFile: a working file was left behind by a session that did not end; the user chooses
// what to open.

#include "app/project_lifecycle.h"

#include <QDialog>

class QRadioButton;

namespace quench::gui {

class TempFileDialog : public QDialog {
    Q_OBJECT

public:
    TempFileDialog(const QString& title, QWidget* parent = nullptr);

    TempFileChoice Choice() const;
    QRadioButton* Option(TempFileChoice choice) const;

private:
    QRadioButton* openTemporary_;
    QRadioButton* openSaved_;
    QRadioButton* doNotOpen_;
};

// Shows the dialog and waits; closing it is "Do not open".
TempFileChoice AskTempFileChoice(const QString& title, QWidget* parent);

} // namespace quench::gui
