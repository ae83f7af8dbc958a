#include "entry/general_data.h"

#include "core/formats.h"
#include "core/text.h"
#include "entry/general_data_words.h"

#include <algorithm>
#include <type_traits>

namespace quench {

namespace {

using enum GeneralField;
using Tab = GeneralTab;
using Kind = GeneralFieldKind;

constexpr NumberAttribute NoLimits{};

constexpr GeneralFieldInfo TextField(std::string_view control, std::string_view label, Tab tab,
                                     Integer length, Integer stored, std::string_view help = {}) {
    return {control, label, tab, Kind::Text, length, stored, NoLimits, std::nullopt, "", help};
}

constexpr GeneralFieldInfo NumberField(std::string_view control, std::string_view label,
                                       NumberAttribute limits, std::optional<UnitKind> unit,
                                       std::string_view help, std::string_view unitWord = {}) {
    return {control, label, Tab::System, Kind::Number, 0, 0, limits, unit, unitWord, help};
}

constexpr std::array<GeneralFieldInfo, GeneralFieldCount> Fields{{
    TextField("txtProjectTitle", "Project Title:", Tab::Project, 50, 40),
    TextField("txtProjectDesignedBy", "Designed By:", Tab::Project, 50, 40),
    TextField("txtProjectDate", "Date:", Tab::Project, 50, 40),
    TextField("txtProjectCodeReference", "Code Reference:", Tab::Project, 50, 40),
    TextField("txtProjectApprovingAgency", "Approving Agency:", Tab::Project, 50, 40),
    TextField("txtProjectComment", "Comment:", Tab::Project, 200, 200),
    TextField("txtClientName", "Name:", Tab::Client, 50, 40),
    TextField("txtClientAddress", "Address:", Tab::Client, 50, 40),
    TextField("txtClientCityStateZip", "City, State, Zip:", Tab::Client, 50, 40),
    TextField("txtClientPhone", "Phone:", Tab::Client, 50, 40),
    TextField("txtClientFax", "Fax:", Tab::Client, 50, 40),
    TextField("txtClientComment", "Comment:", Tab::Client, 200, 200),
    TextField("txtCompanyName", "Name:", Tab::Company, 50, 40),
    TextField("txtCompanyRepresentative", "Representative:", Tab::Company, 50, 40),
    TextField("txtCompanyAddress", "Address:", Tab::Company, 50, 40),
    TextField("txtCompanyCityStateZip", "City, State, Zip:", Tab::Company, 50, 40),
    TextField("txtCompanyPhone", "Phone:", Tab::Company, 50, 40),
    TextField("txtCompanyFax", "Fax:", Tab::Company, 50, 40),
    TextField("txtCompanyComment", "Comment:", Tab::Company, 200, 200),
    TextField("txtBuildingName", "Name:", Tab::Building, 50, 40),
    TextField("txtBuildingOwner", "Owner:", Tab::Building, 50, 40),
    TextField("txtBuildingContact", "Contact:", Tab::Building, 50, 40),
    TextField("txtBuildingAddress", "Address:", Tab::Building, 50, 40),
    TextField("txtBuildingCityStateZip", "City, State, Zip:", Tab::Building, 50, 40),
    TextField("txtBuildingPhone", "Phone:", Tab::Building, 50, 40),
    TextField("txtBuildingFax", "Fax:", Tab::Building, 50, 40),
    TextField("txtBuildingComment", "Comment:", Tab::Building, 200, 200),
    GeneralFieldInfo{"txtPrimDisch", "Primary Discharge:", Tab::System, Kind::Word, 9, 9, NoLimits,
                     std::nullopt, "", "PrimaryTypeOfDischarge"},
    NumberField("txtPipeMaterialDescription", "Default Pipe Material:", {0, 1, 50, 0}, std::nullopt,
                "GPDDefaultPipeMaterial"),
    NumberField("txtDefaultKFactor", "Default K-Factor:", {0, 0, 326.99f, 2}, UnitKind::K_Factor,
                "GPDDefaultKFactor"),
    GeneralFieldInfo{"txtSprinklerSystemType", "Sprinkler System Type:", Tab::System, Kind::Word, 3,
                     10, NoLimits, std::nullopt, "", "GPDSprinklerSystemType"},
    TextField("txtSprinklerMake", "Sprinkler Make:", Tab::System, 50, 40, "GPDSprinklerMake"),
    TextField("txtSprinklerModel", "Sprinkler Model:", Tab::System, 50, 40, "GPDSprinklerModel"),
    TextField("txtSprinklerSize", "Sprinkler Size:", Tab::System, 50, 40, "GPDSprinklerSize"),
    NumberField("txtTemperatureRating", "Temperature Rating:", {0, 0, 999, 0},
                UnitKind::Temperature, "GPDTemperatureRating"),
    TextField("txtHazardDescription", "Hazard Description", Tab::System, 200, 40,
              "GPDHazardDescription"),
    NumberField("txtAreaOfSprinklerOperation", "Area of Sprinkler Operation", {0, 1, 99999, 0},
                UnitKind::Area, "GPDAreaOfSprinklerOperation"),
    NumberField("txtMinimumDesiredDensity", "Min Desired Density", {0, 0, 32.767f, 4},
                UnitKind::Flow_Density, "GPDMinDesiredDensity"),
    NumberField("txtMaximumAreaPerSprinkler", "Max Area Per Sprinkler", {0, 1, 99999, 3},
                UnitKind::Area, "GPDMaxAreaPerSpinkler"),
    NumberField("txtInRackSprinklerAllowance", "In Rack Sprinkler Allow", {0, 0, 9999, 2},
                UnitKind::Volumetric_Flow, "GPDInRackSprinklerAllow"),
    NumberField("txtInsideHoseStreamAllowance", "Inside Hose Stream Allow", {0, 0, 9999, 2},
                UnitKind::Volumetric_Flow, "GPDInsideHoseStreamAllowance"),
    NumberField("txtOutsideHoseStreamAllowance", "Outside Hose Strm Allow", {0, 0, 9999, 2},
                UnitKind::Volumetric_Flow, "GPDOutsideHoseStreamAllow"),
    NumberField("txtLaborRate", "Labor Rate", {0, 0, 99.9999f, 4}, std::nullopt, "GPDlaborRate",
                "$/hr"),
    NumberField("txtOtherLaborHours", "Other Labor Hours", {0, 0, 999.99f, 2}, std::nullopt,
                "GPDOtherLaborHours", "Hours"),
    NumberField("txtOtherMaterialCosts", "Other Material Costs", {0, 0, 999, 2}, std::nullopt,
                "GPDOtherMaterialCost", "Dollars"),
    TextField("txtSystemComment", "Comment:", Tab::System, 200, 200),
    TextField("txtHydrantTestDate", "Hydrant Test Date:", Tab::System, 50, 40,
              "GPDHydrantTestDate"),
    TextField("txtSourceOfInformation", "Source of Info.:", Tab::System, 50, 40,
              "GPDSourceOfInformation"),
    TextField("txtTestHydrantID", "Hydrant ID:", Tab::System, 50, 40, "GPDHydrantID"),
    NumberField("txtHydrantElevation", "Hydrant Elevation", {0, 0, 32767, 0}, UnitKind::Length,
                "GPDHydrantElevation"),
    NumberField("txtTestStaticPressure0", "Test Static Pressure", {0, 0, 32767, 2},
                UnitKind::Pressure_Drop, "GPDTestStaticPressure"),
    NumberField("txtTestResidualPressure0", "Test Residual Pressure", {0, 0, 32767, 2},
                UnitKind::Pressure_Drop, "GPDTestResidualPressure"),
    NumberField("txtTestFlowRate0", "Test Flow Rate", {0, 0, 32767, 2}, UnitKind::Volumetric_Flow,
                "GPDTestFlowRate"),
    NumberField("txtTestStaticPressure1", "Test Static Pressure", {0, 0, 32767, 2},
                UnitKind::Pressure_Drop, "GPDTestStaticPressure"),
    NumberField("txtTestResidualPressure1", "Test Residual Pressure", {0, 0, 32767, 2},
                UnitKind::Pressure_Drop, "GPDTestResidualPressure"),
    NumberField("txtTestFlowRate1", "Test Flow Rate", {0, 0, 32767, 2}, UnitKind::Volumetric_Flow,
                "GPDTestFlowRate"),
    NumberField("txtTestGPM", "Exterior hose", {0, 0, 9999, 0}, UnitKind::Volumetric_Flow,
                "GPDTestExteriorHose"),
    GeneralFieldInfo{"txtCalculatedResidualPressure", "Calculated Demand Pressure", Tab::System,
                     Kind::Output, 0, 0, NoLimits, UnitKind::Pressure_Drop, "",
                     "GPDCalcDemandResPressure"},
    GeneralFieldInfo{"txtCalculatedFlowRate", "Calculated Demand Flow Rate", Tab::System,
                     Kind::Output, 0, 0, NoLimits, UnitKind::Volumetric_Flow, "",
                     "GPDCalcDemandFlowRate"},
}};

constexpr std::string_view SystemTypeWords[] = {"Wet", "Dry"};

int Number(GeneralField field) {
    return static_cast<int>(field);
}

// A value without trailing zeros, with at most the decimals given: "7", "0.2", "5.6".
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

// The record's text behind a text or word field.
template <class Model>
auto& StoredText(Model& project, GeneralField field) {
    auto& p = project.ProjectData;
    auto& c = project.ClientData;
    auto& m = project.CompanyData;
    auto& b = project.BuildingData;
    auto& s = project.SystemData;
    switch (field) {
    case ProjectTitle:
        return p.Title;
    case ProjectDesignedBy:
        return p.DesignedBy;
    case ProjectDate:
        return p.Date;
    case ProjectCodeReference:
        return p.CodeReference;
    case ProjectApprovingAgency:
        return p.ApprovingAgency;
    case ProjectComment:
        return p.Comment;
    case ClientName:
        return c.Name;
    case ClientAddress:
        return c.Address;
    case ClientCityStateZip:
        return c.CityStateZip;
    case ClientPhone:
        return c.Phone;
    case ClientFax:
        return c.Fax;
    case ClientComment:
        return c.Comment;
    case CompanyName:
        return m.Name;
    case CompanyRepresentative:
        return m.Representative;
    case CompanyAddress:
        return m.Address;
    case CompanyCityStateZip:
        return m.CityStateZip;
    case CompanyPhone:
        return m.Phone;
    case CompanyFax:
        return m.Fax;
    case CompanyComment:
        return m.Comment;
    case BuildingName:
        return b.Name;
    case BuildingOwner:
        return b.Owner;
    case BuildingContact:
        return b.Contact;
    case BuildingAddress:
        return b.Address;
    case BuildingCityStateZip:
        return b.CityStateZip;
    case BuildingPhone:
        return b.Phone;
    case BuildingFax:
        return b.Fax;
    case BuildingComment:
        return b.Comment;
    case PrimaryDischarge:
        return s.PrimaryDischargeName;
    case SprinklerSystemType:
        return s.SprinklerSystemType;
    case SprinklerMake:
        return s.SprinklerMake;
    case SprinklerModel:
        return s.SprinklerModel;
    case SprinklerSize:
        return s.SprinklerSize;
    case HazardDescription:
        return s.HazardDescription;
    case SystemComment:
        return s.SystemComment;
    case HydrantTestDate:
        return s.HydrantTestDate;
    case SourceOfInformation:
        return s.SourceOfInformation;
    default:
        return s.TestHydrantID;
    }
}

// The model's number behind a field, handed to `visit` as the member itself.
template <class Model, class Visit>
void VisitNumber(Model& project, GeneralField field, Visit visit) {
    auto& s = project.SystemData;
    switch (field) {
    case DefaultPipeMaterial:
        return visit(s.DefaultPipeMaterial);
    case DefaultKFactor:
        return visit(s.DefaultKFactor);
    case TemperatureRating:
        return visit(s.TemperatureRating);
    case AreaOfSprinklerOperation:
        return visit(s.AreaOfSprinklerOperation);
    case MinimumDesiredDensity:
        return visit(s.MinimumDesiredDensity);
    case MaximumAreaPerSprinkler:
        return visit(s.MaximumAreaPerSprinkler);
    case InRackSprinklerAllowance:
        return visit(s.InRackSprinklerAllowance);
    case InsideHoseStreamAllowance:
        return visit(s.InsideHoseStreamAllowance);
    case OutsideHoseStreamAllowance:
        return visit(s.OutsideHoseStreamAllowance);
    case LaborRate:
        return visit(s.LaborRate);
    case OtherLaborHours:
        return visit(s.OtherLaborHours);
    case OtherMaterialCosts:
        return visit(s.OtherMaterialCosts);
    case HydrantElevation:
        return visit(s.HydrantElevation);
    case TestStaticPressure:
        return visit(s.TestStaticPressure);
    case TestResidualPressure:
        return visit(s.TestResidualPressure);
    case TestFlowRate:
        return visit(s.TestFlowRate);
    case SecondTestStaticPressure:
        return visit(s.SecondTestStaticPressure);
    case SecondTestResidualPressure:
        return visit(s.SecondTestResidualPressure);
    case SecondTestFlowRate:
        return visit(s.SecondTestFlowRate);
    case ExteriorHoseFlow:
        return visit(s.ExteriorHoseFlow);
    case CalculatedResidualPressure:
        return visit(s.CalculatedResidualPressure);
    case CalculatedFlowRate:
        return visit(s.CalculatedFlowRate);
    default:
        return;
    }
}

Integer& PrintFlag(Project& project, GeneralCheck check) {
    switch (check) {
    case GeneralCheck::Project:
        return project.ProjectData.PrintComment;
    case GeneralCheck::Client:
        return project.ClientData.PrintComment;
    case GeneralCheck::Company:
        return project.CompanyData.PrintComment;
    case GeneralCheck::Building:
        return project.BuildingData.PrintComment;
    case GeneralCheck::System:
        break;
    }
    return project.SystemData.SystemPrintComment;
}

// The word of a word field that the text names (any case, blanks around), or "".
std::string WordOf(GeneralField field, std::string_view text) {
    if (field == PrimaryDischarge) {
        return DischargeWordFromText(text);
    }
    const std::string trimmed = Trim(text);
    for (const std::string_view word : SystemTypeWords) {
        if (EqualsIgnoreCase(trimmed, word)) {
            return std::string(word);
        }
    }
    return {};
}

// True when the text is the start of one of the field's words, as it is while being typed.
bool BeginsAWord(GeneralField field, std::string_view text) {
    const auto begins = [text](std::string_view word) {
        return text.size() <= word.size() && EqualsIgnoreCase(word.substr(0, text.size()), text);
    };
    if (field == PrimaryDischarge) {
        return begins(SprinklerDischarge) || begins(HoseDischarge);
    }
    return std::any_of(std::begin(SystemTypeWords), std::end(SystemTypeWords), begins);
}

std::string Cut(std::string_view text, Integer length) {
    return std::string(text.substr(0, std::min(text.size(), static_cast<std::size_t>(length))));
}

} // namespace

const GeneralFieldInfo& FieldInfo(GeneralField field) {
    return Fields.at(static_cast<std::size_t>(Number(field)));
}

std::string_view TabCaption(GeneralTab tab) {
    switch (tab) {
    case Tab::Project:
        return "Pr&oject Data";
    case Tab::Client:
        return "&Client Data";
    case Tab::Company:
        return "Comp&any Data";
    case Tab::Building:
        return "&Building Data";
    case Tab::System:
        break;
    }
    return "&System Data";
}

std::string_view CheckControl(GeneralCheck check) {
    switch (check) {
    case GeneralCheck::Project:
        return "chkProjectPrintComment";
    case GeneralCheck::Client:
        return "chkClientPrintComment";
    case GeneralCheck::Company:
        return "chkCompanyPrintComment";
    case GeneralCheck::Building:
        return "chkBuildingPrintComment";
    case GeneralCheck::System:
        break;
    }
    return "chkSystemPrintComment";
}

GeneralDataEditor::GeneralDataEditor(Project& project, MeasureSystem system, char decimalCharacter)
    : project_(project), system_(system), decimalCharacter_(decimalCharacter) {
    Load();
}

std::size_t GeneralDataEditor::Index(GeneralField field) const {
    return static_cast<std::size_t>(Number(field));
}

void GeneralDataEditor::Load() {
    SystemData& system = project_.SystemData;
    if (system.ExteriorHoseFlow == 0) {
        system.ExteriorHoseFlow = DefaultExteriorHoseFlow;
    }
    if (TrimmedView(project_.ProjectData.Date).empty()) {
        project_.ProjectData.Date = FormatDate(Now(), NewProjectDatePicture);
    }
    for (int field = 0; field < GeneralFieldCount; ++field) {
        texts_[static_cast<std::size_t>(field)] = Shown(static_cast<GeneralField>(field));
    }
}

const std::string& GeneralDataEditor::Text(GeneralField field) const {
    return texts_[Index(field)];
}

double GeneralDataEditor::StoredNumber(GeneralField field) const {
    double value = 0;
    VisitNumber(project_, field, [&value](const auto& stored) { value = stored; });
    return value;
}

void GeneralDataEditor::Store(GeneralField field, double usValue) {
    VisitNumber(project_, field, [usValue](auto& stored) {
        using Stored = std::remove_reference_t<decltype(stored)>;
        if constexpr (std::is_same_v<Stored, Integer>) {
            stored = CInt(usValue);
        } else {
            stored = static_cast<Stored>(usValue);
        }
    });
    if (field == MinimumDesiredDensity) {
        // One value with the Calculation screen's density, which the run takes as its own.
        project_.CalculationData.DesignDensity = static_cast<Single>(usValue);
    }
}

std::string GeneralDataEditor::Shown(GeneralField field) const {
    const GeneralFieldInfo& info = FieldInfo(field);
    if (info.Kind == Kind::Text || info.Kind == Kind::Word) {
        return StoredText(project_, field);
    }
    const double stored = StoredNumber(field);
    const double shown = info.Unit ? ShownValue(*info.Unit, stored, system_) : stored;
    if (info.Kind == Kind::Output) {
        std::string text = Format(shown, "##0.00");
        if (decimalCharacter_ != '.') {
            std::replace(text.begin(), text.end(), '.', decimalCharacter_);
        }
        return text;
    }
    return PlainText(shown, info.Limits.Decimals, decimalCharacter_);
}

GeneralDataEditor::EditOutcome GeneralDataEditor::StoreWord(GeneralField field,
                                                            std::string_view text) {
    EditOutcome outcome;
    const std::string word = WordOf(field, text);
    std::string& shown = texts_[Index(field)];
    if (word.empty()) {
        // The start of a word stays while it is typed; anything else is removed.
        shown = BeginsAWord(field, Trim(text)) ? std::string(text) : std::string();
        return outcome;
    }
    shown = word;
    std::string& stored = StoredText(project_, field);
    if (stored != word) {
        stored = word;
        outcome.DischargeChanged = field == PrimaryDischarge;
    }
    return outcome;
}

GeneralDataEditor::EditOutcome GeneralDataEditor::Edit(GeneralField field, std::string_view text) {
    const GeneralFieldInfo& info = FieldInfo(field);
    std::string& shown = texts_[Index(field)];
    EditOutcome outcome;
    switch (info.Kind) {
    case Kind::Output:
        break;
    case Kind::Word:
        outcome = StoreWord(field, text);
        break;
    case Kind::Text:
        shown = TestOnChange(field, text);
        StoredText(project_, field) = Cut(shown, info.StoredLength);
        break;
    case Kind::Number: {
        shown = TestOnChange(field, text);
        const double value = FieldValue(shown, decimalCharacter_);
        Store(field, info.Unit ? StoredValue(*info.Unit, value, system_) : value);
        project_.InputChanged = True;
        outcome.DensityChanged = field == MinimumDesiredDensity;
        outcome.PipeScreenChanged = field == DefaultKFactor || field == MaximumAreaPerSprinkler ||
                                    field == AreaOfSprinklerOperation;
        break;
    }
    }
    return outcome;
}

LeaveOutcome GeneralDataEditor::Leave(GeneralField field) {
    const GeneralFieldInfo& info = FieldInfo(field);
    const std::string text = Text(field);
    if (info.Kind == Kind::Word) {
        // An unfinished word is removed; the field shows the word in force.
        texts_[Index(field)] = Shown(field);
        return {Text(field), false};
    }
    if (info.Kind != Kind::Number) {
        return {text, false};
    }
    LeaveOutcome outcome = LeaveNumberField(text, Attribute(field), decimalCharacter_);
    if (outcome.Text != text) {
        Edit(field, outcome.Text);
    }
    return outcome;
}

bool GeneralDataEditor::Check(GeneralCheck check) const {
    return IsTrue(PrintFlag(project_, check));
}

void GeneralDataEditor::SetCheck(GeneralCheck check, bool on) {
    PrintFlag(project_, check) = on ? True : False;
}

void GeneralDataEditor::ScreenToGeneralData() {
    for (int index = 0; index < GeneralFieldCount; ++index) {
        const auto field = static_cast<GeneralField>(index);
        if (FieldInfo(field).Kind != Kind::Output && Text(field) != Shown(field)) {
            Edit(field, std::string(Text(field)));
        }
    }
}

std::string GeneralDataEditor::DischargeWord() const {
    const std::string word = Trim(project_.SystemData.PrimaryDischargeName);
    return word.empty() ? std::string(SprinklerDischarge) : word;
}

std::string GeneralDataEditor::Label(GeneralField field) const {
    const DischargeVocabulary words = VocabularyOf(DischargeWord());
    switch (field) {
    case SprinklerModel:
        return words.SprinklerModel;
    case SprinklerMake:
        return words.SprinklerMake;
    case SprinklerSize:
        return words.SprinklerSize;
    case SprinklerSystemType:
        return words.SprinklerSystemType;
    case AreaOfSprinklerOperation:
        return words.AreaOfSprinklerOperation;
    case MaximumAreaPerSprinkler:
        return words.MaxAreaPerSprinkler;
    default:
        return std::string(FieldInfo(field).Label);
    }
}

NumberAttribute GeneralDataEditor::Attribute(GeneralField field) const {
    const GeneralFieldInfo& info = FieldInfo(field);
    return ConvertAttribute(info.Limits, info.Unit, system_);
}

TextAttribute GeneralDataEditor::TextLimits(GeneralField field) const {
    return {0, FieldInfo(field).TextLength};
}

std::string GeneralDataEditor::UnitWord(GeneralField field) const {
    const GeneralFieldInfo& info = FieldInfo(field);
    if (info.Kind == Kind::Text || info.Kind == Kind::Word) {
        return "Text";
    }
    if (!info.UnitWord.empty()) {
        return std::string(info.UnitWord);
    }
    return UnitWordOnScreen(info.Unit, system_);
}

std::string GeneralDataEditor::StatusText(GeneralField field) const {
    const Kind kind = FieldInfo(field).Kind;
    if (kind == Kind::Output) {
        return ShowUnits(UnitWord(field));
    }
    const std::string range =
        kind == Kind::Number ? ShowRange(Attribute(field)) : ShowTextLength(TextLimits(field));
    return range + "     " + ShowUnits(UnitWord(field));
}

std::string GeneralDataEditor::TestOnChange(GeneralField field, std::string_view text) const {
    if (FieldInfo(field).Kind == Kind::Number) {
        return quench::TestOnChange(text, Attribute(field), decimalCharacter_);
    }
    return TestTextOnChange(text, TextLimits(field));
}

void GeneralDataEditor::SwitchUnits(MeasureSystem system) {
    system_ = system;
    Load();
}

} // namespace quench
