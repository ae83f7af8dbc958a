#include "library/pump_curve.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

void ExpectThroughEveryPoint(const CurveFit& fit, const std::vector<CurvePoint>& points) {
    ASSERT_EQ(fit.Status, CurveFitStatus::Fitted);
    for (const CurvePoint& point : points) {
        const double value = EvaluatePumpCurve(fit.Coefficients, point.Flow);
        EXPECT_NEAR(value, point.Pressure, 1e-9 * std::fabs(point.Pressure))
            << "at flow " << point.Flow;
    }
}

TEST(PumpCurve, ThreePointsGiveTheParabolaThroughThem) {
    // P = 120 - 0.0001 Q^2, worked by hand: (0, 120), (500, 95), (1000, 20).
    const std::vector<CurvePoint> points = {{0, 120}, {500, 95}, {1000, 20}};
    const CurveFit fit = FitPumpCurve(points);
    ExpectThroughEveryPoint(fit, points);
    EXPECT_EQ(fit.PointCount, 3);
    EXPECT_DOUBLE_EQ(fit.Coefficients[0], 120);
    EXPECT_NEAR(fit.Coefficients[1], 0, 1e-15);
    EXPECT_DOUBLE_EQ(fit.Coefficients[2], -0.0001);
    EXPECT_EQ(fit.Coefficients[3], 0);
    EXPECT_EQ(fit.Coefficients[4], 0);
}

TEST(PumpCurve, FourAndFivePointsGiveTheCubicAndQuarticThroughThem) {
    // P = 140 + 0.01 Q - 2E-05 Q^2 - 4E-09 Q^3 at 0, 400, 800 and 1200 gpm, by hand:
    // 140, 140 + 4 - 3.2 - 0.256 = 140.544, 140 + 8 - 12.8 - 2.048 = 133.152,
    // 140 + 12 - 28.8 - 6.912 = 116.288.
    const std::vector<CurvePoint> cubic = {
        {0, 140}, {400, 140.544}, {800, 133.152}, {1200, 116.288}};
    const CurveFit fitCubic = FitPumpCurve(cubic);
    ExpectThroughEveryPoint(fitCubic, cubic);
    EXPECT_EQ(fitCubic.PointCount, 4);
    EXPECT_NEAR(fitCubic.Coefficients[0], 140, 1e-9);
    EXPECT_NEAR(fitCubic.Coefficients[1], 0.01, 1e-12);
    EXPECT_NEAR(fitCubic.Coefficients[2], -2e-5, 1e-15);
    EXPECT_NEAR(fitCubic.Coefficients[3], -4e-9, 1e-18);
    EXPECT_EQ(fitCubic.Coefficients[4], 0);

    // A generic 1000 gpm at 115 psi curve: churn, 50, 100, 150 and 175 % of the rated flow.
    const std::vector<CurvePoint> quartic = {
        {0, 135.7}, {500, 128.8}, {1000, 115.0}, {1500, 89.7}, {1750, 71.3}};
    const CurveFit fitQuartic = FitPumpCurve(quartic);
    ExpectThroughEveryPoint(fitQuartic, quartic);
    EXPECT_EQ(fitQuartic.PointCount, 5);
    EXPECT_NEAR(fitQuartic.Coefficients[0], 135.7, 1e-12); // the point at zero flow fixes a0
}

TEST(PumpCurve, AnyOrderOfThePointsGivesTheSameCurve) {
    std::vector<CurvePoint> points = {
        {0, 204.0}, {1250, 183.0}, {2500, 150.0}, {3750, 100.5}, {4375, 75.0}};
    const CurveFit reference = FitPumpCurve(points);
    ASSERT_EQ(reference.Status, CurveFitStatus::Fitted);
    std::vector<int> order = {0, 1, 2, 3, 4};
    int orders = 0;
    do {
        std::vector<CurvePoint> shuffled;
        for (int index : order) {
            shuffled.push_back(points[static_cast<std::size_t>(index)]);
        }
        const CurveFit fit = FitPumpCurve(shuffled);
        ExpectThroughEveryPoint(fit, points);
        for (std::size_t power = 0; power < 5; ++power) {
            EXPECT_NEAR(fit.Coefficients[power], reference.Coefficients[power],
                        1e-7 * std::fabs(reference.Coefficients[power]));
        }
        ++orders;
    } while (std::next_permutation(order.begin(), order.end()));
    EXPECT_EQ(orders, 120);

    // Three points of the hand parabola, in reverse: the zero-flow point last still fixes a0.
    const CurveFit reversed =
        FitPumpCurve(std::vector<CurvePoint>{{1000, 20}, {500, 95}, {0, 120}});
    ASSERT_EQ(reversed.Status, CurveFitStatus::Fitted);
    EXPECT_NEAR(reversed.Coefficients[0], 120, 1e-12);
    EXPECT_NEAR(reversed.Coefficients[2], -0.0001, 1e-18);
}

TEST(PumpCurve, TooFewPointsAndIdenticalFlowsAreRefusedWithTheirWords) {
    EXPECT_EQ(FitPumpCurve({}).Status, CurveFitStatus::TooFewPoints);
    const CurveFit two = FitPumpCurve(std::vector<CurvePoint>{{0, 120}, {500, 95}});
    EXPECT_EQ(two.Status, CurveFitStatus::TooFewPoints);
    EXPECT_EQ(two.Coefficients, PumpCoefficientArray{});
    EXPECT_EQ(CurveFitMessage(two.Status), "You must specify at least 3 pump curve points.");

    const CurveFit same =
        FitPumpCurve(std::vector<CurvePoint>{{0, 120}, {500, 95}, {1000, 20}, {500, 90}});
    EXPECT_EQ(same.Status, CurveFitStatus::IdenticalFlows);
    EXPECT_EQ(CurveFitMessage(same.Status),
              "Two of the entered pump curve points are identical.  Please reenter data.");
    EXPECT_EQ(FitPumpCurve(std::vector<CurvePoint>{{0, 1}, {0, 1}, {0, 1}}).Status,
              CurveFitStatus::IdenticalFlows);
    EXPECT_EQ(CurveFitMessage(CurveFitStatus::Fitted), "");
}

TEST(PumpCurve, NumbersThatAreNoCurveNeverGiveOne) {
    const double huge = 1e300;
    const CurveFit overflow = FitPumpCurve(std::vector<CurvePoint>{{0, 1}, {huge, 2}, {-huge, 3}});
    EXPECT_EQ(overflow.Status, CurveFitStatus::Overflow);
    EXPECT_EQ(overflow.Coefficients, PumpCoefficientArray{});
    const double nan = std::nan("");
    EXPECT_NE(FitPumpCurve(std::vector<CurvePoint>{{0, 1}, {nan, 2}, {2, nan}}).Status,
              CurveFitStatus::Fitted);
}

TEST(PumpCurve, GaussSolvesInRowOrderAndStopsAtAZeroPivot) {
    // 2x + y - z = 8, -3x - y + 2z = -11, -2x + y + 2z = -3 has x = 2, y = 3, z = -1.
    GaussMatrix matrix{};
    matrix[0] = {2, 1, -1, 0, 0};
    matrix[1] = {-3, -1, 2, 0, 0};
    matrix[2] = {-2, 1, 2, 0, 0};
    GaussVector right = {8, -11, -3, 0, 0};
    GaussVector solution{};
    ASSERT_TRUE(Gauss(matrix, right, 3, solution));
    EXPECT_NEAR(solution[0], 2, 1e-14);
    EXPECT_NEAR(solution[1], 3, 1e-14);
    EXPECT_NEAR(solution[2], -1, 1e-14);

    // No row exchange: a zero in the first pivot ends the solve even though the system has one.
    GaussMatrix swapped{};
    swapped[0] = {0, 1, 0, 0, 0};
    swapped[1] = {1, 0, 0, 0, 0};
    GaussVector swappedRight = {1, 2, 0, 0, 0};
    EXPECT_FALSE(Gauss(swapped, swappedRight, 2, solution));
}

TEST(PumpCurve, EvaluatesAndConvertsFeetOfHeadAtTheHydraulicsFactor) {
    const PumpCoefficientArray coefficients = {100, 0.5, -0.001, 2e-6, -1e-9};
    // At Q = 100: 100 + 50 - 10 + 2 - 0.1 = 141.9.
    EXPECT_NEAR(EvaluatePumpCurve(coefficients, 100), 141.9, 1e-12);
    EXPECT_EQ(EvaluatePumpCurve(coefficients, 0), 100);
    EXPECT_DOUBLE_EQ(FeetOfHeadToPsi(231), 100.023);
    EXPECT_DOUBLE_EQ(FeetOfHeadToPsi(1), 0.433);
}

TEST(PumpCurve, TheProjectHoldsItsPumpWithUnusedPointsAtMinusTenThousand) {
    Project project;
    CalculationData& data = project.CalculationData;
    EXPECT_TRUE(ProjectPumpPoints(data).empty()); // a reset project holds zeros: no point
    data.PumpCurveFlow[1] = 500;                  // a flow with an unused pressure: no point
    data.PumpCurvePressure[1] = -10000;
    EXPECT_TRUE(ProjectPumpPoints(data).empty());
    ClearProjectPump(data);
    EXPECT_TRUE(ProjectPumpPoints(data).empty());
    for (int slot = 0; slot < 5; ++slot) {
        EXPECT_EQ(data.PumpCurveFlow[static_cast<std::size_t>(slot)], -10000.0f);
        EXPECT_EQ(data.PumpCurvePressure[static_cast<std::size_t>(slot)], -10000.0f);
    }

    CurveSlotArray slots{};
    slots[0] = {true, {0, 120}};
    slots[2] = {true, {500, 95}};
    slots[4] = {true, {1000, 20}};
    const PumpCoefficientArray coefficients = {120, 0, -0.0001, 0, 0};
    StoreProjectPump(data, slots, coefficients, true, 3);
    EXPECT_EQ(data.PumpCurveFlow[1], -10000.0f);
    EXPECT_EQ(data.PumpCurvePressure[3], -10000.0f);
    EXPECT_EQ(data.PumpCurveFlow[2], 500.0f);
    EXPECT_EQ(data.PumpDefined, 1);
    EXPECT_EQ(data.PumpSource, 3);
    const auto points = ProjectPumpPoints(data);
    ASSERT_EQ(points.size(), 3u);
    EXPECT_EQ(points[1].Flow, 500);
    EXPECT_EQ(points[2].Pressure, 20);

    // Stored in feet of head, the curve reaches the hydraulics in psi.
    const auto psi = ProjectPumpCoefficientsInPsi(data);
    EXPECT_DOUBLE_EQ(psi[0], 120 * 0.433);
    EXPECT_DOUBLE_EQ(psi[2], -0.0001 * 0.433);
    data.PumpDefined = 0;
    EXPECT_EQ(ProjectPumpCoefficientsInPsi(data), coefficients);

    ClearProjectPump(data);
    EXPECT_EQ(data.PumpCoefficients, PumpCoefficientArray{});
    EXPECT_EQ(data.PumpSource, 0);
}

} // namespace
} // namespace quench
