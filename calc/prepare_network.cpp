#include "calc/prepare_network.h"

#include "calc/build_working_rows.h"
#include "calc/check_calculation_screen.h"
#include "core/formats.h"
#include "core/text.h"
#include "library/equivalent_length.h"
#include "library/material_tables.h"
#include "solver/calculation_options.h"
#include "solver/hydraulics.h"

#include <algorithm>

namespace quench {

namespace {

constexpr const char* InflowText = "10000";
constexpr Single DryFactor = 1.3f;

bool IsActiveWithNodes(const WorkPipeRecord& row) {
    return IsTrue(row.Active) && HasBothNodes(row);
}

void ClearPipeTable(Project& project, bool keepDiameters) {
    for (int pipe = 1; pipe <= MaxPipes; ++pipe) {
        CalcPipeRecord& record = project.CalcPipeRecord[pipe];
        record.NominalLength = 0;
        record.TypeGroup = 0;
        record.ResultFittingText.clear();
        record.Flow = 0;
        record.Autosized = 0;
        record.NonStandardFitLength = 0;
        record.FittingCounts = {};
        record.FrictionLoss = 0;
        record.FittingLength = 0;
        record.ElevationPressure = 0;
        record.VelocityPressure = 0;
        if (!keepDiameters) {
            record.NominalDiameter = 0;
        }
    }
}

// The last input row that holds a node.
int LastFilledRow(const Project& project) {
    for (int row = MaxPipes; row >= 1; --row) {
        if (!IsBlankRow(project.PipeRecord[row])) {
            return row;
        }
    }
    return 0;
}

// Working rows with both nodes, among the rows that hold data.
Integer CountPipes(const Project& project) {
    const int last = LastFilledRow(project);
    Integer count = 0;
    for (int row = 1; row <= last; ++row) {
        if (HasBothNodes(project.WorkPipeRecord[row])) {
            ++count;
        }
    }
    return count;
}

// Input rows with both nodes; their node texts become the plain text of their values ("012" is
// "12").
Integer CountActivePipes(Project& project) {
    Integer count = 0;
    for (int row = 1; row <= MaxPipes; ++row) {
        PipeRecord& input = project.PipeRecord[row];
        if (!quench::HasBothNodes(input)) {
            continue;
        }
        ++count;
        input.BegNode = NumberText(ToNumber(input.BegNode));
        input.EndNode = NumberText(ToNumber(input.EndNode));
    }
    return count;
}

struct NodeEnd {
    int Row = 0;
    bool AtBegin = true;
};

// The first end of an active row that holds the inflow node; Row 0 when none does.
NodeEnd FirstInflowEnd(const Project& project) {
    const double inflow = project.InflowNode;
    for (int row = 1; row <= project.NumberOfActivePipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!HasBothNodes(work)) {
            continue;
        }
        if (ToNumber(work.BegNode) == inflow) {
            return {row, true};
        }
        if (ToNumber(work.EndNode) == inflow) {
            return {row, false};
        }
    }
    return {};
}

std::string& NodeText(WorkPipeRecord& work, bool atBegin) {
    return atBegin ? work.BegNode : work.EndNode;
}

void MarkInflow(Project& project) {
    const NodeEnd end = FirstInflowEnd(project);
    if (end.Row != 0) {
        NodeText(project.WorkPipeRecord[end.Row], end.AtBegin) = InflowText;
    }
}

// The distinct node numbers of the active rows, ascending; equal values are one node.
std::vector<int> SortedNodes(const Project& project) {
    std::vector<int> nodes;
    std::vector<bool> seen(InflowNodeCode + 2, false);
    for (int row = 1; row <= project.NumberOfActivePipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!IsActiveWithNodes(work)) {
            continue;
        }
        for (const std::string* text : {&work.BegNode, &work.EndNode}) {
            const double value = ToNumber(*text);
            const int number = value >= 0 && value <= InflowNodeCode ? static_cast<int>(value) : 0;
            if (!seen[static_cast<std::size_t>(number)]) {
                seen[static_cast<std::size_t>(number)] = true;
                nodes.push_back(number);
            }
        }
    }
    std::stable_sort(nodes.begin(), nodes.end());
    return nodes;
}

struct TakenPipe {
    int Row = 0;
    bool Turned = false;
};

// Each pipe filed under its larger node, nodes in order, rows in order within a node.
std::vector<TakenPipe> TakePipes(const Project& project, const std::vector<int>& nodes) {
    std::vector<int> placeOfNumber(InflowNodeCode + 2, -1);
    for (std::size_t place = 0; place < nodes.size(); ++place) {
        placeOfNumber[static_cast<std::size_t>(nodes[place])] = static_cast<int>(place);
    }
    std::vector<std::vector<TakenPipe>> underNode(nodes.size());
    for (int row = 1; row <= project.NumberOfActivePipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!IsActiveWithNodes(work)) {
            continue;
        }
        const double begin = ToNumber(work.BegNode);
        const double end = ToNumber(work.EndNode);
        if (begin == end) {
            continue;
        }
        const int larger = static_cast<int>(std::max(begin, end));
        if (larger < 0 || larger > InflowNodeCode ||
            placeOfNumber[static_cast<std::size_t>(larger)] < 0) {
            continue;
        }
        underNode[static_cast<std::size_t>(placeOfNumber[static_cast<std::size_t>(larger)])]
            .push_back(TakenPipe{row, begin > end});
    }
    std::vector<TakenPipe> taken;
    for (const auto& pipes : underNode) {
        for (const TakenPipe& pipe : pipes) {
            if (static_cast<int>(taken.size()) < MaxPipes) {
                taken.push_back(pipe);
            }
        }
    }
    return taken;
}

void ResolveDevice(const WorkPipeRecord& work, bool turned, bool rerun, CalcPipeRecord& record) {
    // Taken the straight way round a pump pass keeps the loss it holds; turned round the row's
    // own value always stands.
    if (turned || !rerun) {
        record.DeviceLoss = work.DeviceLoss;
    }
    record.InsideDiameter = DeviceDiameter;
}

void ResolveDiameter(Project& project, const PipeLibrary& library, int row, bool turned,
                     CalcPipeRecord& record) {
    WorkPipeRecord& work = project.WorkPipeRecord[row];
    PipeRecord& input = project.PipeRecord[row];
    if (work.Diameter == 0 && input.Diameter > 0) {
        work.Diameter = input.Diameter;
    }
    record.NominalDiameter = work.Diameter;
    if (record.NominalDiameter == 0) {
        work.DiameterFixed = False;
        input.DiameterFixed = False;
        record.Autosized = 0;
    } else {
        record.Autosized = work.DiameterFixed;
    }
    if (record.NominalDiameter > 0 && IsLibraryMaterial(work.Material)) {
        record.CFactor = library.Material(work.Material).CValue;
        const PipeDiameterRecord* size =
            FindDiameter(library, work.Material, static_cast<Single>(record.NominalDiameter));
        record.InsideDiameter = size == nullptr
                                    ? record.NominalDiameter
                                    : ToNumber(Format(size->Inner, turned ? "#0.0##" : "#0.000"));
    }
}

void FillPipe(Project& project, const PipeLibrary& library, const TakenPipe& taken,
              const PrepareOptions& options, CalcPipeRecord& record, PrepareResult& result) {
    RecalcEquivLength(project, library, taken.Row);
    WorkPipeRecord& work = project.WorkPipeRecord[taken.Row];
    record.BegNode = Trim(taken.Turned ? work.EndNode : work.BegNode);
    record.EndNode = Trim(taken.Turned ? work.BegNode : work.EndNode);
    record.NominalLength = work.Length;
    record.TotalLength = project.PipeRecord[taken.Row].TotalEquivLength;
    record.FittingLength = record.TotalLength - record.NominalLength;
    record.TypeGroup = work.TypeGroup;
    record.Material = work.Material;
    const bool device = taken.Turned ? work.Material >= MaterialMeter : IsDeviceCode(work.Material);
    if (device) {
        ResolveDevice(work, taken.Turned, options.PumpRerunPending, record);
        if (work.Material == MaterialFirePump && work.DeviceLoss == NotGiven &&
            IsSupplyMode(project.CalculationData)) {
            result.PumpUsesCurve = true;
        }
    } else {
        record.DeviceLoss = 0;
    }
    ResolveDiameter(project, library, taken.Row, taken.Turned, record);
    record.NonStandardFitLength = work.NonStandardFitLength;
    record.FittingCounts = work.FittingCounts;
    record.FittingText = work.FittingText;
    if (IsLibraryMaterial(work.Material)) {
        record.ResultFittingText = Trim(library.Material(work.Material).Description);
    }
}

// The first active row with both nodes at each node number from 0 to the inflow code, and which
// end it is; Row 0 where none is.
std::vector<NodeEnd> FirstEnds(const Project& project) {
    std::vector<NodeEnd> ends(InflowNodeCode + 1, NodeEnd{0, true});
    const auto note = [&ends](double value, int row, bool atBegin) {
        // The number a value stands for is its whole part, as a conversion to int takes it.
        if (value > -1 && value < InflowNodeCode + 1) {
            NodeEnd& end = ends[static_cast<std::size_t>(static_cast<int>(value))];
            if (end.Row == 0) {
                end = NodeEnd{row, atBegin};
            }
        }
    };
    for (int row = 1; row <= project.NumberOfActivePipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (IsActiveWithNodes(work)) {
            note(ToNumber(work.BegNode), row, true);
            note(ToNumber(work.EndNode), row, false);
        }
    }
    return ends;
}

double DensityInForce(const Project& project, const PrepareOptions& options) {
    if (IsSupplyMode(project.CalculationData)) {
        return 0;
    }
    return options.UseGeneralDensity ? project.SystemData.MinimumDesiredDensity
                                     : project.CalculationData.DesignDensity;
}

// The area a sprinkler covers: its own, the largest area per sprinkler, or the area of operation
// shared by the sprinklers that flowed last time. False when none is known but one is needed.
bool AssignArea(const Project& project, const PrepareOptions& options, Single rowArea,
                double kFactor, double& area) {
    const SystemData& system = project.SystemData;
    if (rowArea != 0) {
        area = rowArea;
    } else if (system.MaximumAreaPerSprinkler != 0) {
        area = system.MaximumAreaPerSprinkler;
    } else if (system.AreaOfSprinklerOperation != 0) {
        const Integer flowing = project.CalculationData.NumberOfFlowingSprinklers;
        area = flowing != 0 ? static_cast<double>(system.AreaOfSprinklerOperation) / flowing
                            : system.AreaOfSprinklerOperation;
    } else {
        area = 0;
        return !(kFactor > 0 && !IsSupplyMode(project.CalculationData) &&
                 DensityInForce(project, options) != 0);
    }
    return true;
}

bool FillNodes(Project& project, const std::vector<int>& nodes, const PrepareOptions& options) {
    const std::vector<NodeEnd> ends = FirstEnds(project);
    for (std::size_t place = 0; place < nodes.size(); ++place) {
        NodeRecord& node = project.NodeRecord[place + 1];
        const auto number = static_cast<std::size_t>(nodes[place]);
        if (number >= ends.size() || ends[number].Row == 0) {
            continue;
        }
        WorkPipeRecord& work = project.WorkPipeRecord[ends[number].Row];
        const bool atBegin = ends[number].AtBegin;
        node.Number = static_cast<Integer>(nodes[place]);
        node.Elevation = atBegin ? work.ElevationB : work.ElevationE;
        node.AreaGroup = atBegin ? work.AreaGroupB : work.AreaGroupE;
        node.KFactor = atBegin ? work.KFactorB : work.KFactorE;
        double area = 0;
        if (!AssignArea(project, options, atBegin ? work.SprinklerAreaB : work.SprinklerAreaE,
                        node.KFactor, area)) {
            return false;
        }
        node.SprinklerArea = area;
        node.FixedFlow = atBegin ? work.NonSprinklerFlowB : work.NonSprinklerFlowE;
        node.WorkPressure = 0;
        if (node.Discharge > 0 && node.KFactor > 0) {
            node.NodeMark = True;
            node.FixedFlow = 0;
            (atBegin ? work.NonSprinklerFlowB : work.NonSprinklerFlowE) = 0;
        }
    }
    return true;
}

void ResizeNodeTable(Project& project, std::size_t nodes) {
    if (project.NodeRecord.size() < nodes + 1) {
        project.NodeRecord.resize(nodes + 1);
    }
}

} // namespace

bool PreparingAgainRepeats(const Project& project) {
    // Everything else a preparation does it does again from the same rows to the same tables.
    const NodeEnd end = FirstInflowEnd(project);
    if (end.Row == 0) {
        return true;
    }
    const WorkPipeRecord& work = project.WorkPipeRecord[end.Row];
    return (end.AtBegin ? work.BegNode : work.EndNode) == InflowText;
}

bool HasBlankRowBetween(const Project& project) {
    bool blankSeen = false;
    for (int row = 1; row <= MaxPipes; ++row) {
        const bool blank = IsBlankRow(project.PipeRecord[row]);
        if (!blank && blankSeen) {
            return true;
        }
        blankSeen = blankSeen || blank;
    }
    return false;
}

namespace {

bool HasEqualNodeTexts(const Project& project) {
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& input = project.PipeRecord[row];
        if (quench::HasBothNodes(input) && Trim(input.BegNode) == Trim(input.EndNode)) {
            return true;
        }
    }
    return false;
}

} // namespace

PrepareResult PrepareNetwork(Project& project, const PipeLibrary& library,
                             const PrepareOptions& options) {
    PrepareResult result;
    if (HasBlankRowBetween(project) ||
        (!IsTrue(project.PipeRecord[1].Active) && HasEqualNodeTexts(project))) {
        return result;
    }
    project.NumberOfPipes = 0;
    project.NumberOfActivePipes = 0;
    project.NumberOfNodes = 0;
    ClearPipeTable(project, options.PumpRerunPending);
    project.NumberOfPipes = CountPipes(project);
    project.NumberOfActivePipes = CountActivePipes(project);
    if (project.NumberOfPipes == 0 && project.NumberOfActivePipes != 0) {
        BuildWorkingRows(project);
        project.NumberOfPipes = CountPipes(project);
        project.NumberOfActivePipes = CountActivePipes(project);
    }
    MarkInflow(project);
    const std::vector<int> nodes = SortedNodes(project);
    // The node table, and the file, hold at most MaxNodes: a larger network leaves the solver's
    // tables empty rather than a count that no save could store.
    if (nodes.size() > static_cast<std::size_t>(MaxNodes)) {
        project.NumberOfPipes = 0;
        result.NodesAboveCapacity = static_cast<int>(nodes.size());
        return result;
    }
    project.NumberOfNodes = static_cast<Integer>(nodes.size());
    ResizeNodeTable(project, nodes.size());
    const std::vector<TakenPipe> taken = TakePipes(project, nodes);
    project.NumberOfPipes = static_cast<Integer>(taken.size());
    for (std::size_t pipe = 0; pipe < taken.size(); ++pipe) {
        FillPipe(project, library, taken[pipe], options, project.CalcPipeRecord[pipe + 1], result);
    }
    result.DryAreaFactor = Trim(project.SystemData.SprinklerSystemType) == "Dry" ? DryFactor : 1.0f;
    if (!FillNodes(project, nodes, options)) {
        result.Failed = true;
        return result;
    }
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        if (project.NodeRecord[position].Number == project.InflowNode) {
            project.NodeRecord[position].Number = 0;
        }
    }
    return result;
}

} // namespace quench
