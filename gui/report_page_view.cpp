#include "gui/report_page_view.h"

#include <QPaintEvent>
#include <QPainter>

namespace quench::gui {

namespace {

constexpr int Border = 12; // pixels of grey around the page

} // namespace

ReportPageView::ReportPageView(QWidget* parent) : QWidget(parent) {
    setAutoFillBackground(false);
}

void ReportPageView::SetDocument(const PaintedDocument* document) {
    document_ = document;
    updateGeometry();
    update();
}

void ReportPageView::SetPage(int page) {
    page_ = page;
    update();
}

void ReportPageView::SetZoom(int percent) {
    zoom_ = std::clamp(percent, 10, 400);
    resize(sizeHint());
    updateGeometry();
    update();
}

QSizeF ReportPageView::PageSize() const {
    const double width = document_ ? document_->PageWidth : 12240;
    const double height = document_ ? document_->PageHeight : 15840;
    const double scale = logicalDpiX() / static_cast<double>(TwipsPerInch) * zoom_ / 100.0;
    return {width * scale, height * scale};
}

QSize ReportPageView::sizeHint() const {
    const QSizeF page = PageSize();
    return QSize(static_cast<int>(page.width()) + 2 * Border,
                 static_cast<int>(page.height()) + 2 * Border);
}

void ReportPageView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), QColor(128, 128, 128));
    const QSizeF size = PageSize();
    const QRectF page(std::max(static_cast<double>(Border), (width() - size.width()) / 2), Border,
                      size.width(), size.height());
    painter.fillRect(page.translated(4, 4), QColor(64, 64, 64));
    if (document_ == nullptr || document_->PageCount() == 0) {
        painter.fillRect(page, Qt::white);
        return;
    }
    document_->PaintPage(painter, std::clamp(page_, 1, document_->PageCount()), page);
}

} // namespace quench::gui
