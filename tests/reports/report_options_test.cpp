#include "reports/report_options.h"
#include "tests/support/scratch_directory.h"

#include <fstream>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

TEST(ReportOptions, DefaultsOfAMissingFile) {
    ScratchDirectory scratch;
    const ReportOptions options = LoadReportOptions(IniFileHandler(scratch / "QUENCH.ini"));
    EXPECT_EQ(options, DefaultReportOptions());
    EXPECT_FALSE(options.AnySection());
    EXPECT_EQ(options.MainHeader.Font, (FontSpec{"Arial", 16, true, false}));
    EXPECT_EQ(options.SecondaryHeader.Font, (FontSpec{"Arial", 14, true, false}));
    EXPECT_EQ(options.Body.Font, (FontSpec{"Arial", 10, false, false}));
    EXPECT_EQ(options.LineSpacing, 100);
    EXPECT_TRUE(options.PageNumbers);
}

TEST(ReportOptions, KeptInTheReportOptionsSectionAndReadBack) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    ReportOptions options = DefaultReportOptions();
    options.Set(ReportSection::OutputSummary, true);
    options.Set(ReportSection::TitlePage, true);
    options.Body.Font = FontSpec{"Courier", 9, true, true};
    options.MainHeader.Band = Rgb{10, 20, 30};
    options.StartingPageNo = 3;
    options.EndingPageNo = 7;
    options.LineSpacing = 150;
    options.TitlePageLogo = "/tmp/logo.png";
    options.PrintLogo = true;
    ASSERT_TRUE(SaveReportOptions(ini, options));
    EXPECT_EQ(LoadReportOptions(ini), options);
    EXPECT_EQ(ini.MyGetAppProfileString("ReportOptions", "chkOutputSummary", ""), "1");
    EXPECT_EQ(ini.MyGetAppProfileString("ReportOptions", "chkInputNodeData", ""), "0");
    EXPECT_EQ(ini.MyGetAppProfileString("ReportOptions", "BodyFontBold", ""), "True");
    // Blue, green and red bytes, red lowest.
    EXPECT_EQ(ini.MyGetAppProfileString("ReportOptions", "lblMainHeader", ""), "1971210");
    // "Show Default" brings the fonts and colours back and nothing else.
    ShowDefaultFonts(options);
    EXPECT_EQ(options.Body, DefaultReportOptions().Body);
    EXPECT_EQ(options.MainHeader, DefaultReportOptions().MainHeader);
    EXPECT_EQ(options.LineSpacing, 150);
}

TEST(ReportOptions, DamagedValuesFallBackToTheirDefaults) {
    ScratchDirectory scratch;
    std::ofstream(scratch / "QUENCH.ini") << "[ReportOptions]\nBodyFontSize=huge\n"
                                             "txtLineSpacing=-5\nlblBody=red\n"
                                             "chkPageNumbers=0\ntxtStartingPageNo=x\n";
    const ReportOptions options = LoadReportOptions(IniFileHandler(scratch / "QUENCH.ini"));
    EXPECT_EQ(options.Body.Font.Size, 10);
    EXPECT_EQ(options.LineSpacing, 100);
    EXPECT_EQ(options.Body.Band, DefaultReportOptions().Body.Band);
    EXPECT_FALSE(options.PageNumbers);
    EXPECT_EQ(options.StartingPageNo, 0);
    EXPECT_FALSE(ColorFromText("-1"));
    EXPECT_FALSE(ColorFromText("16777216"));
    EXPECT_EQ(ColorText(*ColorFromText("255")), "255");
}

TEST(ReportOptions, PageNumbersAndPrintRange) {
    ReportOptions options;
    EXPECT_EQ(PrintedPageNumber(options, 1), 1);
    options.StartingPageNo = 5;
    EXPECT_EQ(PrintedPageNumber(options, 1), 5);
    EXPECT_EQ(PrintedPageNumber(options, 3), 7);
    options.StartingPageNo = 2;
    options.EndingPageNo = 4;
    EXPECT_EQ(PrintRange(options, 10).First, 2);
    EXPECT_EQ(PrintRange(options, 10).Last, 4);
    // An end not above the start, not below the count, or 0: to the last page.
    options.EndingPageNo = 2;
    EXPECT_EQ(PrintRange(options, 10).Last, 10);
    options.EndingPageNo = 10;
    EXPECT_EQ(PrintRange(options, 10).Last, 10);
    options.EndingPageNo = 0;
    options.StartingPageNo = 0;
    EXPECT_EQ(PrintRange(options, 6).First, 1);
    EXPECT_EQ(PrintRange(options, 6).Last, 6);
    EXPECT_EQ(SectionFromWord("pipe-output"), ReportSection::OutputPipeData);
    EXPECT_FALSE(SectionFromWord("Pipes"));
}

} // namespace
} // namespace quench
