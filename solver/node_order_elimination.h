#pragma once

// The node equations eliminated in node order with no pivoting, then substituted back: the path
// that decides a run's first step and the steps whose rows lack a diagonal or a right side.
//
// The rows are read from the sparse matrix as built, where an element exists once a number other
// than 0 was stored in it. The elimination keeps to the rules of rows held as linked lists: row i
// takes, from its first element on while that lies left of its diagonal, the multiple of the
// pivot row of that column (the rest of that row after its pivot, the first element at or right
// of its diagonal), each element it did not hold becoming a new one; a row left with no element
// gets a zero one on its diagonal. In back substitution a row's first element is its diagonal and
// its last its right side (the last row's second), whichever columns they stand in. Columns are
// numbered from 0.
//
// Each row is worked in a dense row with a mark per column and each finished row kept in flat
// arrays, so that the pivot rows are read in column order from consecutive memory; a pivot row's
// columns join the marks a word at a time. The numbers are those of the linked rows: every
// element receives the same subtractions in the same order.

#include "solver/sparse_matrix.h"

#include <cstdint>
#include <vector>

namespace quench {

enum class NodeOrderOutcome {
    Solved,
    ZeroPivot,    // a row before the last has no pivot or a pivot of 0
    ZeroDiagonal, // back substitution met a row whose first element is 0
};

class NodeOrderElimination {
public:
    // Rows 1 to `rows` of the matrix; the corrections by column into `correction` (grown with
    // zeros when a column lies beyond its end). The matrix is left as it was. `renumbered` gives,
    // by column of the system eliminated last, that column's number in this one (0 where it has
    // none); empty when the columns are numbered alike. Rows are taken over only where the numbers
    // rise as the columns do.
    NodeOrderOutcome Solve(const SparseMatrix& matrix, int rows, std::vector<double>& correction,
                           const std::vector<int>& renumbered = {});

    // Elements the last elimination added to the rows, for the tests and the benchmarks.
    std::size_t FillCount() const { return fill_; }

    // Leading rows the last elimination took over from the one before, where the two systems'
    // rows were the same to the last bit, columns renumbered (a new start from seeded heads
    // repeats every row before the first node that the HMD node's move renumbers). Forget makes
    // the next elimination start afresh.
    int ReusedRows() const { return reused_; }
    void Forget() { finished_ = 0; }

private:
    int SharedRows(const SparseMatrix& matrix, int rows, const std::vector<int>& renumbered) const;
    int Remember(const SparseMatrix& matrix, int rows);
    void Prepare(int rows, int shared);
    void Renumber(int shared, const std::vector<int>& renumbered);
    void Load(const SparseMatrix& matrix, int row);
    void EliminateLeftOfDiagonal(int row);
    void AddPattern(int pivotRow);
    void SubtractPivotRow(int pivotRow, double factor);
    int FirstColumnFrom(int column) const;
    void Keep(int row);
    void KeepPattern(std::size_t word, std::uint64_t bits, int pivotColumn);
    bool PivotUsable(int row) const;
    bool SubstituteBack(int rows, std::vector<double>& correction) const;

    void Mark(int column) {
        present_[static_cast<std::size_t>(column) >> 6] |= std::uint64_t{1} << (column & 63);
    }
    void Unmark(int column) {
        present_[static_cast<std::size_t>(column) >> 6] &= ~(std::uint64_t{1} << (column & 63));
    }

    int columns_ = 0;                    // the largest column of any element
    std::vector<double> work_;           // the row being eliminated, -0 where it has none
    std::vector<std::uint64_t> present_; // its elements, one bit per column
    int loadedLessEliminated_ = 0;       // to count the elements the row was given
    std::size_t fill_ = 0;
    // The finished rows, each in column order: rowStart_[i] to rowStart_[i + 1], and the place of
    // each row's pivot among them.
    std::vector<int> rowStart_, pivotAt_, column_;
    std::vector<double> value_;
    // Each finished row's columns right of its pivot, a word of marks at a time.
    struct PatternWord {
        std::uint32_t Index;
        std::uint64_t Bits;
    };
    std::vector<int> patternStart_;
    std::vector<PatternWord> pattern_;
    std::vector<std::size_t> fillThrough_; // by row: the fill up to and with that row

    // The rows as given to the last elimination, by row, and how many of its leading rows were
    // finished with a usable pivot.
    struct GivenElement {
        int Column;
        std::uint64_t Bits;
    };
    std::vector<int> givenStart_;
    std::vector<GivenElement> given_;
    int finished_ = 0;
    int reused_ = 0;
};

} // namespace quench
