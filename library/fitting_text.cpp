#include "library/fitting_text.h"

#include <algorithm>

namespace quench {

namespace {

// A quantity stops growing here; no count of fittings comes near it.
constexpr std::int64_t QuantityCeiling = 999'999'999'999;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

int FittingKindOf(char letter) {
    const char capital =
        (letter >= 'a' && letter <= 'z') ? static_cast<char>(letter - 'a' + 'A') : letter;
    const auto found = std::find(FittingLetters.begin(), FittingLetters.end(), capital);
    return found == FittingLetters.end() ? -1 : static_cast<int>(found - FittingLetters.begin());
}

std::string BuildFittingText(const FittingCountArray& counts) {
    std::string text;
    for (int kind = 0; kind < FittingKinds; ++kind) {
        if (counts[kind] == 0) {
            continue;
        }
        if (counts[kind] != 1) {
            text += std::to_string(counts[kind]);
        }
        text += FittingLetters[kind];
    }
    return text;
}

std::vector<FittingEntry> SplitFittingText(std::string_view text, std::size_t maxCharacters) {
    std::vector<FittingEntry> entries;
    std::int64_t quantity = 1;
    bool afterDigit = false;
    const std::size_t length = std::min(text.size(), maxCharacters);
    for (std::size_t i = 0; i < length; ++i) {
        const char c = text[i];
        if (IsDigit(c)) {
            const std::int64_t digit = c - '0';
            quantity = afterDigit ? std::min(quantity * 10 + digit, QuantityCeiling) : digit;
            afterDigit = true;
            continue;
        }
        afterDigit = false;
        if (IsLetter(c)) {
            const int kind = FittingKindOf(c);
            if (kind >= 0) {
                entries.push_back(FittingEntry{quantity, kind});
            }
            quantity = 1;
        }
    }
    return entries;
}

} // namespace quench
