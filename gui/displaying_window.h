#pragma once

// frmDisplaying: the iterations of a run as they come, and three boxes through which the user
// changes the damping factors and the iteration limit while the run goes on. The boxes read and
// show numbers with the program's decimal character.

#include "core/progress.h"
#include "core/settings.h"
#include "entry/field_attributes.h"
#include "entry/iteration_list.h"

#include <QDialog>

class QLabel;
class QTableWidget;

namespace quench::gui {

class ValidatedField;

class DisplayingWindow : public QDialog {
    Q_OBJECT

public:
    DisplayingWindow(const QString& title, bool demandMode, IniFileHandler settings,
                     char decimalCharacter = '.', QWidget* parent = nullptr);

    // The values the boxes show; a box the user is typing in keeps its text.
    void ShowControls(const IterationControls& controls);
    // What the user typed since the last call.
    IterationControls TakeTyped();

    void ShowIteration(const IterationRow& row);
    void SetStatusText(const QString& text);
    void SetPercentText(const QString& text);
    void SetHmdText(const QString& text);

    ValidatedField* txtInitDampFact() const { return initialDamping_; }
    ValidatedField* txtMinDampFactor() const { return minimumDamping_; }
    ValidatedField* txtMaxIterations() const { return maximumIterations_; }
    QTableWidget* List() const { return list_; }
    QLabel* lblStatus() const { return status_; }

signals:
    // A damping factor typed here goes to the Calculation screen as well.
    void InitialDampingTyped(const QString& text);
    void MinimumDampingTyped(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    ValidatedField* Box(const char* name, NumberFieldKind kind);
    void Refresh();
    double Value(const QString& text) const;

    char decimalCharacter_; // before the boxes, which are made with it
    ValidatedField* initialDamping_;
    ValidatedField* minimumDamping_;
    ValidatedField* maximumIterations_;
    QTableWidget* list_;
    QLabel* status_;
    QLabel* percent_;
    QLabel* hmdCaption_;
    QLabel* hmd_;
    IniFileHandler settings_;
    IterationList rows_;
    IterationControls typed_;
};

} // namespace quench::gui
