#include "interchange/drawing_results.h"

#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <set>

namespace quench {

namespace {

constexpr double TextHeightFeet = 0.25;
constexpr std::size_t HandleWidth = 6;

// The drawing as its group pairs: a code line and a value line each. Only the places where the
// copy differs are looked for; every line is written back as it was read.
struct PairLines {
    std::vector<std::string> Lines;
    std::string Ending = "\n";

    std::string Code(std::size_t pair) const { return Trim(Lines[2 * pair]); }
    std::string Value(std::size_t pair) const { return Trim(Lines[2 * pair + 1]); }
    std::size_t Pairs() const { return Lines.size() / 2; }
};

PairLines SplitPairs(std::string_view text) {
    PairLines pairs;
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t end = text.find('\n', at);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        std::string line(text.substr(at, end - at));
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
            pairs.Ending = "\r\n";
        }
        pairs.Lines.push_back(std::move(line));
        at = end + 1;
    }
    return pairs;
}

struct Places {
    std::optional<std::size_t> HandSeed;      // pair of the $HANDSEED value
    std::optional<std::size_t> LayerTableEnd; // pair of the layer table's ENDTAB
    bool HasResultsLayer = false;
    std::optional<std::size_t> EntitiesEnd; // pair of the ENTITIES section's ENDSEC
    std::set<std::size_t> OldResults;       // pairs of earlier result texts, to leave out
    unsigned long long LargestHandle = 0;
};

unsigned long long HexValue(const std::string& text) {
    unsigned long long value = 0;
    for (const char c : text) {
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                                 : -1;
        if (digit < 0 || value > (~0ULL >> 4)) {
            return 0;
        }
        value = value * 16 + static_cast<unsigned>(digit);
    }
    return value;
}

void MarkOldResults(const PairLines& pairs, std::size_t first, std::size_t end, Places& places) {
    std::size_t start = first;
    for (std::size_t pair = first; pair <= end; ++pair) {
        if (pair != first && pairs.Code(pair) != "0") {
            continue;
        }
        if (pair == first) {
            continue;
        }
        // [start, pair) is one entity.
        bool text = pairs.Value(start) == "TEXT";
        bool onLayer = false;
        for (std::size_t inside = start; inside < pair && text; ++inside) {
            onLayer = onLayer || (pairs.Code(inside) == "8" &&
                                  EqualsIgnoreCase(pairs.Value(inside), ResultsLayer));
        }
        if (text && onLayer) {
            for (std::size_t inside = start; inside < pair; ++inside) {
                places.OldResults.insert(inside);
            }
        }
        start = pair;
    }
}

Places FindPlaces(const PairLines& pairs) {
    Places places;
    std::string section;
    std::string table;
    std::optional<std::size_t> firstEntity;
    for (std::size_t pair = 0; pair < pairs.Pairs(); ++pair) {
        const std::string code = pairs.Code(pair);
        const std::string value = pairs.Value(pair);
        if (code == "5" || code == "105") {
            places.LargestHandle = std::max(places.LargestHandle, HexValue(value));
        }
        if (code == "9" && value == "$HANDSEED" && pair + 1 < pairs.Pairs()) {
            places.HandSeed = pair + 1;
        }
        if (code == "0" && value == "SECTION" && pair + 1 < pairs.Pairs()) {
            section = pairs.Value(pair + 1);
        } else if (code == "0" && value == "TABLE" && pair + 1 < pairs.Pairs()) {
            table = pairs.Value(pair + 1);
        } else if (code == "0" && value == "ENDTAB") {
            if (table == "LAYER" && !places.LayerTableEnd) {
                places.LayerTableEnd = pair;
            }
            table.clear();
        } else if (code == "2" && table == "LAYER" && EqualsIgnoreCase(value, ResultsLayer)) {
            places.HasResultsLayer = true;
        } else if (code == "0" && value == "ENDSEC") {
            if (section == "ENTITIES" && !places.EntitiesEnd) {
                places.EntitiesEnd = pair;
                if (firstEntity) {
                    MarkOldResults(pairs, *firstEntity, pair, places);
                }
            }
            section.clear();
        }
        if (section == "ENTITIES" && code == "0" && value != "SECTION" && !firstEntity) {
            firstEntity = pair;
        }
    }
    const unsigned long long seed = places.HandSeed ? HexValue(pairs.Value(*places.HandSeed)) : 0;
    if (seed > 0) {
        places.LargestHandle = std::max(places.LargestHandle, seed - 1);
    }
    return places;
}

std::string Number(double value) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.12g", value);
    return buffer;
}

// Writes group pairs in the drawing's line ending, handles counted on from the largest in use.
class PairWriter {
public:
    PairWriter(std::string ending, unsigned long long largest, bool subclasses)
        : ending_(std::move(ending)), next_(largest + 1), subclasses_(subclasses) {}

    void Pair(int code, const std::string& value) {
        char buffer[8];
        std::snprintf(buffer, sizeof buffer, "%3d", code);
        text_ += buffer + ending_ + value + ending_;
    }
    void Handle() { Pair(5, HandleText(static_cast<long long>(next_++))); }
    void Subclass(const char* name) {
        if (subclasses_) {
            Pair(100, name);
        }
    }

    void Layer() {
        Pair(0, "LAYER");
        Handle();
        Subclass("AcDbSymbolTableRecord");
        Subclass("AcDbLayerTableRecord");
        Pair(2, std::string(ResultsLayer));
        Pair(70, "0");
        Pair(62, "1");
        Pair(6, "CONTINUOUS");
    }

    void Text(const DrawingPoint& at, double height, double angle, const std::string& text) {
        Pair(0, "TEXT");
        Handle();
        Subclass("AcDbEntity");
        Pair(8, std::string(ResultsLayer));
        Subclass("AcDbText");
        Pair(10, Number(at.X));
        Pair(20, Number(at.Y));
        Pair(30, Number(at.Z));
        Pair(40, Number(height));
        Pair(1, text);
        if (angle != 0) {
            Pair(50, Number(angle));
        }
        Subclass("AcDbText");
    }

    std::string Take() { return std::move(text_); }
    unsigned long long Next() const { return next_; }

private:
    std::string ending_;
    unsigned long long next_;
    bool subclasses_;
    std::string text_;
};

// The angle of a pipe in plan, turned so that its text reads from left or from below.
double ReadingAngle(const DrawingPoint& a, const DrawingPoint& b) {
    double degrees = std::atan2(b.Y - a.Y, b.X - a.X) * 180 / std::numbers::pi;
    if (degrees > 90) {
        degrees -= 180;
    } else if (degrees <= -90) {
        degrees += 180;
    }
    return std::abs(degrees) < 1e-9 ? 0 : degrees;
}

Integer NodeNumber(const std::string& text) {
    return CInt(ToNumber(text));
}

std::string PipeText(const PipeResultRecord& result) {
    const std::string flow = Format(std::abs(result.Flow), "0.0") + " gpm";
    if (result.DeviceFlag == 2) {
        return flow;
    }
    return NumberText(static_cast<Single>(result.NominalDiameter)) + "\" " + flow;
}

std::string NodeText(Integer number, double pressure) {
    return std::to_string(number) + " " + Format(pressure, "0.0") + " psi";
}

struct Annotation {
    std::string Texts;
    int Pipes = 0;
    int Nodes = 0;
};

// The results of each row, found by its pair of nodes; parallel rows take them in turn.
class ResultsByNodes {
public:
    explicit ResultsByNodes(const Project& project) {
        const int rows =
            std::clamp<int>(project.CalculationData.NumberOfUniquePipeSections, 0, MaxPipes);
        for (int row = 1; row <= rows; ++row) {
            const auto& result = project.PipeResultRecord[static_cast<std::size_t>(row)];
            results_[Key(result.BegNode, result.EndNode)].push_back(&result);
        }
    }
    const PipeResultRecord* Take(Integer a, Integer b) {
        auto found = results_.find(Key(a, b));
        if (found == results_.end() || found->second.empty()) {
            return nullptr;
        }
        const PipeResultRecord* result = found->second.front();
        found->second.erase(found->second.begin());
        return result;
    }

private:
    static std::pair<Integer, Integer> Key(Integer a, Integer b) {
        return {std::min(a, b), std::max(a, b)};
    }
    std::map<std::pair<Integer, Integer>, std::vector<const PipeResultRecord*>> results_;
};

Annotation Annotate(const Project& project, const DrawingNetwork& network, PairWriter& writer) {
    std::multimap<std::string, const DrawingNetwork::Pipe*> byHandle;
    for (const auto& pipe : network.Pipes) {
        byHandle.emplace(ToUpper(pipe.Segment->Handle.substr(0, HandleWidth)), &pipe);
    }
    ResultsByNodes results(project);
    const double height = TextHeightFeet / network.FeetPerUnit;
    std::set<Integer> nodesDone;
    Annotation annotation;
    for (int row = 1; row <= std::clamp<int>(project.NumberOfPipeRows, 0, MaxPipes); ++row) {
        const PipeRecord& input = project.PipeRecord[row];
        if (TrimmedView(input.CadHandle).empty() || input.Active == 0 || !HasBothNodes(input)) {
            continue;
        }
        const Integer begin = NodeNumber(input.BegNode);
        const Integer end = NodeNumber(input.EndNode);
        const auto [first, last] = byHandle.equal_range(ToUpper(Trim(input.CadHandle)));
        const DrawingNetwork::Pipe* match = nullptr;
        for (auto candidate = first; candidate != last; ++candidate) {
            const auto& pipe = *candidate->second;
            const Integer a = network.Nodes[pipe.Begin].Number;
            const Integer b = network.Nodes[pipe.End].Number;
            if ((a == begin && b == end) || (a == end && b == begin)) {
                match = &pipe;
            }
        }
        if (match == nullptr && std::distance(first, last) == 1) {
            match = first->second;
        }
        const PipeResultRecord* result = results.Take(begin, end);
        if (match == nullptr || result == nullptr) {
            continue;
        }
        const DrawingPoint& a = network.Nodes[match->Begin].At;
        const DrawingPoint& b = network.Nodes[match->End].At;
        const DrawingPoint middle{(a.X + b.X) / 2, (a.Y + b.Y) / 2, (a.Z + b.Z) / 2};
        writer.Text(middle, height, ReadingAngle(a, b), PipeText(*result));
        ++annotation.Pipes;
        const bool turned = network.Nodes[match->Begin].Number == end;
        const std::pair<Integer, Single> ends[] = {{begin, input.PressEstimateB},
                                                   {end, input.PressEstimateE}};
        for (const auto& [number, pressure] : ends) {
            if (!nodesDone.insert(number).second) {
                continue;
            }
            const DrawingPoint& at = (number == begin) != turned ? a : b;
            writer.Text(DrawingPoint{at.X + height / 2, at.Y + height / 2, at.Z}, height, 0,
                        NodeText(number, pressure));
            ++annotation.Nodes;
        }
    }
    return annotation;
}

DrawingResultsOutcome Refused(std::string message) {
    DrawingResultsOutcome outcome;
    outcome.Title = std::string(drawing_results_texts::RefusedTitle);
    outcome.Message = std::move(message);
    return outcome;
}

} // namespace

DrawingResultsOutcome AnnotateDrawing(const Project& project, std::string_view drawing,
                                      const DrawingImportOptions& options, std::string& annotated) {
    if (project.CalculationData.NumberOfUniquePipeSections <= 0) {
        return Refused(std::string(drawing_results_texts::NoResults));
    }
    DrawingContent content;
    if (!ReadDrawing(drawing, content)) {
        return Refused("The drawing is no DXF drawing that can be read.");
    }
    const DrawingNetwork network = FindNetwork(content, options);
    const PairLines pairs = SplitPairs(drawing);
    const Places places = FindPlaces(pairs);
    if (!places.EntitiesEnd) {
        return Refused("The drawing has no ENTITIES section to write the sizes into.");
    }
    const bool subclasses = !content.Version.empty() && content.Version > "AC1009";
    PairWriter texts(pairs.Ending, places.LargestHandle, subclasses);
    const Annotation annotation = Annotate(project, network, texts);
    if (annotation.Pipes == 0) {
        return Refused("No pipe row of the project has the handle of a pipe of this drawing.  "
                       "Use the drawing the project was imported from.");
    }
    PairWriter layer(pairs.Ending, texts.Next() - 1, subclasses);
    if (places.LayerTableEnd && !places.HasResultsLayer) {
        layer.Layer();
    }
    const unsigned long long seed = layer.Next();
    const std::string layerText = layer.Take();
    const std::string entityText = texts.Take();

    annotated.clear();
    annotated.reserve(drawing.size() + layerText.size() + entityText.size());
    for (std::size_t pair = 0; pair < pairs.Pairs(); ++pair) {
        if (places.LayerTableEnd && pair == *places.LayerTableEnd) {
            annotated += layerText;
        }
        if (pair == *places.EntitiesEnd) {
            annotated += entityText;
        }
        if (places.OldResults.contains(pair)) {
            continue;
        }
        annotated += pairs.Lines[2 * pair] + pairs.Ending;
        const std::string& value = places.HandSeed && pair == *places.HandSeed
                                       ? HandleText(static_cast<long long>(seed))
                                       : pairs.Lines[2 * pair + 1];
        annotated += value + pairs.Ending;
    }
    if (pairs.Lines.size() % 2 == 1) {
        annotated += pairs.Lines.back() + pairs.Ending;
    }
    DrawingResultsOutcome outcome;
    outcome.Written = true;
    outcome.Pipes = annotation.Pipes;
    outcome.Nodes = annotation.Nodes;
    return outcome;
}

DrawingResultsOutcome WriteResultsDrawing(const Project& project,
                                          const std::filesystem::path& drawing,
                                          const std::filesystem::path& out,
                                          const DrawingImportOptions& options) {
    std::string text;
    if (!ReadWholeFile(drawing, text)) {
        return Refused("\"" + drawing.string() + "\" cannot be read.");
    }
    std::string annotated;
    DrawingResultsOutcome outcome = AnnotateDrawing(project, text, options, annotated);
    if (!outcome.Written) {
        return outcome;
    }
    std::string error;
    if (!WriteFileAtomically(out, annotated, &error)) {
        outcome = Refused("\"" + out.string() + "\" cannot be written: " + error);
    }
    return outcome;
}

} // namespace quench
