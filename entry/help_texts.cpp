#include "entry/help_texts.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace quench {

namespace {

using namespace std::string_view_literals;

struct HelpEntry {
    std::string_view Key;
    std::string_view Title;
    std::string_view Text;
};

// Texts that several keys share.
constexpr std::string_view NodeText =
    "A node is a point of the network: the end of a pipe, a {w}, a junction or the inflow. Type "
    "a whole number from 1 to 9999; no point or comma is taken. A node exists as soon as a pipe "
    "names it, and its data ({w} K-factor, elevation, pressure estimate, {w} area, area group "
    "and non-{w} flow) are kept alike in every pipe that names it: a node number typed into a "
    "new pipe takes over the data the node already has. The beginning and ending node of one "
    "pipe can not be the same number, and two pipes can not join the same two nodes.";
constexpr std::string_view AreaGroupText =
    "The area group names the group of {w}s that flow together. With automatic peaking only the "
    "group of the most demanding {w} flows, together with the {w}s of no group. Up to 6 capital "
    "letters A to Z; leave the field empty for a node of no group.";
constexpr std::string_view ElevationText =
    "The elevation of the node above (or, as a negative number, below) the project's reference "
    "level, in feet (meters in SI units). Range -3276.5 to 3276.5 ft, one decimal. Only the "
    "differences of elevation count: 0.433 psi for every foot a node stands higher. Both nodes of "
    "a meter, a backflow preventer, an alarm device or a fire pump must have the same elevation.";
constexpr std::string_view PressureEstimateText =
    "A starting guess of the node's residual pressure, in psi (kPa in SI units), 0 to 3276.5 "
    "with two decimals. It is used only when \"Use Residual Pressure Estimates\" is checked on "
    "the Calculation screen; a good guess can shorten a difficult calculation. After a "
    "successful calculation the calculated pressures are written back here as the next "
    "estimates. Leave it at 0 if you have no better value.";
constexpr std::string_view SprinklerAreaText =
    "The floor area that this {w} protects, in square feet (square meters in SI units), 0 to "
    "3276.5. The calculation multiplies it by the minimum desired density to find the flow the "
    "{w} must give. A {w} node left at 0 uses the \"Max Area Per {W}\" of the General Project "
    "Data screen. The total shown on the pipe screen adds up the areas of the nodes with a "
    "numeric K-factor.";
constexpr std::string_view NonSprinklerFlowText =
    "A fixed flow taken out of the network at this node, in gpm (Lpm in SI units), 0 to 3250: a "
    "hose stream, a rack {w} allowance or any other outlet that does not follow a K-factor. "
    "The field can only be used at a node without a K-factor (\"None\" or 0); the inflow node "
    "must have a flow of 0.";
constexpr std::string_view PipeTypeText =
    "The pipe type group, a whole number from 0 to 10. Pipes of one group are sized together by "
    "autosizing, within the minimum and maximum diameters given for the group on the Pipe "
    "Sizing/Constraints tab of the Calculation screen; pipes of one group share one size. 0 "
    "means no group.";
constexpr std::string_view MaterialText =
    "The material of the pipe, by its number in the pipe materials library (1 to 50), or a "
    "device by its letter: M a meter, B a backflow preventer, A the alternative device named in "
    "the device dialog (an alarm check valve unless renamed), P a fire pump. The material gives "
    "the inside diameters, the C value and the fitting lengths of the pipe. Pick a row of the "
    "list, or type the number or letter in the box below it.";
constexpr std::string_view KFactorText =
    "The K-factor of the {w} at this node, in gpm/psi^0.5 (the listing factor Km in SI units), "
    "0 to 326.99 with two decimals. The {w} flows K times the square root of its pressure. "
    "Instead of a number you may type a word, or its first letter alone: \"Dflt\" (D) uses the "
    "default K-factor of the General Project Data screen, so a change there reaches every such "
    "node; \"None\" (N) or 0 is a node without a {w}; \"Inact\" (I) is a {w} that does not flow "
    "in this calculation. Pick a row of the list, or open a calculator to find a K-factor.";
constexpr std::string_view DiameterText =
    "The nominal diameter of the pipe, in inches (millimeters in SI units), 0 to 32 with three "
    "decimals. It must be one of the sizes of the pipe's material in the library, which gives "
    "the inside diameter used by the calculation. 0 asks for autosizing: the calculation "
    "chooses the size within the limits of the Calculation screen, and the diameter is shown in "
    "red. Choose a material before a diameter.";
constexpr std::string_view StandardFittingText =
    "This input is the number of fittings associated with the pipe.  Simply enter the number of "
    "fittings followed by the letter designating that fitting.  For example, \"3E\" would "
    "designate (3) 90 degree elbows.  You can enter more than one type of fitting at one time.  "
    "\"2F3E\" would, for example, designate (2) 45 degree elbows and (3) 90 degree elbows.  Up to "
    "10 characters; at most 99 fittings of a kind.\n\nFitting Designations:\nF  45 Degree Elbow\n"
    "E  90 Degree Elbow\nL  Long Turn Elbow\nT  Tee or Cross\nB  Butterfly Valve\nG  Gate "
    "Valve\nC  Check Valve";
constexpr std::string_view NonStandardFittingText =
    "The equivalent length of fittings that are not among the seven standard kinds, in feet "
    "(meters in SI units), 0 to 999.9 with one decimal. It is added to the pipe's length and the "
    "lengths of its standard fittings. The Additional Fitting Length Calculator finds such a "
    "length from a fitting's head loss.";
constexpr std::string_view PipeLengthText =
    "The length of the pipe, in feet (meters in SI units), 0 to 9999.99 with two decimals, "
    "without its fittings: the equivalent lengths of the fittings are added to give the total "
    "equivalent length. Choose a material before a length. A device row may have a length of 0.";
constexpr std::string_view SizingConstraintText =
    "The smallest and the largest nominal diameter, in inches (millimeters in SI units), that "
    "autosizing may choose for the pipes of this type group. Leave a field empty for no limit. "
    "Pick a size from the list of all diameters of the library.";
constexpr std::string_view TreeNetworkText =
    "The tree builder lays out a cross main with branch lines to its left and right and {w}s "
    "along each branch line, and writes the pipes into the table. Give the source node, the "
    "numbering increment, the lengths and spacings, the pipe materials, diameters and type "
    "groups, and the data of the {w}s; then build the tree.";
constexpr std::string_view GridNetworkText =
    "The grid builder lays out a perimeter loop with branch lines between its two sides and "
    "{w}s along the branch lines, and writes the pipes into the table. Give the source node, "
    "the numbering increment, the entry point, the spacings, the pipe materials, diameters and "
    "type groups, and the data of the {w}s; then build the grid.";
constexpr std::string_view GlobalValuesText =
    "The values that the chosen item has in the selected rows, each once, in order of "
    "appearance. Pick one to fill the field.";

constexpr std::array Table{
    // Calculators.
    HelpEntry{"AddFitCValue", "C Value",
              "The Hazen-Williams C value of the pipe, 0.01 to 200 with two decimals: 120 for "
              "steel in a wet system, 100 in a dry system, 150 for copper and plastic."},
    HelpEntry{"AddFitDensity", "Density",
              "The density of the fluid, in lb/ft³ (kg/m³ in SI units), 0 to 99.9999 with four "
              "decimals. Water at 60 F is 62.37 lb/ft³."},
    HelpEntry{"AddFitDiameter", "Diameter",
              "The inside diameter of the pipe, in inches (millimeters in SI units), 0 to 32 with "
              "three decimals."},
    HelpEntry{"AddFitFlowRate", "Flow Rate",
              "The flow through the fitting at which its head loss is known, in gpm (Lpm in SI "
              "units), 0 to 9999.99 with two decimals."},
    HelpEntry{"AddFitHeadLoss", "Head Loss",
              "The pressure loss across the fitting at the flow rate given, in psi (kPa in SI "
              "units), 0 to 500 with two decimals, as the maker's data sheet gives it."},
    HelpEntry{"AddFitViscosity", "Viscosity",
              "The dynamic viscosity of the fluid, in centipoise, 0 to 9.9999 with four decimals. "
              "Water at 60 F is 1.1 cP."},
    HelpEntry{"AddFitRoughness", "Roughness",
              "The absolute roughness of the pipe wall, in inches (millimeters in SI units), 0 to "
              "0.01 with four decimals: 0.002 inch for new steel, 0.004 inch for older steel."},
    HelpEntry{"AreaGroup", "Area Group", AreaGroupText},
    HelpEntry{"BranchLinePipeLength", "Pipe Length",
              "The length of pipe between two {w}s of the branch line, in feet (meters in SI "
              "units), 0 to 9999.99 with two decimals, without fittings."},
    HelpEntry{"BranchLineMaterial", "Pipe Material", MaterialText},
    HelpEntry{"BranchLineSprinkler", "K-Factor", KFactorText},
    HelpEntry{"BranchLinePipeDiameter", "Pipe Diameter", DiameterText},
    HelpEntry{"BranchLineStandardFitting", "Standard Fitting", StandardFittingText},
    HelpEntry{"BranchLineNonStandardFitting", "Non-Standard Fittings", NonStandardFittingText},
    HelpEntry{"KFactFlowRate", "Flow Rate",
              "The flow of the {w} at the residual pressure given, in gpm (Lpm in SI units). The "
              "calculator gives K = flow / square root of pressure."},
    HelpEntry{"KFactResidPress", "Residual Pressure",
              "The residual pressure at the {w} for the flow given, in psi (kPa in SI units); "
              "it must be above 0."},
    HelpEntry{"KFactKfactor", "K-Factor", KFactorText},

    // The Calculation screen.
    HelpEntry{"CalculationDataAverageNodePressureImbalance", "Average Nodal Pressure Imbalance",
              "The calculation ends when the average pressure correction over all nodes in one "
              "iteration falls below this value, in psi (kPa in SI units), 0.0000001 to 1. A "
              "smaller value gives a closer answer and takes longer. Choose this or the maximum "
              "nodal pressure imbalance."},
    HelpEntry{"CalculationDataCalculationMode", "Calculation Mode",
              "Demand: the program finds the pressure and flow that the inflow node must supply "
              "so that the most demanding {w} (HMD) holds the minimum residual pressure and every "
              "flowing {w} the minimum density. Supply: you give the pressure at up to three "
              "inflow nodes and the program finds what the network delivers."},
    HelpEntry{"CalculationDataInitialDampingFactor", "Initial Damping Factor",
              "The share, in percent from 1 to 100, of each pressure correction that the first "
              "iterations apply. 100 applies the whole correction; a smaller factor helps a "
              "network that does not settle."},
    HelpEntry{"CalculationDataMaximumAllowableFrictionalLoss", "Maximum Allowable Frictional Loss",
              "The highest friction loss that autosizing allows in a pipe, in psi per 100 feet of "
              "pipe (kPa per 30.48 m in SI units), 0 to 999.99. Leave it empty for no limit."},
    HelpEntry{"CalculationDataMaximumAllowableWaterVelocity", "Maximum Allowable Water Velocity",
              "The highest water velocity that autosizing allows in a pipe, in ft/sec (m/s in SI "
              "units), 0 to 999.99. Leave it empty for no limit."},
    HelpEntry{"CalculationDataMaximumNodePressureImbalance", "Maximum Nodal Pressure Imbalance",
              "The calculation ends when the largest pressure correction of any node in one "
              "iteration falls below this value, in psi (kPa in SI units), 0.0000001 to 1."},
    HelpEntry{"CalculationDataMinHMDPressure", "Minimum Residual Pressure At HMD {W} Node",
              "The least residual pressure that the most demanding {w} (HMD) must have, in psi "
              "(kPa in SI units), 0 to 999.99. Demand mode only; the density may ask for more, "
              "and the program then holds the higher pressure."},
    HelpEntry{"CalculationDataMinimumDampingFactor", "Minimum Damping Factor",
              "The least share, in percent from 1 to 100, to which the damping factor may fall "
              "when the iterations oscillate."},
    HelpEntry{"CalculationDataNodalPressureImbalance", "Flow Imbalance",
              "Checked, the calculation goes on until the flows at every node balance within "
              "0.01 gpm as well. The answer is closer; the calculation may take longer."},
    HelpEntry{"CalculationDataOptions", "Calculation Options",
              "Automatic peaking: only the area group of the most demanding {w} flows, with the "
              "{w}s of no group. Residual pressure estimates: the pressure estimates of the nodes "
              "are the starting values. Update estimates in case of oscillation: the estimates "
              "are renewed when the iterations oscillate."},
    HelpEntry{"CalculationDataOscillationDampingFactor", "Oscillation Damping Factor",
              "The factor by which the damping is reduced each time the iterations oscillate, 1 "
              "to 100."},
    HelpEntry{"CalculationDataResidualPressure", "Residual Pressure At Inflow Node",
              "The residual pressure available at the inflow node, in psi (kPa in SI units), 0 to "
              "10000. Supply mode only; the first inflow node is required, the second and third "
              "are optional."},
    HelpEntry{"CalculationDataMinPipeSizingConstraintForTypeGroup", "Available Diameters",
              SizingConstraintText},
    HelpEntry{"CalculationDataMaxPipeSizingConstraintForTypeGroup", "Available Diameters",
              SizingConstraintText},
    HelpEntry{"PipeSizingConstraintForTypeGroup", "Pipe Sizing Constraint For Type Group",
              SizingConstraintText},

    // The pipe screen.
    HelpEntry{"EEPipeDataActive", "Status",
              "Active pipes take part in the calculation; an inactive pipe (\"Inact\") stays in "
              "the table but is left out, as if it were closed. Click to switch. A pipe without "
              "both node numbers can not be made active."},
    HelpEntry{"EEPipeDataEquivLength", "Equivalent Length",
              "The total equivalent length of the pipe: its length, the equivalent lengths of its "
              "standard fittings for its material and diameter, and the non-standard fitting "
              "length, in feet (meters in SI units). Shown only; it follows from the other "
              "fields."},
    HelpEntry{"EEPipeDataGlobalNodeFrom", "From Node",
              "The first node number of the range of rows that global edit acts on, 1 to 9999."},
    HelpEntry{"EEPipeDataGlobalNodeTo", "To Node",
              "The last node number of the range of rows that global edit acts on, 1 to 9999."},
    HelpEntry{"EEPipeDataGridAreaGroup", "Area Group", AreaGroupText},
    HelpEntry{"EEPipeDataGridBranchPipeType", "Branch Pipe Type", PipeTypeText},
    HelpEntry{"EEPipeDataGridElevation", "Elevation", ElevationText},
    HelpEntry{"EEPipeDataGridPerimeterPipeType", "Perimeter Pipe Type", PipeTypeText},
    HelpEntry{"EEPipeDataGridSprinklerArea", "{W} Area", SprinklerAreaText},
    HelpEntry{"EEPipeDataMeterLoss", "Device Loss",
              "For a device row (material M, B or A) the constant pressure loss across the "
              "device, in psi (kPa in SI units), 0 to 99999.99. For a fire pump (P) the pressure "
              "boost of the pump; \"Curve\" means that the project's pump curve gives the boost "
              "at the flow through the pump. Not used for a pipe."},
    HelpEntry{"EEPipeDataNode", "Node Number", NodeText},
    HelpEntry{"EEPipeDataNonSprinklerFlow", "Non-{W} Flow", NonSprinklerFlowText},
    HelpEntry{"EEPipeDataPipeDiameter", "Pipe Diameter", DiameterText},
    HelpEntry{"EEPipeDataPipeLength", "Pipe Length", PipeLengthText},
    HelpEntry{"EEPipeDataPipeType", "Pipe Type", PipeTypeText},
    HelpEntry{"EEPipeDataPressureEstimate", "Pressure Estimate", PressureEstimateText},
    HelpEntry{"EEPipeDataSprinklerArea", "{W} Area", SprinklerAreaText},
    HelpEntry{"EEPipeDataSprinklerElevation", "Elevation", ElevationText},
    HelpEntry{"EEPipeDataSprinklerGroup", "Area Group", AreaGroupText},
    HelpEntry{"EEPipeDataStandardFitting", "Standard Fittings", StandardFittingText},
    HelpEntry{"EEPipeDataNonStandardFitting", "Non-Standard Fittings", NonStandardFittingText},
    HelpEntry{"EEPipeDataTreeAreaGroup", "Area Group", AreaGroupText},
    HelpEntry{"EEPipeDataTreeBranchPipeType", "Branch Pipe Type", PipeTypeText},
    HelpEntry{"EEPipeDataTreeCrossPipeType", "Cross Main Pipe Type", PipeTypeText},
    HelpEntry{"EEPipeDataTreeElevation", "Elevation", ElevationText},
    HelpEntry{"EEPipeDataTreeMaxSpaceBetBranches", "Maximum Space Between Branch Lines",
              "The largest distance allowed between two branch lines along the cross main, in "
              "feet (meters in SI units). The builder places as many branch lines as this "
              "spacing asks for."},
    HelpEntry{"EEPipeDataTreeMaxSpaceBetSprinklers", "Maximum Space Between {W}s",
              "The largest distance allowed between two {w}s along a branch line, in feet "
              "(meters in SI units). The builder places as many {w}s per row as this spacing "
              "asks for."},
    HelpEntry{"EEPipeDataTreeSprinklerArea", "{W} Area", SprinklerAreaText},
    HelpEntry{"EEPipeDataPipeMaterial", "Pipe Material", MaterialText},
    HelpEntry{"EEPipeDataTreeCrossPipeMaterial", "Pipe Material", MaterialText},
    HelpEntry{"EEPipeDataTreeBranchPipeMaterial", "Pipe Material", MaterialText},
    HelpEntry{"EEPipeDataGridPerimeterPipeMaterial", "Pipe Material", MaterialText},
    HelpEntry{"EEPipeDataGridBranchPipeMaterial", "Pipe Material", MaterialText},
    HelpEntry{"EEPipeDataKFactorB", "K-Factor", KFactorText},
    HelpEntry{"EEPipeDataKFactorE", "K-Factor", KFactorText},
    HelpEntry{"EEPipeDataTreeKFactor", "K-Factor", KFactorText},
    HelpEntry{"EEPipeDataGridKFactor", "K-Factor", KFactorText},
    HelpEntry{"EEPipeDataTreeCrossPipeDiameter", "Pipe Diameter", DiameterText},
    HelpEntry{"EEPipeDataTreeBranchPipeDiameter", "Pipe Diameter", DiameterText},
    HelpEntry{"EEPipeDataGridPerimeterPipeDiameter", "Pipe Diameter", DiameterText},
    HelpEntry{"EEPipeDataGridBranchPipeDiameter", "Pipe Diameter", DiameterText},
    HelpEntry{"EEPipeDataGlobalPipeTypeGroup", "Pipe Type Group",
              "The pipe type groups that the pipes of the project use. Pick one to fill the "
              "field."},
    HelpEntry{"EEPipeDataGlobalNodeAreaGroup", "Nodal Area Group",
              "The area groups that the nodes of the project use. Pick one to fill the field."},
    HelpEntry{"EEPipeLibraryCopyPipe", "Copy Pipe",
              "Choose the material whose sizes and data are copied into the material being "
              "edited."},
    HelpEntry{"FirePumpCopyPump", "Copy Pump",
              "Choose the pump of the database whose curve points are copied."},
    HelpEntry{"GridNetworkData", "Grid Network Data", GridNetworkText},
    HelpEntry{"TreeNetworkData", "Tree Network Data", TreeNetworkText},

    // Global edit.
    HelpEntry{"GlobalNewSprkArea", "New {W} Area",
              "The {w} area to give the nodes of the selection, in square feet (square meters "
              "in SI units), 0 to 3276.5."},
    HelpEntry{"GlobalNodeCurrentValues", "Current Node Values",
              "The values that the chosen node item has in the selected rows. Only rows with "
              "this value are changed; leave it empty to change every row of the selection."},
    HelpEntry{"GlobalPipeCurrentValues", "Current Pipe Values",
              "The values that the chosen pipe item has in the selected rows. Only rows with "
              "this value are changed; leave it empty to change every row of the selection."},
    HelpEntry{"GlobalCurrentElevation", "Elevation", GlobalValuesText},
    HelpEntry{"GlobalNewElevation", "Elevation", GlobalValuesText},
    HelpEntry{"GlobalCurrentKFactor", "K-Factor", GlobalValuesText},
    HelpEntry{"GlobalNewKFactor", "K-Factor", GlobalValuesText},
    HelpEntry{"GlobalCurrentSprkArea", "{W} Area", GlobalValuesText},
    HelpEntry{"GlobalCurrentMaterial", "Materials", GlobalValuesText},
    HelpEntry{"GlobalNewMaterial", "Pipe Material", MaterialText},
    HelpEntry{"GlobalCurrentDiameter", "Diameters", GlobalValuesText},
    HelpEntry{"GlobalNewDiameter", "Diameters", GlobalValuesText},
    HelpEntry{"GlobalCurrentLength", "Lengths", GlobalValuesText},
    HelpEntry{"GlobalNewLength", "Lengths", GlobalValuesText},
    HelpEntry{"GlobalCurrentStatus", "Status", GlobalValuesText},
    HelpEntry{"GlobalNewStatus", "Status", GlobalValuesText},

    // General project data.
    HelpEntry{"PrimaryTypeOfDischarge", "Primary Type Of Discharge",
              "The device through which the system mainly discharges: \"Sprinkler\" or "
              "\"Hose\". The word is used in the captions, messages and reports of the whole "
              "program; the calculation is the same. Any other word is removed."},
    HelpEntry{"GPDAreaOfSprinklerOperation", "Area of {W} Operation",
              "The design area over which the {w}s are assumed to flow, in square feet (square "
              "meters in SI units), 1 to 99999. It is printed in the reports. A dry system asks "
              "for 30 percent more; the calculation applies that itself."},
    HelpEntry{"GPDCalcDemandFlowRate", "Calculated Demand Flow Rate",
              "The flow that the system needs at the inflow node, as the last calculation found "
              "it, in gpm (Lpm in SI units). Shown only."},
    HelpEntry{"GPDCalcDemandResPressure", "Calculated Demand Pressure",
              "The residual pressure that the system needs at the inflow node, as the last "
              "calculation found it, in psi (kPa in SI units). Shown only."},
    HelpEntry{"GPDDefaultPipeMaterial", "Default Pipe Material",
              "The material, by its number in the pipe materials library (1 to 50), that a new "
              "pipe row gets, and that a row takes when its material field is emptied."},
    HelpEntry{"GPDDefaultKFactor", "Default System K-Factor",
              "The K-factor of every {w} node whose K-factor reads \"Dflt\", in gpm/psi^0.5 (Km "
              "in SI units), 0 to 326.99 with two decimals. Such nodes keep no copy: a change "
              "here changes all of them at once. The list gives the nominal K-factors of NFPA "
              "13 by orifice size."},
    HelpEntry{"GPDHazardDescription", "Hazard Description",
              "The occupancy hazard classification of the protected area, as NFPA 13 names it, "
              "up to 200 characters. Pick one or type your own; it is printed in the reports."},
    HelpEntry{"GPDHydrantElevation", "Hydrant Elevation",
              "The elevation of the test hydrant, in feet (meters in SI units), 0 to 32767, for "
              "the reports."},
    HelpEntry{"GPDHydrantID", "Hydrant ID",
              "The name or number of the hydrant that was tested, up to 50 characters."},
    HelpEntry{"GPDHydrantTestDate", "Hydrant Test Date",
              "The date of the hydrant flow test, up to 50 characters."},
    HelpEntry{"GPDInRackSprinklerAllow", "In Rack {W} Allowance",
              "The flow allowed for in-rack {w}s, in gpm (Lpm in SI units), 0 to 9999 with two "
              "decimals. It is printed in the reports and shown on the hydraulic graph; it does "
              "not change the calculation: enter such a flow at a node as well if the network "
              "must carry it."},
    HelpEntry{"GPDInsideHoseStreamAllowance", "Inside Hose Stream Allowance",
              "The flow allowed for inside hose streams, in gpm (Lpm in SI units), 0 to 9999 "
              "with two decimals. It is printed in the reports and shown on the hydraulic graph; "
              "it does not change the calculation: enter such a flow as a non-{w} flow at a node "
              "as well if the network must carry it."},
    HelpEntry{"GPDOutsideHoseStreamAllow", "Outside Hode Stream Allowance",
              "The flow allowed for outside hose streams, in gpm (Lpm in SI units), 0 to 9999 "
              "with two decimals. It is printed in the reports and shown on the hydraulic graph; "
              "it does not change the calculation: enter such a flow as a non-{w} flow at a node "
              "as well if the network must carry it."},
    HelpEntry{"GPDMinDesiredDensity", "Minimum Desired Density",
              "The least flow per square foot of floor that every flowing {w} must give, in "
              "gpm/ft² (Lpm/m² in SI units), 0 to 32.767 with four decimals. Demand mode holds "
              "every flowing {w} at this density as well as at the minimum pressure. The list "
              "gives points of the density/area curves of NFPA 13. The value is the same as on "
              "the Calculation screen."},
    HelpEntry{"GPDMaxAreaPerSpinkler", "Maximum Area Per {W}",
              "The largest floor area that one {w} may protect, in square feet (square meters in "
              "SI units), 1 to 99999. A {w} node with an area of 0 uses this area. The list "
              "gives the limits of NFPA 13 by hazard."},
    HelpEntry{"GPDOtherLaborHours", "Other Labor Hours",
              "Labor hours beyond those of the pipes, 0 to 999.99, added in the pipe cost report."},
    HelpEntry{"GPDOtherMaterialCost", "Other Material Costs",
              "Material costs beyond those of the pipes, in dollars, 0 to 999.99, added in the "
              "pipe cost report."},
    HelpEntry{"GPDlaborRate", "Labor Rate",
              "The cost of one hour of labor, in dollars per hour, 0 to 99.9999, for the pipe "
              "cost report."},
    HelpEntry{"GPDSourceOfInformation", "Source Of Information",
              "Who made or reported the hydrant test, up to 50 characters."},
    HelpEntry{"GPDSprinklerMake", "{W} Make", "The maker of the {w}s, up to 50 characters."},
    HelpEntry{"GPDSprinklerModel", "{W} Model",
              "The model of the {w}s, up to 50 characters, for the reports."},
    HelpEntry{"GPDSprinklerSize", "{W} Size",
              "The size of the {w}s, such as the orifice, up to 50 characters, for the "
              "reports."},
    HelpEntry{"GPDSprinklerSystemType", "{W} System Type",
              "\"Wet\" or \"Dry\". A dry system asks for a design area 30 percent larger; the "
              "calculation applies that itself. Any other word is removed."},
    HelpEntry{"GPDTemperatureRating", "Temperature Rating",
              "The temperature at which the {w}s open, in degrees F (C in SI units), 0 to 999."},
    HelpEntry{"GPDTestExteriorHose", "Exterior Hose",
              "The flow of the exterior hose that was open during the second test, in gpm (Lpm "
              "in SI units), 0 to 9999. A project without one shows 500."},
    HelpEntry{"GPDTestFlowRate", "Test Flow Rate",
              "The flow measured at the test hydrant, in gpm (Lpm in SI units), 0 to 32767 with "
              "two decimals. The first column is the test as made, the second the test made "
              "again with an exterior hose flowing."},
    HelpEntry{"GPDTestResidualPressure", "Test Residual Pressure",
              "The pressure that remained while the test hydrant flowed, in psi (kPa in SI "
              "units), 0 to 32767 with two decimals. The first column is the test as made, the "
              "second the test made again with an exterior hose flowing."},
    HelpEntry{"GPDTestStaticPressure", "Test Static Pressure",
              "The pressure at the hydrant with no water flowing, in psi (kPa in SI units), 0 to "
              "32767 with two decimals. The first column is the test as made, the second the "
              "test made again with an exterior hose flowing. The two tests give the water "
              "supply curves of the hydraulic graph."},

    // The node editor.
    HelpEntry{"NodeNumber", "Node Number",
              "The number of the node. It is shown only: a node is made, renumbered or deleted "
              "on the pipe screen. The inflow node stands last."},
    HelpEntry{"NodeDataKFactor", "K-Factor", KFactorText},
    HelpEntry{"NodeDataElevation", "Node Elevation", ElevationText},
    HelpEntry{"NodeDataNonSprkFlow", "Non-{W} Flow", NonSprinklerFlowText},
    HelpEntry{"NodeDataPressEst", "Pressure Estimate", PressureEstimateText},
    HelpEntry{"NodeDataSprinklerArea", "{W} Area", SprinklerAreaText},
};

constexpr std::array PlainKeys{
    "AddFitCValue"sv,
    "AddFitDensity"sv,
    "AddFitDiameter"sv,
    "AddFitFlowRate"sv,
    "AddFitHeadLoss"sv,
    "AddFitViscosity"sv,
    "AreaGroup"sv,
    "BranchLinePipeLength"sv,
    "CalculationDataAverageNodePressureImbalance"sv,
    "CalculationDataCalculationMode"sv,
    "CalculationDataInitialDampingFactor"sv,
    "CalculationDataMaximumAllowableFrictionalLoss"sv,
    "CalculationDataMaximumAllowableWaterVelocity"sv,
    "CalculationDataMaximumNodePressureImbalance"sv,
    "CalculationDataMinHMDPressure"sv,
    "CalculationDataMinimumDampingFactor"sv,
    "CalculationDataNodalPressureImbalance"sv,
    "CalculationDataOptions"sv,
    "CalculationDataOscillationDampingFactor"sv,
    "CalculationDataResidualPressure"sv,
    "EEPipeDataActive"sv,
    "EEPipeDataEquivLength"sv,
    "EEPipeDataGlobalNodeFrom"sv,
    "EEPipeDataGlobalNodeTo"sv,
    "EEPipeDataGridAreaGroup"sv,
    "EEPipeDataGridBranchPipeType"sv,
    "EEPipeDataGridElevation"sv,
    "EEPipeDataGridPerimeterPipeType"sv,
    "EEPipeDataGridSprinklerArea"sv,
    "EEPipeDataMeterLoss"sv,
    "EEPipeDataNode"sv,
    "EEPipeDataNonSprinklerFlow"sv,
    "EEPipeDataPipeDiameter"sv,
    "EEPipeDataPipeLength"sv,
    "EEPipeDataPipeType"sv,
    "EEPipeDataPressureEstimate"sv,
    "EEPipeDataSprinklerArea"sv,
    "EEPipeDataSprinklerElevation"sv,
    "EEPipeDataSprinklerGroup"sv,
    "EEPipeDataStandardFitting"sv,
    "EEPipeDataTreeAreaGroup"sv,
    "EEPipeDataTreeBranchPipeType"sv,
    "EEPipeDataTreeCrossPipeType"sv,
    "EEPipeDataTreeElevation"sv,
    "EEPipeDataTreeMaxSpaceBetBranches"sv,
    "EEPipeDataTreeMaxSpaceBetSprinklers"sv,
    "EEPipeDataTreeSprinklerArea"sv,
    "GPDAreaOfSprinklerOperation"sv,
    "GPDCalcDemandFlowRate"sv,
    "GPDCalcDemandResPressure"sv,
    "GPDHydrantElevation"sv,
    "GPDHydrantID"sv,
    "GPDHydrantTestDate"sv,
    "GPDInRackSprinklerAllow"sv,
    "GPDInsideHoseStreamAllowance"sv,
    "GPDOtherLaborHours"sv,
    "GPDOtherMaterialCost"sv,
    "GPDOutsideHoseStreamAllow"sv,
    "GPDSourceOfInformation"sv,
    "GPDSprinklerMake"sv,
    "GPDSprinklerModel"sv,
    "GPDSprinklerSize"sv,
    "GPDTemperatureRating"sv,
    "GPDTestExteriorHose"sv,
    "GPDTestFlowRate"sv,
    "GPDTestResidualPressure"sv,
    "GPDTestStaticPressure"sv,
    "GPDlaborRate"sv,
    "GlobalNewSprkArea"sv,
    "GlobalNodeCurrentValues"sv,
    "GlobalPipeCurrentValues"sv,
    "GridNetworkData"sv,
    "KFactFlowRate"sv,
    "KFactResidPress"sv,
    "NodeDataElevation"sv,
    "NodeDataNonSprkFlow"sv,
    "NodeDataPressEst"sv,
    "NodeDataSprinklerArea"sv,
    "NodeNumber"sv,
    "PipeSizingConstraintForTypeGroup"sv,
    "TreeNetworkData"sv,
};

constexpr auto TableKeys = [] {
    std::array<std::string_view, Table.size()> keys{};
    for (std::size_t index = 0; index < Table.size(); ++index) {
        keys[index] = Table[index].Key;
    }
    return keys;
}();

const HelpEntry* FindEntry(std::string_view key) {
    const auto found = std::find_if(Table.begin(), Table.end(),
                                    [key](const HelpEntry& entry) { return entry.Key == key; });
    return found != Table.end() ? &*found : nullptr;
}

void ReplaceAll(std::string& text, std::string_view mark, std::string_view word) {
    for (std::size_t at = text.find(mark); at != std::string::npos;
         at = text.find(mark, at + word.size())) {
        text.replace(at, mark.size(), word);
    }
}

} // namespace

std::string DischargeWordOf(std::string_view primaryDischargeName) {
    const std::string word = Trim(primaryDischargeName);
    return word.empty() ? std::string("Sprinkler") : word;
}

std::string WithDischargeWord(std::string_view text, std::string_view word) {
    std::string small(word);
    std::transform(small.begin(), small.end(), small.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    std::string result(text);
    ReplaceAll(result, "{W}", word);
    ReplaceAll(result, "{w}", small);
    return result;
}

HelpText HelpTextOf(std::string_view key, std::string_view dischargeWord) {
    const HelpEntry* entry = FindEntry(key);
    if (entry == nullptr) {
        return {};
    }
    const std::string word = DischargeWordOf(dischargeWord);
    return {WithDischargeWord(entry->Title, word), WithDischargeWord(entry->Text, word)};
}

bool HasHelpText(std::string_view key) {
    return FindEntry(key) != nullptr;
}

std::span<const std::string_view> HelpTextKeys() {
    return TableKeys;
}

std::span<const std::string_view> PlainHelpKeys() {
    return PlainKeys;
}

} // namespace quench
