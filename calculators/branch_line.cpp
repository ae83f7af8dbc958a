#include "calculators/branch_line.h"

#include "calculators/sprinkler_kfactor.h"
#include "core/formats.h"
#include "library/equivalent_length.h"
#include "library/fitting_text.h"

#include <cmath>

namespace quench {

namespace {

const PipeDiameterRecord* MatchingSize(const PipeLibrary& library, int material, double nominal) {
    const double wanted = RoundTo(nominal, 3);
    for (const auto& size : library.Material(material).Diameters) {
        if (size.Nominal > 0 && RoundTo(size.Nominal, 3) == wanted) {
            return &size;
        }
    }
    return nullptr;
}

// Hazen-Williams friction in psi per foot.
double FrictionPerFoot(double flow, double cValue, double inner) {
    return 4.52 * std::pow(flow, 1.85) / (std::pow(cValue, 1.85) * std::pow(inner, 4.87));
}

} // namespace

double BranchLineKFactor(const PipeLibrary& library, int material, double nominal,
                         double straightLength, const std::string& fittings, double kFactor) {
    if (!IsLibraryMaterial(material)) {
        return 0;
    }
    const PipeDiameterRecord* size = MatchingSize(library, material, nominal);
    if (size == nullptr) {
        return 0;
    }
    const double equivalentLength = straightLength + FittingSum(*size, SplitFittingText(fittings));
    const double cValue = library.Material(material).CValue;
    const double inner = size->Inner;
    double sum = 0;
    for (const double endPressure : BranchLinePressures) {
        const double flow = kFactor * std::sqrt(endPressure);
        const double startPressure =
            endPressure + FrictionPerFoot(flow, cValue, inner) * equivalentLength;
        sum += flow / std::sqrt(startPressure);
    }
    return sum / std::size(BranchLinePressures);
}

std::optional<double> CalculateBranchLine(const PipeLibrary& library,
                                          const BranchLineFields& fields) {
    const MeasureSystem units = fields.Units;
    const double diameter = StoredValue(UnitKind::Fine_Length, fields.Diameter, units);
    const double totalLength =
        StoredValue(UnitKind::Length, fields.Length + fields.NonStandardFittings, units);
    const double kFactor = StoredValue(UnitKind::K_Factor, fields.SprinklerKFactor, units);
    const double material = fields.Material;
    if (!(diameter > 0) || !(totalLength > 0) || !(kFactor > 0) || material < 1 ||
        material > LibraryMaterials || material != std::floor(material)) {
        return std::nullopt;
    }
    const double result = BranchLineKFactor(library, static_cast<int>(material), diameter,
                                            totalLength, fields.StandardFittings, kFactor);
    if (result == 0 || !std::isfinite(result)) {
        return std::nullopt;
    }
    return result;
}

std::string BranchLineResultText(const PipeLibrary& library, const BranchLineFields& fields) {
    return CalculatorResultText(CalculateBranchLine(library, fields), UnitKind::K_Factor,
                                fields.Units);
}

} // namespace quench
