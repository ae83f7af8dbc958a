#include "core/text.h"

#include <algorithm>
#include <cctype>

namespace quench {

std::string TrimLeft(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string() : std::string(text.substr(first));
}

std::string TrimRight(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string() : std::string(text.substr(0, last + 1));
}

std::string_view TrimmedView(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string Trim(std::string_view text) {
    return std::string(TrimmedView(text));
}

std::string ToUpper(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return result;
}

std::string ToLower(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

bool EqualsIgnoreCase(std::string_view left, std::string_view right) {
    return std::equal(
        left.begin(), left.end(), right.begin(), right.end(),
        [](unsigned char a, unsigned char b) { return std::toupper(a) == std::toupper(b); });
}

std::string FixedWidth(std::string_view text, std::size_t width) {
    std::string result(text.substr(0, std::min(width, text.size())));
    result.resize(width, ' ');
    return result;
}

std::string Latin1ToUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x80) {
            result.push_back(character);
        } else {
            result.push_back(static_cast<char>(0xC0 | (code >> 6)));
            result.push_back(static_cast<char>(0x80 | (code & 0x3F)));
        }
    }
    return result;
}

std::string Utf8ToLatin1(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code = static_cast<unsigned char>(text[i]);
        if (code < 0x80) {
            result.push_back(static_cast<char>(code));
            continue;
        }
        const int extra = (code & 0xE0) == 0xC0   ? 1
                          : (code & 0xF0) == 0xE0 ? 2
                          : (code & 0xF8) == 0xF0 ? 3
                                                  : 0;
        unsigned value = extra == 1 ? code & 0x1Fu : extra == 2 ? code & 0x0Fu : code & 0x07u;
        bool valid = extra > 0 && i + static_cast<std::size_t>(extra) < text.size();
        for (int k = 1; valid && k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
            valid = (next & 0xC0) == 0x80;
            value = (value << 6) | (next & 0x3F);
        }
        if (valid) {
            i += static_cast<std::size_t>(extra);
        }
        result.push_back(valid && value < 0x100 ? static_cast<char>(value) : '?');
    }
    return result;
}

} // namespace quench
