#include "reports/table_format.h"

#include <algorithm>
#include <cctype>

namespace quench {

namespace {

TableColumn ParseColumn(std::string_view text) {
    TableColumn column;
    std::size_t place = 0;
    for (; place < text.size(); ++place) {
        const char mark = text[place];
        if (mark == '<') {
            column.Align = CellAlign::Left;
        } else if (mark == '>') {
            column.Align = CellAlign::Right;
        } else if (mark == '^') {
            column.Align = CellAlign::Center;
        } else if (mark == '+') {
            column.Plus = true;
        } else if (mark == '_') {
            column.Underline = true;
        } else if (mark != ' ') {
            break;
        }
    }
    int width = 0;
    for (; place < text.size() && std::isdigit(static_cast<unsigned char>(text[place])); ++place) {
        width = std::min(width * 10 + (text[place] - '0'), 1000000);
    }
    column.Width = width;
    return column;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = text.find(separator, start);
        if (end == std::string_view::npos) {
            parts.push_back(text.substr(start));
            return parts;
        }
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
}

} // namespace

bool TableFormat::Underlined() const {
    return std::any_of(Columns.begin(), Columns.end(),
                       [](const TableColumn& column) { return column.Underline; });
}

TableFormat ParseTableFormat(std::string_view format) {
    TableFormat parsed;
    if (format.empty()) {
        return parsed;
    }
    for (std::string_view column : Split(format, '|')) {
        parsed.Columns.push_back(ParseColumn(column));
    }
    return parsed;
}

std::vector<int> ColumnWidths(const TableFormat& format, int lineWidth) {
    std::vector<int> widths;
    int fixed = 0;
    int open = 0;
    for (const TableColumn& column : format.Columns) {
        widths.push_back(column.Width);
        fixed += column.Width;
        open += column.Width == 0 ? 1 : 0;
    }
    if (open > 0) {
        const int share = std::max(0, lineWidth - fixed) / open;
        for (int& width : widths) {
            width = width == 0 ? share : width;
        }
    }
    return widths;
}

TableRow ParseTableRow(std::string_view text) {
    if (!text.empty() && text.back() == ';') {
        text.remove_suffix(1);
    }
    TableRow row;
    for (std::string_view cell : Split(text, '|')) {
        row.emplace_back(cell);
    }
    return row;
}

std::vector<TableRow> ParseTableBody(std::string_view body) {
    std::vector<TableRow> rows;
    std::size_t start = 0;
    while (start < body.size()) {
        const std::size_t end = body.find(';', start);
        if (end == std::string_view::npos) {
            rows.push_back(ParseTableRow(body.substr(start)));
            break;
        }
        rows.push_back(ParseTableRow(body.substr(start, end - start)));
        start = end + 1;
    }
    return rows;
}

std::string JoinTableRow(const TableRow& row) {
    std::string text;
    for (std::size_t cell = 0; cell < row.size(); ++cell) {
        text += (cell == 0 ? "" : "|") + row[cell];
    }
    return text + ";";
}

} // namespace quench
