// quench calc on projects with a fire pump: the curve's passes run, the results are saved with
// the pump row as typed, and a pump the curve cannot serve stops the run with its messages.

#include "calc/messages.h"
#include "core/atomic_write.h"
#include "core/project_file.h"
#include "library/pump_curve.h"
#include "tests/support/command_line.h"
#include "tests/support/network_builder.h"
#include "tests/support/scratch_directory.h"

#include <cmath>
#include <filesystem>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

using namespace quench::testing;

// Supply 10 at 20 psi, 2" inlet pipe to the pump 12-15 left to the curve, three sprinklers behind.
std::filesystem::path WritePumpedLine(const ScratchDirectory& scratch, const std::string& name,
                                      bool supplyMode, const std::vector<CurvePoint>& points) {
    const auto project = std::make_unique<Project>();
    NetworkBuilder network(*project);
    network.Pipe(10, 12, 20, 2);
    network.Device(12, 15, MaterialFirePump, NotGiven);
    network.Pipe(15, 20, 10, 2);
    network.Pipe(20, 30, 10, 1);
    network.Pipe(30, 40, 10, 1);
    network.Sprinkler(30, 5.6).Sprinkler(40, 5.6).Inflow(10);
    supplyMode ? network.SupplyMode(20) : network.DemandMode(10);
    CurveSlotArray slots{};
    for (std::size_t point = 0; point < points.size(); ++point) {
        slots[point] = CurveSlot{true, points[point]};
    }
    StoreProjectPump(project->CalculationData, slots, FitPumpCurve(points).Coefficients, false, -1);
    const auto file = scratch / name;
    EXPECT_EQ(WriteProject(*project, file), WriteOutcome::Written);
    return file;
}

TEST(CalcCommandPump, ASupplyCurvePumpIsSavedWithItsBoost) {
    ScratchDirectory scratch;
    const std::vector<CurvePoint> rated{{0, 52}, {150, 40}, {225, 26}};
    const auto file = WritePumpedLine(scratch, "pumped.qnw", true, rated);
    const auto json = scratch / "out.json";
    const CommandOutcome run = RunQuench({"calc", file.string(), "--json", json.string()});
    ASSERT_EQ(run.Status, ExitSuccess) << run.Err;
    EXPECT_EQ(run.Err, "");

    const auto saved = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*saved, file));
    EXPECT_EQ(saved->PipeRecord[2].DeviceLoss, NotGiven);
    const CalculationData& data = saved->CalculationData;
    const PipeResultRecord* pump = nullptr;
    for (int row = 1; row <= data.NumberOfUniquePipeSections; ++row) {
        if (saved->PipeResultRecord[row].DeviceFlag == 2) {
            pump = &saved->PipeResultRecord[row];
        }
    }
    ASSERT_NE(pump, nullptr);
    const double boost = EvaluatePumpCurve(FitPumpCurve(rated).Coefficients, data.InflowFlow);
    EXPECT_NEAR(pump->FrictionPressure, boost, 0.02);
    EXPECT_NEAR(data.InflowResidualPressure, 20 + boost, 0.02);
    EXPECT_NEAR(pump->ResidualE - pump->ResidualB, boost, 0.02);
    std::string text;
    ASSERT_TRUE(ReadWholeFile(json, text));
    EXPECT_NE(text.find("\"DeviceFlag\": 2"), std::string::npos);
}

TEST(CalcCommandPump, ANegativeDemandBoostStopsTheRun) {
    ScratchDirectory scratch;
    const auto file = WritePumpedLine(scratch, "weak.qnw", false, {{0, 10}, {20, 0}, {40, -10}});
    std::string before;
    ASSERT_TRUE(ReadWholeFile(file, before));
    const CommandOutcome run = RunQuench({"calc", file.string()});
    EXPECT_EQ(run.Status, ExitStopped);
    const std::string negative =
        "Based on the entered pump curve data and the flow entering the pump, the calculated pump "
        "pressure boost is -";
    EXPECT_EQ(run.Err.rfind(negative, 0), 0u) << run.Err;
    EXPECT_NE(run.Err.find(" which is negative, so it will be set to zero.\n" +
                           std::string(messages::PumpBoostZero) + "\n"),
              std::string::npos)
        << run.Err;
    std::string after;
    ASSERT_TRUE(ReadWholeFile(file, after));
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace quench::cli
