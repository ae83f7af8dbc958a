#pragma once

#include "calc/calculation_screen.h"
#include "solver/run_context.h"

namespace quench {

// A row with both node texts filled.
bool HasBothNodes(const WorkPipeRecord& row);

// A row whose diameter the user did not give: none typed, or one shown in red (open to sizing).
bool HasNoGivenDiameter(const WorkPipeRecord& row);

// The settings of the Calculation screen before the sizing question, in their fixed order; the
// first fault stops the run (false) with its diagnostic, which brings the screen concerned forward.
// The run's AbortFlag is the caller's.
bool CheckCalculationScreen(RunContext& context, const CalculationScreen& screen);

// A row open to sizing: the run asks whether to size it.
bool AnyRowNeedsSizing(const Project& project);

// After the sizing question: the sizing limits, then the inflow node marked on the rows.
bool CheckSizingAndInflow(RunContext& context, const CalculationScreen& screen);

} // namespace quench
