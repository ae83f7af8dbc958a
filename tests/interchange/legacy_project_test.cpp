#include "core/project_file.h"
#include "interchange/legacy_project.h"
#include "tests/interchange/legacy_file_builder.h"
#include "tests/support/scratch_directory.h"

#include <memory>
#include <random>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::LegacyFileBuilder;

// An old project: a riser 1-2 through an old pump (84), a branch 2-3-4 of two sprinklers, one of
// them at the default K, a hose node 5 with a fixed flow, the supply at node 1.
LegacyFileBuilder OldProject(std::int16_t mode) {
    LegacyFileBuilder file;
    file.PutFloat(1, 18, 7.5f);  // MinPressureAtHMDNode
    file.PutFloat(1, 22, 5.6f);  // DefaultKFactor
    file.PutFloat(1, 34, 20.0f); // MaxWaterVelocity
    file.PutFloat(1, 38, 0.25f); // MaxFrictionalLoss
    file.PutInt(1, 50, 3);       // DefaultPipeMaterial
    file.PutText(2, 0, "Warehouse North", 31);
    file.PutText(2, 31, "J. Smith", 31);
    file.PutText(3, 0, "Acme Storage", 31);
    file.PutText(3, 31, "Building 7", 31);
    file.PutText(9, 31, "Owner Inc", 31);
    file.PutInt(11, 20, 50);
    file.PutInt(11, 22, 100);
    file.PutFloat(11, 24, 1500);
    file.PutFloat(11, 28, 0.2f);
    file.PutInt(11, 32, 250);
    file.PutFloat(11, 34, 130);
    file.PutInt(11, 38, 72);
    file.PutInt(12, 0, 60);
    file.PutInt(12, 2, 1000);
    file.PutInt(12, 6, 165);
    file.PutFloat(12, 14, 0.0123f);
    file.PutInt(12, 18, 8);
    file.PutInt(12, 20, 4);
    file.PutInt(12, 22, 1);
    file.PutFloat(12, 30 + 4 * 2, 2.5f);
    file.PutFloat(18, 4 * 2, 1.0f);
    file.PutInt(13, 0, 1);
    file.PutInt(13, 2, 5);
    file.PutInt(13, 6, mode);
    file.PutInt(13, 8, 1);
    file.PutText(13, 10, "System comment", 52);
    file.PutInt(13, 62, 1);
    file.PutText(13, 64, "Calc", 10);
    file.PutInt(15, 2, 17);
    file.PutFloat(15, 30, 2.5f);

    file.AddNode(1, 0, 0, 0, 6550, 0, "");     // the supply at 65.5 psi
    file.AddNode(2, 0, 105, 0, 0, 0, "");      // elevation 10.5 ft
    file.AddNode(3, 560, 120, 0, 0, 130, "A"); // K 5.6
    file.AddNode(4, 100, 120, 0, 0, 120, "A"); // the default K
    file.AddNode(5, 0, 0, 2500, 0, 0, "");     // a hose stream of 250 gpm

    LegacyFileBuilder::Pipe pump;
    pump.Begin = 1;
    pump.End = 2;
    pump.Material = 84;
    pump.Length10 = -125; // the device value, -12.5 after the division
    file.AddPipe(pump);
    LegacyFileBuilder::Pipe main;
    main.Begin = 2;
    main.End = 3;
    main.Diameter1000 = 2067;
    main.TotalLength10 = 205;
    main.Length10 = 105;
    main.Fittings[0] = 2;
    main.Fittings[1] = 1;
    main.Fittings[3] = 3;
    main.NonStandard = 4.5f;
    main.TypeGroup = '2';
    file.AddPipe(main);
    LegacyFileBuilder::Pipe branch;
    branch.Begin = 3;
    branch.End = 4;
    branch.Length10 = 120;
    branch.Active = 0;
    file.AddPipe(branch);
    LegacyFileBuilder::Pipe hose;
    hose.Begin = 2;
    hose.End = 5;
    hose.Material = 82;
    hose.Length10 = 30;
    file.AddPipe(hose);
    return file;
}

TEST(LegacyImport, GeneralDataSettingsAndInflow) {
    const auto project = std::make_unique<Project>();
    ConvertFromDos(*project, OldProject(2).Bytes());
    EXPECT_EQ(project->ProjectData.GPDProjectFormat, 501);
    EXPECT_EQ(project->ProjectData.Title, "Warehouse North");
    EXPECT_EQ(project->ProjectData.DesignedBy, "J. Smith");
    EXPECT_EQ(project->ClientData.Name, "Acme Storage");
    EXPECT_EQ(project->BuildingData.Name, "Building 7");
    EXPECT_EQ(project->BuildingData.Owner, "Owner Inc");
    const auto& system = project->SystemData;
    EXPECT_FLOAT_EQ(system.DefaultKFactor, 5.6f);
    EXPECT_EQ(system.DefaultPipeMaterial, 3);
    EXPECT_EQ(system.InRackSprinklerAllowance, 50);
    EXPECT_EQ(system.InsideHoseStreamAllowance, 100);
    EXPECT_EQ(system.OutsideHoseStreamAllowance, 250);
    EXPECT_EQ(system.AreaOfSprinklerOperation, 1500);
    EXPECT_FLOAT_EQ(system.MinimumDesiredDensity, 0.2f);
    EXPECT_EQ(system.TestStaticPressure, 72);
    EXPECT_EQ(system.TestResidualPressure, 60);
    EXPECT_EQ(system.TestFlowRate, 1000);
    EXPECT_EQ(system.TemperatureRating, 165);
    EXPECT_EQ(system.SprinklerSystemType, "Dry");
    EXPECT_EQ(system.SystemComment, "System comment");
    const auto& calculation = project->CalculationData;
    EXPECT_FLOAT_EQ(calculation.DesignDensity, 0.2f);
    EXPECT_FLOAT_EQ(calculation.MinPressureAtHMDNode, 7.5f);
    EXPECT_DOUBLE_EQ(calculation.MaxWaterVelocity, 20.0);
    EXPECT_DOUBLE_EQ(calculation.MaximumNodePressureImbalance, 0.01); // through "##0.00"
    EXPECT_EQ(calculation.InitialDampingFactor, 8);
    EXPECT_EQ(calculation.MinimumDampingFactor, 4);
    EXPECT_DOUBLE_EQ(calculation.TypeGroupMaxDiameter[2], 2.5);
    EXPECT_DOUBLE_EQ(calculation.TypeGroupMinDiameter[2], 1.0);
    EXPECT_EQ(calculation.SupplyMode, 1);
    EXPECT_EQ(calculation.DemandMode, 0);
    EXPECT_EQ(calculation.UseResidualPressureEstimate, 1);
    EXPECT_EQ(calculation.UseAutomaticPeaking, 1);
    EXPECT_EQ(calculation.CalculationComment, "Calc");
    EXPECT_DOUBLE_EQ(calculation.InflowResidualPressure1, 65.5);
    EXPECT_EQ(calculation.UseMaximumImbalance, 1);
    EXPECT_EQ(calculation.UseAverageImbalance, 0);
    EXPECT_EQ(calculation.SystemInflowNode, 1);
    EXPECT_EQ(calculation.SecondInflowNode, 5);

    // Demand mode takes no inflow pressure from the node.
    ConvertFromDos(*project, OldProject(1).Bytes());
    EXPECT_EQ(project->CalculationData.DemandMode, 1);
    EXPECT_EQ(project->CalculationData.InflowResidualPressure1, 0);
}

TEST(LegacyImport, RowsNodesMaterialsAndDefaults) {
    const auto project = std::make_unique<Project>();
    ConvertFromDos(*project, OldProject(2).Bytes());
    ASSERT_EQ(project->NumberOfNodes, 5);
    ASSERT_EQ(project->NumberOfPipeRows, 4); // PipeCount 8 in the file
    EXPECT_EQ(project->NumberOfPipes, 4);

    // The old pump comes back as a meter, its value as the device loss.
    const auto& pump = project->PipeRecord[1];
    EXPECT_EQ(pump.Material, MaterialMeter);
    EXPECT_FLOAT_EQ(pump.DeviceLoss, -12.5f);
    EXPECT_EQ(pump.BegIsInflow, 1);
    EXPECT_EQ(pump.EndIsInflow, 0);
    EXPECT_EQ(project->PipeRecord[4].Material, MaterialBackflowPreventer);
    EXPECT_FLOAT_EQ(project->PipeRecord[4].DeviceLoss, 3.0f);

    const auto& main = project->PipeRecord[2];
    EXPECT_EQ(main.BegNode, "2");
    EXPECT_EQ(main.EndNode, "3");
    EXPECT_FLOAT_EQ(main.Diameter, 2.067f);
    EXPECT_EQ(main.DiameterFixed, 1);
    EXPECT_FLOAT_EQ(main.TotalEquivLength, 20.5f);
    EXPECT_FLOAT_EQ(main.Length, 10.5f);
    EXPECT_EQ(main.FittingText, "2FE3T");
    EXPECT_FLOAT_EQ(main.NonStandardFitLength, 4.5f);
    EXPECT_EQ(main.OldFittingLength, 4); // half to even
    EXPECT_EQ(main.TypeGroup, 2);
    EXPECT_FLOAT_EQ(main.ElevationB, 10.5f);
    EXPECT_EQ(main.KFactorE, "5.6");
    EXPECT_FLOAT_EQ(main.SprinklerAreaE, 130);
    EXPECT_EQ(main.AreaGroupE, "A");

    const auto& branch = project->PipeRecord[3];
    EXPECT_EQ(branch.Active, 0);
    EXPECT_EQ(branch.DiameterFixed, 0);
    EXPECT_EQ(branch.Diameter, 0);
    EXPECT_EQ(branch.KFactorE, "Dflt"); // 100 in the file
    EXPECT_EQ(branch.KFactorB, "5.6");
    // The supply's pressure is its estimate; a node without a K has "None".
    EXPECT_FLOAT_EQ(pump.PressEstimateB, 65.5f);
    EXPECT_EQ(pump.KFactorB, "None");

    // Node 5 is the second inflow: its hose flow does not stay on the rows.
    EXPECT_EQ(project->PipeRecord[4].NonSprinklerFlowE, 0);
    EXPECT_DOUBLE_EQ(project->NodeRecord[5].FixedFlow, 250);
    EXPECT_FLOAT_EQ(static_cast<float>(project->NodeRecord[4].KFactor), 5.6f);
    EXPECT_DOUBLE_EQ(project->NodeRecord[1].ResidualPressure, 65.5);
    EXPECT_EQ(project->NodeRecord[3].AreaGroup, "A");
}

TEST(LegacyImport, FixedFlowStaysOnANodeThatIsNoInflow) {
    auto file = OldProject(1);
    file.PutInt(13, 2, 0); // node 5 no longer an inflow
    const auto project = std::make_unique<Project>();
    ConvertFromDos(*project, file.Bytes());
    EXPECT_FLOAT_EQ(project->PipeRecord[4].NonSprinklerFlowE, 250);
    EXPECT_EQ(project->PipeRecord[4].KFactorE, "None");
}

// A project as this program holds it, for the export.
void ModernProject(Project& project) {
    project.SystemData.SprinklerSystemType = "WET";
    project.SystemData.TestStaticPressure = 55.5f;   // half to even: 56
    project.SystemData.TestResidualPressure = 48.5f; // 48
    project.SystemData.DefaultKFactor = 5.6f;
    project.CalculationData.DesignDensity = 0.15f;
    project.SystemData.MinimumDesiredDensity = 0.3f;
    project.ProjectData.Title = std::string(40, 'T') + "tail";
    project.CalculationData.SupplyMode = 1;
    project.CalculationData.DemandMode = 0;
    project.CalculationData.SystemInflowNode = 10;
    project.CalculationData.InflowResidualPressure1 = 55.25;
    project.NumberOfPipeRows = 3;
    project.NumberOfPipes = 3;
    auto& pump = project.PipeRecord[1];
    pump.BegNode = "10";
    pump.EndNode = "20";
    pump.BegIsInflow = 1;
    pump.Material = MaterialFirePump;
    pump.DeviceLoss = -15;
    pump.ElevationE = 12.25f;
    pump.Active = 1;
    auto& pipe = project.PipeRecord[2];
    pipe.BegNode = "20";
    pipe.EndNode = "30";
    pipe.KFactorE = "Dflt";
    pipe.ElevationB = 12.25f;
    pipe.ElevationE = 12.25f;
    pipe.Diameter = 1.049f;
    pipe.DiameterFixed = 1;
    pipe.Length = 12.5f;
    pipe.TotalEquivLength = 14.5f;
    pipe.TypeGroup = 10;
    pipe.Active = 1;
    auto& inactive = project.PipeRecord[3];
    inactive.BegNode = "30";
    inactive.EndNode = "40";
    inactive.KFactorB = "Dflt";
    inactive.ElevationB = 12.25f;
    inactive.KFactorE = "None";
    inactive.NonSprinklerFlowE = 100;
    inactive.Active = 0;
}

TEST(LegacyExport, LayoutScalingsAndMaterials) {
    const auto project = std::make_unique<Project>();
    ModernProject(*project);
    const auto bytes = ConvertToDos(*project);
    using F = LegacyFileBuilder;
    // Four distinct nodes, inactive row included, then three pipes.
    ASSERT_EQ(bytes.size(), static_cast<std::size_t>((79 + 4 + 3) * 80));
    EXPECT_EQ(F::IntAt(bytes, 1, 0), 501);
    EXPECT_EQ(F::IntAt(bytes, 1, 2), 1134);
    EXPECT_EQ(F::IntAt(bytes, 1, 8), 4);
    EXPECT_EQ(F::IntAt(bytes, 1, 10), 6);
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 1, 22), 5.6f);
    EXPECT_EQ(F::TextAt(bytes, 2, 0, 31), std::string(31, 'T'));
    EXPECT_EQ(F::IntAt(bytes, 11, 38), 56);
    EXPECT_EQ(F::IntAt(bytes, 12, 0), 48);
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 11, 28), 0.15f);
    EXPECT_EQ(F::IntAt(bytes, 12, 22), 2); // "WET"
    EXPECT_EQ(F::IntAt(bytes, 13, 0), 10);
    EXPECT_EQ(F::IntAt(bytes, 13, 6), 2);
    for (int offset = 0; offset < 80; ++offset) {
        EXPECT_EQ(bytes[13 * 80 + offset], 0) << "record 14 at " << offset;
    }

    // Nodes in the order of the rows: 10, 20, 30, 40.
    EXPECT_EQ(F::IntAt(bytes, 80, 0), 10);
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 80, 14), 5525); // the supply pressure
    EXPECT_EQ(F::IntAt(bytes, 81, 0), 20);
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 81, 6), 122.5f);
    EXPECT_EQ(F::IntAt(bytes, 82, 0), 30);
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 82, 2), 100); // "Dflt"
    EXPECT_EQ(F::IntAt(bytes, 83, 0), 40);
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 83, 10), 1000); // a fixed flow of 100 gpm
    EXPECT_EQ(F::TextAt(bytes, 83, 23, 57), std::string(57, ' '));

    EXPECT_EQ(F::IntAt(bytes, 84, 12), 84); // the pump
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 84, 16), -150);
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 85, 4), 1049);
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 85, 8), 145);
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 85, 16), 125);
    EXPECT_EQ(F::TextAt(bytes, 85, 42, 1), "0"); // group 10 has no digit
    EXPECT_EQ(F::IntAt(bytes, 86, 14), 0);       // inactive
    EXPECT_FLOAT_EQ(F::FloatAt(bytes, 86, 4), 0);
    EXPECT_EQ(F::TextAt(bytes, 86, 43, 37), std::string(37, ' '));

    // "Dry" in any case is 1; an unknown type has no number.
    project->SystemData.SprinklerSystemType = "dry";
    EXPECT_EQ(F::IntAt(ConvertToDos(*project), 12, 22), 1);
    project->SystemData.SprinklerSystemType = "Preaction";
    EXPECT_EQ(F::IntAt(ConvertToDos(*project), 12, 22), 0);
}

// Fields of a row that the old format holds.
void ExpectRowsAlike(const PipeRecord& before, const PipeRecord& after, int row) {
    SCOPED_TRACE("row " + std::to_string(row));
    EXPECT_EQ(after.BegNode, before.BegNode);
    EXPECT_EQ(after.EndNode, before.EndNode);
    EXPECT_EQ(after.KFactorB, before.KFactorB);
    EXPECT_EQ(after.KFactorE, before.KFactorE);
    EXPECT_FLOAT_EQ(after.ElevationB, before.ElevationB);
    EXPECT_FLOAT_EQ(after.ElevationE, before.ElevationE);
    EXPECT_FLOAT_EQ(after.Length, before.Length);
    EXPECT_FLOAT_EQ(after.TotalEquivLength, before.TotalEquivLength);
    EXPECT_EQ(after.Active, before.Active);
    EXPECT_EQ(after.FittingText, before.FittingText);
    EXPECT_EQ(after.FittingCounts, before.FittingCounts);
    EXPECT_FLOAT_EQ(after.NonStandardFitLength, before.NonStandardFitLength);
    EXPECT_EQ(after.TypeGroup, before.TypeGroup);
    EXPECT_EQ(after.BegIsInflow, before.BegIsInflow);
    EXPECT_EQ(after.DiameterFixed, before.DiameterFixed);
    if (before.DiameterFixed != 0) {
        EXPECT_FLOAT_EQ(after.Diameter, before.Diameter);
    }
}

TEST(LegacyRoundTrip, ProjectFileToLegacyAndBack) {
    testing::ScratchDirectory scratch;
    const auto original = std::make_unique<Project>();
    ModernProject(*original);
    original->PipeRecord[1].Material = MaterialAlarmDevice; // a pump would come back as a meter
    original->PipeRecord[2].TypeGroup = 3;
    original->PipeRecord[2].FittingCounts = {2, 1, 0, 3, 0, 0, 1};
    original->PipeRecord[2].FittingText = "2FE3TC";
    original->PipeRecord[2].NonStandardFitLength = 2.5f;
    for (auto* end : {&original->PipeRecord[2], &original->PipeRecord[3]}) {
        (end == &original->PipeRecord[2] ? end->SprinklerAreaE : end->SprinklerAreaB) = 110;
        (end == &original->PipeRecord[2] ? end->AreaGroupE : end->AreaGroupB) = "B";
    }
    original->ProjectData.Title = "Short title";
    original->SystemData.SprinklerSystemType = "Dry";
    original->SystemData.TestStaticPressure = 56;
    ASSERT_EQ(WriteProject(*original, scratch / "a.qnw"), WriteOutcome::Written);

    const auto read = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*read, scratch / "a.qnw"));
    ASSERT_TRUE(WriteDosFile(*read, scratch / "a.qnd"));
    const auto converted = std::make_unique<Project>();
    ASSERT_TRUE(ReadDosFile(*converted, scratch / "a.qnd"));
    ASSERT_EQ(WriteProject(*converted, scratch / "b.qnw"), WriteOutcome::Written);
    const auto back = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*back, scratch / "b.qnw"));

    ASSERT_EQ(back->NumberOfPipeRows, original->NumberOfPipeRows);
    for (int row = 1; row <= original->NumberOfPipeRows; ++row) {
        ExpectRowsAlike(original->PipeRecord[row], back->PipeRecord[row], row);
    }
    EXPECT_EQ(back->PipeRecord[1].Material, MaterialAlarmDevice);
    EXPECT_FLOAT_EQ(back->PipeRecord[1].DeviceLoss, -15);
    EXPECT_FLOAT_EQ(back->PipeRecord[3].NonSprinklerFlowE, 100);
    EXPECT_FLOAT_EQ(back->PipeRecord[3].SprinklerAreaB, 110);
    EXPECT_EQ(back->PipeRecord[3].AreaGroupB, "B");
    EXPECT_EQ(back->ProjectData.Title, "Short title");
    EXPECT_EQ(back->SystemData.SprinklerSystemType, "Dry");
    EXPECT_EQ(back->SystemData.TestStaticPressure, 56);
    EXPECT_FLOAT_EQ(back->CalculationData.DesignDensity, 0.15f);
    EXPECT_EQ(back->CalculationData.SupplyMode, 1);
    EXPECT_DOUBLE_EQ(back->CalculationData.InflowResidualPressure1, 55.25);
    EXPECT_EQ(back->CalculationData.SystemInflowNode, 10);
    EXPECT_EQ(back->CalculationData.SolverScratch, original->CalculationData.SolverScratch);

    // The pump of this program leaves as 84 and returns as a meter.
    read->PipeRecord[1].Material = MaterialFirePump;
    ConvertFromDos(*converted, ConvertToDos(*read));
    EXPECT_EQ(converted->PipeRecord[1].Material, MaterialMeter);
}

TEST(LegacyImport, HostileFilesAreReadAsFarAsTheyGo) {
    const auto whole = OldProject(2).Bytes();
    const auto project = std::make_unique<Project>();
    // Every cut of a good file.
    for (std::size_t size = 0; size <= whole.size(); size += 7) {
        ConvertFromDos(*project, std::span(whole.data(), size));
        EXPECT_LE(project->NumberOfPipeRows, 4);
        EXPECT_LE(project->NumberOfNodes, 5);
    }
    ConvertFromDos(*project, std::span(whole.data(), whole.size() - 80));
    EXPECT_EQ(project->NumberOfPipeRows, 3);

    // Counts far beyond the records present or the capacity.
    auto huge = OldProject(2);
    huge.PutInt(1, 8, 32767);
    huge.PutInt(1, 10, 32767);
    ConvertFromDos(*project, huge.Bytes());
    EXPECT_EQ(project->NumberOfNodes, 9); // the pipe records read as nodes
    EXPECT_EQ(project->NumberOfPipeRows, 0);
    auto negative = OldProject(2);
    negative.PutInt(1, 8, -5);
    negative.PutInt(1, 10, -8);
    ConvertFromDos(*project, negative.Bytes());
    EXPECT_EQ(project->NumberOfNodes, 0);
    EXPECT_EQ(project->NumberOfPipeRows, 0);

    LegacyFileBuilder counts;
    counts.PutInt(1, 8, 1500);
    counts.PutInt(1, 10, 3000);
    auto many = counts.Bytes();
    many.resize((79 + 1500 + 1500) * 80, 0);
    ConvertFromDos(*project, many);
    EXPECT_EQ(project->NumberOfNodes, MaxNodes);
    EXPECT_EQ(project->NumberOfPipeRows, MaxPipes);

    // Random bytes, and random bytes over a good file; every result exports again.
    std::mt19937 random(18);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int trial = 0; trial < 200; ++trial) {
        auto bytes = whole;
        if (trial % 2 == 0) {
            bytes.resize(80 * (1 + trial % 90));
            for (auto& value : bytes) {
                value = static_cast<std::uint8_t>(byte(random));
            }
        } else {
            for (int flip = 0; flip < 20; ++flip) {
                bytes[random() % bytes.size()] = static_cast<std::uint8_t>(byte(random));
            }
        }
        ConvertFromDos(*project, bytes);
        EXPECT_LE(project->NumberOfPipeRows, MaxPipes);
        EXPECT_LE(project->NumberOfNodes, MaxNodes);
        for (int row = 1; row <= project->NumberOfPipeRows; ++row) {
            EXPECT_GE(project->PipeRecord[row].Material, 0);
            EXPECT_LE(project->PipeRecord[row].Material, MaterialFirePump);
        }
        EXPECT_FALSE(ConvertToDos(*project).empty());
    }
}

TEST(LegacyFiles, MissingFilesAndDirectoriesAreRefused) {
    testing::ScratchDirectory scratch;
    const auto project = std::make_unique<Project>();
    std::string error;
    EXPECT_FALSE(ReadDosFile(*project, scratch / "none.qnd", &error));
    EXPECT_FALSE(error.empty());
    EXPECT_FALSE(ReadDosFile(*project, scratch.Path(), &error));
    EXPECT_FALSE(WriteDosFile(*project, scratch.Path(), &error));
}

} // namespace
} // namespace quench
