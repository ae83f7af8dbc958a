#include "entry/builder_words.h"
#include "gui/grid_builder_tab.h"
#include "gui/network_layout_window.h"
#include "gui/pipe_data_window.h"
#include "gui/tree_builder_tab.h"
#include "gui/validated_field.h"
#include "tests/gui/desktop_fixture.h"
#include "tests/support/network_builder.h"

#include <fstream>

#include <QLabel>
#include <QPdfWriter>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

namespace quench {
namespace {

using enum PipeColumn;
using testing::BranchLine;
using testing::Desktop;
using testing::ScratchDirectory;

class BuilderTabsTest : public ::testing::Test {
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
    QString Shown(int row, PipeColumn column) {
        QTableView& view = *Window()->Table();
        return view.model()->index(row - 1, IndexOf(column)).data().toString();
    }

    // Types into a field of the tab as a person does: the old text selected, the new keys.
    template <typename Tab>
    void Type(Tab& tab, const char* name, const QString& text) {
        auto* field = tab.template findChild<gui::ValidatedField*>(name);
        ASSERT_NE(field, nullptr) << name;
        field->setFocus();
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Backspace);
        QTest::keyClicks(field, text);
        EXPECT_EQ(field->text(), text) << name;
    }
    template <typename Tab>
    QString FieldText(Tab& tab, const char* name) {
        auto* field = tab.template findChild<gui::ValidatedField*>(name);
        return field != nullptr ? field->text() : QString("missing");
    }

    // The worked example of the tree: two rows, one space on each side.
    void FillTree(gui::TreeBuilderTab& tab) {
        const char* network[] = {"10", "100", nullptr, "12", "12", "20",
                                 "22", "8",   "10",    "12", "12"};
        for (int index = 0; index < TreeInputCount; ++index) {
            if (network[index] != nullptr) {
                Type(tab, qPrintable(QString("txtTreeBuilderNetWorkData_%1").arg(index)),
                     network[index]);
            }
        }
        Type(tab, "txtCrossMaterila", "1");
        Type(tab, "txtcrosstypegroup", "2");
        Type(tab, "txtcrossdiameter", "2");
        Type(tab, "txtTreeBranchMaterial", "1");
        Type(tab, "txtTreeBranchTypeGroup", "1");
        Type(tab, "txtTreebranchdiameter", "1");
        Type(tab, "txtTreeElevation", "12");
        Type(tab, "txtTreeKFactor", "0");
        Type(tab, "txtTreeSprinklerArea", "100");
    }

    BranchLine line_;
    ScratchDirectory scratch_;
    std::unique_ptr<Desktop> desktop_;
};

TEST_F(BuilderTabsTest, ATreeTypedOnItsTabIsBuiltIntoTheTableAndUndoneInOneStep) {
    QTabWidget& tabs = *Window()->Tabs();
    ASSERT_EQ(tabs.count(), 4); // the table, the two builders, global edit
    EXPECT_EQ(tabs.tabText(1), "Tree Builder");
    EXPECT_EQ(tabs.tabText(2), "Grid Builder");
    gui::TreeBuilderTab& tab = *Window()->TreeBuilder();
    tabs.setCurrentWidget(&tab);
    EXPECT_EQ(Window()->windowTitle(), "Enter/Edit Pipe Data: 4 Pipes Defined");
    FillTree(tab);
    // The estimate follows the inputs as they are typed.
    EXPECT_EQ(tab.RowsLabel()->text(), "2");
    EXPECT_EQ(tab.SprinklersPerRowLabel()->text(), "4");
    EXPECT_EQ(tab.Calculated(TreeBranchSpacing)->text(), "12.0");

    // Four rows stand in the table: Yes adds the tree behind them.
    Model().SystemData.DefaultKFactor = 5.6f;
    desktop_->Dialogs.Script(Answer::Yes);
    tab.findChild<QPushButton*>("cmdTreeCreation")->click();
    EXPECT_EQ(desktop_->Dialogs.LastTitle(), builder_words::ConfirmPipeAddTitle);
    EXPECT_EQ(Model().NumberOfPipeRows, 14);
    EXPECT_EQ(Window()->windowTitle(), "Enter/Edit Pipe Data: 14 Pipes Defined");
    const int expected[][2] = {{100, 110}, {120, 130}, {130, 110}, {110, 140}, {140, 150},
                               {110, 180}, {160, 170}, {170, 180}, {180, 190}, {190, 200}};
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(Shown(5 + i, BegNode), QString::number(expected[i][0])) << i;
        EXPECT_EQ(Shown(5 + i, EndNode), QString::number(expected[i][1])) << i;
    }
    // A K of 0 gives the project's default K as a number; cross main nodes have "0".
    const PipeRecord& first = Model().PipeRecord[6];
    EXPECT_EQ(first.KFactorB, "5.6");
    EXPECT_EQ(Model().PipeRecord[7].KFactorE, "0");
    EXPECT_EQ(FieldText(tab, "txtTreeBuilderNetWorkData_2"), "180");
    EXPECT_EQ(tab.Calculated(TreeExitNode)->text(), "180");
    // The inputs are the project's now, in feet.
    EXPECT_FLOAT_EQ(Model().TreeBuilderData.LengthOfCrossMain, 12);
    EXPECT_EQ(Model().TreeBuilderData.ExitNode, 180);
    EXPECT_EQ(Model().TreeBuilderData.SourceNode, 100);
    // The K field keeps what was typed.
    EXPECT_EQ(FieldText(tab, "txtTreeKFactor"), "0");

    Window()->Command("Undo");
    EXPECT_EQ(Model().NumberOfPipeRows, 4);
    EXPECT_EQ(Shown(5, BegNode), "");

    // A missing input is told and the focus goes to it; nothing is written.
    Type(tab, "txtTreeBuilderNetWorkData_4", "0");
    tab.CreateTree();
    EXPECT_EQ(desktop_->Dialogs.LastText(), builder_words::InputMissing);
    EXPECT_EQ(Model().NumberOfPipeRows, 4);
    EXPECT_EQ(QApplication::focusWidget(), tab.Input(TreeBranchSpacing));
}

TEST_F(BuilderTabsTest, AUnitSwitchConvertsTheShownNumbersOnly) {
    gui::TreeBuilderTab& tab = *Window()->TreeBuilder();
    Window()->Tabs()->setCurrentWidget(&tab);
    FillTree(tab);
    Frame().ApplyUnits(MeasureSystem::SI);
    EXPECT_EQ(FieldText(tab, "txtTreeBuilderNetWorkData_3"), "3.66");
    EXPECT_EQ(FieldText(tab, "txtcrossdiameter"), "50.8");
    // A value typed in metres is kept in feet.
    Type(tab, "txtTreeBuilderNetWorkData_5", "10");
    Frame().ApplyUnits(MeasureSystem::US);
    // Untouched values come back as they were; the typed one in feet.
    EXPECT_EQ(FieldText(tab, "txtTreeBuilderNetWorkData_3"), "12");
    EXPECT_EQ(FieldText(tab, "txtcrossdiameter"), "2");
    EXPECT_EQ(FieldText(tab, "txtTreeBuilderNetWorkData_5"), "32.81");
    Window()->Dispatch("UpdateTreeInputData");
    EXPECT_NEAR(Model().TreeBuilderData.LengthOfLeftBranchLine, 32.8084, 1e-3);
    EXPECT_FLOAT_EQ(Model().TreeBuilderData.LengthOfCrossMain, 12);
}

TEST_F(BuilderTabsTest, DisplayNetworkDrawsAndPrintsTheGridWithoutTouchingTheRows) {
    gui::GridBuilderTab& tab = *Window()->GridBuilder();
    Window()->Tabs()->setCurrentWidget(&tab);
    const char* network[] = {"10", "100", "5", "6", "10", "2", "4", "8", "2", "3"};
    for (int index = 0; index < GridInputCount; ++index) {
        Type(tab, qPrintable(QString("txtGridBuilderNetWorkData_%1").arg(index)), network[index]);
    }
    Type(tab, "txtPerimeterMaterila", "1");
    Type(tab, "txtGridBranchMaterial", "1");
    tab.findChild<QPushButton*>("cmdGridDisplayNetwork")->click();
    gui::NetworkLayoutWindow* preview = tab.Preview();
    ASSERT_NE(preview, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(preview));
    EXPECT_EQ(preview->objectName(), "frmGrid");
    EXPECT_EQ(preview->windowTitle(), "Network Layout");
    EXPECT_NE(preview->findChild<QPushButton*>("cmdPrintLayout"), nullptr);
    EXPECT_EQ(Model().NumberOfPipeRows, 4);
    EXPECT_TRUE(desktop_->Dialogs.Empty());
    // 13 pipes, 4 heads, 12 numbers of three digits.
    const PaintedDocument& page = preview->Document();
    ASSERT_EQ(page.PageCount(), 1);
    EXPECT_EQ(page.PageWidth, 6600);
    EXPECT_EQ(page.PageHeight, 4000);
    const auto count = [&page](PaintItem::Kind kind) {
        return std::ranges::count(page.Pages[0], kind, &PaintItem::What);
    };
    EXPECT_EQ(count(PaintItem::Kind::Line), 13);
    EXPECT_GT(count(PaintItem::Kind::Rectangle), 12 * 3 * 10);

    // The printed form: a PDF of one landscape page.
    const auto pdf = scratch_.Path() / "layout.pdf";
    {
        QPdfWriter writer(QString::fromStdString(pdf.string()));
        writer.setPageOrientation(QPageLayout::Landscape);
        gui::PrintLayout(page, writer);
    }
    std::ifstream printed(pdf, std::ios::binary);
    std::string head(4, '\0');
    printed.read(head.data(), 4);
    EXPECT_EQ(head, "%PDF");

    // A grid past the printed form's limits is told so, and drawn in part.
    Type(tab, "txtGridBuilderNetWorkData_5", "16");
    tab.DisplayNetwork();
    EXPECT_EQ(desktop_->Dialogs.LastText(),
              "Grid printout limited to 15 branches, so not all of the grid will be displayed "
              "here.");
    EXPECT_EQ(tab.Preview(), preview);
    preview->findChild<QPushButton*>("cmdClose")->click();
    EXPECT_FALSE(preview->isVisible());
}

TEST_F(BuilderTabsTest, HoseProjectsNameHosesOnTheBuilderTabs) {
    Model().SystemData.PrimaryDischargeName = "Hose";
    Window()->Dispatch("Updatlabel");
    gui::TreeBuilderTab& tree = *Window()->TreeBuilder();
    const auto captions = tree.findChildren<QLabel*>();
    const auto has = [](const QList<QLabel*>& labels, const char* text) {
        return std::ranges::any_of(labels, [text](QLabel* label) { return label->text() == text; });
    };
    EXPECT_TRUE(has(captions, "Left Side Distance Between Hoses"));
    EXPECT_TRUE(has(captions, "Calculated Number Of Hose Outlets Per Row:"));
    EXPECT_TRUE(has(captions, "Hose Flow Area"));
    EXPECT_FALSE(has(captions, "Sprinkler Area"));
    EXPECT_TRUE(
        has(Window()->GridBuilder()->findChildren<QLabel*>(), "Number Of Hoses Per Branch Line"));
}

} // namespace
} // namespace quench
