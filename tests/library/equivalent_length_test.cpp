#include "library/equivalent_length.h"
#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

// Material 1 has the sizes 1.25 and 2 in.; 2 in. has the fitting lengths 1, 2, 3, ... 7 ft.
PipeLibrary SmallLibrary() {
    PipeLibrary library;
    auto& material = library.Material(1);
    material.Description = "Test Pipe";
    material.CValue = 120;
    material.Diameters[0].Nominal = 1.25f;
    material.Diameters[0].Inner = 1.38f;
    material.Diameters[0].FitEqLen = {0.5f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f};
    material.Diameters[1].Nominal = 2;
    material.Diameters[1].Inner = 2.067f;
    material.Diameters[1].FitEqLen = {1, 2, 3, 4, 5, 6, 7};
    return library;
}

PipeRecord& Row(Project& project, Integer material, Single diameter, Single length,
                FittingCountArray counts, Single nonStandard) {
    PipeRecord& row = project.PipeRecord[1];
    row.Material = material;
    row.Diameter = diameter;
    row.Length = length;
    row.FittingCounts = counts;
    row.NonStandardFitLength = nonStandard;
    return row;
}

TEST(EquivalentLength, FittingSumOfATextAndASize) {
    const PipeLibrary library = SmallLibrary();
    // 2F3E with 45 degree elbows of 1 ft and 90 degree elbows of 2 ft: 2*1 + 3*2.
    EXPECT_DOUBLE_EQ(FittingSumOf(library, 1, 2.0f, "2F3E").value(), 8.0);
    EXPECT_DOUBLE_EQ(FittingSumOf(library, 1, 2.0f, "FELTBGC").value(), 28.0);
    EXPECT_DOUBLE_EQ(FittingSumOf(library, 1, 2.0f, "").value(), 0.0);
    EXPECT_DOUBLE_EQ(FittingSumOf(library, 1, 1.25f, "2T").value(), 1.0);
    // 1.5 in. is not a size of the material, and a device has no sizes: no fitting sum.
    EXPECT_FALSE(FittingSumOf(library, 1, 1.5f, "2F3E").has_value());
    EXPECT_FALSE(FittingSumOf(library, 51, 2.0f, "2F3E").has_value());
    EXPECT_FALSE(FittingSumOf(library, 2, 2.0f, "2F3E").has_value());
    // At most the first characters when a limit is given.
    EXPECT_DOUBLE_EQ(FittingSumOf(library, 1, 2.0f, "2F3E", 2).value(), 2.0);
}

TEST(EquivalentLength, RecalcSetsTheRoundedTotalOfTheRow) {
    const PipeLibrary library = SmallLibrary();
    Project project;
    // 10.5 ft + 2 elbows (2 ft) + one tee (4 ft) + 1.25 ft of other fittings.
    PipeRecord& row = Row(project, 1, 2.0f, 10.5f, {0, 2, 0, 1, 0, 0, 0}, 1.25f);
    RecalcEquivLength(project, library, 1);
    EXPECT_FLOAT_EQ(row.TotalEquivLength, 19.75f);

    // The counts decide, not the typed text.
    row.FittingText = "9C";
    RecalcEquivLength(project, library, 1);
    EXPECT_FLOAT_EQ(row.TotalEquivLength, 19.75f);

    // Rounded through "##0.0##": three decimals at most.
    row.Length = 10.12345f;
    RecalcEquivLength(project, library, 1);
    EXPECT_FLOAT_EQ(row.TotalEquivLength, 19.373f);

    // Devices, autosized rows, unknown sizes and not-given diameters: length and other fittings.
    for (auto [material, diameter] :
         {std::pair<Integer, Single>{54, 2.0f}, {1, 0.0f}, {1, 1.5f}, {1, NotGiven}, {0, 2.0f}}) {
        row.Material = material;
        row.Diameter = diameter;
        RecalcEquivLength(project, library, 1);
        EXPECT_FLOAT_EQ(row.TotalEquivLength, 11.373f) << material << " " << diameter;
    }

    // Rows outside the table are left alone.
    RecalcEquivLength(project, library, 0);
    RecalcEquivLength(project, library, MaxPipes + 1);
    EXPECT_EQ(project.PipeRecord[0].TotalEquivLength, 0.0f);
}

TEST(EquivalentLength, SIProjectsLookTheDiameterUpAsShown) {
    const PipeLibrary library = SmallLibrary();
    Project project;
    // A stored diameter a hair off the library's size, as a converted millimetre value can be.
    PipeRecord& row = Row(project, 1, 2.0000005f, 10.0f, {0, 0, 0, 0, 0, 0, 1}, 0);
    RecalcEquivLength(project, library, 1);
    EXPECT_FLOAT_EQ(row.TotalEquivLength, 10.0f); // US: the exact value, no such size

    project.UnitSystem = 1;
    RecalcEquivLength(project, library, 1);
    EXPECT_FLOAT_EQ(row.TotalEquivLength, 17.0f); // SI: "2.0" finds the 2 in. size

    EXPECT_EQ(LookupNominal(1.254f, 1), 1.25f);
    EXPECT_EQ(LookupNominal(1.254f, 0), 1.254f);
}

TEST(EquivalentLength, DefaultLibraryWorkedValues) {
    const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(testing::DataDirectory()));
    // Sch 10 wet 1 in.: tee 6.22, 90 degree elbow 2.49 (hand calculation of the table's source).
    EXPECT_NEAR(FittingSumOf(library, 4, 1.0f, "T2E").value(), 6.22 + 2 * 2.49, 1e-5);
    // Copper type L 1 in.: tee 6.75; Sch 40 dry 2 in.: gate 0.71, check 7.84.
    EXPECT_NEAR(FittingSumOf(library, 14, 1.0f, "T").value(), 6.75, 1e-6);
    EXPECT_NEAR(FittingSumOf(library, 2, 2.0f, "GC").value(), 0.71 + 7.84, 1e-5);
    // Ductile iron cement-lined 4 in.: 90 degree elbow 15.87.
    EXPECT_NEAR(FittingSumOf(library, 19, 4.0f, "E").value(), 15.87, 1e-5);

    Project project;
    PipeRecord& row = Row(project, 4, 2.0f, 12.0f, {0, 2, 0, 1, 0, 0, 0}, 0.5f);
    RecalcEquivLength(project, library, 1);
    EXPECT_FLOAT_EQ(row.TotalEquivLength, 12.0f + 2 * 6.15f + 12.31f + 0.5f);
}

} // namespace
} // namespace quench
