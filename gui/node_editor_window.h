#pragma once

// frmNodalEditor ("Enter/Edit Pipe Node Data"): the pipe rows arranged by node, a line for each
// node, a window of VisibleNodeRows lines over them with a scroll bar, and the toolbar commands
// "AddVisibleRow" and "RemoveVisibleRow". The rules live in NodeEditor; every change of a field
// is written into all rows of its node at once, and the pipe screen is told to show them again.

#include "core/dialogs.h"
#include "core/project.h"
#include "core/settings.h"
#include "entry/node_editor.h"
#include "entry/undo_stack.h"
#include "gui/help_window.h"
#include "gui/screen_dispatcher.h"

#include <array>
#include <functional>

#include <QLineEdit>
#include <QWidget>

class QAction;
class QGridLayout;
class QLabel;
class QScrollBar;

namespace quench::gui {

// One field of a line: every key a capital, through the rule of its column; the arrows move to
// the line above or below; Enter does nothing.
class NodeLineField : public QLineEdit {
    Q_OBJECT

public:
    using KeyFilter = std::function<KeyOutcome(char key, const FieldState& state)>;
    NodeLineField(KeyFilter filter, QWidget* parent);
    void SetTextQuietly(const QString& text);

signals:
    void Edited(const QString& text);
    void Left();
    void Entered();
    void MoveLine(int step);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    KeyFilter filter_;
    bool guard_ = false;
};

class NodeEditorWindow : public QWidget {
    Q_OBJECT

public:
    NodeEditorWindow(Project& project, Dialogs& dialogs, ScreenDispatcher& screens,
                     HelpWindows& help, UndoStack& undo, IniFileHandler settings,
                     MeasureSystem system, char decimalCharacter, QWidget* parent = nullptr);
    ~NodeEditorWindow() override;

    // "UpdateNodeDataFromHelpWindow", "RefreshNodeLines", "Updatlabel", "Put".
    void Dispatch(std::string_view command);
    void Reload();
    void SwitchUnits(MeasureSystem system);
    void WriteBack();
    void AddVisibleRow();
    void RemoveVisibleRow();
    // The help of a column for the line that has (or last had) the focus.
    void ShowHelp(NodeField field);

    NodeEditor& Rules() { return rules_; }
    int VisibleRows() const { return static_cast<int>(rows_.size()); }
    int FirstLine() const { return firstLine_; }
    // The widgets of a visible row (0 is the top one).
    QLabel* NodeNumber(int visibleRow) const { return rows_.at(visibleRow).Number; }
    NodeLineField* Field(int visibleRow, NodeField field) const;
    QScrollBar* ScrollBar() const { return scroll_; }
    QAction* AddRowAction() const { return addRow_; }
    QAction* RemoveRowAction() const { return removeRow_; }
    // Ctrl+Z and Ctrl+Y: the tables as before the last edit on either table screen, and again.
    void UndoEdit(bool redo);

signals:
    void StatusTextWanted(const QString& text);

private:
    struct Row {
        QLabel* Number = nullptr;
        std::array<NodeLineField*, NodeFieldCount> Fields{};
    };

    void BuildRows(int count);
    void ShowLines();
    void ScrollTo(int firstLine);
    void FieldEdited(int visibleRow, NodeField field, const QString& text);
    void FieldLeft(int visibleRow, NodeField field);
    void Move(int visibleRow, NodeField field, int step);
    void TakeHelpChoice();
    void UpdateCommands();
    void StoreVisibleRows() const;

    Project& project_;
    Dialogs& dialogs_;
    ScreenDispatcher& screens_;
    HelpWindows& help_;
    UndoStack& undo_;
    IniFileHandler settings_;
    NodeEditor rules_;
    int firstLine_ = 0;
    int currentLine_ = 0;
    std::vector<Row> rows_;
    std::array<QLabel*, NodeFieldCount> headings_{};
    QGridLayout* grid_ = nullptr;
    QScrollBar* scroll_ = nullptr;
    QAction* addRow_ = nullptr;
    QAction* removeRow_ = nullptr;
};

} // namespace quench::gui
