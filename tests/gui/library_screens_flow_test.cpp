// A person's way through the library screens with nothing but the widgets: a new pipe material
// with three sizes on the library screen, a pipe table typed with it, a pump defined from four
// points when the pump row is typed, and a Demand calculation that uses both. Then a restart and a
// unit switch, which must lose nothing of it.

#include "app/directories.h"
#include "entry/pump_point_units.h"
#include "gui/calculation_window.h"
#include "gui/data_units_dialog.h"
#include "gui/fire_pump_window.h"
#include "gui/pipe_data_window.h"
#include "gui/pipe_library_window.h"
#include "gui/pump_curve_chart.h"
#include "gui/validated_field.h"
#include "library/pump_curve_text.h"
#include "tests/gui/desktop_fixture.h"
#include "tests/gui/widget_input.h"

#include <cmath>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::Choose;
using testing::DataDirectory;
using testing::Desktop;
using testing::ScratchDirectory;
using testing::Type;

constexpr double HmdTarget = 15;
// A pump rated 150 gpm at 40 psi, as its data sheet gives four points.
const std::vector<CurvePoint> PumpPoints = {{0, 52}, {100, 47}, {150, 40}, {225, 26}};

struct Size {
    const char* Nominal;
    const char* Inner;
};
const Size Sizes[] = {{"1", "1.101"}, {"1.5", "1.598"}, {"2", "2.095"}};

// The program's directory as a copy the test may write: the pipe library and the pump database.
fs::path CopyOfProgramDirectory(const ScratchDirectory& scratch) {
    const fs::path program = scratch / "program";
    fs::create_directories(program);
    for (const std::string_view name : {std::string_view("PIPE.DAT"), PumpDatabaseFileName}) {
        const fs::path from = DataDirectory() / name;
        if (fs::exists(from)) {
            fs::copy_file(from, program / name);
        }
    }
    return program;
}

// The keyboard on the pipe table: to the cell's editor while one is open, else the table.
struct PipeKeys {
    QTableView& View;

    QWidget* Typed() {
        QWidget* editor = View.indexWidget(View.currentIndex());
        return editor != nullptr ? editor : &View;
    }
    void Press(const QString& keys) {
        for (QChar key : keys) {
            QTest::keyClick(Typed(), key.toLatin1());
        }
    }
    void Press(Qt::Key key) { QTest::keyClick(Typed(), key); }
    void TabTo(PipeColumn column) {
        while (View.currentIndex().column() != IndexOf(column)) {
            Press(Qt::Key_Tab);
        }
    }
    void StartRow(int row) {
        View.setFocus();
        View.setCurrentIndex(View.model()->index(row - 1, 0));
    }
    QString Shown(int row, PipeColumn column) {
        return View.model()->index(row - 1, IndexOf(column)).data().toString();
    }
};

// Typed on the library screen: the material, its C value and three sizes with fitting lengths.
void MakeMaterial(gui::PipeLibraryWindow& library, int number, Desktop& desktop) {
    Choose(library.cboPipeDescription(), number - 1);
    ASSERT_EQ(library.Rules().MaterialNumber(), number);
    Type(library.txtPipeName(), "Test CPVC");
    Type(library.txtPipeCValue(), "150");
    for (const Size& size : Sizes) {
        library.cboNominalDia()->setEditText(size.Nominal);
        library.Command("ToolAddNewDiameter");
        Type(library.txtInnerDia(), size.Inner);
        for (int fitting = 0; fitting < LibraryFittingKinds; ++fitting) {
            Type(library.txtFitEqLen(fitting), QString::number(fitting + 2));
        }
    }
    // Closing asks first; No keeps the screen and all that was typed.
    desktop.Dialogs.Script(Answer::No);
    library.reject();
    EXPECT_EQ(desktop.Dialogs.LastTitle(), "Discard changes?");
    EXPECT_TRUE(library.isVisible());
    EXPECT_EQ(library.cboNominalDia()->count(), 3);
    desktop.Dialogs.Script(Answer::Yes);
    library.Command("ToolSave");
    EXPECT_EQ(desktop.Dialogs.LastTitle(), "Confirm Pipe Database Save");
    library.reject();
    EXPECT_FALSE(library.isVisible());
}

// Typed on the pump screen: four points, Calculate, and the curve passed to the project.
PumpCoefficientArray DefinePump(gui::FirePumpWindow& pump) {
    for (int point = 0; point < static_cast<int>(PumpPoints.size()); ++point) {
        Type(pump.Text1(point), QString::number(PumpPoints[point].Flow));
        emit pump.Text1(point)->editingFinished();
        Type(pump.Text2(point), QString::number(PumpPoints[point].Pressure));
        emit pump.Text2(point)->editingFinished();
    }
    pump.findChild<QPushButton*>("Calculate")->click();
    const CurveFit fit = FitPumpCurve(PumpPoints);
    EXPECT_EQ(fit.Status, CurveFitStatus::Fitted);
    EXPECT_EQ(pump.CurveLabel()->text().toStdString(), PumpCurveText(fit.Coefficients, 4));
    EXPECT_FALSE(pump.Chart()->Overflowed());
    pump.findChild<QPushButton*>("OKButton")->click();
    EXPECT_EQ(pump.result(), QDialog::Accepted);
    return fit.Coefficients;
}

// Supply 10, 20 ft of 2" to the pump 12-15, 10 ft of 1.5" to 20, then 1" pipe of 10 ft to the
// sprinklers of K 5.6 at 30, 40 and 50; every pipe of the new material.
void TypeNetwork(Desktop& desktop, int material, PumpCoefficientArray& curve) {
    gui::MainFrame& frame = *desktop.Frame;
    frame.Dispatch("ToolEnterEditPipeData");
    gui::PipeDataWindow* pipes = frame.PipeData();
    ASSERT_NE(pipes, nullptr);
    PipeKeys keys{*pipes->Table()};
    struct Row {
        const char* Begin;
        const char* End;
        const char* K;
        const char* Diameter;
        const char* Length;
    };
    const Row rows[] = {{"10", "12", "", "2", "20"},    {"12", "15", "", "", ""},
                        {"15", "20", "", "1.5", "10"},  {"20", "30", "5.6", "1", "10"},
                        {"30", "40", "5.6", "1", "10"}, {"40", "50", "5.6", "1", "10"}};
    for (int row = 1; row <= 6; ++row) {
        const Row& typed = rows[row - 1];
        keys.StartRow(row);
        keys.Press(typed.Begin);
        keys.TabTo(PipeColumn::EndNode);
        keys.Press(typed.End);
        if (*typed.K != '\0') {
            keys.TabTo(PipeColumn::KFactorE);
            keys.Press(typed.K);
        }
        keys.TabTo(PipeColumn::Material);
        if (row == 2) {
            // The pump's letter opens the pump screen.
            keys.Press("P");
            EXPECT_EQ(desktop.Model->PipeRecord[2].Material, MaterialFirePump);
            auto* pump = frame.findChild<gui::FirePumpWindow*>();
            ASSERT_NE(pump, nullptr);
            EXPECT_TRUE(pump->isVisible());
            curve = DefinePump(*pump);
            QApplication::processEvents();
            // Back on the table where the person left it, its history of edits kept.
            EXPECT_EQ(keys.View.currentIndex().row(), 1);
            EXPECT_EQ(keys.View.currentIndex().column(), IndexOf(PipeColumn::Material));
            EXPECT_TRUE(pipes->Action("Undo")->isEnabled());
            // The new pump row leaves its boost to the curve passed.
            keys.TabTo(PipeColumn::DeviceLoss);
            EXPECT_EQ(desktop.Model->PipeRecord[2].DeviceLoss, NotGiven);
            EXPECT_EQ(keys.Shown(2, PipeColumn::DeviceLoss), "Curve");
            // A typed boost takes over; the word typed back hands the boost to the curve again.
            keys.Press("25");
            keys.Press(Qt::Key_Backtab);
            EXPECT_EQ(desktop.Model->PipeRecord[2].DeviceLoss, 25.0f);
            keys.TabTo(PipeColumn::DeviceLoss);
            keys.Press("Curve");
            keys.Press(Qt::Key_Backtab);
            EXPECT_EQ(desktop.Model->PipeRecord[2].DeviceLoss, NotGiven);
            EXPECT_EQ(keys.Shown(2, PipeColumn::DeviceLoss), "Curve");
            continue;
        }
        keys.Press(QString::number(material));
        keys.TabTo(PipeColumn::Diameter);
        keys.Press(typed.Diameter);
        keys.TabTo(PipeColumn::Length);
        keys.Press(typed.Length);
        keys.Press(Qt::Key_Down);
    }
    EXPECT_EQ(desktop.Model->NumberOfPipeRows, 6);
    EXPECT_EQ(desktop.Model->PipeRecord[6].Material, material);
    keys.StartRow(1);
    pipes->Action("ToolMarkInflowNode")->trigger();
    EXPECT_EQ(desktop.Model->InflowNode, 10);
}

void TypeField(gui::CalculationWindow& window, CalculationField field, const QString& text) {
    gui::ValidatedField* box = window.Field(field);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, text);
}

// The Calculation screen: in Demand mode with the HMD's minimum and damping typed first, when
// asked; then Calculate.
void Calculate(gui::MainFrame& frame, bool typeSettings) {
    frame.Dispatch("ToolCalculation");
    gui::CalculationWindow* window = frame.Calculation();
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&frame));
    if (!typeSettings) {
        QTest::mouseClick(window->cmdCalculation(), Qt::LeftButton);
        return;
    }
    for (const CalculationOption option :
         {CalculationOption::DemandMode, CalculationOption::MaximumNodalPressure}) {
        QAbstractButton* button = window->OptionButton(option);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
    }
    TypeField(*window, CalculationField::MaximumNodePressureImbalance, "0.0001");
    TypeField(*window, CalculationField::MinPressureAtHMDNode, QString::number(HmdTarget));
    TypeField(*window, CalculationField::InitialDampingFactor, "2");
    TypeField(*window, CalculationField::MinimumDampingFactor, "1");
    QTest::mouseClick(window->cmdCalculation(), Qt::LeftButton);
}

const PipeResultRecord* ResultBetween(const Project& project, int begin, int end) {
    for (int row = 1; row <= project.CalculationData.NumberOfUniquePipeSections; ++row) {
        const PipeResultRecord& result = project.PipeResultRecord[static_cast<std::size_t>(row)];
        if ((result.BegNode == begin && result.EndNode == end) ||
            (result.BegNode == end && result.EndNode == begin)) {
            return &result;
        }
    }
    return nullptr;
}

// The posted results use the new material (its C and inside diameters) and the pump's curve.
void ExpectResultsUseMaterialAndPump(const Project& project, const PumpCoefficientArray& curve) {
    const CalculationData& data = project.CalculationData;
    EXPECT_EQ(data.HMDNodeNumber, 50);
    EXPECT_NEAR(data.HMDActualResidualPressure, HmdTarget, 0.01);
    const PipeResultRecord* last = ResultBetween(project, 40, 50);
    ASSERT_NE(last, nullptr);
    EXPECT_NEAR(last->InsideDiameter, 1.101, 1e-6);
    EXPECT_NEAR(last->CFactor, 150, 1e-9);
    // Hazen-Williams by hand over the pipe's length: 4.52 Q^1.85 / (C^1.85 d^4.87) per foot.
    const double perFoot =
        4.52 * std::pow(last->Flow, 1.85) / (std::pow(150.0, 1.85) * std::pow(1.101, 4.87));
    EXPECT_NEAR(last->FrictionPressure, perFoot * 10, 0.002 * last->FrictionPressure);
    const PipeResultRecord* main = ResultBetween(project, 15, 20);
    ASSERT_NE(main, nullptr);
    EXPECT_NEAR(main->InsideDiameter, 1.598, 1e-6);

    const PipeResultRecord* pump = ResultBetween(project, 12, 15);
    ASSERT_NE(pump, nullptr);
    EXPECT_EQ(pump->DeviceFlag, 2);
    EXPECT_GT(data.InflowFlow, 3 * 5.6 * std::sqrt(HmdTarget));
    EXPECT_NEAR(pump->FrictionPressure, EvaluatePumpCurve(curve, data.InflowFlow), 0.01);
    EXPECT_GT(pump->FrictionPressure, 26);
    EXPECT_LT(pump->FrictionPressure, 52);
}

TEST(LibraryScreensFlow, AMaterialAndAPumpMadeOnTheScreensAreCalculated) {
    ScratchDirectory scratch;
    const fs::path program = CopyOfProgramDirectory(scratch);
    const fs::path file = scratch / "projects" / "pumped.qnw";
    const int material = PipeLibraryEditor::NextFreeMaterial(LoadPipeLibrary(program / "PIPE.DAT"));
    ASSERT_GT(material, 0);
    PumpCoefficientArray curve{};
    double inflowPressure = 0;
    {
        Desktop desktop(scratch.Path(), program);
        gui::MainFrame& frame = *desktop.Frame;
        frame.resize(1300, 900);
        frame.Lifecycle().New();

        frame.Dispatch("ToolPipeDB");
        auto* library = frame.findChild<gui::PipeLibraryWindow*>();
        ASSERT_NE(library, nullptr);
        MakeMaterial(*library, material, desktop);

        TypeNetwork(desktop, material, curve);
        if (HasFailure()) {
            return;
        }
        Calculate(frame, true);
        EXPECT_TRUE(desktop.Dialogs.Empty() || desktop.Dialogs.LastTitle() == "Discard changes?" ||
                    desktop.Dialogs.LastTitle() == "Confirm Pipe Database Save")
            << desktop.Dialogs.LastTitle() << ": " << desktop.Dialogs.LastText();
        EXPECT_TRUE(frame.Lifecycle().ResultsFresh());
        ExpectResultsUseMaterialAndPump(*desktop.Model, curve);
        inflowPressure = desktop.Model->CalculationData.InflowResidualPressure;

        desktop.Choices.SaveFiles.push_back(file);
        frame.Dispatch("ToolSaveAs");
        ASSERT_TRUE(fs::exists(file));
        frame.Dispatch("ToolClose");
        ASSERT_TRUE(frame.close());
    }

    // The next start: the material is in the library, the pump in the project, both on their
    // screens; the project calculates to the same answer.
    Desktop desktop(scratch.Path(), program);
    gui::MainFrame& frame = *desktop.Frame;
    frame.resize(1300, 900);
    frame.RunStartFile(QString::fromStdString(file.string()));
    ASSERT_TRUE(frame.Lifecycle().ProjectIsLoaded());
    frame.Dispatch("ToolPipeDB");
    auto* library = frame.findChild<gui::PipeLibraryWindow*>();
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(library->cboPipeDescription()->itemText(material - 1).endsWith("Test CPVC"));
    Choose(library->cboPipeDescription(), material - 1);
    EXPECT_EQ(library->cboNominalDia()->count(), 3);
    library->reject();

    // In SI the pump screen shows litres per minute and kPa; the curve held stays the same.
    frame.Dispatch("ToolUnits");
    auto* units = frame.findChild<gui::DataUnitsDialog*>();
    ASSERT_NE(units, nullptr);
    units->OptSI()->click();
    units->accept();
    QApplication::processEvents();
    ASSERT_EQ(frame.Units(), MeasureSystem::SI);
    frame.Dispatch("ToolPumpDB");
    auto* pump = frame.findChild<gui::FirePumpWindow*>();
    ASSERT_NE(pump, nullptr);
    EXPECT_EQ(pump->Rules().GivenPoints(), PumpPoints);
    EXPECT_EQ(pump->Text1(3)->text(), "851.718"); // 225 gpm
    EXPECT_EQ(pump->Text2(2)->text(), "275.79");  // 40 psi
    EXPECT_EQ(pump->CurveLabel()->text().toStdString(),
              ShownPumpCurveText(curve, 4, false, MeasureSystem::SI));
    pump->findChild<QPushButton*>("CancelButton")->click();
    EXPECT_EQ(desktop.Model->CalculationData.PumpCoefficients, curve);

    Calculate(frame, false);
    EXPECT_TRUE(desktop.Dialogs.Empty())
        << desktop.Dialogs.LastTitle() << ": " << desktop.Dialogs.LastText();
    ExpectResultsUseMaterialAndPump(*desktop.Model, curve);
    EXPECT_NEAR(desktop.Model->CalculationData.InflowResidualPressure, inflowPressure, 0.01);
}

} // namespace
} // namespace quench
