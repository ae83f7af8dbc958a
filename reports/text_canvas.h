#pragma once

// A ReportCanvas that writes the document as plain text, for tests and golden files: a line
// "--- page N ---" at each page, each paragraph on a line, and each table row on one line with
// its cells joined by " | " (heading rows in brackets). The metrics are fixed (a character is
// half the font's size wide), so the pages break the same on every machine.

#include "reports/report_canvas.h"

#include <string>

namespace quench {

class TextCanvas final : public ReportCanvas {
public:
    // The document so far.
    const std::string& Result() const { return text_; }

protected:
    int MeasureWidth(const FontSpec& font, std::string_view text) const override;
    int FontHeight(const FontSpec& font) const override;
    void BeginDocument() override { text_.clear(); }
    void BeginPage(int page) override;
    void DiscardDocument() override { text_.clear(); }
    void DrawText(int, int, const FontSpec&, Rgb, std::string_view) override {}
    void DrawRectangle(int, int, int, int) override {}
    void DrawLine(int, int, int, int) override {}
    bool DrawPicture(const std::filesystem::path& file, int, int, int, int) override;
    void ParagraphLaidOut(std::string_view text) override;
    void TableRowLaidOut(const TableRow& cells, bool heading) override;

private:
    std::string text_;
};

} // namespace quench
