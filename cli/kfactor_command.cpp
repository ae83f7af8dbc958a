// quench kfactor --flow Q --pressure P | --k K --pressure P | --k K --flow Q [--si]
// The sprinkler K-factor calculator: the one value missing of Q = K * sqrt(P).

#include "calculators/sprinkler_kfactor.h"
#include "cli/calculator_options.h"

#include <ostream>

namespace quench::cli {

namespace {

constexpr const char* Usage = "usage: quench kfactor (--flow Q --pressure P | --k K --pressure P "
                              "| --k K --flow Q) [--si]";

int RunKFactor(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    const auto options =
        ParseCalculatorOptions(arguments, {"flow", "pressure", "k"}, {}, Usage, err);
    if (!options) {
        return ExitUsage;
    }
    if (options->Values.size() != 2) {
        return UsageError(err, Usage);
    }
    KFactorLines lines;
    lines.Units = options->Si ? MeasureSystem::SI : MeasureSystem::US;
    if (!options->Has("k")) {
        lines.FlowRate = options->Number("flow");
        lines.ResidualPressure = options->Number("pressure");
        return PrintCalculatorResult(CalculateKFactorLines(lines).KFactor, out);
    }
    if (options->Has("pressure")) {
        lines.SecondKFactor = options->Number("k");
        lines.SecondPressure = options->Number("pressure");
        return PrintCalculatorResult(CalculateKFactorLines(lines).Flow, out);
    }
    lines.ThirdKFactor = options->Number("k");
    lines.ThirdFlow = options->Number("flow");
    return PrintCalculatorResult(CalculateKFactorLines(lines).Pressure, out);
}

const CommandRegistration registration(
    "kfactor", "(--flow Q --pressure P | --k K --pressure P | --k K --flow Q) [--si]",
    "Sprinkler K-factor calculator: the K-factor, the flow or the pressure of Q = K * sqrt(P) "
    "(gpm, psi, K; with --si L/min, kPa, Km).",
    RunKFactor);

} // namespace

} // namespace quench::cli
