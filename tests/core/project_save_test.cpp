// Saving a project: the working file gets the model over its old bytes and the named file a copy
// of it, from one image; what lay beyond the image in the working file stays in both; a file that
// cannot be written is named and leaves the other as the rule says.

#include "core/project_file.h"
#include "tests/support/independent_writer.h"
#include "tests/support/scratch_directory.h"

#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::FileBytes;
using testing::ScratchDirectory;

namespace fs = std::filesystem;

std::unique_ptr<Project> SmallProject() {
    auto project = std::make_unique<Project>();
    project->NumberOfPipeRows = 2;
    project->PipeRecord[1].BegNode = "10";
    project->PipeRecord[1].EndNode = "20";
    project->PipeRecord[2].BegNode = "20";
    project->PipeRecord[2].EndNode = "30";
    return project;
}

std::size_t FilesIn(const fs::path& directory) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory), fs::directory_iterator{}));
}

TEST(ProjectSave, BothFilesHoldTheImageAndTheWorkingFilesTail) {
    ScratchDirectory scratch;
    const auto working = scratch / "job.tmp";
    const auto named = scratch / "job.qnw";
    const auto project = SmallProject();
    const FileBytes image = testing::LayProjectFile(*project);
    // An old working file longer than the image, and an old named file longer still.
    FileBytes oldWorking(image.size() + 5000);
    for (std::size_t index = 0; index < oldWorking.size(); ++index) {
        oldWorking[index] = static_cast<std::uint8_t>(index * 13 + 1);
    }
    testing::SaveFile(working, oldWorking);
    testing::SaveFile(named, FileBytes(image.size() + 9000, 'n'));

    std::string error;
    fs::path failed;
    ASSERT_EQ(SaveProject(*project, working, named, &error, &failed), WriteOutcome::Written)
        << error;
    FileBytes expected = image;
    expected.insert(expected.end(), oldWorking.begin() + static_cast<std::ptrdiff_t>(image.size()),
                    oldWorking.end());
    EXPECT_EQ(testing::LoadFile(working), expected);
    EXPECT_EQ(testing::LoadFile(named), expected); // a copy of the working file
    EXPECT_EQ(FilesIn(scratch.Path()), 2u);        // no temporary file left behind

    // A missing working file is made; the same bytes as WriteProject lays.
    fs::remove(working);
    ASSERT_EQ(SaveProject(*project, working, named, &error), WriteOutcome::Written) << error;
    EXPECT_EQ(testing::LoadFile(working), image);
    EXPECT_EQ(testing::LoadFile(named), image);
    const auto alone = scratch / "alone.qnw";
    ASSERT_EQ(WriteProject(*project, alone), WriteOutcome::Written);
    EXPECT_EQ(testing::LoadFile(alone), image);
}

// A project of many records is written in pieces from one small buffer: the file is the same as
// one image would give, the old tail stays, and a record that cannot be laid halfway through
// leaves the old file as it was.
TEST(ProjectSave, ALargeProjectIsWrittenInPiecesAndAllOrNothing) {
    ScratchDirectory scratch;
    auto project = std::make_unique<Project>();
    project->NumberOfPipeRows = MaxPipes;
    for (int row = 1; row <= MaxPipes; ++row) {
        project->PipeRecord[row].BegNode = std::to_string(row);
        project->PipeRecord[row].EndNode = std::to_string(row + 1);
        project->PipeRecord[row].FittingText = "E" + std::to_string(row % 7);
    }
    const FileBytes image = testing::LayProjectFile(*project);
    ASSERT_GT(image.size(), 512u * 1024); // more than one piece
    const auto file = scratch / "large.qnw";
    FileBytes old(image.size() + 3000);
    for (std::size_t index = 0; index < old.size(); ++index) {
        old[index] = static_cast<std::uint8_t>(index * 7 + 3);
    }
    testing::SaveFile(file, old);
    std::string error;
    ASSERT_EQ(WriteProject(*project, file, &error), WriteOutcome::Written) << error;
    FileBytes expected = image;
    expected.insert(expected.end(), old.begin() + static_cast<std::ptrdiff_t>(image.size()),
                    old.end());
    EXPECT_EQ(testing::LoadFile(file), expected);

    // A fitting text too long for its record near the end: nothing of the new bytes lands.
    project->PipeRecord[MaxPipes - 2].FittingText = std::string(1200, 'T');
    EXPECT_EQ(WriteProject(*project, file, &error), WriteOutcome::Failed);
    EXPECT_NE(error.find("does not fit in a record of 1000 bytes"), std::string::npos) << error;
    EXPECT_NE(error.find("row " + std::to_string(MaxPipes - 2)), std::string::npos) << error;
    EXPECT_EQ(testing::LoadFile(file), expected);
    EXPECT_EQ(FilesIn(scratch.Path()), 1u); // no temporary file left behind
}

TEST(ProjectSave, ALinkedNamedFileIsWrittenThroughItsLink) {
    ScratchDirectory scratch;
    fs::create_directory(scratch / "store");
    const auto target = scratch / "store" / "real.qnw";
    testing::SaveFile(target, FileBytes(10, 'x'));
    const auto link = scratch / "link.qnw";
    fs::create_symlink(target, link);
    const auto project = SmallProject();
    std::string error;
    ASSERT_EQ(SaveProject(*project, scratch / "link.tmp", link, &error), WriteOutcome::Written)
        << error;
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(testing::LoadFile(target), testing::LayProjectFile(*project));
}

TEST(ProjectSave, AFileThatCannotBeWrittenIsNamed) {
    ScratchDirectory scratch;
    const auto project = SmallProject();
    std::string error;
    fs::path failed;

    // The named file is a directory: the working file is written, the directory untouched.
    fs::create_directory(scratch / "folder.qnw");
    EXPECT_EQ(SaveProject(*project, scratch / "a.tmp", scratch / "folder.qnw", &error, &failed),
              WriteOutcome::Failed);
    EXPECT_EQ(failed, scratch / "folder.qnw");
    EXPECT_NE(error.find("directory"), std::string::npos) << error;
    EXPECT_EQ(testing::LoadFile(scratch / "a.tmp"), testing::LayProjectFile(*project));
    EXPECT_TRUE(fs::is_empty(scratch / "folder.qnw"));

    // The working file's folder is missing: nothing is written anywhere.
    const auto named = scratch / "b.qnw";
    testing::SaveFile(named, FileBytes(20, 'b'));
    EXPECT_EQ(SaveProject(*project, scratch / "gone" / "b.tmp", named, &error, &failed),
              WriteOutcome::Failed);
    EXPECT_EQ(failed, scratch / "gone" / "b.tmp");
    EXPECT_EQ(testing::LoadFile(named), FileBytes(20, 'b'));
    EXPECT_FALSE(fs::exists(scratch / "gone"));

    // Above capacity or without a name: skipped, with the reason.
    project->NumberOfNodes = MaxPipes + 1;
    EXPECT_EQ(SaveProject(*project, scratch / "c.tmp", scratch / "c.qnw", &error, &failed),
              WriteOutcome::Skipped);
    EXPECT_NE(error.find("NumberOfNodes"), std::string::npos) << error;
    project->NumberOfNodes = 0;
    EXPECT_EQ(SaveProject(*project, scratch / "c.tmp", "  ", &error), WriteOutcome::Skipped);
    EXPECT_FALSE(fs::exists(scratch / "c.tmp"));
    EXPECT_FALSE(fs::exists(scratch / "c.qnw"));
}

} // namespace
} // namespace quench
