#pragma once

// frmMDI: the main frame. Its menus and toolbar are built from the command table and deliver
// every key to one dispatcher; it owns the project's lifecycle and hosts the project screens as
// windows of its MDI area. While a calculation runs, only window moves, the status window's
// Cancel and the boxes of the iteration display take input.

#include "app/project_lifecycle.h"
#include "core/dialogs.h"
#include "core/project.h"
#include "core/settings.h"
#include "core/units.h"
#include "entry/help_lists.h"
#include "entry/undo_stack.h"
#include "gui/calculator_fields.h"
#include "gui/drawing_options_dialog.h"
#include "gui/screen_dispatcher.h"
#include "library/pipe_library.h"

#include <filesystem>
#include <map>
#include <optional>

#include <QMainWindow>
#include <QPointer>

class QAction;
class QDialog;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QTimer;

namespace quench::gui {

class CalculationWindow;
class PipeDataWindow;
class GeneralDataWindow;
class NodeEditorWindow;
class HelpWindows;
class ReportCommands;

// The dialogs the lifecycle waits for: the file dialogs and frmTempFile. The tests script them.
class DesktopChoices {
public:
    virtual ~DesktopChoices() = default;
    virtual std::optional<std::filesystem::path> ChooseOpenFile(const FileDialogRequest& request,
                                                                QWidget* parent);
    virtual std::optional<std::filesystem::path> ChooseSaveFile(const FileDialogRequest& request,
                                                                QWidget* parent);
    virtual TempFileChoice ChooseTempFileAction(const QString& title, QWidget* parent);
};

struct FrameSetup {
    Project* Model = nullptr;
    ::quench::Dialogs* Dialogs = nullptr;
    DesktopChoices* Choices = nullptr;
    IniFileHandler Settings;
    std::filesystem::path ProjectsDirectory;
    std::filesystem::path ToolbarLayoutFile; // "toolbar.lyt"; none to keep no layout
    PipeLibrary Library;
    char DecimalCharacter = '.';
};

class MainFrame : public QMainWindow, public LifecycleHost {
    Q_OBJECT

public:
    explicit MainFrame(FrameSetup setup, QWidget* parent = nullptr);
    ~MainFrame() override;

    // The one dispatcher of the menus and the toolbar.
    void Dispatch(const QString& key);
    void RunStartFile(const QString& commandLine);
    // F1: the help of the field that has the focus, for the screen it stands on.
    void ShowFocusedFieldHelp();
    // frmDataUnits' OK with the system chosen.
    void ApplyUnits(MeasureSystem system);
    // The units of the data screens: the open project's, or the default of the settings.
    MeasureSystem Units() const;
    // What the calculators opened from this frame or its screens work with.
    CalculatorSetup Calculators();

    ProjectLifecycle& Lifecycle() { return lifecycle_; }
    CalculationWindow* Calculation() const;
    PipeDataWindow* PipeData() const;
    GeneralDataWindow* GeneralData() const;
    NodeEditorWindow* NodalEditor() const;
    // The help windows of every screen's fields.
    HelpWindows& Help() const { return *help_; }
    ScreenDispatcher& Dispatcher() { return screens_; }
    ReportCommands* Reports() const { return reports_; }
    QMdiArea* Area() const { return area_; }
    QAction* Action(const QString& key) const;
    QMenu* RecentFilesMenu() const { return fileMenu_; }
    bool RunInProgress() const { return running_; }
    // One tick of the auto-save timer.
    void AutoSaveTimerTick();

    // LifecycleHost
    void SetBusy(bool busy) override;
    void WriteBackEditors() override;
    std::vector<std::string> OpenProjectScreens() const override;
    void UnloadProjectScreens() override;
    void OpenProjectScreen(std::string_view screen) override;
    void ProjectStateChanged() override;
    void ShowStatusText(std::string_view text) override;
    std::optional<std::filesystem::path> ChooseOpenFile(const FileDialogRequest& request) override;
    std::optional<std::filesystem::path> ChooseSaveFile(const FileDialogRequest& request) override;
    TempFileChoice ChooseTempFileAction(std::string_view title) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildMenus();
    void RebuildRecentFiles();
    void RebuildWindowList();
    void UpdateCommands();
    void ShowCalculation();
    void ShowPipeData();
    // The pipe screen as tall as the rows the options ask to see at once.
    void FitPipeRows();
    void ShowGeneralData();
    void ShowNodalEditor();
    // A project screen as a window of the MDI area, placed as it stood last time.
    QMdiSubWindow* AddScreen(QWidget* screen, QSize size, std::string_view section);
    void SetUpReports();
    void OpenDataUnits();
    void OpenPipeLibrary();
    void OpenBox(QDialog* box);
    void OpenFirePump();
    void SaveDxfGraph();
    std::optional<std::string> OpenCalculator(HelpCalculator calculator,
                                              const HelpRequest& request);
    double InnerDiameterOfRow(int row) const;
    void ArrangeWindows(const QString& key);
    void SetRunning(bool running);
    void RestoreToolbarLayout();
    void SaveToolbarLayout() const;

    Project& project_;
    Dialogs& dialogs_;
    DesktopChoices& choices_;
    IniFileHandler settings_;
    std::filesystem::path toolbarLayoutFile_;
    PipeLibrary library_;
    char decimalCharacter_;
    ScreenDispatcher screens_;
    ProjectLifecycle lifecycle_;

    QMdiArea* area_;
    QTimer* autoSave_;
    HelpWindows* help_;
    QMenu* fileMenu_ = nullptr;
    QMenu* windowMenu_ = nullptr;
    QAction* recentSeparator_ = nullptr;
    std::vector<QAction*> recentActions_;
    std::vector<QAction*> windowListActions_;
    std::map<QString, QAction*> actions_;
    QPointer<QMdiSubWindow> calculationWindow_;
    QPointer<QMdiSubWindow> pipeDataWindow_;
    QPointer<QMdiSubWindow> generalDataWindow_;
    QPointer<QMdiSubWindow> nodalEditorWindow_;
    UndoStack tableUndo_; // one history of the pipe and node tables for both their screens
    bool running_ = false;
    int busyDepth_ = 0;
    ReportCommands* reports_ = nullptr;
    DesktopDrawingOptions drawingOptions_{this};
    InterchangeCommands interchange_{project_, dialogs_,  *this,          lifecycle_,
                                     library_, settings_, drawingOptions_};
};

} // namespace quench::gui
