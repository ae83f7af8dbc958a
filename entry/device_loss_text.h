#pragma once

// The Loss field of the pipe data screen: a device's loss, a pump's typed boost, or the word
// "Curve" where a pump row leaves its boost to the project's pump curve. The word is shown only:
// it is no number, and leaving the field with it writes nothing back into the row.

#include "core/project.h"
#include "core/units.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

constexpr const char* PumpCurveLossText = "Curve";

// The field's text for a row: "Curve" for a pump row at -4 while the project holds a pump curve,
// otherwise the row's value in the unit on screen with the field's decimals.
std::string DeviceLossText(const PipeRecord& row, const CalculationData& data, MeasureSystem system,
                           char decimalCharacter = '.');

// The value in psi that the field's text stores in the row; nothing for "Curve", which leaves the
// row as it stands.
std::optional<Single> DeviceLossToStore(std::string_view text, MeasureSystem system,
                                        char decimalCharacter = '.');

// The pump screen passed a curve to use: every pump row takes its boost from it, a typed boost
// included. Returns the rows changed.
std::vector<int> LeavePumpRowsToCurve(Project& project);

} // namespace quench
