#include "solver/hydraulics.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace quench {

namespace {

// The Hazen-Williams conductance from the powers of the C factor and of the diameter.
double ConductanceOfPowers(double cFactorPower, double diameterPower, double length) {
    return cFactorPower * diameterPower / ConductanceDivisor / length;
}

} // namespace

double PipeConductance(double cFactor, double diameter, double length) {
    return ConductanceOfPowers(std::pow(cFactor, CFactorExponent),
                               std::pow(diameter, DiameterExponent), length);
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

namespace {

// Powers of the few distinct values a network has (its C factors, its diameters), each taken once;
// the same base gives the very number a new call would.
class PowerMemo {
public:
    explicit PowerMemo(double exponent) : exponent_(exponent) {}

    double operator()(double base) {
        for (const auto& [known, power] : known_) {
            if (known == base) {
                return power;
            }
        }
        const double power = std::pow(base, exponent_);
        if (known_.size() < Capacity) {
            known_.emplace_back(base, power);
        }
        return power;
    }

private:
    static constexpr std::size_t Capacity = 32;
    double exponent_;
    std::vector<std::pair<double, double>> known_;
};

} // namespace

void ComputeConductances(const Project& project, SolverState& state) {
    HalfEdgeTable& edges = state.Edges;
    PowerMemo cFactorPower(CFactorExponent);
    PowerMemo diameterPower(DiameterExponent);
    const auto conductanceOf = [&](double cFactor, double diameter, double length) {
        return ConductanceOfPowers(cFactorPower(cFactor), diameterPower(diameter), length);
    };
    for (int row = 1; row <= edges.Count; ++row) {
        double& conductance = state.Conductance[static_cast<std::size_t>(row)];
        conductance = 0;
        const HalfEdge& edge = edges[row];
        const int code = edge.Material;
        const double cFactor = state.CValue[static_cast<std::size_t>(code)];
        if (code < MaterialMeter) {
            const auto& pipe = project.CalcPipeRecord[static_cast<std::size_t>(edge.Pipe)];
            if (edge.Length != 0) {
                conductance = conductanceOf(cFactor, pipe.InsideDiameter, edge.Length);
            }
        } else if (IsDeviceCode(code)) {
            const double length = edge.Length == 0 ? ZeroLengthDivisor : edge.Length;
            conductance = conductanceOf(cFactor, edge.Diameter, length);
        }
    }
}

namespace {

// The head difference of a row as the flow law takes it: equal heads move no water, and the slope
// is then taken at a small difference so that it stays finite.
struct HeadDifference {
    double Sign;
    double Magnitude;
};

HeadDifference HeadDifferenceOf(const HalfEdge& row) {
    const double head = row.FromHead - row.ToHead;
    if (head == 0) {
        return {0.0, SmallestHeadDifference};
    }
    return {head >= 0 ? 1.0 : -1.0, std::fabs(head)};
}

double PowerBase(const HeadDifference& head, double conductance) {
    return head.Magnitude * std::fabs(conductance);
}

// One power serves both: the slope c^0.5405 / h^0.4595 is 0.5405 × (h c)^0.5405 / h.
void SetRowFlow(HalfEdge& row, double conductance, const HeadDifference& head, double power) {
    const double slope = FlowExponent * power / head.Magnitude;
    if (conductance >= 0) {
        row.Flow = head.Sign * power;
        row.Slope = slope;
    } else {
        row.Flow = -head.Sign * power;
        row.Slope = -slope;
    }
}

} // namespace

void ComputeRowFlow(HalfEdge& row, double conductance) {
    const HeadDifference head = HeadDifferenceOf(row);
    SetRowFlow(row, conductance, head, std::pow(PowerBase(head, conductance), FlowExponent));
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
bool Mirrors(const HalfEdge& edge, const HalfEdge& reverse, double conductance,
             double reverseConductance) {
    return reverse.FromHead == edge.ToHead && reverse.ToHead == edge.FromHead &&
           conductance == reverseConductance && edge.FromHead != edge.ToHead;
}

// Which rows need the power, and its base, gathered so that the powers are taken together;
// returns how many.
std::size_t GatherPowerBases(SolverState& state) {
    const HalfEdgeTable& edges = state.Edges;
    const double* const conductance = state.Conductance.data();
    FlowRows& scratch = state.FlowScratch;
    std::size_t count = 0;
    for (int row = 1; row <= edges.Count; ++row) {
        const HalfEdge& edge = edges[row];
        RowKind& kind = scratch.Kinds[static_cast<std::size_t>(row)];
        const int reverse = edge.Reverse;
        if (IsClosedIntoSupply(edge, state.Options)) {
            kind = RowKind::Closed;
        } else if (reverse != 0 && reverse < row &&
                   scratch.Kinds[static_cast<std::size_t>(reverse)] != RowKind::Closed &&
                   Mirrors(edge, edges[reverse], conductance[row], conductance[reverse])) {
            kind = RowKind::Mirrored;
        } else {
            kind = RowKind::Powered;
            scratch.Bases[count++] = PowerBase(HeadDifferenceOf(edge), conductance[row]);
        }
    }
    return count;
}

void SetFlows(SolverState& state) {
    HalfEdgeTable& edges = state.Edges;
    const FlowRows& scratch = state.FlowScratch;
    std::size_t next = 0;
    for (int row = 1; row <= edges.Count; ++row) {
        HalfEdge& edge = edges[row];
        switch (scratch.Kinds[static_cast<std::size_t>(row)]) {
        case RowKind::Closed:
            edge.Flow = 0;
            edge.Slope = 0;
            continue;
        case RowKind::Mirrored:
            edge.Flow = -edges[edge.Reverse].Flow;
            edge.Slope = edges[edge.Reverse].Slope;
            break;
        case RowKind::Powered:
            SetRowFlow(edge, state.Conductance[static_cast<std::size_t>(row)],
                       HeadDifferenceOf(edge), scratch.Powers[next++]);
            break;
        }
        edge.Residual = edge.FromHead - edge.FromElevationHead;
        UpdateSprinkler(edge);
    }
}

} // namespace

void ComputeFlows(SolverState& state) {
    FlowRows& scratch = state.FlowScratch;
    const std::size_t rows = static_cast<std::size_t>(std::max(state.Edges.Count, 0)) + 1;
    scratch.Kinds.resize(rows);
    scratch.Bases.resize(rows);
    scratch.Powers.resize(rows);
    const std::size_t count = GatherPowerBases(state);
    // The powers in a loop of their own: the calls overlap, which they cannot among the branches
    // of the rows.
    for (std::size_t at = 0; at < count; ++at) {
        scratch.Powers[at] = std::pow(scratch.Bases[at], FlowExponent);
    }
    SetFlows(state);
}

} // namespace quench
