#pragma once

// Everything the solver keeps while it works on one network: the half-edge table and what stands
// beside it, the sparse equations, the device list, and the counters of the iteration and of its
// outer rounds. One object per run, passed by reference.

#include "core/types.h"
#include "solver/device_constraint.h"
#include "solver/equation_layout.h"
#include "solver/half_edge_table.h"
#include "solver/node_order_elimination.h"
#include "solver/ordered_elimination.h"
#include "solver/sparse_matrix.h"

#include <array>
#include <string>
#include <vector>

namespace quench {

constexpr int FirstInflowNode = 10000; // the first inflow's number in the solver's tables
constexpr int MaterialCodes = 56;      // C values by material code 0 to 55

// The options of the Calculation screen as the solver uses them.
struct SolverOptions {
    bool DemandMode = true;
    float MinimumResidual = 0; // the user's minimum residual pressure at the HMD node
    double MaximumVelocity = 0;
    double MaximumFriction = 0; // psi per 100 ft
    int InitialDamping = 0;
    int MinimumDamping = 0;
    int InflowNode2 = 0;
    int InflowNode3 = 0;
    double InflowPressure1 = 0;
    double InflowPressure2 = 0;
    double InflowPressure3 = 0;
    bool UseMaximumTest = false;
    bool UseAverageTest = false;
    double Tolerance = 0;
    bool UseFlowImbalance = false;
    bool AutomaticPeaking = false;
    bool UseEstimates = false;
    bool DoNotIncreaseSize = false;
    bool Autosize = false; // pipes open to sizing, in Demand mode
    std::array<double, 11> TypeGroupMinimum{};
    std::array<double, 11> TypeGroupMaximum{};
};

// Ten values per pipe for the sizing step: slot 0 the pipe length (a device's loss, 0.1 for a
// pump), slots 1 to 7 the fitting counts, slot 9 the non-standard fitting length.
using FittingRow = std::array<double, 10>;

// The totals of an accepted solution that the summary of the results takes.
struct SolverSummary {
    int FlowingSprinklers = 0;
    double SprinklerFlow = 0;
    double FixedFlow = 0;
    double MaximumVelocity = 0;
    int MaximumVelocityPipe = 0;
    double MaximumVelocityPressure = 0;
    int MaximumVelocityPressurePipe = 0;
    double MaximumFrictionPer100 = 0; // psi per 100 ft, kept when a friction limit is set
    int HmdFirstRow = 0;              // the HMD node's first half-edge row
};

// The rounds of Demand mode around the Newton iteration keep their counters apart, one group per
// round, so that a round's state is read and reset together.

// The HMD round: the HMD node moving between sprinklers, and its turning between two of them.
struct HmdTurning {
    Integer HmdChanges = 0;   // moves of the HMD node since the last new start pressure
    Integer FlipCount = 0;    // moves back and forth between the same two nodes (16-bit)
    Long FlipCycles = 0;      // rounds that ended flipping and short of the target
    Integer TwoAgoHmd = 0;    // the HMD node before the previous one
    Integer AlternateHmd = 0; // the other node of a flip
    double LastShortfall = 0; // the HMD node's shortfall of the target after the last round
    Long TurnCycles = 0;      // turns counted by the target check while the target moves
};

// The re-test of the HMD node's pressure after a solution.
struct RetestRound {
    bool RepeatPending = false; // passes go on until the HMD node holds the target
    bool SecondLook = false;    // it held once; one more pass to see it hold again
    bool HmdLock = false;       // FindHmd leaves the HMD node unlifted: the density node governs
};

// The target check: the highest pressure seen for the target in force and the rounds that move
// the target.
struct TargetRounds {
    double HighWater = 0; // the highest HmdResidual seen for the target in force
    bool HighWaterSet = false;
    double PreviousHmdResidual = 0; // the HMD node's residual at the end of the last HMD round
    Long HmdPressureRound = 0;      // rounds that moved or re-tested the target
    double LowestSeen = 0;          // the lowest sprinkler residual found by the re-test
};

// The density loop: the target raised until every flowing sprinkler has its density.
struct DensityRound {
    float DensityFactor = 1.0f; // 1.01 while the lowest density is far from the requirement
    Integer DensityRounds = 0;  // 16-bit
    double MinimumDensity = 0;  // the lowest flowing density, NoFlowingSprinkler when none flows
};

// The HMD node over its target: the start pressure stepped down, and its history.
struct OvershootRound {
    Long OvershootRounds = 0;
    double FirstOvershootResidual = 0; // the HMD node's residual at the first overshoot
    Integer BestHmdNode = 0;           // the HMD node of the lowest overshoot
    float StepBack = 0;                // the step from the start pressure before the overshoot
    float LastStart = 0;               // the start pressure last set by these rounds
};

// The rows of one flow computation: closed into a supply, taking the flow of their other end, or
// raised to the flow law's power with the others. Kept between steps so a step allocates nothing.
enum class RowKind : unsigned char { Closed, Mirrored, Powered };

struct FlowRows {
    std::vector<RowKind> Kinds; // by half-edge row
    std::vector<double> Bases;  // of the powered rows, in row order
    std::vector<double> Powers;
};

struct SolverState {
    HalfEdgeTable Edges;
    std::vector<double> Conductance; // beside each half-edge row
    FlowRows FlowScratch;
    std::array<Integer, MaterialCodes> CValue{}; // by material code
    SparseMatrix Matrix; // the equations in node order, for the steps that take that order
    NodeOrderElimination NodeOrder;
    // The columns of the node positions and of the right side in the last node-order step.
    std::vector<int> NodeOrderColumns;
    int NodeOrderRightSide = 0;
    EquationLayout Layout;
    OrderedElimination Elimination;
    long HalfEdgeBuilds = 0;  // counts the half-edge tables built, so a layout knows its own
    bool NodeOrderDue = true; // the first step after the half-edge table is built
    long NodeOrderSteps = 0;  // steps solved in node order and in the ordered elimination
    long OrderedSteps = 0;
    std::vector<int> ColumnOfPosition; // by node position: the node's column, 0 for none
    std::vector<int> FromColumn;       // by half-edge row: the columns of its two nodes
    std::vector<int> ToColumn;
    std::vector<double> Correction; // by column
    std::vector<double> CorrectionSign;
    int RowCount = 0;
    int EquationExtra = 0; // 1 in Demand mode
    DeviceList Devices;
    // By node position, beside NodeRecord: the K-factor the solver works with (peaking switches
    // sprinklers off here, the next half-edge table restores them) and the density found.
    std::vector<double> NodeKFactor;
    std::vector<double> NodeDensity;
    std::vector<std::string> NodeKText;   // the K-factor text of the node's pipe end, trimmed
    std::vector<FittingRow> FittingTable; // by pipe row

    SolverOptions Options;

    // The iteration.
    Integer Iteration = 0;
    Long IterationCeiling = 30001;
    Integer NotConverged = 0;
    double MaximumImbalance = 0;
    double AverageImbalance = 0;
    double LastMaximumImbalance = 0;
    Integer TrendCount = 0;
    int Gauge = 0;
    bool RecoveryUsed = false;
    bool ProgressTurn = true; // the step shows its progress figure
    bool FirstSolutionDone = false;
    bool SolvedOnce = false; // a solution has reached the tables, for the sizing step
    bool PassMark = false;
    bool DeviceChanged = false;
    std::string StatusText;
    std::string CriteriaWord; // "pressure " or "flow " in the status line, "" without the option

    // Damping.
    Integer DampingFactor = 0;
    Integer MinimumDamping = 0;
    Integer InitialDamping = 0;
    double ShownDamping = 0;
    double LastAverage = 0;
    float StartPressure = 0.1f;
    Integer StartBumps = 0;

    // Outer rounds.
    Long TotalPasses = 0;
    bool RestartFlag = false;
    double TargetPressure = 0;
    double DensityPressure = 0;
    Integer DensityNode = 0;
    Integer HmdNode = 0;
    Integer PreviousHmdNode = 0;
    double HmdResidual = 0;
    double HmdFlow = 0;
    Integer SizingChanged = 0;
    Integer SizingWaits = 0;     // sizing steps in a row that waited for a converged solution
    bool SizesJudged = false;    // a sizing step has judged the sizes on a converged solution
    double WaitingImbalance = 0; // the largest imbalance at the last sizing step that waited
    bool Peaked = false;
    bool PeakingOn = false;
    double InflowFlowEstimate = 0;

    // The rounds of Demand mode, each with its own counters.
    HmdTurning Turning;
    RetestRound Retesting;
    TargetRounds Targeting;
    DensityRound Density;
    OvershootRound Overshooting;

    // Supply mode.
    float PumpBoost = 0;
    double PumpSeedFlow = 0; // the flow at which PumpBoost was taken from the curve
    bool PumpBoostApplied = false;
    bool UsePumpCurve = false;

    SolverSummary Summary;

    // Peaking.
    std::string PendingGroups;
    Integer LastPeakNode = 0;
};

} // namespace quench
