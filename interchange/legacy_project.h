#pragma once

// The project files of the earlier DOS program (".qnd"): records of 80 bytes, numbers scaled
// into whole units (K-factor × 100, elevation × 10, diameter × 1000), fewer fields than the
// model. ConvertFromDos reads such a file into a project, ConvertToDos lays a project out as one.
//
// Record layout (records numbered from 1, record n at byte (n - 1) × 80):
//   1 header, 2-10 texts, 11-14 settings, 15 inflow table, 18 type group bounds,
//   from 80 the node records, then the pipe records (two per pipe in the count).

#include "core/project.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

constexpr int LegacyRecordLength = 80;
constexpr int LegacyFirstNodeRecord = 80;
constexpr std::int16_t LegacyFormatNumber = 501;
constexpr std::int16_t LegacyFormatSecond = 1134;
// Device materials of the old numbering: 81 meter, 82 backflow preventer, 83 alarm device,
// 84 fire pump; 85 was a second meter kind.
constexpr Integer LegacyDeviceOffset = 30;
constexpr Integer LegacyFirstDevice = 81;

namespace legacy_texts {
inline constexpr std::string_view OpenTitle = "Open DOS QUENCH Project File...";
inline constexpr std::string_view OpenFilter = "DOS QUENCH File (*.qnd)";
inline constexpr std::string_view OpenPattern = "*.qnd";
inline constexpr std::string_view SaveNewTitle =
    "Save DOS QUENCH Project file as Windows QUENCH Project File...";
inline constexpr std::string_view SaveNewFilter = "QUENCH File (*.qnw)";
inline constexpr std::string_view ConvertingCaption = "Converting...";
inline constexpr std::string_view ConvertingLabel =
    "Converting DOS QUENCH Project File to Windows QUENCH Project File";
inline constexpr std::string_view ExportTitle =
    "Save Windows QUENCH Project File as DOS QUENCH Project file...";
inline constexpr std::string_view ExportFilter = "QUENCH for DOS File (*.qnd)";
inline constexpr std::string_view ExportExtension = ".qnd";
} // namespace legacy_texts

// Resets the project and fills it from the bytes of a legacy file. A short, damaged or hostile
// file is read as far as it goes: a record or field past the end reads as zeros, counts are
// taken within the project's capacity (the records beyond are skipped so that the pipes stay in
// step with the node count of the file), and nothing loops on the file's numbers.
void ConvertFromDos(Project& project, std::span<const std::uint8_t> bytes);

// The bytes of the legacy file for the project: one node record per distinct node number of the
// pipe rows (inactive rows included, data from the first row that names the node), one pipe
// record per row. Fields without an old place are left out; texts are cut to the old widths.
std::vector<std::uint8_t> ConvertToDos(const Project& project);

// The file forms: false when the file cannot be read or written; error says why. The write goes
// through a temporary file and a rename.
bool ReadDosFile(Project& project, const std::filesystem::path& file, std::string* error = nullptr);
bool WriteDosFile(const Project& project, const std::filesystem::path& file,
                  std::string* error = nullptr);

} // namespace quench
