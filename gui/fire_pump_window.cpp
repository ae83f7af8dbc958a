#include "gui/fire_pump_window.h"

#include "entry/pump_point_units.h"
#include "gui/pump_curve_chart.h"
#include "gui/qt_text.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quench::gui {

FirePumpWindow::FirePumpWindow(Project& project, std::filesystem::path database, Dialogs& dialogs,
                               MeasureSystem system, QWidget* parent)
    : QDialog(parent), project_(project), editor_(std::move(database), dialogs), system_(system),
      pumps_(new QComboBox), copySource_(new QComboBox), units_(new QComboBox),
      flowHeading_(new QLabel), pressureHeading_(new QLabel),
      feetOfHead_(new QCheckBox(FeetOfHeadCaption)), curveText_(new QLabel), source_(new QLabel),
      chart_(new PumpCurveChart) {
    setWindowTitle("Fire Pump");
    setObjectName(Text(ScreenName));
    nameSource_ = [this]() -> std::optional<std::string> {
        bool ok = false;
        const QString name =
            QInputDialog::getText(this, AddPumpTitle, AddPumpPrompt, QLineEdit::Normal, {}, &ok);
        return ok ? std::optional(Utf8(name)) : std::nullopt;
    };
    editor_.Open(project_);
    BuildLayout();
    ShowPumpList();
    Show();
}

void FirePumpWindow::UseNameSource(std::function<std::optional<std::string>()> source) {
    nameSource_ = std::move(source);
}

void FirePumpWindow::SwitchUnits(MeasureSystem system) {
    system_ = system;
    Show();
}

UnitKind FirePumpWindow::PressureKind() const {
    return PumpPressureKind(editor_.FeetOfHead());
}

QString FirePumpWindow::CurveText() const {
    if (!editor_.IsCalculated() || system_ == MeasureSystem::US) {
        return Text(editor_.CurveText());
    }
    return Text(ShownPumpCurveText(editor_.Coefficients(),
                                   static_cast<int>(editor_.GivenPoints().size()),
                                   editor_.FeetOfHead(), system_));
}

void FirePumpWindow::BuildLayout() {
    auto* introduction = new QLabel(FirePumpIntroductionText);
    introduction->setWordWrap(true);
    auto* apply = new QLabel(FirePumpApplyText);
    apply->setWordWrap(true);

    auto* points = new QGridLayout;
    points->addWidget(flowHeading_, 0, 1);
    points->addWidget(pressureHeading_, 0, 2);
    for (int point = 0; point < MaximumCurvePoints; ++point) {
        flows_[point] = new QLineEdit;
        pressures_[point] = new QLineEdit;
        points->addWidget(new QLabel(QString("Point %1").arg(point + 1)), point + 1, 0);
        points->addWidget(flows_[point], point + 1, 1);
        points->addWidget(pressures_[point], point + 1, 2);
        for (const bool flow : {true, false}) {
            QLineEdit* field = flow ? flows_[point] : pressures_[point];
            connect(field, &QLineEdit::textEdited, this,
                    [this, point, flow] { PointEdited(point, flow); });
            connect(field, &QLineEdit::editingFinished, this,
                    [this, point, flow] { PointLeft(point, flow); });
        }
    }
    points->addWidget(feetOfHead_, MaximumCurvePoints + 1, 1, 1, 2);
    units_->addItems({"US units", "SI units"});
    units_->setObjectName("uomSystem");
    points->addWidget(new QLabel("Units"), MaximumCurvePoints + 2, 0);
    points->addWidget(units_, MaximumCurvePoints + 2, 1, 1, 2);
    connect(units_, &QComboBox::activated, this,
            [this](int index) { SwitchUnits(index == 1 ? MeasureSystem::SI : MeasureSystem::US); });
    connect(feetOfHead_, &QCheckBox::clicked, this, [this](bool checked) {
        editor_.SetFeetOfHead(checked);
        Show();
    });

    auto button = [this](const char* key, const char* caption) {
        auto* made = new QPushButton(caption);
        made->setObjectName(key);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, [this, key] { Command(key); });
        return made;
    };
    auto* database = new QHBoxLayout;
    database->addWidget(new QLabel("Pump"));
    database->addWidget(pumps_, 1);
    database->addWidget(button("cmdUserDefined", ManualInputCaption));
    auto* edits = new QHBoxLayout;
    for (const auto& [key, caption] :
         {std::pair{"cmdAdd", "&Add"}, {"cmdSave", "&Save"}, {"cmdDel", "&Delete"}}) {
        edits->addWidget(button(key, caption));
    }
    edits->addWidget(button("cmdCopy", "Copy &from"));
    edits->addWidget(copySource_, 1);

    curveText_->setWordWrap(true);
    curveText_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* left = new QVBoxLayout;
    left->addLayout(points);
    left->addWidget(button("Calculate", "&Calculate"));
    left->addWidget(curveText_);
    left->addWidget(source_);
    left->addStretch();
    auto* middle = new QHBoxLayout;
    middle->addLayout(left);
    middle->addWidget(chart_, 1);

    auto* closing = new QHBoxLayout;
    closing->addStretch();
    closing->addWidget(button("OKButton", UsePumpCurveCaption));
    closing->addWidget(button("CancelButton", "Cancel"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(introduction);
    layout->addLayout(database);
    layout->addLayout(edits);
    layout->addLayout(middle, 1);
    layout->addWidget(apply);
    layout->addLayout(closing);

    connect(pumps_, &QComboBox::activated, this, [this](int index) {
        editor_.ChoosePump(index + 1);
        Show();
    });
}

void FirePumpWindow::ShowPumpList() {
    const QSignalBlocker blockPumps(pumps_);
    pumps_->clear();
    copySource_->clear();
    for (const PumpRecord& pump : editor_.Pumps()) {
        const QString name = Text(pump.Name);
        pumps_->addItem(name);
        copySource_->addItem(name);
    }
}

void FirePumpWindow::Show() {
    if (pumps_->count() != static_cast<int>(editor_.Pumps().size())) {
        ShowPumpList();
    }
    pumps_->setCurrentIndex(editor_.CurrentPump() - 1);
    source_->setText(editor_.CurrentPump() == 0
                         ? QString(ManualInputCaption)
                         : QString("Pump: %1").arg(Text(editor_.CurrentPumpName())));
    const bool feet = editor_.FeetOfHead();
    for (int point = 0; point < MaximumCurvePoints; ++point) {
        flows_[point]->setText(
            Text(ShownPumpText(UnitKind::Volumetric_Flow, editor_.FlowText(point), system_)));
        pressures_[point]->setText(
            Text(ShownPumpText(PressureKind(), editor_.PressureText(point), system_)));
    }
    feetOfHead_->setChecked(feet);
    units_->setCurrentIndex(system_ == MeasureSystem::SI ? 1 : 0);
    const QString flowUnit = Text(PumpFlowUnit(system_));
    const QString pressureUnit = Text(PumpPressureUnit(feet, system_));
    flowHeading_->setText(QString("Flow (%1)").arg(flowUnit));
    pressureHeading_->setText(QString("%1 (%2)").arg(feet ? "Head" : "Pressure", pressureUnit));
    curveText_->setText(CurveText());
    const PumpCoefficientArray coefficients =
        ShownPumpCoefficients(editor_.Coefficients(), feet, system_);
    chart_->SetCurve(ShownPumpPoints(editor_.GivenPoints(), feet, system_),
                     editor_.IsCalculated() ? &coefficients : nullptr, pressureUnit, flowUnit);
}

void FirePumpWindow::PointEdited(int point, bool flow) {
    const std::string shown = Utf8((flow ? flows_ : pressures_).at(point)->text());
    const UnitKind kind = flow ? UnitKind::Volumetric_Flow : PressureKind();
    const std::string held = HeldPumpText(kind, shown, system_);
    flow ? editor_.SetFlowText(point, held) : editor_.SetPressureText(point, held);
    curveText_->setText(CurveText());
}

void FirePumpWindow::PointLeft(int point, bool flow) {
    flow ? editor_.LeaveFlowField(point) : editor_.LeavePressureField(point);
    Show();
}

void FirePumpWindow::Command(std::string_view key) {
    if (key == "Calculate") {
        editor_.Calculate();
    } else if (key == "cmdAdd") {
        const std::optional<std::string> name = nameSource_();
        editor_.AddPump(name.value_or(""));
    } else if (key == "cmdCopy") {
        if (copySource_->currentIndex() >= 0) {
            editor_.CopyPump(copySource_->currentIndex() + 1);
        }
    } else if (key == "cmdDel") {
        editor_.DeletePump();
    } else if (key == "cmdSave") {
        editor_.SavePump();
    } else if (key == "cmdUserDefined") {
        editor_.ManualInput();
    } else if (key == "OKButton") {
        if (editor_.UsePumpCurve(project_)) {
            closing_ = true;
            accept();
            return;
        }
    } else if (key == "CancelButton") {
        editor_.Cancel();
        closing_ = true;
        reject();
        return;
    }
    ShowPumpList();
    Show();
}

void FirePumpWindow::closeEvent(QCloseEvent* event) {
    if (!closing_) {
        editor_.Cancel();
    }
    QDialog::closeEvent(event);
}

} // namespace quench::gui
