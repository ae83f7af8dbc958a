#include "gui/run_progress.h"

#include "gui/qt_text.h"

#include <QCoreApplication>

namespace quench::gui {

RunProgress::RunProgress(QWidget* owner) : status_(new StatusWindow(owner)) {
    connect(status_, &StatusWindow::CancelClicked, this, [this] { cancelRequested_ = true; });
}

RunProgress::~RunProgress() {
    delete status_;
}

void RunProgress::SetDisplay(DisplayingWindow* display) {
    display_ = display;
    // When the display goes during a run, the status window comes to the front.
    connect(display, &QObject::destroyed, status_, [this] {
        if (status_->isVisible()) {
            status_->raise();
        }
    });
}

void RunProgress::ShowStatus() {
    cancelRequested_ = false;
    PlaceBesideDisplay();
    status_->show();
    status_->raise();
}

void RunProgress::CloseStatus() {
    status_->hide();
}

void RunProgress::SetCaption(std::string_view caption) {
    status_->setWindowTitle(Latin1(caption));
}

void RunProgress::SetLabel(std::string_view label) {
    status_->SetLabel(Latin1(label));
}

void RunProgress::SetGauge(int percent) {
    status_->SetGauge(percent);
}

void RunProgress::SetGaugeLabelsVisible(bool visible) {
    status_->SetGaugeLabelsVisible(visible);
}

bool RunProgress::IsDisplayOpen() const {
    return display_ != nullptr && display_->isVisible();
}

void RunProgress::CloseDisplay() {
    if (display_ != nullptr) {
        display_->close();
    }
}

void RunProgress::SetStatusText(std::string_view text) {
    if (IsDisplayOpen()) {
        display_->SetStatusText(Latin1(text));
    }
}

void RunProgress::SetPercentText(std::string_view text) {
    if (IsDisplayOpen()) {
        display_->SetPercentText(Latin1(text));
    }
}

void RunProgress::SetHmdText(std::string_view text) {
    if (IsDisplayOpen()) {
        display_->SetHmdText(Latin1(text));
    }
}

void RunProgress::ShowIteration(const IterationRow& row) {
    if (IsDisplayOpen()) {
        display_->ShowIteration(row);
    }
}

void RunProgress::ShowIterationControls(const IterationControls& controls) {
    if (IsDisplayOpen()) {
        display_->ShowControls(controls);
    }
}

IterationControls RunProgress::TakeIterationControls() {
    return display_ != nullptr ? display_->TakeTyped() : IterationControls{};
}

bool RunProgress::Yield() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    return cancelRequested_;
}

// frmStatus stands beside the iteration display rather than over it.
void RunProgress::PlaceBesideDisplay() {
    if (!IsDisplayOpen()) {
        return;
    }
    const QRect display = display_->frameGeometry();
    status_->adjustSize();
    status_->move(display.right() + 8, display.top());
}

} // namespace quench::gui
