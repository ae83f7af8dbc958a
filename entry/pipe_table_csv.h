#pragma once

// The pipe table as comma-separated text, for spreadsheets and scripts: the rows as stored, in
// US units, under a header of the row's field names; and such a table read back into a project
// through the rules a typed row goes through.

#include "core/project.h"
#include "library/pipe_library.h"

#include <string>
#include <string_view>
#include <vector>

namespace quench {

// The header names, in the order of the row's fields (the fitting counters follow from the
// fitting text and are left out).
const std::vector<std::string_view>& PipeCsvColumns();

// Rows 1 to NumberOfPipeRows: flags as stored, K words as they stand, every number as the
// shortest text that reads back as the same stored value.
std::string PipeRowsCsv(const Project& project);

struct PipeCsvImport {
    bool Accepted = false;
    std::string Refusal;               // one line: the CSV line, the column and the rule broken
    std::vector<std::string> Warnings; // one line per node given different data
};

// The project's rows replaced by the table's. Columns are matched by name in any order; a column
// left out takes the value of an empty row. A node keeps the data of the first row naming it,
// the inflow flags mark the inflow node, and each row's equivalent length is recalculated. A bad
// cell refuses the whole table and leaves the project as it was.
PipeCsvImport ImportPipeRowsCsv(Project& project, const PipeLibrary& library,
                                std::string_view text);

} // namespace quench
