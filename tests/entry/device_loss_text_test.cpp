#include "entry/device_loss_text.h"
#include "library/pump_curve.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

PipeRecord Row(Integer material, Single loss) {
    PipeRecord row;
    row.BegNode = "12";
    row.EndNode = "15";
    row.Material = material;
    row.DeviceLoss = loss;
    return row;
}

CalculationData WithCurve() {
    CalculationData data;
    ClearProjectPump(data);
    CurveSlotArray slots{};
    const CurveFit fit = FitPumpCurve(std::vector<CurvePoint>{{0, 52}, {150, 40}, {225, 26}});
    StoreProjectPump(data, slots, fit.Coefficients, false, -1);
    return data;
}

TEST(DeviceLossText, APumpLeftToTheProjectsCurveShowsCurve) {
    const CalculationData curve = WithCurve();
    CalculationData none;
    ClearProjectPump(none);
    EXPECT_EQ(DeviceLossText(Row(MaterialFirePump, NotGiven), curve, MeasureSystem::US), "Curve");
    EXPECT_EQ(DeviceLossText(Row(MaterialFirePump, NotGiven), curve, MeasureSystem::SI), "Curve");
    // A typed boost, a pump without a curve to take, and other devices show their numbers.
    EXPECT_EQ(DeviceLossText(Row(MaterialFirePump, 25), curve, MeasureSystem::US), "25.00");
    EXPECT_EQ(DeviceLossText(Row(MaterialFirePump, NotGiven), none, MeasureSystem::US), "-4.00");
    EXPECT_EQ(DeviceLossText(Row(MaterialMeter, NotGiven), curve, MeasureSystem::US), "-4.00");
    EXPECT_EQ(DeviceLossText(Row(MaterialMeter, 6.5f), curve, MeasureSystem::US), "6.50");
    // In SI units the number is in kPa, with the locale's separator.
    EXPECT_EQ(DeviceLossText(Row(MaterialMeter, 10), curve, MeasureSystem::SI, ','), "68,95");
}

TEST(DeviceLossText, CurveIsNotWrittenBack) {
    EXPECT_FALSE(DeviceLossToStore("Curve", MeasureSystem::US).has_value());
    EXPECT_FALSE(DeviceLossToStore("Curve", MeasureSystem::SI).has_value());
    EXPECT_EQ(DeviceLossToStore("25", MeasureSystem::US), 25.0f);
    EXPECT_EQ(DeviceLossToStore("", MeasureSystem::US), 0.0f);
    EXPECT_NEAR(*DeviceLossToStore("68,95", MeasureSystem::SI, ','), 10, 0.001);
}

TEST(DeviceLossText, APassedCurveTakesOverEveryPumpRow) {
    Project project;
    project.PipeRecord[1] = Row(MaterialFirePump, 0);
    project.PipeRecord[2] = Row(MaterialMeter, 5);
    project.PipeRecord[3] = Row(MaterialFirePump, 40);
    project.PipeRecord[4] = Row(MaterialFirePump, NotGiven);
    EXPECT_EQ(LeavePumpRowsToCurve(project), (std::vector{1, 3}));
    EXPECT_EQ(project.PipeRecord[1].DeviceLoss, NotGiven);
    EXPECT_EQ(project.PipeRecord[2].DeviceLoss, 5.0f);
    EXPECT_EQ(project.PipeRecord[3].DeviceLoss, NotGiven);
    EXPECT_EQ(project.InputChanged, True);
    project.InputChanged = False;
    EXPECT_TRUE(LeavePumpRowsToCurve(project).empty());
    EXPECT_EQ(project.InputChanged, False);
}

} // namespace
} // namespace quench
