#include "gui/fire_pump_window.h"

#include "gui/pump_curve_chart.h"

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
namespace {

QString Text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

FirePumpWindow::FirePumpWindow(Project& project, std::filesystem::path database, Dialogs& dialogs,
                               QWidget* parent)
    : QDialog(parent), project_(project), editor_(std::move(database), dialogs),
      pumps_(new QComboBox), copySource_(new QComboBox),
      feetOfHead_(new QCheckBox(FeetOfHeadCaption)), curveText_(new QLabel), source_(new QLabel),
      chart_(new PumpCurveChart) {
    setWindowTitle("Fire Pump");
    setObjectName(Text(ScreenName));
    nameSource_ = [this]() -> std::optional<std::string> {
        bool ok = false;
        const QString name =
            QInputDialog::getText(this, AddPumpTitle, AddPumpPrompt, QLineEdit::Normal, {}, &ok);
        return ok ? std::optional(name.toStdString()) : std::nullopt;
    };
    editor_.Open(project_);
    BuildLayout();
    ShowPumpList();
    Show();
}

void FirePumpWindow::UseNameSource(std::function<std::optional<std::string>()> source) {
    nameSource_ = std::move(source);
}

void FirePumpWindow::BuildLayout() {
    auto* introduction = new QLabel(FirePumpIntroductionText);
    introduction->setWordWrap(true);
    auto* apply = new QLabel(FirePumpApplyText);
    apply->setWordWrap(true);

    auto* points = new QGridLayout;
    points->addWidget(new QLabel("Flow (gpm)"), 0, 1);
    points->addWidget(new QLabel("Pressure"), 0, 2);
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
    for (int point = 0; point < MaximumCurvePoints; ++point) {
        flows_[point]->setText(Text(editor_.FlowText(point)));
        pressures_[point]->setText(Text(editor_.PressureText(point)));
    }
    feetOfHead_->setChecked(editor_.FeetOfHead());
    curveText_->setText(Text(editor_.CurveText()));
    chart_->SetCurve(editor_.GivenPoints(),
                     editor_.IsCalculated() ? &editor_.Coefficients() : nullptr,
                     editor_.FeetOfHead() ? "ft" : "psi");
}

void FirePumpWindow::PointEdited(int point, bool flow) {
    const std::string text = (flow ? flows_ : pressures_).at(point)->text().toStdString();
    flow ? editor_.SetFlowText(point, text) : editor_.SetPressureText(point, text);
    curveText_->setText(Text(editor_.CurveText()));
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
