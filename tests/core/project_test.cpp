#include "core/project.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(Project, ResetGivesTheDefaultsOfANewProject) {
    Project project;
    EXPECT_EQ(project.ProjectData.GPDProjectFormat, 60130);
    EXPECT_EQ(project.PipeRecord.size(), static_cast<std::size_t>(MaxPipes + 1));
    for (int row = 1; row <= MaxPipes; ++row) {
        ASSERT_EQ(project.PipeRecord[row].Material, 4);
        ASSERT_EQ(project.PipeRecord[row].KFactorB, "None");
        ASSERT_EQ(project.PipeRecord[row].KFactorE, "None");
        ASSERT_EQ(project.PipeRecord[row].Diameter, -4.0f);
        ASSERT_EQ(project.PipeRecord[row].DeviceLoss, -4.0f);
    }
    EXPECT_EQ(project.SystemData.SprinklerSystemType, "WET");
    EXPECT_EQ(project.SystemData.PrimaryDischargeName, "Sprinkler");
    EXPECT_EQ(project.SystemData.DefaultPipeMaterial, 4);
    EXPECT_EQ(project.CalculationData.DemandMode, 1);
    EXPECT_EQ(project.CalculationData.SupplyMode, 0);
    EXPECT_EQ(project.AlarmDeviceName, "Alarm Check Valve");
}

TEST(Project, ResetKeepsBuilderInputsAndTwoOptionFlags) {
    Project project;
    project.TreeBuilderData.CrossDiameter = 2.5f;
    project.GridBuilderData.NumberOfBranchLines = 7;
    project.CalculationData.UseFrictionLimit = True;
    project.CalculationData.DoNotIncreaseSize = True;
    project.CalculationData.UseFlowImbalance = True;
    project.CalculationData.MaxWaterVelocity = 20;
    project.CalculationData.TypeGroupMaxDiameter[10] = 4;
    project.PipeResultRecord[0].Flow = 12;
    project.SystemData.HazardDescription = "x";
    ResetProject(project);
    EXPECT_EQ(project.TreeBuilderData.CrossDiameter, 2.5f);
    EXPECT_EQ(project.GridBuilderData.NumberOfBranchLines, 7);
    EXPECT_EQ(project.CalculationData.UseFrictionLimit, True);
    EXPECT_EQ(project.CalculationData.DoNotIncreaseSize, True);
    EXPECT_EQ(project.CalculationData.UseFlowImbalance, 0);
    EXPECT_EQ(project.CalculationData.MaxWaterVelocity, 0);
    EXPECT_EQ(project.CalculationData.TypeGroupMaxDiameter[10], 0);
    EXPECT_EQ(project.PipeResultRecord[0].Flow, 0);
    EXPECT_EQ(project.SystemData.HazardDescription, "");
}

TEST(Project, ClearNetworkOnlyLeavesGeneralDataAndSettings) {
    Project project;
    project.ProjectData.Title = "Warehouse";
    project.SystemData.DefaultPipeMaterial = 7;
    project.CalculationData.MinPressureAtHMDNode = 7;
    project.PipeRecord[1].BegNode = "1";
    project.PipeRecord[1].EndNode = "2";
    project.NumberOfPipeRows = 1;
    project.NumberOfNodes = 2;
    project.NumberOfPipes = 1;
    ClearNetworkOnly(project);
    EXPECT_EQ(project.ProjectData.Title, "Warehouse");
    EXPECT_EQ(project.CalculationData.MinPressureAtHMDNode, 7.0f);
    EXPECT_TRUE(IsBlankRow(project.PipeRecord[1]));
    EXPECT_EQ(project.PipeRecord[1].Material, 7); // the template's default material
    EXPECT_EQ(project.NumberOfPipeRows, 0);
    EXPECT_EQ(project.NumberOfNodes, 0);
    EXPECT_EQ(project.NumberOfPipes, 0);
    EXPECT_FALSE(project.LoadingTemplate);
}

TEST(Project, RowTests) {
    PipeRecord row;
    EXPECT_TRUE(IsBlankRow(row));
    row.BegNode = "  ";
    row.EndNode = "20";
    EXPECT_FALSE(IsBlankRow(row));
    EXPECT_FALSE(HasBothNodes(row));
    row.BegNode = "10";
    EXPECT_TRUE(HasBothNodes(row));
}

} // namespace
} // namespace quench
