#include "gui/network_layout_window.h"

#include <QHBoxLayout>
#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

constexpr Rgb PipeColor{0, 0, 0};
constexpr Rgb SprinklerColor{192, 0, 0};
constexpr Rgb NumberColor{0, 0, 255};
constexpr int PipeWidth = 8;
constexpr int SprinklerSize = 30;
constexpr int JunctionSize = 20;

PaintItem Block(int left, int top, int size, Rgb color) {
    PaintItem item;
    item.What = PaintItem::Kind::Rectangle;
    item.Left = left;
    item.Top = top;
    item.Right = left + size;
    item.Bottom = top + size;
    item.Filled = true;
    item.Brush = color;
    return item;
}

// The largest rectangle of the page's shape inside the box, centred in it.
QRectF Fitted(const PaintedDocument& document, const QRectF& box) {
    const double scale =
        std::min(box.width() / document.PageWidth, box.height() / document.PageHeight);
    const QSizeF size(document.PageWidth * scale, document.PageHeight * scale);
    return QRectF(box.center() - QPointF(size.width() / 2, size.height() / 2), size);
}

} // namespace

PaintedDocument LayoutDocument(const NetworkDrawing& drawing) {
    PaintedDocument document;
    document.PageWidth = DrawingWidth;
    document.PageHeight = DrawingHeight;
    std::vector<PaintItem>& page = document.Pages.emplace_back();
    for (const PictureLine& line : drawing.Lines) {
        PaintItem item;
        item.What = PaintItem::Kind::Line;
        item.Left = line.From.X;
        item.Top = line.From.Y;
        item.Right = line.To.X;
        item.Bottom = line.To.Y;
        item.Color = PipeColor;
        item.PenWidth = PipeWidth;
        page.push_back(item);
    }
    for (const PictureNode& node : drawing.Nodes) {
        const int size = node.Sprinkler ? SprinklerSize : JunctionSize;
        page.push_back(Block(node.At.X - size / 2, node.At.Y - size / 2, size,
                             node.Sprinkler ? SprinklerColor : PipeColor));
    }
    for (const Dot& dot : drawing.Dots) {
        page.push_back(Block(dot.Left, dot.Top, DotSize, NumberColor));
    }
    return document;
}

void PrintLayout(const PaintedDocument& document, QPagedPaintDevice& device) {
    QPainter painter(&device);
    const QRectF page(0, 0, device.width(), device.height());
    document.PaintPage(painter, 1, Fitted(document, page));
}

NetworkPicture::NetworkPicture(QWidget* parent) : QWidget(parent) {
    setObjectName("picLayout");
    setMinimumSize(330, 200);
}

void NetworkPicture::SetDocument(const PaintedDocument* document) {
    document_ = document;
    update();
}

QSize NetworkPicture::sizeHint() const {
    return {990, 600};
}

void NetworkPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    if (document_ != nullptr) {
        document_->PaintPage(painter, 1, Fitted(*document_, QRectF(rect()).adjusted(4, 4, -4, -4)));
    }
}

NetworkLayoutWindow::NetworkLayoutWindow(const QString& name, QWidget* parent)
    : QDialog(parent), picture_(new NetworkPicture(this)),
      print_(new QPushButton(tr("Print Layout"), this)) {
    setObjectName(name);
    setWindowTitle(tr("Network Layout"));
    print_->setObjectName("cmdPrintLayout");
    auto* close = new QPushButton(tr("Close"), this);
    close->setObjectName("cmdClose");
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(print_);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(picture_, 1);
    layout->addLayout(buttons);
    connect(print_, &QPushButton::clicked, this, &NetworkLayoutWindow::PrintWithDialog);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    picture_->SetDocument(&document_);
}

NetworkLayoutWindow::~NetworkLayoutWindow() = default;

void NetworkLayoutWindow::ShowDrawing(const NetworkDrawing& drawing) {
    document_ = LayoutDocument(drawing);
    picture_->SetDocument(&document_);
}

void NetworkLayoutWindow::PrintWithDialog() {
    // One printer for the window's life, so the choices of the dialog hold for the next print.
    if (!printer_) {
        printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
        printer_->setPageOrientation(QPageLayout::Landscape);
    }
    QPrintDialog dialog(printer_.get(), this);
    if (dialog.exec() == QDialog::Accepted) {
        PrintLayout(document_, *printer_);
    }
}

} // namespace quench::gui
