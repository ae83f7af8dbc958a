#pragma once

// The text of a profile file held line by line: "[Section]" headers, "key=value" lines, and
// everything else (comments, blank lines, junk) kept as it stands so that a rewrite loses nothing
// the program did not change. Names of sections and keys compare without regard to case, as
// Windows profiles do; the first of two equal names wins.

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

class IniDocument {
public:
    // Any text at all is accepted: a line that is neither a header nor a key is simply kept.
    static IniDocument Parse(std::string_view text);

    // The document as file text, one line per line, each ended by "\n".
    std::string Text() const;

    // The value of the key, blanks around it removed and one pair of enclosing quotes taken off.
    std::optional<std::string> Value(std::string_view section, std::string_view key) const;

    // The keys of the section in file order, each with its value as Value gives it.
    std::vector<std::pair<std::string, std::string>> SectionEntries(std::string_view section) const;

    bool HasSection(std::string_view section) const;

    // False when the name cannot be written as a section or key of the file format (empty,
    // a line break, "=" in a key, "]" in a section, a key that would read as a comment).
    bool SetValue(std::string_view section, std::string_view key, std::string_view value);
    bool RemoveKey(std::string_view section, std::string_view key);

    // Every key of the section is replaced by the content; comments inside it stay.
    bool ReplaceSection(std::string_view section,
                        const std::map<std::string, std::string>& content);
    bool RemoveSection(std::string_view section);

    static bool IsValidSectionName(std::string_view section);
    static bool IsValidKeyName(std::string_view key);

private:
    enum class LineKind { Section, Key, Other };
    struct Line {
        LineKind Kind = LineKind::Other;
        std::string Raw;  // the text as read or as written
        std::string Name; // section or key name, trimmed
    };

    static Line ParseLine(std::string_view raw);
    static Line KeyLine(std::string_view key, std::string_view value);

    // Index of the first header of that name, or npos.
    std::size_t FindSection(std::string_view section) const;
    // One past the last line of the section that starts at header.
    std::size_t SectionEnd(std::size_t header) const;
    std::size_t FindKey(std::size_t header, std::string_view key) const;
    // Where a new key of the section goes: after its last key, or after the header.
    std::size_t InsertionPoint(std::size_t header) const;
    std::size_t AppendSection(std::string_view section);

    std::vector<Line> lines_;
};

} // namespace quench
