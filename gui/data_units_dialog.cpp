#include "gui/data_units_dialog.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quench::gui {

DataUnitsDialog::DataUnitsDialog(MeasureSystem current, QWidget* parent)
    : QDialog(parent), us_(new QRadioButton("&US Units", this)),
      si_(new QRadioButton("&SI Units", this)) {
    setObjectName("frmDataUnits");
    setWindowTitle("Select Data Units");
    us_->setObjectName("OptUS");
    si_->setObjectName("OptSI");
    (current == MeasureSystem::SI ? si_ : us_)->setChecked(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(us_);
    layout->addWidget(si_);
    layout->addWidget(buttons);
}

MeasureSystem DataUnitsDialog::Chosen() const {
    return si_->isChecked() ? MeasureSystem::SI : MeasureSystem::US;
}

} // namespace quench::gui
