#include "gui/device_dialog.h"
#include "gui/validated_field.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(DeviceDialogWindow, ApplyOkAndCancel) {
    Project project;
    QWidget parent;
    gui::DeviceDialog* dialog = gui::OpenDeviceDialog(project, &parent);
    EXPECT_EQ(dialog->windowTitle(), "Alternative CPLD");
    EXPECT_EQ(dialog->txtCPLDName()->text(), "Alarm Check Valve");
    QSignalSpy applied(dialog, &gui::DeviceDialog::Applied);

    // Typing beyond a field's length is refused key by key.
    dialog->txtCPLDSAbb()->setFocus();
    dialog->txtCPLDSAbb()->selectAll();
    QTest::keyClicks(dialog->txtCPLDSAbb(), "DVLVX");
    EXPECT_EQ(dialog->txtCPLDSAbb()->text(), "DVLV");
    dialog->txtCPLDName()->setText("Deluge Valve");
    QTest::mouseClick(dialog->cmdApply(), Qt::LeftButton);
    EXPECT_EQ(project.AlarmDeviceName, "Deluge Valve");
    EXPECT_EQ(project.AlarmDeviceCode, "DVLV");
    EXPECT_EQ(applied.count(), 1);
    EXPECT_TRUE(dialog->isVisible());

    // Cancel keeps what was applied and drops what was typed since.
    dialog->txtCPLDName()->setText("Something Else");
    QTest::mouseClick(dialog->cmdCancel(), Qt::LeftButton);
    EXPECT_EQ(project.AlarmDeviceName, "Deluge Valve");

    dialog = gui::OpenDeviceDialog(project, &parent);
    dialog->txtCPLDLAbb()->setText("Deluge");
    QTest::mouseClick(dialog->cmdOk(), Qt::LeftButton);
    EXPECT_EQ(project.AlarmDeviceShortName, "Deluge");
    EXPECT_FALSE(dialog->isVisible());
}

} // namespace
} // namespace quench
