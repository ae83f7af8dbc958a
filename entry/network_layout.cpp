#include "entry/network_layout.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <set>
#include <tuple>

namespace quench {

namespace {

// Room round the network: a number stands to the right of its node, above or below it.
constexpr int MarginX = 400;
constexpr int MarginY = 200;
constexpr int LabelGap = 20;

struct Extent {
    double Left = 0;
    double Top = 0;
    double Right = 0;
    double Bottom = 0;
};

Extent ExtentOf(const NetworkSketch& sketch) {
    if (sketch.Nodes.empty()) {
        return {};
    }
    Extent extent{sketch.Nodes.front().X, sketch.Nodes.front().Y, sketch.Nodes.front().X,
                  sketch.Nodes.front().Y};
    for (const SketchNode& node : sketch.Nodes) {
        extent.Left = std::min(extent.Left, node.X);
        extent.Right = std::max(extent.Right, node.X);
        extent.Top = std::min(extent.Top, node.Y);
        extent.Bottom = std::max(extent.Bottom, node.Y);
    }
    return extent;
}

// Nodes on one line take turns above and below it, so that close neighbours' numbers do not run
// into each other.
std::vector<bool> LabelsAbove(const NetworkSketch& sketch) {
    std::map<double, std::vector<std::size_t>> lines;
    for (std::size_t place = 0; place < sketch.Nodes.size(); ++place) {
        lines[sketch.Nodes[place].Y].push_back(place);
    }
    std::vector<bool> above(sketch.Nodes.size(), true);
    for (auto& [y, places] : lines) {
        std::ranges::stable_sort(places, [&sketch](std::size_t a, std::size_t b) {
            return sketch.Nodes[a].X < sketch.Nodes[b].X;
        });
        for (std::size_t rank = 0; rank < places.size(); ++rank) {
            above[places[rank]] = rank % 2 == 0;
        }
    }
    return above;
}

void AppendNumber(NetworkDrawing& drawing, int number, PicturePoint at, bool above) {
    const int top = above ? at.Y - LabelGap - DigitHeight : at.Y + LabelGap;
    const std::vector<Dot> dots = DottedNumber(std::to_string(number), at.X + LabelGap, top);
    drawing.Dots.insert(drawing.Dots.end(), dots.begin(), dots.end());
}

// "A", "A, B", "A, B, C": the parts that apply, each after a comma but the first.
std::string JoinLimits(const std::vector<std::string>& parts) {
    std::string joined;
    for (const std::string& part : parts) {
        joined += joined.empty() ? part : ", " + part;
    }
    return joined;
}

bool IsSprinklerEnd(const std::string& kFactor) {
    return kFactor != "0";
}

// The heads of each branch line and side, ranked from the line's start outwards: the rank of a
// head is its place among the distinct distances from x = 0 on its side. The points where a line
// meets the cross main or the perimeter are no heads and have rank 0.
class HeadRanks {
public:
    explicit HeadRanks(const std::vector<PlacedPipe>& pipes) {
        for (const PlacedPipe& pipe : pipes) {
            if (pipe.Kind != BuilderPipeKind::Branch) {
                junctions_.insert(PointKey(pipe.Begin));
                junctions_.insert(PointKey(pipe.End));
            }
        }
        for (const PlacedPipe& pipe : pipes) {
            if (pipe.Kind == BuilderPipeKind::Branch) {
                for (const LayoutPoint& point : {pipe.Begin, pipe.End}) {
                    if (!junctions_.contains(PointKey(point))) {
                        distances_[SideKey(pipe.Line, point)].insert(std::fabs(point.X));
                    }
                }
            }
        }
    }

    long long RankOf(int line, const LayoutPoint& point) const {
        const auto found = distances_.find(SideKey(line, point));
        if (junctions_.contains(PointKey(point)) || found == distances_.end()) {
            return 0;
        }
        const auto place = found->second.find(std::fabs(point.X));
        return std::distance(found->second.begin(), place) + 1;
    }

private:
    static std::pair<double, double> PointKey(const LayoutPoint& point) {
        return {point.X, point.Y};
    }
    static std::pair<int, bool> SideKey(int line, const LayoutPoint& point) {
        return {line, point.X < 0};
    }

    std::set<std::pair<double, double>> junctions_;
    std::map<std::pair<int, bool>, std::set<double>> distances_;
};

bool InPrintedPart(const PlacedPipe& pipe, const PrintedPart& part, const HeadRanks& ranks) {
    // A pipe down to the next line belongs to the next line as well.
    const bool downToNext =
        pipe.Line > 0 && pipe.Kind != BuilderPipeKind::Branch && pipe.End.Y != pipe.Begin.Y;
    if (pipe.Line + (downToNext ? 1 : 0) > part.Lines) {
        return false;
    }
    return pipe.Kind != BuilderPipeKind::Branch ||
           (ranks.RankOf(pipe.Line, pipe.Begin) <= part.SprinklersPerSide &&
            ranks.RankOf(pipe.Line, pipe.End) <= part.SprinklersPerSide);
}

int NodeNumber(const std::string& text) {
    try {
        return std::stoi(text);
    } catch (const std::exception&) {
        return 0;
    }
}

} // namespace

NetworkSketch SketchOfPlan(const std::vector<PlacedPipe>& pipes, const PrintedPart& part) {
    const HeadRanks ranks(pipes);
    NetworkSketch sketch;
    std::map<std::tuple<std::string, double, double>, std::size_t> places;
    const auto nodeAt = [&](const std::string& number, const LayoutPoint& point,
                            const std::string& kFactor) {
        const auto key = std::make_tuple(number, point.X, point.Y);
        const auto [found, added] = places.try_emplace(key, sketch.Nodes.size());
        if (added) {
            sketch.Add(NodeNumber(number), point.X, point.Y, IsSprinklerEnd(kFactor));
        } else if (!IsSprinklerEnd(kFactor)) {
            sketch.Nodes[found->second].Sprinkler = false; // a "0" at any end of it
        }
        return found->second;
    };
    for (const PlacedPipe& pipe : pipes) {
        if (InPrintedPart(pipe, part, ranks)) {
            sketch.Connect(nodeAt(pipe.Row.BegNode, pipe.Begin, pipe.Row.KFactorB),
                           nodeAt(pipe.Row.EndNode, pipe.End, pipe.Row.KFactorE));
        }
    }
    return sketch;
}

std::size_t NetworkSketch::Add(int number, double x, double y, bool sprinkler) {
    Nodes.push_back({number, x, y, sprinkler});
    return Nodes.size() - 1;
}

PicturePoint PictureScale::Place(double x, double y) const {
    return {static_cast<int>(std::lround(OffsetX + x * Factor)),
            static_cast<int>(std::lround(OffsetY + y * Factor))};
}

PictureScale FitSketch(const NetworkSketch& sketch) {
    const Extent extent = ExtentOf(sketch);
    const double width = extent.Right - extent.Left;
    const double height = extent.Bottom - extent.Top;
    const double roomX = DrawingWidth - 2.0 * MarginX;
    const double roomY = DrawingHeight - 2.0 * MarginY;
    // A network with no width or no height (a single line) is scaled by its other side.
    PictureScale scale;
    if (width > 0 && height > 0) {
        scale.Factor = std::min(roomX / width, roomY / height);
    } else if (width > 0) {
        scale.Factor = roomX / width;
    } else if (height > 0) {
        scale.Factor = roomY / height;
    }
    scale.OffsetX = DrawingWidth / 2.0 - (extent.Left + width / 2) * scale.Factor;
    scale.OffsetY = DrawingHeight / 2.0 - (extent.Top + height / 2) * scale.Factor;
    return scale;
}

NetworkDrawing DrawNetwork(const NetworkSketch& sketch) {
    const PictureScale scale = FitSketch(sketch);
    NetworkDrawing drawing;
    std::vector<PicturePoint> points;
    points.reserve(sketch.Nodes.size());
    for (const SketchNode& node : sketch.Nodes) {
        points.push_back(scale.Place(node.X, node.Y));
        drawing.Nodes.push_back({points.back(), node.Sprinkler});
    }
    for (const SketchPipe& pipe : sketch.Pipes) {
        if (pipe.From < points.size() && pipe.To < points.size()) {
            drawing.Lines.push_back({points[pipe.From], points[pipe.To]});
        }
    }
    const std::vector<bool> above = LabelsAbove(sketch);
    for (std::size_t place = 0; place < sketch.Nodes.size(); ++place) {
        AppendNumber(drawing, sketch.Nodes[place].Number, points[place], above[place]);
    }
    return drawing;
}

std::string TreePrintoutLimitMessage(long long leftSprinklers, long long rightSprinklers,
                                     long long branches) {
    std::vector<std::string> parts;
    if (leftSprinklers > TreePrintedSprinklers) {
        parts.emplace_back("20 sprinklers per left branch");
    }
    if (rightSprinklers > TreePrintedSprinklers) {
        parts.emplace_back("20 sprinklers per right branch");
    }
    if (branches > PrintedBranches) {
        parts.emplace_back("15 branches");
    }
    if (parts.empty()) {
        return {};
    }
    return "Tree printout limited to " + JoinLimits(parts) +
           ", so not all of the tree will be displayed here.";
}

std::string GridPrintoutLimitMessage(long long sprinklersPerBranch, long long branches) {
    std::vector<std::string> parts;
    if (sprinklersPerBranch > GridPrintedSprinklers) {
        parts.emplace_back("40 sprinklers per branch");
    }
    if (branches > PrintedBranches) {
        parts.emplace_back("15 branches");
    }
    if (parts.empty()) {
        return {};
    }
    return "Grid printout limited to " + JoinLimits(parts) +
           ", so not all of the grid will be displayed here.";
}

} // namespace quench
