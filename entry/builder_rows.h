#pragma once

// The steps both builders take once their pipes are planned: the room in the table, the node
// numbers, the clash of new and existing numbers, and the writing of the rows.

#include "core/dialogs.h"
#include "core/project.h"
#include "entry/builder_pipes.h"
#include "entry/builder_result.h"
#include "library/pipe_library.h"

#include <string_view>
#include <vector>

namespace quench {

// Whether source + i * increment, for i from 0 to `pipes`, is the beginning node of an active
// row, or the source itself its ending node (the ending node is tested without the step).
bool NewNumbersClash(const Project& project, long long source, long long increment,
                     long long pipes);

// The room, the node numbers and the clash question, then the rows written from
// NumberOfPipeRows + 1 (`pipes` holds them unless there are too many to plan), each through
// RecalcEquivLength, and the rows counted again. `noRoom` is the builder's message before the
// capacity.
BuildResult WritePlannedRows(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                             const std::vector<PlacedPipe>& pipes, long long pipesRequired,
                             long long source, long long increment, std::string_view noRoom);

// "Confirm Pipe Add" over existing rows: Yes appends, No sets NumberOfPipeRows to 0 so that the
// new rows are written from row 1, Cancel stops (false). Nothing is asked over an empty table.
bool ConfirmPipeAdd(Project& project, Dialogs& dialogs, std::string_view text);

// The number of a node text, 0 for an empty or unreadable one.
long long RowNodeNumber(const std::string& text);

} // namespace quench
