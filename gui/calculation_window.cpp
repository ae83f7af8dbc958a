#include "gui/calculation_window.h"

#include "calc/calculation.h"
#include "calc/screen_words.h"
#include "core/text.h"
#include "entry/general_data_words.h"
#include "entry/iteration_list.h"
#include "entry/results_grid.h"
#include "gui/help_window.h"
#include "gui/qt_text.h"
#include "gui/validated_field.h"

#include <set>

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

using enum CalculationField;
namespace words = calculation_words;

// The results of the tab: control, caption (with the discharge word), unit kind of the value.
struct ResultLine {
    const char* Control;
    const char* Caption;
    std::optional<UnitKind> Unit;
};

constexpr std::array<ResultLine, 10> ResultLines{{
    {"lblNumberOfUniquePipeSections", "Number Of Unique Pipe Sections:", std::nullopt},
    {"lblNumberOfFlowingSprinklers", "Number Of Flowing Sprinklers:", std::nullopt},
    {"txtMaximumFlowVelocity", "Maximum Flow Velocity:", UnitKind::Velocity},
    {"txtSprinklerFlow", "Sprinkler Flow:", UnitKind::Volumetric_Flow},
    {"txtNonSprinklerFlow", "Non-Sprinkler Flow:", UnitKind::Volumetric_Flow},
    {"lblHMDSprinklerNodeNumber", "HMD Sprinkler Node Number:", std::nullopt},
    {"txtHMDActualResidualPressure", "HMD Actual Residual Pressure:", UnitKind::Pressure_Drop},
    {"txtHMDActualGPM", "HMD Actual Flow:", UnitKind::Volumetric_Flow},
    {"txtMinReqdResidPressAtSysInflowNode", "", UnitKind::Pressure_Drop},
    {"txtDemandFlowAtSystemInflowNode",
     "Demand Flow At System Inflow Node:", UnitKind::Volumetric_Flow},
}};

QString WithWord(const char* caption, const std::string& word) {
    QString text = caption;
    // A hose system calls the flow that no hose gives its fixed flow.
    if (EqualsIgnoreCase(word, HoseDischarge)) {
        text.replace("Non-Sprinkler Flow", "Fixed Flow");
    }
    text.replace("Sprinkler", Latin1(word));
    return text;
}

// The typed network as the iteration display counts it: active rows with both nodes.
std::pair<int, int> PipesAndNodes(const Project& project) {
    std::set<std::string> nodes;
    int pipes = 0;
    for (int row = 1; row <= std::min<int>(project.NumberOfPipeRows, MaxPipes); ++row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (HasBothNodes(pipe) && IsTrue(pipe.Active)) {
            ++pipes;
            nodes.insert(Trim(pipe.BegNode));
            nodes.insert(Trim(pipe.EndNode));
        }
    }
    return {pipes, static_cast<int>(nodes.size())};
}

} // namespace

CalculationWindow::CalculationWindow(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                                     ScreenDispatcher& screens, IniFileHandler settings,
                                     MeasureSystem system, char decimalCharacter, QWidget* parent)
    : QWidget(parent), project_(project), library_(library), dialogs_(dialogs), screens_(screens),
      settings_(std::move(settings)), rules_(project, system, decimalCharacter), progress_(this) {
    setObjectName("frmCalculation");
    setWindowTitle(Text(words::Title));
    tabs_ = new QTabWidget(this);
    tabs_->addTab(BuildDataTab(), Text(words::DataTab));
    tabs_->addTab(BuildSizingTab(), Text(words::SizingTab));
    tabs_->addTab(BuildResultsTab(), Text(words::ResultsTab));

    calculate_ = new QPushButton(Text(words::Calculate), this);
    calculate_->setObjectName("cmdCalculation");
    cancel_ = new QPushButton(Text(words::Cancel), this);
    cancel_->setObjectName("cmdCancel");
    cancel_->setEnabled(false);
    display_ = new QPushButton(Text(words::Display), this);
    display_->setObjectName("cmdDisplaying");
    connect(calculate_, &QPushButton::clicked, this, [this] { Calculate(); });
    connect(cancel_, &QPushButton::clicked, this, [this] { progress_.RequestCancel(); });
    connect(display_, &QPushButton::clicked, this, [this] { OpenDisplay(); });

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(calculate_);
    buttons->addWidget(cancel_);
    buttons->addWidget(display_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs_);
    layout->addLayout(buttons);

    screens_.Register(screens::Calculation,
                      [this](std::string_view command) { Dispatch(command); });
    Refresh();
}

CalculationWindow::~CalculationWindow() {
    screens_.Unregister(screens::Calculation);
}

// --- Layout

ValidatedField* CalculationWindow::MakeField(CalculationField field) {
    auto* widget = new ValidatedField(this);
    // The type group fields are control arrays: their index is the group.
    const int index = static_cast<int>(field);
    const int group = field >= TypeGroupMax1   ? index - static_cast<int>(TypeGroupMax1) + 1
                      : field >= TypeGroupMin1 ? index - static_cast<int>(TypeGroupMin1) + 1
                                               : 0;
    widget->setObjectName(Text(FieldInfo(field).Control) +
                          (group > 0 ? QString::number(group) : QString()));
    widget->setProperty("CurrentHelpKey", Text(FieldInfo(field).HelpKey));
    widget->setProperty("HelpOriginRow", index); // a pick comes back to this field
    if (FieldInfo(field).Number) {
        widget->setMaximumWidth(widget->fontMetrics().horizontalAdvance("0") * 16);
    }
    fields_[field] = widget;
    connect(widget, &ValidatedField::Edited, this,
            [this, field](const QString& text) { FieldEdited(field, text); });
    connect(widget, &ValidatedField::Left, this, [this, field] { FieldLeft(field); });
    connect(widget, &ValidatedField::StatusTextWanted, this, &CalculationWindow::StatusTextWanted);
    return widget;
}

QLabel* CalculationWindow::UnitLabel(CalculationField field) {
    auto* label = new QLabel(this);
    units_[field] = label;
    return label;
}

QAbstractButton* CalculationWindow::MakeOption(CalculationOption option, bool radio) {
    const CalculationOptionInfo& info = OptionInfo(option);
    QAbstractButton* button = radio ? static_cast<QAbstractButton*>(new QRadioButton(this))
                                    : static_cast<QAbstractButton*>(new QCheckBox(this));
    button->setText(Text(info.Caption));
    button->setObjectName(Text(info.Control));
    button->setProperty("CurrentHelpKey", Text(info.HelpKey));
    options_[option] = button;
    connect(button, &QAbstractButton::clicked, this,
            [this, option](bool on) { OptionClicked(option, on); });
    return button;
}

// Columns of the data tab: label, inflow node, field, unit, note; the last takes the slack.
constexpr int LabelColumn = 0;
constexpr int NodeColumn = 1;
constexpr int FieldColumn = 2;
constexpr int UnitColumn = 3;
constexpr int NoteColumn = 4;
constexpr int Columns = 5;

QWidget* CalculationWindow::BuildDataTab() {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    int row = 0;
    const auto addLine = [&](CalculationField field) {
        auto* label = new QLabel(page);
        labels_[field] = label;
        grid->addWidget(label, row, LabelColumn);
        grid->addWidget(MakeField(field), row, FieldColumn);
        grid->addWidget(UnitLabel(field), row, UnitColumn);
        ++row;
    };
    auto* commentLabel = new QLabel(page);
    labels_[CalculationComment] = commentLabel;
    grid->addWidget(commentLabel, row, LabelColumn);
    grid->addWidget(MakeField(CalculationComment), row++, NodeColumn, 1, Columns - NodeColumn);

    auto* mode = new QGroupBox(Text(words::ModeFrame), page);
    auto* modeLayout = new QHBoxLayout(mode);
    auto* modeGroup = new QButtonGroup(mode);
    for (const CalculationOption option :
         {CalculationOption::DemandMode, CalculationOption::SupplyMode}) {
        QAbstractButton* button = MakeOption(option, true);
        modeGroup->addButton(button);
        modeLayout->addWidget(button);
    }
    modeLayout->addStretch();
    grid->addWidget(mode, row++, LabelColumn, 1, Columns);
    addLine(MinPressureAtHMDNode);
    addLine(MinimumDesiredDensity);
    constexpr std::array<const char*, 3> nodeLabels{
        "lblSystemInflowNodeNumber", "lblSecondInflowNodeNumber", "lblThirdInflowNodeNumber"};
    for (int line = 0; line < 3; ++line) {
        const auto field =
            static_cast<CalculationField>(static_cast<int>(InflowResidualPressure1) + line);
        QLabel*& node = inflowNodes_[static_cast<std::size_t>(line)];
        node = new QLabel(page);
        node->setObjectName(nodeLabels[static_cast<std::size_t>(line)]);
        node->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(node, row, NodeColumn);
        QLabel* note = new QLabel(Text(line == 0 ? words::Required : words::Optional), page);
        if (line == 0) {
            required_ = note;
            required_->setObjectName("lblRequired");
        }
        grid->addWidget(note, row, NoteColumn);
        addLine(field);
    }

    auto* imbalance = new QGroupBox(Text(words::ImbalanceFrame), page);
    auto* imbalanceLayout = new QGridLayout(imbalance);
    auto* imbalanceGroup = new QButtonGroup(imbalance);
    int imbalanceRow = 0;
    for (const auto& [option, field] :
         {std::pair{CalculationOption::MaximumNodalPressure, MaximumNodePressureImbalance},
          std::pair{CalculationOption::AverageNodalPressure, AverageNodalPressure}}) {
        QAbstractButton* button = MakeOption(option, true);
        imbalanceGroup->addButton(button);
        imbalanceLayout->addWidget(button, imbalanceRow, 0);
        imbalanceLayout->addWidget(MakeField(field), imbalanceRow, 1);
        imbalanceLayout->addWidget(UnitLabel(field), imbalanceRow, 2);
        ++imbalanceRow;
    }
    imbalanceLayout->addWidget(MakeOption(CalculationOption::ConvFlowImbalance, false),
                               imbalanceRow, 0, 1, 3);
    imbalanceLayout->setColumnStretch(3, 1);
    grid->addWidget(imbalance, row++, LabelColumn, 1, Columns);
    addLine(InitialDampingFactor);
    addLine(MinimumDampingFactor);
    for (const CalculationOption option :
         {CalculationOption::UseAutomaticPeaking, CalculationOption::UseResidualPressureEstimate,
          CalculationOption::OscillationEstimate}) {
        grid->addWidget(MakeOption(option, false), row++, LabelColumn, 1, Columns);
    }
    grid->setRowStretch(row, 1);
    grid->setColumnStretch(Columns, 1);
    return page;
}

QWidget* CalculationWindow::BuildSizingTab() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* note = new QLabel(Text(words::SizingNote), page);
    note->setWordWrap(true);
    layout->addWidget(note);

    auto* limits = new QGridLayout;
    int row = 0;
    for (const CalculationField field : {MaxWaterVelocity, MaxFrictionalLoss}) {
        auto* label = new QLabel(page);
        labels_[field] = label;
        limits->addWidget(label, row, 0);
        limits->addWidget(MakeField(field), row, 1);
        limits->addWidget(UnitLabel(field), row, 2);
        ++row;
    }
    limits->setColumnStretch(3, 1);
    layout->addLayout(limits);
    layout->addWidget(MakeOption(CalculationOption::FrictLoss, false));
    layout->addWidget(MakeOption(CalculationOption::DoNotIncrSize, false));

    auto* groups = new QGroupBox(Text(words::TypeGroupFrame), page);
    groups->setProperty("CurrentHelpKey", "PipeSizingConstraintForTypeGroup");
    auto* table = new QGridLayout(groups);
    table->addWidget(new QLabel("Type Group", groups), 0, 0);
    table->addWidget(new QLabel("Minimum Diameter", groups), 0, 1);
    table->addWidget(new QLabel("Maximum Diameter", groups), 0, 3);
    for (int group = 1; group <= TypeGroupLines; ++group) {
        const CalculationField minimum = TypeGroupMinField(group);
        const CalculationField maximum = TypeGroupMaxField(group);
        auto* label = new QLabel(groups);
        labels_[minimum] = label;
        table->addWidget(label, group, 0);
        table->addWidget(MakeField(minimum), group, 1);
        table->addWidget(UnitLabel(minimum), group, 2);
        table->addWidget(MakeField(maximum), group, 3);
        table->addWidget(UnitLabel(maximum), group, 4);
    }
    table->setColumnStretch(5, 1);
    layout->addWidget(groups);
    layout->addStretch();

    auto* scroll = new QScrollArea;
    scroll->setWidget(page);
    scroll->setWidgetResizable(true);
    return scroll;
}

QWidget* CalculationWindow::BuildResultsTab() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* summary = new QGridLayout;
    int row = 0;
    for (const ResultLine& line : ResultLines) {
        auto* caption = new QLabel(line.Caption, page);
        caption->setObjectName(QString(line.Control) + "Caption");
        if (line.Control == std::string_view("txtMinReqdResidPressAtSysInflowNode")) {
            caption->setObjectName("lblMinReqdResidPressAtSysInflowNodeLabel");
        }
        auto* value = new QLabel(page);
        value->setObjectName(line.Control);
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        results_[line.Control] = value;
        results_[caption->objectName()] = caption;
        summary->addWidget(caption, row, 0);
        summary->addWidget(value, row, 1);
        if (line.Unit) {
            auto* unit = new QLabel(page);
            unit->setObjectName(QString(line.Control) + "Unit");
            results_[unit->objectName()] = unit;
            summary->addWidget(unit, row, 2);
        }
        if (line.Control == std::string_view("txtMaximumFlowVelocity")) {
            auto* pipe = new QLabel(page);
            pipe->setObjectName("lblMaximumFlowVelocityIdx");
            results_["lblMaximumFlowVelocityIdx"] = pipe;
            summary->addWidget(pipe, row, 3);
        }
        ++row;
    }
    summary->setColumnStretch(4, 1);
    layout->addLayout(summary);
    auto* check = new QLabel(page);
    check->setObjectName("lblIndependentCheck");
    check->setWordWrap(true);
    check->setTextInteractionFlags(Qt::TextSelectableByMouse);
    results_["lblIndependentCheck"] = check;
    layout->addWidget(check);

    grid_ = new QTableWidget(0, ResultsGridColumns, page);
    grid_->setObjectName("MSFlexGridResults");
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->verticalHeader()->setVisible(false);
    grid_->verticalHeader()->setDefaultSectionSize(grid_->fontMetrics().height() + 6);
    grid_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    layout->addWidget(grid_, 1);
    return page;
}

QLabel* CalculationWindow::ResultLabel(const QString& control) const {
    const auto found = results_.find(control);
    return found != results_.end() ? found->second : nullptr;
}

// --- Events

void CalculationWindow::FieldEdited(CalculationField field, const QString& text) {
    if (running_) {
        return;
    }
    rules_.Edit(field, Latin1(text));
    // The rules may have cut or emptied the text: the field shows what they kept.
    const QString kept = Latin1(rules_.Text(field));
    if (kept != fields_[field]->text()) {
        fields_[field]->SetTextQuietly(kept);
    }
}

void CalculationWindow::FieldLeft(CalculationField field) {
    if (running_ || !fields_[field]->isEnabled()) {
        return;
    }
    const LeaveOutcome outcome = rules_.Leave(field);
    fields_[field]->SetTextQuietly(Latin1(rules_.Text(field)));
    if (outcome.TooLow) {
        dialogs_.ShowMessage(MessageStyle::Information, "QUENCH", ValueTooLowText);
    }
}

void CalculationWindow::OptionClicked(CalculationOption option, bool on) {
    if (running_) {
        Refresh();
        return;
    }
    rules_.SetOption(option, on);
    RefreshFields();
}

void CalculationWindow::WriteBack() {
    for (const auto& [field, widget] : fields_) {
        if (widget->hasFocus()) {
            FieldLeft(field);
        }
    }
}

void CalculationWindow::Dispatch(std::string_view command) {
    if (command == screens::ShowInputTab) {
        tabs_->setCurrentIndex(0);
    } else if (command == screens::ShowSizingTab) {
        tabs_->setCurrentIndex(1);
    } else if (command == screens::ShowResultsTab) {
        tabs_->setCurrentIndex(2);
    } else if (command == screens::Show) {
        (parentWidget() != nullptr ? parentWidget() : this)->raise();
        activateWindow();
    } else if (command == "Calculate") {
        Calculate();
    } else if (command == "Updatlabel") {
        Reload(); // the discharge word, the units or the density changed elsewhere
    } else if (command == "Cancel") {
        progress_.RequestCancel();
    } else if (command == "Put") {
        WriteBack();
    } else if (command == "UpdateCalculationDataFromHelpWindow") {
        TakeHelpChoice();
    }
}

void CalculationWindow::TakeHelpChoice() {
    if (help_ == nullptr) {
        return;
    }
    const HelpState& state = help_->State();
    const auto found = fields_.find(static_cast<CalculationField>(state.HelpOriginRow));
    if (running_ || found == fields_.end() || !found->second->isEnabled() ||
        FieldInfo(found->first).HelpKey != state.CurrentHelpKey) {
        return;
    }
    // The pick goes through the field's change and leaving rules, as typed.
    FieldEdited(found->first, Latin1(state.HelpSelection));
    FieldLeft(found->first);
}

// --- Showing the model

void CalculationWindow::Reload() {
    rules_.Load();
    Refresh();
}

void CalculationWindow::SwitchUnits(MeasureSystem system) {
    rules_.SwitchUnits(system);
    Refresh();
}

void CalculationWindow::RefreshInflowNodes() {
    for (int line = 0; line < 3; ++line) {
        inflowNodes_[static_cast<std::size_t>(line)]->setText(
            Latin1(rules_.InflowNodeNumber(line + 1)));
    }
}

void CalculationWindow::Refresh() {
    RefreshFields();
    RefreshResults();
}

void CalculationWindow::RefreshFields() {
    for (const auto& [field, widget] : fields_) {
        const CalculationFieldInfo& info = FieldInfo(field);
        if (info.Number) {
            widget->SetNumberRules(rules_.Attribute(field), rules_.DecimalCharacter());
        } else {
            widget->SetTextRules(rules_.TextLimits(field));
        }
        widget->SetStatusText(Latin1(rules_.StatusText(field)));
        widget->SetTextQuietly(Latin1(rules_.Text(field)));
        widget->setEnabled(rules_.IsEnabled(field) && !running_);
        if (const auto label = labels_.find(field); label != labels_.end()) {
            label->second->setText(Latin1(rules_.Label(field)));
        }
        if (const auto unit = units_.find(field); unit != units_.end() && info.Unit) {
            unit->second->setText(Text(UnitWord(*info.Unit, rules_.System())));
        }
    }
    for (const auto& [option, button] : options_) {
        const QSignalBlocker blocker(button);
        button->setChecked(rules_.Option(option));
    }
    required_->setVisible(rules_.RequiredLabelVisible());
    RefreshInflowNodes();
}

void CalculationWindow::RefreshResults() {
    const std::string word = rules_.DischargeWord();
    const ResultsScreen shown = rules_.Results();
    const std::map<QString, std::string> values{
        {"lblNumberOfUniquePipeSections", shown.lblNumberOfUniquePipeSections},
        {"lblNumberOfFlowingSprinklers", shown.lblNumberOfFlowingSprinklers},
        {"txtMaximumFlowVelocity", shown.txtMaximumFlowVelocity},
        {"lblMaximumFlowVelocityIdx", shown.lblMaximumFlowVelocityIdx},
        {"txtSprinklerFlow", shown.txtSprinklerFlow},
        {"txtNonSprinklerFlow", shown.txtNonSprinklerFlow},
        {"lblHMDSprinklerNodeNumber", shown.lblHMDSprinklerNodeNumber},
        {"txtHMDActualResidualPressure", shown.txtHMDActualResidualPressure},
        {"txtHMDActualGPM", shown.txtHMDActualGPM},
        {"lblMinReqdResidPressAtSysInflowNodeLabel",
         shown.lblMinReqdResidPressAtSysInflowNodeLabel},
        {"txtMinReqdResidPressAtSysInflowNode", shown.txtMinReqdResidPressAtSysInflowNode},
        {"txtDemandFlowAtSystemInflowNode", shown.txtDemandFlowAtSystemInflowNode},
        {"lblIndependentCheck", shown.lblIndependentCheck},
    };
    const bool hasResults = project_.CalculationData.NumberOfUniquePipeSections > 0;
    for (const auto& [control, value] : values) {
        results_[control]->setText(hasResults ? Latin1(value) : QString());
    }
    for (const ResultLine& line : ResultLines) {
        if (line.Caption[0] != '\0') {
            results_[QString(line.Control) + "Caption"]->setText(WithWord(line.Caption, word));
        }
        if (line.Unit) {
            results_[QString(line.Control) + "Unit"]->setText(
                Text(UnitWord(*line.Unit, rules_.System())));
        }
    }

    const quench::ResultsGrid grid = BuildResultsGrid(project_, rules_.System());
    grid_->setUpdatesEnabled(false);
    QStringList headings;
    for (const std::string& heading : grid.Headings) {
        headings << Latin1(heading);
    }
    grid_->setHorizontalHeaderLabels(headings);
    grid_->setRowCount(static_cast<int>(grid.Lines.size()));
    for (int row = 0; row < static_cast<int>(grid.Lines.size()); ++row) {
        for (int column = 0; column < ResultsGridColumns; ++column) {
            auto* item = new QTableWidgetItem(Latin1(
                grid.Lines[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]));
            item->setTextAlignment((column == 1 && row % ResultsGridLinesPerPipe == 2
                                        ? Qt::AlignLeft
                                        : Qt::AlignRight) |
                                   Qt::AlignVCenter);
            grid_->setItem(row, column, item);
        }
    }
    grid_->setUpdatesEnabled(true);
}

// --- The run

void CalculationWindow::SetInputsEnabled(bool enabled) {
    tabs_->widget(0)->setEnabled(enabled);
    tabs_->widget(1)->setEnabled(enabled);
    calculate_->setEnabled(enabled);
    cancel_->setEnabled(!enabled);
}

bool CalculationWindow::Calculate() {
    if (running_) {
        return false;
    }
    running_ = true;
    emit RunStarted();
    SetInputsEnabled(false);
    calculate_->setText(Text(words::Calculating));
    calculate_->setToolTip(Text(words::PleaseWait));
    const CalculationScreen record = rules_.RunRecord();
    progress_.SetCaption(words::Calculating);
    progress_.SetLabel(words::PleaseWait);

    bool posted = false;
    {
        Calculation calculation(project_, library_, dialogs_, progress_, screens_);
        posted = calculation.Calculate(record);
    }

    calculate_->setText(Text(words::Calculate));
    calculate_->setToolTip(QString());
    running_ = false;
    SetInputsEnabled(true);
    Reload();
    emit RunFinished(posted);
    return posted;
}

void CalculationWindow::OpenDisplay() {
    if (progress_.Display() != nullptr) {
        progress_.Display()->raise();
        return;
    }
    const auto [pipes, nodes] = PipesAndNodes(project_);
    const bool demand = rules_.Option(CalculationOption::DemandMode);
    auto* display = new DisplayingWindow(Latin1(DisplayingTitle(demand, pipes, nodes)), demand,
                                         settings_, rules_.DecimalCharacter(), window());
    IterationControls shown;
    shown.InitialDamping = project_.CalculationData.InitialDampingFactor;
    shown.MinimumDamping = project_.CalculationData.MinimumDampingFactor;
    shown.IterationLimit = 10;
    display->ShowControls(shown);
    // A damping factor typed in the display is the screen's as well.
    const auto copyTo = [this](CalculationField field, const QString& text) {
        if (!text.isEmpty()) {
            rules_.Edit(field, Latin1(text));
            fields_[field]->SetTextQuietly(Latin1(rules_.Text(field)));
        }
    };
    connect(display, &DisplayingWindow::InitialDampingTyped, this,
            [copyTo](const QString& text) { copyTo(InitialDampingFactor, text); });
    connect(display, &DisplayingWindow::MinimumDampingTyped, this,
            [copyTo](const QString& text) { copyTo(MinimumDampingFactor, text); });
    progress_.SetDisplay(display);
    display->show();
}

} // namespace quench::gui
