#pragma once

// What a tree or grid build did: the rows it wrote, or why it stopped and where the screen puts
// the focus.

namespace quench {

// The control a failed input check points at.
enum class BuilderControl {
    None,
    NetworkInput,   // an input of the column, by its index
    MainMaterial,   // the cross main or perimeter material
    BranchMaterial, // the branch line material
};

struct BuilderFocus {
    BuilderControl Control = BuilderControl::None;
    int Index = -1; // the input's index for NetworkInput

    bool operator==(const BuilderFocus&) const = default;
};

enum class BuildStop {
    None,           // built
    MissingInput,   // the input check failed
    Cancelled,      // Cancel on "Confirm Pipe Add"
    SourceNode,     // the tree's source node is an existing node
    NodeConflict,   // No on "Possible node conflict"
    NoRoom,         // more rows than the table holds
    NodeNumbers,    // node numbers past 9999
    DuplicateNodes, // No on "Add duplicate nodes?"
};

struct BuildResult {
    BuildStop Stop = BuildStop::None;
    BuilderFocus Focus;  // for MissingInput
    int FirstRow = 0;    // the first row written
    int RowsWritten = 0; // P
    int ExitNode = 0;    // a tree's calculated exit node; 0 when the tree has one row

    bool Built() const { return Stop == BuildStop::None; }
};

} // namespace quench
