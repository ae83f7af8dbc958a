// Build-time tool: turns the pipe library table (CSV, one row per material and size) into the
// binary library file. Usage: make_pipe_library TABLE.csv PIPE.DAT
//
// A blank cell is no value and is stored as 0. The table is checked strictly, since a wrong figure
// here ends up in every calculation: each fault names its line and the build stops.

#include "core/formats.h"
#include "core/text.h"
#include "library/pipe_library_file.h"

#include <array>
#include <cmath>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using quench::PipeDiameterRecord;
using quench::PipeLibrary;
using quench::PipeMaterialRecord;
using quench::Single;

struct TableError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

const std::array<const char*, 7> FittingColumns{"eq_F_ft", "eq_E_ft", "eq_L_ft", "eq_T_ft",
                                                "eq_B_ft", "eq_G_ft", "eq_C_ft"};

std::vector<std::string> SplitFields(const std::string& line) {
    std::vector<std::string> fields;
    std::stringstream stream(line);
    std::string field;
    while (std::getline(stream, field, ',')) {
        fields.push_back(quench::Trim(field));
    }
    if (!line.empty() && line.back() == ',') {
        fields.emplace_back();
    }
    return fields;
}

// One row of the table, its cells found by column name.
class Row {
public:
    Row(const std::map<std::string, std::size_t>& columns, std::vector<std::string> fields)
        : columns_(columns), fields_(std::move(fields)) {}

    const std::string& Text(const std::string& column) const {
        return fields_.at(columns_.at(column));
    }

    // A blank cell is no value: 0.
    double Number(const std::string& column) const {
        const std::string& text = Text(column);
        if (text.empty()) {
            return 0;
        }
        if (!quench::IsNumeric(text)) {
            throw TableError(column + " \"" + text + "\" is not a number");
        }
        return quench::ToNumber(text);
    }

    Single Value(const std::string& column) const {
        const double value = Number(column);
        if (value < 0 || value > 1e6) {
            throw TableError(column + " " + Text(column) + " is out of range");
        }
        return static_cast<Single>(value);
    }

private:
    const std::map<std::string, std::size_t>& columns_;
    std::vector<std::string> fields_;
};

std::map<std::string, std::size_t> ReadHeader(const std::string& line) {
    const auto names = SplitFields(line);
    std::map<std::string, std::size_t> columns;
    for (std::size_t i = 0; i < names.size(); ++i) {
        columns[names[i]] = i;
    }
    std::vector<std::string> required{
        "material_no",       "material_name", "c_value",          "nominal_in",
        "inner_in",          "outer_in",      "weight_lb_per_ft", "material_cost_per_ft",
        "labor_hours_per_ft"};
    required.insert(required.end(), FittingColumns.begin(), FittingColumns.end());
    for (const auto& name : required) {
        if (columns.count(name) == 0) {
            throw TableError("the header has no column " + name);
        }
    }
    return columns;
}

int WholeNumber(const Row& row, const std::string& column, int low, int high) {
    const double value = row.Number(column);
    if (row.Text(column).empty() || value < low || value > high || value != std::floor(value)) {
        throw TableError(column + " must be a whole number from " + std::to_string(low) + " to " +
                         std::to_string(high));
    }
    return static_cast<int>(value);
}

PipeDiameterRecord ReadSize(const Row& row) {
    PipeDiameterRecord size;
    size.Nominal = row.Value("nominal_in");
    size.Inner = row.Value("inner_in");
    size.Outer = row.Value("outer_in");
    size.MaterialCost = row.Value("material_cost_per_ft");
    size.LaborCost = row.Value("labor_hours_per_ft");
    size.Weight = row.Value("weight_lb_per_ft");
    for (std::size_t kind = 0; kind < FittingColumns.size(); ++kind) {
        size.FitEqLen[kind] = row.Value(FittingColumns[kind]);
    }
    if (!(size.Nominal > 0)) {
        throw TableError("nominal_in must be above 0");
    }
    return size;
}

// The material's name and C value come with its first row and must stay the same after it.
void ReadMaterial(const Row& row, PipeMaterialRecord& material) {
    const std::string& name = row.Text("material_name");
    const int cValue = WholeNumber(row, "c_value", 1, 200);
    if (name.empty() || name.size() > quench::DescriptionLength) {
        throw TableError("material_name must have 1 to 30 characters");
    }
    if (!material.IsDefined()) {
        material.Description = name;
        material.CValue = static_cast<quench::Integer>(cValue);
    } else if (material.Description != name || material.CValue != cValue) {
        throw TableError("material_name and c_value differ from the material's first row");
    }
}

void AddSize(PipeMaterialRecord& material, const PipeDiameterRecord& size) {
    for (std::size_t slot = 0; slot < material.Diameters.size(); ++slot) {
        if (material.Diameters[slot].Nominal == 0) {
            if (slot > 0 && !(material.Diameters[slot - 1].Nominal < size.Nominal)) {
                throw TableError("the sizes of a material must ascend");
            }
            material.Diameters[slot] = size;
            return;
        }
    }
    throw TableError("a material has at most 15 sizes");
}

PipeLibrary ReadTable(std::istream& in) {
    PipeLibrary library;
    std::string line;
    int lineNumber = 1;
    try {
        if (!std::getline(in, line)) {
            throw TableError("the table is empty");
        }
        const auto columns = ReadHeader(line);
        while (std::getline(in, line)) {
            ++lineNumber;
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            if (quench::TrimmedView(line).empty()) {
                continue;
            }
            auto fields = SplitFields(line);
            if (fields.size() != columns.size()) {
                throw TableError("the row has " + std::to_string(fields.size()) + " cells, not " +
                                 std::to_string(columns.size()));
            }
            const Row row(columns, std::move(fields));
            auto& material = library.Material(WholeNumber(row, "material_no", 1, 50));
            ReadMaterial(row, material);
            AddSize(material, ReadSize(row));
        }
    } catch (const TableError& error) {
        throw TableError("line " + std::to_string(lineNumber) + ": " + error.what());
    }
    return library;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_pipe_library TABLE.csv PIPE.DAT\n";
        return 2;
    }
    std::ifstream in(argv[1]);
    if (!in) {
        std::cerr << "make_pipe_library: cannot read " << argv[1] << '\n';
        return 1;
    }
    try {
        const PipeLibrary library = ReadTable(in);
        const auto saved = quench::SavePipeLibrary(library, argv[2]);
        if (!saved.Saved) {
            std::cerr << "make_pipe_library: " << saved.Error << '\n';
            return 1;
        }
    } catch (const TableError& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
