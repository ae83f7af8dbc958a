#pragma once

// The fire pump screen in either unit system. Its rules hold the points in the model's units (gpm;
// psi, or feet of head when the pump says so); a screen in SI shows litres per minute and kPa (or
// metres of head) and hands typed values back converted. A change of the system shown converts
// what is shown, never what is held. Both conversions are plain factors, so the curve through the
// converted points is the held curve with each coefficient scaled.

#include "core/units.h"
#include "library/pump_curve.h"

#include <string>
#include <string_view>
#include <vector>

namespace quench {

// The kind of a point's pressure: psi, or feet of head.
UnitKind PumpPressureKind(bool feetOfHead);

// A held field text as the screen shows it. In US the text stands as held; in SI a number is
// converted and shown to three decimals, anything else (a half-typed "-") as it stands.
std::string ShownPumpText(UnitKind kind, std::string_view held, MeasureSystem system);
// The text a field typed on the screen is held as: the shown number converted back in full.
std::string HeldPumpText(UnitKind kind, std::string_view shown, MeasureSystem system);

// Points and a fitted curve in the units shown.
std::vector<CurvePoint> ShownPumpPoints(const std::vector<CurvePoint>& points, bool feetOfHead,
                                        MeasureSystem system);
PumpCoefficientArray ShownPumpCoefficients(const PumpCoefficientArray& coefficients,
                                           bool feetOfHead, MeasureSystem system);

// "Head = ..." of a fitted curve of pointCount points, in the units shown.
std::string ShownPumpCurveText(const PumpCoefficientArray& coefficients, int pointCount,
                               bool feetOfHead, MeasureSystem system);

// The unit words of the two columns: "gpm"/"Lpm", and "psi"/"kPa" or "ft"/"m".
std::string PumpFlowUnit(MeasureSystem system);
std::string PumpPressureUnit(bool feetOfHead, MeasureSystem system);

} // namespace quench
