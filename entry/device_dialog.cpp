#include "entry/device_dialog.h"

#include "core/text.h"

namespace quench {

namespace {

std::string Kept(std::string_view text, const TextAttribute& limits, std::string_view fallback) {
    std::string kept = Trim(text);
    if (kept.size() > static_cast<std::size_t>(limits.MaxLength)) {
        kept = Trim(kept.substr(0, static_cast<std::size_t>(limits.MaxLength)));
    }
    return kept.empty() ? std::string(fallback) : kept;
}

} // namespace

TextAttribute NameLimits() {
    return TextAttributeOf(TextFieldKind::DeviceName);
}

TextAttribute LongAbbreviationLimits() {
    return TextAttributeOf(TextFieldKind::DeviceShortName);
}

TextAttribute ShortAbbreviationLimits() {
    return TextAttributeOf(TextFieldKind::DeviceAbbreviation);
}

DeviceNames LoadDeviceNames(const Project& project) {
    return {project.AlarmDeviceName, project.AlarmDeviceShortName, project.AlarmDeviceCode};
}

bool ApplyDeviceNames(Project& project, const DeviceNames& names) {
    const DeviceNames kept{
        Kept(names.Name, NameLimits(), DefaultAlarmDeviceName),
        Kept(names.LongAbbreviation, LongAbbreviationLimits(), DefaultAlarmDeviceShortName),
        Kept(names.ShortAbbreviation, ShortAbbreviationLimits(), DefaultAlarmDeviceCode)};
    if (kept == LoadDeviceNames(project)) {
        return false;
    }
    project.AlarmDeviceName = kept.Name;
    project.AlarmDeviceShortName = kept.LongAbbreviation;
    project.AlarmDeviceCode = kept.ShortAbbreviation;
    return true;
}

} // namespace quench
