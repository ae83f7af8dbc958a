#pragma once

// frmAddFitCalc, "Additional Fitting Length Calculator": a fitting's pressure loss at a flow as
// an equivalent length of pipe. "&Calculate" runs the checks and the friction model chosen;
// "Close" gives back the calculated length for the non-standard fitting field that opened it,
// "Cancel" gives back nothing.

#include "calculators/additional_fitting.h"
#include "gui/calculator_fields.h"

#include <optional>

#include <QDialog>

class QLineEdit;
class QPushButton;
class QRadioButton;

namespace quench::gui {

class ValidatedField;

class AdditionalFittingCalculatorDialog : public QDialog {
    Q_OBJECT

public:
    // innerDiameter: the inside diameter (inch) of the pipe the fitting sits on, 0 when the pipe
    // is left to autosizing.
    AdditionalFittingCalculatorDialog(const CalculatorSetup& setup, double innerDiameter = 0,
                                      QWidget* parent = nullptr);
    ~AdditionalFittingCalculatorDialog() override;

    std::optional<QString> ReturnedValue() const { return returned_; }

    ValidatedField* Field(const char* name) const;
    QLineEdit* Result() const { return result_; }
    QPushButton* CalculateButton() const { return calculate_; }
    QRadioButton* ModelButton(FrictionModel model) const;

    void Calculate();

private:
    void ShowModel();
    void CloseWithValue();

    CalculatorSetup setup_;
    QLineEdit* result_;
    QPushButton* calculate_;
    QRadioButton* roughness_;
    QRadioButton* cValue_;
    std::optional<QString> returned_;
    std::string lengthText_;
};

std::optional<QString> OpenAdditionalFittingCalculator(const CalculatorSetup& setup,
                                                       double innerDiameter, QWidget* parent);

} // namespace quench::gui
