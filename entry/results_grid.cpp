#include "entry/results_grid.h"

#include "calc/results_screen.h"
#include "core/formats.h"
#include "core/text.h"

#include <algorithm>

namespace quench {

namespace {

constexpr const char* General = "###0.00";
constexpr const char* KFactor = "#0.00";
constexpr const char* Fine = "###0.000";
constexpr const char* PerFoot = "###0.00000";

// Column headings in SI: the same words with the SI units.
std::string InSystem(std::string heading, MeasureSystem system, const std::string& word) {
    const auto replace = [&heading](std::string_view from, std::string_view to) {
        for (std::size_t at = heading.find(from); at != std::string::npos;
             at = heading.find(from, at + to.size())) {
            heading.replace(at, from.size(), to);
        }
    };
    replace("Sprinkler", word);
    if (system == MeasureSystem::SI) {
        replace("(K)", "(Km)");
        replace("(gpm)", "(Lpm)");
        replace("(psi)", "(kPa)");
        replace("(fps)", "(m/s)");
        replace("-psi", "-kPa");
    }
    return heading;
}

class LineWriter {
public:
    LineWriter(const Project& project, MeasureSystem system) : project_(project), system_(system) {}

    std::string Number(UnitKind kind, double value, const char* picture) const {
        return Format(ShownValue(kind, value, system_), picture);
    }

    std::string Node(Integer number) const {
        return std::to_string(TypedNodeNumber(project_, number));
    }

    // The calculated pipe of a result row: the same two nodes, either way round.
    const CalcPipeRecord* PipeOf(const PipeResultRecord& row) const {
        const auto typed = [this](const std::string& text) {
            return static_cast<int>(TypedNodeNumber(project_, ToNumber(text)));
        };
        const int count = std::clamp<int>(project_.NumberOfPipes, 0, MaxPipes);
        for (int pipe = 1; pipe <= count; ++pipe) {
            const CalcPipeRecord& candidate =
                project_.CalcPipeRecord[static_cast<std::size_t>(pipe)];
            const int begin = typed(candidate.BegNode);
            const int end = typed(candidate.EndNode);
            if ((begin == row.BegNode && end == row.EndNode) ||
                (begin == row.EndNode && end == row.BegNode)) {
                return &candidate;
            }
        }
        return nullptr;
    }

    std::string DeviceName(Integer material) const {
        switch (material) {
        case MaterialMeter:
            return "Meter";
        case MaterialBackflowPreventer:
            return "Bckflo Prev";
        case MaterialAlarmDevice:
            return project_.AlarmDeviceShortName;
        case MaterialFirePump:
            return "Fire Pump";
        default:
            return {};
        }
    }

    void Pipe(int place, const PipeResultRecord& row, std::vector<ResultsGridLine>& lines) const {
        const CalcPipeRecord* pipe = PipeOf(row);
        ResultsGridLine first{std::to_string(place),
                              Node(row.BegNode),
                              Number(UnitKind::K_Factor, row.KFactorB, KFactor),
                              Number(UnitKind::Length, row.ElevationB, General),
                              Number(UnitKind::Volumetric_Flow, row.DischargeB, General),
                              Number(UnitKind::Pressure_Drop, row.ResidualB, General),
                              Number(UnitKind::Fine_Length, row.NominalDiameter, General),
                              Number(UnitKind::Volumetric_Flow, row.Flow, General),
                              Number(UnitKind::Friction_Loss, row.FrictionLossPerFoot, PerFoot),
                              Number(UnitKind::Length, row.PipeLength, General),
                              Number(UnitKind::Pressure_Drop, row.FrictionPressure, Fine)};
        ResultsGridLine second{"",
                               Node(row.EndNode),
                               Number(UnitKind::K_Factor, row.KFactorE, KFactor),
                               Number(UnitKind::Length, row.ElevationE, General),
                               Number(UnitKind::Volumetric_Flow, row.DischargeE, General),
                               Number(UnitKind::Pressure_Drop, row.ResidualE, General),
                               Number(UnitKind::Fine_Length, row.InsideDiameter, Fine),
                               Number(UnitKind::Velocity, row.Velocity, General),
                               TrimmedView(row.FittingText).empty() ? "-----"
                                                                    : Trim(row.FittingText),
                               Number(UnitKind::Length, row.FittingLength, General),
                               Number(UnitKind::Pressure_Drop, row.ElevationPressure, Fine)};
        ResultsGridLine third{};
        third[1] = pipe != nullptr ? Trim(pipe->ResultFittingText) : std::string();
        third[6] = std::to_string(CLng(row.CFactor));
        third[8] = std::to_string(row.TypeGroup);
        third[9] = Number(UnitKind::Length, row.TotalLength, General);
        third[10] = Number(UnitKind::Pressure_Drop, row.VelocityPressure, Fine);
        ResultsGridLine fourth{};
        fourth[1] = SizingNoteText(NoteOf(pipe));
        lines.push_back(std::move(first));
        lines.push_back(std::move(second));
        lines.push_back(std::move(third));
        lines.push_back(std::move(fourth));
    }

    // Why sizing left the pipe over a limit, None for a pipe it did not.
    SizingNote NoteOf(const CalcPipeRecord* pipe) const {
        if (pipe == nullptr) {
            return SizingNote::None;
        }
        const auto row = static_cast<std::size_t>(pipe - project_.CalcPipeRecord.data());
        return row < project_.SizingNotes.size() ? project_.SizingNotes[row] : SizingNote::None;
    }

    void Device(int place, const PipeResultRecord& row, std::vector<ResultsGridLine>& lines) const {
        const CalcPipeRecord* pipe = PipeOf(row);
        const std::string unit(UnitWord(UnitKind::Pressure_Drop, system_));
        ResultsGridLine first{};
        first[0] = std::to_string(place);
        first[1] = Node(row.BegNode);
        first[2] = pipe != nullptr ? DeviceName(pipe->Material) : std::string();
        first[3] = Number(UnitKind::Length, row.ElevationB, General);
        first[5] = Number(UnitKind::Pressure_Drop, row.ResidualB, General);
        first[7] = Number(UnitKind::Volumetric_Flow, row.Flow, General);
        ResultsGridLine second{};
        second[1] = Node(row.EndNode);
        second[2] = Number(UnitKind::Pressure_Drop, row.FrictionPressure, General) + " " + unit;
        second[3] = Number(UnitKind::Length, row.ElevationE, General);
        second[5] = Number(UnitKind::Pressure_Drop, row.ResidualE, General);
        lines.push_back(std::move(first));
        lines.push_back(std::move(second));
        lines.emplace_back();
        lines.emplace_back();
    }

private:
    const Project& project_;
    MeasureSystem system_;
};

} // namespace

ResultsGrid BuildResultsGrid(const Project& project, MeasureSystem system) {
    ResultsGrid grid;
    std::string word = Trim(project.SystemData.PrimaryDischargeName);
    if (word.empty()) {
        word = "Sprinkler";
    }
    for (std::size_t column = 0; column < grid.Headings.size(); ++column) {
        grid.Headings[column] = InSystem(ResultsGridHeadings[column], system, word);
    }
    const LineWriter writer(project, system);
    const int rows =
        std::clamp<int>(project.CalculationData.NumberOfUniquePipeSections, 0, MaxPipes);
    for (int place = 1; place <= rows; ++place) {
        const PipeResultRecord& row = project.PipeResultRecord[static_cast<std::size_t>(place)];
        if (row.DeviceFlag == 2) {
            writer.Device(place, row, grid.Lines);
        } else {
            writer.Pipe(place, row, grid.Lines);
        }
    }
    return grid;
}

} // namespace quench
