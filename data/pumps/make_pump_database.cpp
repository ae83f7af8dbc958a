// Writes the shipped fire pump database from its source table, through the program's own writer:
//   make_pump_database fire_pumps.csv Pump.Dat
// The table has one header row and one pump per line: number, name, feet-of-head flag, then five
// pairs of flow (gpm) and pressure. Fields hold no commas and no quotes.

#include "core/formats.h"
#include "core/text.h"
#include "library/pump_database.h"

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr std::size_t FieldsPerLine = 3 + 2 * quench::MaximumCurvePoints;

std::vector<std::string> SplitFields(const std::string& line) {
    std::vector<std::string> fields;
    std::stringstream stream(line);
    std::string field;
    while (std::getline(stream, field, ',')) {
        fields.push_back(quench::Trim(field));
    }
    return fields;
}

bool ParseNumber(const std::string& text, double& value) {
    if (!quench::IsNumeric(text)) {
        return false;
    }
    value = quench::ToNumber(text);
    return true;
}

// One line of the table as a record; false with the reason when it is not one.
bool ParsePump(const std::string& line, quench::PumpRecord& record, std::string& reason) {
    const auto fields = SplitFields(line);
    if (fields.size() != FieldsPerLine) {
        reason = "expected " + std::to_string(FieldsPerLine) + " fields";
        return false;
    }
    if (fields[1].empty() || fields[1].size() > quench::PumpNameLength) {
        reason = "a pump name has 1 to 32 characters";
        return false;
    }
    record = quench::BlankPumpRecord(fields[1]);
    double feetOfHead = 0;
    if (!ParseNumber(fields[2], feetOfHead)) {
        reason = "the feet-of-head flag is not a number";
        return false;
    }
    record.FeetOfHead = feetOfHead != 0 ? 1 : 0;
    for (std::size_t slot = 0; slot < quench::MaximumCurvePoints; ++slot) {
        if (!ParseNumber(fields[3 + 2 * slot], record.Flow[slot]) ||
            !ParseNumber(fields[4 + 2 * slot], record.Pressure[slot])) {
            reason = "point " + std::to_string(slot + 1) + " is not a pair of numbers";
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_pump_database TABLE.csv Pump.Dat\n";
        return 2;
    }
    std::ifstream table(argv[1]);
    if (!table) {
        std::cerr << "make_pump_database: cannot read " << argv[1] << '\n';
        return 1;
    }
    std::vector<quench::PumpRecord> pumps;
    std::string line;
    std::getline(table, line); // the header
    for (int number = 2; std::getline(table, line); ++number) {
        if (quench::TrimmedView(line).empty()) {
            continue;
        }
        quench::PumpRecord record;
        std::string reason;
        if (!ParsePump(line, record, reason)) {
            std::cerr << argv[1] << ':' << number << ": " << reason << '\n';
            return 1;
        }
        pumps.push_back(record);
    }
    std::string error;
    if (!quench::SavePumpDatabase(argv[2], pumps, &error)) {
        std::cerr << "make_pump_database: " << error << '\n';
        return 1;
    }
    return 0;
}
