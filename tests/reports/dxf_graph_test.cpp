#include "core/atomic_write.h"
#include "core/formats.h"
#include "reports/dxf_graph.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

// One entity of the ENTITIES section: its type and its group values by code.
struct Entity {
    std::string Type;
    std::multimap<int, std::string> Groups;

    std::string Value(int code) const {
        const auto found = Groups.find(code);
        return found == Groups.end() ? std::string() : found->second;
    }
    double Number(int code) const { return ToNumber(Value(code)); }
};

std::vector<std::string> Items(const std::string& text) {
    std::vector<std::string> items;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        items.push_back(line);
    }
    return items;
}

std::vector<Entity> Entities(const std::string& text) {
    const std::vector<std::string> items = Items(text);
    std::vector<Entity> entities;
    bool inEntities = false;
    for (std::size_t i = 0; i + 1 < items.size(); i += 2) {
        const int code = std::stoi(items[i]);
        const std::string& value = items[i + 1];
        if (code == 2 && value == "ENTITIES") {
            inEntities = true;
        } else if (inEntities && code == 0) {
            if (value == "ENDSEC") {
                break;
            }
            entities.push_back({value, {}});
        } else if (inEntities && !entities.empty()) {
            entities.back().Groups.emplace(code, value);
        }
    }
    return entities;
}

std::vector<Entity> OfType(const std::vector<Entity>& entities, const std::string& type) {
    std::vector<Entity> found;
    for (const auto& entity : entities) {
        if (entity.Type == type) {
            found.push_back(entity);
        }
    }
    return found;
}

const Entity* TextEntity(const std::vector<Entity>& entities, const std::string& start) {
    for (const auto& entity : entities) {
        if (entity.Type == "TEXT" && entity.Value(1).rfind(start, 0) == 0) {
            return &entity;
        }
    }
    return nullptr;
}

// The last text that reads exactly so.
const Entity* ExactText(const std::vector<Entity>& entities, const std::string& text) {
    const Entity* found = nullptr;
    for (const auto& entity : entities) {
        if (entity.Type == "TEXT" && entity.Value(1) == text) {
            found = &entity;
        }
    }
    return found;
}

GraphData HydrantTest(Single s, Single r, Single q, Single pc, Single qc) {
    GraphData data;
    data.StaticPressure = s;
    data.ResidualPressure = r;
    data.TestFlow = q;
    data.DemandPressure = pc;
    data.DemandFlow = qc;
    return data;
}

// The drawing's place of a chart point.
double DrawnX(double x) {
    return x + 10;
}
double DrawnY(double y) {
    return 700 - 2 * y - 10;
}
double ChartX(double flow, double multiplier) {
    return std::pow(flow / multiplier / 1000, 1.85) * 580 + 34;
}

// The pressure labels as (text, row, column).
std::vector<std::tuple<std::string, double, double>>
PressureLabels(const std::vector<Entity>& entities) {
    std::vector<std::tuple<std::string, double, double>> labels;
    for (const auto& text : OfType(entities, "TEXT")) {
        const double column = text.Number(10) / 8;
        if (column >= 1 && column <= 3 && text.Value(1) != "P") {
            labels.emplace_back(text.Value(1), (700 - text.Number(20)) / 16, column);
        }
    }
    return labels;
}

// Lines across the chart at a height.
std::vector<double> PressureGrid(const std::vector<Entity>& entities) {
    std::vector<double> heights;
    for (const auto& line : OfType(entities, "LINE")) {
        if (line.Number(10) == 624 && line.Number(11) == 44) {
            heights.push_back(line.Number(20));
        }
    }
    return heights;
}

TEST(DxfGraph, HeaderTablesAndEndItemForItem) {
    const auto text = DxfGraphText(HydrantTest(60, 40, 500, 45, 300));
    ASSERT_TRUE(text);
    const std::vector<std::string> expected{
        "0",  "SECTION", "2",  "HEADER",     "9",  "$EXTMIN",    "10", "0.0",
        "20", "0.0",     "9",  "$EXTMAX",    "10", "500",        "20", "60.0",
        "9",  "$LIMMIN", "10", "0.0",        "20", "0.0",        "9",  "$LIMMAX",
        "10", "500",     "20", "60.0",       "9",  "$TEXTSTYLE", "8",  "STANDARD",
        "9",  "$CLAYER", "7",  "P-HYDR",     "0",  "ENDSEC",     "0",  "SECTION",
        "2",  "TABLES",  "0",  "TABLE",      "2",  "LTYPE",      "70", "1",
        "0",  "LTYPE",   "2",  "CONTINUOUS", "70", "64",         "3",  "Solid line",
        "72", "65",      "73", "0",          "40", "0.0",        "0",  "ENDTAB",
        "0",  "TABLE",   "2",  "LAYER",      "70", "1",          "0",  "LAYER",
        "2",  "P-HYDR",  "70", "64",         "62", "15",         "6",  "CONTINUOUS",
        "0",  "ENDTAB",  "0",  "TABLE",      "2",  "STYLE",      "70", "1",
        "0",  "STYLE",   "2",  "SIMPLEX",    "70", "0",          "40", "0.0",
        "41", "1.0",     "50", "0.0",        "71", "0",          "42", "1.0",
        "3",  "TXT",     "0",  "ENDTAB",     "0",  "ENDSEC",     "0",  "SECTION",
        "2",  "ENTITIES"};
    const std::vector<std::string> items = Items(*text);
    ASSERT_GT(items.size(), expected.size());
    EXPECT_EQ(std::vector<std::string>(items.begin(), items.begin() + expected.size()), expected);
    EXPECT_EQ(std::vector<std::string>(items.end() - 4, items.end()),
              (std::vector<std::string>{"0", "ENDSEC", "0", "EOF"}));
    // The first entity is the letter P of the pressure axis, item for item.
    EXPECT_EQ(std::vector<std::string>(items.begin() + expected.size(),
                                       items.begin() + expected.size() + 14),
              (std::vector<std::string>{"0", "TEXT", "8", "P-HYDR", "10", "0", "20", "556", "40",
                                        "8", "1", "P", "0", "TEXT"}));
    for (const auto& entity : Entities(*text)) {
        EXPECT_TRUE(entity.Type == "LINE" || entity.Type == "TEXT") << entity.Type;
        EXPECT_EQ(entity.Value(8), "P-HYDR");
    }
}

TEST(DxfGraph, TheScaleOf120ItsLabelsGridCurveAndDemandPoint) {
    const auto entities = Entities(DxfGraphText(HydrantTest(60, 40, 500, 45, 300)).value());
    EXPECT_EQ(PressureLabels(entities),
              (std::vector<std::tuple<std::string, double, double>>{{"120", 1, 1},
                                                                    {"100", 4, 1},
                                                                    {"80", 7, 2},
                                                                    {"60", 10, 2},
                                                                    {"40", 13, 2},
                                                                    {"20", 16, 2},
                                                                    {"0", 19, 3}}));
    EXPECT_EQ(PressureGrid(entities),
              (std::vector<double>{690, 642, 594, 546, 498, 450, 402})); // every 24 units
    // Twenty flow grid lines at (i / 20)^1.85 of the width, labelled i / 2 on row 20.
    const auto lines = OfType(entities, "LINE");
    ASSERT_GE(lines.size(), 20u);
    for (int i = 1; i <= 20; ++i) {
        const double x = std::pow(i * 0.05, 1.85) * 580 + 34;
        EXPECT_NEAR(lines[i - 1].Number(10), DrawnX(x), 1e-3) << i;
        EXPECT_EQ(lines[i - 1].Number(20), 690);
        EXPECT_EQ(lines[i - 1].Number(21), 402);
        const Entity* label = ExactText(entities, NumberText(i / 2.0));
        ASSERT_NE(label, nullptr) << i;
    }
    const Entity* last = ExactText(entities, "10");
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last->Number(10), (std::floor((624.0 - 10) / 8) - 1 + 1) * 8);
    EXPECT_EQ(last->Number(20), 700 - 20 * 16);
    EXPECT_EQ(TextEntity(entities, "GPM = Chart Value x")->Number(10), 31 * 8);
    EXPECT_EQ(ExactText(entities, "100")->Number(20), 700 - 21 * 16);

    // The supply curve: k = 20 / 500^1.85 meets 0 psi at Qn, inside the 1000 gpm axis.
    const double k = 20 / std::pow(500.0, 1.85);
    const double qn = std::exp(std::log(60 / k) / 1.85);
    ASSERT_LT(qn, 1000);
    const auto curve = lines[20 + 7];
    EXPECT_NEAR(curve.Number(10), DrawnX(34), 1e-4);
    EXPECT_NEAR(curve.Number(20), DrawnY(144 - 60 * 1.2), 1e-3);
    EXPECT_NEAR(curve.Number(11), DrawnX(ChartX(qn, 1)), 1e-3);
    EXPECT_NEAR(curve.Number(21), DrawnY(144), 1e-3);
    ASSERT_NE(TextEntity(entities, "Supply Curve"), nullptr);
    EXPECT_EQ(TextEntity(entities, "Supply Curve with"), nullptr);

    // The demand point: a box 6 wide and 6 high around (300 gpm, 45 psi).
    const double x = ChartX(300, 1);
    const double y = 144 - 45 * 1.2;
    const auto box = std::vector<Entity>(lines.end() - 4, lines.end());
    EXPECT_NEAR(box[0].Number(10), DrawnX(x - 3), 1e-3);
    EXPECT_NEAR(box[0].Number(20), DrawnY(y - 3), 1e-3);
    EXPECT_NEAR(box[1].Number(21), DrawnY(y + 3), 1e-3);
    EXPECT_NEAR(box[2].Number(11), DrawnX(x - 3), 1e-3);

    const std::string cell(26, ' ');
    EXPECT_EQ(TextEntity(entities, "ADJUSTED")->Value(1),
              "ADJUSTED HYDRANT DATA:" + cell + "500 GPM," + cell + " 60 STATIC PSI," + cell +
                  " 40 RESIDUAL PSI");
    const double excess = (60 - 45) - 20 * std::pow(300.0 / 500, 1.85);
    EXPECT_EQ(TextEntity(entities, "DEMAND")->Value(1),
              "DEMAND POINT DATA:" + cell + "300 GPM," + cell + " 45 GAUGE  PSI," +
                  std::string(29 - Format(excess, "####0.00").size(), ' ') +
                  Format(excess, "####0.00") + " EXCESS   PSI");
    EXPECT_EQ(TextEntity(entities, "DEMAND")->Number(20), 700 - 24 * 16);
}

TEST(DxfGraph, TheScaleOf160AndTheCurveCutAtTheAxisEnd) {
    // 150 psi static with a weak fall: the line leaves the chart at its right end.
    const auto entities = Entities(DxfGraphText(HydrantTest(150, 140, 1000, 100, 1500)).value());
    EXPECT_EQ(PressureLabels(entities),
              (std::vector<std::tuple<std::string, double, double>>{{"160", 1, 1},
                                                                    {"140", 3, 1},
                                                                    {"120", 5, 1},
                                                                    {"100", 8, 1},
                                                                    {"80", 10, 2},
                                                                    {"60", 12, 2},
                                                                    {"40", 15, 2},
                                                                    {"20", 17, 2},
                                                                    {"0", 19, 3}}));
    EXPECT_EQ(PressureGrid(entities).size(), 9u); // every 18 units
    EXPECT_EQ(PressureGrid(entities)[1], 690 - 36);
    EXPECT_NE(TextEntity(entities, "200"), nullptr); // M = 2
    const auto lines = OfType(entities, "LINE");
    const auto curve = lines[20 + 9];
    const double k = 10 / std::pow(1000.0, 1.85);
    const double factor = 144.0 / 160;
    EXPECT_NEAR(curve.Number(20), DrawnY(144 - 150 * factor), 1e-3);
    EXPECT_NEAR(curve.Number(11), DrawnX(614), 1e-4);
    EXPECT_NEAR(curve.Number(21), DrawnY(144 - (150 - k * std::pow(2000.0, 1.85)) * factor), 1e-3);
    // The demand mark of this scale is 4 units high.
    const auto box = std::vector<Entity>(lines.end() - 4, lines.end());
    EXPECT_NEAR(box[1].Number(20) - box[1].Number(21), 8, 1e-3);
}

TEST(DxfGraph, TheTwoScaleTestsDifferWhereTheSecondTestIsHigh) {
    GraphData data = HydrantTest(100, 80, 800, 90, 600);
    data.SecondStaticPressure = 130;
    data.SecondResidualPressure = 110;
    data.SecondTestFlow = 700;
    data.ExteriorHoseFlow = 500;
    const auto entities = Entities(DxfGraphText(data).value());
    // Labels of 160, yet the first curve starts at 100 psi on the scale of 120.
    EXPECT_EQ(std::get<0>(PressureLabels(entities).front()), "160");
    const auto lines = OfType(entities, "LINE");
    EXPECT_NEAR(lines[20 + 9].Number(20), DrawnY(144 - 100 * 1.2), 1e-3);
    // The second curve, and its label with two blanks before "exterior".
    EXPECT_NEAR(lines[20 + 10].Number(20), DrawnY(144 - 130 * 1.2), 1e-3);
    const Entity* label = TextEntity(entities, "Supply Curve with");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->Value(1), "Supply Curve with 500  exterior hose");
    EXPECT_EQ(label->Number(10), 18 * 8);

    // A second test given in part draws no second curve.
    data.SecondResidualPressure = 0;
    const auto partial = Entities(DxfGraphText(data).value());
    EXPECT_EQ(TextEntity(partial, "Supply Curve with"), nullptr);
    EXPECT_EQ(OfType(partial, "LINE").size(), OfType(entities, "LINE").size() - 1);
}

TEST(DxfGraph, RoundingEqualPressuresAndRefusedTests) {
    // Whole parts by banker's rounding: 650.5 gpm is drawn as 650, 60.5 psi as 60.
    auto entities = Entities(DxfGraphText(HydrantTest(60.5f, 40, 650.5f, 45, 300)).value());
    EXPECT_NE(TextEntity(entities, "ADJUSTED")->Value(1).find(" 650 GPM,"), std::string::npos);
    EXPECT_NE(TextEntity(entities, "ADJUSTED")->Value(1).find(" 60 STATIC"), std::string::npos);

    // S equal to R: R is taken 0.001 below, a nearly flat line to the axis end.
    entities = Entities(DxfGraphText(HydrantTest(50, 50, 500, 40, 300)).value());
    EXPECT_NE(TextEntity(entities, "ADJUSTED")->Value(1).find(" 49.999 RESIDUAL"),
              std::string::npos);
    const auto curve = OfType(entities, "LINE")[20 + 7];
    EXPECT_NEAR(curve.Number(11), DrawnX(614), 1e-4);
    EXPECT_NEAR(curve.Number(21), curve.Number(20), 0.01);

    // No test at all: values of 1 keep the arithmetic finite.
    const auto empty = DxfGraphText(HydrantTest(0, 0, 0, 0, 0));
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->find("nan"), std::string::npos);
    EXPECT_EQ(empty->find("inf"), std::string::npos);

    EXPECT_FALSE(DxfGraphText(HydrantTest(40, 60, 500, 45, 300)));         // residual above static
    EXPECT_FALSE(DxfGraphText(HydrantTest(0.3f, 0.2f, 0.4f, 0.1f, 0.2f))); // flow above static
    EXPECT_TRUE(DxfGraphText(HydrantTest(0.3f, 0.2f, 0.25f, 0.1f, 0.2f)));
    EXPECT_TRUE(DxfGraphText(HydrantTest(60, 40, 800, 45, 300))); // flow above S is fine here
}

TEST(DxfGraph, WriteDxfGraphRefusesMetricProjectsAndWritesWholeFiles) {
    testing::ScratchDirectory scratch;
    auto project = std::make_unique<Project>();
    project->SystemData.TestStaticPressure = 60;
    project->SystemData.TestResidualPressure = 40;
    project->SystemData.TestFlowRate = 500;
    project->SystemData.CalculatedResidualPressure = 45;
    project->SystemData.CalculatedFlowRate = 300;
    const auto file = scratch.Path() / "graph.dxf";

    testing::ScriptedDialogs dialogs;
    project->UnitSystem = 1;
    EXPECT_EQ(WriteDxfGraph(*project, file, dialogs), DxfGraphOutcome::Metric);
    EXPECT_EQ(dialogs.LastText(), "This feature currently not available with metric units "
                                  "selected.  Switch to English (US) units to generate a DXF "
                                  "graph.");
    EXPECT_FALSE(std::filesystem::exists(file));

    project->UnitSystem = 0;
    project->SystemData.TestResidualPressure = 70;
    EXPECT_EQ(WriteDxfGraph(*project, file, dialogs), DxfGraphOutcome::ImpossibleTest);
    EXPECT_FALSE(std::filesystem::exists(file));

    project->SystemData.TestResidualPressure = 40;
    EXPECT_EQ(WriteDxfGraph(*project, file, dialogs), DxfGraphOutcome::Written);
    std::string bytes;
    ASSERT_TRUE(ReadWholeFile(file, bytes));
    EXPECT_EQ(bytes, DxfGraphText(GraphDataOf(project->SystemData)).value());
    EXPECT_EQ(dialogs.All().size(), 1u);
}

} // namespace
} // namespace quench
