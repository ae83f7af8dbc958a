#include "solver/build_half_edges.h"

#include "core/formats.h"
#include "core/text.h"
#include "solver/hydraulics.h"

namespace quench {

int NodeNumberOf(const std::string& text) {
    const double value = ToNumber(text);
    return value >= 0 && value <= FirstInflowNode ? static_cast<int>(value) : 0;
}

namespace {

void IndexNodes(const Project& project, HalfEdgeTable& edges) {
    const int nodes = project.NumberOfNodes;
    edges.PositionOfNumber.assign(FirstInflowNode + 1, 0);
    edges.FirstRow.assign(static_cast<std::size_t>(nodes) + 1, 0);
    edges.LastRow.assign(static_cast<std::size_t>(nodes) + 1, 0);
    for (int position = 1; position <= nodes; ++position) {
        const int number = project.NodeRecord[static_cast<std::size_t>(position)].Number;
        if (number > 0 && number <= FirstInflowNode &&
            edges.PositionOfNumber[static_cast<std::size_t>(number)] == 0) {
            edges.PositionOfNumber[static_cast<std::size_t>(number)] = position;
        }
    }
}

struct PipeEnd {
    int Pipe = 0;
    bool AtBegin = true;
    int OtherNode = 0; // the node number at the pipe's other end
};

// The pipe ends at the node positions, the ends of each position together in table order.
struct PipeEnds {
    std::vector<int> Start; // by position; the ends of position p are Start[p] to Start[p + 1]
    std::vector<PipeEnd> Ends;
};

PipeEnds PipesAtNodes(const Project& project, const HalfEdgeTable& edges) {
    struct Placed {
        int Begin = 0;
        int End = 0;
        int BeginNumber = 0;
        int EndNumber = 0;
    };
    std::vector<Placed> placed(static_cast<std::size_t>(project.NumberOfPipes) + 1);
    PipeEnds atNode;
    atNode.Start.assign(static_cast<std::size_t>(project.NumberOfNodes) + 2, 0);
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const auto& record = project.CalcPipeRecord[static_cast<std::size_t>(pipe)];
        Placed& ends = placed[static_cast<std::size_t>(pipe)];
        ends.BeginNumber = NodeNumberOf(record.BegNode);
        ends.EndNumber = NodeNumberOf(record.EndNode);
        ends.Begin = edges.PositionOf(ends.BeginNumber);
        ends.End = edges.PositionOf(ends.EndNumber);
        if (ends.End == ends.Begin) {
            ends.End = 0; // a pipe from a node to itself stands once
        }
        ++atNode.Start[static_cast<std::size_t>(ends.Begin) + 1];
        ++atNode.Start[static_cast<std::size_t>(ends.End) + 1];
    }
    atNode.Start[1] = 0; // position 0 is no node
    for (std::size_t position = 1; position + 1 < atNode.Start.size(); ++position) {
        atNode.Start[position + 1] += atNode.Start[position];
    }
    atNode.Ends.resize(static_cast<std::size_t>(atNode.Start.back()));
    std::vector<int> next(atNode.Start.begin(), atNode.Start.end() - 1);
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const Placed& ends = placed[static_cast<std::size_t>(pipe)];
        if (ends.Begin != 0) {
            atNode.Ends[static_cast<std::size_t>(next[static_cast<std::size_t>(ends.Begin)]++)] =
                PipeEnd{pipe, true, ends.EndNumber};
        }
        if (ends.End != 0) {
            atNode.Ends[static_cast<std::size_t>(next[static_cast<std::size_t>(ends.End)]++)] =
                PipeEnd{pipe, false, ends.BeginNumber};
        }
    }
    return atNode;
}

void FillRow(const Project& project, const PipeEnd& end, int position, HalfEdge& row,
             SolverState& state) {
    const auto& pipe = project.CalcPipeRecord[static_cast<std::size_t>(end.Pipe)];
    const auto& node = project.NodeRecord[static_cast<std::size_t>(position)];
    row = HalfEdge{};
    row.FromNode = node.Number;
    row.ToNode = end.OtherNode;
    row.Diameter = pipe.InsideDiameter;
    row.Length = pipe.TotalLength;
    row.FromElevationHead = node.Elevation * ElevationHeadPerFoot;
    row.FromPosition = position;
    row.ToPosition = state.Edges.PositionOf(row.ToNode);
    row.Pipe = end.Pipe;
    if (IsDeviceCode(pipe.Material)) {
        row.Material = pipe.Material;
        row.Diameter = DeviceDiameter;
        row.Length = DeviceStartLength;
        state.CValue[static_cast<std::size_t>(pipe.Material)] = DeviceCValue;
    } else if (pipe.Material < MaterialMeter) {
        row.Material = pipe.Material;
    }
}

// The first row among `from`'s rows that leads to `to`, 0 when there is none.
int FirstRowTo(const HalfEdgeTable& edges, int fromPosition, int to) {
    const int last = edges.LastRow[static_cast<std::size_t>(fromPosition)];
    for (int row = edges.FirstRow[static_cast<std::size_t>(fromPosition)]; row != 0 && row <= last;
         ++row) {
        if (edges[row].ToNode == to) {
            return row;
        }
    }
    return 0;
}

// Pipe and reverse row of each row, as a search of the tables in order finds them.
void LinkRows(HalfEdgeTable& edges) {
    for (int row = 1; row <= edges.Count; ++row) {
        HalfEdge& edge = edges[row];
        const int first = FirstRowTo(edges, edge.FromPosition, edge.ToNode);
        edge.Pipe = edges[first].Pipe;
        edge.Reverse = edge.ToPosition == 0 ? 0 : FirstRowTo(edges, edge.ToPosition, edge.FromNode);
    }
}

// The K-factor text typed at each node: that of the end of the first active row at the node.
void NodeKTexts(const Project& project, SolverState& state) {
    state.NodeKText.assign(static_cast<std::size_t>(project.NumberOfNodes) + 1, std::string());
    std::vector<bool> found(state.NodeKText.size(), false);
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[static_cast<std::size_t>(row)];
        if (!IsTrue(work.Active) || TrimmedView(work.BegNode).empty() ||
            TrimmedView(work.EndNode).empty()) {
            continue;
        }
        const PipeRecord& input = project.PipeRecord[static_cast<std::size_t>(row)];
        const int positions[] = {state.Edges.PositionOf(NodeNumberOf(work.BegNode)),
                                 state.Edges.PositionOf(NodeNumberOf(work.EndNode))};
        const std::string* texts[] = {&input.KFactorB, &input.KFactorE};
        for (int end = 0; end < 2; ++end) {
            const auto position = static_cast<std::size_t>(positions[end]);
            if (position != 0 && !found[position]) {
                found[position] = true;
                state.NodeKText[position] = Trim(*texts[end]);
            }
        }
    }
}

} // namespace

void BuildHalfEdges(const Project& project, SolverState& state) {
    HalfEdgeTable& edges = state.Edges;
    IndexNodes(project, edges);
    const auto atNode = PipesAtNodes(project, edges);
    edges.Rows.assign(2 * static_cast<std::size_t>(project.NumberOfPipes) + 1, HalfEdge{});
    edges.Count = 0;
    edges.DistinctNodes = 0;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const auto endsFrom =
            atNode.Ends.begin() + atNode.Start[static_cast<std::size_t>(position)];
        const auto endsTo =
            atNode.Ends.begin() + atNode.Start[static_cast<std::size_t>(position) + 1];
        if (endsFrom == endsTo) {
            continue;
        }
        ++edges.DistinctNodes;
        edges.FirstRow[static_cast<std::size_t>(position)] = edges.Count + 1;
        for (auto end = endsFrom; end != endsTo; ++end) {
            HalfEdge& row = edges[++edges.Count];
            FillRow(project, *end, position, row, state);
        }
        edges.LastRow[static_cast<std::size_t>(position)] = edges.Count;
        const auto& node = project.NodeRecord[static_cast<std::size_t>(position)];
        HalfEdge& first = edges[edges.FirstRow[static_cast<std::size_t>(position)]];
        first.KFactor = node.KFactor;
        first.FixedFlow = node.FixedFlow;
    }
    LinkRows(edges);
    NodeKTexts(project, state);
    state.NodeKFactor.assign(static_cast<std::size_t>(project.NumberOfNodes) + 1, 0.0);
    state.NodeDensity.assign(static_cast<std::size_t>(project.NumberOfNodes) + 1, 0.0);
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        state.NodeKFactor[static_cast<std::size_t>(position)] =
            project.NodeRecord[static_cast<std::size_t>(position)].KFactor;
    }
    state.Conductance.assign(static_cast<std::size_t>(edges.Count) + 1, 0.0);
    // A new table: the equations are laid out again, and the first step takes the node order.
    ++state.HalfEdgeBuilds;
    state.NodeOrderDue = true;
}

} // namespace quench
