#pragma once

// A calculated project as an EPANET input file (".inp"), so that a second program can check the
// calculation: the nodes as junctions with their elevations and fixed flows, the inflow as one
// reservoir whose head is its elevation plus its pressure, the pipes with their equivalent
// lengths, inside diameters and C-factors, sprinklers as emitters (coefficient K, exponent 0.5),
// a constant-loss device as a pressure breaker valve set to its posted drop, and a fire pump as a
// pump whose one-point curve is its posted boost at its flow. Units GPM, Hazen-Williams.
// IDs are the node numbers. Only the rows of the last calculation are written (inactive rows are
// not among them). docs/epanet.md lists what EPANET does differently.

#include "core/project.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace quench {

// Feet of water in one psi, as the reservoir head takes them.
constexpr double PsiPerFootOfWater = 0.4333;

struct EpanetOutcome {
    bool Written = false;
    std::string Message; // when not written: why
};

inline constexpr std::string_view EpanetNoResults =
    "The project holds no calculated results.  Calculate it before exporting it to EPANET.";

EpanetOutcome LayEpanetInput(const Project& project, std::string& text);

// The same into a file, written through a temporary file.
EpanetOutcome WriteEpanetFile(const Project& project, const std::filesystem::path& file);

} // namespace quench
