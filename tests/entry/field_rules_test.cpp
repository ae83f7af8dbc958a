#include "entry/field_rules.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

// The field with the cursor at the end.
FieldState At(std::string text) {
    const int end = static_cast<int>(text.size());
    return {std::move(text), end, 0};
}

FieldState Selected(std::string text, int start, int length) {
    return {std::move(text), start, length};
}

// The text the key leaves, or "refused".
std::string Typed(char key, const FieldState& field, NumberFieldKind kind,
                  NumberKeyOptions options = {}) {
    const KeyOutcome outcome = FilterNumberKey(key, field, NumberAttributeOf(kind), options);
    return outcome.Accepted ? outcome.Field.Text : "refused";
}

TEST(FieldRules, DigitsStopAtTheMaximumAndTheDecimals) {
    const NumberAttribute nodes = NumberAttributeOf(NumberFieldKind::NodeNumber);
    const KeyOutcome nines = FilterNumberKey('9', At("999"), nodes);
    ASSERT_TRUE(nines.Accepted);
    EXPECT_EQ(nines.Field.Text, "9999");
    EXPECT_EQ(nines.Field.SelectionStart, 4);
    EXPECT_FALSE(FilterNumberKey('9', nines.Field, nodes).Accepted);
    // An empty field takes a digit; a selected digit is replaced rather than added to.
    EXPECT_EQ(Typed('7', At(""), NumberFieldKind::NodeNumber), "7");
    EXPECT_EQ(Typed('1', Selected("9999", 3, 1), NumberFieldKind::NodeNumber), "9991");

    // Two decimals: a third is refused at the end, taken over a selected digit, and a digit in
    // the whole part is still taken.
    EXPECT_EQ(Typed('3', At("1.25"), NumberFieldKind::Length), "refused");
    EXPECT_EQ(Typed('3', Selected("1.25", 3, 1), NumberFieldKind::Length), "1.23");
    EXPECT_EQ(Typed('3', Selected("1.25", 0, 0), NumberFieldKind::Length), "31.25");
    // A value below the minimum is not refused while typing (C values begin at 0.01).
    EXPECT_EQ(Typed('0', At(""), NumberFieldKind::CValue), "0");
    EXPECT_EQ(Typed('0', At("0.0"), NumberFieldKind::CValue), "0.00");
    // A maximum of 1 refuses a 2 in an empty imbalance field and a 0 behind a 1.
    EXPECT_EQ(Typed('2', At(""), NumberFieldKind::ImbalanceLimit), "refused");
    EXPECT_EQ(Typed('0', At("1"), NumberFieldKind::ImbalanceLimit), "refused");
    EXPECT_EQ(Typed('5', At("0.000000"), NumberFieldKind::ImbalanceLimit), "0.0000005");
    EXPECT_EQ(Typed('5', At("0.0000005"), NumberFieldKind::ImbalanceLimit), "refused");
    // Letters, blanks and other signs never pass.
    for (const char key : std::string("aE+ e*/")) {
        EXPECT_EQ(Typed(key, At("12"), NumberFieldKind::Length), "refused") << key;
    }
}

TEST(FieldRules, SeparatorsAndMinus) {
    // Whole-number fields take no separator.
    EXPECT_EQ(Typed('.', At("12"), NumberFieldKind::NodeNumber), "refused");
    EXPECT_EQ(Typed('.', At("12"), NumberFieldKind::Length), "12.");
    // Only the locale's separator is one: with a comma locale the point is refused.
    const NumberKeyOptions comma{',', true};
    EXPECT_EQ(Typed('.', At("12"), NumberFieldKind::Length, comma), "refused");
    EXPECT_EQ(Typed(',', At("12"), NumberFieldKind::Length, comma), "12,");
    EXPECT_EQ(Typed(',', At("12"), NumberFieldKind::Length), "refused");
    // A second separator moves the first to the cursor on a data screen, and is refused where
    // separators do not move; a move that leaves too many decimals is refused.
    EXPECT_EQ(Typed('.', Selected("12.5", 1, 0), NumberFieldKind::Length), "1.25");
    EXPECT_EQ(Typed('.', Selected("12.5", 1, 0), NumberFieldKind::Length, {'.', false}), "refused");
    EXPECT_EQ(Typed('.', Selected("1234.5", 1, 0), NumberFieldKind::Length), "refused");
    // A selected separator is replaced by the new one.
    EXPECT_EQ(Typed('.', Selected("12.5", 2, 1), NumberFieldKind::Length), "12.5");

    // A minus is refused where the minimum is 0, and taken once, at the start, in an elevation.
    EXPECT_EQ(Typed('-', Selected("5", 0, 0), NumberFieldKind::Length), "refused");
    EXPECT_EQ(Typed('-', Selected("5", 0, 0), NumberFieldKind::Elevation), "-5");
    EXPECT_EQ(Typed('-', Selected("-5", 0, 0), NumberFieldKind::Elevation), "refused");
    EXPECT_EQ(Typed('-', At("5"), NumberFieldKind::Elevation), "refused");
    EXPECT_EQ(Typed('-', Selected("-5", 0, 2), NumberFieldKind::Elevation), "-");
    // Nothing goes in front of the minus.
    EXPECT_EQ(Typed('3', Selected("-5", 0, 0), NumberFieldKind::Elevation), "refused");
}

TEST(FieldRules, BackspaceIsAlwaysTaken) {
    const KeyOutcome outcome = FilterNumberKey(BackspaceKey, Selected("123", 2, 0),
                                               NumberAttributeOf(NumberFieldKind::NodeNumber));
    ASSERT_TRUE(outcome.Accepted);
    EXPECT_EQ(outcome.Field.Text, "13");
    EXPECT_EQ(outcome.Field.SelectionStart, 1);
    EXPECT_EQ(Typed(BackspaceKey, Selected("123", 0, 0), NumberFieldKind::NodeNumber), "123");
    EXPECT_EQ(Typed(BackspaceKey, Selected("123", 0, 3), NumberFieldKind::NodeNumber), "");

    const TextAttribute areaGroup = TextAttributeOf(TextFieldKind::AreaGroup);
    EXPECT_TRUE(FilterTextKey(BackspaceKey, At("ABCDEF"), areaGroup).Accepted);
    EXPECT_TRUE(FilterTextKey('G', At("ABCDE"), areaGroup).Accepted);
    EXPECT_FALSE(FilterTextKey('G', At("ABCDEF"), areaGroup).Accepted);
    const KeyOutcome replaced = FilterTextKey('G', Selected("ABCDEF", 1, 1), areaGroup);
    ASSERT_TRUE(replaced.Accepted);
    EXPECT_EQ(replaced.Field.Text, "AGCDEF");
}

TEST(FieldRules, TestOnChangeEmptiesWhatTheFieldCannotHold) {
    const NumberAttribute length = NumberAttributeOf(NumberFieldKind::Length);
    const NumberAttribute nodes = NumberAttributeOf(NumberFieldKind::NodeNumber);
    const NumberAttribute elevation = NumberAttributeOf(NumberFieldKind::Elevation);
    EXPECT_EQ(TestOnChange("12.25", length), "12.25");
    EXPECT_EQ(TestOnChange("", length), "");
    EXPECT_EQ(TestOnChange(".", length), ".");
    EXPECT_EQ(TestOnChange("12.250", length), ""); // three decimals
    EXPECT_EQ(TestOnChange("1.2.3", length), "");  // two separators
    EXPECT_EQ(TestOnChange("12a", length), "");    // not a number
    EXPECT_EQ(TestOnChange("10000", length), "");  // above the maximum
    EXPECT_EQ(TestOnChange("-5", length), "");     // a sign where none is allowed
    EXPECT_EQ(TestOnChange("12.", nodes), "");     // a separator in a whole number
    EXPECT_EQ(TestOnChange("-3276.5", elevation), "-3276.5");
    EXPECT_EQ(TestOnChange("-", elevation), "-");
    EXPECT_EQ(TestOnChange("1,5", length, ','), "1,5");
    EXPECT_EQ(TestOnChange("1.5", length, ','), "");
    // A value below the minimum passes: the user may still be typing.
    EXPECT_EQ(TestOnChange("0", NumberAttributeOf(NumberFieldKind::DampingFactor)), "0");

    const TextAttribute comment = TextAttributeOf(TextFieldKind::GeneralText);
    EXPECT_EQ(TestTextOnChange(std::string(60, 'x'), comment), std::string(50, 'x'));
    EXPECT_EQ(TestTextOnChange("short", comment), "short");
}

TEST(FieldRules, LeavingAField) {
    const NumberAttribute damping = NumberAttributeOf(NumberFieldKind::DampingFactor);
    LeaveOutcome outcome = LeaveNumberField("0", damping);
    EXPECT_TRUE(outcome.TooLow);
    EXPECT_EQ(outcome.Text, "1");
    // An empty text counts as 0, which is below the damping minimum as well.
    EXPECT_TRUE(LeaveNumberField("", damping).TooLow);
    EXPECT_FALSE(LeaveNumberField("25", damping).TooLow);
    EXPECT_EQ(LeaveNumberField("25", damping).Text, "25");

    const NumberAttribute imbalance = NumberAttributeOf(NumberFieldKind::ImbalanceLimit);
    outcome = LeaveNumberField("0.00000", imbalance);
    EXPECT_TRUE(outcome.TooLow);
    EXPECT_EQ(outcome.Text, "0.0000001");

    // A minimum that the field's decimals would round down is lifted by one step.
    const NumberAttribute odd{0, 1.004f, 10, 2};
    outcome = LeaveNumberField("1", odd);
    EXPECT_TRUE(outcome.TooLow);
    EXPECT_EQ(outcome.Text, "1.01");

    // Empty or separator-only texts show 0 in the field's format.
    const NumberAttribute pressure = NumberAttributeOf(NumberFieldKind::PressureLimit);
    EXPECT_EQ(LeaveNumberField("", pressure).Text, "0.00");
    EXPECT_FALSE(LeaveNumberField("", pressure).TooLow);
    EXPECT_EQ(LeaveNumberField("", pressure, '.', "##0.0").Text, "0.0");
    EXPECT_EQ(LeaveNumberField(".", pressure).Text, "0.0");
    EXPECT_EQ(LeaveNumberField(",", pressure, ',').Text, "0,0");
    EXPECT_EQ(LeaveNumberField("", pressure, ',').Text, "0,00");
    EXPECT_EQ(LeaveNumberField("-", NumberAttributeOf(NumberFieldKind::Elevation)).Text, "0.0");
    EXPECT_EQ(LeaveNumberField("12.5", pressure).Text, "12.5");
}

TEST(FieldRules, FieldValuesAndTexts) {
    EXPECT_DOUBLE_EQ(FieldValue("12.5"), 12.5);
    EXPECT_DOUBLE_EQ(FieldValue("12,5", ','), 12.5);
    EXPECT_DOUBLE_EQ(FieldValue("12.5", ','), 0);
    EXPECT_DOUBLE_EQ(FieldValue(""), 0);
    EXPECT_DOUBLE_EQ(FieldValue("-"), 0);
    const NumberAttribute pressure = NumberAttributeOf(NumberFieldKind::PressureLimit);
    EXPECT_EQ(FieldText(7, pressure), "7.00");
    EXPECT_EQ(FieldText(48.263, pressure, ','), "48,26");
    EXPECT_EQ(FieldText(0.15, pressure, '.', "0.000"), "0.150");
}

} // namespace
} // namespace quench
