#pragma once

// Networks for the benchmarks: a tree (a cross main with dead-end branch lines) and a grid
// (branch lines between two mains), fed through a riser from node 1, with the sprinklers of the
// far branch lines flowing and the others inactive. Node numbers run along the lines, are
// shuffled as a drawing hands them out, so that the equations come in no helpful order, or are
// given as people often give them by hand: the mains first, then the branch lines, the order that
// fills the equations in most when they are eliminated in node order.

#include "core/formats.h"
#include "core/project.h"

#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace quench::bench {

enum class Shape { Tree, Grid };

enum class Numbering { Lines, Shuffled, MainsFirst };

struct GeneratedNetwork {
    Shape Kind = Shape::Grid;
    int Lines = 0;  // branch lines
    int Places = 0; // nodes along a line
    Numbering Numbers = Numbering::Lines;
};

// About 40, 200 and 1000 pipes of each shape.
inline GeneratedNetwork SizedNetwork(Shape kind, int pipes) {
    if (kind == Shape::Tree) {
        return pipes <= 40    ? GeneratedNetwork{kind, 5, 8}
               : pipes <= 200 ? GeneratedNetwork{kind, 20, 10}
                              : GeneratedNetwork{kind, 99, 10};
    }
    return pipes <= 40    ? GeneratedNetwork{kind, 4, 10}
           : pipes <= 200 ? GeneratedNetwork{kind, 10, 19}
                          : GeneratedNetwork{kind, 24, 40};
}

class NetworkGenerator {
public:
    explicit NetworkGenerator(Project& project) : project_(project) {}

    void Build(const GeneratedNetwork& network) {
        lines_ = network.Lines;
        places_ = network.Places;
        Number(network.Numbers);
        const bool grid = network.Kind == Shape::Grid;
        const Single main = network.Lines > 30 || network.Places > 30 ? 8.0f : 4.0f;
        AddPipe(1, Node(0, 0), 20, main);
        for (int line = 0; line < lines_; ++line) {
            for (int place = 1; place < places_; ++place) {
                AddPipe(Node(line, place - 1), Node(line, place), 10, 2);
            }
        }
        for (int line = 1; line < lines_; ++line) {
            AddPipe(Node(line - 1, 0), Node(line, 0), 10, main);
            if (grid) {
                AddPipe(Node(line - 1, places_ - 1), Node(line, places_ - 1), 10, 4);
            }
        }
        for (int row = 1; row <= project_.NumberOfPipeRows; ++row) {
            Describe(project_.PipeRecord[static_cast<std::size_t>(row)], grid);
        }
        project_.PipeRecord[1].BegIsInflow = 1;
        project_.InflowNode = 1;
        project_.CalculationData.SystemInflowNode = 1;
        CalculationData& data = project_.CalculationData;
        data.UseMaximumImbalance = 1;
        data.MaximumNodePressureImbalance = 0.00001;
        Damping(2, 1);
    }

    void Damping(Single initial, Single minimum) {
        project_.CalculationData.InitialDampingFactor = initial;
        project_.CalculationData.MinimumDampingFactor = minimum;
    }

    void SupplyMode(double pressure) {
        project_.CalculationData.DemandMode = 0;
        project_.CalculationData.SupplyMode = 1;
        project_.CalculationData.InflowResidualPressure1 = pressure;
    }

    // Demand mode at a minimum pressure and a density; with sizing, every branch line pipe is
    // left open to it within 20 ft/s and 10 psi per 100 ft.
    void DemandMode(Single minimum, Single density, bool sized) {
        CalculationData& data = project_.CalculationData;
        data.DemandMode = 1;
        data.SupplyMode = 0;
        data.MinPressureAtHMDNode = minimum;
        data.DesignDensity = density;
        project_.SystemData.MinimumDesiredDensity = density;
        if (!sized) {
            return;
        }
        data.MaxWaterVelocity = 20;
        data.MaxFrictionalLoss = 10;
        for (int row = 2; row <= project_.NumberOfPipeRows; ++row) {
            PipeRecord& pipe = project_.PipeRecord[static_cast<std::size_t>(row)];
            if (pipe.Diameter == 2) {
                pipe.Diameter = 0;
                pipe.DiameterFixed = False;
            }
        }
    }

private:
    // Node numbers from 10 up: in line order, in a fixed random order, or the first and the last
    // node of every line (the mains of a grid) before the rest of each line.
    void Number(Numbering numbering) {
        numbers_.resize(static_cast<std::size_t>(lines_ * places_));
        std::iota(numbers_.begin(), numbers_.end(), 10);
        if (numbering == Numbering::MainsFirst) {
            int next = 10;
            for (const int place : {0, places_ - 1}) {
                for (int line = 0; line < lines_; ++line) {
                    numbers_[static_cast<std::size_t>(line * places_ + place)] = next++;
                }
            }
            for (int line = 0; line < lines_; ++line) {
                for (int place = 1; place < places_ - 1; ++place) {
                    numbers_[static_cast<std::size_t>(line * places_ + place)] = next++;
                }
            }
        }
        if (numbering != Numbering::Shuffled) {
            return;
        }
        std::mt19937 random(20261125);
        for (std::size_t at = numbers_.size() - 1; at > 0; --at) {
            const std::size_t other = random() % (at + 1);
            std::swap(numbers_[at], numbers_[other]);
        }
    }

    int Node(int line, int place) const {
        return numbers_[static_cast<std::size_t>(line * places_ + place)];
    }

    // Line and place of a numbered node, -1 for the riser's foot.
    int IndexOf(int node) const {
        for (std::size_t at = 0; at < numbers_.size(); ++at) {
            if (numbers_[at] == node) {
                return static_cast<int>(at);
            }
        }
        return -1;
    }

    void AddPipe(int begin, int end, Single length, Single diameter) {
        PipeRecord& row =
            project_.PipeRecord[static_cast<std::size_t>(++project_.NumberOfPipeRows)];
        row = PipeRecord{};
        row.BegNode = std::to_string(begin);
        row.EndNode = std::to_string(end);
        row.Active = True;
        row.Material = 1;
        row.Diameter = diameter;
        row.DiameterFixed = True;
        row.Length = length;
    }

    // The K-factor text and area at a node: the last three lines flow near their far end.
    void NodeData(int node, bool grid, std::string& kFactor, Single& area) const {
        kFactor = "None";
        area = 0;
        const int index = IndexOf(node);
        if (index < 0) {
            return;
        }
        const int line = index / places_;
        const int place = index % places_;
        const bool sprinkler = place > 0 && (!grid || place < places_ - 1);
        if (!sprinkler) {
            return;
        }
        const int last = grid ? places_ - 2 : places_ - 1;
        kFactor = line >= lines_ - 3 && place > last - 8 ? "5.6" : "Inact";
        area = 100;
    }

    void Describe(PipeRecord& row, bool grid) const {
        NodeData(static_cast<int>(ToNumber(row.BegNode)), grid, row.KFactorB, row.SprinklerAreaB);
        NodeData(static_cast<int>(ToNumber(row.EndNode)), grid, row.KFactorE, row.SprinklerAreaE);
    }

    Project& project_;
    int lines_ = 0;
    int places_ = 0;
    std::vector<int> numbers_;
};

} // namespace quench::bench
