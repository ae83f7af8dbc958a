#include "core/window_position.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScratchDirectory;

// A screen of 1920 x 1080 pixels in twips.
const WindowRectangle Screen{0, 0, 1920 * TwipsPerPixel, 1080 * TwipsPerPixel};
const WindowPosition Design{{1200, 900, 9600, 7200}, WindowState::Normal};

TEST(WindowPosition, SavedPositionComesBack) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    ini.MyWriteAppProfileString("GPDForm", "TabOnTop", "2");

    // Nothing stored yet: the design values.
    const WindowPosition first = RestorePosition(ini, "GPDForm", Design, Screen);
    EXPECT_EQ(first.Rectangle.Left, 1200);
    EXPECT_EQ(first.Rectangle.Height, 7200);
    EXPECT_EQ(first.State, WindowState::Normal);

    const WindowPosition moved{{3000, 1500, 12000, 8000}, WindowState::Normal};
    ASSERT_TRUE(SavePosition(ini, "GPDForm", moved));
    const WindowPosition back = RestorePosition(ini, "GPDForm", Design, Screen);
    EXPECT_EQ(back.Rectangle.Left, 3000);
    EXPECT_EQ(back.Rectangle.Top, 1500);
    EXPECT_EQ(back.Rectangle.Width, 12000);
    EXPECT_EQ(back.Rectangle.Height, 8000);
    EXPECT_EQ(ini.MyGetAppProfileString("GPDForm", "TabOnTop", ""), "2"); // other keys stay

    // A maximised form keeps its last normal rectangle and comes back maximised.
    ASSERT_TRUE(SavePosition(ini, "GPDForm", {{0, 0, 28800, 16200}, WindowState::Maximized}));
    const WindowPosition maximized = RestorePosition(ini, "GPDForm", Design, Screen);
    EXPECT_EQ(maximized.State, WindowState::Maximized);
    EXPECT_EQ(maximized.Rectangle.Left, 3000);
    EXPECT_EQ(maximized.Rectangle.Width, 12000);

    // A minimised form comes back normal; a state that is no state gives the design one.
    ASSERT_TRUE(SavePosition(ini, "GPDForm", {{}, WindowState::Minimized}));
    EXPECT_EQ(RestorePosition(ini, "GPDForm", Design, Screen).State, WindowState::Normal);
    ini.MyWriteAppProfileString("GPDForm", "windowstate", "7");
    EXPECT_EQ(RestorePosition(ini, "GPDForm", Design, Screen).State, WindowState::Normal);
    ASSERT_TRUE(SavePosition(ini, "GPDForm", {{10, 10, 100, 100}, WindowState::Normal}));
    const auto keys = ini.MyGetAppProfileSection("GPDForm");
    EXPECT_EQ(keys.size(), 6u); // five position keys and the tab, each once
}

TEST(WindowPosition, KeptInsideTheScreen) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    // Stored on a larger screen, or on a second monitor that is gone.
    ASSERT_TRUE(SavePosition(ini, "MDIForm", {{40000, -500, 12000, 9000}, WindowState::Normal}));
    const WindowPosition restored = RestorePosition(ini, "MDIForm", Design, Screen);
    EXPECT_EQ(restored.Rectangle.Left, Screen.Width - 12000);
    EXPECT_EQ(restored.Rectangle.Top, 0);
    EXPECT_EQ(restored.Rectangle.Width, 12000);

    const WindowRectangle huge = KeepInsideScreen({-100, 50, 40000, 20000}, Screen);
    EXPECT_EQ(huge.Left, 0);
    EXPECT_EQ(huge.Top, 0);
    EXPECT_EQ(huge.Width, Screen.Width);
    EXPECT_EQ(huge.Height, Screen.Height);

    // A screen that does not start at 0 (a panel on the left), and garbage in the file.
    const WindowRectangle offset{900, 0, 20000, 15000};
    EXPECT_EQ(KeepInsideScreen({0, 0, 5000, 5000}, offset).Left, 900);
    ini.MyWriteAppProfileString("MDIForm", "Width", "wide");
    ini.MyWriteAppProfileString("MDIForm", "Height", "-300");
    const WindowPosition damaged = RestorePosition(ini, "MDIForm", Design, Screen);
    EXPECT_EQ(damaged.Rectangle.Width, Design.Rectangle.Width);
    EXPECT_EQ(damaged.Rectangle.Height, 0);
}

TEST(WindowPosition, ChildOfAMaximisedFrameIgnoresItsKeys) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    ASSERT_TRUE(
        SavePosition(ini, "EnterEditPipeData", {{300, 300, 6000, 4000}, WindowState::Normal}));
    const WindowPosition child =
        RestorePosition(ini, "EnterEditPipeData", Design, Screen, /*childrenMaximized=*/true);
    EXPECT_EQ(child.Rectangle.Left, Design.Rectangle.Left);
    EXPECT_EQ(child.Rectangle.Width, Design.Rectangle.Width);
    EXPECT_EQ(RestorePosition(ini, "EnterEditPipeData", Design, Screen).Rectangle.Left, 300);
}

} // namespace
} // namespace quench
