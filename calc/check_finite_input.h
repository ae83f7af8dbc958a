#pragma once

#include "solver/run_context.h"

namespace quench {

// Every number of the typed pipe rows and of the general project data is finite. No screen lets
// an infinity or a NaN in, but a damaged or foreign file can hold one, and the solver would carry
// it into every result. The first such number shows its message, naming the field, and sets
// AbortFlag.
void CheckFiniteInput(RunContext& context);

} // namespace quench
