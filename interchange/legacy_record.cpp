#include "interchange/legacy_record.h"

#include "core/text.h"

namespace quench {

std::string LegacyRecordReader::Text(std::size_t offset, std::size_t width) const {
    std::string text;
    for (std::size_t index = 0; index < width; ++index) {
        const std::uint8_t byte = Byte(offset + index);
        if (byte == 0) {
            break;
        }
        text.push_back(static_cast<char>(byte));
    }
    return TrimRight(text);
}

void LegacyRecordWriter::Text(std::size_t offset, std::string_view text, std::size_t width) {
    for (std::size_t index = 0; index < width; ++index) {
        record_[offset + index] =
            index < text.size() ? static_cast<std::uint8_t>(text[index]) : std::uint8_t{' '};
    }
}

} // namespace quench
