#include "core/formats.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <limits>
#include <system_error>

namespace quench {

namespace {

constexpr int DoubleDigits = 15;
constexpr int SingleDigits = 7;

// Decimal digits with an optional sign, such as an exponent's "+02".
int WholeNumber(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// A magnitude as significant digits: value = 0.Digits × 10^PointPosition. Numbers are formatted
// thousands of times a run, so the digits stay in a fixed buffer instead of a string of their own.
struct DecimalDigits {
    std::array<char, 32> Buffer; // room for the scientific text of a double
    int First = 1;               // the digits are Buffer[First, First + Count)
    int Count = 0;               // no leading zero unless the value is 0
    int PointPosition = 0;

    // The digit at a place counted from the first digit; zeros stand on either side.
    char DigitAt(int index) const {
        return index >= 0 && index < Count ? Buffer[static_cast<std::size_t>(First + index)] : '0';
    }
    // A digit to change in place, such as by a carry.
    char& Digit(int index) { return Buffer[static_cast<std::size_t>(First + index)]; }
};

__extension__ using UInt128 = unsigned __int128;

constexpr std::array<UInt128, 23> PowersOfTen = [] {
    std::array<UInt128, 23> powers{};
    UInt128 power = 1;
    for (auto& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

// A magnitude times a power of ten, split exactly into its whole part and the rest.
struct ScaledMagnitude {
    std::uint64_t Whole = 0;
    UInt128 Rest = 0; // in units of 2^-shift
};

ScaledMagnitude Scale(std::uint64_t mantissa, int shift, int power) {
    const UInt128 product = UInt128{mantissa} * PowersOfTen[static_cast<std::size_t>(power)];
    return {static_cast<std::uint64_t>(product >> shift), product & ((UInt128{1} << shift) - 1)};
}

// The significant digits of a magnitude between 2^-24 and 2^49 (the numbers a calculation
// prints), rounded half to even on the exact binary value as to_chars rounds them, but a few
// times faster. The magnitude is mantissa / 2^shift, so mantissa × 10^power / 2^shift splits
// exactly into whole digits and a rest in 128 bits. False for other magnitudes.
bool ExactDigits(double magnitude, int significant, DecimalDigits& number) {
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const int binaryExponent = static_cast<int>(bits >> 52) - 1023;
    if (binaryExponent < -24 || binaryExponent > 48) {
        return false;
    }
    const std::uint64_t mantissa =
        (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
    const int shift = 52 - binaryExponent;
    // The power of ten of the first digit: floor(log10(2^(binaryExponent + 1))) or one less.
    // 1233 / 4096 stands for log10(2) closely enough at these exponents.
    int place = ((binaryExponent + 1) * 1233) >> 12;
    if (place >= significant) { // a Single of 10^7 and more: the power would be negative
        return false;
    }
    const auto lowest =
        static_cast<std::uint64_t>(PowersOfTen[static_cast<std::size_t>(significant - 1)]);
    ScaledMagnitude scaled = Scale(mantissa, shift, significant - 1 - place);
    if (scaled.Whole < lowest) {
        --place;
        scaled = Scale(mantissa, shift, significant - 1 - place);
    }
    const UInt128 half = UInt128{1} << (shift - 1);
    if (scaled.Rest > half || (scaled.Rest == half && scaled.Whole % 2 == 1)) {
        ++scaled.Whole;
    }
    if (scaled.Whole == lowest * 10) { // 9.99...5 rounded up to 10.0
        scaled.Whole = lowest;
        ++place;
    }
    std::to_chars(number.Buffer.data() + 1, number.Buffer.data() + number.Buffer.size(),
                  scaled.Whole);
    number.First = 1;
    number.Count = significant;
    number.PointPosition = place + 1;
    return true;
}

// The significant digits of any finite magnitude through to_chars, which rounds half to even on
// the exact binary value. Unlike printf it ignores the process locale: the point is always '.'.
void ScientificDigits(double magnitude, int significant, DecimalDigits& number) {
    // The text "d.ddde+XX" starts at the second place; the first digit then moves onto the point,
    // so the digits stand together with a free place before them for a carry.
    char* const text = number.Buffer.data() + 1;
    const auto written = std::to_chars(text, number.Buffer.data() + number.Buffer.size(), magnitude,
                                       std::chars_format::scientific, significant - 1);
    const char* const exponentAt = std::find(text, written.ptr, 'e');
    if (text[1] == '.') {
        text[1] = text[0];
        number.First = 2;
    }
    number.Count = significant;
    number.PointPosition = WholeNumber(std::string_view(exponentAt + 1, written.ptr)) + 1;
}

DecimalDigits ToDecimalDigits(double magnitude, int significant) {
    DecimalDigits number;
    if (magnitude == 0) {
        number.Buffer[1] = '0';
        number.Count = 1;
        number.PointPosition = 1;
    } else if (!ExactDigits(magnitude, significant, number)) {
        ScientificDigits(magnitude, significant, number);
    }
    return number;
}

void StripTrailingZeros(DecimalDigits& number) {
    while (number.Count > 1 && number.DigitAt(number.Count - 1) == '0') {
        --number.Count;
    }
}

// Adds one in the last digit kept; 9.99 becomes 10.00 with the 1 in the free place before.
void CarryOne(DecimalDigits& number) {
    int position = number.Count - 1;
    while (position >= 0 && number.Digit(position) == '9') {
        number.Digit(position) = '0';
        --position;
    }
    if (position >= 0) {
        ++number.Digit(position);
        return;
    }
    --number.First;
    number.Digit(0) = '1';
    ++number.Count;
    ++number.PointPosition;
}

// Rounds the digits half up to a number of decimals. Places beyond the digits read as zeros.
void RoundFixed(DecimalDigits& number, int decimals) {
    const int keep = number.PointPosition + decimals;
    if (keep < 0) {
        number.Count = 0;
        return;
    }
    if (keep >= number.Count) {
        return;
    }
    const bool up = number.DigitAt(keep) >= '5';
    number.Count = keep;
    if (up) {
        CarryOne(number);
    }
}

bool IsPlaceholder(char c) {
    return c == '0' || c == '#';
}

// A picture split into its parts. The parts are views into the picture text, which outlives the
// formatting of a number.
struct Picture {
    std::string_view Prefix; // printed without its commas
    std::string_view Suffix;
    int WholeZeros = 0;
    bool Grouping = false;
    bool HasPoint = false;
    std::string_view FractionPlaces; // the '0' and '#' after the point
    bool Percent = false;
    bool Scientific = false;
    bool ExponentSignAlways = false;
    int ExponentDigits = 0;
};

Picture ParsePicture(std::string_view text) {
    Picture picture;
    std::size_t i = 0;
    while (i < text.size() && !IsPlaceholder(text[i]) && text[i] != '.') {
        ++i;
    }
    picture.Prefix = text.substr(0, i);
    for (; i < text.size() && (IsPlaceholder(text[i]) || text[i] == ','); ++i) {
        if (text[i] == ',') {
            picture.Grouping = true;
        } else if (text[i] == '0') {
            ++picture.WholeZeros; // an optional place '#' adds nothing
        }
    }
    if (i < text.size() && text[i] == '.') {
        picture.HasPoint = true;
        const std::size_t first = ++i;
        while (i < text.size() && IsPlaceholder(text[i])) {
            ++i;
        }
        picture.FractionPlaces = text.substr(first, i - first);
    }
    if (i + 1 < text.size() && (text[i] == 'E' || text[i] == 'e') &&
        (text[i + 1] == '+' || text[i + 1] == '-')) {
        picture.Scientific = true;
        picture.ExponentSignAlways = text[i + 1] == '+';
        for (i += 2; i < text.size() && IsPlaceholder(text[i]); ++i) {
            ++picture.ExponentDigits;
        }
    }
    picture.Suffix = text.substr(i);
    picture.Percent = picture.Prefix.find('%') != std::string_view::npos ||
                      picture.Suffix.find('%') != std::string_view::npos;
    return picture;
}

// A comma before the digit places is not printed.
void AppendWithoutCommas(std::string& text, std::string_view part) {
    for (const char c : part) {
        if (c != ',') {
            text.push_back(c);
        }
    }
}

// A whole number with zeros before it up to a width, such as an exponent's "04".
void AppendPadded(std::string& text, int value, int width) {
    std::array<char, 16> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    const auto length = static_cast<int>(written.ptr - digits.data());
    if (length < width) {
        text.append(static_cast<std::size_t>(width - length), '0');
    }
    text.append(digits.data(), written.ptr);
}

// The digits before the point without leading zeros, padded with zeros to the picture's '0'
// places and grouped by thousands when the picture asks for it.
void AppendWhole(std::string& text, const DecimalDigits& number, const Picture& picture) {
    int first = 0; // the 0 of a zero value falls away too
    while (first < number.PointPosition && number.DigitAt(first) == '0') {
        ++first;
    }
    const int length = std::max(number.PointPosition - first, picture.WholeZeros);
    const int start = number.PointPosition - length; // padding zeros stand before the digits
    for (int i = 0; i < length; ++i) {
        if (picture.Grouping && i > 0 && (length - i) % 3 == 0) {
            text.push_back(',');
        }
        text.push_back(number.DigitAt(start + i));
    }
}

// The digits after the point, one for each place; optional places ('#') that come out as zeros
// fall away from the right.
void AppendFraction(std::string& text, const DecimalDigits& number, std::string_view places) {
    auto length = static_cast<int>(places.size());
    while (length > 0 && places[static_cast<std::size_t>(length - 1)] == '#' &&
           number.DigitAt(number.PointPosition + length - 1) == '0') {
        --length;
    }
    for (int i = 0; i < length; ++i) {
        text.push_back(number.DigitAt(number.PointPosition + i));
    }
}

void AppendFixed(std::string& text, double magnitude, const Picture& picture) {
    DecimalDigits number = ToDecimalDigits(magnitude, DoubleDigits);
    RoundFixed(number, static_cast<int>(picture.FractionPlaces.size()));
    AppendWhole(text, number, picture);
    if (picture.HasPoint) {
        text.push_back('.');
        AppendFraction(text, number, picture.FractionPlaces);
    }
}

void AppendScientific(std::string& text, double magnitude, const Picture& picture) {
    DecimalDigits number = ToDecimalDigits(magnitude, DoubleDigits);
    int exponent = magnitude == 0 ? 0 : number.PointPosition - 1;
    number.PointPosition = 1;
    RoundFixed(number, static_cast<int>(picture.FractionPlaces.size()));
    if (number.PointPosition > 1) { // 9.99 rounded up to 10.0
        number.PointPosition = 1;
        ++exponent;
    }
    text.push_back(number.DigitAt(0));
    if (picture.HasPoint) {
        text.push_back('.');
        AppendFraction(text, number, picture.FractionPlaces);
    }
    text.push_back('E');
    if (exponent < 0) {
        text.push_back('-');
    } else if (picture.ExponentSignAlways) {
        text.push_back('+');
    }
    AppendPadded(text, std::abs(exponent), picture.ExponentDigits);
}

// The sign, the prefix, the number laid out by the picture and the suffix. It has a single return,
// so the string is built in place rather than copied out.
std::string ComposeNumber(bool negative, double magnitude, const Picture& picture) {
    std::string text;
    if (negative) {
        text.push_back('-');
    }
    AppendWithoutCommas(text, picture.Prefix);
    if (picture.Scientific) {
        AppendScientific(text, magnitude, picture);
    } else {
        AppendFixed(text, magnitude, picture);
    }
    text.append(picture.Suffix);
    return text;
}

std::string FormatWithPicture(double value, const Picture& picture) {
    if (std::isnan(value)) {
        return "NaN";
    }
    const double magnitude = std::fabs(value) * (picture.Percent ? 100.0 : 1.0);
    if (std::isinf(magnitude)) { // a percent of a value near the largest double too
        return value < 0 ? "-Infinity" : "Infinity";
    }
    return ComposeNumber(value < 0, magnitude, picture);
}

struct NamedFormat {
    std::string_view Name;
    std::string_view Picture; // none for the plain number text
};

constexpr std::array<NamedFormat, 5> NamedFormats = {{{"General Number", ""},
                                                      {"Fixed", "0.00"},
                                                      {"Standard", "#,##0.00"},
                                                      {"Percent", "0.00%"},
                                                      {"Scientific", "0.00E+00"}}};

// The picture a name stands for, or the text itself.
std::string_view NamedPicture(std::string_view name) {
    for (const NamedFormat& format : NamedFormats) {
        // The usual exact spelling spares the comparison that ignores case.
        if (name == format.Name || EqualsIgnoreCase(name, format.Name)) {
            return format.Picture;
        }
    }
    return name;
}

// How PlainNumberText writes a number: Str puts a blank where a number that is not negative has
// no sign and leaves out the zero before the point; NumberText does neither.
struct PlainStyle {
    int Significant = DoubleDigits;
    bool LeadingZero = true;
    bool SignBlank = false;
};

char* WriteText(char* out, std::string_view text) {
    return std::copy(text.begin(), text.end(), out);
}

// The digits at places [from, to), zeros where the number has none.
char* WriteDigits(char* out, const DecimalDigits& number, int from, int to) {
    for (int i = from; i < to; ++i) {
        *out++ = number.DigitAt(i);
    }
    return out;
}

// 1.5E-07: the digits with the point after the first, and an exponent of at least two digits.
char* WriteExponentForm(char* out, const DecimalDigits& number) {
    const int exponent = number.PointPosition - 1;
    *out++ = number.DigitAt(0);
    if (number.Count > 1) {
        *out++ = '.';
        out = WriteDigits(out, number, 1, number.Count);
    }
    *out++ = 'E';
    *out++ = exponent < 0 ? '-' : '+';
    if (std::abs(exponent) < 10) {
        *out++ = '0';
    }
    return std::to_chars(out, out + 3, std::abs(exponent)).ptr;
}

// 1234.5, 0.00012 or .00012: every digit, with zeros between them and the point as needed.
char* WritePointForm(char* out, const DecimalDigits& number, bool leadingZero) {
    out = WriteDigits(out, number, 0, number.PointPosition);
    if (number.PointPosition <= 0 && leadingZero) {
        *out++ = '0';
    }
    if (number.PointPosition < number.Count) {
        *out++ = '.';
        out = WriteDigits(out, number, number.PointPosition, number.Count);
    }
    return out;
}

char* WritePlainMagnitude(char* out, double magnitude, PlainStyle style) {
    if (std::isnan(magnitude)) {
        return WriteText(out, "NaN");
    }
    if (std::isinf(magnitude)) {
        return WriteText(out, "Infinity");
    }
    if (magnitude == 0) {
        return WriteText(out, "0");
    }
    DecimalDigits number = ToDecimalDigits(magnitude, style.Significant);
    StripTrailingZeros(number);
    const int exponent = number.PointPosition - 1;
    if (exponent >= style.Significant || exponent < -5) {
        return WriteExponentForm(out, number);
    }
    return WritePointForm(out, number, style.LeadingZero);
}

// The shortest text of a number in significant digits. It is at most a sign and 21 characters
// ("0.0000" and 15 digits, or 15 digits, a point and "E-308"), so it is written in place first.
std::string PlainNumberText(double value, PlainStyle style) {
    std::array<char, 32> buffer{};
    char* out = buffer.data();
    if (value < 0) {
        *out++ = '-';
    } else if (style.SignBlank) {
        *out++ = ' ';
    }
    out = WritePlainMagnitude(out, std::fabs(value), style);
    return std::string(buffer.data(), out);
}

} // namespace

std::string Format(double value, std::string_view picture) {
    // Nearly every picture starts with a digit place, and no name does.
    if (picture.empty() || !IsPlaceholder(picture.front())) {
        picture = NamedPicture(picture);
    }
    if (picture.empty()) {
        return NumberText(value);
    }
    return FormatWithPicture(value, ParsePicture(picture));
}

std::string Str(double value) {
    return PlainNumberText(value,
                           {.Significant = DoubleDigits, .LeadingZero = false, .SignBlank = true});
}

std::string Str(float value) {
    return PlainNumberText(static_cast<double>(value),
                           {.Significant = SingleDigits, .LeadingZero = false, .SignBlank = true});
}

std::string NumberText(double value) {
    // Node numbers: a whole number of up to nine digits is its digits.
    if (std::fabs(value) < 1e9 && value == std::trunc(value)) {
        return std::to_string(static_cast<long>(value));
    }
    return PlainNumberText(value, {.Significant = DoubleDigits});
}

std::string NumberText(float value) {
    return PlainNumberText(static_cast<double>(value), {.Significant = SingleDigits});
}

namespace {

// A number text out of the range of a Double is too small when its first significant digit stands
// after the point, its exponent counted.
bool IsUnderflow(std::string_view text) {
    long order = 0; // the power of ten of the first significant digit, plus one
    bool point = false;
    bool significant = false;
    std::size_t i = 0;
    for (; i < text.size() && text[i] != 'e' && text[i] != 'E'; ++i) {
        const char c = text[i];
        if (c == '.') {
            point = true;
        } else if (c >= '1' && c <= '9' && !significant) {
            significant = true;
            order += point ? 0 : 1;
        } else if (c >= '0' && c <= '9') {
            order += significant ? (point ? 0 : 1) : (point ? -1 : 0);
        }
    }
    if (i < text.size()) {
        std::string_view exponent = text.substr(i + 1);
        const bool negative = !exponent.empty() && exponent.front() == '-';
        if (!exponent.empty() && (exponent.front() == '-' || exponent.front() == '+')) {
            exponent.remove_prefix(1);
        }
        long magnitude = 0;
        const auto read =
            std::from_chars(exponent.data(), exponent.data() + exponent.size(), magnitude);
        if (read.ec == std::errc::result_out_of_range) {
            return negative; // an exponent beyond a long decides alone
        }
        order += negative ? -magnitude : magnitude;
    }
    return order <= 0;
}

// Digits, at most one point, at least one digit, then an optional exponent with digits.
// Node numbers are read many times a run: a plain whole number of up to nine digits is exact
// without the general reader.
bool ParsePlainWholeNumber(std::string_view text, double& value) {
    if (text.empty() || text.size() > 9) {
        return false;
    }
    long whole = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return false;
        }
        whole = whole * 10 + (c - '0');
    }
    value = static_cast<double>(whole);
    return true;
}

bool ParseNumber(std::string_view text, double& value) {
    const std::string_view trimmed = TrimmedView(text);
    if (ParsePlainWholeNumber(trimmed, value)) {
        return true;
    }
    std::size_t i = 0;
    if (i < trimmed.size() && (trimmed[i] == '+' || trimmed[i] == '-')) {
        ++i;
    }
    int digits = 0;
    bool point = false;
    for (; i < trimmed.size(); ++i) {
        const char c = trimmed[i];
        if (c >= '0' && c <= '9') {
            ++digits;
        } else if (c == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (digits == 0) {
        return false;
    }
    if (i < trimmed.size() && (trimmed[i] == 'e' || trimmed[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < trimmed.size() && (trimmed[j] == '+' || trimmed[j] == '-')) {
            ++j;
        }
        const std::size_t exponentStart = j;
        while (j < trimmed.size() && trimmed[j] >= '0' && trimmed[j] <= '9') {
            ++j;
        }
        if (j == exponentStart) {
            return false;
        }
        i = j;
    }
    if (i != trimmed.size()) {
        return false;
    }
    // from_chars reads '.' whatever the process locale, as the program's texts are written.
    const char* first = trimmed.data() + (trimmed[0] == '+' ? 1 : 0);
    const auto read = std::from_chars(first, trimmed.data() + trimmed.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
        if (!IsUnderflow(trimmed)) {
            return false; // too large for a Double: no number
        }
        value = 0; // too small for a Double: a number, and 0
    }
    return true;
}

} // namespace

double ToNumber(std::string_view text) {
    double value = 0;
    if (!ParseNumber(text, value)) {
        return 0;
    }
    return value < -1e38 ? -1e38 : value;
}

bool IsNumeric(std::string_view text) {
    double value = 0;
    return ParseNumber(text, value);
}

double RoundTo(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return std::floor((value + 0.5 / scale) * scale) / scale;
}

double RoundHalfEven(double value) {
    return std::nearbyint(value);
}

Integer CInt(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= std::numeric_limits<Integer>::min())) {
        return std::numeric_limits<Integer>::min();
    }
    if (rounded > std::numeric_limits<Integer>::max()) {
        return std::numeric_limits<Integer>::max();
    }
    return static_cast<Integer>(rounded);
}

Long CLng(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= std::numeric_limits<Long>::min())) {
        return std::numeric_limits<Long>::min();
    }
    if (rounded > std::numeric_limits<Long>::max()) {
        return std::numeric_limits<Long>::max();
    }
    return static_cast<Long>(rounded);
}

DateTime Now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return DateTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                    local.tm_hour,        local.tm_min,     local.tm_sec};
}

namespace {

constexpr std::array<const char*, 12> MonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 7> DayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                 "Thursday", "Friday", "Saturday"};

// Sakamoto's rule: 0 is Sunday.
int DayOfWeek(int year, int month, int day) {
    static constexpr std::array<int, 12> offsets = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    if (month < 3) {
        year -= 1;
    }
    return (year + year / 4 - year / 100 + year / 400 +
            offsets[static_cast<std::size_t>(month - 1)] + day) %
           7;
}

std::string TwoDigits(int value) {
    return (value < 10 ? "0" : "") + std::to_string(value);
}

std::string_view NamedDatePicture(std::string_view name) {
    if (EqualsIgnoreCase(name, "Long Date")) {
        return "dddd, mmmm d, yyyy";
    }
    if (EqualsIgnoreCase(name, "Short Date")) {
        return "m/d/yyyy";
    }
    if (EqualsIgnoreCase(name, "Medium Date")) {
        return "dd-mmm-yy";
    }
    if (EqualsIgnoreCase(name, "Medium Time")) {
        return "hh:nn AMPM";
    }
    if (EqualsIgnoreCase(name, "Long Time")) {
        return "hh:nn:ss AMPM";
    }
    if (EqualsIgnoreCase(name, "Short Time")) {
        return "hh:nn";
    }
    return name;
}

std::size_t CountRun(std::string_view text, std::size_t at) {
    std::size_t length = 1;
    while (at + length < text.size() && text[at + length] == text[at]) {
        ++length;
    }
    return length;
}

std::string MonthToken(const DateTime& when, std::size_t length) {
    const std::string name = MonthNames[static_cast<std::size_t>((when.Month + 11) % 12)];
    if (length >= 4) {
        return name;
    }
    if (length == 3) {
        return name.substr(0, 3);
    }
    return length == 2 ? TwoDigits(when.Month) : std::to_string(when.Month);
}

std::string DayToken(const DateTime& when, std::size_t length) {
    const std::string name =
        DayNames[static_cast<std::size_t>(DayOfWeek(when.Year, when.Month, when.Day))];
    if (length >= 4) {
        return name;
    }
    if (length == 3) {
        return name.substr(0, 3);
    }
    return length == 2 ? TwoDigits(when.Day) : std::to_string(when.Day);
}

} // namespace

std::string FormatDate(const DateTime& when, std::string_view picture) {
    const std::string_view text = NamedDatePicture(picture);
    const bool twelveHour = text.find("AMPM") != std::string_view::npos;
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        const std::size_t length = CountRun(text, i);
        if (text.substr(i, 4) == "AMPM") {
            result += when.Hour < 12 ? "AM" : "PM";
            i += 4;
            continue;
        }
        if (c == 'y') {
            result += length >= 4 ? std::to_string(when.Year) : TwoDigits(when.Year % 100);
        } else if (c == 'm') {
            result += MonthToken(when, length);
        } else if (c == 'd') {
            result += DayToken(when, length);
        } else if (c == 'h') {
            int hour = twelveHour ? (when.Hour % 12 == 0 ? 12 : when.Hour % 12) : when.Hour;
            result += length >= 2 ? TwoDigits(hour) : std::to_string(hour);
        } else if (c == 'n') {
            result += length >= 2 ? TwoDigits(when.Minute) : std::to_string(when.Minute);
        } else if (c == 's') {
            result += length >= 2 ? TwoDigits(when.Second) : std::to_string(when.Second);
        } else {
            result.append(length, c);
        }
        i += length;
    }
    return result;
}

} // namespace quench
