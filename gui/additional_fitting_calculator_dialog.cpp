#include "gui/additional_fitting_calculator_dialog.h"

#include "calculators/sprinkler_kfactor.h"
#include "core/formats.h"
#include "entry/field_rules.h"
#include "gui/qt_dialogs.h"
#include "gui/qt_text.h"
#include "gui/validated_field.h"
#include "gui/window_placement.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

constexpr NumberAttribute FlowAttribute{0, 0, 9999.99f, 2};

// A default as the field shows it, with the field's decimals at most.
QString DefaultText(double value, int decimals, char decimalCharacter) {
    return CalculatorText(NumberText(RoundTo(value, decimals)), decimalCharacter);
}

} // namespace

AdditionalFittingCalculatorDialog::AdditionalFittingCalculatorDialog(const CalculatorSetup& setup,
                                                                     double innerDiameter,
                                                                     QWidget* parent)
    : QDialog(parent), setup_(setup), result_(MakeResultField(this, "txtCalcAddLen")),
      calculate_(new QPushButton("&Calculate", this)),
      roughness_(new QRadioButton("Roughness", this)), cValue_(new QRadioButton("C Value", this)) {
    setObjectName("frmAddFitCalc");
    setWindowTitle("Additional Fitting Length Calculator");
    const MeasureSystem units = setup.Units;
    const char decimal = setup.DecimalCharacter;
    const AdditionalFittingFields defaults = AdditionalFittingDefaults(units, innerDiameter);

    struct Input {
        const char* Name;
        const char* Caption;
        NumberFieldKind Kind;
        std::optional<UnitKind> Unit;
        double Default;
        QString UnitText;
    };
    auto unitText = [units](UnitKind kind) { return Text(UnitWord(kind, units)); };
    const Input inputs[] = {
        {"txtHeadLoss", "Head Loss", NumberFieldKind::HeadLoss, UnitKind::Pressure_Drop,
         defaults.HeadLoss, unitText(UnitKind::Pressure_Drop)},
        {"txtFlowRate", "Flow Rate", NumberFieldKind::Length, UnitKind::Volumetric_Flow,
         defaults.FlowRate, unitText(UnitKind::Volumetric_Flow)},
        {"txtDia", "Diameter", NumberFieldKind::Diameter, UnitKind::Fine_Length, defaults.Diameter,
         unitText(UnitKind::Fine_Length)},
        {"txtDensity", "Density", NumberFieldKind::FineRate, UnitKind::Density, defaults.Density,
         unitText(UnitKind::Density)},
        // Centipoise in both systems: one cP is one mN-s/m².
        {"txtViscosity", "Viscosity:", NumberFieldKind::Viscosity, std::nullopt, defaults.Viscosity,
         units == MeasureSystem::SI ? Text("mN-s/m²") : "cP"},
        {"txtRoughness", "Roughness", NumberFieldKind::Roughness, UnitKind::Fine_Length,
         defaults.Roughness, unitText(UnitKind::Fine_Length)},
        {"txtCValue", "C Value", NumberFieldKind::CValue, std::nullopt, defaults.CValue, {}},
    };
    auto* grid = new QGridLayout;
    int row = 0;
    for (const Input& input : inputs) {
        const NumberAttribute attribute = std::string_view(input.Name) == "txtFlowRate"
                                              ? FlowAttribute
                                              : NumberAttributeOf(input.Kind);
        auto* field = MakeCalculatorField(this, input.Name, attribute, input.Unit, setup);
        field->SetTextQuietly(DefaultText(input.Default, attribute.Decimals, decimal));
        AddCalculatorRow(grid, row++, input.Caption, field,
                         input.UnitText.isEmpty() ? nullptr : new QLabel(input.UnitText, this));
    }
    AddCalculatorRow(grid, row++, "Calculated Additional Fitting Length", result_,
                     MakeUnitLabel(this, UnitKind::Length, units));

    roughness_->setObjectName("optRoughness0");
    cValue_->setObjectName("optRoughness1");
    auto* models = new QButtonGroup(this);
    models->addButton(roughness_);
    models->addButton(cValue_);
    roughness_->setChecked(defaults.Model == FrictionModel::Roughness);
    cValue_->setChecked(defaults.Model == FrictionModel::CValue);
    connect(roughness_, &QRadioButton::toggled, this,
            &AdditionalFittingCalculatorDialog::ShowModel);
    auto* choice = new QHBoxLayout;
    choice->addWidget(new QLabel("Friction from:", this));
    choice->addWidget(roughness_);
    choice->addWidget(cValue_);
    choice->addStretch();

    calculate_->setObjectName("btnCalculate");
    connect(calculate_, &QPushButton::clicked, this, &AdditionalFittingCalculatorDialog::Calculate);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(calculate_, QDialogButtonBox::ActionRole);
    auto* close = buttons->addButton("Close", QDialogButtonBox::AcceptRole);
    close->setObjectName("btnClose");
    auto* cancel = buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    cancel->setObjectName("btnCancel");
    connect(close, &QPushButton::clicked, this, &AdditionalFittingCalculatorDialog::CloseWithValue);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(choice);
    layout->addLayout(grid);
    layout->addWidget(buttons);
    ShowModel();
    if (setup.Settings != nullptr) {
        RestorePlacement(*this, *setup.Settings, CalculatorPlacementSection);
    }
}

AdditionalFittingCalculatorDialog::~AdditionalFittingCalculatorDialog() {
    if (setup_.Settings != nullptr) {
        SavePlacement(*this, *setup_.Settings, CalculatorPlacementSection);
    }
}

ValidatedField* AdditionalFittingCalculatorDialog::Field(const char* name) const {
    return findChild<ValidatedField*>(name);
}

QRadioButton* AdditionalFittingCalculatorDialog::ModelButton(FrictionModel model) const {
    return model == FrictionModel::CValue ? cValue_ : roughness_;
}

// Only the field of the model chosen takes input.
void AdditionalFittingCalculatorDialog::ShowModel() {
    Field("txtRoughness")->setEnabled(roughness_->isChecked());
    Field("txtCValue")->setEnabled(cValue_->isChecked());
}

void AdditionalFittingCalculatorDialog::Calculate() {
    const char decimal = setup_.DecimalCharacter;
    auto value = [this, decimal](const char* name) {
        return CalculatorFieldValue(Field(name), decimal);
    };
    AdditionalFittingFields fields;
    fields.Units = setup_.Units;
    fields.HeadLoss = value("txtHeadLoss");
    fields.FlowRate = value("txtFlowRate");
    fields.Diameter = value("txtDia");
    fields.Density = value("txtDensity");
    fields.Viscosity = value("txtViscosity");
    fields.Roughness = value("txtRoughness");
    fields.CValue = value("txtCValue");
    fields.Model = cValue_->isChecked() ? FrictionModel::CValue : FrictionModel::Roughness;

    QtDialogs boxes;
    boxes.SetParent(this);
    Dialogs& messages = setup_.Messages != nullptr ? *setup_.Messages : boxes;
    const AdditionalFittingOutcome outcome =
        CalculateAdditionalFitting(ToCalculationUnits(fields), messages);
    if (!outcome.Calculated) {
        if (outcome.Focus == AdditionalFittingField::Roughness) {
            Field("txtRoughness")->setFocus();
        } else if (outcome.Focus == AdditionalFittingField::CValue) {
            Field("txtCValue")->setFocus();
        }
        return;
    }
    lengthText_ = AdditionalLengthText(outcome.Length, setup_.Units);
    result_->setText(CalculatorText(lengthText_, decimal));
}

void AdditionalFittingCalculatorDialog::CloseWithValue() {
    returned_ = CalculatorText(ReturnedValueText(lengthText_), setup_.DecimalCharacter);
    accept();
}

std::optional<QString> OpenAdditionalFittingCalculator(const CalculatorSetup& setup,
                                                       double innerDiameter, QWidget* parent) {
    AdditionalFittingCalculatorDialog dialog(setup, innerDiameter, parent);
    dialog.exec();
    return dialog.ReturnedValue();
}

} // namespace quench::gui
