#pragma once

// The node equations: each row a linked list of elements in rising column order, taken from one
// preallocated table and never freed within a solve. Index 0 of the element table ends a list.

#include <vector>

namespace quench {

// The two indexes side by side: 16 bytes an element, four to a cache line.
struct SparseElement {
    int Column = 0;
    int Next = 0; // the next element of the row, 0 at the end
    double Value = 0;
};

class SparseMatrix {
public:
    // Room for the rows and elements of a solve, allocated once.
    void Reserve(int rows, int elements);

    // Empties every row from 1 to `rows`.
    void Clear(int rows);

    // The value at (row, column), or 0 when there is no element.
    double GetElement(int row, int column) const;

    // Stores the value: a new element goes in column order, but a zero value never creates one;
    // an existing element is overwritten, also by 0, and stays in the list.
    void SetElement(int row, int column, double value);

    // A new element, not yet linked into a row.
    int NewElement(int column, double value, int next);

    int RowHead(int row) const { return heads_[static_cast<std::size_t>(row)]; }
    void SetRowHead(int row, int element) { heads_[static_cast<std::size_t>(row)] = element; }
    SparseElement& Element(int index) { return elements_[static_cast<std::size_t>(index)]; }
    const SparseElement& Element(int index) const {
        return elements_[static_cast<std::size_t>(index)];
    }
    int ElementCount() const { return count_; }
    int RowCapacity() const { return static_cast<int>(heads_.size()) - 1; }

private:
    std::vector<SparseElement> elements_{1};
    std::vector<int> heads_{0};
    int count_ = 0;
};

} // namespace quench
