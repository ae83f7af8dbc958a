#pragma once

// Undo and Redo of the pipe and node tables by whole-table snapshots: the table has a fixed size,
// so a copy of it before each edit or command is cheap, and it undoes the spread of a node's
// data to other rows along with the edit that caused it.

#include "core/project.h"

#include <cstddef>
#include <deque>
#include <vector>

namespace quench {

// What an edit of the tables can change.
struct TableSnapshot {
    std::vector<PipeRecord> Rows; // 1..MaxPipes, row 0 unused
    Integer InflowNode = 0;
    Integer SystemInflowNode = 0;

    bool operator==(const TableSnapshot&) const = default;
};

TableSnapshot TakeSnapshot(const Project& project);
void RestoreSnapshot(Project& project, const TableSnapshot& snapshot);

class UndoStack {
public:
    explicit UndoStack(std::size_t depth = 100) : depth_(depth) {}

    // Before an edit or command: the tables as they stand. A pending snapshot is kept until
    // Commit, which records it only when the tables changed since.
    void Begin(const Project& project);
    // Ends the edit begun: true when it changed the tables and was recorded.
    bool Commit(const Project& project);
    // Begin and Commit around one operation.
    template <typename Operation>
    bool Record(Project& project, Operation&& operation) {
        Begin(project);
        operation();
        return Commit(project);
    }

    // True between Begin and Commit: an edit typed key by key begins once.
    bool Begun() const { return begun_; }
    bool CanUndo() const { return !undo_.empty(); }
    bool CanRedo() const { return !redo_.empty(); }
    // The tables back to before the last edit; true when there was one.
    bool Undo(Project& project);
    bool Redo(Project& project);
    // A new project: nothing to undo.
    void Clear();

private:
    std::size_t depth_;
    std::deque<TableSnapshot> undo_;
    std::deque<TableSnapshot> redo_;
    TableSnapshot pending_;
    bool begun_ = false;
};

} // namespace quench
