#include "calc/check_network.h"

#include "calc/check_calculation_screen.h"
#include "calc/messages.h"
#include "calc/prepare_network.h"
#include "calc/screen_words.h"
#include "core/formats.h"
#include "core/text.h"

#include <algorithm>
#include <map>

namespace quench {

namespace {

bool HasNode(const WorkPipeRecord& row) {
    return !TrimmedView(row.BegNode).empty() || !TrimmedView(row.EndNode).empty();
}

// A fault of the network: the run stops and the pipe data screen comes forward.
bool Fault(RunContext& context, const std::string& text, int row = 0,
           MessageStyle style = MessageStyle::Plain) {
    context.Stop(Diagnostic(style, "", text).OnRow(row).Bring(screens::PipeData, screens::Show));
    return false;
}

using NodePair = std::pair<double, double>;

NodePair PairOf(const WorkPipeRecord& row) {
    const double begin = ToNumber(row.BegNode);
    const double end = ToNumber(row.EndNode);
    return {std::min(begin, end), std::max(begin, end)};
}

// For each row with a node, the first other row (in row order) that joins the same two nodes; 0
// when there is none.
std::vector<int> FirstOtherRowOfPair(const Project& project) {
    struct PairRow {
        NodePair Pair;
        int Row = 0;
    };
    std::vector<PairRow> rows;
    rows.reserve(MaxPipes);
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (HasNode(work)) {
            rows.push_back({PairOf(work), row});
        }
    }
    const auto before = [](const PairRow& left, const PairRow& right) {
        return left.Pair < right.Pair;
    };
    std::stable_sort(rows.begin(), rows.end(), before);
    std::vector<int> other(MaxPipes + 1, 0);
    for (auto group = rows.begin(); group != rows.end();) {
        const auto end = std::upper_bound(group, rows.end(), *group, before);
        if (end - group >= 2) {
            const int first = group->Row;
            const int second = (group + 1)->Row;
            for (auto at = group; at != end; ++at) {
                other[static_cast<std::size_t>(at->Row)] = at->Row == first ? second : first;
            }
        }
        group = end;
    }
    return other;
}

// Two rows are the same pipe when their nodes are equal, as texts or as values, either way round.
bool CheckDuplicates(RunContext& context) {
    const Project& project = context.Project;
    const std::vector<int> otherOf = FirstOtherRowOfPair(project);
    int blanksInARow = 0;
    for (int row = 1; row <= MaxPipes && blanksInARow < 3; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!HasNode(work)) {
            ++blanksInARow;
            continue;
        }
        blanksInARow = 0;
        const int other = otherOf[static_cast<std::size_t>(row)];
        if (other != 0) {
            const WorkPipeRecord& second = project.WorkPipeRecord[other];
            const std::string begin = TypedNodeText(project, second.BegNode);
            const std::string end = TypedNodeText(project, second.EndNode);
            const bool zero =
                begin.find('0') != std::string::npos || end.find('0') != std::string::npos;
            return Fault(context, messages::DuplicatedPipe(begin, end, zero), other);
        }
    }
    return true;
}

bool CheckRows(RunContext& context) {
    const Project& project = context.Project;
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!HasNode(work)) {
            continue;
        }
        for (const std::string* text : {&work.BegNode, &work.EndNode}) {
            if (!TrimmedView(*text).empty() && ToNumber(*text) == 0) {
                return Fault(context, messages::NodeZero(row), row);
            }
        }
    }
    int pipes = 0;
    for (int row = 1; row <= MaxPipes; ++row) {
        pipes += HasBothNodes(project.WorkPipeRecord[row]) ? 1 : 0;
    }
    if (pipes < 3) {
        return Fault(context, messages::MoreThanTwoPipes);
    }
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (HasBothNodes(work) && ToNumber(work.BegNode) == ToNumber(work.EndNode)) {
            return Fault(context,
                         messages::SameNodes(row, TypedNodeText(project, work.BegNode),
                                             TypedNodeText(project, work.EndNode)),
                         row);
        }
    }
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (HasNode(work) && !HasBothNodes(work)) {
            return Fault(context, messages::HalfRow(row), row);
        }
    }
    return true;
}

// The nodes of the crossable rows, each a place in a sorted list, and those the inflow reaches.
struct Reach {
    std::vector<double> Nodes; // ascending, distinct
    std::vector<unsigned char> Reached;
    std::size_t ReachedCount = 0; // the inflow counts even when no row holds it
    int Rows = 0;

    int PlaceOf(double node) const {
        const auto found = std::lower_bound(Nodes.begin(), Nodes.end(), node);
        return found != Nodes.end() && *found == node ? static_cast<int>(found - Nodes.begin())
                                                      : -1;
    }
    bool IsReached(double node) const {
        const int place = PlaceOf(node);
        return place >= 0 && Reached[static_cast<std::size_t>(place)] != 0;
    }
};

bool Crossable(const WorkPipeRecord& row) {
    return IsTrue(row.Active) && HasBothNodes(row);
}

// The crossable rows as pairs of places in reach.Nodes, which it fills: every end sorted once
// by its value, equal values one place.
std::vector<std::pair<int, int>> PlacePipes(const Project& project, Reach& reach) {
    std::vector<std::pair<double, int>> ends; // value, end (2 × pipe + 0 or 1)
    ends.reserve(2 * MaxPipes);
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (Crossable(work)) {
            const int end = static_cast<int>(ends.size());
            ends.emplace_back(ToNumber(work.BegNode), end);
            ends.emplace_back(ToNumber(work.EndNode), end + 1);
        }
    }
    std::sort(ends.begin(), ends.end());
    std::vector<std::pair<int, int>> pipes(ends.size() / 2);
    for (const auto& [value, end] : ends) {
        if (reach.Nodes.empty() || reach.Nodes.back() != value) {
            reach.Nodes.push_back(value);
        }
        const int place = static_cast<int>(reach.Nodes.size()) - 1;
        auto& pipe = pipes[static_cast<std::size_t>(end / 2)];
        (end % 2 == 0 ? pipe.first : pipe.second) = place;
    }
    return pipes;
}

Reach WalkFromInflow(const Project& project, double inflow) {
    Reach reach;
    const std::vector<std::pair<int, int>> pipes = PlacePipes(project, reach);
    reach.Rows = static_cast<int>(pipes.size());
    const std::size_t count = reach.Nodes.size();
    std::vector<int> start(count + 1, 0);
    for (const auto& [from, to] : pipes) {
        ++start[static_cast<std::size_t>(from) + 1];
        ++start[static_cast<std::size_t>(to) + 1];
    }
    for (std::size_t place = 0; place < count; ++place) {
        start[place + 1] += start[place];
    }
    std::vector<int> next(start.begin(), start.end() - 1);
    std::vector<int> neighbour(2 * pipes.size());
    for (const auto& [from, to] : pipes) {
        neighbour[static_cast<std::size_t>(next[static_cast<std::size_t>(from)]++)] = to;
        neighbour[static_cast<std::size_t>(next[static_cast<std::size_t>(to)]++)] = from;
    }
    reach.Reached.assign(count, 0);
    reach.ReachedCount = 1;
    const int first = reach.PlaceOf(inflow);
    if (first < 0) {
        return reach;
    }
    reach.Reached[static_cast<std::size_t>(first)] = 1;
    std::vector<int> front{first};
    while (!front.empty()) {
        const int node = front.back();
        front.pop_back();
        for (int at = start[static_cast<std::size_t>(node)];
             at < start[static_cast<std::size_t>(node) + 1]; ++at) {
            const int other = neighbour[static_cast<std::size_t>(at)];
            if (reach.Reached[static_cast<std::size_t>(other)] == 0) {
                reach.Reached[static_cast<std::size_t>(other)] = 1;
                ++reach.ReachedCount;
                front.push_back(other);
            }
        }
    }
    return reach;
}

// An unreached node to name: the lowest of those that stand on one row only (the ends of the
// isolated part), else the lowest unreached node.
std::string IsolatedNodeText(const Project& project, const Reach& reach) {
    std::map<double, int> rowsAtNode;
    std::map<double, std::string> textOf;
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!Crossable(work)) {
            continue;
        }
        for (const std::string* text : {&work.BegNode, &work.EndNode}) {
            const double value = ToNumber(*text);
            ++rowsAtNode[value];
            textOf.emplace(value, TypedNodeText(project, *text));
        }
    }
    std::string lowestUnreached;
    for (const auto& [value, rows] : rowsAtNode) {
        if (reach.IsReached(value)) {
            continue;
        }
        if (rows == 1) {
            return textOf[value];
        }
        if (lowestUnreached.empty()) {
            lowestUnreached = textOf[value];
        }
    }
    return lowestUnreached;
}

// A blank row marked active among the rows in use.
bool HasActiveBlankRow(const Project& project) {
    int last = 0;
    for (int row = 1; row <= MaxPipes; ++row) {
        if (HasNode(project.WorkPipeRecord[row])) {
            last = row;
        }
    }
    for (int row = 1; row <= last; ++row) {
        const PipeRecord& input = project.PipeRecord[row];
        if (IsBlankRow(input) && IsTrue(input.Active)) {
            return true;
        }
    }
    return false;
}

double MarkedInflowValue(const Project& project) {
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!IsTrue(work.Active)) {
            continue;
        }
        if (work.BegIsInflow == 1) {
            return ToNumber(work.BegNode);
        }
        if (work.EndIsInflow == 1) {
            return ToNumber(work.EndNode);
        }
    }
    return project.InflowNode;
}

bool CheckConnectivity(RunContext& context) {
    const Project& project = context.Project;
    const Reach reach = WalkFromInflow(project, MarkedInflowValue(project));
    context.OneLoopNetwork = static_cast<int>(reach.ReachedCount) == reach.Rows;
    if (reach.ReachedCount >= reach.Nodes.size()) {
        return true;
    }
    const std::string node = IsolatedNodeText(project, reach);
    if (node.empty()) {
        return Fault(context, messages::BlankRowsInData);
    }
    return Fault(context, messages::IsolatedNode(node, HasActiveBlankRow(project)), 0,
                 MessageStyle::Information);
}

} // namespace

std::optional<PrepareResult> CheckNetwork(RunContext& context) {
    std::optional<PrepareResult> prepared;
    if (context.Project.NumberOfPipes == 0) {
        // The tables are prepared here only to be had; preparation's own fault comes in its turn.
        PrepareOptions options;
        options.PumpRerunPending = context.PumpRerunPending;
        prepared = PrepareNetwork(context.Project, context.Library, options);
    }
    if (CheckDuplicates(context) && CheckRows(context)) {
        CheckConnectivity(context);
    }
    return prepared;
}

} // namespace quench
