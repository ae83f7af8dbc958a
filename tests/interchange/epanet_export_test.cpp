#include "interchange/epanet_export.h"
#include "tests/support/network_builder.h"
#include "tests/support/scratch_directory.h"

#include <cmath>
#include <map>
#include <memory>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

using Section = std::vector<std::vector<std::string>>;

// The data lines of each section of an input file, split at blanks; comments left out.
std::map<std::string, Section> ParseInput(const std::string& text) {
    std::map<std::string, Section> sections;
    std::istringstream lines(text);
    std::string line;
    std::string current;
    while (std::getline(lines, line)) {
        if (line.empty() || line[0] == ';') {
            continue;
        }
        if (line[0] == '[') {
            current = line;
            sections[current];
            continue;
        }
        std::istringstream words(line);
        std::vector<std::string> fields;
        for (std::string word; words >> word;) {
            fields.push_back(word);
        }
        sections[current].push_back(fields);
    }
    return sections;
}

// Supply 10 through a meter of 2 psi to 15, 10 ft of 2" to 20, 15 ft of 1" up 5 ft to the
// sprinkler 30; an inactive row 30-40 beyond.
void MeterAndSprinkler(Project& project) {
    testing::NetworkBuilder network(project);
    network.Device(10, 15, MaterialMeter, 2);
    network.Pipe(15, 20, 10, 2);
    network.Pipe(20, 30, 15, 1);
    network.Pipe(30, 40, 10, 1).Active = 0;
    network.Sprinkler(30, 5.6).Elevation(30, 5).Inflow(10).SupplyMode(50);
}

// Feet of head lost in a pipe by the Hazen-Williams law as EPANET states it: 4.727 C^-1.852
// d^-4.871 L q^1.852 with d in feet and q in cubic feet per second.
double EpanetHeadLoss(double gpm, double lengthFeet, double inches, double c) {
    const double cfs = gpm / 448.831;
    return 4.727 * std::pow(c, -1.852) * std::pow(inches / 12, -4.871) * lengthFeet *
           std::pow(cfs, 1.852);
}

TEST(EpanetExport, SectionsOfASupplyModeCalculation) {
    const auto project = std::make_unique<Project>();
    MeterAndSprinkler(*project);
    std::string text;
    EXPECT_FALSE(LayEpanetInput(*project, text).Written);
    testing::CalculationRun run(*project);
    ASSERT_TRUE(run.Posted);
    ASSERT_TRUE(LayEpanetInput(*project, text).Written);
    auto sections = ParseInput(text);

    ASSERT_EQ(sections["[RESERVOIRS]"].size(), 1u);
    EXPECT_EQ(sections["[RESERVOIRS]"][0][0], "10");
    EXPECT_NEAR(std::stod(sections["[RESERVOIRS]"][0][1]), 50 / 0.4333, 1e-4);
    ASSERT_EQ(sections["[JUNCTIONS]"].size(), 3u); // 15, 20, 30; not the inactive 40
    EXPECT_EQ(sections["[JUNCTIONS]"][2][0], "30");
    EXPECT_DOUBLE_EQ(std::stod(sections["[JUNCTIONS]"][2][1]), 5);
    ASSERT_EQ(sections["[EMITTERS]"].size(), 1u);
    EXPECT_EQ(sections["[EMITTERS]"][0][0], "30");
    EXPECT_NEAR(std::stod(sections["[EMITTERS]"][0][1]), 5.6, 1e-6);
    ASSERT_EQ(sections["[VALVES]"].size(), 1u);
    EXPECT_EQ(sections["[VALVES]"][0][4], "PBV");
    EXPECT_NEAR(std::stod(sections["[VALVES]"][0][5]), 2, 1e-6);
    ASSERT_EQ(sections["[PIPES]"].size(), 2u);
    EXPECT_TRUE(sections["[PUMPS]"].empty());
    bool gpm = false, hazen = false, exponent = false;
    for (const auto& option : sections["[OPTIONS]"]) {
        gpm = gpm || (option[0] == "Units" && option[1] == "GPM");
        hazen = hazen || (option[0] == "Headloss" && option[1] == "H-W");
        exponent = exponent || (option[0] == "Emitter" && option[2] == "0.5");
    }
    EXPECT_TRUE(gpm && hazen && exponent);

    // The file's network solved by EPANET's own laws gives the sprinkler within 0.1 psi.
    const auto& pipes = sections["[PIPES]"];
    const auto loss = [&](double q) {
        double feet = 0;
        for (const auto& pipe : pipes) {
            feet += EpanetHeadLoss(q, std::stod(pipe[3]), std::stod(pipe[4]), std::stod(pipe[5]));
        }
        return feet * 0.4333;
    };
    double low = 0, high = 500;
    for (int step = 0; step < 100; ++step) {
        const double q = (low + high) / 2;
        const double pressure = 50 - 2 - 5 * 0.4333 - loss(q);
        (pressure > 0 && 5.6 * std::sqrt(pressure) > q ? low : high) = q;
    }
    const double pressure = std::pow(low / 5.6, 2);
    EXPECT_NEAR(pressure, testing::NodeOf(*project, 30).ResidualPressure, 0.1);
}

TEST(EpanetExport, PumpAndDemandMode) {
    const auto project = std::make_unique<Project>();
    testing::NetworkBuilder network(*project);
    network.Device(10, 15, MaterialFirePump, 20);
    network.Pipe(15, 20, 10, 1);
    network.Pipe(20, 30, 10, 1);
    network.Sprinkler(20, 5.6).Sprinkler(30, 5.6).Inflow(10).DemandMode(7);
    testing::CalculationRun run(*project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    std::string text;
    ASSERT_TRUE(LayEpanetInput(*project, text).Written);
    auto sections = ParseInput(text);
    ASSERT_EQ(sections["[PUMPS]"].size(), 1u);
    EXPECT_EQ(sections["[PUMPS]"][0][3], "HEAD");
    ASSERT_EQ(sections["[CURVES]"].size(), 1u);
    EXPECT_NEAR(std::stod(sections["[CURVES]"][0][2]), 20 / 0.4333, 1e-4);
    EXPECT_NEAR(std::stod(sections["[CURVES]"][0][1]), project->CalculationData.InflowFlow, 1e-4);
    EXPECT_NEAR(std::stod(sections["[RESERVOIRS]"][0][1]),
                project->CalculationData.InflowResidualPressure / 0.4333, 1e-4);

    testing::ScratchDirectory scratch;
    EXPECT_TRUE(WriteEpanetFile(*project, scratch / "check.inp").Written);
    EXPECT_FALSE(WriteEpanetFile(*project, scratch.Path()).Written);
}

} // namespace
} // namespace quench
