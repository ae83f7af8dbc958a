#include "core/project_json.h"
#include "tests/support/command_line.h"
#include "tests/support/independent_writer.h"
#include "tests/support/scratch_directory.h"

#include <memory>
#include <sstream>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using testing::CommandOutcome;
using testing::ExpectOneLineError;
using testing::RunQuench;
using testing::ScratchDirectory;

std::string JsonOf(const Project& project) {
    std::ostringstream out;
    WriteProjectJson(project, out);
    return out.str();
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(NewCommand, WritesAResetProjectAsTheLayoutHasIt) {
    ScratchDirectory scratch;
    const auto file = scratch / "job.qnw";
    const CommandOutcome run = RunQuench({"new", file.string()});
    EXPECT_EQ(run.Status, ExitSuccess) << run.Err;
    EXPECT_EQ(run.Err, "");
    const auto reset = std::make_unique<Project>();
    EXPECT_EQ(testing::LoadFile(file), testing::LayProjectFile(*reset));

    const CommandOutcome dump = RunQuench({"dump", file.string()});
    EXPECT_EQ(dump.Status, ExitSuccess);
    EXPECT_EQ(dump.Out, JsonOf(*reset));
}

TEST(NewCommand, RefusesWhatItCannotOrShouldNotWrite) {
    ScratchDirectory scratch;
    ExpectOneLineError(RunQuench({"new"}), "usage: quench new FILE");
    ExpectOneLineError(RunQuench({"new", "a.qnw", "b.qnw"}), "usage");
    ExpectOneLineError(RunQuench({"new", (scratch / "none" / "job.qnw").string()}),
                       "No such file or directory");
    EXPECT_FALSE(std::filesystem::exists(scratch / "none"));
    ExpectOneLineError(RunQuench({"new", scratch.Path().string()}), "is a directory");
}

TEST(NewCommand, LaysTheProjectOverAnExistingFileWithoutTruncatingIt) {
    ScratchDirectory scratch;
    const auto reset = std::make_unique<Project>();
    const auto laid = testing::LayProjectFile(*reset);
    const auto existing = scratch / "existing.qnw";
    testing::FileBytes longer(laid.size() + 2500, 'x');
    testing::SaveFile(existing, longer);
    const CommandOutcome run = RunQuench({"new", existing.string()});
    ASSERT_EQ(run.Status, ExitSuccess) << run.Err;
    std::copy(laid.begin(), laid.end(), longer.begin());
    EXPECT_EQ(testing::LoadFile(existing), longer);
}

TEST(DumpCommand, ShowsAnIndependentFileFieldForField) {
    ScratchDirectory scratch;
    for (const int format : {60111, 60117, 60125}) {
        SCOPED_TRACE("format " + std::to_string(format));
        auto sample = std::make_unique<Project>();
        testing::FillSampleProject(*sample, 30, 12, 14, 16, format);
        sample->PipeRecord[2].Material = 60;
        sample->UnitSystem = 3;
        const auto extensions = testing::ExtensionsOfFormat(format);
        const auto file = scratch / "independent.qnw";
        testing::SaveFile(file, testing::LayProjectFile(*sample, extensions));
        const CommandOutcome run = RunQuench({"dump", file.string()});
        ASSERT_EQ(run.Status, ExitSuccess) << run.Err;
        EXPECT_EQ(run.Out, JsonOf(*testing::ModelAfterReading(*sample, extensions, format)));
    }
}

TEST(DumpCommand, ShowsAnIndependentFileWithItsRepairs) {
    ScratchDirectory scratch;
    auto sample = std::make_unique<Project>();
    testing::FillSampleProject(*sample, 3, 2, 2, 2, 60111);
    sample->ProjectData.Title = "  Lager \xC4 ";
    sample->PipeRecord[2].Material = 60;
    sample->UnitSystem = 3;
    sample->InflowNode = 3210;
    const auto file = scratch / "old.qnw";
    testing::SaveFile(file, testing::LayProjectFile(*sample, testing::ExtensionsOfFormat(60111)));

    const CommandOutcome run = RunQuench({"dump", file.string()});
    ASSERT_EQ(run.Status, ExitSuccess) << run.Err;
    EXPECT_EQ(run.Err, "");
    EXPECT_TRUE(Contains(run.Out, "\"Title\": \"Lager \xC3\x84\",\n"));
    EXPECT_TRUE(Contains(run.Out, "\"GPDProjectFormat\": 60111\n"));
    EXPECT_TRUE(Contains(run.Out, "\"ExteriorHoseFlow\": 0,\n"));
    EXPECT_TRUE(Contains(run.Out, "\"Material\": 4,\n"));
    EXPECT_FALSE(Contains(run.Out, "\"Material\": 60,"));
    EXPECT_TRUE(Contains(run.Out, "\"InflowNode\": 3210,\n"));
    EXPECT_TRUE(Contains(run.Out, "\"UnitSystem\": 0,\n"));
    EXPECT_TRUE(Contains(run.Out, "\"AlarmDeviceName\": \"Alarm Check Valve\",\n"));
    EXPECT_TRUE(Contains(run.Out, "\"InputChanged\": 0\n}\n"));
    EXPECT_TRUE(Contains(run.Out, "\"NumberOfPipes\": 2,\n"));
}

TEST(DumpCommand, ADamagedFileIsShownAsReadAndAMissingOneIsAnError) {
    ScratchDirectory scratch;
    const auto corpus = testing::SourceDirectory() / "tests" / "data" / "corpus";
    const CommandOutcome odd = RunQuench({"dump", (corpus / "nan_values.qnw").string()});
    EXPECT_EQ(odd.Status, ExitSuccess) << odd.Err;
    EXPECT_TRUE(Contains(odd.Out, "\"InRackSprinklerAllowance\": null,\n"));
    EXPECT_TRUE(Contains(odd.Out, "\"InsideHoseStreamAllowance\": null,\n"));

    const CommandOutcome huge = RunQuench({"dump", (corpus / "huge_counts.qnw").string()});
    EXPECT_EQ(huge.Status, ExitSuccess) << huge.Err;
    EXPECT_TRUE(Contains(huge.Out, "\"NumberOfPipeRows\": 32767,\n"));

    const CommandOutcome empty = RunQuench({"dump", (corpus / "empty.qnw").string()});
    EXPECT_EQ(empty.Status, ExitSuccess);
    EXPECT_EQ(empty.Out, JsonOf(*std::make_unique<Project>()));

    ExpectOneLineError(RunQuench({"dump", (scratch / "none.qnw").string()}),
                       "No such file or directory");
    ExpectOneLineError(RunQuench({"dump", scratch.Path().string()}), "is a directory");
    ExpectOneLineError(RunQuench({"dump"}), "usage: quench dump FILE");
    ExpectOneLineError(RunQuench({"dump", ""}), "usage");
}

} // namespace
} // namespace quench::cli
