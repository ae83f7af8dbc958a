#include "interchange/legacy_project.h"

#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/text.h"
#include "interchange/legacy_record.h"
#include "library/fitting_text.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>

namespace quench {

namespace {

// Field offsets of the records that carry model data.
namespace header {
constexpr std::size_t Format = 0, FormatSecond = 2, NodeCount = 8, PipeCount = 10, MinPressure = 18,
                      DefaultK = 22, MaxVelocity = 34, MaxFriction = 38, DefaultMaterial = 50,
                      Text = 54;
constexpr std::size_t TextWidth = 26;
} // namespace header

namespace node {
constexpr std::size_t Number = 0, KFactor = 2, Elevation = 6, Discharge = 10, Pressure = 14,
                      Area = 18, AreaGroup = 22, Filler = 23;
} // namespace node

namespace pipe {
constexpr std::size_t BegNode = 0, EndNode = 2, Diameter = 4, TotalLength = 8, Material = 12,
                      Active = 14, Length = 16, Fittings = 20, NonStandard = 38, TypeGroup = 42,
                      Filler = 43;
} // namespace pipe

constexpr std::size_t LongText = 31;
constexpr std::size_t ShortText = 18;
constexpr std::size_t KFactorTextWidth = 6;
constexpr int InflowSlots = 13;

constexpr Single KScale = 100.0f;
constexpr Single ElevationScale = 10.0f;
constexpr Single FlowScale = 10.0f;
constexpr Single PressureScale = 100.0f;
constexpr Single DiameterScale = 1000.0f;
constexpr Single LengthScale = 10.0f;

std::size_t RecordStart(std::size_t number) {
    return (number - 1) * LegacyRecordLength;
}

// The text fields of records 2 to 9, first and second column.
struct TextPlace {
    int Record;
    std::size_t Offset;
};

template <class ProjectType, class Visit>
void ForEachText(ProjectType& project, Visit visit) {
    visit(TextPlace{2, 0}, project.ProjectData.Title);
    visit(TextPlace{2, LongText}, project.ProjectData.DesignedBy);
    visit(TextPlace{3, 0}, project.ClientData.Name);
    visit(TextPlace{3, LongText}, project.BuildingData.Name);
    visit(TextPlace{4, 0}, project.SystemData.HazardDescription);
    visit(TextPlace{4, LongText}, project.BuildingData.Address);
    visit(TextPlace{5, 0}, project.ProjectData.CodeReference);
    visit(TextPlace{5, LongText}, project.ProjectData.ApprovingAgency);
    visit(TextPlace{6, 0}, project.SystemData.TestHydrantID);
    visit(TextPlace{6, LongText}, project.SystemData.SourceOfInformation);
    visit(TextPlace{7, 0}, project.SystemData.HydrantTestDate);
    visit(TextPlace{8, 0}, project.SystemData.SprinklerMake);
    visit(TextPlace{8, LongText}, project.SystemData.SprinklerModel);
    visit(TextPlace{9, 0}, project.SystemData.SprinklerSize);
    visit(TextPlace{9, LongText}, project.BuildingData.Owner);
}

// ---------------------------------------------------------------------------------------------
// Import

struct LegacyNode {
    Single KFactor = 0; // as in the file, after the division
    Single Elevation = 0;
    Single Discharge = 0;
    Single Pressure = 0;
    Single Area = 0;
    std::string AreaGroup;
};

LegacyRecordReader RecordAt(std::span<const std::uint8_t> bytes, std::size_t number) {
    return LegacyRecordReader(bytes, RecordStart(number));
}

// The number of whole or partial records of the file from record `first` on.
std::size_t RecordsFrom(std::span<const std::uint8_t> bytes, std::size_t first) {
    const std::size_t start = RecordStart(first);
    if (bytes.size() <= start) {
        return 0;
    }
    return (bytes.size() - start + LegacyRecordLength - 1) / LegacyRecordLength;
}

std::string KFactorText(Single kFactor) {
    if (kFactor == 1.0f) {
        return "Dflt";
    }
    if (kFactor == 0.0f) {
        return "None";
    }
    return NumberText(kFactor).substr(0, KFactorTextWidth);
}

void ReadGeneralData(Project& project, std::span<const std::uint8_t> bytes) {
    const auto head = RecordAt(bytes, 1);
    project.CalculationData.MinPressureAtHMDNode = head.Float(header::MinPressure);
    project.SystemData.DefaultKFactor = head.Float(header::DefaultK);
    project.CalculationData.MaxWaterVelocity = head.Float(header::MaxVelocity);
    project.CalculationData.MaxFrictionalLoss = head.Float(header::MaxFriction);
    project.SystemData.DefaultPipeMaterial = head.Int(header::DefaultMaterial);
    project.ProjectData.GPDProjectFormat = head.Int(header::Format);

    ForEachText(project, [&](TextPlace place, std::string& field) {
        field = RecordAt(bytes, place.Record).Text(place.Offset, LongText);
    });

    auto& system = project.SystemData;
    auto& calculation = project.CalculationData;
    const auto settings = RecordAt(bytes, 11);
    system.InRackSprinklerAllowance = settings.Int(20);
    system.InsideHoseStreamAllowance = settings.Int(22);
    system.AreaOfSprinklerOperation = settings.Float(24);
    system.MinimumDesiredDensity = settings.Float(28);
    calculation.DesignDensity = settings.Float(28);
    system.OutsideHoseStreamAllowance = settings.Int(32);
    system.MaximumAreaPerSprinkler = settings.Float(34);
    system.TestStaticPressure = settings.Int(38);

    const auto hydrant = RecordAt(bytes, 12);
    system.TestResidualPressure = hydrant.Int(0);
    system.TestFlowRate = hydrant.Int(2);
    system.HydrantElevation = hydrant.Int(4);
    system.TemperatureRating = hydrant.Int(6);
    calculation.MaximumNodePressureImbalance = ToNumber(Format(hydrant.Float(14), "##0.00"));
    calculation.InitialDampingFactor = hydrant.Int(18);
    calculation.MinimumDampingFactor = hydrant.Int(20);
    const Integer systemType = hydrant.Int(22);
    if (systemType == 1) {
        system.SprinklerSystemType = "Dry";
    } else if (systemType == 2) {
        system.SprinklerSystemType = "Wet";
    }
    system.CalculatedFlowRate = hydrant.Int(24);
    system.CalculatedResidualPressure = hydrant.Int(26);
    const auto bounds = RecordAt(bytes, 18);
    for (int slot = 0; slot < TypeGroupSlots; ++slot) {
        calculation.TypeGroupMaxDiameter[slot] = hydrant.Float(30 + 4 * slot);
        calculation.TypeGroupMinDiameter[slot] = bounds.Float(4 * slot);
    }

    const auto inflow = RecordAt(bytes, 13);
    calculation.SystemInflowNode = inflow.Int(0);
    calculation.SecondInflowNode = inflow.Int(2);
    calculation.ThirdInflowNode = inflow.Int(4);
    const Integer mode = inflow.Int(6);
    if (mode == 1 || mode == 2) {
        calculation.DemandMode = mode == 1 ? 1 : 0;
        calculation.SupplyMode = mode == 2 ? 1 : 0;
    }
    calculation.UseResidualPressureEstimate = inflow.Int(8) == 1 ? 1 : 0;
    system.SystemComment = inflow.Text(10, 52);
    calculation.UseAutomaticPeaking = inflow.Int(62) == 1 ? 1 : 0;
    calculation.CalculationComment = inflow.Text(64, 10);

    // Slots 1 to 12 of the two inflow tables travel in the solver's scratch bytes, which every
    // run rewrites: the Integers first, then the Singles.
    const auto table = RecordAt(bytes, 15);
    auto& scratch = calculation.SolverScratch;
    for (int slot = 1; slot < InflowSlots; ++slot) {
        EncodeLittleEndian(table.Int(2 * slot), scratch.data() + 2 * (slot - 1));
        EncodeLittleEndian(table.Float(26 + 4 * slot), scratch.data() + 24 + 4 * (slot - 1));
    }

    calculation.InflowResidualPressure2 = 0;
    calculation.InflowResidualPressure3 = 0;
    calculation.UseMaximumImbalance = 1;
    calculation.AverageNodePressureImbalance = 0;
    calculation.UseAverageImbalance = 0;
}

std::map<Integer, LegacyNode> ReadNodes(Project& project, std::span<const std::uint8_t> bytes,
                                        std::size_t nodeRecords) {
    std::map<Integer, LegacyNode> byNumber;
    const Single defaultK = project.SystemData.DefaultKFactor;
    for (std::size_t index = 0; index < nodeRecords; ++index) {
        const auto record = RecordAt(bytes, LegacyFirstNodeRecord + index);
        LegacyNode read;
        read.KFactor = record.Float(node::KFactor) / KScale;
        read.Elevation = record.Float(node::Elevation) / ElevationScale;
        read.Discharge = record.Float(node::Discharge) / FlowScale;
        read.Pressure = record.Float(node::Pressure) / PressureScale;
        read.Area = record.Float(node::Area);
        read.AreaGroup = record.Text(node::AreaGroup, 1);
        const Integer number = record.Int(node::Number);

        if (index < static_cast<std::size_t>(MaxNodes)) {
            auto& stored = project.NodeRecord[index + 1];
            stored.Number = number;
            stored.KFactor = read.KFactor == 1.0f ? defaultK : read.KFactor;
            stored.Elevation = read.Elevation;
            if (read.KFactor > 0) {
                stored.Discharge = read.Discharge;
            } else if (read.KFactor == 0) {
                stored.FixedFlow = read.Discharge;
            }
            stored.ResidualPressure = read.Pressure;
            stored.SprinklerArea = read.Area;
            stored.AreaGroup = read.AreaGroup;
        }
        byNumber.emplace(number, std::move(read));
    }
    return byNumber;
}

Integer ModelMaterial(Integer legacy) {
    if (legacy >= LegacyFirstDevice && legacy <= LegacyFirstDevice + 2) {
        return static_cast<Integer>(legacy - LegacyDeviceOffset);
    }
    if (legacy == 84 || legacy == 85) {
        return MaterialMeter;
    }
    return legacy;
}

void ReadPipe(PipeRecord& row, const LegacyRecordReader& record) {
    row.BegNode = std::to_string(record.Int(pipe::BegNode));
    row.EndNode = std::to_string(record.Int(pipe::EndNode));
    const Single diameter = record.Float(pipe::Diameter) / DiameterScale;
    row.DiameterFixed = diameter > 0 ? 1 : 0;
    row.Diameter = diameter > 0 ? diameter : 0;
    row.TotalEquivLength = record.Float(pipe::TotalLength) / LengthScale;
    const Integer legacyMaterial = record.Int(pipe::Material);
    row.Material = ModelMaterial(legacyMaterial);
    row.Active = record.Int(pipe::Active) == 1 ? 1 : 0;
    const Single scaled = record.Float(pipe::Length) / LengthScale;
    if (legacyMaterial >= LegacyFirstDevice) {
        row.DeviceLoss = scaled;
    } else if (legacyMaterial < MaterialMeter) {
        row.Length = scaled;
    }
    // A material the model has no place for becomes the default pipe, as a damaged project
    // file's does.
    if (row.Material > MaterialFirePump || row.Material < 0) {
        row.Material = DefaultMaterial;
    }
    for (int kind = 0; kind < FittingKinds; ++kind) {
        row.FittingCounts[kind] = record.Int(pipe::Fittings + 2 * kind);
    }
    row.FittingText = BuildFittingText(row.FittingCounts);
    row.NonStandardFitLength = record.Float(pipe::NonStandard);
    row.OldFittingLength = CInt(row.NonStandardFitLength);
    row.TypeGroup = static_cast<Integer>(ToNumber(record.Text(pipe::TypeGroup, 1)));
}

void FillEnds(PipeRecord& row, const std::map<Integer, LegacyNode>& nodes) {
    const auto fill = [&](const std::string& number, std::string& kFactor, Single& elevation,
                          Single& pressure, Single& flow, Single& area, std::string& group) {
        const auto found = nodes.find(static_cast<Integer>(ToNumber(number)));
        if (found == nodes.end()) {
            return;
        }
        const LegacyNode& legacy = found->second;
        kFactor = KFactorText(legacy.KFactor);
        elevation = legacy.Elevation;
        pressure = legacy.Pressure;
        flow = legacy.KFactor == 0 ? legacy.Discharge : 0;
        area = legacy.Area;
        group = legacy.AreaGroup;
    };
    fill(row.BegNode, row.KFactorB, row.ElevationB, row.PressEstimateB, row.NonSprinklerFlowB,
         row.SprinklerAreaB, row.AreaGroupB);
    fill(row.EndNode, row.KFactorE, row.ElevationE, row.PressEstimateE, row.NonSprinklerFlowE,
         row.SprinklerAreaE, row.AreaGroupE);
}

void MarkInflow(Project& project, const std::map<Integer, LegacyNode>& nodes) {
    auto& calculation = project.CalculationData;
    const std::string first = std::to_string(calculation.SystemInflowNode);
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        auto& pipe = project.PipeRecord[row];
        if (pipe.BegNode == "0" || pipe.EndNode == "0") {
            continue;
        }
        if (pipe.BegNode == first || pipe.EndNode == first) {
            pipe.BegIsInflow = pipe.BegNode == first ? 1 : 0;
            pipe.EndIsInflow = pipe.EndNode == first ? 1 : 0;
            break;
        }
    }
    calculation.InflowResidualPressure1 = 0;
    if (calculation.SupplyMode != 0) {
        const auto found = nodes.find(calculation.SystemInflowNode);
        if (found != nodes.end()) {
            calculation.InflowResidualPressure1 = found->second.Pressure;
        }
    }
    const std::set<std::string> inflows = {first, std::to_string(calculation.SecondInflowNode),
                                           std::to_string(calculation.ThirdInflowNode)};
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        auto& pipe = project.PipeRecord[row];
        if (inflows.contains(pipe.BegNode) && pipe.BegNode != "0") {
            pipe.NonSprinklerFlowB = 0;
        }
        if (inflows.contains(pipe.EndNode) && pipe.EndNode != "0") {
            pipe.NonSprinklerFlowE = 0;
        }
    }
}

// ---------------------------------------------------------------------------------------------
// Export

LegacyRecordWriter RecordFor(std::vector<std::uint8_t>& image, std::size_t number) {
    const std::size_t end = RecordStart(number) + LegacyRecordLength;
    if (image.size() < end) {
        image.resize(end, 0);
    }
    return LegacyRecordWriter(
        std::span<std::uint8_t>(image.data() + RecordStart(number), LegacyRecordLength));
}

Single Scaled(double value, Single scale) {
    return static_cast<Single>(value) * scale;
}

// The K-factor field of a node: the word "Dflt" is the old default marker 1.0.
Single LegacyKFactor(const std::string& text) {
    if (EqualsIgnoreCase(Trim(text), "Dflt")) {
        return KScale;
    }
    return Scaled(ToNumber(text), KScale);
}

void WriteGeneralData(const Project& project, std::vector<std::uint8_t>& image) {
    const auto& system = project.SystemData;
    const auto& calculation = project.CalculationData;
    auto head = RecordFor(image, 1);
    head.Int(header::Format, LegacyFormatNumber);
    head.Int(header::FormatSecond, LegacyFormatSecond);
    head.Float(header::MinPressure, calculation.MinPressureAtHMDNode);
    head.Float(header::DefaultK, system.DefaultKFactor);
    head.Float(header::MaxVelocity, static_cast<Single>(calculation.MaxWaterVelocity));
    head.Float(header::MaxFriction, static_cast<Single>(calculation.MaxFrictionalLoss));
    head.Int(header::DefaultMaterial, system.DefaultPipeMaterial);
    head.Text(header::Text, "", header::TextWidth);

    for (int record = 2; record <= 10; ++record) {
        auto texts = RecordFor(image, record);
        texts.Text(0, "", LongText);
        texts.Text(LongText, "", LongText);
        texts.Text(2 * LongText, "", ShortText);
    }
    ForEachText(project, [&](TextPlace place, const std::string& field) {
        RecordFor(image, place.Record).Text(place.Offset, field, LongText);
    });

    auto settings = RecordFor(image, 11);
    settings.Int(20, CInt(system.InRackSprinklerAllowance));
    settings.Int(22, CInt(system.InsideHoseStreamAllowance));
    settings.Float(24, system.AreaOfSprinklerOperation);
    settings.Float(28, calculation.DesignDensity);
    settings.Int(32, CInt(system.OutsideHoseStreamAllowance));
    settings.Float(34, system.MaximumAreaPerSprinkler);
    settings.Int(38, CInt(system.TestStaticPressure));

    auto hydrant = RecordFor(image, 12);
    hydrant.Int(0, CInt(system.TestResidualPressure));
    hydrant.Int(2, CInt(system.TestFlowRate));
    hydrant.Int(4, CInt(system.HydrantElevation));
    hydrant.Int(6, system.TemperatureRating);
    hydrant.Float(14, static_cast<Single>(calculation.MaximumNodePressureImbalance));
    hydrant.Int(18, calculation.InitialDampingFactor);
    hydrant.Int(20, calculation.MinimumDampingFactor);
    const std::string type = Trim(system.SprinklerSystemType);
    hydrant.Int(22, EqualsIgnoreCase(type, "Dry") ? 1 : EqualsIgnoreCase(type, "Wet") ? 2 : 0);
    hydrant.Int(24, CInt(system.CalculatedFlowRate));
    hydrant.Int(26, CInt(system.CalculatedResidualPressure));
    auto bounds = RecordFor(image, 18);
    for (int slot = 0; slot < TypeGroupSlots; ++slot) {
        hydrant.Float(30 + 4 * slot, static_cast<Single>(calculation.TypeGroupMaxDiameter[slot]));
        bounds.Float(4 * slot, static_cast<Single>(calculation.TypeGroupMinDiameter[slot]));
    }

    auto inflow = RecordFor(image, 13);
    inflow.Int(0, calculation.SystemInflowNode);
    inflow.Int(2, calculation.SecondInflowNode);
    inflow.Int(4, calculation.ThirdInflowNode);
    inflow.Int(6, calculation.SupplyMode != 0 ? 2 : 1);
    inflow.Int(8, calculation.UseResidualPressureEstimate != 0 ? 1 : 0);
    inflow.Text(10, system.SystemComment, 52);
    inflow.Int(62, calculation.UseAutomaticPeaking != 0 ? 1 : 0);
    inflow.Text(64, calculation.CalculationComment, 10);

    RecordFor(image, 14); // the cost block: zeros
    auto table = RecordFor(image, 15);
    const auto& scratch = calculation.SolverScratch;
    for (int slot = 1; slot < InflowSlots; ++slot) {
        table.Int(2 * slot, DecodeLittleEndian<Integer>(scratch.data() + 2 * (slot - 1)));
        table.Float(26 + 4 * slot,
                    DecodeLittleEndian<Single>(scratch.data() + 24 + 4 * (slot - 1)));
    }
    RecordFor(image, LegacyFirstNodeRecord - 1); // unused records up to the nodes: zeros
}

struct NodeOut {
    Integer Number = 0;
    Single KFactor = 0;
    Single Elevation = 0;
    Single Pressure = 0;
    Single FixedFlow = 0;
    Single Area = 0;
    std::string AreaGroup;
};

std::vector<NodeOut> CollectNodes(const Project& project) {
    std::vector<NodeOut> nodes;
    std::set<Integer> seen;
    const auto& calculation = project.CalculationData;
    const int rows = std::clamp<int>(project.NumberOfPipeRows, 0, MaxPipes);
    const auto add = [&](const std::string& text, const std::string& kFactor, Single elevation,
                         Single pressure, Single flow, Single area, const std::string& group) {
        if (TrimmedView(text).empty()) {
            return;
        }
        const Integer number = CInt(ToNumber(text));
        if (!seen.insert(number).second) {
            return;
        }
        NodeOut out{number,
                    LegacyKFactor(kFactor),
                    Scaled(elevation, ElevationScale),
                    Scaled(pressure, PressureScale),
                    0,
                    area,
                    group.substr(0, 1)};
        if (out.KFactor == 0) {
            out.FixedFlow = Scaled(flow, FlowScale);
        }
        if (calculation.SupplyMode != 0 && number == calculation.SystemInflowNode) {
            out.Pressure = Scaled(calculation.InflowResidualPressure1, PressureScale);
        }
        nodes.push_back(std::move(out));
    };
    for (int row = 1; row <= rows; ++row) {
        const auto& pipe = project.PipeRecord[row];
        add(pipe.BegNode, pipe.KFactorB, pipe.ElevationB, pipe.PressEstimateB,
            pipe.NonSprinklerFlowB, pipe.SprinklerAreaB, pipe.AreaGroupB);
        add(pipe.EndNode, pipe.KFactorE, pipe.ElevationE, pipe.PressEstimateE,
            pipe.NonSprinklerFlowE, pipe.SprinklerAreaE, pipe.AreaGroupE);
    }
    return nodes;
}

void WriteNode(LegacyRecordWriter record, const NodeOut& out) {
    record.Int(node::Number, out.Number);
    record.Float(node::KFactor, out.KFactor);
    record.Float(node::Elevation, out.Elevation);
    record.Float(node::Discharge, out.FixedFlow);
    record.Float(node::Pressure, out.Pressure);
    record.Float(node::Area, out.Area);
    record.Text(node::AreaGroup, out.AreaGroup, 1);
    record.Text(node::Filler, "", LegacyRecordLength - node::Filler);
}

Integer LegacyMaterial(Integer material) {
    if (material >= MaterialMeter && material <= MaterialFirePump) {
        return static_cast<Integer>(material + LegacyDeviceOffset);
    }
    return material;
}

// One digit; a group of 10 or more has no digit of its own and goes out as its last digit.
std::string TypeGroupDigit(Integer group) {
    if (group < 0) {
        return " ";
    }
    return std::string(1, static_cast<char>('0' + group % 10));
}

void WritePipe(LegacyRecordWriter record, const PipeRecord& row) {
    record.Int(pipe::BegNode, CInt(ToNumber(row.BegNode)));
    record.Int(pipe::EndNode, CInt(ToNumber(row.EndNode)));
    const bool fixed = row.DiameterFixed != 0 && row.Diameter > 0;
    record.Float(pipe::Diameter, fixed ? Scaled(row.Diameter, DiameterScale) : 0.0f);
    record.Float(pipe::TotalLength, Scaled(row.TotalEquivLength, LengthScale));
    record.Int(pipe::Material, LegacyMaterial(row.Material));
    record.Int(pipe::Active, row.Active != 0 ? 1 : 0);
    const bool device = row.Material >= MaterialMeter;
    record.Float(pipe::Length, Scaled(device ? row.DeviceLoss : row.Length, LengthScale));
    for (int kind = 0; kind < FittingKinds; ++kind) {
        record.Int(pipe::Fittings + 2 * kind, row.FittingCounts[kind]);
    }
    record.Float(pipe::NonStandard, row.NonStandardFitLength);
    record.Text(pipe::TypeGroup, TypeGroupDigit(row.TypeGroup), 1);
    record.Text(pipe::Filler, "", LegacyRecordLength - pipe::Filler);
}

} // namespace

void ConvertFromDos(Project& project, std::span<const std::uint8_t> bytes) {
    ResetProject(project);
    ReadGeneralData(project, bytes);

    const auto head = RecordAt(bytes, 1);
    const std::size_t fileNodes =
        std::min<std::size_t>(std::max<Integer>(head.Int(header::NodeCount), 0),
                              RecordsFrom(bytes, LegacyFirstNodeRecord));
    const std::size_t firstPipe = LegacyFirstNodeRecord + fileNodes;
    const std::size_t filePipes = std::min<std::size_t>(
        std::max<Integer>(head.Int(header::PipeCount), 0) / 2, RecordsFrom(bytes, firstPipe));

    const auto nodes = ReadNodes(project, bytes, fileNodes);
    project.NumberOfNodes = static_cast<Integer>(std::min<std::size_t>(fileNodes, MaxNodes));
    const auto rows = static_cast<Integer>(std::min<std::size_t>(filePipes, MaxPipes));
    project.NumberOfPipeRows = rows;
    project.NumberOfPipes = rows;
    for (Integer row = 1; row <= rows; ++row) {
        auto& pipe = project.PipeRecord[row];
        ReadPipe(pipe, RecordAt(bytes, firstPipe + row - 1));
        FillEnds(pipe, nodes);
    }
    MarkInflow(project, nodes);
}

std::vector<std::uint8_t> ConvertToDos(const Project& project) {
    const auto nodes = CollectNodes(project);
    const int rows = std::clamp<int>(project.NumberOfPipeRows, 0, MaxPipes);
    // The image is sized once: a record writer points into it, and a later growth would move it.
    const std::size_t last =
        LegacyFirstNodeRecord - 1 + nodes.size() + static_cast<std::size_t>(rows);
    std::vector<std::uint8_t> image(RecordStart(last) + LegacyRecordLength, 0);
    WriteGeneralData(project, image);
    auto head = RecordFor(image, 1);
    head.Int(header::NodeCount, static_cast<Integer>(nodes.size()));
    head.Int(header::PipeCount, static_cast<Integer>(2 * rows));
    std::size_t record = LegacyFirstNodeRecord;
    for (const auto& out : nodes) {
        WriteNode(RecordFor(image, record++), out);
    }
    for (int row = 1; row <= rows; ++row) {
        WritePipe(RecordFor(image, record++), project.PipeRecord[row]);
    }
    return image;
}

bool ReadDosFile(Project& project, const std::filesystem::path& file, std::string* error) {
    std::string bytes;
    if (!ReadWholeFile(file, bytes, error)) {
        return false;
    }
    ConvertFromDos(project,
                   std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    return true;
}

bool WriteDosFile(const Project& project, const std::filesystem::path& file, std::string* error) {
    const auto image = ConvertToDos(project);
    return WriteFileAtomically(
        file, std::string_view(reinterpret_cast<const char*>(image.data()), image.size()), error);
}

} // namespace quench
