#pragma once

// The number and date formats that every screen, message and report uses. They follow the
// picture strings of the program's long-standing output ("##0.00", "0.0#", "###,##0.00",
// "Scientific", ...), so that a figure prints the same wherever it appears.

#include "core/types.h"

#include <string>
#include <string_view>

namespace quench {

// A number through a picture string:
//   0  a digit, or 0 where there is none        #  a digit, or nothing
//   .  the decimal point                         ,  thousands grouping (between integer places)
//   %  the value times 100, and the sign         E+ E- scientific notation ("0.00E+00")
// Anything else is printed as it stands ("$##0.00"). The value is rounded half away from zero on
// its first 15 significant digits. All integer digits are printed, whatever the number of places.
// A picture with optional decimals that all fall away keeps its point: 1234 in "#,##0.#" is
// "1,234.". The named formats "Fixed", "Standard", "Percent", "Scientific" and "General Number"
// are accepted too.
std::string Format(double value, std::string_view picture);

// The text of a number as the old Str function gives it: a leading blank for a value that is not
// negative, no zero before the point (" .5"), the shortest text of 15 significant digits for a
// Double and 7 for a Single, E notation for very large and very small values (" 1E+15").
std::string Str(double value);
std::string Str(float value);

// The same text without the leading blank and with the zero before the point ("0.5").
std::string NumberText(double value);
std::string NumberText(float value);

// A text read as a number. A text that is no number gives 0; the value is never below -1E38.
// Blanks around the number are allowed; digits, one point and an exponent make a number.
double ToNumber(std::string_view text);

// True when ToNumber would read a number from the text (not the 0 of "no number").
bool IsNumeric(std::string_view text);

// The value plus 0.5 / 10^decimals, times 10^decimals, the whole part, divided by 10^decimals.
double RoundTo(double value, int decimals);

// Banker's rounding to a whole number (half to even), as an assignment to a whole-number field
// does. The conversions saturate at the limits of their type.
double RoundHalfEven(double value);
Integer CInt(double value);
Long CLng(double value);

struct DateTime {
    int Year = 2000;
    int Month = 1; // 1 to 12
    int Day = 1;   // 1 to 31
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

// The local date and time now.
DateTime Now();

// A date through a picture: "mmmm dd, yyyy" gives "November 22, 2026"; the named formats
// "Long Date" ("Sunday, November 22, 2026"), "Short Date" ("11/22/2026"), "Medium Time"
// ("09:05 PM") and "Long Time" ("09:05:07 PM") are accepted.
std::string FormatDate(const DateTime& when, std::string_view picture);

} // namespace quench
