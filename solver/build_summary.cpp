#include "solver/build_summary.h"

#include "solver/flow_imbalance.h"
#include "solver/hydraulics.h"

#include <cmath>

namespace quench {

namespace {

void SumNodes(const Project& project, SolverSummary& summary) {
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const auto& node = project.NodeRecord[static_cast<std::size_t>(position)];
        if (node.Discharge != 0) {
            ++summary.FlowingSprinklers;
        }
        summary.SprinklerFlow += node.Discharge;
        summary.FixedFlow += node.FixedFlow;
    }
}

const NodeRecord* NodeByNumber(const Project& project, const SolverState& state, int number) {
    const int position = state.Edges.PositionOf(number);
    return position == 0 ? nullptr : &project.NodeRecord[static_cast<std::size_t>(position)];
}

void SummarisePipes(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    SolverSummary& summary = state.Summary;
    const bool frictionLimit = project.CalculationData.MaxFrictionalLoss != 0;
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        auto& record = project.CalcPipeRecord[static_cast<std::size_t>(pipe)];
        const NodeRecord* begin = NodeByNumber(project, state, NodeNumberOf(record.BegNode));
        const NodeRecord* end = NodeByNumber(project, state, NodeNumberOf(record.EndNode));
        if (begin != nullptr && end != nullptr) {
            record.ElevationPressure =
                std::fabs(begin->Elevation - end->Elevation) * ElevationHeadPerFoot;
        }
        record.VelocityPressure = record.Material < MaterialMeter
                                      ? VelocityPressure(record.Flow, record.InsideDiameter)
                                      : 0.0;
        if (std::fabs(record.Velocity) > summary.MaximumVelocity) {
            summary.MaximumVelocity = std::fabs(record.Velocity);
            summary.MaximumVelocityPipe = pipe;
        }
        if (std::fabs(record.VelocityPressure) > summary.MaximumVelocityPressure) {
            summary.MaximumVelocityPressure = std::fabs(record.VelocityPressure);
            summary.MaximumVelocityPressurePipe = pipe;
        }
        if (begin != nullptr && end != nullptr && record.TotalLength != 0) {
            const double drop = std::fabs(begin->WorkPressure - end->WorkPressure);
            record.FrictionLoss = drop / record.TotalLength;
            if (frictionLimit && 100 * drop / record.TotalLength > summary.MaximumFrictionPer100) {
                summary.MaximumFrictionPer100 = 100 * drop / record.TotalLength;
            }
        }
    }
}

void SummariseImbalances(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    double largest = 0;
    double sum = 0;
    for (int k = 1; k <= state.RowCount; ++k) {
        const double magnitude = std::fabs(state.Correction[static_cast<std::size_t>(k)]);
        largest = std::fmax(largest, magnitude);
        sum += magnitude;
    }
    const double nodes = project.NumberOfNodes == 0 ? 1.0 : project.NumberOfNodes;
    project.MaxNodePressureImbalanceResult = largest;
    project.AvgNodePressureImbalanceResult = sum / nodes;
    double largestFlow = 0;
    double flowSum = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const double imbalance = NodeFlowImbalance(context, state, position);
        project.NodeRecord[static_cast<std::size_t>(position)].FlowImbalance = imbalance;
        if (std::fabs(imbalance) > std::fabs(largestFlow)) {
            largestFlow = imbalance;
        }
        flowSum += std::fabs(imbalance);
    }
    project.MaxNodeFlowImbalanceResult = largestFlow;
    project.AvgNodeFlowImbalanceResult = flowSum / nodes;
}

} // namespace

void BuildSummary(RunContext& context, SolverState& state) {
    state.Summary = SolverSummary{};
    SumNodes(context.Project, state.Summary);
    SummarisePipes(context, state);
    SummariseImbalances(context, state);
    state.Summary.HmdFirstRow = state.Edges.FirstRowOf(state.HmdNode);
}

} // namespace quench
