#include "solver/calculation_options.h"

#include "solver/hydraulics.h"
#include "solver/peaking.h"

namespace quench {

namespace {

constexpr double DensityForDefaultTarget = 0.02;
constexpr double TargetPerDensity = 30;
constexpr double SmallestDefaultTarget = 0.14;

double DefaultTarget(float minimumResidual, double density) {
    if (minimumResidual != 0 || density < DensityForDefaultTarget) {
        return minimumResidual;
    }
    const double target = TargetPerDensity * density;
    return target < 1 ? SmallestDefaultTarget : target;
}

} // namespace

double RequiredDensity(const Project& project, bool current) {
    const CalculationData& data = project.CalculationData;
    if (IsSupplyMode(data)) {
        return 0;
    }
    return current ? data.DesignDensity : project.SystemData.MinimumDesiredDensity;
}

void LoadCalculationOptions(const RunContext& context, SolverState& state) {
    const Project& project = context.Project;
    const CalculationData& data = project.CalculationData;
    SolverOptions& options = state.Options;
    options.DemandMode = !IsSupplyMode(data);
    options.MinimumResidual = data.MinPressureAtHMDNode;
    state.TargetPressure = DefaultTarget(options.MinimumResidual, RequiredDensity(project, true));
    options.MaximumVelocity = data.MaxWaterVelocity;
    options.MaximumFriction = data.MaxFrictionalLoss;
    options.InitialDamping = data.InitialDampingFactor;
    options.MinimumDamping = data.MinimumDampingFactor;
    options.InflowNode2 = data.SecondInflowNode;
    options.InflowNode3 = data.ThirdInflowNode;
    options.InflowPressure1 = data.InflowResidualPressure1 + context.SupplyPumpBoost;
    options.InflowPressure2 = data.InflowResidualPressure2;
    options.InflowPressure3 = data.InflowResidualPressure3;
    state.PumpBoostApplied = false;
    options.UseMaximumTest = data.UseMaximumImbalance != 0;
    options.UseAverageTest = data.UseAverageImbalance != 0;
    options.Tolerance = options.UseMaximumTest ? data.MaximumNodePressureImbalance
                                               : data.AverageNodePressureImbalance;
    options.UseFlowImbalance = data.UseFlowImbalance != 0;
    options.AutomaticPeaking = data.UseAutomaticPeaking != 0 && HasAreaGroups(project);
    options.Autosize = context.AutosizeRequested && options.DemandMode;
    options.UseEstimates = data.UseResidualPressureEstimate != 0;
    options.DoNotIncreaseSize = data.DoNotIncreaseSize != 0;
    for (int code = 1; code <= LibraryMaterials; ++code) {
        state.CValue[static_cast<std::size_t>(code)] =
            context.Materials.MaterialCValue[static_cast<std::size_t>(code)];
    }
    for (int code = MaterialMeter; code <= MaterialFirePump; ++code) {
        state.CValue[static_cast<std::size_t>(code)] = DeviceCValue;
    }
    for (std::size_t group = 0; group < options.TypeGroupMinimum.size(); ++group) {
        options.TypeGroupMinimum[group] = data.TypeGroupMinDiameter[group];
        options.TypeGroupMaximum[group] = data.TypeGroupMaxDiameter[group];
    }
}

} // namespace quench
