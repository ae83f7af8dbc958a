#include "gui/temp_file_dialog.h"

#include "gui/qt_text.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

namespace texts = lifecycle_texts;

// A choice on two lines, as the words stand.
QString TwoLines(std::string_view first, std::string_view second) {
    return Text(first) + "\n" + Text(second);
}

} // namespace

TempFileDialog::TempFileDialog(const QString& title, QWidget* parent)
    : QDialog(parent), openTemporary_(new QRadioButton(
                           TwoLines(texts::OpenTemporaryFirst, texts::OpenTemporarySecond), this)),
      openSaved_(new QRadioButton(TwoLines(texts::OpenSavedFirst, texts::OpenSavedSecond), this)),
      doNotOpen_(new QRadioButton(Text(texts::DoNotOpen), this)) {
    setObjectName("frmTempFile");
    setWindowTitle(title);
    auto* text = new QLabel(Text(texts::TempFileDetected), this);
    text->setWordWrap(true);
    openTemporary_->setChecked(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(openTemporary_);
    layout->addWidget(openSaved_);
    layout->addWidget(doNotOpen_);
    layout->addWidget(buttons);
}

TempFileChoice TempFileDialog::Choice() const {
    if (openTemporary_->isChecked()) {
        return TempFileChoice::OpenTemporary;
    }
    return openSaved_->isChecked() ? TempFileChoice::OpenSaved : TempFileChoice::DoNotOpen;
}

QRadioButton* TempFileDialog::Option(TempFileChoice choice) const {
    switch (choice) {
    case TempFileChoice::OpenTemporary:
        return openTemporary_;
    case TempFileChoice::OpenSaved:
        return openSaved_;
    case TempFileChoice::DoNotOpen:
        return doNotOpen_;
    }
    return doNotOpen_;
}

TempFileChoice AskTempFileChoice(const QString& title, QWidget* parent) {
    TempFileDialog dialog(title, parent);
    return dialog.exec() == QDialog::Accepted ? dialog.Choice() : TempFileChoice::DoNotOpen;
}

} // namespace quench::gui
