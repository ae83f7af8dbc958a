#include "library/pipe_library_file.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <algorithm>
#include <fstream>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using testing::DataDirectory;
using testing::ExpectOneLineError;
using testing::ScratchDirectory;

using Outcome = testing::CommandOutcome;

Outcome Quench(Arguments arguments, bool shippedLibrary = true) {
    if (shippedLibrary) {
        arguments.push_back("--library");
        arguments.push_back(PipeLibraryPath(DataDirectory()).string());
    }
    return testing::RunQuench(arguments);
}

std::size_t Lines(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

TEST(LibraryCommand, ListsTheDefinedMaterials) {
    const Outcome list = Quench({"library"});
    ASSERT_EQ(list.Status, ExitSuccess) << list.Err;
    EXPECT_EQ(Lines(list.Out), 1u + 26u);
    EXPECT_NE(list.Out.find("    4  Sch 10 Steel Wet                120     14\n"),
              std::string::npos)
        << list.Out;
    EXPECT_NE(list.Out.find("   26  HDPE DIPS DR9"), std::string::npos);

    // The program's own library, beside the binaries, is the same.
    const Outcome own = Quench({"library"}, false);
    EXPECT_EQ(own.Status, ExitSuccess) << own.Err;
    EXPECT_EQ(own.Out, list.Out);

    const Outcome json = Quench({"library", "--json"});
    ASSERT_EQ(json.Status, ExitSuccess);
    EXPECT_EQ(json.Out.front(), '{');
    EXPECT_NE(json.Out.find("\"materials\": ["), std::string::npos) << json.Out;
    EXPECT_NE(json.Out.find("\"name\": \"Sch 10 Steel Wet\""), std::string::npos);
    EXPECT_NE(json.Out.find("\"c_value\": 140"), std::string::npos);
    EXPECT_EQ(std::count(json.Out.begin(), json.Out.end(), '}'), 26 + 1);
}

TEST(LibraryCommand, ShowsOneMaterialWithItsSizes) {
    const Outcome steel = Quench({"library", "4"});
    ASSERT_EQ(steel.Status, ExitSuccess) << steel.Err;
    EXPECT_NE(steel.Out.find("Material 4: Sch 10 Steel Wet, C 120, 14 sizes\n"), std::string::npos)
        << steel.Out;
    // The butterfly and gate lengths of 1 in. carry the 2 in. figures (6, 1) times the row's
    // factor.
    EXPECT_NE(steel.Out.find("  1.000    1.097    1.315   1.24   2.49   2.49   6.22   7.47   1.25"
                             "   6.22  yes\n"),
              std::string::npos)
        << steel.Out;
    EXPECT_NE(steel.Out.find("  2.000    2.157    2.375   2.46   6.15   3.69  12.31   7.38   1.23"
                             "  13.54  yes\n"),
              std::string::npos);
    EXPECT_EQ(Lines(steel.Out), 2u + 14u + 1u);

    const Outcome json = Quench({"library", "--json", "19"});
    ASSERT_EQ(json.Status, ExitSuccess);
    EXPECT_NE(json.Out.find("\"name\": \"Ductile Iron CL PC350\""), std::string::npos);
    EXPECT_NE(json.Out.find("\"inner_in\": 4.175"), std::string::npos) << json.Out;
    EXPECT_NE(json.Out.find("\"E\": 15.87"), std::string::npos);
    EXPECT_NE(json.Out.find("\"autosizing\": false"), std::string::npos); // 14 in. and up
}

TEST(LibraryCommand, BadArgumentsAndFiles) {
    ExpectOneLineError(Quench({"library", "0"}), "materials are 1 to 50");
    ExpectOneLineError(Quench({"library", "51"}), "materials are 1 to 50");
    ExpectOneLineError(Quench({"library", "4.5"}), "materials are 1 to 50");
    ExpectOneLineError(Quench({"library", "x"}), "materials are 1 to 50");
    ExpectOneLineError(Quench({"library", "-1e300"}), "materials are 1 to 50");
    ExpectOneLineError(Quench({"library", "30"}), "material 30 is not defined");
    ExpectOneLineError(Quench({"library", "1", "2"}), "usage");
    ExpectOneLineError(Quench({"library", "--library"}, false), "--library needs a file name");

    ScratchDirectory scratch;
    ExpectOneLineError(Quench({"library", "--library", (scratch / "PIPE.DAT").string()}, false),
                       "cannot read the pipe materials library");
    // A damaged name reads without harm and keeps to its line.
    std::string damaged(2000, '\xff'); // one record, cut short
    damaged.replace(0, 8, "Bad\nName");
    std::ofstream(scratch / "damaged.dat") << damaged;
    const Outcome list =
        Quench({"library", "--library", (scratch / "damaged.dat").string()}, false);
    EXPECT_EQ(list.Status, ExitSuccess) << list.Err;
    EXPECT_NE(list.Out.find("    1  Bad?Name\u00ff\u00ff"), std::string::npos) << list.Out;
    EXPECT_EQ(Lines(list.Out), 2u);
}

} // namespace
} // namespace quench::cli
