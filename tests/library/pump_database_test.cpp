#include "core/text.h"
#include "library/pump_curve.h"
#include "library/pump_database.h"
#include "tests/support/scratch_directory.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::DataDirectory;
using testing::ScratchDirectory;
using testing::SourceDirectory;

std::string ReadAll(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteAll(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

double DoubleAt(const std::string& bytes, std::size_t offset) {
    double value = 0;
    std::memcpy(&value, bytes.data() + offset, 8); // the test machine is little-endian
    return value;
}

PumpRecord SamplePump(const std::string& name, double scale) {
    PumpRecord pump = BlankPumpRecord(name);
    const double flows[] = {0, 250, 500, 750, 875};
    const double pressures[] = {118, 112, 100, 78, 62};
    for (std::size_t slot = 0; slot < 5; ++slot) {
        pump.Flow[slot] = flows[slot] * scale;
        pump.Pressure[slot] = pressures[slot];
    }
    return pump;
}

TEST(PumpDatabase, RecordsAre130BytesInTheirLayoutAndReadBack) {
    ScratchDirectory scratch;
    const auto file = scratch / "Pump.Dat";
    PumpRecord feet = SamplePump("IN FEET", 2);
    feet.FeetOfHead = 1;
    const std::vector<PumpRecord> pumps = {SamplePump("FIRST PUMP", 1), feet};
    ASSERT_TRUE(SavePumpDatabase(file, pumps));

    const std::string bytes = ReadAll(file);
    ASSERT_EQ(bytes.size(), 260u);
    EXPECT_EQ(DoubleAt(bytes, 8), 250.0);       // Flow[1]
    EXPECT_EQ(DoubleAt(bytes, 48 + 16), 100.0); // Pressure[2]
    EXPECT_EQ(DoubleAt(bytes, 40), 0.0);        // Flow[5] is not used
    EXPECT_EQ(bytes.substr(98, 32), FixedWidth("FIRST PUMP", 32));
    EXPECT_EQ(bytes[130 + 96], 1); // FeetOfHead, low byte first
    EXPECT_EQ(bytes[130 + 97], 0);
    EXPECT_EQ(DoubleAt(bytes, 130 + 32), 1750.0); // the second pump's Flow[4]
    EXPECT_FALSE(std::filesystem::exists(scratch / "Pump.tmp"));

    const auto read = LoadPumpDatabase(file);
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].Name, "FIRST PUMP");
    EXPECT_EQ(read[1].Name, "IN FEET");
    EXPECT_EQ(read[1].FeetOfHead, 1);
    EXPECT_EQ(read[0].Flow, pumps[0].Flow);
    EXPECT_EQ(read[1].Pressure, pumps[1].Pressure);

    // A name longer than 32 characters is cut.
    ASSERT_TRUE(SavePumpDatabase(file, {BlankPumpRecord(std::string(40, 'N'))}));
    EXPECT_EQ(LoadPumpDatabase(file).at(0).Name, std::string(32, 'N'));
}

TEST(PumpDatabase, AMissingFileIsAnEmptyListAndAPartialRecordIsIgnored) {
    ScratchDirectory scratch;
    EXPECT_TRUE(LoadPumpDatabase(scratch / "Pump.Dat").empty());
    EXPECT_TRUE(LoadPumpDatabase(scratch.Path()).empty()); // a directory is no database

    const auto file = scratch / "Pump.Dat";
    ASSERT_TRUE(SavePumpDatabase(file, {SamplePump("ONE", 1)}));
    WriteAll(file, ReadAll(file) + std::string(129, 'x'));
    ASSERT_EQ(LoadPumpDatabase(file).size(), 1u);

    // A pump added after a partial record takes the place of the partial one.
    ASSERT_TRUE(AppendPumpRecord(file, BlankPumpRecord("TWO")));
    EXPECT_EQ(std::filesystem::file_size(file), 260u);
    const auto pumps = LoadPumpDatabase(file);
    ASSERT_EQ(pumps.size(), 2u);
    EXPECT_EQ(pumps[1].Name, "TWO");
    EXPECT_TRUE(PumpRecordPoints(pumps[1]).empty());

    // A missing file gets its first pump.
    const auto fresh = scratch / "fresh" / "Pump.Dat";
    std::filesystem::create_directory(scratch / "fresh");
    ASSERT_TRUE(AppendPumpRecord(fresh, BlankPumpRecord("FIRST")));
    EXPECT_EQ(LoadPumpDatabase(fresh).size(), 1u);
}

TEST(PumpDatabase, DamagedValuesReadWithoutHarmAndShowNoPoint) {
    ScratchDirectory scratch;
    const auto file = scratch / "Pump.Dat";
    std::string bytes(130 * 3, '\xff'); // NaN everywhere, a name of 0xFF characters
    for (std::size_t i = 130; i < 260; ++i) {
        bytes[i] = static_cast<char>((i * 37) % 256);
    }
    std::string record = ReadAll((SavePumpDatabase(file, {SamplePump("GOOD", 1)}), file));
    const double huge = 1e300;
    std::memcpy(record.data() + 8, &huge, 8); // Flow[1]
    record.replace(98 + 4, 1, std::string(1, '\0'));
    WriteAll(file, bytes + record);

    const auto pumps = LoadPumpDatabase(file);
    ASSERT_EQ(pumps.size(), 4u);
    EXPECT_TRUE(PumpRecordPoints(pumps[0]).empty());
    EXPECT_EQ(pumps[3].Name, "GOOD"); // a name ended by a zero byte
    EXPECT_FALSE(IsShownFlow(pumps[3], 1));
    EXPECT_TRUE(IsShownPressure(pumps[3], 1));
    EXPECT_FALSE(IsShownFlow(pumps[3], 5)); // slot 5 holds no point
    EXPECT_FALSE(IsShownFlow(pumps[3], -1));
    const auto points = PumpRecordPoints(pumps[3]);
    EXPECT_EQ(points.size(), 4u);
    for (const auto& pump : pumps) {
        const CurveFit fit = FitPumpCurve(PumpRecordPoints(pump));
        for (double coefficient : fit.Coefficients) {
            EXPECT_TRUE(std::isfinite(coefficient));
        }
    }

    // A record of zeros, as another writer leaves a blank pump, has no points either.
    WriteAll(file, std::string(130, '\0'));
    EXPECT_TRUE(PumpRecordPoints(LoadPumpDatabase(file).at(0)).empty());
}

TEST(PumpDatabase, SavingOneRecordLeavesEveryOtherByteAsItWas) {
    ScratchDirectory scratch;
    const auto file = scratch / "Pump.Dat";
    ASSERT_TRUE(SavePumpDatabase(file, {SamplePump("A", 1), SamplePump("B", 2)}));
    std::string before = ReadAll(file);
    before[40] = '\x7f'; // an odd byte in the unused slot of pump 1
    before += "tail";
    WriteAll(file, before);

    PumpRecord changed = SamplePump("B CHANGED", 3);
    ASSERT_TRUE(SavePumpRecord(file, 2, changed));
    const std::string after = ReadAll(file);
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.substr(0, 130), before.substr(0, 130));
    EXPECT_EQ(after.substr(260), "tail");
    EXPECT_EQ(LoadPumpDatabase(file).at(1).Name, "B CHANGED");

    std::string error;
    EXPECT_FALSE(SavePumpRecord(file, 3, changed, &error));
    EXPECT_EQ(error, "there is no pump 3 in the database (2 pumps)");
    EXPECT_FALSE(SavePumpRecord(file, 0, changed));
    EXPECT_FALSE(SavePumpRecord(scratch / "none.dat", 1, changed));
    EXPECT_EQ(ReadAll(file), after);
}

TEST(PumpDatabase, DeletingRewritesTheFileThroughPumpTmp) {
    ScratchDirectory scratch;
    const auto file = scratch / "Pump.Dat";
    ASSERT_TRUE(
        SavePumpDatabase(file, {SamplePump("A", 1), SamplePump("B", 2), SamplePump("C", 3)}));
    ASSERT_TRUE(DeletePumpRecord(file, 2));
    auto pumps = LoadPumpDatabase(file);
    ASSERT_EQ(pumps.size(), 2u);
    EXPECT_EQ(pumps[0].Name, "A");
    EXPECT_EQ(pumps[1].Name, "C");
    EXPECT_EQ(pumps[1].Flow[1], 750);
    EXPECT_FALSE(std::filesystem::exists(scratch / "Pump.tmp"));
    EXPECT_FALSE(DeletePumpRecord(file, 3));

    // With "Pump.tmp" blocked the delete fails and the database is untouched.
    const std::string before = ReadAll(file);
    std::filesystem::create_directory(scratch / "Pump.tmp");
    std::string error;
    EXPECT_FALSE(DeletePumpRecord(file, 1, &error));
    EXPECT_NE(error.find("Pump.tmp"), std::string::npos);
    EXPECT_EQ(ReadAll(file), before);
    EXPECT_FALSE(AppendPumpRecord(file, BlankPumpRecord("D")));
    EXPECT_EQ(ReadAll(file), before);

    std::filesystem::remove(scratch / "Pump.tmp");
    ASSERT_TRUE(DeletePumpRecord(file, 1));
    ASSERT_TRUE(DeletePumpRecord(file, 1));
    EXPECT_EQ(std::filesystem::file_size(file), 0u);
    EXPECT_TRUE(LoadPumpDatabase(file).empty());
}

// The source table: number, name, feet-of-head flag, five pairs of flow and pressure.
std::vector<std::vector<std::string>> SourceTable() {
    std::ifstream in(SourceDirectory() / "data" / "pumps" / "fire_pumps.csv");
    std::vector<std::vector<std::string>> rows;
    std::string line;
    std::getline(in, line);
    while (std::getline(in, line)) {
        std::vector<std::string> fields;
        std::stringstream stream(line);
        for (std::string field; std::getline(stream, field, ',');) {
            fields.push_back(field);
        }
        rows.push_back(fields);
    }
    return rows;
}

TEST(PumpDatabase, TheShippedFileHoldsEveryPumpOfTheSourceTable) {
    const auto file = DataDirectory() / "Pump.Dat";
    ASSERT_TRUE(std::filesystem::exists(file)) << file << " is built with the program";
    const auto rows = SourceTable();
    ASSERT_EQ(rows.size(), 8u);
    EXPECT_EQ(std::filesystem::file_size(file), 8u * 130u);
    const auto pumps = LoadPumpDatabase(file);
    ASSERT_EQ(pumps.size(), rows.size());
    for (std::size_t number = 0; number < rows.size(); ++number) {
        const auto& row = rows[number];
        const auto& pump = pumps[number];
        ASSERT_EQ(row.size(), 13u);
        EXPECT_EQ(pump.Name, row[1]);
        EXPECT_EQ(pump.Name.rfind("GENERIC EXAMPLE ", 0), 0u);
        EXPECT_LE(pump.Name.size(), 32u);
        EXPECT_EQ(pump.FeetOfHead, 0);
        for (std::size_t slot = 0; slot < 5; ++slot) {
            EXPECT_EQ(pump.Flow[slot], std::stod(row[3 + 2 * slot]));
            EXPECT_EQ(pump.Pressure[slot], std::stod(row[4 + 2 * slot]));
        }
        const auto points = PumpRecordPoints(pump);
        ASSERT_EQ(points.size(), 5u);
        const CurveFit fit = FitPumpCurve(points);
        ASSERT_EQ(fit.Status, CurveFitStatus::Fitted) << pump.Name;
        for (const auto& point : points) {
            EXPECT_NEAR(EvaluatePumpCurve(fit.Coefficients, point.Flow), point.Pressure,
                        1e-9 * point.Pressure);
        }
    }
    // The first pump, from the reference table: 250 gpm at 100 psi, churn 126 psi.
    EXPECT_EQ(pumps[0].Name, "GENERIC EXAMPLE 250gpm @ 100psi");
    EXPECT_EQ(pumps[0].Pressure[0], 126.0);
    EXPECT_EQ(pumps[0].Flow[4], 438.0);
}

} // namespace
} // namespace quench
