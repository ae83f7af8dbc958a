// Every command of the quench command line thrown at damaged and hostile files, at names that
// are no files (a directory, a device, a pipe nobody writes), and at bad arguments. Each run
// must end, with status 0, 1 or 2, and a refusal says so on stderr naming what it refused; a
// file a failed command would have written is left as it was. The seeds are fixed.

#include "core/atomic_write.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <filesystem>
#include <random>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::CommandOutcome;
using testing::ExpectOneLineError;
using testing::ExpectOrderlyEnd;
using testing::FileText;
using testing::RunQuench;
using testing::ScratchDirectory;

fs::path Example(const std::string& name) {
    return testing::SourceDirectory() / "examples" / name;
}

// The commands that read a project and write nothing beside it, and those that save it.
std::vector<cli::Arguments> ReadingCommands(const fs::path& file, const ScratchDirectory& out) {
    return {{"dump", file.string()},
            {"check", file.string()},
            {"pipes", file.string()},
            {"report", file.string(), "--text", (out / "report.txt").string()},
            {"dxf", file.string(), (out / "graph.dxf").string()},
            {"convert", file.string(), (out / "old.qnd").string()},
            {"convert", file.string(), (out / "net.inp").string()}};
}

class DamagedProject : public ::testing::Test {
protected:
    DamagedProject() : sound_(FileText(Example("branch_line.qnw"))) {}

    // Every command on the bytes, the saving ones on a copy of them.
    void RunAll(const std::string& bytes, const std::string& what) {
        const fs::path file = scratch_ / "damaged.qnw";
        ASSERT_TRUE(WriteFileAtomically(file, bytes));
        for (const auto& arguments : ReadingCommands(file, scratch_)) {
            ExpectOrderlyEnd(RunQuench(arguments), what + ": quench " + arguments[0]);
            EXPECT_EQ(FileText(file), bytes) << what << ": quench " << arguments[0];
        }
        const CommandOutcome calc = RunQuench({"calc", file.string(), "--yes"});
        ExpectOrderlyEnd(calc, what + ": quench calc");
        if (calc.Status != cli::ExitSuccess) {
            EXPECT_EQ(FileText(file), bytes) << what << ": a failed calc changed the file";
        }
        EXPECT_FALSE(fs::exists(scratch_ / "damaged.tmp")) << what;
    }

    ScratchDirectory scratch_;
    std::string sound_;
};

TEST_F(DamagedProject, CutShortAnywhere) {
    // Inside every other record, at a place that moves from record to record, and at a few record
    // boundaries (the project file's reader itself is tried at every length in its own tests).
    for (std::size_t record = 0; record * 1000 < sound_.size(); record += 2) {
        const std::size_t cut = record * 1000 + (record * 137 + 1) % 1000;
        RunAll(sound_.substr(0, cut), "cut at " + std::to_string(cut));
    }
    for (const std::size_t cut : {0, 1000, 5000, 6000, 20000}) {
        RunAll(sound_.substr(0, cut), "cut at " + std::to_string(cut));
    }
}

TEST_F(DamagedProject, RandomBytesChanged) {
    std::mt19937 random(20261125);
    for (int mutant = 0; mutant < 10; ++mutant) {
        std::string bytes = sound_;
        const int changes = std::uniform_int_distribution<int>(1, 24)(random);
        for (int change = 0; change < changes; ++change) {
            const auto at = std::uniform_int_distribution<std::size_t>(0, bytes.size() - 1)(random);
            bytes[at] = static_cast<char>(random() & 0xFF);
        }
        RunAll(bytes, "mutant " + std::to_string(mutant));
    }
}

// Names that are no regular files are refused with their reason, never read without end or
// waited on: a directory, /dev/zero, and a pipe that nobody writes.
TEST(NoFileAtAll, EveryReaderRefusesDirectoriesDevicesAndPipes) {
    ScratchDirectory scratch;
    const fs::path project = scratch / "sound.qnw";
    fs::copy_file(Example("branch_line.qnw"), project);
    const fs::path directory = scratch / "folder.qnw";
    fs::create_directory(directory);
    const fs::path fifo = scratch / "pipe.qnc";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const fs::path& bad : {directory, fs::path("/dev/zero"), fifo}) {
        SCOPED_TRACE(bad.string());
        const std::string name = bad.string();
        const std::vector<cli::Arguments> runs = {
            {"dump", name},
            {"check", name},
            {"pipes", name},
            {"report", name, "--text", (scratch / "r.txt").string()},
            {"dxf", name, (scratch / "g.dxf").string()},
            {"pipes", project.string(), "--import", name},
            {"convert", project.string(), (scratch / "o.dxf").string(), "--drawing", name},
            {"library", "--library", name},
            {"branchline", "--material", "1", "--diameter", "1", "--length", "10", "--k", "5.6",
             "--library", name},
        };
        for (const auto& arguments : runs) {
            const CommandOutcome outcome = RunQuench(arguments);
            EXPECT_EQ(outcome.Status, cli::ExitUsage) << arguments[0] << ": " << outcome.Err;
            EXPECT_NE(outcome.Err.find(name), std::string::npos) << arguments[0] << outcome.Err;
        }
    }
    // The readers of other formats, by the extension of the name.
    for (const char* extension : {".qnc", ".dxf", ".qnd"}) {
        const fs::path link = scratch / (std::string("zero") + extension);
        fs::create_symlink("/dev/zero", link);
        ExpectOneLineError(RunQuench({"convert", link.string(), (scratch / "o.qnw").string()}),
                           "not a regular file");
    }
    ExpectOneLineError(RunQuench({"calc", directory.string()}), "it is a directory");
    ExpectOneLineError(RunQuench({"build", "tree", directory.string()}), "it is a directory");
    EXPECT_EQ(FileText(project), FileText(Example("branch_line.qnw")));
}

// What a command writes lands where the name leads: a symbolic link keeps pointing at the
// written file, a device such as /dev/stdout is written into, and a pipe that nobody reads
// fails at once. A directory in the way is refused and stays.
TEST(CommandOutput, LinksDevicesPipesAndDirectories) {
    ScratchDirectory scratch;
    const std::string project = Example("branch_line.qnw").string();
    fs::create_symlink("target.txt", scratch / "link.txt");
    ASSERT_TRUE(WriteFileAtomically(scratch / "target.txt", "old"));
    const CommandOutcome linked =
        RunQuench({"report", project, "--text", (scratch / "link.txt").string()});
    EXPECT_EQ(linked.Status, cli::ExitSuccess) << linked.Err;
    EXPECT_TRUE(fs::is_symlink(scratch / "link.txt"));
    EXPECT_NE(FileText(scratch / "target.txt").find("Branch line"), std::string::npos);

    EXPECT_EQ(RunQuench({"report", project, "--text", "/dev/null"}).Status, cli::ExitSuccess);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));

    const fs::path fifo = scratch / "unread.txt";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    ExpectOneLineError(RunQuench({"report", project, "--text", fifo.string()}), fifo.string());
    ExpectOneLineError(RunQuench({"dxf", project, fifo.string()}), fifo.string());

    fs::create_directory(scratch / "taken.dxf");
    ExpectOneLineError(RunQuench({"dxf", project, (scratch / "taken.dxf").string()}), "taken.dxf");
    EXPECT_TRUE(fs::is_directory(scratch / "taken.dxf"));
}

// A save that cannot be written leaves the named file as it was. A folder without write
// permission stops nobody running as root, so there the case is skipped.
TEST(CommandOutput, AFailedSaveLeavesTheProject) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "root writes into read-only folders";
    }
    ScratchDirectory scratch;
    const fs::path folder = scratch / "locked";
    fs::create_directory(folder);
    const fs::path file = folder / "line.qnw";
    fs::copy_file(Example("branch_line.qnw"), file);
    const std::string before = FileText(file);
    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
    const CommandOutcome calc = RunQuench({"calc", file.string()});
    const CommandOutcome created = RunQuench({"new", (folder / "fresh.qnw").string()});
    fs::permissions(folder, fs::perms::owner_all);
    EXPECT_EQ(calc.Status, cli::ExitUsage);
    EXPECT_NE(calc.Err, "");
    ExpectOneLineError(created, "fresh.qnw");
    EXPECT_EQ(FileText(file), before);

    fs::permissions(file, fs::perms::none);
    ExpectOneLineError(RunQuench({"dump", file.string()}), "Permission denied");
    ExpectOneLineError(RunQuench({"calc", file.string()}), "Permission denied");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
}

// Missing values, unknown options, empty words and absurd numbers: a usage error of one line
// for each command.
TEST(BadArguments, EveryCommandAnswersWithOneLine) {
    ScratchDirectory scratch;
    const fs::path file = scratch / "line.qnw";
    fs::copy_file(Example("branch_line.qnw"), file);
    const std::string before = FileText(file);
    const std::string name = file.string();
    const std::vector<cli::Arguments> runs = {
        {"calc"},
        {"calc", ""},
        {"calc", name, "--bogus"},
        {"calc", name, "--json"},
        {"check"},
        {"check", name, name},
        {"report", name},
        {"report", name, "-o", ""},
        {"report", name, "--sections", "", "-o", "x.pdf"},
        {"report", name, "--sections", "title,,nonsense", "-o", "x.pdf"},
        {"dxf", name},
        {"dump"},
        {"dump", "--all", name},
        {"new"},
        {"build"},
        {"build", "tree"},
        {"build", "cone", name},
        {"build", "tree", name, "KEY="},
        {"build", "tree", name, "=5"},
        {"build", "tree", name, "CrossDiameter="},
        {"build", "tree", name, "CrossDiameter=1e308"},
        {"build", "tree", name, "CrossDiameter=nan"},
        {"build", "grid", name, "NumberOfBranchLines=32767"},
        {"kfactor"},
        {"kfactor", "--flow", "1e400", "--pressure", "1"},
        {"kfactor", "--flow", "nan", "--pressure", "1"},
        {"kfactor", "--flow", "--pressure", "1"},
        {"branchline", "--material", "-1", "--diameter", "1", "--length", "10", "--k", "5.6"},
        {"branchline", "--material", "1", "--diameter", "1", "--length", "10", "--k", "inf"},
        {"addfit"},
        {"addfit", "--head-loss", "nan", "--flow", "1", "--diameter", "1"},
        {"library", "99999999999999999999"},
        {"library", "-1"},
        {"fittings", "2F3E", "999", "1"},
        {"fittings", "2F3E", "1", "nan"},
        {"pump", "show", "99999"},
        {"pump", "fit", "nan", "1", "2", "3", "4", "5"},
        {"pump", "fit", "1e308", "1", "2", "3", "4", "5"},
        {"pump", "use", name, "99999"},
        {"pipes", name, "--import"},
        {"pipes", name, "--sort"},
        {"convert"},
        {"convert", name},
        {"convert", name, (scratch / "o.xyz").string()},
        {"convert", name, (scratch / "o.qnd").string(), "--snap", "nan"},
        {"convert", name, (scratch / "o.qnd").string(), "--layers", ""},
        {"convert", name, (scratch / "o.qnd").string(), "--units", "parsecs"},
        {"no-such-command"},
    };
    for (const auto& arguments : runs) {
        std::string line;
        for (const auto& word : arguments) {
            line += " [" + word + "]";
        }
        SCOPED_TRACE(line);
        ExpectOneLineError(RunQuench(arguments), "");
    }
    EXPECT_EQ(FileText(file), before);
    EXPECT_FALSE(fs::exists(scratch / "o.xyz"));
}

} // namespace
} // namespace quench
