#include "solver/density.h"

namespace quench {

double FindMinDensity(const Project& project, SolverState& state) {
    double lowest = NoFlowingSprinkler;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const auto& node = project.NodeRecord[static_cast<std::size_t>(position)];
        if (state.NodeKFactor[static_cast<std::size_t>(position)] > 0 && node.Discharge > 0 &&
            node.SprinklerArea != 0) {
            const double density = node.Discharge / node.SprinklerArea;
            state.NodeDensity[static_cast<std::size_t>(position)] = density;
            if (density < lowest) {
                lowest = density;
            }
        }
    }
    state.MinimumDensity = lowest;
    return lowest;
}

} // namespace quench
