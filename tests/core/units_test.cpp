#include "core/formats.h"
#include "core/project.h"
#include "core/units.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

// The definitions the factors are built from, written out by hand.
constexpr double Psi = 0.45359237 * 9.80665 / (0.0254 * 0.0254) / 1000; // kPa

TEST(Units, ExactFactorsOfEachKind) {
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Length, 10), 3.048);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Fine_Length, 2.067), 52.5018);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Area, 100), 9.290304);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Volumetric_Flow, 100), 378.5411784);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Velocity, 20), 6.096);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Mass, 2), 0.90718474);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Volume, 1), 3.785411784);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Mass_Rate, 0.3048), 0.45359237);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Cost_Rate, 0.3048), 1.0);
    EXPECT_NEAR(ToSI(UnitKind::Density, 1), 16.018463373960138, 1e-12);

    // 1 psi = 6.894757293168361 kPa; the help texts' own hand conversions hold.
    EXPECT_NEAR(Psi, 6.894757293168361, 1e-15);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Pressure_Drop, 1), Psi);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Pressure, 1), Psi);
    EXPECT_EQ(Format(ToSI(UnitKind::Pressure_Drop, 7), "0"), "48");
    EXPECT_EQ(Format(ToSI(UnitKind::Pressure_Drop, 0.5), "0.00"), "3.45");
    EXPECT_EQ(Format(*ConvertValue(UnitKind::Volumetric_Flow, 50, "gpm", "m³/h"), "0.0"), "11.4");
    EXPECT_EQ(Format(*ConvertValue(UnitKind::Volumetric_Flow, 100, "gpm", "m³/h"), "0.0"), "22.7");

    // Density of discharge: 0.1 gpm/ft² is 4.07 mm/min.
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Flow_Density, 0.1), 0.1 * 3.785411784 / 0.09290304);
    EXPECT_EQ(Format(ToSI(UnitKind::Flow_Density, 0.2), "0.00"), "8.15");

    // Friction loss per length: psi/ft to kPa/m.
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Friction_Loss, 0.3048), Psi);

    // Temperature has an offset.
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Temperature, 32), 0);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Temperature, 212), 100);
    EXPECT_DOUBLE_EQ(ToSI(UnitKind::Temperature, -40), -40);
    EXPECT_EQ(Format(ToSI(UnitKind::Temperature, 160), "0.0"), "71.1");
    EXPECT_DOUBLE_EQ(FromSI(UnitKind::Temperature, 100), 212);

    // Viscosity: the calculator's water at 1.12444 cP is 2.72 lb/hr-ft.
    EXPECT_EQ(
        Format(*ConvertValue(UnitKind::Dynamic_Viscosity, 1.12444, "cP", "lb/hr-ft"), "0.0000"),
        "2.7201");
    EXPECT_DOUBLE_EQ(*ConvertValue(UnitKind::Dynamic_Viscosity, 1, "cP", "mN-s/m²"), 1);
}

TEST(Units, KFactorInLitresPerMinuteAndBar) {
    // Km is K times 14.4, the factor of the sprinkler listings: K 5.6 is K 80.6. The bare units
    // (5.6 gpm at 1 psi is 21.198 L/min at 0.0689476 bar) would give 80.73; the listing factor
    // is within 0.12 % of that.
    const double litres = 5.6 * 3.785411784;
    const double bar = Psi / 100;
    const double km = ToSI(UnitKind::K_Factor, 5.6);
    EXPECT_NEAR(km, 80.64, 1e-12);
    EXPECT_NEAR(km / (litres / std::sqrt(bar)), 1, 0.0012);
    EXPECT_EQ(Format(km, "0.0"), "80.6");
    EXPECT_EQ(Format(ToSI(UnitKind::K_Factor, 8.0), "0.0"), "115.2");
    EXPECT_EQ(Format(ToSI(UnitKind::K_Factor, 2.8), "0"), "40");

    // A discharge figured from Km in SI stays within 0.12 % of the converted US discharge.
    const double k = 5.6;
    const double psi = 7;
    const double gpm = k * std::sqrt(psi);
    const double lpm = km * std::sqrt(ToSI(UnitKind::Pressure_Drop, psi) / 100);
    EXPECT_NEAR(lpm / ToSI(UnitKind::Volumetric_Flow, gpm), 1, 0.0012);
}

TEST(Units, EveryKindRoundTripsToDoublePrecision) {
    const std::vector<double> values{0, 1, -1, 0.1, 2.067, 326.99, -3276.5, 99999.99, 1e-7, 1e12};
    for (const UnitKind kind : AllUnitKinds()) {
        for (const double value : values) {
            const double back = FromSI(kind, ToSI(kind, value));
            EXPECT_NEAR(back, value, 4e-15 * std::max(1.0, std::fabs(value)))
                << KindName(kind) << " " << value;
            const double forth = ToSI(kind, FromSI(kind, value));
            EXPECT_NEAR(forth, value, 4e-15 * std::max(1.0, std::fabs(value)))
                << KindName(kind) << " " << value;
        }
    }
}

TEST(Units, NamesAndWords) {
    EXPECT_EQ(AllUnitKinds().size(), static_cast<std::size_t>(UnitKindCount));
    const std::vector<std::pair<UnitKind, std::pair<const char*, const char*>>> words{
        {UnitKind::Fine_Length, {"inch", "mm"}},  {UnitKind::Length, {"ft", "m"}},
        {UnitKind::Area, {"ft²", "m²"}},          {UnitKind::Volumetric_Flow, {"gpm", "Lpm"}},
        {UnitKind::Velocity, {"ft/sec", "m/s"}},  {UnitKind::Pressure_Drop, {"psi", "kPa"}},
        {UnitKind::Pressure, {"psia", "kPa"}},    {UnitKind::Flow_Density, {"gpm/ft²", "Lpm/m²"}},
        {UnitKind::K_Factor, {"K", "Km"}},        {UnitKind::Temperature, {"F", "C"}},
        {UnitKind::Density, {"lb/ft³", "kg/m³"}}, {UnitKind::Mass, {"lb", "kg"}},
        {UnitKind::Mass_Rate, {"lb/ft", "kg/m"}}, {UnitKind::Cost_Rate, {"/ft", "/m"}},
    };
    for (const auto& [kind, pair] : words) {
        EXPECT_EQ(UnitWord(kind, MeasureSystem::US), pair.first);
        EXPECT_EQ(UnitWord(kind, MeasureSystem::SI), pair.second);
        EXPECT_EQ(KindOfUsUnit(pair.first), kind);
    }
    for (const UnitKind kind : AllUnitKinds()) {
        EXPECT_EQ(KindFromName(KindName(kind)), kind);
        EXPECT_TRUE(IsUnitOf(kind, UnitWord(kind, MeasureSystem::US)));
        EXPECT_TRUE(IsUnitOf(kind, UnitWord(kind, MeasureSystem::SI)));
    }
    EXPECT_EQ(KindFromName("Pressure_drop"), UnitKind::Pressure_Drop); // as the reports spell it
    EXPECT_FALSE(KindFromName("Speed").has_value());
    EXPECT_FALSE(ConvertValue(UnitKind::Length, 1, "ft", "kPa").has_value());
    EXPECT_FALSE(ConvertValue(UnitKind::Length, 1, "furlong", "m").has_value());
    EXPECT_EQ(GroupFromText("to"), GroupDirection::To);
    EXPECT_EQ(GroupFromText("FROM"), GroupDirection::From);
    EXPECT_FALSE(GroupFromText("Metric").has_value());
}

TEST(Units, SwitchingTwiceBringsTheShownValuesBackAndStoresNothing) {
    Project project;
    SystemData& data = project.SystemData;
    data.TestStaticPressure = 72.5f;
    data.TestFlowRate = 1250.0f;
    data.HydrantElevation = -12.3f;
    data.DefaultKFactor = 5.6f;
    data.TemperatureRating = 155;
    data.MinimumDesiredDensity = 0.15f;
    data.AreaOfSprinklerOperation = 1500.0f;
    const SystemData before = data;

    // The screen's fields, shown in US with the screen's format.
    std::vector<UnitField> fields{
        MakeUnitField(UnitKind::Pressure_Drop, data.TestStaticPressure, MeasureSystem::US),
        MakeUnitField(UnitKind::Volumetric_Flow, data.TestFlowRate, MeasureSystem::US),
        MakeUnitField(UnitKind::Length, data.HydrantElevation, MeasureSystem::US),
        MakeUnitField(UnitKind::K_Factor, data.DefaultKFactor, MeasureSystem::US),
        MakeUnitField(UnitKind::Temperature, data.TemperatureRating, MeasureSystem::US),
        MakeUnitField(UnitKind::Flow_Density, data.MinimumDesiredDensity, MeasureSystem::US),
        MakeUnitField(UnitKind::Area, data.AreaOfSprinklerOperation, MeasureSystem::US),
    };
    auto shown = [&] {
        std::vector<std::string> texts;
        for (const UnitField& field : fields) {
            texts.push_back(Format(field.Value, "##0.00") + " " + field.Units);
        }
        return texts;
    };
    const auto us = shown();
    EXPECT_EQ(us[0], "72.50 psi");

    SwitchFormUnits(fields, GroupDirection::To);
    const auto si = shown();
    EXPECT_EQ(si[0], "499.87 kPa");
    EXPECT_EQ(si[1], "4731.76 Lpm");
    EXPECT_EQ(si[2], "-3.75 m");
    EXPECT_EQ(si[3], "80.64 Km");
    EXPECT_EQ(si[4], "68.33 C");
    EXPECT_EQ(si[5], "6.11 Lpm/m²");
    EXPECT_EQ(si[6], "139.35 m²");

    // A second "To" changes nothing; "From" brings every shown value back.
    SwitchFormUnits(fields, GroupDirection::To);
    EXPECT_EQ(shown(), si);
    SwitchFormUnits(fields, GroupDirection::From);
    EXPECT_EQ(shown(), us);
    SwitchFormUnits(fields, GroupDirection::To);
    SwitchFormUnits(fields, GroupDirection::From);
    EXPECT_EQ(shown(), us);

    EXPECT_EQ(data.TestStaticPressure, before.TestStaticPressure);
    EXPECT_EQ(data.TestFlowRate, before.TestFlowRate);
    EXPECT_EQ(data.TemperatureRating, before.TemperatureRating);
    EXPECT_EQ(project.UnitSystem, 0);

    // What a field holds is stored in US whatever it shows.
    SwitchFormUnits(fields, GroupDirection::To);
    EXPECT_NEAR(StoredValue(fields[0]), 72.5, 1e-12);
    EXPECT_NEAR(StoredValue(fields[4]), 155, 1e-12);
    EXPECT_NEAR(StoredValue(UnitKind::Length, ShownValue(UnitKind::Length, 10, MeasureSystem::SI),
                            MeasureSystem::SI),
                10, 1e-14);
    EXPECT_EQ(ShownValue(UnitKind::Length, 10, MeasureSystem::US), 10);

    // A field with a unit its kind does not know is left alone.
    UnitField odd{UnitKind::Length, "cubits", 3};
    ConvertGroup(odd, GroupDirection::To);
    EXPECT_EQ(odd.Units, "cubits");
    EXPECT_EQ(odd.Value, 3);
    // An empty unit is the kind's US unit.
    UnitField plain{UnitKind::Length, "", 10};
    ConvertGroup(plain, GroupDirection::To);
    EXPECT_EQ(plain.Units, "m");
    EXPECT_DOUBLE_EQ(plain.Value, 3.048);
}

TEST(Units, ReportUnitGivesTheConvertedValue) {
    const auto pressure = SetupReportUnit("Pressure_drop", "psi", "To", 7);
    ASSERT_TRUE(pressure.has_value());
    EXPECT_EQ(pressure->Units, "kPa");
    EXPECT_DOUBLE_EQ(pressure->Value, 7 * Psi);
    const auto volume = SetupReportUnit("Volume", "gal", "To", 10);
    ASSERT_TRUE(volume.has_value());
    EXPECT_EQ(volume->Units, "L");
    EXPECT_DOUBLE_EQ(volume->Value, 37.85411784);
    const auto back = SetupReportUnit("Temperature", "C", "From", 100);
    ASSERT_TRUE(back.has_value());
    EXPECT_DOUBLE_EQ(back->Value, 212);
    EXPECT_FALSE(SetupReportUnit("Bogus", "psi", "To", 1).has_value());
    EXPECT_FALSE(SetupReportUnit("Length", "psi", "To", 1).has_value());
    EXPECT_FALSE(SetupReportUnit("Length", "ft", "Sideways", 1).has_value());
}

} // namespace
} // namespace quench
