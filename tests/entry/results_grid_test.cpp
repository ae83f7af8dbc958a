#include "entry/results_grid.h"

#include <memory>
#include <utility>

#include <gtest/gtest.h>

namespace quench {
namespace {

// Two result rows by hand: the inflow pipe 1-10 (2 inch Schedule 40, 100 gpm) and a meter 10-20.
std::unique_ptr<Project> TwoRows() {
    auto project = std::make_unique<Project>();
    project->InflowNode = 1;
    project->NumberOfPipes = 2;
    CalcPipeRecord& pipe = project->CalcPipeRecord[1];
    pipe.BegNode = "10000";
    pipe.EndNode = "10";
    pipe.Material = 1;
    pipe.ResultFittingText = "Schedule 40 Steel ";
    CalcPipeRecord& meter = project->CalcPipeRecord[2];
    meter.BegNode = "10";
    meter.EndNode = "20";
    meter.Material = MaterialMeter;

    project->CalculationData.NumberOfUniquePipeSections = 2;
    PipeResultRecord& first = project->PipeResultRecord[1];
    first.BegNode = 1;
    first.EndNode = 10;
    first.KFactorE = 5.6;
    first.ElevationE = 10;
    first.ResidualB = 50;
    first.ResidualE = 41.234;
    first.NominalDiameter = 2;
    first.InsideDiameter = 2.067;
    first.CFactor = 120;
    first.Flow = 100;
    first.Velocity = 9.56;
    first.FrictionLossPerFoot = 0.07852;
    first.TypeGroup = 3;
    first.PipeLength = 50;
    first.FittingLength = 5;
    first.TotalLength = 55;
    first.FrictionPressure = 4.3186;
    first.ElevationPressure = 4.33;
    first.VelocityPressure = 0.615;
    first.DeviceFlag = 1;
    PipeResultRecord& second = project->PipeResultRecord[2];
    second.BegNode = 10;
    second.EndNode = 20;
    second.ResidualB = 41.234;
    second.ResidualE = 36.234;
    second.Flow = 100;
    second.FrictionPressure = 5;
    second.DeviceFlag = 2;
    return project;
}

TEST(ResultsGrid, FourLinesAPipe) {
    const auto project = TwoRows();
    const ResultsGrid grid = BuildResultsGrid(*project, MeasureSystem::US);
    EXPECT_EQ(grid.Headings[0], "        ");
    EXPECT_EQ(grid.Headings[4], "Sprinkler Flow (gpm)");
    EXPECT_EQ(grid.Headings[10], "PF-psi PE-psi PV-psi");
    ASSERT_EQ(grid.Lines.size(), 8u);
    const ResultsGridLine expectedFirst{"1",    "1",      "0.00",    "0.00",  "0.00", "50.00",
                                        "2.00", "100.00", "0.07852", "50.00", "4.319"};
    EXPECT_EQ(grid.Lines[0], expectedFirst);
    const ResultsGridLine expectedSecond{"",      "10",   "5.60",  "10.00", "0.00", "41.23",
                                         "2.067", "9.56", "-----", "5.00",  "4.330"};
    EXPECT_EQ(grid.Lines[1], expectedSecond);
    EXPECT_EQ(grid.Lines[2][1], "Schedule 40 Steel");
    EXPECT_EQ(grid.Lines[2][6], "120");
    EXPECT_EQ(grid.Lines[2][8], "3");
    EXPECT_EQ(grid.Lines[2][9], "55.00");
    EXPECT_EQ(grid.Lines[2][10], "0.615");
    EXPECT_EQ(grid.Lines[3], ResultsGridLine{});
    // The device: its name and flow, then its loss.
    EXPECT_EQ(grid.Lines[4][0], "2");
    EXPECT_EQ(grid.Lines[4][1], "10");
    EXPECT_EQ(grid.Lines[4][2], "Meter");
    EXPECT_EQ(grid.Lines[4][7], "100.00");
    EXPECT_EQ(grid.Lines[5][1], "20");
    EXPECT_EQ(grid.Lines[5][2], "5.00 psi");
    EXPECT_EQ(grid.Lines[5][5], "36.23");
}

TEST(ResultsGrid, SIAndTheHoseWord) {
    auto project = TwoRows();
    project->SystemData.PrimaryDischargeName = "Hose";
    const ResultsGrid grid = BuildResultsGrid(*project, MeasureSystem::SI);
    EXPECT_EQ(grid.Headings[2], "Nodal K-Factor (Km)");
    EXPECT_EQ(grid.Headings[4], "Hose Flow (Lpm)");
    EXPECT_EQ(grid.Headings[5], "Residual pressure (kPa)");
    EXPECT_EQ(grid.Headings[7], "Q(Lpm) Velocity(m/s)");
    EXPECT_EQ(grid.Headings[10], "PF-kPa PE-kPa PV-kPa");
    EXPECT_EQ(grid.Lines[0][5], "344.74"); // 50 psi
    EXPECT_EQ(grid.Lines[0][6], "50.80");  // 2 inch
    EXPECT_EQ(grid.Lines[0][7], "378.54"); // 100 gpm
    EXPECT_EQ(grid.Lines[0][9], "15.24");  // 50 ft
    EXPECT_EQ(grid.Lines[5][2], "34.47 kPa");
}

TEST(ResultsGrid, APipeSizingLeftOverALimitShowsWhyOnItsFourthLine) {
    const auto project = TwoRows();
    project->SizingNotes.assign(3, SizingNote::None);
    project->SizingNotes[1] = SizingNote::Velocity;
    ResultsGrid grid = BuildResultsGrid(*project, MeasureSystem::US);
    ASSERT_EQ(grid.Lines.size(), 2u * ResultsGridLinesPerPipe);
    EXPECT_EQ(grid.Lines[3][1], "Over the velocity limit at the largest allowed size");
    EXPECT_EQ(grid.Lines[7], ResultsGridLine{});

    // The note follows the pipe, not the place of its result row.
    project->SizingNotes[1] = SizingNote::None;
    project->SizingNotes[2] = SizingNote::Friction;
    std::swap(project->CalcPipeRecord[1], project->CalcPipeRecord[2]);
    grid = BuildResultsGrid(*project, MeasureSystem::SI);
    EXPECT_EQ(grid.Lines[3][1], "Over the friction limit at the largest allowed size");
    EXPECT_EQ(grid.Lines[7][1], "");
}

} // namespace
} // namespace quench
