#include "gui/calculation_window.h"
#include "gui/general_data_window.h"
#include "gui/help_window.h"
#include "gui/validated_field.h"
#include "tests/gui/desktop_fixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

namespace quench {
namespace {

using enum GeneralField;
using testing::BranchLine;
using testing::Desktop;
using testing::ScratchDirectory;

class GeneralDataWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto file = BranchLine().Write(scratch_ / "projects" / "branch.qnw");
        desktop_ = std::make_unique<Desktop>(scratch_.Path());
        Frame().RunStartFile(QString::fromStdString(file.string()));
        ASSERT_TRUE(Frame().Lifecycle().ProjectIsLoaded());
        ASSERT_TRUE(Frame().Action("ToolGPD")->isEnabled());
        Frame().Action("ToolGPD")->trigger();
        ASSERT_NE(Window(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Frame()));
    }

    gui::MainFrame& Frame() { return *desktop_->Frame; }
    gui::GeneralDataWindow* Window() { return Frame().GeneralData(); }
    Project& Model() { return *desktop_->Model; }

    // Typed into a field as a person types: the field takes the focus, the text is replaced.
    void Type(GeneralField field, const QString& keys) {
        gui::ValidatedField* widget = Window()->Field(field);
        Window()->Tabs()->setCurrentIndex(FieldInfo(field).Tab == GeneralTab::System ? 4 : 0);
        widget->setFocus();
        widget->selectAll();
        QTest::keyClicks(widget, keys);
    }
    void Leave(GeneralField field) {
        QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(Window()->Field(field), &out);
    }

    ScratchDirectory scratch_;
    std::unique_ptr<Desktop> desktop_;
};

TEST_F(GeneralDataWindowTest, FiveTabsAndTheFieldsOfTheRecords) {
    gui::GeneralDataWindow& window = *Window();
    ASSERT_EQ(window.Tabs()->count(), 5);
    EXPECT_EQ(window.Tabs()->tabText(0), "Pr&oject Data");
    EXPECT_EQ(window.Tabs()->tabText(3), "&Building Data");
    EXPECT_EQ(window.Field(ProjectTitle)->text(), "Branch line");
    EXPECT_EQ(window.Field(ExteriorHoseFlow)->text(), "500");
    EXPECT_EQ(window.findChild<gui::ValidatedField*>("txtTestStaticPressure1"),
              window.Field(SecondTestStaticPressure));

    Type(ProjectDesignedBy, "A. Designer");
    EXPECT_EQ(Model().ProjectData.DesignedBy, "A. Designer");
    QTest::mouseClick(window.PrintComment(GeneralCheck::Project), Qt::LeftButton, {},
                      QPoint(4, window.PrintComment(GeneralCheck::Project)->height() / 2));
    EXPECT_EQ(Model().ProjectData.PrintComment, True);

    // A key that leaves the range is refused; a value below the minimum becomes the minimum.
    Type(DefaultPipeMaterial, "59");
    EXPECT_EQ(window.Field(DefaultPipeMaterial)->text(), "5");
    Type(AreaOfSprinklerOperation, "0");
    Leave(AreaOfSprinklerOperation);
    EXPECT_EQ(window.Field(AreaOfSprinklerOperation)->text(), "1");
    EXPECT_EQ(desktop_->Dialogs.LastText(), ValueTooLowText);
    EXPECT_FLOAT_EQ(Model().SystemData.AreaOfSprinklerOperation, 1);
}

TEST_F(GeneralDataWindowTest, HoseSwitchesTheCaptionsOfTheOpenScreens) {
    Frame().Dispatch("ToolCalculation");
    ASSERT_NE(Frame().Calculation(), nullptr);
    QLabel* hmdLabel =
        Frame().Calculation()->findChild<QLabel*>("lblHMDSprinklerNodeNumberCaption");
    ASSERT_NE(hmdLabel, nullptr);
    EXPECT_EQ(hmdLabel->text(), "HMD Sprinkler Node Number:");
    Frame().Dispatch("ToolGPD");

    Type(PrimaryDischarge, "Hose");
    EXPECT_EQ(Model().SystemData.PrimaryDischargeName, "Hose");
    EXPECT_EQ(Window()->Label(SprinklerMake)->text(), "Hose Make:");
    EXPECT_EQ(Window()->Label(MaximumAreaPerSprinkler)->text(), "Max Area Per Hose");
    EXPECT_EQ(hmdLabel->text(), "HMD Hose Node Number:");
    EXPECT_EQ(Frame().Calculation()->findChild<QLabel*>("txtNonSprinklerFlowCaption")->text(),
              "Fixed Flow:");
    EXPECT_EQ(Frame().Calculation()->findChild<QLabel*>("txtSprinklerFlowCaption")->text(),
              "Hose Flow:");

    // Any other word is removed, and the word in force stays.
    Type(PrimaryDischarge, "X");
    EXPECT_EQ(Window()->Field(PrimaryDischarge)->text(), "");
    Leave(PrimaryDischarge);
    EXPECT_EQ(Window()->Field(PrimaryDischarge)->text(), "Hose");
    EXPECT_EQ(Model().SystemData.PrimaryDischargeName, "Hose");
}

TEST_F(GeneralDataWindowTest, DensityAndPicksReachTheOtherScreenAndTheField) {
    Frame().Dispatch("ToolCalculation");
    Frame().Dispatch("ToolGPD");
    Type(MinimumDesiredDensity, "0.15");
    EXPECT_EQ(Frame().Calculation()->Field(CalculationField::MinimumDesiredDensity)->text(),
              "0.150");

    // The help button of the hazard opens its list; OK on a row fills the field.
    Window()->ShowHelp(HazardDescription);
    auto* list = qobject_cast<gui::HelpListWindow*>(Frame().Help().Current());
    ASSERT_NE(list, nullptr);
    list->lstHelp()->setCurrentItem(list->lstHelp()->topLevelItem(2));
    QTest::mouseClick(list->cmdOK(), Qt::LeftButton);
    EXPECT_EQ(Window()->Field(HazardDescription)->text(), "Ordinary 2");
    EXPECT_EQ(Model().SystemData.HazardDescription, "Ordinary 2");

    // The second test column shares the key of the first: the pick goes to the one that asked.
    Window()->ShowHelp(SecondTestFlowRate);
    list = qobject_cast<gui::HelpListWindow*>(Frame().Help().Current());
    EXPECT_EQ(list, nullptr); // a plain help
    Window()->ShowHelp(DefaultKFactor);
    list = qobject_cast<gui::HelpListWindow*>(Frame().Help().Current());
    ASSERT_NE(list, nullptr);
    list->lstHelp()->setCurrentItem(list->lstHelp()->topLevelItem(4));
    QTest::mouseClick(list->cmdOK(), Qt::LeftButton);
    EXPECT_EQ(Window()->Field(DefaultKFactor)->text(), "5.6");
    EXPECT_FLOAT_EQ(Model().SystemData.DefaultKFactor, 5.6f);
}

} // namespace
} // namespace quench

namespace quench {
namespace {

TEST_F(GeneralDataWindowTest, FOneOpensTheHelpOfTheFieldAndItsPickReturnsThere) {
    // On the Calculation screen: the sizing bound of group 3 asks for the list of diameters.
    Frame().Dispatch("ToolCalculation");
    gui::CalculationWindow* calculation = Frame().Calculation();
    ASSERT_NE(calculation, nullptr);
    gui::ValidatedField* bound = calculation->Field(TypeGroupMaxField(3));
    calculation->Tabs()->setCurrentIndex(1);
    bound->setFocus();
    ASSERT_EQ(QApplication::focusWidget(), bound);
    QTest::keyClick(bound, Qt::Key_F1);
    auto* list = qobject_cast<gui::HelpListWindow*>(Frame().Help().Current());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->lblHelpTitle()->text(), "Available Diameters");
    list->txtDefaultValue()->setText("4");
    QTest::mouseClick(list->cmdOK(), Qt::LeftButton);
    EXPECT_DOUBLE_EQ(Model().CalculationData.TypeGroupMaxDiameter[3], 4);
    EXPECT_EQ(bound->text(), "4");

    // On the general data screen: a plain help for a text field.
    Frame().Dispatch("ToolGPD");
    Window()->Tabs()->setCurrentIndex(4);
    Window()->Field(GeneralField::SprinklerMake)->setFocus();
    Frame().ShowFocusedFieldHelp();
    auto* plain = qobject_cast<gui::HelpWindow*>(Frame().Help().Current());
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(plain->lblHelpTitle()->text(), "Sprinkler Make");
    plain->close();
}

} // namespace
} // namespace quench
