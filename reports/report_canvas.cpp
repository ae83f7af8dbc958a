#include "reports/report_canvas.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace quench {

namespace {

constexpr int CellPadding = 50; // twips on each side of a cell's text
constexpr int RowPadding = 15;  // twips above and below a row's text
constexpr Rgb HeadingShade{230, 230, 230};

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    std::size_t place = 0;
    while (place < text.size()) {
        const std::size_t start = text.find_first_not_of(' ', place);
        if (start == std::string_view::npos) {
            break;
        }
        const std::size_t end = std::min(text.find(' ', start), text.size());
        words.push_back(text.substr(start, end - start));
        place = end;
    }
    return words;
}

} // namespace

std::vector<std::string> ReportCanvas::BreakWord(const FontSpec& font, std::string_view word,
                                                 int width) const {
    // A word wider than its cell is broken after a "/" or "-" where one fits, else anywhere.
    std::vector<std::string> pieces;
    while (!word.empty() && MeasureWidth(font, word) > width) {
        std::size_t cut = 0;
        std::size_t soft = 0;
        for (std::size_t end = 1; end < word.size(); ++end) {
            if ((static_cast<unsigned char>(word[end]) & 0xC0) == 0x80) {
                continue; // inside a UTF-8 character
            }
            if (MeasureWidth(font, word.substr(0, end)) > width) {
                break;
            }
            cut = end;
            if (word[end - 1] == '/' || word[end - 1] == '-') {
                soft = end;
            }
        }
        cut = soft != 0 ? soft : std::max<std::size_t>(cut, 1);
        pieces.emplace_back(word.substr(0, cut));
        word.remove_prefix(cut);
    }
    if (!word.empty()) {
        pieces.emplace_back(word);
    }
    return pieces;
}

int TwipsFromHundredths(double hundredths) {
    return static_cast<int>(std::lround(hundredths / 100.0 * TwipsPerInch));
}

double HundredthsFromTwips(int twips) {
    return std::round(twips * 100.0 / TwipsPerInch);
}

void ReportCanvas::StartDoc() {
    open_ = true;
    pages_ = 1;
    BeginDocument();
    BeginPage(pages_);
    CurrentX = MarginLeft;
    CurrentY = MarginTop;
}

void ReportCanvas::EndDoc() {
    if (open_) {
        open_ = false;
        EndDocument();
    }
}

void ReportCanvas::NewPage() {
    if (!open_) {
        return;
    }
    ++pages_;
    BeginPage(pages_);
    CurrentX = MarginLeft;
    CurrentY = MarginTop;
}

void ReportCanvas::KillDoc() {
    open_ = false;
    pages_ = 0;
    DiscardDocument();
}

void ReportCanvas::Action(int code) {
    if (code == 3) {
        EndDoc();
    }
}

int ReportCanvas::TextWid(std::string_view text) const {
    return MeasureWidth(Font, text);
}

int ReportCanvas::LineHeight(const FontSpec& font) const {
    return std::max(1, FontHeight(font) * std::max(LineSpacing, 10) / 100);
}

int ReportCanvas::Measure(std::string_view text, int width) const {
    return static_cast<int>(Wrap(Font, text, width).size()) * LineHeight(Font);
}

std::vector<std::string> ReportCanvas::Wrap(const FontSpec& font, std::string_view text,
                                            int width) const {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string line;
        for (std::string_view whole : Words(text.substr(start, end - start))) {
            for (const std::string& word : BreakWord(font, whole, width)) {
                std::string longer = line.empty() ? word : line + " " + word;
                if (!line.empty() && MeasureWidth(font, longer) > width) {
                    lines.push_back(line);
                    line = word;
                } else {
                    line = std::move(longer);
                }
            }
        }
        lines.push_back(line);
        if (end >= text.size()) {
            return lines;
        }
        start = end + 1;
    }
}

bool ReportCanvas::BreakFor(int height) {
    if (inHandler_ || CurrentY + height <= ContentBottom()) {
        return false;
    }
    NewPage();
    if (pageHandler_) {
        inHandler_ = true;
        pageHandler_();
        inHandler_ = false;
    }
    return true;
}

void ReportCanvas::DrawAligned(int left, int width, CellAlign align, const FontSpec& font,
                               std::string_view text) {
    int x = left;
    if (align != CellAlign::Left) {
        const int room = width - MeasureWidth(font, text);
        x += align == CellAlign::Right ? room : room / 2;
    }
    DrawText(x, CurrentY, font, TextColor, text);
}

void ReportCanvas::KeepTogether(int rows) {
    if (open_) {
        BreakFor(rows * (LineHeight(Font) + 2 * RowPadding));
    }
}

void ReportCanvas::Paragraph(std::string_view text) {
    if (!open_) {
        return;
    }
    const std::vector<std::string> lines = Wrap(Font, text, ContentWidth());
    const int lineHeight = LineHeight(Font);
    BreakFor(static_cast<int>(lines.size()) * lineHeight);
    ParagraphLaidOut(text);
    for (const std::string& line : lines) {
        DrawAligned(MarginLeft, ContentWidth(), TextAlign, Font, line);
        CurrentY += lineHeight;
    }
    CurrentX = MarginLeft;
}

void ReportCanvas::Text(std::string_view text) {
    if (!open_) {
        return;
    }
    ParagraphLaidOut(text);
    DrawText(CurrentX, CurrentY, Font, TextColor, text);
    CurrentX += MeasureWidth(Font, text);
}

void ReportCanvas::Rectangle(int left, int top, int right, int bottom) {
    if (open_) {
        DrawRectangle(left, top, right, bottom);
    }
}

void ReportCanvas::Line(int left, int top, int right, int bottom) {
    if (open_) {
        DrawLine(left, top, right, bottom);
    }
}

bool ReportCanvas::Picture(const std::filesystem::path& file, int left, int top, int width,
                           int height) {
    return open_ && DrawPicture(file, left, top, width, height);
}

std::vector<ReportCanvas::LaidOutCell> ReportCanvas::LayOutRow(const TableFormat& format,
                                                               const std::vector<int>& widths,
                                                               const TableRow& row,
                                                               const FontSpec& font) const {
    std::vector<LaidOutCell> cells;
    int left = MarginLeft;
    for (std::size_t column = 0; column < format.Columns.size(); ++column) {
        LaidOutCell cell;
        cell.Left = left;
        cell.Width = widths[column];
        cell.Align = format.Columns[column].Align;
        if (column < row.size() && !row[column].empty()) {
            cell.Lines = Wrap(font, row[column], std::max(1, cell.Width - 2 * CellPadding));
        }
        left += cell.Width;
        cells.push_back(std::move(cell));
    }
    return cells;
}

int ReportCanvas::RowHeight(const std::vector<LaidOutCell>& cells, const FontSpec& font) const {
    std::size_t lines = 1;
    for (const LaidOutCell& cell : cells) {
        lines = std::max(lines, cell.Lines.size());
    }
    return static_cast<int>(lines) * LineHeight(font) + 2 * RowPadding;
}

void ReportCanvas::DrawRow(const std::vector<LaidOutCell>& cells, const FontSpec& font, int height,
                           bool heading) {
    const int top = CurrentY;
    const int right = cells.empty() ? MarginLeft : cells.back().Left + cells.back().Width;
    if (heading && TableBorder > 0) {
        const Rgb brush = BrushColor;
        const quench::BrushStyle style = BrushStyle;
        const int pen = PenWidth;
        BrushColor = HeadingShade;
        BrushStyle = BrushStyle::Solid;
        PenWidth = 0;
        DrawRectangle(MarginLeft, top, right, top + height);
        BrushColor = brush;
        BrushStyle = style;
        PenWidth = pen;
        DrawLine(MarginLeft, top, right, top);
        DrawLine(MarginLeft, top + height, right, top + height);
    }
    const int lineHeight = LineHeight(font);
    for (const LaidOutCell& cell : cells) {
        CurrentY = top + RowPadding;
        for (const std::string& line : cell.Lines) {
            DrawAligned(cell.Left + CellPadding, cell.Width - 2 * CellPadding, cell.Align, font,
                        line);
            CurrentY += lineHeight;
        }
    }
    CurrentY = top + height;
}

void ReportCanvas::AddTable(std::string_view format, std::string_view heading,
                            std::string_view body) {
    AddTable(ParseTableFormat(format), heading.empty() ? TableRow{} : ParseTableRow(heading),
             ParseTableBody(body));
}

void ReportCanvas::AddTable(const TableFormat& format, const TableRow& heading,
                            const std::vector<TableRow>& body) {
    if (!open_ || format.Columns.empty()) {
        return;
    }
    const std::vector<int> widths = ColumnWidths(format, ContentWidth());
    if (!heading.empty()) {
        const auto cells = LayOutRow(format, widths, heading, HdrFont);
        const int height = RowHeight(cells, HdrFont);
        // A heading is not left alone at the foot of a page; after a break the section's handler
        // has drawn the headings again.
        if (!BreakFor(height + LineHeight(Font) + 2 * RowPadding) || !pageHandler_) {
            TableRowLaidOut(heading, true);
            DrawRow(cells, HdrFont, height, true);
        }
    }
    for (const TableRow& row : body) {
        const auto cells = LayOutRow(format, widths, row, Font);
        const int height = RowHeight(cells, Font);
        BreakFor(height);
        TableRowLaidOut(row, false);
        DrawRow(cells, Font, height, false);
    }
    if (format.Underlined()) {
        const int right = MarginLeft + std::accumulate(widths.begin(), widths.end(), 0);
        DrawLine(MarginLeft, CurrentY, right, CurrentY);
    }
    CurrentX = MarginLeft;
}

} // namespace quench
