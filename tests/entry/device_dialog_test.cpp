#include "entry/device_dialog.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(DeviceDialog, StoresTheNamesTrimmedCutAndNeverEmpty) {
    Project project;
    EXPECT_EQ(LoadDeviceNames(project), (DeviceNames{"Alarm Check Valve", "Alarm CV", "ACV"}));
    EXPECT_FALSE(ApplyDeviceNames(project, LoadDeviceNames(project)));

    EXPECT_TRUE(ApplyDeviceNames(project, {"  Deluge Valve ", "Deluge", "DV"}));
    EXPECT_EQ(project.AlarmDeviceName, "Deluge Valve");
    EXPECT_EQ(project.AlarmDeviceShortName, "Deluge");
    EXPECT_EQ(project.AlarmDeviceCode, "DV");

    // Texts longer than their fields are cut; an emptied field takes the default back.
    ApplyDeviceNames(project, {std::string(40, 'N'), "Preaction Valve", ""});
    EXPECT_EQ(project.AlarmDeviceName, std::string(30, 'N'));
    EXPECT_EQ(project.AlarmDeviceShortName, "Preaction");
    EXPECT_EQ(project.AlarmDeviceCode, "ACV");
    EXPECT_EQ(NameLimits().MaxLength, 30);
    EXPECT_EQ(LongAbbreviationLimits().MaxLength, 10);
    EXPECT_EQ(ShortAbbreviationLimits().MaxLength, 4);
}

} // namespace
} // namespace quench
