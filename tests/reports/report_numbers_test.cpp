// Every number of the output tables and the summary is the stored result at the printed
// precision: the expected lines are made here from the stored US tables, converted to SI by the
// unit definitions where the report is in SI, and looked for in the render.

#include "core/project_file.h"
#include "core/text.h"
#include "reports/report_document.h"
#include "tests/reports/report_projects.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

// A stored value as a report prints it: through its picture, and a value that rounds to zero
// without a sign.
std::string Printed(double value, const char* picture) {
    std::string text = Format(value, picture);
    if (text.rfind('-', 0) == 0 && text.find_first_not_of("0.", 1) == std::string::npos) {
        text.erase(0, 1);
    }
    return text;
}

struct Shown {
    MeasureSystem System;
    double operator()(UnitKind kind, double value) const {
        return System == MeasureSystem::SI ? ToSI(kind, value) : value;
    }
};

std::string Joined(const std::vector<std::string>& cells) {
    std::string line;
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        line += (cell == 0 ? "" : " | ") + cells[cell];
    }
    return line;
}

// The lines appear in the render in this order.
void ExpectInOrder(const std::string& text, const std::vector<std::string>& lines) {
    std::size_t place = 0;
    for (const std::string& line : lines) {
        const std::size_t found = text.find("\n" + line + "\n", place);
        ASSERT_NE(found, std::string::npos) << "missing or out of order: " << line;
        place = found + 1;
    }
}

std::vector<std::string> PipeOutputLines(const Project& project, Shown shown) {
    std::vector<std::string> lines;
    for (int row = 1; row <= project.CalculationData.NumberOfUniquePipeSections; ++row) {
        const PipeResultRecord& r = project.PipeResultRecord[static_cast<std::size_t>(row)];
        if (r.DeviceFlag == 2) {
            continue;
        }
        const auto f = [&](UnitKind kind, double value, const char* picture) {
            return Printed(shown(kind, value), picture);
        };
        lines.push_back(
            Joined({Format(r.BegNode, "##0"), f(UnitKind::K_Factor, r.KFactorB, "##0.00"),
                    f(UnitKind::Length, r.ElevationB, "##0.00"),
                    f(UnitKind::Volumetric_Flow, r.DischargeB, "##0.00"),
                    f(UnitKind::Pressure_Drop, r.ResidualB, "##0.00"),
                    f(UnitKind::Fine_Length, r.NominalDiameter, "##0.00"),
                    f(UnitKind::Volumetric_Flow, r.Flow, "##0.00"),
                    f(UnitKind::Friction_Loss, r.FrictionLossPerFoot, "##0.00000"),
                    f(UnitKind::Length, r.PipeLength, "##0.00"),
                    f(UnitKind::Pressure_Drop, r.FrictionPressure, "##0.000")}));
        lines.push_back(
            Joined({Format(r.EndNode, "##0"), f(UnitKind::K_Factor, r.KFactorE, "##0.00"),
                    f(UnitKind::Length, r.ElevationE, "##0.00"),
                    f(UnitKind::Volumetric_Flow, r.DischargeE, "##0.00"),
                    f(UnitKind::Pressure_Drop, r.ResidualE, "##0.00"),
                    f(UnitKind::Fine_Length, r.InsideDiameter, "##0.000"),
                    f(UnitKind::Velocity, r.Velocity, "##0.00"),
                    r.FittingText.empty() ? "-----" : r.FittingText,
                    f(UnitKind::Length, r.FittingLength, "##0.00"),
                    f(UnitKind::Pressure_Drop, r.ElevationPressure, "##0.000")}));
    }
    return lines;
}

std::vector<std::string> SprinklerLines(const Project& project, Shown shown) {
    std::vector<std::string> lines;
    double area = 0;
    double discharge = 0;
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& n = project.NodeRecord[static_cast<std::size_t>(row)];
        if (n.KFactor <= 0 || n.SprinklerArea <= 0 || n.Discharge <= 0) {
            continue;
        }
        const double a = shown(UnitKind::Area, n.SprinklerArea);
        const double q = shown(UnitKind::Volumetric_Flow, n.Discharge);
        area += a;
        discharge += q;
        lines.push_back(
            Joined({Format(n.Number, "##0"), Trim(n.AreaGroup),
                    Format(shown(UnitKind::K_Factor, n.KFactor), "##0.00"),
                    Format(shown(UnitKind::Length, n.Elevation), "##0.00"),
                    Format(shown(UnitKind::Pressure_Drop, n.ResidualPressure), "##0.00"),
                    Format(a, "##0.00"), Format(q / a, "##0.000"), Format(q, "##0.00")}));
    }
    lines.push_back(Joined({"Totals For All Groups", Format(area, "##0.00"),
                            Format(discharge / area, "##0.000"), Format(discharge, "##0.00")}));
    return lines;
}

std::vector<std::string> SummaryLines(const Project& project, Shown shown) {
    const CalculationData& d = project.CalculationData;
    const std::string pressure = shown.System == MeasureSystem::SI ? "kPa" : "psi";
    const std::string flow = shown.System == MeasureSystem::SI ? "Lpm" : "gpm";
    const auto p = [&](double value, const char* picture) {
        return Printed(shown(UnitKind::Pressure_Drop, value), picture);
    };
    const auto q = [&](double value, const char* picture) {
        return Printed(shown(UnitKind::Volumetric_Flow, value), picture);
    };
    return {Joined({"HMD Sprinkler Node Number:", Format(d.HMDNodeNumber, "##0"), ""}),
            Joined({"HMD Actual Residual Pressure:", p(d.HMDActualResidualPressure, "##0.00"),
                    pressure}),
            Joined({"HMD Actual GPM:", q(d.HMDActualFlow, "##0.00"), flow}),
            Joined({"Actual Maximum Nodal Pressure Imbalance:",
                    p(project.MaxNodePressureImbalanceResult, "##0.0000"), pressure}),
            Joined({"Actual Average Nodal Flow Imbalance:",
                    q(project.AvgNodeFlowImbalanceResult, "##0.0000"), flow}),
            Joined({"Number Of Unique Pipe Sections:", Format(d.NumberOfUniquePipeSections, "##0"),
                    ""}),
            Joined({"Sprinkler Flow:", q(d.SprinklerFlow, "##0.00"), flow}),
            Joined({"Total System Demand Flow:", q(d.SprinklerFlow + d.NonSprinklerFlow, "##0.00"),
                    flow}),
            Joined({"Demand Flow At System Inflow Node:", q(d.InflowFlow, "##0.00"), flow})};
}

void ExpectStoredNumbers(const Project& project, MeasureSystem system) {
    const auto rendered = Render(project, EverySection(), system);
    const Shown shown{system};
    ExpectInOrder(rendered->Text, PipeOutputLines(project, shown));
    ExpectInOrder(rendered->Text, SprinklerLines(project, shown));
    ExpectInOrder(rendered->Text, SummaryLines(project, shown));
}

TEST(ReportNumbers, OutputTablesAndSummaryPrintTheStoredResultsInUsAndSi) {
    for (const auto& project : {TreeProject(), GridProject(), TreeProject(10, 9)}) {
        SCOPED_TRACE(project->NumberOfPipes);
        ExpectStoredNumbers(*project, MeasureSystem::US);
        ExpectStoredNumbers(*project, MeasureSystem::SI);
    }
}

TEST(ReportNumbers, ReportingLeavesTheProjectAsItWas) {
    const auto project = TreeProject();
    project->InputChanged = True;
    std::vector<std::uint8_t> before;
    ASSERT_TRUE(LayProjectImage(*project, before));
    const auto rendered = Render(*project, EverySection(), MeasureSystem::SI);
    std::vector<std::uint8_t> after;
    ASSERT_TRUE(LayProjectImage(*project, after));
    EXPECT_TRUE(before == after);
    // The warning is told once, and every output title carries the suffix.
    ASSERT_EQ(rendered->Dialogs.All().size(), 1u);
    EXPECT_EQ(rendered->Dialogs.LastTitle(), "Warning!  Inputs changed");
    EXPECT_EQ(rendered->Dialogs.All()[0].Style, MessageStyle::Warning);
    EXPECT_NE(rendered->Text.find("Quench Sprinkler Output Data (Inputs may have changed)"),
              std::string::npos);
    EXPECT_NE(rendered->Text.find("Quench Sprinkler Output Summary (Inputs may have changed)"),
              std::string::npos);
    EXPECT_EQ(rendered->Text.find("Quench Sprinkler Input Data (Inputs may have changed)"),
              std::string::npos);
}

TEST(ReportNumbers, SummaryFiguresOfADrySystemAndTheWaterVolume) {
    const auto project = DevicesProject();
    const auto rendered = Render(*project, EverySection());
    const CalculationData& d = project->CalculationData;
    const double area = project->SystemData.AreaOfSprinklerOperation;
    const double flow = d.SprinklerFlow;
    ExpectInOrder(
        rendered->Text,
        {Joined({"Adjusted Area Of Application:", Format(1.3f * area, "##0.00"), "ft²"}),
         Joined({"Application Average Density:", Format(flow / area, "##0.000"), "gpm/ft²"}),
         Joined({"Application Adjusted Density (not required by NFPA 13):",
                 Format(flow / (1.3f * area), "##0.000"), "gpm/ft²"})});
    // Only pipe lengths count: 20 ft of 2" and 10 ft of 2" and 40 ft of 1" Schedule 40.
    double volume = 0;
    for (const auto& [inside, length] : {std::pair{2.067, 30.0}, std::pair{1.049, 40.0}}) {
        volume += 3.14159265 * inside * inside / 144 * length / 4 * 7.48052;
    }
    ExpectInOrder(rendered->Text,
                  {Joined({"Pipe System Water Volume:", Format(volume, "##0.00"), "gal"})});
}

} // namespace
} // namespace quench

namespace quench {
namespace {

TEST(ReportNumbers, AValueThatRoundsToZeroPrintsWithoutASign) {
    EXPECT_EQ(Cell(-0.000001, "##0.00000"), "0.00000");
    EXPECT_EQ(Cell(-0.004, "##0.00"), "0.00");
    EXPECT_EQ(Cell(-0.005, "##0.00"), "-0.01");
    EXPECT_EQ(Cell(-1234.5, "##0.0"), "-1234.5");
    EXPECT_EQ(Cell(0, "##0"), "0");
}

} // namespace
} // namespace quench
