#include "core/record_reader.h"

#include "core/text.h"

namespace quench {

std::optional<std::span<const std::uint8_t>> RecordReader::Take(std::size_t size) {
    if (stopped_ || size > rest_.size()) {
        stopped_ = true;
        return std::nullopt;
    }
    const auto bytes = rest_.first(size);
    rest_ = rest_.subspan(size);
    return bytes;
}

void RecordReader::Text(std::string_view /*name*/, std::string& text, std::size_t width) {
    if (const auto bytes = Take(width)) {
        text = TrimRight(std::string_view(reinterpret_cast<const char*>(bytes->data()), width));
    }
}

void RecordReader::String(std::string_view /*name*/, std::string& text) {
    const auto length = Take(2);
    if (!length) {
        return;
    }
    const auto size = DecodeLittleEndian<std::uint16_t>(length->data());
    if (const auto bytes = Take(size)) {
        text.assign(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    }
}

} // namespace quench
