#include "calc/finish_results.h"

#include "calc/messages.h"
#include "calc/screen_words.h"
#include "solver/build_half_edges.h"
#include "solver/calculation_options.h"
#include "solver/hydraulics.h"

#include <cmath>
#include <utility>

namespace quench {

namespace {

void CopySummary(Project& project, const SolverState& state) {
    CalculationData& data = project.CalculationData;
    const SolverSummary& summary = state.Summary;
    data.NumberOfUniquePipeSections = project.NumberOfPipes;
    data.NumberOfFlowingSprinklers = static_cast<Integer>(summary.FlowingSprinklers);
    data.MaximumFlowVelocity = summary.MaximumVelocity;
    data.MaximumVelocityPipe = static_cast<Integer>(summary.MaximumVelocityPipe);
    data.SprinklerFlow = summary.SprinklerFlow;
    data.NonSprinklerFlow = summary.FixedFlow;
    data.HMDNodeNumber = state.HmdNode;
    data.HMDActualResidualPressure = state.HmdResidual;
    data.HMDActualFlow = state.HmdFlow;
}

// The supply's row of the half-edge table: its pressure and the flow it delivers.
void CopyInflow(Project& project, const SolverState& state) {
    const HalfEdgeTable& edges = state.Edges;
    for (int row = 1; row <= edges.Count; ++row) {
        const HalfEdge& edge = edges[row];
        if (edge.FromNode == FirstInflowNode) {
            project.CalculationData.InflowResidualPressure = edge.FromHead - edge.FromElevationHead;
            project.CalculationData.InflowFlow = edge.Flow;
            break;
        }
    }
    project.SystemData.CalculatedResidualPressure =
        static_cast<Single>(project.CalculationData.InflowResidualPressure);
    project.SystemData.CalculatedFlowRate = static_cast<Single>(project.CalculationData.InflowFlow);
}

void FillEnds(const NodeRecord& begin, const NodeRecord& end, PipeResultRecord& result) {
    result.KFactorB = begin.KFactor;
    result.KFactorE = end.KFactor;
    result.ElevationB = begin.Elevation;
    result.ElevationE = end.Elevation;
    result.DischargeB = begin.Discharge;
    result.DischargeE = end.Discharge;
    result.ResidualB = begin.ResidualPressure;
    result.ResidualE = end.ResidualPressure;
    result.FixedFlowB = begin.FixedFlow;
    result.FixedFlowE = end.FixedFlow;
}

// One result row: the pipe seen from its upstream node. False on a pump without boost.
bool WriteRow(RunContext& context, const SolverState& state, int pipe, bool turned,
              PipeResultRecord& result) {
    Project& project = context.Project;
    const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
    const int from = NodeNumberOf(turned ? record.EndNode : record.BegNode);
    const int to = NodeNumberOf(turned ? record.BegNode : record.EndNode);
    const int fromPosition = state.Edges.PositionOf(from);
    const int toPosition = state.Edges.PositionOf(to);
    result = PipeResultRecord{};
    result.BegNode = static_cast<Integer>(TypedNodeNumber(project, from));
    result.EndNode = static_cast<Integer>(TypedNodeNumber(project, to));
    if (fromPosition != 0 && toPosition != 0) {
        FillEnds(project.NodeRecord[fromPosition], project.NodeRecord[toPosition], result);
    }
    result.Flow = std::fabs(record.Flow);
    result.Velocity = std::fabs(record.Velocity);
    result.FrictionLossPerFoot = record.FrictionLoss;
    result.FittingText = record.FittingText;
    result.TypeGroup = record.TypeGroup;
    result.PipeLength = record.NominalLength;
    result.FittingLength = record.FittingLength;
    result.TotalLength = record.TotalLength;
    result.ElevationPressure = record.ElevationPressure;
    result.VelocityPressure = record.VelocityPressure;
    if (IsDeviceCode(record.Material)) {
        result.DeviceFlag = 2;
        result.FrictionPressure = record.DeviceLoss;
        if (pipe == project.NumberOfPipes) {
            result.Flow = project.CalculationData.InflowFlow;
        }
        if (record.Material == MaterialFirePump && record.DeviceLoss == 0) {
            context.Stop(Diagnostic(MessageStyle::Plain, "", messages::PumpBoostZero)
                             .Bring(screens::PipeData, screens::Show));
            return false;
        }
    } else {
        result.DeviceFlag = 1;
        result.NominalDiameter = record.NominalDiameter;
        result.InsideDiameter = record.InsideDiameter;
        result.CFactor = record.CFactor;
        result.FrictionPressure = record.FrictionLoss * record.TotalLength;
    }
    return true;
}

// The rows in the order of the nodes, each pipe under the node its water comes from.
bool WriteResultRows(RunContext& context, const SolverState& state) {
    Project& project = context.Project;
    std::vector<std::vector<std::pair<int, bool>>> underNode(
        static_cast<std::size_t>(project.NumberOfNodes) + 1);
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
        const bool turned = record.Flow < 0;
        const int upstream = NodeNumberOf(turned ? record.EndNode : record.BegNode);
        const int position = state.Edges.PositionOf(upstream);
        if (position != 0) {
            underNode[static_cast<std::size_t>(position)].emplace_back(pipe, turned);
        }
    }
    int rows = 0;
    for (const auto& pipes : underNode) {
        for (const auto& [pipe, turned] : pipes) {
            if (!WriteRow(context, state, pipe, turned, project.PipeResultRecord[++rows])) {
                return false;
            }
        }
    }
    for (int row = 2; row <= rows; ++row) {
        if (project.PipeResultRecord[row].BegNode == project.InflowNode) {
            std::swap(project.PipeResultRecord[1], project.PipeResultRecord[row]);
            break;
        }
    }
    return true;
}

} // namespace

PumpStep FinishResults(RunContext& context, const SolverState& state, PumpPasses& pump) {
    Project& project = context.Project;
    InflowPipePath path;
    CheckPumpInlet(context, path);
    if (context.AbortFlag == 1) {
        return PumpStep::Finished;
    }
    CopySummary(project, state);
    CopyInflow(project, state);
    if (EvaluatePumpBoost(context, state, path, pump) == PumpStep::NextPass) {
        return PumpStep::NextPass;
    }
    if (context.AbortFlag == 1 || !WriteResultRows(context, state)) {
        return PumpStep::Finished;
    }
    context.Screens.Send(screens::GeneralData, screens::UpdateCalculatedSupply);
    return PumpStep::Finished;
}

} // namespace quench
