// quench addfit --head-loss H --flow Q --diameter D [--density R] [--viscosity V]
//               [--roughness E | --c-value C] [--si]
// The additional fitting calculator: a fitting's pressure loss at a flow as a length of pipe.

#include "calculators/additional_fitting.h"
#include "cli/calculator_options.h"

#include <ostream>
#include <string>

namespace quench::cli {

namespace {

constexpr const char* Usage =
    "usage: quench addfit --head-loss H --flow Q --diameter D [--density R] [--viscosity V] "
    "[--roughness E | --c-value C] [--si]";

// The messages of the calculation, "Title: text" on err.
class ErrorDialogs final : public Dialogs {
public:
    explicit ErrorDialogs(std::ostream& err) : err_(err) {}
    void ShowMessage(MessageStyle, std::string_view title, std::string_view text) override {
        if (!title.empty()) {
            err_ << title << ": ";
        }
        err_ << text << '\n';
    }
    Answer Ask(Buttons, Answer defaultAnswer, MessageStyle, std::string_view,
               std::string_view) override {
        return defaultAnswer;
    }

private:
    std::ostream& err_;
};

AdditionalFittingFields Fields(const CalculatorOptions& options) {
    const MeasureSystem units = options.Si ? MeasureSystem::SI : MeasureSystem::US;
    AdditionalFittingFields fields = AdditionalFittingDefaults(units, 0);
    fields.HeadLoss = options.Number("head-loss");
    fields.FlowRate = options.Number("flow");
    fields.Diameter = options.Number("diameter");
    fields.Density = options.NumberOr("density", fields.Density);
    fields.Viscosity = options.NumberOr("viscosity", fields.Viscosity);
    fields.Roughness = options.NumberOr("roughness", fields.Roughness);
    fields.CValue = options.NumberOr("c-value", fields.CValue);
    fields.Model = options.Has("c-value") ? FrictionModel::CValue : FrictionModel::Roughness;
    return fields;
}

int RunAddFit(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    const auto options = ParseCalculatorOptions(
        arguments,
        {"head-loss", "flow", "diameter", "density", "viscosity", "roughness", "c-value"}, {},
        Usage, err);
    if (!options) {
        return ExitUsage;
    }
    if (!options->Has("head-loss") || !options->Has("flow") || !options->Has("diameter")) {
        return UsageError(err, Usage);
    }
    if (options->Has("roughness") && options->Has("c-value")) {
        return UsageError(err, "give --roughness or --c-value, not both");
    }
    const AdditionalFittingFields fields = Fields(*options);
    ErrorDialogs dialogs(err);
    const auto outcome = CalculateAdditionalFitting(ToCalculationUnits(fields), dialogs);
    if (!outcome.Calculated) {
        return ExitStopped;
    }
    return PrintCalculatorResult(AdditionalLengthText(outcome.Length, fields.Units), out);
}

const CommandRegistration registration(
    "addfit",
    "--head-loss H --flow Q --diameter D [--density R] [--viscosity V] [--roughness E | "
    "--c-value C] [--si]",
    "Additional fitting length calculator: a fitting's loss at a flow as feet of pipe (psi, gpm, "
    "inches, lb/ft3, cP, inches of roughness; with --si kPa, L/min, mm, kg/m3, mN-s/m2, mm). "
    "Darcy-Weisbach with roughness (default 0.002 in.) unless --c-value is given.",
    RunAddFit);

} // namespace

} // namespace quench::cli
