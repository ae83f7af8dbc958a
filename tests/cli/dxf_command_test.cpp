#include "core/atomic_write.h"
#include "core/project_file.h"
#include "reports/dxf_graph.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

namespace quench::testing {
namespace {

namespace fs = std::filesystem;

// A project with a hydrant test and a calculated demand point.
fs::path WriteTestedProject(const fs::path& file, Integer unitSystem, Single residual) {
    auto project = std::make_unique<Project>();
    project->UnitSystem = unitSystem;
    project->SystemData.TestStaticPressure = 65;
    project->SystemData.TestResidualPressure = residual;
    project->SystemData.TestFlowRate = 900;
    project->SystemData.CalculatedResidualPressure = 41.2f;
    project->SystemData.CalculatedFlowRate = 420.7f;
    EXPECT_EQ(WriteProject(*project, file), WriteOutcome::Written);
    return file;
}

TEST(DxfCommand, WritesTheGraphOfTheProject) {
    ScratchDirectory scratch;
    const auto project = WriteTestedProject(scratch.Path() / "job.qnw", 0, 48);
    const auto drawing = scratch.Path() / "out" / "graph.dxf";
    const CommandOutcome outcome = RunQuench({"dxf", project.string(), drawing.string()});
    EXPECT_EQ(outcome.Status, cli::ExitSuccess) << outcome.Err;
    EXPECT_EQ(outcome.Out, "");
    EXPECT_EQ(outcome.Err, "");
    std::string bytes;
    ASSERT_TRUE(ReadWholeFile(drawing, bytes));
    EXPECT_EQ(bytes.rfind("0\nSECTION\n2\nHEADER\n", 0), 0u);
    EXPECT_TRUE(bytes.ends_with("0\nENDSEC\n0\nEOF\n"));
    EXPECT_NE(bytes.find("ADJUSTED HYDRANT DATA:"), std::string::npos);
    EXPECT_NE(bytes.find(" 421 GPM,"), std::string::npos); // the whole part of 420.7
}

TEST(DxfCommand, RefusalsExitOneAndWriteNothing) {
    ScratchDirectory scratch;
    const auto drawing = scratch.Path() / "graph.dxf";
    const auto metric = WriteTestedProject(scratch.Path() / "metric.qnw", 1, 48);
    CommandOutcome outcome = RunQuench({"dxf", metric.string(), drawing.string()});
    EXPECT_EQ(outcome.Status, cli::ExitStopped);
    EXPECT_EQ(outcome.Err, std::string(DxfMetricMessage) + "\n");
    EXPECT_FALSE(fs::exists(drawing));

    const auto impossible = WriteTestedProject(scratch.Path() / "bad.qnw", 0, 70);
    outcome = RunQuench({"dxf", impossible.string(), drawing.string()});
    EXPECT_EQ(outcome.Status, cli::ExitStopped);
    EXPECT_EQ(outcome.Err, std::string(DxfImpossibleTestMessage) + "\n");
    EXPECT_FALSE(fs::exists(drawing));
}

TEST(DxfCommand, UsageAndFileErrorsExitTwo) {
    ScratchDirectory scratch;
    ExpectOneLineError(RunQuench({"dxf"}), "usage: quench dxf");
    ExpectOneLineError(RunQuench({"dxf", "a.qnw"}), "usage: quench dxf");
    ExpectOneLineError(RunQuench({"dxf", (scratch.Path() / "none.qnw").string(),
                                  (scratch.Path() / "g.dxf").string()}),
                       "cannot read");
    const auto project = WriteTestedProject(scratch.Path() / "job.qnw", 0, 48);
    fs::create_directories(scratch.Path() / "taken");
    ExpectOneLineError(RunQuench({"dxf", project.string(), (scratch.Path() / "taken").string()}),
                       "cannot write");
}

} // namespace
} // namespace quench::testing
