// The report screens on the desktop: the preview with its toolbar and report list, the options
// screen with its small preview and "Show Default", and the options kept in the settings.

#include "gui/calculation_window.h"
#include "gui/report_commands.h"
#include "gui/report_options_dialog.h"
#include "gui/report_preview.h"
#include "tests/gui/desktop_fixture.h"

#include <QCheckBox>
#include <QComboBox>

#include <gtest/gtest.h>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::Desktop;

// A calculated example open on the desktop.
void OpenCalculatedExample(Desktop& desktop, const fs::path& root) {
    const fs::path file = root / "projects" / "supply_grid.qnw";
    fs::create_directories(file.parent_path());
    fs::copy_file(testing::SourceDirectory() / "examples" / "supply_grid.qnw", file);
    desktop.Frame->RunStartFile(QString::fromStdString(file.string()));
    ASSERT_TRUE(desktop.Frame->Lifecycle().ProjectIsLoaded());
    desktop.Frame->Dispatch("ToolCalculation");
    ASSERT_TRUE(desktop.Frame->Calculation()->Calculate());
}

TEST(ReportScreens, PreviewPagesReportListAndUnits) {
    testing::ScratchDirectory scratch;
    Desktop desktop(scratch.Path());
    OpenCalculatedExample(desktop, scratch.Path());
    ReportOptions options = DefaultReportOptions();
    options.Set(ReportSection::InputPipeData, true);
    options.Set(ReportSection::OutputPipeData, true);
    options.Set(ReportSection::OutputSummary, true);
    ASSERT_TRUE(SaveReportOptions(IniFileHandler(scratch / "QUENCH.ini"), options));

    desktop.Frame->Dispatch("ToolPreview");
    gui::ReportPreview* preview = desktop.Frame->Reports()->Preview();
    ASSERT_NE(preview, nullptr);
    const int pages = preview->PageCount();
    EXPECT_GE(pages, 4);
    EXPECT_EQ(preview->StatusText(), QString("Pages: %1").arg(pages));
    // Only the sections that are on are listed, each with its first page.
    QComboBox* list = preview->ReportList();
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->itemText(0), "Input Pipe Data");
    EXPECT_EQ(list->itemText(2), "Output Summary");
    EXPECT_EQ(list->itemData(0).toInt(), 1);
    EXPECT_EQ(list->itemData(2).toInt(), pages);
    QComboBox* zoom = preview->ZoomList();
    ASSERT_EQ(zoom->count(), 8);
    EXPECT_EQ(zoom->itemText(0), "25%");
    EXPECT_EQ(zoom->itemText(7), "200%");

    preview->Dispatch("ToolNextPage");
    EXPECT_EQ(preview->Page(), 2);
    preview->Dispatch("ToolPreviousPage");
    preview->Dispatch("ToolPreviousPage");
    EXPECT_EQ(preview->Page(), 1);
    preview->ShowPage(pages + 5);
    EXPECT_EQ(preview->Page(), pages);
    // A switch of units rebuilds the open preview.
    desktop.Frame->ApplyUnits(MeasureSystem::SI);
    EXPECT_EQ(desktop.Frame->Reports()->Preview(), preview);
    EXPECT_GE(preview->PageCount(), 4);
    preview->Dispatch("ToolClose");
    QApplication::processEvents();
    EXPECT_TRUE(desktop.Dialogs.Empty()) << desktop.Dialogs.LastText();
}

TEST(ReportScreens, APreviewWithNoSectionSaysWhereToChooseThem) {
    testing::ScratchDirectory scratch;
    Desktop desktop(scratch.Path());
    OpenCalculatedExample(desktop, scratch.Path());
    ASSERT_TRUE(SaveReportOptions(IniFileHandler(scratch / "QUENCH.ini"), DefaultReportOptions()));
    desktop.Frame->Dispatch("ToolPreview");
    gui::ReportPreview* preview = desktop.Frame->Reports()->Preview();
    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->ReportList()->count(), 0);
    EXPECT_TRUE(preview->StatusText().contains("Report Options"))
        << preview->StatusText().toStdString();
    preview->Dispatch("ToolClose");
}

TEST(ReportScreens, OptionsScreenRefreshesItsPreviewAndKeepsTheOptions) {
    testing::ScratchDirectory scratch;
    Desktop desktop(scratch.Path());
    OpenCalculatedExample(desktop, scratch.Path());
    const IniFileHandler settings(scratch / "QUENCH.ini");
    gui::ReportSource source;
    source.Model = desktop.Model.get();
    gui::ReportOptionsDialog dialog(source, settings);
    const int built = dialog.PreviewBuilds();
    ASSERT_NE(dialog.Check("chkOutputSummary"), nullptr);
    ASSERT_NE(dialog.Check("chkInputPipeFittingData"), nullptr);
    dialog.Check("chkOutputSummary")->setChecked(true);
    EXPECT_EQ(dialog.PreviewBuilds(), built + 1);
    EXPECT_TRUE(dialog.Options().On(ReportSection::OutputSummary));
    // Without "Auto refresh Print Preview" a change leaves the small preview as it was.
    dialog.Check("chkAutoRefresh")->setChecked(false);
    const int frozen = dialog.PreviewBuilds();
    dialog.Check("chkTitlePage")->setChecked(true);
    EXPECT_EQ(dialog.PreviewBuilds(), frozen);
    dialog.ShowDefaults();
    EXPECT_EQ(dialog.Options().Body, DefaultReportOptions().Body);
    dialog.Accept();
    const ReportOptions kept = LoadReportOptions(settings);
    EXPECT_TRUE(kept.On(ReportSection::OutputSummary));
    EXPECT_TRUE(kept.On(ReportSection::TitlePage));
    EXPECT_FALSE(kept.AutoRefresh);
}

} // namespace
} // namespace quench
