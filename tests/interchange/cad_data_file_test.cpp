#include "interchange/cad_data_file.h"
#include "tests/support/network_builder.h"
#include "tests/support/scratch_directory.h"

#include <fstream>
#include <memory>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::DefaultLibrary;

std::string PipeRow(int begin, int end, const std::string& kEnd, double diameter = 1,
                    const std::string& fittings = "0, 0, 0, 0, 0, 0, 0") {
    std::ostringstream row;
    row << "\"PIPE\", " << begin << ", " << end << ", 10, 10, 0, " << kEnd
        << ", 0, 130, \"\", \"A\", 0, 0, 2, 1, " << diameter << ", 10, 1.5, " << fittings << ", \"H"
        << end << "\"\n";
    return row.str();
}

// A line of `rows` pipes from the source 1, each end a sprinkler of the default K.
std::string LineFile(int rows, double scale = 0.0833333) {
    std::ostringstream text;
    text << rows << ", " << scale << ", 0, 1, 20, 0.5\n";
    for (int row = 1; row <= rows; ++row) {
        text << PipeRow(row, row + 1, "1");
    }
    return text.str();
}

TEST(CadDataFile, DampingBySizeAndStartValues) {
    const auto project = std::make_unique<Project>();
    struct Case {
        int Rows;
        Integer Initial, Minimum;
    };
    for (const Case& c :
         {Case{1, 4, 1}, Case{15, 4, 1}, Case{16, 8, 4}, Case{40, 8, 4}, Case{41, 40, 30},
          Case{100, 40, 30}, Case{101, 65, 60}, Case{1000, 65, 60}}) {
        SCOPED_TRACE(c.Rows);
        const auto outcome = ReadCadData(*project, LineFile(c.Rows), DefaultLibrary());
        ASSERT_TRUE(outcome.Loaded) << outcome.Message;
        EXPECT_EQ(project->NumberOfPipeRows, c.Rows);
        EXPECT_EQ(project->CalculationData.InitialDampingFactor, c.Initial);
        EXPECT_EQ(project->CalculationData.MinimumDampingFactor, c.Minimum);
    }
    const auto& calculation = project->CalculationData;
    EXPECT_EQ(calculation.DemandMode, 1);
    EXPECT_EQ(calculation.SupplyMode, 0);
    EXPECT_EQ(calculation.MinPressureAtHMDNode, 7);
    EXPECT_EQ(calculation.UseMaximumImbalance, 1);
    EXPECT_DOUBLE_EQ(calculation.MaximumNodePressureImbalance, 0.01);
    EXPECT_DOUBLE_EQ(calculation.MaxWaterVelocity, 20);
    EXPECT_DOUBLE_EQ(calculation.MaxFrictionalLoss, 0.5);
    for (const double largest : calculation.TypeGroupMaxDiameter) {
        EXPECT_EQ(largest, 12);
    }
    EXPECT_FLOAT_EQ(project->SystemData.DefaultKFactor, 5.65f);
    EXPECT_EQ(project->SystemData.DefaultPipeMaterial, 4);
    EXPECT_EQ(project->SystemData.MaximumAreaPerSprinkler, 130);
    EXPECT_EQ(project->UnitSystem, 0);
}

TEST(CadDataFile, ScaleChoosesTheUnits) {
    const auto project = std::make_unique<Project>();
    for (const double scale : {0.0, 1.0 / 12.0}) {
        ASSERT_TRUE(ReadCadData(*project, LineFile(2, scale), DefaultLibrary()).Loaded);
        EXPECT_EQ(project->UnitSystem, 0) << scale;
    }
    for (const double scale : {1.0, 0.001, 48.0}) {
        ASSERT_TRUE(ReadCadData(*project, LineFile(2, scale), DefaultLibrary()).Loaded);
        EXPECT_EQ(project->UnitSystem, 1) << scale;
    }
}

TEST(CadDataFile, RowsDevicesNodesAndFittings) {
    const std::string text = "3, 0, 2, 1, 20, 0.5\n"
                             "1, \"N1\"\n2, \"N2TOOLONG\"\n"
                             "\"PUMP\", 1, 2, 0, 0, -40, \"P1\"\n" +
                             PipeRow(2, 3, "5.6", 2, "2, 3, 0, 1, 0, 0, 0") +
                             "\"meter\", 3, 4, 10, 10, 2.5, \"M1\"\n";
    const auto project = std::make_unique<Project>();
    const auto outcome = ReadCadData(*project, text, DefaultLibrary());
    ASSERT_TRUE(outcome.Loaded) << outcome.Message;
    ASSERT_EQ(project->NumberOfNodes, 2);
    EXPECT_EQ(project->NodeRecord[2].Number, 2);
    EXPECT_EQ(project->NodeRecord[2].CadHandle, "N2TOOL");

    const auto& pump = project->PipeRecord[1];
    EXPECT_EQ(pump.Material, MaterialFirePump);
    EXPECT_FLOAT_EQ(pump.DeviceLoss, -40);
    EXPECT_EQ(pump.BegIsInflow, 1);
    EXPECT_EQ(pump.CadHandle, "P1");
    EXPECT_EQ(pump.Active, 1);

    const auto& pipe = project->PipeRecord[2];
    EXPECT_EQ(pipe.BegIsInflow, 0);
    EXPECT_EQ(pipe.KFactorB, "None");
    EXPECT_EQ(pipe.KFactorE, "5.6");
    EXPECT_EQ(pipe.AreaGroupE, "A");
    EXPECT_FLOAT_EQ(pipe.SprinklerAreaE, 130);
    EXPECT_EQ(pipe.Diameter, 2);
    EXPECT_EQ(pipe.DiameterFixed, 1);
    EXPECT_EQ(pipe.FittingText, "2F3ET");
    EXPECT_EQ(pipe.OldFittingLength, 2); // 1.5 half to even
    // 10 ft + 2 × 2 (45°) + 3 × 5 (90°) + 10 (tee) of 2 in Sch 40 + 1.5 non-standard.
    EXPECT_FLOAT_EQ(pipe.TotalEquivLength, 10 + 4 + 15 + 10 + 1.5f);
    EXPECT_EQ(project->PipeRecord[3].Material, MaterialMeter);
    EXPECT_EQ(project->WorkPipeRecord[2].KFactorE, 5.6f); // copied to the work rows

    // A default K in a row of a file, and a pipe left to autosizing.
    ASSERT_TRUE(
        ReadCadData(*project, "1,0,0,1,0,0\n" + PipeRow(1, 2, "1", 0), DefaultLibrary()).Loaded);
    EXPECT_EQ(project->PipeRecord[1].KFactorE, "Dflt");
    EXPECT_EQ(project->PipeRecord[1].DiameterFixed, 0);
    EXPECT_EQ(project->PipeRecord[1].Diameter, 0);
}

TEST(CadDataFile, RefusedAndShortFiles) {
    const auto project = std::make_unique<Project>();
    auto outcome = ReadCadData(*project, "1001, 0, 0, 1, 20, 0.5\n", DefaultLibrary());
    EXPECT_FALSE(outcome.Loaded);
    EXPECT_EQ(outcome.Title, "Autocad File Not Loaded");
    EXPECT_NE(outcome.Message.find("1001 pipes"), std::string::npos) << outcome.Message;
    EXPECT_EQ(project->NumberOfPipeRows, 0);
    EXPECT_TRUE(ReadCadData(*project, LineFile(1000), DefaultLibrary()).Loaded);

    outcome = ReadCadData(*project, "2, 0, 0, 1, 20, 0.5\n\"VALVE\", 1, 2\n", DefaultLibrary());
    EXPECT_FALSE(outcome.Loaded);
    EXPECT_NE(outcome.Message.find("\"VALVE\""), std::string::npos);

    // Five rows announced, two present: the others stay empty.
    std::string shortFile = LineFile(5);
    shortFile.resize(shortFile.find("\"PIPE\", 3,"));
    ASSERT_TRUE(ReadCadData(*project, shortFile, DefaultLibrary()).Loaded);
    EXPECT_EQ(project->NumberOfPipeRows, 5);
    EXPECT_EQ(project->PipeRecord[2].EndNode, "3");
    EXPECT_TRUE(IsBlankRow(project->PipeRecord[3]));
    EXPECT_EQ(project->PipeRecord[3].Active, 0);

    // A node block far longer than the file, and nothing at all.
    EXPECT_TRUE(
        ReadCadData(*project, "0, 0, 2000000000, 1, 0, 0\n1, \"A\"", DefaultLibrary()).Loaded);
    EXPECT_EQ(project->NumberOfNodes, 1);
    EXPECT_TRUE(ReadCadData(*project, "", DefaultLibrary()).Loaded);
    EXPECT_EQ(project->NumberOfPipeRows, 0);

    testing::ScratchDirectory scratch;
    outcome = ReadCadDataFile(*project, scratch / "none.qnc", DefaultLibrary());
    EXPECT_FALSE(outcome.Loaded);
    EXPECT_NE(outcome.Message.find("cannot be read"), std::string::npos);
}

TEST(CadDataFile, MutatedFilesNeverCrash) {
    const std::string good = LineFile(12);
    std::mt19937 random(7);
    const std::string alphabet = "0123456789,.\"\n -EPIPUMETR";
    const auto project = std::make_unique<Project>();
    for (int trial = 0; trial < 300; ++trial) {
        std::string text = good;
        for (int change = 0; change < 1 + trial % 12; ++change) {
            const std::size_t at = random() % text.size();
            switch (random() % 3) {
            case 0:
                text[at] = alphabet[random() % alphabet.size()];
                break;
            case 1:
                text.erase(at, 1 + random() % 20);
                break;
            default:
                text.insert(at, 1, alphabet[random() % alphabet.size()]);
                break;
            }
            if (text.empty()) {
                text = ",";
            }
        }
        const auto outcome = ReadCadData(*project, text, DefaultLibrary());
        EXPECT_LE(project->NumberOfPipeRows, MaxPipes);
        EXPECT_TRUE(outcome.Loaded || !outcome.Message.empty());
    }
}

TEST(CadDataFile, ShippedExampleCalculates) {
    const auto project = std::make_unique<Project>();
    const auto outcome =
        ReadCadDataFile(*project, testing::SourceDirectory() / "examples" / "riser_and_branch.qnc",
                        DefaultLibrary());
    ASSERT_TRUE(outcome.Loaded) << outcome.Message;
    ASSERT_EQ(project->NumberOfPipeRows, 8);
    EXPECT_EQ(project->PipeRecord[1].BegIsInflow, 1);
    project->CalculationData.DesignDensity = 0.1f;
    testing::CalculationRun run(*project);
    EXPECT_TRUE(run.Posted);
    EXPECT_GT(project->CalculationData.InflowFlow, 50);
}

} // namespace
} // namespace quench
