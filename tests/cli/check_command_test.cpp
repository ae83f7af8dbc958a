// quench check on calculated projects: every example passes once calculated, and a project whose
// stored results were altered fails with the altered node named; calc --json carries the verdict.

#include "core/project_file.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using namespace quench::testing;

std::filesystem::path CalculatedCopy(const ScratchDirectory& scratch, const std::string& example) {
    const auto file = scratch / example;
    std::filesystem::copy_file(SourceDirectory() / "examples" / example, file);
    const CommandOutcome calc =
        RunQuench({"calc", file.string(), "--json", (scratch / (example + ".json")).string()});
    EXPECT_EQ(calc.Status, ExitSuccess) << calc.Err;
    return file;
}

std::string Text(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

TEST(CheckCommand, PassesOnEveryCalculatedExampleAndCalcReportsIt) {
    ScratchDirectory scratch;
    int examples = 0;
    for (const auto& entry : std::filesystem::directory_iterator(SourceDirectory() / "examples")) {
        if (entry.path().extension() != ".qnw") {
            continue;
        }
        const std::string name = entry.path().filename().string();
        const auto file = CalculatedCopy(scratch, name);
        const CommandOutcome check = RunQuench({"check", file.string()});
        EXPECT_EQ(check.Status, ExitSuccess) << name << ": " << check.Out << check.Err;
        EXPECT_NE(check.Out.find("Independent check: passed"), std::string::npos) << check.Out;
        const std::string json = Text(scratch / (name + ".json"));
        for (const char* field :
             {"\"check\"", "\"max_pressure_difference_psi\"", "\"max_flow_difference_gpm\"",
              "\"max_flow_imbalance_gpm\"", "\"passed\": true"}) {
            EXPECT_NE(json.find(field), std::string::npos) << name << ": " << field;
        }
        ++examples;
    }
    EXPECT_GE(examples, 2);
}

TEST(CheckCommand, FailsWhenAStoredPressureIsAlteredByOnePsi) {
    ScratchDirectory scratch;
    const auto file = CalculatedCopy(scratch, "supply_grid.qnw");
    const auto project = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*project, file));
    NodeRecord& node = project->NodeRecord[static_cast<std::size_t>(project->NumberOfNodes / 2)];
    node.ResidualPressure += 1;
    ASSERT_EQ(WriteProject(*project, file), WriteOutcome::Written);
    const CommandOutcome check = RunQuench({"check", file.string()});
    EXPECT_EQ(check.Status, ExitStopped);
    EXPECT_NE(check.Out.find("failed"), std::string::npos) << check.Out;
    EXPECT_NE(check.Out.find("at node " + std::to_string(node.Number)), std::string::npos)
        << check.Out;
    EXPECT_NE(check.Out.find("in pipe "), std::string::npos) << check.Out;
}

TEST(CheckCommand, RejectsBadUsageAndFilesWithoutResults) {
    ScratchDirectory scratch;
    ExpectOneLineError(RunQuench({"check"}), "usage: quench check FILE");
    ExpectOneLineError(RunQuench({"check", "a.qnw", "b.qnw"}), "usage: quench check FILE");
    ExpectOneLineError(RunQuench({"check", (scratch / "missing.qnw").string()}), "cannot read");
    const auto fresh = scratch / "fresh.qnw";
    std::filesystem::copy_file(SourceDirectory() / "examples" / "branch_line.qnw", fresh);
    // An example as shipped has never been calculated.
    ExpectOneLineError(RunQuench({"check", fresh.string()}), "no calculated results");
    ExpectOneLineError(RunQuench({"check", "--json"}), "usage: quench check FILE");
}

} // namespace
} // namespace quench::cli
