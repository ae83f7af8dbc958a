#pragma once

// What the Results tab of the Calculation screen shows after a run.

#include "core/project.h"

#include <array>
#include <string>

namespace quench {

struct ResultsScreen {
    std::string lblNumberOfUniquePipeSections;
    std::string lblNumberOfFlowingSprinklers;
    std::string txtMaximumFlowVelocity;
    std::string lblMaximumFlowVelocityIdx;
    std::string txtSprinklerFlow;
    std::string txtNonSprinklerFlow;
    std::string lblHMDSprinklerNodeNumber;
    std::string txtHMDActualResidualPressure;
    std::string txtHMDActualGPM;
    std::string lblMinReqdResidPressAtSysInflowNodeLabel;
    std::string txtMinReqdResidPressAtSysInflowNode;
    std::string txtDemandFlowAtSystemInflowNode;
    std::string lblIndependentCheck; // the second solver's verdict, filled when the tab is shown
};

// The headings of the results grid, in column order.
constexpr std::array<const char*, 11> ResultsGridHeadings = {"        ",
                                                             "BEG-Node END-Node",
                                                             "Nodal K-Factor (K)",
                                                             "Elevation   ",
                                                             "Sprinkler Flow (gpm)",
                                                             "Residual pressure (psi)",
                                                             "Nom-Dia Inside-Dia C-VAL",
                                                             "Q(gpm) Velocity(fps)",
                                                             "Fri.-Loss/ft Fittings Type-Group",
                                                             "Nom.-Len Fitting-Len Total-Len",
                                                             "PF-psi PE-psi PV-psi"};

// The Results tab from the stored summary of the last run.
ResultsScreen ResultsToScreen(const Project& project);

} // namespace quench
