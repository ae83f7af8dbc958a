#include "core/formats.h"

#include "core/text.h"

#include <array>
#include <charconv>
#include <cmath>
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

// A magnitude as significant digits: value = 0.Digits × 10^PointPosition.
struct DecimalDigits {
    std::string Digits; // no leading zero unless the value is 0
    int PointPosition = 0;
};

DecimalDigits ToDecimalDigits(double magnitude, int significant) {
    DecimalDigits result;
    if (magnitude == 0) {
        result.Digits = "0";
        result.PointPosition = 1;
        return result;
    }
    // to_chars, unlike printf, ignores the process locale: the point is always '.'.
    std::array<char, 64> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                       std::chars_format::scientific, significant - 1);
    const std::string_view text(buffer.data(),
                                static_cast<std::size_t>(written.ptr - buffer.data()));
    const auto exponentAt = text.find('e');
    for (std::size_t i = 0; i < exponentAt; ++i) {
        if (text[i] != '.') {
            result.Digits.push_back(text[i]);
        }
    }
    result.PointPosition = WholeNumber(text.substr(exponentAt + 1)) + 1;
    return result;
}

void StripTrailingZeros(DecimalDigits& number) {
    while (number.Digits.size() > 1 && number.Digits.back() == '0') {
        number.Digits.pop_back();
    }
}

// The whole and fractional digits of a magnitude rounded half up to a number of decimals.
struct FixedDigits {
    std::string Whole;    // without leading zeros; empty for a whole part of 0
    std::string Fraction; // exactly the requested number of digits
};

FixedDigits RoundFixed(const DecimalDigits& number, int decimals) {
    std::string digits = number.Digits;
    int point = number.PointPosition;
    const int keep = point + decimals;
    if (keep < 0) {
        digits.clear();
    } else if (keep < static_cast<int>(digits.size())) {
        const bool up = digits[static_cast<std::size_t>(keep)] >= '5';
        digits.resize(static_cast<std::size_t>(keep));
        if (up) {
            int position = keep - 1;
            while (position >= 0 && digits[static_cast<std::size_t>(position)] == '9') {
                digits[static_cast<std::size_t>(position)] = '0';
                --position;
            }
            if (position >= 0) {
                ++digits[static_cast<std::size_t>(position)];
            } else {
                digits.insert(digits.begin(), '1');
                ++point;
            }
        }
    }
    // Place the digits around the point, padding with zeros on either side.
    FixedDigits result;
    std::string all;
    if (point < 0) {
        all.assign(static_cast<std::size_t>(-point), '0');
        all += digits;
        point = 0;
    } else {
        all = digits;
    }
    const auto total = static_cast<std::size_t>(point + decimals);
    if (all.size() < total) {
        all.append(total - all.size(), '0');
    }
    all.resize(total);
    result.Whole = all.substr(0, static_cast<std::size_t>(point));
    result.Fraction = all.substr(static_cast<std::size_t>(point));
    const auto firstNonZero = result.Whole.find_first_not_of('0');
    result.Whole =
        firstNonZero == std::string::npos ? std::string() : result.Whole.substr(firstNonZero);
    return result;
}

std::string GroupThousands(const std::string& whole) {
    std::string result;
    const std::size_t length = whole.size();
    for (std::size_t i = 0; i < length; ++i) {
        if (i > 0 && (length - i) % 3 == 0) {
            result.push_back(',');
        }
        result.push_back(whole[i]);
    }
    return result;
}

bool IsPlaceholder(char c) {
    return c == '0' || c == '#';
}

// A picture split into its parts.
struct Picture {
    std::string Prefix;
    std::string Suffix;
    int WholeZeros = 0;
    bool Grouping = false;
    bool HasPoint = false;
    std::string FractionPlaces; // the '0' and '#' after the point
    bool Percent = false;
    bool Scientific = false;
    bool ExponentSignAlways = false;
    int ExponentDigits = 0;
};

Picture ParsePicture(std::string_view text) {
    Picture picture;
    std::size_t i = 0;
    while (i < text.size() && !IsPlaceholder(text[i]) && text[i] != '.') {
        if (text[i] == '%') {
            picture.Percent = true;
        }
        if (text[i] != ',') {
            picture.Prefix.push_back(text[i]);
        }
        ++i;
    }
    for (; i < text.size() && (IsPlaceholder(text[i]) || text[i] == ','); ++i) {
        if (text[i] == ',') {
            picture.Grouping = true;
        } else if (text[i] == '0') {
            ++picture.WholeZeros; // an optional place '#' adds nothing
        }
    }
    if (i < text.size() && text[i] == '.') {
        picture.HasPoint = true;
        for (++i; i < text.size() && IsPlaceholder(text[i]); ++i) {
            picture.FractionPlaces.push_back(text[i]);
        }
    }
    if (i + 1 < text.size() && (text[i] == 'E' || text[i] == 'e') &&
        (text[i + 1] == '+' || text[i + 1] == '-')) {
        picture.Scientific = true;
        picture.ExponentSignAlways = text[i + 1] == '+';
        for (i += 2; i < text.size() && IsPlaceholder(text[i]); ++i) {
            ++picture.ExponentDigits;
        }
    }
    for (; i < text.size(); ++i) {
        if (text[i] == '%') {
            picture.Percent = true;
        }
        picture.Suffix.push_back(text[i]);
    }
    return picture;
}

// Optional decimals that came out as zeros fall away from the right.
void DropOptionalZeros(std::string& fraction, const std::string& places) {
    while (!fraction.empty() && fraction.back() == '0' && places[fraction.size() - 1] == '#') {
        fraction.pop_back();
    }
}

std::string FormatScientific(double magnitude, const Picture& picture) {
    const int decimals = static_cast<int>(picture.FractionPlaces.size());
    DecimalDigits number = ToDecimalDigits(magnitude, DoubleDigits);
    int exponent = magnitude == 0 ? 0 : number.PointPosition - 1;
    number.PointPosition = 1;
    FixedDigits fixed = RoundFixed(number, decimals);
    if (fixed.Whole.size() > 1) { // 9.99 rounded up to 10.0
        fixed.Fraction = fixed.Whole.substr(1) + fixed.Fraction;
        fixed.Fraction.resize(static_cast<std::size_t>(decimals));
        fixed.Whole.resize(1);
        ++exponent;
    }
    std::string whole = fixed.Whole.empty() ? "0" : fixed.Whole;
    std::string fraction = fixed.Fraction;
    DropOptionalZeros(fraction, picture.FractionPlaces);
    std::string result = whole;
    if (picture.HasPoint) {
        result += "." + fraction;
    }
    std::string exponentText = std::to_string(std::abs(exponent));
    if (static_cast<int>(exponentText.size()) < picture.ExponentDigits) {
        exponentText.insert(
            0, static_cast<std::size_t>(picture.ExponentDigits) - exponentText.size(), '0');
    }
    const char* sign = exponent < 0 ? "-" : (picture.ExponentSignAlways ? "+" : "");
    return result + "E" + sign + exponentText;
}

std::string FormatWithPicture(double value, const Picture& picture) {
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-Infinity" : "Infinity";
    }
    const bool negative = value < 0;
    double magnitude = std::fabs(value) * (picture.Percent ? 100.0 : 1.0);
    std::string body;
    if (picture.Scientific) {
        body = FormatScientific(magnitude, picture);
    } else {
        const int decimals = static_cast<int>(picture.FractionPlaces.size());
        FixedDigits fixed = RoundFixed(ToDecimalDigits(magnitude, DoubleDigits), decimals);
        std::string whole = fixed.Whole;
        if (static_cast<int>(whole.size()) < picture.WholeZeros) {
            whole.insert(0, static_cast<std::size_t>(picture.WholeZeros) - whole.size(), '0');
        }
        if (picture.Grouping) {
            whole = GroupThousands(whole);
        }
        DropOptionalZeros(fixed.Fraction, picture.FractionPlaces);
        body = whole + (picture.HasPoint ? "." + fixed.Fraction : std::string());
    }
    return (negative ? "-" : "") + picture.Prefix + body + picture.Suffix;
}

std::string_view NamedPicture(std::string_view name) {
    if (EqualsIgnoreCase(name, "Fixed")) {
        return "0.00";
    }
    if (EqualsIgnoreCase(name, "Standard")) {
        return "#,##0.00";
    }
    if (EqualsIgnoreCase(name, "Percent")) {
        return "0.00%";
    }
    if (EqualsIgnoreCase(name, "Scientific")) {
        return "0.00E+00";
    }
    return name;
}

// The shortest text of a number in significant digits, with or without the zero before the point.
std::string PlainNumberText(double value, int significant, bool leadingZero) {
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-Infinity" : "Infinity";
    }
    const std::string sign = value < 0 ? "-" : "";
    if (value == 0) {
        return "0";
    }
    DecimalDigits number = ToDecimalDigits(std::fabs(value), significant);
    StripTrailingZeros(number);
    const int exponent = number.PointPosition - 1;
    if (exponent >= significant || exponent < -5) {
        std::string mantissa = number.Digits.substr(0, 1);
        if (number.Digits.size() > 1) {
            mantissa += "." + number.Digits.substr(1);
        }
        std::string exponentText = std::to_string(std::abs(exponent));
        if (exponentText.size() < 2) {
            exponentText.insert(0, "0");
        }
        return sign + mantissa + "E" + (exponent < 0 ? "-" : "+") + exponentText;
    }
    std::string whole;
    std::string fraction;
    if (number.PointPosition <= 0) {
        fraction =
            std::string(static_cast<std::size_t>(-number.PointPosition), '0') + number.Digits;
    } else if (number.PointPosition >= static_cast<int>(number.Digits.size())) {
        whole =
            number.Digits +
            std::string(static_cast<std::size_t>(number.PointPosition) - number.Digits.size(), '0');
    } else {
        whole = number.Digits.substr(0, static_cast<std::size_t>(number.PointPosition));
        fraction = number.Digits.substr(static_cast<std::size_t>(number.PointPosition));
    }
    if (whole.empty() && leadingZero) {
        whole = "0";
    }
    return sign + whole + (fraction.empty() ? "" : "." + fraction);
}

std::string WithSignBlank(const std::string& text) {
    return (!text.empty() && text[0] == '-') ? text : " " + text;
}

} // namespace

std::string Format(double value, std::string_view picture) {
    if (EqualsIgnoreCase(picture, "General Number") || picture.empty()) {
        return NumberText(value);
    }
    return FormatWithPicture(value, ParsePicture(NamedPicture(picture)));
}

std::string Str(double value) {
    return WithSignBlank(PlainNumberText(value, DoubleDigits, false));
}

std::string Str(float value) {
    return WithSignBlank(PlainNumberText(static_cast<double>(value), SingleDigits, false));
}

std::string NumberText(double value) {
    // Node numbers: a whole number of up to nine digits is its digits.
    if (std::fabs(value) < 1e9 && value == std::trunc(value)) {
        return std::to_string(static_cast<long>(value));
    }
    return PlainNumberText(value, DoubleDigits, true);
}

std::string NumberText(float value) {
    return PlainNumberText(static_cast<double>(value), SingleDigits, true);
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
