// Writes the sample projects of this folder:
//   make_examples DIRECTORY LIBRARY_DIRECTORY
// branch_line.qnw  a branch line of five sprinklers on a riser, calculated in Demand mode;
// supply_grid.qnw  a gridded system of six branch lines between two mains, in Supply mode.

#include "core/project.h"
#include "core/project_file.h"
#include "library/equivalent_length.h"
#include "library/pipe_library_file.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

namespace {

using namespace quench;

// Rows typed as a designer types them, node data spread to every row that names the node.
class Rows {
public:
    explicit Rows(Project& project) : project_(project) {}

    PipeRecord& Pipe(int begin, int end, Single length, Single diameter, Integer material,
                     const std::string& fittings = "") {
        PipeRecord& row =
            project_.PipeRecord[static_cast<std::size_t>(++project_.NumberOfPipeRows)];
        row = PipeRecord{};
        row.BegNode = std::to_string(begin);
        row.EndNode = std::to_string(end);
        row.Active = True;
        row.Material = material;
        row.Diameter = diameter;
        row.DiameterFixed = True;
        row.Length = length;
        row.FittingText = fittings;
        for (char letter : fittings) {
            const std::string kinds = "FELTBGC";
            const auto kind = kinds.find(letter);
            if (kind != std::string::npos) {
                ++row.FittingCounts[kind];
            }
        }
        return row;
    }

    void Node(int node, const std::string& kFactor, Single elevation, Single area = 0) {
        for (int row = 1; row <= project_.NumberOfPipeRows; ++row) {
            PipeRecord& record = project_.PipeRecord[static_cast<std::size_t>(row)];
            for (bool begin : {true, false}) {
                if ((begin ? record.BegNode : record.EndNode) != std::to_string(node)) {
                    continue;
                }
                (begin ? record.KFactorB : record.KFactorE) = kFactor;
                (begin ? record.ElevationB : record.ElevationE) = elevation;
                (begin ? record.SprinklerAreaB : record.SprinklerAreaE) = area;
            }
        }
    }

    void Inflow(int node) {
        PipeRecord& first = project_.PipeRecord[1];
        (first.BegNode == std::to_string(node) ? first.BegIsInflow : first.EndIsInflow) = 1;
        project_.InflowNode = static_cast<Integer>(node);
        project_.CalculationData.SystemInflowNode = static_cast<Integer>(node);
    }

private:
    Project& project_;
};

void CommonSettings(Project& project) {
    CalculationData& data = project.CalculationData;
    data.UseMaximumImbalance = 1;
    data.MaximumNodePressureImbalance = 0.0001;
    data.InitialDampingFactor = 2;
    data.MinimumDampingFactor = 1;
    project.ProjectData.DesignedBy = "Quench sample";
}

constexpr Integer Sch40 = 1;
constexpr Integer Sch10 = 4;

// A light hazard branch line: riser of 2" up 12 ft, five K 5.6 sprinklers 12 ft apart on 1" and
// 1-1/4" pipe, 0.10 gpm/ft² over 130 ft² each and at least 7 psi at the most remote one.
void BranchLine(Project& project) {
    CommonSettings(project);
    project.ProjectData.Title = "Branch line, Demand mode";
    Rows rows(project);
    rows.Pipe(1, 10, 12, 2, Sch40, "TG");
    rows.Pipe(10, 20, 12, 1.25f, Sch10, "T");
    rows.Pipe(20, 30, 12, 1.25f, Sch10);
    rows.Pipe(30, 40, 12, 1, Sch10);
    rows.Pipe(40, 50, 12, 1, Sch10);
    rows.Pipe(50, 60, 12, 1, Sch10, "E");
    rows.Node(1, "None", 0);
    rows.Node(10, "None", 12);
    for (int node : {20, 30, 40, 50, 60}) {
        rows.Node(node, "5.6", 12, 130);
    }
    rows.Inflow(1);
    CalculationData& data = project.CalculationData;
    data.DemandMode = 1;
    data.SupplyMode = 0;
    data.MinPressureAtHMDNode = 7;
    data.DesignDensity = 0.10f;
    project.SystemData.MinimumDesiredDensity = 0.10f;
    project.SystemData.MaximumAreaPerSprinkler = 130;
    project.SystemData.HazardDescription = "Light hazard";
}

// Six branch lines of eight K 5.6 sprinklers between two 3" mains, fed at one corner through a
// 4" riser at 55 psi; the design area is the far end of the last three lines.
void SupplyGrid(Project& project) {
    CommonSettings(project);
    project.ProjectData.Title = "Gridded system, Supply mode";
    Rows rows(project);
    const int lines = 6;
    const int places = 10;
    auto node = [](int line, int place) { return 100 + 10 * line + place; };
    rows.Pipe(1, node(0, 0), 15, 4, Sch40, "ETG");
    for (int line = 0; line < lines; ++line) {
        for (int place = 1; place < places; ++place) {
            rows.Pipe(node(line, place - 1), node(line, place), 12, 1.25f, Sch10);
        }
    }
    for (int line = 1; line < lines; ++line) {
        rows.Pipe(node(line - 1, 0), node(line, 0), 10, 3, Sch10, "T");
        rows.Pipe(node(line - 1, places - 1), node(line, places - 1), 10, 3, Sch10, "T");
    }
    rows.Node(1, "None", 0);
    for (int line = 0; line < lines; ++line) {
        for (int place = 0; place < places; ++place) {
            const bool sprinkler = place > 0 && place < places - 1;
            const bool flowing = line >= 3 && place >= 3;
            rows.Node(node(line, place), sprinkler ? (flowing ? "5.6" : "Inact") : "None", 14,
                      sprinkler ? 120 : 0);
        }
    }
    rows.Inflow(1);
    CalculationData& data = project.CalculationData;
    data.DemandMode = 0;
    data.SupplyMode = 1;
    data.InflowResidualPressure1 = 55;
}

// Each row's equivalent length from its length, fittings and the library, as typing gives it.
bool Write(const std::filesystem::path& file, const PipeLibrary& library, void (*build)(Project&)) {
    const auto project = std::make_unique<Project>();
    build(*project);
    for (int row = 1; row <= project->NumberOfPipeRows; ++row) {
        RecalcEquivLength(*project, library, row);
    }
    std::string error;
    if (WriteProject(*project, file, &error) != WriteOutcome::Written) {
        std::cerr << "make_examples: cannot write " << file << ": " << error << '\n';
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_examples DIRECTORY LIBRARY_DIRECTORY\n";
        return 2;
    }
    const std::filesystem::path directory = argv[1];
    const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(argv[2]));
    if (!library.FileFound) {
        std::cerr << "make_examples: no pipe library in " << argv[2] << '\n';
        return 2;
    }
    const bool written = Write(directory / "branch_line.qnw", library, BranchLine) &&
                         Write(directory / "supply_grid.qnw", library, SupplyGrid);
    return written ? 0 : 1;
}
