#pragma once

// Calculated results written back into a copy of the drawing they came from: on the layer
// "QUENCH-RESULTS", each pipe's nominal size and flow as a TEXT at its midpoint along the pipe,
// and each node's number and pressure at the node. Rows find their entity by CadHandle. The
// copy keeps every byte of the drawing and adds the layer and the texts; texts of an earlier
// write-back on that layer are replaced.

#include "core/project.h"
#include "interchange/drawing_import.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace quench {

namespace drawing_results_texts {
inline constexpr std::string_view SaveTitle = "Save Calculated Sizes to DXF Drawing...";
inline constexpr std::string_view RefusedTitle = "Sizes Not Written";
inline constexpr std::string_view NoResults =
    "The project holds no calculated results.  Calculate it before writing its sizes into a "
    "drawing.";
} // namespace drawing_results_texts

struct DrawingResultsOutcome {
    bool Written = false;
    std::string Title;   // when not written
    std::string Message; // when not written: why
    int Pipes = 0;       // pipes annotated
    int Nodes = 0;       // nodes annotated
};

// The text of the annotated copy of `drawing` in `annotated`. The options must be those the
// drawing was imported with, so that its network is found again in the same way.
DrawingResultsOutcome AnnotateDrawing(const Project& project, std::string_view drawing,
                                      const DrawingImportOptions& options, std::string& annotated);

// The same from the drawing file into a new file, written through a temporary file.
DrawingResultsOutcome WriteResultsDrawing(const Project& project,
                                          const std::filesystem::path& drawing,
                                          const std::filesystem::path& out,
                                          const DrawingImportOptions& options);

} // namespace quench
