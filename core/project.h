#pragma once

// The model of the open project: every record and table, allocated once at full capacity.
// Tables are 1-based: row 0 exists but is unused, except in the pipe result table whose row 0 is
// cleared with the others. All stored values are in US units (inch, foot, psi, gpm, ft²).
//
// Text fields of a fixed width (Text[n] in the file) are held here without their blank padding
// on the right; the file writer pads them again. String fields are held as they are.
//
// Records compare field for field; a NaN, as random bytes can give, never equals itself.

#include "core/sizing_note.h"
#include "core/table.h"
#include "core/types.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

constexpr int MaxPipes = 1000;
constexpr int MaxNodes = 1000;
constexpr int InflowNodeCode = 10000;
constexpr int FittingKinds = 7;
constexpr int TypeGroupSlots = 11; // groups 1 to 10 and slot 0 for pipes without a group
constexpr int PumpCurvePoints = 5;
constexpr int SolverScratchBytes = 120;
constexpr double ProgramVersion = 601.30;
constexpr Long ProgramFormat = 60130; // the version times 100, rounded

// Material numbers above the library's 50 stand for devices.
constexpr Integer MaterialMeter = 51;
constexpr Integer MaterialBackflowPreventer = 52;
constexpr Integer MaterialAlarmDevice = 53;
constexpr Integer MaterialFirePump = 54;
constexpr Integer DefaultMaterial = 4;

// A device loss or a diameter of -4 means "not given".
constexpr Single NotGiven = -4.0f;

using FittingCountArray = std::array<Integer, FittingKinds>;

struct ProjectData {
    Integer ProgramVersion = 0;
    std::string Title;           // Text[40]
    std::string DesignedBy;      // Text[40]
    std::string Date;            // Text[40]
    std::string CodeReference;   // Text[40]
    std::string ApprovingAgency; // Text[40]
    std::string Comment;         // Text[200]
    Integer PrintComment = 0;
    Long GPDProjectFormat = 0;

    bool operator==(const ProjectData&) const = default;
};

struct ClientData {
    std::string Name, Address, CityStateZip, Phone, Fax; // Text[40]
    std::string Comment;                                 // Text[200]
    Integer PrintComment = 0;

    bool operator==(const ClientData&) const = default;
};

struct CompanyData {
    std::string Name, Representative, Address, CityStateZip, Phone, Fax; // Text[40]
    std::string Comment;                                                 // Text[200]
    Integer PrintComment = 0;

    bool operator==(const CompanyData&) const = default;
};

struct BuildingData {
    std::string Name, Owner, Contact, Address, CityStateZip, Phone, Fax; // Text[40]
    std::string Comment;                                                 // Text[200]
    Integer PrintComment = 0;

    bool operator==(const BuildingData&) const = default;
};

struct SystemData {
    Single InRackSprinklerAllowance = 0;
    Single InsideHoseStreamAllowance = 0;
    Single OutsideHoseStreamAllowance = 0;
    Integer DefaultPipeMaterial = DefaultMaterial;
    Single DefaultKFactor = 0;
    std::string SprinklerMake; // Text[40]
    Integer TemperatureRating = 0;
    std::string SprinklerModel; // Text[40]
    std::string SprinklerSize;  // Text[40]
    Single LaborRate = 0;
    Single OtherLaborHours = 0;
    Single OtherMaterialCosts = 0;
    std::string SystemComment; // Text[200]
    Integer SystemPrintComment = 0;
    std::string HazardDescription; // Text[40]
    Single AreaOfSprinklerOperation = 0;
    std::string SprinklerSystemType = "WET"; // Text[10]
    Single MinimumDesiredDensity = 0;
    Single MaximumAreaPerSprinkler = 0;
    std::string HydrantTestDate;     // Text[40]
    std::string SourceOfInformation; // Text[40]
    std::string TestHydrantID;       // Text[40]
    Single HydrantElevation = 0;
    Single TestStaticPressure = 0;
    Single TestResidualPressure = 0;
    Single TestFlowRate = 0;
    Single CalculatedResidualPressure = 0;
    Single CalculatedFlowRate = 0;
    Single SecondTestStaticPressure = 0;
    Single SecondTestResidualPressure = 0;
    Single SecondTestFlowRate = 0;
    Integer ExteriorHoseFlow = 0;
    std::string PrimaryDischargeName = "Sprinkler"; // Text[9]

    bool operator==(const SystemData&) const = default;
};

struct TreeBuilderData {
    Single CrossDiameter = 0;
    Integer CrossMaterial = 0;
    Integer CrossTypeGroup = 0;
    Single BranchDiameter = 0;
    Integer BranchMaterial = 0;
    Integer BranchTypeGroup = 0;
    Single Elevation = 0;
    Single KFactor = 0;
    std::string AreaGroup; // Text[6]
    Integer SourceNode = 0;
    Single MaxSpaceBetweenBranches = 0;
    Single MaxSpaceBetweenSprinklers = 0;
    Integer ExitNode = 0;
    Integer NodalNumberingIncrement = 0;
    Single LengthOfCrossMain = 0;
    Single DistanceBetweenBranchLines = 0;
    Single LengthOfLeftBranchLine = 0;
    Single LengthOfRightBranchLine = 0;
    Single LeftDistanceToFirstSprinkler = 0;
    Single RightDistanceToFirstSprinkler = 0;
    Single LeftDistanceBetweenSprinklers = 0;
    Single RightDistanceBetweenSprinklers = 0;
    Integer Reserved = 0;
    Double SprinklerArea = 0;

    bool operator==(const TreeBuilderData&) const = default;
};

struct GridBuilderData {
    Single PerimeterDiameter = 0;
    Integer PerimeterMaterial = 0;
    Integer PerimeterTypeGroup = 0;
    Single BranchDiameter = 0;
    Integer BranchMaterial = 0;
    Integer BranchTypeGroup = 0;
    Single Elevation = 0;
    Single KFactor = 0;
    std::string AreaGroup; // Text[6]
    Integer SourceNode = 0;
    Integer NodalNumberingIncrement = 0;
    Single SourceEntryPoint = 0;
    Single DistanceToFirstBranch = 0;
    Single DistanceBetweenBranchLines = 0;
    Integer NumberOfBranchLines = 0;
    Single LeftDistanceToFirstSprinkler = 0;
    Single DistanceBetweenSprinklers = 0;
    Integer SprinklersPerBranchLine = 0;
    Single RightDistanceToPerimeter = 0;
    Single SprinklerArea = 0;

    bool operator==(const GridBuilderData&) const = default;
};

// One row of the network as typed. A row carries its pipe and both end nodes.
struct PipeRecord {
    std::string BegNode;           // String
    std::string EndNode;           // String
    std::string KFactorB = "None"; // Text[6]: a number, "Dflt", "Inact" or "None"
    std::string KFactorE = "None"; // Text[6]
    Single ElevationB = 0;
    Single ElevationE = 0;
    Single PressEstimateB = 0;
    Single PressEstimateE = 0;
    Single SprinklerAreaB = 0;
    Single SprinklerAreaE = 0;
    std::string AreaGroupB; // Text[6]
    std::string AreaGroupE; // Text[6]
    Single NonSprinklerFlowB = 0;
    Single NonSprinklerFlowE = 0;
    Integer Active = 0;
    Integer Material = DefaultMaterial;
    Single DeviceLoss = NotGiven;
    Single Diameter = NotGiven;
    Integer DiameterFixed = 0;
    Single Length = 0;
    Integer OldFittingLength = 0;
    FittingCountArray FittingCounts{};
    std::string FittingText; // String
    Single TotalEquivLength = 0;
    Integer TypeGroup = 0;
    Integer BegIsInflow = 0;
    Integer EndIsInflow = 0;
    Single NonStandardFitLength = 0;
    std::string CadHandle; // Text[6]

    bool operator==(const PipeRecord&) const = default;
};

// The calculation's copy of a row: K-factor words resolved into numbers. Never stored in a file.
struct WorkPipeRecord {
    std::string BegNode;
    std::string EndNode;
    Single KFactorB = 0;
    Single KFactorE = 0;
    Single ElevationB = 0;
    Single ElevationE = 0;
    Single PressEstimateB = 0;
    Single PressEstimateE = 0;
    Single SprinklerAreaB = 0;
    Single SprinklerAreaE = 0;
    std::string AreaGroupB;
    std::string AreaGroupE;
    Single NonSprinklerFlowB = 0;
    Single NonSprinklerFlowE = 0;
    Integer Active = 0;
    Integer Material = DefaultMaterial;
    Single DeviceLoss = NotGiven;
    Single Diameter = NotGiven;
    Integer DiameterFixed = 0;
    Single Length = 0;
    Integer OldFittingLength = 0;
    FittingCountArray FittingCounts{};
    std::string FittingText;
    Single TotalEquivLength = 0;
    Integer TypeGroup = 0;
    Integer BegIsInflow = 0;
    Integer EndIsInflow = 0;
    Single NonStandardFitLength = 0;
    std::string CadHandle;

    bool operator==(const WorkPipeRecord&) const = default;
};

// Settings of a run first, then the summary of the last run.
struct CalculationData {
    std::string CalculationComment; // Text[100]
    Single MinPressureAtHMDNode = 0;
    Single DesignDensity = 0;
    Integer SystemInflowNode = 0;
    Integer SecondInflowNode = 0;
    Integer ThirdInflowNode = 0;
    Double InflowResidualPressure1 = 0;
    Double InflowResidualPressure2 = 0;
    Double InflowResidualPressure3 = 0;
    Double MaximumNodePressureImbalance = 0;
    Integer UseMaximumImbalance = 0;
    Double AverageNodePressureImbalance = 0;
    Integer UseAverageImbalance = 0;
    Integer InitialDampingFactor = 0;
    Integer MinimumDampingFactor = 0;
    Integer DemandMode = 1;
    Integer SupplyMode = 0;
    Integer UseAutomaticPeaking = 0;
    Integer UseResidualPressureEstimate = 0;
    Double MaxWaterVelocity = 0;
    Double MaxFrictionalLoss = 0;
    std::array<Double, TypeGroupSlots> TypeGroupMinDiameter{};
    std::array<Double, TypeGroupSlots> TypeGroupMaxDiameter{};
    std::array<std::uint8_t, SolverScratchBytes> SolverScratch{};
    Integer NumberOfUniquePipeSections = 0;
    Integer NumberOfFlowingSprinklers = 0;
    Double MaximumFlowVelocity = 0;
    Integer MaximumVelocityPipe = 0;
    Double SprinklerFlow = 0;
    Double NonSprinklerFlow = 0;
    Integer ResultFlag = 0;
    Integer HMDNodeNumber = 0;
    Double HMDActualResidualPressure = 0;
    Double HMDActualFlow = 0;
    Double InflowResidualPressure = 0;
    Double InflowFlow = 0;
    std::array<Single, PumpCurvePoints> PumpCurveFlow{};
    std::array<Single, PumpCurvePoints> PumpCurvePressure{};
    std::array<Double, PumpCurvePoints> PumpCoefficients{};
    Integer Reserved = 0;
    Integer PumpDefined = 0;
    Integer PumpSource = 0;
    Integer UseFlowImbalance = 0;
    Integer UseFrictionLimit = 0;
    Integer DoNotIncreaseSize = 0;

    bool operator==(const CalculationData&) const = default;
};

struct NodeRecord {
    Double WorkPressure = 0;
    Integer Number = 0; // 10000 is the internal supply node
    Double Elevation = 0;
    Double KFactor = 0;
    Integer NodeMark = 0;
    Double SprinklerArea = 0;
    Double FixedFlow = 0;
    Double ResidualPressure = 0;
    Double Discharge = 0;
    std::string AreaGroup; // Text[6]
    Double WorkFlow = 0;
    Double FlowImbalance = 0;
    std::string CadHandle; // Text[6]

    bool operator==(const NodeRecord&) const = default;
};

struct CalcPipeRecord {
    std::string BegNode; // Text[6]
    std::string EndNode; // Text[6]
    Double NominalLength = 0;
    Double TotalLength = 0;
    Integer TypeGroup = 0;
    Integer Material = 0;
    std::string ResultFittingText; // String: the material's name
    Double DeviceLoss = 0;
    Double NominalDiameter = 0;
    Double InsideDiameter = 0;
    Double Flow = 0;
    Double Velocity = 0;
    Integer Autosized = 0;
    Double CFactor = 0;
    Double NonStandardFitLength = 0;
    FittingCountArray FittingCounts{};
    Double FrictionLoss = 0; // per unit length
    std::string FittingText; // String
    Double FittingLength = 0;
    Double ElevationPressure = 0;
    Double VelocityPressure = 0;

    bool operator==(const CalcPipeRecord&) const = default;
};

// One pipe of the output reports, its end nodes side by side in the direction of flow.
struct PipeResultRecord {
    Integer BegNode = 0;
    Integer EndNode = 0;
    Double KFactorB = 0;
    Double KFactorE = 0;
    Double ElevationB = 0;
    Double ElevationE = 0;
    Double DischargeB = 0;
    Double DischargeE = 0;
    Double ResidualB = 0;
    Double ResidualE = 0;
    Double NominalDiameter = 0;
    Double InsideDiameter = 0;
    Double CFactor = 0;
    Double Flow = 0;
    Double Velocity = 0;
    Double FrictionLossPerFoot = 0;
    std::string FittingText; // String
    Integer TypeGroup = 0;
    Double PipeLength = 0;
    Double FittingLength = 0;
    Double TotalLength = 0;
    Double FrictionPressure = 0;
    Double ElevationPressure = 0;
    Double VelocityPressure = 0;
    Double Spare = 0;
    Integer DeviceFlag = 0; // 1 a pipe, 2 a device
    Double FixedFlowB = 0;
    Double FixedFlowE = 0;

    bool operator==(const PipeResultRecord&) const = default;
};

constexpr const char* DefaultAlarmDeviceName = "Alarm Check Valve";
constexpr const char* DefaultAlarmDeviceShortName = "Alarm CV";
constexpr const char* DefaultAlarmDeviceCode = "ACV";

// The whole open project. Owned by the application and passed by reference; there is no global.
// Members carry the names of their records and tables, so code reads as the model is described:
// project.SystemData.DefaultPipeMaterial, project.PipeRecord[row].BegNode.
struct Project {
    Project();

    ::quench::ProjectData ProjectData;
    ::quench::ClientData ClientData;
    ::quench::CompanyData CompanyData;
    ::quench::BuildingData BuildingData;
    ::quench::SystemData SystemData;
    ::quench::TreeBuilderData TreeBuilderData;
    ::quench::GridBuilderData GridBuilderData;
    ::quench::CalculationData CalculationData;

    Table<::quench::PipeRecord> PipeRecord;             // 1..MaxPipes, NumberOfPipeRows used
    Table<::quench::WorkPipeRecord> WorkPipeRecord;     // 1..MaxPipes
    Table<::quench::CalcPipeRecord> CalcPipeRecord;     // 1..MaxPipes, NumberOfPipes used
    Table<::quench::NodeRecord> NodeRecord;             // 1..MaxNodes, NumberOfNodes used
    Table<::quench::PipeResultRecord> PipeResultRecord; // 0..MaxPipes

    Integer NumberOfPipeRows = 0;
    Integer NumberOfPipes = 0;
    Integer NumberOfActivePipes = 0;
    Integer NumberOfNodes = 0;
    Double MaxNodePressureImbalanceResult = 0;
    Double AvgNodePressureImbalanceResult = 0;
    Double MaxNodeFlowImbalanceResult = 0;
    Double AvgNodeFlowImbalanceResult = 0;
    Integer InflowNode = 0;
    Integer UnitSystem = 0; // 0 US, 1 SI; 2 is kept as it is
    std::string AlarmDeviceName = DefaultAlarmDeviceName;
    std::string AlarmDeviceShortName = DefaultAlarmDeviceShortName;
    std::string AlarmDeviceCode = DefaultAlarmDeviceCode;
    Integer InputChanged = 0;
    Integer SelectedPipe = 1;

    // While the AUTOLOAD template is read at New: a reset then clears only the network, and the
    // file reader skips the output tables.
    bool LoadingTemplate = false;

    // From the last run, not stored: why sizing left a pipe of CalcPipeRecord over a limit, by
    // row; empty when no pipe was left so.
    std::vector<SizingNote> SizingNotes;

    // Copies of the output tables and of the numeric settings in SI units, for what shows SI (a
    // report builds them on its own copy of the project). Built from the US tables by
    // BuildSITables, empty until then; never the source of a stored value.
    ::quench::SystemData SystemDataSI;
    ::quench::CalculationData CalculationDataSI;
    Table<::quench::NodeRecord> NodeRecordSI;
    Table<::quench::CalcPipeRecord> CalcPipeRecordSI;
    Table<::quench::PipeResultRecord> PipeResultRecordSI;
};

// Every field to its default. While LoadingTemplate is set only the network is cleared.
void ResetProject(Project& project);

// The network only: pipe rows cleared, the three counters at 0, everything else as it stands.
void ClearNetworkOnly(Project& project);

// True for a row whose two node texts are both blank after trimming.
bool IsBlankRow(const PipeRecord& row);

// True for a row with both node texts filled.
bool HasBothNodes(const PipeRecord& row);

// The solver's tables carry the first inflow as node InflowNodeCode; the user knows it by the
// number typed (InflowNode). These give any node back as the user typed it.
int TypedNodeNumber(const Project& project, int number);
double TypedNodeNumber(const Project& project, double number); // a number read from a node text
std::string TypedNodeText(const Project& project, std::string_view text); // trimmed

} // namespace quench
