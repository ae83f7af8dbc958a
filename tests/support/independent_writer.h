#pragma once

// A second, independent implementation of the project file layout, for the tests: it lays each
// field at the byte offset that the format's tables give, with code of its own (it shares only
// the model with the program). Files it lays must read back field for field, and the program's
// writer must lay the very same bytes.
//
// It also fills a model with a distinct value in every field, so that a field read into the
// wrong place, or not read at all, shows.

#include "core/project.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace quench::testing {

using FileBytes = std::vector<std::uint8_t>;

constexpr int RecordSize = 1000;

// One record: 1000 blanks with fields put at offsets. A field that runs past the end of the
// record is cut at the end, as a damaged file would have it.
class LaidRecord {
public:
    LaidRecord() { Bytes.fill(' '); }

    void PutInteger(int offset, std::int16_t value);
    void PutLong(int offset, std::int32_t value);
    void PutSingle(int offset, float value);
    void PutDouble(int offset, double value);
    void PutText(int offset, int width, const std::string& text);
    // The 2-byte length and the characters; returns the offset after them.
    int PutString(int offset, const std::string& text);
    void PutRaw(int offset, const void* data, int size);

    std::array<std::uint8_t, RecordSize> Bytes{};
};

// Which of the records that later formats added at the end are laid.
struct LaidExtensions {
    bool DeviceNames = true;  // format above 60111
    bool InputChanged = true; // format above 60117
};

// The extensions that a program writing the given format lays.
LaidExtensions ExtensionsOfFormat(std::int32_t format);

// The whole file of the model, record after record; the tables with rows 1 to their counts.
FileBytes LayProjectFile(const Project& project, LaidExtensions extensions = {});

// The single records, for tests that build a file by hand.
LaidRecord LayProjectData(const ProjectData& data);
LaidRecord LaySystemData(const SystemData& data);
LaidRecord LayPipeRecord(const PipeRecord& row);
LaidRecord LayCalculationData(const CalculationData& data);
LaidRecord LayInteger(std::int16_t value);

// Fills every field that the file holds with a value of its own. The tables get the given
// numbers of rows; rows beyond stay as a reset leaves them. Materials stay within 1 to 54,
// UnitSystem within 0 to 2, and GPDProjectFormat is the given format.
void FillSampleProject(Project& project, int pipeRows, int resultRows, int nodes, int pipes,
                       std::int32_t format = 60130);

// The model that a correct reader gives for a file laid from the sample: the rows beyond the
// count take the default material, a Material above 54 becomes 4, a UnitSystem outside 0 to 2
// becomes 0, and what the format does not hold takes its default (the device names up to 60111,
// InputChanged up to 60117, ExteriorHoseFlow below 60121). The format is one of five digits
// beginning with 6, as FillSampleProject sets it.
std::unique_ptr<Project> ModelAfterReading(const Project& laid, LaidExtensions extensions,
                                           std::int32_t format);

// File helpers.
void SaveFile(const std::filesystem::path& file, const FileBytes& bytes);
FileBytes LoadFile(const std::filesystem::path& file);
// The byte offset of record number (1-based) n.
constexpr std::size_t RecordOffset(int number) {
    return static_cast<std::size_t>(number - 1) * RecordSize;
}

} // namespace quench::testing
