#pragma once

// frmTreeGrid and frmGrid ("Network Layout"): the picture of the network that a builder would
// make, with "Print Layout" and "Close". The drawing is one page of the report painter, so the
// window, the printer and a PDF all paint it through the same PaintPage.

#include "entry/network_layout.h"
#include "gui/report_painter/painted_document.h"

#include <memory>

#include <QDialog>

class QPagedPaintDevice;
class QPrinter;
class QPushButton;

namespace quench::gui {

// The drawing as a page of 6600 by 4000 units: pipes and their other nodes in black, sprinklers
// as red squares, the node numbers in blue dots.
PaintedDocument LayoutDocument(const NetworkDrawing& drawing);

// The drawing on the device's page, its shape kept and centred (a landscape page fits it best).
void PrintLayout(const PaintedDocument& document, QPagedPaintDevice& device);

// The picture: the page scaled to the widget, its shape kept.
class NetworkPicture : public QWidget {
    Q_OBJECT

public:
    explicit NetworkPicture(QWidget* parent = nullptr);
    void SetDocument(const PaintedDocument* document);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const PaintedDocument* document_ = nullptr;
};

class NetworkLayoutWindow : public QDialog {
    Q_OBJECT

public:
    // name: "frmTreeGrid" for the tree, "frmGrid" for the grid.
    NetworkLayoutWindow(const QString& name, QWidget* parent = nullptr);
    ~NetworkLayoutWindow() override;

    void ShowDrawing(const NetworkDrawing& drawing);
    const PaintedDocument& Document() const { return document_; }
    NetworkPicture* Picture() const { return picture_; }
    QPushButton* PrintButton() const { return print_; }

    // "Print Layout": the print dialog, then the page on the printer chosen.
    void PrintWithDialog();

private:
    PaintedDocument document_;
    NetworkPicture* picture_;
    QPushButton* print_;
    std::unique_ptr<QPrinter> printer_;
};

} // namespace quench::gui
