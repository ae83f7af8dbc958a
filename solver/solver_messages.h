#pragma once

// The words the solver shows in its message boxes.

namespace quench {

constexpr const char* MaximumIterationsMessage = "Maximum Iterations Exceeded";
constexpr const char* DeviceDivergenceMessage = "DIVERGENCE OCCURRED.  CHECK DATA.";
constexpr const char* CorrectionDivergenceMessage =
    "DIVERGENCE OCCURRED.  CHECK FOR OVERSIZED, MISSING PIPES";
constexpr const char* ResultsOutOfRangeMessage = "Results out of range.";
constexpr const char* SendingDataText = "Sending Data to Displaying Screen";

} // namespace quench
