// The DXF graph read back by Debian's DXF library, as a CAD program would open it.

#include "reports/dxf_graph.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <cmath>
#include <dl_creationadapter.h>
#include <dl_dxf.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

class GraphReader final : public DL_CreationAdapter {
public:
    std::vector<DL_LineData> Lines;
    std::vector<DL_TextData> Texts;
    std::set<std::string> Layers;        // of the entities
    std::set<std::string> DefinedLayers; // of the LAYER table
    int Others = 0;                      // entities of any other kind

    void addLayer(const DL_LayerData& layer) override { DefinedLayers.insert(layer.name); }
    void addLine(const DL_LineData& line) override {
        Lines.push_back(line);
        Layers.insert(attributes.getLayer());
    }
    void addText(const DL_TextData& text) override {
        Texts.push_back(text);
        Layers.insert(attributes.getLayer());
    }
    void addPoint(const DL_PointData&) override { ++Others; }
    void addArc(const DL_ArcData&) override { ++Others; }
    void addCircle(const DL_CircleData&) override { ++Others; }
    void addPolyline(const DL_PolylineData&) override { ++Others; }
    void addMText(const DL_MTextData&) override { ++Others; }
    void addInsert(const DL_InsertData&) override { ++Others; }
    void addSolid(const DL_SolidData&) override { ++Others; }
    void addEllipse(const DL_EllipseData&) override { ++Others; }
};

double ChartX(double flow, double multiplier) {
    return std::pow(flow / multiplier / 1000, 1.85) * 580 + 34;
}

TEST(DxfGraphReadBack, ALibraryParsesLinesAndTextsOnOneLayerWithTheCurvesWhereTheyBelong) {
    testing::ScratchDirectory scratch;
    auto project = std::make_unique<Project>();
    SystemData& system = project->SystemData;
    system.TestStaticPressure = 72;
    system.TestResidualPressure = 35;
    system.TestFlowRate = 1200;
    system.SecondTestStaticPressure = 68;
    system.SecondTestResidualPressure = 30;
    system.SecondTestFlowRate = 1100;
    system.ExteriorHoseFlow = 250;
    system.CalculatedResidualPressure = 48.4f;
    system.CalculatedFlowRate = 1390.6f;
    const auto file = scratch.Path() / "graph.dxf";
    testing::ScriptedDialogs dialogs;
    ASSERT_EQ(WriteDxfGraph(*project, file, dialogs), DxfGraphOutcome::Written);

    GraphReader reader;
    DL_Dxf dxf;
    ASSERT_TRUE(dxf.in(file.string(), &reader));
    EXPECT_EQ(reader.Others, 0);
    EXPECT_EQ(reader.Layers, std::set<std::string>{"P-HYDR"});
    EXPECT_EQ(reader.DefinedLayers.count("P-HYDR"), 1u);
    // 20 flow grid lines, 7 pressure grid lines, two curves, the demand box.
    EXPECT_EQ(reader.Lines.size(), 20u + 7 + 2 + 4);
    // P S I, 7 pressure labels, 20 flow labels, the multiplier and its words, two curve
    // labels, two data lines.
    EXPECT_EQ(reader.Texts.size(), 3u + 7 + 20 + 2 + 2 + 2);
    for (const auto& text : reader.Texts) {
        EXPECT_EQ(text.height, 8);
    }

    // The arithmetic of the curves: the whole parts 72, 35, 1200; demand 1391 gpm at 48 psi,
    // so M = 2 and the axis ends at 2000 gpm; both static pressures within 120.
    const double multiplier = 2;
    const double factor = 144.0 / 120;
    auto drawnY = [](double y) { return 700 - 2 * y - 10; };
    const DL_LineData& first = reader.Lines[27];
    const double k = (72.0 - 35) / std::pow(1200.0, 1.85);
    const double noPressure = std::exp(std::log(72 / k) / 1.85);
    ASSERT_LT(ChartX(noPressure, multiplier), 614);
    EXPECT_NEAR(first.x1, 44, 1e-4);
    EXPECT_NEAR(first.y1, drawnY(144 - 72 * factor), 1e-3);
    EXPECT_NEAR(first.x2, ChartX(noPressure, multiplier) + 10, 1e-3);
    EXPECT_NEAR(first.y2, drawnY(144), 1e-3);

    const DL_LineData& second = reader.Lines[28];
    const double k2 = (68.0 - 30) / std::pow(1100.0, 1.85);
    EXPECT_NEAR(second.y1, drawnY(144 - 68 * factor), 1e-3);
    EXPECT_NEAR(second.x2, ChartX(std::exp(std::log(68 / k2) / 1.85), multiplier) + 10, 1e-3);

    // The demand point at 1391 gpm and 48 psi.
    const DL_LineData& box = reader.Lines[29];
    EXPECT_NEAR(box.x1, ChartX(1391, multiplier) - 3 + 10, 1e-3);
    EXPECT_NEAR(box.y1, drawnY(144 - 48 * factor - 3), 1e-3);
}

} // namespace
} // namespace quench
