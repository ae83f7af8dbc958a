#include "entry/node_data_sync.h"

#include "core/formats.h"
#include "core/text.h"

#include <algorithm>

namespace quench {

NodeData NodeDataAt(const PipeRecord& row, NodeEnd end) {
    if (end == NodeEnd::Beginning) {
        return {row.KFactorB,       row.ElevationB, row.PressEstimateB,
                row.SprinklerAreaB, row.AreaGroupB, row.NonSprinklerFlowB};
    }
    return {row.KFactorE,       row.ElevationE, row.PressEstimateE,
            row.SprinklerAreaE, row.AreaGroupE, row.NonSprinklerFlowE};
}

void SetNodeData(PipeRecord& row, NodeEnd end, const NodeData& data) {
    if (end == NodeEnd::Beginning) {
        row.KFactorB = data.KFactor;
        row.ElevationB = data.Elevation;
        row.PressEstimateB = data.PressEstimate;
        row.SprinklerAreaB = data.SprinklerArea;
        row.AreaGroupB = data.AreaGroup;
        row.NonSprinklerFlowB = data.NonSprinklerFlow;
        return;
    }
    row.KFactorE = data.KFactor;
    row.ElevationE = data.Elevation;
    row.PressEstimateE = data.PressEstimate;
    row.SprinklerAreaE = data.SprinklerArea;
    row.AreaGroupE = data.AreaGroup;
    row.NonSprinklerFlowE = data.NonSprinklerFlow;
}

const std::string& NodeText(const PipeRecord& row, NodeEnd end) {
    return end == NodeEnd::Beginning ? row.BegNode : row.EndNode;
}

double NodeNumberAt(const PipeRecord& row, NodeEnd end) {
    return ToNumber(NodeText(row, end));
}

NodePlace PlaceOfNode(const PipeRecord& row, double node) {
    if (NodeNumberAt(row, NodeEnd::Beginning) == node) {
        return NodePlace::Beginning;
    }
    if (NodeNumberAt(row, NodeEnd::Ending) == node) {
        return NodePlace::Ending;
    }
    return NodePlace::None;
}

namespace {

NodeEnd EndOf(NodePlace place) {
    return place == NodePlace::Beginning ? NodeEnd::Beginning : NodeEnd::Ending;
}

bool TakesPart(const Project& project, int row, int source) {
    return row != source && HasBothNodes(project.PipeRecord[static_cast<std::size_t>(row)]);
}

} // namespace

std::vector<int> SyncNodeData(Project& project, int row, NodeEnd end, SyncDirection direction) {
    std::vector<int> changed;
    if (row < 1 || row > MaxPipes) {
        return changed;
    }
    PipeRecord& source = project.PipeRecord[static_cast<std::size_t>(row)];
    if (Trim(NodeText(source, end)).empty()) {
        return changed;
    }
    const double node = NodeNumberAt(source, end);
    const NodeData data = NodeDataAt(source, end);
    for (int other = 1; other <= MaxPipes; ++other) {
        if (!TakesPart(project, other, row)) {
            continue;
        }
        PipeRecord& target = project.PipeRecord[static_cast<std::size_t>(other)];
        const NodePlace place = PlaceOfNode(target, node);
        if (place == NodePlace::None) {
            continue;
        }
        if (direction == SyncDirection::Fetch) {
            SetNodeData(source, end, NodeDataAt(target, EndOf(place)));
            changed.push_back(row);
            return changed;
        }
        if (NodeDataAt(target, EndOf(place)) != data) {
            SetNodeData(target, EndOf(place), data);
            changed.push_back(other);
        }
    }
    return changed;
}

std::vector<int> SpreadBothEnds(Project& project, int row) {
    std::vector<int> changed =
        SyncNodeData(project, row, NodeEnd::Beginning, SyncDirection::Spread);
    for (int other : SyncNodeData(project, row, NodeEnd::Ending, SyncDirection::Spread)) {
        if (std::find(changed.begin(), changed.end(), other) == changed.end()) {
            changed.push_back(other);
        }
    }
    return changed;
}

} // namespace quench
