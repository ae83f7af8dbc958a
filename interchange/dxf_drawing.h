#pragma once

// What the network import needs of a DXF drawing, read through dxflib: the line work of model
// space (LINE, LWPOLYLINE and POLYLINE, each polyline cut into its segments), the block inserts,
// the TEXT entities and the header's unit and version. Entities inside block definitions are
// not part of the drawing's network and are left out.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

struct DrawingPoint {
    double X = 0;
    double Y = 0;
    double Z = 0;
};

struct DrawingSegment {
    DrawingPoint Start;
    DrawingPoint End;
    std::string Layer;
    std::string Handle; // hexadecimal, as in the file; empty when the entity has none
};

struct DrawingInsert {
    std::string Block;
    DrawingPoint At;
    std::string Layer;
};

struct DrawingText {
    std::string Text;
    DrawingPoint At;
    std::string Layer;
};

struct DrawingContent {
    std::vector<DrawingSegment> Segments;
    std::vector<DrawingInsert> Inserts;
    std::vector<DrawingText> Texts;
    std::optional<int> InsertionUnits; // $INSUNITS
    std::string Version;               // $ACADVER, "AC1009" for R12
};

// False when the text is no ASCII drawing (a binary DXF, an empty file) or dxflib refuses it.
// Counts of a damaged file that would make the reader allocate beyond the file's own size are
// cut down first, so that a hostile file is read as far as it goes.
bool ReadDrawing(std::string_view text, DrawingContent& content);

// The hexadecimal text of a handle number; empty for none.
std::string HandleText(long long handle);

} // namespace quench
