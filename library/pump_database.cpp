#include "library/pump_database.h"

#include "core/text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

namespace quench {

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t FlowOffset = 0;
constexpr std::size_t PressureOffset = 48;
constexpr std::size_t FeetOfHeadOffset = 96;
constexpr std::size_t NameOffset = 98;
constexpr auto RecordLength = static_cast<std::size_t>(PumpRecordLength);

void PutDouble(unsigned char* at, double value) {
    auto bits = std::bit_cast<std::uint64_t>(value);
    for (int i = 0; i < 8; ++i, bits >>= 8) {
        at[i] = static_cast<unsigned char>(bits & 0xFF);
    }
}

double GetDouble(const unsigned char* at) {
    std::uint64_t bits = 0;
    for (int i = 7; i >= 0; --i) {
        bits = (bits << 8) | at[i];
    }
    return std::bit_cast<double>(bits);
}

void PutInteger(unsigned char* at, Integer value) {
    const auto bits = static_cast<std::uint16_t>(value);
    at[0] = static_cast<unsigned char>(bits & 0xFF);
    at[1] = static_cast<unsigned char>(bits >> 8);
}

Integer GetInteger(const unsigned char* at) {
    return static_cast<Integer>(static_cast<std::uint16_t>(at[0] | (at[1] << 8)));
}

std::optional<Bytes> ReadBytes(const std::filesystem::path& file) {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(file, failure)) {
        return std::nullopt;
    }
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    try {
        Bytes bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        return bytes;
    } catch (const std::exception&) { // a read error of the device
        return std::nullopt;
    }
}

void SetError(std::string* error, const std::string& text) {
    if (error != nullptr) {
        *error = text;
    }
}

std::string PathText(const std::filesystem::path& file) {
    return "\"" + file.string() + "\"";
}

// Only a file of our own making is removed, never something else of that name.
void RemoveTemporary(const std::filesystem::path& temporary) {
    std::error_code ignored;
    if (std::filesystem::is_regular_file(temporary, ignored)) {
        std::filesystem::remove(temporary, ignored);
    }
}

// The whole new file as "Pump.tmp" beside the database, then renamed over it.
bool ReplaceFile(const std::filesystem::path& file, const Bytes& bytes, std::string* error) {
    const auto temporary = file.parent_path() / PumpDatabaseTemporaryName;
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    if (!out) {
        SetError(error, "cannot write " + PathText(temporary));
        return false;
    }
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
        RemoveTemporary(temporary);
        SetError(error, "cannot write " + PathText(temporary));
        return false;
    }
    std::error_code failure;
    std::filesystem::rename(temporary, file, failure);
    if (failure) {
        RemoveTemporary(temporary);
        SetError(error, "cannot replace " + PathText(file) + ": " + failure.message());
        return false;
    }
    return true;
}

// The bytes of the whole records of a file; a missing file has none.
std::optional<Bytes> WholeRecords(const std::filesystem::path& file, std::string* error) {
    std::error_code missing;
    if (!std::filesystem::exists(file, missing)) {
        return Bytes{};
    }
    auto bytes = ReadBytes(file);
    if (!bytes) {
        SetError(error, "cannot read " + PathText(file));
        return std::nullopt;
    }
    bytes->resize(bytes->size() / RecordLength * RecordLength);
    return bytes;
}

bool CheckNumber(int number, std::size_t bytes, std::string* error) {
    const auto count = bytes / RecordLength;
    if (number < 1 || static_cast<std::size_t>(number) > count) {
        SetError(error, "there is no pump " + std::to_string(number) + " in the database (" +
                            std::to_string(count) + " pumps)");
        return false;
    }
    return true;
}

bool IsBlankPair(const PumpRecord& record, std::size_t slot) {
    return record.Flow[slot] == 0 && record.Pressure[slot] == 0;
}

bool IsShown(const PumpRecord& record, int slot,
             const std::array<Double, PumpRecordValues>& values) {
    if (slot < 0 || slot >= MaximumCurvePoints) {
        return false;
    }
    const auto at = static_cast<std::size_t>(slot);
    return IsCurveValue(values[at]) && !IsBlankPair(record, at);
}

} // namespace

PumpRecord BlankPumpRecord(std::string_view name) {
    PumpRecord record;
    for (std::size_t slot = 0; slot < MaximumCurvePoints; ++slot) {
        record.Flow[slot] = UnusedPumpPoint;
        record.Pressure[slot] = UnusedPumpPoint;
    }
    record.Name = TrimRight(name.substr(0, PumpNameLength));
    return record;
}

bool IsShownFlow(const PumpRecord& record, int slot) {
    return IsShown(record, slot, record.Flow);
}

bool IsShownPressure(const PumpRecord& record, int slot) {
    return IsShown(record, slot, record.Pressure);
}

CurveSlotArray PumpRecordSlots(const PumpRecord& record) {
    CurveSlotArray slots{};
    for (std::size_t slot = 0; slot < MaximumCurvePoints; ++slot) {
        if (IsCurvePoint(record.Flow[slot], record.Pressure[slot])) {
            slots[slot] = CurveSlot{true, CurvePoint{record.Flow[slot], record.Pressure[slot]}};
        }
    }
    return slots;
}

std::vector<CurvePoint> PumpRecordPoints(const PumpRecord& record) {
    std::vector<CurvePoint> points;
    for (const CurveSlot& slot : PumpRecordSlots(record)) {
        if (slot.Used) {
            points.push_back(slot.Point);
        }
    }
    return points;
}

std::array<unsigned char, PumpRecordLength> EncodePumpRecord(const PumpRecord& record) {
    std::array<unsigned char, PumpRecordLength> bytes{};
    for (std::size_t slot = 0; slot < PumpRecordValues; ++slot) {
        PutDouble(bytes.data() + FlowOffset + 8 * slot, record.Flow[slot]);
        PutDouble(bytes.data() + PressureOffset + 8 * slot, record.Pressure[slot]);
    }
    PutInteger(bytes.data() + FeetOfHeadOffset, record.FeetOfHead);
    const std::string name = FixedWidth(record.Name, PumpNameLength);
    std::memcpy(bytes.data() + NameOffset, name.data(), PumpNameLength);
    return bytes;
}

PumpRecord DecodePumpRecord(const unsigned char* bytes) {
    PumpRecord record;
    for (std::size_t slot = 0; slot < PumpRecordValues; ++slot) {
        record.Flow[slot] = GetDouble(bytes + FlowOffset + 8 * slot);
        record.Pressure[slot] = GetDouble(bytes + PressureOffset + 8 * slot);
    }
    record.FeetOfHead = GetInteger(bytes + FeetOfHeadOffset);
    std::string name(reinterpret_cast<const char*>(bytes + NameOffset), PumpNameLength);
    name = name.substr(0, name.find('\0')); // a name ended C-style by another writer
    record.Name = TrimRight(name);
    return record;
}

std::vector<PumpRecord> LoadPumpDatabase(const std::filesystem::path& file) {
    std::vector<PumpRecord> pumps;
    const auto bytes = ReadBytes(file);
    if (!bytes) {
        return pumps;
    }
    const std::size_t count = bytes->size() / RecordLength;
    pumps.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        pumps.push_back(DecodePumpRecord(bytes->data() + number * RecordLength));
    }
    return pumps;
}

bool SavePumpDatabase(const std::filesystem::path& file, const std::vector<PumpRecord>& pumps,
                      std::string* error) {
    Bytes bytes;
    bytes.reserve(pumps.size() * RecordLength);
    for (const PumpRecord& pump : pumps) {
        const auto record = EncodePumpRecord(pump);
        bytes.insert(bytes.end(), record.begin(), record.end());
    }
    return ReplaceFile(file, bytes, error);
}

bool SavePumpRecord(const std::filesystem::path& file, int number, const PumpRecord& record,
                    std::string* error) {
    auto bytes = ReadBytes(file);
    if (!bytes) {
        SetError(error, "cannot read " + PathText(file));
        return false;
    }
    if (!CheckNumber(number, bytes->size(), error)) {
        return false;
    }
    const auto encoded = EncodePumpRecord(record);
    std::copy(encoded.begin(), encoded.end(),
              bytes->begin() + static_cast<std::ptrdiff_t>((number - 1) * RecordLength));
    return ReplaceFile(file, *bytes, error);
}

bool AppendPumpRecord(const std::filesystem::path& file, const PumpRecord& record,
                      std::string* error) {
    auto bytes = WholeRecords(file, error);
    if (!bytes) {
        return false;
    }
    const auto encoded = EncodePumpRecord(record);
    bytes->insert(bytes->end(), encoded.begin(), encoded.end());
    return ReplaceFile(file, *bytes, error);
}

bool DeletePumpRecord(const std::filesystem::path& file, int number, std::string* error) {
    auto bytes = WholeRecords(file, error);
    if (!bytes) {
        return false;
    }
    if (!CheckNumber(number, bytes->size(), error)) {
        return false;
    }
    const auto first = bytes->begin() + static_cast<std::ptrdiff_t>((number - 1) * RecordLength);
    bytes->erase(first, first + static_cast<std::ptrdiff_t>(RecordLength));
    return ReplaceFile(file, *bytes, error);
}

} // namespace quench
