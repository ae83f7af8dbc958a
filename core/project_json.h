#pragma once

// The model as JSON, for the dump command and for tests: one key per record or table, in file
// order, with the model's own field names. Tables are arrays of their used rows, row 1 first;
// fixed arrays are arrays; texts are trimmed of blanks on both sides and shown as Latin-1 turned
// into UTF-8. Integers are whole numbers; a Single or a Double is the shortest text that reads
// back to the same value, and null when it is no finite number.

#include "core/json_writer.h"
#include "core/project.h"
#include "core/record_layout.h"

#include <array>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace quench {

// A stored text as JSON shows it.
std::string JsonText(std::string_view text);

// Writes each field of a record as a member of the current JSON object.
class JsonRecordFields {
public:
    explicit JsonRecordFields(JsonWriter& json) : json_(json) {}

    template <class T>
    void Number(std::string_view name, const T& value) {
        json_.Key(name);
        json_.Number(value);
    }

    template <class T, std::size_t Count>
    void Numbers(std::string_view name, const std::array<T, Count>& values) {
        json_.Key(name);
        json_.BeginArray(true);
        for (const T& value : values) {
            json_.Number(value);
        }
        json_.EndArray();
    }

    template <std::size_t Count>
    void Bytes(std::string_view name, const std::array<std::uint8_t, Count>& values) {
        Numbers(name, values);
    }

    void Text(std::string_view name, const std::string& text, std::size_t /*width*/) {
        String(name, text);
    }

    void String(std::string_view name, const std::string& text) {
        json_.Key(name);
        json_.String(JsonText(text));
    }

private:
    JsonWriter& json_;
};

// One record as a JSON object.
template <class Record>
void WriteRecordJson(JsonWriter& json, const Record& record) {
    json.BeginObject();
    JsonRecordFields fields(json);
    VisitRecordFields(record, fields);
    json.EndObject();
}

// The whole model as one JSON object.
void WriteProjectJson(const Project& project, JsonWriter& json);
void WriteProjectJson(const Project& project, std::ostream& out);

} // namespace quench
