#include "entry/field_attributes.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(FieldAttributes, TheTableOfKinds) {
    const NumberAttribute elevation = NumberAttributeOf(NumberFieldKind::Elevation);
    EXPECT_FLOAT_EQ(elevation.Min, -3276.5f);
    EXPECT_FLOAT_EQ(elevation.Max, 3276.5f);
    EXPECT_EQ(elevation.Decimals, 1);
    const NumberAttribute imbalance = NumberAttributeOf(NumberFieldKind::ImbalanceLimit);
    EXPECT_FLOAT_EQ(imbalance.Min, 0.0000001f);
    EXPECT_EQ(imbalance.Decimals, 7);
    EXPECT_FLOAT_EQ(NumberAttributeOf(NumberFieldKind::MaximumIterations).Max, 1000000);
    EXPECT_EQ(NumberAttributeOf(NumberFieldKind::InflowPressure).Decimals, 0);
    EXPECT_EQ(TextAttributeOf(TextFieldKind::AreaGroup).MaxLength, 6);
    EXPECT_EQ(TextAttributeOf(TextFieldKind::DeviceName).MaxLength, 30);
    EXPECT_EQ(TextAttributeOf(TextFieldKind::GeneralText).MaxLength, 50);
    EXPECT_EQ(TextAttributeOf(TextFieldKind::Comment).MaxLength, 200);
}

TEST(FieldAttributes, StatusLineTexts) {
    EXPECT_EQ(ShowRange(NumberAttributeOf(NumberFieldKind::PressureLimit)),
              "Range: 0.00 to 999.99");
    EXPECT_EQ(ShowRange(NumberAttributeOf(NumberFieldKind::MaximumIterations)),
              "Range: 1 to 1,000,000");
    EXPECT_EQ(ShowRange(NumberAttributeOf(NumberFieldKind::Elevation)),
              "Range: -3,276.5 to 3,276.5");
    EXPECT_EQ(ShowRange(NumberAttributeOf(NumberFieldKind::ImbalanceLimit)),
              "Range: 0.0000001 to 1.0000000");
    NumberAttribute flagged = NumberAttributeOf(NumberFieldKind::Elevation);
    flagged.Flags = UnsignedRangeFlag | PercentFlag;
    EXPECT_EQ(ShowRange(flagged), "Range: %3,276.5 to %3,276.5");
    EXPECT_EQ(ShowTextLength(TextAttributeOf(TextFieldKind::GeneralText)), "Up to 50 characters");
    EXPECT_EQ(ShowUnits("psi"), "Units: psi");

    EXPECT_EQ(UnitWordOnScreen(UnitKind::Fine_Length, MeasureSystem::US), "Inch");
    EXPECT_EQ(UnitWordOnScreen(UnitKind::Length, MeasureSystem::US), "Feet");
    EXPECT_EQ(UnitWordOnScreen(UnitKind::Area, MeasureSystem::US), "Feet²");
    EXPECT_EQ(UnitWordOnScreen(UnitKind::Area, MeasureSystem::SI), "m²");
    EXPECT_EQ(UnitWordOnScreen(UnitKind::Pressure_Drop, MeasureSystem::US), "psi");
    EXPECT_EQ(UnitWordOnScreen(UnitKind::Pressure_Drop, MeasureSystem::SI), "kPa");
    EXPECT_EQ(UnitWordOnScreen(std::nullopt, MeasureSystem::SI), "None");
}

TEST(FieldAttributes, LimitsInTheUnitOnScreen) {
    const NumberAttribute pressure = NumberAttributeOf(NumberFieldKind::PressureLimit);
    EXPECT_EQ(ShowRange(ConvertAttribute(pressure, UnitKind::Pressure_Drop, MeasureSystem::US)),
              "Range: 0.00 to 999.99");
    // 999.99 psi is 6894.688 kPa: the range keeps two decimals and stays inside the limit.
    const NumberAttribute kilopascal =
        ConvertAttribute(pressure, UnitKind::Pressure_Drop, MeasureSystem::SI);
    EXPECT_EQ(kilopascal.Decimals, 2);
    EXPECT_EQ(ShowRange(kilopascal), "Range: 0.00 to 6,894.68");
    // 99.99 inch is 2539.746 mm.
    EXPECT_EQ(ShowRange(ConvertAttribute(NumberAttributeOf(NumberFieldKind::SmallMeasure),
                                         UnitKind::Fine_Length, MeasureSystem::SI)),
              "Range: 0.00 to 2,539.74");
    // 0.0000001 psi is 0.000000689 kPa: the least value of seven decimals inside is 0.0000007.
    // The upper limit, 6.8947572 kPa, is held as a Single, which shows it as 6.8947573.
    const NumberAttribute imbalance =
        ConvertAttribute(NumberAttributeOf(NumberFieldKind::ImbalanceLimit),
                         UnitKind::Pressure_Drop, MeasureSystem::SI);
    EXPECT_EQ(ShowRange(imbalance), "Range: 0.0000007 to 6.8947573");
    // A factor without a unit stays as it is.
    const NumberAttribute damping = NumberAttributeOf(NumberFieldKind::DampingFactor);
    EXPECT_EQ(ShowRange(ConvertAttribute(damping, std::nullopt, MeasureSystem::SI)),
              "Range: 1 to 100");
}

} // namespace
} // namespace quench
