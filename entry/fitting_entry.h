#pragma once

// The standard fitting field of a row editor ("2F3E"): its key filter, the parse of a typed text
// into the seven counters with its two messages, the running fitting sum shown while the user
// types, and the whole-number copy of the non-standard length kept for older exports. The sum
// shares its size look-up and its walk of the text with the stored total (RecalcEquivLength).

#include "core/dialogs.h"
#include "core/project.h"
#include "entry/field_rules.h"
#include "library/pipe_library.h"

#include <string_view>

namespace quench {

constexpr std::size_t FittingTextLength = 10;
constexpr Integer MaximumFittingCount = 99;
constexpr char RefusedKey = '\0';

constexpr const char* NoFittingTypeTitle = "No Fitting Type Entered";
constexpr const char* TooManyFittingsTitle = "Too Many Fittings Entered";

// A key typed into the fitting field, whose text is `text` with `selected` characters selected
// (the key replaces them). The key comes back when it is taken, RefusedKey when not: a key that
// would make the text longer than 10 characters, and any key but a digit, one of the seven
// capital letters or Backspace. A taken key sets the project's InputChanged. The screen turns
// every key into a capital before it gets here.
char FilterFittingKey(char key, std::string_view text, Project& project, std::size_t selected = 0);

struct FittingParse {
    FittingCountArray Counts{};
    bool Clean = true; // false when the text ends in a number without a fitting letter
};

// The seven counters of a typed text. A letter takes the number before it, or 1; numbers of the
// same letter add up to at most 99, with a message the first time a sum passes it (a second time
// ends the parse). A number at the end is reported and leaves the parse not clean, with the
// counters filled so far.
FittingParse ParseFittingText(std::string_view text, Dialogs& dialogs);

// The texts of a row editor that the running fitting sum reads.
struct FittingFieldTexts {
    std::string_view Fitting;
    std::string_view Material;
    std::string_view Diameter;
    bool DiameterFromList = false; // the diameter was picked from the library's list
};

// The fitting sum of the row being typed: feet, or metres when the project is in SI. 0 when the
// text is empty, the material is not 1 to 50, the diameter is not above 0 or is not a size of the
// material. In SI the diameter field holds millimetres and is taken in inches through
// "###,##0.00"; a diameter picked from the list is already in inches and goes through
// "###,##0.0#". At most 11 characters of the text are walked.
double FittingLengthFromText(const PipeLibrary& library, const FittingFieldTexts& texts,
                             Integer unitSystem);

// The library material a material field's text names: a whole number from 1 to 50, else 0.
int LibraryMaterialOfText(std::string_view text);

// The non-standard fitting length as a whole number (half to even), for the older exports.
Integer OldFittingLength(Single nonStandardFitLength);

} // namespace quench
