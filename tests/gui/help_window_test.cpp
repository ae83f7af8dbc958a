#include "gui/help_window.h"
#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace quench {
namespace {

using gui::HelpListWindow;
using gui::HelpWindow;

// A frame with its help windows and a screen that records the words it is sent.
class HelpWindowTest : public ::testing::Test {
protected:
    HelpWindowTest()
        : library_(LoadPipeLibrary(PipeLibraryPath(testing::DataDirectory()))),
          help_(project_, library_, screens_, &frame_) {
        frame_.resize(900, 600);
        frame_.show();
        for (const char* screen : {"frmGPD", "frmEEPipeData"}) {
            screens_.Register(screen, [this, screen](std::string_view word) {
                words_.push_back(std::string(screen) + ":" + std::string(word));
            });
        }
    }

    HelpListWindow* ShowList(const std::string& key, const std::string& fieldText) {
        HelpRequest request{key, 7, fieldText, "frmGPD", ""};
        auto* window = qobject_cast<HelpListWindow*>(help_.Show(request));
        EXPECT_NE(window, nullptr) << key;
        return window;
    }

    Project project_;
    PipeLibrary library_;
    gui::ScreenDispatcher screens_;
    QWidget frame_;
    gui::HelpWindows help_;
    std::vector<std::string> words_;
};

TEST_F(HelpWindowTest, ARowPickedReturnsThroughTheScreensWord) {
    HelpListWindow* window = ShowList("GPDHazardDescription", "Ordinary 1");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->lblHelpTitle()->text(), "Hazard Description");
    EXPECT_TRUE(help_.State().HelpWindowOpen);
    EXPECT_EQ(help_.State().CurrentHelpKey, "GPDHazardDescription");
    EXPECT_EQ(help_.State().HelpOriginRow, 7);
    EXPECT_EQ(help_.State().HelpFieldText, "Ordinary 1");
    // The field's value stands selected; another row is picked with OK.
    EXPECT_EQ(window->lstHelp()->currentItem()->text(0), "Ordinary 1");
    window->lstHelp()->setCurrentItem(window->lstHelp()->topLevelItem(4));
    QTest::mouseClick(window->cmdOK(), Qt::LeftButton);
    EXPECT_EQ(words_, (std::vector<std::string>{"frmGPD:UpdateGPDFromHelpWindow"}));
    EXPECT_EQ(help_.State().HelpSelection, "Ex. Haz. Gp. 2");
    EXPECT_FALSE(help_.State().HelpWindowOpen);
}

TEST_F(HelpWindowTest, CancelReturnsNothingAndATypedValueWins) {
    HelpListWindow* window = ShowList("GPDSprinklerSystemType", "Wet");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->lstHelp()->topLevelItemCount(), 2);
    QTest::mouseClick(window->cmdCancel(), Qt::LeftButton);
    EXPECT_TRUE(words_.empty());
    EXPECT_EQ(help_.State().HelpSelection, "");

    window = ShowList("GPDDefaultKFactor", "");
    ASSERT_NE(window, nullptr);
    window->txtDefaultValue()->setText("  7.4 ");
    QTest::mouseClick(window->cmdOK(), Qt::LeftButton);
    EXPECT_EQ(help_.State().HelpSelection, "7.4");
    ASSERT_EQ(words_.size(), 1u);

    // A double click on a row takes the list's value column: the K of the orifice.
    window = ShowList("GPDDefaultKFactor", "");
    ASSERT_NE(window, nullptr);
    QTreeWidgetItem* large = window->lstHelp()->topLevelItem(5);
    emit window->lstHelp()->itemDoubleClicked(large, 0);
    EXPECT_EQ(help_.State().HelpSelection, "8.0");
    EXPECT_EQ(words_.size(), 2u);
}

TEST_F(HelpWindowTest, CalculatorButtonsGiveTheirValueToTheField) {
    std::vector<HelpCalculator> opened;
    help_.SetCalculatorOpener([&opened](HelpCalculator calculator,
                                        const HelpRequest& request) -> std::optional<std::string> {
        opened.push_back(calculator);
        if (calculator == HelpCalculator::BranchLine) {
            return std::nullopt; // its Cancel
        }
        return request.Key == "NodeDataKFactor" ? "11.2" : "0";
    });
    HelpListWindow* window = ShowList("NodeDataKFactor", "Dflt");
    ASSERT_NE(window, nullptr);
    ASSERT_EQ(window->CalculatorButtons().size(), 2u);
    QTest::mouseClick(window->CalculatorButtons()[1], Qt::LeftButton);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(words_.empty());
    QTest::mouseClick(window->CalculatorButtons()[0], Qt::LeftButton);
    EXPECT_EQ(opened, (std::vector<HelpCalculator>{HelpCalculator::BranchLine,
                                                   HelpCalculator::SprinklerKFactor}));
    EXPECT_EQ(help_.State().HelpSelection, "11.2");
    EXPECT_EQ(words_, (std::vector<std::string>{"frmGPD:UpdateGPDFromHelpWindow"}));
}

TEST_F(HelpWindowTest, PlainHelpClosesOnAKeyAndGivesTheFocusBack) {
    HelpRequest request{"EEPipeDataNode", 3, "10", "frmEEPipeData", ""};
    auto* window = qobject_cast<HelpWindow*>(help_.Show(request));
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->lblHelpTitle()->text(), "Node Number");
    EXPECT_TRUE(window->lblHelpDescription()->text().contains("9999"));
    // Placed on the frame: a sixth in, a third down, half as wide.
    const QRect frame = frame_.frameGeometry();
    EXPECT_EQ(window->x(), frame.left() + frame.width() / 6);
    EXPECT_EQ(window->width(), frame.width() / 2);
    QTest::keyClick(window, Qt::Key_Space);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(help_.Current(), nullptr);
    EXPECT_EQ(words_, (std::vector<std::string>{"frmEEPipeData:SetFocusAfterHelpWindow"}));
}

} // namespace
} // namespace quench
