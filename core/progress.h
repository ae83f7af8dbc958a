#pragma once

// What a long run shows while it works: the status window (caption, label, gauge, Cancel) and the
// iteration display (its live boxes and its list of iterations). The desktop pumps its event loop
// in Yield; the command line draws a progress line; tests count the calls.

#include <optional>
#include <string_view>

namespace quench {

// One line of the iteration list.
struct IterationRow {
    long Iteration = 0;
    double AverageImbalance = 0;
    double MaximumImbalance = 0;
    double AllowableImbalance = 0;
    double DampingFactor = 0;
};

// The three boxes of the iteration display: the damping factors and the soft iteration limit.
// Shown to the user as the run uses them; handed back when the user typed a new value.
struct IterationControls {
    std::optional<double> InitialDamping;
    std::optional<double> MinimumDamping;
    std::optional<double> IterationLimit;
};

class Progress {
public:
    virtual ~Progress() = default;

    // The status window.
    virtual void ShowStatus() {}
    virtual void CloseStatus() {}
    virtual void SetCaption(std::string_view) {}
    virtual void SetLabel(std::string_view) {}
    virtual void SetGauge(int /*percent*/) {}
    virtual void SetGaugeLabelsVisible(bool) {}

    // The iteration display, when it is open.
    virtual bool IsDisplayOpen() const { return false; }
    virtual void CloseDisplay() {}
    virtual void SetStatusText(std::string_view) {}
    virtual void SetPercentText(std::string_view) {}
    virtual void SetHmdText(std::string_view) {}
    virtual void ShowIteration(const IterationRow&) {}
    virtual void ShowIterationControls(const IterationControls&) {}
    // What the user typed in the boxes since the last call; empty fields for no change.
    virtual IterationControls TakeIterationControls() { return {}; }

    // One round of the user interface; true when Cancel has been pressed.
    virtual bool Yield() { return false; }
};

class NoProgress final : public Progress {};

} // namespace quench
