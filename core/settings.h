#pragma once

// The profile file "QUENCH.ini": sections of key=value texts. Every read and write of a setting
// goes through IniFileHandler. A missing file or key gives the default; values are texts.

#include "core/types.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace quench {

class IniFileHandler {
public:
    IniFileHandler() = default;
    explicit IniFileHandler(std::filesystem::path file) : AppProfileFileName(std::move(file)) {}

    std::filesystem::path AppProfileFileName;

    std::string MyGetAppProfileString(std::string_view section, std::string_view key,
                                      std::string_view defaultValue) const;
    Integer MyGetAppProfileInteger(std::string_view section, std::string_view key,
                                   Integer defaultValue) const;
    Long MyGetAppProfileLong(std::string_view section, std::string_view key,
                             Long defaultValue) const;
    Single MyGetAppProfileSingle(std::string_view section, std::string_view key,
                                 Single defaultValue) const;
    // True only for the trimmed text "True" in any case; the default when the key is missing.
    bool MyGetAppProfileBoolean(std::string_view section, std::string_view key,
                                bool defaultValue) const;

    bool MyWriteAppProfileString(std::string_view section, std::string_view key,
                                 std::string_view value) const;
    bool MyWriteAppProfileBoolean(std::string_view section, std::string_view key,
                                  bool value) const;
    bool MyDeleteAppProfileItem(std::string_view section, std::string_view key) const;

    // Section-wide operations.
    std::map<std::string, std::string> MyGetAppProfileSection(std::string_view section) const;
    bool MyWriteAppProfileSection(std::string_view section,
                                  const std::map<std::string, std::string>& content) const;
    bool MyDeleteAppProfileSection(std::string_view section) const;
};

} // namespace quench
