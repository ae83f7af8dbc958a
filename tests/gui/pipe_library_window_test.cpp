#include "core/formats.h"
#include "entry/library_pick_lists.h"
#include "gui/pipe_library_window.h"
#include "library/pipe_library_file.h"
#include "tests/gui/widget_input.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <fstream>

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::Choose;
using testing::DataDirectory;
using testing::ScratchDirectory;
using testing::ScriptedDialogs;
using testing::Type;

// The library that comes with the program, as a copy the test may write.
std::filesystem::path CopyOfLibrary(const ScratchDirectory& scratch) {
    const std::filesystem::path copy = PipeLibraryPath(scratch.Path());
    std::filesystem::copy_file(PipeLibraryPath(DataDirectory()), copy);
    return copy;
}

struct Size {
    const char* Nominal;
    Single Inner;
};

TEST(PipeLibraryWindow, MaterialWithThreeSizesIsFoundAfterReloading) {
    ScratchDirectory scratch;
    const std::filesystem::path file = CopyOfLibrary(scratch);
    PipeLibrary library = LoadPipeLibrary(file);
    const int number = PipeLibraryEditor::NextFreeMaterial(library);
    ASSERT_GT(number, 0);
    ScriptedDialogs dialogs;
    gui::PipeLibraryWindow window(library, dialogs, MeasureSystem::US);
    QSignalSpy saved(&window, &gui::PipeLibraryWindow::LibrarySaved);

    Choose(window.cboPipeDescription(), number - 1);
    ASSERT_EQ(window.Rules().MaterialNumber(), number);
    EXPECT_EQ(window.cboNominalDia()->count(), 0);
    Type(window.txtPipeName(), "Test CPVC");
    Type(window.txtPipeCValue(), "150");
    // Added out of order, they stand in ascending order.
    const Size sizes[] = {{"1.5", 1.598f}, {"1", 1.101f}, {"1.25", 1.394f}};
    for (const Size& size : sizes) {
        window.cboNominalDia()->setEditText(size.Nominal);
        window.Command("ToolAddNewDiameter");
        Type(window.txtInnerDia(), QString::number(size.Inner));
        for (int fitting = 0; fitting < LibraryFittingKinds; ++fitting) {
            Type(window.txtFitEqLen(fitting), QString::number(fitting + 1));
        }
    }
    EXPECT_EQ(window.cboNominalDia()->count(), 3);
    EXPECT_EQ(window.cboNominalDia()->itemText(0), "1.0");

    // A partial set of fitting lengths is refused and nothing is written.
    window.txtFitEqLen(3)->clear();
    QTest::keyClicks(window.txtFitEqLen(3), "0");
    window.Command("ToolSave");
    EXPECT_EQ(dialogs.LastTitle(), "Input Data Error");
    EXPECT_EQ(dialogs.LastText(), "All Fitting Equivalent Lengths Should Be Given For the Current "
                                  "Diameter.");
    EXPECT_FALSE(LoadPipeLibrary(file).Material(number).IsDefined());
    Type(window.txtFitEqLen(3), "4");

    dialogs.Script(Answer::Yes);
    window.Command("ToolSave");
    EXPECT_EQ(dialogs.LastTitle(), "Confirm Pipe Database Save");
    EXPECT_EQ(saved.count(), 1);
    EXPECT_TRUE(window.cboPipeDescription()->itemText(number - 1).endsWith("Test CPVC"));

    const PipeLibrary reloaded = LoadPipeLibrary(file);
    const PipeMaterialRecord& material = reloaded.Material(number);
    EXPECT_EQ(material.Description, "Test CPVC");
    EXPECT_EQ(material.CValue, 150);
    const Single nominals[] = {1.0f, 1.25f, 1.5f};
    const Single inners[] = {1.101f, 1.394f, 1.598f};
    for (int slot = 0; slot < 3; ++slot) {
        const PipeDiameterRecord& diameter = material.Diameters.at(slot);
        EXPECT_FLOAT_EQ(diameter.Nominal, nominals[slot]);
        EXPECT_FLOAT_EQ(diameter.Inner, inners[slot]);
        EXPECT_FLOAT_EQ(diameter.FitEqLen.at(6), 7.0f);
    }
    EXPECT_EQ(material.Diameters.at(3).Nominal, 0.0f);
    // The pipe table offers the sizes of the new material at once, after "0" for autosizing: its
    // library is the one saved.
    for (const PipeLibrary* offered : {static_cast<const PipeLibrary*>(&library), &reloaded}) {
        const PickList offeredSizes = PipeDiameterPickList(*offered, std::to_string(number));
        ASSERT_EQ(offeredSizes.Rows.size(), 4U);
        EXPECT_EQ(offeredSizes.Rows[1][0], "1.000");
        EXPECT_EQ(offeredSizes.Rows[3][1], "1.598");
    }
}

TEST(PipeLibraryWindow, UnitsConvertWhatIsShownAndCancelDiscards) {
    ScratchDirectory scratch;
    PipeLibrary library = LoadPipeLibrary(CopyOfLibrary(scratch));
    const PipeLibrary before = library;
    ScriptedDialogs dialogs;
    gui::PipeLibraryWindow window(library, dialogs, MeasureSystem::US);
    ASSERT_GE(window.Rules().DiameterSlot(), 0);
    const PipeDiameterRecord stored = *window.Rules().CurrentDiameter();
    EXPECT_EQ(window.txtInnerDia()->text().toStdString(), Format(stored.Inner, "##0.0##"));

    Choose(window.uomSystem(), 1);
    EXPECT_EQ(window.txtInnerDia()->text().toStdString(), Format(stored.Inner * 25.4, "##0.0##"));
    EXPECT_FALSE(window.Rules().HasChanges());
    EXPECT_EQ(*window.Rules().CurrentDiameter(), stored);

    // A value typed in millimetres is stored in inches and shown back in either unit.
    Type(window.txtInnerDia(), "30");
    Choose(window.uomSystem(), 0);
    EXPECT_NEAR(window.Rules().CurrentDiameter()->Inner, 30 / 25.4, 1e-5);
    EXPECT_EQ(window.txtInnerDia()->text().toStdString(), Format(30 / 25.4, "##0.0##"));
    EXPECT_TRUE(window.Rules().HasChanges());

    // A C value that is no number is refused with a message; the one held stays.
    const Integer cValue = window.Rules().Material().CValue;
    Type(window.txtPipeCValue(), "abc");
    window.Command("ToolCancel");
    EXPECT_EQ(dialogs.LastTitle(), "Input Data Error");
    EXPECT_EQ(window.txtPipeCValue()->text(), QString::number(cValue));

    EXPECT_FALSE(window.Rules().HasChanges());
    EXPECT_EQ(*window.Rules().CurrentDiameter(), stored);
    EXPECT_EQ(library.Materials, before.Materials);

    // Closing with edits asks; No keeps the screen and the edits, Yes lets both go.
    window.show();
    Type(window.txtPipeName(), "Renamed");
    dialogs.Script(Answer::No);
    window.reject();
    EXPECT_EQ(dialogs.LastTitle(), "Discard changes?");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.Rules().Material().Description, "Renamed");
    dialogs.Script(Answer::Yes);
    window.reject();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(library.Materials, before.Materials);
}

TEST(PipeLibraryWindow, DamagedOrMissingLibraryOpens) {
    ScratchDirectory scratch;
    const std::filesystem::path file = PipeLibraryPath(scratch.Path());
    {
        // A short file of bytes that read as huge, NaN and negative numbers.
        std::ofstream out(file, std::ios::binary);
        for (int byte = 0; byte < 2 * PipeMaterialRecordLength + 77; ++byte) {
            out.put(static_cast<char>(byte % 3 == 0 ? 0xFF : (byte * 37) % 256));
        }
    }
    for (const std::filesystem::path& path : {file, scratch / "missing" / "PIPE.DAT"}) {
        PipeLibrary library = LoadPipeLibrary(path);
        ScriptedDialogs dialogs;
        gui::PipeLibraryWindow window(library, dialogs, MeasureSystem::SI);
        EXPECT_EQ(window.cboPipeDescription()->count(), LibraryMaterials);
        for (int index = 0; index < LibraryMaterials; ++index) {
            Choose(window.cboPipeDescription(), index);
            EXPECT_EQ(window.Rules().MaterialNumber(), index + 1);
            for (int slot = 0; slot < window.cboNominalDia()->count(); ++slot) {
                Choose(window.cboNominalDia(), slot);
            }
        }
        EXPECT_FALSE(window.grab().isNull());
    }
}

} // namespace
} // namespace quench
