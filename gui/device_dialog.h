#pragma once

// frmCPLD, "Alternative CPLD": the name and abbreviations of the device of material letter A.
// The pipe screen's toolbar key "CPLD" opens it: OpenDeviceDialog(project, parent).

#include "core/project.h"
#include "entry/device_dialog.h"

#include <QDialog>

class QPushButton;

namespace quench::gui {

class ValidatedField;

class DeviceDialog : public QDialog {
    Q_OBJECT

public:
    DeviceDialog(Project& project, QWidget* parent = nullptr);

    ValidatedField* txtCPLDName() const { return name_; }
    ValidatedField* txtCPLDLAbb() const { return longAbbreviation_; }
    ValidatedField* txtCPLDSAbb() const { return shortAbbreviation_; }
    QPushButton* cmdApply() const { return apply_; }
    QPushButton* cmdOk() const { return ok_; }
    QPushButton* cmdCancel() const { return cancel_; }

signals:
    // The names were stored (Apply or Ok).
    void Applied();

private:
    void Apply();
    void ShowNames();

    Project& project_;
    ValidatedField* name_;
    ValidatedField* longAbbreviation_;
    ValidatedField* shortAbbreviation_;
    QPushButton* apply_;
    QPushButton* ok_;
    QPushButton* cancel_;
};

// The dialog, window-modal over `parent`, deleted when closed.
DeviceDialog* OpenDeviceDialog(Project& project, QWidget* parent);

} // namespace quench::gui
