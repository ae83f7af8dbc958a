#include "calculators/sprinkler_kfactor.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(SprinklerKFactor, EachLineSolvesTheSprinklerRelationForItsMissingValue) {
    EXPECT_DOUBLE_EQ(KFactorOf(100, 25).value(), 20);
    EXPECT_DOUBLE_EQ(FlowOf(5.6, 16).value(), 22.4);
    EXPECT_NEAR(PressureOf(5.6, 28).value(), 25, 1e-12);
    // The three lines agree with each other on any sprinkler.
    const double k = KFactorOf(37.3, 11.7).value();
    EXPECT_NEAR(FlowOf(k, 11.7).value(), 37.3, 1e-12);
    EXPECT_NEAR(PressureOf(k, 37.3).value(), 11.7, 1e-12);
}

TEST(SprinklerKFactor, AZeroInputLeavesTheLineWithoutResult) {
    EXPECT_FALSE(KFactorOf(0, 25));
    EXPECT_FALSE(KFactorOf(100, 0));
    EXPECT_FALSE(FlowOf(0, 16));
    EXPECT_FALSE(PressureOf(5.6, 0));
    EXPECT_FALSE(PressureOf(0, 28));

    KFactorLines lines;
    lines.FlowRate = 100;
    lines.ResidualPressure = 0;
    lines.SecondKFactor = 5.6;
    lines.SecondPressure = 16;
    const KFactorResults results = CalculateKFactorLines(lines);
    EXPECT_EQ(results.KFactor, "");
    EXPECT_EQ(results.Flow, "22.4");
    EXPECT_EQ(results.Pressure, "");
}

TEST(SprinklerKFactor, TheScreenShowsResultsInItsUnitsThroughTwoOptionalDecimals) {
    KFactorLines us;
    us.FlowRate = 100;
    us.ResidualPressure = 25;
    us.SecondKFactor = 5.6;
    us.SecondPressure = 16;
    us.ThirdKFactor = 5.6;
    us.ThirdFlow = 28;
    KFactorResults results = CalculateKFactorLines(us);
    EXPECT_EQ(results.KFactor, "20.0");
    EXPECT_EQ(results.Flow, "22.4");
    EXPECT_EQ(results.Pressure, "25.0");

    us.FlowRate = 33.333;
    us.ResidualPressure = 7;
    EXPECT_EQ(CalculateKFactorLines(us).KFactor, "12.6"); // 12.5987...

    // In SI the inputs are L/min, kPa and Km, and so are the results: Km = 14.4 K.
    KFactorLines si;
    si.Units = MeasureSystem::SI;
    si.FlowRate = ToSI(UnitKind::Volumetric_Flow, 100);
    si.ResidualPressure = ToSI(UnitKind::Pressure_Drop, 25);
    si.SecondKFactor = 80.64; // K 5.6
    si.SecondPressure = ToSI(UnitKind::Pressure_Drop, 16);
    results = CalculateKFactorLines(si);
    EXPECT_EQ(results.KFactor, "288.0");
    EXPECT_EQ(results.Flow, "84.79"); // 22.4 gpm in L/min
}

TEST(SprinklerKFactor, CloseReturnsTheResultOrZeroAndOpeningIgnoresTheKFactorWords) {
    EXPECT_EQ(ReturnedValueText("20.0"), "20.0");
    EXPECT_EQ(ReturnedValueText("5.63"), "5.63");
    EXPECT_EQ(ReturnedValueText(""), "0.0");
    EXPECT_EQ(ReturnedValueText("   "), "0.0");

    EXPECT_FALSE(OpeningValue("Dflt"));
    EXPECT_FALSE(OpeningValue("Value"));
    EXPECT_FALSE(OpeningValue(""));
    EXPECT_DOUBLE_EQ(OpeningValue(" 5.6 ").value(), 5.6);
}

} // namespace
} // namespace quench
