#include "gui/device_dialog.h"

#include "gui/qt_text.h"
#include "gui/validated_field.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

namespace words = device_dialog_words;

ValidatedField* MakeField(const char* name, const TextAttribute& limits, QWidget* parent) {
    auto* field = new ValidatedField(parent);
    field->setObjectName(name);
    field->SetTextRules(limits);
    field->SetStatusText(Text(ShowTextLength(limits)));
    return field;
}

} // namespace

DeviceDialog::DeviceDialog(Project& project, QWidget* parent)
    : QDialog(parent), project_(project), name_(MakeField("txtCPLDName", NameLimits(), this)),
      longAbbreviation_(MakeField("txtCPLDLAbb", LongAbbreviationLimits(), this)),
      shortAbbreviation_(MakeField("txtCPLDSAbb", ShortAbbreviationLimits(), this)),
      apply_(new QPushButton(Text(words::Apply), this)),
      ok_(new QPushButton(Text(words::Ok), this)),
      cancel_(new QPushButton(Text(words::Cancel), this)) {
    setObjectName("frmCPLD");
    setWindowTitle(Text(words::Title));
    apply_->setObjectName("cmdApply");
    ok_->setObjectName("cmdOk");
    cancel_->setObjectName("cmdCancel");
    ok_->setDefault(true);

    auto* form = new QFormLayout;
    form->addRow(Text(words::Name), name_);
    form->addRow(Text(words::LongAbbreviation), longAbbreviation_);
    form->addRow(Text(words::ShortAbbreviation), shortAbbreviation_);
    name_->setMinimumWidth(name_->fontMetrics().horizontalAdvance('M') * 20);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(apply_);
    buttons->addWidget(ok_);
    buttons->addWidget(cancel_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);

    connect(apply_, &QPushButton::clicked, this, &DeviceDialog::Apply);
    connect(ok_, &QPushButton::clicked, this, [this] {
        Apply();
        accept();
    });
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    ShowNames();
}

void DeviceDialog::ShowNames() {
    const DeviceNames names = LoadDeviceNames(project_);
    name_->SetTextQuietly(Latin1(names.Name));
    longAbbreviation_->SetTextQuietly(Latin1(names.LongAbbreviation));
    shortAbbreviation_->SetTextQuietly(Latin1(names.ShortAbbreviation));
}

void DeviceDialog::Apply() {
    const DeviceNames typed{Latin1(name_->text()), Latin1(longAbbreviation_->text()),
                            Latin1(shortAbbreviation_->text())};
    ApplyDeviceNames(project_, typed);
    ShowNames(); // the fields show what was stored
    emit Applied();
}

DeviceDialog* OpenDeviceDialog(Project& project, QWidget* parent) {
    auto* dialog = new DeviceDialog(project, parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->show();
    return dialog;
}

} // namespace quench::gui
