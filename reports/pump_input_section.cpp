#include "core/text.h"
#include "library/pump_database.h"
#include "reports/report_sections.h"

#include <algorithm>

namespace quench {

namespace {

constexpr std::string_view Lines = "<2000|<8800";
constexpr std::string_view Points = "<2000|<2000|<2000|<4800";

// The first active typed row of a pump; 0 when there is none.
int PumpRow(const Project& project) {
    const int rows = std::min<int>(MaxPipes, static_cast<int>(project.PipeRecord.size()) - 1);
    for (int row = 1; row <= rows; ++row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (IsTrue(pipe.Active) && HasBothNodes(pipe) && pipe.Material == MaterialFirePump) {
            return row;
        }
    }
    return 0;
}

std::string PumpName(const ReportDocument& document) {
    const int source = document.Model.CalculationData.PumpSource;
    if (source < 1 || document.PumpDatabase.empty()) {
        return "";
    }
    const std::vector<PumpRecord> pumps = LoadPumpDatabase(document.PumpDatabase);
    return source <= static_cast<int>(pumps.size())
               ? ReportDocument::ProjectText(pumps[static_cast<std::size_t>(source - 1)].Name)
               : "";
}

} // namespace

void PumpInputSection(ReportDocument& document) {
    document.BeginSection(InputTitle(document), "Pump Curve Input Data");
    const int row = PumpRow(document.Model);
    if (row == 0) {
        return;
    }
    const PipeRecord& pump = document.Model.PipeRecord[static_cast<std::size_t>(row)];
    document.Rows(Lines, {{"Pump Begin Node:", ReportDocument::ProjectText(pump.BegNode)},
                          {"Pump End Node:", ReportDocument::ProjectText(pump.EndNode)},
                          {"Pump Name:", PumpName(document)}});
    // A curve typed in feet of head keeps its head: feet, or metres in SI.
    const bool head = IsTrue(document.Model.CalculationData.PumpDefined);
    const std::string flowUnit(document.Unit("gpm", "L/min"));
    const std::string pressureUnit(head ? document.Unit("ft", "m") : document.Unit("psi", "kPa"));
    const CalculationData& data = document.CalculationData();
    std::vector<TableRow> rows;
    for (int point = 0; point < PumpCurvePoints; ++point) {
        const Single flow = data.PumpCurveFlow[static_cast<std::size_t>(point)];
        const Single pressure = data.PumpCurvePressure[static_cast<std::size_t>(point)];
        if (flow == UnusedPumpPoint || pressure == UnusedPumpPoint) {
            continue;
        }
        const std::string number = std::to_string(point + 1);
        rows.push_back({"Flow (" + flowUnit + ") " + number + ":", Cell(flow, "Fixed"),
                        "Pressure (" + pressureUnit + ") " + number + ":",
                        Cell(pressure, "Fixed")});
    }
    document.Rows(Points, rows);
}

} // namespace quench
