#pragma once

// The page operations that the report sections need, in the shape of a print-preview control:
// a document of pages, a pen position, fonts and colours as properties, paragraphs, and tables
// laid out by a TableFormat. Positions and widths are twips, 1440 to the inch.
//
// The layout is done here, once, for every back end: text is wrapped, rows are placed, and a row
// that would pass the bottom margin starts a new page, after which the handler the section set
// draws the page frame and the column headings again. A back end only measures and draws: one
// paints with QPainter (PDF, printer, preview), one writes plain text for tests and golden files.

#include "reports/table_format.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace quench {

struct Rgb {
    std::uint8_t Red = 0;
    std::uint8_t Green = 0;
    std::uint8_t Blue = 0;

    bool operator==(const Rgb&) const = default;
};

struct FontSpec {
    std::string Name = "Arial";
    double Size = 10; // points
    bool Bold = false;
    bool Italic = false;

    bool operator==(const FontSpec&) const = default;
};

enum class BrushStyle { Solid, Transparent };

// A twip value from hundredths of an inch, and back, each rounded to a whole number.
int TwipsFromHundredths(double hundredths);
double HundredthsFromTwips(int twips);

constexpr int TwipsPerInch = 1440;
constexpr int TwipsPerPoint = 20;

class ReportCanvas {
public:
    virtual ~ReportCanvas() = default;

    // The document. StartDoc opens page 1; NewPage the next one; EndDoc closes the document and
    // KillDoc throws it away. Action 3 ends the document as EndDoc does.
    void StartDoc();
    void EndDoc();
    void NewPage();
    void KillDoc();
    void Action(int code);
    bool Open() const { return open_; }
    int PageCount() const { return pages_; }

    // The page, in twips. Letter paper with half-inch side margins by default.
    int PageWidth = 12240;
    int PageHeight = 15840;
    int MarginLeft = 720;
    int MarginRight = 720;
    int MarginTop = 720;
    int MarginBottom = 1080;
    int ContentWidth() const { return PageWidth - MarginLeft - MarginRight; }
    int ContentBottom() const { return PageHeight - MarginBottom; }

    // The pen.
    int CurrentX = 0;
    int CurrentY = 0;

    // Type: the body font (FontName, FONTSIZE, FontBold, FontItalic), its colour, and the font of
    // table headings (HdrFontName, HdrFontSize, HdrFontBold).
    FontSpec Font;
    Rgb TextColor;
    FontSpec HdrFont;

    // Drawing: a filled rectangle takes the brush inside and the pen around it.
    Rgb BrushColor{255, 255, 255};
    quench::BrushStyle BrushStyle = BrushStyle::Solid;
    Rgb PenColor;
    int PenWidth = 0; // twips; 0 draws no outline

    // Settings that paragraphs and tables read.
    CellAlign TextAlign = CellAlign::Left;
    int TableBorder = 1; // 0 no rules, 1 rules around the headings
    bool PageBorder = false;
    int Columns = 1;
    int LineSpacing = 100; // per cent of the font's height

    // Text. Paragraph writes a wrapped text across the margins at CurrentY, aligned by
    // TextAlign, and moves the pen below it (a new page first when it does not fit). Text writes
    // at the pen without wrapping and moves it right.
    void Paragraph(std::string_view text);
    void Text(std::string_view text);
    int TextWid(std::string_view text) const;
    // The height of a text wrapped to a width in the body font.
    int Measure(std::string_view text, int width) const;
    int LineHeight(const FontSpec& font) const;

    void Rectangle(int left, int top, int right, int bottom);
    void Line(int left, int top, int right, int bottom);
    // A picture scaled into the box, keeping its shape; false when it cannot be read.
    bool Picture(const std::filesystem::path& file, int left, int top, int width, int height);

    // A table: the format, a heading row ("a|b|c", none when empty) and a body (rows ending in
    // ";"). The form with cells is for texts that may hold "|" or ";" themselves.
    void AddTable(std::string_view format, std::string_view heading, std::string_view body);
    void AddTable(const TableFormat& format, const TableRow& heading,
                  const std::vector<TableRow>& body);

    // A new page now, through the page handler, unless as many one-line body rows as given still
    // fit: the lines of one item stay together.
    void KeepTogether(int rows);

    // Called after each page that the canvas starts for a row or paragraph that did not fit.
    void SetPageHandler(std::function<void()> handler) { pageHandler_ = std::move(handler); }

protected:
    // The back end: metrics in twips, and the drawing of one page at a time.
    virtual int MeasureWidth(const FontSpec& font, std::string_view text) const = 0;
    virtual int FontHeight(const FontSpec& font) const = 0;
    virtual void BeginDocument() {}
    virtual void BeginPage(int page) = 0;
    virtual void EndDocument() {}
    virtual void DiscardDocument() {}
    virtual void DrawText(int left, int top, const FontSpec& font, Rgb color,
                          std::string_view text) = 0;
    virtual void DrawRectangle(int left, int top, int right, int bottom) = 0;
    virtual void DrawLine(int left, int top, int right, int bottom) = 0;
    virtual bool DrawPicture(const std::filesystem::path& file, int left, int top, int width,
                             int height) = 0;
    // What was laid out, for a back end that writes text rather than places it.
    virtual void ParagraphLaidOut(std::string_view /*text*/) {}
    virtual void TableRowLaidOut(const TableRow& /*cells*/, bool /*heading*/) {}

private:
    struct LaidOutCell {
        std::vector<std::string> Lines;
        int Left = 0;
        int Width = 0;
        CellAlign Align = CellAlign::Left;
    };

    std::vector<std::string> BreakWord(const FontSpec& font, std::string_view word,
                                       int width) const;
    std::vector<std::string> Wrap(const FontSpec& font, std::string_view text, int width) const;
    std::vector<LaidOutCell> LayOutRow(const TableFormat& format, const std::vector<int>& widths,
                                       const TableRow& row, const FontSpec& font) const;
    int RowHeight(const std::vector<LaidOutCell>& cells, const FontSpec& font) const;
    void DrawRow(const std::vector<LaidOutCell>& cells, const FontSpec& font, int height,
                 bool heading);
    void DrawAligned(int left, int width, CellAlign align, const FontSpec& font,
                     std::string_view text);
    // A new page when the height does not fit below the pen; true when one was started.
    bool BreakFor(int height);

    bool open_ = false;
    int pages_ = 0;
    bool inHandler_ = false;
    std::function<void()> pageHandler_;
};

} // namespace quench
