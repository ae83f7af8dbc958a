#pragma once

// The phases of a solve, in the order of the loop. Each does its work and names the phase that
// comes next; a name earlier in the list is a return into the loop.

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

} // namespace quench
