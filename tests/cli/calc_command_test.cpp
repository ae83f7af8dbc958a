#include "core/atomic_write.h"
#include "core/project_file.h"
#include "tests/support/command_line.h"
#include "tests/support/network_shapes.h"
#include "tests/support/scratch_directory.h"

#include <filesystem>
#include <memory>
#include <tuple>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using namespace quench::testing;

// A branch line of four sprinklers fed at 50 psi, written as a project file.
std::filesystem::path WriteBranchLine(const ScratchDirectory& scratch, const std::string& name,
                                      void (*change)(Project&) = nullptr) {
    const auto project = std::make_unique<Project>();
    NetworkBuilder network(*project);
    BuildBranchLine(network);
    network.SupplyMode(50);
    if (change != nullptr) {
        change(*project);
    }
    const auto file = scratch / name;
    EXPECT_EQ(WriteProject(*project, file), WriteOutcome::Written);
    return file;
}

std::string Bytes(const std::filesystem::path& file) {
    std::string bytes;
    EXPECT_TRUE(ReadWholeFile(file, bytes));
    return bytes;
}

TEST(CalcCommand, CalculatesSavesTheResultsAndWritesJson) {
    ScratchDirectory scratch;
    const auto file = WriteBranchLine(scratch, "line.qnw");
    const auto json = scratch / "out.json";
    const CommandOutcome run = RunQuench({"calc", file.string(), "--json", json.string()});
    EXPECT_EQ(run.Status, ExitSuccess) << run.Err;
    EXPECT_EQ(run.Err, "");
    EXPECT_FALSE(std::filesystem::exists(scratch / "line.tmp"));

    // The results are stored with the project.
    const auto saved = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*saved, file));
    EXPECT_EQ(saved->CalculationData.NumberOfUniquePipeSections, 4);
    EXPECT_EQ(saved->CalculationData.NumberOfFlowingSprinklers, 4);
    EXPECT_EQ(saved->CalculationData.InflowResidualPressure, 50);
    EXPECT_EQ(saved->CalculationData.HMDNodeNumber, 50);
    EXPECT_GT(saved->PipeRecord[4].PressEstimateE, 0);
    EXPECT_EQ(saved->InputChanged, 0);

    const std::string text = Bytes(json);
    for (const char* part :
         {"\"summary\"", "\"nodes\"", "\"pipes\"", "\"results\"", "\"InflowResidualPressure\": 50",
          "\"HMDNodeNumber\": 50", "\"Number\": 10,", "\"EndNode\": \"10\"", "\"DeviceFlag\": 1"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part;
    }
    EXPECT_EQ(text.find("10000"), std::string::npos); // node numbers as the user typed them
}

TEST(CalcCommand, TheJsonNamesThePipesSizingLeftOverALimit) {
    ScratchDirectory scratch;
    // The first pipe of the line is open to sizing but held to 2" under a friction limit that no
    // size meets; the next size would be allowed without the maximum.
    const auto file = WriteBranchLine(scratch, "sized.qnw", [](Project& project) {
        NetworkBuilder(project).DemandMode(7);
        project.PipeRecord[1].Diameter = 0;
        project.PipeRecord[1].DiameterFixed = False;
        project.CalculationData.MaxFrictionalLoss = 0.5;
        project.CalculationData.TypeGroupMaxDiameter[0] = 2;
    });
    const auto json = scratch / "out.json";
    const CommandOutcome run = RunQuench({"calc", file.string(), "--yes", "--json", json.string()});
    ASSERT_EQ(run.Status, ExitSuccess) << run.Err;
    const std::string text = Bytes(json);
    for (const char* part : {"\"sizingNotes\"", "\"BegNode\": \"20\"", "\"EndNode\": \"10\"",
                             "\"reason\": \"friction\"",
                             "\"note\": \"Over the friction limit at the largest allowed size\""}) {
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n"
                                                      << text.substr(text.find("sizingNotes"));
    }

    // Without the maximum the pipe takes a size that meets the limit and no note is left.
    const auto open = WriteBranchLine(scratch, "open.qnw", [](Project& project) {
        NetworkBuilder(project).DemandMode(7);
        project.PipeRecord[1].Diameter = 0;
        project.PipeRecord[1].DiameterFixed = False;
        project.CalculationData.MaxFrictionalLoss = 0.5;
    });
    ASSERT_EQ(RunQuench({"calc", open.string(), "--yes", "--json", json.string()}).Status,
              ExitSuccess);
    EXPECT_NE(Bytes(json).find("\"sizingNotes\": []"), std::string::npos);
}

TEST(CalcCommand, AStoppedRunLeavesTheFileAsItWas) {
    ScratchDirectory scratch;
    const auto file = WriteBranchLine(scratch, "line.qnw", [](Project& project) {
        project.CalculationData.InitialDampingFactor = 0;
    });
    const std::string before = Bytes(file);
    const CommandOutcome run = RunQuench({"calc", file.string()});
    EXPECT_EQ(run.Status, ExitStopped);
    EXPECT_EQ(run.Err, "Input Data Error: You should specify Initial Damping Factor.\n");
    EXPECT_EQ(Bytes(file), before);
    EXPECT_FALSE(std::filesystem::exists(scratch / "line.tmp"));
}

TEST(CalcCommand, QuestionsAreAnsweredByTheOptionsOrTheirDefault) {
    ScratchDirectory scratch;
    const auto file = WriteBranchLine(scratch, "line.qnw", [](Project& project) {
        project.PipeRecord[2].Diameter = 0;
        project.PipeRecord[2].DiameterFixed = False;
    });
    const std::string question =
        "Input Data: There are some pipe sections for which you did not specify diameters";
    CommandOutcome run = RunQuench({"calc", file.string()});
    EXPECT_EQ(run.Status, ExitStopped);
    EXPECT_EQ(run.Err.rfind(question, 0), 0u) << run.Err;
    EXPECT_NE(run.Err.find("size those pipe sections? -> No\n"), std::string::npos) << run.Err;

    run = RunQuench({"calc", file.string(), "--yes"});
    EXPECT_EQ(run.Status, ExitStopped);
    EXPECT_NE(run.Err.find("? -> Yes\nInput Data Error: There are some pipe sections for which "
                           "you asked the program to size"),
              std::string::npos)
        << run.Err;
}

TEST(CalcCommand, UsageAndFileErrors) {
    ScratchDirectory scratch;
    const auto file = WriteBranchLine(scratch, "line.qnw");
    ExpectOneLineError(RunQuench({"calc"}), "usage: quench calc FILE");
    ExpectOneLineError(RunQuench({"calc", file.string(), "other.qnw"}), "usage");
    ExpectOneLineError(RunQuench({"calc", file.string(), "--yes", "--no"}), "exclude");
    ExpectOneLineError(RunQuench({"calc", file.string(), "--json"}), "--json needs a file name");
    ExpectOneLineError(RunQuench({"calc", (scratch / "none.qnw").string()}),
                       "QUENCH: Error: File not found.");
    ExpectOneLineError(RunQuench({"calc", (scratch / "old.qnd").string()}), "File not found");
    ASSERT_TRUE(WriteFileAtomically(scratch / "old.qnd", "a DOS project"));
    ExpectOneLineError(RunQuench({"calc", (scratch / "old.qnd").string()}), "DOS QUENCH Project");

    // A working file left by an unfinished session is not overwritten.
    const std::string before = Bytes(file);
    ASSERT_TRUE(WriteFileAtomically(scratch / "line.tmp", "edits of a session that died"));
    ExpectOneLineError(RunQuench({"calc", file.string()}), "working file");
    EXPECT_EQ(Bytes(scratch / "line.tmp"), "edits of a session that died");
    EXPECT_EQ(Bytes(file), before);

    // A results file that cannot be written: its directory is a file.
    const auto other = WriteBranchLine(scratch, "other.qnw");
    ExpectOneLineError(RunQuench({"calc", other.string(), "--json", (other / "o.json").string()}),
                       "cannot write");
}

// The desktop's rule for names: a name without an extension is the ".qnw" project, and the working
// file is the name with ".tmp" for its extension, whatever the extension was.
TEST(CalcCommand, NamesFollowTheDesktopsRule) {
    for (const auto& [typed, file, working] :
         {std::tuple{"job", "job.qnw", "job.tmp"}, std::tuple{"a.b", "a.b", "a.tmp"},
          std::tuple{"plant.QNW", "plant.QNW", "plant.tmp"}}) {
        SCOPED_TRACE(typed);
        ScratchDirectory scratch;
        WriteBranchLine(scratch, file);
        const CommandOutcome run = RunQuench({"calc", (scratch / typed).string()});
        EXPECT_EQ(run.Status, ExitSuccess) << run.Err;
        const auto saved = std::make_unique<Project>();
        ASSERT_TRUE(ReadProject(*saved, scratch / file));
        EXPECT_EQ(saved->CalculationData.NumberOfFlowingSprinklers, 4);
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.Path()),
                                std::filesystem::directory_iterator()),
                  1); // no working file stays behind

        // The working file of a session that died is the desktop's, and stays for it to offer.
        const std::string before = Bytes(scratch / file);
        ASSERT_TRUE(WriteFileAtomically(scratch / working, "edits of a session that died"));
        const CommandOutcome refused = RunQuench({"calc", (scratch / typed).string()});
        ExpectOneLineError(refused, working);
        EXPECT_EQ(Bytes(scratch / working), "edits of a session that died");
        EXPECT_EQ(Bytes(scratch / file), before);
    }
}

// A working file is never calculated as a project, and a name the desktop would not open is not
// calculated either.
TEST(CalcCommand, WorkingFilesAndUnopenableNamesAreRefused) {
    ScratchDirectory scratch;
    WriteBranchLine(scratch, "job.tmp");
    ExpectOneLineError(RunQuench({"calc", (scratch / "job.tmp").string()}), "is a working file");
    WriteBranchLine(scratch, "x");
    ExpectOneLineError(RunQuench({"calc", (scratch / "x").string()}), "File not found"); // x.qnw
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.Path()),
                            std::filesystem::directory_iterator()),
              2);
}

TEST(CalcCommand, TheSampleGridCalculates) {
    ScratchDirectory scratch;
    const auto file = scratch / "grid.qnw";
    std::filesystem::copy_file(SourceDirectory() / "examples" / "supply_grid.qnw", file);
    const CommandOutcome run = RunQuench({"calc", file.string(), "--progress"});
    EXPECT_EQ(run.Status, ExitSuccess) << run.Err;
    EXPECT_NE(run.Err.find("Calculating... 100%"), std::string::npos);
    const auto saved = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*saved, file));
    EXPECT_EQ(saved->CalculationData.InflowResidualPressure, 55);
    EXPECT_EQ(saved->CalculationData.NumberOfFlowingSprinklers, 18);
}

} // namespace
} // namespace quench::cli
