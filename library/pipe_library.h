#pragma once

// The pipe materials library "PIPE.DAT": 50 materials, each with its C value and up to 15
// diameters with their dimensions and the equivalent lengths of the seven standard fittings.

#include "core/types.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

namespace quench {

constexpr int LibraryMaterials = 50;
constexpr int DiametersPerMaterial = 15;
constexpr int LibraryFittingKinds = 7;
constexpr int PipeMaterialRecordLength = 2500;
constexpr int PipeDiameterRecordLength = 136;
constexpr int LibraryReservedBytes = 30;
constexpr int LibraryFileLength = LibraryMaterials * PipeMaterialRecordLength;
constexpr int DescriptionLength = 30;

struct PipeDiameterRecord {
    Single Nominal = 0; // inch; 0 marks an empty slot
    Single Inner = 0;
    Single Outer = 0;
    Single MaterialCost = 0;                            // $ per foot
    Single LaborCost = 0;                               // hours per foot
    Single Weight = 0;                                  // lb per foot
    std::array<Single, LibraryFittingKinds> FitEqLen{}; // feet, in the order F E L T B G C
    std::array<Single, LibraryFittingKinds> FitCost{};
    std::array<Single, LibraryFittingKinds> FitLaborCost{};
    std::array<Single, LibraryFittingKinds> FitWeight{};

    bool operator==(const PipeDiameterRecord&) const = default;
};

// The name a free slot is shown with.
constexpr const char* NotYetDefinedName = "Not Yet Defined";

struct PipeMaterialRecord {
    std::string Description; // Text[30], held without its padding; blank marks a free slot
    Integer CValue = 0;
    std::array<PipeDiameterRecord, DiametersPerMaterial> Diameters{};
    std::array<std::uint8_t, LibraryReservedBytes> Reserved{}; // kept as read

    bool IsDefined() const { return Description.find_first_not_of(' ') != std::string::npos; }
    bool operator==(const PipeMaterialRecord&) const = default;
};

// Numbers 1 to 50 are library materials; the numbers above are devices.
inline bool IsLibraryMaterial(int number) {
    return number >= 1 && number <= LibraryMaterials;
}

// The library held in memory for the whole run.
struct PipeLibrary {
    std::array<PipeMaterialRecord, LibraryMaterials> Materials{};
    std::filesystem::path File; // where it was loaded from
    bool FileFound = false;     // false when the file was missing at load

    // Material 1 to 50.
    const PipeMaterialRecord& Material(int number) const { return Materials.at(number - 1); }
    PipeMaterialRecord& Material(int number) { return Materials.at(number - 1); }
};

} // namespace quench
