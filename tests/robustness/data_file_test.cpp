// The other files a command reads, damaged: the pipe library, the pump database, a pipe table to
// import, a CAD data file, a drawing, a DOS project and the settings file. Cut short, bytes
// changed at random (seeded), numbers made absurd: each run ends with status 0, 1 or 2 and
// never crashes or hangs; a file that only was read is left as it was.

#include "core/atomic_write.h"
#include "core/ini_document.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::CommandOutcome;
using testing::ExpectOrderlyEnd;
using testing::FileText;
using testing::RunQuench;
using testing::ScratchDirectory;

// Damaged copies of a sound file: cut at spread lengths, then with bytes changed at random.
// Text files also get their numbers made absurd.
std::vector<std::string> Damaged(const std::string& sound, bool text, unsigned seed) {
    std::vector<std::string> copies;
    if (sound.empty()) {
        ADD_FAILURE() << "the sound file is missing";
        return copies;
    }
    const std::size_t step = std::max<std::size_t>(1, sound.size() / 12);
    for (std::size_t cut = 0; cut < sound.size(); cut += step) {
        copies.push_back(sound.substr(0, cut + seed % 7));
    }
    std::mt19937 random(seed);
    for (int mutant = 0; mutant < 10; ++mutant) {
        std::string bytes = sound;
        for (int change = 0; change < 1 + mutant * 3; ++change) {
            const auto at = std::uniform_int_distribution<std::size_t>(0, bytes.size() - 1)(random);
            bytes[at] = static_cast<char>(random() & 0xFF);
        }
        copies.push_back(std::move(bytes));
    }
    if (text) {
        for (const char* absurd : {"1e308", "-1e308", "nan", "inf", "32767", "-32768",
                                   "99999999999999999999", "", "0"}) {
            std::string bytes = sound;
            for (std::size_t at = 0;
                 (at = bytes.find_first_of("0123456789", at)) != std::string::npos;) {
                const std::size_t end = bytes.find_first_not_of("0123456789.", at);
                const std::size_t length = (end == std::string::npos ? bytes.size() : end) - at;
                if (random() % 3 == 0) {
                    bytes.replace(at, length, absurd);
                    at += std::string(absurd).size();
                } else {
                    at += length;
                }
            }
            copies.push_back(std::move(bytes));
        }
    }
    return copies;
}

// Each damaged copy written to the file, then every command run on it.
void Attack(const fs::path& file, const std::string& sound, bool text, unsigned seed,
            const std::vector<cli::Arguments>& runs) {
    int index = 0;
    for (const std::string& bytes : Damaged(sound, text, seed)) {
        ASSERT_TRUE(WriteFileAtomically(file, bytes));
        for (const auto& arguments : runs) {
            const std::string what = file.filename().string() + " #" + std::to_string(index) +
                                     ": quench " + arguments[0];
            ExpectOrderlyEnd(RunQuench(arguments), what);
            EXPECT_EQ(FileText(file), bytes) << what;
        }
        ++index;
    }
}

TEST(DamagedDataFile, PipeLibrary) {
    ScratchDirectory scratch;
    const fs::path library = scratch / "PIPE.DAT";
    const std::string name = library.string();
    Attack(library, FileText(testing::DataDirectory() / "PIPE.DAT"), false, 1,
           {{"library", "--library", name},
            {"library", "1", "--library", name},
            {"library", "50", "--json", "--library", name},
            {"fittings", "2F3E", "1", "2", "--library", name},
            {"branchline", "--material", "1", "--diameter", "1", "--length", "10", "--k", "5.6",
             "--library", name}});
}

TEST(DamagedDataFile, PumpDatabase) {
    ScratchDirectory scratch;
    const fs::path database = scratch / "Pump.Dat";
    const std::string name = database.string();
    Attack(database, FileText(testing::DataDirectory() / "Pump.Dat"), false, 2,
           {{"pump", "list", "--database", name},
            {"pump", "show", "1", "--database", name},
            {"pump", "show", "8", "--database", name}});
}

TEST(DamagedDataFile, PipeTableToImport) {
    ScratchDirectory scratch;
    const fs::path project = scratch / "line.qnw";
    const std::string example = (testing::SourceDirectory() / "examples" / "branch_line.qnw");
    const CommandOutcome table = RunQuench({"pipes", example});
    ASSERT_EQ(table.Status, cli::ExitSuccess);
    const fs::path csv = scratch / "rows.csv";
    int index = 0;
    for (const std::string& bytes : Damaged(table.Out, true, 3)) {
        ASSERT_TRUE(WriteFileAtomically(csv, bytes));
        fs::copy_file(example, project, fs::copy_options::overwrite_existing);
        const std::string before = FileText(project);
        const std::string what = "rows #" + std::to_string(index++);
        const CommandOutcome imported =
            RunQuench({"pipes", project.string(), "--import", csv.string(), "--sort"});
        ExpectOrderlyEnd(imported, what + " import");
        if (imported.Status != cli::ExitSuccess) {
            EXPECT_EQ(FileText(project), before) << what;
            continue;
        }
        ExpectOrderlyEnd(RunQuench({"calc", project.string(), "--yes"}), what + " calc");
        ExpectOrderlyEnd(
            RunQuench({"report", project.string(), "--text", (scratch / "r.txt").string()}),
            what + " report");
    }
}

TEST(DamagedDataFile, CadDataFileDrawingAndDosProject) {
    ScratchDirectory scratch;
    const fs::path examples = testing::SourceDirectory() / "examples";
    const fs::path out = scratch / "out.qnw";
    const fs::path cad = scratch / "in.qnc";
    Attack(cad, FileText(examples / "riser_and_branch.qnc"), true, 4,
           {{"convert", cad.string(), out.string()}});
    const fs::path drawing = scratch / "in.dxf";
    Attack(drawing, FileText(examples / "small_tree.dxf"), true, 5,
           {{"convert", drawing.string(), out.string(), "--snap", "0.5"},
            {"convert", (examples / "branch_line.qnw").string(), (scratch / "o.dxf").string(),
             "--drawing", drawing.string()}});
    const fs::path dos = scratch / "old.qnd";
    ASSERT_EQ(RunQuench({"convert", (examples / "branch_line.qnw").string(), dos.string()}).Status,
              cli::ExitSuccess);
    Attack(dos, FileText(dos), false, 6, {{"convert", dos.string(), out.string()}});
}

// The settings file is read by the desktop at every start: any text parses, and what parses
// writes back unchanged.
TEST(DamagedDataFile, SettingsText) {
    const std::string sound = "[Directories]\nProjects=/home/a\n[Units]\nSystem=1\n; note\n"
                              "[Window Positions]\nfrmMain=10,20,800,600\n";
    std::vector<std::string> texts = Damaged(sound, true, 7);
    texts.push_back(std::string(100000, '['));
    texts.push_back("=\n==\n[=]\n[]\nKEY=\n=VALUE\n\r\n\r\r[a\nb]\n" + std::string(1, '\0'));
    for (const std::string& text : texts) {
        const IniDocument document = IniDocument::Parse(text);
        EXPECT_EQ(IniDocument::Parse(document.Text()).Text(), document.Text());
        (void)document.Value("Units", "System");
        (void)document.SectionEntries("Directories");
    }
}

} // namespace
} // namespace quench
