#include "solver/solve_network.h"

#include "core/formats.h"
#include "solver/apply_corrections.h"
#include "solver/autosizing.h"
#include "solver/build_half_edges.h"
#include "solver/build_matrix.h"
#include "solver/build_summary.h"
#include "solver/calculation_options.h"
#include "solver/copy_results.h"
#include "solver/demand_rounds.h"
#include "solver/density.h"
#include "solver/device_check.h"
#include "solver/governing_sprinkler.h"
#include "solver/hmd.h"
#include "solver/hydraulics.h"
#include "solver/peaking.h"
#include "solver/progress_pace.h"
#include "solver/seeding.h"
#include "solver/solve_matrix.h"
#include "solver/solve_phase.h"
#include "solver/solver_messages.h"
#include "solver/supply_mode.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

constexpr int ElementTableSize = 99999;
constexpr Long PassIterationCeiling = 30001;
constexpr float LimitAfterFirstSolution = 2000;
constexpr float LimitOnRisingImbalance = 200;
constexpr Integer RisingImbalanceCount = 99;
constexpr double DensityShortfallTolerance = 0.0001;
constexpr double OvershootBand = 0.01;
constexpr float PeakingStartPressure = 8.0f;
constexpr int MaximumLevelSwitches = 100;
constexpr int MaximumGoverningHolds = 25;
constexpr int UnconvergedPassesBeforeHold = 5;

class NetworkSolve {
public:
    NetworkSolve(RunContext& context, SolverState& state)
        : context_(context), state_(state), project_(context.Project) {}

    void Run() {
        SizeStorage();
        Phase phase = Phase::SetUp;
        while (phase != Phase::Done && phase != Phase::Stop) {
            const Phase next = Step(phase);
            context_.ShowDiagnostics(); // the one place a step's faults reach the user
            if (IsReturnIntoLoop(phase, next) && !CountReturn()) {
                break;
            }
            phase = next;
        }
        context_.ShowDiagnostics();
    }

private:
    Phase Step(Phase phase) {
        switch (phase) {
        case Phase::SetUp:
            return SetUp();
        case Phase::PassHead:
            return PassHead();
        case Phase::Conductances:
            ComputeConductances(project_, state_);
            return Phase::PassStart;
        case Phase::PassStart:
            return PassStart();
        case Phase::Iterate:
            return Iterate();
        case Phase::LeaveIteration:
            return LeaveIteration();
        case Phase::DeviceCheck:
            return DeviceCheck();
        case Phase::AfterDevices:
            return AfterDevices();
        case Phase::HmdRound:
            if (governing_) {
                return PassConverged() ? Phase::Accept : Phase::PassStart;
            }
            state_.PassMark = false;
            if (state_.Options.DemandMode && state_.DensityNode == 0) {
                return quench::HmdRound(context_, state_);
            }
            return Phase::Peaking;
        case Phase::Peaking:
            return Peaking();
        case Phase::Retest:
            return state_.Options.DemandMode ? quench::Retest(context_, state_)
                                             : Phase::ConvergenceCheck;
        case Phase::CompleteSolution:
            return CompleteSolution();
        case Phase::DensityCheck:
            return state_.Options.DemandMode ? DensityLoop(context_, state_)
                                             : Phase::ConvergenceCheck;
        case Phase::ConvergenceCheck:
            return ConvergenceCheck();
        case Phase::Overshoot:
            if (state_.HmdResidual - state_.TargetPressure > OvershootBand) {
                return quench::Overshoot(context_, state_);
            }
            return Phase::Accept;
        case Phase::Accept:
            return Accept();
        case Phase::Close:
            return Close();
        case Phase::Done:
        case Phase::Stop:
            break;
        }
        return Phase::Stop;
    }

    void SizeStorage() {
        const int rows = std::max(MaxPipes, static_cast<int>(project_.NumberOfNodes)) + 2;
        state_.Matrix.Reserve(rows, ElementTableSize);
        state_.Correction.assign(static_cast<std::size_t>(rows) + 4, 0.0);
        state_.CorrectionSign.assign(static_cast<std::size_t>(rows) + 4, 0.0);
    }

    // A failure of the iteration: its message, AbortFlag, and the solve ends.
    Phase Fail(const char* message) {
        context_.Stop({MessageStyle::Plain, "", message});
        return Phase::Stop;
    }

    bool CountReturn() {
        if (++context_.OuterReturns > OuterReturnBudget) {
            Fail(MaximumIterationsMessage);
            return false;
        }
        return true;
    }

    bool Cancelled() {
        if (context_.Progress.Yield()) {
            context_.CancelRequested = 1;
        }
        TakeIterationControls();
        return context_.CancelRequested == 1;
    }

    // What the user typed in the iteration display's boxes reaches the run at once.
    void TakeIterationControls() {
        const IterationControls typed = context_.Progress.TakeIterationControls();
        if (typed.InitialDamping) {
            state_.DampingFactor = static_cast<Integer>(CInt(*typed.InitialDamping));
            state_.InitialDamping = state_.DampingFactor;
        }
        if (typed.MinimumDamping) {
            state_.MinimumDamping = static_cast<Integer>(CInt(*typed.MinimumDamping));
        }
        if (typed.IterationLimit) {
            context_.IterationLimit = static_cast<float>(*typed.IterationLimit);
            context_.IterationLimitTyped = true;
        }
    }

    void ShowIterationControls() {
        IterationControls shown;
        shown.InitialDamping =
            state_.DampingFactor != 0 ? state_.DampingFactor : state_.InitialDamping;
        shown.MinimumDamping = state_.MinimumDamping;
        shown.IterationLimit = context_.IterationLimit;
        context_.Progress.ShowIterationControls(shown);
    }

    void SetGauge(int value) {
        state_.Gauge = value;
        context_.Progress.SetGauge(value);
    }

    // The solve's start, also after a density restart or after a zero pivot.
    Phase SetUp() {
        state_.StartBumps = 0;
        state_.DensityRounds = 0;
        state_.Peaked = false;
        state_.HmdPressureRound = 0;
        state_.DensityFactor = 1.0f;
        state_.HighWaterSet = false; // the highest pressure seen belongs to the target in force
        if (!state_.RestartFlag) {
            project_.SizingNotes.clear();
            state_.DensityNode = 0;
            state_.HmdNode = 0;
            state_.DensityPressure = 0;
            state_.HmdLock = false;
        }
        state_.StartPressure = 0.1f;
        NoteInflowFlow();
        BuildHalfEdges(project_, state_);
        BuildFittingTable(project_, state_);
        if (!state_.RestartFlag) {
            LoadCalculationOptions(context_, state_);
        }
        state_.PeakingOn = state_.Options.AutomaticPeaking;
        if (!state_.Options.DemandMode && !state_.PumpBoostApplied) {
            ComputePumpBoost(context_, state_);
        }
        BumpStartPressure(context_, state_);
        if (state_.Options.UseEstimates && !state_.RestartFlag) {
            SeedHeads(context_, state_);
        }
        if (state_.Options.DemandMode) {
            // After a density restart the node that controls by density is the one held.
            if (state_.RestartFlag && state_.DensityNode != 0) {
                ApplyDensityNode(project_, state_);
            } else {
                PickFirstHmd(state_);
            }
            if (state_.DensityPressure == 0) {
                SeedDensityPressure(project_, state_);
            }
        }
        state_.InitialDamping = static_cast<Integer>(CInt(state_.Options.InitialDamping));
        state_.MinimumDamping = static_cast<Integer>(CInt(state_.Options.MinimumDamping));
        std::fill(state_.Devices.RelativeFlow.begin(), state_.Devices.RelativeFlow.end(), 1.0);
        SetGauge(30);
        if (Cancelled()) {
            return Phase::Stop;
        }
        return Phase::PassHead;
    }

    // The flow of an earlier solution on the supply's row, for the pump's seed.
    void NoteInflowFlow() {
        const HalfEdgeTable& edges = state_.Edges;
        for (int row = 1; row <= edges.Count; ++row) {
            if (edges[row].FromNode == FirstInflowNode) {
                if (edges[row].Flow > 0) {
                    state_.InflowFlowEstimate = edges[row].Flow;
                }
                return;
            }
        }
    }

    // A new pass: cancel, the start of peaking, damping and a fresh count of iterations.
    Phase PassStart() {
        if (context_.CancelRequested == 1) {
            return Phase::Stop;
        }
        if (state_.PeakingOn && state_.TotalPasses < 1) {
            state_.StartPressure = PeakingStartPressure;
            SeedHeads(context_, state_);
        }
        state_.DampingFactor = state_.InitialDamping;
        ComputeConductances(project_, state_);
        ComputeFlows(state_);
        state_.IterationCeiling = PassIterationCeiling;
        state_.Iteration = 0;
        return Phase::Iterate;
    }

    void ShowIteration() {
        context_.Progress.SetHmdText(state_.Options.DemandMode ? std::to_string(state_.HmdNode)
                                                               : std::string("-"));
        context_.Progress.SetStatusText(SendingDataText);
        IterationRow row;
        row.Iteration = state_.Iteration;
        row.AverageImbalance = state_.AverageImbalance;
        row.MaximumImbalance = state_.MaximumImbalance;
        row.AllowableImbalance = state_.Options.Tolerance;
        row.DampingFactor = state_.ShownDamping;
        context_.Progress.ShowIteration(row);
    }

    // Newton steps until the solve is within tolerance (past the third step) or
    // the soft limit is reached. The display and Cancel get their turn at the first steps of a
    // pass and then at the pace of the clock.
    Phase Iterate() {
        for (;;) {
            const bool turn = state_.Iteration < 2 || pace_.Due();
            if (turn) {
                ShowIteration();
            }
            ++state_.Iteration;
            if (state_.Iteration > state_.IterationCeiling ||
                ++context_.NewtonIterations > NewtonIterationBudget) {
                return Fail(MaximumIterationsMessage);
            }
            BuildMatrix(state_);
            state_.ProgressTurn = turn;
            const MatrixOutcome outcome = SolveMatrix(context_, state_);
            state_.ProgressTurn = true;
            if (outcome == MatrixOutcome::ZeroPivot) {
                return Phase::SetUp; // the whole solve again, from its start
            }
            if (outcome == MatrixOutcome::Failed || !ApplyCorrections(context_, state_)) {
                return Phase::Stop;
            }
            ComputeFlows(state_);
            if (state_.NotConverged != 1 && state_.Iteration >= 3) {
                return Phase::LeaveIteration;
            }
            if (turn && Cancelled()) {
                return Phase::Stop;
            }
            FollowTrend(turn);
            if (state_.Gauge <= 50 && state_.Iteration > context_.IterationLimit) {
                return Phase::LeaveIteration;
            }
        }
    }

    // Ninety-nine rises of the largest imbalance in a row bring the soft limit down to 200.
    void FollowTrend(bool shown) {
        if (state_.LastMaximumImbalance < state_.MaximumImbalance) {
            ++state_.TrendCount;
        } else if (state_.LastMaximumImbalance > state_.MaximumImbalance) {
            state_.TrendCount = 0;
        }
        if (state_.TrendCount == RisingImbalanceCount) {
            context_.IterationLimit = LimitOnRisingImbalance;
        }
        if (shown) {
            ShowIterationControls();
        }
        state_.LastMaximumImbalance = state_.MaximumImbalance;
    }

    // The solution leaves the iteration for the tables.
    Phase LeaveIteration() {
        SetGauge(50);
        if (state_.Options.DemandMode) {
            state_.StatusText = "Employing Demand Mode with " +
                                std::to_string(project_.NumberOfPipes) + " pipes and " +
                                std::to_string(project_.NumberOfNodes) + " nodes using node " +
                                std::to_string(state_.HmdNode) + " as HMD";
        } else {
            state_.StatusText = "Employing Supply Mode with " +
                                std::to_string(project_.NumberOfPipes) + " pipes and " +
                                std::to_string(project_.NumberOfNodes) + " nodes";
        }
        context_.Progress.SetStatusText(state_.StatusText);
        CopyResults(project_, state_);
        solvedHmdNode_ = state_.HmdNode;
        unconvergedPasses_ += state_.NotConverged == 1 ? 1 : 0;
        state_.SolvedOnce = true;
        state_.DeviceChanged = false;
        CapHmdChanges(state_);
        return Phase::DeviceCheck;
    }

    bool HasDeviceCheckRows() const {
        for (int row = 1; row <= project_.NumberOfPipeRows; ++row) {
            const auto& record = project_.PipeRecord[static_cast<std::size_t>(row)];
            if (HasBothNodes(record) && record.Material <= MaterialFirePump) {
                return true;
            }
        }
        return false;
    }

    // The devices against their losses.
    Phase DeviceCheck() {
        if (!HasDeviceCheckRows()) {
            return Phase::HmdRound;
        }
        state_.DeviceChanged = CheckDevices(context_, state_);
        return Phase::AfterDevices;
    }

    // Back for devices whose length changed, or on to the rounds.
    Phase AfterDevices() {
        const bool autosize = state_.Options.Autosize;
        if (state_.DeviceChanged) {
            return autosize && state_.SizingChanged != 0 ? Phase::PassHead : Phase::Conductances;
        }
        // Once sizing has nothing left to change, its closing solution goes on to the checks of a
        // complete solution; while it still changes sizes the rounds lead back to it.
        if (state_.Peaked || (autosize && state_.SizingChanged == 0 && !state_.PassMark)) {
            return Phase::CompleteSolution;
        }
        return Phase::HmdRound;
    }

    // The sizing step; with nothing left to change, one closing solution.
    Phase PassHead() {
        if (!state_.Options.Autosize) {
            return Phase::Conductances;
        }
        state_.SizingChanged = SizingStep(context_, state_) ? 1 : 0;
        RefreshLengths(project_, state_);
        if (state_.SizingChanged != 0) {
            return Phase::Conductances;
        }
        ComputeConductances(project_, state_);
        ComputeFlows(state_);
        BuildMatrix(state_);
        const MatrixOutcome outcome = SolveMatrix(context_, state_);
        if (outcome == MatrixOutcome::ZeroPivot) {
            return Phase::SetUp;
        }
        if (outcome == MatrixOutcome::Failed || !ApplyCorrections(context_, state_)) {
            return Phase::Stop;
        }
        ComputeFlows(state_);
        const Integer held = state_.HmdNode;
        FindHmd(project_, state_);
        CopyResults(project_, state_);
        // A new HMD node is held at the target only from here on: its solution is still to come.
        return state_.HmdNode == held ? Phase::DeviceCheck : Phase::PassStart;
    }

    // Peaking, then sizing again or the re-test of the HMD node.
    Phase Peaking() {
        if (state_.PeakingOn) {
            PeakingRound(context_, state_);
        }
        return state_.Options.Autosize ? Phase::PassHead : Phase::Retest;
    }

    // A complete solution: the iteration limit for the passes after it, the target check.
    Phase CompleteSolution() {
        if (!(state_.FirstSolutionDone && context_.IterationLimitTyped)) {
            context_.IterationLimit = LimitAfterFirstSolution;
        }
        state_.FirstSolutionDone = true;
        if (Cancelled()) {
            return Phase::Stop;
        }
        return state_.Options.DemandMode ? TargetCheck(context_, state_) : Phase::DensityCheck;
    }

    double DensityShortfall() const {
        const double lowest = state_.MinimumDensity;
        if (!state_.Options.DemandMode || lowest == 0 || lowest == NoFlowingSprinkler) {
            return 0;
        }
        return RequiredDensity(project_, false) - lowest;
    }

    // Back for another pass while not converged or short of density.
    bool PassConverged() const {
        return state_.MaximumImbalance <= state_.Options.Tolerance && state_.NotConverged != 1;
    }

    Phase ConvergenceCheck() {
        const bool shortOfDensity =
            state_.Options.DemandMode && DensityShortfall() > DensityShortfallTolerance;
        if (shortOfDensity || state_.MaximumImbalance > state_.Options.Tolerance) {
            state_.RestartFlag = false;
            return AnotherPass();
        }
        if (state_.NotConverged == 1) {
            return AnotherPass();
        }
        return state_.Options.DemandMode ? Phase::Overshoot : Phase::Accept;
    }

    // Rounds that keep coming back to holds their passes cannot converge on give way to the hold
    // of the sprinkler worst off.
    Phase AnotherPass() {
        const bool stalled = state_.Options.DemandMode && !governing_ &&
                             unconvergedPasses_ >= UnconvergedPassesBeforeHold;
        if (stalled) {
            HoldGoverningSprinkler(Hold::Always);
        }
        return Phase::PassStart;
    }

    // The accepted solution into the tables, then its closing tests.
    Phase Accept() {
        if (!state_.Options.DemandMode) {
            FindLowestResidual(project_, state_);
        }
        CopyResults(project_, state_);
        FindMinDensity(project_, state_);
        if (!state_.Options.DemandMode) {
            return Phase::Close;
        }
        if (governing_) {
            return HoldGoverningSprinkler() ? Phase::PassStart : Phase::Close;
        }
        const Phase next = ClosingTests(context_, state_);
        if (next == Phase::Close && state_.Options.Autosize && !SizesSettled(context_, state_)) {
            return Phase::PassHead; // the accepted flows ask for a larger size somewhere
        }
        if (next != Phase::Close) {
            return next;
        }
        const bool held =
            HoldUnsolvedHmdNode() || HoldLowestSprinkler() || HoldGoverningSprinkler();
        return held ? Phase::PassStart : Phase::Close;
    }

    // The rounds' answer measured against every sprinkler's need: when it is not one solution,
    // or another sprinkler is short or the one worst off has a surplus, that sprinkler is held at
    // its need and the network solved again, without the rounds, until the one held is the one
    // worst off.
    enum class Hold { WhenOff, Always };
    bool HoldGoverningSprinkler(Hold when = Hold::WhenOff) {
        if (state_.Options.Autosize || state_.PeakingOn ||
            governingHolds_ >= MaximumGoverningHolds) {
            return false;
        }
        const double density = RequiredDensity(project_, false);
        const GoverningSprinkler worst =
            FindGoverningSprinkler(project_, state_.Options.MinimumResidual, density);
        if (worst.Number == 0) {
            return false;
        }
        if (when == Hold::WhenOff && HoldsItsRequirement(worst, density) &&
            HeadsAreOneSolution(context_, state_)) {
            return false;
        }
        ++governingHolds_;
        governing_ = true;
        state_.DensityNode = 0;
        state_.HmdLock = false;
        state_.PreviousHmdNode = state_.HmdNode;
        state_.HmdNode = static_cast<Integer>(worst.Number);
        state_.TargetPressure = worst.Requirement;
        state_.HmdResidual = worst.Requirement;
        HoldHmdNode(state_, worst.Number, worst.Requirement);
        return true;
    }

    // The rounds may end on an HMD node found after the last solution and only lifted to the
    // target there: its pipes still carry the flows of its old pressure. It is held and the
    // network solved again, so that the posted heads and flows are one solution.
    bool HoldUnsolvedHmdNode() {
        if (state_.HmdNode == solvedHmdNode_ || state_.HmdNode == 0 ||
            levelSwitches_ >= MaximumLevelSwitches) {
            return false;
        }
        ++levelSwitches_;
        HoldHmdNode(state_, state_.HmdNode, state_.TargetPressure);
        state_.HmdResidual = state_.TargetPressure;
        return true;
    }

    // A sprinkler within the level band of the HMD node may stand a little below the target.
    // The least supply that meets every sprinkler holds the lowest of them at the target instead,
    // and the network is solved again from there.
    bool HoldLowestSprinkler() {
        if (state_.DensityNode != 0 || levelSwitches_ >= MaximumLevelSwitches) {
            return false;
        }
        const double allowed = state_.TargetPressure - std::max(state_.Options.Tolerance, 1e-9);
        const int lowest = LowestSprinklerBelow(state_, allowed);
        if (lowest == 0 || lowest == state_.HmdNode) {
            return false;
        }
        ++levelSwitches_;
        state_.PreviousHmdNode = state_.HmdNode;
        state_.HmdNode = static_cast<Integer>(lowest);
        HoldHmdNode(state_, lowest, state_.TargetPressure);
        state_.HmdResidual = state_.TargetPressure;
        return true;
    }

    // The HMD node of the solution and the summary.
    Phase Close() {
        FindHmd(project_, state_);
        BuildSummary(context_, state_);
        return Phase::Done;
    }

    RunContext& context_;
    SolverState& state_;
    Project& project_;
    int levelSwitches_ = 0;
    Integer solvedHmdNode_ = 0; // the node held at the target in the last solution
    bool governing_ = false;    // solving for the sprinkler worst off, the rounds done
    int governingHolds_ = 0;
    int unconvergedPasses_ = 0; // passes that ended at their limit
    ProgressPace pace_;
};

} // namespace

void SolveNetwork(RunContext& context, SolverState& state) {
    NetworkSolve solve(context, state);
    solve.Run();
}

} // namespace quench
