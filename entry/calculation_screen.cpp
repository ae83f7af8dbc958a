#include "entry/calculation_screen.h"

#include "calc/independent_check.h"
#include "core/formats.h"
#include "core/text.h"

#include <algorithm>
#include <type_traits>

namespace quench {

namespace {

using enum CalculationField;
using Kind = NumberFieldKind;

constexpr std::string_view SprinklerWord = "Sprinkler";

constexpr std::array<CalculationFieldInfo, 12> MainFields{{
    {"txtCalculationComment", "Calculation Comment:", std::nullopt, std::nullopt, ""},
    {"txtMinPressureAtHMDNode", "Minimum Residual Pressure At HMD Sprinkler Node",
     Kind::PressureLimit, UnitKind::Pressure_Drop, "CalculationDataMinHMDPressure"},
    {"txtMinimumDesiredDensity", "Minimum Desired Density", Kind::FineRate, UnitKind::Flow_Density,
     "GPDMinDesiredDensity"},
    {"txtInflowResidualPressure1", "Residual Pressure At Inflow Node Number", Kind::InflowPressure,
     UnitKind::Pressure_Drop, "CalculationDataResidualPressure"},
    {"txtInflowResidualPressure2", "Residual Pressure At Inflow Node Number", Kind::InflowPressure,
     UnitKind::Pressure_Drop, "CalculationDataResidualPressure"},
    {"txtInflowResidualPressure3", "Residual Pressure At Inflow Node Number", Kind::InflowPressure,
     UnitKind::Pressure_Drop, "CalculationDataResidualPressure"},
    {"txtMaximumNodePressureImbalance", "Maximum Nodal Pressure", Kind::ImbalanceLimit,
     UnitKind::Pressure_Drop, "CalculationDataMaximumNodePressureImbalance"},
    {"txtAverageNodalPressure", "Average Nodal Pressure", Kind::ImbalanceLimit,
     UnitKind::Pressure_Drop, "CalculationDataAverageNodePressureImbalance"},
    {"txtInitialOscillationDampingFactor", "Initial Damping Factor:", Kind::DampingFactor,
     std::nullopt, "CalculationDataInitialDampingFactor"},
    {"txtMinimumOscillationDampingFactor", "Minimum Damping Factor:", Kind::DampingFactor,
     std::nullopt, "CalculationDataMinimumDampingFactor"},
    {"txtSizingMaximumAllowableWaterVelocity", "Maximum Allowable Water Velocity",
     Kind::PressureLimit, UnitKind::Velocity, "CalculationDataMaximumAllowableWaterVelocity"},
    {"txtSizingMiximumAllowableFrictionalLoss", calculation_words::FrictionLabelUs,
     Kind::PressureLimit, UnitKind::Pressure_Drop, "CalculationDataMaximumAllowableFrictionalLoss"},
}};

constexpr CalculationFieldInfo TypeGroupMinInfo{
    "txtSizingTypeGroupMin", "", Kind::SmallMeasure, UnitKind::Fine_Length,
    "CalculationDataMinPipeSizingConstraintForTypeGroup"};
constexpr CalculationFieldInfo TypeGroupMaxInfo{
    "txtSizingTypeGroupMax", "", Kind::SmallMeasure, UnitKind::Fine_Length,
    "CalculationDataMaxPipeSizingConstraintForTypeGroup"};

constexpr std::array<CalculationOptionInfo, 10> Options{{
    {"optDemandMode", "Demand", "CalculationDataCalculationMode"},
    {"optSupplyMode", "Supply", "CalculationDataCalculationMode"},
    {"optMaximumNodalPressure", "Maximum Nodal Pressure",
     "CalculationDataMaximumNodePressureImbalance"},
    {"optAverageNodalPressure", "Average Nodal Pressure",
     "CalculationDataAverageNodePressureImbalance"},
    {"chkConvFlowImbalance", "Converge to 0.01 flow imbalance (may slow calculations)",
     "CalculationDataNodalPressureImbalance"},
    {"chkUseAutomaticPeakingCalculation", "Use Automatic Peaking Calculation",
     "CalculationDataOptions"},
    {"chkUseResidualPressureEstimate", "Use Residual Pressure Estimates", "CalculationDataOptions"},
    {"chkOscillationEstimate", "Update Estimates In Case of Oscillation", "CalculationDataOptions"},
    {"chkFrictLoss", "Show warning in reports for non-autosized pipes exceeding friction loss", ""},
    {"chkDoNotIncrSize", "Do not allow autosized pipes to increase diameter downstream", ""},
}};

int Number(CalculationField field) {
    return static_cast<int>(field);
}

bool IsTypeGroupMin(CalculationField field) {
    return Number(field) >= Number(TypeGroupMin1) && Number(field) < Number(TypeGroupMax1);
}

bool IsTypeGroupMax(CalculationField field) {
    return Number(field) >= Number(TypeGroupMax1) && Number(field) < CalculationFieldCount;
}

std::size_t GroupOf(CalculationField field) {
    const int first = IsTypeGroupMax(field) ? Number(TypeGroupMax1) : Number(TypeGroupMin1);
    return static_cast<std::size_t>(Number(field) - first + 1);
}

// Fields whose 0 means "no limit" and shows as an empty field.
bool EmptyForZero(CalculationField field) {
    return field == MinPressureAtHMDNode || field == MaxWaterVelocity ||
           field == MaxFrictionalLoss || field == MaximumNodePressureImbalance ||
           field == AverageNodalPressure || IsTypeGroupMin(field) || IsTypeGroupMax(field);
}

bool HeldAsSingle(CalculationField field) {
    return field == MinPressureAtHMDNode || field == MinimumDesiredDensity;
}

// A value without trailing zeros, with at most the decimals given: "7", "48.26".
std::string PlainText(double value, int decimals, char decimalCharacter) {
    std::string picture = "0";
    if (decimals > 0) {
        picture += "." + std::string(static_cast<std::size_t>(decimals), '#');
    }
    std::string text = Format(value, picture);
    if (!text.empty() && text.back() == '.') {
        text.pop_back();
    }
    if (decimalCharacter != '.') {
        std::replace(text.begin(), text.end(), '.', decimalCharacter);
    }
    return text;
}

std::string ReplaceWord(std::string text, std::string_view word) {
    const std::size_t at = text.find(SprinklerWord);
    if (at != std::string::npos) {
        text.replace(at, SprinklerWord.size(), word);
    }
    return text;
}

} // namespace

CalculationField TypeGroupMinField(int group) {
    return static_cast<CalculationField>(Number(TypeGroupMin1) + group - 1);
}

CalculationField TypeGroupMaxField(int group) {
    return static_cast<CalculationField>(Number(TypeGroupMax1) + group - 1);
}

const CalculationFieldInfo& FieldInfo(CalculationField field) {
    if (IsTypeGroupMin(field)) {
        return TypeGroupMinInfo;
    }
    if (IsTypeGroupMax(field)) {
        return TypeGroupMaxInfo;
    }
    return MainFields.at(static_cast<std::size_t>(Number(field)));
}

const CalculationOptionInfo& OptionInfo(CalculationOption option) {
    return Options.at(static_cast<std::size_t>(option));
}

CalculationDataScreen::CalculationDataScreen(Project& project, MeasureSystem system,
                                             char decimalCharacter)
    : project_(project), system_(system), decimalCharacter_(decimalCharacter) {
    Load();
}

std::size_t CalculationDataScreen::Index(CalculationField field) const {
    return static_cast<std::size_t>(Number(field));
}

void CalculationDataScreen::Load() {
    guard_ = true;
    for (int field = 0; field < CalculationFieldCount; ++field) {
        texts_[static_cast<std::size_t>(field)] = Shown(static_cast<CalculationField>(field));
    }
    guard_ = false;
}

const std::string& CalculationDataScreen::Text(CalculationField field) const {
    return texts_[Index(field)];
}

namespace {

// The model's value behind a field, handed to `visit` as the member itself (whatever its type).
template <class Model, class Visit>
void VisitStored(Model& project, CalculationField field, Visit visit) {
    auto& data = project.CalculationData;
    if (IsTypeGroupMin(field)) {
        visit(data.TypeGroupMinDiameter[GroupOf(field)]);
        return;
    }
    if (IsTypeGroupMax(field)) {
        visit(data.TypeGroupMaxDiameter[GroupOf(field)]);
        return;
    }
    switch (field) {
    case MinPressureAtHMDNode:
        return visit(data.MinPressureAtHMDNode);
    case MinimumDesiredDensity:
        return visit(project.SystemData.MinimumDesiredDensity);
    case InflowResidualPressure1:
        return visit(data.InflowResidualPressure1);
    case InflowResidualPressure2:
        return visit(data.InflowResidualPressure2);
    case InflowResidualPressure3:
        return visit(data.InflowResidualPressure3);
    case MaximumNodePressureImbalance:
        return visit(data.MaximumNodePressureImbalance);
    case AverageNodalPressure:
        return visit(data.AverageNodePressureImbalance);
    case InitialDampingFactor:
        return visit(data.InitialDampingFactor);
    case MinimumDampingFactor:
        return visit(data.MinimumDampingFactor);
    case MaxWaterVelocity:
        return visit(data.MaxWaterVelocity);
    case MaxFrictionalLoss:
        return visit(data.MaxFrictionalLoss);
    default:
        return;
    }
}

} // namespace

double CalculationDataScreen::StoredNumber(CalculationField field) const {
    double value = 0;
    VisitStored(project_, field, [&value](const auto& stored) { value = stored; });
    return value;
}

void CalculationDataScreen::Store(CalculationField field, double usValue) {
    VisitStored(project_, field, [usValue](auto& stored) {
        using Stored = std::remove_reference_t<decltype(stored)>;
        if constexpr (std::is_same_v<Stored, Integer>) {
            stored = CInt(usValue); // the damping factors are whole numbers
        } else {
            stored = static_cast<Stored>(usValue);
        }
    });
    if (field == MinimumDesiredDensity) {
        // One value with the general data screen's density; the run takes it as its own.
        project_.CalculationData.DesignDensity = static_cast<Single>(usValue);
    }
}

std::string CalculationDataScreen::DisplayFormat(CalculationField field) const {
    if (field == MinimumDesiredDensity) {
        return system_ == MeasureSystem::SI ? "0.00" : "0.000";
    }
    return {};
}

std::string CalculationDataScreen::ValueText(CalculationField field, double usValue) const {
    const CalculationFieldInfo& info = FieldInfo(field);
    const double shown = info.Unit ? ShownValue(*info.Unit, usValue, system_) : usValue;
    const std::string format = DisplayFormat(field);
    if (!format.empty()) {
        return FieldText(shown, Attribute(field), decimalCharacter_, format);
    }
    return PlainText(shown, Attribute(field).Decimals, decimalCharacter_);
}

bool CalculationDataScreen::ImbalanceFieldShown(CalculationField field) const {
    if (field == MaximumNodePressureImbalance) {
        return Option(CalculationOption::MaximumNodalPressure);
    }
    if (field == AverageNodalPressure) {
        return Option(CalculationOption::AverageNodalPressure);
    }
    return true;
}

std::string CalculationDataScreen::Shown(CalculationField field) const {
    if (field == CalculationComment) {
        return project_.CalculationData.CalculationComment;
    }
    if (!ImbalanceFieldShown(field)) {
        return {};
    }
    const double value = StoredNumber(field);
    if (value == 0 && EmptyForZero(field)) {
        return {};
    }
    return ValueText(field, value);
}

void CalculationDataScreen::Edit(CalculationField field, std::string_view text) {
    std::string& shown = texts_[Index(field)];
    shown = TestOnChange(field, text);
    if (guard_) {
        return;
    }
    if (field == CalculationComment) {
        project_.CalculationData.CalculationComment = shown;
    } else {
        const double value = FieldValue(shown, decimalCharacter_);
        const std::optional<UnitKind> unit = FieldInfo(field).Unit;
        Store(field, unit ? StoredValue(*unit, value, system_) : value);
    }
    project_.InputChanged = True;
}

LeaveOutcome CalculationDataScreen::Leave(CalculationField field) {
    const std::string text = Text(field);
    if (!FieldInfo(field).Number) {
        return {text, false};
    }
    LeaveOutcome outcome =
        LeaveNumberField(text, Attribute(field), decimalCharacter_, DisplayFormat(field));
    if (outcome.Text != text) {
        Edit(field, outcome.Text);
    }
    return outcome;
}

bool CalculationDataScreen::Option(CalculationOption option) const {
    const CalculationData& data = project_.CalculationData;
    switch (option) {
    case CalculationOption::SupplyMode:
        return data.SupplyMode != 0;
    case CalculationOption::DemandMode:
        return data.SupplyMode == 0 && data.DemandMode != 0;
    case CalculationOption::MaximumNodalPressure:
        return data.UseMaximumImbalance != 0;
    case CalculationOption::AverageNodalPressure:
        return data.UseMaximumImbalance == 0 && data.UseAverageImbalance != 0;
    case CalculationOption::ConvFlowImbalance:
        return data.UseFlowImbalance != 0;
    case CalculationOption::UseAutomaticPeaking:
        return data.UseAutomaticPeaking != 0;
    case CalculationOption::UseResidualPressureEstimate:
        return data.UseResidualPressureEstimate != 0;
    case CalculationOption::OscillationEstimate:
        return oscillationEstimate_;
    case CalculationOption::FrictLoss:
        return data.UseFrictionLimit != 0;
    case CalculationOption::DoNotIncrSize:
        return data.DoNotIncreaseSize != 0;
    }
    return false;
}

void CalculationDataScreen::SetOption(CalculationOption option, bool on) {
    CalculationData& data = project_.CalculationData;
    const Integer flag = on ? 1 : 0;
    switch (option) {
    case CalculationOption::DemandMode:
    case CalculationOption::SupplyMode: {
        const bool supply = (option == CalculationOption::SupplyMode) == on;
        data.DemandMode = supply ? 0 : 1;
        data.SupplyMode = supply ? 1 : 0;
        break;
    }
    case CalculationOption::MaximumNodalPressure:
    case CalculationOption::AverageNodalPressure: {
        const bool maximum = (option == CalculationOption::MaximumNodalPressure) == on;
        data.UseMaximumImbalance = maximum ? 1 : 0;
        data.UseAverageImbalance = maximum ? 0 : 1;
        const CalculationField other =
            maximum ? AverageNodalPressure : MaximumNodePressureImbalance;
        texts_[Index(other)].clear();
        Store(other, 0);
        break;
    }
    case CalculationOption::ConvFlowImbalance:
        data.UseFlowImbalance = flag;
        break;
    case CalculationOption::UseAutomaticPeaking:
        data.UseAutomaticPeaking = flag;
        break;
    case CalculationOption::UseResidualPressureEstimate:
        data.UseResidualPressureEstimate = flag;
        break;
    case CalculationOption::OscillationEstimate:
        oscillationEstimate_ = on;
        break;
    case CalculationOption::FrictLoss:
        data.UseFrictionLimit = flag;
        break;
    case CalculationOption::DoNotIncrSize:
        data.DoNotIncreaseSize = flag;
        break;
    }
    if (!guard_) {
        project_.InputChanged = True;
    }
}

bool CalculationDataScreen::IsEnabled(CalculationField field) const {
    switch (field) {
    case MinPressureAtHMDNode:
    case MinimumDesiredDensity:
        return Option(CalculationOption::DemandMode);
    case InflowResidualPressure1:
    case InflowResidualPressure2:
    case InflowResidualPressure3:
        return Option(CalculationOption::SupplyMode);
    case MaximumNodePressureImbalance:
        return Option(CalculationOption::MaximumNodalPressure);
    case AverageNodalPressure:
        return Option(CalculationOption::AverageNodalPressure);
    default:
        return true;
    }
}

bool CalculationDataScreen::RequiredLabelVisible() const {
    return Option(CalculationOption::SupplyMode);
}

std::string CalculationDataScreen::DischargeWord() const {
    const std::string word = Trim(project_.SystemData.PrimaryDischargeName);
    return word.empty() ? std::string(SprinklerWord) : word;
}

std::string CalculationDataScreen::Label(CalculationField field) const {
    if (field == MaxFrictionalLoss) {
        return std::string(system_ == MeasureSystem::SI ? calculation_words::FrictionLabelSi
                                                        : calculation_words::FrictionLabelUs);
    }
    if (IsTypeGroupMin(field) || IsTypeGroupMax(field)) {
        return std::to_string(GroupOf(field));
    }
    return ReplaceWord(std::string(FieldInfo(field).Label), DischargeWord());
}

std::string CalculationDataScreen::InflowNodeNumber(int line) const {
    const CalculationData& data = project_.CalculationData;
    Integer number = 0;
    if (line == 1) {
        number = data.SystemInflowNode != 0 ? data.SystemInflowNode : project_.InflowNode;
    } else if (line == 2) {
        number = data.SecondInflowNode;
    } else if (line == 3) {
        number = data.ThirdInflowNode;
    }
    return number == 0 ? std::string() : std::to_string(number);
}

NumberAttribute CalculationDataScreen::Attribute(CalculationField field) const {
    const CalculationFieldInfo& info = FieldInfo(field);
    if (!info.Number) {
        return {};
    }
    return ConvertAttribute(NumberAttributeOf(*info.Number), info.Unit, system_);
}

TextAttribute CalculationDataScreen::TextLimits(CalculationField /*field*/) const {
    return TextAttributeOf(TextFieldKind::GeneralText);
}

std::string CalculationDataScreen::UnitWord(CalculationField field) const {
    const CalculationFieldInfo& info = FieldInfo(field);
    return info.Number ? UnitWordOnScreen(info.Unit, system_) : std::string("Text");
}

std::string CalculationDataScreen::StatusText(CalculationField field) const {
    const std::string range =
        FieldInfo(field).Number ? ShowRange(Attribute(field)) : ShowTextLength(TextLimits(field));
    return range + "     " + ShowUnits(UnitWord(field));
}

std::string CalculationDataScreen::TestOnChange(CalculationField field,
                                                std::string_view text) const {
    if (!FieldInfo(field).Number) {
        return TestTextOnChange(text, TextLimits(field));
    }
    return quench::TestOnChange(text, Attribute(field), decimalCharacter_);
}

void CalculationDataScreen::SwitchUnits(MeasureSystem system) {
    system_ = system;
    Load();
}

CalculationScreen CalculationDataScreen::RunRecord() const {
    CalculationScreen record;
    // A field that shows something gives the stored value in US units; an empty one stays empty.
    const auto text = [&](CalculationField field) -> std::string {
        if (Trim(Text(field)).empty()) {
            return {};
        }
        const double value = StoredNumber(field);
        return HeldAsSingle(field) ? NumberText(static_cast<float>(value)) : NumberText(value);
    };
    const CalculationData& data = project_.CalculationData;
    record.txtCalculationComment = data.CalculationComment;
    record.optDemandMode = Option(CalculationOption::DemandMode);
    record.optSupplyMode = Option(CalculationOption::SupplyMode);
    record.txtMinPressureAtHMDNode = text(MinPressureAtHMDNode);
    record.txtMinimumDesiredDensity = text(MinimumDesiredDensity);
    record.lblSystemInflowNodeNumber = InflowNodeNumber(1);
    record.lblSecondInflowNodeNumber = InflowNodeNumber(2);
    record.lblThirdInflowNodeNumber = InflowNodeNumber(3);
    record.txtInflowResidualPressure1 = text(InflowResidualPressure1);
    record.txtInflowResidualPressure2 = text(InflowResidualPressure2);
    record.txtInflowResidualPressure3 = text(InflowResidualPressure3);
    record.optMaximumNodalPressure = Option(CalculationOption::MaximumNodalPressure);
    record.txtMaximumNodePressureImbalance = text(MaximumNodePressureImbalance);
    record.optAverageNodalPressure = Option(CalculationOption::AverageNodalPressure);
    record.txtAverageNodalPressure = text(AverageNodalPressure);
    record.chkConvFlowImbalance = Option(CalculationOption::ConvFlowImbalance);
    record.txtInitialOscillationDampingFactor = text(InitialDampingFactor);
    record.txtMinimumOscillationDampingFactor = text(MinimumDampingFactor);
    record.chkUseAutomaticPeakingCalculation = Option(CalculationOption::UseAutomaticPeaking);
    record.chkUseResidualPressureEstimate = Option(CalculationOption::UseResidualPressureEstimate);
    record.chkOscillationEstimate = oscillationEstimate_;
    record.txtSizingMaximumAllowableWaterVelocity = text(MaxWaterVelocity);
    record.txtSizingMiximumAllowableFrictionalLoss = text(MaxFrictionalLoss);
    record.chkFrictLoss = Option(CalculationOption::FrictLoss);
    record.chkDoNotIncrSize = Option(CalculationOption::DoNotIncrSize);
    // Slot 0, the pipes without a group, has no line on the screen.
    record.txtSizingTypeGroupMin[0] =
        data.TypeGroupMinDiameter[0] == 0 ? "" : NumberText(data.TypeGroupMinDiameter[0]);
    record.txtSizingTypeGroupMax[0] =
        data.TypeGroupMaxDiameter[0] == 0 ? "" : NumberText(data.TypeGroupMaxDiameter[0]);
    for (int group = 1; group <= TypeGroupLines; ++group) {
        record.txtSizingTypeGroupMin[static_cast<std::size_t>(group)] =
            text(TypeGroupMinField(group));
        record.txtSizingTypeGroupMax[static_cast<std::size_t>(group)] =
            text(TypeGroupMaxField(group));
    }
    return record;
}

ResultsScreen CalculationDataScreen::Results() const {
    ResultsScreen results = ResultsToScreen(project_);
    // Taken when the tab is shown, so that a run does not pay for it.
    if (project_.CalculationData.NumberOfUniquePipeSections > 0) {
        results.lblIndependentCheck = CheckVerdictText(CheckPostedResults(project_));
    }
    if (system_ == MeasureSystem::US) {
        return results;
    }
    const CalculationData& data = project_.CalculationData;
    const auto shown = [](UnitKind kind, double value) {
        return Format(ToSI(kind, value), "###0.000");
    };
    results.txtMaximumFlowVelocity = shown(UnitKind::Velocity, data.MaximumFlowVelocity);
    results.txtSprinklerFlow = shown(UnitKind::Volumetric_Flow, data.SprinklerFlow);
    results.txtNonSprinklerFlow = shown(UnitKind::Volumetric_Flow, data.NonSprinklerFlow);
    results.txtHMDActualResidualPressure =
        shown(UnitKind::Pressure_Drop, data.HMDActualResidualPressure);
    results.txtHMDActualGPM = shown(UnitKind::Volumetric_Flow, data.HMDActualFlow);
    results.txtMinReqdResidPressAtSysInflowNode =
        shown(UnitKind::Pressure_Drop, data.InflowResidualPressure);
    results.txtDemandFlowAtSystemInflowNode = shown(UnitKind::Volumetric_Flow, data.InflowFlow);
    return results;
}

} // namespace quench
