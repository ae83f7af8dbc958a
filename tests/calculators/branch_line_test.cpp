#include "calculators/branch_line.h"
#include "core/formats.h"
#include "library/pipe_library_file.h"

#include <cmath>
#include <filesystem>

#include <gtest/gtest.h>

namespace quench {
namespace {

// Material 3: C 120 with a 1 in. size (inner 1.049 in.) whose elbow is 2 ft and tee 5 ft, and a
// 1.25 in. size (inner 1.380 in.).
PipeLibrary SmallLibrary() {
    PipeLibrary library;
    PipeMaterialRecord& material = library.Material(3);
    material.Description = "Schedule 40";
    material.CValue = 120;
    material.Diameters[0].Nominal = 1;
    material.Diameters[0].Inner = 1.049f;
    material.Diameters[0].FitEqLen = {1, 2, 2, 5, 6, 1, 5};
    material.Diameters[1].Nominal = 1.25f;
    material.Diameters[1].Inner = 1.38f;
    material.Diameters[1].FitEqLen = {1, 3, 2, 6, 6, 1, 7};
    return library;
}

// The mean over 7, 10, 15 and 20 psi of the K seen from the start of the stretch, worked out
// directly from the friction formula.
double ExpectedK(double k, double cValue, double inner, double length) {
    double sum = 0;
    for (double p : {7.0, 10.0, 15.0, 20.0}) {
        const double q = k * std::sqrt(p);
        const double friction = 4.52 * std::pow(q / cValue, 1.85) / std::pow(inner, 4.87);
        sum += q / std::sqrt(p + friction * length);
    }
    return sum / 4;
}

TEST(BranchLineKFactor, NoLengthGivesTheSprinklersOwnK) {
    const PipeLibrary library = SmallLibrary();
    EXPECT_NEAR(BranchLineKFactor(library, 3, 1, 0, "", 5.6), 5.6, 1e-12);
    EXPECT_NEAR(BranchLineKFactor(library, 3, 1.25, 0, "", 8), 8, 1e-12);
}

TEST(BranchLineKFactor, PipeAndFittingsLowerTheKByTheFrictionOfTheStretch) {
    const PipeLibrary library = SmallLibrary();
    const double ten = BranchLineKFactor(library, 3, 1, 10, "", 5.6);
    EXPECT_NEAR(ten, ExpectedK(5.6, 120, 1.049f, 10), 1e-12);
    const double twenty = BranchLineKFactor(library, 3, 1, 20, "", 5.6);
    EXPECT_LT(twenty, ten);
    EXPECT_LT(ten, 5.6);
    // "2ET": two elbows of 2 ft and a tee of 5 ft add 9 ft of the size's own lengths.
    EXPECT_NEAR(BranchLineKFactor(library, 3, 1, 10, "2ET", 5.6), ExpectedK(5.6, 120, 1.049f, 19),
                1e-12);
    // A larger pipe loses less.
    EXPECT_GT(BranchLineKFactor(library, 3, 1.25, 10, "", 5.6), ten);
}

TEST(BranchLineKFactor, TheDiameterMatchesOnThreeDecimals) {
    const PipeLibrary library = SmallLibrary();
    const double exact = BranchLineKFactor(library, 3, 1.25, 12, "", 5.6);
    EXPECT_DOUBLE_EQ(BranchLineKFactor(library, 3, 1.2501, 12, "", 5.6), exact);
    EXPECT_EQ(BranchLineKFactor(library, 3, 1.251, 12, "", 5.6), 0);
    EXPECT_EQ(BranchLineKFactor(library, 3, 1.5, 12, "", 5.6), 0);
    EXPECT_EQ(BranchLineKFactor(library, 4, 1, 12, "", 5.6), 0); // an empty material
}

TEST(BranchLineScreen, EmptiesTheResultWhereTheTriggerSays) {
    const PipeLibrary library = SmallLibrary();
    BranchLineFields fields;
    fields.Material = 3;
    fields.Diameter = 1;
    fields.Length = 10;
    fields.SprinklerKFactor = 5.6;
    EXPECT_NEAR(CalculateBranchLine(library, fields).value(), ExpectedK(5.6, 120, 1.049f, 10),
                1e-12);

    auto emptied = [&](auto change) {
        BranchLineFields changed = fields;
        change(changed);
        return BranchLineResultText(library, changed).empty();
    };
    EXPECT_FALSE(emptied([](BranchLineFields&) {}));
    EXPECT_TRUE(emptied([](BranchLineFields& f) { f.Diameter = 0; }));
    EXPECT_TRUE(emptied([](BranchLineFields& f) { f.Diameter = 1.5; }));
    EXPECT_TRUE(emptied([](BranchLineFields& f) { f.Length = 0; }));
    EXPECT_TRUE(emptied([](BranchLineFields& f) { f.SprinklerKFactor = 0; }));
    EXPECT_TRUE(emptied([](BranchLineFields& f) { f.Material = 0; }));
    EXPECT_TRUE(emptied([](BranchLineFields& f) { f.Material = 51; }));
    // Non-standard fittings alone make a length.
    EXPECT_FALSE(emptied([](BranchLineFields& f) {
        f.Length = 0;
        f.NonStandardFittings = 4;
    }));
}

TEST(BranchLineScreen, SiFieldsAreConvertedAtTheEdge) {
    const PipeLibrary library = SmallLibrary();
    BranchLineFields us;
    us.Material = 3;
    us.Diameter = 1;
    us.Length = 10;
    us.StandardFittings = "E";
    us.NonStandardFittings = 2.5;
    us.SprinklerKFactor = 5.6;
    BranchLineFields si = us;
    si.Units = MeasureSystem::SI;
    si.Diameter = 25.4;
    si.Length = 3.048;
    si.NonStandardFittings = 0.762;
    si.SprinklerKFactor = 5.6 * 14.4;
    EXPECT_NEAR(CalculateBranchLine(library, si).value(), CalculateBranchLine(library, us).value(),
                1e-9);
    EXPECT_EQ(BranchLineResultText(library, us),
              Format(CalculateBranchLine(library, us).value(), "0.0#"));
}

TEST(BranchLineKFactor, TheShippedLibraryGivesALowerKForSchedule40) {
    const auto file = PipeLibraryPath(QUENCH_DATA_DIR);
    if (!std::filesystem::exists(file)) {
        GTEST_SKIP() << "no built library at " << file;
    }
    const PipeLibrary library = LoadPipeLibrary(file);
    const double k = BranchLineKFactor(library, 1, 1, 12, "", 5.6);
    ASSERT_GT(k, 0);
    EXPECT_LT(k, 5.6);
    EXPECT_GT(k, 4);
}

} // namespace
} // namespace quench
