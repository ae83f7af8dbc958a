#pragma once

// The tree builder of the Enter/Edit Pipe Data screen without its widgets: from a few dimensions
// it writes a cross main with branch lines to both sides as ordinary pipe rows. The tab, its
// preview ("Display Network") and the command line call these operations.

#include "core/dialogs.h"
#include "core/project.h"
#include "entry/builder_pipes.h"
#include "entry/builder_result.h"
#include "entry/tree_inputs.h"
#include "entry/tree_spacing.h"
#include "library/pipe_library.h"

#include <vector>

namespace quench {

// False, with focus on the offending input, when a required input is empty or 0: the inputs 1
// and 4 to 10 (of 9 and 10 one alone may be missing), the increment, and both materials. A
// material that is not a number is told first. Shows nothing: see ShowMissingTreeInput.
bool CheckTreeInputs(const TreeInputs& inputs, BuilderFocus* focus = nullptr);

// CheckTreeInputs with its messages under "Input Data Error".
bool CheckTreeInputs(const TreeInputs& inputs, Dialogs& dialogs, BuilderFocus* focus = nullptr);

// The tree the inputs give, planned without touching the rows: the spacing, the pipes in the
// order they are written (with their places for a drawing) and the calculated exit node. The
// project gives the default K and the default sprinkler area. A tree of more pipes than
// BuilderPlanLimit is not planned (Pipes stays empty): no table can take it.
struct TreeLayout {
    TreeSpacing Spacing;
    std::vector<PlacedPipe> Pipes;
    long long ExitNode = 0; // 0 when the tree has one row
};
TreeLayout LayOutTree(const TreeInputs& inputs, const Project& project);

// BuildTree: the conflict scan of the source node, the room in the table, the clash of new and
// existing numbers (with its question), then the rows written from NumberOfPipeRows + 1 and the
// count of rows taken again. A stop leaves the table as it was.
BuildResult BuildTree(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                      const TreeInputs& inputs);

// "Tree Creation": the input check, "Confirm Pipe Add" over existing rows (Yes appends; No
// writes from row 1 over the old rows and leaves those behind the new ones; Cancel stops),
// InputChanged, then BuildTree.
BuildResult CreateTree(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                       const TreeInputs& inputs);

} // namespace quench
