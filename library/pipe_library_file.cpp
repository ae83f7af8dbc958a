#include "library/pipe_library_file.h"

#include "core/atomic_write.h"
#include "core/record_file.h"
#include "core/text.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <string_view>
#include <system_error>
#include <vector>

namespace quench {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t CValueOffset = DescriptionLength;
constexpr std::size_t DiametersOffset = CValueOffset + 2;
constexpr std::size_t ReservedOffset =
    DiametersOffset + std::size_t{DiametersPerMaterial} * PipeDiameterRecordLength;

static_assert(ReservedOffset == 2072);
static_assert(ReservedOffset + LibraryReservedBytes <= PipeMaterialRecordLength);
static_assert(6 + 4 * LibraryFittingKinds == 34 && 34 * 4 == PipeDiameterRecordLength);

// Little-endian fields, whatever the byte order of the machine.
std::uint16_t ReadUInt16(const std::uint8_t* at) {
    return static_cast<std::uint16_t>(at[0] | (at[1] << 8));
}

void WriteUInt16(std::uint8_t* at, std::uint16_t value) {
    at[0] = static_cast<std::uint8_t>(value & 0xFF);
    at[1] = static_cast<std::uint8_t>(value >> 8);
}

// A number that is not finite can only come from a damaged record; it reads as no value.
Single ReadSingle(const std::uint8_t* at) {
    const std::uint32_t bits =
        static_cast<std::uint32_t>(at[0]) | (static_cast<std::uint32_t>(at[1]) << 8) |
        (static_cast<std::uint32_t>(at[2]) << 16) | (static_cast<std::uint32_t>(at[3]) << 24);
    const Single value = std::bit_cast<Single>(bits);
    return std::isfinite(value) ? value : 0.0f;
}

void WriteSingle(std::uint8_t* at, Single value) {
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(value);
    for (int shift = 0; shift < 32; shift += 8) {
        *at++ = static_cast<std::uint8_t>((bits >> shift) & 0xFF);
    }
}

// The Singles of a diameter record in their file order.
template <typename Record, typename Visit>
void ForEachSingle(Record& diameter, Visit visit) {
    visit(diameter.Nominal);
    visit(diameter.Inner);
    visit(diameter.Outer);
    visit(diameter.MaterialCost);
    visit(diameter.LaborCost);
    visit(diameter.Weight);
    for (auto* group :
         {&diameter.FitEqLen, &diameter.FitCost, &diameter.FitLaborCost, &diameter.FitWeight}) {
        for (auto& value : *group) {
            visit(value);
        }
    }
}

// Blanks pad the name; a record that was never written may hold zero bytes instead.
std::string ReadDescription(const std::uint8_t* at) {
    std::string text(reinterpret_cast<const char*>(at), DescriptionLength);
    const auto end = text.find_last_not_of(std::string(" \0", 2));
    return end == std::string::npos ? std::string() : text.substr(0, end + 1);
}

PipeMaterialRecord DecodeMaterial(const std::uint8_t* record) {
    PipeMaterialRecord material;
    material.Description = ReadDescription(record);
    material.CValue = static_cast<Integer>(ReadUInt16(record + CValueOffset));
    const std::uint8_t* at = record + DiametersOffset;
    for (auto& diameter : material.Diameters) {
        ForEachSingle(diameter, [&at](Single& value) {
            value = ReadSingle(at);
            at += 4;
        });
    }
    std::memcpy(material.Reserved.data(), record + ReservedOffset, LibraryReservedBytes);
    return material;
}

void EncodeMaterial(const PipeMaterialRecord& material, std::uint8_t* record) {
    const std::string name = FixedWidth(material.Description, DescriptionLength);
    std::memcpy(record, name.data(), DescriptionLength);
    WriteUInt16(record + CValueOffset, static_cast<std::uint16_t>(material.CValue));
    std::uint8_t* at = record + DiametersOffset;
    for (const auto& diameter : material.Diameters) {
        ForEachSingle(diameter, [&at](const Single& value) {
            WriteSingle(at, value);
            at += 4;
        });
    }
    std::memcpy(record + ReservedOffset, material.Reserved.data(), LibraryReservedBytes);
}

// The whole file, or as much of its first 125000 bytes as there is; the rest reads as zeros.
// Only a regular file is read, so that a pipe or a device given as the library cannot hang.
bool ReadFileStart(const std::filesystem::path& file, Bytes& bytes) {
    std::string ignored;
    if (!ReadFileHead(file, static_cast<std::size_t>(LibraryFileLength), bytes, ignored)) {
        return false;
    }
    bytes.resize(static_cast<std::size_t>(LibraryFileLength), 0);
    return true;
}

} // namespace

std::filesystem::path PipeLibraryPath(const std::filesystem::path& directory) {
    return directory / "PIPE.DAT";
}

PipeLibrary LoadPipeLibrary(const std::filesystem::path& file) {
    PipeLibrary library;
    library.File = file;
    Bytes bytes;
    std::error_code ignored;
    if (std::filesystem::is_directory(file, ignored) || !ReadFileStart(file, bytes)) {
        return library;
    }
    library.FileFound = true;
    for (int index = 0; index < LibraryMaterials; ++index) {
        library.Materials[index] = DecodeMaterial(bytes.data() + index * PipeMaterialRecordLength);
    }
    return library;
}

LibrarySaveResult SavePipeLibrary(const PipeLibrary& library, const std::filesystem::path& file) {
    if (file.filename().empty()) {
        return {false, "no file name for the pipe materials library"};
    }
    Bytes bytes(LibraryFileLength, 0);
    for (int index = 0; index < LibraryMaterials; ++index) {
        EncodeMaterial(library.Materials[index], bytes.data() + index * PipeMaterialRecordLength);
    }
    LibrarySaveResult result;
    const std::string_view image(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    result.Saved = WriteFileAtomically(file, image, &result.Error);
    return result;
}

} // namespace quench
