#pragma once

// A sprinkler network from a DXF drawing (docs/dxf-drawings.md): pipes are the segments drawn on
// the pipe layers, segment ends closer than the snap distance are one node, a sprinkler block
// inserted at a node makes it a sprinkler, a TEXT holding a whole number numbers the nearest
// node within 2 ft, Z is the elevation. Each row keeps the handle of the entity that draws it.

#include "core/project.h"
#include "interchange/dxf_drawing.h"
#include "library/pipe_library.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

namespace drawing_texts {
inline constexpr std::string_view OpenTitle = "Open DXF Drawing...";
inline constexpr std::string_view OpenFilter = "DXF Drawing (*.dxf)";
inline constexpr std::string_view OpenPattern = "*.dxf";
inline constexpr std::string_view DefaultExtension = "dxf";
inline constexpr std::string_view OptionsTitle = "DXF Drawing Import Options";
inline constexpr std::string_view RefusedTitle = "DXF Drawing Not Loaded";
inline constexpr std::string_view ReadingCaption = "Reading Drawing...";
inline constexpr std::string_view ReadingLabel = "Reading the pipe network from the DXF drawing";
} // namespace drawing_texts

// A drawing unit and the feet in one of it.
struct DrawingUnit {
    std::string Name; // "in", "ft", "mm", "cm", "m"
    double Feet = 1;
};

// The unit of a name ("in", "inch", "ft", "feet", "mm", "cm", "m", either case); none for others.
std::optional<DrawingUnit> DrawingUnitNamed(std::string_view name);
// The unit of a $INSUNITS code; 0 (unitless) and codes without a length are taken as inches.
DrawingUnit DrawingUnitOfCode(int code);

constexpr double DefaultSnapFeet = 0.01;
// The layer of the texts that carry results back into a drawing; its texts number nothing.
inline constexpr std::string_view ResultsLayer = "QUENCH-RESULTS";
constexpr double NumberTextReachFeet = 2.0;

struct DrawingImportOptions {
    // A layer holds pipes when its name contains one of these words (either case).
    std::vector<std::string> PipeLayers{"PIPE"};
    // A block is a sprinkler when its name contains one of these words (either case).
    std::vector<std::string> SprinklerBlocks{"SPRK", "SPRINKLER", "HEAD"};
    // A block whose name contains one of these marks the water supply.
    std::vector<std::string> SupplyBlocks{"INFLOW", "SOURCE", "SUPPLY"};
    double SnapFeet = DefaultSnapFeet;
    std::optional<DrawingUnit> Unit; // over the drawing's $INSUNITS
    bool ExcludeFittings = false;    // fitting blocks add no fittings
    bool ExcludeDiameters = false;   // sizes in layer names are left to autosizing
    bool NumberFromTexts = true;     // TEXT numbers name the nodes
};

// The pipe layer words of a comma-separated list ("PIPE,SPRK-MAIN"); blanks dropped.
std::vector<std::string> SplitLayerList(std::string_view list);

struct DrawingImportOutcome {
    bool Loaded = false;
    std::string Title;              // when not loaded
    std::string Message;            // when not loaded: why
    std::vector<std::string> Notes; // what was read and what was passed over
    int Nodes = 0;
    int Sprinklers = 0;
};

// One node of the network found in the drawing, in drawing units.
struct DrawingNode {
    DrawingPoint At;
    Integer Number = 0;
};

// The network of a drawing before it becomes rows: nodes, and per pipe the two node indexes
// and its entity. The write-back finds the same network again with the same options.
struct DrawingNetwork {
    std::vector<DrawingNode> Nodes;
    struct Pipe {
        std::size_t Begin = 0;
        std::size_t End = 0;
        const DrawingSegment* Segment = nullptr;
    };
    std::vector<Pipe> Pipes;
    double FeetPerUnit = 1;
};

DrawingNetwork FindNetwork(const DrawingContent& content, const DrawingImportOptions& options,
                           std::vector<std::string>* notes = nullptr);

// Resets the project and fills it from the drawing, with the start values of a CAD import. A
// drawing without pipes on the pipe layers, or with more pipes than a project holds, is not
// loaded (the project is then only reset).
DrawingImportOutcome ImportDrawing(Project& project, const DrawingContent& content,
                                   const DrawingImportOptions& options, const PipeLibrary& library);

// The same from a file.
DrawingImportOutcome ImportDrawingFile(Project& project, const std::filesystem::path& file,
                                       const DrawingImportOptions& options,
                                       const PipeLibrary& library);

} // namespace quench
