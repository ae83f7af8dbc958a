#pragma once

// How often a run talks to the user while it iterates: the iteration display and the event loop
// get a turn every few hundredths of a second rather than at every step, so that drawing does
// not slow a step of a few microseconds, and Cancel is still answered well within a tenth of a
// second.

#include <chrono>

namespace quench {

class ProgressPace {
public:
    static constexpr std::chrono::milliseconds Interval{25};

    // True once the interval has passed since the last turn; the turn starts now.
    bool Due() {
        const auto now = std::chrono::steady_clock::now();
        if (now - last_ < Interval) {
            return false;
        }
        last_ = now;
        return true;
    }

private:
    std::chrono::steady_clock::time_point last_{};
};

} // namespace quench
