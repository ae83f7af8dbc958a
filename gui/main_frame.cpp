#include "gui/main_frame.h"

#include "app/command_table.h"
#include "app/directories.h"
#include "app/recent_files.h"
#include "core/atomic_write.h"
#include "core/settings_keys.h"
#include "entry/general_data_words.h"
#include "entry/node_editor.h"
#include "entry/program_options.h"
#include "gui/additional_fitting_calculator_dialog.h"
#include "gui/branch_line_calculator_dialog.h"
#include "gui/calculation_window.h"
#include "gui/cursor_pause.h"
#include "gui/data_units_dialog.h"
#include "gui/device_dialog.h"
#include "gui/fire_pump_window.h"
#include "gui/general_data_window.h"
#include "gui/help_window.h"
#include "gui/kfactor_calculator_dialog.h"
#include "gui/node_editor_window.h"
#include "gui/pipe_data_window.h"
#include "gui/pipe_library_window.h"
#include "gui/program_dialogs.h"
#include "gui/qt_text.h"
#include "gui/report_commands.h"
#include "gui/report_preview.h"
#include "gui/table_rows.h"
#include "gui/temp_file_dialog.h"
#include "gui/window_placement.h"
#include "library/equivalent_length.h"
#include "library/material_tables.h"
#include "reports/dxf_graph.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QToolBar>

namespace quench::gui {

namespace fs = std::filesystem;

namespace {

// A tick of the auto-save timer counts as a minute.
constexpr int MinuteMilliseconds = 60000;

QIcon IconOf(std::string_view key, const QStyle& style) {
    if (key == "ToolNew") {
        return style.standardIcon(QStyle::SP_FileIcon);
    }
    if (key == "ToolOpen") {
        return style.standardIcon(QStyle::SP_DialogOpenButton);
    }
    if (key == "ToolSave") {
        return style.standardIcon(QStyle::SP_DialogSaveButton);
    }
    return {};
}

std::optional<fs::path> RunFileDialog(QFileDialog& dialog) {
    // The patterns of the filters match names in any case, as project names come in both.
    dialog.setFilter(dialog.filter() & ~QDir::CaseSensitive);
    const CursorPause pause;
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return fs::path(Utf8(dialog.selectedFiles().constFirst()));
}

} // namespace

// --- The dialogs the lifecycle waits for

std::optional<fs::path> DesktopChoices::ChooseOpenFile(const FileDialogRequest& request,
                                                       QWidget* parent) {
    QFileDialog dialog(parent, Text(request.Title), Text(request.Directory.string()),
                       Text(request.FilterName));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return RunFileDialog(dialog);
}

std::optional<fs::path> DesktopChoices::ChooseSaveFile(const FileDialogRequest& request,
                                                       QWidget* parent) {
    QFileDialog dialog(parent, Text(request.Title), Text(request.Directory.string()),
                       Text(request.FilterName));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(Text(request.DefaultExtension));
    return RunFileDialog(dialog);
}

TempFileChoice DesktopChoices::ChooseTempFileAction(const QString& title, QWidget* parent) {
    const CursorPause pause;
    return AskTempFileChoice(title, parent);
}

// --- The frame

MainFrame::MainFrame(FrameSetup setup, QWidget* parent)
    : QMainWindow(parent), project_(*setup.Model), dialogs_(*setup.Dialogs),
      choices_(*setup.Choices), settings_(setup.Settings),
      toolbarLayoutFile_(std::move(setup.ToolbarLayoutFile)), library_(std::move(setup.Library)),
      decimalCharacter_(setup.DecimalCharacter),
      lifecycle_(project_, dialogs_, *this, setup.Settings, setup.ProjectsDirectory),
      area_(new QMdiArea(this)), autoSave_(new QTimer(this)),
      help_(new HelpWindows(project_, library_, screens_, this)) {
    setObjectName("frmMDI");
    setCentralWidget(area_);
    setAcceptDrops(true);
    resize(1100, 760);
    BuildMenus();
    // F1 on a field that names its help key; a screen with a help of its own gets the key.
    qApp->installEventFilter(this);
    RestoreToolbarLayout();
    RestorePlacement(*this, settings_, sections::MDIForm);
    connect(area_, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* window) {
        if (window != nullptr && window == calculationWindow_.data()) {
            Calculation()->RefreshInflowNodes();
        }
        // The pipe screen's commands (add, delete, sort) change the nodes under the lines.
        if (window != nullptr && window == nodalEditorWindow_.data() && !running_) {
            NodalEditor()->Reload();
        }
    });
    autoSave_->setInterval(MinuteMilliseconds);
    connect(autoSave_, &QTimer::timeout, this, &MainFrame::AutoSaveTimerTick);
    autoSave_->start();
    statusBar()->showMessage(QString());
    // The calculator buttons of the help windows: the calculator's value is the pick.
    help_->SetCalculatorOpener([this](HelpCalculator calculator, const HelpRequest& request) {
        return OpenCalculator(calculator, request);
    });
    SetUpReports();
    ProjectStateChanged();
}

void MainFrame::SetUpReports() {
    reports_ = new ReportCommands(
        this,
        [this] {
            ReportSource source;
            source.Model = lifecycle_.ProjectIsLoaded() ? &project_ : nullptr;
            source.Library = &library_;
            source.PumpDatabase = library_.File.parent_path() / std::string(PumpDatabaseFileName);
            source.FileName = [this] { return lifecycle_.ProjectFileName().filename().string(); };
            source.Boxes = &dialogs_;
            source.CompanyLine = CompanyLineOption(settings_);
            return source;
        },
        settings_);
    reports_->Calculate = [this] {
        Dispatch("ToolCalculation");
        if (Calculation() != nullptr) {
            Calculation()->Dispatch("Calculate");
        }
    };
}

MainFrame::~MainFrame() {
    // The screens go before the lifecycle and the dispatcher they refer to.
    delete calculationWindow_.data();
    delete generalDataWindow_.data();
    delete nodalEditorWindow_.data();
    delete pipeDataWindow_.data();
}

void MainFrame::BuildMenus() {
    auto* toolbar = addToolBar("Toolbar");
    toolbar->setObjectName("ActiveBar");
    toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    for (const Menu menu : {Menu::File, Menu::Project, Menu::Reports, Menu::Libraries, Menu::Tools,
                            Menu::Window, Menu::Help}) {
        const std::vector<const CommandEntry*> commands = MenuCommands(menu);
        if (commands.empty()) {
            continue; // the screens of this menu are not there yet
        }
        QMenu* submenu = menuBar()->addMenu(Text(MenuCaption(menu)));
        for (const CommandEntry* entry : commands) {
            auto* action = new QAction(IconOf(entry->Key, *style()), Text(entry->Caption), this);
            const QString key = Text(entry->Key);
            action->setObjectName(key);
            connect(action, &QAction::triggered, this, [this, key] { Dispatch(key); });
            actions_[key] = action;
            if (entry->Key == "ToolExit") {
                // The recent files stand between two separators above Exit.
                submenu->addSeparator();
                recentSeparator_ = submenu->addSeparator();
            }
            submenu->addAction(action);
        }
        if (menu == Menu::File) {
            fileMenu_ = submenu;
        }
        if (menu == Menu::Window) {
            windowMenu_ = submenu;
            windowMenu_->addSeparator();
            connect(windowMenu_, &QMenu::aboutToShow, this, &MainFrame::RebuildWindowList);
        }
    }
    for (const CommandEntry* entry : ToolbarCommands()) {
        toolbar->addAction(actions_.at(Text(entry->Key)));
    }
    actions_.at("ToolNew")->setShortcut(QKeySequence::New);
    actions_.at("ToolOpen")->setShortcut(QKeySequence::Open);
    actions_.at("ToolSave")->setShortcut(QKeySequence::Save);
}

QAction* MainFrame::Action(const QString& key) const {
    const auto found = actions_.find(key);
    if (found != actions_.end()) {
        return found->second;
    }
    for (QAction* action : recentActions_) {
        if (action->objectName() == key) {
            return action;
        }
    }
    return nullptr;
}

// Where the user moved the toolbar, kept in "toolbar.lyt".
void MainFrame::RestoreToolbarLayout() {
    std::string layout;
    if (!toolbarLayoutFile_.empty() && ReadWholeFile(toolbarLayoutFile_, layout)) {
        restoreState(QByteArray(layout.data(), static_cast<qsizetype>(layout.size())));
    }
}

void MainFrame::SaveToolbarLayout() const {
    if (!toolbarLayoutFile_.empty()) {
        const QByteArray layout = saveState();
        WriteFileAtomically(
            toolbarLayoutFile_,
            std::string_view(layout.constData(), static_cast<std::size_t>(layout.size())));
    }
}

void MainFrame::RebuildRecentFiles() {
    for (QAction* action : recentActions_) {
        fileMenu_->removeAction(action);
        delete action;
    }
    recentActions_.clear();
    const std::vector<std::string> entries = lifecycle_.RecentFileList();
    for (int place = 0; place < static_cast<int>(entries.size()); ++place) {
        const std::string& file = entries[static_cast<std::size_t>(place)];
        auto* action = new QAction(Text(RecentFileCaption(place, file)), this);
        const QString key = Text(RecentFileKey(place));
        action->setObjectName(key);
        connect(action, &QAction::triggered, this, [this, key] { Dispatch(key); });
        fileMenu_->insertAction(recentSeparator_, action);
        recentActions_.push_back(action);
    }
}

void MainFrame::RebuildWindowList() {
    for (QAction* action : windowListActions_) {
        windowMenu_->removeAction(action);
        delete action;
    }
    windowListActions_.clear();
    const QList<QMdiSubWindow*> windows = area_->subWindowList();
    for (int place = 0; place < windows.size(); ++place) {
        QMdiSubWindow* window = windows[place];
        auto* action =
            new QAction(QString("&%1 %2").arg(place + 1).arg(window->windowTitle()), this);
        action->setCheckable(true);
        action->setChecked(window == area_->activeSubWindow());
        connect(action, &QAction::triggered, this,
                [this, window] { area_->setActiveSubWindow(window); });
        windowMenu_->addAction(action);
        windowListActions_.push_back(action);
    }
}

void MainFrame::UpdateCommands() {
    for (const auto& [key, action] : actions_) {
        const bool windowCommand = key.startsWith("Window");
        action->setEnabled((!running_ || windowCommand) && lifecycle_.Commands().CanRun(Utf8(key)));
    }
    for (QAction* action : recentActions_) {
        action->setEnabled(!running_);
    }
}

// --- The dispatcher

void MainFrame::Dispatch(const QString& key) {
    if (key.startsWith("Window")) {
        ArrangeWindows(key);
        return;
    }
    // The run owns the model: nothing but the windows' arrangement is given meanwhile.
    if (running_ || !lifecycle_.Commands().CanRun(Utf8(key))) {
        return;
    }
    if (const std::optional<int> place = RecentFileIndex(Utf8(key))) {
        lifecycle_.OpenRecentFile(*place);
    } else if (key == "ToolNew") {
        lifecycle_.New();
    } else if (key == "ToolOpen") {
        lifecycle_.Open();
    } else if (key == "ToolClose") {
        lifecycle_.Close();
    } else if (key == "ToolSave") {
        lifecycle_.Save();
    } else if (key == "ToolSaveAs") {
        lifecycle_.SaveAs();
    } else if (key == "ToolExit") {
        close();
    } else if (key == "ToolCalculation") {
        ShowCalculation();
    } else if (key == "ToolEnterEditPipeData") {
        ShowPipeData();
    } else if (key == "ToolGPD") {
        ShowGeneralData();
    } else if (key == "ToolNodalEditor") {
        ShowNodalEditor();
    } else if (key == "ToolUnits") {
        OpenDataUnits();
    } else if (key == "ToolPipeDB") {
        OpenPipeLibrary();
    } else if (key == "ToolPumpDB") {
        OpenFirePump();
    } else if (key == "ToolOptions") {
        auto* options = new OptionsDialog(settings_, dialogs_, decimalCharacter_, this);
        connect(options, &QDialog::accepted, this, &MainFrame::FitPipeRows);
        OpenBox(options);
    } else if (key == "ToolTipOfTheDay") {
        OpenBox(new TipOfTheDayDialog(library_.File.parent_path() / std::string(TipsFileName),
                                      settings_, this));
    } else if (key == "ToolAboutQUENCH") {
        ShowAbout(this);
    } else if (key == "ToolOpenDosQUENCHProject") {
        interchange_.OpenDosProject();
    } else if (key == "ToolSaveAsDosQUENCHProject") {
        interchange_.SaveAsDosProject();
    } else if (key == "ToolOpenAutocadDatafile") {
        interchange_.OpenCadDataFile();
    } else if (key == "ToolReadFromDWG") {
        interchange_.ReadFromDrawing();
    } else if (key == "CalculatedSizestoDWG") {
        interchange_.SizesToDrawing();
    } else if (key == "ToolSprinklerCalculator") {
        OpenKFactorCalculator(Calculators(), {}, this);
    } else if (key == "ToolBranchLineCalculator") {
        OpenBranchLineCalculator(Calculators(), {}, this);
    } else if (key == "ToolDXF_Graph") {
        SaveDxfGraph();
    } else if (ReportCommands::IsReportCommand(key)) {
        reports_->Dispatch(key);
    }
}

// A calculator opened from a help window: its value goes back as the window's pick.
std::optional<std::string> MainFrame::OpenCalculator(HelpCalculator calculator,
                                                     const HelpRequest& request) {
    const QString fieldText = QString::fromStdString(request.FieldText);
    std::optional<QString> value;
    switch (calculator) {
    case HelpCalculator::SprinklerKFactor:
        value = OpenKFactorCalculator(Calculators(), fieldText, this);
        break;
    case HelpCalculator::BranchLine:
        value = OpenBranchLineCalculator(Calculators(), fieldText, this);
        break;
    case HelpCalculator::AdditionalFitting:
        value = OpenAdditionalFittingCalculator(Calculators(),
                                                InnerDiameterOfRow(request.OriginRow), this);
        break;
    }
    if (!value) {
        return std::nullopt;
    }
    return value->toStdString();
}

// The inside diameter of a pipe row's size, 0 for a row left to autosizing or out of range.
double MainFrame::InnerDiameterOfRow(int row) const {
    if (row < 1 || row >= static_cast<int>(project_.PipeRecord.size())) {
        return 0;
    }
    const PipeRecord& pipe = project_.PipeRecord[static_cast<std::size_t>(row)];
    if (pipe.Diameter <= 0 || !IsLibraryMaterial(pipe.Material)) {
        return 0;
    }
    const Single nominal = LookupNominal(pipe.Diameter, project_.UnitSystem);
    const PipeDiameterRecord* size = FindDiameter(library_, pipe.Material, nominal);
    return size == nullptr ? 0 : size->Inner;
}

// The graph of the last results as a drawing; a metric project gets its message before any
// file dialog.
void MainFrame::SaveDxfGraph() {
    if (project_.UnitSystem == 1) {
        WriteDxfGraph(project_, {}, dialogs_);
        return;
    }
    const FileDialogRequest request{
        "Save as Autocad DXF File...", "Autocad DXF File (*.dxf)", "*.dxf", "dxf", {}};
    const auto file = choices_.ChooseSaveFile(request, this);
    if (!file) {
        return;
    }
    std::string error;
    switch (WriteDxfGraph(project_, *file, dialogs_, &error)) {
    case DxfGraphOutcome::ImpossibleTest:
        dialogs_.ShowMessage(MessageStyle::Information, "", DxfImpossibleTestMessage);
        break;
    case DxfGraphOutcome::WriteFailed:
        dialogs_.ShowMessage(MessageStyle::Critical, request.Title, error);
        break;
    default:
        break;
    }
}

CalculatorSetup MainFrame::Calculators() {
    return {Units(), &library_, &settings_, &dialogs_, decimalCharacter_};
}

void MainFrame::ArrangeWindows(const QString& key) {
    const QList<QMdiSubWindow*> windows = area_->subWindowList();
    QMdiSubWindow* active = area_->activeSubWindow();
    if (key == "WindowCascade") {
        area_->cascadeSubWindows();
    } else if (key == "WindowTileHorizontal" || key == "WindowTileVertical") {
        // Horizontal: one above the other across the whole width; vertical: side by side.
        const bool horizontal = key == "WindowTileHorizontal";
        const QRect space = area_->viewport()->rect();
        const int count = static_cast<int>(windows.size());
        for (int place = 0; place < count; ++place) {
            windows[place]->showNormal();
            windows[place]->setGeometry(horizontal ? QRect(0, place * space.height() / count,
                                                           space.width(), space.height() / count)
                                                   : QRect(place * space.width() / count, 0,
                                                           space.width() / count, space.height()));
        }
    } else if (key == "WindowArrangeIcons") {
        int left = 0;
        for (QMdiSubWindow* window : windows) {
            if (window->isMinimized()) {
                window->move(left, area_->viewport()->height() - window->height());
                left += window->width();
            }
        }
    } else if (key == "WindowClose" && active != nullptr) {
        active->close();
    } else if (key == "WindowCloseAll") {
        area_->closeAllSubWindows();
    } else if (key == "WindowResetFullSize" && active != nullptr) {
        active->showMaximized();
    } else if (key == "WindowResetAllFullSize") {
        for (QMdiSubWindow* window : windows) {
            window->showMaximized();
        }
    }
}

void MainFrame::RunStartFile(const QString& commandLine) {
    lifecycle_.RunStartFile(Utf8(commandLine));
}

void MainFrame::AutoSaveTimerTick() {
    if (!running_) {
        lifecycle_.AutoSaveTick();
    }
}

// --- Screens

CalculationWindow* MainFrame::Calculation() const {
    return calculationWindow_ != nullptr
               ? qobject_cast<CalculationWindow*>(calculationWindow_->widget())
               : nullptr;
}

MeasureSystem MainFrame::Units() const {
    if (lifecycle_.ProjectIsLoaded()) {
        return project_.UnitSystem == 1 ? MeasureSystem::SI : MeasureSystem::US;
    }
    return Metric(settings_) ? MeasureSystem::SI : MeasureSystem::US;
}

void MainFrame::ShowCalculation() {
    if (calculationWindow_ != nullptr) {
        area_->setActiveSubWindow(calculationWindow_);
        calculationWindow_->showNormal();
        return;
    }
    auto* screen = new CalculationWindow(project_, library_, dialogs_, screens_, settings_, Units(),
                                         decimalCharacter_);
    screen->SetHelp(help_);
    QMdiSubWindow* window = area_->addSubWindow(screen);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->installEventFilter(this);
    window->resize(760, 640);
    const QMdiSubWindow* active = area_->activeSubWindow();
    RestorePlacement(*window, settings_, sections::Calculation,
                     active != nullptr && active->isMaximized());
    calculationWindow_ = window;
    connect(screen, &CalculationWindow::StatusTextWanted, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    connect(screen, &CalculationWindow::RunStarted, this, [this] { SetRunning(true); });
    connect(screen, &CalculationWindow::RunFinished, this, [this](bool posted) {
        if (posted) {
            lifecycle_.SetResultsFresh(true);
        }
        // The run writes its pressures back into the rows as their estimates.
        if (NodeEditorWindow* nodes = NodalEditor()) {
            nodes->Reload();
        }
        SetRunning(false);
    });
    window->show();
}

PipeDataWindow* MainFrame::PipeData() const {
    return pipeDataWindow_ != nullptr ? qobject_cast<PipeDataWindow*>(pipeDataWindow_->widget())
                                      : nullptr;
}

void MainFrame::ShowPipeData() {
    if (pipeDataWindow_ != nullptr) {
        area_->setActiveSubWindow(pipeDataWindow_);
        pipeDataWindow_->showNormal();
        return;
    }
    auto* screen = new PipeDataWindow(project_, library_, dialogs_, settings_, Units(),
                                      decimalCharacter_, tableUndo_);
    screen->UseHelp(*help_, screens_);
    // The words of the other screens: the discharge word, a default or a node line changed.
    screens_.Register(PipeDataScreen, [screen](std::string_view word) {
        if (word == UpdateLabelsWord || word == NodeDataChangedWord) {
            screen->ShowRowsAgain();
        } else {
            screen->Dispatch(word);
        }
    });
    connect(screen, &PipeDataWindow::InputEdited, this, [this] {
        // Not while the node editor is the screen in use: its own edit is what the pipe
        // screen shows.
        NodeEditorWindow* nodes = NodalEditor();
        if (nodes != nullptr && area_->activeSubWindow() != nodalEditorWindow_.data()) {
            nodes->Reload();
        }
    });
    pipeDataWindow_ = AddScreen(screen, QSize(1100, 560), sections::EnterEditPipeData);
    connect(screen, &PipeDataWindow::StatusTextWanted, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    connect(screen, &PipeDataWindow::DeviceDialogWanted, this,
            [this] { OpenDeviceDialog(project_, this); });
    connect(screen, &PipeDataWindow::PumpScreenWanted, this, [this] { OpenFirePump(); });
    pipeDataWindow_->show();
    FitPipeRows();
}

void MainFrame::FitPipeRows() {
    if (PipeDataWindow* pipes = PipeData()) {
        FitWindowToTableRows(*pipeDataWindow_, *pipes->Table(), NumOfPipesToDisplay(settings_),
                             area_->viewport()->height() - pipeDataWindow_->y());
    }
}

GeneralDataWindow* MainFrame::GeneralData() const {
    return generalDataWindow_ != nullptr
               ? qobject_cast<GeneralDataWindow*>(generalDataWindow_->widget())
               : nullptr;
}

QMdiSubWindow* MainFrame::AddScreen(QWidget* screen, QSize size, std::string_view section) {
    QMdiSubWindow* window = area_->addSubWindow(screen);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->installEventFilter(this);
    window->setProperty("PlacementSection", Text(section));
    window->resize(size);
    const QMdiSubWindow* active = area_->activeSubWindow();
    RestorePlacement(*window, settings_, section, active != nullptr && active->isMaximized());
    return window;
}

void MainFrame::ShowGeneralData() {
    if (generalDataWindow_ != nullptr) {
        area_->setActiveSubWindow(generalDataWindow_);
        generalDataWindow_->showNormal();
        return;
    }
    auto* screen =
        new GeneralDataWindow(project_, dialogs_, screens_, *help_, Units(), decimalCharacter_);
    generalDataWindow_ = AddScreen(screen, QSize(980, 620), sections::GPDForm);
    connect(screen, &GeneralDataWindow::StatusTextWanted, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    generalDataWindow_->show();
}

void MainFrame::ShowFocusedFieldHelp() {
    QWidget* field = QApplication::focusWidget();
    const QString key = field != nullptr ? field->property("CurrentHelpKey").toString() : QString();
    if (running_ || key.isEmpty()) {
        return;
    }
    HelpRequest request;
    request.Key = Utf8(key);
    request.OriginRow = field->property("HelpOriginRow").toInt();
    if (const auto* line = qobject_cast<const QLineEdit*>(field)) {
        request.FieldText = line->text().toLatin1().toStdString();
    }
    // The screen is the first window around the field that carries a form's name.
    for (const QWidget* around = field; around != nullptr; around = around->parentWidget()) {
        if (around->objectName().startsWith("frm")) {
            request.Screen = Utf8(around->objectName());
            break;
        }
    }
    help_->Show(request);
}

NodeEditorWindow* MainFrame::NodalEditor() const {
    return nodalEditorWindow_ != nullptr
               ? qobject_cast<NodeEditorWindow*>(nodalEditorWindow_->widget())
               : nullptr;
}

void MainFrame::ShowNodalEditor() {
    if (nodalEditorWindow_ != nullptr) {
        area_->setActiveSubWindow(nodalEditorWindow_);
        nodalEditorWindow_->showNormal();
        return;
    }
    auto* screen = new NodeEditorWindow(project_, dialogs_, screens_, *help_, tableUndo_, settings_,
                                        Units(), decimalCharacter_);
    nodalEditorWindow_ = AddScreen(screen, QSize(760, 420), "NodalEditor");
    connect(screen, &NodeEditorWindow::StatusTextWanted, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    nodalEditorWindow_->show();
}

bool MainFrame::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1 &&
        watched == QApplication::focusWidget() &&
        !watched->property("CurrentHelpKey").toString().isEmpty()) {
        ShowFocusedFieldHelp();
        return true;
    }
    if (event->type() == QEvent::Close && watched == pipeDataWindow_.data()) {
        PipeData()->WriteBack();
        PipeData()->Rules().CheckInflowOnLeaving();
    }
    if (event->type() == QEvent::Close && watched != calculationWindow_.data()) {
        if (const QVariant section = watched->property("PlacementSection"); section.isValid()) {
            SavePlacement(*static_cast<QWidget*>(watched), settings_, Utf8(section.toString()));
        }
    }
    if (event->type() == QEvent::Close && watched == calculationWindow_.data()) {
        if (running_) {
            event->ignore(); // the run's screen stays until the run ends
            return true;
        }
        SavePlacement(*calculationWindow_, settings_, sections::Calculation);
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainFrame::SetRunning(bool running) {
    running_ = running;
    UpdateCommands();
}

void MainFrame::OpenBox(QDialog* box) {
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void MainFrame::OpenPipeLibrary() {
    auto* screen = new PipeLibraryWindow(library_, dialogs_, Units(), this);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    // The library is the frame's own: a saved material is in the pick lists at once.
    connect(screen, &PipeLibraryWindow::LibrarySaved, this, [this] {
        if (PipeDataWindow* pipes = PipeData()) {
            pipes->Reload();
        }
    });
    // Modal to the frame: no run reads the library, nor does the project change, meanwhile.
    screen->open();
}

void MainFrame::OpenFirePump() {
    auto* screen = new FirePumpWindow(
        project_, library_.File.parent_path() / std::string(PumpDatabaseFileName), dialogs_,
        Units(), this);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    // The pump row's Loss field and the title's modified mark follow the curve passed; the pipe
    // table keeps its current cell and its history of edits.
    connect(screen, &QDialog::accepted, this, [this] {
        setWindowTitle(Text(lifecycle_.Title()));
        UpdateCommands();
        if (PipeDataWindow* pipes = PipeData()) {
            pipes->ShowRowsAgain();
        }
    });
    screen->open();
}

void MainFrame::OpenDataUnits() {
    auto* dialog = new DataUnitsDialog(Units(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { ApplyUnits(dialog->Chosen()); });
    dialog->open();
}

void MainFrame::ApplyUnits(MeasureSystem system) {
    if (system == Units()) {
        return;
    }
    WriteMetric(settings_, system == MeasureSystem::SI);
    if (lifecycle_.ProjectIsLoaded()) {
        project_.UnitSystem = system == MeasureSystem::SI ? 1 : 0;
    }
    // The screens show the stored values again; no change of a field counts as an edit.
    if (CalculationWindow* calculation = Calculation()) {
        calculation->SwitchUnits(system);
        calculation->Dispatch("Updatlabel");
    }
    if (PipeDataWindow* pipes = PipeData()) {
        pipes->SwitchUnits(system);
    }
    if (GeneralDataWindow* general = GeneralData()) {
        general->SwitchUnits(system);
    }
    if (NodeEditorWindow* nodes = NodalEditor()) {
        nodes->SwitchUnits(system);
    }
    reports_->RefreshPreview();
}

// --- LifecycleHost

void MainFrame::SetBusy(bool busy) {
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        ++busyDepth_;
    } else if (busyDepth_ > 0) {
        QApplication::restoreOverrideCursor();
        --busyDepth_;
    }
}

void MainFrame::WriteBackEditors() {
    // Every accepted key is in the model already; the field being typed in is left now.
    if (CalculationWindow* calculation = Calculation(); calculation != nullptr && !running_) {
        calculation->WriteBack();
    }
    if (PipeDataWindow* pipes = PipeData(); pipes != nullptr && !running_) {
        pipes->WriteBack();
    }
    if (GeneralDataWindow* general = GeneralData(); general != nullptr && !running_) {
        general->WriteBack();
    }
    if (NodeEditorWindow* nodes = NodalEditor(); nodes != nullptr && !running_) {
        nodes->WriteBack();
    }
}

std::vector<std::string> MainFrame::OpenProjectScreens() const {
    std::vector<std::string> open;
    if (pipeDataWindow_ != nullptr) {
        open.emplace_back(PipeDataScreen);
    }
    if (calculationWindow_ != nullptr) {
        open.emplace_back(CalculationScreenName);
    }
    if (generalDataWindow_ != nullptr) {
        open.emplace_back(GeneralDataScreen);
    }
    return open;
}

void MainFrame::UnloadProjectScreens() {
    WriteBackEditors();
    if (pipeDataWindow_ != nullptr) {
        pipeDataWindow_->removeEventFilter(this);
        delete pipeDataWindow_.data();
    }
    if (calculationWindow_ != nullptr) {
        calculationWindow_->close();
        delete calculationWindow_.data();
    }
    if (generalDataWindow_ != nullptr) {
        generalDataWindow_->close();
        delete generalDataWindow_.data();
    }
    if (nodalEditorWindow_ != nullptr) {
        nodalEditorWindow_->close();
        delete nodalEditorWindow_.data();
    }
    tableUndo_.Clear(); // the history belongs to the project that goes
}

void MainFrame::OpenProjectScreen(std::string_view screen) {
    if (screen == CalculationScreenName) {
        ShowCalculation();
    } else if (screen == PipeDataScreen) {
        ShowPipeData();
    } else if (screen == GeneralDataScreen) {
        ShowGeneralData();
    }
}

void MainFrame::ProjectStateChanged() {
    setWindowTitle(Text(lifecycle_.Title()));
    RebuildRecentFiles();
    UpdateCommands();
    if (CalculationWindow* calculation = Calculation(); calculation != nullptr && !running_) {
        calculation->Reload();
    }
    if (PipeDataWindow* pipes = PipeData(); pipes != nullptr && !running_) {
        pipes->Reload();
    }
    if (GeneralDataWindow* general = GeneralData(); general != nullptr && !running_) {
        general->Reload();
    }
    if (NodeEditorWindow* nodes = NodalEditor(); nodes != nullptr && !running_) {
        nodes->Reload();
    }
}

void MainFrame::ShowStatusText(std::string_view text) {
    statusBar()->showMessage(Text(text));
}

std::optional<fs::path> MainFrame::ChooseOpenFile(const FileDialogRequest& request) {
    return choices_.ChooseOpenFile(request, this);
}

std::optional<fs::path> MainFrame::ChooseSaveFile(const FileDialogRequest& request) {
    return choices_.ChooseSaveFile(request, this);
}

TempFileChoice MainFrame::ChooseTempFileAction(std::string_view title) {
    return choices_.ChooseTempFileAction(Text(title), this);
}

// --- The way down and dropped files

void MainFrame::closeEvent(QCloseEvent* event) {
    if (running_ || !lifecycle_.QueryUnload()) {
        event->ignore();
        return;
    }
    SavePlacement(*this, settings_, sections::MDIForm);
    SaveToolbarLayout();
    lifecycle_.Unload();
    event->accept();
}

void MainFrame::dragEnterEvent(QDragEnterEvent* event) {
    if (!running_ && event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
    }
}

void MainFrame::dropEvent(QDropEvent* event) {
    std::vector<fs::path> files;
    for (const QUrl& url : event->mimeData()->urls()) {
        files.emplace_back(Utf8(url.toLocalFile()));
    }
    event->acceptProposedAction();
    // The drop returns to the other program first; the project opens afterwards.
    QTimer::singleShot(0, this, [this, files] {
        if (!running_) {
            lifecycle_.DropFiles(files);
        }
    });
}

} // namespace quench::gui
