#include "entry/k_factor_text.h"
#include "entry/pipe_row_text.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(KFactorText, WordsStayAndNumbersConvert) {
    for (const char* word : {"Dflt", "Inact", "None"}) {
        EXPECT_EQ(KFactorFieldText(word, MeasureSystem::SI), word);
        EXPECT_EQ(KFactorToStore(word, MeasureSystem::SI), word);
    }
    EXPECT_EQ(KFactorToStore("dflt", MeasureSystem::US), "Dflt");
    EXPECT_EQ(KFactorToStore("", MeasureSystem::US), "");
    EXPECT_EQ(KFactorToStore("5.6", MeasureSystem::US), "5.6");
    EXPECT_EQ(KFactorFieldText("5.6", MeasureSystem::US), "5.6");
    // Km = 14.4 K: 80.64 on screen is 5.6 stored; the stored text fits its six characters.
    EXPECT_EQ(KFactorFieldText("5.6", MeasureSystem::SI), "80.64");
    EXPECT_EQ(KFactorToStore("80.64", MeasureSystem::SI), "5.6");
    EXPECT_EQ(KFactorToStore("100", MeasureSystem::SI), "6.9444");
    EXPECT_LE(KFactorToStore("4700", MeasureSystem::SI).size(), 6u);
    EXPECT_EQ(KFactorToStore("5,6", MeasureSystem::US, ','), "5.6");
}

TEST(KFactorText, KeysAndTheChangeTest) {
    const NumberAttribute k{0, 0, 326.99f, 2};
    const auto key = [&k](char pressed, FieldState field) {
        const KeyOutcome outcome = FilterKFactorKey(pressed, field, k);
        return outcome.Accepted ? outcome.Field.Text : std::string("refused");
    };
    EXPECT_EQ(key('n', {}), "None");
    EXPECT_EQ(key('D', {"5.6", 0, 3}), "Dflt"); // over the whole text selected
    EXPECT_EQ(key('I', {"5.6", 3, 0}), "refused");
    EXPECT_EQ(key(BackspaceKey, {"Inact", 5, 0}), ""); // a word goes as a whole
    EXPECT_EQ(key('5', {"None", 4, 0}), "refused");
    EXPECT_EQ(key('5', {"None", 0, 4}), "5");
    EXPECT_EQ(key('7', {"32", 2, 0}), "refused"); // above the limit
    EXPECT_EQ(TestKFactorOnChange("i", k), "Inact");
    EXPECT_EQ(TestKFactorOnChange("abc", k), "");
    EXPECT_EQ(TestKFactorOnChange("400", k), "");
    EXPECT_EQ(TestKFactorOnChange("12.5", k), "12.5");
}

TEST(PipeRowText, MaterialsAndTheDiameterInSi) {
    EXPECT_EQ(MaterialText(MaterialFirePump), "P");
    EXPECT_EQ(MaterialText(12), "12");
    EXPECT_EQ(MaterialOfText("b"), MaterialBackflowPreventer);
    EXPECT_EQ(MaterialOfText("a"), MaterialAlarmDevice);
    EXPECT_EQ(MaterialOfText("51"), 0); // a device only by its letter
    EXPECT_EQ(MaterialOfText("X"), 0);

    Project project;
    PipeRecord& row = project.PipeRecord[1];
    row.BegNode = "1";
    row.EndNode = "2";
    RowTexts texts;
    // Millimetres to inches, rounded to hundredths before the library sees them.
    texts.Set(PipeColumn::Diameter, "26.6");
    EXPECT_TRUE(SaveCurrentRow(project, 1, texts, MeasureSystem::SI));
    EXPECT_FLOAT_EQ(row.Diameter, 1.05f);
    EXPECT_TRUE(IsTrue(row.DiameterFixed));
    texts.Set(PipeColumn::Diameter, "");
    SaveCurrentRow(project, 1, texts, MeasureSystem::US);
    EXPECT_EQ(row.Diameter, NotGiven);
    EXPECT_EQ(ShowRow(project, 1, MeasureSystem::US)[PipeColumn::Diameter], "");
    // A material field emptied takes the project's default.
    project.SystemData.DefaultPipeMaterial = 7;
    texts = RowTexts{};
    texts.Set(PipeColumn::Material, "");
    SaveCurrentRow(project, 1, texts, MeasureSystem::US);
    EXPECT_EQ(row.Material, 7);
    texts.Set(PipeColumn::NonStandardFitLength, "12.5");
    SaveCurrentRow(project, 1, texts, MeasureSystem::US);
    EXPECT_EQ(row.OldFittingLength, 12); // half to even
}

} // namespace
} // namespace quench
