#include "solver/hmd.h"

#include "solver/hydraulics.h"
#include "solver/supply_mode.h"

#include <cmath>

namespace quench {

namespace {

constexpr double LiftBand = 0.01; // psi: sprinklers this close to the lowest are lifted to it

bool Alone(const HalfEdgeTable& edges, int row) {
    const int node = edges[row].FromNode;
    const bool before = row > 1 && edges[row - 1].FromNode == node;
    const bool after = row < edges.Count && edges[row + 1].FromNode == node;
    return !before && !after;
}

bool IsCandidate(const HalfEdge& row) {
    return row.KFactor > 0 && row.FromNode != FirstInflowNode;
}

} // namespace

int FirstSprinklerRow(const SolverState& state, int number) {
    const HalfEdgeTable& edges = state.Edges;
    const int position = edges.PositionOf(number);
    if (position == 0 || edges.FirstRow[static_cast<std::size_t>(position)] == 0) {
        return 0;
    }
    for (int row = edges.FirstRow[static_cast<std::size_t>(position)];
         row <= edges.LastRow[static_cast<std::size_t>(position)]; ++row) {
        if (edges[row].KFactor != 0) {
            return row;
        }
    }
    return 0;
}

void SetNodeHead(SolverState& state, int number, double residual) {
    HalfEdgeTable& edges = state.Edges;
    const int position = edges.PositionOf(number);
    if (position == 0 || edges.FirstRow[static_cast<std::size_t>(position)] == 0) {
        return;
    }
    const int first = edges.FirstRow[static_cast<std::size_t>(position)];
    const double head = edges[first].FromElevationHead + residual;
    for (int row = first; row <= edges.LastRow[static_cast<std::size_t>(position)]; ++row) {
        edges[row].Residual = residual;
        edges[row].FromHead = edges[row].FromElevationHead + residual;
        if (edges[row].Reverse != 0) {
            edges[edges[row].Reverse].ToHead = head;
        }
    }
}

void HoldHmdNode(SolverState& state, int number, double pressure) {
    const int sprinkler = FirstSprinklerRow(state, number);
    const double kFactor = sprinkler == 0 ? 0.0 : state.Edges[sprinkler].KFactor;
    state.HmdFlow = kFactor * std::pow(pressure, 0.5);
    SetNodeHead(state, number, pressure);
    const int position = state.Edges.PositionOf(number);
    HalfEdgeTable& edges = state.Edges;
    for (int row = edges.FirstRow[static_cast<std::size_t>(position)];
         row != 0 && row <= edges.LastRow[static_cast<std::size_t>(position)]; ++row) {
        edges[row].SprinklerFlow = state.HmdFlow;
    }
}

int LowestSprinklerBelow(const SolverState& state, double pressure) {
    const HalfEdgeTable& edges = state.Edges;
    int node = 0;
    for (int row = 1; row <= edges.Count; ++row) {
        const HalfEdge& edge = edges[row];
        if (edge.KFactor > 0 && edge.FromNode != FirstInflowNode && edge.Residual < pressure) {
            node = edge.FromNode;
            pressure = edge.Residual;
        }
    }
    return node;
}

void PickFirstHmd(SolverState& state) {
    const HalfEdgeTable& edges = state.Edges;
    int supply = 0;
    for (int row = 1; row <= edges.Count && supply == 0; ++row) {
        if (edges[row].FromNode == FirstInflowNode) {
            supply = row;
        }
    }
    // Scan from the end that lies away from the supply's rows.
    const bool backwards = supply != 0 && edges.Count - supply > supply - 1;
    const int first = backwards ? edges.Count : 1;
    const int step = backwards ? -1 : 1;
    int picked = 0;
    for (int row = first; row >= 1 && row <= edges.Count && picked == 0; row += step) {
        if (IsCandidate(edges[row]) && Alone(edges, row)) {
            picked = edges[row].FromNode;
        }
    }
    for (int row = first; row >= 1 && row <= edges.Count && picked == 0; row += step) {
        if (IsCandidate(edges[row])) {
            picked = edges[row].FromNode;
        }
    }
    state.HmdNode = static_cast<Integer>(picked);
    state.PreviousHmdNode = state.HmdNode;
    if (picked != 0) {
        HoldHmdNode(state, picked, state.TargetPressure);
    }
}

void FindHmd(const Project& project, SolverState& state) {
    if (!state.Options.DemandMode) {
        FindLowestResidualNode(project, state);
        return;
    }
    HalfEdgeTable& edges = state.Edges;
    double lowest = state.TargetPressure;
    int node = 0;
    for (int row = 1; row <= edges.Count; ++row) {
        const HalfEdge& edge = edges[row];
        if (edge.KFactor == 0 || !(edge.Residual < lowest)) {
            continue;
        }
        // A sprinkler within the band of the lowest so far counts as level with it: it does not
        // become the HMD node. Its head is left as solved, so that what is posted stays a
        // solution of the network.
        if (lowest - edge.Residual > LiftBand) {
            node = edge.FromNode;
            lowest = edge.Residual;
        }
    }
    if (lowest > state.TargetPressure) {
        lowest = state.TargetPressure;
        node = 0;
    }
    if (node != 0) {
        state.HmdNode = static_cast<Integer>(node);
    }
    state.HmdResidual = lowest;
    if (state.Retesting.HmdLock) {
        return;
    }
    const int sprinkler = FirstSprinklerRow(state, state.HmdNode);
    if (sprinkler == 0) {
        return;
    }
    const HalfEdge& held = edges[sprinkler];
    if (std::fabs(held.FromHead - (held.FromElevationHead + held.Residual)) < LiftBand) {
        HoldHmdNode(state, state.HmdNode, state.TargetPressure);
        state.HmdResidual = state.TargetPressure;
    }
}

} // namespace quench
