#include "gui/calculator_fields.h"

#include "entry/field_rules.h"
#include "gui/qt_text.h"
#include "gui/validated_field.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace quench::gui {

ValidatedField* MakeCalculatorField(QWidget* parent, const char* name,
                                    const NumberAttribute& attribute, std::optional<UnitKind> unit,
                                    const CalculatorSetup& setup) {
    auto* field = new ValidatedField(parent);
    field->setObjectName(name);
    const NumberAttribute shown = ConvertAttribute(attribute, unit, setup.Units);
    field->SetNumberRules(shown, setup.DecimalCharacter);
    field->SetStatusText(QString::fromStdString(ShowRange(shown)));
    return field;
}

QLineEdit* MakeResultField(QWidget* parent, const char* name) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setReadOnly(true);
    field->setAlignment(Qt::AlignRight);
    field->setFocusPolicy(Qt::ClickFocus);
    return field;
}

QLabel* MakeUnitLabel(QWidget* parent, UnitKind kind, MeasureSystem system) {
    return new QLabel(Text(UnitWord(kind, system)), parent);
}

void AddCalculatorRow(QGridLayout* grid, int row, const QString& caption, QWidget* field,
                      QWidget* unit) {
    auto* label = new QLabel(caption, grid->parentWidget());
    label->setBuddy(field);
    grid->addWidget(label, row, 0);
    grid->addWidget(field, row, 1);
    if (unit != nullptr) {
        grid->addWidget(unit, row, 2);
    }
}

double CalculatorFieldValue(const QLineEdit* field, char decimalCharacter) {
    return FieldValue(Latin1(field->text()), decimalCharacter);
}

QString CalculatorText(const std::string& text, char decimalCharacter) {
    QString shown = Latin1(text);
    if (decimalCharacter != '.') {
        shown.replace('.', QChar::fromLatin1(decimalCharacter));
    }
    return shown;
}

} // namespace quench::gui
