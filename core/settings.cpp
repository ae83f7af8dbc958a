#include "core/settings.h"

#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/ini_document.h"
#include "core/text.h"

#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>

namespace quench {

namespace {

// A missing file is an empty document: every read gives its default. A file that exists but cannot
// be read is no document at all, so that a write never replaces what it could not see.
std::optional<IniDocument> Load(const std::filesystem::path& file) {
    std::string text;
    if (file.empty()) {
        return std::nullopt;
    }
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored)) {
        return IniDocument{};
    }
    if (!ReadWholeFile(file, text)) {
        return std::nullopt;
    }
    return IniDocument::Parse(text);
}

std::optional<std::string> Read(const std::filesystem::path& file, std::string_view section,
                                std::string_view key) {
    const auto document = Load(file);
    return document ? document->Value(section, key) : std::nullopt;
}

enum class Change { Refused, Unchanged, Changed };

// Reads the file, lets the edit act on it, and writes it back when the edit changed it.
template <typename Edit>
bool Rewrite(const std::filesystem::path& file, Edit edit) {
    auto document = Load(file);
    if (!document) {
        return false;
    }
    switch (edit(*document)) {
    case Change::Refused:
        return false;
    case Change::Unchanged:
        return true;
    case Change::Changed:
        break;
    }
    return WriteFileAtomically(file, document->Text());
}

Change Changed(bool done) {
    return done ? Change::Changed : Change::Refused;
}

// Removing what is not there leaves the file alone and is no failure.
Change Removed(bool done) {
    return done ? Change::Changed : Change::Unchanged;
}

template <typename Number>
std::optional<Number> ReadNumber(const std::optional<std::string>& text) {
    if (!text || !IsNumeric(*text)) {
        return std::nullopt;
    }
    double value = ToNumber(*text);
    if constexpr (std::is_integral_v<Number>) {
        value = RoundHalfEven(value);
    }
    if (!std::isfinite(value) || value < std::numeric_limits<Number>::lowest() ||
        value > std::numeric_limits<Number>::max()) {
        return std::nullopt;
    }
    return static_cast<Number>(value);
}

} // namespace

std::string IniFileHandler::MyGetAppProfileString(std::string_view section, std::string_view key,
                                                  std::string_view defaultValue) const {
    const auto value = Read(AppProfileFileName, section, key);
    return value ? *value : std::string(defaultValue);
}

Integer IniFileHandler::MyGetAppProfileInteger(std::string_view section, std::string_view key,
                                               Integer defaultValue) const {
    return ReadNumber<Integer>(Read(AppProfileFileName, section, key)).value_or(defaultValue);
}

Long IniFileHandler::MyGetAppProfileLong(std::string_view section, std::string_view key,
                                         Long defaultValue) const {
    return ReadNumber<Long>(Read(AppProfileFileName, section, key)).value_or(defaultValue);
}

Single IniFileHandler::MyGetAppProfileSingle(std::string_view section, std::string_view key,
                                             Single defaultValue) const {
    return ReadNumber<Single>(Read(AppProfileFileName, section, key)).value_or(defaultValue);
}

bool IniFileHandler::MyGetAppProfileBoolean(std::string_view section, std::string_view key,
                                            bool defaultValue) const {
    const auto value = Read(AppProfileFileName, section, key);
    return value ? EqualsIgnoreCase(Trim(*value), "True") : defaultValue;
}

bool IniFileHandler::MyWriteAppProfileString(std::string_view section, std::string_view key,
                                             std::string_view value) const {
    return Rewrite(AppProfileFileName, [&](IniDocument& document) {
        return Changed(document.SetValue(section, key, value));
    });
}

bool IniFileHandler::MyWriteAppProfileBoolean(std::string_view section, std::string_view key,
                                              bool value) const {
    return MyWriteAppProfileString(section, key, value ? "True" : "False");
}

bool IniFileHandler::MyDeleteAppProfileItem(std::string_view section, std::string_view key) const {
    return Rewrite(AppProfileFileName, [&](IniDocument& document) {
        return Removed(document.RemoveKey(section, key));
    });
}

std::map<std::string, std::string>
IniFileHandler::MyGetAppProfileSection(std::string_view section) const {
    std::map<std::string, std::string> content;
    const auto document = Load(AppProfileFileName);
    if (!document) {
        return content;
    }
    for (auto& [key, value] : document->SectionEntries(section)) {
        content.emplace(std::move(key), std::move(value));
    }
    return content;
}

bool IniFileHandler::MyWriteAppProfileSection(
    std::string_view section, const std::map<std::string, std::string>& content) const {
    return Rewrite(AppProfileFileName, [&](IniDocument& document) {
        return Changed(document.ReplaceSection(section, content));
    });
}

bool IniFileHandler::MyDeleteAppProfileSection(std::string_view section) const {
    return Rewrite(AppProfileFileName,
                   [&](IniDocument& document) { return Removed(document.RemoveSection(section)); });
}

std::string ProfileString(const std::filesystem::path& file, std::string_view section,
                          std::string_view key, std::string_view defaultValue) {
    return IniFileHandler(file).MyGetAppProfileString(section, key, defaultValue);
}

bool WriteProfileString(const std::filesystem::path& file, std::string_view section,
                        std::string_view key, std::string_view value) {
    return IniFileHandler(file).MyWriteAppProfileString(section, key, value);
}

double ProfileNumber(const std::filesystem::path& file, std::string_view section,
                     std::string_view key, std::string_view defaultText) {
    return ToNumber(ProfileString(file, section, key, defaultText));
}

} // namespace quench
