// Calculations on projects whose data load but make no sense hydraulically: zero lengths and
// diameters, absurd K-factors and elevations, a thousand parallel pipes, no inflow, an island.
// Each run must end with one of the program's messages or with finite results, never a crash,
// a NaN posted or a run past the iteration budget.

#include "calc/independent_check.h"
#include "core/finite_fields.h"
#include "core/formats.h"
#include "core/record_layout.h"
#include "tests/support/network_shapes.h"

#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

// The first number of a record that is not finite, named with its record; "" when none.
template <class Record>
std::string FirstNonFinite(const std::string& name, const Record& record) {
    const std::string_view field = FirstNonFiniteField(record);
    return field.empty() ? std::string() : name + "." + std::string(field);
}

// The first number that a posted run left infinite or NaN in the rows, tables or summary.
std::string FirstNonFinitePosted(const Project& project) {
    std::string bad = FirstNonFinite("CalculationData", project.CalculationData);
    for (int row = 1; bad.empty() && row <= project.NumberOfPipeRows; ++row) {
        bad = FirstNonFinite("PipeRecord " + std::to_string(row), project.PipeRecord[row]);
    }
    for (int row = 1; bad.empty() && row <= project.NumberOfNodes; ++row) {
        bad = FirstNonFinite("NodeRecord " + std::to_string(row), project.NodeRecord[row]);
    }
    for (int row = 1; bad.empty() && row <= project.NumberOfPipes; ++row) {
        bad = FirstNonFinite("CalcPipeRecord " + std::to_string(row), project.CalcPipeRecord[row]);
    }
    const int results = project.CalculationData.NumberOfUniquePipeSections;
    for (int row = 1; bad.empty() && row <= std::min(results, MaxPipes); ++row) {
        bad = FirstNonFinite("PipeResultRecord " + std::to_string(row),
                             project.PipeResultRecord[row]);
    }
    return bad;
}

struct Outcome {
    bool Posted = false;
    std::string Message; // the last box shown, "" when none
};

// A branch line that calculates in both modes, with the limits that sizing asks for.
void Sound(NetworkBuilder& network) {
    BuildBranchLine(network);
    Project& project = network.Model();
    project.SystemData.MaximumAreaPerSprinkler = 130;
    project.CalculationData.MaxWaterVelocity = 20;
    project.CalculationData.MaxFrictionalLoss = 10;
    network.DemandMode(7, 0.1);
}

// Runs the calculation twice, answering every question Yes and then No.
class HostileCalculation : public ::testing::TestWithParam<Answer> {
protected:
    HostileCalculation() : network_(project_) { Sound(network_); }

    // Demand mode, then Supply mode at 50 psi.
    void CalculateBothModes() {
        network_.DemandMode(7, 0.1);
        Calculate();
        network_.SupplyMode(50);
        Calculate();
    }

    Outcome Calculate() {
        CalculationRun run;
        for (int i = 0; i < 20; ++i) {
            run.Dialogs.Script(GetParam());
        }
        run.Calculate(project_);
        Outcome outcome{run.Posted, run.Dialogs.LastText()};
        if (outcome.Posted) {
            EXPECT_EQ(FirstNonFinitePosted(project_), "");
        } else {
            EXPECT_NE(outcome.Message, "") << "a run stopped without a message";
        }
        return outcome;
    }

    // The sound branch line again.
    void Renew() {
        ResetProject(project_);
        Sound(network_);
    }

    Project project_;
    NetworkBuilder network_;
};

INSTANTIATE_TEST_SUITE_P(Answers, HostileCalculation, ::testing::Values(Answer::Yes, Answer::No));

TEST_P(HostileCalculation, ZeroLengthPipes) {
    for (int row = 1; row <= project_.NumberOfPipeRows; ++row) {
        project_.PipeRecord[row].Length = 0;
        project_.PipeRecord[row].TotalEquivLength = 0;
    }
    CalculateBothModes();
    project_.PipeRecord[2].Length = 1e-30F;
    project_.PipeRecord[2].TotalEquivLength = 1e-30F;
    CalculateBothModes();
}

TEST_P(HostileCalculation, ZeroAndNegativeDiameters) {
    project_.PipeRecord[2].Diameter = 0;
    project_.PipeRecord[2].DiameterFixed = True;
    CalculateBothModes();
    project_.PipeRecord[3].Diameter = -3;
    CalculateBothModes();
    project_.PipeRecord[3].Diameter = 1e-6F;
    CalculateBothModes();
    project_.PipeRecord[3].Diameter = 1e6F;
    CalculateBothModes();
}

TEST_P(HostileCalculation, HugeKFactors) {
    network_.Sprinkler(50, 1e30);
    network_.Sprinkler(40, 1e-30);
    CalculateBothModes();
    network_.Sprinkler(30, "1e300");
    Calculate();
}

TEST_P(HostileCalculation, HugeElevations) {
    network_.Elevation(50, 1e6).Elevation(10, -1e6);
    CalculateBothModes();
    network_.Elevation(50, -1e6).Elevation(10, 1e6);
    Calculate();
}

TEST_P(HostileCalculation, AThousandParallelPipes) {
    ResetProject(project_);
    network_.Pipe(1, 10, 10, 4);
    for (int pipe = 0; pipe < MaxPipes - 2; ++pipe) {
        network_.Pipe(10, 20, 10, 1);
    }
    network_.Pipe(20, 30, 10, 1);
    network_.Sprinkler(30, 5.6).Area(30, 100).Inflow(1);
    project_.SystemData.MaximumAreaPerSprinkler = 130;
    CalculateBothModes();
}

TEST_P(HostileCalculation, NoInflow) {
    for (int row = 1; row <= project_.NumberOfPipeRows; ++row) {
        project_.PipeRecord[row].BegIsInflow = 0;
        project_.PipeRecord[row].EndIsInflow = 0;
    }
    project_.InflowNode = 0;
    project_.CalculationData.SystemInflowNode = 0;
    CalculateBothModes();
}

TEST_P(HostileCalculation, DisconnectedIsland) {
    network_.Pipe(500, 510, 10, 1);
    network_.Pipe(510, 520, 10, 1);
    network_.Sprinkler(520, 5.6).Area(520, 100);
    CalculateBothModes();
}

// A damaged file's infinity or NaN in a pipe row or the general data stops the run at once and
// names the field; a merely huge number runs to one of the solver's messages or to finite results.
TEST_P(HostileCalculation, NonFiniteRowsAndGeneralData) {
    struct Field {
        std::string Name;
        std::function<void(Project&, float)> Set;
        bool InRow = true;
    };
    const Field fields[] = {
        {"Length", [](Project& p, float v) { p.PipeRecord[3].Length = v; }},
        {"TotalEquivLength", [](Project& p, float v) { p.PipeRecord[3].TotalEquivLength = v; }},
        {"Diameter", [](Project& p, float v) { p.PipeRecord[3].Diameter = v; }},
        {"ElevationB", [](Project& p, float v) { p.PipeRecord[3].ElevationB = v; }},
        {"PressEstimateE", [](Project& p, float v) { p.PipeRecord[3].PressEstimateE = v; }},
        {"SprinklerAreaE", [](Project& p, float v) { p.PipeRecord[3].SprinklerAreaE = v; }},
        {"NonSprinklerFlowE", [](Project& p, float v) { p.PipeRecord[3].NonSprinklerFlowE = v; }},
        {"NonStandardFitLength",
         [](Project& p, float v) { p.PipeRecord[3].NonStandardFitLength = v; }},
        {"DeviceLoss", [](Project& p, float v) { p.PipeRecord[3].DeviceLoss = v; }},
        {"MaximumAreaPerSprinkler",
         [](Project& p, float v) { p.SystemData.MaximumAreaPerSprinkler = v; }, false},
        {"MinimumDesiredDensity",
         [](Project& p, float v) { p.SystemData.MinimumDesiredDensity = v; }, false},
        {"AreaOfSprinklerOperation",
         [](Project& p, float v) { p.SystemData.AreaOfSprinklerOperation = v; }, false},
        {"InsideHoseStreamAllowance",
         [](Project& p, float v) { p.SystemData.InsideHoseStreamAllowance = v; }, false},
    };
    const float infinity = std::numeric_limits<float>::infinity();
    for (const auto& [name, set, inRow] : fields) {
        for (const float value : {std::numeric_limits<float>::quiet_NaN(), infinity, -infinity}) {
            SCOPED_TRACE(name + " = " + std::to_string(value));
            Renew();
            set(project_, value);
            const Outcome outcome = Calculate();
            EXPECT_FALSE(outcome.Posted);
            EXPECT_EQ(outcome.Message,
                      inRow ? "The " + name +
                                  " of pipe #3 is not a number.  You must enter a number in this "
                                  "field for calculations to proceed."
                            : "The " + name +
                                  " of the general project data is not a number.  You must enter "
                                  "a number in this field for calculations to proceed.");
        }
        Renew();
        set(project_, 3e38F);
        CalculateBothModes();
    }
}

// The Calculation screen's settings pass through their texts: whatever the file held, the run
// ends with a message or finite results.
TEST_P(HostileCalculation, NonFiniteCalculationSettings) {
    using Set = std::function<void(CalculationData&, double)>;
    const Set fields[] = {
        [](CalculationData& d, double v) { d.MinPressureAtHMDNode = static_cast<float>(v); },
        [](CalculationData& d, double v) { d.DesignDensity = static_cast<float>(v); },
        [](CalculationData& d, double v) { d.InflowResidualPressure1 = v; },
        [](CalculationData& d, double v) { d.MaximumNodePressureImbalance = v; },
        [](CalculationData& d, double v) { d.AverageNodePressureImbalance = v; },
        [](CalculationData& d, double v) { d.MaxWaterVelocity = v; },
        [](CalculationData& d, double v) { d.MaxFrictionalLoss = v; },
        [](CalculationData& d, double v) { d.TypeGroupMinDiameter[0] = v; },
        [](CalculationData& d, double v) { d.TypeGroupMaxDiameter[0] = v; },
    };
    const double infinity = std::numeric_limits<double>::infinity();
    for (const auto& set : fields) {
        for (const double value :
             {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity, 1e300, -1e300}) {
            Renew();
            set(project_.CalculationData, value);
            CalculateBothModes();
        }
    }
}

TEST_P(HostileCalculation, AbsurdKFactorTexts) {
    for (const char* text : {"nan", "inf", "-inf", "1e300", "1e-300", "", "K5.6", "99999999999"}) {
        Renew();
        network_.Sprinkler(30, std::string(text));
        CalculateBothModes();
    }
}

} // namespace
} // namespace quench

namespace quench {
namespace {

// Stored results that a damaged file turned into NaN or infinity never pass the independent
// check.
TEST(HostileResults, NonFiniteStoredResultsFailTheCheck) {
    using Set = std::function<void(Project&, double)>;
    const Set fields[] = {
        [](Project& p, double v) { p.NodeRecord[2].ResidualPressure = v; },
        [](Project& p, double v) { p.NodeRecord[2].Discharge = v; },
        [](Project& p, double v) { p.NodeRecord[1].ResidualPressure = v; },
        [](Project& p, double v) { p.CalcPipeRecord[2].Flow = v; },
        [](Project& p, double v) { p.CalcPipeRecord[1].InsideDiameter = v; },
        [](Project& p, double v) { p.NodeRecord[3].KFactor = v; },
        [](Project& p, double v) { p.NodeRecord[3].Elevation = v; },
        [](Project& p, double v) { p.CalcPipeRecord[3].TotalLength = v; },
    };
    Project calculated;
    NetworkBuilder network(calculated);
    Sound(network);
    ASSERT_TRUE(CalculationRun(calculated).Posted);
    ASSERT_TRUE(CheckPostedResults(calculated).Passed);
    int index = 0;
    for (const auto& set : fields) {
        for (const double value :
             {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
            Project damaged = calculated;
            set(damaged, value);
            const CheckVerdict verdict = CheckPostedResults(damaged);
            EXPECT_FALSE(verdict.Passed) << "field " << index << " " << value;
            EXPECT_EQ(CheckVerdictText(verdict),
                      "Independent check: failed (a stored result is not a finite number)");
        }
        ++index;
    }
}

} // namespace
} // namespace quench
