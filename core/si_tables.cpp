#include "core/si_tables.h"

#include "core/formats.h"
#include "core/units.h"

namespace quench {

namespace {

void Convert(Double& value, UnitKind kind) {
    value = ToSI(kind, value);
}

void Convert(Single& value, UnitKind kind) {
    value = static_cast<Single>(ToSI(kind, value));
}

// A whole-number field takes the converted value as an assignment would: rounded half to even.
void Convert(Integer& value, UnitKind kind) {
    value = CInt(ToSI(kind, value));
}

// A device loss of -4 is "not given", not a pressure.
void ConvertDeviceLoss(Double& value) {
    if (value != NotGiven) {
        Convert(value, UnitKind::Pressure_Drop);
    }
}

// The curve Head = a0 + a1 Q + ... + a4 Q^4 in SI units: with Q in Lpm, each coefficient ai is
// divided by the flow factor to the power i, and all are scaled by the pressure factor.
void ConvertPumpCurve(CalculationData& data) {
    // A curve in feet of head stays a head: metres in SI.
    const UnitKind pressureKind =
        IsTrue(data.PumpDefined) ? UnitKind::Length : UnitKind::Pressure_Drop;
    for (int point = 0; point < PumpCurvePoints; ++point) {
        if (data.PumpCurveFlow[point] != UnusedPumpPoint) {
            Convert(data.PumpCurveFlow[point], UnitKind::Volumetric_Flow);
        }
        if (data.PumpCurvePressure[point] != UnusedPumpPoint) {
            Convert(data.PumpCurvePressure[point], pressureKind);
        }
    }
    const double flowFactor = ToSI(UnitKind::Volumetric_Flow, 1.0);
    const double pressureFactor = ToSI(pressureKind, 1.0);
    double flowPower = 1.0;
    for (Double& coefficient : data.PumpCoefficients) {
        coefficient = coefficient * pressureFactor / flowPower;
        flowPower *= flowFactor;
    }
}

} // namespace

SystemData SystemDataToSI(const SystemData& us) {
    SystemData si = us;
    Convert(si.InRackSprinklerAllowance, UnitKind::Volumetric_Flow);
    Convert(si.InsideHoseStreamAllowance, UnitKind::Volumetric_Flow);
    Convert(si.OutsideHoseStreamAllowance, UnitKind::Volumetric_Flow);
    Convert(si.DefaultKFactor, UnitKind::K_Factor);
    Convert(si.TemperatureRating, UnitKind::Temperature);
    Convert(si.AreaOfSprinklerOperation, UnitKind::Area);
    Convert(si.MinimumDesiredDensity, UnitKind::Flow_Density);
    Convert(si.MaximumAreaPerSprinkler, UnitKind::Area);
    Convert(si.HydrantElevation, UnitKind::Length);
    Convert(si.TestStaticPressure, UnitKind::Pressure_Drop);
    Convert(si.TestResidualPressure, UnitKind::Pressure_Drop);
    Convert(si.TestFlowRate, UnitKind::Volumetric_Flow);
    Convert(si.CalculatedResidualPressure, UnitKind::Pressure_Drop);
    Convert(si.CalculatedFlowRate, UnitKind::Volumetric_Flow);
    Convert(si.SecondTestStaticPressure, UnitKind::Pressure_Drop);
    Convert(si.SecondTestResidualPressure, UnitKind::Pressure_Drop);
    Convert(si.SecondTestFlowRate, UnitKind::Volumetric_Flow);
    Convert(si.ExteriorHoseFlow, UnitKind::Volumetric_Flow);
    return si;
}

CalculationData CalculationDataToSI(const CalculationData& us) {
    CalculationData si = us;
    Convert(si.MinPressureAtHMDNode, UnitKind::Pressure_Drop);
    Convert(si.DesignDensity, UnitKind::Flow_Density);
    Convert(si.InflowResidualPressure1, UnitKind::Pressure_Drop);
    Convert(si.InflowResidualPressure2, UnitKind::Pressure_Drop);
    Convert(si.InflowResidualPressure3, UnitKind::Pressure_Drop);
    Convert(si.MaximumNodePressureImbalance, UnitKind::Pressure_Drop);
    Convert(si.AverageNodePressureImbalance, UnitKind::Pressure_Drop);
    Convert(si.MaxWaterVelocity, UnitKind::Velocity);
    // A loss per 100 ft of pipe; the reports show it as a pressure.
    Convert(si.MaxFrictionalLoss, UnitKind::Pressure_Drop);
    for (int slot = 0; slot < TypeGroupSlots; ++slot) {
        Convert(si.TypeGroupMinDiameter[slot], UnitKind::Fine_Length);
        Convert(si.TypeGroupMaxDiameter[slot], UnitKind::Fine_Length);
    }
    Convert(si.MaximumFlowVelocity, UnitKind::Velocity);
    Convert(si.SprinklerFlow, UnitKind::Volumetric_Flow);
    Convert(si.NonSprinklerFlow, UnitKind::Volumetric_Flow);
    Convert(si.HMDActualResidualPressure, UnitKind::Pressure_Drop);
    Convert(si.HMDActualFlow, UnitKind::Volumetric_Flow);
    Convert(si.InflowResidualPressure, UnitKind::Pressure_Drop);
    Convert(si.InflowFlow, UnitKind::Volumetric_Flow);
    ConvertPumpCurve(si);
    return si;
}

NodeRecord NodeRecordToSI(const NodeRecord& us) {
    NodeRecord si = us;
    Convert(si.WorkPressure, UnitKind::Pressure_Drop);
    Convert(si.Elevation, UnitKind::Length);
    Convert(si.KFactor, UnitKind::K_Factor);
    Convert(si.SprinklerArea, UnitKind::Area);
    Convert(si.FixedFlow, UnitKind::Volumetric_Flow);
    Convert(si.ResidualPressure, UnitKind::Pressure_Drop);
    Convert(si.Discharge, UnitKind::Volumetric_Flow);
    Convert(si.WorkFlow, UnitKind::Volumetric_Flow);
    Convert(si.FlowImbalance, UnitKind::Volumetric_Flow);
    return si;
}

CalcPipeRecord CalcPipeRecordToSI(const CalcPipeRecord& us) {
    CalcPipeRecord si = us;
    Convert(si.NominalLength, UnitKind::Length);
    Convert(si.TotalLength, UnitKind::Length);
    ConvertDeviceLoss(si.DeviceLoss);
    Convert(si.NominalDiameter, UnitKind::Fine_Length);
    Convert(si.InsideDiameter, UnitKind::Fine_Length);
    Convert(si.Flow, UnitKind::Volumetric_Flow);
    Convert(si.Velocity, UnitKind::Velocity);
    Convert(si.NonStandardFitLength, UnitKind::Length);
    Convert(si.FrictionLoss, UnitKind::Friction_Loss);
    Convert(si.FittingLength, UnitKind::Length);
    Convert(si.ElevationPressure, UnitKind::Pressure_Drop);
    Convert(si.VelocityPressure, UnitKind::Pressure_Drop);
    return si;
}

PipeResultRecord PipeResultRecordToSI(const PipeResultRecord& us) {
    PipeResultRecord si = us;
    Convert(si.KFactorB, UnitKind::K_Factor);
    Convert(si.KFactorE, UnitKind::K_Factor);
    Convert(si.ElevationB, UnitKind::Length);
    Convert(si.ElevationE, UnitKind::Length);
    Convert(si.DischargeB, UnitKind::Volumetric_Flow);
    Convert(si.DischargeE, UnitKind::Volumetric_Flow);
    Convert(si.ResidualB, UnitKind::Pressure_Drop);
    Convert(si.ResidualE, UnitKind::Pressure_Drop);
    Convert(si.NominalDiameter, UnitKind::Fine_Length);
    Convert(si.InsideDiameter, UnitKind::Fine_Length);
    Convert(si.Flow, UnitKind::Volumetric_Flow);
    Convert(si.Velocity, UnitKind::Velocity);
    Convert(si.FrictionLossPerFoot, UnitKind::Friction_Loss);
    Convert(si.PipeLength, UnitKind::Length);
    Convert(si.FittingLength, UnitKind::Length);
    Convert(si.TotalLength, UnitKind::Length);
    Convert(si.FrictionPressure, UnitKind::Pressure_Drop);
    Convert(si.ElevationPressure, UnitKind::Pressure_Drop);
    Convert(si.VelocityPressure, UnitKind::Pressure_Drop);
    Convert(si.FixedFlowB, UnitKind::Volumetric_Flow);
    Convert(si.FixedFlowE, UnitKind::Volumetric_Flow);
    return si;
}

void BuildSITables(Project& project) {
    project.SystemDataSI = SystemDataToSI(project.SystemData);
    project.CalculationDataSI = CalculationDataToSI(project.CalculationData);
    project.NodeRecordSI.resize(project.NodeRecord.size());
    for (std::size_t row = 0; row < project.NodeRecord.size(); ++row) {
        project.NodeRecordSI[row] = NodeRecordToSI(project.NodeRecord[row]);
    }
    project.CalcPipeRecordSI.resize(project.CalcPipeRecord.size());
    for (std::size_t row = 0; row < project.CalcPipeRecord.size(); ++row) {
        project.CalcPipeRecordSI[row] = CalcPipeRecordToSI(project.CalcPipeRecord[row]);
    }
    project.PipeResultRecordSI.resize(project.PipeResultRecord.size());
    for (std::size_t row = 0; row < project.PipeResultRecord.size(); ++row) {
        project.PipeResultRecordSI[row] = PipeResultRecordToSI(project.PipeResultRecord[row]);
    }
}

} // namespace quench
