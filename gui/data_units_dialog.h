#pragma once

// frmDataUnits, "Select Data Units": US or SI units on the data screens.

#include "core/units.h"

#include <QDialog>

class QRadioButton;

namespace quench::gui {

class DataUnitsDialog : public QDialog {
    Q_OBJECT

public:
    DataUnitsDialog(MeasureSystem current, QWidget* parent = nullptr);

    MeasureSystem Chosen() const;
    QRadioButton* OptSI() const { return si_; }
    QRadioButton* OptUS() const { return us_; }

private:
    QRadioButton* us_;
    QRadioButton* si_;
};

} // namespace quench::gui
