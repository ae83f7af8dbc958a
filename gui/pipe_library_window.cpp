#include "gui/pipe_library_window.h"

#include "core/formats.h"
#include "core/text.h"
#include "gui/qt_text.h"

#include <algorithm>
#include <optional>

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quench::gui {
namespace {

constexpr const char* CloseWithChangesText =
    "Data for the last specified pipe material has been changed.  Do you really want to discard "
    "changes and close the pipe materials library?";

constexpr std::array<const char*, LibraryFittingKinds> FittingNames = {"45E", "90E", "LTE", "T&&C",
                                                                       "B",   "G",   "CHV"};
constexpr std::array<const char*, 4> FittingRowNames = {"Equivalent length", "Cost", "Labour",
                                                        "Weight"};

// The unit kind a diameter field converts with; nothing for a field shown as stored ($, hours).
std::optional<UnitKind> FieldKind(int index) {
    switch (index) {
    case 0:
    case 1:
        return UnitKind::Fine_Length;
    case 2:
    case 3:
        return UnitKind::Cost_Rate; // per foot of pipe
    case 4:
        return UnitKind::Mass_Rate;
    default:
        break;
    }
    const int row = (index - 5) / LibraryFittingKinds;
    if (row == 0) {
        return UnitKind::Length;
    }
    if (row == 3) {
        return UnitKind::Mass;
    }
    return std::nullopt;
}

Single& FieldValue(PipeDiameterRecord& record, int index) {
    switch (index) {
    case 0:
        return record.Inner;
    case 1:
        return record.Outer;
    case 2:
        return record.MaterialCost;
    case 3:
        return record.LaborCost;
    case 4:
        return record.Weight;
    default:
        break;
    }
    const int row = (index - 5) / LibraryFittingKinds;
    const int fitting = (index - 5) % LibraryFittingKinds;
    std::array<Single, LibraryFittingKinds>* rows[] = {&record.FitEqLen, &record.FitCost,
                                                       &record.FitLaborCost, &record.FitWeight};
    return rows[row]->at(fitting);
}

double Shown(std::optional<UnitKind> kind, double stored, MeasureSystem system) {
    return kind ? ShownValue(*kind, stored, system) : stored;
}

// A whole number shows without its decimal point ("12", not "12.").
QString Shown(const std::string& formatted) {
    QString text = Text(formatted);
    if (text.endsWith('.')) {
        text.chop(1);
    }
    return text;
}

QString DiameterText(Single nominal, MeasureSystem system) {
    return Text(Format(ShownValue(UnitKind::Fine_Length, nominal, system), "##0.0##"));
}

QString MaterialText(const PipeLibrary& library, int number) {
    const PipeMaterialRecord& material = library.Material(number);
    return QString("%1 - %2").arg(number).arg(material.IsDefined() ? Text(material.Description)
                                                                   : QString(NotYetDefinedName));
}

} // namespace

PipeLibraryWindow::PipeLibraryWindow(PipeLibrary& library, Dialogs& dialogs, MeasureSystem system,
                                     QWidget* parent)
    : QDialog(parent), library_(library), editor_(library, dialogs), dialogs_(dialogs),
      system_(system), materials_(new QComboBox), name_(new QLineEdit), cValue_(new QLineEdit),
      diameters_(new QComboBox), units_(new QComboBox), copySource_(new QComboBox) {
    setWindowTitle("Pipe Materials Library");
    setObjectName(Text(ScreenName));
    BuildLayout();
    ShowMaterialList();
    Show();
}

void PipeLibraryWindow::BuildLayout() {
    name_->setMaxLength(DescriptionLength);
    diameters_->setEditable(true);
    diameters_->setInsertPolicy(QComboBox::NoInsert);
    units_->addItems({"US units", "SI units"});
    units_->setCurrentIndex(system_ == MeasureSystem::SI ? 1 : 0);

    auto* top = new QFormLayout;
    top->addRow("Material", materials_);
    top->addRow("Name", name_);
    top->addRow("C value", cValue_);
    top->addRow("Nominal diameter", diameters_);
    top->addRow("Units", units_);

    auto* pipe = new QGridLayout;
    const std::array<const char*, 5> pipeNames = {"Inner diameter", "Outer diameter",
                                                  "Material cost", "Labour", "Weight"};
    for (int index = 0; index < 5; ++index) {
        fields_[index] = new QLineEdit;
        labels_[index] = new QLabel(pipeNames[index]);
        labels_[index]->setProperty("Caption", pipeNames[index]);
        pipe->addWidget(labels_[index], 0, index);
        pipe->addWidget(fields_[index], 1, index);
    }
    auto* fittings = new QGridLayout;
    for (int fitting = 0; fitting < LibraryFittingKinds; ++fitting) {
        fittings->addWidget(new QLabel(FittingNames[fitting]), 0, fitting + 1, Qt::AlignCenter);
    }
    for (int row = 0; row < 4; ++row) {
        labels_[5 + row] = new QLabel(FittingRowNames[row]);
        labels_[5 + row]->setProperty("Caption", FittingRowNames[row]);
        fittings->addWidget(labels_[5 + row], row + 1, 0);
        for (int fitting = 0; fitting < LibraryFittingKinds; ++fitting) {
            fittings_[row][fitting] = new QLineEdit;
            fittings_[row][fitting]->setMinimumWidth(60);
            fittings->addWidget(fittings_[row][fitting], row + 1, fitting + 1);
        }
    }
    auto* pipeBox = new QGroupBox("Pipe");
    pipeBox->setLayout(pipe);
    auto* fittingBox = new QGroupBox("Fittings");
    fittingBox->setLayout(fittings);

    auto* tools = new QHBoxLayout;
    const std::array<std::pair<const char*, const char*>, 5> keys = {
        {{"ToolAddNewDiameter", "&Add Diameter"},
         {"ToolRemoveADiameter", "&Remove Diameter"},
         {"ToolCopyPipe", "Copy &From"},
         {"ToolSave", "&Save"},
         {"ToolCancel", "&Cancel"}}};
    for (const auto& [key, caption] : keys) {
        auto* button = new QPushButton(caption);
        button->setObjectName(key);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, key] { Command(key); });
        tools->addWidget(button);
        if (std::string_view(key) == "ToolCopyPipe") {
            tools->addWidget(copySource_);
        }
    }
    auto* close = new QPushButton("C&lose");
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    tools->addStretch();
    tools->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(pipeBox);
    layout->addWidget(fittingBox);
    layout->addLayout(tools);

    connect(materials_, &QComboBox::activated, this, &PipeLibraryWindow::MaterialChosen);
    connect(diameters_, &QComboBox::activated, this, &PipeLibraryWindow::DiameterChosen);
    connect(name_, &QLineEdit::editingFinished, this, &PipeLibraryWindow::NameEdited);
    connect(cValue_, &QLineEdit::editingFinished, this, &PipeLibraryWindow::CValueEdited);
    connect(units_, &QComboBox::activated, this,
            [this](int index) { SwitchUnits(index == 1 ? MeasureSystem::SI : MeasureSystem::US); });
    for (int index = 0; index < DiameterFieldCount; ++index) {
        connect(DiameterField(index), &QLineEdit::editingFinished, this,
                &PipeLibraryWindow::DiameterEdited);
    }
}

QLineEdit* PipeLibraryWindow::DiameterField(int index) const {
    if (index < 5) {
        return fields_.at(index);
    }
    return fittings_.at((index - 5) / LibraryFittingKinds).at((index - 5) % LibraryFittingKinds);
}

void PipeLibraryWindow::SwitchUnits(MeasureSystem system) {
    // Edits typed in the old unit go into the editor first, so that only the showing changes.
    DiameterEdited();
    system_ = system;
    units_->setCurrentIndex(system == MeasureSystem::SI ? 1 : 0);
    Show();
}

void PipeLibraryWindow::ShowMaterialList() {
    const QSignalBlocker blockMaterials(materials_);
    const QSignalBlocker blockSources(copySource_);
    materials_->clear();
    copySource_->clear();
    for (int number = 1; number <= LibraryMaterials; ++number) {
        materials_->addItem(MaterialText(library_, number), number);
        if (library_.Material(number).IsDefined()) {
            copySource_->addItem(MaterialText(library_, number), number);
        }
    }
}

void PipeLibraryWindow::Show() {
    showing_ = true;
    const PipeMaterialRecord& material = editor_.Material();
    materials_->setCurrentIndex(editor_.MaterialNumber() - 1);
    name_->setText(Text(material.Description));
    cValue_->setText(QString::number(material.CValue));
    diameters_->clear();
    for (int slot = 0; slot < editor_.DiameterCount(); ++slot) {
        diameters_->addItem(DiameterText(material.Diameters.at(slot).Nominal, system_));
    }
    diameters_->setCurrentIndex(editor_.DiameterSlot());
    ShowUnitWords();
    ShowDiameter();
    showing_ = false;
}

void PipeLibraryWindow::ShowUnitWords() {
    const std::array<std::string, 9> words = {
        std::string(UnitWord(UnitKind::Fine_Length, system_)),
        std::string(UnitWord(UnitKind::Fine_Length, system_)),
        "$/" + std::string(UnitWord(UnitKind::Length, system_)),
        "h/" + std::string(UnitWord(UnitKind::Length, system_)),
        std::string(UnitWord(UnitKind::Mass_Rate, system_)),
        std::string(UnitWord(UnitKind::Length, system_)),
        "$",
        "h",
        std::string(UnitWord(UnitKind::Mass, system_))};
    for (std::size_t index = 0; index < words.size(); ++index) {
        labels_[index]->setText(QString("%1 (%2)").arg(
            labels_[index]->property("Caption").toString(), Text(words[index])));
    }
}

void PipeLibraryWindow::ShowDiameter() {
    const PipeDiameterRecord* shown = editor_.CurrentDiameter();
    PipeDiameterRecord record = shown != nullptr ? *shown : PipeDiameterRecord{};
    for (int index = 0; index < DiameterFieldCount; ++index) {
        QLineEdit* field = DiameterField(index);
        field->setEnabled(shown != nullptr);
        const double value = Shown(FieldKind(index), FieldValue(record, index), system_);
        field->setText(Shown(Format(value, index < 2 ? "##0.0##" : "##0.###")));
        field->setModified(false);
    }
}

void PipeLibraryWindow::MaterialChosen(int index) {
    DiameterEdited();
    editor_.ShowMaterial(index + 1);
    Show();
}

void PipeLibraryWindow::DiameterChosen(int index) {
    DiameterEdited();
    editor_.ShowDiameter(index);
    Show();
}

void PipeLibraryWindow::NameEdited() {
    if (!showing_ && name_->isModified()) {
        editor_.SetDescription(Utf8(name_->text()));
        name_->setModified(false);
    }
}

void PipeLibraryWindow::CValueEdited() {
    if (showing_ || !cValue_->isModified()) {
        return;
    }
    cValue_->setModified(false);
    const std::string text = Utf8(cValue_->text());
    if (!IsNumeric(text)) {
        dialogs_.ShowMessage(MessageStyle::Warning, InputDataErrorTitle,
                             "The C value must be a whole number.");
    } else {
        editor_.SetCValue(static_cast<Integer>(std::clamp(ToNumber(text), -32768.0, 32767.0)));
        editor_.LeaveCValueField();
    }
    cValue_->setText(QString::number(editor_.Material().CValue));
}

PipeDiameterRecord PipeLibraryWindow::DiameterFromFields() const {
    PipeDiameterRecord record = *editor_.CurrentDiameter();
    for (int index = 0; index < DiameterFieldCount; ++index) {
        const QLineEdit* field = DiameterField(index);
        // Only what was typed is read back: a value merely shown keeps its stored precision.
        if (!field->isModified() || !IsNumeric(Utf8(field->text()))) {
            continue;
        }
        const double shown = ToNumber(Utf8(field->text()));
        const std::optional<UnitKind> kind = FieldKind(index);
        FieldValue(record, index) =
            static_cast<Single>(kind ? StoredValue(*kind, shown, system_) : shown);
    }
    return record;
}

void PipeLibraryWindow::DiameterEdited() {
    if (showing_ || editor_.CurrentDiameter() == nullptr) {
        return;
    }
    bool typed = false;
    for (int index = 0; index < DiameterFieldCount; ++index) {
        QLineEdit* field = DiameterField(index);
        if (field->isModified() && !IsNumeric(Utf8(field->text()))) {
            dialogs_.ShowMessage(MessageStyle::Warning, InputDataErrorTitle,
                                 "Please enter a number in this field.");
            field->setModified(false);
        }
        typed = typed || field->isModified();
    }
    if (!typed) {
        ShowDiameter();
        return;
    }
    editor_.SetDiameterData(DiameterFromFields());
    ShowDiameter();
}

void PipeLibraryWindow::reject() {
    NameEdited();
    CValueEdited();
    DiameterEdited();
    if (editor_.HasChanges() &&
        dialogs_.Ask(Buttons::YesNo, Answer::No, MessageStyle::Question, DiscardChangesTitle,
                     CloseWithChangesText) != Answer::Yes) {
        return;
    }
    QDialog::reject();
}

void PipeLibraryWindow::Command(std::string_view key) {
    NameEdited();
    CValueEdited();
    DiameterEdited();
    if (key == "ToolAddNewDiameter") {
        std::string typed = Trim(Utf8(diameters_->currentText()));
        // The editor reads a new diameter in inches; a millimetre value is turned into them here.
        if (system_ == MeasureSystem::SI && IsNumeric(typed)) {
            typed = Str(FromSI(UnitKind::Fine_Length, ToNumber(typed)));
        }
        editor_.AddDiameter(typed);
    } else if (key == "ToolRemoveADiameter") {
        editor_.RemoveDiameter();
    } else if (key == "ToolCopyPipe") {
        if (copySource_->currentIndex() >= 0) {
            editor_.CopyFrom(copySource_->currentData().toInt());
        }
    } else if (key == "ToolSave") {
        if (editor_.Save()) {
            ShowMaterialList();
            emit LibrarySaved();
        }
    } else if (key == "ToolCancel") {
        editor_.Cancel();
    }
    Show();
}

} // namespace quench::gui
