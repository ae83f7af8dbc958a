#include "reports/table_format.h"
#include "reports/text_canvas.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(TableFormat, MarksPlusAndWidths) {
    const TableFormat format = ParseTableFormat("<2000|>+1070|^+3210|+340|_<|+>");
    ASSERT_EQ(format.Columns.size(), 6u);
    EXPECT_EQ(format.Columns[0].Align, CellAlign::Left);
    EXPECT_FALSE(format.Columns[0].Plus);
    EXPECT_EQ(format.Columns[0].Width, 2000);
    EXPECT_EQ(format.Columns[1].Align, CellAlign::Right);
    EXPECT_TRUE(format.Columns[1].Plus);
    EXPECT_EQ(format.Columns[2].Align, CellAlign::Center);
    EXPECT_EQ(format.Columns[2].Width, 3210);
    EXPECT_EQ(format.Columns[3].Align, CellAlign::Left); // no mark: the default
    EXPECT_EQ(format.Columns[3].Width, 340);
    EXPECT_TRUE(format.Columns[4].Underline);
    EXPECT_TRUE(format.Underlined());
    EXPECT_EQ(format.Columns[5].Width, 0);
    // Columns without a width share the rest of the line.
    EXPECT_EQ(ColumnWidths(ParseTableFormat("<2000|<|>"), 10000),
              (std::vector<int>{2000, 4000, 4000}));
    EXPECT_EQ(ColumnWidths(ParseTableFormat("<9000|<"), 8000), (std::vector<int>{9000, 0}));
    EXPECT_TRUE(ParseTableFormat("").Columns.empty());
    // A trailing "|" is one more column, empty.
    EXPECT_EQ(ParseTableFormat("<3500|>+900|<+900|<+2500|>+2450|").Columns.size(), 6u);
}

TEST(TableFormat, BodiesRowsAndEmptyCells) {
    EXPECT_EQ(ParseTableRow("a|b|c"), (TableRow{"a", "b", "c"}));
    EXPECT_EQ(ParseTableRow("a||c;"), (TableRow{"a", "", "c"}));
    EXPECT_EQ(ParseTableRow("|"), (TableRow{"", ""}));
    const auto rows = ParseTableBody("1|2;|||;x");
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0], (TableRow{"1", "2"}));
    EXPECT_EQ(rows[1], (TableRow{"", "", "", ""}));
    EXPECT_EQ(rows[2], (TableRow{"x"}));
    EXPECT_TRUE(ParseTableBody("").empty());
    EXPECT_EQ(JoinTableRow({"a", "", "c"}), "a||c;");
    EXPECT_EQ(ParseTableBody(JoinTableRow({"10", "20"}))[0], (TableRow{"10", "20"}));
}

TEST(ReportCanvas, RowsThatDoNotFitStartAPageAndCallTheHandler) {
    TextCanvas canvas;
    canvas.PageHeight = 3000;
    canvas.MarginTop = 500;
    canvas.MarginBottom = 500;
    int handled = 0;
    canvas.StartDoc();
    canvas.SetPageHandler([&] {
        ++handled;
        canvas.Paragraph("Table (cont'd)");
        canvas.AddTable("<1000|>1000", "Node|Flow", "");
    });
    canvas.AddTable("<1000|>1000", "Node|Flow", "");
    std::string body;
    for (int row = 1; row <= 20; ++row) {
        body += std::to_string(row) + "|" + std::to_string(row * 10) + ";";
    }
    canvas.AddTable("<1000|>1000", "", body);
    canvas.Action(3);
    EXPECT_FALSE(canvas.Open());
    const std::string& text = canvas.Result();
    EXPECT_GT(canvas.PageCount(), 2);
    EXPECT_EQ(handled, canvas.PageCount() - 1);
    // Every page starts with its headings again and no row is lost or doubled.
    std::size_t place = 0;
    for (int row = 1; row <= 20; ++row) {
        const std::string line =
            "\n" + std::to_string(row) + " | " + std::to_string(row * 10) + "\n";
        const std::size_t found = text.find(line, place);
        ASSERT_NE(found, std::string::npos) << row;
        place = found;
        EXPECT_EQ(text.find(line, found + 1), std::string::npos);
    }
    std::size_t headings = 0;
    for (std::size_t at = text.find("[Node | Flow]"); at != std::string::npos;
         at = text.find("[Node | Flow]", at + 1)) {
        ++headings;
    }
    EXPECT_EQ(headings, static_cast<std::size_t>(canvas.PageCount()));
}

TEST(ReportCanvas, MeasuresWrapsAndConvertsUnits) {
    TextCanvas canvas;
    canvas.Font.Size = 10; // a character is 100 twips wide here
    EXPECT_EQ(canvas.TextWid("abcd"), 400);
    EXPECT_EQ(canvas.TextWid("ft²"), 300);
    EXPECT_EQ(canvas.Measure("one two three", 800), 2 * canvas.LineHeight(canvas.Font));
    const int single = canvas.LineHeight(canvas.Font);
    canvas.LineSpacing = 200;
    EXPECT_EQ(canvas.LineHeight(canvas.Font), 2 * single);
    EXPECT_EQ(TwipsFromHundredths(100), 1440);
    EXPECT_EQ(TwipsFromHundredths(12.5), 180);
    EXPECT_EQ(HundredthsFromTwips(720), 50);
    // Nothing is drawn on a document that is not open, and KillDoc throws the pages away.
    canvas.Paragraph("lost");
    EXPECT_EQ(canvas.Result(), "");
    canvas.StartDoc();
    canvas.Paragraph("kept");
    EXPECT_EQ(canvas.Result(), "--- page 1 ---\nkept\n");
    canvas.KillDoc();
    EXPECT_EQ(canvas.PageCount(), 0);
    EXPECT_EQ(canvas.Result(), "");
}

} // namespace
} // namespace quench

namespace quench {
namespace {

TEST(ReportCanvas, AWordWiderThanItsCellBreaksAfterASlashOrAnywhere) {
    TextCanvas canvas;
    canvas.Font.Size = 10; // 100 twips a character
    // A heading cell of 1000 twips leaves 900 for text: nine characters.
    EXPECT_EQ(canvas.Measure("(gpm/inch-psi)", 1000), 2 * canvas.LineHeight(canvas.Font));
    EXPECT_EQ(canvas.Measure("ABCDEFGHIJKLMNOPQRST", 500), 4 * canvas.LineHeight(canvas.Font));
    EXPECT_EQ(canvas.Measure("", 500), canvas.LineHeight(canvas.Font));
}

} // namespace
} // namespace quench
