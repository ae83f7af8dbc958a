#pragma once

// The pick lists that the help window with a list shows from the pipe library: materials,
// diameters of a material, all diameters, the standard fittings and the materials to copy from.
// A chosen row gives its first column back to the field.

#include "core/project.h"
#include "library/pipe_library.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

struct PickList {
    std::string Title;
    std::vector<std::string> Headings;
    std::vector<std::vector<std::string>> Rows; // the first column is the value a pick returns
    std::string Note;                           // shown instead of rows when there can be none
    std::string EntryLabel; // the caption of the box for a typed value, when there is one
};

// "Pipe Material": with devices, the letters M, B, A and P first; then the library materials by
// number, up to the last one defined, a free slot among them reading "Not Yet Defined".
PickList PipeMaterialPickList(const PipeLibrary& library, const Project& project, bool withDevices);

// "Default Pipe Material": the library materials as above, without the devices.
PickList DefaultPipeMaterialPickList(const PipeLibrary& library);

// "Pipe Diameter": "0" for autosizing, then the sizes of the material whose number the text holds;
// with no library material, only the note asking for one.
PickList PipeDiameterPickList(const PipeLibrary& library, std::string_view materialText);

// "Available Diameters": every nominal diameter of the library once, ascending.
PickList AvailableDiametersPickList(const PipeLibrary& library);

// "Standard Fitting": the seven fitting letters and their names.
PickList StandardFittingPickList();

// "Copy Pipe": the defined materials, by number and name.
PickList CopyPipePickList(const PipeLibrary& library);

// The list of a help key, when it is one of the lists above; `materialText` is the material field
// of the row that asks for diameters.
std::optional<PickList> LibraryPickList(std::string_view helpKey, const PipeLibrary& library,
                                        const Project& project, std::string_view materialText);

} // namespace quench
