#pragma once

#include "calc/prepare_network.h"
#include "solver/run_context.h"

#include <optional>

namespace quench {

// The network as a whole: duplicated pipes, node 0, at least three pipes, pipes from a node to
// itself, half rows, and every node reachable from the inflow. The first fault shows its message
// and sets AbortFlag. Sets the run's one-loop flag. A network not prepared before is prepared for
// the check: that preparation's result is returned.
std::optional<PrepareResult> CheckNetwork(RunContext& context);

} // namespace quench
