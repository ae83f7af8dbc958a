#include "interchange/drawing_import.h"

#include "calc/build_working_rows.h"
#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/text.h"
#include "interchange/cad_data_file.h"
#include "library/equivalent_length.h"
#include "library/fitting_text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>
#include <unordered_map>

namespace quench {

namespace {

constexpr double LargestCoordinate = 1e12;
constexpr double SmallestCell = 1e-6;
constexpr std::size_t HandleWidth = 6;
constexpr Integer LargestNodeNumber = 32767;

bool Contains(std::string_view name, const std::vector<std::string>& words) {
    const std::string upper = ToUpper(name);
    return std::any_of(words.begin(), words.end(), [&](const std::string& word) {
        return !word.empty() && upper.find(ToUpper(word)) != std::string::npos;
    });
}

bool Usable(const DrawingPoint& point) {
    return std::abs(point.X) <= LargestCoordinate && std::abs(point.Y) <= LargestCoordinate &&
           std::abs(point.Z) <= LargestCoordinate;
}

DrawingPoint InFeet(const DrawingPoint& point, double feet) {
    return DrawingPoint{point.X * feet, point.Y * feet, point.Z * feet};
}

double Distance(const DrawingPoint& a, const DrawingPoint& b) {
    return std::hypot(a.X - b.X, a.Y - b.Y, a.Z - b.Z);
}

double PlanDistance(const DrawingPoint& a, const DrawingPoint& b) {
    return std::hypot(a.X - b.X, a.Y - b.Y);
}

// Nodes by the cell of a grid as wide as the snap distance: a point's match lies in its own
// cell or a neighbouring one.
class NodeGrid {
public:
    NodeGrid(double snap, std::vector<DrawingNode>& nodes, std::vector<DrawingPoint>& feet)
        : snap_(snap), cell_(std::max(snap, SmallestCell)), nodes_(nodes), feet_(feet) {}

    std::size_t NodeAt(const DrawingPoint& drawing, const DrawingPoint& point) {
        const Cell home = CellOf(point);
        std::size_t best = nodes_.size();
        double bestDistance = 0;
        for (long long dx = -1; dx <= 1; ++dx) {
            for (long long dy = -1; dy <= 1; ++dy) {
                for (long long dz = -1; dz <= 1; ++dz) {
                    const auto found = cells_.find(Cell{home.X + dx, home.Y + dy, home.Z + dz});
                    if (found == cells_.end()) {
                        continue;
                    }
                    for (const std::size_t index : found->second) {
                        const double distance = Distance(feet_[index], point);
                        if (distance <= snap_ &&
                            (best == nodes_.size() || distance < bestDistance)) {
                            best = index;
                            bestDistance = distance;
                        }
                    }
                }
            }
        }
        if (best == nodes_.size()) {
            nodes_.push_back(DrawingNode{drawing, 0});
            feet_.push_back(point);
            cells_[home].push_back(best);
        }
        return best;
    }

private:
    struct Cell {
        long long X, Y, Z;
        bool operator<(const Cell& other) const {
            return std::tie(X, Y, Z) < std::tie(other.X, other.Y, other.Z);
        }
    };
    Cell CellOf(const DrawingPoint& point) const {
        return Cell{static_cast<long long>(std::floor(point.X / cell_)),
                    static_cast<long long>(std::floor(point.Y / cell_)),
                    static_cast<long long>(std::floor(point.Z / cell_))};
    }

    double snap_;
    double cell_;
    std::vector<DrawingNode>& nodes_;
    std::vector<DrawingPoint>& feet_;
    std::map<Cell, std::vector<std::size_t>> cells_;
};

// The node nearest a point in plan, with its plan distance; none when there are no nodes.
std::optional<std::pair<std::size_t, double>> NearestInPlan(const std::vector<DrawingPoint>& feet,
                                                            const DrawingPoint& point) {
    std::optional<std::pair<std::size_t, double>> nearest;
    for (std::size_t index = 0; index < feet.size(); ++index) {
        const double plan = PlanDistance(feet[index], point);
        if (!nearest || plan < nearest->second ||
            (plan == nearest->second &&
             Distance(feet[index], point) < Distance(feet[nearest->first], point))) {
            nearest = std::make_pair(index, plan);
        }
    }
    return nearest;
}

// A whole number of one to five digits, as a node number can be.
std::optional<Integer> NodeNumberOfText(std::string_view text) {
    const std::string trimmed = Trim(text);
    if (trimmed.empty() || trimmed.size() > 5 ||
        !std::all_of(trimmed.begin(), trimmed.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    const long value = std::stol(trimmed);
    if (value < 1 || value > LargestNodeNumber || value == InflowNodeCode) {
        return std::nullopt;
    }
    return static_cast<Integer>(value);
}

void NumberNodes(DrawingNetwork& network, const std::vector<DrawingPoint>& feet,
                 const DrawingContent& content, const DrawingImportOptions& options,
                 std::vector<std::string>& notes) {
    struct Claim {
        double Distance;
        std::size_t Node;
        Integer Number;
    };
    std::vector<Claim> claims;
    if (options.NumberFromTexts) {
        for (const auto& text : content.Texts) {
            const auto number = NodeNumberOfText(text.Text);
            if (!number || !Usable(text.At) || EqualsIgnoreCase(text.Layer, ResultsLayer)) {
                continue;
            }
            const auto nearest = NearestInPlan(feet, InFeet(text.At, network.FeetPerUnit));
            if (nearest && nearest->second <= NumberTextReachFeet) {
                claims.push_back(Claim{nearest->second, nearest->first, *number});
            }
        }
    }
    std::stable_sort(claims.begin(), claims.end(),
                     [](const Claim& a, const Claim& b) { return a.Distance < b.Distance; });
    std::set<Integer> used;
    Integer highest = 0;
    int passed = 0;
    for (const Claim& claim : claims) {
        if (network.Nodes[claim.Node].Number != 0 || used.contains(claim.Number)) {
            ++passed;
            continue;
        }
        network.Nodes[claim.Node].Number = claim.Number;
        used.insert(claim.Number);
        highest = std::max(highest, claim.Number);
    }
    if (passed > 0) {
        notes.push_back(std::to_string(passed) +
                        " node number texts named a node or a number already taken.");
    }
    Integer next = highest;
    for (auto& node : network.Nodes) {
        if (node.Number == 0) {
            do {
                next = static_cast<Integer>(std::min<int>(next + 1, LargestNodeNumber));
            } while (next == InflowNodeCode || (used.contains(next) && next < LargestNodeNumber));
            node.Number = next;
            used.insert(next);
        }
    }
}

// The nominal size at the end of a layer name: "PIPE-2", "PIPE_1.25", "PIPE-2IN", "PIPE 1-1/2"
// is not read (no fraction).
Single DiameterOfLayer(std::string_view layer) {
    std::string name = ToUpper(Trim(layer));
    for (const std::string_view suffix : {"IN", "\""}) {
        if (name.size() > suffix.size() && name.ends_with(suffix)) {
            name.resize(name.size() - suffix.size());
        }
    }
    const std::size_t separator = name.find_last_of("-_ ");
    if (separator == std::string::npos) {
        return 0;
    }
    const std::string size = name.substr(separator + 1);
    if (!IsNumeric(size) || size.find_first_not_of("0123456789.") != std::string::npos) {
        return 0;
    }
    const double value = ToNumber(size);
    return value >= 0.5 && value <= 48 ? static_cast<Single>(value) : 0;
}

// The fitting kind a block name stands for, -1 for none.
int FittingKindOfBlock(std::string_view name) {
    const std::string upper = ToUpper(name);
    const auto has = [&](const char* word) { return upper.find(word) != std::string::npos; };
    if (has("45")) {
        return 0;
    }
    if (has("LONG")) {
        return 2;
    }
    if (has("ELBOW") || has("ELL") || has("90")) {
        return 1;
    }
    if (has("TEE") || has("CROSS")) {
        return 3;
    }
    if (has("BUTTERFLY") || has("BFV")) {
        return 4;
    }
    if (has("GATE")) {
        return 5;
    }
    if (has("CHECK")) {
        return 6;
    }
    return -1;
}

std::string UnitNote(const DrawingNetwork& network, const DrawingUnit& unit) {
    return "Drawing unit: " + unit.Name + " (" + Format(network.FeetPerUnit, "0.0#####") + " ft).";
}

DrawingImportOutcome Refused(std::string message) {
    DrawingImportOutcome outcome;
    outcome.Title = std::string(drawing_texts::RefusedTitle);
    outcome.Message = std::move(message);
    return outcome;
}

} // namespace

std::optional<DrawingUnit> DrawingUnitNamed(std::string_view name) {
    const std::string lower = ToLower(Trim(name));
    if (lower == "in" || lower == "inch" || lower == "inches") {
        return DrawingUnit{"in", 1.0 / 12.0};
    }
    if (lower == "ft" || lower == "foot" || lower == "feet") {
        return DrawingUnit{"ft", 1.0};
    }
    if (lower == "mm") {
        return DrawingUnit{"mm", 1.0 / 304.8};
    }
    if (lower == "cm") {
        return DrawingUnit{"cm", 1.0 / 30.48};
    }
    if (lower == "m") {
        return DrawingUnit{"m", 1.0 / 0.3048};
    }
    return std::nullopt;
}

DrawingUnit DrawingUnitOfCode(int code) {
    switch (code) {
    case 2:
        return *DrawingUnitNamed("ft");
    case 4:
        return *DrawingUnitNamed("mm");
    case 5:
        return *DrawingUnitNamed("cm");
    case 6:
        return *DrawingUnitNamed("m");
    case 10:
        return DrawingUnit{"yd", 3.0};
    case 14:
        return DrawingUnit{"dm", 1.0 / 3.048};
    default:
        return *DrawingUnitNamed("in");
    }
}

std::vector<std::string> SplitLayerList(std::string_view list) {
    std::vector<std::string> words;
    std::size_t start = 0;
    while (start <= list.size()) {
        const std::size_t comma = std::min(list.find(',', start), list.size());
        const std::string word = Trim(list.substr(start, comma - start));
        if (!word.empty()) {
            words.push_back(word);
        }
        start = comma + 1;
    }
    return words;
}

DrawingNetwork FindNetwork(const DrawingContent& content, const DrawingImportOptions& options,
                           std::vector<std::string>* notes) {
    DrawingNetwork network;
    const DrawingUnit unit =
        options.Unit.value_or(DrawingUnitOfCode(content.InsertionUnits.value_or(0)));
    network.FeetPerUnit = unit.Feet;
    std::vector<std::string> ignored;
    std::vector<std::string>& said = notes != nullptr ? *notes : ignored;
    said.push_back(UnitNote(network, unit));

    std::vector<DrawingPoint> feet;
    NodeGrid grid(std::max(options.SnapFeet, 0.0), network.Nodes, feet);
    int unusable = 0;
    int zeroLength = 0;
    for (const auto& segment : content.Segments) {
        if (!Contains(segment.Layer, options.PipeLayers)) {
            continue;
        }
        if (!Usable(segment.Start) || !Usable(segment.End)) {
            ++unusable;
            continue;
        }
        const std::size_t begin =
            grid.NodeAt(segment.Start, InFeet(segment.Start, network.FeetPerUnit));
        const std::size_t end = grid.NodeAt(segment.End, InFeet(segment.End, network.FeetPerUnit));
        if (begin == end) {
            ++zeroLength;
            continue;
        }
        network.Pipes.push_back(DrawingNetwork::Pipe{begin, end, &segment});
    }
    if (unusable > 0) {
        said.push_back(std::to_string(unusable) +
                       " segments with unusable coordinates were left out.");
    }
    if (zeroLength > 0) {
        said.push_back(std::to_string(zeroLength) +
                       " segments shorter than the snap distance were left out.");
    }
    NumberNodes(network, feet, content, options, said);
    return network;
}

namespace {

struct NodeExtras {
    std::vector<bool> Sprinkler;
    std::vector<FittingCountArray> Fittings;
    std::optional<std::size_t> Supply;
};

NodeExtras ReadInserts(const DrawingContent& content, const DrawingNetwork& network,
                       const DrawingImportOptions& options, std::vector<std::string>& notes) {
    NodeExtras extras;
    extras.Sprinkler.assign(network.Nodes.size(), false);
    extras.Fittings.assign(network.Nodes.size(), FittingCountArray{});
    std::vector<DrawingPoint> feet;
    for (const auto& node : network.Nodes) {
        feet.push_back(InFeet(node.At, network.FeetPerUnit));
    }
    const double reach = std::max(options.SnapFeet, 0.0);
    int away = 0;
    for (const auto& insert : content.Inserts) {
        const bool sprinkler = Contains(insert.Block, options.SprinklerBlocks);
        const bool supply = !sprinkler && Contains(insert.Block, options.SupplyBlocks);
        const int fitting =
            sprinkler || supply || options.ExcludeFittings ? -1 : FittingKindOfBlock(insert.Block);
        if ((!sprinkler && !supply && fitting < 0) || !Usable(insert.At)) {
            continue;
        }
        const DrawingPoint at = InFeet(insert.At, network.FeetPerUnit);
        std::optional<std::size_t> node;
        for (std::size_t index = 0; index < feet.size(); ++index) {
            if (PlanDistance(feet[index], at) <= reach &&
                (!node || Distance(feet[index], at) < Distance(feet[*node], at))) {
                node = index;
            }
        }
        if (!node) {
            away += sprinkler ? 1 : 0;
            continue;
        }
        if (sprinkler) {
            extras.Sprinkler[*node] = true;
        } else if (supply) {
            extras.Supply = extras.Supply.value_or(*node);
        } else {
            auto& count = extras.Fittings[*node][static_cast<std::size_t>(fitting)];
            count = static_cast<Integer>(std::min(count + 1, 99));
        }
    }
    if (away > 0) {
        notes.push_back(std::to_string(away) +
                        " sprinkler blocks lie at no pipe end and were left out.");
    }
    return extras;
}

void FillRow(PipeRecord& row, const DrawingNetwork& network, const DrawingNetwork::Pipe& pipe,
             const NodeExtras& extras, const Project& project,
             const DrawingImportOptions& options) {
    const DrawingNode& begin = network.Nodes[pipe.Begin];
    const DrawingNode& end = network.Nodes[pipe.End];
    const double feet = network.FeetPerUnit;
    row.BegNode = std::to_string(begin.Number);
    row.EndNode = std::to_string(end.Number);
    row.ElevationB = static_cast<Single>(begin.At.Z * feet);
    row.ElevationE = static_cast<Single>(end.At.Z * feet);
    row.KFactorB = extras.Sprinkler[pipe.Begin] ? "Dflt" : "None";
    row.KFactorE = extras.Sprinkler[pipe.End] ? "Dflt" : "None";
    row.Length = static_cast<Single>(Distance(begin.At, end.At) * feet);
    row.Material = project.SystemData.DefaultPipeMaterial;
    row.Active = 1;
    const Single size = options.ExcludeDiameters ? 0 : DiameterOfLayer(pipe.Segment->Layer);
    row.Diameter = size;
    row.DiameterFixed = size > 0 ? 1 : 0;
    row.CadHandle = pipe.Segment->Handle.substr(0, HandleWidth);
}

// A fitting at a node counts on the first row that meets the node.
void AddFittings(Project& project, const DrawingNetwork& network, const NodeExtras& extras) {
    std::vector<bool> placed(network.Nodes.size(), false);
    for (std::size_t index = 0; index < network.Pipes.size(); ++index) {
        auto& row = project.PipeRecord[index + 1];
        for (const std::size_t node : {network.Pipes[index].Begin, network.Pipes[index].End}) {
            if (placed[node]) {
                continue;
            }
            placed[node] = true;
            for (int kind = 0; kind < FittingKinds; ++kind) {
                row.FittingCounts[kind] = static_cast<Integer>(
                    std::min(row.FittingCounts[kind] + extras.Fittings[node][kind], 99));
            }
        }
        row.FittingText = BuildFittingText(row.FittingCounts);
    }
}

} // namespace

DrawingImportOutcome ImportDrawing(Project& project, const DrawingContent& content,
                                   const DrawingImportOptions& options,
                                   const PipeLibrary& library) {
    ResetProject(project);
    DrawingImportOutcome outcome;
    const DrawingNetwork network = FindNetwork(content, options, &outcome.Notes);
    if (network.Pipes.empty()) {
        return Refused("The drawing has no pipes on the pipe layers (layer names containing " +
                       [&] {
                           std::string words;
                           for (const auto& word : options.PipeLayers) {
                               words += (words.empty() ? "\"" : ", \"") + word + "\"";
                           }
                           return words;
                       }() +
                       ").  The drawing is not loaded.");
    }
    if (network.Pipes.size() > static_cast<std::size_t>(MaxPipes)) {
        return Refused("The drawing holds " + std::to_string(network.Pipes.size()) +
                       " pipes, more than the " + std::to_string(MaxPipes) +
                       " that a project can take.  The drawing is not loaded.");
    }
    const NodeExtras extras = ReadInserts(content, network, options, outcome.Notes);
    const int rows = static_cast<int>(network.Pipes.size());
    SetCadStartValues(project, rows);
    project.NumberOfPipeRows = static_cast<Integer>(rows);
    project.NumberOfPipes = static_cast<Integer>(rows);
    for (int row = 1; row <= rows; ++row) {
        FillRow(project.PipeRecord[row], network, network.Pipes[row - 1], extras, project, options);
    }
    AddFittings(project, network, extras);
    for (int row = 1; row <= rows; ++row) {
        RecalcEquivLength(project, library, row);
    }
    if (extras.Supply) {
        const Integer source = network.Nodes[*extras.Supply].Number;
        project.CalculationData.SystemInflowNode = source;
        MarkSupplyRow(project, source);
    } else {
        outcome.Notes.push_back("No supply block was found: mark the inflow node before "
                                "calculating.");
    }
    BuildWorkingRows(project);
    outcome.Loaded = true;
    outcome.Nodes = static_cast<int>(network.Nodes.size());
    outcome.Sprinklers =
        static_cast<int>(std::count(extras.Sprinkler.begin(), extras.Sprinkler.end(), true));
    outcome.Notes.push_back(std::to_string(rows) + " pipes, " + std::to_string(outcome.Nodes) +
                            " nodes and " + std::to_string(outcome.Sprinklers) +
                            " sprinklers were read.");
    return outcome;
}

DrawingImportOutcome ImportDrawingFile(Project& project, const std::filesystem::path& file,
                                       const DrawingImportOptions& options,
                                       const PipeLibrary& library) {
    std::string text;
    DrawingContent content;
    if (!ReadWholeFile(file, text)) {
        ResetProject(project);
        return Refused("\"" + file.string() + "\" cannot be read.");
    }
    if (!ReadDrawing(text, content)) {
        ResetProject(project);
        return Refused("\"" + file.string() +
                       "\" is no DXF drawing that can be read (a binary "
                       "DXF must be saved as ASCII DXF first).");
    }
    return ImportDrawing(project, content, options, library);
}

} // namespace quench
