#include "library/pump_curve_text.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(PumpCurveText, CoefficientsPrintAsWholeDecimalsOrScientific) {
    EXPECT_EQ(CoefficientText(120), "120");
    EXPECT_EQ(CoefficientText(-25), "-25");
    EXPECT_EQ(CoefficientText(1234.56789123), "1234.567891");
    EXPECT_EQ(CoefficientText(1), "1");
    EXPECT_EQ(CoefficientText(-1.0000001), "-1");
    EXPECT_EQ(CoefficientText(0), "0");
    EXPECT_EQ(CoefficientText(-0.0001), "-1.00E-04");
    EXPECT_EQ(CoefficientText(0.999), "9.99E-01");
    EXPECT_EQ(CoefficientText(2.3456e-9), "2.35E-09");
}

TEST(PumpCurveText, TheTextEndsAtTheDegreeInUse) {
    const PumpCoefficientArray parabola = {120, 0, -0.0001, 0, 0};
    EXPECT_EQ(PumpCurveText(parabola, 3), "Head = 120 + 0Q + -1.00E-04Q^2");
    const PumpCoefficientArray quartic = {135.7, 0.0125, -3.5e-5, 2e-8, -5e-12};
    EXPECT_EQ(PumpCurveText(quartic, 4), "Head = 135.7 + 1.25E-02Q + -3.50E-05Q^2 + 2.00E-08Q^3");
    EXPECT_EQ(PumpCurveText(quartic, 5),
              "Head = 135.7 + 1.25E-02Q + -3.50E-05Q^2 + 2.00E-08Q^3 + -5.00E-12Q^4");
}

TEST(PumpCurveText, AMultiplierOfOneIsLeftOutAndMinusOneKeepsItsSign) {
    EXPECT_EQ(PumpCurveText({50, 1, -0.5, 0, 0}, 3), "Head = 50 + Q + -5.00E-01Q^2");
    EXPECT_EQ(PumpCurveText({50, -1, 1.0000000001, 0, 0}, 3), "Head = 50 + -Q + Q^2");
    EXPECT_EQ(PumpCurveText({50, 2, -1, 1, -1}, 5), "Head = 50 + 2Q + -Q^2 + Q^3 + -Q^4");
    // The constant term is no multiplier: a0 of 1 stays.
    EXPECT_EQ(PumpCurveText({1, 1.5, -1.5, 0, 0}, 3), "Head = 1 + 1.5Q + -1.5Q^2");
}

} // namespace
} // namespace quench
