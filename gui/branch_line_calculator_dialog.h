#pragma once

// frmBranchLineCalc, "Branch Line K-Factor Calculator": a stretch of pipe with a sprinkler at
// its end as one K-factor. The result follows every change; "Close" gives it back for the field
// that opened the calculator, "Cancel" gives back nothing. The K-factor and the non-standard
// fittings have buttons that open the K-factor and the additional fitting calculators, whose
// values come back into these fields.

#include "gui/calculator_fields.h"

#include <functional>
#include <optional>

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace quench::gui {

class ValidatedField;

class BranchLineCalculatorDialog : public QDialog {
    Q_OBJECT

public:
    // fieldText: the text of the K-factor field that opened the calculator, taken as the
    // sprinkler's K-factor when it is a number.
    BranchLineCalculatorDialog(const CalculatorSetup& setup, const QString& fieldText = {},
                               QWidget* parent = nullptr);
    ~BranchLineCalculatorDialog() override;

    std::optional<QString> ReturnedValue() const { return returned_; }

    ValidatedField* Field(const char* name) const;
    QLineEdit* Result() const { return result_; }
    QPushButton* SprinklerCalculatorButton() const { return sprinklerButton_; }
    QPushButton* FittingCalculatorButton() const { return fittingButton_; }

    // The two calculators these buttons open; a test may replace them.
    std::function<std::optional<QString>(const CalculatorSetup&, const QString&, QWidget*)>
        OpenSprinklerCalculator;
    std::function<std::optional<QString>(const CalculatorSetup&, double, QWidget*)>
        OpenFittingCalculator;

private:
    void Recalculate();
    void CloseWithValue();
    void TakeSprinklerCalculator();
    void TakeFittingCalculator();
    // The inner diameter (inch) of the size chosen, 0 when there is none.
    double InnerDiameter() const;

    CalculatorSetup setup_;
    QLineEdit* result_;
    QPushButton* sprinklerButton_;
    QPushButton* fittingButton_;
    std::optional<QString> returned_;
    std::string resultText_;
};

std::optional<QString> OpenBranchLineCalculator(const CalculatorSetup& setup,
                                                const QString& fieldText, QWidget* parent);

} // namespace quench::gui
