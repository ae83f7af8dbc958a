#include "solver/density.h"

#include "core/formats.h"
#include "solver/calculation_options.h"
#include "solver/hmd.h"
#include "solver/hydraulics.h"

#include <cmath>

namespace quench {

namespace {

constexpr double LowestCountedDensity = 0.01;

std::size_t At(int position) {
    return static_cast<std::size_t>(position);
}

double Square(double value) {
    return value * value;
}

const std::string& KText(const SolverState& state, int position) {
    return state.NodeKText[At(position)];
}

// The K-factor of a node for the density: its number; 1 for none or a text "D"; a small value
// for another text.
double DensityKFactor(const Project& project, const SolverState& state, int position) {
    const double kFactor = project.NodeRecord[At(position)].KFactor;
    if (kFactor != 0) {
        return kFactor;
    }
    const std::string& text = KText(state, position);
    return text == "D" || IsNumeric(text) ? 1.0 : 0.0001;
}

} // namespace

bool IsValidKText(const std::string& text) {
    if (text == "Dflt") {
        return true;
    }
    if (text == "Inact" || text == "None" || text == "Value") {
        return false;
    }
    return ToNumber(text) != 0;
}

double KFactorOfText(const Project& project, const std::string& text) {
    return text == "Dflt" ? project.SystemData.DefaultKFactor : ToNumber(text);
}

double FindMinDensity(const Project& project, SolverState& state) {
    double lowest = NoFlowingSprinkler;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const auto& node = project.NodeRecord[At(position)];
        if (state.NodeKFactor[At(position)] > 0 && node.Discharge > 0 && node.SprinklerArea != 0) {
            const double density = node.Discharge / node.SprinklerArea;
            state.NodeDensity[At(position)] = density;
            if (density < lowest) {
                lowest = density;
            }
        }
    }
    state.Density.MinimumDensity = lowest;
    return lowest;
}

void SeedDensityPressure(const Project& project, SolverState& state) {
    const double density = RequiredDensity(project, false);
    const int position = state.Edges.PositionOf(state.HmdNode);
    if (density == 0 || position == 0 || !IsValidKText(KText(state, position))) {
        return;
    }
    const double kFactor = KFactorOfText(project, KText(state, position));
    if (kFactor != 0) {
        state.DensityPressure =
            Square(density * project.NodeRecord[At(position)].SprinklerArea / kFactor);
    }
    UpdateDensityPressure(project, state);
    if (state.DensityPressure > state.TargetPressure) {
        state.TargetPressure = state.DensityPressure;
    }
    PickFirstHmd(state);
    state.StartPressure = static_cast<float>(state.TargetPressure + 1);
}

void UpdateDensityPressure(const Project& project, SolverState& state) {
    state.DensityPressure = 0;
    const double density = RequiredDensity(project, false);
    if (density == 0) {
        return;
    }
    const int hmd = state.Edges.PositionOf(state.HmdNode);
    const double hmdResidual = hmd != 0 ? project.NodeRecord[At(hmd)].ResidualPressure : 0.0;
    // The largest density pressure of the flowing sprinklers below the HMD node, or the HMD
    // node's own, each from the sprinkler's own area and K.
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const auto& node = project.NodeRecord[At(position)];
        if (node.Discharge == 0 || !IsValidKText(KText(state, position))) {
            continue;
        }
        const bool isHmd = position == hmd;
        if (node.ResidualPressure >= hmdResidual && !isHmd && state.DensityPressure != 0) {
            continue;
        }
        const double kFactor = DensityKFactor(project, state, position);
        const double pressure = Square(density * node.SprinklerArea / kFactor);
        if (pressure >= state.DensityPressure || isHmd) {
            state.DensityPressure = pressure;
        }
    }
    if (state.DensityPressure > state.Options.MinimumResidual) {
        state.TargetPressure = state.DensityPressure;
    }
}

void SwitchToDensityNode(const Project& project, SolverState& state) {
    state.DensityNode = 0;
    int lowest = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        if (state.NodeDensity[At(position)] != 0 && IsValidKText(KText(state, position))) {
            lowest = position;
            break;
        }
    }
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const double density = state.NodeDensity[At(position)];
        if (density > LowestCountedDensity && IsValidKText(KText(state, position)) &&
            (lowest == 0 || density < state.NodeDensity[At(lowest)])) {
            lowest = position;
        }
    }
    const double required = RequiredDensity(project, false);
    if (lowest == 0 || !(required >= state.NodeDensity[At(lowest)])) {
        return;
    }
    const auto& node = project.NodeRecord[At(lowest)];
    const double kFactor = KFactorOfText(project, KText(state, lowest));
    if (kFactor == 0) {
        return;
    }
    state.DensityPressure = Square(required * node.SprinklerArea / kFactor);
    if (state.DensityPressure > state.Options.MinimumResidual) {
        state.HmdResidual = state.DensityPressure;
        state.TargetPressure = state.DensityPressure;
    }
    state.DensityNode = node.Number;
    UpdateDensityPressure(project, state);
    state.DensityPressure = state.TargetPressure;
    state.HmdResidual = state.TargetPressure;
}

void ApplyDensityNode(const Project& project, SolverState& state) {
    (void)project;
    state.HmdNode = state.DensityNode;
    if (FirstSprinklerRow(state, state.DensityNode) == 0 &&
        state.Edges.FirstRowOf(state.DensityNode) == 0) {
        return;
    }
    // Held like the HMD node: every copy of its head, the rows into it too, at the density
    // pressure.
    HoldHmdNode(state, state.DensityNode, state.DensityPressure);
}

} // namespace quench
