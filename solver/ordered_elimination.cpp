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
    Neighbours(places);
    Order();
    Structure();
    rightSide_ = size_;
    lower_ = 2 * size_;
    upper_ = lower_ + static_cast<int>(lowerColumn_.size());
    values_.assign(At(upper_) + upperColumn_.size(), 0.0);
    result_.assign(At(size_), 0.0);
    Targets();
    Schedule();
}

// The rows' columns as a symmetric pattern without the diagonal, each row's columns ascending and
// without repeats (0-based), in flat arrays kept from one analysis to the next.
void OrderedElimination::Neighbours(const std::vector<std::pair<int, int>>& places) {
    const auto inside = [this](int row, int column) {
        return row != column && row >= 1 && row <= size_ && column >= 1 && column <= size_;
    };
    neighbourStart_.assign(At(size_) + 1, 0);
    for (const auto& [row, column] : places) {
        if (inside(row, column)) {
            ++neighbourStart_[At(row)];
            ++neighbourStart_[At(column)];
        }
    }
    for (int row = 0; row < size_; ++row) {
        neighbourStart_[At(row) + 1] += neighbourStart_[At(row)];
    }
    neighbour_.resize(At(neighbourStart_[At(size_)]));
    scratch_.assign(neighbourStart_.begin(), neighbourStart_.end() - 1);
    for (const auto& [row, column] : places) {
        if (inside(row, column)) {
            neighbour_[At(scratch_[At(row - 1)]++)] = column - 1;
            neighbour_[At(scratch_[At(column - 1)]++)] = row - 1;
        }
    }
    // Each row sorted and its repeats dropped, the rows closed up.
    int kept = 0;
    for (int row = 0; row < size_; ++row) {
        const auto begin = neighbour_.begin() + neighbourStart_[At(row)];
        const auto end = neighbour_.begin() + neighbourStart_[At(row) + 1];
        std::sort(begin, end);
        const auto last = std::unique(begin, end);
        neighbourStart_[At(row)] = kept;
        kept = static_cast<int>(std::copy(begin, last, neighbour_.begin() + kept) -
                                neighbour_.begin());
    }
    neighbourStart_[At(size_)] = kept;
    neighbour_.resize(At(kept));
}

// Approximate minimum degree, from SuiteSparse; the node order when it cannot run.
void OrderedElimination::Order() {
    order_.resize(At(size_));
    std::iota(order_.begin(), order_.end(), 0);
    if (size_ > 1) {
        scratch_.resize(At(size_));
        if (amd_order(size_, neighbourStart_.data(), neighbour_.data(), scratch_.data(), nullptr,
                      nullptr) >= AMD_OK) {
            order_.swap(scratch_);
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
void OrderedElimination::Structure() {
    upperStart_.assign(At(size_) + 1, 0);
    upperColumn_.clear();
    // The children of each place, as lists linked through the places; they borrow the room of
    // the lower elements, which are laid out only once the upper ones are known.
    std::vector<int>& firstChild = lowerStart_;
    std::vector<int>& nextChild = lowerColumn_;
    firstChild.assign(At(size_), -1);
    nextChild.assign(At(size_), -1);
    std::vector<int>& mark = scratch_;
    mark.assign(At(size_), -1);
    std::vector<int> row;
    for (int place = 0; place < size_; ++place) {
        row.clear();
        mark[At(place)] = place;
        const auto take = [&](int column) {
            if (column > place && mark[At(column)] != place) {
                mark[At(column)] = place;
                row.push_back(column);
            }
        };
        const int node = order_[At(place)];
        for (int n = neighbourStart_[At(node)]; n < neighbourStart_[At(node) + 1]; ++n) {
            take(place_[At(neighbour_[At(n)])]);
        }
        for (int child = firstChild[At(place)]; child >= 0; child = nextChild[At(child)]) {
            for (int u = upperStart_[At(child)]; u < upperStart_[At(child) + 1]; ++u) {
                take(upperColumn_[At(u)]);
            }
        }
        std::sort(row.begin(), row.end());
        upperColumn_.insert(upperColumn_.end(), row.begin(), row.end());
        upperStart_[At(place) + 1] = static_cast<int>(upperColumn_.size());
        if (!row.empty()) {
            nextChild[At(place)] = firstChild[At(row.front())];
            firstChild[At(row.front())] = place;
        }
    }
    // The lower elements: by place, the places before it whose upper rows hold it.
    lowerStart_.assign(At(size_) + 1, 0);
    for (const int column : upperColumn_) {
        ++lowerStart_[At(column) + 1];
    }
    for (int place = 0; place < size_; ++place) {
        lowerStart_[At(place) + 1] += lowerStart_[At(place)];
    }
    lowerColumn_.assign(upperColumn_.size(), 0);
    std::vector<int>& next = scratch_;
    next.assign(lowerStart_.begin(), lowerStart_.end() - 1);
    for (int place = 0; place < size_; ++place) {
        for (int u = upperStart_[At(place)]; u < upperStart_[At(place) + 1]; ++u) {
            lowerColumn_[At(next[At(upperColumn_[At(u)])]++)] = place;
        }
    }
    fill_ = 2 * upperColumn_.size() - neighbour_.size();
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
    std::vector<int>& next = scratch_;
    next.assign(columnStart_.begin(), columnStart_.end() - 1);
    for (int i = 0; i < size_; ++i) {
        for (int e = lowerStart_[At(i)]; e < lowerStart_[At(i) + 1]; ++e) {
            columnElement_[At(next[At(lowerColumn_[At(e)])]++)] = e;
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

// The orders of the substitutions. A row of the forward substitution needs the rows below it in
// the elimination tree, one of the back substitution the rows above it: the rows by height (the
// leaves first) and by depth (the root first) meet each row after those it needs, and rows next to
// each other seldom wait for each other as they do in the order of places, where a row is most
// often the parent or the child of the one before.
void OrderedElimination::Schedule() {
    // A place's parent is the first column of its upper row; parents come after their children.
    const auto parentOf = [this](int place) {
        const int first = upperStart_[At(place)];
        return first < upperStart_[At(place) + 1] ? upperColumn_[At(first)] : -1;
    };
    std::vector<int>& level = scratch_;
    level.assign(At(size_), 0);
    for (int place = 0; place < size_; ++place) {
        const int parent = parentOf(place);
        if (parent >= 0) {
            level[At(parent)] = std::max(level[At(parent)], level[At(place)] + 1);
        }
    }
    SortByLevel(level, forwardSequence_);
    for (int place = size_ - 1; place >= 0; --place) {
        const int parent = parentOf(place);
        level[At(place)] = parent >= 0 ? level[At(parent)] + 1 : 0;
    }
    SortByLevel(level, backSequence_);
}

// The places by ascending level, and within a level by place.
void OrderedElimination::SortByLevel(const std::vector<int>& level, std::vector<int>& sequence) {
    const int levels = size_ == 0 ? 0 : *std::max_element(level.begin(), level.end()) + 1;
    std::vector<int> start(At(levels) + 1, 0);
    for (const int at : level) {
        ++start[At(at) + 1];
    }
    std::partial_sum(start.begin(), start.end(), start.begin());
    sequence.assign(At(size_), 0);
    for (int place = 0; place < size_; ++place) {
        sequence[At(start[At(level[At(place)])]++)] = place;
    }
}

// Pivot by pivot in the elimination order, each row below that holds the pivot's column takes
// its multiple of the pivot's row, each element landing in the slot found by the analysis; the
// multiple is kept in place of the lower element for the forward substitution. Every element
// receives the same subtractions in the same order as when the rows are eliminated one after
// another, so the numbers are the same; the divisions of one pivot's column no longer wait for
// each other.
bool OrderedElimination::Factor() {
    double* const values = values_.data();
    const double* const upperValues = values + upper_;
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
            values[lower_ + e] = factor;
            const int* landing = target + targetStart_[At(e)];
            for (int u = upperBegin; u < upperEnd; ++u) {
                values[*landing++] -= factor * upperValues[u];
            }
        }
    }
    return true;
}

// Each right side less the multiples of the right sides of the rows that eliminated into it, in
// the order of the pivots, as the elimination takes them.
void OrderedElimination::SubstituteForward() {
    double* const rightSides = values_.data() + rightSide_;
    const double* const factors = values_.data() + lower_;
    for (const int i : forwardSequence_) {
        double rightSide = rightSides[i];
        for (int e = lowerStart_[At(i)]; e < lowerStart_[At(i) + 1]; ++e) {
            rightSide -= factors[e] * rightSides[lowerColumn_[At(e)]];
        }
        rightSides[i] = rightSide;
    }
}

bool OrderedElimination::Solve(std::vector<double>& solution) {
    if (!Factor()) {
        return false;
    }
    SubstituteForward();
    const double* const values = values_.data();
    for (const int i : backSequence_) {
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
