#pragma once

// The hydraulically most demanding node (HMD): the sprinkler whose head is held at the target
// pressure while the rest of the network floats, in Demand mode.

#include "core/project.h"
#include "solver/solver_state.h"

namespace quench {

// The first row of a node that carries a K-factor, 0 when none does.
int FirstSprinklerRow(const SolverState& state, int number);

// Every copy of a node's head at a residual pressure: its own rows (residual, head) and the rows
// that lead into it.
void SetNodeHead(SolverState& state, int number, double residual);

// The HMD node held at a pressure, its sprinkler flowing K·√P.
void HoldHmdNode(SolverState& state, int number, double pressure);

// The first guess: a dead-end sprinkler far from the supply.
// The flowing sprinkler at the lowest residual pressure below the given one, 0 when none is.
int LowestSprinklerBelow(const SolverState& state, double pressure);

void PickFirstHmd(SolverState& state);

// Demand mode: the sprinkler with the lowest residual more than 0.01 below the target becomes the
// HMD node, and unless the choice is locked it is held at the target. Sprinklers within 0.01 of
// the lowest are lifted to it. Supply mode: the node of the lowest residual, pressures untouched.
void FindHmd(const Project& project, SolverState& state);

} // namespace quench
