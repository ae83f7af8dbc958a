#include "cli/command.h"
#include "core/project_file.h"
#include "library/pump_database.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using testing::CommandOutcome;
using testing::DataDirectory;
using testing::ExpectOneLineError;
using testing::RunQuench;
using testing::ScratchDirectory;

TEST(PumpCommand, FitPrintsTheCoefficientsAndTheCurveText) {
    const CommandOutcome parabola =
        RunQuench({"pump", "fit", "1000", "20", "0", "120", "500", "95"});
    EXPECT_EQ(parabola.Status, ExitSuccess) << parabola.Err;
    EXPECT_EQ(parabola.Out, "a0 = 120\na1 = 0\na2 = -0.0001\na3 = 0\na4 = 0\n"
                            "Head = 120 + 0Q + -1.00E-04Q^2\n");
    const CommandOutcome five = RunQuench(
        {"pump", "fit", "0", "126", "125", "116", "250", "100", "375", "72", "438", "55"});
    EXPECT_EQ(five.Status, ExitSuccess);
    EXPECT_NE(five.Out.find("a0 = 126\n"), std::string::npos);
    EXPECT_NE(five.Out.find("Q^4\n"), std::string::npos);

    ExpectOneLineError(RunQuench({"pump", "fit", "0", "120", "500", "95"}), "usage");
    ExpectOneLineError(RunQuench({"pump", "fit", "0", "120", "500", "95", "1000"}), "usage");
    ExpectOneLineError(RunQuench({"pump", "fit", "0", "120", "500", "x", "1000", "20"}),
                       "\"x\" is not a number");
    ExpectOneLineError(RunQuench({"pump", "fit", "0", "120", "500", "95", "500", "20"}),
                       "Two of the entered pump curve points are identical.  Please reenter data.");
    ExpectOneLineError(RunQuench({"pump", "fit", "0", "1", "1e300", "2", "-1e300", "3"}),
                       "Values are too large");
    ExpectOneLineError(RunQuench({"pump"}), "usage");
    ExpectOneLineError(RunQuench({"pump", "sort"}), "usage");
}

TEST(PumpCommand, ListAndShowTheShippedDatabase) {
    const CommandOutcome list = RunQuench({"pump", "list"});
    ASSERT_EQ(list.Status, ExitSuccess) << list.Err;
    EXPECT_NE(list.Out.find("    1  GENERIC EXAMPLE 250gpm @ 100psi   psi   5\n"),
              std::string::npos)
        << list.Out;
    EXPECT_NE(list.Out.find("    8  GENERIC EXAMPLE 2500gpm @ 150psi  psi   5\n"),
              std::string::npos)
        << list.Out;

    const auto database = DataDirectory() / "Pump.Dat";
    const CommandOutcome show = RunQuench({"pump", "show", "1", "--database", database.string()});
    ASSERT_EQ(show.Status, ExitSuccess) << show.Err;
    EXPECT_EQ(show.Out.substr(0, show.Out.find("a0")), "Pump 1: GENERIC EXAMPLE 250gpm @ 100psi\n"
                                                       "Point  Flow (gpm)  Pressure (psi)\n"
                                                       "    1           0             126\n"
                                                       "    2         125             116\n"
                                                       "    3         250             100\n"
                                                       "    4         375              72\n"
                                                       "    5         438              55\n");
    EXPECT_NE(show.Out.find("a0 = 126\n"), std::string::npos);
    EXPECT_NE(show.Out.find("Head = 126 + "), std::string::npos);

    ExpectOneLineError(RunQuench({"pump", "show", "9"}), "no pump \"9\": the database has 8 pumps");
    ExpectOneLineError(RunQuench({"pump", "show", "0"}), "no pump");
    ExpectOneLineError(RunQuench({"pump", "show", "1.5"}), "no pump");
    ExpectOneLineError(RunQuench({"pump", "show", "1e300"}), "no pump");
    ExpectOneLineError(RunQuench({"pump", "show"}), "usage");
    ExpectOneLineError(RunQuench({"pump", "list", "--database"}), "--database needs a file name");
}

TEST(PumpCommand, AMissingOrDamagedDatabaseIsShownAsItIs) {
    ScratchDirectory scratch;
    const auto database = scratch / "Pump.Dat";
    const CommandOutcome empty = RunQuench({"pump", "list", "--database", database.string()});
    EXPECT_EQ(empty.Status, ExitSuccess);
    EXPECT_EQ(empty.Out, "No pumps in \"" + database.string() + "\".\n");
    ExpectOneLineError(RunQuench({"pump", "show", "1", "--database", database.string()}),
                       "the database has 0 pumps");

    PumpRecord damaged = BlankPumpRecord("DAMAGED\nNAME\xE9");
    damaged.Flow[0] = std::nan("");
    damaged.Pressure[0] = 100;
    damaged.Flow[1] = 500;
    damaged.Pressure[1] = 1e300;
    ASSERT_TRUE(SavePumpDatabase(database, {damaged}));
    std::ofstream(database, std::ios::app | std::ios::binary) << std::string(70, '\xff');
    const CommandOutcome list = RunQuench({"pump", "list", "--database", database.string()});
    EXPECT_EQ(list.Status, ExitSuccess);
    EXPECT_NE(list.Out.find("    1  DAMAGED?NAME\u00e9 "), std::string::npos) << list.Out;
    EXPECT_EQ(std::count(list.Out.begin(), list.Out.end(), '\n'), 2);
    const CommandOutcome show = RunQuench({"pump", "show", "1", "--database", database.string()});
    EXPECT_EQ(show.Status, ExitSuccess);
    EXPECT_NE(show.Out.find("    1  (no point)\n    2  (no point)\n"), std::string::npos);
    EXPECT_NE(show.Out.find("No curve: You must specify at least 3 pump curve points.\n"),
              std::string::npos);
}

std::string Bytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(PumpCommand, UsePutsADatabasePumpIntoAProject) {
    ScratchDirectory scratch;
    const auto file = scratch / "job.qnw";
    const auto database = scratch / "Pump.Dat";
    PumpRecord feet = BlankPumpRecord("IN FEET");
    // Head = 300 - Q^2 / 4096 in feet, exact in binary: 300 - 64 = 236, 300 - 256 = 44.
    const double flows[] = {0, 512, 1024};
    const double heads[] = {300, 236, 44};
    for (std::size_t slot = 0; slot < 3; ++slot) {
        feet.Flow[slot * 2] = flows[slot]; // points in slots 1, 3 and 5
        feet.Pressure[slot * 2] = heads[slot];
    }
    feet.FeetOfHead = 1;
    ASSERT_TRUE(SavePumpDatabase(database, {BlankPumpRecord("EMPTY"), feet}));
    Project project;
    project.SystemData.HazardDescription = "Ordinary Hazard";
    project.PipeRecord[1].BegNode = "10";
    project.PipeRecord[1].EndNode = "20";
    project.PipeRecord[1].Material = MaterialFirePump; // a typed boost of 0 gives way to the curve
    project.PipeRecord[1].DeviceLoss = 0;
    project.NumberOfPipeRows = 1;
    ASSERT_EQ(WriteProject(project, file), WriteOutcome::Written);

    const CommandOutcome use =
        RunQuench({"pump", "use", file.string(), "2", "--database", database.string()});
    ASSERT_EQ(use.Status, ExitSuccess) << use.Err;
    EXPECT_EQ(use.Out, "Pump 2 (IN FEET) is the pump curve of \"" + file.string() + "\".\n" +
                           "Head = 300 + 0Q + -2.44E-04Q^2\n");
    Project read;
    ASSERT_TRUE(ReadProject(read, file));
    const CalculationData& data = read.CalculationData;
    EXPECT_EQ(read.PipeRecord[1].DeviceLoss, NotGiven);
    EXPECT_EQ(data.PumpCurveFlow[0], 0.0f);
    EXPECT_EQ(data.PumpCurvePressure[2], 236.0f);
    EXPECT_EQ(data.PumpCurveFlow[4], 1024.0f);
    EXPECT_EQ(data.PumpCurveFlow[1], -10000.0f);
    EXPECT_EQ(data.PumpCurvePressure[3], -10000.0f);
    EXPECT_EQ(data.PumpCoefficients[0], 300);
    EXPECT_EQ(data.PumpCoefficients[1], 0);
    EXPECT_EQ(data.PumpCoefficients[2], -1.0 / 4096);
    EXPECT_EQ(data.PumpCoefficients[3], 0);
    EXPECT_EQ(data.PumpDefined, 1);
    EXPECT_EQ(data.PumpSource, 2);
    EXPECT_EQ(read.InputChanged, True);
    EXPECT_EQ(read.SystemData.HazardDescription, "Ordinary Hazard");

    // Refused: nothing is written.
    const std::string before = Bytes(file);
    ExpectOneLineError(
        RunQuench({"pump", "use", file.string(), "1", "--database", database.string()}),
        "pump 1: You must specify at least 3 pump curve points.");
    ExpectOneLineError(
        RunQuench({"pump", "use", file.string(), "3", "--database", database.string()}),
        "no pump \"3\": the database has 2 pumps");
    ExpectOneLineError(RunQuench({"pump", "use", file.string()}), "usage");
    EXPECT_EQ(Bytes(file), before);
    ExpectOneLineError(RunQuench({"pump", "use", (scratch / "missing.qnw").string(), "2",
                                  "--database", database.string()}),
                       "cannot read");
    EXPECT_FALSE(std::filesystem::exists(scratch / "missing.qnw"));
    std::ofstream(scratch / "notes.txt") << "not a project";
    ExpectOneLineError(RunQuench({"pump", "use", (scratch / "notes.txt").string(), "2",
                                  "--database", database.string()}),
                       "is not a project file (.qnw)");
    EXPECT_EQ(Bytes(scratch / "notes.txt"), "not a project");
}

} // namespace
} // namespace quench::cli
