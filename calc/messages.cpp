#include "calc/messages.h"

#include "core/formats.h"
#include "core/project.h"

namespace quench::messages {

namespace {

// The words of the discharge name: "Hose" speaks of hoses and fixed flows.
struct DischargeWords {
    std::string Discharge;
    std::string Other;
    std::string Column;
};

DischargeWords WordsFor(const std::string& dischargeName) {
    if (dischargeName == "Hose") {
        return {"hose", "fixed", "Fixed Flow"};
    }
    return {"sprinkler", "non-sprinkler", "NSprk Flow"};
}

std::string Row(int row) {
    return std::to_string(row);
}

} // namespace

std::string PositiveInflowPressure(const std::string& node) {
    return "You must specify positive Residual Pressure for Inflow Node " + node +
           " to perform Supply Mode calculation.";
}

std::string InflowPressureMissing(const std::string& node) {
    return "You must specify Residual Pressure for inflow node " + node;
}

std::string InflowOnOnePipe(const std::string& node) {
    return "Inflow node " + node + " should only have one pipe section connected to it.";
}

std::string DuplicatedPipe(const std::string& begin, const std::string& end, bool valueDuplicate) {
    return (valueDuplicate ? "There is an actual or value-duplicated pipe section "
                           : "There is a duplicated pipe section ") +
           begin + " - " + end;
}

std::string NodeZero(int row) {
    return "Pipe " + Row(row) +
           " contains a node 0, which is not allowed.  Nodes must be a number from 1 to 9999.";
}

std::string SameNodes(int row, const std::string& begin, const std::string& end) {
    return "Pipe #" + Row(row) + " has the same beginning and ending node, " + begin +
           ", which is not allowed.  Re-enter the nodes in this pipe " + begin + "-" + end + ".";
}

std::string HalfRow(int row) {
    return "All pipes must have a beginning and end node entered.  You need to enter a beginning "
           "or ending node for pipe " +
           Row(row) + ".";
}

std::string IsolatedNode(const std::string& node, bool orSort) {
    return "Node " + node +
           (orSort ? " belongs to an isolated section of the network or you need to sort pipes."
                   : " belongs to an isolated section of the network.");
}

std::string ZeroLength(const std::string& begin, const std::string& end, int index) {
    return "PIPE SEGMENT " + begin + " - " + end + " (PIPE " + Row(index) +
           ") MUST HAVE A NON-ZERO LENGTH.";
}

std::string SupplyDiameterMissing(int index) {
    return "The pipe section #" + Row(index) +
           "'s diameter has not been specified, You have to input the diameter for this pipe "
           "section if you want to run Supply mode or you must run Demand mode to autosize pipes.";
}

std::string DiameterNotInLibrary(const std::string& begin, const std::string& end,
                                 const std::string& diameter, const std::string& unit) {
    return "Pipe section " + begin + " - " + end + " cannot have a " + diameter + " " + unit +
           " diameter.";
}

std::string MaterialBelowOne(bool zero, int row) {
    return std::string("The pipe material number is ") + (zero ? "zero" : "negative") +
           " for pipe #" + Row(row) +
           ".  You must enter a pipe material number as a value greater than zero, or choose a "
           "letter designation (e.g. M for meter), for calculations to proceed.";
}

std::string NoValidDiameters(int material) {
    return "The Pipe Material #" + Row(material) +
           " Does Not Have Any Valid Diameters To Size. You should select a pipe material with "
           "valid pipe sizes from the Pipe Library Database.";
}

std::string GroupedMinimumTooLarge(int material) {
    return "MIN AUTOSIZING DIAMETER FOR GROUPED PIPES IS TOO LARGE FOR MATERIAL #" + Row(material);
}

std::string UngroupedMinimumTooLarge(int material) {
    return "MIN AUTOSIZING DIAMETER FOR UNGROUPED PIPES IS TOO LARGE FOR MATERIAL #" +
           Row(material);
}

std::string NegativeDiameter(int row) {
    return "The pipe diameter is negative for pipe #" + Row(row) +
           ".  You must enter a pipe diameter as a value greater than or equal to zero for "
           "calculations to proceed.";
}

std::string NegativeLength(int row) {
    return "Pipe length is negative for pipe #" + Row(row) +
           ".  You must enter this pipe length as a value greater than or equal to zero for "
           "calculations to proceed.";
}

std::string NotANumberInRow(std::string_view field, int row) {
    return "The " + std::string(field) + " of pipe #" + Row(row) +
           " is not a number.  You must enter a number in this field for calculations to "
           "proceed.";
}

std::string NotANumberInGeneralData(std::string_view field) {
    return "The " + std::string(field) +
           " of the general project data is not a number.  You must enter a number in this field "
           "for calculations to proceed.";
}

std::string NegativeFittingLength(int row) {
    return "Non-standard fitting length is negative for pipe #" + Row(row) +
           ".  You must enter this non-standard fitting length as a value greater than or equal "
           "to zero for calculations to proceed.";
}

std::string NegativeKFactor(const std::string& node) {
    return "K-Factor is negative for node " + node +
           ".  You must enter a K-Factor as a value greater than or equal to zero at this node for "
           "calculations to proceed.";
}

std::string TooManyNodes(int nodes) {
    return "The network has " + std::to_string(nodes) + " nodes.  A project holds at most " +
           std::to_string(MaxNodes) +
           " nodes, so this network cannot be calculated or saved with its results.";
}

std::string NegativeSprinklerArea(const std::string& node) {
    return "Sprinkler area is negative for node " + node +
           ".  You must enter a sprinkler area as a value greater than or equal to zero at this "
           "node for calculations to proceed.";
}

std::string NegativeFixedFlow(const std::string& node) {
    return "Non-sprinkler flow is negative for node " + node +
           ".  You must enter a non-sprinkler flow as a value greater than or equal to zero at "
           "this node for calculations to proceed.";
}

std::string NoFlowEntered(const std::string& dischargeName) {
    const DischargeWords words = WordsFor(dischargeName);
    return "No " + words.Discharge + " or " + words.Other +
           " flow entered.  This project must have a flow device entered to run calculations.  "
           "Enter a non-zero value in the K-Factor column or the " +
           words.Column + " column.";
}

std::string NoSprinklerInDemand(const std::string& dischargeName) {
    const DischargeWords words = WordsFor(dischargeName);
    return "WARNING: No " + words.Discharge +
           " flow entered and running in Demand mode.  When running in Demand mode it is "
           "recommended that at least one " +
           words.Discharge +
           " be included by entering a nonzero value in the K-Factor column.  Alternatively, "
           "calculations may be run in Supply mode.  Otherwise, calculations may not complete.";
}

std::string DifferentElevation(const std::string& device, const std::string& begin,
                               const std::string& end) {
    return device + begin + "-" + end + " nodes have different elevation.";
}

std::string NegativePumpBoost(double boost) {
    return "Based on the entered pump curve data and the flow entering the pump, the calculated "
           "pump pressure boost is " +
           Format(boost, "0.0#") + " which is negative, so it will be set to zero.";
}

std::string PumpBoostTooLarge(float maximum) {
    return "Based on the entered pump curve data and the flow entering the pump, the calculated "
           "pump pressure boost is too large, so it will be set to the maximum allowable value "
           "of " +
           NumberText(maximum) + ".";
}

std::string PumpFlowUnsettled(int passes) {
    return "The flow through the fire pump did not settle within 0.1 gpm after " +
           std::to_string(passes) +
           " passes of the calculation.  Please check the pump curve at the flows that this "
           "network draws.";
}

} // namespace quench::messages
