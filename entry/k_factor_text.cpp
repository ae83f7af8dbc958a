#include "entry/k_factor_text.h"

#include "core/formats.h"
#include "core/text.h"

#include <array>
#include <cctype>

namespace quench {

namespace {

constexpr std::array<const char*, 3> Words{DefaultKWord, InactiveKWord, NoneKWord};

bool WholeTextSelected(const FieldState& field) {
    return field.Text.empty() || (field.SelectionStart <= 0 &&
                                  field.SelectionLength >= static_cast<int>(field.Text.size()));
}

FieldState WordField(std::string_view word) {
    return {std::string(word), static_cast<int>(word.size()), 0};
}

} // namespace

std::optional<std::string> KFactorWord(std::string_view text) {
    const std::string trimmed = Trim(text);
    for (const char* word : Words) {
        if (EqualsIgnoreCase(trimmed, word)) {
            return std::string(word);
        }
    }
    return std::nullopt;
}

std::string KFactorFieldText(std::string_view stored, MeasureSystem system, char decimalCharacter) {
    if (auto word = KFactorWord(stored)) {
        return *word;
    }
    const std::string trimmed = Trim(stored);
    if (trimmed.empty()) {
        return {};
    }
    const double value = ShownValue(UnitKind::K_Factor, ToNumber(trimmed), system);
    return FieldText(value, NumberAttribute{}, decimalCharacter, "0.0#");
}

std::string KFactorToStore(std::string_view text, MeasureSystem system, char decimalCharacter) {
    if (auto word = KFactorWord(text)) {
        return *word;
    }
    const std::string trimmed = Trim(text);
    if (trimmed.empty()) {
        return {};
    }
    const double value =
        StoredValue(UnitKind::K_Factor, FieldValue(trimmed, decimalCharacter), system);
    // As many decimals as six characters hold, at most four.
    for (int decimals = 4; decimals > 0; --decimals) {
        std::string stored = NumberText(RoundTo(value, decimals));
        if (stored.size() <= 6) {
            return stored;
        }
    }
    return NumberText(RoundTo(value, 0));
}

KeyOutcome FilterKFactorKey(char key, const FieldState& field, const NumberAttribute& attribute,
                            const NumberKeyOptions& options) {
    const char capital = static_cast<char>(std::toupper(static_cast<unsigned char>(key)));
    if (capital == 'D' || capital == 'I' || capital == 'N') {
        if (!WholeTextSelected(field) && !KFactorWord(field.Text)) {
            return {};
        }
        return {true, WordField(capital == 'D'   ? DefaultKWord
                                : capital == 'I' ? InactiveKWord
                                                 : NoneKWord)};
    }
    if (KFactorWord(field.Text)) {
        if (key == BackspaceKey) {
            return {true, FieldState{}};
        }
        if (!WholeTextSelected(field)) {
            return {};
        }
        return FilterNumberKey(key, FieldState{}, attribute, options);
    }
    return FilterNumberKey(key, field, attribute, options);
}

std::string TestKFactorOnChange(std::string_view text, const NumberAttribute& attribute,
                                char decimalCharacter) {
    if (auto word = KFactorWord(text)) {
        return *word;
    }
    const std::string trimmed = ToUpper(Trim(text));
    if (trimmed == "D" || trimmed == "I" || trimmed == "N") {
        return trimmed == "D" ? DefaultKWord : trimmed == "I" ? InactiveKWord : NoneKWord;
    }
    return TestOnChange(text, attribute, decimalCharacter);
}

} // namespace quench
