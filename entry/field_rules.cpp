#include "entry/field_rules.h"

#include "core/formats.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool IsSeparatorKey(char key) {
    return key == '.' || key == ',';
}

// The text with the selection replaced by `inserted`, the cursor behind it.
FieldState Replaced(const FieldState& field, std::string_view inserted) {
    const std::size_t start =
        std::min(static_cast<std::size_t>(std::max(field.SelectionStart, 0)), field.Text.size());
    const std::size_t length = std::min(
        static_cast<std::size_t>(std::max(field.SelectionLength, 0)), field.Text.size() - start);
    FieldState result;
    result.Text =
        field.Text.substr(0, start) + std::string(inserted) + field.Text.substr(start + length);
    result.SelectionStart = static_cast<int>(start + inserted.size());
    return result;
}

FieldState Backspaced(const FieldState& field) {
    if (field.SelectionLength > 0 || field.SelectionStart <= 0) {
        return Replaced(field, "");
    }
    FieldState previous = field;
    previous.SelectionStart = field.SelectionStart - 1;
    previous.SelectionLength = 1;
    return Replaced(previous, "");
}

// A number as a field holds it, or the beginning of one: an optional minus, digits, at most one
// separator and digits behind it. "", "-" and the separator alone are beginnings.
bool IsNumberBeginning(std::string_view text, char separator) {
    std::size_t position = 0;
    if (!text.empty() && text.front() == '-') {
        position = 1;
    }
    bool separatorSeen = false;
    for (; position < text.size(); ++position) {
        const char character = text[position];
        if (character == separator && !separatorSeen) {
            separatorSeen = true;
        } else if (!IsDigit(character)) {
            return false;
        }
    }
    return true;
}

bool HasSeparator(std::string_view text, char separator) {
    return text.find(separator) != std::string_view::npos;
}

int DigitsAfterSeparator(std::string_view text, char separator) {
    const std::size_t at = text.find(separator);
    return at == std::string_view::npos ? 0 : static_cast<int>(text.size() - at - 1);
}

bool AboveMaximum(std::string_view text, const NumberAttribute& attribute, char separator) {
    return static_cast<Single>(FieldValue(text, separator)) > attribute.Max;
}

// A text with nothing of a number in it yet.
bool IsBlankNumber(std::string_view text, char separator) {
    for (const char character : text) {
        if (IsDigit(character)) {
            return false;
        }
    }
    return text.size() <= 2 && IsNumberBeginning(text, separator);
}

KeyOutcome Accept(FieldState field) {
    return {true, std::move(field)};
}

KeyOutcome Refuse() {
    return {};
}

// The decimals, the maximum and the form of a number: what every accepted key must leave.
bool Holds(const FieldState& result, const NumberAttribute& attribute, char separator) {
    return IsNumberBeginning(result.Text, separator) &&
           DigitsAfterSeparator(result.Text, separator) <= attribute.Decimals &&
           !AboveMaximum(result.Text, attribute, separator);
}

// The separator taken out of the text and put in again at the cursor.
FieldState MovedSeparator(const FieldState& field, char separator) {
    FieldState without = Replaced(field, "");
    const std::size_t old = without.Text.find(separator);
    int cursor = without.SelectionStart;
    if (static_cast<int>(old) < cursor) {
        --cursor;
    }
    without.Text.erase(old, 1);
    without.SelectionStart = cursor;
    return Replaced(without, std::string(1, separator));
}

KeyOutcome FilterSeparatorKey(char key, const FieldState& field, const NumberAttribute& attribute,
                              const NumberKeyOptions& options) {
    const char separator = options.DecimalCharacter;
    if (key != separator || attribute.Decimals <= 0) {
        return Refuse();
    }
    FieldState result;
    if (HasSeparator(Replaced(field, "").Text, separator)) {
        if (!options.MoveSeparator) {
            return Refuse();
        }
        result = MovedSeparator(field, separator);
    } else {
        result = Replaced(field, std::string(1, separator));
    }
    return Holds(result, attribute, separator) ? Accept(std::move(result)) : Refuse();
}

} // namespace

double FieldValue(std::string_view text, char decimalCharacter) {
    std::string number(text);
    if (decimalCharacter != '.') {
        if (number.find('.') != std::string::npos) {
            return 0; // the other character is no separator here
        }
        std::replace(number.begin(), number.end(), decimalCharacter, '.');
    }
    return ToNumber(number);
}

KeyOutcome FilterNumberKey(char key, const FieldState& field, const NumberAttribute& attribute,
                           const NumberKeyOptions& options) {
    const char separator = options.DecimalCharacter;
    if (key == BackspaceKey) {
        return Accept(Backspaced(field));
    }
    if (IsDigit(key)) {
        FieldState result = Replaced(field, std::string(1, key));
        return Holds(result, attribute, separator) ? Accept(std::move(result)) : Refuse();
    }
    if (IsSeparatorKey(key)) {
        return FilterSeparatorKey(key, field, attribute, options);
    }
    if (key == '-') {
        if (attribute.Min >= 0 || field.SelectionStart != 0) {
            return Refuse();
        }
        FieldState result = Replaced(field, "-");
        const bool oneMinus = std::count(result.Text.begin(), result.Text.end(), '-') == 1;
        return oneMinus && Holds(result, attribute, separator) ? Accept(std::move(result))
                                                               : Refuse();
    }
    return Refuse();
}

KeyOutcome FilterTextKey(char key, const FieldState& field, const TextAttribute& attribute) {
    if (key == BackspaceKey) {
        return Accept(Backspaced(field));
    }
    FieldState result = Replaced(field, std::string(1, key));
    if (attribute.MaxLength > 0 &&
        result.Text.size() > static_cast<std::size_t>(attribute.MaxLength)) {
        return Refuse();
    }
    return Accept(std::move(result));
}

std::string TestOnChange(std::string_view text, const NumberAttribute& attribute,
                         char decimalCharacter) {
    const bool holds = IsNumberBeginning(text, decimalCharacter) &&
                       DigitsAfterSeparator(text, decimalCharacter) <= attribute.Decimals &&
                       !(attribute.Decimals == 0 && HasSeparator(text, decimalCharacter)) &&
                       !(attribute.Min >= 0 && text.find('-') != std::string_view::npos) &&
                       !AboveMaximum(text, attribute, decimalCharacter);
    return holds ? std::string(text) : std::string();
}

std::string TestTextOnChange(std::string_view text, const TextAttribute& attribute) {
    if (attribute.MaxLength > 0 && text.size() > static_cast<std::size_t>(attribute.MaxLength)) {
        return std::string(text.substr(0, static_cast<std::size_t>(attribute.MaxLength)));
    }
    return std::string(text);
}

std::string FieldText(double value, const NumberAttribute& attribute, char decimalCharacter,
                      std::string_view format) {
    std::string picture(format);
    if (picture.empty()) {
        picture = "0";
        if (attribute.Decimals > 0) {
            picture += "." + std::string(static_cast<std::size_t>(attribute.Decimals), '0');
        }
    }
    std::string text = Format(value, picture);
    if (decimalCharacter != '.') {
        std::replace(text.begin(), text.end(), '.', decimalCharacter);
    }
    return text;
}

LeaveOutcome LeaveNumberField(std::string_view text, const NumberAttribute& attribute,
                              char decimalCharacter, std::string_view format) {
    LeaveOutcome outcome;
    const double value = FieldValue(text, decimalCharacter);
    if (static_cast<Single>(value) < attribute.Min) {
        // The least value the field shows that is not below the minimum: a minimum that the
        // display would round down gets one step of the last decimal added.
        const double step = std::pow(10.0, -attribute.Decimals);
        double minimum = attribute.Min;
        outcome.Text = FieldText(minimum, attribute, decimalCharacter);
        for (int steps = 0;
             steps < 10 &&
             static_cast<Single>(FieldValue(outcome.Text, decimalCharacter)) < attribute.Min;
             ++steps) {
            minimum += step;
            outcome.Text = FieldText(minimum, attribute, decimalCharacter);
        }
        outcome.TooLow = true;
        return outcome;
    }
    if (text.size() == 1 && text.front() == decimalCharacter) {
        outcome.Text = std::string("0") + decimalCharacter + "0";
    } else if (IsBlankNumber(text, decimalCharacter)) {
        outcome.Text = FieldText(0, attribute, decimalCharacter, format);
    } else {
        outcome.Text = std::string(text);
    }
    return outcome;
}

} // namespace quench
