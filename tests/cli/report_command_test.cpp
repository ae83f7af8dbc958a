#include "calc/calculation.h"
#include "core/atomic_write.h"
#include "core/project_file.h"
#include "tests/support/command_line.h"
#include "tests/support/network_shapes.h"
#include "tests/support/scratch_directory.h"

#include <cstdio>
#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using namespace quench::testing;

// A calculated tree of three branch lines, written as a project file.
std::filesystem::path WriteCalculatedTree(const ScratchDirectory& scratch,
                                          const std::string& name) {
    const auto project = std::make_unique<Project>();
    ResetProject(*project);
    project->ProjectData.Title = "Report Test";
    NetworkBuilder network(*project);
    BuildTree(network, 3, 4);
    network.DemandMode(7, 0.1f);
    CalculationRun run(*project);
    EXPECT_TRUE(run.Posted);
    const auto file = scratch / name;
    EXPECT_EQ(WriteProject(*project, file), WriteOutcome::Written);
    return file;
}

std::string Bytes(const std::filesystem::path& file) {
    std::string bytes;
    EXPECT_TRUE(ReadWholeFile(file, bytes));
    return bytes;
}

// The output of a command of the system, as text.
std::string Shell(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return output;
    }
    char buffer[4096];
    for (std::size_t read; (read = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        output.append(buffer, read);
    }
    pclose(pipe);
    return output;
}

TEST(ReportCommand, WritesThePdfAndTheTextAndLeavesTheProjectAsItWas) {
    ScratchDirectory scratch;
    const auto file = WriteCalculatedTree(scratch, "tree.qnw");
    const std::string before = Bytes(file);
    const auto pdf = scratch / "tree.pdf";
    const auto text = scratch / "tree.txt";
    const CommandOutcome written = RunQuench({"report", file.string(), "--text", text.string()});
    ASSERT_EQ(written.Status, ExitSuccess) << written.Err;
    const std::string rendered = Bytes(text);
    EXPECT_NE(rendered.find("Overall Pipe Output Data"), std::string::npos);
    EXPECT_NE(rendered.find("tree.qnw | Page 1 | "), std::string::npos);

    const CommandOutcome outcome = RunQuench({"report", file.string(), "-o", pdf.string()});
    EXPECT_EQ(Bytes(file), before);
    EXPECT_FALSE(std::filesystem::exists(scratch / "tree.tmp"));
    if (outcome.Err.find("built without Qt") != std::string::npos) {
        GTEST_SKIP() << "this build writes no PDF";
    }
    ASSERT_EQ(outcome.Status, ExitSuccess) << outcome.Err;
    const std::string info = Shell("pdfinfo '" + pdf.string() + "' 2>/dev/null");
    if (info.empty()) {
        GTEST_SKIP() << "pdfinfo (poppler-utils) is not installed";
    }
    // The PDF has the pages of the text render, and its text reads as the report.
    int textPages = 0;
    for (std::size_t at = rendered.find("--- page "); at != std::string::npos;
         at = rendered.find("--- page ", at + 1)) {
        ++textPages;
    }
    EXPECT_NE(info.find("Pages:"), std::string::npos) << info;
    const std::string pdfText = Shell("pdftotext -layout '" + pdf.string() + "' -");
    for (const char* words :
         {"QUENCH - Fire Sprinkler Hydraulics Calculation Program", "General Project Data Report",
          "Overall Pipe Output Data", "Quench Sprinkler Output Summary",
          "Hydraulic Supply/Demand Graph", "Report Test", "Totals For All Groups"}) {
        EXPECT_NE(pdfText.find(words), std::string::npos) << words;
    }
    // Every page of the PDF carries its footer with its number.
    int pdfPages = 0;
    for (std::size_t at = pdfText.find("Page "); at != std::string::npos;
         at = pdfText.find("Page ", at + 1)) {
        ++pdfPages;
    }
    EXPECT_GE(pdfPages, 10);
    EXPECT_NE(info.find("Pages:           " + std::to_string(pdfPages) + "\n"), std::string::npos)
        << info;
    EXPECT_GE(textPages, 10);
}

TEST(ReportCommand, SectionsAndUnits) {
    ScratchDirectory scratch;
    const auto file = WriteCalculatedTree(scratch, "tree.qnw");
    const auto text = scratch / "out.txt";
    ASSERT_EQ(RunQuench({"report", file.string(), "--text", text.string(), "--sections",
                         "summary,nodes", "--si"})
                  .Status,
              ExitSuccess);
    const std::string rendered = Bytes(text);
    EXPECT_NE(rendered.find("Node Input Data"), std::string::npos);
    EXPECT_NE(rendered.find("Output Summary"), std::string::npos);
    EXPECT_EQ(rendered.find("Pipe Input Data"), std::string::npos);
    EXPECT_NE(rendered.find("kPa"), std::string::npos);
    EXPECT_EQ(rendered.find(" psi"), std::string::npos);
    // Node data comes before the summary whatever the order of the list.
    EXPECT_LT(rendered.find("Node Input Data"), rendered.find("Output Summary"));
}

TEST(ReportCommand, UsageAndFileErrors) {
    ScratchDirectory scratch;
    const auto file = WriteCalculatedTree(scratch, "tree.qnw");
    const auto pdf = (scratch / "x.pdf").string();
    ExpectOneLineError(RunQuench({"report", file.string()}), "usage: quench report");
    ExpectOneLineError(RunQuench({"report", file.string(), "-o"}), "-o needs a file name");
    ExpectOneLineError(RunQuench({"report", file.string(), "-o", pdf, "--sections", "pipes,cost"}),
                       "unknown section \"cost\"");
    ExpectOneLineError(RunQuench({"report", file.string(), "-o", pdf, "--si", "--us"}),
                       "--si and --us exclude each other");
    ExpectOneLineError(RunQuench({"report", (scratch / "none.qnw").string(), "-o", pdf}),
                       "no such project file");
    ExpectOneLineError(
        RunQuench({"report", file.string(), "-o", (scratch / "no" / "dir" / "").string()}),
        "cannot write");
    EXPECT_FALSE(std::filesystem::exists(pdf));
}

} // namespace
} // namespace quench::cli
