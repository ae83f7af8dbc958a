#include "solver/sparse_matrix.h"

namespace quench {

void SparseMatrix::Reserve(int rows, int elements) {
    heads_.assign(static_cast<std::size_t>(rows) + 1, 0);
    elements_.clear();
    elements_.reserve(static_cast<std::size_t>(elements) + 1);
    elements_.emplace_back();
    count_ = 0;
}

void SparseMatrix::Clear(int rows) {
    if (rows + 1 > static_cast<int>(heads_.size())) {
        heads_.resize(static_cast<std::size_t>(rows) + 1, 0);
    }
    for (int row = 0; row <= rows; ++row) {
        heads_[static_cast<std::size_t>(row)] = 0;
    }
    elements_.resize(1);
    count_ = 0;
}

double SparseMatrix::GetElement(int row, int column) const {
    for (int at = RowHead(row); at != 0; at = Element(at).Next) {
        const SparseElement& element = Element(at);
        if (element.Column == column) {
            return element.Value;
        }
        if (element.Column > column) {
            break;
        }
    }
    return 0;
}

int SparseMatrix::NewElement(int column, double value, int next) {
    // Beyond the preallocated room the table grows rather than fail the run.
    elements_.push_back(SparseElement{column, next, value});
    ++count_;
    return count_;
}

void SparseMatrix::SetElement(int row, int column, double value) {
    int previous = 0;
    int at = RowHead(row);
    while (at != 0 && Element(at).Column < column) {
        previous = at;
        at = Element(at).Next;
    }
    if (at != 0 && Element(at).Column == column) {
        Element(at).Value = value;
        return;
    }
    if (value == 0) {
        return;
    }
    const int created = NewElement(column, value, at);
    if (previous == 0) {
        SetRowHead(row, created);
    } else {
        Element(previous).Next = created;
    }
}

} // namespace quench
