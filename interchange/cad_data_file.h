#pragma once

// The CAD data file (".qnc") that a drawing macro writes: comma-separated numbers and quoted
// words read value by value, a header of six values, a node block and the pipe rows
// (docs/qnc-format.md). Reading one makes a new project with start values for the calculation
// that suit the size of the network.

#include "core/project.h"
#include "library/pipe_library.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace quench {

namespace cad_data_texts {
inline constexpr std::string_view OpenTitle = "Open Autocad File...";
inline constexpr std::string_view OpenFilter = "Autocad File (*.qnc)";
inline constexpr std::string_view OpenPattern = "*.qnc";
inline constexpr std::string_view DefaultExtension = "qnc";
inline constexpr std::string_view RefusedTitle = "Autocad File Not Loaded";
} // namespace cad_data_texts

// Row kinds of the file and the materials they give.
inline constexpr std::string_view PipeRowKind = "PIPE";
inline constexpr std::string_view PumpRowKind = "PUMP";
inline constexpr std::string_view MeterRowKind = "METER";

// The drawing scale of a drawing in feet whose numbers are inches; it and 0 keep US units.
inline constexpr double InchesInFeetScale = 1.0 / 12.0;

struct CadDataOutcome {
    bool Loaded = false;
    std::string Title;   // when not loaded
    std::string Message; // when not loaded: why
};

// The start values of the calculation damping for a network of `rows` pipe rows.
struct DampingStart {
    Integer Initial = 0;
    Integer Minimum = 0;
};
DampingStart DampingForRows(int rows);

// The start values of the calculation after any CAD import of `rows` rows: Demand mode, 7 psi at
// the HMD node, the maximum imbalance 0.01, the damping by rows, type group largest diameters
// 12, default K-factor 5.65, default material 4, 130 ft² per sprinkler.
void SetCadStartValues(Project& project, int rows);

// The first row that holds the source node gets the inflow mark on that end.
void MarkSupplyRow(Project& project, Integer source);

// Resets the project and reads the text into it. A file with more rows than a project holds is
// not loaded (the project is then only reset). Reading stops at the end of the text: the rows not
// reached stay empty. A row whose kind is not one of the three stops the reading and refuses the
// file. TotalEquivLength of each row comes from the library's fitting lengths.
CadDataOutcome ReadCadData(Project& project, std::string_view text, const PipeLibrary& library);

// The same from a file; a file that cannot be read is not loaded, the message saying why.
CadDataOutcome ReadCadDataFile(Project& project, const std::filesystem::path& file,
                               const PipeLibrary& library);

} // namespace quench
