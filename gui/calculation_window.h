#pragma once

// frmCalculation: the settings of a run on two tabs, the Results tab with its grid, and the
// Calculate, Cancel and Display buttons. The rules live in CalculationDataScreen; this window
// lays out their fields and passes each event to them.

#include "core/dialogs.h"
#include "core/project.h"
#include "core/settings.h"
#include "entry/calculation_screen.h"
#include "gui/run_progress.h"
#include "gui/screen_dispatcher.h"
#include "library/pipe_library.h"

#include <map>

#include <QWidget>

class QAbstractButton;
class QCheckBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QTableWidget;

namespace quench::gui {

class HelpWindows;
class ValidatedField;

class CalculationWindow : public QWidget {
    Q_OBJECT

public:
    CalculationWindow(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                      ScreenDispatcher& screens, IniFileHandler settings, MeasureSystem system,
                      char decimalCharacter, QWidget* parent = nullptr);
    ~CalculationWindow() override;

    // The screen's dispatcher words.
    void Dispatch(std::string_view command);
    // CalculationDataToScreen and the results.
    void Reload();
    void SwitchUnits(MeasureSystem system);
    // The field being typed in applies its leaving rule now, as before a save or a close.
    void WriteBack();
    // On activation: the inflow node numbers from the model.
    void RefreshInflowNodes();

    // The help windows whose picks reach the fields ("UpdateCalculationDataFromHelpWindow").
    void SetHelp(HelpWindows* help) { help_ = help; }

    // cmdCalculation: true when results were posted.
    bool Calculate();
    // cmdDisplaying.
    void OpenDisplay();
    bool Running() const { return running_; }

    CalculationDataScreen& Rules() { return rules_; }
    RunProgress& Progress() { return progress_; }
    ValidatedField* Field(CalculationField field) const { return fields_.at(field); }
    QAbstractButton* OptionButton(CalculationOption option) const { return options_.at(option); }
    QPushButton* cmdCalculation() const { return calculate_; }
    QPushButton* cmdCancel() const { return cancel_; }
    QPushButton* cmdDisplaying() const { return display_; }
    QTabWidget* Tabs() const { return tabs_; }
    QTableWidget* ResultsGrid() const { return grid_; }
    // A label of the Results tab by its control name ("lblHMDSprinklerNodeNumber").
    QLabel* ResultLabel(const QString& control) const;

signals:
    void StatusTextWanted(const QString& text);
    void RunStarted();
    void RunFinished(bool posted);

private:
    QWidget* BuildDataTab();
    QWidget* BuildSizingTab();
    QWidget* BuildResultsTab();
    ValidatedField* MakeField(CalculationField field);
    QLabel* UnitLabel(CalculationField field);
    QAbstractButton* MakeOption(CalculationOption option, bool radio);

    void FieldEdited(CalculationField field, const QString& text);
    void FieldLeft(CalculationField field);
    void OptionClicked(CalculationOption option, bool on);
    void Refresh();
    void RefreshFields();
    void RefreshResults();
    void SetInputsEnabled(bool enabled);
    void TakeHelpChoice();

    Project& project_;
    const PipeLibrary& library_;
    Dialogs& dialogs_;
    ScreenDispatcher& screens_;
    IniFileHandler settings_;
    CalculationDataScreen rules_;
    RunProgress progress_;
    bool running_ = false;
    HelpWindows* help_ = nullptr;

    std::map<CalculationField, ValidatedField*> fields_;
    std::map<CalculationField, QLabel*> labels_;
    std::map<CalculationField, QLabel*> units_;
    std::map<CalculationOption, QAbstractButton*> options_;
    std::map<QString, QLabel*> results_;
    std::array<QLabel*, 3> inflowNodes_{};
    QLabel* required_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    QTableWidget* grid_ = nullptr;
    QPushButton* calculate_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPushButton* display_ = nullptr;
};

} // namespace quench::gui
