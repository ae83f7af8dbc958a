#pragma once

// A report laid out on the ReportCanvas and kept as pages of drawing items, so that any page can
// be painted any number of times on any QPainter: the PDF writer, the printer and the preview
// all go through PaintPage.

#include "reports/report_canvas.h"

#include <map>
#include <memory>
#include <vector>

#include <QFont>
#include <QImage>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QRectF>
#include <QString>

namespace quench {

struct PaintItem {
    enum class Kind { Text, Rectangle, Line, Picture };
    Kind What = Kind::Text;
    int Left = 0, Top = 0, Right = 0, Bottom = 0; // twips
    QString Text;
    FontSpec Font;
    Rgb Color; // the text's colour, or the pen's
    Rgb Brush; // a rectangle's fill
    bool Filled = false;
    int PenWidth = 0;
    int Image = -1; // place in the document's pictures
};

class PaintedDocument {
public:
    int PageWidth = 12240;
    int PageHeight = 15840;
    std::vector<std::vector<PaintItem>> Pages;
    std::vector<QImage> Images;

    int PageCount() const { return static_cast<int>(Pages.size()); }
    // Page 1 and on, scaled into the target rectangle of the painter's device.
    void PaintPage(QPainter& painter, int page, const QRectF& target) const;
};

// Pages first to last, one to a page of the device (a PDF writer or a printer).
void PaintPages(const PaintedDocument& document, QPagedPaintDevice& device, int first, int last);

// A font of the report measured in twips: its pixel size is the size in twips, so the metrics do
// not depend on any device's resolution.
QFont TwipFont(const FontSpec& font);

class PaintCanvas final : public ReportCanvas {
public:
    explicit PaintCanvas(PaintedDocument& document) : document_(document) {}

protected:
    int MeasureWidth(const FontSpec& font, std::string_view text) const override;
    int FontHeight(const FontSpec& font) const override;
    void BeginDocument() override;
    void BeginPage(int page) override;
    void DiscardDocument() override;
    void DrawText(int left, int top, const FontSpec& font, Rgb color,
                  std::string_view text) override;
    void DrawRectangle(int left, int top, int right, int bottom) override;
    void DrawLine(int left, int top, int right, int bottom) override;
    bool DrawPicture(const std::filesystem::path& file, int left, int top, int width,
                     int height) override;

private:
    struct Metrics;
    const Metrics& MetricsOf(const FontSpec& font) const;

    PaintedDocument& document_;
    mutable std::vector<std::pair<FontSpec, std::shared_ptr<Metrics>>> metrics_;
};

} // namespace quench
