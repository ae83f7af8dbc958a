#include "core/atomic_write.h"
#include "core/project_file.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using namespace quench::testing;
namespace fs = std::filesystem;

void WriteText(const fs::path& file, const std::string& text) {
    ASSERT_TRUE(WriteFileAtomically(file, text));
}

std::unique_ptr<Project> Read(const fs::path& file) {
    auto project = std::make_unique<Project>();
    EXPECT_TRUE(ReadProject(*project, file));
    return project;
}

fs::path CopyExample(const ScratchDirectory& scratch, const std::string& name) {
    const fs::path file = scratch / name;
    fs::copy_file(SourceDirectory() / "examples" / name, file);
    return file;
}

TEST(PipesCommand, EveryBundledExampleComesBackFromItsTable) {
    ScratchDirectory scratch;
    for (const auto& entry : fs::directory_iterator(SourceDirectory() / "examples")) {
        if (entry.path().extension() != ".qnw") {
            continue;
        }
        const std::string name = entry.path().filename().string();
        SCOPED_TRACE(name);
        const fs::path typed = CopyExample(scratch, name);
        const fs::path imported = scratch / ("imported_" + name);
        fs::copy_file(typed, imported);
        const CommandOutcome printed = RunQuench({"pipes", typed.string()});
        ASSERT_EQ(printed.Status, ExitSuccess) << printed.Err;
        EXPECT_EQ(FileText(typed), FileText(entry.path())); // printing changes nothing
        // Into a project whose rows are cleared first, so nothing but the table can fill them.
        {
            auto cleared = Read(imported);
            ClearNetworkOnly(*cleared);
            ASSERT_EQ(WriteProject(*cleared, imported), WriteOutcome::Written);
        }
        const fs::path table = scratch / (name + ".csv");
        WriteText(table, printed.Out);
        const CommandOutcome back =
            RunQuench({"pipes", imported.string(), "--import", table.string()});
        ASSERT_EQ(back.Status, ExitSuccess) << back.Err;
        EXPECT_EQ(back.Err, "");
        EXPECT_FALSE(
            fs::exists(scratch / ("imported_" + name.substr(0, name.size() - 4) + ".tmp")));
        const auto original = Read(typed);
        const auto again = Read(imported);
        ASSERT_EQ(again->NumberOfPipeRows, original->NumberOfPipeRows);
        for (int row = 1; row <= original->NumberOfPipeRows; ++row) {
            EXPECT_EQ(again->PipeRecord[static_cast<std::size_t>(row)],
                      original->PipeRecord[static_cast<std::size_t>(row)])
                << "row " << row;
        }
        EXPECT_EQ(again->InflowNode, original->InflowNode);
        EXPECT_EQ(RunQuench({"pipes", imported.string()}).Out, printed.Out);
        // Both calculate to the same answer.
        ASSERT_EQ(RunQuench({"calc", typed.string()}).Status, ExitSuccess);
        ASSERT_EQ(RunQuench({"calc", imported.string()}).Status, ExitSuccess);
        const auto typedResult = Read(typed);
        const auto importedResult = Read(imported);
        EXPECT_EQ(importedResult->CalculationData.InflowResidualPressure,
                  typedResult->CalculationData.InflowResidualPressure);
        EXPECT_EQ(importedResult->CalculationData.InflowFlow,
                  typedResult->CalculationData.InflowFlow);
        EXPECT_EQ(importedResult->CalculationData.HMDNodeNumber,
                  typedResult->CalculationData.HMDNodeNumber);
    }
}

TEST(PipesCommand, ABadCellRefusesTheWholeTableAndLeavesTheFile) {
    ScratchDirectory scratch;
    const fs::path file = CopyExample(scratch, "branch_line.qnw");
    const std::string before = FileText(file);
    const auto refused = [&](const std::string& csv, const std::string& line) {
        WriteText(scratch / "t.csv", csv);
        const CommandOutcome outcome =
            RunQuench({"pipes", file.string(), "--import", (scratch / "t.csv").string()});
        EXPECT_EQ(outcome.Status, ExitStopped) << csv;
        EXPECT_NE(outcome.Err.find(line), std::string::npos) << outcome.Err;
        EXPECT_EQ(std::count(outcome.Err.begin(), outcome.Err.end(), '\n'), 1) << outcome.Err;
        EXPECT_EQ(FileText(file), before);
        EXPECT_FALSE(fs::exists(scratch / "branch_line.tmp"));
    };
    refused("BegNode,EndNode,ElevationB\n1,10,0\n10,20,5000\n",
            "line 3, column ElevationB: an elevation is a number from -3276.5 to 3276.5");
    refused("BegNode,EndNode,Colour\n1,10,red\n", "line 1, column Colour: no such column");
    refused("BegNode,EndNode\n1,10\n10,2.5\n", "line 3, column EndNode: a node number");
    refused("BegNode,EndNode,KFactorE\n1,10,big\n", "line 2, column KFactorE: a K-factor");
    refused("BegNode,EndNode,FittingText\n1,10,E2\n", "line 2, column FittingText: You specified");
    refused("BegNode,EndNode,Material\n1,10,X\n", "column Material");
    refused("BegNode,EndNode,BegIsInflow\n1,10,1\n1,20,1\n",
            "line 2, column BegIsInflow: Inflow node should only have one pipe");
    refused("BegNode,EndNode,KFactorB,BegIsInflow\n1,10,5.6,1\n",
            "line 2, column BegIsInflow: Inflow Node can not be a Sprinkler Node");
    refused("BegNode,EndNode\n1,10,3\n", "line 2: 3 cells where the header has 2");
}

TEST(PipesCommand, ImportAsTypedRowsWouldBe) {
    ScratchDirectory scratch;
    const fs::path file = CopyExample(scratch, "branch_line.qnw");
    // Columns in any order; those left out as in an empty row; the first row of a node wins.
    WriteText(scratch / "t.csv", "Length,EndNode,BegNode,Diameter,KFactorE,FittingText,"
                                 "EndIsInflow\n"
                                 "10,1,30,2,0,3e2f,1\n"
                                 "12,20,30,1.5,5.6,,0\n"
                                 "8,30,40,1,8,,0\n"
                                 "8,40,\"10\",1,8,,0\n");
    const CommandOutcome outcome =
        RunQuench({"pipes", file.string(), "--import", (scratch / "t.csv").string(), "--sort"});
    ASSERT_EQ(outcome.Status, ExitSuccess) << outcome.Err;
    EXPECT_EQ(outcome.Err, "quench: warning: node 30 is given other data on line 4 than on "
                           "line 2; the data of line 2 are kept\n"
                           "quench: warning: node 40 is given other data on line 5 than on "
                           "line 4; the data of line 4 are kept\n");
    const auto project = Read(file);
    EXPECT_EQ(project->NumberOfPipeRows, 4);
    EXPECT_EQ(project->InflowNode, 1);
    EXPECT_EQ(project->CalculationData.SystemInflowNode, 1);
    // Sorted by the smaller node: (30,1), (10,40), (30,20), (40,30).
    const PipeRecord& first = project->PipeRecord[1];
    EXPECT_EQ(first.BegNode, "30");
    EXPECT_EQ(first.EndNode, "1");
    EXPECT_EQ(first.EndIsInflow, 1);
    EXPECT_EQ(first.FittingText, "2F3E");
    EXPECT_GT(first.TotalEquivLength, first.Length); // the fittings of 2" steel
    EXPECT_EQ(first.KFactorB, "0");
    EXPECT_TRUE(IsTrue(first.Active));
    EXPECT_TRUE(IsTrue(first.DiameterFixed));
    EXPECT_EQ(first.Material, project->SystemData.DefaultPipeMaterial);
    EXPECT_EQ(project->PipeRecord[2].BegNode, "10");
    EXPECT_EQ(project->PipeRecord[2].KFactorE, "0"); // node 40 as line 4 gave it
    EXPECT_EQ(project->PipeRecord[3].EndNode, "20");
    EXPECT_EQ(project->PipeRecord[4].EndNode, "30");
    EXPECT_EQ(project->PipeRecord[4].KFactorE, "0"); // node 30 as line 2 gave it
}

TEST(PipesCommand, UsageAndFileErrors) {
    ScratchDirectory scratch;
    const fs::path file = CopyExample(scratch, "branch_line.qnw");
    ExpectOneLineError(RunQuench({"pipes"}), "usage: quench pipes");
    ExpectOneLineError(RunQuench({"pipes", file.string(), "--sort"}), "usage: quench pipes");
    ExpectOneLineError(RunQuench({"pipes", file.string(), "--import"}), "--import needs");
    ExpectOneLineError(RunQuench({"pipes", (scratch / "none.qnw").string()}),
                       "no such project file");
    ExpectOneLineError(
        RunQuench({"pipes", file.string(), "--import", (scratch / "none.csv").string()}),
        "cannot read");
}

} // namespace
} // namespace quench::cli
