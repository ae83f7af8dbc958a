#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::DataDirectory;
using testing::ScratchDirectory;
using testing::SourceDirectory;

using Bytes = std::vector<char>;

Bytes ReadBytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void WriteBytes(const std::filesystem::path& file, const Bytes& bytes) {
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

float SingleAt(const Bytes& bytes, std::size_t offset) {
    float value = 0;
    std::memcpy(&value, bytes.data() + offset, 4); // the test machine is little-endian
    return value;
}

// The source table read independently of the build tool: one map of column to cell per row.
std::vector<std::map<std::string, std::string>> ReadSourceTable() {
    std::ifstream in(SourceDirectory() / "data" / "pipes" / "pipe_library.csv");
    std::vector<std::string> header;
    std::vector<std::map<std::string, std::string>> rows;
    std::string line;
    while (std::getline(in, line)) {
        std::vector<std::string> cells;
        std::stringstream stream(line);
        std::string cell;
        while (std::getline(stream, cell, ',')) {
            cells.push_back(cell);
        }
        if (line.back() == ',') {
            cells.emplace_back();
        }
        if (header.empty()) {
            header = cells;
            continue;
        }
        std::map<std::string, std::string> row;
        for (std::size_t i = 0; i < header.size(); ++i) {
            row[header[i]] = cells.at(i);
        }
        rows.push_back(row);
    }
    return rows;
}

float Cell(const std::map<std::string, std::string>& row, const std::string& column) {
    const std::string& text = row.at(column);
    return text.empty() ? 0.0f : std::stof(text);
}

TEST(PipeLibraryFile, DefaultLibraryHoldsEveryFigureOfTheSourceTable) {
    const auto file = PipeLibraryPath(DataDirectory());
    ASSERT_EQ(std::filesystem::file_size(file), 125000u);
    const PipeLibrary library = LoadPipeLibrary(file);
    ASSERT_TRUE(library.FileFound);

    const auto rows = ReadSourceTable();
    ASSERT_EQ(rows.size(), 318u);
    std::map<int, int> sizesOf;
    const char* fittings[] = {"eq_F_ft", "eq_E_ft", "eq_L_ft", "eq_T_ft",
                              "eq_B_ft", "eq_G_ft", "eq_C_ft"};
    for (const auto& row : rows) {
        const int number = std::stoi(row.at("material_no"));
        const int slot = sizesOf[number]++;
        const PipeMaterialRecord& material = library.Material(number);
        SCOPED_TRACE(row.at("material_name") + " " + row.at("nominal_in"));
        EXPECT_EQ(material.Description, row.at("material_name"));
        EXPECT_EQ(material.CValue, std::stoi(row.at("c_value")));
        const PipeDiameterRecord& size = material.Diameters.at(slot);
        EXPECT_EQ(size.Nominal, Cell(row, "nominal_in"));
        EXPECT_EQ(size.Inner, Cell(row, "inner_in"));
        EXPECT_EQ(size.Outer, Cell(row, "outer_in"));
        EXPECT_EQ(size.Weight, Cell(row, "weight_lb_per_ft"));
        EXPECT_EQ(size.MaterialCost, Cell(row, "material_cost_per_ft"));
        EXPECT_EQ(size.LaborCost, Cell(row, "labor_hours_per_ft"));
        for (int kind = 0; kind < 7; ++kind) {
            EXPECT_EQ(size.FitEqLen[kind], Cell(row, fittings[kind])) << fittings[kind];
            EXPECT_EQ(size.FitCost[kind], 0.0f);
            EXPECT_EQ(size.FitWeight[kind], 0.0f);
        }
    }
    ASSERT_EQ(sizesOf.size(), 26u);
    for (int number = 1; number <= LibraryMaterials; ++number) {
        const auto& material = library.Material(number);
        EXPECT_EQ(material.IsDefined(), number <= 26) << number;
        for (int slot = sizesOf[number]; slot < DiametersPerMaterial; ++slot) {
            EXPECT_EQ(material.Diameters[slot], PipeDiameterRecord{}) << number << " " << slot;
        }
    }
    EXPECT_EQ(library.Material(4).Description, "Sch 10 Steel Wet");
}

TEST(PipeLibraryFile, RecordLayoutOnDisk) {
    const Bytes bytes = ReadBytes(PipeLibraryPath(DataDirectory()));
    ASSERT_EQ(bytes.size(), 125000u);
    const std::size_t record = 3 * 2500; // material 4
    EXPECT_EQ(std::string(bytes.data() + record, 30), "Sch 10 Steel Wet              ");
    EXPECT_EQ(static_cast<unsigned char>(bytes[record + 30]), 120);
    EXPECT_EQ(bytes[record + 31], 0);
    EXPECT_EQ(SingleAt(bytes, record + 32), 0.75f);                    // first size, nominal
    EXPECT_EQ(SingleAt(bytes, record + 32 + 4), 0.884f);               // its inside diameter
    EXPECT_EQ(SingleAt(bytes, record + 32 + 20), 0.86f);               // its weight
    EXPECT_EQ(SingleAt(bytes, record + 32 + 136), 1.0f);               // second size
    EXPECT_EQ(SingleAt(bytes, record + 32 + 136 + 24 + 3 * 4), 6.22f); // its tee
    EXPECT_EQ(SingleAt(bytes, record + 32 + 136 + 24 + 6 * 4), 6.22f); // its check valve
    for (std::size_t offset = 2072; offset < 2500; ++offset) {
        ASSERT_EQ(bytes[record + offset], 0) << offset;
    }
    // A free slot is a blank name and zeros.
    const std::size_t free = 29 * 2500;
    EXPECT_EQ(std::string(bytes.data() + free, 30), std::string(30, ' '));
    EXPECT_EQ(SingleAt(bytes, free + 32), 0.0f);
}

TEST(PipeLibraryFile, MissingShortAndDamagedFilesNeverFail) {
    ScratchDirectory scratch;
    const PipeLibrary missing = LoadPipeLibrary(scratch / "PIPE.DAT");
    EXPECT_FALSE(missing.FileFound);
    EXPECT_EQ(missing.File, scratch / "PIPE.DAT");
    for (const auto& material : missing.Materials) {
        EXPECT_FALSE(material.IsDefined());
    }
    EXPECT_FALSE(LoadPipeLibrary(scratch.Path()).FileFound); // a directory is no library

    // Two and a half records: what is there reads, the rest is blank.
    Bytes bytes = ReadBytes(PipeLibraryPath(DataDirectory()));
    bytes.resize(2 * 2500 + 100);
    WriteBytes(scratch / "short.dat", bytes);
    const PipeLibrary shortLibrary = LoadPipeLibrary(scratch / "short.dat");
    EXPECT_TRUE(shortLibrary.FileFound);
    EXPECT_EQ(shortLibrary.Material(2).Description, "Sch 40 Steel Dry");
    EXPECT_EQ(shortLibrary.Material(2).Diameters[14].Nominal, 12.0f);
    EXPECT_EQ(shortLibrary.Material(3).Description, "Sch 10 Steel Dry");
    EXPECT_EQ(shortLibrary.Material(3).Diameters[0].Nominal, 0.75f);
    EXPECT_EQ(shortLibrary.Material(3).Diameters[1].Nominal, 0.0f);
    EXPECT_FALSE(shortLibrary.Material(4).IsDefined());
    WriteBytes(scratch / "empty.dat", {});
    EXPECT_TRUE(LoadPipeLibrary(scratch / "empty.dat").FileFound);

    // Random bytes, with NaNs and infinities planted: every number reads finite.
    std::mt19937 random(7);
    Bytes garbage(125000);
    for (auto& byte : garbage) {
        byte = static_cast<char>(random());
    }
    const float nan = std::nanf("");
    const float infinity = INFINITY;
    std::memcpy(garbage.data() + 32, &nan, 4);
    std::memcpy(garbage.data() + 36, &infinity, 4);
    garbage[0] = '\0';
    WriteBytes(scratch / "garbage.dat", garbage);
    const PipeLibrary damaged = LoadPipeLibrary(scratch / "garbage.dat");
    EXPECT_TRUE(damaged.FileFound);
    EXPECT_EQ(damaged.Material(1).Diameters[0].Nominal, 0.0f);
    EXPECT_EQ(damaged.Material(1).Diameters[0].Inner, 0.0f);
    for (const auto& material : damaged.Materials) {
        for (const auto& size : material.Diameters) {
            ASSERT_TRUE(std::isfinite(size.Nominal) && std::isfinite(size.Inner));
            for (float length : size.FitEqLen) {
                ASSERT_TRUE(std::isfinite(length));
            }
        }
    }
}

TEST(PipeLibraryFile, SaveAndLoadRoundTripKeepsEveryByteThatMeansSomething) {
    ScratchDirectory scratch;
    PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(DataDirectory()));
    PipeMaterialRecord& material = library.Material(27);
    material.Description = "A name of exactly thirty chars";
    material.CValue = -3;
    material.Diameters[14].Nominal = 99.5f;
    material.Diameters[14].FitWeight[6] = 1.25e-7f;
    for (int i = 0; i < LibraryReservedBytes; ++i) {
        material.Reserved[i] = static_cast<std::uint8_t>(200 + i);
    }
    library.Material(50).Description = "Last";

    const auto file = scratch / "PIPE.DAT";
    WriteBytes(file, Bytes(10, 'x')); // an old file is replaced whole
    const auto saved = SavePipeLibrary(library, file);
    ASSERT_TRUE(saved.Saved) << saved.Error;
    EXPECT_EQ(std::filesystem::file_size(file), 125000u);
    const PipeLibrary reread = LoadPipeLibrary(file);
    EXPECT_EQ(reread.Materials, library.Materials);
    EXPECT_EQ(reread.Material(27).Reserved[29], 229);
    // Nothing but the library is left in the directory.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.Path()),
                            std::filesystem::directory_iterator()),
              1);

    // A name longer than thirty characters is cut, as the field is.
    library.Material(27).Description = std::string(40, 'n');
    ASSERT_TRUE(SavePipeLibrary(library, file).Saved);
    EXPECT_EQ(LoadPipeLibrary(file).Material(27).Description, std::string(30, 'n'));
}

TEST(PipeLibraryFile, FailedSaveLeavesTheOldFileAndNoLeftovers) {
    ScratchDirectory scratch;
    const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(DataDirectory()));
    // A folder that cannot be made: its name is taken by a file.
    WriteBytes(scratch / "taken", Bytes(3, 'x'));
    const auto nowhere = SavePipeLibrary(library, PipeLibraryPath(scratch / "taken"));
    EXPECT_FALSE(nowhere.Saved);
    EXPECT_FALSE(nowhere.Error.empty());
    EXPECT_EQ(ReadBytes(scratch / "taken"), Bytes(3, 'x'));

    // The name is taken by a folder that holds a file: the rename fails and the folder stays.
    std::filesystem::create_directories(scratch / "PIPE.DAT" / "inside");
    const auto blocked = SavePipeLibrary(library, scratch / "PIPE.DAT");
    EXPECT_FALSE(blocked.Saved);
    EXPECT_NE(blocked.Error.find("PIPE.DAT"), std::string::npos);
    EXPECT_TRUE(std::filesystem::is_directory(scratch / "PIPE.DAT" / "inside"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.Path()),
                            std::filesystem::directory_iterator()),
              2);
}

} // namespace
} // namespace quench
