#include "calc/calculation_screen.h"

#include "core/formats.h"
#include "core/text.h"

namespace quench {

namespace {

std::string Shown(double value) {
    return NumberText(value);
}

std::string Shown(float value) {
    return NumberText(value);
}

// A bound whose 0 means that none is given.
std::string ShownOrEmpty(double value) {
    return value == 0 ? std::string() : NumberText(value);
}

std::string ShownOrEmpty(float value) {
    return value == 0 ? std::string() : NumberText(value);
}

std::string NodeLabel(Integer number) {
    return number == 0 ? std::string() : std::to_string(number);
}

Integer Flag(bool on) {
    return on ? 1 : 0;
}

} // namespace

CalculationScreen CalculationScreenFromProject(const Project& project) {
    const CalculationData& data = project.CalculationData;
    CalculationScreen screen;
    screen.txtCalculationComment = data.CalculationComment;
    screen.optSupplyMode = data.SupplyMode != 0;
    screen.optDemandMode = !screen.optSupplyMode && data.DemandMode != 0;
    screen.txtMinPressureAtHMDNode = ShownOrEmpty(data.MinPressureAtHMDNode);
    screen.txtMinimumDesiredDensity = Shown(project.SystemData.MinimumDesiredDensity);
    const Integer first = data.SystemInflowNode != 0 ? data.SystemInflowNode : project.InflowNode;
    screen.lblSystemInflowNodeNumber = NodeLabel(first);
    screen.lblSecondInflowNodeNumber = NodeLabel(data.SecondInflowNode);
    screen.lblThirdInflowNodeNumber = NodeLabel(data.ThirdInflowNode);
    screen.txtInflowResidualPressure1 = Shown(data.InflowResidualPressure1);
    screen.txtInflowResidualPressure2 = Shown(data.InflowResidualPressure2);
    screen.txtInflowResidualPressure3 = Shown(data.InflowResidualPressure3);
    screen.optMaximumNodalPressure = data.UseMaximumImbalance != 0;
    screen.optAverageNodalPressure =
        !screen.optMaximumNodalPressure && data.UseAverageImbalance != 0;
    if (screen.optMaximumNodalPressure) {
        screen.txtMaximumNodePressureImbalance = ShownOrEmpty(data.MaximumNodePressureImbalance);
    }
    if (screen.optAverageNodalPressure) {
        screen.txtAverageNodalPressure = ShownOrEmpty(data.AverageNodePressureImbalance);
    }
    screen.chkConvFlowImbalance = data.UseFlowImbalance != 0;
    screen.txtInitialOscillationDampingFactor = std::to_string(data.InitialDampingFactor);
    screen.txtMinimumOscillationDampingFactor = std::to_string(data.MinimumDampingFactor);
    screen.chkUseAutomaticPeakingCalculation = data.UseAutomaticPeaking != 0;
    screen.chkUseResidualPressureEstimate = data.UseResidualPressureEstimate != 0;
    screen.txtSizingMaximumAllowableWaterVelocity = ShownOrEmpty(data.MaxWaterVelocity);
    screen.txtSizingMiximumAllowableFrictionalLoss = ShownOrEmpty(data.MaxFrictionalLoss);
    screen.chkFrictLoss = data.UseFrictionLimit != 0;
    screen.chkDoNotIncrSize = data.DoNotIncreaseSize != 0;
    for (int slot = 0; slot < TypeGroupSlots; ++slot) {
        screen.txtSizingTypeGroupMin[static_cast<std::size_t>(slot)] =
            ShownOrEmpty(data.TypeGroupMinDiameter[static_cast<std::size_t>(slot)]);
        screen.txtSizingTypeGroupMax[static_cast<std::size_t>(slot)] =
            ShownOrEmpty(data.TypeGroupMaxDiameter[static_cast<std::size_t>(slot)]);
    }
    return screen;
}

void StoreCalculationScreen(const CalculationScreen& screen, Project& project) {
    CalculationData& data = project.CalculationData;
    data.CalculationComment = screen.txtCalculationComment;
    data.DemandMode = Flag(screen.optDemandMode);
    data.SupplyMode = Flag(screen.optSupplyMode);
    data.MinPressureAtHMDNode = static_cast<Single>(ToNumber(screen.txtMinPressureAtHMDNode));
    data.DesignDensity = static_cast<Single>(ToNumber(screen.txtMinimumDesiredDensity));
    data.SystemInflowNode = CInt(ToNumber(screen.lblSystemInflowNodeNumber));
    data.SecondInflowNode = CInt(ToNumber(screen.lblSecondInflowNodeNumber));
    data.ThirdInflowNode = CInt(ToNumber(screen.lblThirdInflowNodeNumber));
    data.InflowResidualPressure1 = ToNumber(screen.txtInflowResidualPressure1);
    data.InflowResidualPressure2 = ToNumber(screen.txtInflowResidualPressure2);
    data.InflowResidualPressure3 = ToNumber(screen.txtInflowResidualPressure3);
    data.UseMaximumImbalance = Flag(screen.optMaximumNodalPressure);
    data.MaximumNodePressureImbalance = ToNumber(screen.txtMaximumNodePressureImbalance);
    data.UseAverageImbalance = Flag(screen.optAverageNodalPressure);
    data.AverageNodePressureImbalance = ToNumber(screen.txtAverageNodalPressure);
    data.UseFlowImbalance = Flag(screen.chkConvFlowImbalance);
    data.InitialDampingFactor = CInt(ToNumber(screen.txtInitialOscillationDampingFactor));
    data.MinimumDampingFactor = CInt(ToNumber(screen.txtMinimumOscillationDampingFactor));
    data.UseAutomaticPeaking = Flag(screen.chkUseAutomaticPeakingCalculation);
    data.UseResidualPressureEstimate = Flag(screen.chkUseResidualPressureEstimate);
    data.MaxWaterVelocity = ToNumber(screen.txtSizingMaximumAllowableWaterVelocity);
    data.MaxFrictionalLoss = ToNumber(screen.txtSizingMiximumAllowableFrictionalLoss);
    data.UseFrictionLimit = Flag(screen.chkFrictLoss);
    data.DoNotIncreaseSize = Flag(screen.chkDoNotIncrSize);
    for (int slot = 0; slot < TypeGroupSlots; ++slot) {
        data.TypeGroupMinDiameter[static_cast<std::size_t>(slot)] =
            ToNumber(screen.txtSizingTypeGroupMin[static_cast<std::size_t>(slot)]);
        data.TypeGroupMaxDiameter[static_cast<std::size_t>(slot)] =
            ToNumber(screen.txtSizingTypeGroupMax[static_cast<std::size_t>(slot)]);
    }
}

} // namespace quench
