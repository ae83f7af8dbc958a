// A run's faults are recorded on its context as diagnostics and shown by the run alone: the boxes
// the user sees and the recorded stream are the same, in the same order, each box shown before the
// screen it brings forward.

#include "calc/messages.h"
#include "tests/support/network_shapes.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

// The screen words with the number of boxes already shown when each was sent.
class WatchedScreens final : public Screens {
public:
    explicit WatchedScreens(const ScriptedDialogs& dialogs) : dialogs_(dialogs) {}
    void Send(std::string_view screen, std::string_view command) override {
        Sent.push_back({std::string(screen) + " " + std::string(command), dialogs_.All().size()});
    }
    std::vector<std::pair<std::string, std::size_t>> Sent;

private:
    const ScriptedDialogs& dialogs_;
};

class Diagnostics : public ::testing::Test {
protected:
    Diagnostics() : network_(project_) {
        BuildBranchLine(network_);
        network_.SupplyMode(50);
    }

    bool Calculate(const PipeLibrary& library = DefaultLibrary()) {
        Calculation calculation(project_, library, dialogs_, progress_, screens_);
        const bool posted = calculation.Calculate(CalculationScreenFromProject(project_));
        recorded_ = calculation.Context().Diagnostics;
        shown_ = calculation.Context().DiagnosticsShown;
        return posted;
    }

    // Every recorded diagnostic was shown once, as it was recorded.
    void ExpectShownAsRecorded() const {
        ASSERT_EQ(shown_, recorded_.size());
        ASSERT_EQ(dialogs_.All().size(), recorded_.size());
        for (std::size_t k = 0; k < recorded_.size(); ++k) {
            EXPECT_EQ(dialogs_.All()[k].Text, recorded_[k].Text);
            EXPECT_EQ(dialogs_.All()[k].Title, recorded_[k].Title);
            EXPECT_EQ(dialogs_.All()[k].Style, recorded_[k].Style);
        }
    }

    PipeRecord& Row(int row) { return project_.PipeRecord[row]; }

    Project project_;
    NetworkBuilder network_;
    ScriptedDialogs dialogs_;
    NoProgress progress_;
    WatchedScreens screens_{dialogs_};
    std::vector<Diagnostic> recorded_;
    std::size_t shown_ = 0;
};

TEST_F(Diagnostics, ARowFaultNamesItsRowAndBringsThePipeDataForwardAfterItsBox) {
    Row(3).Length = -5;
    EXPECT_FALSE(Calculate());
    ExpectShownAsRecorded();
    ASSERT_EQ(recorded_.size(), 1u);
    EXPECT_EQ(recorded_[0].Row, 3);
    EXPECT_EQ(recorded_[0].Screen, "frmEEPipeData");
    EXPECT_EQ(recorded_[0].Command, "Show");
    ASSERT_EQ(screens_.Sent.size(), 1u);
    EXPECT_EQ(screens_.Sent[0].first, "frmEEPipeData Show");
    EXPECT_EQ(screens_.Sent[0].second, 1u); // the box came first
}

TEST_F(Diagnostics, ADeviceFaultNamesItsNodeAsTyped) {
    network_.Device(50, 55, MaterialMeter, 5);
    network_.Pipe(55, 60, 10, 1);
    network_.Elevation(55, 1);
    EXPECT_FALSE(Calculate());
    ExpectShownAsRecorded();
    ASSERT_EQ(recorded_.size(), 1u);
    EXPECT_EQ(recorded_[0].Text, "Meter 50-55 nodes have different elevation.");
    EXPECT_EQ(recorded_[0].Node, 50);
}

TEST_F(Diagnostics, ALibraryGoneSinceStartUpStopsTheRun) {
    PipeLibrary library = DefaultLibrary();
    library.File = "/nonexistent/PIPE.DAT";
    EXPECT_FALSE(Calculate(library));
    ExpectShownAsRecorded();
    ASSERT_EQ(recorded_.size(), 1u);
    EXPECT_EQ(recorded_[0].Text, "THE PIPE MATERIALS LIBRARY CANNOT BE FOUND AND MUST BE CREATED.");
    EXPECT_EQ(recorded_[0].Title, "");
    EXPECT_EQ(recorded_[0].Style, MessageStyle::Plain);
}

// A warning lets the run go on: it is shown in its turn, before whatever the solve says. (With
// fixed flows alone a Demand run has no sprinkler to hold and finds no solution.)
TEST_F(Diagnostics, AWarningDoesNotStopTheRun) {
    for (int row = 1; row <= 4; ++row) {
        Row(row).KFactorB = "None";
        Row(row).KFactorE = "None";
    }
    network_.FixedFlow(50, 20);
    network_.DemandMode(7);
    EXPECT_FALSE(Calculate());
    const std::string warning =
        messages::NoSprinklerInDemand(project_.SystemData.PrimaryDischargeName);
    ASSERT_GE(recorded_.size(), 1u);
    ASSERT_EQ(dialogs_.All().size(), 2u);
    EXPECT_EQ(recorded_[0].Text, warning);
    EXPECT_EQ(dialogs_.All()[0].Text, warning);
    EXPECT_EQ(dialogs_.All()[1].Text, "No Solution.  Check data for discontinuities.");
}

// The autosize question comes between the checks of the screen and those of the rows; a No stops
// the run with the pipe data screen forward and nothing recorded.
TEST_F(Diagnostics, TheSizingQuestionIsAskedByTheRun) {
    Row(2).Diameter = 0;
    Row(2).DiameterFixed = False;
    network_.DemandMode(7);
    dialogs_.Script(Answer::No);
    EXPECT_FALSE(Calculate());
    ASSERT_EQ(dialogs_.All().size(), 1u);
    EXPECT_TRUE(dialogs_.All()[0].WasQuestion);
    EXPECT_TRUE(recorded_.empty());
    ASSERT_EQ(screens_.Sent.size(), 1u);
    EXPECT_EQ(screens_.Sent[0].first, "frmEEPipeData Show");

    NoDialogs nobody; // a question nobody answers takes its default, No
    NoProgress progress;
    NoScreens screens;
    Calculation calculation(project_, DefaultLibrary(), nobody, progress, screens);
    EXPECT_FALSE(calculation.Calculate(CalculationScreenFromProject(project_)));
    EXPECT_FALSE(calculation.Context().AutosizeRequested);
}

} // namespace
} // namespace quench
