#pragma once

#include <cstdint>

namespace quench {

// The widths of the stored numbers are part of the file layout and of the results: a Single
// rounds where a Double does not, and an Integer counter wraps at 32767.
using Integer = std::int16_t;
using Long = std::int32_t;
using Single = float;
using Double = double;

// A stored flag is an Integer: 0 for false, -1 for true.
constexpr Integer True = -1;
constexpr Integer False = 0;

inline bool IsTrue(Integer flag) {
    return flag != 0;
}
inline Integer ToFlag(bool value) {
    return value ? True : False;
}

} // namespace quench
