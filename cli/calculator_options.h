#pragma once

// The options of the calculator commands: "--name VALUE" pairs, each named at most once, and the
// flag --si. Numbers are read as the screens read them and may not be negative.

#include "cli/command.h"

#include <initializer_list>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace quench::cli {

struct CalculatorOptions {
    std::map<std::string, std::string, std::less<>> Values; // by name without "--"
    bool Si = false;

    bool Has(std::string_view name) const { return Values.find(name) != Values.end(); }
    // The number of an option that was checked to be one (0 when it is absent).
    double Number(std::string_view name) const;
    // The number, or `fallback` when the option is absent.
    double NumberOr(std::string_view name, double fallback) const;
    const std::string& Text(std::string_view name) const;
};

// Splits the arguments; nothing, after a usage line on err, for an unknown option, a missing or
// repeated one, or a value that is not a number at or above 0 (the names in `texts` take any text).
std::optional<CalculatorOptions>
ParseCalculatorOptions(const Arguments& arguments, std::initializer_list<std::string_view> numbers,
                       std::initializer_list<std::string_view> texts, std::string_view usage,
                       std::ostream& err);

// The result line: the text alone, or nothing and status 1 when it is empty.
int PrintCalculatorResult(const std::string& result, std::ostream& out);

} // namespace quench::cli
