#include "reports/report_document.h"

#include "core/text.h"

#include <algorithm>

namespace quench {

namespace {

constexpr std::string_view ProgramLine = "QUENCH - Fire Sprinkler Hydraulics Calculation Program";
constexpr std::string_view MakerLine = "Vantor Software Development, Inc.";
constexpr int FooterGap = 240;   // twips between the body's bottom margin and the footer
constexpr int TitlePadding = 60; // twips above and below a title's text on its band

} // namespace

std::string Cell(double value, std::string_view picture) {
    std::string text = Format(value, picture);
    if (!text.empty() && text.front() == '-' &&
        text.find_first_not_of("0.,", 1) == std::string::npos) {
        text.erase(0, 1);
    }
    return text;
}

ReportDocument::ReportDocument(ReportCanvas& canvas, const ReportOptions& options,
                               const ReportFrame& frame, const Project& project,
                               MeasureSystem system)
    : Canvas(canvas), Options(options), Frame(frame), Model(project), System(system) {}

double ReportDocument::Shown(UnitKind kind, double usValue) const {
    return SI() ? ToSI(kind, usValue) : usValue;
}

const SystemData& ReportDocument::SystemData() const {
    return SI() ? Model.SystemDataSI : Model.SystemData;
}

const CalculationData& ReportDocument::CalculationData() const {
    return SI() ? Model.CalculationDataSI : Model.CalculationData;
}

const NodeRecord& ReportDocument::Node(int row) const {
    return (SI() ? Model.NodeRecordSI : Model.NodeRecord).at(static_cast<std::size_t>(row));
}

const CalcPipeRecord& ReportDocument::Pipe(int row) const {
    return (SI() ? Model.CalcPipeRecordSI : Model.CalcPipeRecord).at(static_cast<std::size_t>(row));
}

const PipeResultRecord& ReportDocument::Result(int row) const {
    return (SI() ? Model.PipeResultRecordSI : Model.PipeResultRecord)
        .at(static_cast<std::size_t>(row));
}

int ReportDocument::NodeCount() const {
    return std::clamp<int>(Model.NumberOfNodes, 0, static_cast<int>(Model.NodeRecord.size()) - 1);
}

int ReportDocument::PipeCount() const {
    return std::clamp<int>(Model.NumberOfPipes, 0,
                           static_cast<int>(Model.CalcPipeRecord.size()) - 1);
}

int ReportDocument::ResultCount() const {
    return std::clamp<int>(Model.CalculationData.NumberOfUniquePipeSections, 0,
                           static_cast<int>(Model.PipeResultRecord.size()) - 1);
}

std::string ReportDocument::NodeText(double number) const {
    return Format(TypedNodeNumber(Model, number), "##0");
}

std::string ReportDocument::NodeText(std::string_view text) const {
    return NodeText(ToNumber(text));
}

std::string ReportDocument::ProjectText(std::string_view text) {
    return Latin1ToUtf8(Trim(text));
}

void ReportDocument::UseBody() {
    Canvas.Font = Options.Body.Font;
    Canvas.TextColor = Options.Body.Text;
    Canvas.TextAlign = CellAlign::Left;
}

void ReportDocument::DrawFrame() {
    UseBody();
    Canvas.CurrentY = Canvas.MarginTop;
    Canvas.AddTable(ParseTableFormat("_<|+>"), {},
                    {{std::string(ProgramLine), std::string(MakerLine)}});
    Canvas.AddTable(ParseTableFormat("<|>"), {},
                    {{ProjectText(Model.ProjectData.Title), ProjectText(Frame.CompanyLine)}});

    TableRow footer(3);
    if (Options.FileName) {
        footer[0] = Frame.ProjectFileName;
    }
    if (Options.PageNumbers) {
        footer[1] = "Page " + std::to_string(PrintedPageNumber(Options, Canvas.PageCount()));
    }
    if (Options.Date) {
        footer[2] = FormatDate(Frame.Printed, "Long Date") + ", " +
                    FormatDate(Frame.Printed, "Medium Time");
    }
    // The footer stands below the body's bottom margin, where no row may break the page.
    const int body = Canvas.CurrentY;
    const int margin = Canvas.MarginBottom;
    Canvas.CurrentY = Canvas.ContentBottom() + FooterGap;
    Canvas.MarginBottom = 0;
    Canvas.Line(Canvas.MarginLeft, Canvas.CurrentY, Canvas.PageWidth - Canvas.MarginRight,
                Canvas.CurrentY);
    Canvas.AddTable(ParseTableFormat("<3600|^+2800|>+"), {}, {footer});
    Canvas.MarginBottom = margin;
    Canvas.CurrentY = body + TitlePadding;
    UseBody();
}

void ReportDocument::Band(std::string_view text, const ReportFont& font) {
    Canvas.Font = font.Font;
    const int height = Canvas.Measure(text, Canvas.ContentWidth()) + 2 * TitlePadding;
    if (Canvas.CurrentY + height > Canvas.ContentBottom()) {
        Canvas.NewPage();
        DrawFrame();
        Canvas.Font = font.Font;
    }
    Canvas.BrushColor = font.Band;
    Canvas.BrushStyle = BrushStyle::Solid;
    Canvas.PenWidth = 0;
    Canvas.Rectangle(Canvas.MarginLeft, Canvas.CurrentY, Canvas.PageWidth - Canvas.MarginRight,
                     Canvas.CurrentY + height);
    Canvas.CurrentY += TitlePadding;
    Canvas.TextColor = font.Text;
    Canvas.TextAlign = CellAlign::Center;
    Canvas.Paragraph(text);
    Canvas.CurrentY += TitlePadding;
    UseBody();
}

void ReportDocument::MainTitle(std::string_view text) {
    Band(text, Options.MainHeader);
}

void ReportDocument::SecondaryTitle(std::string_view text) {
    Canvas.CurrentY += TitlePadding;
    Band(text, Options.SecondaryHeader);
    Canvas.CurrentY += TitlePadding;
}

void ReportDocument::BeginSection(std::string_view main, std::string_view secondary) {
    DrawFrame();
    MainTitle(main);
    if (!secondary.empty()) {
        SecondaryTitle(secondary);
    }
}

void ReportDocument::Rows(std::string_view format, const std::vector<TableRow>& rows) {
    Canvas.AddTable(ParseTableFormat(format), {}, rows);
}

void ReportDocument::Heading(std::string_view format, std::string_view heading) {
    Canvas.AddTable(ParseTableFormat(format), ParseTableRow(heading), {});
}

void ReportDocument::OnPageBreak(std::function<void()> handler) {
    Canvas.SetPageHandler(std::move(handler));
}

} // namespace quench
