#include "entry/iteration_list.h"

#include "core/formats.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

std::string Imbalance(double value, const char* smallPicture) {
    return std::fabs(value) >= 0.1 ? NumberText(value) : Format(value, smallPicture);
}

bool IsEmpty(const IterationCells& cells) {
    return cells[0].empty();
}

} // namespace

std::string DisplayingTitle(bool demandMode, int pipes, int nodes) {
    return std::string(demandMode ? "Employing Demand Mode With " : "Employing Supply Mode With ") +
           std::to_string(pipes) + " Pipes and " + std::to_string(nodes) + " Nodes";
}

IterationCells FormatIteration(const IterationRow& row) {
    return {std::to_string(row.Iteration), Imbalance(row.AverageImbalance, "0.0#########"),
            Imbalance(row.MaximumImbalance, "0.0#########"),
            Imbalance(row.AllowableImbalance, "0.0#######"), NumberText(row.DampingFactor)};
}

void IterationList::Clear() {
    rows_ = {};
}

void IterationList::Show(const IterationRow& row) {
    if (row.Iteration == 1) {
        Clear();
    }
    const auto empty = std::find_if(rows_.begin(), rows_.end(), IsEmpty);
    if (empty != rows_.end()) {
        *empty = FormatIteration(row);
        return;
    }
    std::rotate(rows_.begin(), rows_.begin() + 1, rows_.end());
    rows_.back() = FormatIteration(row);
}

} // namespace quench
