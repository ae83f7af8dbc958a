#pragma once

#include "solver/run_context.h"
#include "solver/solver_state.h"

#include <vector>

namespace quench {

constexpr Single PumpMaximumBoost = 99999.99f;

// The pipes of CalcPipeRecord on the way from the supply to the pump, in the order the walk
// crossed them; empty without a pump.
using InflowPipePath = std::vector<int>;

// A pump may have plain inlet piping between the supply and itself, but nothing that flows:
// a sprinkler on that piping stops the run. Fills the path.
void CheckPumpInlet(RunContext& context, InflowPipePath& path);

// The pump row's boost: a typed constant stands; it must not be zero.
void EvaluatePumpBoost(RunContext& context, const InflowPipePath& path);

// The pump rows' treatment while the Calculation screen is read: a typed boost in Supply mode is
// added to the first supply's pressure for the run; a boost not given asks for the curve.
void ReadPumpBoost(RunContext& context);

} // namespace quench
