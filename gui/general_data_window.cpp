#include "gui/general_data_window.h"

#include "entry/general_data_words.h"
#include "gui/qt_text.h"
#include "gui/validated_field.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

using enum GeneralField;

constexpr const char* ScreenName = "frmGPD";

// Columns of a line: label, field, unit, help button.
constexpr int LabelColumn = 0;
constexpr int FieldColumn = 1;
constexpr int UnitColumn = 2;
constexpr int HelpColumn = 3;

} // namespace

GeneralDataWindow::GeneralDataWindow(Project& project, Dialogs& dialogs, ScreenDispatcher& screens,
                                     HelpWindows& help, MeasureSystem system, char decimalCharacter,
                                     QWidget* parent)
    : QWidget(parent), project_(project), dialogs_(dialogs), screens_(screens), help_(help),
      rules_(project, system, decimalCharacter) {
    setObjectName(ScreenName);
    setWindowTitle(Text(GeneralDataTitle));
    tabs_ = new QTabWidget(this);
    for (const GeneralTab tab :
         {GeneralTab::Project, GeneralTab::Client, GeneralTab::Company, GeneralTab::Building}) {
        tabs_->addTab(BuildRecordTab(tab), Text(TabCaption(tab)));
    }
    tabs_->addTab(BuildSystemTab(), Text(TabCaption(GeneralTab::System)));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs_);
    screens_.Register(ScreenName, [this](std::string_view command) { Dispatch(command); });
    Refresh();
}

GeneralDataWindow::~GeneralDataWindow() {
    screens_.Unregister(ScreenName);
}

// --- Layout

ValidatedField* GeneralDataWindow::MakeField(GeneralField field) {
    const GeneralFieldInfo& info = FieldInfo(field);
    auto* widget = new ValidatedField(this);
    widget->setObjectName(Text(info.Control));
    widget->setProperty("CurrentHelpKey", Text(info.HelpKey));
    widget->setProperty("HelpOriginRow", static_cast<int>(field));
    if (info.Kind == GeneralFieldKind::Number || info.Kind == GeneralFieldKind::Output) {
        widget->setMaximumWidth(widget->fontMetrics().horizontalAdvance("0") * 14);
    }
    if (info.Kind == GeneralFieldKind::Output) {
        widget->setReadOnly(true);
        widget->setAlignment(Qt::AlignRight);
    }
    fields_[field] = widget;
    connect(widget, &ValidatedField::Edited, this,
            [this, field](const QString& text) { FieldEdited(field, text); });
    connect(widget, &ValidatedField::Left, this, [this, field] { FieldLeft(field); });
    connect(widget, &ValidatedField::StatusTextWanted, this, &GeneralDataWindow::StatusTextWanted);
    return widget;
}

void GeneralDataWindow::AddLine(QGridLayout* grid, int row, int column, GeneralField field) {
    auto* label = new QLabel(this);
    labels_[field] = label;
    ValidatedField* widget = MakeField(field);
    label->setBuddy(widget);
    grid->addWidget(label, row, column + LabelColumn);
    grid->addWidget(widget, row, column + FieldColumn);
    auto* unit = new QLabel(this);
    units_[field] = unit;
    grid->addWidget(unit, row, column + UnitColumn);
    const GeneralFieldInfo& info = FieldInfo(field);
    if (!info.HelpKey.empty()) {
        grid->addWidget(
            MakeHelpButton(this, Text(info.HelpKey), [this, field] { ShowHelp(field); }), row,
            column + HelpColumn);
    }
}

QCheckBox* GeneralDataWindow::MakeCheck(GeneralCheck check) {
    auto* box = new QCheckBox(Text(PrintCommentCaption), this);
    box->setObjectName(Text(CheckControl(check)));
    checks_[check] = box;
    connect(box, &QCheckBox::toggled, this, [this, check](bool on) { rules_.SetCheck(check, on); });
    return box;
}

QWidget* GeneralDataWindow::BuildRecordTab(GeneralTab tab) {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    int row = 0;
    for (int index = 0; index < GeneralFieldCount; ++index) {
        const auto field = static_cast<GeneralField>(index);
        if (FieldInfo(field).Tab == tab) {
            AddLine(grid, row++, 0, field);
        }
    }
    const GeneralCheck check = tab == GeneralTab::Project   ? GeneralCheck::Project
                               : tab == GeneralTab::Client  ? GeneralCheck::Client
                               : tab == GeneralTab::Company ? GeneralCheck::Company
                                                            : GeneralCheck::Building;
    grid->addWidget(MakeCheck(check), row++, FieldColumn);
    grid->setColumnStretch(FieldColumn, 1);
    grid->setRowStretch(row, 1);
    return page;
}

QWidget* GeneralDataWindow::BuildSystemTab() {
    auto* page = new QWidget;
    auto* columns = new QHBoxLayout(page);
    const auto group = [this](const char* title, std::initializer_list<GeneralField> lines) {
        auto* box = new QGroupBox(title, this);
        auto* grid = new QGridLayout(box);
        int row = 0;
        for (const GeneralField field : lines) {
            AddLine(grid, row++, 0, field);
        }
        grid->setColumnStretch(FieldColumn, 1);
        return box;
    };
    auto* left = new QVBoxLayout;
    left->addWidget(group("System", {PrimaryDischarge, DefaultPipeMaterial, DefaultKFactor,
                                     SprinklerSystemType, SprinklerMake, SprinklerModel,
                                     SprinklerSize, TemperatureRating, HazardDescription}));
    left->addWidget(group("Design", {AreaOfSprinklerOperation, MinimumDesiredDensity,
                                     MaximumAreaPerSprinkler, InRackSprinklerAllowance,
                                     InsideHoseStreamAllowance, OutsideHoseStreamAllowance}));
    left->addWidget(group("Costs", {LaborRate, OtherLaborHours, OtherMaterialCosts}));
    left->addStretch();

    auto* right = new QVBoxLayout;
    QGroupBox* hydrant = group(
        "Hydrant Test", {HydrantTestDate, SourceOfInformation, TestHydrantID, HydrantElevation});
    auto* tests = new QGridLayout;
    tests->addWidget(new QLabel("Test", this), 0, FieldColumn);
    tests->addWidget(new QLabel("With Exterior Hose", this), 0, HelpColumn + 2);
    const std::array<std::pair<GeneralField, GeneralField>, 3> pairs{
        {{TestStaticPressure, SecondTestStaticPressure},
         {TestResidualPressure, SecondTestResidualPressure},
         {TestFlowRate, SecondTestFlowRate}}};
    int row = 1;
    for (const auto& [first, second] : pairs) {
        AddLine(tests, row, 0, first);
        tests->addWidget(MakeField(second), row, HelpColumn + 2);
        ++row;
    }
    AddLine(tests, row++, 0, ExteriorHoseFlow);
    AddLine(tests, row++, 0, CalculatedResidualPressure);
    AddLine(tests, row++, 0, CalculatedFlowRate);
    // The group's grid holds the text lines; the two tests follow below them.
    auto* hydrantLayout = static_cast<QGridLayout*>(hydrant->layout());
    hydrantLayout->addLayout(tests, hydrantLayout->rowCount(), 0, 1, HelpColumn + 1);
    right->addWidget(hydrant);
    auto* comment = new QGroupBox("Comment", this);
    auto* commentLayout = new QVBoxLayout(comment);
    MakeField(SystemComment)->setObjectName("txtSystemComment");
    commentLayout->addWidget(fields_[SystemComment]);
    commentLayout->addWidget(MakeCheck(GeneralCheck::System));
    right->addWidget(comment);
    right->addStretch();

    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    auto* scroll = new QScrollArea;
    scroll->setWidget(page);
    scroll->setWidgetResizable(true);
    return scroll;
}

// --- Events

void GeneralDataWindow::FieldEdited(GeneralField field, const QString& text) {
    const GeneralDataEditor::EditOutcome outcome = rules_.Edit(field, Latin1(text));
    const QString kept = Latin1(rules_.Text(field));
    if (kept != fields_[field]->text()) {
        fields_[field]->SetTextQuietly(kept);
    }
    if (outcome.DischargeChanged) {
        // ApplyPrimaryDischarge: every open screen shows its captions in the new word.
        Refresh();
        for (const std::string_view screen : DischargeWordScreens()) {
            if (screen != ScreenName) {
                screens_.Send(screen, UpdateLabelsWord);
            }
        }
    }
    if (outcome.DensityChanged) {
        screens_.Send("frmCalculation", UpdateLabelsWord);
    }
    if (outcome.PipeScreenChanged) {
        screens_.Send("frmEEPipeData", UpdateLabelsWord);
    }
}

void GeneralDataWindow::FieldLeft(GeneralField field) {
    const LeaveOutcome outcome = rules_.Leave(field);
    fields_[field]->SetTextQuietly(Latin1(rules_.Text(field)));
    if (outcome.TooLow) {
        dialogs_.ShowMessage(MessageStyle::Information, "QUENCH", ValueTooLowText);
    }
}

void GeneralDataWindow::ShowHelp(GeneralField field) {
    HelpRequest request;
    request.Key = FieldInfo(field).HelpKey;
    // The line tells the two test columns, which share their keys, apart.
    request.OriginRow = static_cast<int>(field);
    request.FieldText = Latin1(fields_[field]->text());
    request.Screen = ScreenName;
    help_.Show(request);
}

void GeneralDataWindow::TakeHelpChoice() {
    const HelpState& state = help_.State();
    if (state.HelpOriginRow < 0 || state.HelpOriginRow >= GeneralFieldCount) {
        return;
    }
    const auto field = static_cast<GeneralField>(state.HelpOriginRow);
    if (FieldInfo(field).HelpKey != state.CurrentHelpKey) {
        return;
    }
    // The pick goes through the field's change logic as if typed; the leaving rule follows.
    FieldEdited(field, Latin1(state.HelpSelection));
    FieldLeft(field);
}

void GeneralDataWindow::WriteBack() {
    for (const auto& [field, widget] : fields_) {
        if (widget->hasFocus()) {
            FieldLeft(field);
        }
    }
}

void GeneralDataWindow::Dispatch(std::string_view command) {
    if (command == "Put") {
        WriteBack();
        rules_.ScreenToGeneralData();
    } else if (command == "UpdateGPDFromHelpWindow") {
        TakeHelpChoice();
    } else if (command == "Get Minimum Desired Density" || command == UpdateLabelsWord ||
               command == "UpdateCalculatedSupply") {
        Reload();
    } else if (command == "Show") {
        (parentWidget() != nullptr ? parentWidget() : this)->raise();
    }
}

// --- Showing the model

void GeneralDataWindow::Reload() {
    rules_.Load();
    Refresh();
}

void GeneralDataWindow::SwitchUnits(MeasureSystem system) {
    rules_.SwitchUnits(system);
    Refresh();
}

void GeneralDataWindow::Refresh() {
    for (const auto& [field, widget] : fields_) {
        const GeneralFieldInfo& info = FieldInfo(field);
        if (info.Kind == GeneralFieldKind::Number) {
            widget->SetNumberRules(rules_.Attribute(field), rules_.DecimalCharacter());
        } else if (info.Kind != GeneralFieldKind::Output) {
            widget->SetTextRules(rules_.TextLimits(field));
        }
        widget->SetStatusText(Latin1(rules_.StatusText(field)));
        if (!widget->hasFocus() || widget->text() != Latin1(rules_.Text(field))) {
            widget->SetTextQuietly(Latin1(rules_.Text(field)));
        }
        if (const auto label = labels_.find(field); label != labels_.end()) {
            label->second->setText(Latin1(rules_.Label(field)));
        }
        if (const auto unit = units_.find(field); unit != units_.end()) {
            unit->second->setText(info.Unit || !info.UnitWord.empty() ? Text(rules_.UnitWord(field))
                                                                      : QString());
        }
    }
    for (const auto& [check, box] : checks_) {
        const QSignalBlocker blocker(box);
        box->setChecked(rules_.Check(check));
    }
}

} // namespace quench::gui
