#include "solver/autosizing.h"

#include "core/formats.h"
#include "library/material_tables.h"
#include "solver/build_half_edges.h"
#include "solver/hydraulics.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace quench {

namespace {

constexpr int GroupCount = 10;
constexpr double PumpSlot = 0.1;
// Passes a sizing step waits for a solution within the tolerance; a network that its present sizes
// keep from converging is judged as it stands, and the larger sizes help it settle.
constexpr Integer MaximumSizingWaits = 100;

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

// The sizes autosizing may choose for a material, smallest first.
struct SizeList {
    const Single* Sizes = nullptr;
    int Count = 0;

    Single operator[](int index) const { return Sizes[index]; }
    int IndexOf(double nominal) const {
        for (int k = 0; k < Count; ++k) {
            if (Sizes[k] == static_cast<Single>(nominal)) {
                return k;
            }
        }
        return -1;
    }
    // The first size at or above a diameter, or the last size.
    int AtOrAbove(double diameter) const {
        for (int k = 0; k < Count; ++k) {
            if (Sizes[k] >= diameter) {
                return k;
            }
        }
        return Count - 1;
    }
};

SizeList SizesOf(const RunContext& context, int material) {
    if (!IsLibraryMaterial(material)) {
        return {};
    }
    return {context.Materials.UsableDiameters[At(material)].data(),
            context.Materials.UsableDiameterCount[At(material)]};
}

double InnerOf(const RunContext& context, int material, double nominal) {
    return InsideDiameterOf(context.Library, material, static_cast<Single>(nominal));
}

struct Limits {
    double Velocity = 0; // ft/s, 0 for none
    double Friction = 0; // psi per 100 ft, 0 for none
    double Minimum = 0;  // in, 0 for none
    double Maximum = 0;
};

// Velocity over its limit (0) or friction over its limit (1) at a size; -1 when it meets both.
int Excess(const Limits& limits, double flow, double inner, double cFactor) {
    if (limits.Velocity != 0 && SizingVelocity(flow, inner) > limits.Velocity) {
        return static_cast<int>(SizingReason::Velocity);
    }
    if (limits.Friction != 0 && SizingFriction(flow, inner, cFactor) > limits.Friction) {
        return static_cast<int>(SizingReason::Friction);
    }
    return -1;
}

class Sizing {
public:
    Sizing(RunContext& context, SolverState& state)
        : context_(context), state_(state),
          judging_(state.SolvedOnce &&
                   (state.NotConverged == 0 || state.SizingWaits >= MaximumSizingWaits)) {}

    void Run() {
        before_.resize(At(Model().NumberOfPipes) + 1);
        for (int pipe = 1; pipe <= Model().NumberOfPipes; ++pipe) {
            before_[At(pipe)] = Pipe(pipe).NominalDiameter;
        }
        if (judging_) {
            for (auto& notes : context_.SizingNotes) {
                notes.clear();
            }
        }
        SizeUngrouped();
        for (int group = 1; group <= GroupCount; ++group) {
            SizeGroup(group);
        }
        if (state_.Options.DoNotIncreaseSize) {
            KeepSizesFromGrowingDownstream();
        }
        CloseStep();
    }

    // A solution still outside the tolerance is no ground for judging sizes: heavy damping
    // leaves the flows of a short pass far from their values, and sizes chosen on them swing.
    // The step then waits for the iteration to settle.
    bool Waiting() const { return state_.SolvedOnce && !judging_; }

    // Sizes far too small for the demand (1/2" branch lines of a large tree) ask for thousands of
    // psi, and the iteration never settles on them. Until sizes are first judged, a wait whose
    // largest imbalance is no lower than at the last one lets each pipe over a limit grow one
    // size; only a converged solution takes a size down.
    bool Growing() const {
        return Waiting() && !state_.SizesJudged && state_.SizingWaits > 0 &&
               state_.MaximumImbalance >= state_.WaitingImbalance;
    }

    // After an accepted solution: every pipe over a limit notes why; false when one of them
    // could still take a larger allowed size, so that sizing has work left.
    bool Settled() {
        for (auto& notes : context_.SizingNotes) {
            notes.clear();
        }
        Model().SizingNotes.clear();
        bool settled = true;
        for (int pipe = 1; pipe <= Model().NumberOfPipes; ++pipe) {
            if (!IsSizable(Pipe(pipe))) {
                continue;
            }
            const SizeList sizes = SizesOf(context_, Pipe(pipe).Material);
            const Limits limits = LimitsOf(Pipe(pipe).TypeGroup);
            const int excess = Excess(limits, Flow(pipe), Pipe(pipe).InsideDiameter, CFactor(pipe));
            if (excess < 0 || sizes.Count == 0) {
                continue;
            }
            if (LargerAllowed(sizes, Pipe(pipe).NominalDiameter, limits) >= 0) {
                settled = false;
            } else {
                Note(pipe, excess);
                PostNote(pipe, excess);
            }
        }
        return settled;
    }

    bool Judging() const { return judging_; }

    // A diameter differs from the one it had when the step began.
    bool Moved() {
        for (int pipe = 1; pipe <= Model().NumberOfPipes; ++pipe) {
            if (Pipe(pipe).NominalDiameter != before_[At(pipe)]) {
                return true;
            }
        }
        return false;
    }

private:
    Project& Model() { return context_.Project; }
    CalcPipeRecord& Pipe(int pipe) { return Model().CalcPipeRecord[At(pipe)]; }
    double Flow(int pipe) { return std::fabs(Pipe(pipe).Flow); }
    double CFactor(int pipe) { return state_.CValue[At(Pipe(pipe).Material)]; }

    Limits LimitsOf(int group) const {
        const SolverOptions& options = state_.Options;
        return {options.MaximumVelocity, options.MaximumFriction,
                options.TypeGroupMinimum[At(group)], options.TypeGroupMaximum[At(group)]};
    }

    // A new nominal diameter and the equivalent length that goes with it.
    void SetDiameter(int pipe, double nominal) {
        CalcPipeRecord& record = Pipe(pipe);
        if (record.NominalDiameter == nominal) {
            return;
        }
        record.NominalDiameter = nominal;
        const FittingRow& slots = state_.FittingTable[At(pipe)];
        double length = slots[0] + static_cast<Single>(slots[9]);
        if (const PipeDiameterRecord* size =
                FindDiameter(context_.Library, record.Material, static_cast<Single>(nominal))) {
            for (int kind = 0; kind < LibraryFittingKinds; ++kind) {
                length += slots[At(kind + 1)] * size->FitEqLen[At(kind)];
            }
        }
        record.TotalLength = length;
        record.FittingLength = length - record.NominalLength;
        record.InsideDiameter = InnerOf(context_, record.Material, nominal);
    }

    void Note(int pipe, int reason) {
        context_.SizingNotes[At(reason < 0 ? static_cast<int>(SizingReason::Other) : reason)]
            .push_back(pipe);
    }

    // The note beside the results, by row of CalcPipeRecord.
    void PostNote(int pipe, int reason) {
        std::vector<SizingNote>& notes = Model().SizingNotes;
        notes.resize(At(Model().NumberOfPipes) + 1, SizingNote::None);
        notes[At(pipe)] = reason == static_cast<int>(SizingReason::Velocity) ? SizingNote::Velocity
                          : reason == static_cast<int>(SizingReason::Friction)
                              ? SizingNote::Friction
                              : SizingNote::Other;
    }

    // One size above the smallest that meets the limits at the pipe's flow (the smallest when
    // even that one does), going down from the size it has.
    int SizeWithin(const SizeList& sizes, int from, int pipe, const Limits& limits) {
        int k = from;
        while (k >= 1 &&
               Excess(limits, Flow(pipe), InnerOf(context_, Pipe(pipe).Material, sizes[k - 1]),
                      CFactor(pipe)) < 0) {
            --k;
        }
        return k == 0 ? 0 : std::min(k + 1, sizes.Count - 1);
    }

    // Bounds a size by the minimum and the maximum of the pipe's group.
    static int Bounded(const SizeList& sizes, int k, const Limits& limits) {
        if (limits.Minimum != 0 && sizes[k] < limits.Minimum) {
            k = sizes.AtOrAbove(limits.Minimum);
        }
        while (limits.Maximum != 0 && k > 0 && sizes[k] > limits.Maximum) {
            --k;
        }
        return k;
    }

    void SizeUngrouped() {
        const Limits limits = LimitsOf(0);
        for (int pipe = 1; pipe <= Model().NumberOfPipes; ++pipe) {
            if (!IsSizable(Pipe(pipe)) || Pipe(pipe).TypeGroup != 0) {
                continue;
            }
            const SizeList sizes = SizesOf(context_, Pipe(pipe).Material);
            if (sizes.Count == 0) {
                continue;
            }
            if (Pipe(pipe).NominalDiameter == 0) {
                SetDiameter(pipe, sizes[sizes.AtOrAbove(limits.Minimum)]);
                continue;
            }
            if (judging_ || Growing()) {
                SizeOnePipe(pipe, sizes, limits);
            }
        }
    }

    // The next size up that the list and the group's maximum allow, -1 when there is none.
    static int LargerAllowed(const SizeList& sizes, double nominal, const Limits& limits) {
        const int index = sizes.IndexOf(nominal);
        const int next = index < 0 ? sizes.AtOrAbove(nominal) : index + 1;
        if (next >= sizes.Count || sizes[next] <= nominal ||
            (limits.Maximum != 0 && sizes[next] > limits.Maximum)) {
            return -1;
        }
        return next;
    }

    // A pipe over a limit moves up one size; one that no allowed size can help keeps its size
    // and a note, and the other pipes are sized on.
    void SizeOnePipe(int pipe, const SizeList& sizes, const Limits& limits) {
        const double nominal = Pipe(pipe).NominalDiameter;
        const int index = sizes.IndexOf(nominal);
        const double inner = index < 0 ? nominal : InnerOf(context_, Pipe(pipe).Material, nominal);
        const int excess = Excess(limits, Flow(pipe), inner, CFactor(pipe));
        if (excess < 0) {
            if (judging_ && index >= 0) {
                SetDiameter(pipe,
                            sizes[Bounded(sizes, SizeWithin(sizes, index, pipe, limits), limits)]);
            }
            return;
        }
        const int next = LargerAllowed(sizes, nominal, limits);
        if (next < 0) {
            if (judging_) {
                Note(pipe, excess);
            }
            return;
        }
        SetDiameter(pipe, sizes[next]);
    }

    std::vector<int> GroupPipes(int group) {
        std::vector<int> pipes;
        for (int pipe = 1; pipe <= Model().NumberOfPipes; ++pipe) {
            if (IsSizable(Pipe(pipe)) && Pipe(pipe).TypeGroup == group &&
                SizesOf(context_, Pipe(pipe).Material).Count > 0) {
                pipes.push_back(pipe);
            }
        }
        return pipes;
    }

    // The group's pipes meet the limits at a nominal size.
    int GroupExcess(const std::vector<int>& pipes, double nominal, const Limits& limits) {
        for (int pipe : pipes) {
            const int excess = Excess(
                limits, Flow(pipe), InnerOf(context_, Pipe(pipe).Material, nominal), CFactor(pipe));
            if (excess >= 0) {
                return excess;
            }
        }
        return -1;
    }

    void SizeGroup(int group) {
        const std::vector<int> pipes = GroupPipes(group);
        if (pipes.empty()) {
            return;
        }
        const Limits limits = LimitsOf(group);
        int widest = pipes.front();
        for (int pipe : pipes) {
            if (Pipe(pipe).NominalDiameter > Pipe(widest).NominalDiameter) {
                widest = pipe;
            }
        }
        const SizeList sizes = SizesOf(context_, Pipe(widest).Material);
        if (Pipe(widest).NominalDiameter == 0) {
            for (int pipe : pipes) {
                SetDiameter(pipe, sizes[sizes.AtOrAbove(limits.Minimum)]);
            }
            return;
        }
        double common = Pipe(widest).NominalDiameter;
        for (int pipe : pipes) {
            SetDiameter(pipe, common);
        }
        if (!judging_ && !Growing()) {
            return;
        }
        int index = sizes.IndexOf(common);
        if (index < 0) {
            index = sizes.AtOrAbove(common);
        }
        const int excess = GroupExcess(pipes, sizes[index], limits);
        int chosen = index;
        if (excess < 0 && !judging_) {
            return;
        }
        if (excess < 0) {
            int k = index;
            while (k >= 1 && GroupExcess(pipes, sizes[k - 1], limits) < 0) {
                --k;
            }
            chosen = Bounded(sizes, k == 0 ? 0 : std::min(k + 1, sizes.Count - 1), limits);
        } else if (LargerAllowed(sizes, sizes[index], limits) >= 0) {
            chosen = index + 1;
        } else if (judging_) {
            for (int pipe : pipes) {
                Note(pipe, excess);
            }
        }
        common = sizes[chosen];
        for (int pipe : pipes) {
            SetDiameter(pipe, common);
        }
    }

    // Along the flow from the supply no pipe is wider than the one before it: an earlier pipe
    // open to sizing takes the larger diameter of a pipe after it.
    void KeepSizesFromGrowingDownstream() {
        Project& project = Model();
        std::map<int, std::vector<int>> leaving; // node -> pipes whose water leaves it
        for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
            const CalcPipeRecord& record = Pipe(pipe);
            const int upstream = NodeNumberOf(record.Flow >= 0 ? record.BegNode : record.EndNode);
            leaving[upstream].push_back(pipe);
        }
        for (bool grown = true; grown;) {
            grown = false;
            for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
                CalcPipeRecord& record = Pipe(pipe);
                if (!IsSizable(record)) {
                    continue;
                }
                const int downstream =
                    NodeNumberOf(record.Flow >= 0 ? record.EndNode : record.BegNode);
                for (int after : leaving[downstream]) {
                    if (Pipe(after).NominalDiameter > record.NominalDiameter) {
                        SetDiameter(pipe, Pipe(after).NominalDiameter);
                        grown = true;
                    }
                }
            }
        }
    }

    void CloseStep() {
        for (int pipe = 1; pipe <= Model().NumberOfPipes; ++pipe) {
            CalcPipeRecord& record = Pipe(pipe);
            if (IsSizable(record)) {
                record.InsideDiameter = InnerOf(context_, record.Material, record.NominalDiameter);
                record.CFactor = state_.CValue[At(record.Material)];
            }
        }
    }

    RunContext& context_;
    SolverState& state_;
    const bool judging_; // the last solution is within tolerance: sizes may move
    std::vector<double> before_;
};

} // namespace

double SizingVelocity(double flow, double insideDiameter) {
    return Velocity(flow, insideDiameter);
}

double SizingFriction(double flow, double insideDiameter, double cFactor) {
    if (insideDiameter <= 0 || cFactor <= 0) {
        return 0;
    }
    // Per 100 ft by the solver's law, Q = (c·h)^0.5405 with c = C^1.85·d^4.87/4.52/L.
    return 100 * std::pow(flow, 1 / FlowExponent) * ConductanceDivisor /
           (std::pow(cFactor, CFactorExponent) * std::pow(insideDiameter, DiameterExponent));
}

void BuildFittingTable(const Project& project, SolverState& state) {
    state.FittingTable.assign(At(project.NumberOfPipes) + 1, FittingRow{});
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[At(pipe)];
        FittingRow& slots = state.FittingTable[At(pipe)];
        if (record.Material < MaterialMeter) {
            slots[0] = record.NominalLength;
            for (int kind = 0; kind < FittingKinds; ++kind) {
                slots[At(kind + 1)] = record.FittingCounts[At(kind)];
            }
            slots[9] = record.NonStandardFitLength;
        } else if (record.Material < MaterialFirePump) {
            slots[0] = record.DeviceLoss;
        } else if (record.Material == MaterialFirePump) {
            slots[0] = PumpSlot;
        }
    }
}

bool IsSizable(const CalcPipeRecord& pipe) {
    return IsLibraryMaterial(pipe.Material) && !IsTrue(pipe.Autosized);
}

bool SizingStep(RunContext& context, SolverState& state) {
    Sizing sizing(context, state);
    sizing.Run();
    const bool moved = sizing.Moved();
    state.SizesJudged = state.SizesJudged || sizing.Judging();
    // The wait for a converged solution counts passes on the same sizes.
    state.SizingWaits =
        sizing.Waiting() && !moved ? static_cast<Integer>(state.SizingWaits + 1) : Integer{0};
    state.WaitingImbalance = state.MaximumImbalance;
    return moved || sizing.Waiting();
}

bool SizesSettled(RunContext& context, SolverState& state) {
    Sizing sizing(context, state);
    return sizing.Settled();
}

void RefreshLengths(const Project& project, SolverState& state) {
    HalfEdgeTable& edges = state.Edges;
    for (int row = 1; row <= edges.Count; ++row) {
        HalfEdge& edge = edges[row];
        if (edge.Material >= MaterialMeter) {
            continue;
        }
        const CalcPipeRecord& pipe = project.CalcPipeRecord[At(edge.Pipe)];
        edge.Diameter = pipe.NominalDiameter;
        edge.Length = ToNumber(Format(pipe.TotalLength, "##0.00"));
    }
}

} // namespace quench
