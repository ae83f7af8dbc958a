#pragma once

// The three tests every input field goes through: a key filter before a key reaches the field,
// a test when its text changes, and a test when the user leaves it. The limits given are those in
// the unit on screen (ConvertAttribute). A refused key leaves no trace; a refused text is emptied;
// a number below the minimum is set to the minimum when the field is left.

#include "entry/field_attributes.h"

#include <string>
#include <string_view>

namespace quench {

constexpr char BackspaceKey = '\b';

constexpr const char* ValueTooLowText =
    "Value is too low.  Entry has been set to minimum allowed value.";

// A field's text and its selection (the cursor when nothing is selected), in characters.
struct FieldState {
    std::string Text;
    int SelectionStart = 0;
    int SelectionLength = 0;
};

// A key is taken or refused; when taken, the field as it becomes.
struct KeyOutcome {
    bool Accepted = false;
    FieldState Field;
};

struct NumberKeyOptions {
    char DecimalCharacter = '.';
    // Data screens: a separator typed in a field that has one moves it to the cursor.
    bool MoveSeparator = true;
};

KeyOutcome FilterNumberKey(char key, const FieldState& field, const NumberAttribute& attribute,
                           const NumberKeyOptions& options = {});
KeyOutcome FilterTextKey(char key, const FieldState& field, const TextAttribute& attribute);

// The value of a field's text, the separator being the locale's; an empty or unreadable text is 0.
double FieldValue(std::string_view text, char decimalCharacter = '.');

// The test on change: the text when a field of the attribute can hold it (a number within the
// range, or the beginning of one: "", "-", the separator), otherwise "" (the field is emptied).
// A value below the minimum passes here: the user may still be typing.
std::string TestOnChange(std::string_view text, const NumberAttribute& attribute,
                         char decimalCharacter = '.');

// A text cut to the field's length.
std::string TestTextOnChange(std::string_view text, const TextAttribute& attribute);

struct LeaveOutcome {
    std::string Text;
    bool TooLow = false; // show ValueTooLowText
};

// Leaving a field: a number below the minimum becomes the minimum (the least value the field can
// show that is not below it); an empty or separator-only text becomes 0 in the field's format.
// The format is a picture such as "0.00"; an empty one means 0 with the field's decimals.
LeaveOutcome LeaveNumberField(std::string_view text, const NumberAttribute& attribute,
                              char decimalCharacter = '.', std::string_view format = {});

// A value as the field shows it: the picture (or the decimals of the attribute), with the locale's
// separator.
std::string FieldText(double value, const NumberAttribute& attribute, char decimalCharacter = '.',
                      std::string_view format = {});

} // namespace quench
