#pragma once

#include "solver/run_context.h"

namespace quench {

// The network as a whole: duplicated pipes, node 0, at least three pipes, pipes from a node to
// itself, half rows, and every node reachable from the inflow. The first fault shows its message
// and sets AbortFlag. Sets the run's one-loop flag.
void CheckNetwork(RunContext& context);

} // namespace quench
