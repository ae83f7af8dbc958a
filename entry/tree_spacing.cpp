#include "entry/tree_spacing.h"

#include "core/formats.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

// Counts past this are far beyond what the table or the node numbers can hold; a maximum
// spacing loop stops there instead of running on, and the build then refuses the layout.
constexpr long long CountCeiling = 10'000'000;

// The whole part of a quotient, never below 0.
long long WholePart(double value) {
    if (!(value > 0)) {
        return value < 0 ? static_cast<long long>(std::max(std::floor(value), -1.0)) : 0;
    }
    return static_cast<long long>(std::min(std::floor(value), static_cast<double>(CountCeiling)));
}

struct Side {
    long long Spaces = 0;
    double Spacing = 0;
    long long Count = 1;
};

// One side of the rows. The division rounds up with a tolerance of 0.01; the maximum spacing
// then adds sprinklers, spacing them over `loopLength` (the left side's length on both sides).
Side SideSpacing(double length, double first, double spacing, double loopLength,
                 double maximumSpacing) {
    const double quotient = spacing == 0 ? 0 : (length - first) / spacing;
    long long spaces = WholePart(quotient);
    if (quotient - static_cast<double>(spaces) >= 0.01) {
        ++spaces;
    }
    spaces = std::max(spaces, 0LL);
    Side side;
    side.Spaces = spaces;
    side.Spacing = spaces == 0 ? 0 : (length - first) / static_cast<double>(spaces);
    side.Count = spaces + 1;
    while (maximumSpacing > 0 && side.Spacing > maximumSpacing && spaces < CountCeiling) {
        ++spaces;
        side.Spacing = loopLength / static_cast<double>(spaces);
        side.Count = spaces + 1;
    }
    return side;
}

} // namespace

std::string SpacingText(double value, char decimalCharacter) {
    std::string text = Format(value, "##0.0");
    std::replace(text.begin(), text.end(), '.', decimalCharacter);
    return text;
}

double RoundedBranchSpacing(double crossMainLength, long long pieces) {
    if (pieces == 0) {
        return 0;
    }
    return ToNumber(Format(crossMainLength / static_cast<double>(pieces), "##0.0"));
}

TreeSpacing CalculateTreeSpacing(const TreeInputs& inputs) {
    const auto x = [&](int index) { return inputs.Value(index); };
    TreeSpacing spacing;

    const double crossMain = x(TreeCrossMainLength);
    const double quotient = x(TreeBranchSpacing) == 0 ? 0 : crossMain / x(TreeBranchSpacing);
    long long pieces = std::max(WholePart(quotient), 0LL);
    if (quotient - static_cast<double>(pieces) >= 0.5) {
        ++pieces;
    }
    double branchSpacing = RoundedBranchSpacing(crossMain, pieces);
    const double maximumBranchSpace = inputs.ValueOf(inputs.MaxSpaceBetweenBranches);
    while (maximumBranchSpace > 0 && branchSpacing > maximumBranchSpace && pieces < CountCeiling) {
        ++pieces;
        branchSpacing = RoundedBranchSpacing(crossMain, pieces);
    }
    spacing.Pieces = pieces;
    spacing.BranchSpacing = branchSpacing;
    spacing.Rows = pieces + 1;

    const double maximumSpace = inputs.ValueOf(inputs.MaxSpaceBetweenSprinklers);
    const double leftLoopLength = x(TreeLeftLength) - x(TreeLeftFirst);
    const Side left = SideSpacing(x(TreeLeftLength), x(TreeLeftFirst), x(TreeLeftSpacing),
                                  leftLoopLength, maximumSpace);
    const Side right = SideSpacing(x(TreeRightLength), x(TreeRightFirst), x(TreeRightSpacing),
                                   leftLoopLength, maximumSpace);
    spacing.LeftFirst = x(TreeLeftFirst);
    spacing.LeftSpaces = left.Spaces;
    spacing.LeftSpacing = left.Spacing;
    spacing.LeftCount = left.Count;
    spacing.RightFirst = x(TreeRightFirst);
    spacing.RightSpaces = right.Spaces;
    spacing.RightSpacing = right.Spacing;
    spacing.RightCount = right.Count;
    spacing.PipesRequired = spacing.Rows * (left.Spaces + 2 + right.Spaces) + 1 + spacing.Pieces;
    return spacing;
}

} // namespace quench
