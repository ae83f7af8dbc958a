#include "solver/ordered_elimination.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <suitesparse/amd.h>

namespace quench {

namespace {

// A pivot this small against its row's diagonal as built is taken as zero: the elimination in
// node order then decides the step, as it decides a zero pivot.
constexpr double NegligiblePivot = 1E-10;

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

// The rows' columns as a symmetric pattern without the diagonal, sorted, without repeats.
std::vector<std::vector<int>> Neighbours(int size, const std::vector<std::pair<int, int>>& places) {
    std::vector<std::vector<int>> neighbours(At(size));
    for (const auto& [row, column] : places) {
        if (row != column && row >= 1 && row <= size && column >= 1 && column <= size) {
            neighbours[At(row - 1)].push_back(column - 1);
            neighbours[At(column - 1)].push_back(row - 1);
        }
    }
    for (auto& list : neighbours) {
        std::sort(list.begin(), list.end());
        list.erase(std::unique(list.begin(), list.end()), list.end());
    }
    return neighbours;
}

int Find(const std::vector<int>& columns, int from, int to, int column) {
    const auto begin = columns.begin() + from;
    const auto end = columns.begin() + to;
    const auto found = std::lower_bound(begin, end, column);
    return found != end && *found == column ? static_cast<int>(found - columns.begin()) : -1;
}

} // namespace

void OrderedElimination::Analyse(int size, const std::vector<std::pair<int, int>>& places) {
    size_ = std::max(size, 0);
    const auto neighbours = Neighbours(size_, places);
    Order(neighbours);
    Structure(neighbours);
    rightSide_ = size_;
    lower_ = 2 * size_;
    upper_ = lower_ + static_cast<int>(lowerColumn_.size());
    values_.assign(At(upper_) + upperColumn_.size(), 0.0);
    work_.assign(At(size_), 0.0);
    result_.assign(At(size_), 0.0);
}

// Approximate minimum degree, from SuiteSparse; the node order when it cannot run.
void OrderedElimination::Order(const std::vector<std::vector<int>>& neighbours) {
    order_.resize(At(size_));
    std::iota(order_.begin(), order_.end(), 0);
    std::vector<int> starts(At(size_) + 1, 0);
    std::vector<int> indexes;
    for (int column = 0; column < size_; ++column) {
        const auto& list = neighbours[At(column)];
        indexes.insert(indexes.end(), list.begin(), list.end());
        starts[At(column) + 1] = static_cast<int>(indexes.size());
    }
    if (size_ > 1) {
        std::vector<int> order(At(size_));
        if (amd_order(size_, starts.data(), indexes.data(), order.data(), nullptr, nullptr) >=
            AMD_OK) {
            order_ = order;
        }
    }
    place_.assign(At(size_), 0);
    for (int place = 0; place < size_; ++place) {
        place_[At(order_[At(place)])] = place;
    }
}

// The places each row of the elimination holds once the rows before it are eliminated: its own
// neighbours after it, and what the rows eliminated into it (its children in the elimination
// tree) carry over.
void OrderedElimination::Structure(const std::vector<std::vector<int>>& neighbours) {
    std::vector<std::vector<int>> upper(At(size_));
    std::vector<std::vector<int>> children(At(size_));
    std::vector<int> mark(At(size_), -1);
    for (int place = 0; place < size_; ++place) {
        auto& row = upper[At(place)];
        mark[At(place)] = place;
        const auto take = [&](int column) {
            if (column > place && mark[At(column)] != place) {
                mark[At(column)] = place;
                row.push_back(column);
            }
        };
        for (const int neighbour : neighbours[At(order_[At(place)])]) {
            take(place_[At(neighbour)]);
        }
        for (const int child : children[At(place)]) {
            for (const int column : upper[At(child)]) {
                take(column);
            }
        }
        std::sort(row.begin(), row.end());
        if (!row.empty()) {
            children[At(row.front())].push_back(place);
        }
    }
    std::vector<int> lowerCount(At(size_), 0);
    upperStart_.assign(At(size_) + 1, 0);
    upperColumn_.clear();
    std::size_t original = 0;
    for (int place = 0; place < size_; ++place) {
        for (const int column : upper[At(place)]) {
            ++lowerCount[At(column)];
        }
        upperColumn_.insert(upperColumn_.end(), upper[At(place)].begin(), upper[At(place)].end());
        upperStart_[At(place) + 1] = static_cast<int>(upperColumn_.size());
        original += neighbours[At(order_[At(place)])].size();
    }
    lowerStart_.assign(At(size_) + 1, 0);
    for (int place = 0; place < size_; ++place) {
        lowerStart_[At(place) + 1] = lowerStart_[At(place)] + lowerCount[At(place)];
    }
    lowerColumn_.assign(upperColumn_.size(), 0);
    std::vector<int> next(lowerStart_.begin(), lowerStart_.end() - 1);
    for (int place = 0; place < size_; ++place) {
        for (const int column : upper[At(place)]) {
            lowerColumn_[At(next[At(column)]++)] = place;
        }
    }
    fill_ = 2 * upperColumn_.size() - original;
}

int OrderedElimination::Slot(int row, int column) const {
    if (row < 1 || row > size_ || column < 1 || column > size_) {
        return -1;
    }
    const int i = place_[At(row - 1)];
    const int j = place_[At(column - 1)];
    if (i == j) {
        return i;
    }
    if (j > i) {
        const int found = Find(upperColumn_, upperStart_[At(i)], upperStart_[At(i) + 1], j);
        return found < 0 ? -1 : upper_ + found;
    }
    const int found = Find(lowerColumn_, lowerStart_[At(i)], lowerStart_[At(i) + 1], j);
    return found < 0 ? -1 : lower_ + found;
}

int OrderedElimination::RightSideSlot(int row) const {
    return rightSide_ + place_[At(row - 1)];
}

void OrderedElimination::ClearValues() {
    std::fill(values_.begin(), values_.end(), 0.0);
}

bool OrderedElimination::DiagonalsSet() const {
    const auto end = values_.begin() + rightSide_;
    return std::find(values_.begin(), end, 0.0) == end;
}

// Row by row in the elimination order: the row is spread into the work row, the rows above it
// that it reaches are subtracted, and the row is gathered back; its right side goes along.
bool OrderedElimination::Factor() {
    double* const values = values_.data();
    const double* const upperValues = values + upper_;
    double* const work = work_.data();
    for (int i = 0; i < size_; ++i) {
        const int lowerBegin = lowerStart_[At(i)];
        const int lowerEnd = lowerStart_[At(i) + 1];
        const int upperBegin = upperStart_[At(i)];
        const int upperEnd = upperStart_[At(i) + 1];
        for (int e = lowerBegin; e < lowerEnd; ++e) {
            work[lowerColumn_[At(e)]] = values[lower_ + e];
        }
        for (int e = upperBegin; e < upperEnd; ++e) {
            work[upperColumn_[At(e)]] = upperValues[e];
        }
        const double built = values[i];
        work[i] = built;
        double rightSide = values[rightSide_ + i];
        for (int e = lowerBegin; e < lowerEnd; ++e) {
            const int k = lowerColumn_[At(e)];
            const double factor = work[k] / values[k];
            for (int u = upperStart_[At(k)]; u < upperStart_[At(k) + 1]; ++u) {
                work[upperColumn_[At(u)]] -= factor * upperValues[u];
            }
            rightSide -= factor * values[rightSide_ + k];
        }
        const double pivot = work[i];
        if (!(std::fabs(pivot) > NegligiblePivot * std::fabs(built))) {
            return false;
        }
        values[i] = pivot;
        for (int e = upperBegin; e < upperEnd; ++e) {
            values_[At(upper_ + e)] = work[upperColumn_[At(e)]];
        }
        values[rightSide_ + i] = rightSide;
    }
    return true;
}

bool OrderedElimination::Solve(std::vector<double>& solution) {
    if (!Factor()) {
        return false;
    }
    const double* const values = values_.data();
    for (int i = size_ - 1; i >= 0; --i) {
        double sum = 0;
        for (int e = upperStart_[At(i)]; e < upperStart_[At(i) + 1]; ++e) {
            sum += values[upper_ + e] * result_[At(upperColumn_[At(e)])];
        }
        result_[At(i)] = (values[rightSide_ + i] - sum) / values[i];
    }
    for (int place = 0; place < size_; ++place) {
        solution[At(order_[At(place)]) + 1] = result_[At(place)];
    }
    return true;
}

} // namespace quench
