#include "gui/status_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace quench::gui {

StatusWindow::StatusWindow(QWidget* parent)
    : QDialog(parent, Qt::Tool | Qt::WindowTitleHint | Qt::CustomizeWindowHint),
      label_(new QLabel(this)), bar_(new QProgressBar(this)), lowLabel_(new QLabel("0%", this)),
      highLabel_(new QLabel("100%", this)), cancel_(new QPushButton("&Cancel", this)) {
    setObjectName("frmStatus");
    setModal(false);
    label_->setObjectName("lblStatus");
    bar_->setObjectName("ProgressBar");
    bar_->setRange(0, 100);
    bar_->setTextVisible(false);
    cancel_->setObjectName("cmdCancel");
    highLabel_->setAlignment(Qt::AlignRight);
    auto* layout = new QGridLayout(this);
    layout->addWidget(label_, 0, 0, 1, 2);
    layout->addWidget(bar_, 1, 0, 1, 2);
    layout->addWidget(lowLabel_, 2, 0);
    layout->addWidget(highLabel_, 2, 1);
    layout->addWidget(cancel_, 3, 0, 1, 2, Qt::AlignHCenter);
    setMinimumWidth(320);
    connect(cancel_, &QPushButton::clicked, this, &StatusWindow::CancelClicked);
}

void StatusWindow::SetLabel(const QString& text) {
    label_->setText(text);
}

void StatusWindow::SetGauge(int percent) {
    bar_->setValue(std::clamp(percent, 0, 100));
}

void StatusWindow::SetGaugeLabelsVisible(bool visible) {
    lowLabel_->setVisible(visible);
    highLabel_->setVisible(visible);
}

// Closing the window is asking to cancel: the run decides when it is gone.
void StatusWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    emit CancelClicked();
}

} // namespace quench::gui
