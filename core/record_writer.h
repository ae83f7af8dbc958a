#pragma once

// Packs the fields of one record in their order, with no padding between them, over a record of
// blanks. A field that would run past the end of the record is not written; the writer then
// reports the record as overflowed, and names the field.

#include "core/record_bytes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quench {

class RecordWriter {
public:
    // Fills the whole record with blanks first.
    explicit RecordWriter(std::span<std::uint8_t> record);

    template <class T>
    void Number(std::string_view name, const T& value) {
        if (auto* place = Place(name, sizeof(T))) {
            EncodeLittleEndian(value, place);
        }
    }

    template <class T, std::size_t Count>
    void Numbers(std::string_view name, const std::array<T, Count>& values) {
        if (auto* place = Place(name, sizeof(T) * Count)) {
            for (std::size_t index = 0; index < Count; ++index) {
                EncodeLittleEndian(values[index], place + index * sizeof(T));
            }
        }
    }

    template <std::size_t Count>
    void Bytes(std::string_view name, const std::array<std::uint8_t, Count>& values) {
        if (auto* place = Place(name, Count)) {
            std::copy(values.begin(), values.end(), place);
        }
    }

    // Cut to the width or padded with blanks.
    void Text(std::string_view name, const std::string& text, std::size_t width);
    void String(std::string_view name, const std::string& text);

    bool Overflowed() const { return !overflowField_.empty(); }
    // The first field that did not fit, or "".
    std::string_view OverflowField() const { return overflowField_; }
    // Bytes used so far.
    std::size_t Used() const { return used_; }

private:
    std::uint8_t* Place(std::string_view name, std::size_t size);

    std::span<std::uint8_t> record_;
    std::size_t used_ = 0;
    std::string overflowField_;
};

} // namespace quench
