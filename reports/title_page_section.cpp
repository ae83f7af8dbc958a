#include "core/text.h"
#include "reports/report_sections.h"

namespace quench {

namespace {

constexpr int LogoHeight = 4320; // three inches at most

} // namespace

std::string InputTitle(const ReportDocument& document) {
    return "Quench " + document.Word + " Input Data";
}

std::string OutputTitle(const ReportDocument& document) {
    return "Quench " + document.Word + " Output Data" + document.OutputSuffix;
}

void TitlePageSection(ReportDocument& document) {
    ReportCanvas& canvas = document.Canvas;
    document.DrawFrame();
    canvas.CurrentY += TwipsPerInch;
    const ReportOptions& options = document.Options;
    if (options.PrintLogo && !TrimmedView(options.TitlePageLogo).empty() &&
        canvas.Picture(Trim(options.TitlePageLogo), canvas.MarginLeft, canvas.CurrentY,
                       canvas.ContentWidth(), LogoHeight)) {
        canvas.CurrentY += LogoHeight + TwipsPerInch / 2;
    }
    const std::string system = document.Word == "Hose" ? "Hose System" : "Sprinkler";
    const auto line = [&](std::string_view text, double size, bool bold) {
        canvas.Font = FontSpec{"Arial", size, bold, false};
        canvas.TextAlign = CellAlign::Center;
        canvas.Paragraph(text);
        canvas.CurrentY += TwipsPerInch / 4;
    };
    line("Quench " + system + " Reports", 28, true);
    line("for", 16, false);
    line(ReportDocument::ProjectText(document.Model.ProjectData.Title), 22, true);
    canvas.CurrentY += TwipsPerInch / 2;
    line("Prepared By:", 14, false);
    line(ReportDocument::ProjectText(document.Model.ProjectData.DesignedBy), 16, true);
    canvas.Font = options.Body.Font;
    canvas.TextAlign = CellAlign::Left;
}

} // namespace quench
