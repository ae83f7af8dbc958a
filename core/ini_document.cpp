#include "core/ini_document.h"

#include "core/text.h"

#include <algorithm>
#include <set>

namespace quench {

namespace {

constexpr std::size_t npos = std::string::npos;

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

// Profiles trim tabs as well as spaces around names and values.
std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool IsQuote(char c) {
    return c == '"' || c == '\'';
}

bool IsQuoted(std::string_view text) {
    return text.size() >= 2 && IsQuote(text.front()) && text.back() == text.front();
}

std::string DecodeValue(std::string_view raw) {
    std::string_view value = TrimBlanks(raw);
    if (IsQuoted(value)) {
        value = value.substr(1, value.size() - 2);
    }
    return std::string(value);
}

// A value that reading would change (blanks at an end, enclosing quotes) is written in quotes, so
// that it reads back as it was given. A line break would start a new line of the file.
std::string EncodeValue(std::string_view value) {
    std::string text(value);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    const bool needsQuotes =
        !text.empty() && (IsBlank(text.front()) || IsBlank(text.back()) || IsQuoted(text));
    return needsQuotes ? "\"" + text + "\"" : text;
}

bool HasLineBreak(std::string_view text) {
    return text.find_first_of("\r\n") != npos;
}

} // namespace

bool IniDocument::IsValidSectionName(std::string_view section) {
    const std::string_view trimmed = TrimBlanks(section);
    return !trimmed.empty() && trimmed.size() == section.size() && !HasLineBreak(section) &&
           section.find(']') == npos;
}

bool IniDocument::IsValidKeyName(std::string_view key) {
    const std::string_view trimmed = TrimBlanks(key);
    return !trimmed.empty() && trimmed.size() == key.size() && !HasLineBreak(key) &&
           key.find('=') == npos && key.front() != '[' && key.front() != ';' && key.front() != '#';
}

IniDocument::Line IniDocument::ParseLine(std::string_view raw) {
    Line line;
    line.Raw = std::string(raw);
    const std::string_view text = TrimBlanks(raw);
    if (text.empty() || text.front() == ';' || text.front() == '#') {
        return line;
    }
    if (text.front() == '[') {
        const std::size_t close = text.find(']');
        if (close != npos) {
            line.Kind = LineKind::Section;
            line.Name = std::string(TrimBlanks(text.substr(1, close - 1)));
        }
        return line;
    }
    const std::size_t equals = text.find('=');
    if (equals != npos && equals > 0) {
        line.Kind = LineKind::Key;
        line.Name = std::string(TrimBlanks(text.substr(0, equals)));
    }
    return line;
}

IniDocument::Line IniDocument::KeyLine(std::string_view key, std::string_view value) {
    Line line;
    line.Kind = LineKind::Key;
    line.Name = std::string(key);
    line.Raw = line.Name + "=" + EncodeValue(value);
    return line;
}

IniDocument IniDocument::Parse(std::string_view text) {
    IniDocument document;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == npos) {
            end = text.size();
        }
        std::string_view raw = text.substr(start, end - start);
        if (!raw.empty() && raw.back() == '\r') {
            raw.remove_suffix(1);
        }
        document.lines_.push_back(ParseLine(raw));
        start = end + 1;
    }
    return document;
}

std::string IniDocument::Text() const {
    std::string text;
    for (const Line& line : lines_) {
        text += line.Raw;
        text += '\n';
    }
    return text;
}

std::size_t IniDocument::FindSection(std::string_view section) const {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (lines_[i].Kind == LineKind::Section && EqualsIgnoreCase(lines_[i].Name, section)) {
            return i;
        }
    }
    return npos;
}

std::size_t IniDocument::SectionEnd(std::size_t header) const {
    std::size_t end = header + 1;
    while (end < lines_.size() && lines_[end].Kind != LineKind::Section) {
        ++end;
    }
    return end;
}

std::size_t IniDocument::FindKey(std::size_t header, std::string_view key) const {
    const std::size_t end = SectionEnd(header);
    for (std::size_t i = header + 1; i < end; ++i) {
        if (lines_[i].Kind == LineKind::Key && EqualsIgnoreCase(lines_[i].Name, key)) {
            return i;
        }
    }
    return npos;
}

std::size_t IniDocument::InsertionPoint(std::size_t header) const {
    std::size_t point = header + 1;
    const std::size_t end = SectionEnd(header);
    for (std::size_t i = header + 1; i < end; ++i) {
        if (lines_[i].Kind == LineKind::Key) {
            point = i + 1;
        }
    }
    return point;
}

std::size_t IniDocument::AppendSection(std::string_view section) {
    if (!lines_.empty() && !TrimBlanks(lines_.back().Raw).empty()) {
        lines_.push_back(Line{});
    }
    Line header;
    header.Kind = LineKind::Section;
    header.Name = std::string(section);
    header.Raw = "[" + header.Name + "]";
    lines_.push_back(header);
    return lines_.size() - 1;
}

std::optional<std::string> IniDocument::Value(std::string_view section,
                                              std::string_view key) const {
    const std::size_t header = FindSection(section);
    if (header == npos) {
        return std::nullopt;
    }
    const std::size_t line = FindKey(header, key);
    if (line == npos) {
        return std::nullopt;
    }
    const std::string& raw = lines_[line].Raw;
    return DecodeValue(std::string_view(raw).substr(raw.find('=') + 1));
}

std::vector<std::pair<std::string, std::string>>
IniDocument::SectionEntries(std::string_view section) const {
    std::vector<std::pair<std::string, std::string>> entries;
    const std::size_t header = FindSection(section);
    if (header == npos) {
        return entries;
    }
    std::set<std::string> seen;
    const std::size_t end = SectionEnd(header);
    for (std::size_t i = header + 1; i < end; ++i) {
        const Line& line = lines_[i];
        if (line.Kind == LineKind::Key && seen.insert(ToLower(line.Name)).second) {
            const std::string_view raw = line.Raw;
            entries.emplace_back(line.Name, DecodeValue(raw.substr(raw.find('=') + 1)));
        }
    }
    return entries;
}

bool IniDocument::HasSection(std::string_view section) const {
    return FindSection(section) != npos;
}

bool IniDocument::SetValue(std::string_view section, std::string_view key, std::string_view value) {
    if (!IsValidSectionName(section) || !IsValidKeyName(key)) {
        return false;
    }
    std::size_t header = FindSection(section);
    if (header == npos) {
        header = AppendSection(section);
    }
    const std::size_t line = FindKey(header, key);
    if (line != npos) {
        // The name keeps the spelling it has in the file.
        lines_[line] = KeyLine(lines_[line].Name, value);
    } else {
        const auto at = lines_.begin() + static_cast<std::ptrdiff_t>(InsertionPoint(header));
        lines_.insert(at, KeyLine(key, value));
    }
    return true;
}

bool IniDocument::RemoveKey(std::string_view section, std::string_view key) {
    const std::size_t header = FindSection(section);
    if (header == npos) {
        return false;
    }
    const std::size_t line = FindKey(header, key);
    if (line == npos) {
        return false;
    }
    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(line));
    return true;
}

bool IniDocument::ReplaceSection(std::string_view section,
                                 const std::map<std::string, std::string>& content) {
    if (!IsValidSectionName(section)) {
        return false;
    }
    for (const auto& [key, value] : content) {
        if (!IsValidKeyName(key)) {
            return false;
        }
    }
    std::size_t header = FindSection(section);
    if (header == npos) {
        header = AppendSection(section);
    }
    const auto first = lines_.begin() + static_cast<std::ptrdiff_t>(header + 1);
    const auto last = lines_.begin() + static_cast<std::ptrdiff_t>(SectionEnd(header));
    lines_.erase(
        std::remove_if(first, last, [](const Line& line) { return line.Kind == LineKind::Key; }),
        last);
    std::vector<Line> keys;
    for (const auto& [key, value] : content) {
        keys.push_back(KeyLine(key, value));
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(header + 1), keys.begin(),
                  keys.end());
    return true;
}

bool IniDocument::RemoveSection(std::string_view section) {
    bool removed = false;
    for (std::size_t header = FindSection(section); header != npos; header = FindSection(section)) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(header),
                     lines_.begin() + static_cast<std::ptrdiff_t>(SectionEnd(header)));
        removed = true;
    }
    return removed;
}

} // namespace quench
