#pragma once

// The phases of a solve. Each does its work and names the phase that comes next; a phase earlier
// in the loop than the one that names it is a return into the loop, which the run's budget counts.

namespace quench {

enum class Phase {
    SetUp,            // resets, tables, options, seeding, the first HMD node
    PassHead,         // the sizing step when autosizing
    Conductances,     // conductances from the current lengths
    PassStart,        // cancel test, damping, a fresh iteration count
    Iterate,          // Newton steps until converged or the soft limit
    LeaveIteration,   // the solution into the tables
    DeviceCheck,      // device lengths against their losses
    AfterDevices,     // back for changed devices, or on to the rounds
    HmdRound,         // Demand: the HMD node chosen again
    Peaking,          // the area group round
    Retest,           // sizing again, or the Demand re-test of the HMD node
    CompleteSolution, // the iteration limit after a first solution, the target check
    DensityCheck,     // Demand: the density loop
    ConvergenceCheck, // back while not converged or short of density
    Overshoot,        // Demand: a lower start when the HMD is over-pressured
    Accept,           // the accepted solution and its closing tests
    Close,            // the summary
    Done,
    Stop, // failed or cancelled: nothing accepted
};

// The place of a phase in the loop, written out: returns are told by it, not by the enum's order.
constexpr int LoopPlace(Phase phase) {
    switch (phase) {
    case Phase::SetUp:
        return 2;
    case Phase::PassHead:
        return 8;
    case Phase::Conductances:
        return 9;
    case Phase::PassStart:
        return 10;
    case Phase::Iterate:
        return 12;
    case Phase::LeaveIteration:
        return 17;
    case Phase::DeviceCheck:
        return 19;
    case Phase::AfterDevices:
        return 20;
    case Phase::HmdRound:
        return 21;
    case Phase::Peaking:
        return 22;
    case Phase::Retest:
        return 24;
    case Phase::CompleteSolution:
        return 26;
    case Phase::DensityCheck:
        return 27;
    case Phase::ConvergenceCheck:
        return 28;
    case Phase::Overshoot:
        return 29;
    case Phase::Accept:
        return 30;
    case Phase::Close:
        return 31;
    case Phase::Done:
    case Phase::Stop:
        break;
    }
    return 32;
}

// A step from one phase to an earlier one of the loop.
constexpr bool IsReturnIntoLoop(Phase from, Phase to) {
    return to != Phase::Stop && to != Phase::Done && LoopPlace(to) < LoopPlace(from);
}

} // namespace quench
