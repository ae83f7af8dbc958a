#include "entry/fitting_entry.h"

#include "core/formats.h"
#include "library/equivalent_length.h"
#include "library/fitting_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>

namespace quench {

namespace {

// A quantity is a first digit and up to nine more.
constexpr std::size_t QuantityDigits = 10;
constexpr std::size_t RunningSumCharacters = 11;

const std::array<const char*, FittingKinds> FittingMessageNames{
    "45 Degree Elbows", "90 Degree Elbows", "Long Turn Elbows", "Tees or Crosses",
    "Butterfly Valves", "Gate Valves",      "Check Valves"};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::int64_t ReadQuantity(std::string_view text, std::size_t& position) {
    std::int64_t quantity = 0;
    for (std::size_t digits = 0;
         digits < QuantityDigits && position < text.size() && IsDigit(text[position]);
         ++digits, ++position) {
        quantity = quantity * 10 + (text[position] - '0');
    }
    return quantity;
}

void ReportTooMany(int kind, Dialogs& dialogs) {
    dialogs.ShowMessage(MessageStyle::Warning, TooManyFittingsTitle,
                        std::string("You specified a combination of quantities of ") +
                            FittingMessageNames[kind] +
                            " that exceeds the maximum quantity possible.  The number of "
                            "fittings will be set to the maximum quantity of 99 fittings.");
}

void ReportNoFittingType(std::int64_t quantity, Dialogs& dialogs) {
    dialogs.ShowMessage(MessageStyle::Warning, NoFittingTypeTitle,
                        "You specified a number of " + std::to_string(quantity) +
                            " for the fitting quantity but you did not specify a fitting type.  "
                            "Please check your fitting count to make sure it is correct.");
}

// Adds the quantity to the kind's counter. False when the parse must end: the counter passed 99
// a second time.
bool AddFittings(FittingCountArray& counts, std::array<bool, FittingKinds>& capped, int kind,
                 std::int64_t quantity, Dialogs& dialogs) {
    if (counts[kind] + quantity <= MaximumFittingCount) {
        counts[kind] = static_cast<Integer>(counts[kind] + quantity);
        return true;
    }
    if (capped[kind]) {
        return false;
    }
    counts[kind] = MaximumFittingCount;
    capped[kind] = true;
    ReportTooMany(kind, dialogs);
    return true;
}

// The nominal diameter in inches that the diameter field stands for.
Single NominalOfField(const FittingFieldTexts& texts, Integer unitSystem) {
    // A figure beyond any Single matches no size; keep it from overflowing the conversion.
    const double value = std::min(ToNumber(texts.Diameter), 1e30);
    if (!IsSIUnitSystem(unitSystem)) {
        return static_cast<Single>(value);
    }
    const double inches = texts.DiameterFromList ? value : FromSI(UnitKind::Fine_Length, value);
    const char* picture = texts.DiameterFromList ? "###,##0.0#" : "###,##0.00";
    return static_cast<Single>(ToNumber(Format(inches, picture)));
}

} // namespace

char FilterFittingKey(char key, std::string_view text, Project& project, std::size_t selected) {
    const bool backspace = key == BackspaceKey;
    const std::size_t kept = text.size() - std::min(selected, text.size());
    if (!backspace && kept + 1 > FittingTextLength) {
        return RefusedKey;
    }
    const bool fittingLetter = key >= 'A' && key <= 'Z' && FittingKindOf(key) >= 0;
    if (!backspace && !IsDigit(key) && !fittingLetter) {
        return RefusedKey;
    }
    project.InputChanged = True;
    return key;
}

FittingParse ParseFittingText(std::string_view text, Dialogs& dialogs) {
    FittingParse parse;
    std::array<bool, FittingKinds> capped{};
    std::optional<std::int64_t> pending;
    std::size_t position = 0;
    while (position < text.size()) {
        if (IsDigit(text[position])) {
            pending = ReadQuantity(text, position);
            continue;
        }
        const char c = text[position++];
        if (!IsLetter(c)) {
            continue;
        }
        const std::int64_t quantity = pending.value_or(1);
        pending.reset();
        const int kind = FittingKindOf(c);
        if (kind >= 0 && !AddFittings(parse.Counts, capped, kind, quantity, dialogs)) {
            return parse;
        }
    }
    if (pending) {
        ReportNoFittingType(*pending, dialogs);
        parse.Clean = false;
    }
    return parse;
}

double FittingLengthFromText(const PipeLibrary& library, const FittingFieldTexts& texts,
                             Integer unitSystem) {
    const int material = LibraryMaterialOfText(texts.Material);
    if (texts.Fitting.empty() || material == 0 || !(ToNumber(texts.Diameter) > 0)) {
        return 0;
    }
    const Single nominal = NominalOfField(texts, unitSystem);
    const double feet =
        FittingSumOf(library, material, nominal, texts.Fitting, RunningSumCharacters).value_or(0.0);
    return IsSIUnitSystem(unitSystem) ? ToSI(UnitKind::Length, feet) : feet;
}

int LibraryMaterialOfText(std::string_view text) {
    if (!IsNumeric(text)) {
        return 0;
    }
    const double value = ToNumber(text);
    const bool inRange = value >= 1 && value <= LibraryMaterials && value == std::floor(value);
    return inRange ? static_cast<int>(value) : 0;
}

Integer OldFittingLength(Single nonStandardFitLength) {
    return CInt(nonStandardFitLength);
}

} // namespace quench
