#pragma once

#include "core/project.h"
#include "solver/solver_state.h"

namespace quench {

// The solution into the tables the rest of the system reads: each node's head, discharge and
// residual pressure from its first row, the supply's outflow into the inflow row's fixed flow,
// and each pipe's flow and velocity.
void CopyResults(Project& project, SolverState& state);

// The row that runs from the pipe's begin node to its end node, 0 when there is none.
int PipeRow(const SolverState& state, int beginNumber, int endNumber);

} // namespace quench
