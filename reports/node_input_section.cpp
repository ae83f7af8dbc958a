#include "core/text.h"
#include "reports/report_sections.h"

#include <algorithm>
#include <map>

namespace quench {

namespace {

constexpr std::string_view Columns = "<+1100|<+2090|>+1400|>+1400|>+1400|>+1400|>+1400";

std::string Heading(const ReportDocument& document) {
    if (document.SI()) {
        return "Node No.|Node Description|Area Group|" + document.Word +
               " KFactor (Km)|Pressure Estimate (kPa)|Node Elevation (m)|" + document.Word2 +
               " Discharge (Lpm)";
    }
    return "Node No.|Node Description|Area Group|" + document.Word +
           " KFactor (K)|Pressure Estimate (psi)|Node Elevation (feet)|" + document.Word2 +
           " Discharge (gpm)";
}

// "AB" is the list "A, B": each character names a group.
std::string GroupList(std::string_view group) {
    std::string list;
    for (const char name : Trim(group)) {
        if (name != ' ') {
            list += (list.empty() ? "" : ", ") + std::string(1, name);
        }
    }
    return ReportDocument::ProjectText(list);
}

// The pressure estimates typed at each node, in psi: the first active row that names the node.
std::map<double, double> TypedEstimates(const Project& project) {
    std::map<double, double> estimates;
    const int rows = std::min<int>(MaxPipes, static_cast<int>(project.PipeRecord.size()) - 1);
    for (int row = 1; row <= rows; ++row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (!IsTrue(pipe.Active) || !HasBothNodes(pipe)) {
            continue;
        }
        estimates.emplace(ToNumber(pipe.BegNode), pipe.PressEstimateB);
        estimates.emplace(ToNumber(pipe.EndNode), pipe.PressEstimateE);
    }
    return estimates;
}

TableRow NodeRow(const ReportDocument& document, int row,
                 const std::map<double, double>& estimates) {
    const NodeRecord& node = document.Node(row);
    const double typed = TypedNodeNumber(document.Model, static_cast<double>(node.Number));
    const auto estimate = estimates.find(typed);
    const double pressure = document.Shown(UnitKind::Pressure_Drop,
                                           estimate == estimates.end() ? 0.0 : estimate->second);
    TableRow cells{
        document.NodeText(node.Number), "", GroupList(node.AreaGroup), "", Cell(pressure, "##0.00"),
        Cell(node.Elevation, "##0.00"), ""};
    if (node.KFactor > 0) {
        cells[1] = document.Word;
        cells[3] = Cell(node.KFactor, "##0.00");
        cells[6] = Cell(node.FixedFlow, "0.00");
    } else {
        cells[1] = node.FixedFlow != 0 ? document.Word2 : "No Discharge";
        cells[3] = "N/A";
        cells[6] = Cell(node.FixedFlow, "##0.00");
    }
    return cells;
}

} // namespace

void NodeInputSection(ReportDocument& document) {
    const std::string heading = Heading(document);
    document.BeginSection(InputTitle(document), "Node Input Data");
    document.Heading(Columns, heading);
    document.OnPageBreak([&] {
        document.BeginSection(InputTitle(document), "Node Input Data (cont'd)");
        document.Heading(Columns, heading);
    });
    const std::map<double, double> estimates = TypedEstimates(document.Model);
    for (int row = 1; row <= document.NodeCount(); ++row) {
        document.Rows(Columns, {NodeRow(document, row, estimates)});
    }
}

} // namespace quench
