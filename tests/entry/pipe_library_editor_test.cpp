#include "entry/pipe_library_editor.h"
#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <fstream>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScratchDirectory;
using testing::ScriptedDialogs;

// A copy of the default library in a scratch directory, loaded from there.
class PipeLibraryEditorTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::copy_file(PipeLibraryPath(testing::DataDirectory()), File());
        library_ = LoadPipeLibrary(File());
        original_ = library_;
    }

    std::filesystem::path File() const { return PipeLibraryPath(scratch_.Path()); }

    static PipeDiameterRecord FullData(Single inner) {
        PipeDiameterRecord data;
        data.Inner = inner;
        data.Outer = inner + 0.2f;
        data.FitEqLen = {1, 2, 3, 4, 5, 6, 7};
        return data;
    }

    static std::vector<Single> Nominals(const PipeMaterialRecord& material) {
        std::vector<Single> nominals;
        for (const auto& size : material.Diameters) {
            if (size.Nominal != 0) {
                nominals.push_back(size.Nominal);
            }
        }
        return nominals;
    }

    ScratchDirectory scratch_;
    PipeLibrary library_;
    PipeLibrary original_;
    ScriptedDialogs dialogs_;
};

TEST_F(PipeLibraryEditorTest, EditingSessionRoundTripsThroughTheFile) {
    PipeLibraryEditor editor(library_, dialogs_);
    ASSERT_TRUE(editor.ShowMaterial(4));
    ASSERT_EQ(editor.DiameterCount(), 14);

    // A fifteenth diameter goes in at the end; a sixteenth, once confirmed, pushes the largest
    // out. Declined, nothing changes.
    ASSERT_TRUE(editor.AddDiameter("14"));
    EXPECT_EQ(editor.DiameterCount(), 15);
    EXPECT_EQ(editor.DiameterSlot(), 14);
    dialogs_.Script(Answer::No);
    EXPECT_FALSE(editor.AddDiameter("0.5"));
    EXPECT_EQ(dialogs_.LastTitle(), "Maximum number of diameters reached");
    EXPECT_EQ(dialogs_.LastText(),
              "The maximum number of pipe diameters allowed for a given pipe type is 15.  If you "
              "add another diameter here, the largest diameter for the current pipe type will be "
              "erased to make room.  Are you sure you want to continue?");
    EXPECT_EQ(editor.DiameterCount(), 15);
    dialogs_.Script(Answer::Yes);
    ASSERT_TRUE(editor.AddDiameter("0.5"));
    EXPECT_EQ(editor.DiameterSlot(), 0);
    EXPECT_EQ(Nominals(editor.Material()).front(), 0.5f);
    EXPECT_EQ(Nominals(editor.Material()).back(), 12.0f);

    editor.SetDiameterData(FullData(0.622f));
    EXPECT_EQ(editor.CurrentDiameter()->Nominal, 0.5f); // the nominal stays
    ASSERT_TRUE(editor.Save());
    EXPECT_EQ(dialogs_.LastTitle(), "Confirm Pipe Database Save");
    EXPECT_EQ(dialogs_.LastText(), "Do you really want to update pipe database?");
    EXPECT_FALSE(editor.HasChanges());

    // Remove 3.5 in.: the list closes up and the next diameter is shown.
    ASSERT_TRUE(editor.ShowDiameter(8));
    ASSERT_EQ(editor.CurrentDiameter()->Nominal, 3.5f);
    ASSERT_TRUE(editor.RemoveDiameter());
    EXPECT_EQ(editor.CurrentDiameter()->Nominal, 4.0f);
    EXPECT_EQ(editor.DiameterCount(), 14);
    ASSERT_TRUE(editor.Save());

    // Copy Sch 40 wet into the first free slot: a name is needed first.
    const int free = PipeLibraryEditor::NextFreeMaterial(library_);
    ASSERT_EQ(free, 27);
    ASSERT_TRUE(editor.ShowMaterial(free));
    EXPECT_EQ(editor.DiameterSlot(), -1);
    EXPECT_FALSE(editor.CopyFrom(1));
    EXPECT_EQ(dialogs_.LastText(), "You need to enter a name for the new pipe before you can "
                                   "copy from another pipe type.");
    editor.SetDescription("Sch 40 Steel Wet, copied");
    editor.SetCValue(120);
    ASSERT_TRUE(editor.CopyFrom(1));
    EXPECT_EQ(editor.DiameterCount(), 15);
    // A size shown without its 45 degree elbow cannot be saved.
    PipeDiameterRecord lacking = *editor.CurrentDiameter();
    const Single elbow = lacking.FitEqLen[0];
    lacking.FitEqLen[0] = 0;
    editor.SetDiameterData(lacking);
    const auto shown = dialogs_.All().size();
    EXPECT_FALSE(editor.Save());
    EXPECT_EQ(dialogs_.All().size(), shown + 1);
    EXPECT_EQ(dialogs_.LastTitle(), "Input Data Error");
    EXPECT_EQ(dialogs_.LastText(),
              "All Fitting Equivalent Lengths Should Be Given For the Current Diameter.");
    // Leaving the size discards the edit, on a Yes: the copy is whole again.
    dialogs_.Script(Answer::Yes);
    ASSERT_TRUE(editor.ShowDiameter(5));
    EXPECT_EQ(editor.CurrentDiameter()->FitEqLen[0],
              original_.Material(1).Diameters[5].FitEqLen[0]);
    ASSERT_TRUE(editor.ShowDiameter(0));
    EXPECT_EQ(editor.CurrentDiameter()->FitEqLen[0], elbow);
    ASSERT_TRUE(editor.Save());
    EXPECT_EQ(PipeLibraryEditor::NextFreeMaterial(library_), 28);

    // The file holds the session, and nothing else changed.
    const PipeLibrary reread = LoadPipeLibrary(File());
    EXPECT_EQ(reread.Materials, library_.Materials);
    const auto& steel = reread.Material(4);
    EXPECT_EQ(Nominals(steel),
              (std::vector<Single>{0.5f, 0.75f, 1, 1.25f, 1.5f, 2, 2.5f, 3, 4, 5, 6, 8, 10, 12}));
    EXPECT_EQ(steel.Diameters[0].Inner, 0.622f);
    EXPECT_EQ(steel.Diameters[0].FitEqLen[6], 7.0f);
    EXPECT_EQ(steel.Diameters[8], original_.Material(4).Diameters[8]); // 4 in. as it was
    const auto& copy = reread.Material(27);
    EXPECT_EQ(copy.Description, "Sch 40 Steel Wet, copied");
    EXPECT_EQ(copy.CValue, 120);
    EXPECT_EQ(copy.Diameters, original_.Material(1).Diameters);
    for (int number = 1; number <= LibraryMaterials; ++number) {
        if (number != 4 && number != 27) {
            EXPECT_EQ(reread.Material(number), original_.Material(number)) << number;
        }
    }
}

TEST_F(PipeLibraryEditorTest, SaveChecksInOrderAndWritesOnlyWhenConfirmed) {
    PipeLibraryEditor editor(library_, dialogs_);
    ASSERT_TRUE(editor.ShowMaterial(4));
    ASSERT_TRUE(editor.ShowDiameter(4)); // 2 in.
    PipeDiameterRecord data = *editor.CurrentDiameter();
    data.Inner = 0;
    data.FitEqLen[2] = 0;
    editor.SetDiameterData(data);
    EXPECT_FALSE(editor.Save());
    EXPECT_EQ(dialogs_.LastText(),
              "All Fitting Equivalent Lengths Should Be Given For the Current Diameter.");
    data.FitEqLen = {};
    editor.SetDiameterData(data);
    EXPECT_FALSE(editor.Save());
    EXPECT_EQ(dialogs_.LastText(), "An inner diameter must be entered for this pipe diameter.");
    EXPECT_EQ(dialogs_.LastTitle(), "Input Data Error");
    EXPECT_FALSE(dialogs_.All().back().WasQuestion);

    // A material whose diameters have no fitting lengths at all.
    EXPECT_FALSE(editor.ShowMaterial(30)); // the default answer keeps the edits
    dialogs_.Script(Answer::Yes);
    ASSERT_TRUE(editor.ShowMaterial(30));
    editor.SetDescription("Bare");
    ASSERT_TRUE(editor.AddDiameter("2"));
    editor.SetDiameterData(PipeDiameterRecord{0, 2.1f});
    EXPECT_FALSE(editor.Save());
    EXPECT_EQ(dialogs_.LastText(),
              "At least one diameter with fitting data should be provided for this pipe.");

    // Declining the confirmation writes nothing.
    editor.SetDiameterData(FullData(2.1f));
    dialogs_.Script(Answer::No);
    EXPECT_FALSE(editor.Save());
    EXPECT_TRUE(editor.HasChanges());
    EXPECT_FALSE(library_.Material(30).IsDefined());
    EXPECT_FALSE(LoadPipeLibrary(File()).Material(30).IsDefined());
    ASSERT_TRUE(editor.Save());
    EXPECT_EQ(LoadPipeLibrary(File()).Material(30).Description, "Bare");
}

TEST_F(PipeLibraryEditorTest, MovingAwayFromEditsAsksToDiscardThem) {
    PipeLibraryEditor editor(library_, dialogs_);
    ASSERT_TRUE(editor.ShowMaterial(4));
    PipeDiameterRecord data = *editor.CurrentDiameter();
    data.Weight = 99;
    editor.SetDiameterData(data);

    dialogs_.Script(Answer::No);
    EXPECT_FALSE(editor.ShowDiameter(3));
    EXPECT_EQ(dialogs_.LastTitle(), "Discard changes?");
    EXPECT_EQ(dialogs_.LastText(),
              "Data for the last specified pipe diameter has been changed.  Do you really want "
              "to discard changes and view this new pipe diameter?");
    EXPECT_EQ(editor.DiameterSlot(), 0);
    EXPECT_EQ(editor.CurrentDiameter()->Weight, 99.0f);
    dialogs_.Script(Answer::Yes);
    EXPECT_TRUE(editor.ShowDiameter(3));
    EXPECT_EQ(editor.Material().Diameters[0].Weight, 0.86f); // undone
    EXPECT_FALSE(editor.HasChanges());
    EXPECT_TRUE(editor.ShowDiameter(0)); // nothing to lose: no question
    const auto questions = dialogs_.All().size();

    editor.SetDescription("Renamed");
    EXPECT_FALSE(editor.ShowMaterial(5)); // the default answer keeps the edits
    EXPECT_EQ(dialogs_.All().size(), questions + 1);
    EXPECT_EQ(dialogs_.LastText(),
              "Data for the last specified pipe material has been changed.  Do you really want "
              "to discard changes and view this new pipe material?");
    EXPECT_EQ(editor.MaterialNumber(), 4);
    dialogs_.Script(Answer::Yes);
    EXPECT_TRUE(editor.ShowMaterial(5));
    EXPECT_EQ(editor.Material().Description, "Sch 5 Steel Wet");
    EXPECT_EQ(library_.Material(4).Description, "Sch 10 Steel Wet");
    EXPECT_FALSE(editor.ShowMaterial(51));

    // Cancel puts the material back as the library holds it.
    editor.SetCValue(77);
    editor.Cancel();
    EXPECT_EQ(editor.Material(), library_.Material(5));
    EXPECT_FALSE(editor.HasChanges());
}

TEST_F(PipeLibraryEditorTest, NewDiameterTextAndFieldLimits) {
    PipeLibraryEditor editor(library_, dialogs_);
    ASSERT_TRUE(editor.ShowMaterial(4));
    EXPECT_FALSE(editor.AddDiameter("  "));
    EXPECT_EQ(dialogs_.LastText(),
              "You must enter a value for the new pipe diameter before you can add it to the pipe "
              "database.  Please enter this diameter or cancel.");
    for (const char* text : {"abc", "2x", "-2", "0", "40"}) {
        EXPECT_FALSE(editor.AddDiameter(text)) << text;
        EXPECT_EQ(dialogs_.LastText(),
                  "You must enter a numeric value for a new pipe diameter.  Please enter this "
                  "diameter or cancel.");
    }
    // A diameter the material has is shown, not added twice.
    EXPECT_FALSE(editor.AddDiameter("2.5"));
    EXPECT_EQ(editor.CurrentDiameter()->Nominal, 2.5f);
    EXPECT_EQ(editor.DiameterCount(), 14);
    EXPECT_FALSE(editor.HasChanges());
    ASSERT_TRUE(editor.AddDiameter("2.25"));
    EXPECT_EQ(editor.DiameterSlot(), 5);

    // The C value field: below its minimum it is set to the least whole C.
    editor.SetCValue(0);
    editor.LeaveCValueField();
    EXPECT_EQ(dialogs_.LastText(),
              "Value is too low.  Entry has been set to minimum allowed value.");
    EXPECT_EQ(editor.Material().CValue, 1);

    // In SI the new diameter is typed in millimetres and kept to two decimals of an inch.
    PipeLibraryEditor metric(library_, dialogs_, 1);
    ASSERT_TRUE(metric.ShowMaterial(4));
    EXPECT_FALSE(metric.AddDiameter("50.8")); // 2 in. is there
    EXPECT_EQ(metric.CurrentDiameter()->Nominal, 2.0f);
    ASSERT_TRUE(metric.AddDiameter("60"));
    EXPECT_EQ(metric.CurrentDiameter()->Nominal, 2.36f);

    // Removing every diameter leaves none shown.
    PipeLibraryEditor emptying(library_, dialogs_);
    ASSERT_TRUE(emptying.ShowMaterial(22));
    while (emptying.RemoveDiameter()) {
    }
    EXPECT_EQ(emptying.DiameterCount(), 0);
    EXPECT_EQ(emptying.DiameterSlot(), -1);
    EXPECT_EQ(emptying.CurrentDiameter(), nullptr);
}

TEST_F(PipeLibraryEditorTest, AFailedWriteKeepsTheEditsAndTheLibrary) {
    std::ofstream(scratch_ / "taken") << "a file, not a folder";
    library_.File = PipeLibraryPath(scratch_ / "taken");
    PipeLibraryEditor editor(library_, dialogs_);
    ASSERT_TRUE(editor.ShowMaterial(4));
    ASSERT_TRUE(editor.ShowDiameter(4)); // 2 in., complete
    editor.SetCValue(125);
    EXPECT_FALSE(editor.Save());
    EXPECT_EQ(dialogs_.All().back().Style, MessageStyle::Critical);
    EXPECT_NE(dialogs_.LastText().find("could not be saved"), std::string::npos);
    EXPECT_TRUE(editor.HasChanges());
    EXPECT_EQ(editor.Material().CValue, 125);
    EXPECT_EQ(library_.Material(4).CValue, 120);
}

} // namespace
} // namespace quench
