#include "core/text.h"
#include "reports/report_sections.h"

#include <algorithm>

namespace quench {

namespace {

constexpr std::string_view RowColumns = ">+1280|^+1280|>+1280|>+1280|>+1280|>+1280|>+1280|>+1280";
constexpr std::string_view TotalColumns = "<+6400|>+1280|>+1280|>+1280";

std::string Heading(const ReportDocument& document) {
    const std::string& word = document.Word;
    const std::string elevation = word == "Hose" ? "Node Elevation" : "Sprinkler Elevation";
    if (document.SI()) {
        return "Flowing " + word + " Node No.|Area Group Code|" + word + " KFactor (Km)|" +
               elevation +
               " (m)|Residual Pressure (kPa)|Flowing Area (m²)|Flowing Density (Lpm/m²)|" + word +
               " Discharge (Lpm)";
    }
    return "Flowing " + word + " Node No.|Area Group Code|" + word + " KFactor (K)|" + elevation +
           " (feet)|Residual Pressure (psi)|Flowing Area (ft²)|Flowing Density (gpm/ft²)|" + word +
           " Discharge (gpm)";
}

std::string Subtitle(const ReportDocument& document, bool continued) {
    if (!document.PeakGroup.empty()) {
        return "Group " + document.PeakGroup + " Peak " + document.Word + " Output Data";
    }
    return "Overall " + document.Word + " Output Data" + (continued ? " (cont'd)" : "");
}

struct Sums {
    double Area = 0;
    double Discharge = 0;

    void Add(const NodeRecord& node) {
        Area += node.SprinklerArea;
        Discharge += node.Discharge;
    }
    TableRow Row(std::string label) const {
        const double density = Area != 0 ? Discharge / Area : 0;
        return {std::move(label), Cell(Area, "##0.00"), Cell(density, "##0.000"),
                Cell(Discharge, "##0.00")};
    }
};

bool Flowing(const NodeRecord& node) {
    return node.KFactor > 0 && node.SprinklerArea > 0 && node.Discharge > 0;
}

TableRow NodeRow(const ReportDocument& document, const NodeRecord& node, const std::string& group) {
    const double density = node.SprinklerArea != 0 ? node.Discharge / node.SprinklerArea : 0;
    return {document.NodeText(node.Number),
            ReportDocument::ProjectText(group),
            Cell(node.KFactor, "##0.00"),
            Cell(node.Elevation, "##0.00"),
            Cell(node.ResidualPressure, "##0.00"),
            Cell(node.SprinklerArea, "##0.00"),
            Cell(density, "##0.000"),
            Cell(node.Discharge, "##0.00")};
}

} // namespace

void SprinklerOutputSection(ReportDocument& document) {
    const std::string heading = Heading(document);
    document.BeginSection(OutputTitle(document), Subtitle(document, false));
    document.Heading(RowColumns, heading);
    document.OnPageBreak([&] {
        document.BeginSection(OutputTitle(document), Subtitle(document, true));
        document.Heading(RowColumns, heading);
    });
    // The groups of the flowing nodes in the order they first appear; ungrouped nodes last.
    std::vector<std::string> groups;
    for (int row = 1; row <= document.NodeCount(); ++row) {
        const NodeRecord& node = document.Node(row);
        const std::string group = Trim(node.AreaGroup);
        if (Flowing(node) && !group.empty() &&
            std::find(groups.begin(), groups.end(), group) == groups.end()) {
            groups.push_back(group);
        }
    }
    groups.emplace_back();
    Sums all;
    bool separate = false;
    for (const std::string& group : groups) {
        Sums sums;
        for (int row = 1; row <= document.NodeCount(); ++row) {
            const NodeRecord& node = document.Node(row);
            if (!Flowing(node) || Trim(node.AreaGroup) != group) {
                continue;
            }
            if (separate) {
                document.Canvas.AddTable(RowColumns, "", "|||||||||;");
                separate = false;
            }
            document.Rows(RowColumns, {NodeRow(document, node, group)});
            sums.Add(node);
            all.Add(node);
        }
        if (sums.Discharge > 0 || !group.empty()) {
            document.Rows(TotalColumns,
                          {sums.Row(group.empty() ? "Sub Totals For Non-Group"
                                                  : "Sub Totals For Group " + group)});
            separate = true;
        }
    }
    if (separate) {
        document.Canvas.AddTable(RowColumns, "", "|||||||||;");
    }
    document.Rows(TotalColumns, {all.Row("Totals For All Groups")});
}

} // namespace quench
