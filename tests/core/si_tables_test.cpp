#include "core/si_tables.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

// Hand conversions: 1 psi = 6.894757293 kPa, 1 gpm = 3.785411784 Lpm, 1 ft = 0.3048 m,
// 1 inch = 25.4 mm, 1 ft² = 0.09290304 m², K 1 = Km 14.4 (the listing factor).
constexpr double Kpa = 6.894757293168361;
constexpr double Lpm = 3.785411784;
constexpr double Km = 14.4;

TEST(SITables, OutputRowsConvertFieldByField) {
    Project project;
    PipeResultRecord& result = project.PipeResultRecord[3];
    result.BegNode = 10;
    result.EndNode = 20;
    result.KFactorB = 5.6;
    result.ElevationE = 10;
    result.DischargeB = 20;
    result.ResidualB = 7;
    result.ResidualE = 100;
    result.NominalDiameter = 1;
    result.InsideDiameter = 1.049;
    result.CFactor = 120;
    result.Flow = 100;
    result.Velocity = 10;
    result.FrictionLossPerFoot = 0.1;
    result.FittingText = "2E1T";
    result.TypeGroup = 3;
    result.PipeLength = 10;
    result.FittingLength = 5;
    result.TotalLength = 15;
    result.FrictionPressure = 1.5;
    result.ElevationPressure = -4.33;
    result.VelocityPressure = 0.5;
    result.DeviceFlag = 1;
    result.FixedFlowE = 50;

    NodeRecord& node = project.NodeRecord[2];
    node.Number = 10000;
    node.Elevation = -20;
    node.KFactor = 11.2;
    node.SprinklerArea = 100;
    node.ResidualPressure = 50;
    node.Discharge = 30;
    node.AreaGroup = "AB";

    CalcPipeRecord& pipe = project.CalcPipeRecord[1];
    pipe.BegNode = "10";
    pipe.NominalLength = 100;
    pipe.DeviceLoss = NotGiven;
    pipe.NominalDiameter = 2;
    pipe.InsideDiameter = 2.067;
    pipe.Flow = 250;
    pipe.Velocity = 23.9;
    pipe.FrictionLoss = 0.05;
    pipe.CFactor = 120;
    CalcPipeRecord& device = project.CalcPipeRecord[2];
    device.DeviceLoss = 5;

    BuildSITables(project);

    const PipeResultRecord& si = project.PipeResultRecordSI[3];
    EXPECT_EQ(si.BegNode, 10);
    EXPECT_EQ(si.EndNode, 20);
    EXPECT_NEAR(si.KFactorB, 80.64, 1e-8);
    EXPECT_NEAR(si.ElevationE, 3.048, 1e-12);
    EXPECT_NEAR(si.DischargeB, 75.70823568, 1e-8);
    EXPECT_NEAR(si.ResidualB, 48.26330105, 1e-8);
    EXPECT_NEAR(si.ResidualE, 689.4757293, 1e-7);
    EXPECT_NEAR(si.NominalDiameter, 25.4, 1e-12);
    EXPECT_NEAR(si.InsideDiameter, 26.6446, 1e-10);
    EXPECT_EQ(si.CFactor, 120);
    EXPECT_NEAR(si.Flow, 378.5411784, 1e-9);
    EXPECT_NEAR(si.Velocity, 3.048, 1e-12);
    EXPECT_NEAR(si.FrictionLossPerFoot, 0.1 * Kpa / 0.3048, 1e-12); // 2.262 kPa/m
    EXPECT_EQ(si.FittingText, "2E1T");
    EXPECT_EQ(si.TypeGroup, 3);
    EXPECT_NEAR(si.PipeLength, 3.048, 1e-12);
    EXPECT_NEAR(si.FittingLength, 1.524, 1e-12);
    EXPECT_NEAR(si.TotalLength, 4.572, 1e-12);
    EXPECT_NEAR(si.FrictionPressure, 1.5 * Kpa, 1e-12);
    EXPECT_NEAR(si.ElevationPressure, -4.33 * Kpa, 1e-12);
    EXPECT_NEAR(si.VelocityPressure, 0.5 * Kpa, 1e-12);
    EXPECT_EQ(si.DeviceFlag, 1);
    EXPECT_NEAR(si.FixedFlowE, 50 * Lpm, 1e-12);

    const NodeRecord& siNode = project.NodeRecordSI[2];
    EXPECT_EQ(siNode.Number, 10000);
    EXPECT_NEAR(siNode.Elevation, -6.096, 1e-12);
    EXPECT_NEAR(siNode.KFactor, 11.2 * Km, 1e-9);
    EXPECT_NEAR(siNode.SprinklerArea, 9.290304, 1e-12);
    EXPECT_NEAR(siNode.ResidualPressure, 50 * Kpa, 1e-12);
    EXPECT_NEAR(siNode.Discharge, 30 * Lpm, 1e-12);
    EXPECT_EQ(siNode.AreaGroup, "AB");

    const CalcPipeRecord& siPipe = project.CalcPipeRecordSI[1];
    EXPECT_EQ(siPipe.BegNode, "10");
    EXPECT_NEAR(siPipe.NominalLength, 30.48, 1e-12);
    EXPECT_EQ(siPipe.DeviceLoss, NotGiven); // "not given" is no pressure
    EXPECT_NEAR(siPipe.NominalDiameter, 50.8, 1e-12);
    EXPECT_NEAR(siPipe.InsideDiameter, 52.5018, 1e-12);
    EXPECT_NEAR(siPipe.Flow, 250 * Lpm, 1e-9);
    EXPECT_NEAR(siPipe.Velocity, 23.9 * 0.3048, 1e-12);
    EXPECT_NEAR(siPipe.FrictionLoss, 0.05 * Kpa / 0.3048, 1e-12);
    EXPECT_EQ(siPipe.CFactor, 120);
    EXPECT_NEAR(project.CalcPipeRecordSI[2].DeviceLoss, 5 * Kpa, 1e-12);

    // The US tables are untouched.
    EXPECT_EQ(project.PipeResultRecord[3].ResidualB, 7);
    EXPECT_EQ(project.NodeRecord[2].KFactor, 11.2);
}

TEST(SITables, SettingsAndSummaryConvert) {
    Project project;
    SystemData& system = project.SystemData;
    system.InsideHoseStreamAllowance = 100;
    system.DefaultKFactor = 5.6f;
    system.TemperatureRating = 160;
    system.AreaOfSprinklerOperation = 1500;
    system.MinimumDesiredDensity = 0.2f;
    system.HydrantElevation = 10;
    system.TestStaticPressure = 80;
    system.TestFlowRate = 1000;
    system.ExteriorHoseFlow = 500;
    system.LaborRate = 45;
    system.SprinklerMake = "Make";

    CalculationData& calculation = project.CalculationData;
    calculation.MinPressureAtHMDNode = 7;
    calculation.InflowResidualPressure1 = 65;
    calculation.AverageNodePressureImbalance = 0.5;
    calculation.MaxWaterVelocity = 20;
    calculation.TypeGroupMaxDiameter[4] = 2.5;
    calculation.InflowFlow = 325;
    calculation.HMDNodeNumber = 110;
    calculation.InitialDampingFactor = 50;
    calculation.PumpDefined = 0;
    calculation.PumpCurveFlow = {0, 500, 750, UnusedPumpPoint, UnusedPumpPoint};
    calculation.PumpCurvePressure = {100, 90, 65, UnusedPumpPoint, UnusedPumpPoint};
    calculation.PumpCoefficients = {100, -0.01, -0.00004, 0, 0};

    BuildSITables(project);

    const SystemData& si = project.SystemDataSI;
    EXPECT_NEAR(si.InsideHoseStreamAllowance, 378.5411784, 1e-4);
    EXPECT_NEAR(si.DefaultKFactor, 80.64, 1e-3);
    EXPECT_EQ(si.TemperatureRating, 71); // 71.1 C
    EXPECT_NEAR(si.AreaOfSprinklerOperation, 139.35456, 1e-4);
    EXPECT_NEAR(si.MinimumDesiredDensity, 8.149, 1e-3);
    EXPECT_NEAR(si.HydrantElevation, 3.048, 1e-6);
    EXPECT_NEAR(si.TestStaticPressure, 551.58, 1e-2);
    EXPECT_NEAR(si.TestFlowRate, 3785.41, 1e-2);
    EXPECT_EQ(si.ExteriorHoseFlow, 1893); // 1892.7 Lpm
    EXPECT_EQ(si.LaborRate, 45);
    EXPECT_EQ(si.SprinklerMake, "Make");

    const CalculationData& siCalc = project.CalculationDataSI;
    EXPECT_NEAR(siCalc.MinPressureAtHMDNode, 48.263, 1e-3);
    EXPECT_NEAR(siCalc.InflowResidualPressure1, 65 * Kpa, 1e-12);
    EXPECT_NEAR(siCalc.AverageNodePressureImbalance, 3.4473786, 1e-7);
    EXPECT_NEAR(siCalc.MaxWaterVelocity, 6.096, 1e-12);
    EXPECT_NEAR(siCalc.TypeGroupMaxDiameter[4], 63.5, 1e-12);
    EXPECT_NEAR(siCalc.InflowFlow, 325 * Lpm, 1e-9);
    EXPECT_EQ(siCalc.HMDNodeNumber, 110);
    EXPECT_EQ(siCalc.InitialDampingFactor, 50);

    // Pump points convert, unused ones stay marked; the curve gives the same head in SI.
    EXPECT_NEAR(siCalc.PumpCurveFlow[1], 500 * Lpm, 1e-3);
    EXPECT_NEAR(siCalc.PumpCurvePressure[0], 100 * Kpa, 1e-3);
    EXPECT_EQ(siCalc.PumpCurveFlow[3], UnusedPumpPoint);
    EXPECT_EQ(siCalc.PumpCurvePressure[4], UnusedPumpPoint);
    auto head = [](const std::array<Double, PumpCurvePoints>& a, double q) {
        return a[0] + a[1] * q + a[2] * q * q + a[3] * q * q * q + a[4] * q * q * q * q;
    };
    const double usHead = head(calculation.PumpCoefficients, 600); // 100 - 6 - 14.4 psi
    EXPECT_NEAR(usHead, 79.6, 1e-9);
    EXPECT_NEAR(head(siCalc.PumpCoefficients, 600 * Lpm), usHead * Kpa, 1e-9);

    // A curve in feet of head stays a head, in metres.
    project.CalculationData.PumpDefined = 1;
    BuildSITables(project);
    EXPECT_NEAR(project.CalculationDataSI.PumpCurvePressure[0], 30.48, 1e-4);
}

} // namespace
} // namespace quench
