#include "gui/help_window.h"
#include "gui/node_editor_window.h"
#include "gui/pipe_data_window.h"
#include "tests/gui/desktop_fixture.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>

namespace quench {
namespace {

using testing::BranchLine;
using testing::Desktop;
using testing::ScratchDirectory;

class NodeEditorWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto file = BranchLine().Write(scratch_ / "projects" / "branch.qnw");
        desktop_ = std::make_unique<Desktop>(scratch_.Path());
        Frame().RunStartFile(QString::fromStdString(file.string()));
        ASSERT_TRUE(Frame().Lifecycle().ProjectIsLoaded());
        ASSERT_TRUE(Frame().Action("ToolNodalEditor")->isEnabled());
        Frame().Action("ToolNodalEditor")->trigger();
        ASSERT_NE(Window(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Frame()));
    }

    gui::MainFrame& Frame() { return *desktop_->Frame; }
    gui::NodeEditorWindow* Window() { return Frame().NodalEditor(); }
    Project& Model() { return *desktop_->Model; }
    QStringList ShownNodes() {
        QStringList nodes;
        for (int row = 0; row < Window()->VisibleRows(); ++row) {
            nodes << Window()->NodeNumber(row)->text();
        }
        return nodes;
    }
    void Type(int row, NodeField field, const QString& keys) {
        gui::NodeLineField* widget = Window()->Field(row, field);
        widget->setFocus();
        QApplication::processEvents(); // the window takes the focus before the keys
        widget->selectAll();
        QTest::keyClicks(widget, keys);
    }

    ScratchDirectory scratch_;
    std::unique_ptr<Desktop> desktop_;
};

// One history for both table screens: an edit of a node line, spread to its rows, is one step of
// Undo, and Redo brings it back.
TEST_F(NodeEditorWindowTest, UndoTakesBackAnEditWithItsSpread) {
    gui::NodeEditorWindow& window = *Window();
    const float before = Model().PipeRecord[2].ElevationE;
    Type(1, NodeField::Elevation, "-12.5");
    QTest::keyClick(window.Field(1, NodeField::Elevation), Qt::Key_Down); // leaves the field
    ASSERT_FLOAT_EQ(Model().PipeRecord[3].ElevationB, -12.5f);
    window.UndoEdit(false);
    EXPECT_FLOAT_EQ(Model().PipeRecord[2].ElevationE, before);
    EXPECT_FLOAT_EQ(Model().PipeRecord[3].ElevationB, before);
    EXPECT_EQ(window.Field(1, NodeField::Elevation)->text().toFloat(), before);
    window.UndoEdit(true);
    EXPECT_FLOAT_EQ(Model().PipeRecord[2].ElevationE, -12.5f);
    EXPECT_FLOAT_EQ(Model().PipeRecord[3].ElevationB, -12.5f);
}

TEST_F(NodeEditorWindowTest, ALineANodeTheInflowLastAndAnEditInEveryRow) {
    gui::NodeEditorWindow& window = *Window();
    EXPECT_EQ(window.windowTitle(), "Enter/Edit Pipe Node Data");
    EXPECT_EQ(ShownNodes().mid(0, 5), (QStringList{"20", "30", "40", "50", "10"}));
    EXPECT_EQ(window.Field(1, NodeField::KFactor)->text(), "5.6");

    // Node 30 stands in rows 2 and 3: one edit reaches both.
    Type(1, NodeField::Elevation, "-12.5");
    EXPECT_FLOAT_EQ(Model().PipeRecord[2].ElevationE, -12.5f);
    EXPECT_FLOAT_EQ(Model().PipeRecord[3].ElevationB, -12.5f);
    Type(1, NodeField::KFactor, "n");
    EXPECT_EQ(window.Field(1, NodeField::KFactor)->text(), "None");
    EXPECT_EQ(Model().PipeRecord[2].KFactorE, "None");
    EXPECT_EQ(Model().PipeRecord[3].KFactorB, "None");
    // A key a field does not take leaves no trace.
    Type(1, NodeField::AreaGroup, "a1b");
    EXPECT_EQ(window.Field(1, NodeField::AreaGroup)->text(), "AB");
    EXPECT_EQ(Model().PipeRecord[3].AreaGroupB, "AB");
    // The arrows move to the same field of the next line.
    QTest::keyClick(window.Field(1, NodeField::AreaGroup), Qt::Key_Down);
    EXPECT_TRUE(window.Field(2, NodeField::AreaGroup)->hasFocus());

    // The help list of the K-factor gives its word to the line that asked.
    window.Field(3, NodeField::KFactor)->setFocus();
    window.ShowHelp(NodeField::KFactor);
    auto* list = qobject_cast<gui::HelpListWindow*>(Frame().Help().Current());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->lstHelp()->currentItem(), nullptr); // 5.6 is no row of the list
    list->lstHelp()->setCurrentItem(list->lstHelp()->topLevelItem(0));
    QTest::mouseClick(list->cmdOK(), Qt::LeftButton);
    EXPECT_EQ(Model().PipeRecord[4].KFactorE, "Dflt");
    EXPECT_EQ(window.Field(3, NodeField::KFactor)->text(), "Dflt");
}

TEST_F(NodeEditorWindowTest, VisibleRowsComeAndGoWithoutTouchingTheData) {
    gui::NodeEditorWindow& window = *Window();
    const Project before = Model();
    while (window.RemoveRowAction()->isEnabled()) {
        window.RemoveRowAction()->trigger();
    }
    EXPECT_EQ(window.VisibleRows(), 1);
    EXPECT_EQ(window.ScrollBar()->maximum(), 4);
    window.ScrollBar()->setValue(4);
    EXPECT_EQ(window.NodeNumber(0)->text(), "10");
    for (int added = 0; added < 4; ++added) {
        window.AddRowAction()->trigger();
    }
    EXPECT_EQ(window.VisibleRows(), 5);
    EXPECT_FALSE(window.AddRowAction()->isEnabled()); // every node shows
    EXPECT_EQ(ShownNodes(), (QStringList{"20", "30", "40", "50", "10"}));
    EXPECT_EQ(Model().PipeRecord, before.PipeRecord);
    // The count is kept for the next time the screen opens.
    IniFileHandler settings(scratch_ / "QUENCH.ini");
    EXPECT_EQ(settings.MyGetAppProfileInteger("Miscellaneous", "NumberOfNodeRows", 0), 5);
}

TEST_F(NodeEditorWindowTest, ThePipeScreenAndTheNodeEditorShowTheSameData) {
    Frame().Dispatch("ToolEnterEditPipeData");
    gui::PipeDataWindow* pipes = Frame().PipeData();
    ASSERT_NE(pipes, nullptr);
    Frame().Dispatch("ToolNodalEditor");
    const auto cell = [pipes](int row, PipeColumn column) {
        return pipes->Table()->model()->index(row - 1, IndexOf(column)).data().toString();
    };
    // Node 30 is the ending node of row 2 and the beginning node of row 3.
    Type(1, NodeField::Elevation, "7.5");
    EXPECT_EQ(Window()->Field(1, NodeField::Elevation)->text(), "7.5");
    EXPECT_FLOAT_EQ(Model().PipeRecord[2].ElevationE, 7.5f);
    EXPECT_EQ(cell(2, PipeColumn::ElevationE), "7.5");
    EXPECT_EQ(cell(3, PipeColumn::ElevationB), "7.5");

    // An edit on the pipe screen shows on the node editor's line of the node.
    Frame().Dispatch("ToolEnterEditPipeData");
    pipes->Rules().Enter(4, PipeColumn::ElevationE, "3");
    emit pipes->InputEdited();
    EXPECT_EQ(Window()->Field(3, NodeField::Elevation)->text(), "3.0");
}

} // namespace
} // namespace quench
