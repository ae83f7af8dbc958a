#pragma once

// The rules of the General Project Data screen (frmGPD) without its widgets: the descriptive
// records of the project on four tabs and the system data on the fifth, their labels, limits,
// units and help keys, the words of the primary discharge and the system type, and the load and
// store of the fields.
//
// Every accepted edit reaches the model at once, numbers converted to US units, texts cut to the
// length their record holds. A field the user does not touch is never stored again, so switching
// units and back changes no stored value.

#include "core/project.h"
#include "core/units.h"
#include "entry/field_attributes.h"
#include "entry/field_rules.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quench {

enum class GeneralTab { Project, Client, Company, Building, System };

enum class GeneralField : int {
    ProjectTitle,
    ProjectDesignedBy,
    ProjectDate,
    ProjectCodeReference,
    ProjectApprovingAgency,
    ProjectComment,
    ClientName,
    ClientAddress,
    ClientCityStateZip,
    ClientPhone,
    ClientFax,
    ClientComment,
    CompanyName,
    CompanyRepresentative,
    CompanyAddress,
    CompanyCityStateZip,
    CompanyPhone,
    CompanyFax,
    CompanyComment,
    BuildingName,
    BuildingOwner,
    BuildingContact,
    BuildingAddress,
    BuildingCityStateZip,
    BuildingPhone,
    BuildingFax,
    BuildingComment,
    PrimaryDischarge,
    DefaultPipeMaterial,
    DefaultKFactor,
    SprinklerSystemType,
    SprinklerMake,
    SprinklerModel,
    SprinklerSize,
    TemperatureRating,
    HazardDescription,
    AreaOfSprinklerOperation,
    MinimumDesiredDensity,
    MaximumAreaPerSprinkler,
    InRackSprinklerAllowance,
    InsideHoseStreamAllowance,
    OutsideHoseStreamAllowance,
    LaborRate,
    OtherLaborHours,
    OtherMaterialCosts,
    SystemComment,
    HydrantTestDate,
    SourceOfInformation,
    TestHydrantID,
    HydrantElevation,
    TestStaticPressure,
    TestResidualPressure,
    TestFlowRate,
    SecondTestStaticPressure,
    SecondTestResidualPressure,
    SecondTestFlowRate,
    ExteriorHoseFlow,
    CalculatedResidualPressure,
    CalculatedFlowRate,
    Count,
};

constexpr int GeneralFieldCount = static_cast<int>(GeneralField::Count);

enum class GeneralCheck { Project, Client, Company, Building, System };

enum class GeneralFieldKind {
    Text,   // any character up to its length
    Number, // within its limits, in its unit
    Word,   // one of two words: the primary discharge, the system type
    Output, // shown only
};

struct GeneralFieldInfo {
    std::string_view Control;
    std::string_view Label; // in the sprinkler's words
    GeneralTab Tab;
    GeneralFieldKind Kind;
    Integer TextLength;     // the typing limit of a text
    Integer StoredLength;   // what the record holds of it
    NumberAttribute Limits; // in US units
    std::optional<UnitKind> Unit;
    std::string_view UnitWord; // the status line's word for a number without a unit kind
    std::string_view HelpKey;
};

const GeneralFieldInfo& FieldInfo(GeneralField field);

std::string_view TabCaption(GeneralTab tab);
std::string_view CheckControl(GeneralCheck check);
constexpr std::string_view PrintCommentCaption = "Print Comment";
constexpr std::string_view GeneralDataTitle = "General Project Data";
constexpr std::string_view NewProjectDatePicture = "mmmm dd, yyyy";
constexpr Integer DefaultExteriorHoseFlow = 500;

class GeneralDataEditor {
public:
    GeneralDataEditor(Project& project, MeasureSystem system, char decimalCharacter = '.');

    MeasureSystem System() const { return system_; }
    char DecimalCharacter() const { return decimalCharacter_; }

    // GeneralDataToScreen. A project without an exterior hose flow gets 500, and one without a
    // date gets today's ("November 25, 2026"), both stored.
    void Load();

    const std::string& Text(GeneralField field) const;

    struct EditOutcome {
        bool DischargeChanged = false; // every open screen shows its captions again
        bool DensityChanged = false;   // the Calculation screen shows the density again
        // The pipe screen shows its "Dflt=" label and its area total again: the default K, the
        // maximum area per sprinkler or the area of operation changed.
        bool PipeScreenChanged = false;
    };
    // An edit of the user: the text as the change test leaves it is kept, and its value is
    // stored. A number sets InputChanged. The discharge and system type fields keep the start of
    // one of their words while it is typed and store the word once it is whole.
    EditOutcome Edit(GeneralField field, std::string_view text);
    // Leaving a field: a number below its minimum becomes the minimum (TooLow asks for
    // ValueTooLowText), an empty number shows 0; a word field left unfinished is emptied and
    // shows the word in force.
    LeaveOutcome Leave(GeneralField field);

    bool Check(GeneralCheck check) const;
    void SetCheck(GeneralCheck check, bool on);

    // ScreenToGeneralData: every field whose text differs from what its stored value shows is
    // stored (the "Put" of the dispatcher).
    void ScreenToGeneralData();

    // The label in the discharge word, the limits and unit in the unit on screen.
    std::string Label(GeneralField field) const;
    std::string DischargeWord() const;
    NumberAttribute Attribute(GeneralField field) const;
    TextAttribute TextLimits(GeneralField field) const;
    std::string UnitWord(GeneralField field) const;
    std::string StatusText(GeneralField field) const;
    std::string TestOnChange(GeneralField field, std::string_view text) const;

    void SwitchUnits(MeasureSystem system);

private:
    std::size_t Index(GeneralField field) const;
    double StoredNumber(GeneralField field) const;
    void Store(GeneralField field, double usValue);
    std::string Shown(GeneralField field) const;
    EditOutcome StoreWord(GeneralField field, std::string_view text);

    Project& project_;
    MeasureSystem system_;
    char decimalCharacter_;
    std::array<std::string, GeneralFieldCount> texts_;
};

} // namespace quench
