#include "core/atomic_write.h"
#include "core/project_file.h"
#include "interchange/legacy_project.h"
#include "tests/interchange/legacy_file_builder.h"
#include "tests/support/command_line.h"
#include "tests/support/network_builder.h"
#include "tests/support/scratch_directory.h"

#include <memory>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

void WriteBytes(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
    ASSERT_TRUE(WriteFileAtomically(
        file, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size())));
}

TEST(ConvertCommand, LegacyFilesBothWays) {
    ScratchDirectory scratch;
    LegacyFileBuilder legacy;
    legacy.PutInt(13, 0, 1);
    legacy.AddNode(1, 0, 0, 0, 0, 0, "");
    legacy.AddNode(2, 560, 100, 0, 0, 100, "");
    LegacyFileBuilder::Pipe pipe;
    pipe.Begin = 1;
    pipe.End = 2;
    pipe.Length10 = 155;
    legacy.AddPipe(pipe);
    WriteBytes(scratch / "old.QND", legacy.Bytes());

    auto run =
        RunQuench({"convert", (scratch / "old.QND").string(), (scratch / "new.qnw").string()});
    ASSERT_EQ(run.Status, cli::ExitSuccess) << run.Err;
    const auto project = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*project, scratch / "new.qnw"));
    ASSERT_EQ(project->NumberOfPipeRows, 1);
    EXPECT_EQ(project->PipeRecord[1].KFactorE, "5.6");
    EXPECT_FLOAT_EQ(project->PipeRecord[1].Length, 15.5f);
    EXPECT_EQ(project->PipeRecord[1].BegIsInflow, 1);

    run = RunQuench({"convert", (scratch / "new.qnw").string(), (scratch / "back.qnd").string()});
    ASSERT_EQ(run.Status, cli::ExitSuccess) << run.Err;
    std::string bytes;
    ASSERT_TRUE(ReadWholeFile(scratch / "back.qnd", bytes));
    EXPECT_EQ(bytes.size(), static_cast<std::size_t>((79 + 2 + 1) * 80));
    // Nothing but the outputs in the directory: no temporary file is left.
    int files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(scratch.Path())) {
        ++files;
    }
    EXPECT_EQ(files, 3);
}

TEST(ConvertCommand, CadDataFiles) {
    ScratchDirectory scratch;
    const auto example = SourceDirectory() / "examples" / "riser_and_branch.qnc";
    auto run = RunQuench({"convert", example.string(), (scratch / "riser.qnw").string()});
    ASSERT_EQ(run.Status, cli::ExitSuccess) << run.Err;
    const auto project = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*project, scratch / "riser.qnw"));
    EXPECT_EQ(project->NumberOfPipeRows, 8);
    EXPECT_EQ(project->CalculationData.InitialDampingFactor, 4);

    // A refused file: its message and status 1, nothing written.
    ASSERT_TRUE(WriteFileAtomically(scratch / "big.qnc", "5000, 0, 0, 1, 0, 0\n"));
    run = RunQuench({"convert", (scratch / "big.qnc").string(), (scratch / "big.qnw").string()});
    EXPECT_EQ(run.Status, cli::ExitStopped);
    EXPECT_NE(run.Err.find("Autocad File Not Loaded: The file holds 5000 pipes"), std::string::npos)
        << run.Err;
    EXPECT_FALSE(std::filesystem::exists(scratch / "big.qnw"));
}

TEST(ConvertCommand, DrawingsInAndOut) {
    ScratchDirectory scratch;
    const auto drawing = SourceDirectory() / "examples" / "small_tree.dxf";
    const auto file = (scratch / "tree.qnw").string();
    auto run = RunQuench({"convert", drawing.string(), file, "--snap", "0.05"});
    ASSERT_EQ(run.Status, cli::ExitSuccess) << run.Err;
    EXPECT_NE(run.Err.find("11 pipes, 12 nodes and 8 sprinklers were read."), std::string::npos)
        << run.Err;
    const auto project = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*project, file));
    EXPECT_EQ(project->NumberOfPipeRows, 11);
    EXPECT_FLOAT_EQ(project->PipeRecord[1].Length, 12); // inches to feet by the header

    // Without results the drawing is not written; after a calculation it is.
    const auto out = (scratch / "out.dxf").string();
    run = RunQuench({"convert", file, out, "--drawing", drawing.string()});
    EXPECT_EQ(run.Status, cli::ExitStopped);
    EXPECT_NE(run.Err.find("Sizes Not Written: The project holds no calculated results"),
              std::string::npos);
    run = RunQuench({"convert", file, (scratch / "early.inp").string()});
    EXPECT_EQ(run.Status, cli::ExitStopped);
    EXPECT_FALSE(std::filesystem::exists(scratch / "early.inp"));
    project->CalculationData.SupplyMode = 1;
    project->CalculationData.DemandMode = 0;
    project->CalculationData.InflowResidualPressure1 = 60;
    ASSERT_TRUE(testing::CalculationRun(*project).Posted);
    ASSERT_EQ(WriteProject(*project, file), WriteOutcome::Written);
    run = RunQuench({"convert", file, out, "--drawing", drawing.string()});
    ASSERT_EQ(run.Status, cli::ExitSuccess) << run.Err;
    EXPECT_EQ(run.Out, "11 pipes and 12 nodes annotated.\n");
    const auto epanet = (scratch / "tree.inp").string();
    run = RunQuench({"convert", file, epanet});
    ASSERT_EQ(run.Status, cli::ExitSuccess) << run.Err;
    std::string inp;
    ASSERT_TRUE(ReadWholeFile(epanet, inp));
    EXPECT_NE(inp.find("[EMITTERS]"), std::string::npos);

    ExpectOneLineError(RunQuench({"convert", file, out}), "needs --drawing");
    ExpectOneLineError(RunQuench({"convert", drawing.string(), file, "--units", "furlong"}),
                       "--units takes in, ft, mm, cm or m");
    ExpectOneLineError(RunQuench({"convert", drawing.string(), file, "--snap", "-1"}),
                       "--snap needs a distance");
    ExpectOneLineError(RunQuench({"convert", drawing.string(), file, "--layers", " , "}),
                       "--layers needs at least one layer name");
    ExpectOneLineError(RunQuench({"convert", drawing.string(), file, "--snap"}),
                       "--snap needs a value");
    run = RunQuench({"convert", drawing.string(), file, "--layers", "DUCT"});
    EXPECT_EQ(run.Status, cli::ExitStopped);
    EXPECT_NE(run.Err.find("DXF Drawing Not Loaded"), std::string::npos);
}

TEST(ConvertCommand, UsageAndFileErrors) {
    ScratchDirectory scratch;
    ExpectOneLineError(RunQuench({"convert"}), "usage: quench convert");
    ExpectOneLineError(RunQuench({"convert", "a.qnd"}), "usage: quench convert");
    ExpectOneLineError(RunQuench({"convert", "a.txt", "b.qnw"}), "cannot convert .txt to .qnw");
    ExpectOneLineError(
        RunQuench({"convert", (scratch / "none.qnd").string(), (scratch / "x.qnw").string()}),
        "cannot read");
    ExpectOneLineError(
        RunQuench({"convert", (scratch / "none.qnw").string(), (scratch / "x.qnd").string()}),
        "cannot read");
    ExpectOneLineError(RunQuench({"convert", "a.qnd", scratch.Path().string() + "/"}),
                       "it is a directory");
    EXPECT_FALSE(std::filesystem::exists(scratch / "x.qnw"));
}

} // namespace
} // namespace quench
