#include "library/pump_curve_text.h"

#include "core/formats.h"

#include <algorithm>
#include <cmath>

namespace quench {

namespace {

std::string MultiplierText(double coefficient) {
    const std::string text = CoefficientText(coefficient);
    if (text == "1") {
        return "";
    }
    if (text == "-1") {
        return "-";
    }
    return text;
}

std::string PowerOfQ(int power) {
    return power == 1 ? "Q" : "Q^" + std::to_string(power);
}

} // namespace

std::string CoefficientText(double coefficient) {
    if (coefficient != 0 && std::fabs(coefficient) < 1) {
        return Format(coefficient, "Scientific");
    }
    std::string text = Format(coefficient, "##0.######");
    if (!text.empty() && text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::string PumpCurveText(const PumpCoefficientArray& coefficients, int pointCount) {
    const int degree = std::clamp(pointCount, MinimumCurvePoints, MaximumCurvePoints) - 1;
    std::string text = "Head = " + CoefficientText(coefficients[0]);
    for (int power = 1; power <= degree; ++power) {
        text +=
            " + " + MultiplierText(coefficients[static_cast<std::size_t>(power)]) + PowerOfQ(power);
    }
    return text;
}

} // namespace quench
