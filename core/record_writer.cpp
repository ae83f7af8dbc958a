#include "core/record_writer.h"

#include "core/text.h"

#include <algorithm>

namespace quench {

RecordWriter::RecordWriter(std::span<std::uint8_t> record) : record_(record) {
    std::fill(record_.begin(), record_.end(), static_cast<std::uint8_t>(' '));
}

std::uint8_t* RecordWriter::Place(std::string_view name, std::size_t size) {
    if (Overflowed() || size > record_.size() - used_) {
        if (!Overflowed()) {
            overflowField_ = name;
        }
        return nullptr;
    }
    auto* place = record_.data() + used_;
    used_ += size;
    return place;
}

void RecordWriter::Text(std::string_view name, const std::string& text, std::size_t width) {
    if (auto* place = Place(name, width)) {
        const std::string padded = FixedWidth(text, width);
        std::copy(padded.begin(), padded.end(), place);
    }
}

void RecordWriter::String(std::string_view name, const std::string& text) {
    if (auto* place = Place(name, 2 + text.size())) {
        EncodeLittleEndian(static_cast<std::uint16_t>(text.size()), place);
        std::copy(text.begin(), text.end(), place + 2);
    }
}

} // namespace quench
