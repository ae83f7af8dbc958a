#include "gui/node_editor_window.h"

#include "core/settings_keys.h"
#include "entry/general_data_words.h"
#include "gui/qt_text.h"

#include <QAction>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QScrollBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

constexpr int NumberColumn = 0;
constexpr int FirstFieldColumn = 1;
constexpr int ScrollColumn = FirstFieldColumn + NodeFieldCount;
constexpr int MaximumVisibleRows = 100;

NodeField FieldAt(int index) {
    return static_cast<NodeField>(index);
}

} // namespace

// --- A field of a line

NodeLineField::NodeLineField(KeyFilter filter, QWidget* parent)
    : QLineEdit(parent), filter_(std::move(filter)) {
    setAcceptDrops(false);
    setAlignment(Qt::AlignRight);
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (!guard_) {
            emit Edited(text); // pasted or cut text: the screen tests it on change
        }
    });
}

void NodeLineField::SetTextQuietly(const QString& text) {
    guard_ = true;
    setText(text);
    guard_ = false;
}

void NodeLineField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        emit MoveLine(event->key() == Qt::Key_Up ? -1 : 1);
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        return; // Enter does nothing in a field
    }
    if (isReadOnly() || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    char key = 0;
    if (event->key() == Qt::Key_Backspace) {
        key = BackspaceKey;
    } else if (const QString typed = event->text().toUpper();
               typed.size() == 1 && typed.at(0).isPrint()) {
        key = typed.at(0).toLatin1();
    } else {
        QLineEdit::keyPressEvent(event);
        return;
    }
    FieldState state;
    state.Text = Latin1(text());
    if (hasSelectedText()) {
        state.SelectionStart = static_cast<int>(selectionStart());
        state.SelectionLength = static_cast<int>(selectedText().size());
    } else {
        state.SelectionStart = static_cast<int>(cursorPosition());
    }
    const KeyOutcome outcome = key != 0 ? filter_(key, state) : KeyOutcome{};
    if (!outcome.Accepted) {
        return; // a refused key leaves no trace
    }
    SetTextQuietly(Latin1(outcome.Field.Text));
    setCursorPosition(outcome.Field.SelectionStart);
    emit Edited(text());
}

void NodeLineField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    QTimer::singleShot(0, this, [this] {
        if (hasFocus()) {
            selectAll();
        }
    });
    emit Entered();
}

void NodeLineField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        emit Left();
    }
}

// --- The window

NodeEditorWindow::NodeEditorWindow(Project& project, Dialogs& dialogs, ScreenDispatcher& screens,
                                   HelpWindows& help, UndoStack& undo, IniFileHandler settings,
                                   MeasureSystem system, char decimalCharacter, QWidget* parent)
    : QWidget(parent), project_(project), dialogs_(dialogs), screens_(screens), help_(help),
      undo_(undo), settings_(std::move(settings)), rules_(project, system, decimalCharacter) {
    setObjectName(NodeEditorScreenName);
    setWindowTitle(Text(NodeEditorTitle));

    auto* toolbar = new QToolBar(this);
    addRow_ = toolbar->addAction("Add Visible Row", this, &NodeEditorWindow::AddVisibleRow);
    addRow_->setObjectName("AddVisibleRow");
    removeRow_ =
        toolbar->addAction("Remove Visible Row", this, &NodeEditorWindow::RemoveVisibleRow);
    removeRow_->setObjectName("RemoveVisibleRow");
    auto* undoAction = toolbar->addAction("Undo", this, [this] { UndoEdit(false); });
    undoAction->setObjectName("Undo");
    undoAction->setShortcut(QKeySequence::Undo);
    auto* redoAction = toolbar->addAction("Redo", this, [this] { UndoEdit(true); });
    redoAction->setObjectName("Redo");
    redoAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Y));

    grid_ = new QGridLayout;
    grid_->setVerticalSpacing(2);
    const auto heading = [this](const QString& text, const QString& key, auto clicked) {
        auto* box = new QWidget(this);
        auto* line = new QHBoxLayout(box);
        line->setContentsMargins(0, 0, 0, 0);
        auto* label = new QLabel(text, box);
        label->setAlignment(Qt::AlignCenter);
        line->addWidget(label, 1);
        line->addWidget(MakeHelpButton(box, key, clicked));
        return std::pair{box, label};
    };
    grid_->addWidget(heading(Text(NodeNumberHeading), Text(NodeNumberHelpKey),
                             [this] {
                                 help_.Show({std::string(NodeNumberHelpKey), currentLine_, "",
                                             NodeEditorScreenName, ""});
                             })
                         .first,
                     0, NumberColumn);
    for (int index = 0; index < NodeFieldCount; ++index) {
        const NodeField field = FieldAt(index);
        auto [box, label] =
            heading(QString(), Text(FieldInfo(field).HelpKey), [this, field] { ShowHelp(field); });
        headings_[static_cast<std::size_t>(index)] = label;
        grid_->addWidget(box, 0, FirstFieldColumn + index);
        grid_->setColumnStretch(FirstFieldColumn + index, 1);
    }
    scroll_ = new QScrollBar(Qt::Vertical, this);
    scroll_->setObjectName("scrNode");
    connect(scroll_, &QScrollBar::valueChanged, this, &NodeEditorWindow::ScrollTo);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(toolbar);
    layout->addLayout(grid_);
    layout->addStretch();

    const Integer stored = NumberOfNodeRows(settings_);
    BuildRows(std::clamp<int>(stored, 1, MaximumVisibleRows));
    screens_.Register(NodeEditorScreenName,
                      [this](std::string_view command) { Dispatch(command); });
}

NodeEditorWindow::~NodeEditorWindow() {
    screens_.Unregister(NodeEditorScreenName);
}

NodeLineField* NodeEditorWindow::Field(int visibleRow, NodeField field) const {
    return rows_.at(static_cast<std::size_t>(visibleRow)).Fields[static_cast<std::size_t>(field)];
}

void NodeEditorWindow::BuildRows(int count) {
    for (Row& row : rows_) {
        delete row.Number;
        for (NodeLineField* field : row.Fields) {
            delete field;
        }
    }
    rows_.assign(static_cast<std::size_t>(count), Row{});
    for (int visible = 0; visible < count; ++visible) {
        Row& row = rows_[static_cast<std::size_t>(visible)];
        row.Number = new QLabel(this);
        row.Number->setObjectName(QString("txtNodeNumber%1").arg(visible));
        row.Number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid_->addWidget(row.Number, visible + 1, NumberColumn);
        for (int index = 0; index < NodeFieldCount; ++index) {
            const NodeField field = FieldAt(index);
            auto* widget = new NodeLineField(
                [this, field](char key, const FieldState& state) {
                    return rules_.FilterKey(field, key, state);
                },
                this);
            widget->setObjectName(Text(FieldInfo(field).Control) + QString::number(visible));
            widget->setProperty("CurrentHelpKey", Text(FieldInfo(field).HelpKey));
            row.Fields[static_cast<std::size_t>(index)] = widget;
            grid_->addWidget(widget, visible + 1, FirstFieldColumn + index);
            connect(widget, &NodeLineField::Edited, this,
                    [this, visible, field](const QString& t) { FieldEdited(visible, field, t); });
            connect(widget, &NodeLineField::Left, this,
                    [this, visible, field] { FieldLeft(visible, field); });
            connect(widget, &NodeLineField::MoveLine, this,
                    [this, visible, field](int step) { Move(visible, field, step); });
            connect(widget, &NodeLineField::Entered, this, [this, widget, visible, field] {
                currentLine_ = firstLine_ + visible;
                widget->setProperty("HelpOriginRow", currentLine_);
                emit StatusTextWanted(Latin1(rules_.StatusText(field)));
            });
        }
    }
    grid_->removeWidget(scroll_);
    grid_->addWidget(scroll_, 1, ScrollColumn, count, 1);
    ShowLines();
}

void NodeEditorWindow::ShowLines() {
    const int lines = rules_.LineCount();
    const int visible = VisibleRows();
    firstLine_ = std::clamp(firstLine_, 0, std::max(0, lines - visible));
    {
        const QSignalBlocker blocker(scroll_);
        scroll_->setRange(0, std::max(0, lines - visible));
        scroll_->setPageStep(visible);
        scroll_->setValue(firstLine_);
    }
    for (int index = 0; index < NodeFieldCount; ++index) {
        headings_[static_cast<std::size_t>(index)]->setText(Latin1(rules_.Heading(FieldAt(index))));
    }
    for (int row = 0; row < visible; ++row) {
        const int line = firstLine_ + row;
        const bool used = line < lines;
        Row& widgets = rows_[static_cast<std::size_t>(row)];
        widgets.Number->setText(used ? Latin1(rules_.NodeNumberText(line)) : QString());
        for (int index = 0; index < NodeFieldCount; ++index) {
            NodeLineField* field = widgets.Fields[static_cast<std::size_t>(index)];
            field->setEnabled(used);
            field->SetTextQuietly(used ? Latin1(rules_.Text(line, FieldAt(index))) : QString());
        }
    }
    UpdateCommands();
}

void NodeEditorWindow::ScrollTo(int firstLine) {
    WriteBack();
    firstLine_ = firstLine;
    ShowLines();
}

void NodeEditorWindow::UpdateCommands() {
    addRow_->setEnabled(CanAddVisibleRow(VisibleRows(), rules_.LineCount()));
    removeRow_->setEnabled(CanRemoveVisibleRow(VisibleRows()));
}

void NodeEditorWindow::StoreVisibleRows() const {
    settings_.MyWriteAppProfileString(sections::Miscellaneous, "NumberOfNodeRows",
                                      std::to_string(VisibleRows()));
}

void NodeEditorWindow::AddVisibleRow() {
    if (CanAddVisibleRow(VisibleRows(), rules_.LineCount())) {
        BuildRows(VisibleRows() + 1);
        StoreVisibleRows();
    }
}

void NodeEditorWindow::RemoveVisibleRow() {
    if (CanRemoveVisibleRow(VisibleRows())) {
        BuildRows(VisibleRows() - 1);
        StoreVisibleRows();
    }
}

// --- Events

void NodeEditorWindow::FieldEdited(int visibleRow, NodeField field, const QString& text) {
    const int line = firstLine_ + visibleRow;
    if (line >= rules_.LineCount()) {
        return;
    }
    if (!undo_.Begun()) {
        undo_.Begin(project_); // one step of Undo from the first key to leaving the field
    }
    const QString kept = Latin1(rules_.Change(line, field, Latin1(text)));
    NodeLineField* widget = Field(visibleRow, field);
    if (kept != widget->text()) {
        widget->SetTextQuietly(kept);
    }
    screens_.Send("frmEEPipeData", NodeDataChangedWord);
}

void NodeEditorWindow::FieldLeft(int visibleRow, NodeField field) {
    const int line = firstLine_ + visibleRow;
    if (line >= rules_.LineCount()) {
        return;
    }
    NodeLineField* widget = Field(visibleRow, field);
    const LeaveOutcome outcome = rules_.Leave(line, field, Latin1(widget->text()));
    if (outcome.Text != Latin1(widget->text())) {
        widget->SetTextQuietly(Latin1(outcome.Text));
        screens_.Send("frmEEPipeData", NodeDataChangedWord);
    }
    undo_.Commit(project_);
    if (outcome.TooLow) {
        dialogs_.ShowMessage(MessageStyle::Information, "QUENCH", ValueTooLowText);
    }
}

void NodeEditorWindow::Move(int visibleRow, NodeField field, int step) {
    const int target = visibleRow + step;
    const int line = firstLine_ + target;
    if (line < 0 || line >= rules_.LineCount()) {
        return;
    }
    if (target < 0 || target >= VisibleRows()) {
        ScrollTo(firstLine_ + step); // the window moves at its edges
        Field(visibleRow, field)->setFocus(Qt::OtherFocusReason);
        return;
    }
    Field(target, field)->setFocus(Qt::TabFocusReason);
}

void NodeEditorWindow::WriteBack() {
    for (int row = 0; row < VisibleRows(); ++row) {
        for (int index = 0; index < NodeFieldCount; ++index) {
            if (Field(row, FieldAt(index))->hasFocus()) {
                FieldLeft(row, FieldAt(index));
            }
        }
    }
}

void NodeEditorWindow::ShowHelp(NodeField field) {
    const int line = std::clamp(currentLine_, 0, std::max(0, rules_.LineCount() - 1));
    HelpRequest request;
    request.Key = FieldInfo(field).HelpKey;
    request.OriginRow = line;
    request.FieldText = line < rules_.LineCount() ? rules_.Text(line, field) : "";
    request.Screen = NodeEditorScreenName;
    help_.Show(request);
}

void NodeEditorWindow::TakeHelpChoice() {
    const HelpState& state = help_.State();
    const int line = state.HelpOriginRow;
    if (line < 0 || line >= rules_.LineCount()) {
        return;
    }
    for (int index = 0; index < NodeFieldCount; ++index) {
        const NodeField field = FieldAt(index);
        if (FieldInfo(field).HelpKey != state.CurrentHelpKey) {
            continue;
        }
        // The pick goes through the field's change and leaving rules, as typed.
        undo_.Record(project_, [&] {
            const std::string kept = rules_.Change(line, field, state.HelpSelection);
            rules_.Leave(line, field, kept);
        });
        rules_.Refresh();
        if (line < firstLine_ || line >= firstLine_ + VisibleRows()) {
            firstLine_ = line;
        }
        ShowLines();
        screens_.Send("frmEEPipeData", NodeDataChangedWord);
        return;
    }
}

void NodeEditorWindow::Dispatch(std::string_view command) {
    if (command == UpdateNodeDataWord) {
        TakeHelpChoice();
    } else if (command == RefreshNodeLinesWord || command == UpdateLabelsWord) {
        Reload();
    } else if (command == "Put") {
        WriteBack();
    } else if (command == "Show") {
        (parentWidget() != nullptr ? parentWidget() : this)->raise();
    }
}

void NodeEditorWindow::UndoEdit(bool redo) {
    WriteBack();
    if (redo ? undo_.Redo(project_) : undo_.Undo(project_)) {
        Reload();
        screens_.Send("frmEEPipeData", NodeDataChangedWord);
    }
}

void NodeEditorWindow::Reload() {
    rules_.Refresh();
    ShowLines();
}

void NodeEditorWindow::SwitchUnits(MeasureSystem system) {
    rules_.SwitchUnits(system);
    ShowLines();
}

} // namespace quench::gui
