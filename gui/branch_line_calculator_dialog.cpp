#include "gui/branch_line_calculator_dialog.h"

#include "calculators/branch_line.h"
#include "calculators/sprinkler_kfactor.h"
#include "core/formats.h"
#include "gui/additional_fitting_calculator_dialog.h"
#include "gui/kfactor_calculator_dialog.h"
#include "gui/validated_field.h"
#include "gui/window_placement.h"
#include "library/material_tables.h"

#include <cmath>

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

// A field and the button beside it, in one cell.
QWidget* WithButton(QWidget* parent, QWidget* field, QPushButton* button) {
    auto* cell = new QWidget(parent);
    auto* row = new QHBoxLayout(cell);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(field, 1);
    row->addWidget(button);
    return cell;
}

} // namespace

BranchLineCalculatorDialog::BranchLineCalculatorDialog(const CalculatorSetup& setup,
                                                       const QString& fieldText, QWidget* parent)
    : QDialog(parent), OpenSprinklerCalculator(OpenKFactorCalculator),
      OpenFittingCalculator(OpenAdditionalFittingCalculator), setup_(setup),
      result_(MakeResultField(this, "txtCalcKFact")),
      sprinklerButton_(new QPushButton("K-Factor &Calculator...", this)),
      fittingButton_(new QPushButton("&Fitting Calculator...", this)) {
    setObjectName("frmBranchLineCalc");
    setWindowTitle("Branch Line K-Factor Calculator");
    const MeasureSystem units = setup.Units;
    auto* material = MakeCalculatorField(
        this, "txtMaterial", NumberAttributeOf(NumberFieldKind::MaterialNumber), {}, setup);
    auto* diameter =
        MakeCalculatorField(this, "txtDiameter", NumberAttributeOf(NumberFieldKind::Diameter),
                            UnitKind::Fine_Length, setup);
    auto* length = MakeCalculatorField(
        this, "txtLength", NumberAttributeOf(NumberFieldKind::Length), UnitKind::Length, setup);
    auto* standard = new ValidatedField(this);
    standard->setObjectName("txtStandard");
    standard->SetTextRules(TextAttributeOf(TextFieldKind::FittingText));
    auto* nonstandard = MakeCalculatorField(
        this, "txtNonstandard", NumberAttributeOf(NumberFieldKind::NonStandardFittingLength),
        UnitKind::Length, setup);
    auto* sprinkler =
        MakeCalculatorField(this, "txtSprinkler", NumberAttributeOf(NumberFieldKind::KFactor),
                            UnitKind::K_Factor, setup);
    sprinklerButton_->setObjectName("cmdSprinklerCalculator");
    fittingButton_->setObjectName("cmdFittingCalculator");

    auto* grid = new QGridLayout;
    AddCalculatorRow(grid, 0, "Material", material);
    AddCalculatorRow(grid, 1, "Diameter", diameter,
                     MakeUnitLabel(this, UnitKind::Fine_Length, units));
    AddCalculatorRow(grid, 2, "Length", length, MakeUnitLabel(this, UnitKind::Length, units));
    AddCalculatorRow(grid, 3, "Standard Fittings", standard);
    AddCalculatorRow(grid, 4, "Non-Standard Fittings",
                     WithButton(this, nonstandard, fittingButton_),
                     MakeUnitLabel(this, UnitKind::Length, units));
    AddCalculatorRow(grid, 5, "Sprinkler K-Factor", WithButton(this, sprinkler, sprinklerButton_),
                     MakeUnitLabel(this, UnitKind::K_Factor, units));
    AddCalculatorRow(grid, 6, "Calculated K-Factor", result_,
                     MakeUnitLabel(this, UnitKind::K_Factor, units));
    for (auto* field : {material, diameter, length, standard, nonstandard, sprinkler}) {
        connect(field, &ValidatedField::Edited, this, &BranchLineCalculatorDialog::Recalculate);
    }
    connect(standard, &ValidatedField::Edited, this, [standard](const QString& text) {
        if (text != text.toUpper()) {
            standard->SetTextQuietly(text.toUpper());
        }
    });
    connect(sprinklerButton_, &QPushButton::clicked, this,
            &BranchLineCalculatorDialog::TakeSprinklerCalculator);
    connect(fittingButton_, &QPushButton::clicked, this,
            &BranchLineCalculatorDialog::TakeFittingCalculator);

    auto* buttons = new QDialogButtonBox(this);
    auto* close = buttons->addButton("Close", QDialogButtonBox::AcceptRole);
    close->setObjectName("cmdClose");
    auto* cancel = buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    cancel->setObjectName("cmdCancel");
    connect(close, &QPushButton::clicked, this, &BranchLineCalculatorDialog::CloseWithValue);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(buttons);

    if (const auto opening = OpeningValue(fieldText.toStdString())) {
        sprinkler->SetTextQuietly(CalculatorText(NumberText(*opening), setup.DecimalCharacter));
    }
    Recalculate();
    if (setup.Settings != nullptr) {
        RestorePlacement(*this, *setup.Settings, CalculatorPlacementSection);
    }
}

BranchLineCalculatorDialog::~BranchLineCalculatorDialog() {
    if (setup_.Settings != nullptr) {
        SavePlacement(*this, *setup_.Settings, CalculatorPlacementSection);
    }
}

ValidatedField* BranchLineCalculatorDialog::Field(const char* name) const {
    return findChild<ValidatedField*>(name);
}

void BranchLineCalculatorDialog::Recalculate() {
    const char decimal = setup_.DecimalCharacter;
    auto value = [this, decimal](const char* name) {
        return CalculatorFieldValue(Field(name), decimal);
    };
    BranchLineFields fields;
    fields.Units = setup_.Units;
    fields.Material = value("txtMaterial");
    fields.Diameter = value("txtDiameter");
    fields.Length = value("txtLength");
    fields.StandardFittings = Field("txtStandard")->text().toUpper().toStdString();
    fields.NonStandardFittings = value("txtNonstandard");
    fields.SprinklerKFactor = value("txtSprinkler");
    static const PipeLibrary noLibrary;
    resultText_ = BranchLineResultText(setup_.Library ? *setup_.Library : noLibrary, fields);
    result_->setText(CalculatorText(resultText_, decimal));
}

double BranchLineCalculatorDialog::InnerDiameter() const {
    const double material = CalculatorFieldValue(Field("txtMaterial"), setup_.DecimalCharacter);
    if (setup_.Library == nullptr || !IsLibraryMaterial(static_cast<int>(material))) {
        return 0;
    }
    const double nominal = StoredValue(
        UnitKind::Fine_Length, CalculatorFieldValue(Field("txtDiameter"), setup_.DecimalCharacter),
        setup_.Units);
    const PipeDiameterRecord* size = FindDiameter(*setup_.Library, static_cast<int>(material),
                                                  static_cast<Single>(RoundTo(nominal, 3)));
    return size == nullptr ? 0 : size->Inner;
}

void BranchLineCalculatorDialog::TakeSprinklerCalculator() {
    ValidatedField* sprinkler = Field("txtSprinkler");
    if (const auto value = OpenSprinklerCalculator(setup_, sprinkler->text(), this)) {
        sprinkler->SetTextQuietly(*value);
        Recalculate();
    }
}

void BranchLineCalculatorDialog::TakeFittingCalculator() {
    if (const auto value = OpenFittingCalculator(setup_, InnerDiameter(), this)) {
        Field("txtNonstandard")->SetTextQuietly(*value);
        Recalculate();
    }
}

void BranchLineCalculatorDialog::CloseWithValue() {
    returned_ = CalculatorText(ReturnedValueText(resultText_), setup_.DecimalCharacter);
    accept();
}

std::optional<QString> OpenBranchLineCalculator(const CalculatorSetup& setup,
                                                const QString& fieldText, QWidget* parent) {
    BranchLineCalculatorDialog dialog(setup, fieldText, parent);
    dialog.exec();
    return dialog.ReturnedValue();
}

} // namespace quench::gui
