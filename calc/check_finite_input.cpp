#include "calc/check_finite_input.h"

#include "calc/messages.h"
#include "calc/screen_words.h"
#include "core/finite_fields.h"
#include "core/record_sequence.h"

#include <string_view>

namespace quench {

void CheckFiniteInput(RunContext& context) {
    const Project& project = context.Project;
    const int rows = UsedRows(project.PipeRecord, project.NumberOfPipeRows);
    for (int row = 1; row <= rows; ++row) {
        const std::string_view field = FirstNonFiniteField(project.PipeRecord[row]);
        if (!field.empty()) {
            context.Stop(Diagnostic(MessageStyle::Plain, "", messages::NotANumberInRow(field, row))
                             .OnRow(row)
                             .Bring(screens::PipeData, screens::Show));
            return;
        }
    }
    if (const std::string_view field = FirstNonFiniteField(project.SystemData); !field.empty()) {
        context.Stop({MessageStyle::Plain, "", messages::NotANumberInGeneralData(field)});
    }
}

} // namespace quench
