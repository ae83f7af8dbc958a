#include "solver/governing_sprinkler.h"

#include "solver/flow_imbalance.h"
#include "solver/hydraulics.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

constexpr double PressureBand = 0.01;       // psi
constexpr double DensityTolerance = 0.0001; // gpm/ft²
constexpr double BalanceTolerance = 0.05;   // gpm at a node of a solution

double DensityPressureOf(const NodeRecord& node, double requiredDensity) {
    if (requiredDensity <= 0 || node.SprinklerArea <= 0) {
        return 0;
    }
    const double flow = requiredDensity * node.SprinklerArea / node.KFactor;
    return flow * flow;
}

} // namespace

GoverningSprinkler FindGoverningSprinkler(const Project& project, double minimumPressure,
                                          double requiredDensity) {
    GoverningSprinkler worst;
    double lowestShare = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const NodeRecord& node = project.NodeRecord[static_cast<std::size_t>(position)];
        if (node.KFactor <= 0 || node.Discharge <= 0 || node.Number == FirstInflowNode) {
            continue;
        }
        const double density = DensityPressureOf(node, requiredDensity);
        const double need = std::max(minimumPressure, density);
        if (need <= 0) {
            continue;
        }
        const double share = node.ResidualPressure / need;
        if (worst.Number == 0 || share < lowestShare) {
            lowestShare = share;
            worst = {node.Number, node.ResidualPressure, need, density > minimumPressure};
        }
    }
    return worst;
}

bool HoldsItsRequirement(const GoverningSprinkler& sprinkler, double requiredDensity) {
    const double surplus = sprinkler.Pressure - sprinkler.Requirement;
    if (surplus < -PressureBand) {
        return false;
    }
    if (surplus <= PressureBand || !sprinkler.DensityGoverns) {
        return surplus <= PressureBand;
    }
    // Density's own tolerance: the density grows with the square root of the pressure.
    const double density = requiredDensity * std::sqrt(sprinkler.Pressure / sprinkler.Requirement);
    return density - requiredDensity <= DensityTolerance;
}

bool HeadsAreOneSolution(const RunContext& context, SolverState& state) {
    const std::vector<HalfEdge> solved = state.Edges.Rows;
    ComputeFlows(state);
    double largest = 0;
    for (int position = 1; position <= context.Project.NumberOfNodes; ++position) {
        largest = std::max(largest, std::fabs(NodeFlowImbalance(context, state, position)));
    }
    state.Edges.Rows = solved;
    return largest <= BalanceTolerance;
}

} // namespace quench
