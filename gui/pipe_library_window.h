#pragma once

// frmEEPipeLibrary: one material of the pipe library and one diameter of it. The rules live in
// PipeLibraryEditor; this window lays out the fields, shows stored values in the unit system
// chosen and hands each edit back in the library's units.

#include "core/dialogs.h"
#include "core/units.h"
#include "entry/pipe_library_editor.h"
#include "library/pipe_library.h"

#include <array>
#include <string_view>

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quench::gui {

class PipeLibraryWindow : public QDialog {
    Q_OBJECT

public:
    PipeLibraryWindow(PipeLibrary& library, Dialogs& dialogs, MeasureSystem system,
                      QWidget* parent = nullptr);

    static constexpr std::string_view ScreenName = "frmEEPipeLibrary";

    PipeLibraryEditor& Rules() { return editor_; }
    MeasureSystem System() const { return system_; }
    void SwitchUnits(MeasureSystem system);

    // The fields by their screen names.
    QComboBox* cboPipeDescription() const { return materials_; }
    QLineEdit* txtPipeName() const { return name_; }
    QLineEdit* txtPipeCValue() const { return cValue_; }
    QComboBox* cboNominalDia() const { return diameters_; }
    QLineEdit* txtInnerDia() const { return fields_[0]; }
    QLineEdit* txtOuterDia() const { return fields_[1]; }
    QLineEdit* txtFitEqLen(int fitting) const { return fittings_.at(0).at(fitting); }
    QComboBox* uomSystem() const { return units_; }
    // Every value field of a diameter in screen order: the five of the pipe, then the seven
    // fittings' equivalent lengths, costs, labour and weights.
    QLineEdit* DiameterField(int index) const;
    static constexpr int DiameterFieldCount = 5 + 4 * LibraryFittingKinds;

    // The tool keys: "ToolAddNewDiameter", "ToolRemoveADiameter", "ToolCopyPipe", "ToolSave",
    // "ToolCancel". A new diameter is the text typed in cboNominalDia; a copy's source is the
    // material chosen in the copy list.
    void Command(std::string_view key);
    QComboBox* CopySource() const { return copySource_; }

    // Close: with edits not saved the user is asked first; No keeps the screen open.
    void reject() override;

signals:
    // The library file was written: screens listing materials show them again.
    void LibrarySaved();

private:
    void BuildLayout();
    void Show();
    void ShowMaterialList();
    void ShowDiameter();
    void ShowUnitWords();
    void MaterialChosen(int index);
    void DiameterChosen(int index);
    void NameEdited();
    void CValueEdited();
    void DiameterEdited();
    PipeDiameterRecord DiameterFromFields() const;

    PipeLibrary& library_;
    PipeLibraryEditor editor_;
    Dialogs& dialogs_;
    MeasureSystem system_;
    bool showing_ = false;
    QComboBox* materials_;
    QLineEdit* name_;
    QLineEdit* cValue_;
    QComboBox* diameters_;
    QComboBox* units_;
    QComboBox* copySource_;
    std::array<QLineEdit*, 5> fields_{};
    std::array<QLabel*, 9> labels_{}; // the five of the pipe, the four rows of the fittings
    std::array<std::array<QLineEdit*, LibraryFittingKinds>, 4> fittings_{};
};

} // namespace quench::gui
