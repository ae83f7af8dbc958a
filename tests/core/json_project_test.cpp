#include "core/project_json.h"

#include <cmath>
#include <limits>
#include <memory>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

std::string ProjectText(const Project& project) {
    std::ostringstream out;
    WriteProjectJson(project, out);
    return out.str();
}

// The names of the members of the top object, in order.
std::vector<std::string> TopKeys(const std::string& json) {
    std::vector<std::string> keys;
    std::istringstream lines(json);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  \"")) {
            keys.push_back(line.substr(3, line.find('"', 3) - 3));
        }
    }
    return keys;
}

// The text of one member of the top object, up to the next member.
std::string Member(const std::string& json, const std::string& key) {
    const auto start = json.find("\n  \"" + key + "\": ");
    if (start == std::string::npos) {
        return {};
    }
    const auto end = json.find("\n  \"", start + 1);
    return json.substr(start + 3, end == std::string::npos ? std::string::npos : end - start - 3);
}

int Count(const std::string& text, const std::string& what) {
    int count = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
        ++count;
    }
    return count;
}

TEST(ProjectJson, OneKeyPerRecordInFileOrder) {
    const auto project = std::make_unique<Project>();
    const std::string json = ProjectText(*project);
    const std::vector<std::string> expected = {
        "ProjectData",
        "ClientData",
        "CompanyData",
        "BuildingData",
        "SystemData",
        "NumberOfPipeRows",
        "PipeRecord",
        "TreeBuilderData",
        "GridBuilderData",
        "CalculationData",
        "PipeResultRecord",
        "NumberOfNodes",
        "NumberOfPipes",
        "NodeRecord",
        "CalcPipeRecord",
        "MaxNodePressureImbalanceResult",
        "AvgNodePressureImbalanceResult",
        "MaxNodeFlowImbalanceResult",
        "AvgNodeFlowImbalanceResult",
        "InflowNode",
        "UnitSystem",
        "AlarmDeviceName",
        "AlarmDeviceShortName",
        "AlarmDeviceCode",
        "InputChanged",
    };
    EXPECT_EQ(TopKeys(json), expected);
    EXPECT_TRUE(json.starts_with("{\n  \"ProjectData\": {\n    \"ProgramVersion\": 0,\n"));
    EXPECT_TRUE(json.ends_with("  \"InputChanged\": 0\n}\n"));
    EXPECT_EQ(Member(json, "PipeRecord"), "\"PipeRecord\": [],");
    EXPECT_EQ(Member(json, "AlarmDeviceCode"), "\"AlarmDeviceCode\": \"ACV\",");
    EXPECT_NE(json.find("\"GPDProjectFormat\": 60130\n"), std::string::npos);
    EXPECT_NE(json.find("\"SprinklerSystemType\": \"WET\",\n"), std::string::npos);
    EXPECT_NE(json.find("\"TypeGroupMinDiameter\": [0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0],\n"),
              std::string::npos);
    // Both reserved Integers carry the name Reserved.
    EXPECT_EQ(Count(json, "\"Reserved\": 0,"), 2);
}

TEST(ProjectJson, TablesShowTheirUsedRowsWithinCapacity) {
    auto project = std::make_unique<Project>();
    project->NumberOfPipeRows = 2;
    project->PipeRecord[1].BegNode = "10";
    project->PipeRecord[2].BegNode = "20";
    project->PipeRecord[3].BegNode = "30";
    project->CalculationData.NumberOfUniquePipeSections = -5;
    project->NumberOfNodes = 1200;
    project->NumberOfPipes = 1;
    const std::string json = ProjectText(*project);
    const std::string rows = Member(json, "PipeRecord");
    EXPECT_EQ(Count(rows, "\"BegNode\""), 2);
    EXPECT_LT(rows.find("\"10\""), rows.find("\"20\""));
    EXPECT_EQ(Member(json, "PipeResultRecord"), "\"PipeResultRecord\": [],");
    EXPECT_EQ(Count(Member(json, "NodeRecord"), "\"WorkPressure\""), MaxNodes);
    EXPECT_EQ(Member(json, "NumberOfNodes"), "\"NumberOfNodes\": 1200,");
    EXPECT_EQ(Count(Member(json, "CalcPipeRecord"), "\"ResultFittingText\""), 1);
}

TEST(ProjectJson, TextsAreTrimmedAndNumbersKeepTheirWidth) {
    auto project = std::make_unique<Project>();
    project->ProjectData.Title = "  Caf\xE9 \"B\"  ";
    project->NumberOfPipeRows = 1;
    project->PipeRecord[1].BegNode = " 10 ";
    project->PipeRecord[1].ElevationB = 0.1f;
    project->PipeRecord[1].FittingText = std::string("2E\t", 3);
    project->CalculationData.InflowFlow = 0.1;
    project->CalculationData.SolverScratch[119] = 255;
    project->MaxNodeFlowImbalanceResult = std::numeric_limits<double>::quiet_NaN();
    project->AlarmDeviceName = " Deluge \xC4 ";
    const std::string json = ProjectText(*project);
    EXPECT_NE(json.find("\"Title\": \"Caf\xC3\xA9 \\\"B\\\"\",\n"), std::string::npos);
    EXPECT_NE(json.find("\"BegNode\": \"10\",\n"), std::string::npos);
    EXPECT_NE(json.find("\"ElevationB\": 0.1,\n"), std::string::npos);
    EXPECT_NE(json.find("\"FittingText\": \"2E\\t\",\n"), std::string::npos);
    EXPECT_NE(json.find("\"InflowFlow\": 0.1,\n"), std::string::npos);
    EXPECT_NE(json.find("\"Diameter\": -4,\n"), std::string::npos);
    EXPECT_NE(json.find("\"FittingCounts\": [0, 0, 0, 0, 0, 0, 0],\n"), std::string::npos);
    const auto scratch = json.find("\"SolverScratch\": [0, 0, ");
    ASSERT_NE(scratch, std::string::npos);
    const std::string line = json.substr(scratch, json.find('\n', scratch) - scratch);
    EXPECT_EQ(Count(line, ","), 120); // 119 between the values and one after the array
    EXPECT_TRUE(line.ends_with(", 0, 255],"));
    EXPECT_EQ(Member(json, "MaxNodeFlowImbalanceResult"), "\"MaxNodeFlowImbalanceResult\": null,");
    EXPECT_EQ(Member(json, "AlarmDeviceName"), "\"AlarmDeviceName\": \"Deluge \xC3\x84\",");
}

TEST(ProjectJson, OneRecordAlone) {
    NodeRecord node;
    node.Number = 10;
    node.ResidualPressure = 7.5;
    node.AreaGroup = "A";
    std::ostringstream out;
    JsonWriter json(out);
    WriteRecordJson(json, node);
    EXPECT_EQ(out.str(), "{\n"
                         "  \"WorkPressure\": 0,\n"
                         "  \"Number\": 10,\n"
                         "  \"Elevation\": 0,\n"
                         "  \"KFactor\": 0,\n"
                         "  \"NodeMark\": 0,\n"
                         "  \"SprinklerArea\": 0,\n"
                         "  \"FixedFlow\": 0,\n"
                         "  \"ResidualPressure\": 7.5,\n"
                         "  \"Discharge\": 0,\n"
                         "  \"AreaGroup\": \"A\",\n"
                         "  \"WorkFlow\": 0,\n"
                         "  \"FlowImbalance\": 0,\n"
                         "  \"CadHandle\": \"\"\n"
                         "}\n");
}

} // namespace
} // namespace quench
