#pragma once

#include "core/project.h"
#include "solver/solver_state.h"

namespace quench {

// The half-edge table from NodeRecord (sorted nodes) and CalcPipeRecord: for each node in order,
// one row for each pipe at the node in table order. Device rows get the virtual pipe of 2.067 in
// and 100 ft, and their C value 120 in the state's table.
void BuildHalfEdges(const Project& project, SolverState& state);

} // namespace quench
