#include "calc/independent_check.h"
#include "core/text.h"
#include "reports/report_sections.h"

#include <cmath>

namespace quench {

namespace {

constexpr std::string_view Block = "<5500|>+1000|<+3800";
constexpr std::string_view ImbalanceBlock = "<5400|>+1000|<+3900";
constexpr double Pi = 3.14159265;
constexpr double GallonsPerCubicFoot = 7.48052;
constexpr Single DryFactor = 1.3f;

struct Row {
    std::string Label;
    double Value;
    std::string_view Picture;
    std::string Unit;
};

TableRow Cells(const Row& row) {
    return {row.Label, Cell(row.Value, row.Picture), row.Unit};
}

void Rows(ReportDocument& document, std::string_view format, const std::vector<Row>& rows) {
    std::vector<TableRow> cells;
    for (const Row& row : rows) {
        cells.push_back(Cells(row));
    }
    document.Rows(format, cells);
}

void HmdBlock(ReportDocument& document) {
    const CalculationData& data = document.CalculationData();
    document.SecondaryTitle("Hydraulically Most Demanding " + document.Word + " Node");
    Rows(document, Block,
         {{"HMD " + document.Word + " Node Number:", static_cast<double>(data.HMDNodeNumber), "##0",
           ""},
          {"HMD Actual Residual Pressure:", data.HMDActualResidualPressure, "##0.00",
           std::string(document.Unit("psi", "kPa"))},
          {"HMD Actual GPM:", data.HMDActualFlow, "##0.00",
           std::string(document.Unit("gpm", "Lpm"))}});
}

void SprinklerBlock(ReportDocument& document) {
    const SystemData& us = document.Model.SystemData;
    const CalculationData& usData = document.Model.CalculationData;
    const std::string& word = document.Word;
    const double area = us.AreaOfSprinklerOperation;
    const double factor = Trim(us.SprinklerSystemType) == "Dry" ? DryFactor : 1.0f;
    const double count = usData.NumberOfFlowingSprinklers;
    const double flow = usData.SprinklerFlow;
    const bool adjusted = factor != 1;
    const std::string areaUnit(document.Unit("ft²", "m²"));
    const std::string densityUnit(document.Unit("gpm/ft²", "Lpm/m²"));
    const std::string flowUnit(document.Unit("gpm", "Lpm"));
    const auto shown = [&](UnitKind kind, double value) { return document.Shown(kind, value); };

    document.SecondaryTitle(word + " Summary");
    document.Rows(
        Block, {{word + " System Type:", ReportDocument::ProjectText(us.SprinklerSystemType), ""}});
    std::vector<Row> rows{
        {"Specified Area Of Application:", shown(UnitKind::Area, area), "##0.00", areaUnit}};
    // The adjusted lines keep their US unit words beside the converted values.
    if (adjusted) {
        rows.push_back({"Adjusted Area Of Application:", shown(UnitKind::Area, factor * area),
                        "##0.00", "ft²"});
    }
    rows.push_back(
        {"Minimum Desired Density:", shown(UnitKind::Flow_Density, us.MinimumDesiredDensity),
         "##0.000", densityUnit});
    rows.push_back(
        {"Application Average Density:", shown(UnitKind::Flow_Density, area != 0 ? flow / area : 0),
         "##0.000", densityUnit});
    if (adjusted) {
        rows.push_back({"Application Adjusted Density (not required by NFPA 13):",
                        shown(UnitKind::Flow_Density, area != 0 ? flow / (factor * area) : 0),
                        "##0.000", "gpm/ft²"});
    }
    rows.push_back({"Application Average Area Per " + word + ":",
                    shown(UnitKind::Area, count != 0 ? area / count : 0), "##0.00", areaUnit});
    if (adjusted) {
        rows.push_back({"Adjusted Area Per " + word + " (not required by NFPA 13):",
                        shown(UnitKind::Area, count != 0 ? factor * area / count : 0), "##0.00",
                        "ft²"});
    }
    rows.push_back({word + " Flow:", shown(UnitKind::Volumetric_Flow, flow), "##0.00", flowUnit});
    rows.push_back({"Average " + word + " Flow:",
                    shown(UnitKind::Volumetric_Flow, count != 0 ? flow / count : 0), "##0.00",
                    flowUnit});
    Rows(document, Block, rows);
}

std::string PipeNodes(const ReportDocument& document, int row) {
    if (row < 1 || row > document.PipeCount()) {
        return "";
    }
    const CalcPipeRecord& pipe = document.Model.CalcPipeRecord[static_cast<std::size_t>(row)];
    return document.NodeText(pipe.BegNode) + " - " + document.NodeText(pipe.EndNode);
}

// The pipe of the largest velocity pressure, as the solver kept it beside the largest velocity.
int LargestVelocityPressurePipe(const ReportDocument& document) {
    int largest = 0;
    double value = -1;
    for (int row = 1; row <= document.PipeCount(); ++row) {
        const double pressure =
            std::abs(document.Model.CalcPipeRecord[static_cast<std::size_t>(row)].VelocityPressure);
        if (pressure > value) {
            value = pressure;
            largest = row;
        }
    }
    return largest;
}

void ImbalanceBlockRows(ReportDocument& document) {
    const Project& project = document.Model;
    const CalculationData& us = project.CalculationData;
    const std::string pressure(document.Unit("psi", "kPa"));
    const std::string flow(document.Unit("gpm", "Lpm"));
    const bool maximum = IsTrue(us.UseMaximumImbalance);
    const int velocityPipe = us.MaximumVelocityPipe;
    const int pressurePipe = LargestVelocityPressurePipe(document);
    const double velocityPressure =
        pressurePipe == 0
            ? 0
            : std::abs(
                  project.CalcPipeRecord[static_cast<std::size_t>(pressurePipe)].VelocityPressure);
    const auto p = [&](double value) { return document.Shown(UnitKind::Pressure_Drop, value); };
    const auto q = [&](double value) { return document.Shown(UnitKind::Volumetric_Flow, value); };
    document.SecondaryTitle("Flow Velocity And Imbalance Summary");
    Rows(document, ImbalanceBlock,
         {{maximum ? "Allowable Maximum Nodal Pressure Imbalance:"
                   : "Allowable Average Nodal Pressure Imbalance:",
           p(maximum ? us.MaximumNodePressureImbalance : us.AverageNodePressureImbalance),
           "##0.0000", pressure},
          {"Maximum Flow Velocity ( In Pipe " + PipeNodes(document, velocityPipe) + " )",
           document.Shown(UnitKind::Velocity, us.MaximumFlowVelocity), "##0.00",
           std::string(document.Unit("ft/sec", "m/sec"))},
          {"Maximum Velocity Pressure ( In Pipe " + PipeNodes(document, pressurePipe) + " )",
           p(velocityPressure), "##0.00", pressure},
          {"Actual Maximum Nodal Pressure Imbalance:", p(project.MaxNodePressureImbalanceResult),
           "##0.0000", pressure},
          {"Actual Average Nodal Pressure Imbalance:", p(project.AvgNodePressureImbalanceResult),
           "##0.0000", pressure},
          {"Actual Maximum Nodal Flow Imbalance:", q(project.MaxNodeFlowImbalanceResult),
           "##0.0000", flow},
          {"Actual Average Nodal Flow Imbalance:", q(project.AvgNodeFlowImbalanceResult),
           "##0.0000", flow}});
}

// US gallons in the pipes of active rows, fittings not counted.
double WaterVolume(const ReportDocument& document) {
    const TypedRows typed(document.Model);
    double volume = 0;
    for (int row = 1; row <= document.PipeCount(); ++row) {
        const CalcPipeRecord& pipe = document.Model.CalcPipeRecord[static_cast<std::size_t>(row)];
        if (typed.Find(pipe.BegNode, pipe.EndNode) == 0) {
            continue;
        }
        const double d = pipe.InsideDiameter;
        volume += Pi * d * d / 144 * pipe.NominalLength / 4 * GallonsPerCubicFoot;
    }
    return volume;
}

void NetworkBlock(ReportDocument& document) {
    const Project& project = document.Model;
    const CalculationData& us = project.CalculationData;
    const std::string& word = document.Word;
    const std::string pressure(document.Unit("psi", "kPa"));
    const std::string flowUnit(document.Unit("gpm", "Lpm"));
    const auto q = [&](double value) { return document.Shown(UnitKind::Volumetric_Flow, value); };
    const auto p = [&](double value) { return document.Shown(UnitKind::Pressure_Drop, value); };
    document.SecondaryTitle("Overall Network Summary");
    std::vector<Row> rows{
        {"Number Of Unique Pipe Sections:", static_cast<double>(us.NumberOfUniquePipeSections),
         "##0", ""},
        {"Number Of Flowing " + word + "s:", static_cast<double>(us.NumberOfFlowingSprinklers),
         "##0", ""},
        {"Pipe System Water Volume:",
         document.SI() ? ToSI(UnitKind::Volume, WaterVolume(document)) : WaterVolume(document),
         "##0.00", std::string(document.Unit("gal", "L"))},
        {word + " Flow:", q(us.SprinklerFlow), "##0.00", flowUnit},
        {document.Word2 + " Flow:", q(us.NonSprinklerFlow), "##0.00", flowUnit},
        {"Total System Demand Flow:", q(us.SprinklerFlow + us.NonSprinklerFlow), "##0.00",
         flowUnit}};
    if (IsTrue(us.DemandMode)) {
        rows.push_back({"Minimum Required Residual Pressure At System Inflow Node:",
                        p(us.InflowResidualPressure), "##0.00", pressure});
    } else {
        // The typed supply pressure: the run raised only its own copy by a pump's boost.
        rows.push_back({"Specified Residual Pressure At System Inflow Node:",
                        p(us.InflowResidualPressure1), "##0.00", pressure});
    }
    rows.push_back({"Demand Flow At System Inflow Node:", q(us.InflowFlow), "##0.00", flowUnit});
    Rows(document, Block, rows);
}

// The posted result solved again by a second method; in the units of the other blocks.
void IndependentCheckBlock(ReportDocument& document) {
    const CheckVerdict verdict = CheckPostedResults(document.Model);
    const std::string pressure(document.Unit("psi", "kPa"));
    const std::string flowUnit(document.Unit("gpm", "Lpm"));
    const auto q = [&](double value) { return document.Shown(UnitKind::Volumetric_Flow, value); };
    const auto p = [&](double value) { return document.Shown(UnitKind::Pressure_Drop, value); };
    document.SecondaryTitle("Independent Check");
    if (!verdict.Solved) {
        document.Rows(Block, {{"Result:", "Not Solved", ""}});
        return;
    }
    Rows(document, Block,
         {{"Largest Pressure Difference (Node " + std::to_string(verdict.WorstNode) + "):",
           p(verdict.MaxPressureDifference), "##0.000", pressure},
          {"Largest Flow Difference (Pipe " + std::to_string(verdict.WorstPipeBegin) + "-" +
               std::to_string(verdict.WorstPipeEnd) + "):",
           q(verdict.MaxFlowDifference), "##0.000", flowUnit},
          {"Largest Nodal Flow Imbalance:", q(verdict.MaxFlowImbalance), "##0.000", flowUnit}});
    document.Rows(Block, {{"Result:", verdict.Passed ? "Passed" : "Failed", ""}});
}

} // namespace

void OutputSummarySection(ReportDocument& document) {
    const std::string title = "Quench " + document.Word + " Output Summary" + document.OutputSuffix;
    document.BeginSection(title, "");
    document.OnPageBreak([&] { document.BeginSection(title, ""); });
    HmdBlock(document);
    SprinklerBlock(document);
    ImbalanceBlockRows(document);
    NetworkBlock(document);
    IndependentCheckBlock(document);
}

} // namespace quench
