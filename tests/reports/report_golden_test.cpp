// Whole reports of calculated projects rendered as text and compared with the files in golden/.
// After a deliberate change of the report, QUENCH_UPDATE_GOLDEN=1 rewrites the files; the diff of
// the commit then shows what the change did to each report.

#include "core/atomic_write.h"
#include "tests/reports/report_projects.h"

#include <algorithm>
#include <cstdlib>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

std::filesystem::path GoldenFile(const std::string& name) {
    return SourceDirectory() / "tests" / "reports" / "golden" / (name + ".txt");
}

void ExpectGolden(const std::string& name, const std::string& text) {
    const auto file = GoldenFile(name);
    if (std::getenv("QUENCH_UPDATE_GOLDEN") != nullptr) {
        ASSERT_TRUE(WriteFileAtomically(file, text));
        return;
    }
    std::string expected;
    ASSERT_TRUE(ReadWholeFile(file, expected)) << "missing " << file;
    // The first line that differs, rather than two whole documents.
    const std::vector<std::string> got = Lines(text);
    const std::vector<std::string> want = Lines(expected);
    for (std::size_t line = 0; line < std::min(got.size(), want.size()); ++line) {
        ASSERT_EQ(got[line], want[line])
            << "the report " << name << " changed at line " << line + 1;
    }
    EXPECT_EQ(got.size(), want.size()) << "the report " << name << " changed its length";
}

TEST(ReportGolden, TreeInUsUnits) {
    const auto project = TreeProject();
    const auto rendered = Render(*project, EverySection(), MeasureSystem::US);
    ExpectGolden("tree_us", rendered->Text);
    EXPECT_TRUE(rendered->Dialogs.Empty());
}

TEST(ReportGolden, GridInSiUnitsFromTheProjectsSystem) {
    const auto project = GridProject();
    const auto rendered = Render(*project, EverySection());
    ExpectGolden("grid_si", rendered->Text);
    EXPECT_NE(rendered->Text.find("Residual Pressure (kPa)"), std::string::npos);
    EXPECT_EQ(rendered->Text.find("(psi)"), std::string::npos);
}

TEST(ReportGolden, HoseSystemWords) {
    const auto project = HoseProject();
    const auto rendered = Render(*project, EverySection());
    ExpectGolden("hose", rendered->Text);
    EXPECT_NE(rendered->Text.find("Quench Hose System Reports"), std::string::npos);
    EXPECT_NE(rendered->Text.find("Hose/Fix Discharge (gpm)"), std::string::npos);
    EXPECT_NE(rendered->Text.find("Node Elevation (feet)"), std::string::npos);
    EXPECT_NE(rendered->Text.find("Fixed Discharge (gpm)"), std::string::npos);
    EXPECT_EQ(rendered->Text.find("Spk/Hose"), std::string::npos);
}

TEST(ReportGolden, MeterBackflowPreventerAndDrySystem) {
    const auto project = DevicesProject();
    const auto us = Render(*project, EverySection());
    ExpectGolden("devices_us", us->Text);
    EXPECT_NE(us->Text.find("Meter | 3.500 | Loss"), std::string::npos);
    EXPECT_NE(us->Text.find("Backflo Prev | 6.000 | Loss"), std::string::npos);
    EXPECT_NE(us->Text.find("Adjusted Area Of Application:"), std::string::npos);
    // In SI the adjusted lines keep their US words beside metric numbers.
    const auto si = Render(*project, EverySection(), MeasureSystem::SI);
    ExpectGolden("devices_si", si->Text);
    EXPECT_NE(si->Text.find("Application Adjusted Density (not required by NFPA 13): | "),
              std::string::npos);
    EXPECT_NE(si->Text.find(" kPa | "), std::string::npos);
}

TEST(ReportGolden, PumpOnACurve) {
    const auto project = PumpProject();
    const auto rendered = Render(*project, EverySection());
    ExpectGolden("pump_curve", rendered->Text);
    EXPECT_NE(rendered->Text.find("Flow (gpm) 2: | 150.00 | Pressure (psi) 2: | 40.00"),
              std::string::npos);
    EXPECT_NE(rendered->Text.find("Fire Pump |  | Pump"), std::string::npos);
}

TEST(ReportGolden, PeakingOverTwoAreaGroups) {
    const auto project = PeakingProject();
    const auto rendered = Render(*project, EverySection());
    ExpectGolden("peaking", rendered->Text);
    EXPECT_NE(rendered->Text.find("Group B Peak Pipe Output Data"), std::string::npos);
    EXPECT_NE(rendered->Text.find("Group B Peak Node Groupings Output Data"), std::string::npos);
    EXPECT_NE(rendered->Text.find("Group B Peak Sprinkler Output Data"), std::string::npos);
    EXPECT_NE(rendered->Text.find("Sub Totals For Group B"), std::string::npos);
    EXPECT_EQ(rendered->Text.find("Overall Pipe Output Data"), std::string::npos);
}

TEST(ReportGolden, LongTablesContinueWithTheirTitlesAndHeadings) {
    const auto project = TreeProject(10, 9);
    const auto rendered = Render(*project, EverySection());
    ExpectGolden("long_tree", rendered->Text);
    const std::string& text = rendered->Text;
    const int pipePages = Count(text, "Overall Pipe Output Data (cont'd)");
    EXPECT_GE(pipePages, 2);
    EXPECT_GE(Count(text, "Pipe Input Data (cont'd)"), 1);
    EXPECT_GE(Count(text, "Overall Node Groupings Output Data (cont'd)"), 1);
    // Each continued page repeats the column headings under its titles.
    EXPECT_EQ(Count(text, "[Beg. End. Node | Nodal KFactor (K)"), pipePages + 1);
    // Every page carries the frame.
    const int pages = rendered->Outcome.Pages;
    EXPECT_EQ(Count(text, "--- page "), pages);
    EXPECT_EQ(Count(text, "QUENCH - Fire Sprinkler Hydraulics Calculation Program"), pages);
    EXPECT_EQ(Count(text, "Page " + std::to_string(pages) + " | "), 1);
}

TEST(ReportGolden, AnEmptyProjectPrintsTheFrameAndEmptyTables) {
    auto project = std::make_unique<Project>();
    ResetProject(*project);
    const auto rendered = Render(*project, EverySection(), std::nullopt, "Untitled.qnw");
    ExpectGolden("empty", rendered->Text);
    EXPECT_GE(rendered->Outcome.Pages, ReportSectionCount);
    EXPECT_NE(rendered->Text.find("Totals For All Groups"), std::string::npos);
    EXPECT_NE(rendered->Text.find("Totals For All Groups | 0.00 | 0.000 | 0.00"),
              std::string::npos);
}

TEST(ReportGolden, NoSectionIsOneEmptyPage) {
    const auto project = TreeProject();
    ReportOptions options = DefaultReportOptions();
    options.Sections.fill(false);
    const auto rendered = Render(*project, options);
    EXPECT_EQ(rendered->Text, "--- page 1 ---\n");
    EXPECT_EQ(rendered->Outcome.Pages, 1);
    for (int page : rendered->Outcome.SectionPages) {
        EXPECT_EQ(page, 0);
    }
}

} // namespace
} // namespace quench

namespace quench {
namespace {

using namespace quench::testing;

TEST(ReportTitlePage, TheLogoWhenItsFileIsThereAndTheFooterAsOptioned) {
    ScratchDirectory scratch;
    const auto project = TreeProject();
    ReportOptions options = DefaultReportOptions();
    options.Set(ReportSection::TitlePage, true);
    options.PrintLogo = true;
    options.TitlePageLogo = (scratch / "missing.png").string();
    EXPECT_EQ(Render(*project, options)->Text.find("(picture"), std::string::npos);
    ASSERT_TRUE(WriteFileAtomically(scratch / "logo.png", "not checked by the text canvas"));
    options.TitlePageLogo = (scratch / "logo.png").string();
    options.FileName = false;
    options.Date = false;
    options.StartingPageNo = 4;
    const std::string text = Render(*project, options)->Text;
    EXPECT_NE(text.find("(picture logo.png)\nQuench Sprinkler Reports\nfor\nWarehouse Addition\n"
                        "Prepared By:\nJ. Engineer\n"),
              std::string::npos);
    // The footer's cells stand empty where their options are off; the numbers start at 4.
    EXPECT_NE(text.find("\n | Page 4 | \n"), std::string::npos);
}

} // namespace
} // namespace quench
