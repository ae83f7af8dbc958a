#pragma once

// The fire pump in the network. A pump row adds its boost to the water that passes it: a boost
// typed in the row, or, with the row's boost at -4, the project's pump curve at the flow through
// the pump. The solver carries the pump as a near short and puts the boost onto the first supply
// (Supply mode) or leaves it out (Demand mode); after the solve the pressures on the supply's side
// of the pump are brought back to what they are in front of it.

#include "calc/pump_flow_search.h"
#include "solver/run_context.h"
#include "solver/solver_state.h"

#include <vector>

namespace quench {

constexpr Single PumpMaximumBoost = 99999.99f;
// Two successive pump flows closer than this (gpm) have settled.
constexpr double PumpFlowTolerance = 0.1;
// A Supply run whose pump flow has not settled after this many passes stops.
constexpr int MaximumPumpPasses = 25;

// The pipes of CalcPipeRecord on the way from the supply to the pump, in the order the walk
// crossed them; empty without a pump.
using InflowPipePath = std::vector<int>;

// What the pump asks of the run once a pass is solved.
enum class PumpStep { Finished, NextPass };

// The pump's state over the passes of one Calculate command.
struct PumpPasses {
    int Count = 0; // passes whose pump boost was evaluated
    PumpFlowSearch Search;
};

// The project holds a fitted pump curve.
bool ProjectHasPumpCurve(const CalculationData& data);

// A pump may have plain inlet piping between the supply and itself, but nothing that flows:
// a sprinkler on that piping stops the run. Fills the path.
void CheckPumpInlet(RunContext& context, InflowPipePath& path);

// The pump row's boost after a pass: a typed boost stands; a boost left to the curve is the curve
// at the flow through the pump. In Supply mode a new pass is asked for until two successive flows
// agree; in Demand mode a negative boost becomes 0 and one above PumpMaximumBoost that maximum,
// each with a message. A boost of 0 stops the run. Then the pressures on the supply's side of the
// pump are lowered by the boost, and in Demand mode the supply's pressure with them.
PumpStep EvaluatePumpBoost(RunContext& context, const SolverState& state,
                           const InflowPipePath& path, PumpPasses& passes);

// After a Supply run of several passes the pump row of the calculated table holds -4 again, so
// that the next run begins as this one did.
void RestoreCurvePumpRow(Project& project);

// The pump rows' treatment while the Calculation screen is read: a typed boost in Supply mode is
// added to the first supply's pressure for the run; a boost not given asks for the curve.
void ReadPumpBoost(RunContext& context);

} // namespace quench
