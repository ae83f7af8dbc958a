#include "gui/calculation_window.h"
#include "gui/help_window.h"
#include "gui/pipe_data_window.h"
#include "tests/gui/desktop_fixture.h"
#include "tests/support/network_builder.h"

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace quench {
namespace {

using enum PipeColumn;
using testing::BranchLine;
using testing::Desktop;
using testing::ScratchDirectory;

class PipeDataWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto file = line_.Write(scratch_ / "projects" / "branch.qnw");
        desktop_ = std::make_unique<Desktop>(scratch_.Path());
        Frame().RunStartFile(QString::fromStdString(file.string()));
        ASSERT_TRUE(Frame().Lifecycle().ProjectIsLoaded());
        Frame().Dispatch("ToolEnterEditPipeData");
        ASSERT_NE(Window(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Frame()));
        QApplication::processEvents();
    }

    gui::MainFrame& Frame() { return *desktop_->Frame; }
    gui::PipeDataWindow* Window() { return Frame().PipeData(); }
    Project& Model() { return *desktop_->Model; }
    QTableView& View() { return *Window()->Table(); }

    // The keys as a person presses them: to the cell's editor while one is open, else the table.
    QWidget* Typed() {
        QWidget* editor = View().indexWidget(View().currentIndex());
        return editor != nullptr ? editor : &View();
    }
    void Press(const QString& keys) {
        for (QChar key : keys) {
            QTest::keyClick(Typed(), key.toLatin1());
        }
    }
    void Press(Qt::Key key) { QTest::keyClick(Typed(), key); }
    // Tab from the current cell to `column` of the same row.
    void TabTo(PipeColumn column) {
        while (View().currentIndex().column() != IndexOf(column)) {
            Press(Qt::Key_Tab);
        }
    }
    QString Shown(int row, PipeColumn column) {
        return View().model()->index(row - 1, IndexOf(column)).data().toString();
    }

    BranchLine line_;
    ScratchDirectory scratch_;
    std::unique_ptr<Desktop> desktop_;
};

TEST_F(PipeDataWindowTest, ANetworkTypedWithTheKeyboardCalculatesAsTheHandMethodSays) {
    gui::PipeDataWindow& window = *Window();
    EXPECT_EQ(window.windowTitle(), "Enter/Edit Pipe Data: Pipe 1 of 1000   4 Pipes Defined");
    desktop_->Dialogs.Script(Answer::Yes);
    window.Action("ToolClearPipe")->trigger();
    EXPECT_EQ(Model().NumberOfPipeRows, 0);
    EXPECT_EQ(Shown(1, BegNode), "");

    View().setFocus();
    View().setCurrentIndex(View().model()->index(0, 0));
    const char* nodes[] = {"10", "20", "30", "40", "50"};
    for (int row = 1; row <= 4; ++row) {
        // Beg, End, the end's K, then the pipe: material, diameter, length.
        Press(nodes[row - 1]);
        TabTo(EndNode);
        Press(nodes[row]);
        TabTo(KFactorE);
        Press("5.6");
        TabTo(Material);
        Press("1");
        TabTo(Diameter);
        Press("1");
        TabTo(Length);
        Press("10");
        Press(Qt::Key_Return); // does nothing in a field
        Press(Qt::Key_Down);   // the same field of the next row
        EXPECT_EQ(View().currentIndex().row(), row);
        View().setCurrentIndex(View().model()->index(row, 0));
    }
    EXPECT_EQ(Model().NumberOfPipeRows, 4);
    // Node 20 typed into row 2 took the K of row 1's end; every row of a node agrees.
    EXPECT_EQ(Model().PipeRecord[2].KFactorB, "5.6");
    EXPECT_EQ(Model().PipeRecord[1].KFactorE, "5.6");
    EXPECT_EQ(Shown(4, Length), "10.0");
    EXPECT_EQ(Model().PipeRecord[4].Material, 1);

    // Node 20 is no supply: row 1's beginning is.
    View().setCurrentIndex(View().model()->index(0, IndexOf(BegNode)));
    window.Action("ToolMarkInflowNode")->trigger();
    EXPECT_EQ(Model().InflowNode, 10);
    EXPECT_EQ(Model().PipeRecord[1].BegIsInflow, 1);
    EXPECT_EQ(Model().PipeRecord[1].KFactorB, "0");

    Frame().Dispatch("ToolCalculation");
    ASSERT_NE(Frame().Calculation(), nullptr);
    QTest::mouseClick(Frame().Calculation()->cmdCalculation(), Qt::LeftButton);
    EXPECT_TRUE(desktop_->Dialogs.Empty() || desktop_->Dialogs.LastTitle() == "Clear all pipes")
        << desktop_->Dialogs.LastText();
    EXPECT_EQ(Model().CalculationData.HMDNodeNumber, 50);
    EXPECT_NEAR(Model().CalculationData.HMDActualResidualPressure, BranchLine::LastPressure, 0.005);
    EXPECT_NEAR(Model().CalculationData.InflowFlow, line_.Flow, 0.01);
}

TEST_F(PipeDataWindowTest, KeysUndoAndTheLabels) {
    gui::PipeDataWindow& window = *Window();
    View().setFocus();
    // Row 2 names node 20 at its beginning; an edit there shows in row 1's end at once.
    View().setCurrentIndex(View().model()->index(1, IndexOf(ElevationB)));
    Press("12");
    EXPECT_EQ(Model().PipeRecord[1].ElevationE, 12.0f);
    EXPECT_EQ(Shown(1, ElevationE), "12.0");
    Press(Qt::Key_Tab);
    // A refused key leaves no trace; K keys give their words.
    View().setCurrentIndex(View().model()->index(1, IndexOf(PressEstimateB)));
    Press("-x");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Model().PipeRecord[2].PressEstimateB, 0.0f);
    View().setCurrentIndex(View().model()->index(2, IndexOf(KFactorB)));
    Press("i");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Model().PipeRecord[3].KFactorB, "Inact");
    EXPECT_EQ(Model().PipeRecord[2].KFactorE, "Inact");
    // Ctrl+Z takes back the K with its spread, then the elevation; Ctrl+Y brings the K again.
    QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Model().PipeRecord[2].KFactorE, "5.6");
    QTest::keyClick(&View(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Model().PipeRecord[1].ElevationE, 0.0f);
    QTest::keyClick(&View(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Model().PipeRecord[1].ElevationE, 12.0f);
    // Red diameters are open to autosizing; the area total counts the sprinklers.
    View().setCurrentIndex(View().model()->index(0, IndexOf(Diameter)));
    Press("0");
    Press(Qt::Key_Tab);
    const QModelIndex diameter = View().model()->index(0, IndexOf(Diameter));
    EXPECT_EQ(diameter.data(Qt::ForegroundRole).value<QBrush>().color(), QColor(255, 0, 0));
    Model().SystemData.MaximumAreaPerSprinkler = 100;
    window.Reload();
    // Node 20 is no sprinkler any more: the elevation typed at row 2's beginning spread all of
    // that end's data, its K "None" too, over row 1's end. Nodes 30, 40 and 50 remain.
    EXPECT_EQ(Model().PipeRecord[1].KFactorE, "None");
    EXPECT_EQ(window.TotalAreaLabel()->text(), "Total Sprk Area = 300.0");
    // Copy a row, paste it lower down.
    View().setCurrentIndex(View().model()->index(3, 0));
    View().selectionModel()->select(
        QItemSelection(View().model()->index(3, 0), View().model()->index(3, PipeColumnCount - 1)),
        QItemSelectionModel::ClearAndSelect);
    window.Command("Copy");
    QString copied = QApplication::clipboard()->text();
    copied.replace("40\t", "60\t").replace("50\t", "70\t");
    QApplication::clipboard()->setText(copied);
    View().setCurrentIndex(View().model()->index(9, 0));
    window.Command("Paste");
    EXPECT_EQ(Model().PipeRecord[10].BegNode, "60");
    EXPECT_EQ(Model().PipeRecord[10].EndNode, "70");
    EXPECT_EQ(Model().PipeRecord[10].Length, 10.0f);
}

// The bundled branch-line example typed again into its own project, key by key, from the texts its
// rows show: the same answer as the example calculated as it was written.
TEST_F(PipeDataWindowTest, TheBranchLineExampleTypedAgainGivesTheSameAnswer) {
    const auto example = scratch_ / "example.qnw";
    std::filesystem::copy_file(testing::SourceDirectory() / "examples" / "branch_line.qnw",
                               example);
    auto reference = std::make_unique<Project>();
    ASSERT_TRUE(ReadProject(*reference, example));
    testing::CalculationRun run;
    ASSERT_TRUE(run.Calculate(*reference));
    Frame().RunStartFile(QString::fromStdString(example.string()));
    Frame().Dispatch("ToolEnterEditPipeData");
    gui::PipeDataWindow& window = *Window();
    desktop_->Dialogs.Script(Answer::Yes);
    window.Action("ToolClearPipe")->trigger();
    ASSERT_EQ(Model().NumberOfPipeRows, 0);

    View().setFocus();
    for (int row = 1; row <= reference->NumberOfPipeRows; ++row) {
        const RowView shown = ShowRow(*reference, row, MeasureSystem::US);
        View().setCurrentIndex(View().model()->index(row - 1, 0));
        for (PipeColumn column : {BegNode, ElevationB, EndNode, KFactorE, ElevationE,
                                  SprinklerAreaE, Material, Diameter, Length, FittingText}) {
            const std::string text = shown[column];
            if (text.empty()) {
                continue;
            }
            TabTo(column);
            Press(QString::fromStdString(text == "None" ? "N" : text));
        }
        Press(Qt::Key_Tab);
    }
    View().setCurrentIndex(View().model()->index(0, IndexOf(BegNode)));
    window.Action("ToolMarkInflowNode")->trigger();
    ASSERT_EQ(Model().NumberOfPipeRows, reference->NumberOfPipeRows);
    for (int row = 1; row <= reference->NumberOfPipeRows; ++row) {
        EXPECT_EQ(Model().PipeRecord[row].TotalEquivLength,
                  reference->PipeRecord[row].TotalEquivLength)
            << row;
    }

    Frame().Dispatch("ToolCalculation");
    QTest::mouseClick(Frame().Calculation()->cmdCalculation(), Qt::LeftButton);
    const CalculationData& typed = Model().CalculationData;
    const CalculationData& expected = reference->CalculationData;
    EXPECT_TRUE(Frame().Lifecycle().ResultsFresh());
    EXPECT_GT(typed.InflowFlow, 5 * 5.6 * std::sqrt(7.0)); // five sprinklers at 7 psi or more
    EXPECT_EQ(typed.HMDNodeNumber, expected.HMDNodeNumber);
    EXPECT_DOUBLE_EQ(typed.InflowResidualPressure, expected.InflowResidualPressure);
    EXPECT_DOUBLE_EQ(typed.InflowFlow, expected.InflowFlow);
    EXPECT_DOUBLE_EQ(typed.SprinklerFlow, expected.SprinklerFlow);
}

TEST_F(PipeDataWindowTest, APickFromAFieldsHelpListGoesIntoTheField) {
    View().setFocus();
    View().setCurrentIndex(View().model()->index(1, IndexOf(Material)));
    QTest::keyClick(&View(), Qt::Key_F1);
    auto* list = qobject_cast<gui::HelpListWindow*>(Frame().Help().Current());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->lblHelpTitle()->text(), "Pipe Material");
    list->txtDefaultValue()->setText("2");
    QTest::mouseClick(list->cmdOK(), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(Model().PipeRecord[2].Material, 2);
    EXPECT_EQ(Shown(2, Material), "2");
    // The pick is one step of Undo.
    Window()->Action("Undo")->trigger();
    EXPECT_EQ(Model().PipeRecord[2].Material, 1);
}

} // namespace
} // namespace quench
