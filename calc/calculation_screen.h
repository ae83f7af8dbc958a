#pragma once

// The Calculation screen as the run reads it: the texts of its fields, in US units, and the state
// of its options and check boxes. The desktop fills it from its widgets (a project shown in SI has
// its measured fields turned to US units first); the command line fills it from the stored
// settings the way the screen shows them when it loads.

#include "core/project.h"

#include <array>
#include <string>

namespace quench {

struct CalculationScreen {
    std::string txtCalculationComment;
    bool optDemandMode = true;
    bool optSupplyMode = false;
    std::string txtMinPressureAtHMDNode;
    std::string txtMinimumDesiredDensity;
    std::string lblSystemInflowNodeNumber;
    std::string lblSecondInflowNodeNumber;
    std::string lblThirdInflowNodeNumber;
    std::string txtInflowResidualPressure1;
    std::string txtInflowResidualPressure2;
    std::string txtInflowResidualPressure3;
    bool optMaximumNodalPressure = false;
    std::string txtMaximumNodePressureImbalance;
    bool optAverageNodalPressure = false;
    std::string txtAverageNodalPressure;
    bool chkConvFlowImbalance = false;
    std::string txtInitialOscillationDampingFactor;
    std::string txtMinimumOscillationDampingFactor;
    bool chkUseAutomaticPeakingCalculation = false;
    bool chkUseResidualPressureEstimate = false;
    bool chkOscillationEstimate = false;
    std::string txtSizingMaximumAllowableWaterVelocity;
    std::string txtSizingMiximumAllowableFrictionalLoss; // the screen's own spelling
    bool chkFrictLoss = false;
    bool chkDoNotIncrSize = false;
    // By type group 1 to 10; slot 0 holds the bounds of pipes without a group.
    std::array<std::string, TypeGroupSlots> txtSizingTypeGroupMin;
    std::array<std::string, TypeGroupSlots> txtSizingTypeGroupMax;
};

// The screen as it shows the stored settings on load. A bound that means "no limit" when 0 (the
// minimum HMD pressure, the imbalance limit of the option not chosen or not given, the sizing
// limits and the type group bounds) shows an empty field.
CalculationScreen CalculationScreenFromProject(const Project& project);

// The numbers of the fields into CalculationData (the run's settings).
void StoreCalculationScreen(const CalculationScreen& screen, Project& project);

} // namespace quench
