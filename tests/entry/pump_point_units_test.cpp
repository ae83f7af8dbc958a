#include "core/formats.h"
#include "entry/pump_point_units.h"
#include "library/pump_curve_text.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

constexpr double LitresPerGallon = 3.785411784;
constexpr double KilopascalsPerPsi = 6.894757293168361;

TEST(PumpPointUnits, FieldsShowInTheSystemAndAreHeldInTheModelsUnits) {
    // US shows and holds every text as typed, a half-typed one included.
    for (const char* text : {"100", "1,5", "-", "", "12.3456789"}) {
        EXPECT_EQ(ShownPumpText(UnitKind::Volumetric_Flow, text, MeasureSystem::US), text);
        EXPECT_EQ(HeldPumpText(UnitKind::Volumetric_Flow, text, MeasureSystem::US), text);
    }
    // SI: litres per minute and kPa to three decimals; metres for feet of head.
    EXPECT_EQ(ShownPumpText(UnitKind::Volumetric_Flow, "500", MeasureSystem::SI), "1892.706");
    EXPECT_EQ(ShownPumpText(PumpPressureKind(false), "100", MeasureSystem::SI), "689.476");
    EXPECT_EQ(ShownPumpText(PumpPressureKind(true), "100", MeasureSystem::SI), "30.48");
    EXPECT_EQ(ShownPumpText(UnitKind::Volumetric_Flow, "0", MeasureSystem::SI), "0");
    EXPECT_EQ(ShownPumpText(UnitKind::Volumetric_Flow, "-", MeasureSystem::SI), "-");
    EXPECT_EQ(ShownPumpText(UnitKind::Volumetric_Flow, "", MeasureSystem::SI), "");

    // A typed SI value is held in full and shows again as typed.
    const std::string held = HeldPumpText(UnitKind::Volumetric_Flow, "2000", MeasureSystem::SI);
    EXPECT_NEAR(ToNumber(held), 2000 / LitresPerGallon, 1e-9);
    EXPECT_EQ(ShownPumpText(UnitKind::Volumetric_Flow, held, MeasureSystem::SI), "2000");
    const std::string pressure = HeldPumpText(PumpPressureKind(false), "550.5", MeasureSystem::SI);
    EXPECT_NEAR(ToNumber(pressure), 550.5 / KilopascalsPerPsi, 1e-9);
    EXPECT_EQ(ShownPumpText(PumpPressureKind(false), pressure, MeasureSystem::SI), "550.5");
    EXPECT_EQ(HeldPumpText(PumpPressureKind(false), "-", MeasureSystem::SI), "-");

    EXPECT_EQ(PumpFlowUnit(MeasureSystem::SI), "Lpm");
    EXPECT_EQ(PumpPressureUnit(false, MeasureSystem::US), "psi");
    EXPECT_EQ(PumpPressureUnit(true, MeasureSystem::SI), "m");
}

TEST(PumpPointUnits, TheCurveShownIsTheCurveThroughTheShownPoints) {
    const std::vector<CurvePoint> points = {{0, 120}, {500, 115}, {1000, 104}, {1500, 82}};
    const CurveFit held = FitPumpCurve(points);
    ASSERT_EQ(held.Status, CurveFitStatus::Fitted);
    EXPECT_EQ(ShownPumpCurveText(held.Coefficients, 4, false, MeasureSystem::US),
              PumpCurveText(held.Coefficients, 4));
    for (const bool feet : {false, true}) {
        const std::vector<CurvePoint> shown = ShownPumpPoints(points, feet, MeasureSystem::SI);
        ASSERT_EQ(shown.size(), points.size());
        EXPECT_NEAR(shown[2].Flow, 1000 * LitresPerGallon, 1e-9);
        EXPECT_NEAR(shown[2].Pressure, 104 * (feet ? 0.3048 : KilopascalsPerPsi), 1e-9);
        const CurveFit refit = FitPumpCurve(shown);
        ASSERT_EQ(refit.Status, CurveFitStatus::Fitted);
        const PumpCoefficientArray scaled =
            ShownPumpCoefficients(held.Coefficients, feet, MeasureSystem::SI);
        for (std::size_t power = 0; power < 4; ++power) {
            EXPECT_NEAR(scaled[power], refit.Coefficients[power],
                        1e-7 * std::abs(refit.Coefficients[power]))
                << power;
        }
        EXPECT_EQ(ShownPumpCurveText(held.Coefficients, 4, feet, MeasureSystem::SI),
                  PumpCurveText(scaled, 4));
        // Every shown point lies on the shown curve.
        for (const CurvePoint& point : shown) {
            EXPECT_NEAR(EvaluatePumpCurve(scaled, point.Flow), point.Pressure, 1e-6);
        }
    }
}

} // namespace
} // namespace quench
