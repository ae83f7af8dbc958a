#include "tests/support/record_printer.h"

#include "core/project_json.h"

namespace quench {

namespace {

template <class Record>
void PrintJson(const Record& record, std::ostream* out) {
    JsonWriter json(*out);
    WriteRecordJson(json, record);
}

} // namespace

void PrintTo(const ProjectData& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const ClientData& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const CompanyData& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const BuildingData& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const SystemData& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const PipeRecord& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const TreeBuilderData& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const GridBuilderData& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const CalculationData& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const PipeResultRecord& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const NodeRecord& record, std::ostream* out) {
    PrintJson(record, out);
}
void PrintTo(const CalcPipeRecord& record, std::ostream* out) {
    PrintJson(record, out);
}

} // namespace quench
