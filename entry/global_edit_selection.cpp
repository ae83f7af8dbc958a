#include "entry/global_edit_selection.h"

#include "core/formats.h"
#include "core/text.h"

namespace quench {

namespace {

const PipeRecord& Row(const Project& project, int row) {
    return project.PipeRecord[static_cast<std::size_t>(row)];
}

bool EndInRange(const PipeRecord& record, NodeEnd end, const GlobalSelection& selection) {
    return !Trim(NodeText(record, end)).empty() &&
           InNodeRange(NodeNumberAt(record, end), ToNumber(selection.From), ToNumber(selection.To));
}

bool EndSelected(const PipeRecord& record, NodeEnd end, const GlobalSelection& selection) {
    if (Trim(NodeText(record, end)).empty()) {
        return false;
    }
    switch (selection.Choice) {
    case SelectionChoice::NodeRange:
        return EndInRange(record, end, selection);
    case SelectionChoice::Group: {
        const std::string& group =
            end == NodeEnd::Beginning ? record.AreaGroupB : record.AreaGroupE;
        return ToUpper(group).find(ToUpper(Trim(selection.Group))) != std::string::npos;
    }
    case SelectionChoice::All:
        return true;
    }
    return false;
}

bool PipeSelected(const PipeRecord& record, const GlobalSelection& selection) {
    switch (selection.Choice) {
    case SelectionChoice::NodeRange:
        return EndInRange(record, NodeEnd::Beginning, selection) ||
               EndInRange(record, NodeEnd::Ending, selection);
    case SelectionChoice::Group:
        return record.TypeGroup == ToNumber(selection.Group);
    case SelectionChoice::All:
        return true;
    }
    return false;
}

} // namespace

bool InNodeRange(double number, double from, double to) {
    return (from <= number && number <= to) || (to <= number && number <= from);
}

int RowsBeforeGap(const Project& project) {
    int rows = 0;
    while (rows < MaxPipes && !IsBlankRow(Row(project, rows + 1))) {
        ++rows;
    }
    return rows;
}

std::vector<int> SelectedPipes(const Project& project, const GlobalSelection& selection) {
    std::vector<int> rows;
    const int last = RowsBeforeGap(project);
    for (int row = 1; row <= last; ++row) {
        if (PipeSelected(Row(project, row), selection)) {
            rows.push_back(row);
        }
    }
    return rows;
}

std::vector<RowEnd> SelectedEnds(const Project& project, const GlobalSelection& selection) {
    std::vector<RowEnd> ends;
    const int last = RowsBeforeGap(project);
    for (int row = 1; row <= last; ++row) {
        for (NodeEnd end : {NodeEnd::Beginning, NodeEnd::Ending}) {
            if (EndSelected(Row(project, row), end, selection)) {
                ends.push_back({row, end});
            }
        }
    }
    return ends;
}

std::vector<int> RowsOfEnds(const std::vector<RowEnd>& ends) {
    std::vector<int> rows;
    for (const RowEnd& end : ends) {
        if (rows.empty() || rows.back() != end.Row) {
            rows.push_back(end.Row);
        }
    }
    return rows;
}

} // namespace quench
