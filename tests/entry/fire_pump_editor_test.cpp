#include "entry/fire_pump_editor.h"
#include "library/pump_database.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScratchDirectory;
using testing::ScriptedDialogs;

const char* const NotValidText =
    "You must specify at least 3 pump curve points to produce a usable pump curve.  Do you want "
    "to stay and enter a pump curve?";
const char* const NotCalculatedText =
    "You must press the Calculate button to calculate a pump curve based on the entered data.  If "
    "you do not then the program cannot use your data in the results.  Do you want to stay and "
    "calculate this pump curve?";

PumpRecord Pump(const std::string& name, std::initializer_list<CurvePoint> points) {
    PumpRecord record = BlankPumpRecord(name);
    std::size_t slot = 0;
    for (const CurvePoint& point : points) {
        record.Flow[slot] = point.Flow;
        record.Pressure[slot] = point.Pressure;
        ++slot;
    }
    return record;
}

// A database of three pumps in a scratch directory, and an editor on it.
struct PumpScreen {
    PumpScreen() {
        PumpRecord feet = Pump("IN FEET", {{0, 300}, {500, 280}, {1000, 230}});
        feet.FeetOfHead = 1;
        const bool saved = SavePumpDatabase(
            database,
            {Pump("PARABOLA", {{0, 120}, {500, 95}, {1000, 20}}),
             Pump("FIVE POINTS", {{0, 118}, {250, 112}, {500, 100}, {750, 78}, {875, 62}}), feet});
        EXPECT_TRUE(saved);
        editor.Open(project);
    }

    void Type(int point, const std::string& flow, const std::string& pressure) {
        editor.SetFlowText(point, flow);
        editor.SetPressureText(point, pressure);
    }

    ScratchDirectory scratch;
    std::filesystem::path database = scratch / "Pump.Dat";
    ScriptedDialogs dialogs;
    Project project;
    FirePumpEditor editor{database, dialogs};
};

TEST(FirePumpEditor, ANewProjectOpensWithEmptyFieldsAndTheList) {
    PumpScreen screen;
    EXPECT_EQ(screen.editor.Pumps().size(), 3u);
    EXPECT_EQ(screen.editor.Pumps()[1].Name, "FIVE POINTS");
    EXPECT_EQ(screen.editor.CurrentPump(), 0);
    for (int point = 0; point < 5; ++point) {
        EXPECT_EQ(screen.editor.FlowText(point), ""); // a reset project holds zeros: no points
        EXPECT_EQ(screen.editor.PressureText(point), "");
    }
    EXPECT_FALSE(screen.editor.IsCalculated());
    EXPECT_EQ(screen.editor.CurveText(), "");
    EXPECT_TRUE(screen.dialogs.Empty());
}

TEST(FirePumpEditor, CalculateFitsTheGivenPairsOrSaysWhyNot) {
    PumpScreen screen;
    FirePumpEditor& editor = screen.editor;
    screen.Type(0, "1000", "20");
    screen.Type(2, "0", "120");
    editor.SetFlowText(3, "500"); // a flow without its pressure is no point
    EXPECT_FALSE(editor.Calculate());
    EXPECT_EQ(screen.dialogs.LastText(), "You must specify at least 3 pump curve points.");
    EXPECT_FALSE(editor.IsCalculated());

    editor.SetPressureText(3, "95");
    ASSERT_TRUE(editor.Calculate());
    EXPECT_TRUE(editor.IsCalculated());
    EXPECT_EQ(editor.CurveText(), "Head = 120 + 0Q + -1.00E-04Q^2");
    EXPECT_DOUBLE_EQ(editor.Coefficients()[2], -0.0001);

    screen.Type(4, "500", "90");
    EXPECT_FALSE(editor.IsCalculated()); // an edit makes the curve stale
    EXPECT_EQ(editor.CurveText(), "");
    EXPECT_FALSE(editor.Calculate());
    EXPECT_EQ(screen.dialogs.LastText(),
              "Two of the entered pump curve points are identical.  Please reenter data.");
    EXPECT_EQ(screen.dialogs.All().size(), 2u);
}

TEST(FirePumpEditor, LeavingAFieldBelowItsMinimumSetsTheMinimum) {
    PumpScreen screen;
    screen.editor.SetPressureText(1, "-12000");
    screen.editor.LeavePressureField(1);
    EXPECT_EQ(screen.dialogs.LastText(),
              "Value is too low.  Entry has been set to minimum allowed value.");
    EXPECT_EQ(screen.editor.PressureText(1), "-9999.00");
    screen.editor.SetFlowText(1, "-50");
    screen.editor.LeaveFlowField(1);
    screen.editor.SetFlowText(2, "");
    screen.editor.LeaveFlowField(2);
    EXPECT_EQ(screen.dialogs.All().size(), 1u);
    EXPECT_EQ(screen.editor.FlowText(1), "-50");
}

TEST(FirePumpEditor, OkPassesTheCalculatedCurveToTheProject) {
    PumpScreen screen;
    FirePumpEditor& editor = screen.editor;
    screen.Type(0, "0", "120");
    screen.Type(2, "500", "95");
    screen.Type(4, "1000", "20");
    editor.SetFeetOfHead(true);
    ASSERT_TRUE(editor.Calculate());
    screen.project.PipeRecord[7].Material = MaterialFirePump; // a new pump row: a boost of 0
    screen.project.PipeRecord[7].DeviceLoss = 0;
    ASSERT_TRUE(editor.UsePumpCurve(screen.project));
    EXPECT_EQ(screen.project.PipeRecord[7].DeviceLoss, NotGiven); // the curve gives the boost
    const CalculationData& data = screen.project.CalculationData;
    EXPECT_EQ(data.PumpCurveFlow[0], 0.0f);
    EXPECT_EQ(data.PumpCurvePressure[0], 120.0f);
    EXPECT_EQ(data.PumpCurveFlow[1], -10000.0f);
    EXPECT_EQ(data.PumpCurvePressure[3], -10000.0f);
    EXPECT_EQ(data.PumpCurveFlow[4], 1000.0f);
    EXPECT_DOUBLE_EQ(data.PumpCoefficients[0], 120);
    EXPECT_DOUBLE_EQ(data.PumpCoefficients[2], -0.0001);
    EXPECT_EQ(data.PumpCoefficients[3], 0);
    EXPECT_EQ(data.PumpDefined, 1);
    EXPECT_EQ(data.PumpSource, -1); // typed points
    EXPECT_EQ(screen.project.InputChanged, True);
    EXPECT_TRUE(screen.dialogs.Empty());

    // The next opening shows the project's own curve, calculated.
    FirePumpEditor again(screen.database, screen.dialogs);
    again.Open(screen.project);
    EXPECT_EQ(again.FlowText(4), "1000");
    EXPECT_EQ(again.PressureText(2), "95");
    EXPECT_EQ(again.FlowText(1), "");
    EXPECT_TRUE(again.FeetOfHead());
    EXPECT_TRUE(again.IsCalculated());
    EXPECT_EQ(again.CurveText(), "Head = 120 + 0Q + -1.00E-04Q^2");
    screen.project.InputChanged = False;
    ASSERT_TRUE(again.UsePumpCurve(screen.project));
    EXPECT_EQ(screen.project.InputChanged, False); // the same curve again changes nothing
}

TEST(FirePumpEditor, OkAsksAboutTooFewPointsAndAnUncalculatedCurve) {
    PumpScreen screen;
    FirePumpEditor& editor = screen.editor;
    ClearProjectPump(screen.project.CalculationData);
    screen.project.CalculationData.PumpCoefficients[0] = 99; // a curve that is stored already

    screen.Type(0, "0", "120");
    screen.dialogs.Script(Answer::Yes);
    EXPECT_FALSE(editor.UsePumpCurve(screen.project)); // Yes: stay and enter a curve
    EXPECT_EQ(screen.dialogs.LastTitle(), "Pump curve not valid");
    EXPECT_EQ(screen.dialogs.LastText(), NotValidText);
    EXPECT_EQ(screen.project.CalculationData.PumpCoefficients[0], 99);

    screen.Type(1, "500", "95");
    screen.Type(2, "1000", "20");
    screen.dialogs.Script(Answer::Yes);
    EXPECT_FALSE(editor.UsePumpCurve(screen.project));
    EXPECT_EQ(screen.dialogs.LastTitle(), "Pump curve not calculated");
    EXPECT_EQ(screen.dialogs.LastText(), NotCalculatedText);
    screen.dialogs.Script(Answer::No); // No: close, and the project keeps what it had
    EXPECT_TRUE(editor.UsePumpCurve(screen.project));
    EXPECT_EQ(screen.project.CalculationData.PumpCoefficients[0], 99);
    EXPECT_EQ(screen.project.InputChanged, False);

    screen.editor.SetFlowText(2, "");
    screen.dialogs.Script(Answer::No); // No: the project's curve is cleared
    EXPECT_TRUE(editor.UsePumpCurve(screen.project));
    EXPECT_EQ(screen.dialogs.LastTitle(), "Pump curve not valid");
    const CalculationData& data = screen.project.CalculationData;
    for (std::size_t point = 0; point < 5; ++point) {
        EXPECT_EQ(data.PumpCurveFlow[point], -10000.0f);
        EXPECT_EQ(data.PumpCurvePressure[point], -10000.0f);
        EXPECT_EQ(data.PumpCoefficients[point], 0);
    }
    EXPECT_EQ(screen.project.InputChanged, True);
}

TEST(FirePumpEditor, ChoosingAPumpShowsItsCurveAndAsksToSaveEdits) {
    PumpScreen screen;
    FirePumpEditor& editor = screen.editor;
    editor.ChoosePump(2);
    EXPECT_EQ(editor.CurrentPumpName(), "FIVE POINTS");
    EXPECT_EQ(editor.FlowText(3), "750");
    EXPECT_EQ(editor.PressureText(4), "62");
    EXPECT_TRUE(editor.IsCalculated());
    EXPECT_EQ(editor.CurveText().substr(editor.CurveText().size() - 3), "Q^4");
    EXPECT_FALSE(editor.HasUnsavedChanges());

    editor.SetPressureText(4, "60");
    EXPECT_TRUE(editor.HasUnsavedChanges());
    screen.dialogs.Script(Answer::No);
    editor.ChoosePump(1);
    EXPECT_EQ(screen.dialogs.LastTitle(), "Pump Data");
    EXPECT_EQ(screen.dialogs.LastText(), "Data for FIVE POINTS has been changed. Save?");
    EXPECT_EQ(LoadPumpDatabase(screen.database)[1].Pressure[4], 62); // not saved
    EXPECT_EQ(editor.CurveText(), "Head = 120 + 0Q + -1.00E-04Q^2");
    EXPECT_EQ(editor.FlowText(3), "");

    editor.SetPressureText(0, "125");
    screen.dialogs.Script(Answer::Yes);
    editor.ChoosePump(3);
    EXPECT_EQ(LoadPumpDatabase(screen.database)[0].Pressure[0], 125); // saved
    EXPECT_TRUE(editor.FeetOfHead());
    EXPECT_EQ(screen.dialogs.All().size(), 2u);

    // OK passes the chosen pump with its record number and its unit.
    ASSERT_TRUE(editor.UsePumpCurve(screen.project));
    EXPECT_EQ(screen.project.CalculationData.PumpSource, 3);
    EXPECT_EQ(screen.project.CalculationData.PumpDefined, 1);
    FirePumpEditor again(screen.database, screen.dialogs);
    again.Open(screen.project);
    EXPECT_EQ(again.CurrentPump(), 3);
}

TEST(FirePumpEditor, SaveCopyAndManualInput) {
    PumpScreen screen;
    FirePumpEditor& editor = screen.editor;
    EXPECT_FALSE(editor.SavePump()); // manual input has no record
    editor.ChoosePump(1);
    editor.CopyPump(3);
    EXPECT_EQ(editor.PressureText(0), "300");
    EXPECT_TRUE(editor.FeetOfHead());
    EXPECT_TRUE(editor.HasUnsavedChanges());
    EXPECT_FALSE(editor.IsCalculated());
    editor.SetFlowText(3, "1200"); // half a pair is kept as typed
    ASSERT_TRUE(editor.SavePump());
    EXPECT_FALSE(editor.HasUnsavedChanges());
    const PumpRecord saved = LoadPumpDatabase(screen.database)[0];
    EXPECT_EQ(saved.Name, "PARABOLA");
    EXPECT_EQ(saved.Pressure[0], 300);
    EXPECT_EQ(saved.FeetOfHead, 1);
    EXPECT_EQ(saved.Flow[3], 1200);
    EXPECT_EQ(saved.Pressure[3], -10000);
    EXPECT_EQ(saved.Flow[4], -10000);

    editor.SetFeetOfHead(false);
    screen.dialogs.Script(Answer::No);
    editor.ManualInput();
    EXPECT_EQ(screen.dialogs.LastText(), "Data for PARABOLA has been changed. Save?");
    EXPECT_EQ(editor.CurrentPump(), 0);
    EXPECT_EQ(editor.FlowText(3), "1200"); // the fields stay for typing
    editor.SetFlowText(2, "900");
    EXPECT_FALSE(editor.HasUnsavedChanges()); // typed points belong to no record
    ASSERT_TRUE(editor.Calculate());
    ASSERT_TRUE(editor.UsePumpCurve(screen.project));
    EXPECT_EQ(screen.project.CalculationData.PumpSource, -1);
    EXPECT_EQ(screen.dialogs.All().size(), 1u);
}

TEST(FirePumpEditor, AddAndDeletePumps) {
    PumpScreen screen;
    FirePumpEditor& editor = screen.editor;
    screen.Type(0, "0", "150");
    screen.Type(1, "700", "130");
    EXPECT_FALSE(editor.AddPump("   ")); // the input box was cancelled
    ASSERT_TRUE(editor.AddPump("NEW PUMP"));
    EXPECT_EQ(editor.Pumps().size(), 4u);
    EXPECT_EQ(editor.CurrentPump(), 4);
    EXPECT_EQ(editor.FlowText(1), "700"); // typed points become the new pump's edits
    EXPECT_TRUE(editor.HasUnsavedChanges());
    EXPECT_TRUE(PumpRecordPoints(LoadPumpDatabase(screen.database)[3]).empty());
    ASSERT_TRUE(editor.SavePump());
    EXPECT_EQ(PumpRecordPoints(LoadPumpDatabase(screen.database)[3]).size(), 2u);

    editor.ChoosePump(2);
    ASSERT_TRUE(editor.AddPump("BLANK"));
    EXPECT_EQ(editor.FlowText(0), ""); // from a database pump the new one starts blank
    EXPECT_FALSE(editor.HasUnsavedChanges());

    editor.ChoosePump(2);
    screen.dialogs.Script(Answer::No);
    EXPECT_FALSE(editor.DeletePump());
    EXPECT_EQ(screen.dialogs.LastTitle(), "Confirm Pump Deletion");
    EXPECT_EQ(screen.dialogs.LastText(), "Do you really want to delete FIVE POINTS");
    EXPECT_EQ(LoadPumpDatabase(screen.database).size(), 5u);
    screen.dialogs.Script(Answer::Yes);
    ASSERT_TRUE(editor.DeletePump());
    const auto pumps = LoadPumpDatabase(screen.database);
    ASSERT_EQ(pumps.size(), 4u);
    EXPECT_EQ(pumps[1].Name, "IN FEET");
    EXPECT_EQ(editor.Pumps().size(), 4u);
    EXPECT_EQ(editor.CurrentPump(), 0);
    EXPECT_EQ(editor.FlowText(0), "");
    EXPECT_FALSE(std::filesystem::exists(screen.scratch / "Pump.tmp"));
    EXPECT_FALSE(editor.DeletePump()); // nothing shown, nothing to delete
}

TEST(FirePumpEditor, AFailedWriteIsToldAndLosesNothing) {
    PumpScreen screen;
    FirePumpEditor& editor = screen.editor;
    editor.ChoosePump(1);
    editor.SetPressureText(0, "121");
    std::filesystem::create_directory(screen.scratch / "Pump.tmp");
    EXPECT_FALSE(editor.SavePump());
    EXPECT_EQ(screen.dialogs.LastTitle(), "Pump Data");
    EXPECT_EQ(screen.dialogs.LastText().rfind("The fire pump database could not be written: ", 0),
              0u);
    EXPECT_TRUE(editor.HasUnsavedChanges());
    EXPECT_EQ(editor.PressureText(0), "121");
    EXPECT_EQ(LoadPumpDatabase(screen.database)[0].Pressure[0], 120);
}

TEST(FirePumpEditor, ADamagedRecordShowsOnlyItsGoodValues) {
    PumpScreen screen;
    PumpRecord damaged = Pump("DAMAGED", {{0, 120}, {500, 95}, {1000, 20}});
    damaged.Flow[1] = std::nan("");
    damaged.Pressure[2] = 1e300;
    ASSERT_TRUE(AppendPumpRecord(screen.database, damaged));
    screen.editor.Open(screen.project);
    screen.editor.ChoosePump(4);
    EXPECT_EQ(screen.editor.FlowText(1), "");
    EXPECT_EQ(screen.editor.PressureText(1), "95");
    EXPECT_EQ(screen.editor.PressureText(2), "");
    EXPECT_FALSE(screen.editor.IsCalculated());
    EXPECT_FALSE(screen.editor.Calculate());
    EXPECT_EQ(screen.dialogs.LastText(), "You must specify at least 3 pump curve points.");
}

TEST(FirePumpEditor, CancelPassesNoCurveButOffersToSaveEdits) {
    PumpScreen screen;
    const CalculationData before = screen.project.CalculationData;
    screen.editor.ChoosePump(1);
    screen.editor.SetFlowText(4, "1200");
    screen.dialogs.Script(Answer::Yes);
    screen.editor.Cancel();
    EXPECT_EQ(screen.dialogs.LastText(), "Data for PARABOLA has been changed. Save?");
    EXPECT_EQ(LoadPumpDatabase(screen.database)[0].Flow[4], 1200);
    EXPECT_EQ(screen.project.CalculationData.PumpCoefficients, before.PumpCoefficients);
    EXPECT_EQ(screen.project.CalculationData.PumpSource, 0);
    EXPECT_EQ(screen.project.InputChanged, False);
}

} // namespace
} // namespace quench
