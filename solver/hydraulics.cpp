#include "solver/hydraulics.h"

#include <cmath>

namespace quench {

double PipeConductance(double cFactor, double diameter, double length) {
    return std::pow(cFactor, CFactorExponent) * std::pow(diameter, DiameterExponent) /
           ConductanceDivisor / length;
}

double Velocity(double flow, double insideDiameter) {
    if (insideDiameter == 0) {
        return 0;
    }
    return VelocityFactor * flow / (insideDiameter * insideDiameter);
}

double VelocityPressure(double flow, double insideDiameter) {
    if (insideDiameter == 0) {
        return 0;
    }
    const double square = insideDiameter * insideDiameter;
    return std::fabs(VelocityPressureFactor * flow * flow / (square * square));
}

void ComputeConductances(const Project& project, SolverState& state) {
    HalfEdgeTable& edges = state.Edges;
    for (int row = 1; row <= edges.Count; ++row) {
        double& conductance = state.Conductance[static_cast<std::size_t>(row)];
        conductance = 0;
        const HalfEdge& edge = edges[row];
        const int code = edge.Material;
        const double cFactor = state.CValue[static_cast<std::size_t>(code)];
        if (code < MaterialMeter) {
            const auto& pipe = project.CalcPipeRecord[static_cast<std::size_t>(edge.Pipe)];
            if (edge.Length != 0) {
                conductance = PipeConductance(cFactor, pipe.InsideDiameter, edge.Length);
            }
        } else if (IsDeviceCode(code)) {
            const double length = edge.Length == 0 ? ZeroLengthDivisor : edge.Length;
            conductance = PipeConductance(cFactor, edge.Diameter, length);
        }
    }
}

void ComputeRowFlow(HalfEdge& row, double conductance) {
    double head = row.FromHead - row.ToHead;
    // Equal heads move no water; the slope is taken at a small difference so that it stays
    // finite.
    const bool level = head == 0;
    if (level) {
        head = SmallestHeadDifference;
    }
    const double sign = level ? 0.0 : head >= 0 ? 1.0 : -1.0;
    const double magnitude = std::fabs(head);
    // One power serves both: the slope c^0.5405 / h^0.4595 is 0.5405 × (h c)^0.5405 / h.
    const double power = std::pow(magnitude * std::fabs(conductance), FlowExponent);
    const double slope = FlowExponent * power / magnitude;
    if (conductance >= 0) {
        row.Flow = sign * power;
        row.Slope = slope;
    } else {
        row.Flow = -sign * power;
        row.Slope = -slope;
    }
}

namespace {

// A row into a supply carries no water into it.
bool IsClosedIntoSupply(const HalfEdge& row, const SolverOptions& options) {
    if (row.ToNode == FirstInflowNode && row.FromHead > row.ToHead) {
        return true;
    }
    if (options.DemandMode) {
        return (options.InflowNode2 != 0 && row.ToNode == options.InflowNode2) ||
               (options.InflowNode3 != 0 && row.ToNode == options.InflowNode3);
    }
    // In Supply mode the second and third inflows are supplies held at their pressures like the
    // first: water leaves them but never enters.
    return ((options.InflowNode2 != 0 && row.ToNode == options.InflowNode2) ||
            (options.InflowNode3 != 0 && row.ToNode == options.InflowNode3)) &&
           row.FromHead > row.ToHead;
}

void UpdateSprinkler(HalfEdge& row) {
    if (row.KFactor == 0) {
        row.SprinklerFlow = 0;
    } else if (row.Residual < 0) {
        row.SprinklerFlow = 0;
    } else if (row.Residual > 0) {
        row.SprinklerFlow = row.KFactor * std::sqrt(row.Residual);
    }
}

// The other end of the same pipe, solved already with the mirrored heads, gives this row its flow
// turned round and its slope.
bool TakeFromReverse(HalfEdge& edge, const HalfEdge& reverse, double conductance,
                     double reverseConductance) {
    if (reverse.FromHead != edge.ToHead || reverse.ToHead != edge.FromHead ||
        conductance != reverseConductance || edge.FromHead == edge.ToHead) {
        return false;
    }
    edge.Flow = -reverse.Flow;
    edge.Slope = reverse.Slope;
    return true;
}

} // namespace

void ComputeFlows(SolverState& state) {
    HalfEdgeTable& edges = state.Edges;
    const double* const conductance = state.Conductance.data();
    for (int row = 1; row <= edges.Count; ++row) {
        HalfEdge& edge = edges[row];
        if (IsClosedIntoSupply(edge, state.Options)) {
            edge.Flow = 0;
            edge.Slope = 0;
            continue;
        }
        const int reverse = edge.Reverse;
        const bool mirrored =
            reverse != 0 && reverse < row && !IsClosedIntoSupply(edges[reverse], state.Options) &&
            TakeFromReverse(edge, edges[reverse], conductance[row], conductance[reverse]);
        if (!mirrored) {
            ComputeRowFlow(edge, conductance[row]);
        }
        edge.Residual = edge.FromHead - edge.FromElevationHead;
        UpdateSprinkler(edge);
    }
}

} // namespace quench
