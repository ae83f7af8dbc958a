// quench branchline --material M --diameter D --length L [--fittings TEXT] [--nonstandard N]
//                   --k K [--library FILE] [--si]
// The branch line calculator: one K-factor for a stretch of pipe with a sprinkler at its end.

#include "calculators/branch_line.h"
#include "cli/calculator_options.h"
#include "cli/library_arguments.h"
#include "core/text.h"
#include "library/fitting_text.h"

#include <algorithm>
#include <ostream>

namespace quench::cli {

namespace {

constexpr const char* Usage =
    "usage: quench branchline --material M --diameter D --length L [--fittings TEXT] "
    "[--nonstandard N] --k K [--library FILE] [--si]";

// The fitting field takes at most 10 digits and fitting letters.
bool IsFittingText(const std::string& text) {
    if (text.size() > 10) {
        return false;
    }
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return (c >= '0' && c <= '9') || FittingKindOf(c) >= 0; });
}

int RunBranchLine(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    const auto options =
        ParseCalculatorOptions(arguments, {"material", "diameter", "length", "nonstandard", "k"},
                               {"fittings", "library"}, Usage, err);
    if (!options) {
        return ExitUsage;
    }
    for (const char* required : {"material", "diameter", "length", "k"}) {
        if (!options->Has(required)) {
            return UsageError(err, Usage);
        }
    }
    const std::string fittings = ToUpper(Trim(options->Text("fittings")));
    if (!IsFittingText(fittings)) {
        return UsageError(err, "--fittings \"" + options->Text("fittings") +
                                   "\" must be up to 10 counts and letters of F E L T B G C");
    }
    LibraryArguments libraryArguments;
    libraryArguments.Library = options->Text("library");
    const auto library = LoadCommandLibrary(libraryArguments, err);
    if (!library) {
        return ExitUsage;
    }
    BranchLineFields fields;
    fields.Units = options->Si ? MeasureSystem::SI : MeasureSystem::US;
    fields.Material = options->Number("material");
    fields.Diameter = options->Number("diameter");
    fields.Length = options->Number("length");
    fields.StandardFittings = fittings;
    fields.NonStandardFittings = options->Number("nonstandard");
    fields.SprinklerKFactor = options->Number("k");
    return PrintCalculatorResult(BranchLineResultText(*library, fields), out);
}

const CommandRegistration registration(
    "branchline",
    "--material M --diameter D --length L [--fittings TEXT] [--nonstandard N] --k K "
    "[--library FILE] [--si]",
    "Branch line calculator: the K-factor of a sprinkler seen through a stretch of pipe "
    "(nominal inches, feet, K; with --si mm, m, Km). Prints nothing and exits 1 when the size is "
    "not in the library or the diameter, total length or K is 0.",
    RunBranchLine);

} // namespace

} // namespace quench::cli
