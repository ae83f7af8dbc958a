#include "tests/support/network_checks.h"

#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"

#include <algorithm>
#include <cmath>

namespace quench::testing {

double DefaultCValue(int material) {
    static const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(DataDirectory()));
    return material >= 1 && material <= LibraryMaterials ? library.Material(material).CValue : 120;
}

double FrictionDrop(double flow, double insideDiameter, double length) {
    const double conductance =
        std::pow(120.0, 1.85) * std::pow(insideDiameter, 4.87) / 4.52 / length;
    return std::pow(flow, 1.0 / 0.5405) / conductance;
}

double SprinklerFlow(double kFactor, double pressure) {
    return kFactor * std::sqrt(pressure);
}

double WorstSprinklerLawError(const Project& project) {
    double worst = 0;
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& node = project.NodeRecord[row];
        if (node.KFactor <= 0) {
            continue;
        }
        const double expected = node.KFactor * std::sqrt(std::max(node.ResidualPressure, 0.0));
        worst = std::max(worst, std::fabs(node.Discharge - expected));
    }
    return worst;
}

Agreement CompareWithReference(const Project& project, const ReferenceSolution& reference) {
    Agreement agreement;
    agreement.Converged = reference.Converged;
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        const NodeRecord& node = project.NodeRecord[row];
        const auto found = reference.Residual.find(node.Number);
        if (found == reference.Residual.end()) {
            continue;
        }
        const double difference = std::fabs(node.ResidualPressure - found->second);
        if (difference > agreement.WorstPressure) {
            agreement.WorstPressure = difference;
            agreement.WorstPressureNode = node.Number;
        }
    }
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        if (static_cast<std::size_t>(pipe) > reference.LinkFlow.size()) {
            break;
        }
        const double difference = std::fabs(project.CalcPipeRecord[pipe].Flow -
                                            reference.LinkFlow[static_cast<std::size_t>(pipe - 1)]);
        agreement.WorstFlow = std::max(agreement.WorstFlow, difference);
    }
    return agreement;
}

Agreement CompareWithSupplyReference(const Project& project, double inflowPressure) {
    const ReferenceNetwork network = NetworkFromProject(project, DefaultCValue);
    return CompareWithReference(project, SolveSupply(network, inflowPressure));
}

} // namespace quench::testing
