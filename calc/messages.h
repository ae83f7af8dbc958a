#pragma once

// The words of the calculation's checks and messages, in one place for every front end.

#include <string>
#include <string_view>

namespace quench::messages {

constexpr const char* AppTitle = "QUENCH";
constexpr const char* InputDataErrorTitle = "Input Data Error";
constexpr const char* InputDataTitle = "Input Data";

constexpr const char* NoBlankRows =
    "No blank rows permitted for a calculation.  Please sort pipes or delete blank pipe(s).";

// The Calculation screen.
constexpr const char* NoPipeSection = "There is not any pipe section specified in this project.";
constexpr const char* ChooseMode = "You must choose a calculation mode.";
constexpr const char* SpecifyInflowNode = "You must specify an Inflow node to perform calculation.";
std::string PositiveInflowPressure(const std::string& node);
std::string InflowPressureMissing(const std::string& node);
constexpr const char* MinimumHmdPressure =
    "You must specify Minimum Residual Pressure At HMD Sprinkler Node to perform Demand Mode "
    "calculation.";
constexpr const char* ChooseImbalance =
    "You must choose an imbalance standard. Maximum Nodal Pressure or Average Nodal Pressure.";
constexpr const char* MaximumImbalanceMissing =
    "You should specify Maximum Nodal Pressure imbalance for the calculation.";
constexpr const char* AverageImbalanceMissing =
    "You should specify Average Nodal Pressure imbalance for the calculation.";
constexpr const char* InitialDampingMissing = "You should specify Initial Damping Factor.";
constexpr const char* MinimumDampingMissing = "You should specify Minimum Damping Factor.";
constexpr const char* DampingOrder =
    "The minimum damping factor must be either equal to or less than the initial damping factor.";
constexpr const char* AutosizeQuestion =
    "There are some pipe sections for which you did not specify diameters for them. You can "
    "either ask program to size those pipe sections by clicking the Yes button here or you can "
    "specify the diameters for those pipe sections in the Enter/Edit Pipe Data screen by clicking "
    "the No button here. Do you want program to size those pipe sections?";
constexpr const char* SizingLimitsMissing =
    "There are some pipe sections for which you asked the program to size the diameters.  You "
    "should specify Maximum Allowable Water Velocity and/or Maximum Allowable Fricitonal Loss Per "
    "100' of Pipe to get reasonable pipe sizes.";
constexpr const char* NoInflowNode = "There is no inflow node specified.";
std::string InflowOnOnePipe(const std::string& node);
constexpr const char* ValidInflowNode = "Specify a valid inflow node.";

// The network.
std::string DuplicatedPipe(const std::string& begin, const std::string& end, bool valueDuplicate);
std::string NodeZero(int row);
constexpr const char* MoreThanTwoPipes = "System must have more than 2 pipes.";
std::string SameNodes(int row, const std::string& begin, const std::string& end);
std::string HalfRow(int row);
constexpr const char* BlankRowsInData =
    "Blank rows found in pipe data which is not allowed; you need to fill in data or press the "
    "Sort Pipe button before calculations will proceed.";
std::string IsolatedNode(const std::string& node, bool orSort);
constexpr const char* SprinklerAreaMissing =
    "You need to specify the Maximum Area Per Sprinkler or Area of Sprinkler Operation on the GPD "
    "screen.";

// The pipe rows.
std::string ZeroLength(const std::string& begin, const std::string& end, int index);
std::string SupplyDiameterMissing(int index);
std::string DiameterNotInLibrary(const std::string& begin, const std::string& end,
                                 const std::string& diameter, const std::string& unit);
std::string MaterialBelowOne(bool zero, int row);
std::string NoValidDiameters(int material);
std::string GroupedMinimumTooLarge(int material);
std::string UngroupedMinimumTooLarge(int material);
std::string NegativeDiameter(int row);
std::string NegativeLength(int row);
std::string NegativeFittingLength(int row);
std::string NegativeKFactor(const std::string& node);
std::string NegativeSprinklerArea(const std::string& node);
std::string TooManyNodes(int nodes);
std::string NegativeFixedFlow(const std::string& node);
// A number of a damaged file that is infinite or not a number at all.
std::string NotANumberInRow(std::string_view field, int row);
std::string NotANumberInGeneralData(std::string_view field);
std::string NoFlowEntered(const std::string& dischargeName);
std::string NoSprinklerInDemand(const std::string& dischargeName);
std::string DifferentElevation(const std::string& device, const std::string& begin,
                               const std::string& end);

// The pump.
constexpr const char* SprinklerUpstreamOfPump =
    "Direct inlet piping upstream of a fire pump is allowed in this version of the program.  "
    "However, no sprinklers are allowed upstream of a fire pump.  Erroneous results will occur if "
    "this is attempted.  Please remove all sprinklers upstream of the fire pump.";
constexpr const char* PumpBoostZero = "The pump boost must be nonzero for calculations to finish.";
std::string NegativePumpBoost(double boost);
std::string PumpBoostTooLarge(float maximum);
std::string PumpFlowUnsettled(int passes);

} // namespace quench::messages
