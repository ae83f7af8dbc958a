#include "interchange/dxf_drawing.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>
#include <exception>
#include <sstream>

namespace quench {

namespace {

// Group codes from which dxflib sizes its arrays: vertex, knot, control point, fit point,
// leader vertex and hatch counts.
constexpr std::array<int, 10> CountCodes{72, 73, 74, 75, 76, 90, 91, 92, 93, 98};
constexpr long long LargestCount = 1000000;
// dxflib reads lines into a buffer of 1024 characters and never returns from a longer one.
constexpr std::size_t LongestLine = 1000;

bool IsCountCode(std::string_view code) {
    int value = 0;
    const auto* first = code.data();
    while (first != code.data() + code.size() && *first == ' ') {
        ++first;
    }
    const auto [end, error] = std::from_chars(first, code.data() + code.size(), value);
    if (error != std::errc{}) {
        return false;
    }
    return std::find(CountCodes.begin(), CountCodes.end(), value) != CountCodes.end();
}

std::string_view LineAt(std::string_view text, std::size_t& at) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    std::string_view line = text.substr(at, end - at);
    at = end + 1;
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

// The text made safe for the reader: a count can never be larger than the pairs that follow it,
// so a larger one is cut down to them, and a line longer than the reader can take is cut short.
std::string BoundCounts(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t at = 0; at < text.size();) {
        lines.push_back(LineAt(text, at));
    }
    std::string bounded;
    bounded.reserve(text.size());
    for (std::size_t index = 0; index < lines.size(); ++index) {
        std::string line(lines[index].substr(0, LongestLine));
        if (index % 2 == 1 && IsCountCode(lines[index - 1])) {
            long long value = 0;
            std::istringstream(line) >> value;
            const auto pairsLeft = static_cast<long long>((lines.size() - index) / 2);
            const long long limit = std::min(pairsLeft, LargestCount);
            if (value < 0 || value > limit) {
                line = std::to_string(value < 0 ? 0 : limit);
            }
        }
        bounded += line;
        bounded += '\n';
    }
    return bounded;
}

DrawingPoint Point(double x, double y, double z) {
    return DrawingPoint{x, y, z};
}

class DrawingCollector final : public DL_CreationAdapter {
public:
    explicit DrawingCollector(DrawingContent& content) : content_(content) {}

    void addBlock(const DL_BlockData&) override {
        FinishPolyline();
        inBlock_ = true;
    }
    void endBlock() override { inBlock_ = false; }

    void addLine(const DL_LineData& line) override {
        FinishPolyline();
        if (!inBlock_) {
            content_.Segments.push_back(DrawingSegment{Point(line.x1, line.y1, line.z1),
                                                       Point(line.x2, line.y2, line.z2), Layer(),
                                                       Handle()});
        }
    }

    void addPolyline(const DL_PolylineData& polyline) override {
        FinishPolyline();
        if (inBlock_) {
            return;
        }
        polyline_ = true;
        closed_ = (polyline.flags & 1) != 0;
        elevation_ = polyline.elevation;
        polylineLayer_ = Layer();
        polylineHandle_ = Handle();
    }

    void addVertex(const DL_VertexData& vertex) override {
        if (polyline_) {
            // A light polyline keeps its vertices in the plane of its elevation.
            const double z = vertex.z != 0 ? vertex.z : elevation_;
            vertices_.push_back(Point(vertex.x, vertex.y, z));
        }
    }

    void endSequence() override { FinishPolyline(); }

    void addInsert(const DL_InsertData& insert) override {
        FinishPolyline();
        if (!inBlock_) {
            content_.Inserts.push_back(
                DrawingInsert{insert.name, Point(insert.ipx, insert.ipy, insert.ipz), Layer()});
        }
    }

    void addText(const DL_TextData& text) override {
        FinishPolyline();
        if (!inBlock_) {
            content_.Texts.push_back(
                DrawingText{text.text, Point(text.ipx, text.ipy, text.ipz), Layer()});
        }
    }

    void setVariableInt(const std::string& key, int value, int) override {
        if (key == "$INSUNITS") {
            content_.InsertionUnits = value;
        }
    }
    void setVariableString(const std::string& key, const std::string& value, int) override {
        if (key == "$ACADVER") {
            content_.Version = value;
        }
    }

    void FinishPolyline() {
        if (!polyline_) {
            return;
        }
        for (std::size_t index = 1; index < vertices_.size(); ++index) {
            content_.Segments.push_back(DrawingSegment{vertices_[index - 1], vertices_[index],
                                                       polylineLayer_, polylineHandle_});
        }
        if (closed_ && vertices_.size() > 2) {
            content_.Segments.push_back(DrawingSegment{vertices_.back(), vertices_.front(),
                                                       polylineLayer_, polylineHandle_});
        }
        vertices_.clear();
        polyline_ = false;
    }

private:
    std::string Layer() { return getAttributes().getLayer(); }
    std::string Handle() { return HandleText(getAttributes().getHandle()); }

    DrawingContent& content_;
    bool inBlock_ = false;
    bool polyline_ = false;
    bool closed_ = false;
    double elevation_ = 0;
    std::string polylineLayer_;
    std::string polylineHandle_;
    std::vector<DrawingPoint> vertices_;
};

} // namespace

std::string HandleText(long long handle) {
    if (handle < 0) {
        return {};
    }
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%llX", handle);
    return buffer;
}

bool ReadDrawing(std::string_view text, DrawingContent& content) {
    content = DrawingContent{};
    if (text.empty() || text.starts_with("AutoCAD Binary DXF")) {
        return false;
    }
    std::istringstream stream(BoundCounts(text));
    DrawingCollector collector(content);
    DL_Dxf reader;
    try {
        if (!reader.in(stream, &collector)) {
            return false;
        }
    } catch (const std::exception&) {
        return false;
    }
    collector.FinishPolyline();
    return true;
}

} // namespace quench
