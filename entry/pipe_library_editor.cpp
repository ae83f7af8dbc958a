#include "entry/pipe_library_editor.h"

#include "core/formats.h"
#include "core/text.h"
#include "library/equivalent_length.h"
#include "library/pipe_library_file.h"

#include <algorithm>

namespace quench {

namespace {

constexpr Single LargestNominal = 32; // inch, the limit of a diameter field

constexpr const char* BlankDiameterText =
    "You must enter a value for the new pipe diameter before you can add it to the pipe "
    "database.  Please enter this diameter or cancel.";
constexpr const char* NonNumericDiameterText =
    "You must enter a numeric value for a new pipe diameter.  Please enter this diameter or "
    "cancel.";
constexpr const char* MaximumDiametersText =
    "The maximum number of pipe diameters allowed for a given pipe type is 15.  If you add "
    "another diameter here, the largest diameter for the current pipe type will be erased to "
    "make room.  Are you sure you want to continue?";
constexpr const char* CopyNeedsNameText =
    "You need to enter a name for the new pipe before you can copy from another pipe type.";
constexpr const char* PartialFittingsText =
    "All Fitting Equivalent Lengths Should Be Given For the Current Diameter.";
constexpr const char* NoFittingDataText =
    "At least one diameter with fitting data should be provided for this pipe.";
constexpr const char* NoInnerDiameterText =
    "An inner diameter must be entered for this pipe diameter.";
constexpr const char* ConfirmLibrarySaveText = "Do you really want to update pipe database?";
constexpr const char* DiscardDiameterText =
    "Data for the last specified pipe diameter has been changed.  Do you really want to discard "
    "changes and view this new pipe diameter?";
constexpr const char* DiscardMaterialText =
    "Data for the last specified pipe material has been changed.  Do you really want to discard "
    "changes and view this new pipe material?";

bool IsEmptySlot(const PipeDiameterRecord& diameter) {
    return diameter.Nominal == 0;
}

int GivenFittingLengths(const PipeDiameterRecord& diameter) {
    return static_cast<int>(std::count_if(diameter.FitEqLen.begin(), diameter.FitEqLen.end(),
                                          [](Single length) { return length != 0; }));
}

// The diameters to the front, in their order; empty slots after them.
void PackDiameters(PipeMaterialRecord& material) {
    std::stable_partition(material.Diameters.begin(), material.Diameters.end(),
                          [](const PipeDiameterRecord& d) { return !IsEmptySlot(d); });
}

} // namespace

PipeLibraryEditor::PipeLibraryEditor(PipeLibrary& library, Dialogs& dialogs, Integer unitSystem)
    : library_(library), dialogs_(dialogs), unitSystem_(unitSystem) {
    Load(1);
}

int PipeLibraryEditor::DiameterCount() const {
    return static_cast<int>(std::count_if(material_.Diameters.begin(), material_.Diameters.end(),
                                          [](const auto& d) { return !IsEmptySlot(d); }));
}

const PipeDiameterRecord* PipeLibraryEditor::CurrentDiameter() const {
    return slot_ < 0 ? nullptr : &material_.Diameters[slot_];
}

bool PipeLibraryEditor::ShowMaterial(int number) {
    if (!IsLibraryMaterial(number)) {
        return false;
    }
    if (number == number_) {
        return true;
    }
    if (HasChanges() && !ConfirmDiscard(DiscardMaterialText)) {
        return false;
    }
    Load(number);
    return true;
}

bool PipeLibraryEditor::ShowDiameter(int slot) {
    if (slot < 0 || slot >= DiameterCount()) {
        return false;
    }
    if (slot == slot_) {
        return true;
    }
    if (diameterEdited_) {
        if (!ConfirmDiscard(DiscardDiameterText)) {
            return false;
        }
        material_.Diameters[slot_] = shownDiameter_;
    }
    ShowSlot(slot);
    return true;
}

void PipeLibraryEditor::SetDescription(std::string_view name) {
    material_.Description = TrimRight(name.substr(0, DescriptionLength));
    materialEdited_ = true;
}

void PipeLibraryEditor::SetCValue(Integer value) {
    material_.CValue = value;
    materialEdited_ = true;
}

void PipeLibraryEditor::SetDiameterData(const PipeDiameterRecord& data) {
    if (slot_ < 0) {
        return;
    }
    const Single nominal = material_.Diameters[slot_].Nominal;
    material_.Diameters[slot_] = data;
    material_.Diameters[slot_].Nominal = nominal;
    diameterEdited_ = true;
}

void PipeLibraryEditor::LeaveCValueField() {
    if (material_.CValue < 1) {
        dialogs_.ShowMessage(MessageStyle::Warning, "", ValueTooLowText);
        SetCValue(1);
    }
}

bool PipeLibraryEditor::AddDiameter(std::string_view text) {
    Single nominal = 0;
    if (!ReadNewDiameter(text, nominal)) {
        return false;
    }
    const int count = DiameterCount();
    for (int slot = 0; slot < count; ++slot) {
        if (material_.Diameters[slot].Nominal == nominal) {
            ShowDiameter(slot);
            return false;
        }
    }
    if (count == DiametersPerMaterial && !MakeRoom()) {
        return false;
    }
    InsertDiameter(nominal);
    return true;
}

bool PipeLibraryEditor::RemoveDiameter() {
    if (slot_ < 0) {
        return false;
    }
    auto& diameters = material_.Diameters;
    std::move(diameters.begin() + slot_ + 1, diameters.end(), diameters.begin() + slot_);
    diameters.back() = PipeDiameterRecord{};
    const int count = DiameterCount();
    ShowSlot(count == 0 ? -1 : std::min(slot_, count - 1));
    materialEdited_ = true;
    return true;
}

bool PipeLibraryEditor::CopyFrom(int source) {
    if (!material_.IsDefined()) {
        Refuse(CopyNeedsNameText);
        return false;
    }
    if (!IsLibraryMaterial(source)) {
        return false;
    }
    material_.Diameters = library_.Material(source).Diameters;
    PackDiameters(material_);
    ShowSlot(DiameterCount() > 0 ? 0 : -1);
    materialEdited_ = true;
    return true;
}

bool PipeLibraryEditor::Save() {
    if (!Validate()) {
        return false;
    }
    if (dialogs_.Ask(Buttons::YesNo, Answer::Yes, MessageStyle::Question, ConfirmLibrarySaveTitle,
                     ConfirmLibrarySaveText) != Answer::Yes) {
        return false;
    }
    PipeLibrary updated = library_;
    updated.Material(number_) = material_;
    const LibrarySaveResult result = SavePipeLibrary(updated, library_.File);
    if (!result.Saved) {
        dialogs_.ShowMessage(MessageStyle::Critical, LibraryWriteErrorTitle,
                             "The pipe database could not be saved: " + result.Error + ".");
        return false;
    }
    library_.Material(number_) = material_;
    library_.FileFound = true;
    ShowSlot(slot_);
    materialEdited_ = false;
    return true;
}

void PipeLibraryEditor::Cancel() {
    Load(number_);
}

int PipeLibraryEditor::NextFreeMaterial(const PipeLibrary& library) {
    for (int number = 1; number <= LibraryMaterials; ++number) {
        if (!library.Material(number).IsDefined()) {
            return number;
        }
    }
    return 0;
}

void PipeLibraryEditor::Load(int number) {
    number_ = number;
    material_ = library_.Material(number);
    PackDiameters(material_);
    materialEdited_ = false;
    ShowSlot(DiameterCount() > 0 ? 0 : -1);
}

void PipeLibraryEditor::ShowSlot(int slot) {
    slot_ = slot;
    shownDiameter_ = slot < 0 ? PipeDiameterRecord{} : material_.Diameters[slot];
    diameterEdited_ = false;
}

bool PipeLibraryEditor::ConfirmDiscard(const char* text) {
    return dialogs_.Ask(Buttons::YesNo, Answer::No, MessageStyle::Question, DiscardChangesTitle,
                        text) == Answer::Yes;
}

// The typed value in inches. In SI it is typed in millimetres and kept as the pipe editor will
// look it up: converted and rounded to two decimals.
bool PipeLibraryEditor::ReadNewDiameter(std::string_view text, Single& nominal) {
    if (TrimmedView(text).empty()) {
        Refuse(BlankDiameterText);
        return false;
    }
    double value = IsNumeric(text) ? ToNumber(text) : 0;
    if (IsSIUnitSystem(unitSystem_)) {
        value = ToNumber(Format(FromSI(UnitKind::Fine_Length, value), "###,##0.00"));
    }
    if (!(value > 0 && value <= LargestNominal)) {
        Refuse(NonNumericDiameterText);
        return false;
    }
    nominal = static_cast<Single>(value);
    return true;
}

// With all 15 slots taken, the largest diameter goes when the user agrees.
bool PipeLibraryEditor::MakeRoom() {
    if (dialogs_.Ask(Buttons::YesNo, Answer::No, MessageStyle::Question, MaximumDiametersTitle,
                     MaximumDiametersText) != Answer::Yes) {
        return false;
    }
    auto& diameters = material_.Diameters;
    const auto largest = std::max_element(
        diameters.begin(), diameters.end(),
        [](const auto& left, const auto& right) { return left.Nominal < right.Nominal; });
    std::move(largest + 1, diameters.end(), largest);
    diameters.back() = PipeDiameterRecord{};
    return true;
}

// In ascending order of the nominal; the edits of the diameter shown stay with the material.
void PipeLibraryEditor::InsertDiameter(Single nominal) {
    auto& diameters = material_.Diameters;
    const int count = DiameterCount();
    int position = 0;
    while (position < count && diameters[position].Nominal < nominal) {
        ++position;
    }
    std::move_backward(diameters.begin() + position, diameters.begin() + count,
                       diameters.begin() + count + 1);
    diameters[position] = PipeDiameterRecord{};
    diameters[position].Nominal = nominal;
    ShowSlot(position);
    materialEdited_ = true;
}

bool PipeLibraryEditor::Validate() {
    const PipeDiameterRecord* current = CurrentDiameter();
    const auto fail = [this](const char* text) {
        dialogs_.ShowMessage(MessageStyle::Warning, InputDataErrorTitle, text);
        return false;
    };
    if (current != nullptr) {
        const int given = GivenFittingLengths(*current);
        if (given > 0 && given < LibraryFittingKinds) {
            return fail(PartialFittingsText);
        }
    }
    if (std::none_of(material_.Diameters.begin(), material_.Diameters.end(),
                     [](const auto& d) { return GivenFittingLengths(d) > 0; })) {
        return fail(NoFittingDataText);
    }
    if (current != nullptr && current->Inner == 0) {
        return fail(NoInnerDiameterText);
    }
    return true;
}

void PipeLibraryEditor::Refuse(const char* text) {
    dialogs_.ShowMessage(MessageStyle::Warning, "", text);
}

} // namespace quench
