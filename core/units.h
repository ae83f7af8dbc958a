#pragma once

// Units of measure. The model holds every value in its US unit; a screen or a report in SI shows
// the value converted, and a typed SI value is converted back before it is stored. A field's unit
// object knows its kind (uomName) and the unit of the value it holds (uomUnits); switching a group
// of them between the two systems converts the values they show, never a stored value.
//
// The factors are the exact definitions of the units (1 ft = 0.3048 m, 1 lb = 0.45359237 kg,
// 1 US gal = 3.785411784 L, standard gravity 9.80665 m/s²); derived units are built from them.

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quench {

enum class UnitKind {
    Fine_Length,       // inch: diameters, nominal sizes
    Length,            // ft: lengths, elevations
    Area,              // ft²
    Volumetric_Flow,   // gpm
    Velocity,          // ft/sec
    Pressure_Drop,     // psi: pressures and losses
    Pressure,          // psia: nodal pressure estimates
    Flow_Density,      // gpm/ft²
    K_Factor,          // K: gpm per psi^0.5
    Temperature,       // F
    Density,           // lb/ft³
    Dynamic_Viscosity, // lb/hr-ft
    Cost_Rate,         // $/ft
    Mass,              // lb
    Mass_Rate,         // lb/ft
    Volume,            // gal
    Friction_Loss,     // psi/ft: friction loss per length of pipe
};

inline constexpr int UnitKindCount = 17;

// The system a value is shown in; the numbers are those of the project's UnitSystem.
enum class MeasureSystem { US = 0, SI = 1 };

// "To" converts a group to the metric display, "From" back to the US display.
enum class GroupDirection { To, From };

std::span<const UnitKind> AllUnitKinds();

// The kind's name as the unit objects carry it ("Fine_Length", "Pressure_Drop", ...).
std::string_view KindName(UnitKind kind);
// A kind by name, without regard to case (the reports spell "Pressure_drop").
std::optional<UnitKind> KindFromName(std::string_view name);

// The unit word of the kind in a system: "inch"/"mm", "ft"/"m", "ft²"/"m²", "gpm"/"Lpm",
// "ft/sec"/"m/s", "psi"/"kPa", "psia"/"kPa", "gpm/ft²"/"Lpm/m²", "K"/"Km", "F"/"C", ...
std::string_view UnitWord(UnitKind kind, MeasureSystem system);

// True when the kind knows the unit word (its two words and accepted others such as "L/min",
// "m³/h", "bar", "ft/s", "fps", "cP").
bool IsUnitOf(UnitKind kind, std::string_view unit);
// The kind whose US word is the unit ("ft", "psi", "gpm", "K", ...).
std::optional<UnitKind> KindOfUsUnit(std::string_view unit);

// A value from one unit of the kind to another; nothing when either unit is not of the kind.
std::optional<double> ConvertValue(UnitKind kind, double value, std::string_view fromUnit,
                                   std::string_view toUnit);

// A stored (US) value in the SI unit of its kind, and back.
double ToSI(UnitKind kind, double usValue);
double FromSI(UnitKind kind, double siValue);

// The value to show for a stored value, and the value to store for a shown one.
double ShownValue(UnitKind kind, double storedValue, MeasureSystem system);
double StoredValue(UnitKind kind, double shownValue, MeasureSystem system);

// "To" or "From" in any case; nothing for another text.
std::optional<GroupDirection> GroupFromText(std::string_view text);
MeasureSystem TargetSystem(GroupDirection direction);

// One unit object: the kind of the field, the unit of the value it holds, and the value.
struct UnitField {
    UnitKind Kind = UnitKind::Length;
    std::string Units; // uomUnits; empty means the US word of the kind
    double Value = 0;
};

// A unit field holding a stored value, shown in the system given.
UnitField MakeUnitField(UnitKind kind, double storedValue, MeasureSystem system);

// The field's value in the US unit of its kind, the form in which the model stores it.
double StoredValue(const UnitField& field);

// Switches one unit object to the system of the group: its value and its unit word change
// together. A field already in that system, or with a unit its kind does not know, stays.
void ConvertGroup(UnitField& field, GroupDirection direction);

// Every unit object of a screen switched together, as a group call reaches them all.
void SwitchFormUnits(std::span<UnitField> fields, GroupDirection direction);

// A report's unit object set up with a kind name, a unit and a value, then switched by the group:
// the form in which a report gets a converted value. Nothing for an unknown kind or unit.
std::optional<UnitField> SetupReportUnit(std::string_view name, std::string_view units,
                                         std::string_view group, double value);

} // namespace quench
