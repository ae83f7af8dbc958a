#include "library/fitting_text.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using Entries = std::vector<std::pair<std::int64_t, char>>;

Entries Split(std::string_view text, std::size_t most = std::string_view::npos) {
    Entries entries;
    for (const auto& entry : SplitFittingText(text, most)) {
        entries.emplace_back(entry.Quantity, FittingLetters[entry.Kind]);
    }
    return entries;
}

FittingCountArray Counts(std::initializer_list<std::pair<char, Integer>> counts) {
    FittingCountArray array{};
    for (const auto& [letter, count] : counts) {
        array[FittingKindOf(letter)] = count;
    }
    return array;
}

TEST(FittingText, LettersAndKinds) {
    const std::string letters = "FELTBGC";
    for (int kind = 0; kind < 7; ++kind) {
        EXPECT_EQ(FittingKindOf(letters[kind]), kind);
    }
    EXPECT_EQ(FittingKindOf('e'), 1);
    EXPECT_EQ(FittingKindOf('X'), -1);
    EXPECT_EQ(FittingKindOf('1'), -1);
    EXPECT_EQ(FittingKindOf(' '), -1);
    EXPECT_STREQ(FittingKindNames[3], "Tee or Cross");
}

TEST(FittingText, CanonicalTextKeepsKindOrderNotTypedOrder) {
    EXPECT_EQ(BuildFittingText(Counts({{'E', 3}, {'F', 2}})), "2F3E");
    EXPECT_EQ(BuildFittingText(Counts({{'E', 1}})), "E");
    EXPECT_EQ(BuildFittingText(Counts({{'E', 10}})), "10E");
    EXPECT_EQ(BuildFittingText(Counts({{'E', 1}, {'F', 2}})), "2FE");
    EXPECT_EQ(BuildFittingText(
                  Counts({{'F', 1}, {'E', 1}, {'L', 1}, {'T', 1}, {'B', 1}, {'G', 1}, {'C', 1}})),
              "FELTBGC");
    EXPECT_EQ(BuildFittingText(Counts({{'C', 99}, {'T', 2}})), "2T99C");
    EXPECT_EQ(BuildFittingText(FittingCountArray{}), "");
}

TEST(FittingText, SplitWalksQuantitiesAndLetters) {
    EXPECT_EQ(Split("2F3E"), (Entries{{2, 'F'}, {3, 'E'}}));
    EXPECT_EQ(Split("E"), (Entries{{1, 'E'}}));
    EXPECT_EQ(Split("1E"), (Entries{{1, 'E'}}));
    EXPECT_EQ(Split("T2"), (Entries{{1, 'T'}})); // trailing digits count for nothing
    EXPECT_EQ(Split("60E50E"), (Entries{{60, 'E'}, {50, 'E'}}));
    EXPECT_EQ(Split("12T"), (Entries{{12, 'T'}}));
    EXPECT_EQ(Split("3X2E"), (Entries{{2, 'E'}})); // another letter takes the 3 and drops it
    EXPECT_EQ(Split("EE"), (Entries{{1, 'E'}, {1, 'E'}}));
    EXPECT_EQ(Split(""), Entries{});
    // Only the first characters are walked when a limit is given.
    EXPECT_EQ(Split("2F3E", 2), (Entries{{2, 'F'}}));
    EXPECT_EQ(Split("1234567890E", 11), (Entries{{1234567890, 'E'}}));
    EXPECT_EQ(Split("12345678901E", 11), Entries{});
    // A canonical text splits back into its counts.
    const auto counts = Counts({{'F', 2}, {'T', 15}, {'C', 1}});
    EXPECT_EQ(Split(BuildFittingText(counts)), (Entries{{2, 'F'}, {15, 'T'}, {1, 'C'}}));
}

} // namespace
} // namespace quench
