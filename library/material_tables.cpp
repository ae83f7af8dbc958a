#include "library/material_tables.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace quench {

bool IsUsableDiameter(const PipeDiameterRecord& diameter) {
    const auto given = [](Single value) { return value > 0.0f; };
    return given(diameter.Nominal) && given(diameter.Inner) &&
           std::all_of(diameter.FitEqLen.begin(), diameter.FitEqLen.end(), given);
}

bool BuildMaterialTables(const PipeLibrary& library, MaterialTables& tables) {
    tables = MaterialTables{};
    for (int number = 1; number <= LibraryMaterials; ++number) {
        const PipeMaterialRecord& material = library.Material(number);
        tables.MaterialCValue[number] = material.CValue;
        Integer count = 0;
        for (const auto& diameter : material.Diameters) {
            if (IsUsableDiameter(diameter)) {
                tables.UsableDiameters[number][count++] = diameter.Nominal;
            }
        }
        tables.UsableDiameterCount[number] = count;
    }
    std::error_code ignored;
    return !library.File.empty() && std::filesystem::is_regular_file(library.File, ignored);
}

int FindDiameterSlot(const PipeLibrary& library, int material, Single nominal) {
    if (!IsLibraryMaterial(material) || !(nominal > 0.0f)) {
        return -1;
    }
    const auto& diameters = library.Material(material).Diameters;
    for (int slot = 0; slot < DiametersPerMaterial; ++slot) {
        if (diameters[slot].Nominal == nominal) {
            return slot;
        }
    }
    return -1;
}

const PipeDiameterRecord* FindDiameter(const PipeLibrary& library, int material, Single nominal) {
    const int slot = FindDiameterSlot(library, material, nominal);
    return slot < 0 ? nullptr : &library.Material(material).Diameters[slot];
}

Single InsideDiameterOf(const PipeLibrary& library, int material, Single nominal) {
    const PipeDiameterRecord* diameter = FindDiameter(library, material, nominal);
    return diameter ? diameter->Inner : nominal;
}

} // namespace quench
