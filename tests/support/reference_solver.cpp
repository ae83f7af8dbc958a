#include "tests/support/reference_solver.h"

#include "calc/skyline_matrix.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <numeric>
#include <stdexcept>

namespace quench::testing {

namespace {

constexpr double FlowExponent = 0.5405; // Q = (c·h)^0.5405
constexpr double PipeHeadExponent = 1.0 / FlowExponent;
constexpr double ElevationHead = 0.433;
constexpr double SmallestFlow = 1e-5; // keeps a link's inverse slope finite at zero flow

double Conductance(const ReferenceLink& link) {
    return std::pow(link.CFactor, 1.85) * std::pow(link.InsideDiameter, 4.87) / 4.52 / link.Length;
}

// Nodes joined by devices share one unknown: their heads differ by the devices' losses.
struct Grouping {
    std::vector<int> GroupOf;   // node index -> group
    std::vector<double> Offset; // node head = group base + offset
    std::vector<int> UnknownOf; // group -> unknown index, -1 for the inflow's group
    int Unknowns = 0;
};

class ReferenceModel {
public:
    explicit ReferenceModel(const ReferenceNetwork& network) : network_(network) {
        for (std::size_t i = 0; i < network.Nodes.size(); ++i) {
            index_[network.Nodes[i].Number] = static_cast<int>(i);
        }
        if (!index_.count(network.Inflow)) {
            throw std::invalid_argument("inflow node not in the network");
        }
        flows_.assign(network.Links.size(), 1.0);
        emitterFlows_.resize(network.Nodes.size());
        emitterOpen_.assign(network.Nodes.size(), true);
        for (std::size_t i = 0; i < network.Nodes.size(); ++i) {
            emitterFlows_[i] = network.Nodes[i].KFactor * std::sqrt(10.0);
        }
        Rebuild();
    }

    ReferenceSolution Solve(double inflowResidual) {
        const auto& inflow = network_.Nodes[static_cast<std::size_t>(index_.at(network_.Inflow))];
        const double inflowHead = inflowResidual + ElevationHead * inflow.Elevation;
        ReferenceSolution solution;
        // A sprinkler at negative pressure does not flow: close it and solve again.
        for (int round = 0; round < 50; ++round) {
            fixedBase_ =
                inflowHead - grouping_.Offset[static_cast<std::size_t>(index_.at(network_.Inflow))];
            solution.Converged = Iterate(solution.Iterations);
            if (!CloseNegativeEmitters()) {
                break;
            }
            Rebuild();
        }
        Report(solution);
        return solution;
    }

private:
    void Rebuild() {
        Prune();
        BuildGroups();
        BuildPattern();
    }

    bool IsConnection(const ReferenceLink& link) const {
        return link.IsDevice || IsPipeWithFlow(link);
    }

    bool HasDemand(std::size_t node) const {
        const auto& data = network_.Nodes[node];
        return data.FixedFlow != 0 || (data.KFactor > 0 && emitterOpen_[node]);
    }

    // Dead ends that take no water carry no flow: they are taken out of the equations, which
    // a zero flow would leave without a slope, and their heads follow their neighbours'.
    void Prune() {
        liveNode_.assign(network_.Nodes.size(), true);
        liveLink_.assign(network_.Links.size(), false);
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            liveLink_[l] = IsConnection(network_.Links[l]);
        }
        const auto inflow = static_cast<std::size_t>(index_.at(network_.Inflow));
        for (bool changed = true; changed;) {
            changed = false;
            std::vector<int> degree(network_.Nodes.size(), 0);
            for (std::size_t l = 0; l < network_.Links.size(); ++l) {
                if (liveLink_[l]) {
                    ++degree[static_cast<std::size_t>(index_.at(network_.Links[l].From))];
                    ++degree[static_cast<std::size_t>(index_.at(network_.Links[l].To))];
                }
            }
            for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
                if (liveNode_[n] && n != inflow && degree[n] <= 1 && !HasDemand(n)) {
                    liveNode_[n] = false;
                    changed = true;
                }
            }
            for (std::size_t l = 0; l < network_.Links.size(); ++l) {
                const auto& link = network_.Links[l];
                if (liveLink_[l] && (!liveNode_[static_cast<std::size_t>(index_.at(link.From))] ||
                                     !liveNode_[static_cast<std::size_t>(index_.at(link.To))])) {
                    liveLink_[l] = false;
                }
            }
        }
    }

    void BuildGroups() {
        const std::size_t count = network_.Nodes.size();
        // Distance from the inflow orients each device: its upstream end is the nearer one.
        std::vector<std::vector<std::pair<int, int>>> adjacency(count);
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            if (!liveLink_[l]) {
                continue;
            }
            const int a = index_.at(network_.Links[l].From);
            const int b = index_.at(network_.Links[l].To);
            adjacency[static_cast<std::size_t>(a)].push_back({b, static_cast<int>(l)});
            adjacency[static_cast<std::size_t>(b)].push_back({a, static_cast<int>(l)});
        }
        std::vector<int> distance(count, std::numeric_limits<int>::max());
        std::deque<int> queue{index_.at(network_.Inflow)};
        distance[static_cast<std::size_t>(queue.front())] = 0;
        while (!queue.empty()) {
            const int node = queue.front();
            queue.pop_front();
            for (auto [next, link] : adjacency[static_cast<std::size_t>(node)]) {
                (void)link;
                if (distance[static_cast<std::size_t>(next)] == std::numeric_limits<int>::max()) {
                    distance[static_cast<std::size_t>(next)] =
                        distance[static_cast<std::size_t>(node)] + 1;
                    queue.push_back(next);
                }
            }
        }
        grouping_.GroupOf.assign(count, -1);
        grouping_.Offset.assign(count, 0.0);
        int groups = 0;
        grouping_.Unknowns = 0;
        for (std::size_t start = 0; start < count; ++start) {
            if (grouping_.GroupOf[start] >= 0 || !liveNode_[start]) {
                continue;
            }
            grouping_.GroupOf[start] = groups;
            std::deque<int> members{static_cast<int>(start)};
            while (!members.empty()) {
                const int node = members.front();
                members.pop_front();
                for (auto [next, link] : adjacency[static_cast<std::size_t>(node)]) {
                    const auto& device = network_.Links[static_cast<std::size_t>(link)];
                    if (!device.IsDevice ||
                        grouping_.GroupOf[static_cast<std::size_t>(next)] >= 0) {
                        continue;
                    }
                    const bool downstream = distance[static_cast<std::size_t>(next)] >
                                            distance[static_cast<std::size_t>(node)];
                    grouping_.GroupOf[static_cast<std::size_t>(next)] = groups;
                    grouping_.Offset[static_cast<std::size_t>(next)] =
                        grouping_.Offset[static_cast<std::size_t>(node)] +
                        (downstream ? -device.Loss : device.Loss);
                    members.push_back(next);
                }
            }
            ++groups;
        }
        const int inflowGroup =
            grouping_.GroupOf[static_cast<std::size_t>(index_.at(network_.Inflow))];
        grouping_.UnknownOf.assign(static_cast<std::size_t>(groups), -1);
        for (int group = 0; group < groups; ++group) {
            if (group != inflowGroup) {
                grouping_.UnknownOf[static_cast<std::size_t>(group)] = grouping_.Unknowns++;
            }
        }
    }

    // -1 for the inflow's group, whose head is given; -2 for a node taken out as a dead end.
    int UnknownOfNode(int nodeIndex) const {
        const int group = grouping_.GroupOf[static_cast<std::size_t>(nodeIndex)];
        return group < 0 ? -2 : grouping_.UnknownOf[static_cast<std::size_t>(group)];
    }

    static bool IsPipeWithFlow(const ReferenceLink& link) {
        return !link.IsDevice && link.Length > 0 && link.InsideDiameter > 0 && link.CFactor > 0;
    }

    bool IsActivePipe(std::size_t l) const { return liveLink_[l] && !network_.Links[l].IsDevice; }

    void BuildPattern() {
        std::vector<std::pair<int, int>> edges;
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            const auto& link = network_.Links[l];
            if (!IsActivePipe(l)) {
                continue;
            }
            const int a = UnknownOfNode(index_.at(link.From));
            const int b = UnknownOfNode(index_.at(link.To));
            if (a >= 0 && b >= 0 && a != b) {
                edges.push_back({a, b});
            }
        }
        matrix_ = SkylineMatrix(grouping_.Unknowns, edges);
    }

    double NodeHead(int nodeIndex, const std::vector<double>& bases) const {
        const int unknown = UnknownOfNode(nodeIndex);
        const double base = unknown < 0 ? fixedBase_ : bases[static_cast<std::size_t>(unknown)];
        return base + grouping_.Offset[static_cast<std::size_t>(nodeIndex)];
    }

    // One linearised link: Q = constant + slope · (head at From − head at To).
    struct Linearised {
        double Constant = 0;
        double Slope = 0;
    };

    static Linearised LinearisePipe(double flow, double conductance) {
        const double magnitude = std::max(std::fabs(flow), SmallestFlow);
        const double derivative =
            PipeHeadExponent * std::pow(magnitude, PipeHeadExponent - 1) / conductance;
        return {flow * (1 - 1 / PipeHeadExponent), 1 / derivative};
    }

    static Linearised LineariseEmitter(double flow, double kFactor) {
        const double magnitude = std::max(std::fabs(flow), SmallestFlow);
        const double derivative = 2 * magnitude / (kFactor * kFactor);
        return {flow / 2, 1 / derivative};
    }

    // Converged when no flow moves by more than 1e-9 gpm; a floor of rounding noise up to 1e-4
    // gpm, which pipes that carry no flow can keep up, is accepted too (a loop of pipes with no
    // demand on it keeps a circulation of some 1e-5 gpm turning).
    bool Iterate(int& iterations) {
        std::vector<double> bases(static_cast<std::size_t>(grouping_.Unknowns), fixedBase_);
        double change = 0;
        for (int iteration = 0; iteration < 300; ++iteration) {
            ++iterations;
            AssembleAndSolve(bases);
            change = UpdateFlows(bases);
            if (iteration >= 2 && change < 1e-9) {
                return true;
            }
        }
        return change < 1e-4;
    }

    void AssembleAndSolve(std::vector<double>& bases) {
        matrix_.Clear();
        std::vector<double> rhs(static_cast<std::size_t>(grouping_.Unknowns), 0.0);
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            const auto& link = network_.Links[l];
            if (!IsActivePipe(l)) {
                continue;
            }
            const int from = index_.at(link.From);
            const int to = index_.at(link.To);
            const Linearised linear = LinearisePipe(flows_[l], Conductance(link));
            AddConnection(from, to, linear, rhs);
        }
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            const auto& node = network_.Nodes[n];
            const int unknown = UnknownOfNode(static_cast<int>(n));
            if (unknown < 0) {
                continue;
            }
            rhs[static_cast<std::size_t>(unknown)] -= node.FixedFlow;
            if (node.KFactor <= 0 || !emitterOpen_[n]) {
                continue;
            }
            const Linearised linear = LineariseEmitter(emitterFlows_[n], node.KFactor);
            const double ground = ElevationHead * node.Elevation;
            matrix_.Add(unknown, unknown, linear.Slope);
            rhs[static_cast<std::size_t>(unknown)] -=
                linear.Constant + linear.Slope * (grouping_.Offset[n] - ground);
        }
        bases = matrix_.Solve(rhs);
    }

    // The balance of a group: flows out of it, through links and sprinklers, plus its fixed flows.
    void AddConnection(int from, int to, const Linearised& linear, std::vector<double>& rhs) {
        const int a = UnknownOfNode(from);
        const int b = UnknownOfNode(to);
        const double constant =
            linear.Constant + linear.Slope * (grouping_.Offset[static_cast<std::size_t>(from)] -
                                              grouping_.Offset[static_cast<std::size_t>(to)]);
        if (a == b && a >= 0) {
            return; // a pipe beside a device: its flow stays inside the group
        }
        if (a >= 0) {
            matrix_.Add(a, a, linear.Slope);
            rhs[static_cast<std::size_t>(a)] -= constant;
            if (b < 0) {
                rhs[static_cast<std::size_t>(a)] += linear.Slope * fixedBase_;
            }
        }
        if (b >= 0) {
            matrix_.Add(b, b, linear.Slope);
            rhs[static_cast<std::size_t>(b)] += constant;
            if (a < 0) {
                rhs[static_cast<std::size_t>(b)] += linear.Slope * fixedBase_;
            }
        }
        if (a >= 0 && b >= 0) {
            matrix_.Add(a, b, -linear.Slope);
        }
    }

    double UpdateFlows(const std::vector<double>& bases) {
        double change = 0; // the largest change of a flow, gpm
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            const auto& link = network_.Links[l];
            if (!IsActivePipe(l)) {
                continue;
            }
            const int from = index_.at(link.From);
            const int to = index_.at(link.To);
            const Linearised linear = LinearisePipe(flows_[l], Conductance(link));
            const double flow =
                linear.Constant + linear.Slope * (NodeHead(from, bases) - NodeHead(to, bases));
            change = std::max(change, std::fabs(flow - flows_[l]));
            flows_[l] = flow;
        }
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            const auto& node = network_.Nodes[n];
            if (node.KFactor <= 0 || !emitterOpen_[n]) {
                continue;
            }
            const Linearised linear = LineariseEmitter(emitterFlows_[n], node.KFactor);
            const double pressure =
                NodeHead(static_cast<int>(n), bases) - ElevationHead * node.Elevation;
            const double flow = linear.Constant + linear.Slope * pressure;
            change = std::max(change, std::fabs(flow - emitterFlows_[n]));
            emitterFlows_[n] = flow;
        }
        bases_ = bases;
        return change;
    }

    bool CloseNegativeEmitters() {
        bool closed = false;
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            if (emitterOpen_[n] && network_.Nodes[n].KFactor > 0 &&
                NodeHead(static_cast<int>(n), bases_) -
                        ElevationHead * network_.Nodes[n].Elevation <
                    0) {
                emitterOpen_[n] = false;
                emitterFlows_[n] = 0;
                closed = true;
            }
        }
        return closed;
    }

    void Report(ReferenceSolution& solution) const {
        const std::vector<double> heads = AllHeads();
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            const auto& node = network_.Nodes[n];
            const double head = heads[n];
            const double residual = head - ElevationHead * node.Elevation;
            solution.Head[node.Number] = head;
            solution.Residual[node.Number] = residual;
            if (node.KFactor > 0) {
                solution.Discharge[node.Number] =
                    emitterOpen_[n] && residual > 0 ? node.KFactor * std::sqrt(residual) : 0.0;
            }
        }
        solution.LinkFlow.assign(network_.Links.size(), 0.0);
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            const auto& link = network_.Links[l];
            if (IsActivePipe(l)) {
                const double drop = solution.Head.at(link.From) - solution.Head.at(link.To);
                const double magnitude =
                    std::pow(Conductance(link) * std::fabs(drop), FlowExponent);
                solution.LinkFlow[l] = drop < 0 ? -magnitude : magnitude;
            }
        }
        FillDeviceFlows(solution);
        solution.InflowFlow = OutflowOf(network_.Inflow, solution, true);
    }

    // Heads of the solved nodes, and of the dead ends, which stand level with their neighbours.
    std::vector<double> AllHeads() const {
        std::vector<double> heads(network_.Nodes.size(), 0.0);
        std::vector<bool> known(network_.Nodes.size(), false);
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            if (liveNode_[n]) {
                heads[n] = NodeHead(static_cast<int>(n), bases_);
                known[n] = true;
            }
        }
        for (bool changed = true; changed;) {
            changed = false;
            for (const auto& link : network_.Links) {
                const auto from = static_cast<std::size_t>(index_.at(link.From));
                const auto to = static_cast<std::size_t>(index_.at(link.To));
                if (known[from] != known[to]) {
                    const std::size_t unknown = known[from] ? to : from;
                    heads[unknown] = heads[known[from] ? from : to];
                    known[unknown] = true;
                    changed = true;
                }
            }
        }
        return heads;
    }

    // The flow leaving a node through pipes, sprinklers and fixed flows.
    double OutflowOf(int number, const ReferenceSolution& solution, bool includeDevices) const {
        const auto& node = network_.Nodes[static_cast<std::size_t>(index_.at(number))];
        double out = node.FixedFlow;
        if (auto found = solution.Discharge.find(number); found != solution.Discharge.end()) {
            out += found->second;
        }
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            const auto& link = network_.Links[l];
            if (link.IsDevice && !includeDevices) {
                continue;
            }
            if (link.From == number) {
                out += solution.LinkFlow[l];
            } else if (link.To == number) {
                out -= solution.LinkFlow[l];
            }
        }
        return out;
    }

    // A device carries what its downstream side takes; devices in series are settled one by one.
    void FillDeviceFlows(ReferenceSolution& solution) const {
        std::vector<bool> known(network_.Links.size(), true);
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            known[l] = !network_.Links[l].IsDevice;
        }
        for (bool progress = true; progress;) {
            progress = false;
            for (std::size_t l = 0; l < network_.Links.size(); ++l) {
                if (known[l]) {
                    continue;
                }
                const auto& device = network_.Links[l];
                for (int end : {device.To, device.From}) {
                    if (end == network_.Inflow || !OnlyThisUnknownAt(end, l, known)) {
                        continue;
                    }
                    solution.LinkFlow[l] = 0;
                    const double rest = OutflowOf(end, solution, true);
                    solution.LinkFlow[l] = end == device.To ? rest : -rest;
                    known[l] = true;
                    progress = true;
                    break;
                }
            }
        }
    }

    bool OnlyThisUnknownAt(int number, std::size_t device, const std::vector<bool>& known) const {
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            if (l != device && !known[l] &&
                (network_.Links[l].From == number || network_.Links[l].To == number)) {
                return false;
            }
        }
        return true;
    }

    const ReferenceNetwork& network_;
    std::map<int, int> index_;
    Grouping grouping_;
    SkylineMatrix matrix_;
    std::vector<double> flows_;
    std::vector<double> emitterFlows_;
    std::vector<bool> emitterOpen_;
    std::vector<bool> liveNode_;
    std::vector<bool> liveLink_;
    std::vector<double> bases_;
    double fixedBase_ = 0;
};

double RequiredPressure(const ReferenceNode& node, const DemandRequirement& requirement) {
    const double byDensity =
        node.Area > 0 ? std::pow(requirement.Density * node.Area / node.KFactor, 2) : 0.0;
    return std::max(requirement.MinimumPressure, byDensity);
}

// How far the worst sprinkler stands above what it needs (negative: short of it).
double WorstMargin(const ReferenceNetwork& network, const ReferenceSolution& solution,
                   const DemandRequirement& requirement) {
    double worst = std::numeric_limits<double>::infinity();
    for (const auto& node : network.Nodes) {
        if (node.KFactor > 0) {
            worst = std::min(worst, solution.Residual.at(node.Number) -
                                        RequiredPressure(node, requirement));
        }
    }
    return worst;
}

} // namespace

ReferenceSolution SolveSupply(const ReferenceNetwork& network, double inflowResidual) {
    ReferenceModel model(network);
    return model.Solve(inflowResidual);
}

DemandSolution SolveDemand(const ReferenceNetwork& network, const DemandRequirement& requirement) {
    DemandSolution result;
    ReferenceModel model(network);
    auto margin = [&](double pressure, ReferenceSolution* keep) {
        ReferenceSolution solution = model.Solve(pressure);
        const double value = WorstMargin(network, solution, requirement);
        if (keep) {
            *keep = solution;
        }
        return value;
    };
    double low = 0;
    double high = 10;
    while (margin(high, nullptr) < 0 && high < 1e6) {
        low = high;
        high *= 2;
    }
    // The margin grows with the inflow pressure: bisection brackets the least pressure.
    for (int step = 0; step < 200 && high - low > 1e-9; ++step) {
        const double middle = (low + high) / 2;
        (margin(middle, nullptr) < 0 ? low : high) = middle;
    }
    result.InflowResidual = high;
    margin(high, &result.Solution);
    result.Converged = result.Solution.Converged && high < 1e6;
    return result;
}

ReferenceNetwork NetworkFromProject(const Project& project,
                                    const std::function<double(int material)>& cValue) {
    ReferenceNetwork network;
    network.Inflow = InflowNodeCode;
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const auto& node = project.NodeRecord[row];
        network.Nodes.push_back(ReferenceNode{node.Number, node.Elevation, node.KFactor,
                                              node.FixedFlow, node.SprinklerArea});
    }
    for (int row = 1; row <= project.NumberOfPipes; ++row) {
        const auto& pipe = project.CalcPipeRecord[row];
        ReferenceLink link;
        link.From = std::stoi(pipe.BegNode);
        link.To = std::stoi(pipe.EndNode);
        link.IsDevice = pipe.Material >= MaterialMeter;
        if (link.IsDevice) {
            link.Loss = pipe.Material == MaterialFirePump ? -pipe.DeviceLoss : pipe.DeviceLoss;
        } else {
            link.InsideDiameter = pipe.InsideDiameter;
            link.Length = pipe.TotalLength;
            link.CFactor = pipe.CFactor > 0 ? pipe.CFactor : cValue(pipe.Material);
        }
        network.Links.push_back(link);
    }
    return network;
}

BalanceReport MeasurePostedBalance(const Project& project,
                                   const std::function<double(int material)>& cValue) {
    BalanceReport report;
    const ReferenceNetwork network = NetworkFromProject(project, cValue);
    std::map<int, const NodeRecord*> nodes;
    std::map<int, double> imbalance;
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const auto& node = project.NodeRecord[row];
        nodes[node.Number] = &node;
        imbalance[node.Number] = node.FixedFlow + (node.KFactor > 0 ? node.Discharge : 0.0);
    }
    for (std::size_t l = 0; l < network.Links.size(); ++l) {
        const auto& link = network.Links[l];
        const double flow = project.CalcPipeRecord[l + 1].Flow;
        imbalance[link.From] += flow;
        imbalance[link.To] -= flow;
        if (link.IsDevice || link.Length <= 0) {
            continue;
        }
        const double drop =
            std::fabs(nodes.at(link.From)->WorkPressure - nodes.at(link.To)->WorkPressure);
        const double lawDrop = std::pow(std::fabs(flow), PipeHeadExponent) / Conductance(link);
        const double allowance = std::max(0.005, 0.001 * lawDrop);
        const double error = std::fabs(drop - lawDrop);
        if (error - allowance > report.WorstPipeLawError - report.WorstPipeLawAllowance) {
            report.WorstPipeLawError = error;
            report.WorstPipeLawAllowance = allowance;
        }
        report.PipesObeyLaw = report.PipesObeyLaw && error <= allowance;
    }
    for (const auto& [number, value] : imbalance) {
        if (number != InflowNodeCode && std::fabs(value) > std::fabs(report.WorstNodeImbalance)) {
            report.WorstNodeImbalance = value;
            report.WorstNode = number;
        }
    }
    return report;
}

} // namespace quench::testing
