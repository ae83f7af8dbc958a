#pragma once

// The spacing of a tree: how many branch rows the cross main carries and how the sprinklers
// stand on each side. The counts of pipes follow the first division of each side even when a
// maximum spacing then adds sprinklers: the pipes, the node numbers and the counts shown all
// depend on that, and files built that way must build the same again.

#include "entry/tree_inputs.h"

#include <string>

namespace quench {

struct TreeSpacing {
    long long Pieces = 0;        // n: cross main pieces between rows
    double BranchSpacing = 0;    // D, rounded to one decimal, the shown value at index 4
    long long Rows = 1;          // n + 1
    double LeftFirst = 0;        // the left distance from the cross main to the first sprinkler
    long long LeftSpaces = 0;    // nL, the left pipes beyond the first, from the first division
    double LeftSpacing = 0;      // s, after the maximum spacing
    long long LeftCount = 1;     // cL, the left sprinklers, after the maximum spacing
    double RightFirst = 0;       // the same on the right
    long long RightSpaces = 0;   // nR
    double RightSpacing = 0;     // s'
    long long RightCount = 1;    // cR
    long long PipesRequired = 0; // P = (n + 1) * (nL + 2 + nR) + 1 + n

    long long SprinklersPerRow() const { return LeftCount + RightCount; }
};

// The spacing of the inputs, in the length unit of the inputs.
TreeSpacing CalculateTreeSpacing(const TreeInputs& inputs);

// The branch spacing D for a cross main length and a count of pieces: the quotient rounded to
// one decimal as the screen shows it ("##0.0"), 0 for no pieces.
double RoundedBranchSpacing(double crossMainLength, long long pieces);

// A calculated spacing as the input column shows it (indices 4, 9 and 10): "##0.0".
std::string SpacingText(double value, char decimalCharacter = '.');

} // namespace quench
