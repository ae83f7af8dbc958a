#pragma once

// Fixed-length records of the legacy and CAD exchange files: fields read from a byte image with
// every byte past its end reading as zero, and fields laid into a record buffer.

#include "core/record_bytes.h"
#include "core/types.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

class LegacyRecordReader {
public:
    LegacyRecordReader(std::span<const std::uint8_t> image, std::size_t start)
        : image_(image), start_(start) {}

    template <class T>
    T Number(std::size_t offset) const {
        std::uint8_t bytes[sizeof(T)] = {};
        for (std::size_t index = 0; index < sizeof(T); ++index) {
            bytes[index] = Byte(offset + index);
        }
        return DecodeLittleEndian<T>(bytes);
    }
    Integer Int(std::size_t offset) const { return Number<Integer>(offset); }
    Single Float(std::size_t offset) const { return Number<Single>(offset); }

    // A text of `width` characters without its blank padding; a zero byte ends it early.
    std::string Text(std::size_t offset, std::size_t width) const;

private:
    std::uint8_t Byte(std::size_t offset) const {
        const std::size_t at = start_ + offset;
        return at < image_.size() ? image_[at] : 0;
    }

    std::span<const std::uint8_t> image_;
    std::size_t start_;
};

class LegacyRecordWriter {
public:
    explicit LegacyRecordWriter(std::span<std::uint8_t> record) : record_(record) {}

    template <class T>
    void Number(std::size_t offset, T value) {
        EncodeLittleEndian<T>(value, record_.data() + offset);
    }
    void Int(std::size_t offset, Integer value) { Number<Integer>(offset, value); }
    void Float(std::size_t offset, Single value) { Number<Single>(offset, value); }
    // The text cut to the width or padded with blanks.
    void Text(std::size_t offset, std::string_view text, std::size_t width);

private:
    std::span<std::uint8_t> record_;
};

} // namespace quench
