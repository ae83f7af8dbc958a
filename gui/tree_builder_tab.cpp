#include "gui/tree_builder_tab.h"

#include "core/formats.h"
#include "entry/builder_captions.h"
#include "entry/builder_words.h"
#include "entry/general_data_words.h"
#include "entry/network_layout.h"
#include "entry/pipe_table_columns.h"
#include "gui/network_layout_window.h"
#include "gui/qt_text.h"
#include "gui/validated_field.h"

#include <algorithm>

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

// The shown value of a spacing ("##0.0") with the decimal character on screen.
QString Spacing(double value, char decimalCharacter) {
    std::string text = Format(value, "##0.0");
    std::ranges::replace(text, '.', decimalCharacter);
    return Latin1(text);
}

std::optional<UnitKind> InputUnit(int index) {
    return index >= TreeCrossMainLength ? std::optional(UnitKind::Length) : std::nullopt;
}

} // namespace

TreeBuilderTab::TreeBuilderTab(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                               MeasureSystem system, char decimalCharacter, QWidget* parent)
    : QWidget(parent), project_(project), library_(library), dialogs_(dialogs),
      fields_(this, system, decimalCharacter) {
    setObjectName("tabTreeBuilder");
    BuildLayout();
    BindHeldValues();
    ShowCaptions();
    Load();
}

TreeBuilderTab::~TreeBuilderTab() = default;

void TreeBuilderTab::BuildLayout() {
    auto* create = new QPushButton(tr("Tree Creation"), this);
    create->setObjectName("cmdTreeCreation");
    auto* display = new QPushButton(tr("Display Network"), this);
    display->setObjectName("cmdTreeDisplayNetwork");
    connect(create, &QPushButton::clicked, this, &TreeBuilderTab::CreateTree);
    connect(display, &QPushButton::clicked, this, &TreeBuilderTab::DisplayNetwork);

    auto* estimate = new QGroupBox(tr("Estimate Tree Size"), this);
    auto* estimateGrid = new QGridLayout(estimate);
    rows_ = new QLabel(estimate);
    rows_->setObjectName("lblCalculatedNumberOfRow");
    sprinklersPerRow_ = new QLabel(estimate);
    sprinklersPerRow_->setObjectName("lblCalculatedNumOfSprinklerPerRow");
    sprinklersCaption_ = new QLabel(estimate);
    estimateGrid->addWidget(new QLabel(tr("Calculated Number Of Rows:"), estimate), 0, 0);
    estimateGrid->addWidget(rows_, 0, 1);
    estimateGrid->addWidget(sprinklersCaption_, 1, 0);
    estimateGrid->addWidget(sprinklersPerRow_, 1, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(create);
    buttons->addWidget(display);
    buttons->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(BuildPipeData());
    right->addWidget(estimate);
    right->addLayout(buttons);
    right->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(BuildInputColumn());
    layout->addLayout(right);
    layout->addStretch();
}

QWidget* TreeBuilderTab::BuildInputColumn() {
    auto* box = new QGroupBox(this);
    auto* grid = new QGridLayout(box);
    for (int index = 0; index < TreeInputCount; ++index) {
        const QString name = QString("txtTreeBuilderNetWorkData_%1").arg(index);
        ValidatedField* field = fields_.Number(
            name, InputUnit(index) ? NumberFieldKind::Length : NumberFieldKind::NodeNumber,
            InputUnit(index));
        field->setParent(box);
        if (QLabel* unit = fields_.UnitLabel(field)) {
            unit->setParent(box);
        }
        inputs_[static_cast<std::size_t>(index)] = field;
        captions_[static_cast<std::size_t>(index)] =
            AddBuilderRow(grid, index, QString(), field, fields_.UnitLabel(field));
        auto* calculated = new QLabel(box);
        calculated->setObjectName(QString("lblTreeBuilderNetWorkData_%1").arg(index));
        calculated->setMinimumWidth(60);
        calculated->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(calculated, index, 3);
        calculated_[static_cast<std::size_t>(index)] = calculated;
    }
    // The exit node is what the build found, not an input.
    inputs_[TreeExitNode]->setReadOnly(true);
    inputs_[TreeExitNode]->setFocusPolicy(Qt::ClickFocus);
    for (ValidatedField* field : inputs_) {
        connect(field, &ValidatedField::Edited, this, [this, field] {
            held_.Typed(field);
            ShowEstimate();
        });
        connect(field, &ValidatedField::StatusTextWanted, this, &TreeBuilderTab::StatusTextWanted);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    return box;
}

QWidget* TreeBuilderTab::BuildPipeData() {
    auto* box = new QWidget(this);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto pipeGroup = [&](const QString& title, const char* material, const char* type,
                               const char* diameter, ValidatedField*& materialField,
                               ValidatedField*& typeField, ValidatedField*& diameterField) {
        auto* group = new QGroupBox(title, box);
        auto* grid = new QGridLayout(group);
        materialField = fields_.Number(material, NumberFieldKind::MaterialNumber);
        typeField = fields_.Number(type, NumberFieldKind::TypeGroup);
        diameterField = fields_.Number(diameter, NumberFieldKind::Diameter, UnitKind::Fine_Length);
        AddBuilderRow(grid, 0, tr("Material"), materialField, nullptr);
        AddBuilderRow(grid, 1, tr("Type"), typeField, nullptr);
        AddBuilderRow(grid, 2, tr("Diameter"), diameterField, fields_.UnitLabel(diameterField));
        layout->addWidget(group);
    };
    pipeGroup(tr("Cross Main Pipe"), "txtCrossMaterila", "txtcrosstypegroup", "txtcrossdiameter",
              crossMaterial_, crossTypeGroup_, crossDiameter_);
    pipeGroup(tr("Branch Line Pipe"), "txtTreeBranchMaterial", "txtTreeBranchTypeGroup",
              "txtTreebranchdiameter", branchMaterial_, branchTypeGroup_, branchDiameter_);

    auto* nodes = new QWidget(box);
    auto* grid = new QGridLayout(nodes);
    grid->setContentsMargins(0, 0, 0, 0);
    elevation_ = fields_.Number("txtTreeElevation", NumberFieldKind::Elevation, UnitKind::Length);
    kFactor_ = fields_.Number("txtTreeKFactor", NumberFieldKind::KFactor, UnitKind::K_Factor);
    areaGroup_ = fields_.Text("txtTreeAreaGroup", TextFieldKind::AreaGroup);
    sprinklerArea_ =
        fields_.Number("txtTreeSprinklerArea", NumberFieldKind::SprinklerArea, UnitKind::Area);
    maxBranchSpacing_ =
        fields_.Number("txtTreeMaxSpaceBetBranchs", NumberFieldKind::Length, UnitKind::Length);
    maxSprinklerSpacing_ =
        fields_.Number("txtTreeMaxSpaceBetSprinklers", NumberFieldKind::Length, UnitKind::Length);
    AddBuilderRow(grid, 0, tr("Elevation"), elevation_, fields_.UnitLabel(elevation_));
    AddBuilderRow(grid, 1, tr("K-Factor"), kFactor_, fields_.UnitLabel(kFactor_));
    AddBuilderRow(grid, 2, tr("Area Group"), areaGroup_, nullptr);
    areaCaption_ =
        AddBuilderRow(grid, 3, QString(), sprinklerArea_, fields_.UnitLabel(sprinklerArea_));
    AddBuilderRow(grid, 4, tr("Maximum Space Between Branches"), maxBranchSpacing_,
                  fields_.UnitLabel(maxBranchSpacing_));
    maxSpacingCaption_ = AddBuilderRow(grid, 5, QString(), maxSprinklerSpacing_,
                                       fields_.UnitLabel(maxSprinklerSpacing_));
    layout->addWidget(nodes);
    for (ValidatedField* field :
         {crossMaterial_, crossTypeGroup_, crossDiameter_, branchMaterial_, branchTypeGroup_,
          branchDiameter_, elevation_, kFactor_, areaGroup_, sprinklerArea_, maxBranchSpacing_,
          maxSprinklerSpacing_}) {
        connect(field, &ValidatedField::Edited, this, [this, field] {
            held_.Typed(field);
            ShowEstimate();
        });
        connect(field, &ValidatedField::StatusTextWanted, this, &TreeBuilderTab::StatusTextWanted);
    }
    return box;
}

void TreeBuilderTab::BindHeldValues() {
    using Data = TreeBuilderData;
    held_.Bind(inputs_[TreeIncrement], &Data::NodalNumberingIncrement);
    held_.Bind(inputs_[TreeSourceNode], &Data::SourceNode);
    held_.Bind(inputs_[TreeCrossMainLength], &Data::LengthOfCrossMain);
    held_.Bind(inputs_[TreeBranchSpacing], &Data::DistanceBetweenBranchLines);
    held_.Bind(inputs_[TreeLeftLength], &Data::LengthOfLeftBranchLine);
    held_.Bind(inputs_[TreeRightLength], &Data::LengthOfRightBranchLine);
    held_.Bind(inputs_[TreeLeftFirst], &Data::LeftDistanceToFirstSprinkler);
    held_.Bind(inputs_[TreeRightFirst], &Data::RightDistanceToFirstSprinkler);
    held_.Bind(inputs_[TreeLeftSpacing], &Data::LeftDistanceBetweenSprinklers);
    held_.Bind(inputs_[TreeRightSpacing], &Data::RightDistanceBetweenSprinklers);
    held_.Bind(crossMaterial_, &Data::CrossMaterial);
    held_.Bind(crossTypeGroup_, &Data::CrossTypeGroup);
    held_.Bind(crossDiameter_, &Data::CrossDiameter);
    held_.Bind(branchMaterial_, &Data::BranchMaterial);
    held_.Bind(branchTypeGroup_, &Data::BranchTypeGroup);
    held_.Bind(branchDiameter_, &Data::BranchDiameter);
    held_.Bind(elevation_, &Data::Elevation);
    held_.Bind(kFactor_, &Data::KFactor);
    held_.Bind(areaGroup_, &Data::AreaGroup);
    held_.Bind(sprinklerArea_, &Data::SprinklerArea);
    held_.Bind(maxBranchSpacing_, &Data::MaxSpaceBetweenBranches);
    held_.Bind(maxSprinklerSpacing_, &Data::MaxSpaceBetweenSprinklers);
}

void TreeBuilderTab::ShowCaptions() {
    const bool hose = IsHoseDischarge(project_);
    for (int index = 0; index < TreeInputCount; ++index) {
        captions_[static_cast<std::size_t>(index)]->setText(Text(TreeInputCaption(index, hose)));
    }
    const DischargeVocabulary words = VocabularyOf(DischargeWord(project_));
    areaCaption_->setText(Text(words.BuilderArea));
    maxSpacingCaption_->setText(Text(words.BuilderSpacing));
    sprinklersCaption_->setText(Text(words.BuilderCount));
}

TreeInputs TreeBuilderTab::Inputs() const {
    TreeInputs inputs;
    for (int index = 0; index < TreeInputCount; ++index) {
        inputs.Network[static_cast<std::size_t>(index)] = FieldText(Input(index));
    }
    inputs.CrossMaterial = FieldText(crossMaterial_);
    inputs.CrossTypeGroup = FieldText(crossTypeGroup_);
    inputs.CrossDiameter = FieldText(crossDiameter_);
    inputs.BranchMaterial = FieldText(branchMaterial_);
    inputs.BranchTypeGroup = FieldText(branchTypeGroup_);
    inputs.BranchDiameter = FieldText(branchDiameter_);
    inputs.Elevation = FieldText(elevation_);
    inputs.KFactor = FieldText(kFactor_);
    inputs.AreaGroup = FieldText(areaGroup_);
    inputs.SprinklerArea = FieldText(sprinklerArea_);
    inputs.MaxSpaceBetweenBranches = FieldText(maxBranchSpacing_);
    inputs.MaxSpaceBetweenSprinklers = FieldText(maxSprinklerSpacing_);
    inputs.System = fields_.System();
    inputs.DecimalCharacter = fields_.DecimalCharacter();
    return inputs;
}

void TreeBuilderTab::Load() {
    held_.Reset(project_.TreeBuilderData);
    ShowHeld();
    for (QLabel* calculated : calculated_) {
        calculated->clear();
    }
    ShowEstimate();
}

void TreeBuilderTab::TakeTyped() {
    TreeBuilderData fromTexts = held_.Values;
    StoreTreeInputs(Inputs(), fromTexts);
    held_.TakeTyped(fromTexts);
}

void TreeBuilderTab::Store() {
    TakeTyped();
    project_.TreeBuilderData = held_.Values;
}

void TreeBuilderTab::SwitchUnits(MeasureSystem system) {
    TakeTyped();
    fields_.SwitchUnits(system);
    ShowHeld();
    ShowEstimate();
}

void TreeBuilderTab::ShowHeld() {
    const TreeInputs shown =
        TreeInputsFromData(held_.Values, fields_.System(), fields_.DecimalCharacter());
    for (int index = 0; index < TreeInputCount; ++index) {
        ShowFieldText(inputs_[static_cast<std::size_t>(index)],
                      shown.Network[static_cast<std::size_t>(index)]);
    }
    ShowFieldText(crossMaterial_, shown.CrossMaterial);
    ShowFieldText(crossTypeGroup_, shown.CrossTypeGroup);
    ShowFieldText(crossDiameter_, shown.CrossDiameter);
    ShowFieldText(branchMaterial_, shown.BranchMaterial);
    ShowFieldText(branchTypeGroup_, shown.BranchTypeGroup);
    ShowFieldText(branchDiameter_, shown.BranchDiameter);
    ShowFieldText(elevation_, shown.Elevation);
    ShowFieldText(kFactor_, shown.KFactor);
    ShowFieldText(areaGroup_, shown.AreaGroup);
    ShowFieldText(sprinklerArea_, shown.SprinklerArea);
    ShowFieldText(maxBranchSpacing_, shown.MaxSpaceBetweenBranches);
    ShowFieldText(maxSprinklerSpacing_, shown.MaxSpaceBetweenSprinklers);
}

void TreeBuilderTab::ShowEstimate() {
    const TreeInputs inputs = Inputs();
    if (!CheckTreeInputs(inputs)) {
        for (const int index : {TreeBranchSpacing, TreeLeftSpacing, TreeRightSpacing}) {
            Calculated(index)->clear();
        }
        rows_->clear();
        sprinklersPerRow_->clear();
        return;
    }
    const TreeSpacing spacing = CalculateTreeSpacing(inputs);
    const char decimal = fields_.DecimalCharacter();
    Calculated(TreeBranchSpacing)->setText(Spacing(spacing.BranchSpacing, decimal));
    Calculated(TreeLeftSpacing)->setText(Spacing(spacing.LeftSpacing, decimal));
    Calculated(TreeRightSpacing)->setText(Spacing(spacing.RightSpacing, decimal));
    rows_->setText(QString::number(spacing.Rows));
    sprinklersPerRow_->setText(QString::number(spacing.SprinklersPerRow()));
}

void TreeBuilderTab::FocusOn(const BuilderFocus& focus) {
    switch (focus.Control) {
    case BuilderControl::NetworkInput:
        if (focus.Index >= 0 && focus.Index < TreeInputCount) {
            Input(focus.Index)->setFocus();
        }
        break;
    case BuilderControl::MainMaterial:
        crossMaterial_->setFocus();
        break;
    case BuilderControl::BranchMaterial:
        branchMaterial_->setFocus();
        break;
    case BuilderControl::None:
        break;
    }
}

void TreeBuilderTab::CreateTree() {
    const TreeInputs inputs = Inputs();
    BuildResult result;
    const auto build = [&] { result = quench::CreateTree(project_, library_, dialogs_, inputs); };
    if (RecordEdit) {
        RecordEdit(build);
    } else {
        build();
    }
    if (!result.Built()) {
        FocusOn(result.Focus);
        return;
    }
    ShowEstimate();
    // A tree of one row has no cross main to end in: no exit node is found.
    if (result.ExitNode != 0) {
        held_.Values.ExitNode = static_cast<Integer>(result.ExitNode);
        ShowFieldText(Input(TreeExitNode), std::to_string(result.ExitNode));
        Calculated(TreeExitNode)->setText(QString::number(result.ExitNode));
    } else {
        Calculated(TreeExitNode)->clear();
    }
    Store();
    emit RowsBuilt();
}

void TreeBuilderTab::DisplayNetwork() {
    const TreeInputs inputs = Inputs();
    BuilderFocus focus;
    if (!CheckTreeInputs(inputs, dialogs_, &focus)) {
        FocusOn(focus);
        return;
    }
    ShowEstimate();
    const TreeLayout layout = LayOutTree(inputs, project_);
    const std::string limit = TreePrintoutLimitMessage(
        layout.Spacing.LeftCount, layout.Spacing.RightCount, layout.Spacing.Rows);
    if (!limit.empty()) {
        dialogs_.ShowMessage(MessageStyle::Information, builder_words::ProgramTitle, limit);
    }
    if (preview_ == nullptr) {
        preview_ = new NetworkLayoutWindow("frmTreeGrid", this);
    }
    preview_->ShowDrawing(DrawNetwork(SketchOfPlan(layout.Pipes, TreePrintedPart)));
    preview_->show();
    preview_->raise();
}

} // namespace quench::gui
