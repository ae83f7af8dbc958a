#include "calculators/additional_fitting.h"
#include "tests/support/scripted_dialogs.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScriptedDialogs;

AdditionalFittingInput CValueInput() {
    AdditionalFittingInput input;
    input.Model = FrictionModel::CValue;
    input.HeadLoss = 1;
    input.FlowRate = 100;
    input.Diameter = 2;
    input.CValue = 130;
    return input;
}

TEST(AdditionalFitting, TheCValueModelGivesTheLengthOfEqualHazenWilliamsLoss) {
    ScriptedDialogs dialogs;
    const auto outcome = CalculateAdditionalFitting(CValueInput(), dialogs);
    EXPECT_TRUE(dialogs.Empty());
    ASSERT_TRUE(outcome.Calculated);
    // 0.0951 psi per foot, so 1 psi is 10.5 ft of 2 in. pipe.
    const double friction =
        4.52 * std::pow(100.0, 1.85) / (std::pow(130.0, 1.85) * std::pow(2.0, 4.87));
    EXPECT_NEAR(friction, 0.0951, 0.00005);
    EXPECT_NEAR(outcome.Length.value(), 1 / friction, 1e-9);
    EXPECT_EQ(AdditionalLengthText(outcome.Length, MeasureSystem::US), "10.51");
    EXPECT_EQ(AdditionalLengthText(outcome.Length, MeasureSystem::SI), "3.2");

    // Twice the loss is twice the length; a roughness of 0 means nothing to this model.
    AdditionalFittingInput doubled = CValueInput();
    doubled.HeadLoss = 2;
    doubled.Roughness = 0;
    const auto twice = CalculateAdditionalFitting(doubled, dialogs);
    EXPECT_TRUE(dialogs.Empty());
    EXPECT_NEAR(twice.Length.value(), 2 * outcome.Length.value(), 1e-9);
}

TEST(AdditionalFitting, TheRoughnessModelSolvesColebrookLoosely) {
    ScriptedDialogs dialogs;
    AdditionalFittingInput input; // the screen's defaults: 1 psi, 100 gpm, 2 in., 0.002 in.
    input.Viscosity = 1.12444 * 2.4190883105; // cP in lb/ft-h
    const auto outcome = CalculateAdditionalFitting(input, dialogs);
    EXPECT_TRUE(dialogs.Empty());
    ASSERT_TRUE(outcome.Length);

    // The same steps, written out: velocity, Reynolds, the loop, the loss per 100 ft.
    const double velocity = 0.4085 * 100 / 4;
    const double reynolds = velocity * 2 * 62.37 * 300 / input.Viscosity;
    const double b = 24 * 0.002 * 0.0833 / 2;
    double f = 0.01;
    double previous = reynolds;
    while (std::fabs(f - previous) > 0.001) {
        previous = f;
        const double x = 1.74 - 2 * std::log10(b + 18.7 / reynolds / std::sqrt(previous));
        f = 1 / (x * x);
    }
    const double loss = f * velocity * velocity * 18.63354037 / 2;
    EXPECT_NEAR(outcome.Length.value(), 100 * (1 / 0.433127) / loss, 1e-9);
    // Steel at these figures has a friction factor near 0.02; the length is near the C-value one.
    EXPECT_NEAR(f, 0.02, 0.003);
    EXPECT_NEAR(outcome.Length.value(), 10.5, 2.0);

    // Rougher pipe loses more per foot, so the same loss is less pipe.
    input.Roughness = 0.004;
    EXPECT_LT(CalculateAdditionalFitting(input, dialogs).Length.value(), outcome.Length.value());
}

TEST(AdditionalFitting, ChecksStopInTheirOrderWithTheirWords) {
    {
        ScriptedDialogs dialogs;
        AdditionalFittingInput input = CValueInput();
        input.HeadLoss = 0;
        input.CValue = 0; // the first check speaks first
        EXPECT_FALSE(CalculateAdditionalFitting(input, dialogs).Calculated);
        ASSERT_EQ(dialogs.All().size(), 1u);
        EXPECT_EQ(dialogs.LastTitle(), "Values must be greater than zero");
        EXPECT_EQ(dialogs.LastText(), "All values must be greater than zero.  Please try again.");
    }
    for (auto zero : {&AdditionalFittingInput::FlowRate, &AdditionalFittingInput::Diameter,
                      &AdditionalFittingInput::Density, &AdditionalFittingInput::Viscosity}) {
        ScriptedDialogs dialogs;
        AdditionalFittingInput input;
        input.*zero = -1;
        EXPECT_FALSE(CalculateAdditionalFitting(input, dialogs).Calculated);
        EXPECT_EQ(dialogs.LastTitle(), "Values must be greater than zero");
    }
    {
        ScriptedDialogs dialogs;
        AdditionalFittingInput input;
        input.Roughness = 0;
        const auto outcome = CalculateAdditionalFitting(input, dialogs);
        EXPECT_FALSE(outcome.Calculated);
        EXPECT_EQ(dialogs.LastText(), "You need to enter a value for roughness.");
        EXPECT_EQ(outcome.Focus, AdditionalFittingField::Roughness);
    }
    {
        ScriptedDialogs dialogs;
        AdditionalFittingInput input = CValueInput();
        input.CValue = 0;
        const auto outcome = CalculateAdditionalFitting(input, dialogs);
        EXPECT_EQ(dialogs.LastText(), "You need to enter a value for C Value.");
        EXPECT_EQ(outcome.Focus, AdditionalFittingField::CValue);
    }
    {
        ScriptedDialogs dialogs;
        AdditionalFittingInput input = CValueInput();
        input.Diameter = 99999;
        EXPECT_FALSE(CalculateAdditionalFitting(input, dialogs).Calculated);
        EXPECT_EQ(dialogs.LastTitle(), "Invalid Pipe Diameter");
        EXPECT_EQ(dialogs.LastText(), "Invalid Diameter entered for given pipe section.  Please "
                                      "check the inputs and try again.");
    }
}

TEST(AdditionalFitting, TheFrictionFactorLoopStopsAfterFiftyRounds) {
    // A Reynolds number below zero gives no factor at all: the loop ends with nothing.
    EXPECT_FALSE(ColebrookFrictionFactor(-1e-3, 0.0));
    const auto settled = ColebrookFrictionFactor(1e5, 0.0);
    ASSERT_TRUE(settled);
    EXPECT_NEAR(*settled, 0.018, 0.002);
}

TEST(AdditionalFitting, TheScreenDefaultsAndTheirUnits) {
    const auto us = AdditionalFittingDefaults(MeasureSystem::US, 0);
    EXPECT_EQ(us.HeadLoss, 1);
    EXPECT_EQ(us.FlowRate, 100);
    EXPECT_EQ(us.Diameter, 2);
    EXPECT_EQ(us.Density, 62.37);
    EXPECT_EQ(us.Viscosity, 1.12444);
    EXPECT_EQ(us.Roughness, 0.002);
    EXPECT_EQ(us.CValue, 130);
    EXPECT_EQ(us.Model, FrictionModel::Roughness);
    EXPECT_FLOAT_EQ(AdditionalFittingDefaults(MeasureSystem::US, 2.067).Diameter, 2.067);

    const auto si = AdditionalFittingDefaults(MeasureSystem::SI, 0);
    EXPECT_EQ(si.HeadLoss, 6.985);
    EXPECT_EQ(si.FlowRate, 378.5);
    EXPECT_EQ(si.Diameter, 63.5);
    EXPECT_EQ(si.Density, 1000);
    EXPECT_EQ(si.Viscosity, 1.1244);
    EXPECT_EQ(si.Roughness, 0.051);
    EXPECT_DOUBLE_EQ(AdditionalFittingDefaults(MeasureSystem::SI, 2).Diameter, 50.8);

    // The US defaults reach the calculation as they stand, the viscosity in lb/ft-h.
    const auto input = ToCalculationUnits(us);
    EXPECT_DOUBLE_EQ(input.HeadLoss, 1);
    EXPECT_NEAR(input.Viscosity, 1.12444 * 2.4190883, 1e-6);
    // The metric fields come back to the same US figures.
    AdditionalFittingFields metric = si;
    metric.HeadLoss = 6.894757293168;
    metric.Diameter = 50.8;
    const auto back = ToCalculationUnits(metric);
    EXPECT_NEAR(back.HeadLoss, 1, 1e-9);
    EXPECT_NEAR(back.Diameter, 2, 1e-12);
    EXPECT_NEAR(back.Roughness, 0.002, 1e-5);
    EXPECT_NEAR(back.Density, 62.43, 0.01);
}

} // namespace
} // namespace quench
