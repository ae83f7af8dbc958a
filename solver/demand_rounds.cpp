#include "solver/demand_rounds.h"

#include "solver/calculation_options.h"
#include "solver/copy_results.h"
#include "solver/density.h"
#include "solver/flow_imbalance.h"
#include "solver/hmd.h"
#include "solver/hydraulics.h"
#include "solver/seeding.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace quench {

namespace {

// Tolerances of the rounds.
constexpr double PressureSlack = 1E-06;     // psi: a residual this close to a target meets it
constexpr double DensityTolerance = 0.0001; // gpm/ft², the density test of the closing rounds
constexpr double TargetBand = 0.01;         // psi: an HMD node this close to its target holds it

// The HMD choice turning between nodes.
constexpr Integer FlipsToTurn = 10;           // moves back and forth that make a flip
constexpr Long CyclesBeforeNewStart = 4;      // flip cycles short of the target before a new start
constexpr Integer ChangesBeforeNewStart = 30; // HMD changes before a new start pressure
constexpr float FlipLimit = 2000;             // iterations a pass may take while the HMD flips
// A flip between two nodes that both hold the target is settled: the cycle count is set so far
// above CyclesBeforeNewStart that the round goes on to the target tests instead of solving again.
constexpr Long SettledFlipCycles = 31000;
// HmdChanges grows past ChangesBeforeNewStart only while the HMD round, which clears it there, is
// skipped. Held to 31 from 102 on, the 16-bit count never wraps and the next round still sees
// more than 30 changes and brings a new start.
constexpr Integer HmdChangesCeiling = 102;
constexpr Integer HmdChangesAfterCeiling = 31;

// The target rounds.
constexpr Long RoundCeiling = 32767; // the rounds that move the target are counted in 16 bits
constexpr Long RoundsBeforeDensityPush = 40;
// The density push: 1 % over the density ratio while the lowest density is more than 5 % short,
// so that the rounds approach the requirement from above.
constexpr float DensityPush = 1.01f;
constexpr double NearDensityShare = 0.05;
// After this many density rounds the step is multiplied by a tenth of the round count: a run that
// has crept toward the density for a hundred rounds leaps over it and comes back down by the ratio.
constexpr Integer DensityRoundsBeforeLeap = 99;
constexpr double DensityRoundsPerLeap = 10.0;

bool DensityRequired(const Project& project) {
    return RequiredDensity(project, false) > 0;
}

void ShowStatus(RunContext& context, SolverState& state) {
    std::string text = "finished meeting " + state.CriteriaWord + "imbalance criteria";
    if (state.TotalPasses % 100 == 0) {
        text += ", " + std::to_string(state.TotalPasses) + "+ iterations";
    }
    state.StatusText = text;
    context.Progress.SetStatusText(text);
}

// A move of the HMD node: the count of changes and of flips between two nodes.
void CountMove(RunContext& context, SolverState& state) {
    context.Progress.SetPercentText("0.00%");
    ++state.Turning.HmdChanges;
    if (state.HmdNode == state.Turning.TwoAgoHmd) {
        ++state.Turning.FlipCount;
    } else if (state.Turning.AlternateHmd == 0 || state.Turning.AlternateHmd == state.HmdNode) {
        ++state.Turning.FlipCount;
        state.Turning.AlternateHmd = state.HmdNode;
    } else {
        state.Turning.FlipCount = 1;
    }
}

// The density pressure of the HMD node by its own K text and area, then of all the flowing
// sprinklers.
void HmdDensityPressure(const Project& project, SolverState& state) {
    const int position = state.Edges.PositionOf(state.HmdNode);
    if (position != 0 && IsValidKText(state.NodeKText[static_cast<std::size_t>(position)])) {
        const double kFactor =
            KFactorOfText(project, state.NodeKText[static_cast<std::size_t>(position)]);
        if (kFactor != 0) {
            const double flow =
                RequiredDensity(project, false) *
                project.NodeRecord[static_cast<std::size_t>(position)].SprinklerArea / kFactor;
            state.DensityPressure = flow * flow;
        }
    }
    UpdateDensityPressure(project, state);
    if (state.DensityPressure > state.Options.MinimumResidual) {
        state.TargetPressure = state.DensityPressure;
    }
}

// The sprinkler with the lowest residual pressure after CopyResults.
void TakeLowestResidual(const Project& project, SolverState& state) {
    double lowest = 32767;
    int node = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const NodeRecord& record = project.NodeRecord[static_cast<std::size_t>(position)];
        const bool sprinkler = state.NodeKFactor[static_cast<std::size_t>(position)] != 0 ||
                               state.NodeKText[static_cast<std::size_t>(position)] == "D";
        if (sprinkler && record.ResidualPressure != 0 && record.ResidualPressure < lowest) {
            lowest = record.ResidualPressure;
            node = record.Number;
        }
    }
    if (node == 0) {
        return;
    }
    state.HmdResidual = lowest;
    state.HmdNode = static_cast<Integer>(node);
    state.Targeting.LowestSeen = lowest;
    if (lowest > state.Options.MinimumResidual) {
        state.TargetPressure = lowest;
    }
}

// The target set to the density pressure and the HMD node found again (the target check's fourth
// test); Nothing when the HMD node holds.
bool FollowDensityTarget(RunContext& context, SolverState& state, Phase& next) {
    ++state.Targeting.HmdPressureRound;
    // The density pressure of a sprinkler that takes more water per K than the others can lie
    // below the minimum residual pressure; the target never does.
    state.TargetPressure =
        std::max(state.DensityPressure, static_cast<double>(state.Options.MinimumResidual));
    state.Targeting.HighWater = state.TargetPressure;
    FindHmd(context.Project, state);
    if (state.HmdResidual < state.Targeting.HighWater &&
        state.Targeting.HmdPressureRound < RoundCeiling) {
        ++state.Targeting.HmdPressureRound;
        next = state.PeakingOn ? Phase::Iterate
               : state.Peaked  ? Phase::HmdRound
                               : Phase::AfterDevices;
        return true;
    }
    return false;
}

// The HMD node turning between two nodes while the target moves.
bool TurnHmd(RunContext& context, SolverState& state, Phase& next) {
    if (state.Turning.TurnCycles > CyclesBeforeNewStart) {
        BumpStartPressure(context, state);
        ApplyDensityNode(context.Project, state);
    }
    state.Turning.FlipCount = state.HmdNode == state.Turning.TwoAgoHmd
                                  ? static_cast<Integer>(state.Turning.FlipCount + 1)
                                  : Integer{1};
    if (state.Turning.FlipCount < FlipsToTurn) {
        return false;
    }
    FindHmd(context.Project, state);
    ++state.Turning.TurnCycles;
    if (std::fabs(state.HmdResidual - state.TargetPressure) < TargetBand) {
        next = Phase::SetUp;
        return true;
    }
    if (state.Turning.TurnCycles > CyclesBeforeNewStart &&
        state.Overshooting.OvershootRounds == 0) {
        state.Turning.TurnCycles = 0;
        BumpStartPressure(context, state);
        state.Overshooting.StepBack = state.Overshooting.LastStart;
        state.Overshooting.LastStart = state.StartPressure;
        next = Phase::PassStart;
        return true;
    }
    if (state.Turning.TurnCycles > CyclesBeforeNewStart) {
        state.Turning.TurnCycles = 0;
        state.StartPressure = state.Overshooting.LastStart - state.StartPressure;
        SeedHeads(context, state);
        if (state.Overshooting.OvershootRounds > 0 && context.UpdateEstimatesOnOscillation) {
            UpdateEstimates(context, state);
        }
        next = Phase::PassStart;
        return true;
    }
    return false;
}

// The HMD node short of its target after a round: a new start pressure, and while the shortfall
// grows, another pass from it.
bool NewStartForShortfall(RunContext& context, SolverState& state) {
    const double shortfall = state.TargetPressure - state.HmdResidual;
    if (shortfall <= PressureSlack) {
        return false;
    }
    BumpStartPressure(context, state);
    state.Turning.FlipCount = 1;
    state.Turning.HmdChanges = 1;
    const bool growing =
        shortfall > state.Turning.LastShortfall || state.Turning.LastShortfall == 0;
    state.Turning.LastShortfall = shortfall;
    return growing;
}

// The end of an HMD round where density is required: the sprinkler of the lowest density may
// take over from the HMD node. It is held and solved for when its density pressure governs.
Phase DensityNodeExit(const Project& project, SolverState& state) {
    state.Targeting.PreviousHmdResidual = state.HmdResidual;
    if (!state.RestartFlag && DensityRequired(project)) {
        FindMinDensity(project, state);
        SwitchToDensityNode(project, state);
        FindHmd(project, state);
    }
    const bool densityMet = state.DensityPressure <= state.HmdResidual;
    if (densityMet) {
        return Phase::Peaking;
    }
    const bool pressureGoverns = state.TargetPressure > state.DensityPressure;
    if (pressureGoverns) {
        state.DensityNode = 0;
        state.HmdResidual = state.Targeting.PreviousHmdResidual;
        return Phase::Peaking;
    }
    if (state.DensityNode != 0) {
        ApplyDensityNode(project, state);
        return Phase::PassStart;
    }
    return Phase::Peaking;
}

// The re-test while the HMD node is below the highest pressure seen: passes until it holds the
// target, then one more look, and back to the device check.
Phase RepeatRetest(SolverState& state) {
    ++state.Targeting.HmdPressureRound;
    state.Retesting.RepeatPending = true;
    if (state.TargetPressure - state.HmdResidual > PressureSlack) {
        state.Turning.FlipCount = 1;
        state.Retesting.SecondLook = false;
        return Phase::PassStart;
    }
    if (state.Retesting.SecondLook) {
        state.Retesting.RepeatPending = false;
        return Phase::AfterDevices;
    }
    state.Retesting.SecondLook = true;
    state.Turning.FlipCount = 1;
    return Phase::PassStart;
}

double ResidualOf(const Project& project, int number) {
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const NodeRecord& node = project.NodeRecord[static_cast<std::size_t>(position)];
        if (node.Number == number) {
            return node.ResidualPressure;
        }
    }
    return 0;
}

bool AnyResidualBelow(const Project& project, double level) {
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        if (project.NodeRecord[static_cast<std::size_t>(position)].ResidualPressure < level) {
            return true;
        }
    }
    return false;
}

} // namespace

void CapHmdChanges(SolverState& state) {
    if (state.Turning.HmdChanges > HmdChangesCeiling) {
        state.Turning.HmdChanges = HmdChangesAfterCeiling;
    }
}

double LowestFlowingDensity(const Project& project) {
    return LowestDensityNode(project).Density;
}

LowestDensity LowestDensityNode(const Project& project) {
    LowestDensity lowest;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const NodeRecord& node = project.NodeRecord[static_cast<std::size_t>(position)];
        if (node.Discharge > 0 && node.SprinklerArea > 0) {
            const double density = node.Discharge / node.SprinklerArea;
            if (lowest.Density == 0 || density < lowest.Density) {
                lowest = {density, node.Number};
            }
        }
    }
    return lowest;
}

Phase HmdRound(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    state.Turning.TwoAgoHmd = state.PreviousHmdNode;
    state.PreviousHmdNode = state.HmdNode;
    FindHmd(project, state);
    if (!state.RestartFlag) {
        UpdateDensityPressure(project, state);
    }
    ++state.TotalPasses;
    ShowStatus(context, state);
    const bool moved = state.HmdNode != state.PreviousHmdNode;
    if (moved) {
        CountMove(context, state);
    }
    if (state.Turning.HmdChanges > ChangesBeforeNewStart) {
        state.Turning.HmdChanges = 0;
        BumpStartPressure(context, state);
        FindHmd(project, state);
    }
    const bool flipping = state.Turning.FlipCount >= FlipsToTurn;
    const bool shortOfTarget = state.HmdResidual < state.TargetPressure;
    if (flipping && shortOfTarget) {
        ++state.Turning.FlipCycles;
        context.IterationLimit = FlipLimit;
    }
    if (flipping && !shortOfTarget && state.NotConverged == 0) {
        state.Turning.FlipCycles = SettledFlipCycles;
    }
    // A node that moved is solved for again, unless it keeps turning between two nodes.
    const bool turningForGood = flipping && state.Turning.FlipCycles >= CyclesBeforeNewStart;
    if (moved && !turningForGood) {
        return Phase::PassStart;
    }
    if (NewStartForShortfall(context, state)) {
        return Phase::PassStart;
    }
    const int first = state.Edges.FirstRowOf(state.HmdNode);
    if (first != 0) {
        ComputeRowFlow(state.Edges[first], state.Conductance[static_cast<std::size_t>(first)]);
    }
    return DensityNodeExit(project, state);
}

Phase Retest(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    if (state.DensityNode != 0) {
        state.Retesting.HmdLock = true;
    }
    if (!state.Targeting.HighWaterSet) {
        state.Targeting.HighWater = state.TargetPressure;
        state.Targeting.HighWaterSet = true;
    }
    FindHmd(project, state);
    const bool belowHighWater =
        state.Targeting.HighWater - state.HmdResidual > PressureSlack && state.DensityNode == 0;
    if (belowHighWater || state.Retesting.RepeatPending) {
        return RepeatRetest(state);
    }
    if (state.DensityNode == 0) {
        return Phase::CompleteSolution;
    }
    ++state.Targeting.HmdPressureRound;
    if (static_cast<float>(state.DensityPressure) > state.Options.MinimumResidual) {
        state.TargetPressure = state.DensityPressure;
    }
    state.Targeting.HighWater = state.TargetPressure;
    FindHmd(project, state);
    if (DensityRequired(project)) {
        HmdDensityPressure(project, state);
    }
    CopyResults(project, state);
    TakeLowestResidual(project, state);
    return Phase::CompleteSolution;
}

Phase TargetCheck(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    if (!(state.Targeting.HighWater == 0 && state.Targeting.HmdPressureRound != 0)) {
        state.Targeting.HighWater = state.TargetPressure;
        if (state.Peaked) {
            FindHmd(project, state);
        }
        if (state.Targeting.HighWater - state.HmdResidual > PressureSlack &&
            state.DensityNode == 0) {
            ++state.Targeting.HmdPressureRound;
            if (state.Peaked) {
                return Phase::HmdRound;
            }
            state.PassMark = true;
            return Phase::AfterDevices;
        }
        Phase next = Phase::Stop;
        if (state.DensityNode != 0 && !state.Retesting.HmdLock) {
            if (FollowDensityTarget(context, state, next)) {
                return next;
            }
        } else if (state.Targeting.HighWater - state.HmdResidual > PressureSlack &&
                   state.DensityNode != 0 && state.Targeting.HmdPressureRound < RoundCeiling) {
            if (state.HmdNode != state.PreviousHmdNode && TurnHmd(context, state, next)) {
                return next;
            }
            state.Turning.TwoAgoHmd = state.PreviousHmdNode;
            state.PreviousHmdNode = state.HmdNode;
            if (AnyResidualBelow(project, state.Targeting.HighWater)) {
                ++state.Targeting.HmdPressureRound;
                state.Retesting.HmdLock = false;
                state.DensityNode = 0;
                if (FollowDensityTarget(context, state, next)) {
                    return next;
                }
            }
        }
    }
    if (state.Targeting.LowestSeen != 0) {
        state.Targeting.HighWater = state.Targeting.LowestSeen;
    }
    state.Targeting.HighWater = std::max(
        {state.Targeting.HighWater, state.TargetPressure, state.Targeting.PreviousHmdResidual});
    FindHmd(project, state);
    if (state.HmdResidual < state.Targeting.HighWater) {
        ++state.Targeting.HmdPressureRound;
        if (state.Targeting.HmdPressureRound > RoundsBeforeDensityPush) {
            state.Density.DensityFactor = DensityPush;
            if (DensityRequired(project)) {
                return Phase::DensityCheck;
            }
            // Rounds that keep missing the target climb the ladder, estimates or not.
            BumpStartPressure(context, state, Seeding::FromStartPressure);
        }
        if (state.Peaked) {
            return Phase::HmdRound;
        }
    }
    return DensityRequired(project) ? Phase::DensityCheck : Phase::ConvergenceCheck;
}

Phase DensityLoop(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    const double required = RequiredDensity(project, false);
    const double lowest = LowestFlowingDensity(project);
    state.Density.MinimumDensity = lowest == 0 ? NoFlowingSprinkler : lowest;
    if (!(required - lowest <= DensityTolerance || lowest == 0)) {
        return RaiseForDensity(context, state);
    }
    if (state.DensityPressure > state.Options.MinimumResidual &&
        state.Options.MinimumResidual != 0) {
        state.NotConverged = 0;
    }
    if (state.Options.UseFlowImbalance && state.NotConverged == 0) {
        MeasureFlowImbalance(context, state);
    }
    state.Retesting.HmdLock = false;
    return Phase::ConvergenceCheck;
}

Phase RaiseForDensity(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    const double required = RequiredDensity(project, false);
    const double lowest =
        state.Density.MinimumDensity == NoFlowingSprinkler ? 0.0 : state.Density.MinimumDensity;
    // A sprinkler's density follows the square root of its pressure: the pressure held rises (or
    // falls) by the square of the density ratio, from the pressure at which that sprinkler had the
    // lowest density. That is the target when it is the HMD node; with other K-factors or areas
    // it may be another sprinkler, whose own pressure is then the one to scale.
    const LowestDensity node = LowestDensityNode(project);
    const double base = node.Number != 0 ? ResidualOf(project, node.Number) : state.TargetPressure;
    const double ratio = lowest == 0 ? 1.0 : (required / lowest) * (required / lowest);
    if (state.Density.DensityRounds > DensityRoundsBeforeLeap && lowest != 0) {
        state.TargetPressure = state.Density.DensityFactor *
                               (state.Density.DensityRounds / DensityRoundsPerLeap) * ratio * base;
    } else if (lowest != 0) {
        state.TargetPressure = state.Density.DensityFactor * ratio * base;
        if (state.TargetPressure < state.Options.MinimumResidual) {
            state.TargetPressure = state.Options.MinimumResidual;
        }
        ++state.Density.DensityRounds;
    }
    state.DensityPressure = state.TargetPressure;
    const bool nearRequirement = required != 0 && (required - lowest) / required < NearDensityShare;
    state.Density.DensityFactor = nearRequirement ? 1.0f : DensityPush;
    // The sprinkler with the lowest density is the one the new target is for: it is held next.
    if (node.Number != 0) {
        state.DensityNode = static_cast<Integer>(node.Number);
    }
    state.RestartFlag = true;
    if (state.Peaked) {
        ApplyDensityNode(project, state);
        return Phase::Iterate;
    }
    return Phase::SetUp;
}

Phase Overshoot(RunContext& context, SolverState& state) {
    if (state.Overshooting.OvershootRounds == 0) {
        state.Overshooting.FirstOvershootResidual = state.HmdResidual;
    }
    if (state.HmdResidual <= state.Overshooting.FirstOvershootResidual) {
        state.Overshooting.BestHmdNode = state.HmdNode;
    }
    if (++state.Overshooting.OvershootRounds == 1) {
        state.Overshooting.StepBack = state.Overshooting.StepBack - state.StartPressure;
        state.Overshooting.LastStart = state.StartPressure;
    }
    state.StartPressure = state.StartPressure - state.StartPressure / 2;
    state.Overshooting.LastStart = state.StartPressure;
    SeedHeads(context, state);
    if (state.StartBumps > 2) {
        --state.StartBumps;
    }
    state.Turning.FlipCycles = 0;
    return Phase::PassStart;
}

Phase ClosingTests(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    const double required = RequiredDensity(project, false);
    const double lowest = state.Density.MinimumDensity;
    const float minimum = state.Options.MinimumResidual;
    const bool pressureGoverns =
        minimum != 0 && (minimum <= 0 || std::fabs(minimum - state.HmdResidual) <= TargetBand);
    // Density governs and the lowest density misses the required one, short or over: the target
    // moves to meet it, the HMD choice and the density node kept.
    if (!pressureGoverns && lowest != NoFlowingSprinkler &&
        static_cast<float>(std::fabs(required - lowest)) > DensityTolerance && required > 0 &&
        state.Options.DemandMode) {
        return RaiseForDensity(context, state);
    }
    if (minimum > 0 && required > 0) {
        if (lowest == NoFlowingSprinkler) {
            CopyResults(project, state);
            FindMinDensity(project, state);
        }
        if (static_cast<float>(state.HmdResidual) < minimum) {
            return Phase::SetUp;
        }
    }
    return Phase::Close;
}

} // namespace quench
