#pragma once

// Reads the fields of one record in their order. The record may be short (the file ended inside
// it) and its Strings may claim more bytes than it holds: the first field that does not fit stops
// the reading, and that field and all after it keep the values they had.

#include "core/record_bytes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quench {

class RecordReader {
public:
    // The bytes of the record that lie within the file: at most a whole record, perhaps none.
    explicit RecordReader(std::span<const std::uint8_t> record) : rest_(record) {}

    template <class T>
    void Number(std::string_view /*name*/, T& value) {
        if (const auto bytes = Take(sizeof(T))) {
            value = DecodeLittleEndian<T>(bytes->data());
        }
    }

    template <class T, std::size_t Count>
    void Numbers(std::string_view /*name*/, std::array<T, Count>& values) {
        if (const auto bytes = Take(sizeof(T) * Count)) {
            for (std::size_t index = 0; index < Count; ++index) {
                values[index] = DecodeLittleEndian<T>(bytes->data() + index * sizeof(T));
            }
        }
    }

    template <std::size_t Count>
    void Bytes(std::string_view /*name*/, std::array<std::uint8_t, Count>& values) {
        if (const auto bytes = Take(Count)) {
            std::copy(bytes->begin(), bytes->end(), values.begin());
        }
    }

    // Held without the blank padding on the right.
    void Text(std::string_view name, std::string& text, std::size_t width);
    void String(std::string_view name, std::string& text);

    // False once a field did not fit.
    bool Complete() const { return !stopped_; }

private:
    std::optional<std::span<const std::uint8_t>> Take(std::size_t size);

    std::span<const std::uint8_t> rest_;
    bool stopped_ = false;
};

} // namespace quench
