#include "calc/build_working_rows.h"
#include "core/formats.h"
#include "entry/general_data.h"
#include "entry/general_data_words.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using enum GeneralField;

class GeneralDataTest : public ::testing::Test {
protected:
    GeneralDataEditor& Screen(MeasureSystem system = MeasureSystem::US) {
        screen_.emplace(project_, system);
        return *screen_;
    }

    Project project_;
    std::optional<GeneralDataEditor> screen_;
};

TEST_F(GeneralDataTest, LoadFillsTheExteriorHoseFlowAndANewDate) {
    GeneralDataEditor& screen = Screen();
    EXPECT_EQ(screen.Text(ExteriorHoseFlow), "500");
    EXPECT_EQ(project_.SystemData.ExteriorHoseFlow, 500);
    EXPECT_EQ(screen.Text(ProjectDate), FormatDate(Now(), "mmmm dd, yyyy"));
    screen.ScreenToGeneralData();
    EXPECT_EQ(project_.SystemData.ExteriorHoseFlow, 500);

    // A date and a flow the project has stay as they are.
    project_.ProjectData.Date = "July 4, 1999";
    project_.SystemData.ExteriorHoseFlow = 250;
    project_.SystemData.CalculatedResidualPressure = 61.456f;
    GeneralDataEditor& again = Screen();
    EXPECT_EQ(again.Text(ProjectDate), "July 4, 1999");
    EXPECT_EQ(again.Text(ExteriorHoseFlow), "250");
    EXPECT_EQ(again.Text(CalculatedResidualPressure), "61.46");
}

TEST_F(GeneralDataTest, NumbersKeepTheirLimits) {
    GeneralDataEditor& screen = Screen();
    // Above the maximum, a separator in a whole number, too many decimals: emptied.
    screen.Edit(DefaultPipeMaterial, "51");
    EXPECT_EQ(screen.Text(DefaultPipeMaterial), "");
    screen.Edit(TemperatureRating, "15.5");
    EXPECT_EQ(screen.Text(TemperatureRating), "");
    screen.Edit(MinimumDesiredDensity, "0.12345");
    EXPECT_EQ(screen.Text(MinimumDesiredDensity), "");
    // Below the minimum on leaving: the minimum and the message.
    screen.Edit(DefaultPipeMaterial, "0");
    LeaveOutcome left = screen.Leave(DefaultPipeMaterial);
    EXPECT_TRUE(left.TooLow);
    EXPECT_EQ(left.Text, "1");
    EXPECT_EQ(project_.SystemData.DefaultPipeMaterial, 1);
    screen.Edit(MaximumAreaPerSprinkler, "");
    left = screen.Leave(MaximumAreaPerSprinkler);
    EXPECT_TRUE(left.TooLow);
    EXPECT_EQ(left.Text, "1.000");
    EXPECT_FLOAT_EQ(project_.SystemData.MaximumAreaPerSprinkler, 1);
    // An empty field that may be 0 shows 0.
    screen.Edit(LaborRate, "");
    EXPECT_EQ(screen.Leave(LaborRate).Text, "0.0000");
    EXPECT_FALSE(screen.Leave(LaborRate).TooLow);

    project_.InputChanged = 0;
    screen.Edit(TestStaticPressure, "65.5");
    screen.Edit(SecondTestFlowRate, "1250");
    EXPECT_FLOAT_EQ(project_.SystemData.TestStaticPressure, 65.5f);
    EXPECT_FLOAT_EQ(project_.SystemData.SecondTestFlowRate, 1250);
    EXPECT_TRUE(IsTrue(project_.InputChanged));
    EXPECT_EQ(screen.StatusText(LaborRate), "Range: 0.0000 to 99.9999     Units: $/hr");
    EXPECT_EQ(screen.StatusText(ProjectTitle), "Up to 50 characters     Units: Text");
}

TEST_F(GeneralDataTest, TextsAreTypedToTheirLimitAndStoredToTheRecords) {
    GeneralDataEditor& screen = Screen();
    const std::string typed(60, 'T');
    screen.Edit(ProjectTitle, typed);
    EXPECT_EQ(screen.Text(ProjectTitle), std::string(50, 'T'));
    EXPECT_EQ(project_.ProjectData.Title, std::string(40, 'T'));
    screen.Edit(HazardDescription, std::string(120, 'H'));
    EXPECT_EQ(screen.Text(HazardDescription).size(), 120u);
    EXPECT_EQ(project_.SystemData.HazardDescription.size(), 40u);
    screen.Edit(BuildingComment, "Sprinklered throughout");
    EXPECT_EQ(project_.BuildingData.Comment, "Sprinklered throughout");
    screen.SetCheck(GeneralCheck::Building, true);
    EXPECT_EQ(project_.BuildingData.PrintComment, True);
    EXPECT_TRUE(screen.Check(GeneralCheck::Building));
    EXPECT_FALSE(screen.Check(GeneralCheck::Client));
}

TEST_F(GeneralDataTest, ThePrimaryDischargeWordSwitchesTheVocabulary) {
    GeneralDataEditor& screen = Screen();
    EXPECT_EQ(screen.Label(SprinklerMake), "Sprinkler Make:");
    // The start of a word stays while it is typed and stores nothing.
    GeneralDataEditor::EditOutcome outcome = screen.Edit(PrimaryDischarge, "Ho");
    EXPECT_EQ(screen.Text(PrimaryDischarge), "Ho");
    EXPECT_FALSE(outcome.DischargeChanged);
    EXPECT_EQ(project_.SystemData.PrimaryDischargeName, "Sprinkler");
    outcome = screen.Edit(PrimaryDischarge, "hose");
    EXPECT_TRUE(outcome.DischargeChanged);
    EXPECT_EQ(screen.Text(PrimaryDischarge), "Hose");
    EXPECT_EQ(project_.SystemData.PrimaryDischargeName, "Hose");
    EXPECT_EQ(screen.Label(SprinklerMake), "Hose Make:");
    EXPECT_EQ(screen.Label(AreaOfSprinklerOperation), "Area of Flowing Operation");
    EXPECT_EQ(screen.Label(MaximumAreaPerSprinkler), "Max Area Per Hose");
    // Any other word is removed; the word in force stays and shows again on leaving.
    screen.Edit(PrimaryDischarge, "Nozzle");
    EXPECT_EQ(screen.Text(PrimaryDischarge), "");
    EXPECT_EQ(project_.SystemData.PrimaryDischargeName, "Hose");
    screen.Edit(PrimaryDischarge, "Sprink");
    EXPECT_EQ(screen.Leave(PrimaryDischarge).Text, "Hose");

    const DischargeVocabulary hose = VocabularyOf("Hose");
    EXPECT_EQ(hose.TotalArea, "Total Flow Area = ");
    EXPECT_EQ(hose.NonFlow, "Fixed Flow");
    EXPECT_EQ(VocabularyOf(" Sprinkler ").NodeHeading, "Sprk");
}

TEST_F(GeneralDataTest, SystemTypeTakesWetOrDry) {
    GeneralDataEditor& screen = Screen();
    screen.Edit(SprinklerSystemType, "dry");
    EXPECT_EQ(project_.SystemData.SprinklerSystemType, "Dry");
    screen.Edit(SprinklerSystemType, "Damp");
    EXPECT_EQ(screen.Text(SprinklerSystemType), "");
    EXPECT_EQ(project_.SystemData.SprinklerSystemType, "Dry");
    screen.Edit(SprinklerSystemType, "WET");
    EXPECT_EQ(project_.SystemData.SprinklerSystemType, "Wet");
}

TEST_F(GeneralDataTest, DensityIsOneValueWithTheCalculationScreen) {
    GeneralDataEditor& screen = Screen();
    const GeneralDataEditor::EditOutcome outcome = screen.Edit(MinimumDesiredDensity, "0.15");
    EXPECT_TRUE(outcome.DensityChanged);
    EXPECT_FALSE(outcome.PipeScreenChanged);
    EXPECT_TRUE(screen.Edit(MaximumAreaPerSprinkler, "120").PipeScreenChanged);
    EXPECT_TRUE(screen.Edit(DefaultKFactor, "5.6").PipeScreenChanged);
    EXPECT_FALSE(screen.Edit(DefaultKFactor, "5.6").DensityChanged);
    EXPECT_FLOAT_EQ(project_.SystemData.MinimumDesiredDensity, 0.15f);
    EXPECT_FLOAT_EQ(project_.CalculationData.DesignDensity, 0.15f);
}

TEST_F(GeneralDataTest, UnitsChangeWhatIsShownNeverWhatIsStored) {
    project_.SystemData.DefaultKFactor = 5.6f;
    project_.SystemData.AreaOfSprinklerOperation = 1500;
    project_.SystemData.MinimumDesiredDensity = 0.2f;
    GeneralDataEditor& screen = Screen(MeasureSystem::SI);
    EXPECT_EQ(screen.Text(AreaOfSprinklerOperation), "139");
    EXPECT_EQ(screen.UnitWord(AreaOfSprinklerOperation), "m²");
    EXPECT_EQ(screen.Text(DefaultKFactor), "80.64");
    // Storing the screen leaves the untouched values exactly as they were.
    screen.ScreenToGeneralData();
    EXPECT_FLOAT_EQ(project_.SystemData.AreaOfSprinklerOperation, 1500);
    EXPECT_FLOAT_EQ(project_.SystemData.MinimumDesiredDensity, 0.2f);
    EXPECT_FLOAT_EQ(project_.SystemData.DefaultKFactor, 5.6f);
    // A typed SI value is stored in US units.
    screen.Edit(HydrantElevation, "10");
    EXPECT_NEAR(project_.SystemData.HydrantElevation, 32.808, 0.001);
    screen.SwitchUnits(MeasureSystem::US);
    EXPECT_EQ(screen.Text(AreaOfSprinklerOperation), "1500");
    EXPECT_EQ(screen.Text(HydrantElevation), "33");
}

TEST_F(GeneralDataTest, TheDefaultKReachesEveryDefaultNodeWithoutTouchingTheRows) {
    for (int row = 1; row <= 2; ++row) {
        PipeRecord& pipe = project_.PipeRecord[static_cast<std::size_t>(row)];
        pipe.BegNode = std::to_string(row * 10);
        pipe.EndNode = std::to_string(row * 10 + 10);
        pipe.KFactorE = "Dflt";
        pipe.Active = True;
    }
    project_.NumberOfPipeRows = 2;
    GeneralDataEditor& screen = Screen();
    screen.Edit(DefaultKFactor, "5.6");
    BuildWorkingRows(project_);
    EXPECT_FLOAT_EQ(project_.WorkPipeRecord[1].KFactorE, 5.6f);
    EXPECT_FLOAT_EQ(project_.WorkPipeRecord[2].KFactorE, 5.6f);
    EXPECT_EQ(project_.PipeRecord[1].KFactorE, "Dflt");
}

} // namespace
} // namespace quench
