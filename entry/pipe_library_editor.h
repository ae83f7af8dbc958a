#pragma once

// The rules of the pipe library screen without its widgets. The screen edits one material at a
// time, and one diameter of it: edits live in the editor's copy of the material until Save puts
// it into the library and writes the file. Moving to another diameter or material with edits
// asks whether to discard them. Values are held in the library's units (inch, foot); a screen
// showing SI converts at its edge, except the typed text of a new diameter, read here.

#include "core/dialogs.h"
#include "entry/field_rules.h"
#include "library/pipe_library.h"

#include <string_view>

namespace quench {

constexpr const char* InputDataErrorTitle = "Input Data Error";
constexpr const char* DiscardChangesTitle = "Discard changes?";
constexpr const char* MaximumDiametersTitle = "Maximum number of diameters reached";
constexpr const char* ConfirmLibrarySaveTitle = "Confirm Pipe Database Save";
constexpr const char* LibraryWriteErrorTitle = "Pipe Database";

class PipeLibraryEditor {
public:
    // Opens on material 1. unitSystem 1 reads a typed new diameter in millimetres.
    PipeLibraryEditor(PipeLibrary& library, Dialogs& dialogs, Integer unitSystem = 0);

    int MaterialNumber() const { return number_; }
    // The material as edited, its diameters packed from slot 0.
    const PipeMaterialRecord& Material() const { return material_; }
    int DiameterCount() const;
    // The diameter shown: a slot below DiameterCount, or -1 when the material has none.
    int DiameterSlot() const { return slot_; }
    const PipeDiameterRecord* CurrentDiameter() const;
    bool HasChanges() const { return materialEdited_ || diameterEdited_; }

    // scrPipeRefNum and cboPipeDescription: shows material 1 to 50. With edits, the user is asked
    // first; false when the edits stay and the material shown does not change.
    bool ShowMaterial(int number);
    // cboNominalDia: shows another diameter of the material, asking first when the one shown was
    // edited; on Yes its edits are undone.
    bool ShowDiameter(int slot);

    // The fields. A name is cut to 30 characters; the nominal of a diameter changes only by adding
    // and removing diameters.
    void SetDescription(std::string_view name);
    void SetCValue(Integer value);
    void SetDiameterData(const PipeDiameterRecord& data);
    // Leaving txtPipeCValue: a C value below its minimum is set to the least whole C, 1, with
    // the message ValueTooLowText.
    void LeaveCValueField();

    // ToolAddNewDiameter with the typed text. The diameter goes in ascending order and is shown;
    // when 15 are there the user may let the largest go. A diameter the material has already is
    // simply shown. False when nothing was added.
    bool AddDiameter(std::string_view text);
    // ToolRemoveADiameter: the diameter shown goes and the list closes up.
    bool RemoveDiameter();
    // ToolCopyPipe: the diameters of library material `source` replace this material's. The
    // material needs a name first.
    bool CopyFrom(int source);
    // ToolSave: checks, asks, and writes the library file. True when the material was saved.
    bool Save();
    // ToolCancel: the material again as the library holds it.
    void Cancel();

    // The first material without a name, where a new one goes; 0 when all 50 are taken.
    static int NextFreeMaterial(const PipeLibrary& library);

private:
    void Load(int number);
    void ShowSlot(int slot);
    bool ConfirmDiscard(const char* text);
    bool ReadNewDiameter(std::string_view text, Single& nominal);
    bool MakeRoom();
    void InsertDiameter(Single nominal);
    bool Validate();
    void Refuse(const char* text);

    PipeLibrary& library_;
    Dialogs& dialogs_;
    Integer unitSystem_;
    int number_ = 1;
    PipeMaterialRecord material_;
    int slot_ = -1;
    PipeDiameterRecord shownDiameter_; // the diameter as it was when shown, to undo its edits
    bool materialEdited_ = false;
    bool diameterEdited_ = false;
};

} // namespace quench
