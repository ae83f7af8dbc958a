#include "core/units.h"

#include "core/text.h"

#include <array>
#include <cmath>

namespace quench {

namespace {

// Exact definitions.
constexpr double Foot = 0.3048;        // m
constexpr double Inch = 0.0254;        // m
constexpr double Pound = 0.45359237;   // kg
constexpr double Gallon = 3.785411784; // L
constexpr double Gravity = 9.80665;    // m/s²

// Derived: one psi is one pound-force on a square inch.
constexpr double PsiInKilopascal = Pound * Gravity / (Inch * Inch) / 1000.0;
constexpr double PsiInBar = PsiInKilopascal / 100.0;

struct KindDefinition {
    UnitKind Kind;
    std::string_view Name;
    std::string_view UsWord;
    std::string_view SiWord;
};

constexpr std::array Kinds{
    KindDefinition{UnitKind::Fine_Length, "Fine_Length", "inch", "mm"},
    KindDefinition{UnitKind::Length, "Length", "ft", "m"},
    KindDefinition{UnitKind::Area, "Area", "ft²", "m²"},
    KindDefinition{UnitKind::Volumetric_Flow, "Volumetric_Flow", "gpm", "Lpm"},
    KindDefinition{UnitKind::Velocity, "Velocity", "ft/sec", "m/s"},
    KindDefinition{UnitKind::Pressure_Drop, "Pressure_Drop", "psi", "kPa"},
    KindDefinition{UnitKind::Pressure, "Pressure", "psia", "kPa"},
    KindDefinition{UnitKind::Flow_Density, "Flow_Density", "gpm/ft²", "Lpm/m²"},
    KindDefinition{UnitKind::K_Factor, "K_Factor", "K", "Km"},
    KindDefinition{UnitKind::Temperature, "Temperature", "F", "C"},
    KindDefinition{UnitKind::Density, "Density", "lb/ft³", "kg/m³"},
    KindDefinition{UnitKind::Dynamic_Viscosity, "Dynamic_Viscosity", "lb/hr-ft", "mN-s/m²"},
    KindDefinition{UnitKind::Cost_Rate, "Cost_Rate", "/ft", "/m"},
    KindDefinition{UnitKind::Mass, "Mass", "lb", "kg"},
    KindDefinition{UnitKind::Mass_Rate, "Mass_Rate", "lb/ft", "kg/m"},
    KindDefinition{UnitKind::Volume, "Volume", "gal", "L"},
    KindDefinition{UnitKind::Friction_Loss, "Friction_Loss", "psi/ft", "kPa/m"},
};
static_assert(Kinds.size() == UnitKindCount);

// A unit of a kind: value = (US value - Zero) * PerUs. The US unit itself has PerUs 1, so a
// conversion from or to it is a single multiplication or division by an exact factor.
struct UnitDefinition {
    UnitKind Kind;
    std::string_view Word;
    double PerUs;
    double Zero = 0;
};

std::span<const UnitDefinition> Units() {
    // Km, in L/min per bar^0.5, is K times 14.4: the conversion NFPA 13 states and designers
    // recognise on listings (K 5.6 is K 80.6), rather than the 14.416 the bare units give.
    static const double KmPerK = 14.4;
    static const auto units = std::to_array<UnitDefinition>({
        {UnitKind::Fine_Length, "inch", 1},
        {UnitKind::Fine_Length, "in", 1},
        {UnitKind::Fine_Length, "mm", Inch * 1000},
        {UnitKind::Fine_Length, "cm", Inch * 100},
        {UnitKind::Length, "ft", 1},
        {UnitKind::Length, "feet", 1},
        {UnitKind::Length, "foot", 1},
        {UnitKind::Length, "m", Foot},
        {UnitKind::Length, "mm", Foot * 1000},
        {UnitKind::Area, "ft²", 1},
        {UnitKind::Area, "ft2", 1},
        {UnitKind::Area, "sq ft", 1},
        {UnitKind::Area, "m²", Foot * Foot},
        {UnitKind::Area, "m2", Foot * Foot},
        {UnitKind::Volumetric_Flow, "gpm", 1},
        {UnitKind::Volumetric_Flow, "Lpm", Gallon},
        {UnitKind::Volumetric_Flow, "L/min", Gallon},
        {UnitKind::Volumetric_Flow, "L/s", Gallon / 60},
        {UnitKind::Volumetric_Flow, "m³/h", Gallon * 60 / 1000},
        {UnitKind::Velocity, "ft/sec", 1},
        {UnitKind::Velocity, "ft/s", 1},
        {UnitKind::Velocity, "fps", 1},
        {UnitKind::Velocity, "m/s", Foot},
        {UnitKind::Velocity, "m/sec", Foot},
        {UnitKind::Pressure_Drop, "psi", 1},
        {UnitKind::Pressure_Drop, "kPa", PsiInKilopascal},
        {UnitKind::Pressure_Drop, "bar", PsiInBar},
        {UnitKind::Pressure, "psia", 1},
        {UnitKind::Pressure, "psi", 1},
        {UnitKind::Pressure, "kPa", PsiInKilopascal},
        {UnitKind::Pressure, "bar", PsiInBar},
        {UnitKind::Flow_Density, "gpm/ft²", 1},
        {UnitKind::Flow_Density, "Lpm/m²", Gallon / (Foot * Foot)},
        {UnitKind::Flow_Density, "mm/min", Gallon / (Foot * Foot)},
        {UnitKind::K_Factor, "K", 1},
        {UnitKind::K_Factor, "Km", KmPerK},
        {UnitKind::Temperature, "F", 1},
        {UnitKind::Temperature, "C", 5.0 / 9.0, 32},
        {UnitKind::Density, "lb/ft³", 1},
        {UnitKind::Density, "kg/m³", Pound / (Foot * Foot * Foot)},
        {UnitKind::Dynamic_Viscosity, "lb/hr-ft", 1},
        {UnitKind::Dynamic_Viscosity, "lb/ft-h", 1},
        {UnitKind::Dynamic_Viscosity, "mN-s/m²", Pound / (Foot * 3600) * 1000},
        {UnitKind::Dynamic_Viscosity, "cP", Pound / (Foot * 3600) * 1000},
        {UnitKind::Dynamic_Viscosity, "Pa·s", Pound / (Foot * 3600)},
        {UnitKind::Cost_Rate, "/ft", 1},
        {UnitKind::Cost_Rate, "/m", 1 / Foot},
        {UnitKind::Mass, "lb", 1},
        {UnitKind::Mass, "kg", Pound},
        {UnitKind::Mass_Rate, "lb/ft", 1},
        {UnitKind::Mass_Rate, "kg/m", Pound / Foot},
        {UnitKind::Volume, "gal", 1},
        {UnitKind::Volume, "L", Gallon},
        {UnitKind::Friction_Loss, "psi/ft", 1},
        {UnitKind::Friction_Loss, "kPa/m", PsiInKilopascal / Foot},
    });
    return units;
}

const KindDefinition& Definition(UnitKind kind) {
    return Kinds.at(static_cast<std::size_t>(kind));
}

const UnitDefinition* FindUnit(UnitKind kind, std::string_view word) {
    for (const UnitDefinition& unit : Units()) {
        if (unit.Kind == kind && unit.Word == word) {
            return &unit;
        }
    }
    return nullptr;
}

double Convert(const UnitDefinition& from, const UnitDefinition& to, double value) {
    const double us = from.PerUs == 1 ? value + from.Zero : value / from.PerUs + from.Zero;
    return to.PerUs == 1 ? us - to.Zero : (us - to.Zero) * to.PerUs;
}

std::string_view FieldUnits(const UnitField& field) {
    return field.Units.empty() ? UnitWord(field.Kind, MeasureSystem::US)
                               : std::string_view(field.Units);
}

} // namespace

std::span<const UnitKind> AllUnitKinds() {
    static const std::array<UnitKind, UnitKindCount> kinds = [] {
        std::array<UnitKind, UnitKindCount> list{};
        for (std::size_t i = 0; i < Kinds.size(); ++i) {
            list[i] = Kinds[i].Kind;
        }
        return list;
    }();
    return kinds;
}

std::string_view KindName(UnitKind kind) {
    return Definition(kind).Name;
}

std::optional<UnitKind> KindFromName(std::string_view name) {
    for (const KindDefinition& kind : Kinds) {
        if (EqualsIgnoreCase(kind.Name, name)) {
            return kind.Kind;
        }
    }
    return std::nullopt;
}

std::string_view UnitWord(UnitKind kind, MeasureSystem system) {
    return system == MeasureSystem::SI ? Definition(kind).SiWord : Definition(kind).UsWord;
}

bool IsUnitOf(UnitKind kind, std::string_view unit) {
    return FindUnit(kind, unit) != nullptr;
}

std::optional<UnitKind> KindOfUsUnit(std::string_view unit) {
    for (const KindDefinition& kind : Kinds) {
        if (kind.UsWord == unit) {
            return kind.Kind;
        }
    }
    return std::nullopt;
}

std::optional<double> ConvertValue(UnitKind kind, double value, std::string_view fromUnit,
                                   std::string_view toUnit) {
    const UnitDefinition* from = FindUnit(kind, fromUnit);
    const UnitDefinition* to = FindUnit(kind, toUnit);
    if (from == nullptr || to == nullptr) {
        return std::nullopt;
    }
    return Convert(*from, *to, value);
}

namespace {

// Each kind's US and SI unit, looked up once: result tables convert every row through them.
struct UnitPair {
    const UnitDefinition* Us;
    const UnitDefinition* Si;
};

const UnitPair& PairOf(UnitKind kind) {
    static const std::array<UnitPair, UnitKindCount> pairs = [] {
        std::array<UnitPair, UnitKindCount> list{};
        for (std::size_t i = 0; i < Kinds.size(); ++i) {
            list[i] = {FindUnit(Kinds[i].Kind, Kinds[i].UsWord),
                       FindUnit(Kinds[i].Kind, Kinds[i].SiWord)};
        }
        return list;
    }();
    return pairs.at(static_cast<std::size_t>(kind));
}

} // namespace

double ToSI(UnitKind kind, double usValue) {
    const UnitPair& pair = PairOf(kind);
    return Convert(*pair.Us, *pair.Si, usValue);
}

double FromSI(UnitKind kind, double siValue) {
    const UnitPair& pair = PairOf(kind);
    return Convert(*pair.Si, *pair.Us, siValue);
}

double ShownValue(UnitKind kind, double storedValue, MeasureSystem system) {
    return system == MeasureSystem::SI ? ToSI(kind, storedValue) : storedValue;
}

double StoredValue(UnitKind kind, double shownValue, MeasureSystem system) {
    return system == MeasureSystem::SI ? FromSI(kind, shownValue) : shownValue;
}

std::optional<GroupDirection> GroupFromText(std::string_view text) {
    if (EqualsIgnoreCase(text, "To")) {
        return GroupDirection::To;
    }
    if (EqualsIgnoreCase(text, "From")) {
        return GroupDirection::From;
    }
    return std::nullopt;
}

MeasureSystem TargetSystem(GroupDirection direction) {
    return direction == GroupDirection::To ? MeasureSystem::SI : MeasureSystem::US;
}

UnitField MakeUnitField(UnitKind kind, double storedValue, MeasureSystem system) {
    return UnitField{kind, std::string(UnitWord(kind, system)),
                     ShownValue(kind, storedValue, system)};
}

double StoredValue(const UnitField& field) {
    const auto value = ConvertValue(field.Kind, field.Value, FieldUnits(field),
                                    UnitWord(field.Kind, MeasureSystem::US));
    return value.value_or(field.Value);
}

void ConvertGroup(UnitField& field, GroupDirection direction) {
    const std::string_view target = UnitWord(field.Kind, TargetSystem(direction));
    if (FieldUnits(field) == target) {
        return;
    }
    const auto value = ConvertValue(field.Kind, field.Value, FieldUnits(field), target);
    if (value) {
        field.Value = *value;
        field.Units = std::string(target);
    }
}

void SwitchFormUnits(std::span<UnitField> fields, GroupDirection direction) {
    for (UnitField& field : fields) {
        ConvertGroup(field, direction);
    }
}

std::optional<UnitField> SetupReportUnit(std::string_view name, std::string_view units,
                                         std::string_view group, double value) {
    const auto kind = KindFromName(name);
    const auto direction = GroupFromText(group);
    if (!kind || !direction || !IsUnitOf(*kind, units)) {
        return std::nullopt;
    }
    UnitField field{*kind, std::string(units), value};
    ConvertGroup(field, *direction);
    return field;
}

} // namespace quench
