#include "core/atomic_write.h"
#include "gui/additional_fitting_calculator_dialog.h"
#include "gui/branch_line_calculator_dialog.h"
#include "gui/help_window.h"
#include "gui/kfactor_calculator_dialog.h"
#include "gui/validated_field.h"
#include "library/pipe_library_file.h"
#include "reports/dxf_graph.h"
#include "tests/gui/desktop_fixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::Desktop;
using testing::ScratchDirectory;
using testing::ScriptedDialogs;

void Type(gui::ValidatedField* field, const QString& text) {
    ASSERT_NE(field, nullptr);
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClicks(field, text);
}

void Click(QWidget* dialog, const char* button) {
    auto* found = dialog->findChild<QPushButton*>(button);
    ASSERT_NE(found, nullptr) << button;
    found->click();
}

// Runs `script` on the calculator that the next modal loop shows.
template <typename Dialog, typename Script>
void WhenOpened(Script script) {
    QTimer::singleShot(0, [script] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        script(*dialog);
    });
}

const PipeLibrary& ShippedLibrary() {
    static const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(testing::DataDirectory()));
    return library;
}

TEST(KFactorCalculatorDialog, LinesFollowTheirInputsAndCloseReturnsTheKFactor) {
    gui::CalculatorSetup setup;
    gui::KFactorCalculatorDialog dialog(setup, "Dflt");
    EXPECT_EQ(dialog.windowTitle(), "Sprinkler K-Factor Calculator");
    EXPECT_EQ(dialog.Field("txtSecondKfactor")->text(), ""); // a K-factor word is no input
    Type(dialog.Field("txtFlowRate"), "100");
    Type(dialog.Field("txtHeadLoss"), "25");
    Type(dialog.Field("txtSecondKfactor"), "5.6");
    Type(dialog.Field("txtSecondPressure"), "16");
    Type(dialog.Field("txtThirdKfactor"), "5.6");
    Type(dialog.Field("txtThirdFlow"), "28");
    EXPECT_EQ(dialog.Result("txtCalcKFact")->text(), "20.0");
    EXPECT_EQ(dialog.Result("txtSecondFlow")->text(), "22.4");
    EXPECT_EQ(dialog.Result("txtThirdPressure")->text(), "25.0");
    Type(dialog.Field("txtThirdFlow"), "0");
    EXPECT_EQ(dialog.Result("txtThirdPressure")->text(), "");
    Click(&dialog, "cmdClose");
    EXPECT_EQ(dialog.ReturnedValue(), QString("20.0"));

    gui::KFactorCalculatorDialog empty(setup, "5.6");
    EXPECT_EQ(empty.Field("txtSecondKfactor")->text(), "5.6");
    Click(&empty, "cmdClose");
    EXPECT_EQ(empty.ReturnedValue(), QString("0.0"));

    gui::KFactorCalculatorDialog cancelled(setup);
    Type(cancelled.Field("txtFlowRate"), "100");
    Type(cancelled.Field("txtHeadLoss"), "25");
    Click(&cancelled, "cmdCancel");
    EXPECT_FALSE(cancelled.ReturnedValue());
}

TEST(BranchLineCalculatorDialog, AKFactorCalculatorOpenedFromItsKFieldReturnsIntoIt) {
    gui::CalculatorSetup setup;
    setup.Library = &ShippedLibrary();
    gui::BranchLineCalculatorDialog dialog(setup, "Value");
    dialog.show();
    Type(dialog.Field("txtMaterial"), "1");
    Type(dialog.Field("txtDiameter"), "1");
    Type(dialog.Field("txtLength"), "12");
    EXPECT_EQ(dialog.Result()->text(), ""); // no K-factor yet

    WhenOpened<gui::KFactorCalculatorDialog>([](gui::KFactorCalculatorDialog& calculator) {
        Type(calculator.Field("txtFlowRate"), "100");
        Type(calculator.Field("txtHeadLoss"), "25");
        Click(&calculator, "cmdClose");
    });
    dialog.SprinklerCalculatorButton()->click();
    EXPECT_EQ(dialog.Field("txtSprinkler")->text(), "20.0");
    const double withPipe = dialog.Result()->text().toDouble();
    EXPECT_GT(withPipe, 0);
    EXPECT_LT(withPipe, 20);

    // Cancel leaves the field as it was.
    WhenOpened<gui::KFactorCalculatorDialog>([](gui::KFactorCalculatorDialog& calculator) {
        Type(calculator.Field("txtFlowRate"), "50");
        Type(calculator.Field("txtHeadLoss"), "25");
        Click(&calculator, "cmdCancel");
    });
    dialog.SprinklerCalculatorButton()->click();
    EXPECT_EQ(dialog.Field("txtSprinkler")->text(), "20.0");

    // The fitting calculator opens on the size's inside diameter and its length lands in the
    // non-standard fittings, which lengthen the stretch.
    WhenOpened<gui::AdditionalFittingCalculatorDialog>(
        [](gui::AdditionalFittingCalculatorDialog& calculator) {
            EXPECT_EQ(calculator.Field("txtDia")->text(), "1.049");
            calculator.ModelButton(FrictionModel::CValue)->click();
            Click(&calculator, "btnCalculate");
            Click(&calculator, "btnClose");
        });
    dialog.FittingCalculatorButton()->click();
    EXPECT_FALSE(dialog.Field("txtNonstandard")->text().isEmpty());
    EXPECT_LT(dialog.Result()->text().toDouble(), withPipe);

    Type(dialog.Field("txtDiameter"), "1.1"); // no such size
    EXPECT_EQ(dialog.Result()->text(), "");
    Click(&dialog, "cmdClose");
    EXPECT_EQ(dialog.ReturnedValue(), QString("0.0"));
}

TEST(AdditionalFittingCalculatorDialog, DefaultsCalculationAndMessages) {
    ScriptedDialogs messages;
    gui::CalculatorSetup setup;
    setup.Messages = &messages;
    gui::AdditionalFittingCalculatorDialog dialog(setup, 0);
    EXPECT_EQ(dialog.Field("txtHeadLoss")->text(), "1");
    EXPECT_EQ(dialog.Field("txtFlowRate")->text(), "100");
    EXPECT_EQ(dialog.Field("txtDia")->text(), "2");
    EXPECT_EQ(dialog.Field("txtDensity")->text(), "62.37");
    EXPECT_EQ(dialog.Field("txtViscosity")->text(), "1.1244");
    EXPECT_EQ(dialog.Field("txtRoughness")->text(), "0.002");
    EXPECT_EQ(dialog.Field("txtCValue")->text(), "130");
    EXPECT_TRUE(dialog.ModelButton(FrictionModel::Roughness)->isChecked());
    EXPECT_EQ(dialog.Result()->text(), "");

    dialog.ModelButton(FrictionModel::CValue)->click();
    Click(&dialog, "btnCalculate");
    EXPECT_TRUE(messages.Empty());
    EXPECT_EQ(dialog.Result()->text(), "10.51");

    Type(dialog.Field("txtHeadLoss"), "0");
    Click(&dialog, "btnCalculate");
    EXPECT_EQ(messages.LastTitle(), "Values must be greater than zero");
    EXPECT_EQ(dialog.Result()->text(), "10.51"); // a refusal leaves the result as it was
    Click(&dialog, "btnClose");
    EXPECT_EQ(dialog.ReturnedValue(), QString("10.51"));

    gui::CalculatorSetup metric = setup;
    metric.Units = MeasureSystem::SI;
    gui::AdditionalFittingCalculatorDialog si(metric, 0);
    EXPECT_EQ(si.Field("txtHeadLoss")->text(), "6.99"); // the field keeps 2 decimals
    EXPECT_EQ(si.Field("txtFlowRate")->text(), "378.5");
    EXPECT_EQ(si.Field("txtDia")->text(), "63.5");
    EXPECT_EQ(si.Field("txtDensity")->text(), "1000");
    EXPECT_EQ(si.Field("txtRoughness")->text(), "0.051");
}

TEST(MainFrame, TheToolsMenuOpensBothKFactorCalculators) {
    ScratchDirectory scratch;
    Desktop desktop(scratch.Path());
    gui::MainFrame& frame = *desktop.Frame;
    ASSERT_NE(frame.Action("ToolSprinklerCalculator"), nullptr);
    ASSERT_NE(frame.Action("ToolBranchLineCalculator"), nullptr);
    bool opened = false;
    WhenOpened<gui::KFactorCalculatorDialog>([&opened](gui::KFactorCalculatorDialog& calculator) {
        opened = true;
        Click(&calculator, "cmdClose");
    });
    frame.Dispatch("ToolSprinklerCalculator");
    EXPECT_TRUE(opened);
    opened = false;
    WhenOpened<gui::BranchLineCalculatorDialog>(
        [&opened](gui::BranchLineCalculatorDialog& calculator) {
            opened = true;
            Click(&calculator, "cmdCancel");
        });
    frame.Dispatch("ToolBranchLineCalculator");
    EXPECT_TRUE(opened);
}

TEST(MainFrame, AKFactorHelpWindowsCalculatorReturnsItsValueAsThePick) {
    ScratchDirectory scratch;
    Desktop desktop(scratch.Path());
    gui::MainFrame& frame = *desktop.Frame;
    frame.Dispatch("ToolNew");
    std::vector<std::string> words;
    gui::ScreenDispatcher& screens = frame.Dispatcher();
    screens.Register("frmEEPipeData",
                     [&words](std::string_view word) { words.emplace_back(word); });

    frame.Help().Show({"EEPipeDataKFactorB", 3, "Dflt", "frmEEPipeData", ""});
    auto* list = qobject_cast<gui::HelpListWindow*>(frame.Help().Current());
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->CalculatorButtons().size(), 2u);
    WhenOpened<gui::KFactorCalculatorDialog>([](gui::KFactorCalculatorDialog& calculator) {
        EXPECT_EQ(calculator.Field("txtSecondKfactor")->text(), ""); // "Dflt" is no value
        Type(calculator.Field("txtFlowRate"), "42");
        Type(calculator.Field("txtHeadLoss"), "16");
        Click(&calculator, "cmdClose");
    });
    list->CalculatorButtons()[0]->click();
    QApplication::processEvents();
    EXPECT_EQ(frame.Help().State().HelpSelection, "10.5");
    EXPECT_EQ(words, std::vector<std::string>{"UpdateEEPipeDataFromHelpWindow"});

    // Cancel in the branch line calculator leaves the help window open and picks nothing.
    frame.Help().Show({"EEPipeDataKFactorB", 3, "5.6", "frmEEPipeData", ""});
    list = qobject_cast<gui::HelpListWindow*>(frame.Help().Current());
    ASSERT_NE(list, nullptr);
    WhenOpened<gui::BranchLineCalculatorDialog>([](gui::BranchLineCalculatorDialog& calculator) {
        EXPECT_EQ(calculator.Field("txtSprinkler")->text(), "5.6");
        Click(&calculator, "cmdCancel");
    });
    list->CalculatorButtons()[1]->click();
    EXPECT_FALSE(list->Choice());
    list->close();
    QApplication::processEvents();
    EXPECT_EQ(words.size(), 1u);
}

TEST(MainFrame, TheGraphIsSavedAsADrawingThroughItsFileDialog) {
    ScratchDirectory scratch;
    const auto project = testing::BranchLine().Write(scratch.Path() / "projects" / "branch.qnw");
    Desktop desktop(scratch.Path());
    gui::MainFrame& frame = *desktop.Frame;
    frame.RunStartFile(QString::fromStdString(project.string()));
    ASSERT_TRUE(frame.Lifecycle().ProjectIsLoaded());
    ASSERT_NE(frame.Action("ToolDXF_Graph"), nullptr);
    desktop.Model->SystemData.TestStaticPressure = 70;
    desktop.Model->SystemData.TestResidualPressure = 50;
    desktop.Model->SystemData.TestFlowRate = 800;

    const auto drawing = scratch.Path() / "graph.dxf";
    desktop.Choices.SaveFiles.push_back(drawing);
    frame.Dispatch("ToolDXF_Graph");
    EXPECT_TRUE(desktop.Choices.SaveFiles.empty());
    std::string bytes;
    ASSERT_TRUE(ReadWholeFile(drawing, bytes));
    EXPECT_EQ(bytes, DxfGraphText(GraphDataOf(desktop.Model->SystemData)).value());

    // A residual above the static pressure: a message and no file.
    fs::remove(drawing);
    desktop.Model->SystemData.TestResidualPressure = 90;
    desktop.Choices.SaveFiles.push_back(drawing);
    frame.Dispatch("ToolDXF_Graph");
    EXPECT_EQ(desktop.Dialogs.LastText(), DxfImpossibleTestMessage);
    EXPECT_FALSE(fs::exists(drawing));

    // A metric project is told so before any file is asked for.
    desktop.Model->UnitSystem = 1;
    desktop.Choices.SaveFiles.push_back(drawing);
    frame.Dispatch("ToolDXF_Graph");
    EXPECT_EQ(desktop.Choices.SaveFiles.size(), 1u);
    EXPECT_EQ(desktop.Dialogs.LastText(), DxfMetricMessage);
    EXPECT_FALSE(fs::exists(drawing));
}

} // namespace
} // namespace quench
