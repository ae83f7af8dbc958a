#include "library/material_tables.h"
#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::DataDirectory;
using testing::ScratchDirectory;

PipeDiameterRecord FullSize(Single nominal) {
    PipeDiameterRecord size;
    size.Nominal = nominal;
    size.Inner = nominal + 0.1f;
    size.FitEqLen = {1, 2, 3, 4, 5, 6, 7};
    return size;
}

TEST(MaterialTables, DefaultLibraryUsableSizes) {
    const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(DataDirectory()));
    MaterialTables tables;
    ASSERT_TRUE(BuildMaterialTables(library, tables));

    // Schedule 10 wet: every size from 3/4 to 12 in. lists all seven fitting lengths (the chart's
    // missing small valve figures are filled from the next listed size), so all are offered to
    // autosizing.
    EXPECT_EQ(tables.MaterialCValue[4], 120);
    ASSERT_EQ(tables.UsableDiameterCount[4], 14);
    const std::vector<Single> expected{0.75f, 1, 1.25f, 1.5f, 2, 2.5f, 3, 3.5f, 4, 5, 6, 8, 10, 12};
    for (int k = 0; k < 14; ++k) {
        EXPECT_EQ(tables.UsableDiameters[4][k], expected[static_cast<std::size_t>(k)]);
    }
    EXPECT_EQ(tables.UsableDiameters[4][14], 0.0f);
    EXPECT_EQ(tables.MaterialCValue[2], 100);
    EXPECT_EQ(tables.MaterialCValue[14], 150);
    EXPECT_EQ(tables.MaterialCValue[19], 140);
    // Ductile iron above 12 in. has no chart values.
    EXPECT_EQ(tables.UsableDiameters[19][tables.UsableDiameterCount[19] - 1], 12.0f);
    EXPECT_EQ(tables.UsableDiameterCount[30], 0);
    EXPECT_EQ(tables.MaterialCValue[30], 0);
}

TEST(MaterialTables, UsableSizesArePackedInFileOrder) {
    ScratchDirectory scratch;
    PipeLibrary library;
    auto& sizes = library.Material(7).Diameters;
    sizes[0] = FullSize(3);
    sizes[1] = FullSize(1); // file order, not sorted order
    sizes[2] = FullSize(4);
    sizes[2].FitEqLen[5] = 0; // one fitting length missing
    sizes[3] = FullSize(5);
    sizes[3].Inner = 0;
    sizes[5] = FullSize(6); // after an empty slot
    sizes[6] = FullSize(8);
    sizes[6].FitEqLen[0] = -1; // a negative length is no length
    library.Material(7).CValue = 130;
    library.File = scratch / "PIPE.DAT";
    ASSERT_TRUE(SavePipeLibrary(library, library.File).Saved);

    MaterialTables tables;
    ASSERT_TRUE(BuildMaterialTables(library, tables));
    EXPECT_EQ(tables.MaterialCValue[7], 130);
    ASSERT_EQ(tables.UsableDiameterCount[7], 3);
    EXPECT_EQ(tables.UsableDiameters[7][0], 3.0f);
    EXPECT_EQ(tables.UsableDiameters[7][1], 1.0f);
    EXPECT_EQ(tables.UsableDiameters[7][2], 6.0f);
    EXPECT_FALSE(IsUsableDiameter(PipeDiameterRecord{}));
}

TEST(MaterialTables, MissingFileIsReportedWhenTheTablesAreBuilt) {
    ScratchDirectory scratch;
    PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(DataDirectory()));
    library.File = scratch / "PIPE.DAT"; // the file went away after start-up
    MaterialTables tables;
    EXPECT_FALSE(BuildMaterialTables(library, tables));
    EXPECT_EQ(tables.UsableDiameterCount[4], 14); // built all the same

    EXPECT_FALSE(BuildMaterialTables(PipeLibrary{}, tables));
    EXPECT_EQ(tables.UsableDiameterCount[4], 0);
}

TEST(MaterialTables, SizeLookUpComparesSingles) {
    PipeLibrary library;
    auto& sizes = library.Material(3).Diameters;
    sizes[0] = FullSize(1.25f);
    sizes[1] = FullSize(2);
    sizes[1].Inner = 2.157f;
    EXPECT_EQ(FindDiameterSlot(library, 3, 1.25f), 0);
    EXPECT_EQ(FindDiameterSlot(library, 3, 2.0f), 1);
    EXPECT_EQ(FindDiameterSlot(library, 3, 1.5f), -1);
    // A Double that rounds to the same Single finds the size; one that does not, misses it.
    EXPECT_EQ(FindDiameterSlot(library, 3, static_cast<Single>(2.00000001)), 1);
    EXPECT_EQ(FindDiameterSlot(library, 3, static_cast<Single>(2.000001)), -1);
    // Empty slots are never a match, nor are devices or material 0.
    EXPECT_EQ(FindDiameterSlot(library, 3, 0.0f), -1);
    EXPECT_EQ(FindDiameterSlot(library, 3, -4.0f), -1);
    EXPECT_EQ(FindDiameterSlot(library, 0, 2.0f), -1);
    EXPECT_EQ(FindDiameterSlot(library, 51, 2.0f), -1);

    EXPECT_EQ(FindDiameter(library, 3, 2.0f), &sizes[1]);
    EXPECT_EQ(FindDiameter(library, 3, 3.0f), nullptr);
    EXPECT_EQ(InsideDiameterOf(library, 3, 2.0f), 2.157f);
    EXPECT_EQ(InsideDiameterOf(library, 3, 1.5f), 1.5f);
    EXPECT_EQ(InsideDiameterOf(library, 52, 1.5f), 1.5f);
}

} // namespace
} // namespace quench
