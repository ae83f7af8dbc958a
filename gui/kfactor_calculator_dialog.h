#pragma once

// frmKFactCalc, "Sprinkler K-Factor Calculator": Q = K * sqrt(P) on three independent lines.
// "Close" gives back the K-factor of the first line for the field that opened it ("0.0" when
// there is none), "Cancel" gives back nothing.

#include "gui/calculator_fields.h"

#include <optional>

#include <QDialog>

class QLineEdit;

namespace quench::gui {

class ValidatedField;

class KFactorCalculatorDialog : public QDialog {
    Q_OBJECT

public:
    // fieldText: the text of the K-factor field that opened the calculator; a number is taken
    // as the K-factor of the second and third lines ("Dflt" and "Value" are not).
    KFactorCalculatorDialog(const CalculatorSetup& setup, const QString& fieldText = {},
                            QWidget* parent = nullptr);
    ~KFactorCalculatorDialog() override;

    // After "Close": the value for the field, formatted "0.0#"; nothing after "Cancel".
    std::optional<QString> ReturnedValue() const { return returned_; }

    ValidatedField* Field(const char* name) const;
    QLineEdit* Result(const char* name) const;

private:
    void Recalculate();
    void CloseWithValue();

    CalculatorSetup setup_;
    std::optional<QString> returned_;
    std::string kFactorText_; // the first line's result as calculated, "0.0#"
};

// Opens the calculator and waits; the value for the field on "Close", nothing on "Cancel".
std::optional<QString> OpenKFactorCalculator(const CalculatorSetup& setup, const QString& fieldText,
                                             QWidget* parent);

} // namespace quench::gui
