#pragma once

// frmEEPipeData: the pipe table, its toolbar (Add, Delete, Sort, Clear, Mark Inflow, Unmark Inflow,
// the device dialog, Undo, Redo, Copy, Paste), the default K and the sprinkler area total. The
// rules live in PipeTable; this window lays out the table and passes each event to them.

#include "core/dialogs.h"
#include "core/project.h"
#include "core/settings.h"
#include "entry/pipe_table.h"
#include "entry/undo_stack.h"
#include "library/pipe_library.h"

#include <map>
#include <memory>

#include <QWidget>

class QAction;
class QLabel;
class QTabWidget;
class QTableView;
class QToolBar;

namespace quench::gui {

class GlobalEditTab;
class GridBuilderTab;
class HelpWindows;
class PipeTableModel;
class PipeCellDelegate;
class ScreenDispatcher;
class TreeBuilderTab;

class PipeDataWindow : public QWidget {
    Q_OBJECT

public:
    PipeDataWindow(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                   IniFileHandler settings, MeasureSystem system, char decimalCharacter,
                   UndoStack& undo, QWidget* parent = nullptr);
    ~PipeDataWindow() override;

    static constexpr std::string_view ScreenName = "frmEEPipeData";

    // The help windows of the fields (F1 on a cell) and the dispatcher that returns their picks.
    void UseHelp(HelpWindows& help, ScreenDispatcher& screens);
    // The screen's dispatcher words: "UpdateEEPipeDataFromHelpWindow", "UpdateTreeInputData"
    // (the builders' inputs into the model) and "Updatlabel" (the discharge word changed).
    void Dispatch(std::string_view command);

    // The commands by their toolbar keys ("ToolAddPipe", "Undo", "Paste", ...).
    void Command(const QString& key);
    QAction* Action(const QString& key) const;

    // The cell being typed in is left now, as before a save or a close.
    void WriteBack();
    // The table again from the model (a project opened or closed, a unit switch).
    void Reload();
    void SwitchUnits(MeasureSystem system);
    // The rows shown again after another screen changed them; the history of edits stays.
    void ShowRowsAgain();

    PipeTable& Rules() { return table_; }
    QTableView* Table() const { return view_; }
    int CurrentPipe() const;
    QLabel* TotalAreaLabel() const { return totalArea_; }
    QLabel* DefaultKLabel() const { return defaultK_; }
    // The table tab comes first; the builders and global edit follow as further tabs.
    QTabWidget* Tabs() const { return tabs_; }
    GlobalEditTab* GlobalEdit() const { return globalEdit_; }
    TreeBuilderTab* TreeBuilder() const { return treeBuilder_; }
    GridBuilderTab* GridBuilder() const { return gridBuilder_; }

signals:
    void StatusTextWanted(const QString& text);
    // The device dialog (toolbar key "CPLD") and the fire pump screen belong to the frame.
    void DeviceDialogWanted();
    void PumpScreenWanted();
    void InputEdited();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void BuildToolbar();
    void Refresh();
    void CurrentChanged(const QModelIndex& current, const QModelIndex& previous);
    void MoveRow(int step);
    NodeEnd InflowEnd() const;
    void Copy();
    void Paste();
    template <typename Operation>
    void Recorded(Operation&& operation);
    void AddBuilderTabs(const PipeLibrary& library, MeasureSystem system, char decimalCharacter);

    Project& project_;
    Dialogs& dialogs_;
    IniFileHandler settings_;
    PipeTable table_;
    PipeTableModel* model_;
    PipeCellDelegate* delegate_;
    QTableView* view_;
    QToolBar* toolbar_;
    QLabel* defaultK_;
    QLabel* totalArea_;
    QTabWidget* tabs_;
    GlobalEditTab* globalEdit_ = nullptr;
    TreeBuilderTab* treeBuilder_ = nullptr;
    GridBuilderTab* gridBuilder_ = nullptr;
    std::map<QString, QAction*> actions_;
    NodeEnd lastNodeEnd_ = NodeEnd::Beginning;
    HelpWindows* help_ = nullptr;
    ScreenDispatcher* screens_ = nullptr;
    PipeColumn helpColumn_ = PipeColumn::BegNode;
};

} // namespace quench::gui
