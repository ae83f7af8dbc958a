#include "reports/text_canvas.h"

#include <cmath>

namespace quench {

namespace {

// Characters, not bytes: the continuation bytes of UTF-8 do not count.
int Characters(std::string_view text) {
    int count = 0;
    for (const char byte : text) {
        count += (static_cast<unsigned char>(byte) & 0xC0) == 0x80 ? 0 : 1;
    }
    return count;
}

} // namespace

int TextCanvas::MeasureWidth(const FontSpec& font, std::string_view text) const {
    return static_cast<int>(std::lround(Characters(text) * font.Size * TwipsPerPoint / 2));
}

int TextCanvas::FontHeight(const FontSpec& font) const {
    return static_cast<int>(std::lround(font.Size * TwipsPerPoint * 1.15));
}

void TextCanvas::BeginPage(int page) {
    text_ += "--- page " + std::to_string(page) + " ---\n";
}

bool TextCanvas::DrawPicture(const std::filesystem::path& file, int, int, int, int) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        return false;
    }
    text_ += "(picture " + file.filename().string() + ")\n";
    return true;
}

void TextCanvas::ParagraphLaidOut(std::string_view text) {
    text_ += std::string(text) + "\n";
}

void TextCanvas::TableRowLaidOut(const TableRow& cells, bool heading) {
    std::string line = heading ? "[" : "";
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        line += (cell == 0 ? "" : " | ") + cells[cell];
    }
    text_ += line + (heading ? "]\n" : "\n");
}

} // namespace quench
