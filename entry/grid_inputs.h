#pragma once

// The inputs of the grid builder as its tab holds them: texts in the units on screen, read as
// typed. GridBuilderData keeps the last inputs in US units.

#include "core/project.h"
#include "core/units.h"

#include <array>
#include <string>

namespace quench {

// The rows of the tab's input column (txtGridBuilderNetWorkData), by index.
enum GridInput : int {
    GridIncrement = 0,        // NodalNumberingIncrement
    GridSourceNode = 1,       // SourceNode
    GridSourceEntryPoint = 2, // SourceEntryPoint: from the left corner along the top side
    GridFirstBranch = 3,      // DistanceToFirstBranch
    GridBranchSpacing = 4,    // DistanceBetweenBranchLines
    GridBranchLines = 5,      // NumberOfBranchLines
    GridLeftFirst = 6,        // LeftDistanceToFirstSprinkler
    GridHeadSpacing = 7,      // DistanceBetweenSprinklers
    GridHeadsPerLine = 8,     // SprinklersPerBranchLine
    GridRightToPerimeter = 9, // RightDistanceToPerimeter
};

constexpr int GridInputCount = 10;

struct GridInputs {
    std::array<std::string, GridInputCount> Network;
    std::string PerimeterMaterial;
    std::string PerimeterTypeGroup;
    std::string PerimeterDiameter; // inch or mm
    std::string BranchMaterial;
    std::string BranchTypeGroup;
    std::string BranchDiameter;
    std::string Elevation;
    std::string KFactor; // 0 means the project's default K
    std::string AreaGroup;
    std::string SprinklerArea; // 0 means MaximumAreaPerSprinkler
    MeasureSystem System = MeasureSystem::US;
    char DecimalCharacter = '.';

    double Value(int index) const;
    double ValueOf(const std::string& text) const;
};

GridInputs GridInputsFromData(const GridBuilderData& data, MeasureSystem system,
                              char decimalCharacter = '.');

void StoreGridInputs(const GridInputs& inputs, GridBuilderData& data);

} // namespace quench
