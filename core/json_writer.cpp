#include "core/json_writer.h"

#include <cmath>

namespace quench {

void JsonWriter::NewLine(std::size_t depth) {
    out_ << '\n';
    for (std::size_t level = 0; level < depth; ++level) {
        out_ << "  ";
    }
}

void JsonWriter::BeforeValue() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (levels_.empty()) {
        return;
    }
    Level& level = levels_.back();
    if (level.Items++ > 0) {
        out_ << ',';
        if (level.Compact) {
            out_ << ' ';
        }
    }
    if (!level.Compact) {
        NewLine(levels_.size());
    }
}

void JsonWriter::Open(char bracket, bool array, bool compact) {
    BeforeValue();
    const bool insideCompact = !levels_.empty() && levels_.back().Compact;
    out_ << bracket;
    levels_.push_back(Level{array, compact || insideCompact, 0});
}

void JsonWriter::Close(char bracket) {
    const Level level = levels_.back();
    levels_.pop_back();
    if (level.Items > 0 && !level.Compact) {
        NewLine(levels_.size());
    }
    out_ << bracket;
    if (levels_.empty()) {
        out_ << '\n';
    }
}

void JsonWriter::BeginObject() {
    Open('{', false, false);
}

void JsonWriter::EndObject() {
    Close('}');
}

void JsonWriter::BeginArray(bool compact) {
    Open('[', true, compact);
}

void JsonWriter::EndArray() {
    Close(']');
}

void JsonWriter::Key(std::string_view name) {
    BeforeValue();
    out_ << Quoted(name) << ": ";
    afterKey_ = true;
}

void JsonWriter::Scalar(std::string_view text) {
    BeforeValue();
    out_ << text;
    if (levels_.empty()) {
        out_ << '\n';
    }
}

void JsonWriter::String(std::string_view text) {
    Scalar(Quoted(text));
}

std::string JsonWriter::Quoted(std::string_view text) {
    static constexpr char Hex[] = "0123456789abcdef";
    std::string quoted = "\"";
    quoted.reserve(text.size() + 2);
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        switch (character) {
        case '"':
            quoted += "\\\"";
            break;
        case '\\':
            quoted += "\\\\";
            break;
        case '\b':
            quoted += "\\b";
            break;
        case '\f':
            quoted += "\\f";
            break;
        case '\n':
            quoted += "\\n";
            break;
        case '\r':
            quoted += "\\r";
            break;
        case '\t':
            quoted += "\\t";
            break;
        default:
            if (code < 0x20) {
                quoted += "\\u00";
                quoted += Hex[code >> 4];
                quoted += Hex[code & 0x0F];
            } else {
                quoted += character;
            }
        }
    }
    quoted += '"';
    return quoted;
}

template <class T>
void JsonWriter::FloatingNumber(T value) {
    if (!std::isfinite(value)) {
        Null();
        return;
    }
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    Scalar(std::string_view(buffer, static_cast<std::size_t>(result.ptr - buffer)));
}

void JsonWriter::Number(float value) {
    FloatingNumber(value);
}

void JsonWriter::Number(double value) {
    FloatingNumber(value);
}

void JsonWriter::Boolean(bool value) {
    Scalar(value ? "true" : "false");
}

void JsonWriter::Null() {
    Scalar("null");
}

} // namespace quench
