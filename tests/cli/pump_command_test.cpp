#include "cli/command.h"
#include "library/pump_database.h"
#include "tests/support/scratch_directory.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using testing::DataDirectory;
using testing::ScratchDirectory;

struct Outcome {
    int Status = 0;
    std::string Out;
    std::string Err;
};

Outcome Quench(const Arguments& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    Outcome outcome;
    outcome.Status = RunCommandLine(arguments, out, err);
    outcome.Out = out.str();
    outcome.Err = err.str();
    return outcome;
}

// A usage or file error: status 2 and exactly one line on stderr.
void ExpectOneLineError(const Outcome& run, const std::string& part) {
    EXPECT_EQ(run.Status, ExitUsage);
    EXPECT_EQ(std::count(run.Err.begin(), run.Err.end(), '\n'), 1) << run.Err;
    EXPECT_NE(run.Err.find(part), std::string::npos) << run.Err;
    EXPECT_EQ(run.Out, "");
}

TEST(PumpCommand, FitPrintsTheCoefficientsAndTheCurveText) {
    const Outcome parabola = Quench({"pump", "fit", "1000", "20", "0", "120", "500", "95"});
    EXPECT_EQ(parabola.Status, ExitSuccess) << parabola.Err;
    EXPECT_EQ(parabola.Out, "a0 = 120\na1 = 0\na2 = -0.0001\na3 = 0\na4 = 0\n"
                            "Head = 120 + 0Q + -1.00E-04Q^2\n");
    const Outcome five =
        Quench({"pump", "fit", "0", "126", "125", "116", "250", "100", "375", "72", "438", "55"});
    EXPECT_EQ(five.Status, ExitSuccess);
    EXPECT_NE(five.Out.find("a0 = 126\n"), std::string::npos);
    EXPECT_NE(five.Out.find("Q^4\n"), std::string::npos);

    ExpectOneLineError(Quench({"pump", "fit", "0", "120", "500", "95"}), "usage");
    ExpectOneLineError(Quench({"pump", "fit", "0", "120", "500", "95", "1000"}), "usage");
    ExpectOneLineError(Quench({"pump", "fit", "0", "120", "500", "x", "1000", "20"}),
                       "\"x\" is not a number");
    ExpectOneLineError(Quench({"pump", "fit", "0", "120", "500", "95", "500", "20"}),
                       "Two of the entered pump curve points are identical.  Please reenter data.");
    ExpectOneLineError(Quench({"pump", "fit", "0", "1", "1e300", "2", "-1e300", "3"}),
                       "Values are too large");
    ExpectOneLineError(Quench({"pump"}), "usage");
    ExpectOneLineError(Quench({"pump", "sort"}), "usage");
}

TEST(PumpCommand, ListAndShowTheShippedDatabase) {
    const Outcome list = Quench({"pump", "list"});
    ASSERT_EQ(list.Status, ExitSuccess) << list.Err;
    EXPECT_NE(list.Out.find("    1  GENERIC EXAMPLE 250gpm @ 100psi   psi   5\n"),
              std::string::npos)
        << list.Out;
    EXPECT_NE(list.Out.find("    8  GENERIC EXAMPLE 2500gpm @ 150psi  psi   5\n"),
              std::string::npos)
        << list.Out;

    const auto database = DataDirectory() / "Pump.Dat";
    const Outcome show = Quench({"pump", "show", "1", "--database", database.string()});
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

    ExpectOneLineError(Quench({"pump", "show", "9"}), "no pump \"9\": the database has 8 pumps");
    ExpectOneLineError(Quench({"pump", "show", "0"}), "no pump");
    ExpectOneLineError(Quench({"pump", "show", "1.5"}), "no pump");
    ExpectOneLineError(Quench({"pump", "show", "1e300"}), "no pump");
    ExpectOneLineError(Quench({"pump", "show"}), "usage");
    ExpectOneLineError(Quench({"pump", "list", "--database"}), "--database needs a file name");
}

TEST(PumpCommand, AMissingOrDamagedDatabaseIsShownAsItIs) {
    ScratchDirectory scratch;
    const auto database = scratch / "Pump.Dat";
    const Outcome empty = Quench({"pump", "list", "--database", database.string()});
    EXPECT_EQ(empty.Status, ExitSuccess);
    EXPECT_EQ(empty.Out, "No pumps in \"" + database.string() + "\".\n");
    ExpectOneLineError(Quench({"pump", "show", "1", "--database", database.string()}),
                       "the database has 0 pumps");

    PumpRecord damaged = BlankPumpRecord("DAMAGED");
    damaged.Flow[0] = std::nan("");
    damaged.Pressure[0] = 100;
    damaged.Flow[1] = 500;
    damaged.Pressure[1] = 1e300;
    ASSERT_TRUE(SavePumpDatabase(database, {damaged}));
    std::ofstream(database, std::ios::app | std::ios::binary) << std::string(70, '\xff');
    const Outcome list = Quench({"pump", "list", "--database", database.string()});
    EXPECT_EQ(list.Status, ExitSuccess);
    EXPECT_NE(list.Out.find("    1  DAMAGED"), std::string::npos);
    EXPECT_EQ(std::count(list.Out.begin(), list.Out.end(), '\n'), 2);
    const Outcome show = Quench({"pump", "show", "1", "--database", database.string()});
    EXPECT_EQ(show.Status, ExitSuccess);
    EXPECT_NE(show.Out.find("    1  (no point)\n    2  (no point)\n"), std::string::npos);
    EXPECT_NE(show.Out.find("No curve: You must specify at least 3 pump curve points.\n"),
              std::string::npos);
}

} // namespace
} // namespace quench::cli
