#include "cli/calculator_options.h"

#include "core/formats.h"

#include <algorithm>

namespace quench::cli {

namespace {

bool Contains(std::initializer_list<std::string_view> names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

double CalculatorOptions::Number(std::string_view name) const {
    return NumberOr(name, 0);
}

double CalculatorOptions::NumberOr(std::string_view name, double fallback) const {
    const auto found = Values.find(name);
    return found == Values.end() ? fallback : ToNumber(found->second);
}

const std::string& CalculatorOptions::Text(std::string_view name) const {
    static const std::string none;
    const auto found = Values.find(name);
    return found == Values.end() ? none : found->second;
}

std::optional<CalculatorOptions>
ParseCalculatorOptions(const Arguments& arguments, std::initializer_list<std::string_view> numbers,
                       std::initializer_list<std::string_view> texts, std::string_view usage,
                       std::ostream& err) {
    CalculatorOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "--si") {
            options.Si = true;
            continue;
        }
        const std::string name = word.starts_with("--") ? word.substr(2) : std::string();
        const bool isNumber = Contains(numbers, name);
        if (!isNumber && !Contains(texts, name)) {
            UsageError(err, "unknown argument \"" + word + "\"; " + std::string(usage));
            return std::nullopt;
        }
        if (i + 1 == arguments.size()) {
            UsageError(err, word + " needs a value");
            return std::nullopt;
        }
        const std::string& value = arguments[++i];
        if (isNumber && (!IsNumeric(value) || ToNumber(value) < 0)) {
            UsageError(err, word + " \"" + value + "\" must be a number not below 0");
            return std::nullopt;
        }
        if (!options.Values.emplace(name, value).second) {
            UsageError(err, word + " is given twice");
            return std::nullopt;
        }
    }
    return options;
}

int PrintCalculatorResult(const std::string& result, std::ostream& out) {
    if (result.empty()) {
        return ExitStopped;
    }
    out << result << '\n';
    return ExitSuccess;
}

} // namespace quench::cli
