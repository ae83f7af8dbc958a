#include "entry/library_pick_lists.h"
#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using Row = std::vector<std::string>;

PipeLibrary DefaultLibrary() {
    return LoadPipeLibrary(PipeLibraryPath(testing::DataDirectory()));
}

TEST(LibraryPickLists, MaterialsWithAndWithoutDevices) {
    PipeLibrary library = DefaultLibrary();
    Project project;
    project.AlarmDeviceName = "Deluge Valve";
    const PickList list = PipeMaterialPickList(library, project, true);
    EXPECT_EQ(list.Title, "Pipe Material");
    EXPECT_EQ(list.Headings, (Row{"Ref Number", "Material"}));
    ASSERT_EQ(list.Rows.size(), 4u + 26u);
    EXPECT_EQ(list.Rows[0], (Row{"M", "Meter"}));
    EXPECT_EQ(list.Rows[1], (Row{"B", "Back Flow Preventer"}));
    EXPECT_EQ(list.Rows[2], (Row{"A", "Deluge Valve"}));
    EXPECT_EQ(list.Rows[3], (Row{"P", "Fire Pump"}));
    EXPECT_EQ(list.Rows[4 + 3], (Row{"4", "Sch 10 Steel Wet"}));
    EXPECT_EQ(list.Rows.back(), (Row{"26", "HDPE DIPS DR9"}));

    // A material defined further on: the free slots before it read "Not Yet Defined".
    library.Material(30).Description = "Special";
    const PickList defaults = DefaultPipeMaterialPickList(library);
    EXPECT_EQ(defaults.Title, "Default Pipe Material");
    ASSERT_EQ(defaults.Rows.size(), 30u);
    EXPECT_EQ(defaults.Rows[0], (Row{"1", "Sch 40 Steel Wet"}));
    EXPECT_EQ(defaults.Rows[26], (Row{"27", "Not Yet Defined"}));
    EXPECT_EQ(defaults.Rows[29], (Row{"30", "Special"}));

    const PickList copies = CopyPipePickList(library);
    EXPECT_EQ(copies.Title, "Copy Pipe");
    ASSERT_EQ(copies.Rows.size(), 27u);
    EXPECT_EQ(copies.Rows.back(), (Row{"30", "Special"}));

    EXPECT_TRUE(PipeMaterialPickList(PipeLibrary{}, project, false).Rows.empty());
}

TEST(LibraryPickLists, DiametersOfTheRowsMaterial) {
    const PipeLibrary library = DefaultLibrary();
    const PickList list = PipeDiameterPickList(library, "4");
    EXPECT_EQ(list.Title, "Pipe Diameter");
    EXPECT_EQ(list.Headings, (Row{"Nominal", "Inner", "Outer", "Cost", "Labor"}));
    ASSERT_EQ(list.Rows.size(), 15u);
    EXPECT_EQ(list.Rows[0][0], "0"); // autosizing first
    EXPECT_EQ(list.Rows[1], (Row{"0.750", "0.884", "1.050", "$0.00", "0.000"}));
    EXPECT_EQ(list.Rows[5], (Row{"2.000", "2.157", "2.375", "$0.00", "0.000"}));
    EXPECT_TRUE(list.Note.empty());

    for (const char* material : {"", "M", "0", "60"}) {
        const PickList none = PipeDiameterPickList(library, material);
        EXPECT_TRUE(none.Rows.empty()) << material;
        EXPECT_EQ(none.Note,
                  "Please choose a pipe material to see a list of available pipe diameters.");
    }
}

TEST(LibraryPickLists, AllDiametersAndFittings) {
    const PickList sizes = AvailableDiametersPickList(DefaultLibrary());
    EXPECT_EQ(sizes.Title, "Available Diameters");
    EXPECT_EQ(sizes.Headings, Row{"Diameter"});
    // Half an inch to 24 in.: the 15 steel sizes and 14, 16, 18, 20, 24 of iron and HDPE.
    ASSERT_EQ(sizes.Rows.size(), 20u);
    EXPECT_EQ(sizes.Rows.front(), Row{"0.5"});
    EXPECT_EQ(sizes.Rows[3], Row{"1.25"});
    EXPECT_EQ(sizes.Rows.back(), Row{"24.0"});

    const PickList fittings = StandardFittingPickList();
    EXPECT_EQ(fittings.Title, "Standard Fitting");
    EXPECT_EQ(fittings.EntryLabel, "Standard Fitting:");
    ASSERT_EQ(fittings.Rows.size(), 7u);
    EXPECT_EQ(fittings.Rows[0], (Row{"F", "45 Degree Elbow"}));
    EXPECT_EQ(fittings.Rows[6], (Row{"C", "Check Valve"}));
}

TEST(LibraryPickLists, HelpKeysChooseTheirList) {
    const PipeLibrary library = DefaultLibrary();
    const Project project;
    const auto title = [&](const char* key) {
        const auto list = LibraryPickList(key, library, project, "4");
        return list ? list->Title : std::string("none");
    };
    EXPECT_EQ(title("EEPipeDataTreeCrossPipeMaterial"), "Pipe Material");
    EXPECT_EQ(title("BranchLinePipeDiameter"), "Pipe Diameter");
    EXPECT_EQ(title("BranchLineStandardFitting"), "Standard Fitting");
    EXPECT_EQ(title("CalculationDataMaxPipeSizingConstraintForTypeGroup"), "Available Diameters");
    EXPECT_EQ(title("GPDDefaultPipeMaterial"), "Default Pipe Material");
    EXPECT_EQ(title("EEPipeLibraryCopyPipe"), "Copy Pipe");
    EXPECT_EQ(title("GPDHazardDescription"), "none");
    // Only the pipe screen's own material field lists the devices.
    EXPECT_EQ(LibraryPickList("EEPipeDataPipeMaterial", library, project, "")->Rows[0][0], "M");
    EXPECT_EQ(LibraryPickList("GlobalNewMaterial", library, project, "")->Rows[0][0], "1");
}

} // namespace
} // namespace quench
