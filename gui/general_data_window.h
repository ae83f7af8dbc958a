#pragma once

// frmGPD: the project's descriptive records on four tabs and its system data on the fifth. The
// rules live in GeneralDataEditor; this window lays out their fields, each with its label, unit
// and help button, and passes each event to them. A new discharge word is sent to every open
// screen, a new density to the Calculation screen.

#include "core/dialogs.h"
#include "core/project.h"
#include "entry/general_data.h"
#include "gui/help_window.h"
#include "gui/screen_dispatcher.h"

#include <map>

#include <QWidget>

class QCheckBox;
class QGridLayout;
class QLabel;
class QTabWidget;

namespace quench::gui {

class ValidatedField;

class GeneralDataWindow : public QWidget {
    Q_OBJECT

public:
    GeneralDataWindow(Project& project, Dialogs& dialogs, ScreenDispatcher& screens,
                      HelpWindows& help, MeasureSystem system, char decimalCharacter,
                      QWidget* parent = nullptr);
    ~GeneralDataWindow() override;

    // The screen's dispatcher words: "Put", "UpdateGPDFromHelpWindow", "Get Minimum Desired
    // Density", "Updatlabel".
    void Dispatch(std::string_view command);
    // GeneralDataToScreen.
    void Reload();
    void SwitchUnits(MeasureSystem system);
    // The field being typed in applies its leaving rule now, as before a save or a close.
    void WriteBack();
    // A field's help button.
    void ShowHelp(GeneralField field);

    GeneralDataEditor& Rules() { return rules_; }
    ValidatedField* Field(GeneralField field) const { return fields_.at(field); }
    QLabel* Label(GeneralField field) const { return labels_.at(field); }
    QCheckBox* PrintComment(GeneralCheck check) const { return checks_.at(check); }
    QTabWidget* Tabs() const { return tabs_; }

signals:
    void StatusTextWanted(const QString& text);

private:
    QWidget* BuildRecordTab(GeneralTab tab);
    QWidget* BuildSystemTab();
    void AddLine(QGridLayout* grid, int row, int column, GeneralField field);
    ValidatedField* MakeField(GeneralField field);
    QCheckBox* MakeCheck(GeneralCheck check);

    void FieldEdited(GeneralField field, const QString& text);
    void FieldLeft(GeneralField field);
    void TakeHelpChoice();
    void Refresh();

    Project& project_;
    Dialogs& dialogs_;
    ScreenDispatcher& screens_;
    HelpWindows& help_;
    GeneralDataEditor rules_;

    std::map<GeneralField, ValidatedField*> fields_;
    std::map<GeneralField, QLabel*> labels_;
    std::map<GeneralField, QLabel*> units_;
    std::map<GeneralCheck, QCheckBox*> checks_;
    QTabWidget* tabs_ = nullptr;
};

} // namespace quench::gui
