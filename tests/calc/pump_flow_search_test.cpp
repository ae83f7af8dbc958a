// The search for the flow at which a pump settles, on a network drawn by hand: it draws
// A·√P at the pressure P of the supply lifted by the curve's boost.

#include "calc/pump_flow_search.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

struct HandNetwork {
    double Draw = 12;     // gpm per √psi
    double Supply = 20;   // psi
    double Shutoff = 250; // psi
    double Fall = 1.8;    // psi per gpm

    double Boost(double flow) const { return Shutoff - Fall * flow; }
    // Nothing flows from a supply lifted to no pressure at all.
    double Found(double taken) const {
        return Draw * std::sqrt(std::max(Supply + Boost(taken), 0.0));
    }
    // Q = A·√(S + c0 - s·Q), solved as a quadratic.
    double Settled() const {
        const double b = Draw * Draw * Fall;
        const double c = -Draw * Draw * (Supply + Shutoff);
        return (-b + std::sqrt(b * b - 4 * c)) / 2;
    }
};

// Passes until the flow taken and the flow found agree within 0.1 gpm; -1 when they never do.
int PassesToSettle(const HandNetwork& network, double first, double& settled) {
    PumpFlowSearch search;
    double taken = first;
    for (int pass = 1; pass <= 30; ++pass) {
        const double found = network.Found(taken);
        if (std::fabs(found - taken) < 0.1) {
            settled = found;
            return pass;
        }
        taken = search.Next(taken, found);
    }
    return -1;
}

TEST(PumpFlowSearch, SettlesWhereThePlainStepSwingsEverWider) {
    const HandNetwork steep;
    const double root = steep.Settled();
    // At the root the plain step multiplies an error by more than one, with its sign turned.
    const double slope =
        -steep.Draw * steep.Fall / (2 * std::sqrt(steep.Supply + steep.Boost(root)));
    ASSERT_LT(slope, -1);
    double settled = 0;
    const int passes = PassesToSettle(steep, 40, settled);
    ASSERT_GT(passes, 0);
    EXPECT_LE(passes, 8);
    EXPECT_NEAR(settled, root, 0.1);
}

TEST(PumpFlowSearch, SettlesAGentleCurveInAFewPasses) {
    HandNetwork gentle;
    gentle.Shutoff = 52;
    gentle.Fall = 0.15;
    for (const double first : {1.0, 44.0, 400.0}) {
        double settled = 0;
        const int passes = PassesToSettle(gentle, first, settled);
        ASSERT_GT(passes, 0) << first;
        EXPECT_LE(passes, 6) << first;
        EXPECT_NEAR(settled, gentle.Settled(), 0.1) << first;
    }
}

TEST(PumpFlowSearch, TakesTheFlowFoundUntilTheSettledFlowLiesBetweenTwoPasses) {
    PumpFlowSearch search;
    // Both passes drew more than they were taken at: the next flow is the one found.
    EXPECT_EQ(search.Next(10, 50), 50);
    EXPECT_EQ(search.Next(50, 75), 75);
    // Now one drew less: the next lies between, on the line through the two nearest passes.
    const double next = search.Next(75, 65);
    EXPECT_NEAR(next, 50 + 25.0 * 25 / 35, 1e-12);
    EXPECT_GT(next, 50);
    EXPECT_LT(next, 75);
    // A side kept twice running has its excess halved: the next moves off it.
    const double after = search.Next(next, next - 1);
    EXPECT_GT(after, 50);
    EXPECT_LT(after, next);
    EXPECT_NEAR(after, 50 + 12.5 * (next - 50) / 13.5, 1e-9);
}

} // namespace
} // namespace quench
