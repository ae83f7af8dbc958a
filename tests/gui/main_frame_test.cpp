#include "core/settings_keys.h"
#include "gui/calculation_window.h"
#include "gui/validated_field.h"
#include "tests/gui/desktop_fixture.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::BranchLine;
using testing::Desktop;
using testing::ScratchDirectory;

QStringList MenuTitles(const QMainWindow& frame) {
    QStringList titles;
    for (QAction* action : frame.menuBar()->actions()) {
        titles << action->text();
    }
    return titles;
}

TEST(MainFrame, StartsWithTheCommandsOfTheTable) {
    ScratchDirectory scratch;
    Desktop desktop(scratch.Path());
    gui::MainFrame& frame = *desktop.Frame;
    EXPECT_EQ(frame.windowTitle(), "Quench");
    // Menus whose screens are not built yet stay out.
    EXPECT_EQ(MenuTitles(frame), (QStringList{"&File", "&Project", "&Reports", "&Libraries",
                                              "&Tools", "&Window", "&Help"}));
    EXPECT_NE(frame.Action("WindowTileVertical"), nullptr);
    EXPECT_NE(frame.Action("ToolDXF_Graph"), nullptr);
    EXPECT_FALSE(frame.Action("ToolPreview")->isEnabled());
    EXPECT_TRUE(frame.Action("ToolNew")->isEnabled());
    EXPECT_FALSE(frame.Action("ToolSave")->isEnabled());
    EXPECT_FALSE(frame.Action("ToolCalculation")->isEnabled());

    frame.Dispatch("ToolNew");
    EXPECT_EQ(frame.windowTitle(), "Quench - (UNTITLED)");
    EXPECT_TRUE(frame.Action("ToolSave")->isEnabled());
    EXPECT_TRUE(frame.Action("ToolCalculation")->isEnabled());
    frame.Dispatch("ToolCalculation");
    ASSERT_NE(frame.Calculation(), nullptr);
    EXPECT_EQ(frame.Area()->subWindowList().size(), 1);
    frame.Dispatch("WindowResetAllFullSize");
    EXPECT_TRUE(frame.Area()->subWindowList().front()->isMaximized());

    // A field with the focus tells the status line its range and units.
    gui::ValidatedField* field = frame.Calculation()->Field(CalculationField::MinPressureAtHMDNode);
    emit field->StatusTextWanted(field->StatusText());
    EXPECT_EQ(frame.statusBar()->currentMessage(), "Range: 0.00 to 999.99     Units: psi");

    frame.Dispatch("ToolClose");
    EXPECT_EQ(frame.Calculation(), nullptr);
    EXPECT_EQ(frame.windowTitle(), "Quench");
    EXPECT_FALSE(frame.Action("ToolSave")->isEnabled());
    EXPECT_TRUE(desktop.Dialogs.Empty());
}

TEST(MainFrame, ThePersonsDayWithAProject) {
    ScratchDirectory scratch;
    const fs::path file = BranchLine().Write(scratch / "projects" / "branch.qnw");
    {
        Desktop desktop(scratch.Path());
        gui::MainFrame& frame = *desktop.Frame;
        frame.RunStartFile(QString::fromStdString(file.string()));
        EXPECT_EQ(frame.windowTitle(), QString::fromStdString("Quench - " + file.string()));
        frame.Dispatch("ToolCalculation");
        gui::CalculationWindow* calculation = frame.Calculation();
        ASSERT_NE(calculation, nullptr);
        gui::ValidatedField* damping = calculation->Field(CalculationField::InitialDampingFactor);
        damping->selectAll();
        QTest::keyClicks(damping, "3");
        EXPECT_EQ(desktop.Model->CalculationData.InitialDampingFactor, 3);
        QTest::mouseClick(calculation->cmdCalculation(), Qt::LeftButton);
        EXPECT_EQ(calculation->Tabs()->currentIndex(), 2);
        frame.Dispatch("ToolSave");
        frame.Dispatch("ToolClose");
        EXPECT_TRUE(desktop.Dialogs.Empty()) << desktop.Dialogs.LastText();
        ASSERT_TRUE(frame.close());
    }
    // The next start: the project stands in the recent files list and opens from it, with the
    // calculation setting, the results and its screen as they were left.
    Desktop desktop(scratch.Path());
    gui::MainFrame& frame = *desktop.Frame;
    frame.RunStartFile("");
    QAction* recent = frame.Action("RecentFile0");
    ASSERT_NE(recent, nullptr);
    EXPECT_EQ(recent->text(), QString::fromStdString("&1: " + file.string()));
    recent->trigger();
    EXPECT_TRUE(frame.Lifecycle().ProjectIsLoaded());
    EXPECT_EQ(desktop.Model->CalculationData.InitialDampingFactor, 3);
    EXPECT_EQ(desktop.Model->CalculationData.NumberOfUniquePipeSections, 4);
    EXPECT_EQ(desktop.Model->InputChanged, False);
    EXPECT_NE(frame.Calculation(), nullptr);
    EXPECT_TRUE(desktop.Dialogs.Empty()) << desktop.Dialogs.LastText();
}

TEST(MainFrame, OpensAndCalculatesABundledExample) {
    ScratchDirectory scratch;
    const fs::path file = scratch / "projects" / "supply_grid.qnw";
    fs::create_directories(file.parent_path());
    fs::copy_file(testing::SourceDirectory() / "examples" / "supply_grid.qnw", file);
    Desktop desktop(scratch.Path());
    desktop.Frame->RunStartFile(QString::fromStdString(file.string()));
    ASSERT_TRUE(desktop.Frame->Lifecycle().ProjectIsLoaded());
    desktop.Frame->Dispatch("ToolCalculation");
    gui::CalculationWindow* calculation = desktop.Frame->Calculation();
    ASSERT_NE(calculation, nullptr);
    EXPECT_TRUE(calculation->Calculate());
    EXPECT_TRUE(desktop.Dialogs.Empty()) << desktop.Dialogs.LastText();
    const int pipes = desktop.Model->CalculationData.NumberOfUniquePipeSections;
    EXPECT_GT(pipes, 20);
    EXPECT_EQ(calculation->ResultsGrid()->rowCount(), 4 * pipes);
    EXPECT_EQ(calculation->Tabs()->currentIndex(), 2);
}

TEST(MainFrame, AnAutoSaveSurvivesAKill) {
    ScratchDirectory scratch;
    const fs::path file = BranchLine().Write(scratch / "projects" / "branch.qnw");
    {
        Desktop killed(scratch.Path());
        IniFileHandler(scratch / "QUENCH.ini")
            .MyWriteAppProfileString("Options", "AutoSaveInterval", "2");
        killed.Frame->RunStartFile(QString::fromStdString(file.string()));
        killed.Frame->Dispatch("ToolCalculation");
        gui::ValidatedField* comment =
            killed.Frame->Calculation()->Field(CalculationField::CalculationComment);
        QTest::keyClicks(comment, "Typed before the kill");
        killed.Frame->AutoSaveTimerTick();
        killed.Frame->AutoSaveTimerTick();
        EXPECT_EQ(killed.Frame->statusBar()->currentMessage(), "");
        // Killed: the frame goes without its way down.
        killed.Frame->hide();
    }
    Desktop next(scratch.Path());
    next.Choices.TempChoices = {TempFileChoice::OpenTemporary};
    next.Frame->RunStartFile(QString::fromStdString(file.string()));
    ASSERT_EQ(next.Choices.TempTitles.size(), 1u);
    EXPECT_EQ(next.Choices.TempTitles.front(),
              QString::fromStdString("Temporary File Detected:  " + file.string()));
    EXPECT_EQ(next.Model->CalculationData.CalculationComment, "Typed before the kill");
}

TEST(MainFrame, TheFrameAndItsToolbarComeBackWhereTheyWere) {
    ScratchDirectory scratch;
    {
        Desktop first(scratch.Path());
        QToolBar* toolbar = first.Frame->findChild<QToolBar*>("ActiveBar");
        ASSERT_NE(toolbar, nullptr);
        first.Frame->addToolBar(Qt::LeftToolBarArea, toolbar);
        first.Frame->resize(700, 500); // inside the offscreen screen of 800 by 600
        ASSERT_TRUE(first.Frame->close());
    }
    const IniFileHandler settings(scratch / "QUENCH.ini");
    EXPECT_EQ(settings.MyGetAppProfileString("MDIForm", "Width", ""), std::to_string(700 * 15));
    Desktop second(scratch.Path());
    QToolBar* toolbar = second.Frame->findChild<QToolBar*>("ActiveBar");
    EXPECT_EQ(second.Frame->toolBarArea(toolbar), Qt::LeftToolBarArea);
    EXPECT_EQ(second.Frame->width(), 700);
}

TEST(MainFrame, ASecondFileDroppedIsRefused) {
    ScratchDirectory scratch;
    const fs::path file = BranchLine().Write(scratch / "projects" / "branch.qnw");
    Desktop desktop(scratch.Path());
    desktop.Frame->Lifecycle().DropFiles({file, file});
    EXPECT_EQ(desktop.Dialogs.LastTitle(), "Too Many Files Dropped");
    EXPECT_FALSE(desktop.Frame->Lifecycle().ProjectIsLoaded());
    desktop.Frame->Lifecycle().DropFiles({file});
    EXPECT_TRUE(desktop.Frame->Lifecycle().ProjectIsLoaded());
}

} // namespace
} // namespace quench
