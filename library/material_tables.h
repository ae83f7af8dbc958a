#pragma once

// What the calculation takes from the pipe library: the C value of each material, the sizes that
// autosizing may choose from, and the look-up of a size by its nominal diameter.

#include "library/pipe_library.h"

#include <array>

namespace quench {

constexpr const char* LibraryMissingMessage =
    "THE PIPE MATERIALS LIBRARY CANNOT BE FOUND AND MUST BE CREATED.";

// Indexed by material number 1 to 50; index 0 is unused.
struct MaterialTables {
    std::array<Integer, LibraryMaterials + 1> MaterialCValue{};
    // The nominal diameters of the usable sizes, in file order, packed from index 0.
    std::array<std::array<Single, DiametersPerMaterial>, LibraryMaterials + 1> UsableDiameters{};
    std::array<Integer, LibraryMaterials + 1> UsableDiameterCount{};
};

// A size autosizing may choose: its nominal, its inside diameter and all seven fitting lengths
// are given (above zero).
bool IsUsableDiameter(const PipeDiameterRecord& diameter);

// Builds the tables from the library in memory. False when the library file is missing at this
// moment, which the run reports with LibraryMissingMessage (plain, no title); the tables are built
// all the same.
bool BuildMaterialTables(const PipeLibrary& library, MaterialTables& tables);

// The slot (0 to 14) of the material's size whose nominal equals `nominal` exactly, as Singles
// compare, scanning the slots in file order; -1 when there is none, when the material is not 1 to
// 50, or when `nominal` is not above zero.
int FindDiameterSlot(const PipeLibrary& library, int material, Single nominal);

// The size itself, or nullptr as above.
const PipeDiameterRecord* FindDiameter(const PipeLibrary& library, int material, Single nominal);

// The inside diameter of a size, or the nominal itself when the material has no such size.
Single InsideDiameterOf(const PipeLibrary& library, int material, Single nominal);

} // namespace quench
