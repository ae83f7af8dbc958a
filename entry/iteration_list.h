#pragma once

// The iteration display (frmDisplaying) without its widgets: its title, the headings of its list
// and the eleven rows the list keeps while a run sends its iterations.

#include "core/progress.h"

#include <array>
#include <string>

namespace quench {

constexpr int IterationListRows = 11;
constexpr int IterationListColumns = 5;

using IterationCells = std::array<std::string, IterationListColumns>;

inline constexpr std::array<const char*, IterationListColumns> IterationListHeadings{
    "Iteration Number", "Average Imbalance", "Maximum Imbalance", "Allowable Imbalance",
    "Damping Factor"};

// "Employing Demand Mode With 12 Pipes and 11 Nodes".
std::string DisplayingTitle(bool demandMode, int pipes, int nodes);

// One row of the list in its formats.
IterationCells FormatIteration(const IterationRow& row);

class IterationList {
public:
    // Iteration 1 clears the list; later ones take the first empty row; when all eleven are full
    // (from iteration 12 on) the rows move up one and the newest goes into the last.
    void Show(const IterationRow& row);
    void Clear();

    const std::array<IterationCells, IterationListRows>& Rows() const { return rows_; }

private:
    std::array<IterationCells, IterationListRows> rows_{};
};

} // namespace quench
