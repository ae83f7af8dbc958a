#pragma once

// Numbers in the project file are little-endian whatever the machine: Integer 2 bytes, Long 4,
// Single and Double IEEE 754 of 4 and 8 bytes.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace quench {

template <std::size_t Size>
using UnsignedOfSize = std::conditional_t<
    Size == 1, std::uint8_t,
    std::conditional_t<Size == 2, std::uint16_t,
                       std::conditional_t<Size == 4, std::uint32_t, std::uint64_t>>>;

template <class T>
T DecodeLittleEndian(const std::uint8_t* bytes) {
    using Bits = UnsignedOfSize<sizeof(T)>;
    Bits bits = 0;
    for (std::size_t index = sizeof(T); index-- > 0;) {
        bits = static_cast<Bits>((bits << 8) | bytes[index]);
    }
    return std::bit_cast<T>(bits);
}

template <class T>
void EncodeLittleEndian(T value, std::uint8_t* bytes) {
    using Bits = UnsignedOfSize<sizeof(T)>;
    auto bits = std::bit_cast<Bits>(value);
    for (std::size_t index = 0; index < sizeof(T); ++index) {
        bytes[index] = static_cast<std::uint8_t>(bits & 0xFF);
        bits = static_cast<Bits>(bits >> 8);
    }
}

} // namespace quench
