#pragma once

// The dialog of the alternative constant pressure loss device (frmCPLD): the name and the two
// abbreviations of the device that material letter A stands for (an alarm check valve until the
// user names another). "&Apply" stores the three texts, "&Ok" stores them and closes,
// "Cance&l" closes without storing.

#include "core/project.h"
#include "entry/field_attributes.h"

#include <string>
#include <string_view>

namespace quench {

namespace device_dialog_words {
inline constexpr std::string_view Title = "Alternative CPLD";
inline constexpr std::string_view Name = "Name";
inline constexpr std::string_view LongAbbreviation = "Long abbreviation";
inline constexpr std::string_view ShortAbbreviation = "Short abbreviation";
inline constexpr std::string_view Apply = "&Apply";
inline constexpr std::string_view Ok = "&Ok";
inline constexpr std::string_view Cancel = "Cance&l";
} // namespace device_dialog_words

struct DeviceNames {
    std::string Name;              // txtCPLDName: AlarmDeviceName, up to 30 characters
    std::string LongAbbreviation;  // txtCPLDLAbb: AlarmDeviceShortName, up to 10
    std::string ShortAbbreviation; // txtCPLDSAbb: AlarmDeviceCode, up to 4

    bool operator==(const DeviceNames&) const = default;
};

// What each field takes.
TextAttribute NameLimits();
TextAttribute LongAbbreviationLimits();
TextAttribute ShortAbbreviationLimits();

DeviceNames LoadDeviceNames(const Project& project);

// The three texts into the project, trimmed and cut to their lengths. A field left empty gives
// the device its default text, since messages and reports need a name. Returns true when the
// project changed.
bool ApplyDeviceNames(Project& project, const DeviceNames& names);

} // namespace quench
