#pragma once

// The results grid of the Calculation screen: one heading line and four lines a pipe, the lines
// of the output pipe report, in the unit system of the screen. A pipe that sizing left over a
// limit carries the note why on its fourth line.

#include "core/project.h"
#include "core/units.h"

#include <array>
#include <string>
#include <vector>

namespace quench {

constexpr int ResultsGridColumns = 11;
constexpr int ResultsGridLinesPerPipe = 4;

using ResultsGridLine = std::array<std::string, ResultsGridColumns>;

struct ResultsGrid {
    ResultsGridLine Headings;
    std::vector<ResultsGridLine> Lines; // ResultsGridLinesPerPipe for each result row
};

// The rows 1 to NumberOfUniquePipeSections of the pipe result table.
ResultsGrid BuildResultsGrid(const Project& project, MeasureSystem system);

} // namespace quench
