#pragma once

// The help windows of the input fields. Every field's small help button asks HelpWindows to show
// the help of its key: frmHelp, a plain explanation that closes on a click, a key or the loss of
// the focus, or frmHelpWithList, an explanation with a pick list. A pick (a double click or "&OK"
// on a row, or a value typed into the box under the list) is written to the help state and the
// screen that asked is told by its dispatcher word ("UpdateGPDFromHelpWindow", ...), on which it
// reads State().HelpSelection. "&Cancel" tells nobody.
//
// A screen uses it in three steps:
//   1. a help button beside the field: MakeHelpButton(parent, [=] { help.Show(request); });
//   2. its dispatcher takes HelpReturnWord(its name), reads help.State().HelpSelection and writes
//      it into the field named by State().CurrentHelpKey (and HelpOriginRow for a table);
//   3. the field runs its change logic on the value as if typed.
// A calculator reached through the help window's buttons is opened by the function given to
// SetCalculatorOpener; the value it returns is the pick.

#include "core/project.h"
#include "entry/help_lists.h"
#include "gui/screen_dispatcher.h"
#include "library/pipe_library.h"

#include <functional>
#include <optional>

#include <QDialog>
#include <QPointer>

class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;
class QTreeWidget;

namespace quench::gui {

// frmHelp.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    HelpWindow(const HelpContent& content, QWidget* parent);

    QLabel* lblHelpTitle() const { return title_; }
    QLabel* lblHelpDescription() const { return description_; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QLabel* title_;
    QLabel* description_;
};

// frmHelpWithList.
class HelpListWindow : public QDialog {
    Q_OBJECT

public:
    HelpListWindow(HelpContent content, QWidget* parent);

    QLabel* lblHelpTitle() const { return title_; }
    QLabel* lblHelpDescription() const { return description_; }
    QTreeWidget* lstHelp() const { return list_; }
    QLineEdit* txtDefaultValue() const { return entry_; }
    QPushButton* cmdOK() const { return ok_; }
    QPushButton* cmdCancel() const { return cancel_; }
    // The calculator buttons, in the order of the content.
    const std::vector<QPushButton*>& CalculatorButtons() const { return calculators_; }

    // The value the window returns, set when it closes with a choice.
    const std::optional<std::string>& Choice() const { return choice_; }
    // Closes with a value (a calculator's result).
    void Choose(const std::string& value);

signals:
    void CalculatorWanted(HelpCalculator calculator);

private:
    void TakeChoice();

    HelpContent content_;
    QLabel* title_;
    QLabel* description_;
    QTreeWidget* list_;
    QLineEdit* entry_;
    QPushButton* ok_;
    QPushButton* cancel_;
    std::vector<QPushButton*> calculators_;
    std::optional<std::string> choice_;
};

class HelpWindows : public QObject {
    Q_OBJECT

public:
    // The calculator behind a help window's button: it opens with the request of the field and
    // gives the value for the field, or nothing (its Cancel).
    using CalculatorOpener =
        std::function<std::optional<std::string>(HelpCalculator, const HelpRequest&)>;

    HelpWindows(Project& project, const PipeLibrary& library, ScreenDispatcher& screens,
                QWidget* frame);

    // ShowFieldHelp: sets the state and opens the window of the key, placed on the frame.
    // `values` are the values of a list that the caller gathers (global edit).
    QDialog* Show(const HelpRequest& request, std::vector<std::string> values = {});

    const HelpState& State() const { return state_; }
    QDialog* Current() const { return current_; }

    void SetCalculatorOpener(CalculatorOpener opener) { opener_ = std::move(opener); }
    void SetPumpNames(std::vector<std::string> names) { pumpNames_ = std::move(names); }

private:
    void Place(QWidget& window) const;
    void Closed(const HelpRequest& request, const std::optional<std::string>& choice);

    Project& project_;
    const PipeLibrary& library_;
    ScreenDispatcher& screens_;
    QWidget* frame_;
    HelpState state_;
    QPointer<QDialog> current_;
    CalculatorOpener opener_;
    std::vector<std::string> pumpNames_;
};

// The small button beside a field that opens its help.
QToolButton* MakeHelpButton(QWidget* parent, const QString& helpKey, std::function<void()> clicked);

} // namespace quench::gui
