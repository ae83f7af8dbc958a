#include "gui/global_edit_frame.h"
#include "gui/global_edit_tab.h"
#include "gui/help_window.h"
#include "gui/pipe_data_window.h"
#include "tests/gui/desktop_fixture.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>

namespace quench {
namespace {

using testing::BranchLine;
using testing::Desktop;
using testing::ScratchDirectory;

class GlobalEditTabTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto file = line_.Write(scratch_ / "projects" / "branch.qnw");
        desktop_ = std::make_unique<Desktop>(scratch_.Path());
        Frame().RunStartFile(QString::fromStdString(file.string()));
        ASSERT_TRUE(Frame().Lifecycle().ProjectIsLoaded());
        Frame().Dispatch("ToolEnterEditPipeData");
        ASSERT_NE(Frame().PipeData(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Frame()));
    }

    gui::MainFrame& Frame() { return *desktop_->Frame; }
    gui::PipeDataWindow& Window() { return *Frame().PipeData(); }
    PipeRecord& Row(int row) { return desktop_->Model->PipeRecord[static_cast<std::size_t>(row)]; }
    template <typename Widget>
    Widget& Find(const char* name) {
        auto* widget = Window().GlobalEdit()->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name;
        return *widget;
    }
    QString Shown(int row, PipeColumn column) {
        return Window().Table()->model()->index(row - 1, IndexOf(column)).data().toString();
    }

    BranchLine line_;
    ScratchDirectory scratch_;
    std::unique_ptr<Desktop> desktop_;
};

TEST_F(GlobalEditTabTest, ANodeRangeTakesANewElevationThroughTheWidgetsAsOneUndoStep) {
    gui::PipeDataWindow& window = Window();
    window.Tabs()->setCurrentWidget(window.GlobalEdit());
    QApplication::processEvents();
    EXPECT_EQ(window.Tabs()->tabText(window.Tabs()->currentIndex()), "Global Edit");

    // Nodes 40 down to 20, elevation 12.5 with no current value: the rules ask first.
    QTest::mouseClick(&Find<QRadioButton>("optGlobalEditNodeNode"), Qt::LeftButton);
    QTest::keyClicks(&Find<QLineEdit>("txtGlobalEditNodeNodeFrom"), "40");
    QTest::keyClicks(&Find<QLineEdit>("txtGlobalEditNodeNodeTo"), "20x");
    EXPECT_EQ(Find<QLineEdit>("txtGlobalEditNodeNodeTo").text(), "20"); // a letter is refused
    Find<QCheckBox>("chkGlobalNewElevation").setChecked(true);
    QTest::keyClicks(&Find<QLineEdit>("txtGlobalNewElevationText"), "12.5");
    desktop_->Dialogs.Script(Answer::Yes);
    QTest::mouseClick(&Find<QPushButton>("cmdNodeExecute"), Qt::LeftButton);

    const auto& shown = desktop_->Dialogs.All();
    ASSERT_GE(shown.size(), 2u);
    EXPECT_EQ(shown[shown.size() - 2].Title, "Warning");
    EXPECT_EQ(desktop_->Dialogs.LastText(), "6 changes made");
    EXPECT_EQ(Row(1).ElevationB, 0.0f);
    EXPECT_EQ(Row(1).ElevationE, 12.5f);
    EXPECT_EQ(Row(3).ElevationE, 12.5f);
    EXPECT_EQ(Row(4).ElevationE, 0.0f);
    EXPECT_EQ(Shown(2, PipeColumn::ElevationB), "12.5"); // the table shows the new rows
    EXPECT_EQ(desktop_->Model->InputChanged, True);

    // The current values of the selection, as the list opens.
    QTest::mouseClick(&Find<QPushButton>("cmdNodeCurrentValues"), Qt::LeftButton);
    auto& current = Find<gui::ValueBox>("txtGlobalCurrentElevation");
    ASSERT_EQ(current.count(), 1);
    EXPECT_EQ(current.itemText(0), "12.5");

    // F1 opens the field's help list with the same values; a pick comes back into the field.
    QLineEdit& currentText = Find<QLineEdit>("txtGlobalCurrentElevationText");
    currentText.setFocus();
    QTest::keyClick(&currentText, Qt::Key_F1);
    auto* list = qobject_cast<gui::HelpListWindow*>(Frame().Help().Current());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->lblHelpTitle()->text(), "Elevation");
    ASSERT_EQ(list->lstHelp()->topLevelItemCount(), 1);
    EXPECT_EQ(list->lstHelp()->topLevelItem(0)->text(0), "12.5");
    list->lstHelp()->setCurrentItem(list->lstHelp()->topLevelItem(0));
    QTest::mouseClick(list->cmdOK(), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(currentText.text(), "12.5");
    EXPECT_EQ(Row(1).ElevationE, 12.5f); // the table took nothing

    // A relative change of the picked value, then both undone one step at a time.
    Find<QRadioButton>("optElevRelative").setChecked(true);
    Find<QLineEdit>("txtGlobalNewElevationText").setText("-2.5");
    QTest::mouseClick(&Find<QPushButton>("cmdNodeExecute"), Qt::LeftButton);
    EXPECT_EQ(desktop_->Dialogs.LastText(), "6 changes made");
    EXPECT_EQ(Row(2).ElevationE, 10.0f);
    window.Action("Undo")->trigger();
    EXPECT_EQ(Row(2).ElevationE, 12.5f);
    window.Action("Undo")->trigger();
    EXPECT_EQ(Row(2).ElevationE, 0.0f);
    EXPECT_EQ(Shown(2, PipeColumn::ElevationE), "0.0");

    // The K-factor's keys: N alone is the word "None", which the sprinklers 20 to 40 now hold.
    Find<QCheckBox>("chkGlobalNewElevation").setChecked(false);
    Find<QCheckBox>("chkGlobalNewKFactor").setChecked(true);
    QTest::keyClicks(&Find<QLineEdit>("txtGlobalCurrentKFactorText"), "5.6");
    QTest::keyClick(&Find<QLineEdit>("txtGlobalNewKFactorText"), 'n');
    EXPECT_EQ(Find<QLineEdit>("txtGlobalNewKFactorText").text(), "None");
    QTest::mouseClick(&Find<QPushButton>("cmdNodeExecute"), Qt::LeftButton);
    EXPECT_EQ(desktop_->Dialogs.LastText(), "3 changes made");
    EXPECT_EQ(Row(1).KFactorE, "None");
    EXPECT_EQ(Row(3).KFactorE, "None");
    EXPECT_EQ(Row(4).KFactorE, "5.6");
}

} // namespace
} // namespace quench
