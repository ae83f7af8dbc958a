#include "entry/help_lists.h"
#include "entry/help_texts.h"
#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using Row = std::vector<std::string>;

bool Contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

TEST(HelpTexts, EveryKeyHasATitleAndATextInBothWords) {
    ASSERT_GE(PlainHelpKeys().size(), 75u);
    for (const std::string_view key : PlainHelpKeys()) {
        EXPECT_TRUE(HasHelpText(key)) << key;
    }
    for (const std::string_view key : HelpTextKeys()) {
        for (const std::string_view word : {"Sprinkler", "Hose"}) {
            const HelpText text = HelpTextOf(key, word);
            EXPECT_FALSE(text.Title.empty()) << key;
            EXPECT_GT(text.Description.size(), 40u) << key;
            // Every mark of the discharge word is filled in.
            EXPECT_FALSE(Contains(text.Title + text.Description, "{")) << key;
        }
    }
}

TEST(HelpTexts, TheDischargeWordChangesTheTexts) {
    const HelpText sprinkler = HelpTextOf("EEPipeDataSprinklerArea", "Sprinkler");
    const HelpText hose = HelpTextOf("EEPipeDataSprinklerArea", "Hose");
    EXPECT_EQ(sprinkler.Title, "Sprinkler Area");
    EXPECT_EQ(hose.Title, "Hose Area");
    EXPECT_TRUE(Contains(hose.Description, "Max Area Per Hose"));
    EXPECT_FALSE(Contains(hose.Description, "sprinkler"));
    // A blank name in the project reads as the default word.
    EXPECT_EQ(HelpTextOf("GPDSprinklerMake", "         ").Title, "Sprinkler Make");
    EXPECT_EQ(HelpTextOf("GPDSprinklerMake", "Hose     ").Title, "Hose Make");
}

TEST(HelpTexts, TitlesAndTextsThatStandAsTheyAre) {
    const HelpText fittings = HelpTextOf("EEPipeDataStandardFitting", "Sprinkler");
    EXPECT_EQ(fittings.Title, "Standard Fittings");
    EXPECT_TRUE(Contains(fittings.Description, "\"2F3E\" would, for example, designate (2) 45"));
    EXPECT_TRUE(Contains(fittings.Description, "Fitting Designations:"));
    EXPECT_EQ(HelpTextOf("GPDOutsideHoseStreamAllow", "Sprinkler").Title,
              "Outside Hode Stream Allowance");
    EXPECT_TRUE(HasHelpText("GPDMaxAreaPerSpinkler"));
    // The texts name the limits and the special words of their fields.
    EXPECT_TRUE(Contains(HelpTextOf("NodeDataKFactor", "Sprinkler").Description, "326.99"));
    EXPECT_TRUE(Contains(HelpTextOf("NodeDataKFactor", "Sprinkler").Description, "\"Dflt\""));
    EXPECT_TRUE(Contains(HelpTextOf("EEPipeDataMeterLoss", "Sprinkler").Description, "\"Curve\""));
    // An unknown key leaves title and text empty.
    const HelpText unknown = HelpTextOf("NoSuchKey", "Sprinkler");
    EXPECT_TRUE(unknown.Title.empty());
    EXPECT_TRUE(unknown.Description.empty());
}

class HelpListsTest : public ::testing::Test {
protected:
    HelpContent Load(std::string_view key, std::string_view fieldText = "",
                     std::string_view screen = "frmGPD") {
        HelpRequest request;
        request.Key = key;
        request.FieldText = fieldText;
        request.Screen = screen;
        request.MaterialText = material_;
        return LoadHelp(request, project_, sources_);
    }

    void SetUp() override {
        library_ = LoadPipeLibrary(PipeLibraryPath(testing::DataDirectory()));
        sources_.Library = &library_;
    }

    Project project_;
    PipeLibrary library_;
    HelpSources sources_;
    std::string material_;
};

TEST_F(HelpListsTest, PlainKeysOpenThePlainWindow) {
    for (const std::string_view key :
         {"NodeNumber", "GPDTemperatureRating", "CalculationDataCalculationMode"}) {
        const HelpContent content = Load(key);
        EXPECT_FALSE(content.WithList) << key;
        EXPECT_EQ(content.Title, HelpTextOf(key, "Sprinkler").Title);
    }
    const HelpContent unknown = Load("Nothing");
    EXPECT_FALSE(unknown.WithList);
    EXPECT_TRUE(unknown.Title.empty());
}

TEST_F(HelpListsTest, KFactorListFollowsTheDischargeWordAndOffersTheCalculators) {
    HelpContent content = Load("EEPipeDataKFactorB", "Inact", "frmEEPipeData");
    ASSERT_TRUE(content.WithList);
    EXPECT_EQ(content.Title, "K-Factor");
    EXPECT_EQ(content.List.Headings, (Row{"Ref Num", "Description"}));
    EXPECT_EQ(content.List.Rows[1], (Row{"None", "Non-Sprinkler node"}));
    EXPECT_EQ(content.SelectedRow, 2);
    ASSERT_EQ(content.Calculators.size(), 2u);
    EXPECT_EQ(content.Calculators[1].Caption, "Open &Branch Line K-Factor Calculator");
    EXPECT_EQ(PickedValue(content, 0), "Dflt");

    project_.SystemData.PrimaryDischargeName = "Hose";
    content = Load("EEPipeDataKFactorB");
    EXPECT_EQ(content.List.Rows[1], (Row{"None", "Non-Hose node"}));
    EXPECT_EQ(content.List.Rows[2], (Row{"Inact", "Inactivate hose node"}));
    EXPECT_EQ(Load("GPDSprinklerSystemType").Title, "Hose System Type");
    EXPECT_EQ(Load("GPDMaxAreaPerSpinkler").Title, "Maximum Area Per Hose");
}

TEST_F(HelpListsTest, PicksReturnTheValueColumnOfTheirList) {
    // The default K comes from the fourth column, the area from the second.
    HelpContent content = Load("GPDDefaultKFactor", "5.60");
    EXPECT_EQ(content.List.Rows.size(), 8u);
    EXPECT_EQ(content.SelectedRow, 4);
    EXPECT_EQ(PickedValue(content, 4), "5.6");
    EXPECT_EQ(PickedValue(content, 5), "8.0");
    content = Load("GPDMaxAreaPerSpinkler", "130");
    EXPECT_EQ(content.SelectedRow, 1);
    EXPECT_EQ(PickedValue(content, 0), "225");
    sources_.System = MeasureSystem::SI;
    EXPECT_EQ(PickedValue(Load("GPDMaxAreaPerSpinkler"), 2), "9.3");
    // The hazard names as NFPA 13 gives them; a padded name reaches the field trimmed.
    content = Load("GPDHazardDescription");
    EXPECT_EQ(content.List.Rows[3], (Row{"Ex. Haz. Gp. 1 "}));
    EXPECT_EQ(PickedValue(content, 3), "Ex. Haz. Gp. 1");
    EXPECT_EQ(PickedValue(content, 9), std::nullopt);
    EXPECT_EQ(PickedValue(Load("GPDMinDesiredDensity"), 2), "0.15");
    EXPECT_EQ(PickedValue(Load("PrimaryTypeOfDischarge"), 1), "Hose");
    EXPECT_EQ(PickedValue(Load("GPDSprinklerSystemType", "dry"), 1), "Dry");
    EXPECT_EQ(Load("GPDSprinklerSystemType", "dry").SelectedRow, 1);
}

TEST_F(HelpListsTest, LibraryListsAndTheTypedValue) {
    HelpContent content = Load("GPDDefaultPipeMaterial", "4");
    EXPECT_EQ(content.Title, "Default Pipe Material");
    EXPECT_EQ(content.SelectedRow, 3);
    EXPECT_EQ(PickedValue(content, 0), "1");

    material_ = "4";
    content = Load("EEPipeDataPipeDiameter", "2", "frmEEPipeData");
    EXPECT_EQ(content.List.Rows.front().front(), "0");
    ASSERT_GE(content.SelectedRow, 1);
    EXPECT_EQ(PickedValue(content, content.SelectedRow), "2.000");

    content = Load("EEPipeDataStandardFitting", "", "frmEEPipeData");
    EXPECT_TRUE(content.FittingEntry);
    EXPECT_EQ(content.EntryLabel, "Standard Fitting:");
    EXPECT_EQ(TypedValue(content, " 2f3e "), "2F3E");
    EXPECT_EQ(TypedValue(content, "  "), std::nullopt);
    EXPECT_EQ(TypedValue(content, "12345678901234"), "1234567890");

    content = Load("EEPipeDataNonStandardFitting", "", "frmEEPipeData");
    EXPECT_TRUE(content.WithList);
    EXPECT_TRUE(content.List.Rows.empty());
    ASSERT_EQ(content.Calculators.size(), 1u);
    EXPECT_EQ(content.Calculators[0].Calculator, HelpCalculator::AdditionalFitting);
}

TEST_F(HelpListsTest, ListsGatheredFromTheProjectAndTheCaller) {
    project_.PipeRecord[1] = PipeRecord{};
    project_.PipeRecord[1].BegNode = "10";
    project_.PipeRecord[1].EndNode = "20";
    project_.PipeRecord[1].AreaGroupE = "A";
    project_.PipeRecord[1].TypeGroup = 3;
    project_.PipeRecord[2].BegNode = "20";
    project_.PipeRecord[2].EndNode = "30";
    project_.PipeRecord[2].AreaGroupB = "A";
    project_.PipeRecord[2].AreaGroupE = "B";
    project_.PipeRecord[2].TypeGroup = 3;
    EXPECT_EQ(Load("EEPipeDataGlobalNodeAreaGroup").List.Rows, (std::vector<Row>{{"A"}, {"B"}}));
    EXPECT_EQ(Load("EEPipeDataGlobalPipeTypeGroup").List.Rows, (std::vector<Row>{{"3"}}));

    sources_.Values = {"1.5", "2"};
    HelpContent content = Load("GlobalCurrentDiameter");
    EXPECT_EQ(content.EntryLabel, "Following are the Diameters specified:");
    EXPECT_EQ(content.List.Rows, (std::vector<Row>{{"1.5"}, {"2"}}));
    EXPECT_EQ(Load("GlobalNewDiameter").EntryLabel,
              "Following are some possible choices for Diameters:");
    sources_.PumpNames = {"Pump A"};
    EXPECT_EQ(PickedValue(Load("FirePumpCopyPump"), 0), "Pump A");
}

TEST(HelpWords, ReturnAndCloseWordsByScreenAndKey) {
    EXPECT_EQ(HelpReturnWord("frmEEPipeData"), "UpdateEEPipeDataFromHelpWindow");
    EXPECT_EQ(HelpReturnWord("frmCalculation"), "UpdateCalculationDataFromHelpWindow");
    EXPECT_EQ(HelpReturnWord("frmGPD"), "UpdateGPDFromHelpWindow");
    EXPECT_EQ(HelpReturnWord("frmNodalEditor"), "UpdateNodeDataFromHelpWindow");
    EXPECT_EQ(HelpReturnWord("frmAddFitCalc"), "UpdateFittingCalculator");
    EXPECT_EQ(HelpReturnWord("frmOther"), "");
    EXPECT_EQ(HelpCloseWord("EEPipeDataNode"), "SetFocusAfterHelpWindow");
    EXPECT_EQ(HelpCloseWord("NodeNumber"), "");
}

} // namespace
} // namespace quench
