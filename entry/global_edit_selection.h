#pragma once

// Which rows a global edit acts on. The pipe frame selects whole rows (by a node range, a pipe
// type group or all pipes); the node frame selects the ends of rows (by a node range, an area
// group or all nodes), since a node's data live at the ends of the rows that name it. A range
// may be typed either way round. Every walk over the rows ends at the first row with both node
// numbers empty: rows behind a gap are reached only once the table has been sorted.

#include "core/project.h"
#include "entry/node_data_sync.h"

#include <string>
#include <vector>

namespace quench {

enum class GlobalFrame { Pipe, Node };

// optGlobalEditPipeNode / optGlobalEditNodeNode, optGlobalEditPipeTypeGroup /
// optGlobalEditAreaGroup, optGlobalEditAllPipes / optGlobalEditAllNodes.
enum class SelectionChoice { NodeRange, Group, All };

struct GlobalSelection {
    SelectionChoice Choice = SelectionChoice::NodeRange;
    std::string From;  // txtGlobalEditPipeNodeFrom / txtGlobalEditNodeNodeFrom
    std::string To;    // txtGlobalEditPipeNodeTo / txtGlobalEditNodeNodeTo
    std::string Group; // txtGlobalEditPipeTypeGroup / txtGlobalEditAreaGroup
};

struct RowEnd {
    int Row = 0;
    NodeEnd End = NodeEnd::Beginning;

    bool operator==(const RowEnd&) const = default;
};

// True when `number` lies between the two limits, whichever is the larger.
bool InNodeRange(double number, double from, double to);

// The rows before the first gap: 1 up to the row before the first with both node texts empty.
int RowsBeforeGap(const Project& project);

// The pipe frame: the rows selected, in table order.
std::vector<int> SelectedPipes(const Project& project, const GlobalSelection& selection);

// The node frame: the ends selected, in table order, the beginning of a row before its ending.
// An end without a node number is never selected.
std::vector<RowEnd> SelectedEnds(const Project& project, const GlobalSelection& selection);

// The rows with at least one selected end, in table order.
std::vector<int> RowsOfEnds(const std::vector<RowEnd>& ends);

} // namespace quench
