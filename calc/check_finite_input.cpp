#include "calc/check_finite_input.h"

#include "calc/messages.h"
#include "calc/screen_words.h"
#include "core/record_layout.h"
#include "core/record_sequence.h"

#include <cmath>
#include <string_view>
#include <type_traits>

namespace quench {

namespace {

// Visits the fields of a record and keeps the name of the first number that is not finite.
class NonFiniteField {
public:
    template <class T>
    void Number(std::string_view name, const T& value) {
        if constexpr (std::is_floating_point_v<T>) {
            if (found_.empty() && !std::isfinite(value)) {
                found_ = name;
            }
        }
    }
    template <class T, std::size_t Count>
    void Numbers(std::string_view name, const std::array<T, Count>& values) {
        for (const T& value : values) {
            Number(name, value);
        }
    }
    template <std::size_t Count>
    void Bytes(std::string_view, const std::array<std::uint8_t, Count>&) {}
    void Text(std::string_view, const std::string&, std::size_t) {}
    void String(std::string_view, const std::string&) {}

    std::string_view Found() const { return found_; }

private:
    std::string_view found_;
};

template <class Record>
std::string_view FirstNonFinite(const Record& record) {
    NonFiniteField visitor;
    VisitRecordFields(record, visitor);
    return visitor.Found();
}

} // namespace

void CheckFiniteInput(RunContext& context) {
    const Project& project = context.Project;
    const int rows = UsedRows(project.PipeRecord, project.NumberOfPipeRows);
    for (int row = 1; row <= rows; ++row) {
        const std::string_view field = FirstNonFinite(project.PipeRecord[row]);
        if (!field.empty()) {
            context.Stop(Diagnostic(MessageStyle::Plain, "", messages::NotANumberInRow(field, row))
                             .OnRow(row)
                             .Bring(screens::PipeData, screens::Show));
            return;
        }
    }
    if (const std::string_view field = FirstNonFinite(project.SystemData); !field.empty()) {
        context.Stop({MessageStyle::Plain, "", messages::NotANumberInGeneralData(field)});
    }
}

} // namespace quench
