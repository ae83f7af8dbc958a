#include "entry/pump_point_units.h"
#include "gui/fire_pump_window.h"
#include "gui/pipe_library_window.h"
#include "gui/pump_curve_chart.h"
#include "library/pump_curve_text.h"
#include "library/pump_database.h"
#include "tests/gui/desktop_fixture.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <fstream>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScratchDirectory;
using testing::ScriptedDialogs;

const std::vector<CurvePoint> FourPoints = {{0, 120}, {500, 115}, {1000, 104}, {1500, 82}};

void TypePoints(gui::FirePumpWindow& window, const std::vector<CurvePoint>& points) {
    for (int point = 0; point < static_cast<int>(points.size()); ++point) {
        for (QLineEdit* field : {window.Text1(point), window.Text2(point)}) {
            field->selectAll();
            const double value =
                field == window.Text1(point) ? points[point].Flow : points[point].Pressure;
            QTest::keyClicks(field, QString::number(value));
            emit field->editingFinished();
        }
    }
}

TEST(FirePumpWindow, FourPointsAreFittedDrawnAndPassedToTheProject) {
    ScratchDirectory scratch;
    Project project;
    ScriptedDialogs dialogs;
    gui::FirePumpWindow window(project, scratch / "Pump.Dat", dialogs);
    EXPECT_EQ(window.cboPumpDescription()->count(), 0);
    TypePoints(window, FourPoints);
    EXPECT_EQ(window.CurveLabel()->text(), "");

    // OK before Calculate asks; Yes stays on the screen with the project untouched.
    dialogs.Script(Answer::Yes);
    window.Command("OKButton");
    EXPECT_EQ(dialogs.LastTitle(), "Pump curve not calculated");
    EXPECT_EQ(window.result(), 0);

    window.Command("Calculate");
    const CurveFit fit = FitPumpCurve(FourPoints);
    ASSERT_EQ(fit.Status, CurveFitStatus::Fitted);
    EXPECT_EQ(window.CurveLabel()->text().toStdString(), PumpCurveText(fit.Coefficients, 4));
    EXPECT_FALSE(window.Chart()->Overflowed());
    EXPECT_GE(window.Chart()->FlowLimit(), 1500);
    EXPECT_GE(window.Chart()->PressureLimit(), 120);
    EXPECT_FALSE(window.Chart()->grab().isNull());

    window.Command("OKButton");
    EXPECT_EQ(window.result(), QDialog::Accepted);
    for (int term = 0; term < 4; ++term) {
        EXPECT_DOUBLE_EQ(project.CalculationData.PumpCoefficients.at(term),
                         fit.Coefficients.at(term));
    }
    EXPECT_EQ(ProjectPumpPoints(project.CalculationData).size(), 4U);

    // The screen opened again shows the project's curve.
    gui::FirePumpWindow again(project, scratch / "Pump.Dat", dialogs);
    EXPECT_EQ(again.Rules().GivenPoints().size(), 4U);
    EXPECT_EQ(again.Text2(3)->text(), "82");
}

TEST(FirePumpWindow, PointsTypedInSIAreHeldInTheModelsUnits) {
    ScratchDirectory scratch;
    Project project;
    ScriptedDialogs dialogs;
    gui::FirePumpWindow window(project, scratch / "Pump.Dat", dialogs, MeasureSystem::SI);
    EXPECT_EQ(window.uomSystem()->currentIndex(), 1);
    // Litres per minute and kPa, as a metric data sheet gives them.
    const std::vector<CurvePoint> metric = {{0, 830}, {1900, 790}, {3800, 715}, {5700, 565}};
    TypePoints(window, metric);
    window.Command("Calculate");
    ASSERT_TRUE(window.Rules().IsCalculated());
    const std::vector<CurvePoint> held = window.Rules().GivenPoints();
    ASSERT_EQ(held.size(), 4U);
    EXPECT_NEAR(held[2].Flow, 3800 / 3.785411784, 1e-9);
    EXPECT_NEAR(held[2].Pressure, 715 / 6.894757293168361, 1e-9);
    EXPECT_EQ(window.Text1(2)->text(), "3800");
    // The curve's text is the curve through the points as they stand on the screen.
    const CurveFit shownFit = FitPumpCurve(metric);
    ASSERT_EQ(shownFit.Status, CurveFitStatus::Fitted);
    EXPECT_TRUE(window.CurveLabel()->text().startsWith("Head = 830 + "));
    EXPECT_EQ(window.CurveLabel()->text().toStdString(),
              ShownPumpCurveText(window.Rules().Coefficients(), 4, false, MeasureSystem::SI));
    EXPECT_GE(window.Chart()->FlowLimit(), 5700);

    // A switch of units converts what is shown, never what is held.
    const PumpCoefficientArray coefficients = window.Rules().Coefficients();
    window.uomSystem()->setCurrentIndex(0);
    emit window.uomSystem()->activated(0);
    EXPECT_EQ(window.Rules().GivenPoints(), held);
    EXPECT_EQ(window.Rules().Coefficients(), coefficients);
    EXPECT_EQ(window.Text2(0)->text().toStdString(), window.Rules().PressureText(0));
    EXPECT_EQ(window.CurveLabel()->text().toStdString(), window.Rules().CurveText());
    window.uomSystem()->setCurrentIndex(1);
    emit window.uomSystem()->activated(1);
    EXPECT_EQ(window.Text2(3)->text(), "565");
    EXPECT_EQ(window.Rules().GivenPoints(), held);

    // Feet of head show as metres of head; the numbers held stay.
    window.chkUnits()->click();
    EXPECT_EQ(window.Text2(0)->text().toStdString(),
              ShownPumpText(UnitKind::Length, window.Rules().PressureText(0), MeasureSystem::SI));
    window.chkUnits()->click();

    window.Command("OKButton");
    EXPECT_EQ(window.result(), QDialog::Accepted);
    const std::vector<CurvePoint> stored = ProjectPumpPoints(project.CalculationData);
    ASSERT_EQ(stored.size(), 4U);
    EXPECT_NEAR(stored[3].Flow, 5700 / 3.785411784, 1e-3);
    EXPECT_NEAR(stored[3].Pressure, 565 / 6.894757293168361, 1e-4);
    EXPECT_EQ(project.CalculationData.PumpCoefficients, coefficients);
}

TEST(FirePumpWindow, NewPumpIsSavedToTheDatabaseAndChosenAgain) {
    ScratchDirectory scratch;
    const std::filesystem::path database = scratch / "Pump.Dat";
    Project project;
    ScriptedDialogs dialogs;
    {
        gui::FirePumpWindow window(project, database, dialogs);
        window.UseNameSource([] { return std::optional<std::string>("Test 750 gpm"); });
        TypePoints(window, FourPoints);
        window.chkUnits()->click();
        window.Command("cmdAdd");
        window.Command("cmdSave");
        EXPECT_EQ(window.cboPumpDescription()->count(), 1);
        window.Command("CancelButton");
        EXPECT_EQ(window.result(), QDialog::Rejected);
    }
    EXPECT_EQ(ProjectPumpPoints(project.CalculationData).size(), 0U);
    ASSERT_EQ(LoadPumpDatabase(database).size(), 1U);

    gui::FirePumpWindow window(project, database, dialogs);
    ASSERT_EQ(window.cboPumpDescription()->count(), 1);
    EXPECT_EQ(window.cboPumpDescription()->itemText(0), "Test 750 gpm");
    window.cboPumpDescription()->setCurrentIndex(0);
    emit window.cboPumpDescription()->activated(0);
    EXPECT_EQ(window.Rules().CurrentPump(), 1);
    EXPECT_EQ(window.Text1(2)->text(), "1000");
    EXPECT_TRUE(window.chkUnits()->isChecked());
    window.Command("Calculate");
    EXPECT_TRUE(window.CurveLabel()->text().startsWith("Head = "));
}

TEST(FirePumpWindow, RunawayCurveAndDamagedDatabaseAreShownWithoutACrash) {
    ScratchDirectory scratch;
    const std::filesystem::path database = scratch / "Pump.Dat";
    {
        std::ofstream out(database, std::ios::binary);
        for (int byte = 0; byte < 2 * PumpRecordLength + 40; ++byte) {
            out.put(static_cast<char>(byte % 5 == 0 ? 0x7F : 0xFF));
        }
    }
    Project project;
    ScriptedDialogs dialogs;
    gui::FirePumpWindow window(project, database, dialogs);
    EXPECT_EQ(window.cboPumpDescription()->count(), 2);
    for (int index = 0; index < 2; ++index) {
        emit window.cboPumpDescription()->activated(index);
        window.Command("Calculate");
        EXPECT_FALSE(window.Chart()->grab().isNull());
    }

    // Points the fields accept can still give a curve beyond any arithmetic: it is not drawn.
    gui::PumpCurveChart chart;
    chart.resize(500, 360);
    PumpCoefficientArray runaway{100, 0, 0, 0, 1e300};
    chart.SetCurve(FourPoints, &runaway, "psi");
    EXPECT_TRUE(chart.Overflowed());
    EXPECT_FALSE(chart.grab().isNull());
    const CurveFit fit = FitPumpCurve(FourPoints);
    chart.SetCurve(FourPoints, &fit.Coefficients, "psi");
    EXPECT_FALSE(chart.Overflowed());
    EXPECT_STREQ(gui::CurveOverflowText,
                 "Values are too large and cause an error.  Please reduce some values.");
}

TEST(LibraryCommands, OpenBothScreensFromTheFrame) {
    ScratchDirectory scratch;
    testing::Desktop desktop(scratch.Path());
    // The libraries are offered once a project has been open.
    EXPECT_FALSE(desktop.Frame->Action("ToolPipeDB")->isEnabled());
    desktop.Frame->Lifecycle().New();
    for (const char* key : {"ToolPipeDB", "ToolPumpDB"}) {
        ASSERT_NE(desktop.Frame->Action(key), nullptr) << key;
        EXPECT_TRUE(desktop.Frame->Action(key)->isEnabled()) << key;
        desktop.Frame->Dispatch(key);
    }
    auto* library = desktop.Frame->findChild<gui::PipeLibraryWindow*>();
    auto* pump = desktop.Frame->findChild<gui::FirePumpWindow*>();
    ASSERT_NE(library, nullptr);
    ASSERT_NE(pump, nullptr);
    EXPECT_TRUE(library->isVisible());
    EXPECT_TRUE(pump->isVisible());
    EXPECT_EQ(library->cboPipeDescription()->count(), LibraryMaterials);
    pump->Command("CancelButton");
    library->close();
}

} // namespace
} // namespace quench
