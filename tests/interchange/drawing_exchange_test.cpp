#include "core/atomic_write.h"
#include "core/formats.h"
#include "interchange/drawing_import.h"
#include "interchange/drawing_results.h"
#include "tests/interchange/test_drawing.h"
#include "tests/support/network_builder.h"
#include "tests/support/scratch_directory.h"

#include <cmath>
#include <dxflib/dl_creationadapter.h>
#include <map>
#include <memory>
#include <random>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::DefaultLibrary;
using testing::ScratchDirectory;
using testing::TestDrawing;

// A tree in feet: the supply at the foot of a 10 ft riser, a cross main of four 10 ft spans
// drawn as one polyline at 10 ft, four branch lines of five 1 in pipes with a sprinkler at the
// end of each: 20 heads, 25 pipes. The supply is numbered 1, the first head 201.
TestDrawing TreeOfTwentyHeads() {
    TestDrawing drawing(2);
    drawing.Line(0, 0, 0, 0, 0, 10, "FP-PIPE-4");
    drawing.Polyline({0, 0, 10, 0, 20, 0, 30, 0, 40, 0}, 10, "FP-PIPE-2.5");
    for (int branch = 1; branch <= 4; ++branch) {
        const double x = 10.0 * branch;
        for (int head = 1; head <= 5; ++head) {
            drawing.Line(x, 5.0 * (head - 1), 10, x, 5.0 * head, 10, "FP-PIPE-1");
            drawing.Insert("SPRK-PENDENT", x, 5.0 * head, 10);
        }
    }
    drawing.Insert("INFLOW", 0, 0, 0);
    drawing.Text("1", 0.5, 0.5);
    drawing.Text("201", 10.3, 5.2);
    drawing.Text("100", 80, 80); // far from every node: numbers nothing
    drawing.Text("Notes", 1, 1);
    return drawing;
}

// Every TEXT on the results layer of a drawing, read back through the library.
struct ResultTexts final : DL_CreationAdapter {
    std::vector<DL_TextData> Texts;
    int Lines = 0;
    void addText(const DL_TextData& text) override {
        if (getAttributes().getLayer() == ResultsLayer) {
            Texts.push_back(text);
        }
    }
    void addLine(const DL_LineData&) override { ++Lines; }
};

TEST(DrawingImport, TreeOfTwentyHeads) {
    ScratchDirectory scratch;
    TreeOfTwentyHeads().Write(scratch / "tree.dxf");
    const auto project = std::make_unique<Project>();
    const auto outcome =
        ImportDrawingFile(*project, scratch / "tree.dxf", DrawingImportOptions{}, DefaultLibrary());
    ASSERT_TRUE(outcome.Loaded) << outcome.Message;
    EXPECT_EQ(project->NumberOfPipeRows, 25);
    EXPECT_EQ(outcome.Nodes, 26);
    EXPECT_EQ(outcome.Sprinklers, 20);

    const auto& riser = project->PipeRecord[1];
    EXPECT_EQ(riser.BegNode, "1");
    EXPECT_EQ(riser.BegIsInflow, 1);
    EXPECT_FLOAT_EQ(riser.Length, 10);
    EXPECT_FLOAT_EQ(riser.ElevationE, 10);
    EXPECT_EQ(riser.Diameter, 4);
    EXPECT_EQ(riser.DiameterFixed, 1);
    EXPECT_EQ(project->CalculationData.SystemInflowNode, 1);
    // The polyline's four spans share its handle; the line's handle differs.
    for (int row = 2; row <= 5; ++row) {
        EXPECT_EQ(project->PipeRecord[row].CadHandle, project->PipeRecord[2].CadHandle);
        EXPECT_EQ(project->PipeRecord[row].Diameter, 2.5f);
    }
    EXPECT_FALSE(riser.CadHandle.empty());
    EXPECT_NE(riser.CadHandle, project->PipeRecord[2].CadHandle);

    // Nodes without a text are numbered after the highest given, in drawing order.
    const auto& firstBranch = project->PipeRecord[6];
    EXPECT_EQ(firstBranch.EndNode, "201");
    EXPECT_EQ(firstBranch.KFactorE, "Dflt");
    EXPECT_EQ(firstBranch.KFactorB, "None");
    EXPECT_EQ(riser.EndNode, "202");
    EXPECT_EQ(project->PipeRecord[2].BegNode, "202");
    EXPECT_EQ(project->PipeRecord[2].EndNode, "203");
    int sprinklerEnds = 0;
    for (int row = 1; row <= 25; ++row) {
        sprinklerEnds += project->PipeRecord[row].KFactorE == "Dflt" ? 1 : 0;
        EXPECT_NE(project->PipeRecord[row].BegNode, "100");
    }
    EXPECT_EQ(sprinklerEnds, 20);
    EXPECT_EQ(project->CalculationData.InitialDampingFactor, 8); // 25 rows
}

TEST(DrawingExchange, ImportCalculateWriteBackAndReadBack) {
    ScratchDirectory scratch;
    TreeOfTwentyHeads().Write(scratch / "tree.dxf");
    const auto project = std::make_unique<Project>();
    ASSERT_TRUE(
        ImportDrawingFile(*project, scratch / "tree.dxf", DrawingImportOptions{}, DefaultLibrary())
            .Loaded);
    project->CalculationData.SupplyMode = 1;
    project->CalculationData.DemandMode = 0;
    project->CalculationData.InflowResidualPressure1 = 100;
    testing::CalculationRun run(*project);
    ASSERT_TRUE(run.Posted);

    const auto outcome = WriteResultsDrawing(*project, scratch / "tree.dxf", scratch / "out.dxf",
                                             DrawingImportOptions{});
    ASSERT_TRUE(outcome.Written) << outcome.Message;
    EXPECT_EQ(outcome.Pipes, 25);
    EXPECT_EQ(outcome.Nodes, 26);

    ResultTexts read;
    DL_Dxf reader;
    ASSERT_TRUE(reader.in((scratch / "out.dxf").string(), &read));
    EXPECT_EQ(read.Lines, 21 + 1); // the drawing's lines and the one in the block, kept
    ASSERT_EQ(read.Texts.size(), 51u);
    std::map<std::string, const DL_TextData*> byText;
    for (const auto& text : read.Texts) {
        byText[text.text] = &text;
    }
    // The head at (10, 5): its pressure beside it.
    const double pressure = testing::NodeOf(*project, 201).ResidualPressure;
    const auto head = byText.find("201 " + Format(pressure, "0.0") + " psi");
    ASSERT_NE(head, byText.end());
    EXPECT_NEAR(head->second->ipx, 10.125, 1e-9);
    EXPECT_NEAR(head->second->ipz, 10, 1e-9);
    // Every pipe text names its size; the riser's sits at its midpoint.
    int sized = 0;
    for (const auto& text : read.Texts) {
        if (text.text.find("\" ") != std::string::npos && text.text.ends_with(" gpm")) {
            ++sized;
        }
    }
    EXPECT_EQ(sized, 25);
    const auto& riser = project->PipeResultRecord[1];
    const auto riserText = byText.find("4\" " + Format(std::abs(riser.Flow), "0.0") + " gpm");
    ASSERT_NE(riserText, byText.end());
    EXPECT_NEAR(riserText->second->ipz, 5, 1e-9);

    // Writing again over the written drawing replaces the texts, never doubles them.
    const auto again = WriteResultsDrawing(*project, scratch / "out.dxf", scratch / "again.dxf",
                                           DrawingImportOptions{});
    ASSERT_TRUE(again.Written) << again.Message;
    ResultTexts reread;
    DL_Dxf second;
    ASSERT_TRUE(second.in((scratch / "again.dxf").string(), &reread));
    EXPECT_EQ(reread.Texts.size(), 51u);
}

TEST(DrawingImport, UnitsSnapLayersAndOptions) {
    // A drawing in inches whose ends miss each other by 0.06 in (0.005 ft).
    TestDrawing drawing(1);
    drawing.Line(0, 0, 120, 120, 0, 120, "PIPE");
    drawing.Line(120.06, 0, 120, 240, 0, 120, "PIPE-2IN");
    drawing.Line(0, 0, 0, 0, 100, 0, "WALLS");
    // A branch ending mid-span of the first pipe is not joined to it.
    drawing.Line(60, 0.5, 120, 60, 60, 120, "PIPE");
    drawing.Insert("HEAD-UPRIGHT", 240, 0, 120);
    drawing.Insert("SPRINKLER", 500, 500, 0); // at no pipe end
    drawing.Insert("TEE", 120, 0, 120);
    ScratchDirectory scratch;
    drawing.Write(scratch / "inch.dxf");
    std::string text;
    ASSERT_TRUE(ReadWholeFile(scratch / "inch.dxf", text));
    DrawingContent content;
    ASSERT_TRUE(ReadDrawing(text, content));
    ASSERT_EQ(content.InsertionUnits, 1);

    const auto project = std::make_unique<Project>();
    auto outcome = ImportDrawing(*project, content, DrawingImportOptions{}, DefaultLibrary());
    ASSERT_TRUE(outcome.Loaded) << outcome.Message;
    EXPECT_EQ(project->NumberOfPipeRows, 3);
    EXPECT_EQ(outcome.Nodes, 5); // the 0.06 in gap is within 0.01 ft
    EXPECT_FLOAT_EQ(project->PipeRecord[1].Length, 10);
    EXPECT_FLOAT_EQ(project->PipeRecord[1].ElevationB, 10);
    EXPECT_EQ(project->PipeRecord[1].EndNode, project->PipeRecord[2].BegNode);
    EXPECT_EQ(project->PipeRecord[2].Diameter, 2);
    EXPECT_EQ(project->PipeRecord[2].KFactorE, "Dflt");
    EXPECT_EQ(project->PipeRecord[1].FittingText, "T"); // the tee on the first row at the node
    EXPECT_NE(project->PipeRecord[3].BegNode, project->PipeRecord[1].BegNode);
    EXPECT_EQ(outcome.Sprinklers, 1);
    bool away = false;
    for (const auto& note : outcome.Notes) {
        away = away || note.find("1 sprinkler blocks lie at no pipe end") != std::string::npos;
    }
    EXPECT_TRUE(away);

    // A smaller snap keeps the ends apart; a unit given over the header; other layers.
    DrawingImportOptions options;
    options.SnapFeet = 0.001;
    options.ExcludeDiameters = true;
    options.ExcludeFittings = true;
    ASSERT_TRUE(ImportDrawing(*project, content, options, DefaultLibrary()).Loaded);
    EXPECT_NE(project->PipeRecord[1].EndNode, project->PipeRecord[2].BegNode);
    EXPECT_EQ(project->PipeRecord[2].DiameterFixed, 0);
    EXPECT_EQ(project->PipeRecord[1].FittingText, "");
    options.Unit = DrawingUnitNamed("ft");
    options.PipeLayers = SplitLayerList(" walls , ");
    ASSERT_TRUE(ImportDrawing(*project, content, options, DefaultLibrary()).Loaded);
    EXPECT_EQ(project->NumberOfPipeRows, 1);
    EXPECT_FLOAT_EQ(project->PipeRecord[1].Length, 100);

    options.PipeLayers = {"SPRINKLER-MAIN"};
    outcome = ImportDrawing(*project, content, options, DefaultLibrary());
    EXPECT_FALSE(outcome.Loaded);
    EXPECT_NE(outcome.Message.find("\"SPRINKLER-MAIN\""), std::string::npos) << outcome.Message;
}

TEST(DrawingImport, UnitNames) {
    EXPECT_DOUBLE_EQ(DrawingUnitNamed("IN")->Feet, 1.0 / 12);
    EXPECT_DOUBLE_EQ(DrawingUnitNamed("mm")->Feet, 1 / 304.8);
    EXPECT_DOUBLE_EQ(DrawingUnitNamed("m")->Feet, 1 / 0.3048);
    EXPECT_FALSE(DrawingUnitNamed("furlong"));
    EXPECT_EQ(DrawingUnitOfCode(0).Name, "in");
    EXPECT_EQ(DrawingUnitOfCode(2).Name, "ft");
    EXPECT_EQ(DrawingUnitOfCode(6).Name, "m");
}

TEST(DrawingImport, MutatedAndHostileDrawings) {
    ScratchDirectory scratch;
    TreeOfTwentyHeads().Write(scratch / "tree.dxf");
    std::string good;
    ASSERT_TRUE(ReadWholeFile(scratch / "tree.dxf", good));
    const auto project = std::make_unique<Project>();
    DrawingContent content;
    EXPECT_FALSE(ReadDrawing("", content));
    EXPECT_FALSE(ReadDrawing(std::string("AutoCAD Binary DXF\r\n\x1a\0", 23), content));
    // Counts that ask for more vertices than the file could hold.
    for (const char* count : {"2000000000", "-7", "99999999999"}) {
        const std::string text = std::string("0\nSECTION\n2\nENTITIES\n0\nLWPOLYLINE\n5\n2A\n8\n"
                                             "PIPE\n90\n") +
                                 count + "\n70\n0\n10\n0\n20\n0\n10\n5\n20\n0\n0\nENDSEC\n0\nEOF\n";
        ASSERT_TRUE(ReadDrawing(text, content)) << count;
        const auto outcome = ImportDrawing(*project, content, {}, DefaultLibrary());
        EXPECT_LE(project->NumberOfPipeRows, 1);
        EXPECT_TRUE(outcome.Loaded || !outcome.Message.empty());
    }
    // A line longer than the reader's buffer is cut, not read for ever.
    for (const std::size_t length : {1023u, 1024u, 5000u}) {
        std::string text = good;
        text.insert(text.find("FP-HEADS") + 8, std::string(length, 'x'));
        ASSERT_TRUE(ReadDrawing(text, content)) << length;
        EXPECT_EQ(content.Inserts.size(), 21u);
    }
    std::mt19937 random(3);
    for (int trial = 0; trial < 150; ++trial) {
        std::string text = good;
        for (int change = 0; change < 1 + trial % 10; ++change) {
            const std::size_t at = random() % text.size();
            switch (random() % 3) {
            case 0:
                text[at] = "0123456789-.\nE"[random() % 14];
                break;
            case 1:
                text.erase(at, 1 + random() % 40);
                break;
            default:
                text.insert(at, "\n90\n999999\n");
                break;
            }
        }
        if (ReadDrawing(text, content)) {
            const auto outcome = ImportDrawing(*project, content, {}, DefaultLibrary());
            EXPECT_LE(project->NumberOfPipeRows, MaxPipes);
            EXPECT_TRUE(outcome.Loaded || !outcome.Message.empty());
        }
    }
}

TEST(DrawingResults, RefusedWithoutResultsOrMatchingHandles) {
    ScratchDirectory scratch;
    TreeOfTwentyHeads().Write(scratch / "tree.dxf");
    const auto project = std::make_unique<Project>();
    ASSERT_TRUE(ImportDrawingFile(*project, scratch / "tree.dxf", {}, DefaultLibrary()).Loaded);
    auto outcome = WriteResultsDrawing(*project, scratch / "tree.dxf", scratch / "out.dxf", {});
    EXPECT_FALSE(outcome.Written);
    EXPECT_EQ(outcome.Message, drawing_results_texts::NoResults);
    EXPECT_FALSE(std::filesystem::exists(scratch / "out.dxf"));

    project->CalculationData.SupplyMode = 1;
    project->CalculationData.DemandMode = 0;
    project->CalculationData.InflowResidualPressure1 = 100;
    ASSERT_TRUE(testing::CalculationRun(*project).Posted);
    for (int row = 1; row <= project->NumberOfPipeRows; ++row) {
        project->PipeRecord[row].CadHandle = "FFFFF";
    }
    outcome = WriteResultsDrawing(*project, scratch / "tree.dxf", scratch / "out.dxf", {});
    EXPECT_FALSE(outcome.Written);
    EXPECT_NE(outcome.Message.find("handle"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(scratch / "out.dxf"));
}

} // namespace
} // namespace quench

namespace quench {
namespace {

TEST(DrawingExchange, ShippedGridCalculatesAndBalances) {
    const auto project = std::make_unique<Project>();
    const auto outcome =
        ImportDrawingFile(*project, testing::SourceDirectory() / "examples" / "small_grid.dxf",
                          DrawingImportOptions{}, DefaultLibrary());
    ASSERT_TRUE(outcome.Loaded) << outcome.Message;
    EXPECT_EQ(project->NumberOfPipeRows, 17);
    EXPECT_EQ(outcome.Sprinklers, 9);
    project->CalculationData.SupplyMode = 1;
    project->CalculationData.DemandMode = 0;
    project->CalculationData.InflowResidualPressure1 = 50;
    testing::CalculationRun run(*project);
    ASSERT_TRUE(run.Posted);
    double discharged = 0;
    for (int node = 1; node <= project->NumberOfNodes; ++node) {
        discharged += project->NodeRecord[node].Discharge;
    }
    EXPECT_NEAR(discharged, project->CalculationData.InflowFlow, 0.01 * discharged);
    EXPECT_GT(discharged, 9 * 5.65 * std::sqrt(7.0)); // every head above 7 psi
}

} // namespace
} // namespace quench
