#pragma once

// The equivalent length of a pipe row: its length, the library lengths of its standard fittings
// and its directly entered length for anything else. One fitting sum serves the row editor while
// the user types and the stored total that the calculation uses.

#include "core/project.h"
#include "core/units.h"
#include "library/fitting_text.h"
#include "library/pipe_library.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quench {

// The project's UnitSystem shows SI.
inline bool IsSIUnitSystem(Integer unitSystem) {
    return unitSystem == static_cast<Integer>(MeasureSystem::SI);
}

// Quantity times the size's length of that fitting, over the entries, in feet.
double FittingSum(const PipeDiameterRecord& size, const std::vector<FittingEntry>& entries);

// The fitting sum of a text for a material and a nominal diameter, walking at most
// `maxCharacters` of the text. None when the material is not 1 to 50 or has no size of exactly
// that nominal: such a row has no fitting lengths.
std::optional<double> FittingSumOf(const PipeLibrary& library, int material, Single nominal,
                                   std::string_view text,
                                   std::size_t maxCharacters = std::string_view::npos);

// The nominal to look a stored diameter up with: as it stands in US units; in SI units as the
// screen shows it back in inches, through "###,##0.0#".
Single LookupNominal(Single storedDiameter, Integer unitSystem);

// Length + fitting sum + non-standard length, rounded through "##0.0##".
Single RoundedEquivLength(Single length, double fittingSum, Single nonStandardFitLength);

// Sets TotalEquivLength of pipe row `row` (1 to MaxPipes) from its stored data: the fittings of
// its canonical text count only for a library material with a diameter the library holds. A row
// number out of range is left alone.
void RecalcEquivLength(Project& project, const PipeLibrary& library, int row);

} // namespace quench
