#include "interchange/cad_data_file.h"

#include "calc/build_working_rows.h"
#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/text.h"
#include "library/equivalent_length.h"
#include "library/fitting_text.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace quench {

namespace {

// The values of the file one by one: a quoted word to its closing quote, anything else to the
// next comma or line end, blanks around it dropped.
class ValueReader {
public:
    explicit ValueReader(std::string_view text) : text_(text) {}

    bool AtEnd() {
        SkipBlanks();
        return at_ >= text_.size();
    }

    std::optional<std::string> Next() {
        if (AtEnd()) {
            return std::nullopt;
        }
        std::string value;
        if (text_[at_] == '"') {
            const std::size_t close = text_.find('"', at_ + 1);
            const std::size_t end = close == std::string_view::npos ? text_.size() : close;
            value = std::string(text_.substr(at_ + 1, end - at_ - 1));
            at_ = end == text_.size() ? end : end + 1;
            SkipBlanks();
        } else {
            const std::size_t end = text_.find_first_of(",\r\n", at_);
            const std::size_t stop = end == std::string_view::npos ? text_.size() : end;
            value = Trim(text_.substr(at_, stop - at_));
            at_ = stop;
        }
        if (at_ < text_.size() && text_[at_] == ',') {
            ++at_;
        }
        return value;
    }

    double Number() { return ToNumber(Next().value_or("")); }
    std::string Word() { return Next().value_or(""); }

private:
    void SkipBlanks() {
        while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t' ||
                                      text_[at_] == '\r' || text_[at_] == '\n')) {
            ++at_;
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

struct CadHeader {
    double Rows = 0;
    double Scale = 0;
    double Nodes = 0;
    Integer SourceNode = 0;
    double MaxWaterVelocity = 0;
    double MaxFrictionalLoss = 0;
};

CadHeader ReadHeader(ValueReader& values) {
    CadHeader header;
    header.Rows = values.Number();
    header.Scale = values.Number();
    header.Nodes = values.Number();
    header.SourceNode = CInt(values.Number());
    header.MaxWaterVelocity = values.Number();
    header.MaxFrictionalLoss = values.Number();
    return header;
}

std::string Handle(const std::string& word) {
    return word.substr(0, 6);
}

// The K-factor of a row end: 1 the default, 0 no sprinkler.
std::string KFactorText(double value) {
    if (value == 1) {
        return "Dflt";
    }
    if (value == 0) {
        return "None";
    }
    return NumberText(static_cast<Single>(value)).substr(0, 6);
}

std::string NodeText(double value) {
    return std::to_string(CInt(value));
}

void ReadNodeBlock(Project& project, ValueReader& values, double count) {
    int stored = 0;
    for (double index = 0; index < count && !values.AtEnd(); ++index) {
        const Integer number = CInt(values.Number());
        const std::string handle = Handle(values.Word());
        if (stored < MaxNodes) {
            ++stored;
            project.NodeRecord[stored].Number = number;
            project.NodeRecord[stored].CadHandle = handle;
        }
    }
    project.NumberOfNodes = static_cast<Integer>(stored);
}

void ReadPipeRow(PipeRecord& row, ValueReader& values) {
    row.BegNode = NodeText(values.Number());
    row.EndNode = NodeText(values.Number());
    row.ElevationB = static_cast<Single>(values.Number());
    row.ElevationE = static_cast<Single>(values.Number());
    row.KFactorB = KFactorText(values.Number());
    row.KFactorE = KFactorText(values.Number());
    row.SprinklerAreaB = static_cast<Single>(values.Number());
    row.SprinklerAreaE = static_cast<Single>(values.Number());
    row.AreaGroupB = values.Word().substr(0, 6);
    row.AreaGroupE = values.Word().substr(0, 6);
    row.NonSprinklerFlowB = static_cast<Single>(values.Number());
    row.NonSprinklerFlowE = static_cast<Single>(values.Number());
    row.TypeGroup = CInt(values.Number());
    row.Material = CInt(values.Number());
    if (row.Material < 1 || row.Material > 50) {
        row.Material = DefaultMaterial;
    }
    const auto diameter = static_cast<Single>(values.Number());
    row.DiameterFixed = diameter > 0 ? 1 : 0;
    row.Diameter = diameter > 0 ? diameter : 0;
    row.Length = static_cast<Single>(values.Number());
    row.NonStandardFitLength = static_cast<Single>(values.Number());
    row.OldFittingLength = CInt(row.NonStandardFitLength);
    for (auto& count : row.FittingCounts) {
        count = static_cast<Integer>(std::clamp(CInt(values.Number()), Integer{0}, Integer{99}));
    }
    row.FittingText = BuildFittingText(row.FittingCounts);
    row.CadHandle = Handle(values.Word());
}

void ReadDeviceRow(PipeRecord& row, ValueReader& values, Integer material) {
    row.Material = material;
    row.BegNode = NodeText(values.Number());
    row.EndNode = NodeText(values.Number());
    row.ElevationB = static_cast<Single>(values.Number());
    row.ElevationE = static_cast<Single>(values.Number());
    row.DeviceLoss = static_cast<Single>(values.Number());
    row.CadHandle = Handle(values.Word());
}

void SetHeaderValues(Project& project, const CadHeader& header) {
    auto& calculation = project.CalculationData;
    calculation.MaxWaterVelocity = header.MaxWaterVelocity;
    calculation.MaxFrictionalLoss = header.MaxFrictionalLoss;
    calculation.SystemInflowNode = header.SourceNode;
    const bool usUnits = header.Scale == 0 || std::abs(header.Scale - InchesInFeetScale) < 1e-6;
    project.UnitSystem = usUnits ? 0 : 1;
}

CadDataOutcome Refused(std::string message) {
    return CadDataOutcome{false, std::string(cad_data_texts::RefusedTitle), std::move(message)};
}

} // namespace

void SetCadStartValues(Project& project, int rows) {
    auto& calculation = project.CalculationData;
    calculation.DemandMode = 1;
    calculation.SupplyMode = 0;
    calculation.MinPressureAtHMDNode = 7;
    calculation.UseMaximumImbalance = 1;
    calculation.MaximumNodePressureImbalance = 0.01;
    const DampingStart damping = DampingForRows(rows);
    calculation.InitialDampingFactor = damping.Initial;
    calculation.MinimumDampingFactor = damping.Minimum;
    calculation.TypeGroupMaxDiameter.fill(12);
    project.SystemData.DefaultKFactor = 5.65f;
    project.SystemData.DefaultPipeMaterial = DefaultMaterial;
    project.SystemData.MaximumAreaPerSprinkler = 130;
}

void MarkSupplyRow(Project& project, Integer source) {
    const std::string text = std::to_string(source);
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        auto& pipe = project.PipeRecord[row];
        if (pipe.BegNode == text || pipe.EndNode == text) {
            pipe.BegIsInflow = pipe.BegNode == text ? 1 : 0;
            pipe.EndIsInflow = pipe.EndNode == text ? 1 : 0;
            return;
        }
    }
}

DampingStart DampingForRows(int rows) {
    if (rows <= 15) {
        return {4, 1};
    }
    if (rows <= 40) {
        return {8, 4};
    }
    if (rows <= 100) {
        return {40, 30};
    }
    return {65, 60};
}

CadDataOutcome ReadCadData(Project& project, std::string_view text, const PipeLibrary& library) {
    ResetProject(project);
    ValueReader values(text);
    const CadHeader header = ReadHeader(values);
    if (!(header.Rows <= MaxPipes)) {
        return Refused("The file holds " + NumberText(header.Rows) + " pipes, more than the " +
                       std::to_string(MaxPipes) +
                       " that a project can take.  The file is not loaded.");
    }
    const int rows = header.Rows > 0 ? static_cast<int>(header.Rows) : 0;
    ReadNodeBlock(project, values, header.Nodes);

    project.NumberOfPipeRows = static_cast<Integer>(rows);
    project.NumberOfPipes = static_cast<Integer>(rows);
    for (int row = 1; row <= rows && !values.AtEnd(); ++row) {
        auto& pipe = project.PipeRecord[row];
        const std::string kind = ToUpper(values.Word());
        if (kind == PipeRowKind) {
            ReadPipeRow(pipe, values);
        } else if (kind == PumpRowKind || kind == MeterRowKind) {
            ReadDeviceRow(pipe, values, kind == PumpRowKind ? MaterialFirePump : MaterialMeter);
        } else {
            ResetProject(project);
            return Refused("Row " + std::to_string(row) + " of the file starts with \"" +
                           kind.substr(0, 20) +
                           "\" where PIPE, PUMP or METER belongs.  The file is not loaded.");
        }
        pipe.Active = 1;
        RecalcEquivLength(project, library, row);
    }
    SetCadStartValues(project, rows);
    SetHeaderValues(project, header);
    MarkSupplyRow(project, header.SourceNode);
    BuildWorkingRows(project);
    return CadDataOutcome{true, {}, {}};
}

CadDataOutcome ReadCadDataFile(Project& project, const std::filesystem::path& file,
                               const PipeLibrary& library) {
    std::string text;
    if (!ReadWholeFile(file, text)) {
        return Refused("\"" + file.string() + "\" cannot be read.");
    }
    return ReadCadData(project, text, library);
}

} // namespace quench
