#pragma once

// A node has no record of its own: its data live in every pipe row that names it, at the end where
// it stands. SyncNodeData keeps those copies alike. A fetch gives a row the data of the first other
// row naming the same node (a new reference takes over an existing node); a spread writes a row's
// node data into every other row naming it (the last edit wins everywhere).

#include "core/project.h"

#include <string>
#include <vector>

namespace quench {

enum class NodeEnd { Beginning = 1, Ending = 2 };
enum class SyncDirection { Fetch = 1, Spread = 2 };

// The six values that belong to a node rather than to a pipe.
struct NodeData {
    std::string KFactor;
    Single Elevation = 0;
    Single PressEstimate = 0;
    Single SprinklerArea = 0;
    std::string AreaGroup;
    Single NonSprinklerFlow = 0;

    bool operator==(const NodeData&) const = default;
};

NodeData NodeDataAt(const PipeRecord& row, NodeEnd end);
void SetNodeData(PipeRecord& row, NodeEnd end, const NodeData& data);
const std::string& NodeText(const PipeRecord& row, NodeEnd end);

// The node a row names at one end as a number (0 for an empty or unreadable text), and whether
// the row names `node` at either end.
double NodeNumberAt(const PipeRecord& row, NodeEnd end);

// The end at which a row names a node, or nothing.
enum class NodePlace { None, Beginning, Ending };
NodePlace PlaceOfNode(const PipeRecord& row, double node);

// Fetch or spread the node data of `row` at `end`. Only rows with both node numbers other than
// `row` take part; a row whose chosen node text is empty does nothing. Returns the rows changed:
// the source row after a fetch that found the node, every other row naming it after a spread.
std::vector<int> SyncNodeData(Project& project, int row, NodeEnd end, SyncDirection direction);

// Both ends of a row spread, as before a command that moves away from the row.
std::vector<int> SpreadBothEnds(Project& project, int row);

} // namespace quench
