#include "core/project_json.h"

#include "core/record_sequence.h"
#include "core/text.h"

#include <type_traits>

namespace quench {

namespace {

// Writes each record of the file sequence as a member of the top object.
class JsonSequence {
public:
    explicit JsonSequence(JsonWriter& json) : json_(json) {}

    template <class Data>
    void Record(std::string_view name, const Data& data) {
        json_.Key(name);
        WriteRecordJson(json_, data);
    }

    template <class T>
    void Value(std::string_view name, const T& value) {
        json_.Key(name);
        if constexpr (std::is_same_v<T, std::string>) {
            json_.String(JsonText(value));
        } else {
            json_.Number(value);
        }
    }

    void Count(std::string_view name, Integer count) { Value(name, count); }

    template <class Rows>
    void Table(std::string_view name, const Rows& rows, Integer count, TableKind /*kind*/) {
        json_.Key(name);
        json_.BeginArray();
        const int used = UsedRows(rows, count);
        for (int row = 1; row <= used; ++row) {
            WriteRecordJson(json_, rows[static_cast<std::size_t>(row)]);
        }
        json_.EndArray();
    }

private:
    JsonWriter& json_;
};

} // namespace

std::string JsonText(std::string_view text) {
    return Latin1ToUtf8(Trim(text));
}

void WriteProjectJson(const Project& project, JsonWriter& json) {
    json.BeginObject();
    JsonSequence sequence(json);
    VisitProjectRecords(project, sequence);
    VisitExtensionRecords(project, sequence);
    json.EndObject();
}

void WriteProjectJson(const Project& project, std::ostream& out) {
    JsonWriter json(out);
    WriteProjectJson(project, json);
}

} // namespace quench
