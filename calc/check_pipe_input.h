#pragma once

#include "solver/run_context.h"

namespace quench {

// The pipe rows one by one: lengths, diameters against the library, materials, the sizing
// bounds, negative values, and that something flows. The first fault shows its message and sets
// AbortFlag; a Demand run without sprinklers is warned and goes on. Works out AutosizeRequested
// again from the data.
void CheckPipeInput(RunContext& context);

} // namespace quench
