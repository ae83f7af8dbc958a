#include "entry/dot_font.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace quench {
namespace {

// The dots of one digit read back into its rows of "0" and "1".
std::array<std::string, DotRows> Rendered(char digit) {
    std::array<std::string, DotRows> rows;
    rows.fill(std::string(DotColumns, '0'));
    for (const Dot& dot : DottedNumber(std::string(1, digit), 100, 200)) {
        rows[static_cast<std::size_t>((dot.Top - 200) / DotSize)]
            [static_cast<std::size_t>((dot.Left - 100) / DotSize)] = '1';
    }
    return rows;
}

TEST(DotFont, DigitsAreTheirRowsOfTenUnitDots) {
    const std::array<std::string, DotRows> four = {"00010", "00110", "01010", "10010",
                                                   "11111", "00010", "00010", "00010"};
    EXPECT_EQ(Rendered('4'), four);
    const std::array<std::string, DotRows> seven = {"11111", "00010", "00010", "00100",
                                                    "00100", "01000", "01000", "10000"};
    EXPECT_EQ(Rendered('7'), seven);
    for (char digit = '0'; digit <= '9'; ++digit) {
        const auto* rows = DigitRows(digit);
        ASSERT_NE(rows, nullptr);
        const std::array<std::string, DotRows> rendered = Rendered(digit);
        for (std::size_t row = 0; row < DotRows; ++row) {
            EXPECT_EQ(rendered[row], (*rows)[row]) << digit << " row " << row;
        }
    }
    EXPECT_EQ(DigitRows('x'), nullptr);
    // Every digit is told apart from every other.
    for (char a = '0'; a <= '9'; ++a) {
        for (char b = static_cast<char>(a + 1); b <= '9'; ++b) {
            EXPECT_NE(*DigitRows(a), *DigitRows(b)) << a << b;
        }
    }
}

TEST(DotFont, NumbersRunLeftToRightWithABlankColumnBetweenDigits) {
    EXPECT_EQ(DottedWidth("1"), 50);
    EXPECT_EQ(DottedWidth("110"), 170);
    EXPECT_EQ(DottedWidth(""), 0);
    const std::vector<Dot> one = DottedNumber("1", 0, 0);
    const std::vector<Dot> eleven = DottedNumber("11", 0, 0);
    ASSERT_EQ(eleven.size(), 2 * one.size());
    // The second digit is the first moved by six columns.
    for (std::size_t i = 0; i < one.size(); ++i) {
        EXPECT_NE(std::ranges::find(eleven, Dot{one[i].Left + DigitAdvance, one[i].Top}),
                  eleven.end());
    }
    const auto [left, right] = std::ranges::minmax(eleven, {}, &Dot::Left);
    EXPECT_GE(left.Left, 0);
    EXPECT_EQ(right.Left + DotSize, DottedWidth("11") - DotSize); // "1" has no dot in column 5
    EXPECT_EQ(DottedNumber("-", 0, 0).size(), 0u);
}

} // namespace
} // namespace quench
