#include "core/settings_keys.h"
#include "entry/tips.h"
#include "gui/pipe_data_window.h"
#include "gui/program_dialogs.h"
#include "gui/table_rows.h"
#include "tests/gui/desktop_fixture.h"

#include <fstream>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScratchDirectory;
using testing::ScriptedDialogs;

TEST(OptionsDialog, ValuesSurviveARestartAndBadOnesAreRefused) {
    ScratchDirectory scratch;
    const std::filesystem::path file = scratch / "QUENCH.ini";
    ScriptedDialogs dialogs;
    {
        gui::OptionsDialog options(IniFileHandler(file), dialogs, ',');
        // Nothing stored yet: the defaults of the settings and the decimal character given.
        EXPECT_EQ(options.AutoSaveMinutes()->value(), 5);
        EXPECT_EQ(options.VisiblePipes()->value(), 6);
        EXPECT_TRUE(options.ConfirmDeletion()->isChecked());
        EXPECT_EQ(options.DecimalCharacter()->currentIndex(), 1);
        options.AutoSaveMinutes()->setValue(12);
        options.ConfirmDeletion()->setChecked(false);
        options.VisiblePipes()->setValue(20);
        options.ShowTips()->setChecked(true);
        options.CompanyLine()->setText("Acme Fire Protection, Springfield");
        options.DecimalCharacter()->setCurrentIndex(0);
        EXPECT_TRUE(options.Apply());
        EXPECT_TRUE(dialogs.Empty());
    }
    const IniFileHandler ini(file);
    EXPECT_EQ(AutoSaveInterval(ini), 12);
    EXPECT_FALSE(ConfirmPipeDeletion(ini));
    EXPECT_EQ(NumOfPipesToDisplay(ini), 20);
    EXPECT_TRUE(ShowTipsAtStartup(ini));
    EXPECT_EQ(CompanyLineOption(ini), "Acme Fire Protection, Springfield");

    gui::OptionsDialog again(ini, dialogs, ',');
    EXPECT_EQ(again.AutoSaveMinutes()->value(), 12);
    EXPECT_FALSE(again.ConfirmDeletion()->isChecked());
    EXPECT_EQ(again.VisiblePipes()->value(), 20);
    EXPECT_TRUE(again.ShowTips()->isChecked());
    EXPECT_EQ(again.DecimalCharacter()->currentIndex(), 0);
    EXPECT_EQ(again.Shown().DecimalCharacter, '.');

    // Out of range: a message, and the file keeps what it had.
    for (const auto& [minutes, rows] : {std::pair{0, 20}, {121, 20}, {12, 0}, {12, 101}}) {
        again.AutoSaveMinutes()->setValue(minutes);
        again.VisiblePipes()->setValue(rows);
        EXPECT_FALSE(again.Apply()) << minutes << " " << rows;
        EXPECT_EQ(dialogs.LastTitle(), "Options");
    }
    EXPECT_EQ(dialogs.LastText(), "The number of pipe rows shown must be a whole number from 1 to "
                                  "100.");
    EXPECT_EQ(AutoSaveInterval(ini), 12);
    EXPECT_EQ(NumOfPipesToDisplay(ini), 20);
    ProgramOptions wrong = again.Shown();
    wrong.VisiblePipes = 10;
    wrong.DecimalCharacter = ';';
    EXPECT_FALSE(ProgramOptionsProblem(wrong).empty());
    EXPECT_FALSE(WriteProgramOptions(ini, wrong));
}

TEST(OptionsDialog, ThePipeTableShowsTheRowsAskedFor) {
    ScratchDirectory scratch;
    ASSERT_TRUE(IniFileHandler(scratch / "QUENCH.ini")
                    .MyWriteAppProfileString("Options", "NumOfPipesToDisplay", "24"));
    testing::Desktop desktop(scratch.Path());
    gui::MainFrame& frame = *desktop.Frame;
    frame.resize(1200, 900);
    frame.Lifecycle().New();
    frame.Dispatch("ToolEnterEditPipeData");
    ASSERT_NE(frame.PipeData(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&frame));
    const QTableView& table = *frame.PipeData()->Table();
    EXPECT_EQ(gui::WholeRowsShown(table), 24);
    EXPECT_GT(table.model()->rowCount(), 24); // the rest scroll

    // Another count chosen in the options: the open table follows at once. A count so small
    // that the other tabs' fields would not fit leaves the window as tall as they need.
    const auto choose = [&](int rows) {
        frame.Dispatch("ToolOptions");
        auto* options = frame.findChild<gui::OptionsDialog*>();
        ASSERT_NE(options, nullptr);
        options->VisiblePipes()->setValue(rows);
        options->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        QApplication::processEvents();
    };
    choose(2);
    EXPECT_EQ(NumOfPipesToDisplay(IniFileHandler(scratch / "QUENCH.ini")), 2);
    const QWidget& window = *frame.PipeData()->parentWidget();
    EXPECT_GE(gui::WholeRowsShown(table), 2);
    EXPECT_EQ(window.height(), window.minimumSizeHint().height());
    choose(22);
    EXPECT_EQ(gui::WholeRowsShown(table), 22);

    frame.Dispatch("ToolClose");
    frame.Lifecycle().New();
    frame.Dispatch("ToolEnterEditPipeData");
    ASSERT_NE(frame.PipeData(), nullptr);
    EXPECT_EQ(gui::WholeRowsShown(*frame.PipeData()->Table()), 22);
    EXPECT_TRUE(desktop.Dialogs.Empty()) << desktop.Dialogs.LastText();
}

TEST(TipOfTheDay, ShowsTheTipsInTurnAndKeepsTheStartupChoice) {
    ScratchDirectory scratch;
    const std::filesystem::path tips = scratch / "TIPOFDAY.TXT";
    {
        std::ofstream out(tips, std::ios::binary);
        out << "First tip.\r\n\r\n  Second tip.  \r\nThird tip.";
    }
    EXPECT_EQ(ReadTips(tips),
              (std::vector<std::string>{"First tip.", "Second tip.", "Third tip."}));
    const IniFileHandler ini(scratch / "QUENCH.ini");
    {
        gui::TipOfTheDayDialog dialog(tips, ini);
        EXPECT_EQ(dialog.Tip()->text(), "First tip.");
        dialog.ShowNextTip();
        EXPECT_EQ(dialog.Tip()->text(), "Second tip.");
        EXPECT_FALSE(dialog.ShowAtStartup()->isChecked());
        dialog.ShowAtStartup()->setChecked(true);
    }
    EXPECT_TRUE(ShowTipsAtStartup(ini));
    // The next opening goes on from the last tip shown, round the end.
    gui::TipOfTheDayDialog next(tips, ini);
    EXPECT_EQ(next.Tip()->text(), "Third tip.");
    next.ShowNextTip();
    EXPECT_EQ(next.Tip()->text(), "First tip.");
    EXPECT_TRUE(next.ShowAtStartup()->isChecked());

    gui::TipOfTheDayDialog none(scratch / "missing.txt", ini);
    EXPECT_EQ(none.Tip()->text(), NoTipsText);
    // The tips that come with the program are there and read.
    EXPECT_GE(ReadTips(testing::DataDirectory() / "TIPOFDAY.TXT").size(), 12U);
}

TEST(ProgramBoxes, OpenFromTheMenusWithTheProgramsNameAndLicences) {
    const QString about = gui::AboutText();
    for (const char* word :
         {"Quench 601.30", "LGPL", "Lesser General Public License v3", "SuiteSparse AMD",
          "BSD 3-Clause", "dxflib", "General Public License v2 or later", "GoogleTest"}) {
        EXPECT_TRUE(about.contains(word)) << word;
    }
    ScratchDirectory scratch;
    testing::Desktop desktop(scratch.Path());
    for (const char* key : {"ToolOptions", "ToolTipOfTheDay", "ToolAboutQUENCH"}) {
        ASSERT_NE(desktop.Frame->Action(key), nullptr) << key;
        EXPECT_TRUE(desktop.Frame->Action(key)->isEnabled()) << key;
        desktop.Frame->Dispatch(key);
    }
    EXPECT_NE(desktop.Frame->findChild<gui::OptionsDialog*>(), nullptr);
    EXPECT_NE(desktop.Frame->findChild<gui::TipOfTheDayDialog*>(), nullptr);
    EXPECT_NE(desktop.Frame->findChild<QMessageBox*>(), nullptr);
}

} // namespace
} // namespace quench
