#include "solver/seeding.h"

#include "core/formats.h"
#include "core/text.h"
#include "solver/hydraulics.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

constexpr float HighestStartPressure = 32000;
constexpr int EvenBumps = 40;

// The given head of a supply in Supply mode, or nothing for another node.
bool SupplyHead(const SolverState& state, int number, double elevation, double& head) {
    const SolverOptions& options = state.Options;
    if (options.DemandMode) {
        return false;
    }
    double pressure = 0;
    if (number == FirstInflowNode) {
        pressure = options.InflowPressure1;
    } else if (options.InflowNode2 != 0 && number == options.InflowNode2) {
        pressure = options.InflowPressure2;
    } else if (options.InflowNode3 != 0 && number == options.InflowNode3) {
        pressure = options.InflowPressure3;
    } else {
        return false;
    }
    head = ElevationHeadPerFoot * elevation + pressure;
    return true;
}

double ElevationOf(const Project& project, const SolverState& state, int number) {
    const int position = state.Edges.PositionOf(number);
    return position == 0 ? 0.0 : project.NodeRecord[static_cast<std::size_t>(position)].Elevation;
}

double StartHead(const Project& project, const SolverState& state, int number) {
    double head = 0;
    if (SupplyHead(state, number, ElevationOf(project, state, number), head)) {
        return head;
    }
    return state.StartPressure;
}

// The pump's boost goes onto the first supply once, when the heads are first seeded.
void ApplyPumpBoost(SolverState& state, bool fromEstimates) {
    if (state.Options.DemandMode || state.PumpBoostApplied) {
        return;
    }
    if (fromEstimates || state.UsePumpCurve) {
        state.Options.InflowPressure1 = state.Options.InflowPressure1 + state.PumpBoost;
        state.PumpBoostApplied = true;
    }
}

void SeedFromStart(Project& project, SolverState& state) {
    HalfEdgeTable& edges = state.Edges;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        auto& node = project.NodeRecord[static_cast<std::size_t>(position)];
        node.WorkPressure = StartHead(project, state, node.Number);
    }
    for (int row = 1; row <= edges.Count; ++row) {
        HalfEdge& edge = edges[row];
        double head = 0;
        const bool supply =
            SupplyHead(state, edge.FromNode, ElevationOf(project, state, edge.FromNode), head);
        edge.FromHead = supply ? head : state.StartPressure;
        if (!supply) {
            edge.Residual = state.StartPressure;
        }
        edge.ToHead = StartHead(project, state, edge.ToNode);
    }
}

// A node's estimated head: the estimate at that end of its first working row, with elevation.
struct EndEstimate {
    bool Found = false;
    double Head = 0;
};

EndEstimate EstimateAt(const Project& project, int number) {
    for (int row = 1; row <= project.NumberOfActivePipes; ++row) {
        const auto& work = project.WorkPipeRecord[static_cast<std::size_t>(row)];
        if (TrimmedView(work.BegNode).empty() || TrimmedView(work.EndNode).empty()) {
            continue;
        }
        if (static_cast<int>(ToNumber(work.BegNode)) == number) {
            return {true, work.PressEstimateB + ElevationHeadPerFoot * work.ElevationB};
        }
        if (static_cast<int>(ToNumber(work.EndNode)) == number) {
            return {true, work.PressEstimateE + ElevationHeadPerFoot * work.ElevationE};
        }
    }
    return {};
}

void SeedFromEstimates(Project& project, SolverState& state) {
    HalfEdgeTable& edges = state.Edges;
    std::vector<double> heads(static_cast<std::size_t>(project.NumberOfNodes) + 1, 0.0);
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        auto& node = project.NodeRecord[static_cast<std::size_t>(position)];
        double head = 0;
        if (!SupplyHead(state, node.Number, node.Elevation, head)) {
            const EndEstimate estimate = EstimateAt(project, node.Number);
            head = estimate.Found ? estimate.Head : node.WorkPressure;
        }
        node.WorkPressure = head;
        heads[static_cast<std::size_t>(position)] = head;
    }
    for (int row = 1; row <= edges.Count; ++row) {
        HalfEdge& edge = edges[row];
        if (edge.FromPosition != 0) {
            edge.FromHead = heads[static_cast<std::size_t>(edge.FromPosition)];
        }
        if (edge.ToPosition != 0) {
            edge.ToHead = heads[static_cast<std::size_t>(edge.ToPosition)];
        }
    }
}

} // namespace

void SeedHeads(RunContext& context, SolverState& state, Seeding seeding) {
    const bool fromEstimates = state.Options.UseEstimates && seeding == Seeding::AsOptions;
    ApplyPumpBoost(state, fromEstimates);
    if (fromEstimates) {
        SeedFromEstimates(context.Project, state);
    } else {
        SeedFromStart(context.Project, state);
    }
}

void BumpStartPressure(RunContext& context, SolverState& state, Seeding seeding) {
    const bool fromEstimates = state.Options.UseEstimates && seeding == Seeding::AsOptions;
    if (fromEstimates || state.StartPressure > HighestStartPressure) {
        return;
    }
    const double base = state.StartBumps <= EvenBumps ? 1.0 : 2.0;
    const double offset = state.StartBumps <= EvenBumps ? 0.0 : EvenBumps;
    state.StartPressure = static_cast<float>(std::pow(base, state.StartBumps - offset) + 8);
    ++state.StartBumps;
    SeedHeads(context, state, seeding);
}

} // namespace quench

namespace quench {

namespace {

constexpr double EstimatePower = 2.2;
constexpr double EstimateScale = 0.01;

// The largest nominal diameter of the pipes at each node position.
std::vector<double> LargestDiameters(const Project& project, const SolverState& state) {
    std::vector<double> largest(static_cast<std::size_t>(project.NumberOfNodes) + 1, 0.0);
    const HalfEdgeTable& edges = state.Edges;
    for (int row = 1; row <= edges.Count; ++row) {
        const double nominal =
            project.CalcPipeRecord[static_cast<std::size_t>(edges[row].Pipe)].NominalDiameter;
        double& value = largest[static_cast<std::size_t>(edges[row].FromPosition)];
        value = std::max(value, nominal);
    }
    return largest;
}

} // namespace

void UpdateEstimates(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    HalfEdgeTable& edges = state.Edges;
    const bool demand = state.Options.DemandMode;
    const double minimum = state.Options.MinimumResidual;
    std::vector<double> estimate = LargestDiameters(project, state);
    double ceiling = 0;
    double top = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const NodeRecord& node = project.NodeRecord[static_cast<std::size_t>(position)];
        if (demand && node.Number == state.HmdNode) {
            estimate[static_cast<std::size_t>(position)] =
                minimum + SeedingHeadPerFoot * node.Elevation;
        }
        if (!demand && node.Number == FirstInflowNode) {
            ceiling = EstimateScale * node.WorkPressure + SeedingHeadPerFoot * node.Elevation;
        }
        top = std::max(top, SeedingHeadPerFoot * node.Elevation);
    }
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const NodeRecord& node = project.NodeRecord[static_cast<std::size_t>(position)];
        double& value = estimate[static_cast<std::size_t>(position)];
        const bool supply = !demand && node.Number == FirstInflowNode;
        if ((state.Options.UseEstimates && node.WorkPressure != 0) || supply) {
            value = EstimateScale * node.WorkPressure + SeedingHeadPerFoot * node.Elevation;
        } else {
            value = minimum + (demand ? top : 0.0) + std::pow(value, EstimatePower);
        }
        if (!demand && !supply) {
            value = value > ceiling ? ceiling - 1 : value;
            value = std::max(value, 0.0);
        }
    }
    for (int row = 1; row <= edges.Count; ++row) {
        edges[row].FromHead = estimate[static_cast<std::size_t>(edges[row].FromPosition)];
        if (edges[row].ToPosition != 0) {
            edges[row].ToHead = estimate[static_cast<std::size_t>(edges[row].ToPosition)];
        }
    }
    double sum = 0;
    int sprinklers = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const double kFactor = state.NodeKFactor[static_cast<std::size_t>(position)];
        if (kFactor > 0) {
            sum += kFactor;
            ++sprinklers;
        }
    }
    const int supply = edges.FirstRowOf(FirstInflowNode);
    if (supply != 0 && sprinklers > 0) {
        edges[supply].FixedFlow =
            -1.1 * (sum / sprinklers) * sprinklers * std::pow(std::max(minimum, 0.0), 0.5);
    }
}

} // namespace quench
