#include "core/settings_keys.h"
#include "gui/calculation_window.h"
#include "gui/data_units_dialog.h"
#include "gui/validated_field.h"
#include "tests/gui/desktop_fixture.h"

#include <QAbstractButton>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::BranchLine;
using testing::Desktop;
using testing::ScratchDirectory;

class CalculationWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        file_ = line_.Write(scratch_ / "projects" / "branch.qnw");
        desktop_ = std::make_unique<Desktop>(scratch_.Path());
        Frame().RunStartFile(QString::fromStdString(file_.string()));
        ASSERT_TRUE(Frame().Lifecycle().ProjectIsLoaded());
        Frame().Dispatch("ToolCalculation");
        ASSERT_NE(Window(), nullptr);
        // Laid out and shown, so that clicks land on the buttons.
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Frame()));
        QApplication::processEvents();
    }

    gui::MainFrame& Frame() { return *desktop_->Frame; }
    gui::CalculationWindow* Window() { return Frame().Calculation(); }
    Project& Model() { return *desktop_->Model; }
    // A click on the button's mark: the caption's right of it is no part of the button.
    void ClickOption(CalculationOption option) {
        QAbstractButton* button = Window()->OptionButton(option);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
    }
    QString Shown(CalculationField field) { return Window()->Field(field)->text(); }
    double Result(const char* control) {
        const QLabel* label = Window()->ResultLabel(control);
        EXPECT_NE(label, nullptr) << control;
        return label != nullptr ? label->text().toDouble() : -1;
    }

    BranchLine line_;
    ScratchDirectory scratch_;
    fs::path file_;
    std::unique_ptr<Desktop> desktop_;
};

TEST_F(CalculationWindowTest, CalculatesAndShowsTheResults) {
    gui::CalculationWindow& window = *Window();
    EXPECT_TRUE(window.OptionButton(CalculationOption::SupplyMode)->isChecked());
    EXPECT_FALSE(window.Field(CalculationField::MinPressureAtHMDNode)->isEnabled());
    EXPECT_TRUE(window.Field(CalculationField::InflowResidualPressure1)->isEnabled());
    EXPECT_EQ(window.findChild<QLabel*>("lblSystemInflowNodeNumber")->text(), "10");
    EXPECT_EQ(window.ResultsGrid()->rowCount(), 0);

    // Open the iteration display, then calculate.
    QTest::mouseClick(window.cmdDisplaying(), Qt::LeftButton);
    ASSERT_NE(window.Progress().Display(), nullptr);
    EXPECT_EQ(window.Progress().Display()->windowTitle(),
              "Employing Supply Mode With 4 Pipes and 5 Nodes");
    int rowsSeen = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (gui::DisplayingWindow* display = window.Progress().Display()) {
            const QTableWidgetItem* item = display->List()->item(0, 0);
            rowsSeen = std::max(rowsSeen, item != nullptr && !item->text().isEmpty() ? 1 : 0);
        }
    });
    watch.start(0);
    QTest::mouseClick(window.cmdCalculation(), Qt::LeftButton);
    watch.stop();
    EXPECT_TRUE(desktop_->Dialogs.Empty()) << desktop_->Dialogs.LastText();
    EXPECT_EQ(rowsSeen, 1);
    // The run is over: its windows have gone, the results are on their tab.
    EXPECT_FALSE(window.Progress().Status()->isVisible());
    EXPECT_FALSE(window.Progress().IsDisplayOpen());
    EXPECT_EQ(window.cmdCalculation()->text(), "Calculate");
    EXPECT_TRUE(window.cmdCalculation()->isEnabled());
    EXPECT_FALSE(window.cmdCancel()->isEnabled());
    EXPECT_EQ(window.Tabs()->currentIndex(), 2);
    EXPECT_TRUE(Frame().Lifecycle().ResultsFresh());
    EXPECT_EQ(Model().InputChanged, False);

    // The hand method: the last sprinkler at 10 psi, the supply's flow through all four.
    EXPECT_EQ(window.ResultLabel("lblNumberOfUniquePipeSections")->text(), "4");
    EXPECT_TRUE(
        window.ResultLabel("lblIndependentCheck")->text().startsWith("Independent check: passed"));
    EXPECT_EQ(window.ResultLabel("lblNumberOfFlowingSprinklers")->text(), "4");
    EXPECT_EQ(window.ResultLabel("lblHMDSprinklerNodeNumber")->text(), "50");
    EXPECT_NEAR(Result("txtHMDActualResidualPressure"), BranchLine::LastPressure, 0.005);
    EXPECT_NEAR(Result("txtHMDActualGPM"), BranchLine::K * std::sqrt(10.0), 0.01);
    EXPECT_NEAR(Result("txtSprinklerFlow"), line_.Flow, 0.01);
    EXPECT_NEAR(Result("txtDemandFlowAtSystemInflowNode"), line_.Flow, 0.01);
    EXPECT_NEAR(Result("txtMinReqdResidPressAtSysInflowNode"), line_.Supply, 0.001);
    EXPECT_EQ(window.ResultLabel("lblMinReqdResidPressAtSysInflowNodeLabel")->text(),
              "Specified Resid Press At Sys Inflow Node:");
    EXPECT_EQ(window.ResultLabel("txtSprinklerFlowUnit")->text(), "gpm");

    // The grid: a heading line and four lines a pipe, the supply's pipe first.
    const QTableWidget& grid = *window.ResultsGrid();
    ASSERT_EQ(grid.rowCount(), 16);
    EXPECT_EQ(grid.horizontalHeaderItem(1)->text(), "BEG-Node END-Node");
    EXPECT_EQ(grid.item(0, 1)->text(), "10");
    EXPECT_EQ(grid.item(1, 1)->text(), "20");
    EXPECT_EQ(grid.item(1, 6)->text(), "1.049");
    EXPECT_NEAR(grid.item(0, 7)->text().toDouble(), line_.Flow, 0.01);
    for (int pipe = 0; pipe < 4; ++pipe) {
        EXPECT_EQ(grid.item(4 * pipe, 0)->text(), QString::number(pipe + 1));
        EXPECT_EQ(grid.item(4 * pipe + 3, 1)->text(), "");
        if (grid.item(4 * pipe + 1, 1)->text() == "50") {
            EXPECT_NEAR(grid.item(4 * pipe + 1, 5)->text().toDouble(), BranchLine::LastPressure,
                        0.005);
        }
    }
    // The pressures are written back as the estimates of the rows.
    EXPECT_NEAR(Model().PipeRecord[4].PressEstimateE, BranchLine::LastPressure, 0.005);
}

TEST_F(CalculationWindowTest, CancelStopsARunAndPostsNothing) {
    gui::CalculationWindow& window = *Window();
    Model().InputChanged = True;
    QTest::mouseClick(window.cmdDisplaying(), Qt::LeftButton);
    // Cancel on frmStatus once the run has shown an iteration; meanwhile the frame's commands
    // are held.
    bool heldMeanwhile = false;
    bool statusShown = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        gui::StatusWindow* status = window.Progress().Status();
        if (!status->isVisible()) {
            return;
        }
        statusShown = true;
        heldMeanwhile = Frame().RunInProgress() && !Frame().Action("ToolClose")->isEnabled() &&
                        !window.cmdCalculation()->isEnabled() && window.cmdCancel()->isEnabled();
        EXPECT_EQ(status->windowTitle(), "Calculating...");
        EXPECT_EQ(status->lblStatus()->text(), "Please Wait ...");
        QTest::mouseClick(status->cmdCancel(), Qt::LeftButton);
        watch.stop();
    });
    watch.start(0);
    // Closing the frame during the run is refused too.
    QTimer::singleShot(0, &Frame(), [&] { Frame().close(); });
    EXPECT_FALSE(window.Calculate());
    EXPECT_TRUE(statusShown);
    EXPECT_TRUE(heldMeanwhile);
    EXPECT_TRUE(Frame().isVisible());
    EXPECT_FALSE(window.Progress().Status()->isVisible());
    EXPECT_EQ(window.Tabs()->currentIndex(), 0);
    EXPECT_FALSE(Frame().Lifecycle().ResultsFresh());
    EXPECT_EQ(Model().InputChanged, True);
    EXPECT_EQ(Model().PipeRecord[4].PressEstimateE, 0);
    EXPECT_EQ(window.ResultsGrid()->rowCount(), 0);
    EXPECT_TRUE(Frame().Action("ToolClose")->isEnabled());
    EXPECT_TRUE(desktop_->Dialogs.Empty()) << desktop_->Dialogs.LastText();
}

TEST_F(CalculationWindowTest, UnitsSwitchBackAndForthWithoutChangingTheStoredValues) {
    gui::CalculationWindow& window = *Window();
    const CalculationData before = Model().CalculationData;
    EXPECT_EQ(Shown(CalculationField::MaximumNodePressureImbalance), "0.000001");

    const auto switchTo = [&](bool si) {
        Frame().Dispatch("ToolUnits");
        auto* dialog = Frame().findChild<gui::DataUnitsDialog*>();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), "Select Data Units");
        (si ? dialog->OptSI() : dialog->OptUS())->click();
        dialog->accept();
        QApplication::processEvents();
    };
    switchTo(true);
    EXPECT_EQ(Frame().Units(), MeasureSystem::SI);
    EXPECT_EQ(Model().UnitSystem, 1);
    EXPECT_TRUE(Metric(IniFileHandler(scratch_ / "QUENCH.ini")));
    EXPECT_EQ(Shown(CalculationField::InflowResidualPressure1).toDouble(),
              std::round(line_.Supply * 6.894757293168361));
    EXPECT_EQ(Shown(CalculationField::MaximumNodePressureImbalance), "0.0000069");
    EXPECT_EQ(Window()->Field(CalculationField::MaxFrictionalLoss)->StatusText(),
              "Range: 0.00 to 6,894.68     Units: kPa");
    EXPECT_EQ(window.findChild<QLabel*>("lblRequired")->isVisible(), true);

    switchTo(false);
    EXPECT_EQ(Model().UnitSystem, 0);
    EXPECT_EQ(Shown(CalculationField::InflowResidualPressure1).toDouble(),
              std::round(line_.Supply));
    EXPECT_EQ(Shown(CalculationField::MaximumNodePressureImbalance), "0.000001");
    EXPECT_TRUE(Model().CalculationData == before);
    EXPECT_EQ(Model().InputChanged, False);

    // Calculating in SI gives the same stored results as in US units.
    switchTo(true);
    QTest::mouseClick(window.cmdCalculation(), Qt::LeftButton);
    EXPECT_TRUE(desktop_->Dialogs.Empty()) << desktop_->Dialogs.LastText();
    EXPECT_NEAR(Model().CalculationData.HMDActualResidualPressure, BranchLine::LastPressure, 0.005);
    EXPECT_NEAR(Result("txtHMDActualResidualPressure"), BranchLine::LastPressure * 6.894757, 0.04);
    EXPECT_EQ(window.ResultLabel("txtSprinklerFlowUnit")->text(), "Lpm");
    EXPECT_DOUBLE_EQ(Model().CalculationData.InflowResidualPressure1, line_.Supply);
}

TEST_F(CalculationWindowTest, OptionsAndLeavingAField) {
    gui::CalculationWindow& window = *Window();
    ClickOption(CalculationOption::DemandMode);
    EXPECT_EQ(Model().CalculationData.DemandMode, 1);
    EXPECT_EQ(Model().InputChanged, True);
    EXPECT_TRUE(window.Field(CalculationField::MinPressureAtHMDNode)->isEnabled());
    EXPECT_FALSE(window.Field(CalculationField::InflowResidualPressure1)->isEnabled());
    ClickOption(CalculationOption::AverageNodalPressure);
    EXPECT_EQ(Shown(CalculationField::MaximumNodePressureImbalance), "");
    EXPECT_FALSE(window.Field(CalculationField::MaximumNodePressureImbalance)->isEnabled());
    EXPECT_TRUE(window.Field(CalculationField::AverageNodalPressure)->isEnabled());

    // A save leaves the field being typed in first: its rule applies before the file is written.
    gui::ValidatedField* damping = window.Field(CalculationField::MinimumDampingFactor);
    QApplication::setActiveWindow(&Frame());
    damping->setFocus();
    ASSERT_TRUE(damping->hasFocus());
    damping->selectAll();
    QTest::keyClicks(damping, "0");
    EXPECT_EQ(Model().CalculationData.MinimumDampingFactor, 0);
    Frame().Dispatch("ToolSave");
    EXPECT_EQ(desktop_->Dialogs.LastText(),
              "Value is too low.  Entry has been set to minimum allowed value.");
    EXPECT_EQ(damping->text(), "1");
    EXPECT_EQ(Model().CalculationData.MinimumDampingFactor, 1);
    auto saved = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*saved, file_));
    EXPECT_EQ(saved->CalculationData.MinimumDampingFactor, 1);
    EXPECT_EQ(saved->CalculationData.DemandMode, 1);
}

} // namespace
} // namespace quench
