#include "interchange/epanet_export.h"

#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/text.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <sstream>

namespace quench {

namespace {

constexpr double DeviceDiameterInches = 12;
constexpr double ShortestLengthFeet = 0.01;

std::string Number(double value) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.6f", value);
    return buffer;
}

struct Junction {
    double Elevation = 0;
    double KFactor = 0;
    double FixedFlow = 0;
};

// The typed material of the row between two nodes, to tell a pump from the other devices.
Integer MaterialBetween(const Project& project, Integer a, Integer b) {
    for (int row = 1; row <= std::clamp<int>(project.NumberOfPipeRows, 0, MaxPipes); ++row) {
        const PipeRecord& pipe = project.PipeRecord[row];
        const Integer begin = CInt(ToNumber(pipe.BegNode));
        const Integer end = CInt(ToNumber(pipe.EndNode));
        if (pipe.Active != 0 && ((begin == a && end == b) || (begin == b && end == a))) {
            return pipe.Material;
        }
    }
    return 0;
}

Integer InflowOf(const Project& project) {
    const Integer given = project.CalculationData.SystemInflowNode;
    return given != 0 ? given : project.PipeResultRecord[1].BegNode;
}

double InflowPressure(const Project& project) {
    const auto& calculation = project.CalculationData;
    return calculation.SupplyMode != 0 ? calculation.InflowResidualPressure1
                                       : calculation.InflowResidualPressure;
}

} // namespace

EpanetOutcome LayEpanetInput(const Project& project, std::string& text) {
    const int rows =
        std::clamp<int>(project.CalculationData.NumberOfUniquePipeSections, 0, MaxPipes);
    if (rows == 0) {
        return EpanetOutcome{false, std::string(EpanetNoResults)};
    }
    const Integer inflow = InflowOf(project);
    std::map<Integer, Junction> junctions;
    for (int row = 1; row <= rows; ++row) {
        const auto& result = project.PipeResultRecord[static_cast<std::size_t>(row)];
        junctions.emplace(result.BegNode,
                          Junction{result.ElevationB, result.KFactorB, result.FixedFlowB});
        junctions.emplace(result.EndNode,
                          Junction{result.ElevationE, result.KFactorE, result.FixedFlowE});
    }

    std::ostringstream pipes, valves, pumps, curves;
    pipes << "[PIPES]\n;ID\tNode1\tNode2\tLength\tDiameter\tRoughness\tMinorLoss\tStatus\n";
    valves << "[VALVES]\n;ID\tNode1\tNode2\tDiameter\tType\tSetting\tMinorLoss\n";
    pumps << "[PUMPS]\n;ID\tNode1\tNode2\tParameters\n";
    curves << "[CURVES]\n;ID\tX-Value\tY-Value\n";
    for (int row = 1; row <= rows; ++row) {
        const auto& result = project.PipeResultRecord[static_cast<std::size_t>(row)];
        const std::string ends =
            std::to_string(result.BegNode) + "\t" + std::to_string(result.EndNode) + "\t";
        if (result.DeviceFlag != 2) {
            pipes << "P" << row << "\t" << ends
                  << Number(std::max(result.TotalLength, ShortestLengthFeet)) << "\t"
                  << Number(result.InsideDiameter) << "\t" << Number(result.CFactor)
                  << "\t0\tOpen\n";
        } else if (MaterialBetween(project, result.BegNode, result.EndNode) == MaterialFirePump) {
            pumps << "PUMP" << row << "\t" << ends << "HEAD C" << row << "\n";
            curves << "C" << row << "\t" << Number(result.Flow) << "\t"
                   << Number(result.FrictionPressure / PsiPerFootOfWater) << "\n";
        } else {
            valves << "V" << row << "\t" << ends << Number(DeviceDiameterInches) << "\tPBV\t"
                   << Number(result.FrictionPressure) << "\t0\n";
        }
    }

    std::ostringstream out;
    out << "[TITLE]\n" << Trim(project.ProjectData.Title) << "\n\n";
    out << "[JUNCTIONS]\n;ID\tElev\tDemand\n";
    std::ostringstream emitters;
    emitters << "[EMITTERS]\n;Junction\tCoefficient\n";
    for (const auto& [number, junction] : junctions) {
        if (number == inflow) {
            continue;
        }
        out << number << "\t" << Number(junction.Elevation) << "\t" << Number(junction.FixedFlow)
            << "\n";
        if (junction.KFactor > 0) {
            emitters << number << "\t" << Number(junction.KFactor) << "\n";
        }
    }
    const auto source = junctions.find(inflow);
    const double elevation = source != junctions.end() ? source->second.Elevation : 0;
    out << "\n[RESERVOIRS]\n;ID\tHead\n"
        << inflow << "\t" << Number(elevation + InflowPressure(project) / PsiPerFootOfWater)
        << "\n\n";
    out << pipes.str() << "\n"
        << pumps.str() << "\n"
        << valves.str() << "\n"
        << curves.str() << "\n"
        << emitters.str() << "\n";
    out << "[OPTIONS]\nUnits\tGPM\nHeadloss\tH-W\nSpecific Gravity\t1.0\nViscosity\t1.0\n"
           "Trials\t200\nAccuracy\t0.00001\nUnbalanced\tContinue 10\nEmitter Exponent\t0.5\n"
           "Demand Multiplier\t1.0\n\n";
    out << "[TIMES]\nDuration\t0\n\n[REPORT]\nStatus\tNo\nNodes\tAll\nLinks\tAll\n\n[END]\n";
    text = out.str();
    return EpanetOutcome{true, {}};
}

EpanetOutcome WriteEpanetFile(const Project& project, const std::filesystem::path& file) {
    std::string text;
    EpanetOutcome outcome = LayEpanetInput(project, text);
    if (!outcome.Written) {
        return outcome;
    }
    std::string error;
    if (!WriteFileAtomically(file, text, &error)) {
        return EpanetOutcome{false, "\"" + file.string() + "\" cannot be written: " + error};
    }
    return outcome;
}

} // namespace quench
