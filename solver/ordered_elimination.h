#pragma once

// The node equations solved in a fill-reducing order. The pattern of the equations is analysed
// once (an approximate minimum degree order of its symmetric pattern, then the places the
// elimination fills in), so that each step only adds numbers into flat arrays, eliminates and
// substitutes back, with no allocation and no search. The rows and columns given are numbered
// from 1 as the equations number them; the order is internal.

#include <cstddef>
#include <utility>
#include <vector>

namespace quench {

class OrderedElimination {
public:
    // The pattern: `size` rows and columns, the off-diagonal places (row, column) that may hold a
    // number. Every diagonal has a place. Allocates; the same pattern again (a pass that rebuilds
    // the same network) keeps the analysis and only clears the numbers.
    void Analyse(int size, const std::vector<std::pair<int, int>>& places);

    int Size() const { return size_; }

    // Where the number at (row, column) is kept, or -1 when the pattern has no such place. Slots
    // index Values(); a row's right side has a slot of its own.
    int Slot(int row, int column) const;
    int RightSideSlot(int row) const;
    int DiagonalSlot(int row) const { return Slot(row, row); }

    std::vector<double>& Values() { return values_; }
    void ClearValues();

    // Every row holds a diagonal other than 0.
    bool DiagonalsSet() const;

    // Eliminates and substitutes back into solution[1..size]. False, leaving the solution as it
    // was, when a pivot is zero or negligible against its row's diagonal as built.
    bool Solve(std::vector<double>& solution);

    // Elements the elimination adds to the pattern, for the benchmarks.
    std::size_t FillCount() const { return fill_; }
    // Patterns analysed so far (a pattern met again in a row is not analysed again).
    long Analyses() const { return analyses_; }

private:
    void Neighbours(const std::vector<std::pair<int, int>>& places);
    void Order();
    void Structure();
    void Targets();
    void Schedule();
    void SortByLevel(const std::vector<int>& level, std::vector<int>& sequence);
    bool Factor();
    void SubstituteForward();

    int size_ = 0;
    std::vector<std::pair<int, int>> places_; // the pattern analysed
    // By row (0-based), its neighbours in the symmetric pattern, ascending, without the diagonal.
    std::vector<int> neighbourStart_, neighbour_;
    std::vector<int> scratch_; // working room of the analysis
    std::vector<int> order_;   // by elimination place: the row (0-based)
    std::vector<int> place_;   // by row (0-based): its elimination place
    // By elimination place, the columns (places) left of and right of the diagonal, ascending.
    std::vector<int> lowerStart_, lowerColumn_, upperStart_, upperColumn_;
    // values_: diagonals by place, right sides by place, then the lower elements (their multiples
    // once factored) and the upper elements.
    std::vector<double> values_;
    int rightSide_ = 0;
    int lower_ = 0;
    int upper_ = 0;
    // For each lower element of a row, where each element of the row it eliminates lands in that
    // row: slots of values_, in the order of the eliminating row's upper elements.
    std::vector<int> targetStart_, target_;
    // By elimination place k, the lower elements of the rows below it in column k.
    std::vector<int> columnStart_, columnElement_;
    // The places in the orders the forward and the back substitution take them.
    std::vector<int> forwardSequence_, backSequence_;
    std::vector<double> built_;  // the diagonals as built, by place
    std::vector<double> result_; // by place
    std::size_t fill_ = 0;
    long analyses_ = 0;
};

} // namespace quench
