#include "core/formats.h"

#include <clocale>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(Format, FixedDecimalsRoundHalfAwayFromZero) {
    EXPECT_EQ(Format(0, "##0.00"), "0.00");
    EXPECT_EQ(Format(3.14159, "##0.00"), "3.14");
    EXPECT_EQ(Format(0.125, "#0.00"), "0.13");
    EXPECT_EQ(Format(-0.125, "#0.00"), "-0.13");
    EXPECT_EQ(Format(2.5, "0"), "3");
    EXPECT_EQ(Format(3.5, "0"), "4");
    EXPECT_EQ(Format(-2.5, "0"), "-3");
    // The decimal text of the value decides, not its binary expansion: 2.675 is 2.67499999...
    EXPECT_EQ(Format(2.675, "0.00"), "2.68");
    EXPECT_EQ(Format(1.005, "0.00"), "1.01");
    EXPECT_EQ(Format(999.995, "##0.00"), "1000.00");
    EXPECT_EQ(Format(12345.678, "#0.000"), "12345.678");
    EXPECT_EQ(Format(7.0, "###0.000"), "7.000");
    EXPECT_EQ(Format(0.0000149, "###0.00000"), "0.00001");
}

TEST(Format, OptionalPlacesAndLeadingZeros) {
    EXPECT_EQ(Format(0.5, "#.00"), ".50");
    EXPECT_EQ(Format(0.5, "#0.00"), "0.50");
    EXPECT_EQ(Format(2, "0.0#"), "2.0");
    EXPECT_EQ(Format(1.25, "0.0#"), "1.25");
    EXPECT_EQ(Format(1.255, "0.0#"), "1.26");
    EXPECT_EQ(Format(1.5, "##0.0##"), "1.5");
    EXPECT_EQ(Format(1.0625, "##0.0##"), "1.063");
    EXPECT_EQ(Format(2.067, "##0.0##"), "2.067");
    EXPECT_EQ(Format(0.0001234, "0.0#########"), "0.0001234");
    EXPECT_EQ(Format(0.05, "0.0#######"), "0.05");
    EXPECT_EQ(Format(12.3456789, "##0.######"), "12.345679");
    // Optional decimals that all fall away leave the point standing.
    EXPECT_EQ(Format(1234, "###,##0.#"), "1,234.");
    EXPECT_EQ(Format(1234.56, "###,##0.#"), "1,234.6");
}

TEST(Format, GroupingPercentCurrencyAndSingles) {
    EXPECT_EQ(Format(1234567.891, "###,##0.00"), "1,234,567.89");
    EXPECT_EQ(Format(999.999, "###,##0.00"), "1,000.00");
    EXPECT_EQ(Format(9999, "#,###,###,###,##0"), "9,999");
    EXPECT_EQ(Format(0, "#,###,###,###,##0"), "0");
    EXPECT_EQ(Format(-3276.5, "#,###,###,###,##0.0"), "-3,276.5");
    EXPECT_EQ(Format(0.4567, "#0.00%"), "45.67%");
    EXPECT_EQ(Format(12.5, "$##0.00"), "$12.50");
    // A Single is widened exactly; its few digits still print cleanly.
    EXPECT_EQ(Format(static_cast<double>(1.1f), "##0.0##"), "1.1");
    EXPECT_EQ(Format(static_cast<double>(0.1f), "0.0#########"), "0.1000000015");
    EXPECT_EQ(Format(-0.001, "0.00"), "-0.00");
}

TEST(Format, NamedFormatsAndScientific) {
    EXPECT_EQ(Format(12345, "Scientific"), "1.23E+04");
    EXPECT_EQ(Format(0.00012345, "Scientific"), "1.23E-04");
    EXPECT_EQ(Format(9.999, "Scientific"), "1.00E+01");
    EXPECT_EQ(Format(0, "Scientific"), "0.00E+00");
    EXPECT_EQ(Format(-5e-7, "Scientific"), "-5.00E-07");
    EXPECT_EQ(Format(3.14159, "Fixed"), "3.14");
    EXPECT_EQ(Format(1234.5, "Standard"), "1,234.50");
    EXPECT_EQ(Format(0.5, "Percent"), "50.00%");
    EXPECT_EQ(Format(1.5e300, "0.00E+00"), "1.50E+300");
}

// A carry that runs through every place adds a digit: a new group, a new whole place, a new
// percent place, or one more in the exponent.
TEST(Format, RoundingCarriesIntoANewDigit) {
    EXPECT_EQ(Format(999999.995, "###,##0.00"), "1,000,000.00");
    EXPECT_EQ(Format(99999.95, "#,##0.0"), "100,000.0");
    EXPECT_EQ(Format(999.9996, "#,##0.000"), "1,000.000");
    EXPECT_EQ(Format(9.9995, "#0.000"), "10.000");
    EXPECT_EQ(Format(0.999995, "0.00%"), "100.00%");
    EXPECT_EQ(Format(9.9995e-5, "0.00E+00"), "1.00E-04");
    EXPECT_EQ(Format(-99999.5, "0.0E+0"), "-1.0E+5");
    EXPECT_EQ(Format(9.96, "0.0E-00"), "1.0E01");
}

TEST(Format, NegativeZerosAndLargeGroupedValues) {
    // A negative value keeps its sign when it rounds to zero.
    EXPECT_EQ(Format(-0.0004, "#0.000"), "-0.000");
    EXPECT_EQ(Format(-0.00001, "##0.0##"), "-0.0");
    EXPECT_EQ(Format(-0.4, "0"), "-0");
    EXPECT_EQ(Format(1234567890123.45, "#,##0.00"), "1,234,567,890,123.45");
    EXPECT_EQ(Format(-98765432109876.5, "###,##0.0"), "-98,765,432,109,876.5");
    EXPECT_EQ(Format(1e20, "#,##0"), "100,000,000,000,000,000,000");
}

// The 15-digit text rounds a value that lies exactly half-way to the even digit; only then do the
// picture's places round half up.
TEST(Format, FifteenDigitTextRoundsExactHalvesToEven) {
    EXPECT_EQ(Format(1000000000000.125, "0.000"), "1000000000000.120");
    EXPECT_EQ(Format(1000000000000.375, "0.000"), "1000000000000.380");
    EXPECT_EQ(Format(562949953421311.5, "0.0"), "562949953421312.0");
    EXPECT_EQ(Format(562949953421312.5, "0.0"), "562949953421312.0");
    EXPECT_EQ(Format(1000000000000005.0, "0"), "1000000000000000");
    EXPECT_EQ(Str(1000000000000.125), " 1000000000000.12");
    EXPECT_EQ(Str(1234567.5f), " 1234568");
    EXPECT_EQ(Str(1234568.5f), " 1234568");
}

// A percent of a value near the largest Double is beyond it, as an infinite value is.
TEST(Format, PercentBeyondTheLargestDouble) {
    EXPECT_EQ(Format(1e307, "0.00%"), "Infinity");
    EXPECT_EQ(Format(-1e307, "Percent"), "-Infinity");
}

TEST(Str, LeadingBlankNoLeadingZeroShortestText) {
    EXPECT_EQ(Str(1.5), " 1.5");
    EXPECT_EQ(Str(0.5), " .5");
    EXPECT_EQ(Str(-0.5), "-.5");
    EXPECT_EQ(Str(0.0), " 0");
    EXPECT_EQ(Str(100.0), " 100");
    EXPECT_EQ(Str(0.1 + 0.2), " .3");
    EXPECT_EQ(Str(123456789012345.0), " 123456789012345");
    EXPECT_EQ(Str(1e15), " 1E+15");
    EXPECT_EQ(Str(1.5e-7), " 1.5E-07");
    EXPECT_EQ(Str(0.00001), " .00001");
    // A Single prints its 7 significant digits, not the widened binary value.
    EXPECT_EQ(Str(1.1f), " 1.1");
    EXPECT_EQ(Str(99999.99f), " 99999.99");
    EXPECT_EQ(NumberText(0.5), "0.5");
    EXPECT_EQ(NumberText(-12.25), "-12.25");
    EXPECT_EQ(NumberText(2.067f), "2.067");
    // Whole numbers, node numbers above all, are their digits on either side of nine digits.
    EXPECT_EQ(NumberText(12.0), "12");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(-7.0), "-7");
    EXPECT_EQ(NumberText(999999999.0), "999999999");
    EXPECT_EQ(NumberText(1000000000.0), "1000000000");
    EXPECT_EQ(NumberText(1e15), "1E+15");
}

TEST(ToNumber, NumbersAndNonNumbers) {
    EXPECT_DOUBLE_EQ(ToNumber("12"), 12);
    EXPECT_DOUBLE_EQ(ToNumber("  -3.5 "), -3.5);
    EXPECT_DOUBLE_EQ(ToNumber(".5"), 0.5);
    EXPECT_DOUBLE_EQ(ToNumber("5."), 5);
    EXPECT_DOUBLE_EQ(ToNumber("1E3"), 1000);
    EXPECT_DOUBLE_EQ(ToNumber("007"), 7);
    EXPECT_DOUBLE_EQ(ToNumber(" 123456789 "), 123456789);
    EXPECT_DOUBLE_EQ(ToNumber("1234567890"), 1234567890);
    EXPECT_DOUBLE_EQ(ToNumber("12 3"), 0);
    EXPECT_DOUBLE_EQ(ToNumber(""), 0);
    EXPECT_DOUBLE_EQ(ToNumber("Dflt"), 0);
    EXPECT_DOUBLE_EQ(ToNumber("12abc"), 0);
    EXPECT_DOUBLE_EQ(ToNumber("-"), 0);
    EXPECT_DOUBLE_EQ(ToNumber("."), 0);
    EXPECT_DOUBLE_EQ(ToNumber("1.2.3"), 0);
    EXPECT_DOUBLE_EQ(ToNumber("1e"), 0);
    EXPECT_DOUBLE_EQ(ToNumber("1e999"), 0);
    EXPECT_DOUBLE_EQ(ToNumber("-1e39"), -1e38);
    EXPECT_TRUE(IsNumeric(" 4.2"));
    EXPECT_FALSE(IsNumeric("None"));
}

// Beyond a Double: too large is no number; too small is a number, and 0.
TEST(ToNumber, OutOfRangeAndSigns) {
    EXPECT_DOUBLE_EQ(ToNumber("+2.5"), 2.5);
    EXPECT_FALSE(IsNumeric("+-2"));
    EXPECT_TRUE(IsNumeric("1e-400"));
    EXPECT_DOUBLE_EQ(ToNumber("1e-400"), 0);
    EXPECT_DOUBLE_EQ(ToNumber("-0.0001e-330"), 0);
    EXPECT_FALSE(IsNumeric("0.5e309"));
    EXPECT_TRUE(IsNumeric("0.05e309")); // 5E+307
    EXPECT_DOUBLE_EQ(ToNumber("0.05e309"), 5e307);
    EXPECT_FALSE(IsNumeric("1000e99999999999999999999"));
    EXPECT_TRUE(IsNumeric("1e-99999999999999999999"));
    EXPECT_GT(ToNumber("5e-320"), 0); // a denormal is still itself
}

// The program's number texts use the point whatever the locale the process runs under (the
// suites run once more under a decimal comma).
TEST(Formats, NumbersIgnoreTheProcessLocale) {
    const char* wanted = std::getenv("LC_ALL");
    if (wanted != nullptr && std::string(wanted).rfind("de_DE", 0) == 0) {
        ASSERT_STREQ(std::localeconv()->decimal_point, ","); // the run really is under a comma
    }
    EXPECT_EQ(Format(5.5, "##0.00"), "5.50");
    EXPECT_EQ(Format(1234.5, "#,##0.0"), "1,234.5");
    EXPECT_EQ(Format(0.00012345, "Scientific"), "1.23E-04");
    EXPECT_EQ(Str(0.5), " .5");
    EXPECT_EQ(NumberText(1.5f), "1.5");
    EXPECT_DOUBLE_EQ(ToNumber("1.5"), 1.5);
    EXPECT_DOUBLE_EQ(ToNumber("1,5"), 0); // a comma is never the program's point
    EXPECT_DOUBLE_EQ(ToNumber(Format(12.3456, "#0.000")), 12.346);
}

TEST(RoundTo, AddsHalfThenTakesTheWholePart) {
    EXPECT_DOUBLE_EQ(RoundTo(1.234, 2), 1.23);
    EXPECT_DOUBLE_EQ(RoundTo(1.235, 2), 1.24);
    EXPECT_DOUBLE_EQ(RoundTo(2.5, 0), 3);
    EXPECT_DOUBLE_EQ(RoundTo(-2.5, 0), -2); // the whole part of -2.0
    EXPECT_DOUBLE_EQ(RoundTo(-2.6, 0), -3);
    EXPECT_DOUBLE_EQ(RoundTo(12.3456, 3), 12.346);
}

TEST(BankersRounding, HalfToEven) {
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(3.5), 4);
    EXPECT_EQ(CInt(-2.5), -2);
    EXPECT_EQ(CInt(2.4999), 2);
    EXPECT_EQ(CInt(40000.0), 32767);
    EXPECT_EQ(CInt(-40000.0), -32768);
    EXPECT_EQ(CLng(60130.0), 60130);
    EXPECT_EQ(CLng(601.30 * 100), 60130);
    EXPECT_EQ(CLng(0.5), 0);
    EXPECT_EQ(CLng(1.5), 2);
}

TEST(FormatDate, PicturesAndNamedFormats) {
    const DateTime when{2026, 11, 22, 21, 5, 7};
    EXPECT_EQ(FormatDate(when, "mmmm dd, yyyy"), "November 22, 2026");
    EXPECT_EQ(FormatDate(DateTime{2026, 1, 3, 0, 0, 0}, "mmmm dd, yyyy"), "January 03, 2026");
    EXPECT_EQ(FormatDate(when, "Long Date"), "Sunday, November 22, 2026");
    EXPECT_EQ(FormatDate(when, "Short Date"), "11/22/2026");
    EXPECT_EQ(FormatDate(when, "Medium Time"), "09:05 PM");
    EXPECT_EQ(FormatDate(DateTime{2026, 11, 22, 0, 30, 0}, "Medium Time"), "12:30 AM");
    EXPECT_EQ(FormatDate(when, "Long Time"), "09:05:07 PM");
    EXPECT_EQ(FormatDate(DateTime{2024, 2, 29, 12, 0, 0}, "Long Date"),
              "Thursday, February 29, 2024");
}

} // namespace
} // namespace quench
