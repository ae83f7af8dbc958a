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
    if (std::max(size, 0) == size_ && places == places_ && !values_.empty()) {
        ClearValues();
        return;
    }
    places_ = places;
    ++analyses_;
    size_ = std::max(size, 0);
    const auto neighbours = Neighbours(size_, places);
    Order(neighbours);
    Structure(neighbours);
    rightSide_ = size_;
    lower_ = 2 * size_;
    upper_ = lower_ + static_cast<int>(lowerColumn_.size());
    values_.assign(At(upper_) + upperColumn_.size(), 0.0);
    result_.assign(At(size_), 0.0);
    Targets();
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

// Row i eliminates with the rows k of its lower elements; each upper element (k, c) of row k
// subtracts from (i, c), which the structure holds: below the diagonal, on it, or above it.
void OrderedElimination::Targets() {
    targetStart_.assign(lowerColumn_.size() + 1, 0);
    target_.clear();
    for (int i = 0; i < size_; ++i) {
        for (int e = lowerStart_[At(i)]; e < lowerStart_[At(i) + 1]; ++e) {
            const int k = lowerColumn_[At(e)];
            for (int u = upperStart_[At(k)]; u < upperStart_[At(k) + 1]; ++u) {
                const int column = upperColumn_[At(u)];
                if (column == i) {
                    target_.push_back(i);
                } else if (column < i) {
                    target_.push_back(lower_ + Find(lowerColumn_, lowerStart_[At(i)],
                                                    lowerStart_[At(i) + 1], column));
                } else {
                    target_.push_back(upper_ + Find(upperColumn_, upperStart_[At(i)],
                                                    upperStart_[At(i) + 1], column));
                }
            }
            targetStart_[At(e) + 1] = static_cast<int>(target_.size());
        }
    }
    columnStart_.assign(At(size_) + 1, 0);
    for (const int column : lowerColumn_) {
        ++columnStart_[At(column) + 1];
    }
    for (int k = 0; k < size_; ++k) {
        columnStart_[At(k) + 1] += columnStart_[At(k)];
    }
    columnElement_.assign(lowerColumn_.size(), 0);
    columnRow_.assign(lowerColumn_.size(), 0);
    std::vector<int> next(columnStart_.begin(), columnStart_.end() - 1);
    for (int i = 0; i < size_; ++i) {
        for (int e = lowerStart_[At(i)]; e < lowerStart_[At(i) + 1]; ++e) {
            const int at = next[At(lowerColumn_[At(e)])]++;
            columnElement_[At(at)] = e;
            columnRow_[At(at)] = i;
        }
    }
    built_.assign(At(size_), 0.0);
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

// Pivot by pivot in the elimination order, each row below that holds the pivot's column takes
// its multiple of the pivot's row, its right side along, each element landing in the slot found
// by the analysis. Every element receives the same subtractions in the same order as when the
// rows are eliminated one after another, so the numbers are the same; the divisions of one
// pivot's column no longer wait for each other.
bool OrderedElimination::Factor() {
    double* const values = values_.data();
    const double* const upperValues = values + upper_;
    double* const rightSides = values + rightSide_;
    const int* const target = target_.data();
    std::copy(values, values + size_, built_.begin());
    for (int k = 0; k < size_; ++k) {
        const double pivot = values[k];
        if (!(std::fabs(pivot) > NegligiblePivot * std::fabs(built_[At(k)]))) {
            return false;
        }
        const int upperBegin = upperStart_[At(k)];
        const int upperEnd = upperStart_[At(k) + 1];
        for (int c = columnStart_[At(k)]; c < columnStart_[At(k) + 1]; ++c) {
            const int e = columnElement_[At(c)];
            const double factor = values[lower_ + e] / pivot;
            const int* landing = target + targetStart_[At(e)];
            for (int u = upperBegin; u < upperEnd; ++u) {
                values[*landing++] -= factor * upperValues[u];
            }
            rightSides[columnRow_[At(c)]] -= factor * rightSides[k];
        }
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
