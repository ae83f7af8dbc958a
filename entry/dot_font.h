#pragma once

// The digits of the network layout: a 5 by 8 dot font in which every dot is a 10 by 10 block of
// the drawing, so that node numbers read the same at any scale of the picture.

#include <array>
#include <string_view>
#include <vector>

namespace quench {

inline constexpr int DotSize = 10;
inline constexpr int DotColumns = 5;
inline constexpr int DotRows = 8;
// A digit takes its five columns and one blank column before the next digit.
inline constexpr int DigitAdvance = (DotColumns + 1) * DotSize;
inline constexpr int DigitHeight = DotRows * DotSize;

// One dot of a drawn number: the top left corner of its block, in drawing units.
struct Dot {
    int Left = 0;
    int Top = 0;

    bool operator==(const Dot&) const = default;
};

// The rows of a digit from top to bottom, "1" for a dot; nothing for a character that is no digit.
const std::array<std::string_view, DotRows>* DigitRows(char digit);

// The width of a number's text as drawn: its digits and the blank columns between them.
int DottedWidth(std::string_view digits);

// The dots of a number's text with its top left corner at (left, top). Characters that are no
// digits are left out, and take no room.
std::vector<Dot> DottedNumber(std::string_view digits, int left, int top);

} // namespace quench
