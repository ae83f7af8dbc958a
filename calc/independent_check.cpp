#include "calc/independent_check.h"

#include "calc/gradient_solver.h"
#include "core/finite_fields.h"
#include "core/formats.h"
#include "core/record_sequence.h"
#include "core/text.h"
#include "solver/calculation_options.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace quench {

namespace {

constexpr double ElevationHead = 0.433;     // psi per foot
constexpr double DeviceLossTolerance = 0.1; // psi

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

bool IsSupply(const Project& project, int number) {
    const CalculationData& data = project.CalculationData;
    return number == InflowNodeCode ||
           (data.SecondInflowNode != 0 && number == data.SecondInflowNode) ||
           (data.ThirdInflowNode != 0 && number == data.ThirdInflowNode);
}

int TypedNumber(const Project& project, int number) {
    return number == InflowNodeCode ? project.InflowNode : number;
}

// The loss a device holds in the direction of flow (a pump's boost negative). A run settles a
// device once its drop is within DeviceLossTolerance of the stated loss; the drop it posted is
// taken then, the stated loss otherwise. A device with no loss given is carried as none.
double DeviceLoss(const CalcPipeRecord& pipe, const GradientNode& from, const GradientNode& to,
                  double fromResidual, double toResidual) {
    const double given = pipe.DeviceLoss == NotGiven ? 0.0 : pipe.DeviceLoss;
    const bool pump = pipe.Material == MaterialFirePump;
    const double stated = pump ? -given : given;
    const double drop =
        fromResidual + ElevationHead * from.Elevation - (toResidual + ElevationHead * to.Elevation);
    const double posted = pipe.Flow < 0 ? -drop : drop;
    // A pump on its curve has no stated boost: it holds the one the curve gave at its flow.
    const bool onCurve = pump && given <= 0 && posted < 0;
    return onCurve || std::fabs(posted - stated) <= DeviceLossTolerance ? posted : stated;
}

// A sprinkler that posted no discharge stays shut: one below zero pressure, or one of an area
// group that the posted run of peaking left out. Any other must flow.
double FlowingK(const NodeRecord& node) {
    const bool shut =
        node.Discharge <= 0 && (node.ResidualPressure <= 0 || !TrimmedView(node.AreaGroup).empty());
    return shut ? 0.0 : node.KFactor;
}

// The calculated network with every supply held at its posted pressure.
GradientNetwork NetworkOf(const Project& project, std::unordered_map<int, int>& indexOf) {
    GradientNetwork network;
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& node = project.NodeRecord[At(row)];
        indexOf[node.Number] = static_cast<int>(network.Nodes.size());
        const bool supply = IsSupply(project, node.Number);
        network.Nodes.push_back(GradientNode{node.Number, node.Elevation, FlowingK(node),
                                             node.FixedFlow, supply, node.ResidualPressure});
    }
    for (int row = 1; row <= project.NumberOfPipes; ++row) {
        const CalcPipeRecord& pipe = project.CalcPipeRecord[At(row)];
        const auto from = indexOf.find(static_cast<int>(ToNumber(pipe.BegNode)));
        const auto to = indexOf.find(static_cast<int>(ToNumber(pipe.EndNode)));
        GradientLink link;
        link.From = from == indexOf.end() ? -1 : from->second;
        link.To = to == indexOf.end() ? -1 : to->second;
        link.IsDevice = pipe.Material >= MaterialMeter;
        if (link.IsDevice && link.From >= 0 && link.To >= 0) {
            link.Loss = DeviceLoss(pipe, network.Nodes[At(link.From)], network.Nodes[At(link.To)],
                                   project.NodeRecord[At(link.From + 1)].ResidualPressure,
                                   project.NodeRecord[At(link.To + 1)].ResidualPressure);
        }
        link.InsideDiameter = pipe.InsideDiameter;
        link.Length = pipe.TotalLength;
        link.CFactor = pipe.CFactor;
        network.Links.push_back(link);
    }
    return network;
}

bool HasUnknownEnds(const GradientNetwork& network) {
    return std::any_of(network.Links.begin(), network.Links.end(),
                       [](const GradientLink& link) { return link.From < 0 || link.To < 0; });
}

void ComparePressures(const Project& project, const GradientSolution& solution,
                      CheckVerdict& verdict) {
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& node = project.NodeRecord[At(row)];
        const double difference = std::fabs(node.ResidualPressure - solution.Residual[At(row - 1)]);
        if (!(difference <= verdict.MaxPressureDifference)) {
            verdict.MaxPressureDifference = difference;
            verdict.WorstNode = TypedNumber(project, node.Number);
        }
    }
}

// Flows are judged against their allowance; the one reported is the worst against its allowance.
bool CompareFlows(const Project& project, const GradientNetwork& network,
                  const GradientSolution& solution, CheckVerdict& verdict) {
    bool within = true;
    double worstExcess = -1e300;
    for (int row = 1; row <= project.NumberOfPipes; ++row) {
        const double posted = project.CalcPipeRecord[At(row)].Flow;
        const double difference = std::fabs(posted - solution.LinkFlow[At(row - 1)]);
        const double allowance = std::max(CheckFlowAllowance, CheckFlowShare * std::fabs(posted));
        within = within && difference <= allowance;
        if (!(difference - allowance <= worstExcess)) {
            worstExcess = difference - allowance;
            verdict.MaxFlowDifference = difference;
            const GradientLink& link = network.Links[At(row - 1)];
            verdict.WorstPipeBegin = TypedNumber(project, network.Nodes[At(link.From)].Number);
            verdict.WorstPipeEnd = TypedNumber(project, network.Nodes[At(link.To)].Number);
        }
    }
    return within;
}

// What the posted flows leave unbalanced at each node that is not a supply.
void MeasureImbalance(const Project& project, const GradientNetwork& network,
                      CheckVerdict& verdict) {
    std::vector<double> outflow(network.Nodes.size(), 0.0);
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& node = project.NodeRecord[At(row)];
        outflow[At(row - 1)] = node.FixedFlow + (node.KFactor > 0 ? node.Discharge : 0.0);
    }
    for (int row = 1; row <= project.NumberOfPipes; ++row) {
        const GradientLink& link = network.Links[At(row - 1)];
        outflow[At(link.From)] += project.CalcPipeRecord[At(row)].Flow;
        outflow[At(link.To)] -= project.CalcPipeRecord[At(row)].Flow;
    }
    for (std::size_t n = 0; n < outflow.size(); ++n) {
        if (!network.Nodes[n].HeldPressure && std::fabs(outflow[n]) > verdict.MaxFlowImbalance) {
            verdict.MaxFlowImbalance = std::fabs(outflow[n]);
            verdict.ImbalanceNode = TypedNumber(project, network.Nodes[n].Number);
        }
    }
}

// Every flowing sprinkler at the larger of the minimum pressure and what its density asks for.
bool SprinklersMeetRequirement(const Project& project, CheckVerdict& verdict) {
    const double minimum = project.CalculationData.MinPressureAtHMDNode;
    const double density = RequiredDensity(project, true);
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& node = project.NodeRecord[At(row)];
        if (node.KFactor <= 0 || node.Discharge <= 0) {
            continue;
        }
        const double byDensity = std::pow(density * node.SprinklerArea / node.KFactor, 2);
        const double shortfall = std::max(minimum, byDensity) - node.ResidualPressure;
        if (shortfall > verdict.WorstSprinklerShortfall) {
            verdict.WorstSprinklerShortfall = shortfall;
            verdict.ShortSprinkler = TypedNumber(project, node.Number);
        }
    }
    return verdict.WorstSprinklerShortfall <= CheckSprinklerAllowance;
}

// A stored result that is infinite or NaN compares as within any allowance; it is no result.
bool AllResultsFinite(const Project& project) {
    for (int row = 1; row <= UsedRows(project.NodeRecord, project.NumberOfNodes); ++row) {
        if (!FirstNonFiniteField(project.NodeRecord[row]).empty()) {
            return false;
        }
    }
    for (int row = 1; row <= UsedRows(project.CalcPipeRecord, project.NumberOfPipes); ++row) {
        if (!FirstNonFiniteField(project.CalcPipeRecord[row]).empty()) {
            return false;
        }
    }
    return true;
}

} // namespace

CheckVerdict CheckPostedResults(const Project& project) {
    CheckVerdict verdict;
    verdict.ResultsFinite = AllResultsFinite(project);
    if (!verdict.ResultsFinite) {
        return verdict;
    }
    std::unordered_map<int, int> indexOf;
    const GradientNetwork network = NetworkOf(project, indexOf);
    if (network.Nodes.empty() || HasUnknownEnds(network)) {
        return verdict;
    }
    MeasureImbalance(project, network, verdict);
    const GradientSolution solution = SolveGradient(network);
    verdict.Solved = solution.Converged;
    if (!verdict.Solved) {
        return verdict;
    }
    ComparePressures(project, solution, verdict);
    const bool flowsWithin = CompareFlows(project, network, solution, verdict);
    const bool sprinklersMet =
        IsSupplyMode(project.CalculationData) || SprinklersMeetRequirement(project, verdict);
    verdict.Passed =
        verdict.MaxPressureDifference <= CheckPressureAllowance && flowsWithin && sprinklersMet;
    return verdict;
}

std::string CheckVerdictText(const CheckVerdict& verdict) {
    if (!verdict.ResultsFinite) {
        return "Independent check: failed (a stored result is not a finite number)";
    }
    if (!verdict.Solved) {
        return "Independent check: failed (the network could not be solved again)";
    }
    std::string text =
        std::string("Independent check: ") + (verdict.Passed ? "passed" : "failed") +
        "; largest pressure difference " + Format(verdict.MaxPressureDifference, "0.000") +
        " psi at node " + std::to_string(verdict.WorstNode) + ", largest flow difference " +
        Format(verdict.MaxFlowDifference, "0.000") + " gpm in pipe " +
        std::to_string(verdict.WorstPipeBegin) + "-" + std::to_string(verdict.WorstPipeEnd) +
        ", largest flow imbalance " + Format(verdict.MaxFlowImbalance, "0.000") + " gpm";
    if (verdict.ShortSprinkler != 0) {
        text += ", sprinkler " + std::to_string(verdict.ShortSprinkler) + " short by " +
                Format(verdict.WorstSprinklerShortfall, "0.000") + " psi";
    }
    return text;
}

} // namespace quench
