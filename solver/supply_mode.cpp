#include "solver/supply_mode.h"

#include "library/pump_curve.h"

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
    double flow = seedFlow;
    if (state.InflowFlowEstimate > 0) {
        flow = state.InflowFlowEstimate;
    } else if (context.LastPumpFlow > 0) {
        flow = context.LastPumpFlow;
    }
    state.UsePumpCurve = context.PumpUsesCurve;
    state.PumpBoost = 0;
    if (state.UsePumpCurve) {
        const auto coefficients = ProjectPumpCoefficientsInPsi(context.Project.CalculationData);
        state.PumpBoost = static_cast<float>(EvaluatePumpCurve(coefficients, flow));
    }
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
