#pragma once

// The rules of the Calculation screen (frmCalculation) without its widgets: its fields with their
// labels, limits, decimals and help keys, the options and check boxes, which fields the mode and
// the imbalance option enable, the words that follow the discharge word and the unit system, and
// the load and store of the fields.
//
// Every accepted edit reaches the model at once, converted to US units: the screen keeps only the
// texts it shows. Switching units shows the stored values again in the other system and never
// changes them. The Calculate command gets the screen as the run reads it, in US units.

#include "calc/calculation_screen.h"
#include "calc/results_screen.h"
#include "core/project.h"
#include "core/units.h"
#include "entry/field_attributes.h"
#include "entry/field_rules.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quench {

constexpr int TypeGroupLines = 10; // the groups a pipe can have, 1 to 10

enum class CalculationField : int {
    CalculationComment,
    MinPressureAtHMDNode,
    MinimumDesiredDensity,
    InflowResidualPressure1,
    InflowResidualPressure2,
    InflowResidualPressure3,
    MaximumNodePressureImbalance,
    AverageNodalPressure,
    InitialDampingFactor,
    MinimumDampingFactor,
    MaxWaterVelocity,
    MaxFrictionalLoss,
    TypeGroupMin1,
    TypeGroupMax1 = TypeGroupMin1 + TypeGroupLines,
    Count = TypeGroupMax1 + TypeGroupLines,
};

constexpr int CalculationFieldCount = static_cast<int>(CalculationField::Count);

// The fields of type group `group` (1 to 10).
CalculationField TypeGroupMinField(int group);
CalculationField TypeGroupMaxField(int group);

enum class CalculationOption {
    DemandMode,
    SupplyMode,
    MaximumNodalPressure,
    AverageNodalPressure,
    ConvFlowImbalance,
    UseAutomaticPeaking,
    UseResidualPressureEstimate,
    OscillationEstimate,
    FrictLoss,
    DoNotIncrSize,
};

struct CalculationFieldInfo {
    std::string_view Control;              // the control's name, "txtMinPressureAtHMDNode"
    std::string_view Label;                // with the discharge word "Sprinkler" where it stands
    std::optional<NumberFieldKind> Number; // none: a text field
    std::optional<UnitKind> Unit;
    std::string_view HelpKey;
};

struct CalculationOptionInfo {
    std::string_view Control;
    std::string_view Caption;
    std::string_view HelpKey;
};

const CalculationFieldInfo& FieldInfo(CalculationField field);
const CalculationOptionInfo& OptionInfo(CalculationOption option);

// Captions of the screen.
namespace calculation_words {
inline constexpr std::string_view Title = "Calculation";
inline constexpr std::string_view DataTab = "Calculation Data";
inline constexpr std::string_view SizingTab = "Pipe Sizing/Constraints";
inline constexpr std::string_view ResultsTab = "Results";
inline constexpr std::string_view ModeFrame = "Calculation Mode";
inline constexpr std::string_view ImbalanceFrame = "Imbalance";
inline constexpr std::string_view TypeGroupFrame = "Pipe Sizing Constraint For Type Group";
inline constexpr std::string_view Optional = "Optional";
inline constexpr std::string_view Required = "Required";
inline constexpr std::string_view SizingNote =
    "Only pipe sections with no specified diameter and/or pipe with diameters shown in red on the "
    "edit pipe data screen (Enter/Edit Data Screen) will be automatically sized using the "
    "parameters below.   Note that the autosizing feature can cause calculation difficulty, use "
    "with caution. Optimization of pipe sizing is generally best performed by choosing the "
    "diameters by hand.";
inline constexpr std::string_view FrictionLabelUs =
    "Maximum Allowable Frictional Loss Per 100' of Pipe";
inline constexpr std::string_view FrictionLabelSi =
    "Maximum Allowable Frictional Loss Per 30.48 m of Pipe";
inline constexpr std::string_view Calculate = "Calculate";
inline constexpr std::string_view Calculating = "Calculating...";
inline constexpr std::string_view PleaseWait = "Please Wait ...";
inline constexpr std::string_view Display = "Display";
inline constexpr std::string_view Cancel = "Cancel";
} // namespace calculation_words

class CalculationDataScreen {
public:
    CalculationDataScreen(Project& project, MeasureSystem system, char decimalCharacter = '.');

    MeasureSystem System() const { return system_; }
    char DecimalCharacter() const { return decimalCharacter_; }

    // CalculationDataToScreen: every field and option from the model, in the unit on screen.
    void Load();

    const std::string& Text(CalculationField field) const;
    // An accepted edit of the user: the text is kept and its value stored in the model (in US
    // units), and InputChanged is set. Texts that no field can hold are emptied first.
    void Edit(CalculationField field, std::string_view text);
    // Leaving a field: a value below the minimum becomes the minimum (TooLow asks for the
    // message ValueTooLowText), an empty text becomes 0. A changed text is stored as an edit.
    LeaveOutcome Leave(CalculationField field);

    bool Option(CalculationOption option) const;
    // A click of an option or check box. A mode or imbalance option selects itself and clears
    // its partner; the imbalance field of the option not chosen is emptied and its value is 0.
    void SetOption(CalculationOption option, bool on);

    // Enabling: the demand fields in Demand mode, the inflow pressures in Supply mode, the
    // imbalance field of the chosen option.
    bool IsEnabled(CalculationField field) const;
    bool RequiredLabelVisible() const;

    // Labels in the discharge word and the unit system of the screen.
    std::string Label(CalculationField field) const;
    std::string DischargeWord() const;
    // lblSystemInflowNodeNumber and its two partners (1 to 3): the node numbers, "" for none.
    std::string InflowNodeNumber(int line) const;

    // The limits in the unit on screen, and the status line while the field has focus.
    NumberAttribute Attribute(CalculationField field) const;
    TextAttribute TextLimits(CalculationField field) const;
    std::string UnitWord(CalculationField field) const;
    std::string StatusText(CalculationField field) const;
    // A text as the field's change test leaves it.
    std::string TestOnChange(CalculationField field, std::string_view text) const;

    // The unit switch: the fields show the stored values in the other system.
    void SwitchUnits(MeasureSystem system);

    // The screen as the run reads it: US units, the options, the inflow node numbers.
    CalculationScreen RunRecord() const;

    // The Results tab from the stored summary, in the unit system of the screen.
    ResultsScreen Results() const;

    // While set, edits are the code's own (a load, a unit switch) and store nothing.
    bool Guarded() const { return guard_; }

private:
    std::size_t Index(CalculationField field) const;
    double StoredNumber(CalculationField field) const;
    void Store(CalculationField field, double usValue);
    std::string Shown(CalculationField field) const;
    std::string ValueText(CalculationField field, double usValue) const;
    std::string DisplayFormat(CalculationField field) const;
    bool ImbalanceFieldShown(CalculationField field) const;

    Project& project_;
    MeasureSystem system_;
    char decimalCharacter_;
    std::array<std::string, CalculationFieldCount> texts_;
    bool oscillationEstimate_ = false;
    bool guard_ = false;
};

} // namespace quench
