#pragma once

// The branch line calculator: a stretch of pipe with a sprinkler at its end replaced by one
// equivalent K-factor, so that a branch line can be entered with fewer nodes. Elevation plays no
// part. US units: inches, feet, K.

#include "core/units.h"
#include "library/pipe_library.h"

#include <optional>
#include <string>

namespace quench {

// The four end pressures (psi) at which the stretch is judged; the result is the mean of the
// four K-factors seen from the start of the stretch.
inline constexpr double BranchLinePressures[] = {7, 10, 15, 20};

// The equivalent K-factor of `material` (1 to 50) at the nominal diameter, the straight length
// (pipe plus non-standard fittings, feet), the standard fitting text ("2F3E") and the sprinkler's
// K. The nominal is matched to the material's sizes on both values rounded to 3 decimals; 0 when
// no size matches.
double BranchLineKFactor(const PipeLibrary& library, int material, double nominal,
                         double straightLength, const std::string& fittings, double kFactor);

// The fields of the screen, each in the unit shown in `Units` (the material is its number).
struct BranchLineFields {
    MeasureSystem Units = MeasureSystem::US;
    double Material = 0;
    double Diameter = 0; // inch, or mm in SI
    double Length = 0;   // ft, or m
    std::string StandardFittings;
    double NonStandardFittings = 0; // ft, or m
    double SprinklerKFactor = 0;    // K, or Km
};

// The calculated K in US units, or nothing where the screen empties the result: a diameter, a
// total length or a K-factor of 0, a material outside 1 to 50, or a diameter the material lacks.
std::optional<double> CalculateBranchLine(const PipeLibrary& library,
                                          const BranchLineFields& fields);

// The text of the result field: the K in the K unit shown, "0.0#", or empty.
std::string BranchLineResultText(const PipeLibrary& library, const BranchLineFields& fields);

} // namespace quench
