#include "calc/pump_flow_search.h"

namespace quench {

void PumpFlowSearch::Record(const Sample& sample) {
    // A side kept twice running has its excess halved, so that the interpolation moves off it.
    if (sample.Excess > 0) {
        if (lastSide_ > 0 && drawsLess_) {
            drawsLess_->Excess /= 2;
        }
        drawsMore_ = sample;
        lastSide_ = 1;
    } else {
        if (lastSide_ < 0 && drawsMore_) {
            drawsMore_->Excess /= 2;
        }
        drawsLess_ = sample;
        lastSide_ = -1;
    }
}

double PumpFlowSearch::Next(double taken, double found) {
    Record(Sample{taken, found - taken});
    if (!drawsMore_ || !drawsLess_) {
        return found;
    }
    const Sample& more = *drawsMore_;
    const Sample& less = *drawsLess_;
    return more.Flow - more.Excess * (less.Flow - more.Flow) / (less.Excess - more.Excess);
}

} // namespace quench
