#pragma once

// The fitting code of a pipe row, such as "2F3E": entries of a quantity and a letter, one letter
// for each of the seven standard fittings. The order of the kinds is that of a row's
// FittingCounts and of a library size's fitting lengths.

#include "core/project.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

constexpr std::array<char, FittingKinds> FittingLetters{'F', 'E', 'L', 'T', 'B', 'G', 'C'};

constexpr std::array<const char*, FittingKinds> FittingKindNames{
    "45 Degree Elbow", "90 Degree Elbow", "Long Turn Elbow", "Tee or Cross",
    "Butterfly Valve", "Gate Valve",      "Check Valve"};

// The kind of a fitting letter (0 to 6, either case), or -1 for any other character.
int FittingKindOf(char letter);

// The canonical text of the counts, in kind order: a count of 0 gives nothing, 1 the letter
// alone, any other count the number and the letter. So "3E2F" is kept as "2F3E".
std::string BuildFittingText(const FittingCountArray& counts);

struct FittingEntry {
    std::int64_t Quantity = 1;
    int Kind = 0; // 0 to 6
};

// The entries of a text, walking at most `maxCharacters` of it. The quantity starts at 1; a digit
// after a digit extends the number, a first digit starts a new one; any letter takes the quantity
// and sets it back to 1, and each of the seven letters gives an entry. Digits at the end count for
// nothing, and other characters are passed over.
std::vector<FittingEntry> SplitFittingText(std::string_view text,
                                           std::size_t maxCharacters = std::string_view::npos);

} // namespace quench
