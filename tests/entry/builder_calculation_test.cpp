// A tree and a grid from the builders calculate as they stand once the inflow is marked: the
// rows they write are complete networks in both modes.

#include "entry/grid_builder.h"
#include "entry/pipe_table.h"
#include "entry/tree_builder.h"
#include "tests/support/network_builder.h"
#include "tests/support/network_checks.h"

#include <cmath>
#include <memory>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

TreeInputs TreeExample() {
    TreeInputs inputs;
    inputs.Network = {"10", "100", "", "36", "12", "32", "22", "8", "10", "12", "12"};
    inputs.CrossMaterial = "1";
    inputs.CrossTypeGroup = "0";
    inputs.CrossDiameter = "2";
    inputs.BranchMaterial = "1";
    inputs.BranchTypeGroup = "0";
    inputs.BranchDiameter = "1.25";
    inputs.Elevation = "10";
    inputs.KFactor = "5.6";
    inputs.SprinklerArea = "120";
    return inputs;
}

GridInputs GridExample() {
    GridInputs inputs;
    inputs.Network = {"10", "100", "5", "8", "12", "3", "4", "10", "3", "6"};
    inputs.PerimeterMaterial = "1";
    inputs.PerimeterTypeGroup = "0";
    inputs.PerimeterDiameter = "2";
    inputs.BranchMaterial = "1";
    inputs.BranchTypeGroup = "0";
    inputs.BranchDiameter = "1.25";
    inputs.Elevation = "10";
    inputs.KFactor = "0";       // the project's default K
    inputs.SprinklerArea = "0"; // its maximum area
    return inputs;
}

// A project with its defaults and the Calculation screen's settings, built by a builder and
// its source node marked as the inflow, as a designer does on the pipe table.
template <class Build>
std::unique_ptr<Project> BuiltProject(Build build) {
    auto project = std::make_unique<Project>();
    NetworkBuilder settings(*project);
    project->SystemData.DefaultKFactor = 8;
    project->SystemData.MaximumAreaPerSprinkler = 130;
    ScriptedDialogs dialogs;
    EXPECT_TRUE(build(*project, dialogs).Built());
    PipeTable table(*project, DefaultLibrary(), dialogs);
    EXPECT_TRUE(table.MarkInflowNode(1, NodeEnd::Beginning)) << dialogs.LastText();
    return project;
}

void ExpectBalanced(const Project& project) {
    const BalanceReport balance = MeasurePostedBalance(project, DefaultCValue);
    EXPECT_TRUE(balance.PipesObeyLaw) << "pipe law off by " << balance.WorstPipeLawError;
    EXPECT_LE(std::fabs(balance.WorstNodeImbalance), 0.01) << "at node " << balance.WorstNode;
    EXPECT_LE(WorstSprinklerLawError(project), 0.01);
}

void ExpectCalculatesInBothModes(Project& project) {
    NetworkBuilder network(project);
    network.SupplyMode(75);
    CalculationRun supply(project);
    ASSERT_TRUE(supply.Posted) << supply.Dialogs.LastText();
    ExpectBalanced(project);
    const Agreement agreement = CompareWithSupplyReference(project, 75);
    ASSERT_TRUE(agreement.Converged);
    EXPECT_LE(agreement.WorstPressure, 0.05) << "at node " << agreement.WorstPressureNode;
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, 75, 1e-6);

    network.DemandMode(7, 0.1f);
    CalculationRun demand(project);
    ASSERT_TRUE(demand.Posted) << demand.Dialogs.LastText();
    ExpectBalanced(project);
    EXPECT_NEAR(project.CalculationData.HMDActualResidualPressure, 7, 0.01);
    EXPECT_GT(project.CalculationData.InflowResidualPressure, 7);
    EXPECT_GT(project.CalculationData.NumberOfFlowingSprinklers, 0);
}

TEST(BuilderCalculation, TreeCalculatesOnceTheInflowIsMarked) {
    auto project = BuiltProject([](Project& model, ScriptedDialogs& dialogs) {
        return CreateTree(model, DefaultLibrary(), dialogs, TreeExample());
    });
    ExpectCalculatesInBothModes(*project);
    // 4 rows of 3 + 2 sprinklers.
    EXPECT_EQ(project->CalculationData.NumberOfFlowingSprinklers, 20);
}

TEST(BuilderCalculation, GridCalculatesOnceTheInflowIsMarked) {
    auto project = BuiltProject([](Project& model, ScriptedDialogs& dialogs) {
        return CreateGrid(model, DefaultLibrary(), dialogs, GridExample());
    });
    ExpectCalculatesInBothModes(*project);
    EXPECT_EQ(project->CalculationData.NumberOfFlowingSprinklers, 9);
}

} // namespace
} // namespace quench
