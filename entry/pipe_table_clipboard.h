#pragma once

// Copy and paste of a block of pipe table cells as tab-separated text, so rows move to and from
// a spreadsheet. A pasted cell is typed into its field key by key, through the same rules as a
// typed one; a cell the field refuses is left as it was and reported.

#include "entry/pipe_table.h"

#include <string>
#include <string_view>
#include <vector>

namespace quench {

// The cells of rows first..last and columns first..last as the table shows them: one line per
// row, cells separated by tabs.
std::string CopyCells(const PipeTable& table, int firstRow, int lastRow, PipeColumn firstColumn,
                      PipeColumn lastColumn);

struct PasteOutcome {
    std::vector<int> Rows;            // the rows to show again
    std::vector<std::string> Refused; // "Row 3, Elev: \"x\" was refused"
    bool NodesChanged = false;
};

// The block pasted with its first cell at (row, column). Cells past the last column or row of the
// table are reported; the Eq Len column is output only and its cells are passed over. The
// Status column takes "Active" or "Inact".
PasteOutcome PasteCells(PipeTable& table, int row, PipeColumn column, std::string_view text);

// The lines of a refused paste as one message.
std::string PasteReport(const PasteOutcome& outcome);

} // namespace quench
