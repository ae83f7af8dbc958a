#include "core/text.h"
#include "reports/report_sections.h"

#include <cmath>

namespace quench {

namespace {

constexpr std::string_view Pairs = "<2000|<+3300|<+2000|<+3300";
constexpr std::string_view Single = "<2000|<8800";
constexpr std::string_view Triples = "<2200|>+2200|<+900|<+2200|>+2200|<+900";
constexpr std::string_view Texts = "<2600|<+7000";
constexpr std::string_view Values = "<3500|>+900|<+900|<+3500|>+900|<+900";
constexpr std::string_view Counts = "<3500|>+900|<+900|<+2500|>+2450|";

std::string Text(std::string_view text) {
    return ReportDocument::ProjectText(text);
}

// The file name with ".qnw": an extension of another kind is replaced, none is added.
std::string ProjectFileName(std::string_view name) {
    std::string stem(name);
    const std::size_t dot = stem.rfind('.');
    if (dot != std::string::npos && stem.find('/', dot) == std::string::npos) {
        stem.erase(dot);
    }
    return stem.empty() ? std::string() : stem + ".qnw";
}

void Comment(ReportDocument& document, Integer print, std::string_view comment) {
    if (IsTrue(print)) {
        document.Rows(Single, {{"", Text(comment)}});
    }
}

void GeneralData(ReportDocument& document) {
    const Project& project = document.Model;
    const ProjectData& data = project.ProjectData;
    document.SecondaryTitle("General Data");
    document.Rows(Pairs, {{"Project Title:", Text(data.Title),
                           "Project File Name:", ProjectFileName(document.Frame.ProjectFileName)},
                          {"Designed By:", Text(data.DesignedBy), "Date:", Text(data.Date)},
                          {"Code Reference:", Text(data.CodeReference),
                           "Approving Agency:", Text(data.ApprovingAgency)}});
    Comment(document, data.PrintComment, data.Comment);

    const ClientData& client = project.ClientData;
    document.Rows(Pairs, {{"Client Name:", Text(client.Name), "Phone:", Text(client.Phone)},
                          {"Address:", Text(client.Address),
                           "City, State Zip Code:", Text(client.CityStateZip)}});
    Comment(document, client.PrintComment, client.Comment);

    const CompanyData& company = project.CompanyData;
    document.Rows(
        Pairs,
        {{"Company Name:", Text(company.Name), "Representative:", Text(company.Representative)},
         {"Company Address:", Text(company.Address), "City And State:", Text(company.CityStateZip)},
         {"Phone:", Text(company.Phone), "", ""}});
    Comment(document, company.PrintComment, company.Comment);

    const BuildingData& building = project.BuildingData;
    document.Rows(Pairs,
                  {{"Building Name:", Text(building.Name), "Building Owner:", Text(building.Owner)},
                   {"Contact at Building:", Text(building.Contact),
                    "Phone at Building:", Text(building.Phone)},
                   {"Address Of Building:", Text(building.Address),
                    "City, State Zip Code:", Text(building.CityStateZip)}});
    Comment(document, building.PrintComment, building.Comment);
}

std::string MaterialName(const ReportDocument& document, int material) {
    if (document.Library == nullptr || !IsLibraryMaterial(material)) {
        return "";
    }
    return Text(document.Library->Materials[static_cast<std::size_t>(material - 1)].Description);
}

void ProjectDataRows(ReportDocument& document) {
    const SystemData& system = document.SystemData();
    const std::string& word = document.Word;
    document.SecondaryTitle("Project Data");
    document.Rows(Texts, {{"Description Of Hazard:", Text(system.HazardDescription)},
                          {word + " System Type:", Text(system.SprinklerSystemType)}});
    const int material = document.Model.SystemData.DefaultPipeMaterial;
    const std::string area(document.Unit("ft²", "m²"));
    const std::string flow(document.Unit("gpm", "Lpm"));
    document.Rows(
        Values,
        {{"Design Area Of Water Application:", Cell(system.AreaOfSprinklerOperation, "##0"), area,
          "Maximum Area Per " + word + ":", Cell(system.MaximumAreaPerSprinkler, "##0"), area},
         {"Default " + word + " K-Factor:", Cell(system.DefaultKFactor, "##0.00"),
          std::string(document.Unit("K", "Km")), "", "", ""},
         {"Inside Hose Stream Allowance:", Cell(system.InsideHoseStreamAllowance, "##0.00"), flow,
          "Outside Hose Stream Allowance:", Cell(system.OutsideHoseStreamAllowance, "##0.00"),
          flow},
         {"In Rack Sprinkler Allowance:", Cell(system.InRackSprinklerAllowance, "##0.00"), flow, "",
          "", ""}});
    const std::string name = MaterialName(document, material);
    document.Rows(Texts, {{"Default Pipe Material:",
                           Cell(material, "##0") + (name.empty() ? "" : "  " + name)}});
}

void SprinklerSpecifications(ReportDocument& document) {
    const SystemData& system = document.SystemData();
    document.SecondaryTitle(document.Word + " Specifications");
    document.Rows(Triples, {{"Make:", Text(system.SprinklerMake), "",
                             "Model:", Text(system.SprinklerModel), ""},
                            {"Size:", Text(system.SprinklerSize), "",
                             "Temperature Rating:", Cell(system.TemperatureRating, "##0"),
                             std::string(document.Unit("F", "C"))}});
    if (IsTrue(system.SystemPrintComment)) {
        document.Rows(Texts, {{"", Text(system.SystemComment)}});
    }
}

// The pressure that the hydrant test's supply curve gives at a flow, in psi.
double SupplyPressure(const SystemData& us, double flow) {
    if (us.TestFlowRate <= 0) {
        return us.TestStaticPressure;
    }
    const double k = (us.TestStaticPressure - us.TestResidualPressure) /
                     std::pow(static_cast<double>(us.TestFlowRate), 1.85);
    return us.TestStaticPressure - k * std::pow(std::abs(flow), 1.85);
}

void WaterSupply(ReportDocument& document) {
    const SystemData& system = document.SystemData();
    const CalculationData& calculation = document.CalculationData();
    const std::string pressure(document.Unit("psi", "kPa"));
    const std::string flow(document.Unit("gpm", "Lpm"));
    document.SecondaryTitle("Water Supply Test Data");
    document.Rows(Texts, {{"Source Of Information:", Text(system.SourceOfInformation)}});
    document.Rows(Triples, {{"Test Hydrant ID:", Text(system.TestHydrantID), "",
                             "Date Of Test:", Text(system.HydrantTestDate), ""}});
    document.Rows(Values, {{"Hydrant Elevation:", Cell(system.HydrantElevation, "##0"),
                            std::string(document.Unit("ft", "m")), "Static Pressure:",
                            Cell(system.TestStaticPressure, "##0.00"), pressure},
                           {"Test Flow Rate:", Cell(system.TestFlowRate, "##0.00"), flow,
                            "Test Residual Pressure:", Cell(system.TestResidualPressure, "##0.00"),
                            pressure}});
    const bool demand = IsTrue(document.Model.CalculationData.DemandMode);
    const bool secondTest = system.SecondTestFlowRate != 0 &&
                            system.SecondTestStaticPressure != 0 &&
                            system.SecondTestResidualPressure != 0;
    if (secondTest) {
        // The words of this block stay in US units in either system.
        std::vector<TableRow> rows{
            {"2nd Test Flow Rate:", Cell(system.SecondTestFlowRate, "##0.00"), "gpm",
             "2nd Test Static Pressure:", Cell(system.SecondTestStaticPressure, "##0.00"), "psi"}};
        if (demand) {
            rows.push_back({"2nd Test Static Pressure:",
                            Cell(system.SecondTestResidualPressure, "##0.00"), "psi", "", "", ""});
        }
        document.Rows(Values, rows);
    }
    if (!demand) {
        return;
    }
    const SystemData& us = document.Model.SystemData;
    const double available = document.Shown(
        UnitKind::Pressure_Drop, SupplyPressure(us, document.Model.CalculationData.InflowFlow));
    std::vector<TableRow> rows{
        {"Calculated System Flow Rate:", Cell(calculation.InflowFlow, "##0.00"), flow, "", "", ""}};
    if (secondTest) {
        rows.push_back({"2nd Test Residual Pressure:",
                        Cell(system.SecondTestResidualPressure, "##0.00"), pressure, "", "", ""});
    }
    rows.push_back(
        {"Available Inflow Residual Pressure:", Cell(available, "##0.00"), pressure, "", "", ""});
    rows.push_back({"Calculated Inflow Residual Pressure:",
                    Cell(calculation.InflowResidualPressure, "##0.00"), pressure, "", "", ""});
    document.Rows(Values, rows);
}

struct PipeCounts {
    int Active = 0;
    int Inactive = 0;
    int InactiveSprinklers = 0;
};

PipeCounts CountRows(const Project& project) {
    PipeCounts counts;
    std::map<double, bool> inactiveNodes;
    const int rows = std::min<int>(MaxPipes, static_cast<int>(project.PipeRecord.size()) - 1);
    for (int row = 1; row <= rows; ++row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (!HasBothNodes(pipe)) {
            continue;
        }
        if (!IsTrue(pipe.Active)) {
            ++counts.Inactive;
            continue;
        }
        ++counts.Active;
        if (EqualsIgnoreCase(Trim(pipe.KFactorB), "Inact")) {
            inactiveNodes[ToNumber(pipe.BegNode)] = true;
        }
        if (EqualsIgnoreCase(Trim(pipe.KFactorE), "Inact")) {
            inactiveNodes[ToNumber(pipe.EndNode)] = true;
        }
    }
    counts.InactiveSprinklers = static_cast<int>(inactiveNodes.size());
    return counts;
}

void CalculationProjectData(ReportDocument& document) {
    const CalculationData& calculation = document.CalculationData();
    const SystemData& system = document.SystemData();
    const std::string pressure(document.Unit("psi", "kPa"));
    document.SecondaryTitle("Calculation Project Data");
    std::vector<TableRow> rows;
    if (IsTrue(document.Model.CalculationData.DemandMode)) {
        rows.push_back({"Calculation Mode:", "Demand", "", "", "", ""});
        rows.push_back({"HMD Minimum Residual Pressure:",
                        Cell(calculation.MinPressureAtHMDNode, "##0.00"), pressure, "", "", ""});
        rows.push_back(
            {"Minimum Desired Flow Density:", Cell(system.MinimumDesiredDensity, "##0.00"),
             std::string(document.Unit("gpm/ft²", "Lpm/m²")), "", "", ""});
    } else {
        rows.push_back({"Calculation Mode:", "Supply", "", "", "", ""});
        rows.push_back({"System Inflow Number:", Cell(calculation.SystemInflowNode, "##0.00"), "",
                        "", "", ""});
        rows.push_back({"Specified Inflow Node Residual Pressure:",
                        Cell(calculation.InflowResidualPressure1, "##0.00"), pressure, "", "", ""});
    }
    const ::quench::CalculationData& us = document.Model.CalculationData;
    if (us.MaxWaterVelocity != 0 || us.MaxFrictionalLoss != 0) {
        rows.push_back({"Maximum Water Velocity:", Cell(calculation.MaxWaterVelocity, "##0.00"),
                        std::string(document.Unit("ft/s", "m/s")), "", "", ""});
        rows.push_back({"Maximum Frictional Loss / 100 feet:",
                        Cell(calculation.MaxFrictionalLoss, "##0.00"), pressure, "", "", ""});
    }
    rows.push_back(
        {"Number Of Active Nodes:", Cell(document.Model.NumberOfNodes, "##0"), "", "", "", ""});
    document.Rows(Values, rows);
    const PipeCounts counts = CountRows(document.Model);
    document.Rows(Counts, {{"Number Of Active Pipes:", Cell(counts.Active, "##0"), "",
                            "Number Of Inactive Pipes:", Cell(counts.Inactive, "##0"), ""},
                           {"Number Of Active " + document.Word + "s:",
                            Cell(calculation.NumberOfFlowingSprinklers, "##0"), "",
                            "Number Of Inactive " + document.Word + "s:",
                            Cell(counts.InactiveSprinklers, "##0"), ""}});
}

} // namespace

void GeneralProjectDataSection(ReportDocument& document) {
    document.BeginSection("General Project Data Report", "");
    document.OnPageBreak([&] { document.BeginSection("General Project Data Report", ""); });
    GeneralData(document);
    ProjectDataRows(document);
    SprinklerSpecifications(document);
    WaterSupply(document);
    CalculationProjectData(document);
}

} // namespace quench
