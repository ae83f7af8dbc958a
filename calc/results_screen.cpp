#include "calc/results_screen.h"

#include "core/formats.h"
#include "core/text.h"

namespace quench {

namespace {

constexpr const char* Figure = "###0.000";

} // namespace

ResultsScreen ResultsToScreen(const Project& project) {
    const CalculationData& data = project.CalculationData;
    ResultsScreen screen;
    screen.lblNumberOfUniquePipeSections = std::to_string(data.NumberOfUniquePipeSections);
    screen.lblNumberOfFlowingSprinklers = std::to_string(data.NumberOfFlowingSprinklers);
    screen.txtMaximumFlowVelocity = Format(data.MaximumFlowVelocity, Figure);
    const int pipe = data.MaximumVelocityPipe;
    if (pipe >= 1 && pipe <= MaxPipes) {
        const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
        screen.lblMaximumFlowVelocityIdx = "(in pipe " + TypedNodeText(project, record.BegNode) +
                                           " - " + TypedNodeText(project, record.EndNode) + ")";
    }
    screen.txtSprinklerFlow = Format(data.SprinklerFlow, Figure);
    screen.txtNonSprinklerFlow = Format(data.NonSprinklerFlow, Figure);
    screen.lblHMDSprinklerNodeNumber = std::to_string(data.HMDNodeNumber);
    screen.txtHMDActualResidualPressure = Format(data.HMDActualResidualPressure, Figure);
    screen.txtHMDActualGPM = Format(data.HMDActualFlow, Figure);
    screen.lblMinReqdResidPressAtSysInflowNodeLabel =
        data.SupplyMode != 0 ? "Specified Resid Press At Sys Inflow Node:"
                             : "Demand Resid Press At Sys Inflow Node:";
    screen.txtMinReqdResidPressAtSysInflowNode = Format(data.InflowResidualPressure, Figure);
    screen.txtDemandFlowAtSystemInflowNode = Format(data.InflowFlow, Figure);
    return screen;
}

} // namespace quench
