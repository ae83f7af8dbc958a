#pragma once

// The profile file "QUENCH.ini": sections of key=value texts. Every read and write of a setting
// goes through IniFileHandler. A missing file or key gives the default; values are texts.
//
// Each operation reads the file afresh, as profile functions do, so two handlers on one file never
// disagree. Each write rewrites the whole file through a temporary file and a rename: the file on
// disk is always either the old one or the new one, never half written. Lines the program does not
// know (comments, foreign keys, junk) are kept on a rewrite.

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
    // A stored text that is no number, or a number outside the type's range, gives the default.
    // Whole-number types round half to even, as an assignment to them does.
    Integer MyGetAppProfileInteger(std::string_view section, std::string_view key,
                                   Integer defaultValue) const;
    Long MyGetAppProfileLong(std::string_view section, std::string_view key,
                             Long defaultValue) const;
    Single MyGetAppProfileSingle(std::string_view section, std::string_view key,
                                 Single defaultValue) const;
    // True only for the trimmed text "True" in any case; the default when the key is missing.
    bool MyGetAppProfileBoolean(std::string_view section, std::string_view key,
                                bool defaultValue) const;

    // False when the file cannot be written or the name cannot stand in the file format; the file
    // is then left as it was.
    bool MyWriteAppProfileString(std::string_view section, std::string_view key,
                                 std::string_view value) const;
    bool MyWriteAppProfileBoolean(std::string_view section, std::string_view key, bool value) const;
    bool MyDeleteAppProfileItem(std::string_view section, std::string_view key) const;

    // Section-wide operations.
    std::map<std::string, std::string> MyGetAppProfileSection(std::string_view section) const;
    // The section afterwards holds exactly the content.
    bool MyWriteAppProfileSection(std::string_view section,
                                  const std::map<std::string, std::string>& content) const;
    bool MyDeleteAppProfileSection(std::string_view section) const;
};

// The older module functions, on the profile file given. A stored text that is no number reads
// as 0 here, where the handler gives its default.
std::string ProfileString(const std::filesystem::path& file, std::string_view section,
                          std::string_view key, std::string_view defaultValue);
bool WriteProfileString(const std::filesystem::path& file, std::string_view section,
                        std::string_view key, std::string_view value);
double ProfileNumber(const std::filesystem::path& file, std::string_view section,
                     std::string_view key, std::string_view defaultText);

} // namespace quench
