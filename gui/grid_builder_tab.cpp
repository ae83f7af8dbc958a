#include "gui/grid_builder_tab.h"

#include "entry/builder_captions.h"
#include "entry/builder_words.h"
#include "entry/general_data_words.h"
#include "entry/network_layout.h"
#include "entry/pipe_table_columns.h"
#include "gui/network_layout_window.h"
#include "gui/qt_text.h"
#include "gui/validated_field.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

// The counts and numbers of the column are whole; the rest are lengths.
bool IsWhole(int index) {
    return index == GridIncrement || index == GridSourceNode || index == GridBranchLines ||
           index == GridHeadsPerLine;
}

} // namespace

GridBuilderTab::GridBuilderTab(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                               MeasureSystem system, char decimalCharacter, QWidget* parent)
    : QWidget(parent), project_(project), library_(library), dialogs_(dialogs),
      fields_(this, system, decimalCharacter) {
    setObjectName("tabGridBuilder");
    BuildLayout();
    BindHeldValues();
    ShowCaptions();
    Load();
}

GridBuilderTab::~GridBuilderTab() = default;

void GridBuilderTab::BuildLayout() {
    auto* create = new QPushButton(tr("Grid Creation"), this);
    create->setObjectName("cmdGridCreation");
    auto* display = new QPushButton(tr("Display Network"), this);
    display->setObjectName("cmdGridDisplayNetwork");
    connect(create, &QPushButton::clicked, this, &GridBuilderTab::CreateGrid);
    connect(display, &QPushButton::clicked, this, &GridBuilderTab::DisplayNetwork);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(create);
    buttons->addWidget(display);
    buttons->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(BuildPipeData());
    right->addLayout(buttons);
    right->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(BuildInputColumn());
    layout->addLayout(right);
    layout->addStretch();
}

void GridBuilderTab::Watch(ValidatedField* field) {
    connect(field, &ValidatedField::Edited, this, [this, field] { held_.Typed(field); });
    connect(field, &ValidatedField::StatusTextWanted, this, &GridBuilderTab::StatusTextWanted);
}

QWidget* GridBuilderTab::BuildInputColumn() {
    auto* box = new QGroupBox(this);
    auto* grid = new QGridLayout(box);
    for (int index = 0; index < GridInputCount; ++index) {
        const QString name = QString("txtGridBuilderNetWorkData_%1").arg(index);
        ValidatedField* field =
            IsWhole(index) ? fields_.Number(name, NumberFieldKind::NodeNumber)
                           : fields_.Number(name, NumberFieldKind::Length, UnitKind::Length);
        inputs_[static_cast<std::size_t>(index)] = field;
        captions_[static_cast<std::size_t>(index)] =
            AddBuilderRow(grid, index, QString(), field, fields_.UnitLabel(field));
        Watch(field);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    return box;
}

QWidget* GridBuilderTab::BuildPipeData() {
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
    pipeGroup(tr("Perimeter Pipe"), "txtPerimeterMaterila", "txtPerimeterTypeGroup",
              "txtPerimeterDiameter", perimeterMaterial_, perimeterTypeGroup_, perimeterDiameter_);
    pipeGroup(tr("Branch Line Pipe"), "txtGridBranchMaterial", "txtGridBranchTypeGroup",
              "txtGridBranchDiameter", branchMaterial_, branchTypeGroup_, branchDiameter_);

    auto* nodes = new QWidget(box);
    auto* grid = new QGridLayout(nodes);
    grid->setContentsMargins(0, 0, 0, 0);
    elevation_ = fields_.Number("txtGridElevation", NumberFieldKind::Elevation, UnitKind::Length);
    kFactor_ = fields_.Number("txtGridKFactor", NumberFieldKind::KFactor, UnitKind::K_Factor);
    areaGroup_ = fields_.Text("txtGridAreaGroup", TextFieldKind::AreaGroup);
    sprinklerArea_ =
        fields_.Number("txtGridSprinklerArea", NumberFieldKind::SprinklerArea, UnitKind::Area);
    AddBuilderRow(grid, 0, tr("Elevation"), elevation_, fields_.UnitLabel(elevation_));
    AddBuilderRow(grid, 1, tr("K-Factor"), kFactor_, fields_.UnitLabel(kFactor_));
    AddBuilderRow(grid, 2, tr("Area Group"), areaGroup_, nullptr);
    areaCaption_ =
        AddBuilderRow(grid, 3, QString(), sprinklerArea_, fields_.UnitLabel(sprinklerArea_));
    layout->addWidget(nodes);
    for (ValidatedField* field :
         {perimeterMaterial_, perimeterTypeGroup_, perimeterDiameter_, branchMaterial_,
          branchTypeGroup_, branchDiameter_, elevation_, kFactor_, areaGroup_, sprinklerArea_}) {
        Watch(field);
    }
    return box;
}

void GridBuilderTab::BindHeldValues() {
    using Data = GridBuilderData;
    held_.Bind(inputs_[GridIncrement], &Data::NodalNumberingIncrement);
    held_.Bind(inputs_[GridSourceNode], &Data::SourceNode);
    held_.Bind(inputs_[GridSourceEntryPoint], &Data::SourceEntryPoint);
    held_.Bind(inputs_[GridFirstBranch], &Data::DistanceToFirstBranch);
    held_.Bind(inputs_[GridBranchSpacing], &Data::DistanceBetweenBranchLines);
    held_.Bind(inputs_[GridBranchLines], &Data::NumberOfBranchLines);
    held_.Bind(inputs_[GridLeftFirst], &Data::LeftDistanceToFirstSprinkler);
    held_.Bind(inputs_[GridHeadSpacing], &Data::DistanceBetweenSprinklers);
    held_.Bind(inputs_[GridHeadsPerLine], &Data::SprinklersPerBranchLine);
    held_.Bind(inputs_[GridRightToPerimeter], &Data::RightDistanceToPerimeter);
    held_.Bind(perimeterMaterial_, &Data::PerimeterMaterial);
    held_.Bind(perimeterTypeGroup_, &Data::PerimeterTypeGroup);
    held_.Bind(perimeterDiameter_, &Data::PerimeterDiameter);
    held_.Bind(branchMaterial_, &Data::BranchMaterial);
    held_.Bind(branchTypeGroup_, &Data::BranchTypeGroup);
    held_.Bind(branchDiameter_, &Data::BranchDiameter);
    held_.Bind(elevation_, &Data::Elevation);
    held_.Bind(kFactor_, &Data::KFactor);
    held_.Bind(areaGroup_, &Data::AreaGroup);
    held_.Bind(sprinklerArea_, &Data::SprinklerArea);
}

void GridBuilderTab::ShowCaptions() {
    const bool hose = IsHoseDischarge(project_);
    for (int index = 0; index < GridInputCount; ++index) {
        captions_[static_cast<std::size_t>(index)]->setText(Text(GridInputCaption(index, hose)));
    }
    areaCaption_->setText(Text(VocabularyOf(DischargeWord(project_)).BuilderArea));
}

GridInputs GridBuilderTab::Inputs() const {
    GridInputs inputs;
    for (int index = 0; index < GridInputCount; ++index) {
        inputs.Network[static_cast<std::size_t>(index)] = FieldText(Input(index));
    }
    inputs.PerimeterMaterial = FieldText(perimeterMaterial_);
    inputs.PerimeterTypeGroup = FieldText(perimeterTypeGroup_);
    inputs.PerimeterDiameter = FieldText(perimeterDiameter_);
    inputs.BranchMaterial = FieldText(branchMaterial_);
    inputs.BranchTypeGroup = FieldText(branchTypeGroup_);
    inputs.BranchDiameter = FieldText(branchDiameter_);
    inputs.Elevation = FieldText(elevation_);
    inputs.KFactor = FieldText(kFactor_);
    inputs.AreaGroup = FieldText(areaGroup_);
    inputs.SprinklerArea = FieldText(sprinklerArea_);
    inputs.System = fields_.System();
    inputs.DecimalCharacter = fields_.DecimalCharacter();
    return inputs;
}

void GridBuilderTab::Load() {
    held_.Reset(project_.GridBuilderData);
    ShowHeld();
}

void GridBuilderTab::TakeTyped() {
    GridBuilderData fromTexts = held_.Values;
    StoreGridInputs(Inputs(), fromTexts);
    held_.TakeTyped(fromTexts);
}

void GridBuilderTab::Store() {
    TakeTyped();
    project_.GridBuilderData = held_.Values;
}

void GridBuilderTab::SwitchUnits(MeasureSystem system) {
    TakeTyped();
    fields_.SwitchUnits(system);
    ShowHeld();
}

void GridBuilderTab::ShowHeld() {
    const GridInputs shown =
        GridInputsFromData(held_.Values, fields_.System(), fields_.DecimalCharacter());
    for (int index = 0; index < GridInputCount; ++index) {
        ShowFieldText(inputs_[static_cast<std::size_t>(index)],
                      shown.Network[static_cast<std::size_t>(index)]);
    }
    ShowFieldText(perimeterMaterial_, shown.PerimeterMaterial);
    ShowFieldText(perimeterTypeGroup_, shown.PerimeterTypeGroup);
    ShowFieldText(perimeterDiameter_, shown.PerimeterDiameter);
    ShowFieldText(branchMaterial_, shown.BranchMaterial);
    ShowFieldText(branchTypeGroup_, shown.BranchTypeGroup);
    ShowFieldText(branchDiameter_, shown.BranchDiameter);
    ShowFieldText(elevation_, shown.Elevation);
    ShowFieldText(kFactor_, shown.KFactor);
    ShowFieldText(areaGroup_, shown.AreaGroup);
    ShowFieldText(sprinklerArea_, shown.SprinklerArea);
}

void GridBuilderTab::FocusOn(const BuilderFocus& focus) {
    switch (focus.Control) {
    case BuilderControl::NetworkInput:
        if (focus.Index >= 0 && focus.Index < GridInputCount) {
            Input(focus.Index)->setFocus();
        }
        break;
    case BuilderControl::MainMaterial:
        perimeterMaterial_->setFocus();
        break;
    case BuilderControl::BranchMaterial:
        branchMaterial_->setFocus();
        break;
    case BuilderControl::None:
        break;
    }
}

void GridBuilderTab::CreateGrid() {
    const GridInputs inputs = Inputs();
    BuildResult result;
    const auto build = [&] { result = quench::CreateGrid(project_, library_, dialogs_, inputs); };
    if (RecordEdit) {
        RecordEdit(build);
    } else {
        build();
    }
    if (!result.Built()) {
        FocusOn(result.Focus);
        return;
    }
    Store();
    emit RowsBuilt();
}

void GridBuilderTab::DisplayNetwork() {
    const GridInputs inputs = Inputs();
    BuilderFocus focus;
    if (!CheckGridInputs(inputs, dialogs_, &focus)) {
        FocusOn(focus);
        return;
    }
    const GridLayout layout = LayOutGrid(inputs, project_);
    const std::string limit = GridPrintoutLimitMessage(layout.HeadsPerLine, layout.BranchLines);
    if (!limit.empty()) {
        dialogs_.ShowMessage(MessageStyle::Information, builder_words::ProgramTitle, limit);
    }
    if (preview_ == nullptr) {
        preview_ = new NetworkLayoutWindow("frmGrid", this);
    }
    preview_->ShowDrawing(DrawNetwork(SketchOfPlan(layout.Pipes, GridPrintedPart)));
    preview_->show();
    preview_->raise();
}

} // namespace quench::gui
