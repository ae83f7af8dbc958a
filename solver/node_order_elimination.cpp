#include "solver/node_order_elimination.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace quench {

namespace {

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

double& CorrectionAt(std::vector<double>& correction, int column) {
    if (column >= static_cast<int>(correction.size())) {
        correction.resize(At(column) + 1, 0.0);
    }
    return correction[At(column)];
}

} // namespace

NodeOrderOutcome NodeOrderElimination::Solve(const SparseMatrix& matrix, int rows,
                                             std::vector<double>& correction,
                                             const std::vector<int>& renumbered) {
    reused_ = SharedRows(matrix, rows, renumbered);
    // Room for the widest row: every column an element names, and the diagonals.
    columns_ = std::max(rows, Remember(matrix, rows));
    Prepare(rows, reused_);
    if (!renumbered.empty()) {
        Renumber(reused_, renumbered);
    }
    finished_ = reused_;
    for (int row = reused_ + 1; row <= rows; ++row) {
        Load(matrix, row);
        EliminateLeftOfDiagonal(row);
        Keep(row);
        if (PivotUsable(row)) {
            finished_ = row;
        } else if (row < rows) {
            return NodeOrderOutcome::ZeroPivot;
        }
    }
    return SubstituteBack(rows, correction) ? NodeOrderOutcome::Solved
                                            : NodeOrderOutcome::ZeroDiagonal;
}

namespace {

// A column of the last system by its number in this one; -1 when it has none, which no element's
// column equals (not even column 0's).
int NewColumn(const std::vector<int>& renumbered, int column) {
    if (renumbered.empty() || column == 0) {
        return column;
    }
    const int number = column < static_cast<int>(renumbered.size()) ? renumbered[At(column)] : 0;
    return number == 0 ? -1 : number;
}

// Rows before the first column renumbered keep their places, so only they can be taken over;
// and only when the numbers rise as the columns do, which keeps each row's order.
int RowsKeepingTheirPlaces(const std::vector<int>& renumbered, int limit) {
    int last = -1;
    int kept = limit;
    for (int column = 0; column < static_cast<int>(renumbered.size()); ++column) {
        const int number = renumbered[At(column)];
        if (number != column && kept == limit) {
            kept = std::min(limit, std::max(column - 1, 0));
        }
        if (number != 0 && number <= last) {
            return 0;
        }
        last = std::max(last, number);
    }
    return kept;
}

} // namespace

// The leading rows that are, element for element and bit for bit, those the last elimination
// finished, their columns renumbered: their eliminated rows stand as they are.
int NodeOrderElimination::SharedRows(const SparseMatrix& matrix, int rows,
                                     const std::vector<int>& renumbered) const {
    const int limit = RowsKeepingTheirPlaces(renumbered, std::min(rows, finished_));
    for (int row = 1; row <= limit; ++row) {
        int at = givenStart_[At(row)];
        const int end = givenStart_[At(row) + 1];
        for (int element = matrix.RowHead(row); element != 0;
             element = matrix.Element(element).Next, ++at) {
            const SparseElement& given = matrix.Element(element);
            if (at == end || NewColumn(renumbered, given_[At(at)].Column) != given.Column ||
                given_[At(at)].Bits != std::bit_cast<std::uint64_t>(given.Value)) {
                return row - 1;
            }
        }
        if (at != end) {
            return row - 1;
        }
    }
    return limit;
}

// The rows taken over get this system's column numbers, and their patterns with them.
void NodeOrderElimination::Renumber(int shared, const std::vector<int>& renumbered) {
    for (int at = 0; at < rowStart_[At(shared) + 1]; ++at) {
        column_[At(at)] = NewColumn(renumbered, column_[At(at)]);
    }
    pattern_.clear();
    for (int row = 1; row <= shared; ++row) {
        for (int at = pivotAt_[At(row)] + 1; at < rowStart_[At(row) + 1]; ++at) {
            const int column = column_[At(at)];
            const std::uint32_t word = static_cast<std::uint32_t>(column >> 6);
            const std::uint64_t bit = std::uint64_t{1} << (column & 63);
            if (pattern_.size() > At(patternStart_[At(row)]) && pattern_.back().Index == word) {
                pattern_.back().Bits |= bit;
            } else {
                pattern_.push_back({word, bit});
            }
        }
        patternStart_[At(row) + 1] = static_cast<int>(pattern_.size());
    }
}

// The rows as given now, to be compared with the next system's; returns the largest column.
int NodeOrderElimination::Remember(const SparseMatrix& matrix, int rows) {
    givenStart_.assign(At(rows) + 2, 0);
    given_.clear();
    int largest = 0;
    for (int row = 1; row <= rows; ++row) {
        for (int at = matrix.RowHead(row); at != 0; at = matrix.Element(at).Next) {
            const SparseElement& element = matrix.Element(at);
            given_.push_back({element.Column, std::bit_cast<std::uint64_t>(element.Value)});
            largest = std::max(largest, element.Column);
        }
        givenStart_[At(row) + 1] = static_cast<int>(given_.size());
    }
    return largest;
}

// The working row emptied for `columns_` columns; the shared rows stay, the rest go.
void NodeOrderElimination::Prepare(int rows, int shared) {
    work_.assign(At(columns_) + 1, -0.0);
    present_.assign(At(columns_ >> 6) + 1, 0);
    rowStart_.resize(At(rows) + 2, 0);
    patternStart_.resize(At(rows) + 2, 0);
    pivotAt_.resize(At(rows) + 1, -1);
    fillThrough_.resize(At(rows) + 1, 0);
    rowStart_[1] = 0;
    patternStart_[1] = 0;
    std::fill(pivotAt_.begin() + shared + 1, pivotAt_.end(), -1);
    column_.resize(At(rowStart_[At(shared) + 1]));
    value_.resize(column_.size());
    pattern_.resize(At(patternStart_[At(shared) + 1]));
    fill_ = shared == 0 ? 0 : fillThrough_[At(shared)];
    // Room for full rows: only the pages the rows fill are ever touched, and the rows are never
    // copied to grow.
    const std::size_t most = At(rows) * (At(columns_) + 1);
    column_.reserve(most);
    value_.reserve(most);
    pattern_.reserve(At(rows) * present_.size());
}

void NodeOrderElimination::Load(const SparseMatrix& matrix, int row) {
    loadedLessEliminated_ = 0;
    for (int at = matrix.RowHead(row); at != 0; at = matrix.Element(at).Next) {
        const SparseElement& element = matrix.Element(at);
        Mark(element.Column);
        work_[At(element.Column)] = element.Value;
        ++loadedLessEliminated_;
    }
}

// While the row's first element lies in a column from 1 to left of its diagonal, the element goes
// and the row takes that multiple of the pivot row. Every column the row holds lies right of the
// one being eliminated, so the row is left empty when none follows it.
void NodeOrderElimination::EliminateLeftOfDiagonal(int row) {
    int column = FirstColumnFrom(0);
    while (column >= 1 && column < row) {
        const double factor = work_[At(column)] / value_[At(pivotAt_[At(column)])];
        Unmark(column);
        work_[At(column)] = -0.0;
        --loadedLessEliminated_;
        int next = FirstColumnFrom(column + 1);
        if (next < 0) {
            Mark(row);
            work_[At(row)] = 0;
            next = row;
        }
        AddPattern(column);
        SubtractPivotRow(column, factor);
        // The pivot row's columns all lie right of the one eliminated: the first of them may
        // come before the row's own next one.
        const int after = pivotAt_[At(column)] + 1;
        if (after < rowStart_[At(column) + 1]) {
            next = std::min(next, column_[At(after)]);
        }
        column = next;
    }
}

// The columns pivot row `pivotRow` holds right of its pivot join the row's marks.
void NodeOrderElimination::AddPattern(int pivotRow) {
    for (int at = patternStart_[At(pivotRow)]; at < patternStart_[At(pivotRow) + 1]; ++at) {
        present_[pattern_[At(at)].Index] |= pattern_[At(at)].Bits;
    }
}

// Every column the row lacks holds -0 in the dense row, and -0 - x is -x to the last bit, the
// number a new element takes; so the subtraction needs no test.
void NodeOrderElimination::SubtractPivotRow(int pivotRow, double factor) {
    const int end = rowStart_[At(pivotRow) + 1];
    const int* const columns = column_.data();
    const double* const values = value_.data();
    double* const work = work_.data();
    // Unrolled, so that the loads of several columns are on their way together.
#pragma GCC unroll 4
    for (int at = pivotAt_[At(pivotRow)] + 1; at < end; ++at) {
        const int column = columns[at];
        work[column] = work[column] - factor * values[at];
    }
}

// The first column at or right of `column` that holds an element, -1 when none does.
int NodeOrderElimination::FirstColumnFrom(int column) const {
    if (column > columns_) {
        return -1;
    }
    std::size_t word = At(column) >> 6;
    std::uint64_t bits = present_[word] & (~std::uint64_t{0} << (column & 63));
    while (bits == 0) {
        if (++word == present_.size()) {
            return -1;
        }
        bits = present_[word];
    }
    return static_cast<int>(word * 64) + std::countr_zero(bits);
}

// The finished row into the flat arrays, the dense row emptied back to -0; its pivot is its first
// element at or right of its diagonal, and what lies after the pivot is its pattern as a pivot row.
void NodeOrderElimination::Keep(int row) {
    const std::size_t first = column_.size();
    int pivotColumn = -1;
    for (std::size_t word = 0; word < present_.size(); ++word) {
        const std::uint64_t bits = present_[word];
        if (bits == 0) {
            continue;
        }
        present_[word] = 0;
        for (std::uint64_t rest = bits; rest != 0; rest &= rest - 1) {
            const int column = static_cast<int>(word * 64) + std::countr_zero(rest);
            if (column >= row && pivotColumn < 0) {
                pivotColumn = column;
                pivotAt_[At(row)] = static_cast<int>(column_.size());
            }
            column_.push_back(column);
            value_.push_back(work_[At(column)]);
            work_[At(column)] = -0.0;
        }
        KeepPattern(word, bits, pivotColumn);
    }
    rowStart_[At(row) + 1] = static_cast<int>(column_.size());
    // Elements made: those kept, less those loaded, plus those eliminated.
    fill_ += column_.size() - first - At(loadedLessEliminated_);
    patternStart_[At(row) + 1] = static_cast<int>(pattern_.size());
    fillThrough_[At(row)] = fill_;
}

// The columns of a finished row right of its pivot, by word.
void NodeOrderElimination::KeepPattern(std::size_t word, std::uint64_t bits, int pivotColumn) {
    if (pivotColumn < 0 || At(pivotColumn) >> 6 > word) {
        return;
    }
    if (At(pivotColumn) >> 6 == word) {
        bits &= ~std::uint64_t{0} << (pivotColumn & 63) << 1;
    }
    if (bits != 0) {
        pattern_.push_back({static_cast<std::uint32_t>(word), bits});
    }
}

bool NodeOrderElimination::PivotUsable(int row) const {
    const int pivot = pivotAt_[At(row)];
    return pivot >= 0 && value_[At(pivot)] != 0;
}

// From the last row up. The last row's second element is its right side; each other row's last
// element is, and the elements between its first and its last take the corrections found.
bool NodeOrderElimination::SubstituteBack(int rows, std::vector<double>& correction) const {
    double& lastCorrection = CorrectionAt(correction, rows);
    lastCorrection = 0;
    const int lastBegin = rowStart_[At(rows)];
    const int lastEnd = rowStart_[At(rows) + 1];
    if (lastBegin < lastEnd && value_[At(lastBegin)] != 0) {
        const double rightSide = lastBegin + 1 < lastEnd ? value_[At(lastBegin) + 1] : 0.0;
        lastCorrection = rightSide / value_[At(lastBegin)];
    }
    for (int row = rows - 1; row >= 1; --row) {
        const int begin = rowStart_[At(row)];
        const int end = rowStart_[At(row) + 1];
        const double diagonal = begin < end ? value_[At(begin)] : 0.0;
        if (diagonal == 0) {
            return false;
        }
        double sum = 0;
        double rightSide = 0;
        for (int at = begin + 1; at < end; ++at) {
            if (at + 1 == end) {
                rightSide = value_[At(at)];
            } else {
                sum += value_[At(at)] * CorrectionAt(correction, column_[At(at)]);
            }
        }
        CorrectionAt(correction, row) = (rightSide - sum) / diagonal;
    }
    return true;
}

} // namespace quench
