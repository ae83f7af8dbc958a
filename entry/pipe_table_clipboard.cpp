#include "entry/pipe_table_clipboard.h"

#include "core/text.h"
#include "entry/device_loss_text.h"
#include "entry/k_factor_text.h"

#include <algorithm>

namespace quench {

namespace {

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (true) {
        const std::size_t at = text.find(separator, start);
        parts.emplace_back(text.substr(start, at == std::string_view::npos ? at : at - start));
        if (at == std::string_view::npos) {
            return parts;
        }
        start = at + 1;
    }
}

std::vector<std::string> Lines(std::string_view text) {
    std::string cleaned;
    cleaned.reserve(text.size());
    for (char character : text) {
        if (character != '\r') {
            cleaned.push_back(character);
        }
    }
    while (!cleaned.empty() && cleaned.back() == '\n') {
        cleaned.pop_back();
    }
    return Split(cleaned, '\n');
}

std::string Refusal(int row, PipeColumn column, const Project& project, std::string_view text) {
    return "Row " + std::to_string(row) + ", " + ColumnCaption(column, project) + ": \"" +
           std::string(text) + "\" was refused";
}

// The cell typed key by key into an empty field: the text the field then holds, or nothing.
std::optional<std::string> Typed(PipeTable& table, int row, PipeColumn column,
                                 const std::string& text) {
    if ((column == PipeColumn::KFactorB || column == PipeColumn::KFactorE) && KFactorWord(text)) {
        return *KFactorWord(text);
    }
    if (column == PipeColumn::DeviceLoss && EqualsIgnoreCase(text, PumpCurveLossText)) {
        return std::string(PumpCurveLossText); // the row decides whether the word is taken
    }
    FieldState field;
    for (char key : text) {
        const KeyOutcome outcome = table.FilterKey(row, column, key, field);
        if (!outcome.Accepted) {
            return std::nullopt;
        }
        field = outcome.Field;
    }
    return field.Text;
}

bool PasteStatus(PipeTable& table, int row, const std::string& text, PasteOutcome& outcome) {
    const bool wanted = EqualsIgnoreCase(text, ActiveCaption);
    if (!wanted && !EqualsIgnoreCase(text, InactiveCaption)) {
        return false;
    }
    const bool active = IsTrue(table.Model().PipeRecord[static_cast<std::size_t>(row)].Active);
    if (active != wanted && table.ToggleStatus(row).empty()) {
        return false;
    }
    outcome.Rows.push_back(row);
    return true;
}

bool PasteCell(PipeTable& table, int row, PipeColumn column, const std::string& text,
               PasteOutcome& outcome) {
    if (column == PipeColumn::EquivLength) {
        return true;
    }
    if (column == PipeColumn::Active) {
        return PasteStatus(table, row, text, outcome);
    }
    const std::optional<std::string> typed = Typed(table, row, column, text);
    if (!typed) {
        return false;
    }
    const PipeEdit edit = table.Enter(row, column, *typed);
    for (int each : edit.Rows) {
        if (std::find(outcome.Rows.begin(), outcome.Rows.end(), each) == outcome.Rows.end()) {
            outcome.Rows.push_back(each);
        }
    }
    outcome.NodesChanged = outcome.NodesChanged || edit.NodesChanged;
    return !edit.Refused;
}

} // namespace

std::string CopyCells(const PipeTable& table, int firstRow, int lastRow, PipeColumn firstColumn,
                      PipeColumn lastColumn) {
    std::string text;
    for (int row = std::max(firstRow, 1); row <= std::min(lastRow, MaxPipes); ++row) {
        const RowView view = table.Show(row);
        for (int column = IndexOf(firstColumn); column <= IndexOf(lastColumn); ++column) {
            if (column != IndexOf(firstColumn)) {
                text += '\t';
            }
            text += view[ColumnAt(column)];
        }
        text += '\n';
    }
    return text;
}

PasteOutcome PasteCells(PipeTable& table, int row, PipeColumn column, std::string_view text) {
    PasteOutcome outcome;
    const std::vector<std::string> lines = Lines(text);
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const int target = row + static_cast<int>(line);
        const std::vector<std::string> cells = Split(lines[line], '\t');
        for (std::size_t cell = 0; cell < cells.size(); ++cell) {
            const int index = IndexOf(column) + static_cast<int>(cell);
            const std::string value = Trim(cells[cell]);
            if (target > MaxPipes || index >= PipeColumnCount) {
                outcome.Refused.push_back("Row " + std::to_string(target) + ", column " +
                                          std::to_string(index + 1) + ": \"" + value +
                                          "\" lies outside the table");
                continue;
            }
            if (!PasteCell(table, target, ColumnAt(index), value, outcome)) {
                outcome.Refused.push_back(Refusal(target, ColumnAt(index), table.Model(), value));
            }
        }
        if (target <= MaxPipes) {
            for (int each : table.LeaveRow(target)) {
                outcome.Rows.push_back(each);
            }
        }
    }
    return outcome;
}

std::string PasteReport(const PasteOutcome& outcome) {
    std::string report = "These cells were not pasted:";
    for (const std::string& line : outcome.Refused) {
        report += "\n" + line;
    }
    return report;
}

} // namespace quench
