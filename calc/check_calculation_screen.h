#pragma once

#include "calc/calculation_screen.h"
#include "solver/run_context.h"

namespace quench {

// A row with both node texts filled.
bool HasBothNodes(const WorkPipeRecord& row);

// A row whose diameter the user did not give: none typed, or one shown in red (open to sizing).
bool HasNoGivenDiameter(const WorkPipeRecord& row);

// The settings of the Calculation screen and the inflow node, in their fixed order; the first
// fault shows its message, brings the screen concerned forward and stops the run (false). The
// autosize question is asked here. The run's AbortFlag is the caller's.
bool CheckCalculationScreen(RunContext& context, const CalculationScreen& screen);

} // namespace quench
