#include "calc/gradient_solver.h"

#include "calc/skyline_matrix.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <stdexcept>

namespace quench {

namespace {

constexpr double FlowExponent = 0.5405; // Q = (c·h)^0.5405
constexpr double HeadExponent = 1.0 / FlowExponent;
constexpr double ElevationHead = 0.433;
constexpr double SmallestFlow = 1e-5; // keeps a link's inverse slope finite at zero flow
constexpr int MostSteps = 300;
constexpr int MostClosingRounds = 50;

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

double Conductance(const GradientLink& link) {
    return std::pow(link.CFactor, 1.85) * std::pow(link.InsideDiameter, 4.87) / 4.52 / link.Length;
}

bool IsPipeWithFlow(const GradientLink& link) {
    return !link.IsDevice && link.Length > 0 && link.InsideDiameter > 0 && link.CFactor > 0;
}

// One linearised link: Q = constant + slope · (head at From − head at To).
struct Linearised {
    double Constant = 0;
    double Slope = 0;
};

Linearised LinearisePipe(double flow, double conductance) {
    const double magnitude = std::max(std::fabs(flow), SmallestFlow);
    const double derivative = HeadExponent * std::pow(magnitude, HeadExponent - 1) / conductance;
    return {flow * (1 - 1 / HeadExponent), 1 / derivative};
}

Linearised LineariseSprinkler(double flow, double kFactor) {
    const double magnitude = std::max(std::fabs(flow), SmallestFlow);
    return {flow / 2, kFactor * kFactor / (2 * magnitude)};
}

class GradientModel {
public:
    explicit GradientModel(const GradientNetwork& network) : network_(network) {
        const std::size_t nodes = network.Nodes.size();
        flows_.assign(network.Links.size(), 1.0);
        conductance_.assign(network.Links.size(), 0.0);
        for (std::size_t l = 0; l < network.Links.size(); ++l) {
            if (IsPipeWithFlow(network.Links[l])) {
                conductance_[l] = Conductance(network.Links[l]);
            }
        }
        sprinklerFlows_.resize(nodes);
        sprinklerOpen_.assign(nodes, true);
        for (std::size_t n = 0; n < nodes; ++n) {
            sprinklerFlows_[n] = network.Nodes[n].KFactor * std::sqrt(10.0);
        }
        Rebuild();
    }

    GradientSolution Solve() {
        GradientSolution solution;
        // A sprinkler at negative pressure does not flow: close it and solve again.
        for (int round = 0; round < MostClosingRounds; ++round) {
            solution.Converged = Iterate(solution.Iterations);
            if (!CloseNegativeSprinklers()) {
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

    bool HasDemand(std::size_t node) const {
        const auto& data = network_.Nodes[node];
        return data.FixedFlow != 0 || (data.KFactor > 0 && sprinklerOpen_[node]);
    }

    // Dead ends that take no water carry no flow: they leave the equations, which a zero flow
    // would leave without a slope, and their heads follow their neighbours'.
    void Prune() {
        const std::size_t nodes = network_.Nodes.size();
        liveNode_.assign(nodes, true);
        liveLink_.assign(network_.Links.size(), false);
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            liveLink_[l] = network_.Links[l].IsDevice || IsPipeWithFlow(network_.Links[l]);
        }
        std::vector<int> degree(nodes);
        for (bool changed = true; changed;) {
            changed = false;
            std::fill(degree.begin(), degree.end(), 0);
            for (std::size_t l = 0; l < network_.Links.size(); ++l) {
                if (liveLink_[l]) {
                    ++degree[At(network_.Links[l].From)];
                    ++degree[At(network_.Links[l].To)];
                }
            }
            for (std::size_t n = 0; n < nodes; ++n) {
                if (liveNode_[n] && !network_.Nodes[n].HeldPressure && degree[n] <= 1 &&
                    !HasDemand(n)) {
                    liveNode_[n] = false;
                    changed = true;
                }
            }
            for (std::size_t l = 0; l < network_.Links.size(); ++l) {
                const auto& link = network_.Links[l];
                if (liveLink_[l] && (!liveNode_[At(link.From)] || !liveNode_[At(link.To)])) {
                    liveLink_[l] = false;
                }
            }
        }
    }

    std::vector<std::vector<std::pair<int, int>>> LiveAdjacency() const {
        std::vector<std::vector<std::pair<int, int>>> adjacency(network_.Nodes.size());
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            if (liveLink_[l]) {
                const int a = network_.Links[l].From;
                const int b = network_.Links[l].To;
                adjacency[At(a)].push_back({b, static_cast<int>(l)});
                adjacency[At(b)].push_back({a, static_cast<int>(l)});
            }
        }
        return adjacency;
    }

    // Distance from the nearest supply orients each device: its upstream end is the nearer one.
    std::vector<int>
    DistanceFromSupplies(const std::vector<std::vector<std::pair<int, int>>>& adjacency) const {
        std::vector<int> distance(network_.Nodes.size(), std::numeric_limits<int>::max());
        std::deque<int> queue;
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            if (network_.Nodes[n].HeldPressure) {
                distance[n] = 0;
                queue.push_back(static_cast<int>(n));
            }
        }
        while (!queue.empty()) {
            const int node = queue.front();
            queue.pop_front();
            for (auto [next, link] : adjacency[At(node)]) {
                (void)link;
                if (distance[At(next)] == std::numeric_limits<int>::max()) {
                    distance[At(next)] = distance[At(node)] + 1;
                    queue.push_back(next);
                }
            }
        }
        return distance;
    }

    // Nodes joined by devices share one unknown: their heads differ by the devices' losses.
    void BuildGroups() {
        const std::size_t count = network_.Nodes.size();
        const auto adjacency = LiveAdjacency();
        const std::vector<int> distance = DistanceFromSupplies(adjacency);
        groupOf_.assign(count, -1);
        offset_.assign(count, 0.0);
        int groups = 0;
        for (std::size_t start = 0; start < count; ++start) {
            if (groupOf_[start] >= 0 || !liveNode_[start]) {
                continue;
            }
            groupOf_[start] = groups;
            std::deque<int> members{static_cast<int>(start)};
            while (!members.empty()) {
                const int node = members.front();
                members.pop_front();
                for (auto [next, link] : adjacency[At(node)]) {
                    const auto& device = network_.Links[At(link)];
                    if (!device.IsDevice || groupOf_[At(next)] >= 0) {
                        continue;
                    }
                    const bool downstream = distance[At(next)] > distance[At(node)];
                    groupOf_[At(next)] = groups;
                    offset_[At(next)] =
                        offset_[At(node)] + (downstream ? -device.Loss : device.Loss);
                    members.push_back(next);
                }
            }
            ++groups;
        }
        NumberUnknowns(groups);
    }

    // A group holding a supply has its base given; every other group is one unknown.
    void NumberUnknowns(int groups) {
        unknownOf_.assign(At(groups), 0);
        groupBase_.assign(At(groups), 0.0);
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            const auto& node = network_.Nodes[n];
            if (node.HeldPressure && groupOf_[n] >= 0 && unknownOf_[At(groupOf_[n])] == 0) {
                unknownOf_[At(groupOf_[n])] = -1;
                groupBase_[At(groupOf_[n])] =
                    node.GivenResidual + ElevationHead * node.Elevation - offset_[n];
            }
        }
        unknowns_ = 0;
        for (auto& unknown : unknownOf_) {
            unknown = unknown < 0 ? -1 : unknowns_++;
        }
    }

    // -1 for a group whose head is given; -2 for a node taken out as a dead end.
    int UnknownOfNode(int node) const {
        const int group = groupOf_[At(node)];
        return group < 0 ? -2 : unknownOf_[At(group)];
    }

    bool IsActivePipe(std::size_t l) const { return liveLink_[l] && !network_.Links[l].IsDevice; }

    void BuildPattern() {
        std::vector<std::pair<int, int>> edges;
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            if (IsActivePipe(l)) {
                const int a = UnknownOfNode(network_.Links[l].From);
                const int b = UnknownOfNode(network_.Links[l].To);
                if (a >= 0 && b >= 0 && a != b) {
                    edges.push_back({a, b});
                }
            }
        }
        matrix_ = SkylineMatrix(unknowns_, edges);
    }

    double NodeHead(int node, const std::vector<double>& bases) const {
        const int unknown = UnknownOfNode(node);
        const int group = groupOf_[At(node)];
        const double base = unknown >= 0 ? bases[At(unknown)]
                            : group >= 0 ? groupBase_[At(group)]
                                         : 0;
        return base + offset_[At(node)];
    }

    // Converged when no flow moves by more than 1e-9 gpm; a floor of rounding noise up to 1e-4
    // gpm, which a loop with no demand on it can keep turning, is accepted too.
    bool Iterate(int& iterations) {
        bases_.assign(At(unknowns_), StartHead());
        double change = 0;
        for (int step = 0; step < MostSteps; ++step) {
            ++iterations;
            AssembleAndSolve();
            change = UpdateFlows();
            if (step >= 2 && change < 1e-9) {
                return true;
            }
        }
        return change < 1e-4;
    }

    double StartHead() const {
        double head = 0;
        for (double base : groupBase_) {
            head = std::max(head, base);
        }
        return head;
    }

    void AssembleAndSolve() {
        matrix_.Clear();
        std::vector<double> rhs(At(unknowns_), 0.0);
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            if (IsActivePipe(l)) {
                AddPipe(network_.Links[l].From, network_.Links[l].To,
                        LinearisePipe(flows_[l], conductance_[l]), rhs);
            }
        }
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            const auto& node = network_.Nodes[n];
            const int unknown = UnknownOfNode(static_cast<int>(n));
            if (unknown < 0) {
                continue;
            }
            rhs[At(unknown)] -= node.FixedFlow;
            if (node.KFactor <= 0 || !sprinklerOpen_[n]) {
                continue;
            }
            const Linearised linear = LineariseSprinkler(sprinklerFlows_[n], node.KFactor);
            matrix_.Add(unknown, unknown, linear.Slope);
            rhs[At(unknown)] -=
                linear.Constant + linear.Slope * (offset_[n] - ElevationHead * node.Elevation);
        }
        bases_ = matrix_.Solve(rhs);
    }

    // The balance of a group: flows out of it through pipes and sprinklers, plus its fixed flows.
    void AddPipe(int from, int to, const Linearised& linear, std::vector<double>& rhs) {
        const int a = UnknownOfNode(from);
        const int b = UnknownOfNode(to);
        if (a == b && a >= 0) {
            return; // a pipe beside a device: its flow stays inside the group
        }
        // Given heads move to the right-hand side with the offsets.
        const double constant =
            linear.Constant + linear.Slope * ((a < 0 ? NodeHead(from, bases_) : offset_[At(from)]) -
                                              (b < 0 ? NodeHead(to, bases_) : offset_[At(to)]));
        if (a >= 0) {
            matrix_.Add(a, a, linear.Slope);
            rhs[At(a)] -= constant;
        }
        if (b >= 0) {
            matrix_.Add(b, b, linear.Slope);
            rhs[At(b)] += constant;
        }
        if (a >= 0 && b >= 0) {
            matrix_.Add(a, b, -linear.Slope);
        }
    }

    double UpdateFlows() {
        double change = 0; // the largest change of a flow, gpm
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            if (!IsActivePipe(l)) {
                continue;
            }
            const auto& link = network_.Links[l];
            const Linearised linear = LinearisePipe(flows_[l], conductance_[l]);
            const double flow = linear.Constant + linear.Slope * (NodeHead(link.From, bases_) -
                                                                  NodeHead(link.To, bases_));
            change = std::max(change, std::fabs(flow - flows_[l]));
            flows_[l] = flow;
        }
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            const auto& node = network_.Nodes[n];
            if (node.KFactor <= 0 || !sprinklerOpen_[n] ||
                UnknownOfNode(static_cast<int>(n)) == -2) {
                continue;
            }
            const Linearised linear = LineariseSprinkler(sprinklerFlows_[n], node.KFactor);
            const double pressure =
                NodeHead(static_cast<int>(n), bases_) - ElevationHead * node.Elevation;
            const double flow = linear.Constant + linear.Slope * pressure;
            change = std::max(change, std::fabs(flow - sprinklerFlows_[n]));
            sprinklerFlows_[n] = flow;
        }
        return change;
    }

    bool CloseNegativeSprinklers() {
        bool closed = false;
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            const auto& node = network_.Nodes[n];
            if (sprinklerOpen_[n] && node.KFactor > 0 && liveNode_[n] &&
                NodeHead(static_cast<int>(n), bases_) - ElevationHead * node.Elevation < 0) {
                sprinklerOpen_[n] = false;
                sprinklerFlows_[n] = 0;
                closed = true;
            }
        }
        return closed;
    }

    void Report(GradientSolution& solution) const {
        const std::vector<double> heads = AllHeads();
        const std::size_t nodes = network_.Nodes.size();
        solution.Residual.assign(nodes, 0.0);
        solution.Discharge.assign(nodes, 0.0);
        for (std::size_t n = 0; n < nodes; ++n) {
            const auto& node = network_.Nodes[n];
            solution.Residual[n] = heads[n] - ElevationHead * node.Elevation;
            if (node.KFactor > 0 && sprinklerOpen_[n] && solution.Residual[n] > 0) {
                solution.Discharge[n] = node.KFactor * std::sqrt(solution.Residual[n]);
            }
        }
        solution.LinkFlow.assign(network_.Links.size(), 0.0);
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            const auto& link = network_.Links[l];
            if (IsActivePipe(l)) {
                const double drop = heads[At(link.From)] - heads[At(link.To)];
                const double magnitude = std::pow(conductance_[l] * std::fabs(drop), FlowExponent);
                solution.LinkFlow[l] = drop < 0 ? -magnitude : magnitude;
            }
        }
        FillDeviceFlows(solution);
    }

    // Heads of the solved nodes, and of the dead ends, which stand level with their neighbours.
    std::vector<double> AllHeads() const {
        std::vector<double> heads(network_.Nodes.size(), 0.0);
        std::vector<bool> known(network_.Nodes.size(), false);
        for (std::size_t n = 0; n < network_.Nodes.size(); ++n) {
            if (liveNode_[n] && groupOf_[n] >= 0) {
                heads[n] = NodeHead(static_cast<int>(n), bases_);
                known[n] = true;
            }
        }
        for (bool changed = true; changed;) {
            changed = false;
            for (const auto& link : network_.Links) {
                const auto from = At(link.From);
                const auto to = At(link.To);
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

    // A device carries what its downstream side takes; devices in series are settled one by one.
    void FillDeviceFlows(GradientSolution& solution) const {
        const std::size_t nodes = network_.Nodes.size();
        std::vector<double> outflow(nodes, 0.0); // through settled links, sprinklers, fixed flows
        std::vector<int> unsettled(nodes, 0);
        for (std::size_t n = 0; n < nodes; ++n) {
            outflow[n] = network_.Nodes[n].FixedFlow + solution.Discharge[n];
        }
        std::vector<bool> settled(network_.Links.size(), true);
        for (std::size_t l = 0; l < network_.Links.size(); ++l) {
            const auto& link = network_.Links[l];
            if (link.IsDevice) {
                settled[l] = false;
                ++unsettled[At(link.From)];
                ++unsettled[At(link.To)];
            } else {
                outflow[At(link.From)] += solution.LinkFlow[l];
                outflow[At(link.To)] -= solution.LinkFlow[l];
            }
        }
        for (bool progress = true; progress;) {
            progress = false;
            for (std::size_t l = 0; l < network_.Links.size(); ++l) {
                if (!settled[l] && SettleDevice(l, solution, outflow, unsettled)) {
                    settled[l] = true;
                    progress = true;
                }
            }
        }
    }

    // Settles a device from an end where it is the last link unknown, unless that end is a supply.
    bool SettleDevice(std::size_t l, GradientSolution& solution, std::vector<double>& outflow,
                      std::vector<int>& unsettled) const {
        const auto& device = network_.Links[l];
        for (int end : {device.To, device.From}) {
            if (network_.Nodes[At(end)].HeldPressure || unsettled[At(end)] != 1) {
                continue;
            }
            const double rest = outflow[At(end)];
            solution.LinkFlow[l] = end == device.To ? rest : -rest;
            outflow[At(device.From)] += solution.LinkFlow[l];
            outflow[At(device.To)] -= solution.LinkFlow[l];
            --unsettled[At(device.From)];
            --unsettled[At(device.To)];
            return true;
        }
        return false;
    }

    const GradientNetwork& network_;
    std::vector<double> conductance_;
    std::vector<int> groupOf_;
    std::vector<double> offset_;    // node head = group base + offset
    std::vector<int> unknownOf_;    // group -> unknown index, -1 for a group with a supply
    std::vector<double> groupBase_; // the given base of a group with a supply
    int unknowns_ = 0;
    SkylineMatrix matrix_;
    std::vector<double> flows_;
    std::vector<double> sprinklerFlows_;
    std::vector<bool> sprinklerOpen_;
    std::vector<bool> liveNode_;
    std::vector<bool> liveLink_;
    std::vector<double> bases_;
};

} // namespace

GradientSolution SolveGradient(const GradientNetwork& network) {
    const bool supplied = std::any_of(network.Nodes.begin(), network.Nodes.end(),
                                      [](const GradientNode& node) { return node.HeldPressure; });
    if (!supplied) {
        return {};
    }
    try {
        GradientModel model(network);
        return model.Solve();
    } catch (const std::runtime_error&) {
        return {}; // a part of the network with no supply leaves the system singular
    }
}

} // namespace quench
