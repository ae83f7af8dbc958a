#pragma once

// The "Global Edit" tab of the pipe screen: the frames "Pipe" and "Node" side by side, over one
// set of global edit rules that record each command in the tables' Undo history.

#include "core/dialogs.h"
#include "entry/global_edit.h"
#include "entry/help_lists.h"
#include "entry/pipe_table.h"
#include "entry/undo_stack.h"
#include "library/pipe_library.h"

#include <functional>

#include <QPointer>
#include <QWidget>

class QLineEdit;

namespace quench::gui {

class GlobalEditFrame;
class HelpWindows;
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
    // F1 on a field opens its help; a pick from its list comes back into the field.
    void UseHelp(HelpWindows& help) { help_ = &help; }
    // True when the help window's choice was asked for by a field of this tab, which takes it.
    bool TakeHelpChoice(const HelpState& state);
    // The captions, limits and units, and the sprinkler area total again.
    void Refresh();

signals:
    // Before a command: the cell being typed in the table is written back.
    void CommandStarting();
    // A command changed the rows.
    void TablesChanged();
    void StatusTextWanted(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Run(GlobalFrame frame, GlobalCommand command);
    void ShowHelp(QWidget* widget);

    PipeTable& table_;
    GlobalEdit rules_;
    std::function<bool()> confirmDeletion_;
    GlobalEditFrame* pipes_;
    GlobalEditFrame* nodes_;
    HelpWindows* help_ = nullptr;
    QPointer<QLineEdit> helpField_; // the field whose help is open
    QString helpKey_;
};

} // namespace quench::gui
