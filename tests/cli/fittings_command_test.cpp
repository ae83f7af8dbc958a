#include "library/pipe_library_file.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using Outcome = testing::CommandOutcome;

Outcome Fittings(const std::string& text, const std::string& material, const std::string& diameter,
                 bool json = false) {
    Arguments arguments{"fittings",  text,
                        material,    diameter,
                        "--library", PipeLibraryPath(testing::DataDirectory()).string()};
    if (json) {
        arguments.push_back("--json");
    }
    return testing::RunQuench(arguments);
}

TEST(FittingsCommand, CountsTextAndSum) {
    // Sch 10 wet 2 in.: 45 degree elbow 2.46 ft, 90 degree elbow 6.15 ft.
    const Outcome run = Fittings("3E2F", "4", "2");
    EXPECT_EQ(run.Status, ExitSuccess) << run.Err;
    EXPECT_EQ(run.Out, "Counts: F 2, E 3, L 0, T 0, B 0, G 0, C 0\n"
                       "Fitting text: 2F3E\n"
                       "Fitting sum: 23.37 ft\n");

    const Outcome json = Fittings("2F3E", "4", "2", true);
    EXPECT_EQ(json.Status, ExitSuccess);
    EXPECT_NE(json.Out.find("\"fitting_text\": \"2F3E\""), std::string::npos) << json.Out;
    EXPECT_NE(json.Out.find("\"fitting_sum_ft\": 23.37"), std::string::npos);
    EXPECT_NE(json.Out.find("\"clean\": true"), std::string::npos);
}

TEST(FittingsCommand, EdgeCasesOfTheCode) {
    EXPECT_NE(Fittings("E", "4", "2").Out.find("Fitting text: E\nFitting sum: 6.15 ft"),
              std::string::npos);

    // A trailing number: the message, the counts so far, and status 1.
    const Outcome trailing = Fittings("T2", "4", "2");
    EXPECT_EQ(trailing.Status, ExitStopped);
    EXPECT_NE(trailing.Out.find("No Fitting Type Entered: You specified a number of 2 for the"),
              std::string::npos)
        << trailing.Out;
    EXPECT_NE(trailing.Out.find("Fitting text: T\n"), std::string::npos);

    const Outcome capped = Fittings("60E50E", "4", "2");
    EXPECT_EQ(capped.Status, ExitSuccess);
    EXPECT_EQ(std::count(capped.Out.begin(), capped.Out.end(), ':'), 1 + 3);
    EXPECT_NE(capped.Out.find("Fitting text: 99E\nFitting sum: 608.85 ft"), std::string::npos)
        << capped.Out;

    // A device letter and a size the material lacks have no fitting sum.
    EXPECT_NE(Fittings("2F3E", "m", "2").Out.find("Fitting sum: none (material M is a device)"),
              std::string::npos);
    EXPECT_NE(Fittings("2F3E", "4", "1.6").Out.find("none (material 4 has no 1.6 in. size)"),
              std::string::npos);
    EXPECT_NE(Fittings("2F3E", "4", "0").Out.find("none (a diameter of 0 is left to autosizing)"),
              std::string::npos);
    EXPECT_NE(Fittings("2F3E", "4", "2", true).Out.find("\"messages\": []"), std::string::npos);
    EXPECT_NE(Fittings("2F3E", "M", "2", true).Out.find("\"fitting_sum_ft\": null"),
              std::string::npos);
}

TEST(FittingsCommand, BadArguments) {
    for (const auto& [material, diameter, part] :
         {std::tuple{"0", "2", "must be 1 to 50 or M, B, A or P"},
          {"X", "2", "must be 1 to 50 or M, B, A or P"},
          {"4", "two", "must be 0 to 1000 inches"},
          {"4", "-2", "must be 0 to 1000 inches"},
          {"4", "1e300", "must be 0 to 1000 inches"}}) {
        testing::ExpectOneLineError(Fittings("2F", material, diameter), part);
    }
    testing::ExpectOneLineError(testing::RunQuench({"fittings", "2F"}),
                                "usage: quench fittings TEXT MATERIAL DIAMETER");
}

} // namespace
} // namespace quench::cli
