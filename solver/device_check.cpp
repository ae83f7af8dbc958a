#include "solver/device_check.h"

#include "solver/solver_messages.h"

#include <cmath>

namespace quench {

namespace {

constexpr double LeastRelativeFlow = 0.0001;
constexpr double LossTolerance = 0.1; // psi
constexpr double LargestLength = 1E+307;
constexpr double SmallestRatio = 1E-05;

double ResidualOf(const Project& project, const SolverState& state, int number) {
    const int position = state.Edges.PositionOf(number);
    return position == 0 ? 0.0
                         : project.NodeRecord[static_cast<std::size_t>(position)].ResidualPressure;
}

double TotalPipeFlow(const Project& project) {
    double total = 0;
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        total += std::fabs(project.CalcPipeRecord[static_cast<std::size_t>(pipe)].Flow);
    }
    return total;
}

// One row of a device: its length follows the ratio of the drop found to the drop stated.
bool AdjustRow(RunContext& context, HalfEdge& row, const DeviceConstraint& device, double drop) {
    bool changed = false;
    double ratio = 0;
    if (device.Loss != 0) {
        ratio = drop / device.Loss;
    } else if (row.Length != 0) {
        row.Length = 0;
        changed = true;
    }
    if (device.Loss != 0 && std::fabs(ratio - 1) > LossTolerance / device.Loss) {
        if (row.Length > LargestLength) {
            context.Report({MessageStyle::Plain, "", DeviceDivergenceMessage}); // the run goes on
            context.Progress.CloseDisplay();
        }
        row.Length = ratio == 0 ? row.Length / SmallestRatio : row.Length / ratio;
        changed = true;
    }
    return changed;
}

} // namespace

bool CheckDevices(RunContext& context, SolverState& state) {
    const Project& project = context.Project;
    HalfEdgeTable& edges = state.Edges;
    DeviceList& devices = state.Devices;
    const double totalFlow = TotalPipeFlow(project);
    bool changed = false;
    for (int d = 0; d < devices.Count(); ++d) {
        double& relativeFlow = devices.RelativeFlow[static_cast<std::size_t>(d)];
        if (std::fabs(relativeFlow) < LeastRelativeFlow) {
            continue;
        }
        const DeviceConstraint& device = devices.Devices[static_cast<std::size_t>(d)];
        const double drop = std::fabs(ResidualOf(project, state, device.FromNode) -
                                      ResidualOf(project, state, device.ToNode));
        for (const auto& [from, to] : {std::pair{device.FromNode, device.ToNode},
                                       std::pair{device.ToNode, device.FromNode}}) {
            const int position = edges.PositionOf(from);
            if (position == 0 || edges.FirstRow[static_cast<std::size_t>(position)] == 0) {
                continue;
            }
            for (int row = edges.FirstRow[static_cast<std::size_t>(position)];
                 row <= edges.LastRow[static_cast<std::size_t>(position)]; ++row) {
                HalfEdge& edge = edges[row];
                if (edge.ToNode != to) {
                    continue;
                }
                changed = AdjustRow(context, edge, device, drop) || changed;
                relativeFlow = totalFlow == 0 ? 0.0 : std::fabs(edge.Flow) / totalFlow;
            }
        }
    }
    return changed;
}

} // namespace quench
