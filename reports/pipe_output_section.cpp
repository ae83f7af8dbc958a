#include "core/text.h"
#include "reports/report_sections.h"

namespace quench {

namespace {

constexpr std::string_view FormatA =
    ">+740|>+1070|>+1070|>+1070|>+1070|>+1100|>+1070|>+1070|>+1070|>+1070";
constexpr std::string_view FormatB = ">+740|^+3210|>+1070|>+1100|>+1070|>+1070|>+1070|>+1070";
constexpr std::string_view FormatC = "+340|<+10000";

std::string Heading(const ReportDocument& document) {
    const std::string discharge = document.Word == "Hose" ? "Hose/Fix" : "Spk/Hose";
    if (document.SI()) {
        return "Beg. End. Node|Nodal KFactor (Km)|Elevation (m)|" + discharge +
               " Discharge (Lpm)|Residual Pressure (kPa)|Nom. Dia. Inside Dia. C-Value|Q (Lpm) "
               "Velocity (m/s)|F. L./m (kPa/m) Fittings Type-Grp|Pipe-Len. Fit-Len. Tot-Len. "
               "(m)|PF-(kPa) PE-(kPa) PV-(kPa)";
    }
    return "Beg. End. Node|Nodal KFactor (K)|Elevation (feet)|" + discharge +
           " Discharge (gpm)|Residual Pressure (psi)|Nom. Dia. Inside Dia. C-Value|Q (gpm) "
           "Velocity (fps)|F. L./ft (psi/ft) Fittings Type-Grp|Pipe-Len. Fit-Len. Tot-Len. "
           "(ft)|PF-(psi) PE-(psi) PV-(psi)";
}

std::string Subtitle(const ReportDocument& document, bool continued) {
    if (!document.PeakGroup.empty()) {
        return "Group " + document.PeakGroup + " Peak Pipe Output Data";
    }
    return std::string("Overall Pipe Output Data") + (continued ? " (cont'd)" : "");
}

void PipeLines(ReportDocument& document, const PipeResultRecord& result, const PipeResultRecord& us,
               const CalcPipeRecord* pipe) {
    const std::string fittings = Trim(result.FittingText);
    document.Rows(
        FormatA,
        {{Cell(result.BegNode, "##0"), Cell(result.KFactorB, "##0.00"),
          Cell(result.ElevationB, "##0.00"), Cell(result.DischargeB, "##0.00"),
          Cell(result.ResidualB, "##0.00"), Cell(result.NominalDiameter, "##0.00"),
          Cell(result.Flow, "##0.00"), Cell(result.FrictionLossPerFoot, "##0.00000"),
          Cell(result.PipeLength, "##0.00"), Cell(result.FrictionPressure, "##0.000")},
         {Cell(result.EndNode, "##0"), Cell(result.KFactorE, "##0.00"),
          Cell(result.ElevationE, "##0.00"), Cell(result.DischargeE, "##0.00"),
          Cell(result.ResidualE, "##0.00"), Cell(result.InsideDiameter, "##0.000"),
          Cell(result.Velocity, "##0.00"),
          fittings.empty() ? "-----" : ReportDocument::ProjectText(fittings),
          Cell(result.FittingLength, "##0.00"), Cell(result.ElevationPressure, "##0.000")}});
    document.Rows(FormatB,
                  {{"", pipe ? ReportDocument::ProjectText(pipe->ResultFittingText) : "", "",
                    Cell(result.CFactor, "##0"), "", Cell(result.TypeGroup, "##0"),
                    Cell(result.TotalLength, "##0.00"), Cell(result.VelocityPressure, "##0.000")}});
    // The limits are compared in US units as Singles, whatever units the report shows.
    const CalculationData& limits = document.Model.CalculationData;
    const Single maximumVelocity = static_cast<Single>(limits.MaxWaterVelocity);
    if (maximumVelocity > 0 && static_cast<Single>(us.Velocity) > maximumVelocity) {
        document.Rows(FormatC, {{"", "WARNING: Maximum velocity exceeded for this pipe"}});
    }
    if (IsTrue(limits.UseFrictionLimit) && static_cast<Single>(us.FrictionLossPerFoot * 100) >
                                               static_cast<Single>(limits.MaxFrictionalLoss)) {
        document.Rows(FormatC, {{"", "WARNING: Maximum friction loss exceeded for this pipe"}});
    }
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

void DeviceLines(ReportDocument& document, const PipeResultRecord& result,
                 const CalcPipeRecord* pipe) {
    const std::string loss =
        Cell(result.FrictionPressure, "##0.00") + std::string(document.Unit(" psi", " kPa"));
    document.Rows(FormatA,
                  {{Cell(result.BegNode, "##0"),
                    DeviceName(document, pipe ? pipe->Material : MaterialFirePump),
                    Cell(result.ElevationB, "##0.00"), "", Cell(result.ResidualB, "##0.00"), "",
                    Cell(result.Flow, "##0.00"), "", "", ""},
                   {Cell(result.EndNode, "##0"), loss, Cell(result.ElevationE, "##0.00"), "",
                    Cell(result.ResidualE, "##0.00"), "", "", "", "", ""}});
}

// The calculated pipe between the two typed nodes of a result row.
std::map<std::pair<double, double>, int> PipesByNodes(const ReportDocument& document) {
    std::map<std::pair<double, double>, int> pipes;
    for (int row = document.PipeCount(); row >= 1; --row) {
        const CalcPipeRecord& pipe = document.Model.CalcPipeRecord[static_cast<std::size_t>(row)];
        const double begin = TypedNodeNumber(document.Model, ToNumber(pipe.BegNode));
        const double end = TypedNodeNumber(document.Model, ToNumber(pipe.EndNode));
        pipes[{std::min(begin, end), std::max(begin, end)}] = row;
    }
    return pipes;
}

} // namespace

void PipeOutputSection(ReportDocument& document) {
    const std::string heading = Heading(document);
    document.BeginSection(OutputTitle(document), Subtitle(document, false));
    document.Heading(FormatA, heading);
    document.OnPageBreak([&] {
        document.BeginSection(OutputTitle(document), Subtitle(document, true));
        document.Heading(FormatA, heading);
    });
    const auto pipes = PipesByNodes(document);
    for (int row = 1; row <= document.ResultCount(); ++row) {
        const PipeResultRecord& result = document.Result(row);
        const PipeResultRecord& us = document.Model.PipeResultRecord[static_cast<std::size_t>(row)];
        const double begin = result.BegNode;
        const double end = result.EndNode;
        const auto found = pipes.find({std::min(begin, end), std::max(begin, end)});
        const CalcPipeRecord* pipe = found == pipes.end() ? nullptr : &document.Pipe(found->second);
        // The lines of one pipe or device stay on one page.
        document.Canvas.KeepTogether(result.DeviceFlag == 2 ? 2 : 3);
        if (result.DeviceFlag == 2) {
            DeviceLines(document, result, pipe);
        } else {
            PipeLines(document, result, us, pipe);
        }
    }
}

} // namespace quench
