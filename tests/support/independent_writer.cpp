#include "tests/support/independent_writer.h"

#include <cstring>
#include <fstream>
#include <iterator>

namespace quench::testing {

namespace {

// Little-endian, one byte at a time; bytes past the record are dropped.
void PutBytes(std::array<std::uint8_t, RecordSize>& record, int offset, std::uint64_t bits,
              int size) {
    for (int index = 0; index < size; ++index) {
        if (offset + index >= 0 && offset + index < RecordSize) {
            record[static_cast<std::size_t>(offset + index)] =
                static_cast<std::uint8_t>(bits >> (8 * index));
        }
    }
}

void Append(FileBytes& file, const LaidRecord& record) {
    file.insert(file.end(), record.Bytes.begin(), record.Bytes.end());
}

LaidRecord LayClientData(const ClientData& data) {
    LaidRecord record;
    record.PutText(0, 40, data.Name);
    record.PutText(40, 40, data.Address);
    record.PutText(80, 40, data.CityStateZip);
    record.PutText(120, 40, data.Phone);
    record.PutText(160, 40, data.Fax);
    record.PutText(200, 200, data.Comment);
    record.PutInteger(400, data.PrintComment);
    return record;
}

LaidRecord LayCompanyData(const CompanyData& data) {
    LaidRecord record;
    record.PutText(0, 40, data.Name);
    record.PutText(40, 40, data.Representative);
    record.PutText(80, 40, data.Address);
    record.PutText(120, 40, data.CityStateZip);
    record.PutText(160, 40, data.Phone);
    record.PutText(200, 40, data.Fax);
    record.PutText(240, 200, data.Comment);
    record.PutInteger(440, data.PrintComment);
    return record;
}

LaidRecord LayBuildingData(const BuildingData& data) {
    LaidRecord record;
    record.PutText(0, 40, data.Name);
    record.PutText(40, 40, data.Owner);
    record.PutText(80, 40, data.Contact);
    record.PutText(120, 40, data.Address);
    record.PutText(160, 40, data.CityStateZip);
    record.PutText(200, 40, data.Phone);
    record.PutText(240, 40, data.Fax);
    record.PutText(280, 200, data.Comment);
    record.PutInteger(480, data.PrintComment);
    return record;
}

LaidRecord LayTreeBuilderData(const TreeBuilderData& data) {
    LaidRecord record;
    record.PutSingle(0, data.CrossDiameter);
    record.PutInteger(4, data.CrossMaterial);
    record.PutInteger(6, data.CrossTypeGroup);
    record.PutSingle(8, data.BranchDiameter);
    record.PutInteger(12, data.BranchMaterial);
    record.PutInteger(14, data.BranchTypeGroup);
    record.PutSingle(16, data.Elevation);
    record.PutSingle(20, data.KFactor);
    record.PutText(24, 6, data.AreaGroup);
    record.PutInteger(30, data.SourceNode);
    record.PutSingle(32, data.MaxSpaceBetweenBranches);
    record.PutSingle(36, data.MaxSpaceBetweenSprinklers);
    record.PutInteger(40, data.ExitNode);
    record.PutInteger(42, data.NodalNumberingIncrement);
    record.PutSingle(44, data.LengthOfCrossMain);
    record.PutSingle(48, data.DistanceBetweenBranchLines);
    record.PutSingle(52, data.LengthOfLeftBranchLine);
    record.PutSingle(56, data.LengthOfRightBranchLine);
    record.PutSingle(60, data.LeftDistanceToFirstSprinkler);
    record.PutSingle(64, data.RightDistanceToFirstSprinkler);
    record.PutSingle(68, data.LeftDistanceBetweenSprinklers);
    record.PutSingle(72, data.RightDistanceBetweenSprinklers);
    record.PutInteger(76, data.Reserved);
    record.PutDouble(78, data.SprinklerArea);
    return record;
}

LaidRecord LayGridBuilderData(const GridBuilderData& data) {
    LaidRecord record;
    record.PutSingle(0, data.PerimeterDiameter);
    record.PutInteger(4, data.PerimeterMaterial);
    record.PutInteger(6, data.PerimeterTypeGroup);
    record.PutSingle(8, data.BranchDiameter);
    record.PutInteger(12, data.BranchMaterial);
    record.PutInteger(14, data.BranchTypeGroup);
    record.PutSingle(16, data.Elevation);
    record.PutSingle(20, data.KFactor);
    record.PutText(24, 6, data.AreaGroup);
    record.PutInteger(30, data.SourceNode);
    record.PutInteger(32, data.NodalNumberingIncrement);
    record.PutSingle(34, data.SourceEntryPoint);
    record.PutSingle(38, data.DistanceToFirstBranch);
    record.PutSingle(42, data.DistanceBetweenBranchLines);
    record.PutInteger(46, data.NumberOfBranchLines);
    record.PutSingle(48, data.LeftDistanceToFirstSprinkler);
    record.PutSingle(52, data.DistanceBetweenSprinklers);
    record.PutInteger(56, data.SprinklersPerBranchLine);
    record.PutSingle(58, data.RightDistanceToPerimeter);
    record.PutSingle(62, data.SprinklerArea);
    return record;
}

LaidRecord LayPipeResultRecord(const PipeResultRecord& row) {
    LaidRecord record;
    record.PutInteger(0, row.BegNode);
    record.PutInteger(2, row.EndNode);
    const double before[] = {
        row.KFactorB,   row.KFactorE,  row.ElevationB, row.ElevationE,         row.DischargeB,
        row.DischargeE, row.ResidualB, row.ResidualE,  row.NominalDiameter,    row.InsideDiameter,
        row.CFactor,    row.Flow,      row.Velocity,   row.FrictionLossPerFoot};
    for (int index = 0; index < 14; ++index) {
        record.PutDouble(4 + 8 * index, before[index]);
    }
    const int at = record.PutString(116, row.FittingText);
    record.PutInteger(at, row.TypeGroup);
    const double after[] = {
        row.PipeLength,        row.FittingLength,    row.TotalLength, row.FrictionPressure,
        row.ElevationPressure, row.VelocityPressure, row.Spare};
    for (int index = 0; index < 7; ++index) {
        record.PutDouble(at + 2 + 8 * index, after[index]);
    }
    record.PutInteger(at + 58, row.DeviceFlag);
    record.PutDouble(at + 60, row.FixedFlowB);
    record.PutDouble(at + 68, row.FixedFlowE);
    return record;
}

LaidRecord LayNodeRecord(const NodeRecord& row) {
    LaidRecord record;
    record.PutDouble(0, row.WorkPressure);
    record.PutInteger(8, row.Number);
    record.PutDouble(10, row.Elevation);
    record.PutDouble(18, row.KFactor);
    record.PutInteger(26, row.NodeMark);
    record.PutDouble(28, row.SprinklerArea);
    record.PutDouble(36, row.FixedFlow);
    record.PutDouble(44, row.ResidualPressure);
    record.PutDouble(52, row.Discharge);
    record.PutText(60, 6, row.AreaGroup);
    record.PutDouble(66, row.WorkFlow);
    record.PutDouble(74, row.FlowImbalance);
    record.PutText(82, 6, row.CadHandle);
    return record;
}

LaidRecord LayCalcPipeRecord(const CalcPipeRecord& row) {
    LaidRecord record;
    record.PutText(0, 6, row.BegNode);
    record.PutText(6, 6, row.EndNode);
    record.PutDouble(12, row.NominalLength);
    record.PutDouble(20, row.TotalLength);
    record.PutInteger(28, row.TypeGroup);
    record.PutInteger(30, row.Material);
    int at = record.PutString(32, row.ResultFittingText);
    record.PutDouble(at, row.DeviceLoss);
    record.PutDouble(at + 8, row.NominalDiameter);
    record.PutDouble(at + 16, row.InsideDiameter);
    record.PutDouble(at + 24, row.Flow);
    record.PutDouble(at + 32, row.Velocity);
    record.PutInteger(at + 40, row.Autosized);
    record.PutDouble(at + 42, row.CFactor);
    record.PutDouble(at + 50, row.NonStandardFitLength);
    for (int kind = 0; kind < FittingKinds; ++kind) {
        record.PutInteger(at + 58 + 2 * kind, row.FittingCounts[static_cast<std::size_t>(kind)]);
    }
    record.PutDouble(at + 72, row.FrictionLoss);
    at = record.PutString(at + 80, row.FittingText);
    record.PutDouble(at, row.FittingLength);
    record.PutDouble(at + 8, row.ElevationPressure);
    record.PutDouble(at + 16, row.VelocityPressure);
    return record;
}

LaidRecord LayDouble(double value) {
    LaidRecord record;
    record.PutDouble(0, value);
    return record;
}

LaidRecord LayString(const std::string& text) {
    LaidRecord record;
    record.PutString(0, text);
    return record;
}

// Distinct values for the sample: each call gives a value no other field has.
class Distinct {
public:
    std::int16_t Integer() { return static_cast<std::int16_t>(100 + next_++); }
    std::int32_t Long() { return 70000 + next_++; }
    float Single() { return static_cast<float>(next_++) + 0.25f; }
    double Double() { return static_cast<double>(next_++) + 1.0 / 3.0; }
    // A text of the given length at most, some with 8-bit characters; never a trailing blank.
    std::string Text(std::size_t width) {
        const int number = next_++;
        std::string text = "T" + std::to_string(number) + (number % 3 == 0 ? " \xE9\xFC" : "-x");
        if (number % 5 == 0) {
            text.resize(width, 'w'); // the full width
        }
        text.resize(std::min(text.size(), width));
        while (!text.empty() && text.back() == ' ') {
            text.pop_back();
        }
        return text;
    }

private:
    int next_ = 1;
};

void FillGeneralRecords(Project& project, Distinct& next) {
    auto& p = project.ProjectData;
    p.ProgramVersion = next.Integer();
    p.Title = next.Text(40);
    p.DesignedBy = next.Text(40);
    p.Date = next.Text(40);
    p.CodeReference = next.Text(40);
    p.ApprovingAgency = next.Text(40);
    p.Comment = next.Text(200);
    p.PrintComment = -1;
    auto& c = project.ClientData;
    for (auto* text : {&c.Name, &c.Address, &c.CityStateZip, &c.Phone, &c.Fax}) {
        *text = next.Text(40);
    }
    c.Comment = std::string(150, 'c') + next.Text(50);
    c.PrintComment = next.Integer();
    auto& m = project.CompanyData;
    for (auto* text : {&m.Name, &m.Representative, &m.Address, &m.CityStateZip, &m.Phone, &m.Fax}) {
        *text = next.Text(40);
    }
    m.Comment = next.Text(200);
    m.PrintComment = next.Integer();
    auto& b = project.BuildingData;
    for (auto* text :
         {&b.Name, &b.Owner, &b.Contact, &b.Address, &b.CityStateZip, &b.Phone, &b.Fax}) {
        *text = next.Text(40);
    }
    b.Comment = next.Text(200);
    b.PrintComment = next.Integer();
}

void FillSystemData(SystemData& s, Distinct& next) {
    s.InRackSprinklerAllowance = next.Single();
    s.InsideHoseStreamAllowance = next.Single();
    s.OutsideHoseStreamAllowance = next.Single();
    s.DefaultPipeMaterial = 17;
    s.DefaultKFactor = next.Single();
    s.SprinklerMake = next.Text(40);
    s.TemperatureRating = next.Integer();
    s.SprinklerModel = next.Text(40);
    s.SprinklerSize = next.Text(40);
    s.LaborRate = next.Single();
    s.OtherLaborHours = next.Single();
    s.OtherMaterialCosts = next.Single();
    s.SystemComment = next.Text(200);
    s.SystemPrintComment = next.Integer();
    s.HazardDescription = next.Text(40);
    s.AreaOfSprinklerOperation = next.Single();
    s.SprinklerSystemType = "Dry";
    s.MinimumDesiredDensity = next.Single();
    s.MaximumAreaPerSprinkler = next.Single();
    s.HydrantTestDate = next.Text(40);
    s.SourceOfInformation = next.Text(40);
    s.TestHydrantID = next.Text(40);
    for (auto* value :
         {&s.HydrantElevation, &s.TestStaticPressure, &s.TestResidualPressure, &s.TestFlowRate,
          &s.CalculatedResidualPressure, &s.CalculatedFlowRate, &s.SecondTestStaticPressure,
          &s.SecondTestResidualPressure, &s.SecondTestFlowRate}) {
        *value = next.Single();
    }
    s.ExteriorHoseFlow = 750;
    s.PrimaryDischargeName = "Hose";
}

void FillBuilders(Project& project, Distinct& next) {
    auto& t = project.TreeBuilderData;
    t.CrossDiameter = next.Single();
    t.CrossMaterial = next.Integer();
    t.CrossTypeGroup = next.Integer();
    t.BranchDiameter = next.Single();
    t.BranchMaterial = next.Integer();
    t.BranchTypeGroup = next.Integer();
    t.Elevation = next.Single();
    t.KFactor = next.Single();
    t.AreaGroup = next.Text(6);
    t.SourceNode = next.Integer();
    t.MaxSpaceBetweenBranches = next.Single();
    t.MaxSpaceBetweenSprinklers = next.Single();
    t.ExitNode = next.Integer();
    t.NodalNumberingIncrement = next.Integer();
    for (auto* value : {&t.LengthOfCrossMain, &t.DistanceBetweenBranchLines,
                        &t.LengthOfLeftBranchLine, &t.LengthOfRightBranchLine,
                        &t.LeftDistanceToFirstSprinkler, &t.RightDistanceToFirstSprinkler,
                        &t.LeftDistanceBetweenSprinklers, &t.RightDistanceBetweenSprinklers}) {
        *value = next.Single();
    }
    t.Reserved = next.Integer();
    t.SprinklerArea = next.Double();
    auto& g = project.GridBuilderData;
    g.PerimeterDiameter = next.Single();
    g.PerimeterMaterial = next.Integer();
    g.PerimeterTypeGroup = next.Integer();
    g.BranchDiameter = next.Single();
    g.BranchMaterial = next.Integer();
    g.BranchTypeGroup = next.Integer();
    g.Elevation = next.Single();
    g.KFactor = next.Single();
    g.AreaGroup = next.Text(6);
    g.SourceNode = next.Integer();
    g.NodalNumberingIncrement = next.Integer();
    g.SourceEntryPoint = next.Single();
    g.DistanceToFirstBranch = next.Single();
    g.DistanceBetweenBranchLines = next.Single();
    g.NumberOfBranchLines = next.Integer();
    g.LeftDistanceToFirstSprinkler = next.Single();
    g.DistanceBetweenSprinklers = next.Single();
    g.SprinklersPerBranchLine = next.Integer();
    g.RightDistanceToPerimeter = next.Single();
    g.SprinklerArea = next.Single();
}

void FillCalculationData(CalculationData& d, Distinct& next, int resultRows) {
    d.CalculationComment = next.Text(100);
    d.MinPressureAtHMDNode = next.Single();
    d.DesignDensity = next.Single();
    d.SystemInflowNode = next.Integer();
    d.SecondInflowNode = next.Integer();
    d.ThirdInflowNode = next.Integer();
    d.InflowResidualPressure1 = next.Double();
    d.InflowResidualPressure2 = next.Double();
    d.InflowResidualPressure3 = next.Double();
    d.MaximumNodePressureImbalance = next.Double();
    d.UseMaximumImbalance = next.Integer();
    d.AverageNodePressureImbalance = next.Double();
    for (auto* value :
         {&d.UseAverageImbalance, &d.InitialDampingFactor, &d.MinimumDampingFactor, &d.DemandMode,
          &d.SupplyMode, &d.UseAutomaticPeaking, &d.UseResidualPressureEstimate}) {
        *value = next.Integer();
    }
    d.MaxWaterVelocity = next.Double();
    d.MaxFrictionalLoss = next.Double();
    for (auto& value : d.TypeGroupMinDiameter) {
        value = next.Double();
    }
    for (auto& value : d.TypeGroupMaxDiameter) {
        value = next.Double();
    }
    for (std::size_t index = 0; index < d.SolverScratch.size(); ++index) {
        d.SolverScratch[index] = static_cast<std::uint8_t>(index * 7 + 3);
    }
    d.NumberOfUniquePipeSections = static_cast<std::int16_t>(resultRows);
    d.NumberOfFlowingSprinklers = next.Integer();
    d.MaximumFlowVelocity = next.Double();
    d.MaximumVelocityPipe = next.Integer();
    d.SprinklerFlow = next.Double();
    d.NonSprinklerFlow = next.Double();
    d.ResultFlag = next.Integer();
    d.HMDNodeNumber = next.Integer();
    for (auto* value : {&d.HMDActualResidualPressure, &d.HMDActualFlow, &d.InflowResidualPressure,
                        &d.InflowFlow}) {
        *value = next.Double();
    }
    for (auto& value : d.PumpCurveFlow) {
        value = next.Single();
    }
    for (auto& value : d.PumpCurvePressure) {
        value = next.Single();
    }
    for (auto& value : d.PumpCoefficients) {
        value = next.Double();
    }
    for (auto* value : {&d.Reserved, &d.PumpDefined, &d.PumpSource, &d.UseFlowImbalance,
                        &d.UseFrictionLimit, &d.DoNotIncreaseSize}) {
        *value = next.Integer();
    }
}

// Strings of every length that fits: 0, 1, 255 and between.
std::string StringOfLength(int row, int which) {
    static const int lengths[] = {0, 1, 2, 7, 255, 40, 3};
    const int length = lengths[(row + which) % 7];
    std::string text(static_cast<std::size_t>(length), static_cast<char>('a' + (row + which) % 26));
    if (length > 1) {
        text.back() = static_cast<char>(0xB0); // an 8-bit character at the end
    }
    return text;
}

void FillPipeRow(PipeRecord& r, Distinct& next, int row) {
    r.BegNode = row % 9 == 0 ? StringOfLength(row, 0) : std::to_string(row * 10);
    r.EndNode = row % 9 == 0 ? StringOfLength(row, 1) : std::to_string(row * 10 + 10);
    r.KFactorB = row % 2 == 0 ? "5.6" : "Dflt";
    r.KFactorE = next.Text(6);
    for (auto* value : {&r.ElevationB, &r.ElevationE, &r.PressEstimateB, &r.PressEstimateE,
                        &r.SprinklerAreaB, &r.SprinklerAreaE}) {
        *value = next.Single();
    }
    r.AreaGroupB = next.Text(6);
    r.AreaGroupE = next.Text(6);
    r.NonSprinklerFlowB = next.Single();
    r.NonSprinklerFlowE = next.Single();
    r.Active = -1;
    r.Material = static_cast<std::int16_t>(1 + row % 54);
    r.DeviceLoss = next.Single();
    r.Diameter = next.Single();
    r.DiameterFixed = next.Integer();
    r.Length = next.Single();
    r.OldFittingLength = next.Integer();
    for (auto& count : r.FittingCounts) {
        count = next.Integer();
    }
    r.FittingText = StringOfLength(row, 2);
    r.TotalEquivLength = next.Single();
    r.TypeGroup = next.Integer();
    r.BegIsInflow = next.Integer();
    r.EndIsInflow = next.Integer();
    r.NonStandardFitLength = next.Single();
    r.CadHandle = next.Text(6);
}

void FillResultRow(PipeResultRecord& r, Distinct& next, int row) {
    r.BegNode = next.Integer();
    r.EndNode = next.Integer();
    for (auto* value :
         {&r.KFactorB, &r.KFactorE, &r.ElevationB, &r.ElevationE, &r.DischargeB, &r.DischargeE,
          &r.ResidualB, &r.ResidualE, &r.NominalDiameter, &r.InsideDiameter, &r.CFactor, &r.Flow,
          &r.Velocity, &r.FrictionLossPerFoot}) {
        *value = next.Double();
    }
    r.FittingText = StringOfLength(row, 3);
    r.TypeGroup = next.Integer();
    for (auto* value : {&r.PipeLength, &r.FittingLength, &r.TotalLength, &r.FrictionPressure,
                        &r.ElevationPressure, &r.VelocityPressure, &r.Spare}) {
        *value = next.Double();
    }
    r.DeviceFlag = next.Integer();
    r.FixedFlowB = next.Double();
    r.FixedFlowE = next.Double();
}

void FillNodeRow(NodeRecord& r, Distinct& next) {
    r.WorkPressure = next.Double();
    r.Number = next.Integer();
    r.Elevation = next.Double();
    r.KFactor = next.Double();
    r.NodeMark = next.Integer();
    for (auto* value : {&r.SprinklerArea, &r.FixedFlow, &r.ResidualPressure, &r.Discharge}) {
        *value = next.Double();
    }
    r.AreaGroup = next.Text(6);
    r.WorkFlow = next.Double();
    r.FlowImbalance = next.Double();
    r.CadHandle = next.Text(6);
}

void FillCalcPipeRow(CalcPipeRecord& r, Distinct& next, int row) {
    r.BegNode = next.Text(6);
    r.EndNode = next.Text(6);
    r.NominalLength = next.Double();
    r.TotalLength = next.Double();
    r.TypeGroup = next.Integer();
    r.Material = next.Integer();
    r.ResultFittingText = StringOfLength(row, 4);
    for (auto* value :
         {&r.DeviceLoss, &r.NominalDiameter, &r.InsideDiameter, &r.Flow, &r.Velocity}) {
        *value = next.Double();
    }
    r.Autosized = next.Integer();
    r.CFactor = next.Double();
    r.NonStandardFitLength = next.Double();
    for (auto& count : r.FittingCounts) {
        count = next.Integer();
    }
    r.FrictionLoss = next.Double();
    r.FittingText = StringOfLength(row, 5);
    r.FittingLength = next.Double();
    r.ElevationPressure = next.Double();
    r.VelocityPressure = next.Double();
}

} // namespace

void LaidRecord::PutInteger(int offset, std::int16_t value) {
    PutBytes(Bytes, offset, static_cast<std::uint16_t>(value), 2);
}

void LaidRecord::PutLong(int offset, std::int32_t value) {
    PutBytes(Bytes, offset, static_cast<std::uint32_t>(value), 4);
}

void LaidRecord::PutSingle(int offset, float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, 4);
    PutBytes(Bytes, offset, bits, 4);
}

void LaidRecord::PutDouble(int offset, double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, 8);
    PutBytes(Bytes, offset, bits, 8);
}

void LaidRecord::PutText(int offset, int width, const std::string& text) {
    for (int index = 0; index < width; ++index) {
        const auto character =
            index < static_cast<int>(text.size())
                ? static_cast<std::uint8_t>(text[static_cast<std::size_t>(index)])
                : std::uint8_t{' '};
        PutBytes(Bytes, offset + index, character, 1);
    }
}

int LaidRecord::PutString(int offset, const std::string& text) {
    const int length = static_cast<int>(text.size());
    PutBytes(Bytes, offset, static_cast<std::uint16_t>(length), 2);
    PutRaw(offset + 2, text.data(), length);
    return offset + 2 + length;
}

void LaidRecord::PutRaw(int offset, const void* data, int size) {
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    for (int index = 0; index < size; ++index) {
        PutBytes(Bytes, offset + index, bytes[index], 1);
    }
}

LaidExtensions ExtensionsOfFormat(std::int32_t format) {
    return LaidExtensions{format > 60111, format > 60117};
}

LaidRecord LayProjectData(const ProjectData& data) {
    LaidRecord record;
    record.PutInteger(0, data.ProgramVersion);
    record.PutText(2, 40, data.Title);
    record.PutText(42, 40, data.DesignedBy);
    record.PutText(82, 40, data.Date);
    record.PutText(122, 40, data.CodeReference);
    record.PutText(162, 40, data.ApprovingAgency);
    record.PutText(202, 200, data.Comment);
    record.PutInteger(402, data.PrintComment);
    record.PutLong(404, data.GPDProjectFormat);
    return record;
}

LaidRecord LaySystemData(const SystemData& data) {
    LaidRecord record;
    record.PutSingle(0, data.InRackSprinklerAllowance);
    record.PutSingle(4, data.InsideHoseStreamAllowance);
    record.PutSingle(8, data.OutsideHoseStreamAllowance);
    record.PutInteger(12, data.DefaultPipeMaterial);
    record.PutSingle(14, data.DefaultKFactor);
    record.PutText(18, 40, data.SprinklerMake);
    record.PutInteger(58, data.TemperatureRating);
    record.PutText(60, 40, data.SprinklerModel);
    record.PutText(100, 40, data.SprinklerSize);
    record.PutSingle(140, data.LaborRate);
    record.PutSingle(144, data.OtherLaborHours);
    record.PutSingle(148, data.OtherMaterialCosts);
    record.PutText(152, 200, data.SystemComment);
    record.PutInteger(352, data.SystemPrintComment);
    record.PutText(354, 40, data.HazardDescription);
    record.PutSingle(394, data.AreaOfSprinklerOperation);
    record.PutText(398, 10, data.SprinklerSystemType);
    record.PutSingle(408, data.MinimumDesiredDensity);
    record.PutSingle(412, data.MaximumAreaPerSprinkler);
    record.PutText(416, 40, data.HydrantTestDate);
    record.PutText(456, 40, data.SourceOfInformation);
    record.PutText(496, 40, data.TestHydrantID);
    record.PutSingle(536, data.HydrantElevation);
    record.PutSingle(540, data.TestStaticPressure);
    record.PutSingle(544, data.TestResidualPressure);
    record.PutSingle(548, data.TestFlowRate);
    record.PutSingle(552, data.CalculatedResidualPressure);
    record.PutSingle(556, data.CalculatedFlowRate);
    record.PutSingle(560, data.SecondTestStaticPressure);
    record.PutSingle(564, data.SecondTestResidualPressure);
    record.PutSingle(568, data.SecondTestFlowRate);
    record.PutInteger(572, data.ExteriorHoseFlow);
    record.PutText(574, 9, data.PrimaryDischargeName);
    return record;
}

LaidRecord LayPipeRecord(const PipeRecord& row) {
    LaidRecord record;
    int at = record.PutString(0, row.BegNode);
    at = record.PutString(at, row.EndNode);
    record.PutText(at, 6, row.KFactorB);
    record.PutText(at + 6, 6, row.KFactorE);
    record.PutSingle(at + 12, row.ElevationB);
    record.PutSingle(at + 16, row.ElevationE);
    record.PutSingle(at + 20, row.PressEstimateB);
    record.PutSingle(at + 24, row.PressEstimateE);
    record.PutSingle(at + 28, row.SprinklerAreaB);
    record.PutSingle(at + 32, row.SprinklerAreaE);
    record.PutText(at + 36, 6, row.AreaGroupB);
    record.PutText(at + 42, 6, row.AreaGroupE);
    record.PutSingle(at + 48, row.NonSprinklerFlowB);
    record.PutSingle(at + 52, row.NonSprinklerFlowE);
    record.PutInteger(at + 56, row.Active);
    record.PutInteger(at + 58, row.Material);
    record.PutSingle(at + 60, row.DeviceLoss);
    record.PutSingle(at + 64, row.Diameter);
    record.PutInteger(at + 68, row.DiameterFixed);
    record.PutSingle(at + 70, row.Length);
    record.PutInteger(at + 74, row.OldFittingLength);
    for (int kind = 0; kind < FittingKinds; ++kind) {
        record.PutInteger(at + 76 + 2 * kind, row.FittingCounts[static_cast<std::size_t>(kind)]);
    }
    at = record.PutString(at + 90, row.FittingText);
    record.PutSingle(at, row.TotalEquivLength);
    record.PutInteger(at + 4, row.TypeGroup);
    record.PutInteger(at + 6, row.BegIsInflow);
    record.PutInteger(at + 8, row.EndIsInflow);
    record.PutSingle(at + 10, row.NonStandardFitLength);
    record.PutText(at + 14, 6, row.CadHandle);
    return record;
}

LaidRecord LayCalculationData(const CalculationData& data) {
    LaidRecord record;
    record.PutText(0, 100, data.CalculationComment);
    record.PutSingle(100, data.MinPressureAtHMDNode);
    record.PutSingle(104, data.DesignDensity);
    record.PutInteger(108, data.SystemInflowNode);
    record.PutInteger(110, data.SecondInflowNode);
    record.PutInteger(112, data.ThirdInflowNode);
    record.PutDouble(114, data.InflowResidualPressure1);
    record.PutDouble(122, data.InflowResidualPressure2);
    record.PutDouble(130, data.InflowResidualPressure3);
    record.PutDouble(138, data.MaximumNodePressureImbalance);
    record.PutInteger(146, data.UseMaximumImbalance);
    record.PutDouble(148, data.AverageNodePressureImbalance);
    record.PutInteger(156, data.UseAverageImbalance);
    record.PutInteger(158, data.InitialDampingFactor);
    record.PutInteger(160, data.MinimumDampingFactor);
    record.PutInteger(162, data.DemandMode);
    record.PutInteger(164, data.SupplyMode);
    record.PutInteger(166, data.UseAutomaticPeaking);
    record.PutInteger(168, data.UseResidualPressureEstimate);
    record.PutDouble(170, data.MaxWaterVelocity);
    record.PutDouble(178, data.MaxFrictionalLoss);
    for (int slot = 0; slot < TypeGroupSlots; ++slot) {
        record.PutDouble(186 + 8 * slot, data.TypeGroupMinDiameter[static_cast<std::size_t>(slot)]);
        record.PutDouble(274 + 8 * slot, data.TypeGroupMaxDiameter[static_cast<std::size_t>(slot)]);
    }
    record.PutRaw(362, data.SolverScratch.data(), SolverScratchBytes);
    record.PutInteger(482, data.NumberOfUniquePipeSections);
    record.PutInteger(484, data.NumberOfFlowingSprinklers);
    record.PutDouble(486, data.MaximumFlowVelocity);
    record.PutInteger(494, data.MaximumVelocityPipe);
    record.PutDouble(496, data.SprinklerFlow);
    record.PutDouble(504, data.NonSprinklerFlow);
    record.PutInteger(512, data.ResultFlag);
    record.PutInteger(514, data.HMDNodeNumber);
    record.PutDouble(516, data.HMDActualResidualPressure);
    record.PutDouble(524, data.HMDActualFlow);
    record.PutDouble(532, data.InflowResidualPressure);
    record.PutDouble(540, data.InflowFlow);
    for (int point = 0; point < PumpCurvePoints; ++point) {
        const auto index = static_cast<std::size_t>(point);
        record.PutSingle(548 + 4 * point, data.PumpCurveFlow[index]);
        record.PutSingle(568 + 4 * point, data.PumpCurvePressure[index]);
        record.PutDouble(588 + 8 * point, data.PumpCoefficients[index]);
    }
    record.PutInteger(628, data.Reserved);
    record.PutInteger(630, data.PumpDefined);
    record.PutInteger(632, data.PumpSource);
    record.PutInteger(634, data.UseFlowImbalance);
    record.PutInteger(636, data.UseFrictionLimit);
    record.PutInteger(638, data.DoNotIncreaseSize);
    return record;
}

LaidRecord LayInteger(std::int16_t value) {
    LaidRecord record;
    record.PutInteger(0, value);
    return record;
}

FileBytes LayProjectFile(const Project& project, LaidExtensions extensions) {
    FileBytes file;
    Append(file, LayProjectData(project.ProjectData));
    Append(file, LayClientData(project.ClientData));
    Append(file, LayCompanyData(project.CompanyData));
    Append(file, LayBuildingData(project.BuildingData));
    Append(file, LaySystemData(project.SystemData));
    Append(file, LayInteger(project.NumberOfPipeRows));
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        Append(file, LayPipeRecord(project.PipeRecord[row]));
    }
    Append(file, LayTreeBuilderData(project.TreeBuilderData));
    Append(file, LayGridBuilderData(project.GridBuilderData));
    Append(file, LayCalculationData(project.CalculationData));
    for (int row = 1; row <= project.CalculationData.NumberOfUniquePipeSections; ++row) {
        Append(file, LayPipeResultRecord(project.PipeResultRecord[row]));
    }
    Append(file, LayInteger(project.NumberOfNodes));
    Append(file, LayInteger(project.NumberOfPipes));
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        Append(file, LayNodeRecord(project.NodeRecord[row]));
    }
    for (int row = 1; row <= project.NumberOfPipes; ++row) {
        Append(file, LayCalcPipeRecord(project.CalcPipeRecord[row]));
    }
    Append(file, LayDouble(project.MaxNodePressureImbalanceResult));
    Append(file, LayDouble(project.AvgNodePressureImbalanceResult));
    Append(file, LayDouble(project.MaxNodeFlowImbalanceResult));
    Append(file, LayDouble(project.AvgNodeFlowImbalanceResult));
    Append(file, LayInteger(project.InflowNode));
    Append(file, LayInteger(project.UnitSystem));
    if (extensions.DeviceNames) {
        Append(file, LayString(project.AlarmDeviceName));
        Append(file, LayString(project.AlarmDeviceShortName));
        Append(file, LayString(project.AlarmDeviceCode));
    }
    if (extensions.InputChanged) {
        Append(file, LayInteger(project.InputChanged));
    }
    return file;
}

void FillSampleProject(Project& project, int pipeRows, int resultRows, int nodes, int pipes,
                       std::int32_t format) {
    Distinct next;
    FillGeneralRecords(project, next);
    project.ProjectData.GPDProjectFormat = format;
    FillSystemData(project.SystemData, next);
    project.NumberOfPipeRows = static_cast<std::int16_t>(pipeRows);
    for (int row = 1; row <= pipeRows; ++row) {
        FillPipeRow(project.PipeRecord[row], next, row);
    }
    FillBuilders(project, next);
    FillCalculationData(project.CalculationData, next, resultRows);
    for (int row = 1; row <= resultRows; ++row) {
        FillResultRow(project.PipeResultRecord[row], next, row);
    }
    project.NumberOfNodes = static_cast<std::int16_t>(nodes);
    project.NumberOfPipes = static_cast<std::int16_t>(pipes);
    for (int row = 1; row <= nodes; ++row) {
        FillNodeRow(project.NodeRecord[row], next);
    }
    for (int row = 1; row <= pipes; ++row) {
        FillCalcPipeRow(project.CalcPipeRecord[row], next, row);
    }
    project.MaxNodePressureImbalanceResult = next.Double();
    project.AvgNodePressureImbalanceResult = next.Double();
    project.MaxNodeFlowImbalanceResult = next.Double();
    project.AvgNodeFlowImbalanceResult = next.Double();
    project.InflowNode = next.Integer();
    project.UnitSystem = 2;
    project.AlarmDeviceName = "Deluge Valve \xC4";
    project.AlarmDeviceShortName = "Deluge";
    project.AlarmDeviceCode = "DV";
    project.InputChanged = -1;
}

std::unique_ptr<Project> ModelAfterReading(const Project& laid, LaidExtensions extensions,
                                           std::int32_t format) {
    auto model = std::make_unique<Project>(laid);
    for (int row = 1; row <= MaxPipes; ++row) {
        auto& material = model->PipeRecord[row].Material;
        if (row > laid.NumberOfPipeRows) {
            material = laid.SystemData.DefaultPipeMaterial;
        } else if (material > 54) {
            material = 4;
        }
    }
    if (model->UnitSystem < 0 || model->UnitSystem > 2) {
        model->UnitSystem = 0;
    }
    const LaidExtensions read = ExtensionsOfFormat(format);
    auto name = [&](std::string& text, const char* fallback, bool present) {
        if (!present || !read.DeviceNames || text.find_first_not_of(' ') == std::string::npos) {
            text = fallback;
        }
    };
    name(model->AlarmDeviceName, "Alarm Check Valve", extensions.DeviceNames);
    name(model->AlarmDeviceShortName, "Alarm CV", extensions.DeviceNames);
    name(model->AlarmDeviceCode, "ACV", extensions.DeviceNames);
    if (!extensions.InputChanged || !read.InputChanged) {
        model->InputChanged = 0;
    }
    if (format < 60121) {
        model->SystemData.ExteriorHoseFlow = 0;
    }
    return model;
}

void SaveFile(const std::filesystem::path& file, const FileBytes& bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
}

FileBytes LoadFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return FileBytes(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

} // namespace quench::testing
