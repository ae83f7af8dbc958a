#pragma once

// What the input checks of both builders share: the two material fields and the messages of a
// failed check under "Input Data Error".

#include "core/dialogs.h"
#include "entry/builder_result.h"

#include <string_view>

namespace quench {

struct BuilderCheck {
    bool Complete = true;
    bool MaterialNotNumber = false;
    BuilderFocus Focus;

    // Marks the check failed at a control; returns it for a one-line return.
    BuilderCheck& Miss(BuilderControl control, int index = -1);
};

// The main (cross main or perimeter) and branch material fields, in that order: a text that is
// no number is told first, a 0 is missing. A check already failed is left as it is.
void CheckBuilderMaterials(std::string_view main, std::string_view branch, char decimalCharacter,
                           BuilderCheck& check);

// The focus handed back, and with dialogs the messages: the builder's material message when a
// material is no number, then the missing input. Returns whether the inputs are complete.
bool ReportBuilderCheck(const BuilderCheck& check, Dialogs* dialogs,
                        std::string_view materialMessage, BuilderFocus* focus);

} // namespace quench
