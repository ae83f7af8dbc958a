#pragma once

// The progress seam of a run on the desktop: frmStatus with its Cancel, frmDisplaying when the
// user opened it, and the yield that turns the event loop so that the windows repaint, move and
// take Cancel and the boxes of the iteration display while the run goes on.

#include "core/progress.h"
#include "gui/displaying_window.h"
#include "gui/status_window.h"

#include <QObject>
#include <QPointer>

namespace quench::gui {

class RunProgress final : public QObject, public Progress {
    Q_OBJECT

public:
    explicit RunProgress(QWidget* owner);
    ~RunProgress() override;

    // The iteration display opened by the Display button (nothing when it is closed).
    void SetDisplay(DisplayingWindow* display);
    DisplayingWindow* Display() const { return display_.data(); }
    StatusWindow* Status() const { return status_; }

    // Cancel from the Calculation screen or frmStatus.
    void RequestCancel() { cancelRequested_ = true; }
    bool CancelRequested() const { return cancelRequested_; }

    void ShowStatus() override;
    void CloseStatus() override;
    void SetCaption(std::string_view caption) override;
    void SetLabel(std::string_view label) override;
    void SetGauge(int percent) override;
    void SetGaugeLabelsVisible(bool visible) override;

    bool IsDisplayOpen() const override;
    void CloseDisplay() override;
    void SetStatusText(std::string_view text) override;
    void SetPercentText(std::string_view text) override;
    void SetHmdText(std::string_view text) override;
    void ShowIteration(const IterationRow& row) override;
    void ShowIterationControls(const IterationControls& controls) override;
    IterationControls TakeIterationControls() override;

    bool Yield() override;

private:
    void PlaceBesideDisplay();

    StatusWindow* status_;
    QPointer<DisplayingWindow> display_;
    bool cancelRequested_ = false;
};

} // namespace quench::gui
