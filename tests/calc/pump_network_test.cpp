// The fire pump in the network, through the Calculate command. Every network here is a supply at
// node 10, 2" inlet piping to the pump 12-15, and a line of sprinklers behind it. The independent
// reference solver carries the pump as a device whose loss is the boost with its sign turned; in
// Supply mode the flow at which the pump settles is found on it by bisection.

#include "calc/calculation.h"
#include "calc/messages.h"
#include "calc/pump.h"
#include "calc/screen_words.h"
#include "library/pump_curve.h"
#include "tests/support/network_builder.h"
#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"
#include "tests/support/reference_solver.h"

#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

constexpr double K = 5.6;
constexpr double Supply = 20;
constexpr double HmdPressure = 10;

// Counts the passes of a command: each solve shows the status window once.
struct PassCounter final : Progress {
    int Passes = 0;
    void ShowStatus() override { ++Passes; }
};

struct ScreenWords final : Screens {
    std::vector<std::string> Sent;
    void Send(std::string_view screen, std::string_view command) override {
        Sent.push_back(std::string(screen) + " " + std::string(command));
    }
};

// One Calculate command; the object stays for its flags to be read.
struct PumpRun {
    ScriptedDialogs Dialogs;
    PassCounter Progress;
    ScreenWords Screens;
    std::unique_ptr<Calculation> Command;
    bool Posted = false;

    explicit PumpRun(Project& project) {
        Command =
            std::make_unique<Calculation>(project, DefaultLibrary(), Dialogs, Progress, Screens);
        Posted = Command->Calculate(CalculationScreenFromProject(project));
    }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const auto& shown : Dialogs.All()) {
            texts.push_back(shown.Text);
        }
        return texts;
    }
};

// Supply 10, 20 ft of 2" inlet pipe to the pump 12-15 (typed `boost`, or -4 for the curve), 10 ft
// of 2" main to 20, then 1" pipe of 10 ft to the sprinklers at 30, 40 and 50.
void BuildPumpedLine(NetworkBuilder& network, Single boost) {
    network.Pipe(10, 12, 20, 2);
    network.Device(12, 15, MaterialFirePump, boost);
    network.Pipe(15, 20, 10, 2);
    network.Pipe(20, 30, 10, 1);
    network.Pipe(30, 40, 10, 1);
    network.Pipe(40, 50, 10, 1);
    network.Sprinkler(30, K).Sprinkler(40, K).Sprinkler(50, K).Inflow(10);
}

// The curve through the points, stored in the project as the fire pump screen stores it; returned
// in psi.
PumpCoefficientArray UseCurve(Project& project, const std::vector<CurvePoint>& points,
                              bool feetOfHead = false) {
    const CurveFit fit = FitPumpCurve(points);
    EXPECT_EQ(fit.Status, CurveFitStatus::Fitted);
    CurveSlotArray slots{};
    for (std::size_t point = 0; point < points.size(); ++point) {
        slots[point] = CurveSlot{true, points[point]};
    }
    StoreProjectPump(project.CalculationData, slots, fit.Coefficients, feetOfHead, -1);
    return ProjectPumpCoefficientsInPsi(project.CalculationData);
}

// A pump rated 150 gpm at 40 psi: 52 psi at shutoff, 26 psi at 225 gpm.
const std::vector<CurvePoint> RatedPump{{0, 52}, {150, 40}, {225, 26}};

int PumpRow(const Project& project) {
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        if (project.CalcPipeRecord[pipe].Material == MaterialFirePump) {
            return pipe;
        }
    }
    return 0;
}

const PipeResultRecord& PumpResult(const Project& project) {
    for (int row = 1; row <= project.CalculationData.NumberOfUniquePipeSections; ++row) {
        const PipeResultRecord& result = project.PipeResultRecord[row];
        if (result.DeviceFlag == 2) {
            return result;
        }
    }
    throw std::runtime_error("no pump row among the results");
}

// The project's network for the reference solver, the pump lifting by `boost`.
ReferenceNetwork ReferenceWithBoost(const Project& project, double boost) {
    ReferenceNetwork network = NetworkFromProject(project, DefaultCValue);
    network.Links[static_cast<std::size_t>(PumpRow(project) - 1)].Loss = -boost;
    return network;
}

// The flow at which the pump settles on the reference solver: the curve's boost at that flow
// makes the network draw exactly that flow.
double ReferenceSettledFlow(const Project& project, const PumpCoefficientArray& curve) {
    double low = 0;
    double high = 1000;
    for (int step = 0; step < 50; ++step) {
        const double middle = (low + high) / 2;
        const ReferenceSolution solution =
            SolveSupply(ReferenceWithBoost(project, EvaluatePumpCurve(curve, middle)), Supply);
        (solution.InflowFlow > middle ? low : high) = middle;
    }
    return (low + high) / 2;
}

// The change of the curve's pressure over one gpm at a flow.
double Slope(const PumpCoefficientArray& curve, double flow) {
    return std::fabs(EvaluatePumpCurve(curve, flow + 0.5) - EvaluatePumpCurve(curve, flow - 0.5));
}

// The posted Supply solution at a settled curve pump: its boost is the curve at its flow, its flow
// is where the curve meets the network, and it is the network's solution at the boost it was
// solved with.
void ExpectSettled(const Project& project, const PumpCoefficientArray& curve) {
    const double flow = project.CalculationData.InflowFlow;
    const double posted = PumpResult(project).FrictionPressure;
    const double applied = project.CalculationData.InflowResidualPressure - Supply;
    EXPECT_NEAR(posted, EvaluatePumpCurve(curve, flow), Slope(curve, flow) * 0.01);
    EXPECT_NEAR(applied, posted, Slope(curve, flow) * PumpFlowTolerance);
    EXPECT_NEAR(flow, ReferenceSettledFlow(project, curve), PumpFlowTolerance);

    const Agreement agreement =
        CompareWithReference(project, SolveSupply(ReferenceWithBoost(project, applied), Supply));
    ASSERT_TRUE(agreement.Converged);
    EXPECT_LE(agreement.WorstPressure, 0.005) << agreement.WorstPressureNode;
    EXPECT_LE(agreement.WorstFlow, 0.1);
    const BalanceReport balance = MeasurePostedBalance(project, DefaultCValue);
    EXPECT_TRUE(balance.PipesObeyLaw);
    EXPECT_LE(std::fabs(balance.WorstNodeImbalance), 0.1);
}

TEST(PumpNetwork, ATypedBoostTakesOnePassInSupplyMode) {
    Project project;
    NetworkBuilder network(project);
    BuildPumpedLine(network, 25);
    network.Pipe(12, 16, 5, 2); // a dead end on the inlet, walked after the pump
    network.SupplyMode(Supply);
    PumpRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_EQ(run.Progress.Passes, 1);
    EXPECT_TRUE(run.Dialogs.Empty());

    // In front of the pump the nodes show their own pressures, the given one at the supply; the
    // posted supply pressure is the one the network behind the pump sees.
    const Agreement agreement =
        CompareWithReference(project, SolveSupply(ReferenceWithBoost(project, 25), Supply));
    ASSERT_TRUE(agreement.Converged);
    EXPECT_LE(agreement.WorstPressure, 0.005) << agreement.WorstPressureNode;
    EXPECT_LE(agreement.WorstFlow, 0.1);
    EXPECT_NEAR(NodeOf(project, 10).ResidualPressure, Supply, 1e-9);
    EXPECT_NEAR(NodeOf(project, 16).ResidualPressure, NodeOf(project, 12).ResidualPressure, 1e-9);
    EXPECT_LT(NodeOf(project, 12).ResidualPressure, Supply);
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, Supply + 25, 1e-9);
    const PipeResultRecord& pump = PumpResult(project);
    EXPECT_EQ(pump.BegNode, 12);
    EXPECT_EQ(pump.EndNode, 15);
    EXPECT_EQ(pump.FrictionPressure, 25);
    EXPECT_NEAR(pump.ResidualE - pump.ResidualB, 25, 0.01);
    EXPECT_EQ(project.PipeRecord[2].DeviceLoss, 25);
    EXPECT_EQ(project.CalcPipeRecord[PumpRow(project)].DeviceLoss, 25);
    EXPECT_FALSE(run.Command->Context().PumpRerunPending);
}

TEST(PumpNetwork, ATypedBoostTakesOnePassInDemandMode) {
    Project project;
    NetworkBuilder network(project);
    BuildPumpedLine(network, 25);
    network.DemandMode(HmdPressure);
    PumpRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_EQ(run.Progress.Passes, 1);
    EXPECT_TRUE(run.Dialogs.Empty());

    // The supply needs what the network needs behind the pump, less the boost.
    const DemandSolution reference = SolveDemand(ReferenceWithBoost(project, 25), {HmdPressure, 0});
    ASSERT_TRUE(reference.Converged);
    const double inflow = project.CalculationData.InflowResidualPressure;
    EXPECT_NEAR(inflow, reference.InflowResidual, 0.01);
    EXPECT_NEAR(project.SystemData.CalculatedResidualPressure, inflow, 1e-4);
    EXPECT_NEAR(NodeOf(project, 10).ResidualPressure, inflow, 1e-9);
    EXPECT_NEAR(NodeOf(project, 50).ResidualPressure, HmdPressure, 1e-6);
    const Agreement agreement = CompareWithReference(project, reference.Solution);
    EXPECT_LE(agreement.WorstPressure, 0.01) << agreement.WorstPressureNode;
    EXPECT_NEAR(PumpResult(project).ResidualE - PumpResult(project).ResidualB, 25, 0.01);
    // Without the pump's boost the same network needs 25 psi more.
    EXPECT_NEAR(SolveDemand(ReferenceWithBoost(project, 0), {HmdPressure, 0}).InflowResidual,
                inflow + 25, 0.01);
}

TEST(PumpNetwork, ASupplyCurvePumpSettlesWhereTheCurveMeetsTheNetwork) {
    Project project;
    NetworkBuilder network(project);
    BuildPumpedLine(network, NotGiven);
    network.SupplyMode(Supply);
    const PumpCoefficientArray curve = UseCurve(project, RatedPump);
    PumpRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_TRUE(run.Dialogs.Empty()) << run.Dialogs.LastText();
    EXPECT_GE(run.Progress.Passes, 2);
    EXPECT_LE(run.Progress.Passes, 4);
    ExpectSettled(project, curve);
    const double flow = project.CalculationData.InflowFlow;
    const double boost = PumpResult(project).FrictionPressure;
    EXPECT_GT(boost, 40); // the pump runs below its rating
    EXPECT_NEAR(PumpResult(project).ResidualE - PumpResult(project).ResidualB, boost,
                Slope(curve, flow) * PumpFlowTolerance);
    EXPECT_NEAR(NodeOf(project, 10).ResidualPressure, Supply, 1e-6);

    // The row holds -4 again, in the typed and in the calculated table, and the next run begins
    // the same way and finds the same.
    EXPECT_EQ(project.PipeRecord[2].DeviceLoss, NotGiven);
    EXPECT_EQ(project.CalcPipeRecord[PumpRow(project)].DeviceLoss, NotGiven);
    EXPECT_FALSE(run.Command->Context().PumpRerunPending);
    EXPECT_FALSE(run.Command->Context().ResultsPending);
    EXPECT_EQ(project.InputChanged, 0);
    project.CalculationData.UseResidualPressureEstimate = 1; // seeded from the posted pressures
    PumpRun again(project);
    ASSERT_TRUE(again.Posted) << again.Dialogs.LastText();
    EXPECT_EQ(again.Progress.Passes, run.Progress.Passes);
    EXPECT_NEAR(project.CalculationData.InflowFlow, flow, PumpFlowTolerance);
    EXPECT_NEAR(PumpResult(project).FrictionPressure, boost, Slope(curve, flow) * 0.1);
}

TEST(PumpNetwork, AMeshedGridFedThroughAPumpSettles) {
    // A grid of four branch lines joined every third column, its riser fed by a pump rated
    // 500 gpm at 60 psi behind 10 ft of 6" pipe from the supply.
    Project project;
    NetworkBuilder network(project);
    BuildGrid(network, 4, 6, Meshed());
    project.PipeRecord[1].BegIsInflow = 0;
    network.Pipe(3, 2, 10, 6);
    network.Device(2, 1, MaterialFirePump, NotGiven);
    network.Inflow(3).SupplyMode(Supply);
    const PumpCoefficientArray curve = UseCurve(project, {{0, 80}, {500, 60}, {750, 40}});
    PumpRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_LE(run.Progress.Passes, 6);
    EXPECT_GT(project.CalculationData.NumberOfFlowingSprinklers, 10);
    ExpectSettled(project, curve);
}

TEST(PumpNetwork, ACurveInFeetOfHeadLiftsByPointFourThreeThreePsiAFoot) {
    // The rated pump's pressures read as feet of head: about 120, 92 and 60 ft.
    std::vector<CurvePoint> feet;
    for (const CurvePoint& point : RatedPump) {
        feet.push_back({point.Flow, std::round(point.Pressure / PsiPerFootOfHead)});
    }
    Project project;
    NetworkBuilder network(project);
    BuildPumpedLine(network, NotGiven);
    network.SupplyMode(Supply);
    const PumpCoefficientArray curve = UseCurve(project, feet, true);
    EXPECT_NEAR(EvaluatePumpCurve(curve, 0), 0.433 * feet[0].Pressure, 1e-9);
    PumpRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    ExpectSettled(project, curve);
}

TEST(PumpNetwork, ACurveTooSteepForThePlainStepStillSettles) {
    // 250 psi at shutoff, nothing at 140 gpm: taken at the flow of the first pass, the boost
    // would turn the supply negative, and each plain step would swing wider than the last.
    Project project;
    NetworkBuilder network(project);
    BuildPumpedLine(network, NotGiven);
    network.SupplyMode(Supply);
    const PumpCoefficientArray curve = UseCurve(project, {{0, 250}, {100, 100}, {140, 0}});
    PumpRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_LE(run.Progress.Passes, 6);
    ExpectSettled(project, curve);
    const double flow = project.CalculationData.InflowFlow;
    EXPECT_GT(Slope(curve, flow), 1.5);
}

TEST(PumpNetwork, ACurveThatNeverSettlesStopsWithAMessage) {
    // A curve that rises with the flow: the network draws ever more, the flow never settles.
    Project project;
    NetworkBuilder network(project);
    BuildPumpedLine(network, NotGiven);
    network.SupplyMode(Supply);
    project.InputChanged = True;
    UseCurve(project, {{0, 0.5}, {100, 100}, {200, 400}});
    PumpRun run(project);
    EXPECT_FALSE(run.Posted);
    EXPECT_EQ(run.Progress.Passes, MaximumPumpPasses);
    ASSERT_EQ(run.Texts(),
              std::vector<std::string>{messages::PumpFlowUnsettled(MaximumPumpPasses)});
    EXPECT_EQ(run.Dialogs.All().front().Style, MessageStyle::Plain);
    EXPECT_EQ(project.InputChanged, True);
    EXPECT_EQ(project.CalcPipeRecord[PumpRow(project)].DeviceLoss, NotGiven);
}

TEST(PumpNetwork, ADemandCurvePumpMeetsTheTargetWithItsBoost) {
    constexpr double HmdTarget = 30;
    Project project;
    NetworkBuilder network(project);
    BuildPumpedLine(network, NotGiven);
    network.DemandMode(HmdTarget);
    const PumpCoefficientArray curve = UseCurve(project, RatedPump);
    PumpRun run(project);
    ASSERT_TRUE(run.Posted) << run.Dialogs.LastText();
    EXPECT_TRUE(run.Dialogs.Empty());
    // One solve; the second call of the command only posts it.
    EXPECT_EQ(run.Progress.Passes, 1);
    EXPECT_FALSE(run.Command->Context().PumpRerunPending);
    EXPECT_FALSE(run.Command->Context().ResultsPending);

    const double flow = project.CalculationData.InflowFlow;
    const double boost = PumpResult(project).FrictionPressure;
    EXPECT_NEAR(boost, EvaluatePumpCurve(curve, flow), Slope(curve, flow) * 0.001);
    EXPECT_EQ(project.CalcPipeRecord[PumpRow(project)].DeviceLoss, boost);
    const DemandSolution reference =
        SolveDemand(ReferenceWithBoost(project, boost), {HmdTarget, 0});
    ASSERT_TRUE(reference.Converged);
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, reference.InflowResidual, 0.01);
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure + boost,
                SolveDemand(ReferenceWithBoost(project, 0), {HmdTarget, 0}).InflowResidual, 0.01);
    const Agreement agreement = CompareWithReference(project, reference.Solution);
    EXPECT_LE(agreement.WorstPressure, 0.01) << agreement.WorstPressureNode;
    EXPECT_GT(project.CalculationData.InflowResidualPressure, 0);
}

TEST(PumpNetwork, ADemandBoostOutsideItsLimitsIsToldAndSet) {
    // 20 psi at shutoff, falling to nothing at 50 gpm: negative at the network's flow.
    Project falling;
    NetworkBuilder network(falling);
    BuildPumpedLine(network, NotGiven);
    network.DemandMode(HmdPressure);
    const PumpCoefficientArray curve = UseCurve(falling, {{0, 20}, {50, 0}, {100, -20}});
    PumpRun negative(falling);
    EXPECT_FALSE(negative.Posted);
    // The solve stands in the tables, and the boost was taken at its flow.
    const double flow = falling.CalculationData.InflowFlow;
    EXPECT_GT(flow, 50);
    EXPECT_EQ(negative.Texts(),
              (std::vector<std::string>{messages::NegativePumpBoost(EvaluatePumpCurve(curve, flow)),
                                        messages::PumpBoostZero}));
    EXPECT_EQ(negative.Dialogs.All().back().Style, MessageStyle::Plain);
    EXPECT_EQ(negative.Screens.Sent.back(), std::string(screens::PipeData) + " Show");

    // 9999 psi at shutoff and a parabola from there: far above the largest boost.
    Project steep;
    NetworkBuilder other(steep);
    BuildPumpedLine(other, NotGiven);
    other.DemandMode(HmdPressure);
    UseCurve(steep, {{0, 9999}, {1, 0}, {2, 9999}});
    PumpRun large(steep);
    ASSERT_TRUE(large.Posted) << large.Dialogs.LastText();
    EXPECT_EQ(large.Texts(),
              std::vector<std::string>{messages::PumpBoostTooLarge(PumpMaximumBoost)});
    EXPECT_NE(large.Texts().front().find(" of 99999.99."), std::string::npos);
    EXPECT_EQ(PumpResult(steep).FrictionPressure, PumpMaximumBoost);
    EXPECT_NEAR(steep.CalculationData.InflowResidualPressure + PumpMaximumBoost,
                SolveDemand(ReferenceWithBoost(steep, 0), {HmdPressure, 0}).InflowResidual, 0.01);
}

TEST(PumpNetwork, APumpWithoutBoostStopsTheRunInBothModes) {
    // Left to a curve that the project does not hold, or typed as 0.
    for (const Single boost : {NotGiven, 0.0f}) {
        for (const bool supply : {true, false}) {
            Project project;
            NetworkBuilder network(project);
            BuildPumpedLine(network, boost);
            supply ? network.SupplyMode(Supply) : network.DemandMode(HmdPressure);
            PumpRun run(project);
            EXPECT_FALSE(run.Posted);
            EXPECT_EQ(run.Progress.Passes, 1);
            EXPECT_EQ(run.Texts(), std::vector<std::string>{messages::PumpBoostZero})
                << boost << (supply ? " supply" : " demand");
        }
    }
}

TEST(PumpNetwork, ASprinklerUpstreamOfThePumpIsRefusedAfterTheSolve) {
    Project project;
    NetworkBuilder network(project);
    BuildPumpedLine(network, 25);
    network.Sprinkler(12, K).SupplyMode(Supply);
    PumpRun run(project);
    EXPECT_FALSE(run.Posted);
    EXPECT_EQ(run.Texts(), std::vector<std::string>{messages::SprinklerUpstreamOfPump});
    EXPECT_EQ(run.Screens.Sent.back(), std::string(screens::PipeData) + " Show");
    // The solver ran: its flows stand in the table.
    EXPECT_GT(std::fabs(project.CalcPipeRecord[PumpRow(project)].Flow), 1);
    EXPECT_EQ(project.CalculationData.NumberOfUniquePipeSections, 0);

    // A sprinkler behind the pump is its work.
    Project behind;
    NetworkBuilder line(behind);
    BuildPumpedLine(line, 25);
    line.Sprinkler(15, K).SupplyMode(Supply);
    PumpRun fine(behind);
    EXPECT_TRUE(fine.Posted) << fine.Dialogs.LastText();
}

} // namespace
} // namespace quench
