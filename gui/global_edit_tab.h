#pragma once

// The "Global Edit" tab of the pipe screen: the frames "Pipe" and "Node" side by side, over one
// set of global edit rules that record each command in the tables' Undo history.

#include "core/dialogs.h"
#include "entry/global_edit.h"
#include "entry/pipe_table.h"
#include "entry/undo_stack.h"
#include "library/pipe_library.h"

#include <functional>

#include <QWidget>

namespace quench::gui {

class GlobalEditFrame;
enum class GlobalCommand;

class GlobalEditTab : public QWidget {
    Q_OBJECT

public:
    // `confirmDeletion` reads the option that asks before pipes are deleted.
    GlobalEditTab(PipeTable& table, const PipeLibrary& library, Dialogs& dialogs, UndoStack& undo,
                  std::function<bool()> confirmDeletion, QWidget* parent = nullptr);

    GlobalEdit& Rules() { return rules_; }
    GlobalEditFrame* Frame(GlobalFrame frame) const;
    void SwitchUnits(MeasureSystem system);
    // The captions, limits and units, and the sprinkler area total again.
    void Refresh();

signals:
    // Before a command: the cell being typed in the table is written back.
    void CommandStarting();
    // A command changed the rows.
    void TablesChanged();
    void StatusTextWanted(const QString& text);

private:
    void Run(GlobalFrame frame, GlobalCommand command);

    PipeTable& table_;
    GlobalEdit rules_;
    std::function<bool()> confirmDeletion_;
    GlobalEditFrame* pipes_;
    GlobalEditFrame* nodes_;
};

} // namespace quench::gui
