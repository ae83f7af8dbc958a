#pragma once

// The Tree tab of frmEEPipeData: the inputs of the tree builder in the units on screen, the
// estimate of the tree's size, "Tree Creation" and "Display Network". The rules are those of
// the tree builder; this tab holds the texts, kept in the model in US units by Store.

#include "core/dialogs.h"
#include "core/project.h"
#include "entry/tree_builder.h"
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

class TreeBuilderTab : public QWidget {
    Q_OBJECT

public:
    TreeBuilderTab(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                   MeasureSystem system, char decimalCharacter, QWidget* parent = nullptr);
    ~TreeBuilderTab() override;

    // The fields from TreeBuilderData, and TreeBuilderData from the fields.
    void Load();
    void Store();
    // The texts in another system: the values stay, converted through the stored US values.
    void SwitchUnits(MeasureSystem system);
    // The captions in the project's discharge word.
    void ShowCaptions();
    TreeInputs Inputs() const;

    // "Tree Creation" and "Display Network".
    void CreateTree();
    void DisplayNetwork();

    ValidatedField* Input(int index) const { return inputs_[static_cast<std::size_t>(index)]; }
    QLabel* Calculated(int index) const { return calculated_[static_cast<std::size_t>(index)]; }
    QLabel* RowsLabel() const { return rows_; }
    QLabel* SprinklersPerRowLabel() const { return sprinklersPerRow_; }
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
    void ShowEstimate();
    void FocusOn(const BuilderFocus& focus);

    Project& project_;
    const PipeLibrary& library_;
    Dialogs& dialogs_;
    BuilderFields fields_;
    HeldInputs<TreeBuilderData> held_;
    std::array<ValidatedField*, TreeInputCount> inputs_{};
    std::array<QLabel*, TreeInputCount> captions_{};
    std::array<QLabel*, TreeInputCount> calculated_{};
    ValidatedField* crossMaterial_ = nullptr;
    ValidatedField* crossTypeGroup_ = nullptr;
    ValidatedField* crossDiameter_ = nullptr;
    ValidatedField* branchMaterial_ = nullptr;
    ValidatedField* branchTypeGroup_ = nullptr;
    ValidatedField* branchDiameter_ = nullptr;
    ValidatedField* elevation_ = nullptr;
    ValidatedField* kFactor_ = nullptr;
    ValidatedField* areaGroup_ = nullptr;
    ValidatedField* sprinklerArea_ = nullptr;
    ValidatedField* maxBranchSpacing_ = nullptr;
    ValidatedField* maxSprinklerSpacing_ = nullptr;
    QLabel* areaCaption_ = nullptr;
    QLabel* maxSpacingCaption_ = nullptr;
    QLabel* sprinklersCaption_ = nullptr;
    QLabel* rows_ = nullptr;
    QLabel* sprinklersPerRow_ = nullptr;
    QPointer<NetworkLayoutWindow> preview_;
};

} // namespace quench::gui
