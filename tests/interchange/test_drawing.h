#pragma once

// DXF drawings for the tests, written through dxflib as a CAD program writes them: header with
// $INSUNITS, the tables, a sprinkler block, and the entities of model space.

#include <dxflib/dl_dxf.h>
#include <filesystem>
#include <string>
#include <vector>

namespace quench::testing {

class TestDrawing {
public:
    explicit TestDrawing(int insertionUnits = 2) : units_(insertionUnits) {}

    void Line(double x1, double y1, double z1, double x2, double y2, double z2,
              const std::string& layer = "FP-PIPE") {
        entities_.push_back({Kind::Line, {x1, y1, z1, x2, y2, z2}, 0, layer});
    }
    // A light polyline at an elevation through plan points (x, y pairs).
    void Polyline(const std::vector<double>& points, double elevation,
                  const std::string& layer = "FP-PIPE") {
        entities_.push_back({Kind::Polyline, points, elevation, layer});
    }
    void Insert(const std::string& block, double x, double y, double z) {
        entities_.push_back({Kind::Insert, {x, y, z}, 0, block});
    }
    void Text(const std::string& text, double x, double y) {
        entities_.push_back({Kind::Text, {x, y}, 0, text});
    }

    void Write(const std::filesystem::path& file) const {
        DL_Dxf dxf;
        DL_WriterA* writer = dxf.out(file.string().c_str(), DL_Codes::AC1015);
        DL_WriterA& dw = *writer;
        dxf.writeHeader(dw);
        dw.dxfString(9, "$INSUNITS");
        dw.dxfInt(70, units_);
        dw.sectionEnd();
        dw.sectionTables();
        dxf.writeVPort(dw);
        dw.tableLinetypes(3);
        dxf.writeLinetype(dw, DL_LinetypeData("BYBLOCK", "", 0, 0, 0.0));
        dxf.writeLinetype(dw, DL_LinetypeData("BYLAYER", "", 0, 0, 0.0));
        dxf.writeLinetype(dw, DL_LinetypeData("CONTINUOUS", "Solid line", 0, 0, 0.0));
        dw.tableEnd();
        dw.tableLayers(3);
        for (const char* layer : {"0", "FP-PIPE", "FP-HEADS"}) {
            dxf.writeLayer(dw, DL_LayerData(layer, 0),
                           DL_Attributes("", 7, 0x00ff, "CONTINUOUS", 1.0));
        }
        dw.tableEnd();
        dw.tableStyle(1);
        dxf.writeStyle(dw, DL_StyleData("standard", 0, 0.0, 1.0, 0.0, 0, 2.5, "txt", ""));
        dw.tableEnd();
        dxf.writeView(dw);
        dxf.writeUcs(dw);
        dw.tableAppid(1);
        dxf.writeAppid(dw, "ACAD");
        dw.tableEnd();
        dxf.writeDimStyle(dw, 1, 1, 1, 1, 1);
        dxf.writeBlockRecord(dw);
        dxf.writeBlockRecord(dw, "SPRK-PENDENT");
        dw.tableEnd();
        dw.sectionEnd();

        dw.sectionBlocks();
        for (const char* space : {"*Model_Space", "*Paper_Space", "*Paper_Space0"}) {
            dxf.writeBlock(dw, DL_BlockData(space, 0, 0.0, 0.0, 0.0));
            dxf.writeEndBlock(dw, space);
        }
        dxf.writeBlock(dw, DL_BlockData("SPRK-PENDENT", 0, 0.0, 0.0, 0.0));
        // A line inside the block is part of the symbol, not of the network.
        dxf.writeLine(dw, DL_LineData(-0.2, 0, 0, 0.2, 0, 0), Attributes("FP-PIPE"));
        dxf.writeCircle(dw, DL_CircleData(0, 0, 0, 0.25), Attributes("0"));
        dxf.writeEndBlock(dw, "SPRK-PENDENT");
        dw.sectionEnd();

        dw.sectionEntities();
        for (const auto& entity : entities_) {
            WriteEntity(dxf, dw, entity);
        }
        dw.sectionEnd();
        dxf.writeObjects(dw);
        dxf.writeObjectsEnd(dw);
        dw.dxfEOF();
        dw.close();
        delete writer;
    }

private:
    static DL_Attributes Attributes(const std::string& layer) {
        return DL_Attributes(layer, 256, -1, "BYLAYER", 1.0);
    }

    enum class Kind { Line, Polyline, Insert, Text };
    struct Entity {
        Kind Type;
        std::vector<double> Values;
        double Elevation;
        std::string Name; // the layer of line work, the block of an insert, a text's text
    };

    static void WriteEntity(DL_Dxf& dxf, DL_WriterA& dw, const Entity& entity) {
        const auto& v = entity.Values;
        switch (entity.Type) {
        case Kind::Line:
            dxf.writeLine(dw, DL_LineData(v[0], v[1], v[2], v[3], v[4], v[5]),
                          Attributes(entity.Name));
            break;
        case Kind::Polyline:
            // dxflib's writer leaves out the elevation (38), so the entity is laid here.
            dw.entity("LWPOLYLINE");
            dw.entityAttributes(Attributes(entity.Name));
            dw.dxfString(100, "AcDbPolyline");
            dw.dxfInt(90, static_cast<int>(v.size() / 2));
            dw.dxfInt(70, 0);
            dw.dxfReal(38, entity.Elevation);
            for (std::size_t index = 0; index + 1 < v.size(); index += 2) {
                dw.dxfReal(10, v[index]);
                dw.dxfReal(20, v[index + 1]);
            }
            break;
        case Kind::Insert:
            dxf.writeInsert(dw,
                            DL_InsertData(entity.Name, v[0], v[1], v[2], 1, 1, 1, 0, 1, 1, 0, 0),
                            Attributes("FP-HEADS"));
            break;
        case Kind::Text:
            dxf.writeText(
                dw,
                DL_TextData(v[0], v[1], 0, 0, 0, 0, 0.5, 1, 0, 0, 0, entity.Name, "standard", 0),
                Attributes("0"));
            break;
        }
    }

    int units_;
    std::vector<Entity> entities_;
};

} // namespace quench::testing
