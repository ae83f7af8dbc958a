// quench fittings TEXT MATERIAL DIAMETER [--json] [--library FILE]
// Reads a fitting code as the pipe screen does: the seven counts, the text the row keeps, and the
// sum of the library's fitting lengths for the material and nominal diameter (inches).

#include "cli/command.h"
#include "cli/library_arguments.h"
#include "core/formats.h"
#include "core/json_writer.h"
#include "core/text.h"
#include "entry/fitting_entry.h"
#include "library/equivalent_length.h"
#include "library/fitting_text.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace quench::cli {

namespace {

constexpr const char* Usage =
    "usage: quench fittings TEXT MATERIAL DIAMETER [--json] [--library FILE]";

// The messages of the parse, kept to be printed with the result.
class CollectedMessages final : public Dialogs {
public:
    void ShowMessage(MessageStyle, std::string_view title, std::string_view text) override {
        Lines.push_back(std::string(title) + ": " + std::string(text));
    }
    Answer Ask(Buttons, Answer defaultAnswer, MessageStyle, std::string_view,
               std::string_view) override {
        return defaultAnswer;
    }
    std::vector<std::string> Lines;
};

struct FittingReport {
    FittingParse Parse;
    std::string Text;
    std::optional<double> Sum; // none: no fitting lengths for this material and diameter
    std::string NoSumReason;
    std::vector<std::string> Messages;
};

// The material operand: a library material number, or a device letter (no fitting lengths).
bool IsMaterialOperand(const std::string& text) {
    const std::string upper = ToUpper(Trim(text));
    return LibraryMaterialOfText(text) != 0 ||
           (upper.size() == 1 && std::string("MBAP").find(upper) != std::string::npos);
}

FittingReport Report(const PipeLibrary& library, const Arguments& words) {
    CollectedMessages messages;
    FittingReport report;
    report.Parse = ParseFittingText(words[0], messages);
    report.Messages = messages.Lines;
    report.Text = BuildFittingText(report.Parse.Counts);
    const int material = LibraryMaterialOfText(words[1]);
    const Single nominal = static_cast<Single>(ToNumber(words[2]));
    if (material == 0) {
        report.NoSumReason = "material " + ToUpper(Trim(words[1])) + " is a device";
        return report;
    }
    report.Sum = FittingSumOf(library, material, nominal, report.Text);
    if (nominal == 0) {
        report.NoSumReason = "a diameter of 0 is left to autosizing";
    } else if (!report.Sum) {
        report.NoSumReason =
            "material " + std::to_string(material) + " has no " + NumberText(nominal) + " in. size";
    }
    return report;
}

// The sum as the stored total rounds it.
double RoundedSum(double sum) {
    return ToNumber(Format(sum, "##0.0##"));
}

void PrintText(const FittingReport& report, std::ostream& out) {
    for (const auto& line : report.Messages) {
        out << line << '\n';
    }
    out << "Counts:";
    for (int kind = 0; kind < FittingKinds; ++kind) {
        out << (kind == 0 ? " " : ", ") << FittingLetters[kind] << ' ' << report.Parse.Counts[kind];
    }
    out << "\nFitting text: " << report.Text << '\n';
    if (report.Sum) {
        out << "Fitting sum: " << Format(RoundedSum(*report.Sum), "##0.0##") << " ft\n";
    } else {
        out << "Fitting sum: none (" << report.NoSumReason << ")\n";
    }
}

void PrintJson(const FittingReport& report, std::ostream& out) {
    JsonWriter json(out);
    json.BeginObject();
    json.Key("counts");
    json.BeginObject();
    for (int kind = 0; kind < FittingKinds; ++kind) {
        json.Key(std::string(1, FittingLetters[kind]));
        json.Number(report.Parse.Counts[kind]);
    }
    json.EndObject();
    json.Key("fitting_text");
    json.String(report.Text);
    json.Key("clean");
    json.Boolean(report.Parse.Clean);
    json.Key("fitting_sum_ft");
    if (report.Sum) {
        json.Number(RoundedSum(*report.Sum));
    } else {
        json.Null();
    }
    json.Key("messages");
    json.BeginArray();
    for (const auto& line : report.Messages) {
        json.String(line);
    }
    json.EndArray();
    json.EndObject();
}

int RunFittings(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    const auto split = SplitLibraryArguments(arguments, err);
    if (!split) {
        return ExitUsage;
    }
    if (split->Words.size() != 3) {
        return UsageError(err, Usage);
    }
    const Arguments& words = split->Words;
    if (!IsMaterialOperand(words[1])) {
        return UsageError(err, "material \"" + words[1] + "\" must be 1 to 50 or M, B, A or P");
    }
    if (!IsNumeric(words[2]) || ToNumber(words[2]) < 0 || ToNumber(words[2]) > 1000) {
        return UsageError(err, "diameter \"" + words[2] + "\" must be 0 to 1000 inches");
    }
    const auto library = LoadCommandLibrary(*split, err);
    if (!library) {
        return ExitUsage;
    }
    const FittingReport report = Report(*library, words);
    if (split->Json) {
        PrintJson(report, out);
    } else {
        PrintText(report, out);
    }
    return report.Parse.Clean ? ExitSuccess : ExitStopped;
}

const CommandRegistration registration(
    "fittings", "TEXT MATERIAL DIAMETER [--json] [--library FILE]",
    "Read a fitting code such as 2F3E: its counts, the text a pipe row keeps, and the sum of the "
    "library's fitting lengths for the material and nominal diameter (inches).",
    RunFittings);

} // namespace

} // namespace quench::cli
