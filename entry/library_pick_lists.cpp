#include "entry/library_pick_lists.h"

#include "core/formats.h"
#include "entry/fitting_entry.h"
#include "library/fitting_text.h"

#include <algorithm>
#include <array>
#include <set>

namespace quench {

namespace {

constexpr const char* ChooseMaterialNote =
    "Please choose a pipe material to see a list of available pipe diameters.";

constexpr std::array<std::string_view, 7> MaterialKeys{"EEPipeDataPipeMaterial",
                                                       "EEPipeDataTreeCrossPipeMaterial",
                                                       "EEPipeDataTreeBranchPipeMaterial",
                                                       "EEPipeDataGridPerimeterPipeMaterial",
                                                       "EEPipeDataGridBranchPipeMaterial",
                                                       "GlobalNewMaterial",
                                                       "BranchLineMaterial"};
constexpr std::array<std::string_view, 6> DiameterKeys{
    "EEPipeDataPipeDiameter",           "EEPipeDataTreeCrossPipeDiameter",
    "EEPipeDataTreeBranchPipeDiameter", "EEPipeDataGridPerimeterPipeDiameter",
    "EEPipeDataGridBranchPipeDiameter", "BranchLinePipeDiameter"};
constexpr std::array<std::string_view, 2> FittingKeys{"EEPipeDataStandardFitting",
                                                      "BranchLineStandardFitting"};
constexpr std::array<std::string_view, 2> SizingConstraintKeys{
    "CalculationDataMinPipeSizingConstraintForTypeGroup",
    "CalculationDataMaxPipeSizingConstraintForTypeGroup"};

template <std::size_t N>
bool IsOneOf(std::string_view key, const std::array<std::string_view, N>& keys) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

int LastDefinedMaterial(const PipeLibrary& library) {
    for (int number = LibraryMaterials; number >= 1; --number) {
        if (library.Material(number).IsDefined()) {
            return number;
        }
    }
    return 0;
}

void AddLibraryMaterials(const PipeLibrary& library, PickList& list) {
    const int last = LastDefinedMaterial(library);
    for (int number = 1; number <= last; ++number) {
        const auto& material = library.Material(number);
        list.Rows.push_back({std::to_string(number),
                             material.IsDefined() ? material.Description : NotYetDefinedName});
    }
}

} // namespace

PickList PipeMaterialPickList(const PipeLibrary& library, const Project& project,
                              bool withDevices) {
    PickList list{"Pipe Material", {"Ref Number", "Material"}, {}, "", ""};
    if (withDevices) {
        list.Rows = {{"M", "Meter"},
                     {"B", "Back Flow Preventer"},
                     {"A", project.AlarmDeviceName},
                     {"P", "Fire Pump"}};
    }
    AddLibraryMaterials(library, list);
    return list;
}

PickList DefaultPipeMaterialPickList(const PipeLibrary& library) {
    PickList list{"Default Pipe Material", {"Ref Number", "Material"}, {}, "", ""};
    AddLibraryMaterials(library, list);
    return list;
}

PickList PipeDiameterPickList(const PipeLibrary& library, std::string_view materialText) {
    PickList list{"Pipe Diameter", {"Nominal", "Inner", "Outer", "Cost", "Labor"}, {}, "", ""};
    const int material = LibraryMaterialOfText(materialText);
    if (material == 0) {
        list.Note = ChooseMaterialNote;
        return list;
    }
    list.Rows.push_back({"0", "", "", "", ""});
    for (const auto& size : library.Material(material).Diameters) {
        if (size.Nominal == 0) {
            continue;
        }
        list.Rows.push_back({Format(size.Nominal, "##0.000"), Format(size.Inner, "##0.000"),
                             Format(size.Outer, "##0.000"), Format(size.MaterialCost, "$##0.00"),
                             Format(size.LaborCost, "##0.000")});
    }
    return list;
}

PickList AvailableDiametersPickList(const PipeLibrary& library) {
    PickList list{"Available Diameters", {"Diameter"}, {}, "", ""};
    std::set<Single> nominals;
    for (const auto& material : library.Materials) {
        for (const auto& size : material.Diameters) {
            if (size.Nominal > 0) {
                nominals.insert(size.Nominal);
            }
        }
    }
    for (const Single nominal : nominals) {
        list.Rows.push_back({Format(nominal, "##0.0##")});
    }
    return list;
}

PickList StandardFittingPickList() {
    PickList list{"Standard Fitting", {"Fitting", "Description"}, {}, "", "Standard Fitting:"};
    for (int kind = 0; kind < FittingKinds; ++kind) {
        list.Rows.push_back({std::string(1, FittingLetters[kind]), FittingKindNames[kind]});
    }
    return list;
}

PickList CopyPipePickList(const PipeLibrary& library) {
    PickList list{"Copy Pipe", {"Ref Number", "Material"}, {}, "", ""};
    for (int number = 1; number <= LibraryMaterials; ++number) {
        const auto& material = library.Material(number);
        if (material.IsDefined()) {
            list.Rows.push_back({std::to_string(number), material.Description});
        }
    }
    return list;
}

std::optional<PickList> LibraryPickList(std::string_view helpKey, const PipeLibrary& library,
                                        const Project& project, std::string_view materialText) {
    if (IsOneOf(helpKey, MaterialKeys)) {
        return PipeMaterialPickList(library, project, helpKey == MaterialKeys[0]);
    }
    if (IsOneOf(helpKey, DiameterKeys)) {
        return PipeDiameterPickList(library, materialText);
    }
    if (IsOneOf(helpKey, FittingKeys)) {
        return StandardFittingPickList();
    }
    if (IsOneOf(helpKey, SizingConstraintKeys)) {
        return AvailableDiametersPickList(library);
    }
    if (helpKey == "GPDDefaultPipeMaterial") {
        return DefaultPipeMaterialPickList(library);
    }
    if (helpKey == "EEPipeLibraryCopyPipe") {
        return CopyPipePickList(library);
    }
    return std::nullopt;
}

} // namespace quench
