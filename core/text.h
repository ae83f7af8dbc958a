#pragma once

#include <string>
#include <string_view>

namespace quench {

// Blanks are spaces only, as in the fixed-width texts of the files.
std::string Trim(std::string_view text);
// The same, without a copy: a view into text.
std::string_view TrimmedView(std::string_view text);
std::string TrimLeft(std::string_view text);
std::string TrimRight(std::string_view text);
std::string ToUpper(std::string_view text);
std::string ToLower(std::string_view text);
bool EqualsIgnoreCase(std::string_view left, std::string_view right);

// A fixed-width text: cut to width, or padded on the right with blanks.
std::string FixedWidth(std::string_view text, std::size_t width);

// Texts in files are 8-bit characters; they are taken as Latin-1 when shown or written as JSON.
std::string Latin1ToUtf8(std::string_view text);
// Characters outside Latin-1 become '?'.
std::string Utf8ToLatin1(std::string_view text);

} // namespace quench
