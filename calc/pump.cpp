#include "calc/pump.h"

#include "calc/check_calculation_screen.h"
#include "calc/messages.h"
#include "calc/screen_words.h"
#include "core/formats.h"
#include "core/text.h"
#include "library/pump_curve.h"
#include "solver/build_half_edges.h"
#include "solver/calculation_options.h"
#include "solver/supply_mode.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace quench {

namespace {

// A settled curve that gives exactly 0 still counts as a boost.
constexpr double LeastSettledBoost = 0.00001;
// A pump flow of this much or less in a later pass is taken from the supply instead (gpm).
constexpr double LeastPumpFlow = 1;

int FindPump(const Project& project) {
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        if (project.CalcPipeRecord[pipe].Material == MaterialFirePump) {
            return pipe;
        }
    }
    return 0;
}

double NodeKFactor(const Project& project, int number) {
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        if (project.NodeRecord[position].Number == number) {
            return project.NodeRecord[position].KFactor;
        }
    }
    return 0;
}

void StopAtPump(RunContext& context, const std::string& text) {
    context.Stop(Diagnostic(MessageStyle::Plain, "", text).Bring(screens::PipeData, screens::Show));
}

bool IsCurve(const PumpCoefficientArray& coefficients) {
    return std::any_of(coefficients.begin(), coefficients.end(),
                       [](double coefficient) { return coefficient != 0; });
}

// The two sides of the pump: the nodes the walk from the supply reached without crossing it, and
// the node it delivers to.
struct PumpSides {
    std::set<int> Inlet;
    int Outlet = 0;
    bool Separates = false; // the pump is the only way from the supply to its outlet
};

PumpSides FindSides(const Project& project, const InflowPipePath& path, int pump) {
    PumpSides sides;
    sides.Inlet.insert(InflowNodeCode);
    for (int pipe : path) {
        if (pipe != pump) {
            const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
            sides.Inlet.insert(NodeNumberOf(record.BegNode));
            sides.Inlet.insert(NodeNumberOf(record.EndNode));
        }
    }
    const CalcPipeRecord& record = project.CalcPipeRecord[pump];
    const int begin = NodeNumberOf(record.BegNode);
    const int end = NodeNumberOf(record.EndNode);
    const bool beginInlet = sides.Inlet.count(begin) != 0;
    const bool endInlet = sides.Inlet.count(end) != 0;
    sides.Separates = beginInlet != endInlet;
    if (sides.Separates) {
        sides.Outlet = beginInlet ? end : begin;
    } else {
        sides.Outlet = record.Flow < 0 ? begin : end;
    }
    return sides;
}

// What the pump delivers: all that leaves its outlet node through the other pipes and the node's
// own discharge. The pump itself is a near short, whose own flow is pinned less tightly.
double FlowThroughPump(const Project& project, const SolverState& state, int pump, int outlet) {
    double leaving = 0;
    const int position = state.Edges.PositionOf(outlet);
    if (position != 0) {
        const NodeRecord& node = project.NodeRecord[position];
        leaving = node.Discharge + node.FixedFlow;
    }
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
        if (pipe == pump) {
            continue;
        }
        if (NodeNumberOf(record.BegNode) == outlet) {
            leaving += record.Flow;
        } else if (NodeNumberOf(record.EndNode) == outlet) {
            leaving -= record.Flow;
        }
    }
    return std::fabs(leaving);
}

const PumpCoefficientArray& WorkCoefficients(RunContext& context) {
    PumpCoefficientArray& work = context.PumpWorkCoefficients;
    if (work[0] == 0 && work[1] == 0 && work[2] == 0) {
        work = ProjectPumpCoefficientsInPsi(context.Project.CalculationData);
    }
    return work;
}

// Demand mode takes the boost as it comes, within its limits, telling the user of each.
double LimitDemandBoost(RunContext& context, double boost) {
    if (boost < 0) {
        context.Report({MessageStyle::Plain, "", messages::NegativePumpBoost(boost)});
        return 0;
    }
    if (static_cast<Single>(boost) > PumpMaximumBoost) {
        context.Report({MessageStyle::Plain, "", messages::PumpBoostTooLarge(PumpMaximumBoost)});
        return PumpMaximumBoost;
    }
    return boost;
}

// Supply mode: the boost for the next pass, at a flow chosen from the flows of the passes so far.
PumpStep AskNextPass(RunContext& context, const SolverState& state, PumpPasses& passes,
                     const PumpCoefficientArray& curve, double flow, CalcPipeRecord& pump) {
    if (passes.Count >= MaximumPumpPasses) {
        StopAtPump(context, messages::PumpFlowUnsettled(MaximumPumpPasses));
        return PumpStep::Finished;
    }
    const double taken = state.PumpSeedFlow;
    const double next =
        FlowKeepingSupplyPositive(curve, context.Project.CalculationData.InflowResidualPressure1,
                                  taken, passes.Search.Next(taken, flow));
    pump.DeviceLoss = EvaluatePumpCurve(curve, next);
    context.LastPumpFlow = next;
    context.PumpRerunPending = true;
    return PumpStep::NextPass;
}

// The boost from the curve at the flow through the pump.
PumpStep BoostFromCurve(RunContext& context, const SolverState& state, PumpPasses& passes,
                        const PumpSides& sides, int pump) {
    Project& project = context.Project;
    CalcPipeRecord& record = project.CalcPipeRecord[pump];
    const bool rerun = passes.Count > 1;
    double flow = FlowThroughPump(project, state, pump, sides.Outlet);
    if (rerun && flow <= LeastPumpFlow) {
        flow = project.CalculationData.InflowFlow;
    }
    context.PumpFlow = flow;
    const PumpCoefficientArray& curve = WorkCoefficients(context);
    if (rerun && std::fabs(context.LastPumpFlow - flow) < PumpFlowTolerance) {
        const double boost = EvaluatePumpCurve(curve, flow);
        record.DeviceLoss = boost == 0 ? LeastSettledBoost : boost;
        return PumpStep::Finished;
    }
    if (flow == 0 || !IsCurve(curve)) {
        record.DeviceLoss = 0; // no flow to take the curve at, or no curve to take
        return PumpStep::Finished;
    }
    if (IsSupplyMode(project.CalculationData)) {
        return AskNextPass(context, state, passes, curve, flow, record);
    }
    context.LastPumpFlow = flow;
    record.DeviceLoss = LimitDemandBoost(context, EvaluatePumpCurve(curve, flow));
    return PumpStep::Finished;
}

// The solve carried the supply's side of the pump at the pressure behind it: in front of the pump
// the water is lower by the boost.
void LowerInletPressures(Project& project, const SolverState& state, const PumpSides& sides,
                         double boost) {
    for (int number : sides.Inlet) {
        const int position = state.Edges.PositionOf(number);
        if (position != 0) {
            NodeRecord& node = project.NodeRecord[position];
            node.ResidualPressure -= boost;
            node.WorkPressure -= boost;
        }
    }
}

void PostBoost(Project& project, const SolverState& state, const PumpSides& sides, double boost) {
    if (!sides.Separates) {
        return;
    }
    CalculationData& data = project.CalculationData;
    if (IsSupplyMode(data)) {
        // The boost the solve put onto the first supply: its nodes show the given pressure again.
        LowerInletPressures(project, state, sides,
                            state.Options.InflowPressure1 - data.InflowResidualPressure1);
        return;
    }
    // Demand mode solved for the pressure behind the pump: the supply needs less by the boost.
    LowerInletPressures(project, state, sides, boost);
    data.InflowResidualPressure -= boost;
    project.SystemData.CalculatedResidualPressure =
        static_cast<Single>(data.InflowResidualPressure);
}

} // namespace

bool ProjectHasPumpCurve(const CalculationData& data) {
    return IsCurve(data.PumpCoefficients);
}

void CheckPumpInlet(RunContext& context, InflowPipePath& path) {
    const Project& project = context.Project;
    path.clear();
    const int pump = FindPump(project);
    if (pump == 0) {
        return;
    }
    std::set<int> passed{InflowNodeCode};
    std::vector<int> front{InflowNodeCode};
    std::vector<bool> crossed(static_cast<std::size_t>(project.NumberOfPipes) + 1, false);
    while (!front.empty()) {
        std::vector<int> next;
        for (int node : front) {
            if (NodeKFactor(project, node) > 0) {
                StopAtPump(context, messages::SprinklerUpstreamOfPump);
                return;
            }
            for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
                const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
                const int begin = NodeNumberOf(record.BegNode);
                const int end = NodeNumberOf(record.EndNode);
                if (crossed[static_cast<std::size_t>(pipe)] || (begin != node && end != node)) {
                    continue;
                }
                crossed[static_cast<std::size_t>(pipe)] = true;
                path.push_back(pipe);
                if (pipe == pump) {
                    continue; // the walk stops at the pump
                }
                const int other = begin == node ? end : begin;
                if (passed.insert(other).second) {
                    next.push_back(other);
                }
            }
        }
        front.swap(next);
    }
}

PumpStep EvaluatePumpBoost(RunContext& context, const SolverState& state,
                           const InflowPipePath& path, PumpPasses& passes) {
    Project& project = context.Project;
    const int pump = FindPump(project);
    if (pump == 0) {
        return PumpStep::Finished;
    }
    ++passes.Count;
    const PumpSides sides = FindSides(project, path, pump);
    CalcPipeRecord& record = project.CalcPipeRecord[pump];
    if (context.PumpRerunPending || record.DeviceLoss == NotGiven) {
        if (BoostFromCurve(context, state, passes, sides, pump) == PumpStep::NextPass) {
            return PumpStep::NextPass;
        }
        if (context.AbortFlag == 1) {
            return PumpStep::Finished;
        }
    }
    if (record.DeviceLoss == 0) {
        StopAtPump(context, messages::PumpBoostZero);
        return PumpStep::Finished;
    }
    PostBoost(project, state, sides, record.DeviceLoss);
    return PumpStep::Finished;
}

void RestoreCurvePumpRow(Project& project) {
    const int pump = FindPump(project);
    if (pump != 0) {
        project.CalcPipeRecord[pump].DeviceLoss = NotGiven;
    }
}

void ReadPumpBoost(RunContext& context) {
    Project& project = context.Project;
    context.SupplyPumpBoost = 0;
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!HasBothNodes(work) || work.Material != MaterialFirePump) {
            continue;
        }
        const double boost = context.PumpRerunPending ? 0.0 : work.DeviceLoss;
        if (work.DeviceLoss == NotGiven) {
            context.PumpRerunPending = true;
        }
        if (boost != NotGiven && !context.PumpRerunPending &&
            IsSupplyMode(project.CalculationData)) {
            // The pump lifts the supply's pressure by its boost.
            context.SupplyPumpBoost = boost;
        }
        context.RunPumpBoost = boost;
    }
}

} // namespace quench
