#pragma once

// The Grid tab of frmEEPipeData: the inputs of the grid builder in the units on screen, "Grid
// Creation" and "Display Network". The rules are those of the grid builder; this tab holds the
// texts, kept in the model in US units by Store.

#include "core/dialogs.h"
#include "core/project.h"
#include "entry/grid_builder.h"
#include "gui/builder_tab_parts.h"
#include "gui/network_layout_window.h"
#include "library/pipe_library.h"

#include <array>
#include <functional>

#include <QPointer>
#include <QWidget>

class QLabel;

namespace quench::gui {

class ValidatedField;

class GridBuilderTab : public QWidget {
    Q_OBJECT

public:
    GridBuilderTab(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                   MeasureSystem system, char decimalCharacter, QWidget* parent = nullptr);
    ~GridBuilderTab() override;

    // The fields from GridBuilderData, and GridBuilderData from the fields.
    void Load();
    void Store();
    // The texts in another system: the values stay, converted through the stored US values.
    void SwitchUnits(MeasureSystem system);
    // The captions in the project's discharge word.
    void ShowCaptions();
    GridInputs Inputs() const;

    // "Grid Creation" and "Display Network".
    void CreateGrid();
    void DisplayNetwork();

    ValidatedField* Input(int index) const { return inputs_[static_cast<std::size_t>(index)]; }
    // The open preview, null before the first "Display Network".
    NetworkLayoutWindow* Preview() const { return preview_; }

    // Runs a change of the rows as one step of the pipe table's history; without it the change
    // runs as it is.
    std::function<void(const std::function<void()>&)> RecordEdit;

signals:
    void RowsBuilt();
    void StatusTextWanted(const QString& text);

private:
    void BuildLayout();
    QWidget* BuildInputColumn();
    QWidget* BuildPipeData();
    void BindHeldValues();
    void ShowHeld();
    void TakeTyped();
    void FocusOn(const BuilderFocus& focus);
    void Watch(ValidatedField* field);

    Project& project_;
    const PipeLibrary& library_;
    Dialogs& dialogs_;
    BuilderFields fields_;
    HeldInputs<GridBuilderData> held_;
    std::array<ValidatedField*, GridInputCount> inputs_{};
    std::array<QLabel*, GridInputCount> captions_{};
    ValidatedField* perimeterMaterial_ = nullptr;
    ValidatedField* perimeterTypeGroup_ = nullptr;
    ValidatedField* perimeterDiameter_ = nullptr;
    ValidatedField* branchMaterial_ = nullptr;
    ValidatedField* branchTypeGroup_ = nullptr;
    ValidatedField* branchDiameter_ = nullptr;
    ValidatedField* elevation_ = nullptr;
    ValidatedField* kFactor_ = nullptr;
    ValidatedField* areaGroup_ = nullptr;
    ValidatedField* sprinklerArea_ = nullptr;
    QLabel* areaCaption_ = nullptr;
    QPointer<NetworkLayoutWindow> preview_;
};

} // namespace quench::gui
