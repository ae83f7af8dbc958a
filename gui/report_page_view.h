#pragma once

// One page of a painted report on screen, at a zoom in per cent of its printed size. The same
// PaintPage that writes the PDF and feeds the printer draws it.

#include "gui/report_painter/painted_document.h"

#include <QWidget>

namespace quench::gui {

class ReportPageView : public QWidget {
    Q_OBJECT

public:
    explicit ReportPageView(QWidget* parent = nullptr);

    void SetDocument(const PaintedDocument* document);
    void SetPage(int page);
    void SetZoom(int percent);
    int Page() const { return page_; }
    int Zoom() const { return zoom_; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSizeF PageSize() const;

    const PaintedDocument* document_ = nullptr;
    int page_ = 1;
    int zoom_ = 100;
};

} // namespace quench::gui
