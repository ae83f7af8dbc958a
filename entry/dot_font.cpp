#include "entry/dot_font.h"

#include <algorithm>

namespace quench {

namespace {

using Rows = std::array<std::string_view, DotRows>;

constexpr std::array<Rows, 10> Digits = {{
    {"01110", "10001", "10001", "10001", "10001", "10001", "10001", "01110"},
    {"00100", "01100", "00100", "00100", "00100", "00100", "00100", "01110"},
    {"01110", "00001", "00001", "00010", "00100", "01000", "10000", "11111"},
    {"01110", "00001", "00001", "00110", "00001", "00001", "00001", "01110"},
    {"00010", "00110", "01010", "10010", "11111", "00010", "00010", "00010"},
    {"01111", "10000", "10000", "11110", "00001", "00001", "00001", "11110"},
    {"01111", "10000", "10000", "01110", "10001", "10001", "10001", "01110"},
    {"11111", "00010", "00010", "00100", "00100", "01000", "01000", "10000"},
    {"01110", "10001", "10001", "01010", "10001", "10001", "10001", "01110"},
    {"01110", "10001", "10001", "10001", "01111", "00001", "00001", "00001"},
}};

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

} // namespace

const Rows* DigitRows(char digit) {
    return IsDigit(digit) ? &Digits[static_cast<std::size_t>(digit - '0')] : nullptr;
}

int DottedWidth(std::string_view digits) {
    const auto count = static_cast<int>(std::ranges::count_if(digits, IsDigit));
    return count == 0 ? 0 : count * DigitAdvance - DotSize;
}

std::vector<Dot> DottedNumber(std::string_view digits, int left, int top) {
    std::vector<Dot> dots;
    int x = left;
    for (const char character : digits) {
        const Rows* rows = DigitRows(character);
        if (rows == nullptr) {
            continue;
        }
        for (int row = 0; row < DotRows; ++row) {
            for (int column = 0; column < DotColumns; ++column) {
                if ((*rows)[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] ==
                    '1') {
                    dots.push_back({x + column * DotSize, top + row * DotSize});
                }
            }
        }
        x += DigitAdvance;
    }
    return dots;
}

} // namespace quench
