#pragma once

// The layout language of report tables. A format is a list of columns joined by "|"; a column is
// an optional mark ("<" left, ">" right, "^" centred; none takes the default, left), an optional
// "+", and a width in twips. A column without a width shares what the others leave of the line.
// A leading "_" on a column is kept as a flag: the table is closed by a thin rule.
//
// A body is a string of rows ending in ";", cells separated by "|"; "||" leaves a cell empty.

#include <string>
#include <string_view>
#include <vector>

namespace quench {

enum class CellAlign { Left, Right, Center };

struct TableColumn {
    CellAlign Align = CellAlign::Left;
    bool Plus = false;      // "+" before the width, handed on as it stands
    bool Underline = false; // "_": a rule closes the table
    int Width = 0;          // twips; 0 shares the rest of the line
};

struct TableFormat {
    std::vector<TableColumn> Columns;

    // True when any column asks for the closing rule.
    bool Underlined() const;
};

using TableRow = std::vector<std::string>;

TableFormat ParseTableFormat(std::string_view format);

// The widths of the columns on a line of the width given: columns without a width share what is
// left equally (at least nothing).
std::vector<int> ColumnWidths(const TableFormat& format, int lineWidth);

// "a|b|c" as the cells of one row (a heading); a trailing ";" is allowed.
TableRow ParseTableRow(std::string_view text);

// Rows ending in ";". Text after the last ";" is one more row when it is not empty.
std::vector<TableRow> ParseTableBody(std::string_view body);

// A row as a body string: cells joined by "|", ended by ";".
std::string JoinTableRow(const TableRow& row);

} // namespace quench
