#include "core/text.h"
#include "reports/report_sections.h"

namespace quench {

namespace {

constexpr std::string_view Columns =
    "<+700|<+700|<+2380|>+1080|>+750|>+880|>+1030|>+1030|>+1030|>+1000";

std::string Heading(const ReportDocument& document) {
    if (document.SI()) {
        return "Beg. Node|End. Node|Pipe Description|Nominal Diameter (mm)|Type Group|Fitting "
               "Data|Nominal Length (m)|Fitting Length (m)|Total Length (m)|CFactor "
               "(gpm/inch-psi)";
    }
    return "Beg. Node|End. Node|Pipe Description|Nominal Diameter (inch)|Type Group|Fitting "
           "Data|Nominal Length (feet)|Fitting Length (feet)|Total Length (feet)|CFactor "
           "(gpm/inch-psi)";
}

std::string DeviceName(const ReportDocument& document, int material) {
    switch (material) {
    case MaterialMeter:
        return "Meter";
    case MaterialBackflowPreventer:
        return "Backflo Prev";
    case MaterialAlarmDevice:
        return ReportDocument::ProjectText(document.Model.AlarmDeviceShortName);
    default:
        return "Fire Pump";
    }
}

TableRow DeviceRow(const ReportDocument& document, const CalcPipeRecord& pipe, TableRow cells) {
    cells[2] = DeviceName(document, pipe.Material);
    const bool pump = pipe.Material == MaterialFirePump;
    const bool onCurve = pump && pipe.DeviceLoss == NotGiven;
    cells[3] = onCurve ? "" : Cell(pipe.DeviceLoss, "##0.000");
    cells[4] = pump ? "Pump" : "Loss";
    return cells;
}

// The begin and end as the user typed the row (the calculated pipe may be turned round).
std::pair<std::string, std::string> TypedEnds(const ReportDocument& document,
                                              const TypedRows& typed, const CalcPipeRecord& pipe) {
    std::string begin = document.NodeText(pipe.BegNode);
    std::string end = document.NodeText(pipe.EndNode);
    const int row = typed.Find(pipe.BegNode, pipe.EndNode);
    if (row != 0) {
        const PipeRecord& input = document.Model.PipeRecord[static_cast<std::size_t>(row)];
        if (ToNumber(input.BegNode) == ToNumber(end)) {
            std::swap(begin, end);
        }
    }
    return {begin, end};
}

} // namespace

void PipeInputSection(ReportDocument& document) {
    const std::string heading = Heading(document);
    document.BeginSection(InputTitle(document), "Pipe Input Data");
    document.Heading(Columns, heading);
    document.OnPageBreak([&] {
        document.BeginSection(InputTitle(document), "Pipe Input Data (cont'd)");
        document.Heading(Columns, heading);
    });
    const TypedRows typed(document.Model);
    bool starred = false;
    for (int row = 1; row <= document.PipeCount(); ++row) {
        const CalcPipeRecord& pipe = document.Pipe(row);
        const auto [begin, end] = TypedEnds(document, typed, document.Model.CalcPipeRecord[row]);
        TableRow cells{Format(ToNumber(begin), "###0"),
                       Format(ToNumber(end), "##0"),
                       "",
                       "",
                       "",
                       "",
                       "",
                       "",
                       "",
                       ""};
        if (pipe.Material > LibraryMaterials) {
            document.Rows(Columns, {DeviceRow(document, pipe, cells)});
            continue;
        }
        // Autosized is -1 where the user's size stands; a size the run chose gets a star.
        const bool sized = pipe.Autosized == 0 && pipe.NominalDiameter > 0;
        starred = starred || sized;
        const std::string_view length = sized ? "##0.0" : "##0.00";
        cells[2] = ReportDocument::ProjectText(pipe.ResultFittingText);
        cells[3] = Cell(pipe.NominalDiameter, "##0.000") + (sized ? "*" : "");
        cells[4] = Cell(pipe.TypeGroup, "##0");
        cells[5] = ReportDocument::ProjectText(pipe.FittingText);
        cells[6] = Cell(pipe.NominalLength, length);
        cells[7] = Cell(pipe.FittingLength, length);
        cells[8] = Cell(pipe.TotalLength, length);
        cells[9] = Cell(pipe.CFactor, "##0");
        document.Rows(Columns, {cells});
    }
    if (starred) {
        document.OnPageBreak([&] { document.BeginSection(InputTitle(document), ""); });
        document.Canvas.Paragraph("* Indicates the pipe section was autosized.");
    }
}

} // namespace quench
