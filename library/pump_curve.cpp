#include "library/pump_curve.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

constexpr double LargestCurveValue = 9999.0; // the limits of a pump curve field

void EliminateBelow(GaussMatrix& matrix, GaussVector& rightSide, int size, int pivotRow) {
    const auto pivot = static_cast<std::size_t>(pivotRow);
    for (auto row = pivot + 1; row < static_cast<std::size_t>(size); ++row) {
        const double factor = matrix[row][pivot] / matrix[pivot][pivot];
        for (auto column = pivot; column < static_cast<std::size_t>(size); ++column) {
            matrix[row][column] -= factor * matrix[pivot][column];
        }
        rightSide[row] -= factor * rightSide[pivot];
    }
}

bool HasIdenticalFlows(std::span<const CurvePoint> points) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        for (std::size_t j = i + 1; j < points.size(); ++j) {
            if (points[i].Flow == points[j].Flow) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

bool Gauss(GaussMatrix& matrix, GaussVector& rightSide, int size, GaussVector& solution) {
    for (int row = 0; row < size; ++row) {
        if (matrix[static_cast<std::size_t>(row)][static_cast<std::size_t>(row)] == 0) {
            return false;
        }
        EliminateBelow(matrix, rightSide, size, row);
    }
    for (int row = size - 1; row >= 0; --row) {
        const auto r = static_cast<std::size_t>(row);
        double sum = rightSide[r];
        for (auto column = r + 1; column < static_cast<std::size_t>(size); ++column) {
            sum -= matrix[r][column] * solution[column];
        }
        solution[r] = sum / matrix[r][r];
        if (!std::isfinite(solution[r])) {
            return false;
        }
    }
    return true;
}

CurveFit FitPumpCurve(std::span<const CurvePoint> points) {
    CurveFit fit;
    const auto count = std::min<std::size_t>(points.size(), MaximumCurvePoints);
    points = points.first(count);
    fit.PointCount = static_cast<int>(count);
    if (count < MinimumCurvePoints) {
        fit.Status = CurveFitStatus::TooFewPoints;
        return fit;
    }
    if (HasIdenticalFlows(points)) {
        fit.Status = CurveFitStatus::IdenticalFlows;
        return fit;
    }
    // One row per point: 1, Q, Q^2, ... and the pressure on the right.
    GaussMatrix matrix{};
    GaussVector rightSide{};
    for (std::size_t row = 0; row < count; ++row) {
        double power = 1;
        for (std::size_t column = 0; column < count; ++column) {
            matrix[row][column] = power;
            power *= points[row].Flow;
        }
        rightSide[row] = points[row].Pressure;
    }
    GaussVector solution{};
    if (!Gauss(matrix, rightSide, static_cast<int>(count), solution)) {
        // Distinct flows never give a zero pivot in exact arithmetic; only overflow gets here.
        fit.Status = CurveFitStatus::Overflow;
        return fit;
    }
    std::copy_n(solution.begin(), count, fit.Coefficients.begin());
    fit.Status = CurveFitStatus::Fitted;
    return fit;
}

std::string_view CurveFitMessage(CurveFitStatus status) {
    switch (status) {
    case CurveFitStatus::Fitted:
        return "";
    case CurveFitStatus::TooFewPoints:
        return "You must specify at least 3 pump curve points.";
    case CurveFitStatus::IdenticalFlows:
        return "Two of the entered pump curve points are identical.  Please reenter data.";
    case CurveFitStatus::Overflow:
        return "Values are too large and cause an error.  Please reduce some values.";
    }
    return "";
}

double EvaluatePumpCurve(const PumpCoefficientArray& coefficients, double flow) {
    return coefficients[0] + coefficients[1] * flow + coefficients[2] * std::pow(flow, 2.0) +
           coefficients[3] * std::pow(flow, 3.0) + coefficients[4] * std::pow(flow, 4.0);
}

double FeetOfHeadToPsi(double feet) {
    return feet * PsiPerFootOfHead;
}

bool IsCurveValue(double value) {
    return std::fabs(value) <= LargestCurveValue; // false for NaN as well
}

bool IsCurvePoint(double flow, double pressure) {
    return IsCurveValue(flow) && IsCurveValue(pressure) && !(flow == 0 && pressure == 0);
}

std::vector<CurvePoint> ProjectPumpPoints(const CalculationData& data) {
    std::vector<CurvePoint> points;
    for (std::size_t slot = 0; slot < MaximumCurvePoints; ++slot) {
        const double flow = data.PumpCurveFlow[slot];
        const double pressure = data.PumpCurvePressure[slot];
        if (IsCurvePoint(flow, pressure)) {
            points.push_back(CurvePoint{flow, pressure});
        }
    }
    return points;
}

void StoreProjectPump(CalculationData& data, const CurveSlotArray& slots,
                      const PumpCoefficientArray& coefficients, bool feetOfHead, Integer source) {
    for (std::size_t slot = 0; slot < MaximumCurvePoints; ++slot) {
        const CurveSlot& given = slots[slot];
        data.PumpCurveFlow[slot] =
            given.Used ? static_cast<Single>(given.Point.Flow) : UnusedPumpPoint;
        data.PumpCurvePressure[slot] =
            given.Used ? static_cast<Single>(given.Point.Pressure) : UnusedPumpPoint;
    }
    data.PumpCoefficients = coefficients;
    data.PumpDefined = feetOfHead ? 1 : 0;
    data.PumpSource = source;
}

void ClearProjectPump(CalculationData& data) {
    data.PumpCurveFlow.fill(UnusedPumpPoint);
    data.PumpCurvePressure.fill(UnusedPumpPoint);
    data.PumpCoefficients.fill(0);
    data.PumpSource = 0;
}

PumpCoefficientArray ProjectPumpCoefficientsInPsi(const CalculationData& data) {
    PumpCoefficientArray coefficients = data.PumpCoefficients;
    if (IsTrue(data.PumpDefined)) {
        for (double& coefficient : coefficients) {
            coefficient = FeetOfHeadToPsi(coefficient);
        }
    }
    return coefficients;
}

} // namespace quench
