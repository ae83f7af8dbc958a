#pragma once

// Automatic peaking: the area group that holds the worst HMD node is found over the whole
// system, then only that group's sprinklers (and those of no group) flow.

#include "core/project.h"
#include "solver/run_context.h"
#include "solver/solver_state.h"

#include <string>

namespace quench {

// At least two different area groups among the nodes (a node without a group differs too).
bool HasAreaGroups(const Project& project);

// Removes and returns the next group letter of the text, skipping other characters; 0 when none
// is left.
char TakeGroup(std::string& text);
bool HasGroupLeft(const std::string& text);

// The sprinklers outside the HMD node's group switched off, in the node table and in the rows.
void ApplyHmdGroups(const Project& project, SolverState& state);

// The round after the HMD round: the groups applied once the HMD node of the whole system is
// known; the first time it asks for a new solution.
void PeakingRound(RunContext& context, SolverState& state);

} // namespace quench
