#pragma once

// What the three calculator windows share: how they are set up, their number fields with the
// limits of the unit on screen, and the reading of a field's text.

#include "core/dialogs.h"
#include "core/settings.h"
#include "core/units.h"
#include "entry/field_attributes.h"
#include "library/pipe_library.h"

#include <optional>
#include <string>

#include <QString>

class QGridLayout;
class QLabel;
class QLineEdit;
class QWidget;

namespace quench::gui {

class ValidatedField;

// Everything a calculator needs from the program; the pointers may be null (no library: the
// branch line has no sizes; no settings: the position is not kept; no dialogs: messages are shown
// in message boxes).
struct CalculatorSetup {
    MeasureSystem Units = MeasureSystem::US;
    const PipeLibrary* Library = nullptr;
    const IniFileHandler* Settings = nullptr;
    Dialogs* Messages = nullptr;
    char DecimalCharacter = '.';
};

// The settings section that keeps the place of every calculator window.
inline constexpr const char* CalculatorPlacementSection = "AddFitCalcForm";

// A number field with the attribute's limits converted to the unit shown.
ValidatedField* MakeCalculatorField(QWidget* parent, const char* name,
                                    const NumberAttribute& attribute, std::optional<UnitKind> unit,
                                    const CalculatorSetup& setup);

// A read-only field for a result.
QLineEdit* MakeResultField(QWidget* parent, const char* name);

// The unit word of the kind in the system on screen, as a label.
QLabel* MakeUnitLabel(QWidget* parent, UnitKind kind, MeasureSystem system);

// One row of a grid: caption, field, unit (no unit for a plain number).
void AddCalculatorRow(QGridLayout* grid, int row, const QString& caption, QWidget* field,
                      QWidget* unit = nullptr);

// The value of a field's text; empty or unreadable text is 0.
double CalculatorFieldValue(const QLineEdit* field, char decimalCharacter);

// A computed text ("0.0#" result) with the locale's separator.
QString CalculatorText(const std::string& text, char decimalCharacter);

} // namespace quench::gui
