#pragma once

// A table of the model: its rows are numbered from 1 as the model numbers them (row 0 is there but
// unused, except where a table says otherwise). Rows are reached by the model's own row numbers,
// of any integer type, so no call site converts them. Otherwise it is a vector: its size counts
// row 0, and code that works on vectors takes a table as it is.

#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

namespace quench {

// Rows first to last, for a loop that needs no row number.
template <class Record>
struct RowRange {
    Record* First;
    Record* Last;
    Record* begin() const { return First; }
    Record* end() const { return Last; }
    bool empty() const { return First == Last; }
    Record& back() const { return *(Last - 1); }
};

template <class Record>
class Table : public std::vector<Record> {
    using Rows_ = std::vector<Record>;

public:
    using Rows_::Rows_;
    Table() = default;
    // A snapshot of the rows, such as an undo step keeps, put back as it was.
    Table(Rows_ rows) : Rows_(std::move(rows)) {} // NOLINT: implicit on purpose

    // (No <concepts> here: Qt's moc reads this header through the model and cannot parse it.)
    template <class Row, std::enable_if_t<std::is_integral_v<Row>, bool> = true>
    Record& operator[](Row row) {
        return Rows_::operator[](static_cast<std::size_t>(row));
    }
    template <class Row, std::enable_if_t<std::is_integral_v<Row>, bool> = true>
    const Record& operator[](Row row) const {
        return Rows_::operator[](static_cast<std::size_t>(row));
    }

    // Rows 1 to count.
    RowRange<Record> Rows(int count) { return {Rows_::data() + 1, Rows_::data() + 1 + count}; }
    RowRange<const Record> Rows(int count) const {
        return {Rows_::data() + 1, Rows_::data() + 1 + count};
    }
};

} // namespace quench
