#include "library/equivalent_length.h"

#include "core/formats.h"
#include "library/material_tables.h"

#include <algorithm>
#include <limits>

namespace quench {

namespace {

// Absurd figures from a damaged file stay within a Single rather than overflow it.
Single ToSingle(double value) {
    constexpr double largest = std::numeric_limits<Single>::max();
    return static_cast<Single>(std::clamp(value, -largest, largest));
}

} // namespace

double FittingSum(const PipeDiameterRecord& size, const std::vector<FittingEntry>& entries) {
    double sum = 0;
    for (const auto& entry : entries) {
        sum += static_cast<double>(entry.Quantity) * size.FitEqLen[entry.Kind];
    }
    return sum;
}

std::optional<double> FittingSumOf(const PipeLibrary& library, int material, Single nominal,
                                   std::string_view text, std::size_t maxCharacters) {
    const PipeDiameterRecord* size = FindDiameter(library, material, nominal);
    if (size == nullptr) {
        return std::nullopt;
    }
    return FittingSum(*size, SplitFittingText(text, maxCharacters));
}

Single LookupNominal(Single storedDiameter, Integer unitSystem) {
    if (!IsSIUnitSystem(unitSystem)) {
        return storedDiameter;
    }
    return ToSingle(ToNumber(Format(storedDiameter, "###,##0.0#")));
}

Single RoundedEquivLength(Single length, double fittingSum, Single nonStandardFitLength) {
    const double total = static_cast<double>(length) + fittingSum + nonStandardFitLength;
    return ToSingle(ToNumber(Format(total, "##0.0##")));
}

void RecalcEquivLength(Project& project, const PipeLibrary& library, int row) {
    if (row < 1 || row >= static_cast<int>(project.PipeRecord.size())) {
        return;
    }
    PipeRecord& pipe = project.PipeRecord[row];
    double sum = 0;
    if (pipe.Diameter != 0 && IsLibraryMaterial(pipe.Material)) {
        const Single nominal = LookupNominal(pipe.Diameter, project.UnitSystem);
        sum = FittingSumOf(library, pipe.Material, nominal, BuildFittingText(pipe.FittingCounts))
                  .value_or(0.0);
    }
    pipe.TotalEquivLength = RoundedEquivLength(pipe.Length, sum, pipe.NonStandardFitLength);
}

} // namespace quench
