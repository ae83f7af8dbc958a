#pragma once

// The calculated projects of the golden renders: each is typed as a designer types it and
// calculated through the Calculate command.

#include "library/pump_curve.h"
#include "tests/reports/report_fixture.h"

#include <gtest/gtest.h>

namespace quench::testing {

inline std::unique_ptr<Project> Calculated(std::unique_ptr<Project> project) {
    CalculationRun run(*project);
    EXPECT_TRUE(run.Posted) << run.Dialogs.LastText();
    return project;
}

// A tree of three branch lines of four sprinklers, in Demand mode.
inline std::unique_ptr<Project> TreeProject(int branches = 3, int sprinklers = 4) {
    auto project = DescribedProject();
    NetworkBuilder network(*project);
    ShapeOptions options = Rising();
    options.FlowingBranchLines = 2;
    options.FlowingPerLine = 3;
    BuildTree(network, branches, sprinklers, options);
    network.DemandMode(7, 0.1f);
    project->CalculationData.MaxWaterVelocity = 20;
    project->CalculationData.MaxFrictionalLoss = 10;
    project->CalculationData.UseFrictionLimit = 1;
    return Calculated(std::move(project));
}

// A grid of three branch lines of five nodes fed at 60 psi, shown in SI.
inline std::unique_ptr<Project> GridProject() {
    auto project = DescribedProject();
    NetworkBuilder network(*project);
    ShapeOptions options;
    options.FlowingBranchLines = 0;
    options.FlowingPerLine = 0;
    BuildGrid(network, 3, 5, options);
    network.SupplyMode(60);
    project->UnitSystem = 1;
    return Calculated(std::move(project));
}

// A hose system: a branch line with a fixed flow of 50 gpm at its end.
inline std::unique_ptr<Project> HoseProject() {
    auto project = DescribedProject();
    project->SystemData.PrimaryDischargeName = "Hose";
    NetworkBuilder network(*project);
    BuildBranchLine(network);
    network.Pipe(50, 60, 15, 1.5f);
    network.FixedFlow(60, 50);
    network.DemandMode(7, 0.1f);
    return Calculated(std::move(project));
}

// A dry branch line behind a meter and a backflow preventer, with a second hydrant test.
inline std::unique_ptr<Project> DevicesProject() {
    auto project = DescribedProject();
    project->SystemData.SprinklerSystemType = "Dry";
    project->SystemData.SecondTestFlowRate = 800;
    project->SystemData.SecondTestStaticPressure = 75;
    project->SystemData.SecondTestResidualPressure = 55;
    NetworkBuilder network(*project);
    network.Pipe(1, 2, 20, 2);
    network.Device(2, 3, MaterialMeter, 3.5f);
    network.Device(3, 4, MaterialBackflowPreventer, 6);
    network.Pipe(4, 10, 10, 2);
    BuildBranchLine(network);
    network.Inflow(1);
    network.DemandMode(7, 0.1f);
    return Calculated(std::move(project));
}

// A pump on a curve rated 150 gpm at 40 psi, lifting a branch line in Supply mode.
inline std::unique_ptr<Project> PumpProject() {
    auto project = DescribedProject();
    NetworkBuilder network(*project);
    network.Pipe(10, 12, 20, 2);
    network.Device(12, 15, MaterialFirePump, NotGiven);
    network.Pipe(15, 20, 10, 2);
    network.Pipe(20, 30, 10, 1);
    network.Pipe(30, 40, 10, 1);
    network.Pipe(40, 50, 10, 1);
    network.Sprinkler(30, 5.6).Sprinkler(40, 5.6).Sprinkler(50, 5.6).Inflow(10);
    network.SupplyMode(20);
    const std::vector<CurvePoint> points{{0, 52}, {150, 40}, {225, 26}};
    const CurveFit fit = FitPumpCurve(points);
    CurveSlotArray slots{};
    for (std::size_t point = 0; point < points.size(); ++point) {
        slots[point] = CurveSlot{true, points[point]};
    }
    StoreProjectPump(project->CalculationData, slots, fit.Coefficients, false, -1);
    return Calculated(std::move(project));
}

// Two area groups and a sprinkler of no group, with automatic peaking.
inline std::unique_ptr<Project> PeakingProject() {
    auto project = DescribedProject();
    NetworkBuilder network(*project);
    network.Pipe(1, 10, 10, 2);
    network.Pipe(10, 20, 10, 1.25f);
    network.Pipe(20, 30, 10, 1.25f);
    network.Pipe(10, 40, 10, 1.25f);
    network.Pipe(40, 50, 40, 1.25f);
    network.Pipe(50, 60, 10, 1.25f);
    network.Pipe(10, 70, 10, 1.25f);
    for (int node : {30, 50, 60, 70}) {
        network.Sprinkler(node, 5.6);
    }
    network.Group(30, "A").Group(50, "B").Group(60, "B");
    network.Inflow(1).DemandMode(10);
    project->CalculationData.UseAutomaticPeaking = 1;
    return Calculated(std::move(project));
}

} // namespace quench::testing
