#include "entry/undo_stack.h"

namespace quench {

TableSnapshot TakeSnapshot(const Project& project) {
    return {project.PipeRecord, project.InflowNode, project.CalculationData.SystemInflowNode};
}

void RestoreSnapshot(Project& project, const TableSnapshot& snapshot) {
    project.PipeRecord = snapshot.Rows;
    project.InflowNode = snapshot.InflowNode;
    project.CalculationData.SystemInflowNode = snapshot.SystemInflowNode;
    Integer rows = 0;
    for (int row = MaxPipes; row >= 1 && rows == 0; --row) {
        if (HasBothNodes(project.PipeRecord[static_cast<std::size_t>(row)])) {
            rows = static_cast<Integer>(row);
        }
    }
    project.NumberOfPipeRows = rows;
    project.InputChanged = True;
}

void UndoStack::Begin(const Project& project) {
    pending_ = TakeSnapshot(project);
    begun_ = true;
}

bool UndoStack::Commit(const Project& project) {
    if (!begun_) {
        return false;
    }
    begun_ = false;
    if (pending_ == TakeSnapshot(project)) {
        return false;
    }
    undo_.push_back(std::move(pending_));
    if (undo_.size() > depth_) {
        undo_.pop_front();
    }
    redo_.clear();
    return true;
}

bool UndoStack::Undo(Project& project) {
    if (undo_.empty()) {
        return false;
    }
    redo_.push_back(TakeSnapshot(project));
    RestoreSnapshot(project, undo_.back());
    undo_.pop_back();
    return true;
}

bool UndoStack::Redo(Project& project) {
    if (redo_.empty()) {
        return false;
    }
    undo_.push_back(TakeSnapshot(project));
    RestoreSnapshot(project, redo_.back());
    redo_.pop_back();
    return true;
}

void UndoStack::Clear() {
    undo_.clear();
    redo_.clear();
    begun_ = false;
}

} // namespace quench
