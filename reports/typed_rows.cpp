#include "core/text.h"
#include "reports/report_sections.h"

#include <algorithm>

namespace quench {

TypedRows::TypedRows(const Project& project) : project_(project) {
    const int rows = std::min<int>(MaxPipes, static_cast<int>(project.PipeRecord.size()) - 1);
    for (int row = rows; row >= 1; --row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (!IsTrue(pipe.Active) || !HasBothNodes(pipe)) {
            continue;
        }
        const double begin = ToNumber(pipe.BegNode);
        const double end = ToNumber(pipe.EndNode);
        rows_[{std::min(begin, end), std::max(begin, end)}] = row; // the first row wins
    }
}

double TypedRows::Typed(double number) const {
    return TypedNodeNumber(project_, number);
}

int TypedRows::Find(double begin, double end) const {
    const double first = Typed(begin);
    const double second = Typed(end);
    const auto found = rows_.find({std::min(first, second), std::max(first, second)});
    return found == rows_.end() ? 0 : found->second;
}

int TypedRows::Find(std::string_view begin, std::string_view end) const {
    return Find(ToNumber(begin), ToNumber(end));
}

} // namespace quench
