#include "tests/support/network_builder.h"

#include "core/formats.h"
#include "core/text.h"

#include <stdexcept>

namespace quench::testing {

NetworkBuilder::NetworkBuilder(Project& project) : project_(project) {
    CalculationData& data = project.CalculationData;
    data.UseMaximumImbalance = 1;
    data.MaximumNodePressureImbalance = 0.000001;
    data.InitialDampingFactor = 2;
    data.MinimumDampingFactor = 1;
}

PipeRecord& NetworkBuilder::Pipe(int begin, int end, Single length, Single diameter,
                                 Integer material) {
    PipeRecord& row = project_.PipeRecord[++project_.NumberOfPipeRows];
    row = PipeRecord{};
    row.BegNode = std::to_string(begin);
    row.EndNode = std::to_string(end);
    row.Active = True;
    row.Material = material;
    row.Diameter = diameter;
    row.DiameterFixed = ToFlag(diameter > 0);
    row.Length = length;
    row.TotalEquivLength = length;
    row.DeviceLoss = NotGiven;
    return row;
}

PipeRecord& NetworkBuilder::Device(int begin, int end, Integer material, Single loss) {
    PipeRecord& row = Pipe(begin, end, 0, NotGiven, material);
    row.DeviceLoss = loss;
    row.DiameterFixed = False;
    return row;
}

template <class Apply>
void NetworkBuilder::AtNode(int node, Apply apply) {
    for (int row = 1; row <= project_.NumberOfPipeRows; ++row) {
        PipeRecord& record = project_.PipeRecord[row];
        if (ToNumber(record.BegNode) == node) {
            apply(record, true);
        }
        if (ToNumber(record.EndNode) == node) {
            apply(record, false);
        }
    }
}

NetworkBuilder& NetworkBuilder::Sprinkler(int node, const std::string& kFactor) {
    AtNode(node,
           [&](PipeRecord& row, bool begin) { (begin ? row.KFactorB : row.KFactorE) = kFactor; });
    return *this;
}

NetworkBuilder& NetworkBuilder::Sprinkler(int node, double kFactor) {
    return Sprinkler(node, NumberText(kFactor));
}

NetworkBuilder& NetworkBuilder::Elevation(int node, Single feet) {
    AtNode(node,
           [&](PipeRecord& row, bool begin) { (begin ? row.ElevationB : row.ElevationE) = feet; });
    return *this;
}

NetworkBuilder& NetworkBuilder::FixedFlow(int node, Single gpm) {
    AtNode(node, [&](PipeRecord& row, bool begin) {
        (begin ? row.NonSprinklerFlowB : row.NonSprinklerFlowE) = gpm;
    });
    return *this;
}

NetworkBuilder& NetworkBuilder::Area(int node, Single squareFeet) {
    AtNode(node, [&](PipeRecord& row, bool begin) {
        (begin ? row.SprinklerAreaB : row.SprinklerAreaE) = squareFeet;
    });
    return *this;
}

NetworkBuilder& NetworkBuilder::Group(int node, const std::string& group) {
    AtNode(node,
           [&](PipeRecord& row, bool begin) { (begin ? row.AreaGroupB : row.AreaGroupE) = group; });
    return *this;
}

NetworkBuilder& NetworkBuilder::Inflow(int node) {
    AtNode(node,
           [&](PipeRecord& row, bool begin) { (begin ? row.BegIsInflow : row.EndIsInflow) = 1; });
    project_.InflowNode = static_cast<Integer>(node);
    project_.CalculationData.SystemInflowNode = static_cast<Integer>(node);
    return *this;
}

NetworkBuilder& NetworkBuilder::SupplyMode(double inflowPressure) {
    project_.CalculationData.DemandMode = 0;
    project_.CalculationData.SupplyMode = 1;
    project_.CalculationData.InflowResidualPressure1 = inflowPressure;
    return *this;
}

NetworkBuilder& NetworkBuilder::DemandMode(Single minimumPressure, Single density) {
    project_.CalculationData.DemandMode = 1;
    project_.CalculationData.SupplyMode = 0;
    project_.CalculationData.MinPressureAtHMDNode = minimumPressure;
    project_.CalculationData.DesignDensity = density;
    project_.SystemData.MinimumDesiredDensity = density;
    return *this;
}

NetworkBuilder& NetworkBuilder::MaximumImbalance(double tolerance) {
    project_.CalculationData.MaximumNodePressureImbalance = tolerance;
    return *this;
}

const NodeRecord& NodeOf(const Project& project, int number) {
    for (int i = 1; i <= project.NumberOfNodes; ++i) {
        const NodeRecord& node = project.NodeRecord[i];
        if (node.Number == number ||
            (node.Number == InflowNodeCode && number == project.InflowNode)) {
            return node;
        }
    }
    throw std::runtime_error("no node " + std::to_string(number));
}

} // namespace quench::testing
