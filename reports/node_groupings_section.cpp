#include "core/text.h"
#include "reports/report_sections.h"

#include <cmath>

namespace quench {

namespace {

constexpr std::string_view UpperColumns = "^+1600|>+750|>+1480|>+1480|^+2060|>+1480|>+1480";
constexpr std::string_view LowerColumns =
    ">+700|>+200|>+700|>+750|>+1480|>+1480|>+1030|>+1030|>+1480|>+1480";

std::string UpperHeading(const ReportDocument& document) {
    return "Pipe Segment|Pipe|Pipe  |" + document.Word + " Flow|" + document.Word2 +
           " Flow |Beg. Node|Imbalance";
}

std::string LowerHeading(const ReportDocument& document) {
    const std::string flow(document.Unit("(gpm)", "(Lpm)"));
    return "Beg. Node||End. Node|Type Group|Flow Rate " + flow + "|At Beg. Node " + flow +
           "|Out (+) " + flow + "|In (-) " + flow + "|Residual Pressure " +
           std::string(document.Unit("(psi)", "(kPa)")) + "|Flow At Beg. Node " + flow;
}

std::string Subtitle(const ReportDocument& document, bool continued) {
    if (!document.PeakGroup.empty()) {
        return "Group " + document.PeakGroup + " Peak Node Groupings Output Data";
    }
    return std::string("Overall Node Groupings Output Data") + (continued ? " (cont'd)" : "");
}

// The pipes of the calculated table at each node, in the table's order.
std::map<double, std::vector<int>> PipesAtNodes(const ReportDocument& document) {
    std::map<double, std::vector<int>> pipes;
    for (int row = 1; row <= document.PipeCount(); ++row) {
        const CalcPipeRecord& pipe = document.Model.CalcPipeRecord[static_cast<std::size_t>(row)];
        const double begin = ToNumber(pipe.BegNode);
        const double end = ToNumber(pipe.EndNode);
        pipes[begin].push_back(row);
        if (end != begin) {
            pipes[end].push_back(row);
        }
    }
    return pipes;
}

void NodeBlock(ReportDocument& document, int nodeRow, const std::vector<int>& pipes) {
    const NodeRecord& node = document.Node(nodeRow);
    const double number = node.Number;
    bool first = true;
    for (const int row : pipes) {
        const CalcPipeRecord& pipe = document.Pipe(row);
        const double begin = ToNumber(pipe.BegNode);
        const double other = begin == number ? ToNumber(pipe.EndNode) : begin;
        // Flow runs from begin to end when positive: the pipe takes water from this node when it
        // leaves the node that way.
        const double usFlow = document.Model.CalcPipeRecord[static_cast<std::size_t>(row)].Flow;
        const bool takes = begin == number ? usFlow >= 0 : usFlow < 0;
        double flow = std::abs(pipe.Flow);
        if (number == InflowNodeCode && usFlow == 0) {
            flow = std::abs(document.CalculationData().InflowFlow);
        }
        const std::string fixed = Cell(node.FixedFlow, "##0.00");
        document.Rows(
            LowerColumns,
            {{document.NodeText(number), first ? "" : "-", document.NodeText(other),
              Cell(pipe.TypeGroup, "##0"), Cell(flow, "##0.00"), Cell(node.Discharge, "##0.00"),
              takes ? fixed : "", takes ? "" : fixed, Cell(node.ResidualPressure, "##0.00"),
              first ? Cell(node.FlowImbalance, "##0.00000") : ""}});
        first = false;
    }
}

} // namespace

void NodeGroupingsSection(ReportDocument& document) {
    const std::string upper = UpperHeading(document);
    const std::string lower = LowerHeading(document);
    const auto headings = [&](bool continued) {
        document.BeginSection(OutputTitle(document), Subtitle(document, continued));
        document.Heading(UpperColumns, upper);
        document.Heading(LowerColumns, lower);
    };
    headings(false);
    document.OnPageBreak([&] { headings(true); });
    const std::map<double, std::vector<int>> pipes = PipesAtNodes(document);
    const auto block = [&](int row) {
        const auto found =
            pipes.find(document.Model.NodeRecord[static_cast<std::size_t>(row)].Number);
        if (found != pipes.end()) {
            NodeBlock(document, row, found->second);
        }
    };
    // The supply's row comes first, then the nodes in their order.
    for (int row = 1; row <= document.NodeCount(); ++row) {
        if (document.Model.NodeRecord[static_cast<std::size_t>(row)].Number == InflowNodeCode) {
            block(row);
        }
    }
    for (int row = 1; row <= document.NodeCount(); ++row) {
        if (document.Model.NodeRecord[static_cast<std::size_t>(row)].Number != InflowNodeCode) {
            block(row);
        }
    }
}

} // namespace quench
