#include "gui/report_painter/painted_document.h"

#include "gui/qt_text.h"

#include <cmath>

#include <QColor>
#include <QFontMetricsF>
#include <QPen>

namespace quench {

namespace {

QColor ToColor(Rgb color) {
    return QColor(color.Red, color.Green, color.Blue);
}

} // namespace

QFont TwipFont(const FontSpec& wanted) {
    QFont font(QString::fromStdString(wanted.Name));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(wanted.Size * TwipsPerPoint))));
    font.setBold(wanted.Bold);
    font.setItalic(wanted.Italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::ForceOutline);
    return font;
}

struct PaintCanvas::Metrics {
    explicit Metrics(const FontSpec& wanted) : Font(TwipFont(wanted)), Measure(Font) {}
    QFont Font;
    QFontMetricsF Measure;
};

const PaintCanvas::Metrics& PaintCanvas::MetricsOf(const FontSpec& font) const {
    for (const auto& [known, metrics] : metrics_) {
        if (known == font) {
            return *metrics;
        }
    }
    metrics_.emplace_back(font, std::make_shared<Metrics>(font));
    return *metrics_.back().second;
}

int PaintCanvas::MeasureWidth(const FontSpec& font, std::string_view text) const {
    return static_cast<int>(std::ceil(MetricsOf(font).Measure.horizontalAdvance(gui::Text(text))));
}

int PaintCanvas::FontHeight(const FontSpec& font) const {
    return static_cast<int>(std::ceil(MetricsOf(font).Measure.height()));
}

void PaintCanvas::BeginDocument() {
    document_.Pages.clear();
    document_.Images.clear();
    document_.PageWidth = PageWidth;
    document_.PageHeight = PageHeight;
}

void PaintCanvas::BeginPage(int) {
    document_.Pages.emplace_back();
}

void PaintCanvas::DiscardDocument() {
    document_.Pages.clear();
    document_.Images.clear();
}

void PaintCanvas::DrawText(int left, int top, const FontSpec& font, Rgb color,
                           std::string_view text) {
    if (document_.Pages.empty() || text.empty()) {
        return;
    }
    PaintItem item;
    item.What = PaintItem::Kind::Text;
    item.Left = left;
    item.Top = top;
    item.Text = gui::Text(text);
    item.Font = font;
    item.Color = color;
    document_.Pages.back().push_back(std::move(item));
}

void PaintCanvas::DrawRectangle(int left, int top, int right, int bottom) {
    if (document_.Pages.empty()) {
        return;
    }
    PaintItem item;
    item.What = PaintItem::Kind::Rectangle;
    item.Left = left;
    item.Top = top;
    item.Right = right;
    item.Bottom = bottom;
    item.Filled = BrushStyle == quench::BrushStyle::Solid;
    item.Brush = BrushColor;
    item.Color = PenColor;
    item.PenWidth = PenWidth;
    document_.Pages.back().push_back(std::move(item));
}

void PaintCanvas::DrawLine(int left, int top, int right, int bottom) {
    if (document_.Pages.empty()) {
        return;
    }
    PaintItem item;
    item.What = PaintItem::Kind::Line;
    item.Left = left;
    item.Top = top;
    item.Right = right;
    item.Bottom = bottom;
    item.Color = PenColor;
    item.PenWidth = std::max(PenWidth, 10);
    document_.Pages.back().push_back(std::move(item));
}

bool PaintCanvas::DrawPicture(const std::filesystem::path& file, int left, int top, int width,
                              int height) {
    QImage image;
    if (document_.Pages.empty() || !image.load(QString::fromStdString(file.string())) ||
        image.width() <= 0 || image.height() <= 0) {
        return false;
    }
    // Scaled to fit the box, its shape kept, centred across it.
    const double scale = std::min(static_cast<double>(width) / image.width(),
                                  static_cast<double>(height) / image.height());
    const int shownWidth = static_cast<int>(image.width() * scale);
    const int shownHeight = static_cast<int>(image.height() * scale);
    PaintItem item;
    item.What = PaintItem::Kind::Picture;
    item.Left = left + (width - shownWidth) / 2;
    item.Top = top;
    item.Right = item.Left + shownWidth;
    item.Bottom = top + shownHeight;
    item.Image = static_cast<int>(document_.Images.size());
    document_.Images.push_back(std::move(image));
    document_.Pages.back().push_back(std::move(item));
    return true;
}

void PaintedDocument::PaintPage(QPainter& painter, int page, const QRectF& target) const {
    if (page < 1 || page > PageCount()) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.translate(target.topLeft());
    painter.scale(target.width() / PageWidth, target.height() / PageHeight);
    painter.fillRect(QRectF(0, 0, PageWidth, PageHeight), Qt::white);
    // The fonts of a page are few: each is made once.
    std::vector<std::pair<FontSpec, std::pair<QFont, double>>> fonts;
    const auto fontOf = [&fonts](const FontSpec& wanted) -> const std::pair<QFont, double>& {
        for (const auto& [known, font] : fonts) {
            if (known == wanted) {
                return font;
            }
        }
        QFont font = TwipFont(wanted);
        const double ascent = QFontMetricsF(font).ascent();
        fonts.emplace_back(wanted, std::make_pair(font, ascent));
        return fonts.back().second;
    };
    for (const PaintItem& item : Pages[static_cast<std::size_t>(page - 1)]) {
        switch (item.What) {
        case PaintItem::Kind::Text: {
            const auto& [font, ascent] = fontOf(item.Font);
            painter.setFont(font);
            painter.setPen(ToColor(item.Color));
            painter.drawText(QPointF(item.Left, item.Top + ascent), item.Text);
            break;
        }
        case PaintItem::Kind::Rectangle: {
            const QRectF box(item.Left, item.Top, item.Right - item.Left, item.Bottom - item.Top);
            if (item.Filled) {
                painter.fillRect(box, ToColor(item.Brush));
            }
            if (item.PenWidth > 0) {
                painter.setPen(QPen(ToColor(item.Color), item.PenWidth));
                painter.setBrush(Qt::NoBrush);
                painter.drawRect(box);
            }
            break;
        }
        case PaintItem::Kind::Line:
            painter.setPen(QPen(ToColor(item.Color), item.PenWidth));
            painter.drawLine(QPointF(item.Left, item.Top), QPointF(item.Right, item.Bottom));
            break;
        case PaintItem::Kind::Picture:
            painter.drawImage(
                QRectF(item.Left, item.Top, item.Right - item.Left, item.Bottom - item.Top),
                Images[static_cast<std::size_t>(item.Image)]);
            break;
        }
    }
    painter.restore();
}

} // namespace quench

namespace quench {

void PaintPages(const PaintedDocument& document, QPagedPaintDevice& device, int first, int last) {
    QPainter painter(&device);
    const QRectF page(0, 0, device.width(), device.height());
    for (int number = std::max(1, first); number <= std::min(last, document.PageCount());
         ++number) {
        if (number > std::max(1, first)) {
            device.newPage();
        }
        document.PaintPage(painter, number, page);
    }
}

} // namespace quench
