#pragma once

// The first number of a record that is infinite or NaN, by its field name. No screen lets such a
// number in, but a damaged or foreign file can hold one.

#include "core/record_layout.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace quench {

// A record visitor (core/record_layout.h) that keeps the name of the first number not finite.
class NonFiniteField {
public:
    template <class T>
    void Number(std::string_view name, const T& value) {
        if constexpr (std::is_floating_point_v<T>) {
            if (found_.empty() && !std::isfinite(value)) {
                found_ = name;
            }
        }
    }
    template <class T, std::size_t Count>
    void Numbers(std::string_view name, const std::array<T, Count>& values) {
        for (const T& value : values) {
            Number(name, value);
        }
    }
    template <std::size_t Count>
    void Bytes(std::string_view, const std::array<std::uint8_t, Count>&) {}
    void Text(std::string_view, const std::string&, std::size_t) {}
    void String(std::string_view, const std::string&) {}

    std::string_view Found() const { return found_; }

private:
    std::string_view found_;
};

// "" when every number of the record is finite.
template <class Record>
std::string_view FirstNonFiniteField(const Record& record) {
    NonFiniteField visitor;
    VisitRecordFields(record, visitor);
    return visitor.Found();
}

} // namespace quench
