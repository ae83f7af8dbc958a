#pragma once

// The inputs of the tree builder as its tab holds them: texts in the units on screen. The
// builder computes with the values of these texts in Double, as typed, so that a spacing that
// divides evenly on screen divides evenly in the build. TreeBuilderData keeps the last inputs in
// US units; a change of units converts the texts only.

#include "core/project.h"
#include "core/units.h"

#include <array>
#include <string>

namespace quench {

// The rows of the tab's input column (txtTreeBuilderNetWorkData), by index.
enum TreeInput : int {
    TreeIncrement = 0,       // NodalNumberingIncrement
    TreeSourceNode = 1,      // SourceNode
    TreeExitNode = 2,        // ExitNode, an output of the build
    TreeCrossMainLength = 3, // LengthOfCrossMain
    TreeBranchSpacing = 4,   // DistanceBetweenBranchLines
    TreeLeftLength = 5,      // LengthOfLeftBranchLine
    TreeRightLength = 6,     // LengthOfRightBranchLine
    TreeLeftFirst = 7,       // LeftDistanceToFirstSprinkler
    TreeRightFirst = 8,      // RightDistanceToFirstSprinkler
    TreeLeftSpacing = 9,     // LeftDistanceBetweenSprinklers
    TreeRightSpacing = 10,   // RightDistanceBetweenSprinklers
};

constexpr int TreeInputCount = 11;

struct TreeInputs {
    std::array<std::string, TreeInputCount> Network;
    std::string CrossMaterial;
    std::string CrossTypeGroup;
    std::string CrossDiameter; // inch or mm
    std::string BranchMaterial;
    std::string BranchTypeGroup;
    std::string BranchDiameter;
    std::string Elevation;
    std::string KFactor; // 0 means the project's default K
    std::string AreaGroup;
    std::string SprinklerArea;             // 0 means MaximumAreaPerSprinkler
    std::string MaxSpaceBetweenBranches;   // 0 is no limit
    std::string MaxSpaceBetweenSprinklers; // 0 is no limit
    MeasureSystem System = MeasureSystem::US;
    char DecimalCharacter = '.';

    // The value of an input of the column, as typed (an empty or unreadable text is 0).
    double Value(int index) const;
    double ValueOf(const std::string& text) const;
};

// The texts for the stored inputs, shown in a system.
TreeInputs TreeInputsFromData(const TreeBuilderData& data, MeasureSystem system,
                              char decimalCharacter = '.');

// The inputs kept in the model, in US units. The exit node is an output and is stored by the
// build; the text at TreeExitNode is stored as it stands.
void StoreTreeInputs(const TreeInputs& inputs, TreeBuilderData& data);

} // namespace quench
