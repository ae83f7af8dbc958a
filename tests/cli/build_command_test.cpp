#include "core/atomic_write.h"
#include "core/project_file.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using namespace quench::testing;

std::filesystem::path WriteProjectFile(const ScratchDirectory& scratch, const std::string& name,
                                       void (*change)(Project&) = nullptr) {
    const auto project = std::make_unique<Project>();
    project->SystemData.DefaultKFactor = 5.6f;
    project->SystemData.MaximumAreaPerSprinkler = 130;
    TreeBuilderData& tree = project->TreeBuilderData;
    tree.NodalNumberingIncrement = 10;
    tree.SourceNode = 100;
    tree.LengthOfCrossMain = 12;
    tree.DistanceBetweenBranchLines = 12;
    tree.LengthOfLeftBranchLine = 20;
    tree.LengthOfRightBranchLine = 22;
    tree.LeftDistanceToFirstSprinkler = 8;
    tree.RightDistanceToFirstSprinkler = 10;
    tree.LeftDistanceBetweenSprinklers = 12;
    tree.RightDistanceBetweenSprinklers = 12;
    tree.CrossMaterial = 1;
    tree.CrossDiameter = 2;
    tree.BranchMaterial = 1;
    tree.BranchDiameter = 1;
    if (change != nullptr) {
        change(*project);
    }
    const auto file = scratch / name;
    EXPECT_EQ(WriteProject(*project, file), WriteOutcome::Written);
    return file;
}

std::unique_ptr<Project> Saved(const std::filesystem::path& file) {
    auto project = std::make_unique<Project>();
    EXPECT_TRUE(ReadProject(*project, file));
    return project;
}

std::string Bytes(const std::filesystem::path& file) {
    std::string bytes;
    EXPECT_TRUE(ReadWholeFile(file, bytes));
    return bytes;
}

TEST(BuildCommand, BuildsATreeFromTheStoredInputsAndTheKeys) {
    ScratchDirectory scratch;
    const auto file = WriteProjectFile(scratch, "job.qnw");
    // The example with the keys given: 50 / 12 gives 5 rows of 12.5.
    const CommandOutcome run = RunQuench(
        {"build", "tree", file.string(), "LengthOfCrossMain=50", "KFactor=8", "AreaGroup=ab"});
    ASSERT_EQ(run.Status, ExitSuccess) << run.Err;
    EXPECT_EQ(run.Err, "");
    EXPECT_EQ(run.Out, "Calculated Number Of Rows: 5\n"
                       "Calculated Number Of Sprinklers Per Row: 4\n"
                       "Tree Exit Node Number: 330\n"
                       "Pipe rows written: 1 to 25\n");
    EXPECT_FALSE(std::filesystem::exists(scratch / "job.tmp"));

    const auto saved = Saved(file);
    EXPECT_EQ(saved->NumberOfPipeRows, 25);
    EXPECT_EQ(saved->PipeRecord[1].BegNode, "100");
    EXPECT_EQ(saved->PipeRecord[1].FittingText, "T");
    EXPECT_FLOAT_EQ(saved->PipeRecord[1].TotalEquivLength, 20);
    EXPECT_EQ(saved->PipeRecord[2].KFactorB, "8");
    EXPECT_EQ(saved->PipeRecord[2].AreaGroupB, "AB");
    EXPECT_FLOAT_EQ(saved->PipeRecord[2].SprinklerAreaB, 130);
    EXPECT_FLOAT_EQ(saved->PipeRecord[6].Length, 12.5f);
    EXPECT_EQ(saved->InputChanged, True);
    // The inputs used are kept, the exit node with them; the rest stays as stored.
    EXPECT_FLOAT_EQ(saved->TreeBuilderData.LengthOfCrossMain, 50);
    EXPECT_FLOAT_EQ(saved->TreeBuilderData.KFactor, 8);
    EXPECT_EQ(saved->TreeBuilderData.AreaGroup, "AB");
    EXPECT_EQ(saved->TreeBuilderData.ExitNode, 330);
    EXPECT_EQ(saved->TreeBuilderData.SourceNode, 100);

    // Again with --no: the rows are written from row 1 over the old ones.
    const CommandOutcome again = RunQuench(
        {"build", "tree", file.string(), "SourceNode=1000", "LengthOfCrossMain=12", "--no"});
    ASSERT_EQ(again.Status, ExitSuccess) << again.Err;
    EXPECT_NE(again.Err.find("Confirm Pipe Add: There are existing pipes"), std::string::npos);
    EXPECT_NE(again.Err.find("-> No"), std::string::npos);
    const auto replaced = Saved(file);
    EXPECT_EQ(replaced->PipeRecord[1].BegNode, "1000");
    EXPECT_EQ(replaced->PipeRecord[11].BegNode, saved->PipeRecord[11].BegNode);
    EXPECT_EQ(replaced->NumberOfPipeRows, 25);
}

TEST(BuildCommand, BuildsAGrid) {
    ScratchDirectory scratch;
    const auto file = WriteProjectFile(scratch, "grid.qnw");
    const CommandOutcome run = RunQuench(
        {"build", "grid", file.string(), "NodalNumberingIncrement=10", "SourceNode=100",
         "SourceEntryPoint=5", "DistanceToFirstBranch=8", "DistanceBetweenBranchLines=12",
         "NumberOfBranchLines=2", "LeftDistanceToFirstSprinkler=4", "DistanceBetweenSprinklers=10",
         "SprinklersPerBranchLine=2", "RightDistanceToPerimeter=6", "PerimeterMaterial=1",
         "PerimeterDiameter=2", "BranchMaterial=1", "BranchDiameter=1"});
    ASSERT_EQ(run.Status, ExitSuccess) << run.Err;
    EXPECT_EQ(run.Out, "Number Of Branch Lines: 2\n"
                       "Number Of Sprinkler Heads Per Branch Line: 2\n"
                       "Pipe rows written: 1 to 13\n");
    const auto saved = Saved(file);
    EXPECT_EQ(saved->NumberOfPipeRows, 13);
    EXPECT_EQ(saved->PipeRecord[5].EndNode, "170");
    EXPECT_EQ(saved->PipeRecord[13].EndNode, "210");
    EXPECT_EQ(saved->PipeRecord[8].KFactorB, "5.6"); // K 0: the default as a number
    EXPECT_EQ(saved->GridBuilderData.SprinklersPerBranchLine, 2);
    EXPECT_FLOAT_EQ(saved->GridBuilderData.SourceEntryPoint, 5);
}

TEST(BuildCommand, AStoppedBuildLeavesTheFile) {
    ScratchDirectory scratch;
    const auto file = WriteProjectFile(scratch, "stop.qnw");
    const std::string before = Bytes(file);
    CommandOutcome run = RunQuench({"build", "tree", file.string(), "SourceNode=0"});
    EXPECT_EQ(run.Status, ExitStopped);
    EXPECT_EQ(run.Err, "Input Data Error: There is some required input data missing.\n");
    EXPECT_EQ(run.Out, "");
    EXPECT_TRUE(Bytes(file) == before);
    EXPECT_FALSE(std::filesystem::exists(scratch / "stop.tmp"));

    // A question answered No stops too: over 25 rows, a tree of 10 from row 1 leaves rows of
    // higher numbers ending in 0 behind it.
    ASSERT_EQ(RunQuench({"build", "tree", file.string(), "LengthOfCrossMain=50"}).Status,
              ExitSuccess);
    const std::string built = Bytes(file);
    run = RunQuench(
        {"build", "tree", file.string(), "SourceNode=50", "LengthOfCrossMain=12", "--no"});
    EXPECT_EQ(run.Status, ExitStopped);
    EXPECT_NE(run.Err.find("Possible node conflict: Source node number is less"), std::string::npos)
        << run.Err;
    EXPECT_TRUE(Bytes(file) == built);
}

TEST(BuildCommand, UsageAndFileErrors) {
    ScratchDirectory scratch;
    const auto file = WriteProjectFile(scratch, "bad.qnw");
    const std::string before = Bytes(file);
    ExpectOneLineError(RunQuench({"build"}), "usage: quench build");
    ExpectOneLineError(RunQuench({"build", "ring", file.string()}), "usage: quench build");
    ExpectOneLineError(RunQuench({"build", "tree"}), "usage: quench build");
    ExpectOneLineError(RunQuench({"build", "tree", file.string(), "Perimeter=1"}),
                       "unknown key \"Perimeter\"");
    ExpectOneLineError(RunQuench({"build", "grid", file.string(), "ExitNode=1"}),
                       "unknown key \"ExitNode\"");
    ExpectOneLineError(RunQuench({"build", "tree", file.string(), "SourceNode=12.5"}),
                       "a whole number from 0 to 9999");
    ExpectOneLineError(RunQuench({"build", "tree", file.string(), "LengthOfCrossMain=10000"}),
                       "a number from 0 to 9999.99");
    ExpectOneLineError(RunQuench({"build", "tree", file.string(), "KFactor=five"}), "KFactor=five");
    ExpectOneLineError(RunQuench({"build", "tree", file.string(), "AreaGroup=A1"}),
                       "up to 6 letters");
    ExpectOneLineError(RunQuench({"build", "tree", file.string(), "--yes", "--no"}),
                       "exclude each other");
    ExpectOneLineError(RunQuench({"build", "tree", (scratch / "none.qnw").string()}),
                       "File not found");
    EXPECT_TRUE(Bytes(file) == before);
}

} // namespace
} // namespace quench::cli
