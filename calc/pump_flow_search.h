#pragma once

// The flow at which a Supply run takes the pump curve's boost for its next pass. Each pass takes
// the boost at one flow and finds the flow that the network then draws through the pump; the pump
// has settled where the two agree. A step first takes the flow found, as a designer would by hand.
// On a falling curve that step overshoots, so two passes soon lie on either side of the settled
// flow; from then on the next flow is interpolated between the two sides (false position, with
// the Illinois halving), which settles in a few passes even where the curve is so steep that the
// plain step would swing ever wider.

#include <optional>

namespace quench {

class PumpFlowSearch {
public:
    // A pass took the boost at `taken` and found `found` through the pump: the flow for the next.
    double Next(double taken, double found);

private:
    struct Sample {
        double Flow = 0;
        double Excess = 0; // found less taken
    };

    void Record(const Sample& sample);

    std::optional<Sample> drawsMore_; // a flow below the settled one: the network drew more
    std::optional<Sample> drawsLess_; // a flow above it
    int lastSide_ = 0;                // +1 or -1: the side the last sample replaced
};

} // namespace quench
