#include "core/formats.h"
#include "entry/fitting_entry.h"
#include "library/equivalent_length.h"
#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScriptedDialogs;

FittingCountArray Parsed(std::string_view text, ScriptedDialogs& dialogs, bool* clean = nullptr) {
    const FittingParse parse = ParseFittingText(text, dialogs);
    if (clean != nullptr) {
        *clean = parse.Clean;
    }
    return parse.Counts;
}

PipeLibrary DefaultLibrary() {
    return LoadPipeLibrary(PipeLibraryPath(testing::DataDirectory()));
}

TEST(FittingEntry, KeyFilter) {
    Project project;
    for (char key : std::string("0123456789FELTBGC")) {
        project.InputChanged = False;
        EXPECT_EQ(FilterFittingKey(key, "2F", project), key) << key;
        EXPECT_EQ(project.InputChanged, True);
    }
    project.InputChanged = False;
    for (char key : std::string("AXZe .-+")) {
        EXPECT_EQ(FilterFittingKey(key, "", project), RefusedKey) << key;
    }
    EXPECT_EQ(project.InputChanged, False);
    // The length limit comes first: a tenth character is taken, an eleventh is not, unless it
    // replaces a selection. Backspace always passes.
    EXPECT_EQ(FilterFittingKey('E', "123456789", project), 'E');
    EXPECT_EQ(FilterFittingKey('E', "123456789E", project), RefusedKey);
    EXPECT_EQ(FilterFittingKey('E', "123456789E", project, 2), 'E');
    EXPECT_EQ(FilterFittingKey(BackspaceKey, "123456789E", project), BackspaceKey);
}

TEST(FittingEntry, ParseCountsQuantitiesAndLetters) {
    ScriptedDialogs dialogs;
    bool clean = false;
    EXPECT_EQ(Parsed("2F3E", dialogs, &clean), (FittingCountArray{2, 3, 0, 0, 0, 0, 0}));
    EXPECT_TRUE(clean);
    EXPECT_EQ(Parsed("E", dialogs), (FittingCountArray{0, 1, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Parsed("3E2F", dialogs), (FittingCountArray{2, 3, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Parsed("2E3E", dialogs), (FittingCountArray{0, 5, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Parsed("12T", dialogs), (FittingCountArray{0, 0, 0, 12, 0, 0, 0}));
    EXPECT_EQ(Parsed("FELTBGC", dialogs), (FittingCountArray{1, 1, 1, 1, 1, 1, 1}));
    // A letter outside the seven takes its quantity to no effect; small letters count as capitals.
    EXPECT_EQ(Parsed("3XE", dialogs), (FittingCountArray{0, 1, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Parsed("2f", dialogs), (FittingCountArray{2, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Parsed("", dialogs, &clean), FittingCountArray{});
    EXPECT_TRUE(clean);
    EXPECT_TRUE(dialogs.Empty());

    // The canonical text of what was typed.
    EXPECT_EQ(BuildFittingText(Parsed("3E2F", dialogs)), "2F3E");
    EXPECT_EQ(BuildFittingText(Parsed("10E", dialogs)), "10E");
    EXPECT_EQ(BuildFittingText(Parsed("1E2F", dialogs)), "2FE");
    EXPECT_EQ(BuildFittingText(Parsed("1E", dialogs)), "E");
}

TEST(FittingEntry, TrailingNumberIsReportedWithTheTrimmedNumber) {
    ScriptedDialogs dialogs;
    bool clean = true;
    EXPECT_EQ(Parsed("T2", dialogs, &clean), (FittingCountArray{0, 0, 0, 1, 0, 0, 0}));
    EXPECT_FALSE(clean);
    ASSERT_EQ(dialogs.All().size(), 1u);
    EXPECT_EQ(dialogs.LastTitle(), "No Fitting Type Entered");
    EXPECT_EQ(dialogs.LastText(),
              "You specified a number of 2 for the fitting quantity but you did not specify a "
              "fitting type.  Please check your fitting count to make sure it is correct.");

    ScriptedDialogs zeros;
    EXPECT_EQ(Parsed("3E007", zeros, &clean), (FittingCountArray{0, 3, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(clean);
    EXPECT_NE(zeros.LastText().find("a number of 7 for"), std::string::npos);
}

TEST(FittingEntry, CountsStopAtNinetyNineWithOneMessage) {
    ScriptedDialogs dialogs;
    bool clean = false;
    EXPECT_EQ(Parsed("60E50E", dialogs, &clean), (FittingCountArray{0, 99, 0, 0, 0, 0, 0}));
    EXPECT_TRUE(clean);
    ASSERT_EQ(dialogs.All().size(), 1u);
    EXPECT_EQ(dialogs.LastTitle(), "Too Many Fittings Entered");
    EXPECT_EQ(dialogs.LastText(),
              "You specified a combination of quantities of 90 Degree Elbows that exceeds the "
              "maximum quantity possible.  The number of fittings will be set to the maximum "
              "quantity of 99 fittings.");

    // After a first overflow the parse goes on; a second of the same kind ends it quietly.
    ScriptedDialogs more;
    EXPECT_EQ(Parsed("99C1C2F", more), (FittingCountArray{2, 0, 0, 0, 0, 0, 99}));
    EXPECT_EQ(Parsed("60T50T1T2F", more), (FittingCountArray{0, 0, 0, 99, 0, 0, 0}));
    ASSERT_EQ(more.All().size(), 2u);
    EXPECT_NE(more.All()[0].Text.find("of Check Valves that"), std::string::npos);
    EXPECT_NE(more.All()[1].Text.find("of Tees or Crosses that"), std::string::npos);

    // Ten digits make one quantity.
    ScriptedDialogs big;
    EXPECT_EQ(Parsed("9999999999B", big), (FittingCountArray{0, 0, 0, 0, 99, 0, 0}));
    EXPECT_EQ(big.All().size(), 1u);
}

TEST(FittingEntry, RunningSumWhileTyping) {
    const PipeLibrary library = DefaultLibrary();
    // Sch 10 wet, 2 in.: 45 degree elbow 2.46 ft, 90 degree elbow 6.15 ft.
    EXPECT_NEAR(FittingLengthFromText(library, {"2F3E", "4", "2"}, 0), 2 * 2.46 + 3 * 6.15, 1e-5);
    EXPECT_NEAR(FittingLengthFromText(library, {"E", "4", "2.0"}, 0), 6.15, 1e-6);
    // A device, no material, an empty text, diameter 0 or a size the material lacks: no sum.
    EXPECT_EQ(FittingLengthFromText(library, {"2F3E", "M", "2"}, 0), 0);
    EXPECT_EQ(FittingLengthFromText(library, {"2F3E", "", "2"}, 0), 0);
    EXPECT_EQ(FittingLengthFromText(library, {"2F3E", "51", "2"}, 0), 0);
    EXPECT_EQ(FittingLengthFromText(library, {"2F3E", "4.5", "2"}, 0), 0);
    EXPECT_EQ(FittingLengthFromText(library, {"", "4", "2"}, 0), 0);
    EXPECT_EQ(FittingLengthFromText(library, {"2F3E", "4", "0"}, 0), 0);
    EXPECT_EQ(FittingLengthFromText(library, {"2F3E", "4", "2.2"}, 0), 0);
    EXPECT_EQ(FittingLengthFromText(library, {"2F3E", "4", "1e300"}, 0), 0);
    // While typing the text is walked as it stands, at most 11 characters, with no cap at 99.
    EXPECT_NEAR(FittingLengthFromText(library, {"EEEEEEEEEEEE", "4", "2"}, 0), 11 * 6.15, 1e-4);
    EXPECT_NEAR(FittingLengthFromText(library, {"60E50E", "4", "2"}, 0), 110 * 6.15, 1e-3);

    // SI: millimetres typed, metres back; a diameter from the list is in inches already.
    EXPECT_NEAR(FittingLengthFromText(library, {"E", "4", "50.8"}, 1), 6.15 * 0.3048, 1e-6);
    EXPECT_EQ(FittingLengthFromText(library, {"E", "4", "51"}, 1), 0); // 2.01 in.
    EXPECT_EQ(FittingLengthFromText(library, {"E", "4", "2"}, 1), 0);
    EXPECT_NEAR(FittingLengthFromText(library, {"E", "4", "2", true}, 1), 6.15 * 0.3048, 1e-6);
}

TEST(FittingEntry, RunningSumAndStoredTotalAgree) {
    const PipeLibrary library = DefaultLibrary();
    ScriptedDialogs dialogs;
    Project project;
    for (const char* typed : {"2F3E", "3E2F", "T", "10E", "FELTBGC", "2T4C", "1E2F"}) {
        for (const char* diameter : {"1", "2", "4", "12", "3.5"}) {
            PipeRecord& row = project.PipeRecord[1];
            row.Material = 4;
            row.Diameter = static_cast<Single>(ToNumber(diameter));
            row.Length = 12.5f;
            row.NonStandardFitLength = 3.2f;
            row.FittingCounts = ParseFittingText(typed, dialogs).Counts;
            row.FittingText = BuildFittingText(row.FittingCounts);
            RecalcEquivLength(project, library, 1);
            const double typing = FittingLengthFromText(library, {typed, "4", diameter}, 0);
            EXPECT_EQ(row.TotalEquivLength,
                      RoundedEquivLength(row.Length, typing, row.NonStandardFitLength))
                << typed << " " << diameter;
        }
    }
    EXPECT_TRUE(dialogs.Empty());
}

TEST(FittingEntry, OldFittingLengthRoundsHalfToEven) {
    EXPECT_EQ(OldFittingLength(2.5f), 2);
    EXPECT_EQ(OldFittingLength(3.5f), 4);
    EXPECT_EQ(OldFittingLength(0.4f), 0);
    EXPECT_EQ(OldFittingLength(12.6f), 13);
    EXPECT_EQ(OldFittingLength(999.9f), 1000);
}

TEST(FittingEntry, MaterialTextNamesALibraryMaterial) {
    EXPECT_EQ(LibraryMaterialOfText("4"), 4);
    EXPECT_EQ(LibraryMaterialOfText(" 50 "), 50);
    EXPECT_EQ(LibraryMaterialOfText("51"), 0);
    EXPECT_EQ(LibraryMaterialOfText("0"), 0);
    EXPECT_EQ(LibraryMaterialOfText("P"), 0);
    EXPECT_EQ(LibraryMaterialOfText("2.5"), 0);
    EXPECT_EQ(LibraryMaterialOfText("1e300"), 0);
    EXPECT_EQ(LibraryMaterialOfText(""), 0);
}

} // namespace
} // namespace quench
