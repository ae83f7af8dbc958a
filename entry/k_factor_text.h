#pragma once

// The K-factor field of a node: a number in the K unit on screen, or one of the words "Dflt"
// (the project's default K), "Inact" (a sprinkler switched off) and "None" (no sprinkler). The
// keys D, I and N typed alone give the words. A number is stored as text in US units.

#include "core/units.h"
#include "entry/field_rules.h"

#include <optional>
#include <string>
#include <string_view>

namespace quench {

constexpr const char* DefaultKWord = "Dflt";
constexpr const char* InactiveKWord = "Inact";
constexpr const char* NoneKWord = "None";

// The word a stored or typed text is, in its stored spelling; none for a number.
std::optional<std::string> KFactorWord(std::string_view text);

// The field's text for a stored K: the word as it stands, a number in the K unit on screen.
std::string KFactorFieldText(std::string_view stored, MeasureSystem system,
                             char decimalCharacter = '.');

// The stored text for a field's text: the word, "" for an empty field, a number in US K units
// as the shortest text of at most six characters.
std::string KFactorToStore(std::string_view text, MeasureSystem system,
                           char decimalCharacter = '.');

// A key typed into a K field. D, I and N replace an empty field or a whole selection with their
// word; Backspace clears a word; anything else goes through the number rule of the field.
KeyOutcome FilterKFactorKey(char key, const FieldState& field, const NumberAttribute& attribute,
                            const NumberKeyOptions& options = {});

// The test on change of a K field: a word stays, D, I or N alone become their words, anything
// else is tested as a number.
std::string TestKFactorOnChange(std::string_view text, const NumberAttribute& attribute,
                                char decimalCharacter = '.');

} // namespace quench
