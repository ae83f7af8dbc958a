#include "entry/calculation_screen.h"

#include <memory>

#include <gtest/gtest.h>

namespace quench {
namespace {

using enum CalculationField;

std::unique_ptr<Project> Settings() {
    auto project = std::make_unique<Project>();
    CalculationData& data = project->CalculationData;
    data.CalculationComment = "Design area 1";
    data.MinPressureAtHMDNode = 7;
    project->SystemData.MinimumDesiredDensity = 0.15f;
    data.SystemInflowNode = 1;
    data.InflowResidualPressure1 = 65;
    data.UseMaximumImbalance = 1;
    data.MaximumNodePressureImbalance = 0.005;
    data.AverageNodePressureImbalance = 0.002;
    data.InitialDampingFactor = 10;
    data.MinimumDampingFactor = 2;
    data.TypeGroupMaxDiameter[3] = 4;
    return project;
}

TEST(CalculationScreen, LoadShowsTheStoredSettings) {
    const auto project = Settings();
    const CalculationDataScreen screen(*project, MeasureSystem::US);
    EXPECT_EQ(screen.Text(CalculationComment), "Design area 1");
    EXPECT_EQ(screen.Text(MinPressureAtHMDNode), "7");
    EXPECT_EQ(screen.Text(MinimumDesiredDensity), "0.150");
    EXPECT_EQ(screen.Text(InflowResidualPressure1), "65");
    EXPECT_EQ(screen.Text(InflowResidualPressure2), "0");
    EXPECT_EQ(screen.Text(MaximumNodePressureImbalance), "0.005");
    // The imbalance of the option not chosen, and limits of 0, show empty fields.
    EXPECT_EQ(screen.Text(AverageNodalPressure), "");
    EXPECT_EQ(screen.Text(MaxWaterVelocity), "");
    EXPECT_EQ(screen.Text(InitialDampingFactor), "10");
    EXPECT_EQ(screen.Text(TypeGroupMaxField(3)), "4");
    EXPECT_EQ(screen.Text(TypeGroupMinField(3)), "");
    EXPECT_EQ(screen.InflowNodeNumber(1), "1");
    EXPECT_EQ(screen.InflowNodeNumber(2), "");
    EXPECT_TRUE(screen.Option(CalculationOption::DemandMode));
    EXPECT_FALSE(screen.Option(CalculationOption::SupplyMode));
    EXPECT_TRUE(screen.Option(CalculationOption::MaximumNodalPressure));
    EXPECT_FALSE(screen.Option(CalculationOption::AverageNodalPressure));
    EXPECT_EQ(project->InputChanged, False);
}

TEST(CalculationScreen, ModeAndImbalanceEnableTheirFields) {
    const auto project = Settings();
    CalculationDataScreen screen(*project, MeasureSystem::US);
    EXPECT_TRUE(screen.IsEnabled(MinPressureAtHMDNode));
    EXPECT_TRUE(screen.IsEnabled(MinimumDesiredDensity));
    EXPECT_FALSE(screen.IsEnabled(InflowResidualPressure1));
    EXPECT_FALSE(screen.IsEnabled(InflowResidualPressure3));
    EXPECT_FALSE(screen.RequiredLabelVisible());
    EXPECT_TRUE(screen.IsEnabled(MaximumNodePressureImbalance));
    EXPECT_FALSE(screen.IsEnabled(AverageNodalPressure));

    // Supply: the inflow pressures are required; the typed minimum pressure stays in the model.
    screen.SetOption(CalculationOption::SupplyMode, true);
    EXPECT_EQ(project->InputChanged, True);
    EXPECT_EQ(project->CalculationData.SupplyMode, 1);
    EXPECT_EQ(project->CalculationData.DemandMode, 0);
    EXPECT_FALSE(screen.IsEnabled(MinPressureAtHMDNode));
    EXPECT_FALSE(screen.IsEnabled(MinimumDesiredDensity));
    EXPECT_TRUE(screen.IsEnabled(InflowResidualPressure2));
    EXPECT_TRUE(screen.RequiredLabelVisible());
    EXPECT_FLOAT_EQ(project->CalculationData.MinPressureAtHMDNode, 7);
    EXPECT_EQ(screen.Text(MinPressureAtHMDNode), "7");
    screen.SetOption(CalculationOption::DemandMode, true);
    EXPECT_EQ(project->CalculationData.DemandMode, 1);
    EXPECT_EQ(project->CalculationData.SupplyMode, 0);

    // Average: its field opens, the maximum's text is cleared and its value is no limit.
    project->InputChanged = False;
    screen.SetOption(CalculationOption::AverageNodalPressure, true);
    EXPECT_EQ(project->InputChanged, True);
    EXPECT_TRUE(screen.IsEnabled(AverageNodalPressure));
    EXPECT_FALSE(screen.IsEnabled(MaximumNodePressureImbalance));
    EXPECT_EQ(screen.Text(MaximumNodePressureImbalance), "");
    EXPECT_EQ(project->CalculationData.MaximumNodePressureImbalance, 0);
    EXPECT_EQ(project->CalculationData.UseMaximumImbalance, 0);
    EXPECT_EQ(project->CalculationData.UseAverageImbalance, 1);

    // Check boxes go to the model, except the oscillation option the run alone reads.
    screen.SetOption(CalculationOption::DoNotIncrSize, true);
    EXPECT_EQ(project->CalculationData.DoNotIncreaseSize, 1);
    screen.SetOption(CalculationOption::OscillationEstimate, true);
    EXPECT_TRUE(screen.Option(CalculationOption::OscillationEstimate));
    EXPECT_TRUE(screen.RunRecord().chkOscillationEstimate);
}

TEST(CalculationScreen, EditsReachTheModelAtOnce) {
    const auto project = Settings();
    CalculationDataScreen screen(*project, MeasureSystem::US);
    screen.Edit(MinPressureAtHMDNode, "12.5");
    EXPECT_FLOAT_EQ(project->CalculationData.MinPressureAtHMDNode, 12.5f);
    EXPECT_EQ(project->InputChanged, True);
    screen.Edit(MinimumDesiredDensity, "0.2");
    EXPECT_FLOAT_EQ(project->SystemData.MinimumDesiredDensity, 0.2f);
    EXPECT_FLOAT_EQ(project->CalculationData.DesignDensity, 0.2f);
    screen.Edit(TypeGroupMinField(10), "1.5");
    EXPECT_DOUBLE_EQ(project->CalculationData.TypeGroupMinDiameter[10], 1.5);
    screen.Edit(CalculationComment, "Second area");
    EXPECT_EQ(project->CalculationData.CalculationComment, "Second area");
    // A text no field can hold is emptied, and the field then holds no value.
    screen.Edit(MaxWaterVelocity, "1000");
    EXPECT_EQ(screen.Text(MaxWaterVelocity), "");
    EXPECT_EQ(project->CalculationData.MaxWaterVelocity, 0);

    // A minimum damping factor above the initial one is accepted here.
    screen.Edit(MinimumDampingFactor, "20");
    EXPECT_EQ(project->CalculationData.MinimumDampingFactor, 20);
    EXPECT_FALSE(screen.Leave(MinimumDampingFactor).TooLow);

    // Leaving: below the minimum is set to it; an empty field shows 0 in its format.
    screen.Edit(InitialDampingFactor, "0");
    const LeaveOutcome low = screen.Leave(InitialDampingFactor);
    EXPECT_TRUE(low.TooLow);
    EXPECT_EQ(screen.Text(InitialDampingFactor), "1");
    EXPECT_EQ(project->CalculationData.InitialDampingFactor, 1);
    screen.Edit(MaxFrictionalLoss, "");
    EXPECT_FALSE(screen.Leave(MaxFrictionalLoss).TooLow);
    EXPECT_EQ(screen.Text(MaxFrictionalLoss), "0.00");
    screen.Edit(MinimumDesiredDensity, "");
    screen.Leave(MinimumDesiredDensity);
    EXPECT_EQ(screen.Text(MinimumDesiredDensity), "0.000");
}

TEST(CalculationScreen, UnitsSwitchTheFieldsAndNeverTheStoredValues) {
    const auto project = Settings();
    project->CalculationData.MaxWaterVelocity = 20;
    const Project before = *project;
    CalculationDataScreen screen(*project, MeasureSystem::US);
    screen.SwitchUnits(MeasureSystem::SI);
    EXPECT_EQ(screen.Text(MinPressureAtHMDNode), "48.26");  // 7 psi
    EXPECT_EQ(screen.Text(MinimumDesiredDensity), "6.11");  // 0.15 gpm/ft²
    EXPECT_EQ(screen.Text(InflowResidualPressure1), "448"); // 65 psi
    EXPECT_EQ(screen.Text(MaxWaterVelocity), "6.1");        // 20 ft/s
    EXPECT_EQ(screen.Text(TypeGroupMaxField(3)), "101.6");  // 4 inch
    EXPECT_EQ(screen.Text(InitialDampingFactor), "10");
    EXPECT_EQ(screen.Label(MaxFrictionalLoss),
              "Maximum Allowable Frictional Loss Per 30.48 m of Pipe");
    EXPECT_EQ(screen.StatusText(MinPressureAtHMDNode), "Range: 0.00 to 6,894.68     Units: kPa");
    screen.SwitchUnits(MeasureSystem::US);
    EXPECT_EQ(screen.Text(MinPressureAtHMDNode), "7");
    EXPECT_EQ(screen.Text(MinimumDesiredDensity), "0.150");
    EXPECT_EQ(screen.Text(TypeGroupMaxField(3)), "4");
    EXPECT_EQ(screen.Label(MaxFrictionalLoss),
              "Maximum Allowable Frictional Loss Per 100' of Pipe");
    EXPECT_EQ(screen.StatusText(MinPressureAtHMDNode), "Range: 0.00 to 999.99     Units: psi");
    EXPECT_TRUE(project->CalculationData == before.CalculationData);
    EXPECT_TRUE(project->SystemData == before.SystemData);
    EXPECT_EQ(project->InputChanged, False);

    // A value typed in SI is stored in US units.
    screen.SwitchUnits(MeasureSystem::SI);
    screen.Edit(MinPressureAtHMDNode, "100");
    EXPECT_NEAR(project->CalculationData.MinPressureAtHMDNode, 14.5038, 0.0001);
    EXPECT_EQ(screen.RunRecord().txtMinPressureAtHMDNode, "14.50377");
}

TEST(CalculationScreen, WordsAndTheRunRecord) {
    const auto project = Settings();
    project->SystemData.PrimaryDischargeName = "Hose";
    CalculationDataScreen screen(*project, MeasureSystem::US);
    EXPECT_EQ(screen.Label(MinPressureAtHMDNode), "Minimum Residual Pressure At HMD Hose Node");
    EXPECT_EQ(screen.Label(InitialDampingFactor), "Initial Damping Factor:");
    EXPECT_EQ(screen.Label(TypeGroupMinField(7)), "7");
    EXPECT_EQ(FieldInfo(MaxFrictionalLoss).Control, "txtSizingMiximumAllowableFrictionalLoss");
    EXPECT_EQ(FieldInfo(TypeGroupMaxField(1)).HelpKey,
              "CalculationDataMaxPipeSizingConstraintForTypeGroup");
    EXPECT_EQ(screen.StatusText(CalculationComment), "Up to 50 characters     Units: Text");
    EXPECT_EQ(screen.StatusText(InitialDampingFactor), "Range: 1 to 100     Units: None");

    const CalculationScreen record = screen.RunRecord();
    EXPECT_TRUE(record.optDemandMode);
    EXPECT_EQ(record.txtCalculationComment, "Design area 1");
    EXPECT_EQ(record.txtMinPressureAtHMDNode, "7");
    EXPECT_EQ(record.txtMinimumDesiredDensity, "0.15");
    EXPECT_EQ(record.lblSystemInflowNodeNumber, "1");
    EXPECT_EQ(record.txtInflowResidualPressure1, "65");
    EXPECT_EQ(record.txtMaximumNodePressureImbalance, "0.005");
    EXPECT_EQ(record.txtAverageNodalPressure, "");
    EXPECT_EQ(record.txtInitialOscillationDampingFactor, "10");
    EXPECT_EQ(record.txtSizingMaximumAllowableWaterVelocity, "");
    EXPECT_EQ(record.txtSizingTypeGroupMax[3], "4");
    EXPECT_EQ(record.txtSizingTypeGroupMin[3], "");

    // The run stores the record as the model already holds it.
    const CalculationData before = project->CalculationData;
    StoreCalculationScreen(record, *project);
    EXPECT_FLOAT_EQ(project->CalculationData.MinPressureAtHMDNode, before.MinPressureAtHMDNode);
    EXPECT_DOUBLE_EQ(project->CalculationData.MaximumNodePressureImbalance,
                     before.MaximumNodePressureImbalance);
    EXPECT_DOUBLE_EQ(project->CalculationData.TypeGroupMaxDiameter[3], 4);
}

TEST(CalculationScreen, ResultsInTheUnitsOfTheScreen) {
    const auto project = Settings();
    CalculationData& data = project->CalculationData;
    data.NumberOfUniquePipeSections = 3;
    data.NumberOfFlowingSprinklers = 2;
    data.SprinklerFlow = 100;
    data.HMDNodeNumber = 30;
    data.HMDActualResidualPressure = 7;
    data.InflowResidualPressure = 50;
    data.InflowFlow = 100;
    CalculationDataScreen screen(*project, MeasureSystem::US);
    ResultsScreen results = screen.Results();
    EXPECT_EQ(results.txtSprinklerFlow, "100.000");
    EXPECT_EQ(results.txtHMDActualResidualPressure, "7.000");
    EXPECT_EQ(results.lblMinReqdResidPressAtSysInflowNodeLabel,
              "Demand Resid Press At Sys Inflow Node:");
    screen.SwitchUnits(MeasureSystem::SI);
    results = screen.Results();
    EXPECT_EQ(results.txtSprinklerFlow, "378.541");            // 100 gpm
    EXPECT_EQ(results.txtHMDActualResidualPressure, "48.263"); // 7 psi
    EXPECT_EQ(results.txtMinReqdResidPressAtSysInflowNode, "344.738");
    EXPECT_EQ(results.lblHMDSprinklerNodeNumber, "30");
}

} // namespace
} // namespace quench
