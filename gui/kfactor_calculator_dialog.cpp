#include "gui/kfactor_calculator_dialog.h"

#include "calculators/sprinkler_kfactor.h"
#include "core/formats.h"
#include "gui/validated_field.h"
#include "gui/window_placement.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

constexpr NumberAttribute FlowAttribute{0, 0, 9999.99f, 2};
constexpr NumberAttribute PressureAttribute{0, 0, 500, 2};

} // namespace

KFactorCalculatorDialog::KFactorCalculatorDialog(const CalculatorSetup& setup,
                                                 const QString& fieldText, QWidget* parent)
    : QDialog(parent), setup_(setup) {
    setObjectName("frmKFactCalc");
    setWindowTitle("Sprinkler K-Factor Calculator");
    const MeasureSystem units = setup.Units;
    const NumberAttribute kAttribute = NumberAttributeOf(NumberFieldKind::KFactor);
    constexpr UnitKind flow = UnitKind::Volumetric_Flow;
    constexpr UnitKind pressure = UnitKind::Pressure_Drop;
    constexpr UnitKind kFactor = UnitKind::K_Factor;

    struct Line {
        const char* Title;
        const char* FirstName;
        const char* FirstCaption;
        NumberAttribute FirstAttribute;
        UnitKind FirstUnit;
        const char* SecondName;
        const char* SecondCaption;
        NumberAttribute SecondAttribute;
        UnitKind SecondUnit;
        const char* ResultName;
        const char* ResultCaption;
        UnitKind ResultUnit;
    };
    const Line lines[] = {
        {"K-Factor from flow and pressure", "txtFlowRate", "Flow Rate", FlowAttribute, flow,
         "txtHeadLoss", "Residual Pressure", PressureAttribute, pressure, "txtCalcKFact",
         "K-Factor", kFactor},
        {"Flow from K-factor and pressure", "txtSecondKfactor", "K-Factor", kAttribute, kFactor,
         "txtSecondPressure", "Residual Pressure", PressureAttribute, pressure, "txtSecondFlow",
         "Flow Rate", flow},
        {"Pressure from K-factor and flow", "txtThirdKfactor", "K-Factor", kAttribute, kFactor,
         "txtThirdFlow", "Flow Rate", FlowAttribute, flow, "txtThirdPressure", "Residual Pressure",
         pressure},
    };
    auto* layout = new QVBoxLayout(this);
    for (const Line& line : lines) {
        auto* box = new QGroupBox(line.Title, this);
        auto* grid = new QGridLayout(box);
        auto* first =
            MakeCalculatorField(box, line.FirstName, line.FirstAttribute, line.FirstUnit, setup);
        auto* second =
            MakeCalculatorField(box, line.SecondName, line.SecondAttribute, line.SecondUnit, setup);
        auto* result = MakeResultField(box, line.ResultName);
        AddCalculatorRow(grid, 0, line.FirstCaption, first,
                         MakeUnitLabel(box, line.FirstUnit, units));
        AddCalculatorRow(grid, 1, line.SecondCaption, second,
                         MakeUnitLabel(box, line.SecondUnit, units));
        AddCalculatorRow(grid, 2, line.ResultCaption, result,
                         MakeUnitLabel(box, line.ResultUnit, units));
        connect(first, &ValidatedField::Edited, this, &KFactorCalculatorDialog::Recalculate);
        connect(second, &ValidatedField::Edited, this, &KFactorCalculatorDialog::Recalculate);
        layout->addWidget(box);
    }

    auto* buttons = new QDialogButtonBox(this);
    auto* close = buttons->addButton("Close", QDialogButtonBox::AcceptRole);
    close->setObjectName("cmdClose");
    auto* cancel = buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    cancel->setObjectName("cmdCancel");
    connect(close, &QPushButton::clicked, this, &KFactorCalculatorDialog::CloseWithValue);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    layout->addWidget(buttons);

    if (const auto opening = OpeningValue(fieldText.toStdString())) {
        const QString text = CalculatorText(NumberText(*opening), setup.DecimalCharacter);
        Field("txtSecondKfactor")->SetTextQuietly(text);
        Field("txtThirdKfactor")->SetTextQuietly(text);
    }
    Recalculate();
    if (setup.Settings != nullptr) {
        RestorePlacement(*this, *setup.Settings, CalculatorPlacementSection);
    }
}

KFactorCalculatorDialog::~KFactorCalculatorDialog() {
    if (setup_.Settings != nullptr) {
        SavePlacement(*this, *setup_.Settings, CalculatorPlacementSection);
    }
}

ValidatedField* KFactorCalculatorDialog::Field(const char* name) const {
    return findChild<ValidatedField*>(name);
}

QLineEdit* KFactorCalculatorDialog::Result(const char* name) const {
    return findChild<QLineEdit*>(name);
}

void KFactorCalculatorDialog::Recalculate() {
    const char decimal = setup_.DecimalCharacter;
    auto value = [this, decimal](const char* name) {
        return CalculatorFieldValue(Field(name), decimal);
    };
    KFactorLines lines;
    lines.Units = setup_.Units;
    lines.FlowRate = value("txtFlowRate");
    lines.ResidualPressure = value("txtHeadLoss");
    lines.SecondKFactor = value("txtSecondKfactor");
    lines.SecondPressure = value("txtSecondPressure");
    lines.ThirdKFactor = value("txtThirdKfactor");
    lines.ThirdFlow = value("txtThirdFlow");
    const KFactorResults results = CalculateKFactorLines(lines);
    kFactorText_ = results.KFactor;
    Result("txtCalcKFact")->setText(CalculatorText(results.KFactor, decimal));
    Result("txtSecondFlow")->setText(CalculatorText(results.Flow, decimal));
    Result("txtThirdPressure")->setText(CalculatorText(results.Pressure, decimal));
}

void KFactorCalculatorDialog::CloseWithValue() {
    returned_ = CalculatorText(ReturnedValueText(kFactorText_), setup_.DecimalCharacter);
    accept();
}

std::optional<QString> OpenKFactorCalculator(const CalculatorSetup& setup, const QString& fieldText,
                                             QWidget* parent) {
    KFactorCalculatorDialog dialog(setup, fieldText, parent);
    dialog.exec();
    return dialog.ReturnedValue();
}

} // namespace quench::gui
