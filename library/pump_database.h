#pragma once

// The fire pump database "Pump.Dat": named pump curves shared by all projects, in records of 130
// bytes (flows Double[6] at 0, pressures Double[6] at 48, FeetOfHead Integer at 96, Name Text[32]
// at 98), little-endian and packed. The number of pumps is the file's length divided by 130; a
// trailing partial record is ignored. Pumps are numbered from 1 in file order.
//
// Every write makes the whole new file as "Pump.tmp" beside the database and renames it into
// place, so a failed write leaves the old file as it was.

#include "core/types.h"
#include "library/pump_curve.h"

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

constexpr int PumpRecordLength = 130;
constexpr int PumpRecordValues = 6; // slots 0 to 4 hold the points, slot 5 is not used
constexpr int PumpNameLength = 32;
constexpr const char* PumpDatabaseTemporaryName = "Pump.tmp";

struct PumpRecord {
    std::array<Double, PumpRecordValues> Flow{};     // gpm
    std::array<Double, PumpRecordValues> Pressure{}; // psi, or feet of head
    Integer FeetOfHead = 0;                          // nonzero: the pressures are feet of head
    std::string Name;                                // Text[32], held without its padding
};

// A named pump with no points: its values are the unused mark -10000.
PumpRecord BlankPumpRecord(std::string_view name);

// A value of a record that a curve field can show. The unused mark, damaged numbers and the pair
// (0, 0), which is what a record of zeros holds, are not shown.
bool IsShownFlow(const PumpRecord& record, int slot);
bool IsShownPressure(const PumpRecord& record, int slot);

// The slots 0 to 4 whose flow and pressure are both shown, and those points in slot order.
CurveSlotArray PumpRecordSlots(const PumpRecord& record);
std::vector<CurvePoint> PumpRecordPoints(const PumpRecord& record);

// The record as its 130 bytes, and back. The name is cut to 32 characters and padded with blanks.
std::array<unsigned char, PumpRecordLength> EncodePumpRecord(const PumpRecord& record);
PumpRecord DecodePumpRecord(const unsigned char* bytes);

// Every whole record of the file; a missing or unreadable file gives an empty list.
std::vector<PumpRecord> LoadPumpDatabase(const std::filesystem::path& file);

// The list as the whole file.
bool SavePumpDatabase(const std::filesystem::path& file, const std::vector<PumpRecord>& pumps,
                      std::string* error = nullptr);

// Pump `number` (1 to the count) rewritten; every other byte of the file stays as it was.
bool SavePumpRecord(const std::filesystem::path& file, int number, const PumpRecord& record,
                    std::string* error = nullptr);

// A new record after the last whole one (a missing file is made); its number is the new count.
bool AppendPumpRecord(const std::filesystem::path& file, const PumpRecord& record,
                      std::string* error = nullptr);

// The file without pump `number`; the pumps after it move up by one.
bool DeletePumpRecord(const std::filesystem::path& file, int number, std::string* error = nullptr);

} // namespace quench
