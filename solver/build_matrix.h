#pragma once

#include "solver/solver_state.h"

namespace quench {

// True for a node whose head stays fixed during the iteration, so that it has no equation and
// no column: the HMD node in Demand mode, the inflows in Supply mode.
bool HasFixedHead(const SolverState& state, int number);

// Numbers the unknowns: the nodes in node table order that have rows and no fixed head.
void AssignColumns(SolverState& state);

// Each half-edge row's two columns, from the columns of the node positions.
void AssignEdgeColumns(SolverState& state);

// One flow balance per node: the sum of |slope| × correction equals the node's outflow. In
// Demand mode the inflow's row says instead that the inflow equals the total outflow. The
// diagonal holds pipe slopes only; a neighbour reached by parallel pipes keeps the slope of the
// later one. The numbers go straight into the ordered elimination's places (laid out again when
// the network or its fixed node changes); equations it cannot take go into the node-order rows.
void BuildMatrix(SolverState& state);

// The same equations as linked rows in node order, the right side as one more element at the end
// of each row: an element exists only where a number other than 0 was stored.
void BuildNodeOrderMatrix(SolverState& state);

// The column of the right-hand side, above all real columns.
int RightHandSideColumn(const SolverState& state);

} // namespace quench
