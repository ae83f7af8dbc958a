#pragma once

// A small streaming JSON writer: objects, arrays, strings, numbers of every width, booleans and
// null, indented two blanks a level. Commas, line breaks and indents are its business; the
// caller only says what comes next. Strings must be UTF-8; quotes, backslashes and control
// characters are escaped. A float or double is written as the shortest decimal text that reads
// back to the same value, and a NaN or an infinity (which JSON has no word for) as null.

#include <charconv>
#include <concepts>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

class JsonWriter {
public:
    explicit JsonWriter(std::ostream& out) : out_(out) {}

    void BeginObject();
    void EndObject();
    // A compact array keeps its items on one line: for short lists of numbers.
    void BeginArray(bool compact = false);
    void EndArray();

    // The name of the next member of the current object.
    void Key(std::string_view name);

    void String(std::string_view text);
    void Number(float value);
    void Number(double value);
    template <std::integral T>
    void Number(T value) {
        char buffer[24];
        const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
        Scalar(std::string_view(buffer, static_cast<std::size_t>(result.ptr - buffer)));
    }
    void Boolean(bool value);
    void Null();

private:
    struct Level {
        bool Array = false;
        bool Compact = false;
        int Items = 0;
    };

    void Scalar(std::string_view text);
    static std::string Quoted(std::string_view text);
    // What separates a new value from the one before: a comma, a line break and the indent.
    void BeforeValue();
    void Open(char bracket, bool array, bool compact);
    void Close(char bracket);
    void NewLine(std::size_t depth);
    template <class T>
    void FloatingNumber(T value);

    std::ostream& out_;
    std::vector<Level> levels_;
    bool afterKey_ = false;
};

} // namespace quench
