#include "solver/supply_mode.h"

#include <cmath>

namespace quench {

namespace {

constexpr double SeedSprinklerPressure = 7;

double NodeKFactor(const SolverState& state, int position) {
    return state.NodeKFactor[static_cast<std::size_t>(position)];
}

// Position of the sprinkler with the strictly lowest residual, 0 when there is none.
int LowestResidualPosition(const Project& project, const SolverState& state) {
    int lowest = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        if (NodeKFactor(state, position) == 0) {
            continue;
        }
        const double residual =
            project.NodeRecord[static_cast<std::size_t>(position)].ResidualPressure;
        if (lowest == 0 ||
            residual < project.NodeRecord[static_cast<std::size_t>(lowest)].ResidualPressure) {
            lowest = position;
        }
    }
    return lowest;
}

} // namespace

void ComputePumpBoost(const RunContext& context, SolverState& state) {
    const HalfEdgeTable& edges = state.Edges;
    double seedFlow = 0;
    for (int row = 1; row <= edges.Count; ++row) {
        if (edges[row].KFactor > 0) {
            seedFlow += std::pow(SeedSprinklerPressure, 0.5) * edges[row].KFactor;
        }
    }
    // A later pass of the same run takes the boost at the flow that the driver chose from the
    // pump flows of the passes before it; the first takes it at the flow of an earlier solution,
    // or at the sprinklers' flow at 7 psi.
    double flow = seedFlow;
    if (context.LastPumpFlow > 0) {
        flow = context.LastPumpFlow;
    } else if (state.InflowFlowEstimate > 0) {
        flow = state.InflowFlowEstimate;
    }
    state.UsePumpCurve = context.PumpUsesCurve;
    state.PumpBoost = 0;
    state.PumpSeedFlow = 0;
    if (state.UsePumpCurve) {
        const CalculationData& data = context.Project.CalculationData;
        const PumpCoefficientArray coefficients = ProjectPumpCoefficientsInPsi(data);
        flow = FlowKeepingSupplyPositive(coefficients, data.InflowResidualPressure1, 0, flow);
        state.PumpBoost = static_cast<float>(EvaluatePumpCurve(coefficients, flow));
        state.PumpSeedFlow = flow;
    }
}

double FlowKeepingSupplyPositive(const PumpCoefficientArray& curve, double supplyPressure,
                                 double from, double to) {
    constexpr int Halvings = 60;
    for (int halving = 0; halving < Halvings && supplyPressure + EvaluatePumpCurve(curve, to) <= 0;
         ++halving) {
        to = (from + to) / 2;
    }
    return to;
}

void FindLowestResidual(const Project& project, SolverState& state) {
    const int lowest = LowestResidualPosition(project, state);
    if (lowest == 0) {
        state.HmdNode = 0;
        state.HmdResidual = 0;
        state.HmdFlow = 0;
        return;
    }
    const auto& node = project.NodeRecord[static_cast<std::size_t>(lowest)];
    state.HmdNode = static_cast<Integer>(node.Number);
    const double residual = node.ResidualPressure;
    state.HmdResidual = residual;
    double kFactor = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const auto& candidate = project.NodeRecord[static_cast<std::size_t>(position)];
        if (candidate.Discharge != 0 && candidate.Number == state.HmdNode) {
            kFactor = NodeKFactor(state, position);
            break;
        }
    }
    state.HmdFlow = residual < 0 ? 0.0 : kFactor * std::pow(residual, 0.5);
}

void FindLowestResidualNode(const Project& project, SolverState& state) {
    const int lowest = LowestResidualPosition(project, state);
    if (lowest != 0) {
        state.HmdNode =
            static_cast<Integer>(project.NodeRecord[static_cast<std::size_t>(lowest)].Number);
    }
}

} // namespace quench
