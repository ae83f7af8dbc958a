#include "entry/builder_check.h"

#include "entry/builder_input_text.h"
#include "entry/builder_words.h"
#include "entry/field_rules.h"

namespace quench {

BuilderCheck& BuilderCheck::Miss(BuilderControl control, int index) {
    Complete = false;
    Focus = {control, index};
    return *this;
}

void CheckBuilderMaterials(std::string_view main, std::string_view branch, char decimalCharacter,
                           BuilderCheck& check) {
    if (!check.Complete) {
        return;
    }
    for (const auto& [text, control] : {std::pair{main, BuilderControl::MainMaterial},
                                        std::pair{branch, BuilderControl::BranchMaterial}}) {
        if (!IsBuilderNumber(text, decimalCharacter)) {
            check.MaterialNotNumber = true;
            check.Miss(control);
            return;
        }
        if (FieldValue(text, decimalCharacter) == 0) {
            check.Miss(control);
            return;
        }
    }
}

bool ReportBuilderCheck(const BuilderCheck& check, Dialogs* dialogs,
                        std::string_view materialMessage, BuilderFocus* focus) {
    if (focus != nullptr) {
        *focus = check.Focus;
    }
    if (dialogs != nullptr && check.MaterialNotNumber) {
        dialogs->ShowMessage(MessageStyle::Warning, builder_words::InputDataErrorTitle,
                             materialMessage);
    }
    if (dialogs != nullptr && !check.Complete) {
        dialogs->ShowMessage(MessageStyle::Warning, builder_words::InputDataErrorTitle,
                             builder_words::InputMissing);
    }
    return check.Complete;
}

} // namespace quench
