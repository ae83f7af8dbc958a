#pragma once

// The grid builder of the Enter/Edit Pipe Data screen without its widgets: a rectangular
// perimeter fed at one point of its top side, with branch lines across it, written as ordinary
// pipe rows. The tab, its preview and the command line call these operations.

#include "core/dialogs.h"
#include "core/project.h"
#include "entry/builder_pipes.h"
#include "entry/builder_result.h"
#include "entry/grid_inputs.h"
#include "library/pipe_library.h"

#include <vector>

namespace quench {

// False, with focus on the offending input, when one of the inputs 0 to 9 is empty or 0, or a
// material is. Shows nothing.
bool CheckGridInputs(const GridInputs& inputs, BuilderFocus* focus = nullptr);

// CheckGridInputs with its messages under "Input Data Error".
bool CheckGridInputs(const GridInputs& inputs, Dialogs& dialogs, BuilderFocus* focus = nullptr);

// The grid the inputs give, planned without touching the rows.
struct GridLayout {
    long long BranchLines = 0;   // NB
    long long HeadsPerLine = 0;  // NS
    double Width = 0;            // left distance + spaces + right distance, in the input unit
    long long PipesRequired = 0; // P = NB * (NS + 1) + 5 + (NB - 1) * 2
    std::vector<PlacedPipe> Pipes;
};
GridLayout LayOutGrid(const GridInputs& inputs, const Project& project);

// BuildGrid: the room in the table, the clash of new and existing numbers (with its question),
// then the rows written from NumberOfPipeRows + 1 and the count of rows taken again.
BuildResult BuildGrid(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                      const GridInputs& inputs);

// "Grid Creation": the input check, "Confirm Pipe Add", InputChanged, then BuildGrid.
BuildResult CreateGrid(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                       const GridInputs& inputs);

// The grid's names for the two kinds of row.
inline PlacedPipe& AddGridBranchPipe(std::vector<PlacedPipe>& pipes, const Project& project,
                                     long long& node, long long increment,
                                     const BuilderPipeData& pipe, const BuilderNodeData& nodes,
                                     Single length) {
    return AddBranchPipe(pipes, project, node, increment, pipe, nodes, length);
}
inline PlacedPipe& AddPerimeterPipe(std::vector<PlacedPipe>& pipes, const Project& project,
                                    long long begin, long long end, const BuilderPipeData& pipe,
                                    const BuilderNodeData& nodes, Single length) {
    return AddCrossPipe(pipes, project, begin, end, pipe, nodes, length);
}

} // namespace quench
