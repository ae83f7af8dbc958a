#include "gui/pipe_data_window.h"

#include "core/settings_keys.h"
#include "entry/general_data_words.h"
#include "entry/pipe_table_clipboard.h"
#include "gui/global_edit_tab.h"
#include "gui/grid_builder_tab.h"
#include "gui/help_window.h"
#include "gui/pipe_table_model.h"
#include "gui/screen_dispatcher.h"
#include "gui/tree_builder_tab.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

QString Text(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

struct ToolInfo {
    const char* Key;
    const char* Caption;
    QKeySequence Shortcut;
};

} // namespace

PipeDataWindow::PipeDataWindow(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                               IniFileHandler settings, MeasureSystem system, char decimalCharacter,
                               UndoStack& undo, QWidget* parent)
    : QWidget(parent), project_(project), dialogs_(dialogs), settings_(std::move(settings)),
      table_(project, library, dialogs, system, decimalCharacter),
      model_(new PipeTableModel(table_, undo, this)),
      delegate_(new PipeCellDelegate(*model_, this)), view_(new QTableView(this)),
      toolbar_(new QToolBar(this)), defaultK_(new QLabel(this)), totalArea_(new QLabel(this)),
      tabs_(new QTabWidget(this)) {
    setObjectName("frmEEPipeData");
    defaultK_->setObjectName("lblDefaultKFactor");
    totalArea_->setObjectName("lblTotalSprkArea");
    view_->setModel(model_);
    view_->setItemDelegate(delegate_);
    view_->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::DoubleClicked |
                           QAbstractItemView::EditKeyPressed);
    view_->setSelectionMode(QAbstractItemView::ContiguousSelection);
    view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view_->verticalHeader()->setDefaultSectionSize(view_->fontMetrics().height() + 6);
    view_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view_->horizontalHeader()->setDefaultSectionSize(56);
    BuildToolbar();

    auto* labels = new QHBoxLayout;
    labels->addWidget(defaultK_);
    labels->addStretch();
    labels->addWidget(totalArea_);
    auto* pipes = new QWidget(tabs_);
    auto* pipesLayout = new QVBoxLayout(pipes);
    pipesLayout->setContentsMargins(4, 4, 4, 4);
    pipesLayout->addWidget(toolbar_);
    pipesLayout->addLayout(labels);
    pipesLayout->addWidget(view_);
    tabs_->setObjectName("tabPipeData");
    tabs_->addTab(pipes, tr("Pipe Data"));
    AddBuilderTabs(library, system, decimalCharacter);
    globalEdit_ = new GlobalEditTab(
        table_, library, dialogs, undo, [this] { return ConfirmPipeDeletion(settings_); }, tabs_);
    tabs_->addTab(globalEdit_, tr("Global Edit"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(tabs_);
    connect(tabs_, &QTabWidget::currentChanged, this, [this](int index) {
        if (index == 0) {
            Refresh();
        } else {
            setWindowTitle(Text(table_.ShortCaption()));
        }
    });

    connect(globalEdit_, &GlobalEditTab::CommandStarting, this, &PipeDataWindow::WriteBack);
    connect(globalEdit_, &GlobalEditTab::TablesChanged, this, [this] {
        model_->Reload();
        Refresh();
        emit InputEdited();
    });
    connect(globalEdit_, &GlobalEditTab::StatusTextWanted, this, &PipeDataWindow::StatusTextWanted);
    connect(model_, &PipeTableModel::Edited, this, [this] {
        Refresh();
        emit InputEdited();
    });
    connect(model_, &PipeTableModel::PumpScreenWanted, this, &PipeDataWindow::PumpScreenWanted);
    connect(delegate_, &PipeCellDelegate::MoveRow, this, &PipeDataWindow::MoveRow);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &PipeDataWindow::CurrentChanged);
    connect(view_, &QTableView::clicked, this, [this](const QModelIndex& index) {
        if (ColumnAt(index.column()) == PipeColumn::Active) {
            Command("cmdActive");
        }
    });
    view_->setCurrentIndex(model_->index(0, 0));
    Refresh();
}

PipeDataWindow::~PipeDataWindow() {
    if (screens_ != nullptr) {
        screens_->Unregister(ScreenName);
    }
}

void PipeDataWindow::UseHelp(HelpWindows& help, ScreenDispatcher& screens) {
    help_ = &help;
    screens_ = &screens;
    globalEdit_->UseHelp(help);
    screens.Register(ScreenName, [this](std::string_view command) { Dispatch(command); });
}

void PipeDataWindow::AddBuilderTabs(const PipeLibrary& library, MeasureSystem system,
                                    char decimalCharacter) {
    treeBuilder_ = new TreeBuilderTab(project_, library, dialogs_, system, decimalCharacter, tabs_);
    gridBuilder_ = new GridBuilderTab(project_, library, dialogs_, system, decimalCharacter, tabs_);
    tabs_->addTab(treeBuilder_, tr("Tree Builder"));
    tabs_->addTab(gridBuilder_, tr("Grid Builder"));
    // A build is one step of the table's history, and the table shows its rows at once.
    const auto record = [this](const std::function<void()>& build) { Recorded(build); };
    const auto built = [this] {
        ShowRowsAgain();
        emit InputEdited();
    };
    treeBuilder_->RecordEdit = record;
    gridBuilder_->RecordEdit = record;
    connect(treeBuilder_, &TreeBuilderTab::RowsBuilt, this, built);
    connect(gridBuilder_, &GridBuilderTab::RowsBuilt, this, built);
    connect(treeBuilder_, &TreeBuilderTab::StatusTextWanted, this,
            &PipeDataWindow::StatusTextWanted);
    connect(gridBuilder_, &GridBuilderTab::StatusTextWanted, this,
            &PipeDataWindow::StatusTextWanted);
}

void PipeDataWindow::Dispatch(std::string_view command) {
    if (command == "UpdateTreeInputData") {
        treeBuilder_->Store();
        gridBuilder_->Store();
        return;
    }
    if (command == UpdateLabelsWord) {
        treeBuilder_->ShowCaptions();
        gridBuilder_->ShowCaptions();
        return;
    }
    if (command != HelpReturnWord(ScreenName) || help_ == nullptr) {
        return;
    }
    // A pick from a help list goes into its field as if typed there.
    const HelpState& state = help_->State();
    if (globalEdit_->TakeHelpChoice(state)) {
        return;
    }
    const int row = state.HelpOriginRow;
    PipeEdit edit;
    Recorded([&] { edit = table_.Enter(row, helpColumn_, state.HelpSelection); });
    model_->RowsChanged(edit.Rows);
    if (edit.OpenPumpScreen) {
        emit PumpScreenWanted();
    }
}

void PipeDataWindow::keyPressEvent(QKeyEvent* event) {
    const QModelIndex current = view_->currentIndex();
    if (event->key() != Qt::Key_F1 || help_ == nullptr || !current.isValid() ||
        tabs_->currentIndex() != 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    WriteBack();
    helpColumn_ = ColumnAt(current.column());
    const RowView row = table_.Show(current.row() + 1);
    HelpRequest request;
    request.Key = std::string(ColumnInfo(helpColumn_).HelpKey);
    request.OriginRow = current.row() + 1;
    request.FieldText = row[helpColumn_];
    request.Screen = std::string(ScreenName);
    request.MaterialText = row[PipeColumn::Material];
    help_->Show(request);
}

void PipeDataWindow::BuildToolbar() {
    const ToolInfo tools[] = {
        {"ToolAddPipe", "Add", QKeySequence()},
        {"ToolDeletePipe", "Delete", QKeySequence()},
        {"ToolSortPipe", "Sort", QKeySequence()},
        {"ToolClearPipe", "Clear", QKeySequence()},
        {"ToolMarkInflowNode", "Mark Inflow", QKeySequence()},
        {"ToolUnmarkInflowNode", "Unmark Inflow", QKeySequence()},
        {"CPLD", "Devices", QKeySequence()},
        {"Undo", "Undo", QKeySequence(Qt::CTRL | Qt::Key_Z)},
        {"Redo", "Redo", QKeySequence(Qt::CTRL | Qt::Key_Y)},
        {"Copy", "Copy", QKeySequence::Copy},
        {"Paste", "Paste", QKeySequence::Paste},
    };
    for (const ToolInfo& tool : tools) {
        QAction* action = toolbar_->addAction(tr(tool.Caption));
        const QString key = QString::fromLatin1(tool.Key);
        action->setObjectName(key);
        if (!tool.Shortcut.isEmpty()) {
            action->setShortcut(tool.Shortcut);
            action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
            addAction(action);
        }
        connect(action, &QAction::triggered, this, [this, key] { Command(key); });
        actions_[key] = action;
    }
}

QAction* PipeDataWindow::Action(const QString& key) const {
    const auto found = actions_.find(key);
    return found != actions_.end() ? found->second : nullptr;
}

int PipeDataWindow::CurrentPipe() const {
    const QModelIndex current = view_->currentIndex();
    return current.isValid() ? current.row() + 1 : 1;
}

template <typename Operation>
void PipeDataWindow::Recorded(Operation&& operation) {
    WriteBack();
    model_->Undo().Record(project_, std::forward<Operation>(operation));
}

void PipeDataWindow::Command(const QString& key) {
    const int row = CurrentPipe();
    if (key == "ToolAddPipe") {
        int added = 0;
        Recorded([&] { added = table_.AddPipe(row); });
        model_->Reload();
        if (added != 0) {
            view_->setCurrentIndex(model_->index(added - 1, IndexOf(PipeColumn::BegNode)));
            view_->scrollTo(view_->currentIndex());
        }
    } else if (key == "ToolDeletePipe") {
        Recorded([&] { table_.DeletePipe(row, ConfirmPipeDeletion(settings_)); });
        model_->Reload();
    } else if (key == "ToolSortPipe") {
        Recorded([&] { table_.SortPipes(); });
        model_->Reload();
        view_->setCurrentIndex(model_->index(0, 0));
        view_->scrollToTop();
    } else if (key == "ToolClearPipe") {
        Recorded([&] { table_.ClearPipes(); });
        model_->Reload();
    } else if (key == "ToolMarkInflowNode") {
        Recorded([&] { table_.MarkInflowNode(row, InflowEnd()); });
        model_->Reload();
    } else if (key == "ToolUnmarkInflowNode") {
        Recorded([&] { table_.UnmarkInflowNode(row); });
        model_->Reload();
    } else if (key == "cmdActive") {
        int first = 0;
        int last = 0;
        const QItemSelection selection = view_->selectionModel()->selection();
        if (!selection.isEmpty() && selection.front().height() > 1) {
            first = selection.front().top() + 1;
            last = selection.front().bottom() + 1;
        }
        std::vector<int> toggled;
        Recorded([&] { toggled = table_.ToggleStatus(row, first, last); });
        model_->RowsChanged(toggled);
    } else if (key == "Undo" || key == "Redo") {
        WriteBack();
        if (key == "Undo" ? model_->Undo().Undo(project_) : model_->Undo().Redo(project_)) {
            model_->Reload();
        }
    } else if (key == "Copy") {
        Copy();
    } else if (key == "Paste") {
        Paste();
    } else if (key == "CPLD") {
        emit DeviceDialogWanted();
    }
}

NodeEnd PipeDataWindow::InflowEnd() const {
    switch (EndOfColumn(ColumnAt(view_->currentIndex().column()))) {
    case ColumnEnd::Beginning:
        return NodeEnd::Beginning;
    case ColumnEnd::Ending:
        return NodeEnd::Ending;
    case ColumnEnd::None:
        break;
    }
    return lastNodeEnd_;
}

void PipeDataWindow::Copy() {
    const QItemSelection selection = view_->selectionModel()->selection();
    if (selection.isEmpty()) {
        return;
    }
    const QItemSelectionRange& range = selection.front();
    QApplication::clipboard()->setText(
        Text(CopyCells(table_, range.top() + 1, range.bottom() + 1, ColumnAt(range.left()),
                       ColumnAt(range.right()))));
}

void PipeDataWindow::Paste() {
    const QModelIndex at = view_->currentIndex();
    if (!at.isValid()) {
        return;
    }
    const std::string text = QApplication::clipboard()->text().toLatin1().toStdString();
    PasteOutcome outcome;
    Recorded([&] { outcome = PasteCells(table_, at.row() + 1, ColumnAt(at.column()), text); });
    model_->Reload();
    if (!outcome.Refused.empty()) {
        dialogs_.ShowMessage(MessageStyle::Information, pipe_table_words::Title,
                             PasteReport(outcome));
    }
}

void PipeDataWindow::WriteBack() {
    // The builders' last inputs go into the model with the rows, as before a save or a close.
    treeBuilder_->Store();
    gridBuilder_->Store();
    QWidget* editor = view_->indexWidget(view_->currentIndex());
    if (editor != nullptr) {
        emit delegate_->commitData(editor);
        emit delegate_->closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void PipeDataWindow::Reload() {
    model_->Undo().Clear();
    model_->Reload();
    treeBuilder_->Load();
    gridBuilder_->Load();
}

void PipeDataWindow::ShowRowsAgain() {
    const QModelIndex current = view_->currentIndex(); // the cell being typed in stays current
    model_->Reload();
    view_->setCurrentIndex(model_->index(current.row(), current.column()));
    Refresh();
}

void PipeDataWindow::SwitchUnits(MeasureSystem system) {
    WriteBack();
    table_.SwitchUnits(system);
    globalEdit_->SwitchUnits(system);
    model_->Reload();
    treeBuilder_->SwitchUnits(system);
    gridBuilder_->SwitchUnits(system);
}

bool PipeDataWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        // Other screens and the calculation change rows: count and show them again, once the
        // event that activated the window (a closing message box, say) is over.
        QTimer::singleShot(0, this, [this] {
            if (view_->indexWidget(view_->currentIndex()) == nullptr) {
                project_.NumberOfPipeRows = CountPipeRows(project_);
                model_->Reload();
            }
        });
    }
    return QWidget::event(event);
}

void PipeDataWindow::Refresh() {
    setWindowTitle(Text(table_.Caption(CurrentPipe())));
    defaultK_->setText(Text(table_.DefaultKFactorLabel()));
    totalArea_->setText(Text(table_.SprinklerAreaLabel()));
    if (globalEdit_ != nullptr) {
        globalEdit_->Refresh();
    }
    if (QAction* undo = Action("Undo")) {
        undo->setEnabled(model_->Undo().CanUndo());
    }
    if (QAction* redo = Action("Redo")) {
        redo->setEnabled(model_->Undo().CanRedo());
    }
}

void PipeDataWindow::CurrentChanged(const QModelIndex& current, const QModelIndex& previous) {
    if (previous.isValid() && current.row() != previous.row()) {
        // Every move saves the row that is left: its node data go to every row naming them.
        model_->RowsChanged(table_.LeaveRow(previous.row() + 1));
    }
    const ColumnEnd end = EndOfColumn(ColumnAt(current.column()));
    if (end != ColumnEnd::None) {
        lastNodeEnd_ = end == ColumnEnd::Beginning ? NodeEnd::Beginning : NodeEnd::Ending;
    }
    emit StatusTextWanted(Text(table_.StatusText(ColumnAt(current.column()))));
    Refresh();
}

void PipeDataWindow::MoveRow(int step) {
    const QModelIndex current = view_->currentIndex();
    const int row = current.row() + step;
    if (row < 0 || row >= MaxPipes) {
        return; // no move past the table's ends
    }
    const QModelIndex next = model_->index(row, current.column());
    view_->setCurrentIndex(next);
    view_->scrollTo(next);
    view_->setFocus();
}

} // namespace quench::gui
