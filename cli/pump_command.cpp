// quench pump: the fire pump database and the curve fit from the command line.
//   quench pump list [--database FILE]
//   quench pump show N [--database FILE]
//   quench pump fit Q1 P1 Q2 P2 Q3 P3 [Q4 P4 [Q5 P5]]
//   quench pump use PROJECT N [--database FILE]

#include "app/directories.h"
#include "cli/command.h"
#include "cli/library_arguments.h"
#include "core/formats.h"
#include "core/project_file.h"
#include "core/text.h"
#include "entry/device_loss_text.h"
#include "library/pump_curve.h"
#include "library/pump_curve_text.h"
#include "library/pump_database.h"

#include <cmath>
#include <optional>
#include <ostream>
#include <string>

namespace quench::cli {

namespace {

struct PumpArguments {
    Arguments Words;                // the subcommand and its operands
    std::filesystem::path Database; // --database, or empty for the program's own database
};

std::optional<PumpArguments> SplitArguments(const Arguments& arguments, std::ostream& err) {
    PumpArguments split;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--database") {
            if (i + 1 == arguments.size()) {
                UsageError(err, "--database needs a file name");
                return std::nullopt;
            }
            split.Database = arguments[++i];
        } else {
            split.Words.push_back(arguments[i]);
        }
    }
    return split;
}

// The database named on the command line, or the one the program itself uses.
std::filesystem::path DatabaseFile(const PumpArguments& arguments) {
    if (!arguments.Database.empty()) {
        return arguments.Database;
    }
    return PrepareLibraryDirectory(ProcessEnvironment()).Directory /
           std::string(PumpDatabaseFileName);
}

std::string Quoted(const std::filesystem::path& file) {
    return "\"" + file.string() + "\"";
}

std::string UnitOf(const PumpRecord& pump) {
    return pump.FeetOfHead != 0 ? "ft" : "psi";
}

// A pump number of the database: 1 to the count.
std::optional<int> PumpNumber(const std::string& text, std::size_t count, std::ostream& err) {
    const double value = ToNumber(text);
    if (!IsNumeric(text) || value < 1 || value > static_cast<double>(count) ||
        value != std::floor(value)) {
        UsageError(err, "no pump \"" + text + "\": the database has " + std::to_string(count) +
                            (count == 1 ? " pump" : " pumps"));
        return std::nullopt;
    }
    return static_cast<int>(value);
}

void PrintCurve(std::ostream& out, const CurveFit& fit) {
    for (std::size_t power = 0; power < MaximumCurvePoints; ++power) {
        out << 'a' << power << " = " << NumberText(fit.Coefficients[power]) << '\n';
    }
    out << PumpCurveText(fit.Coefficients, fit.PointCount) << '\n';
}

std::string Padded(std::string text, std::size_t width) {
    if (text.size() < width) {
        text.insert(0, width - text.size(), ' ');
    }
    return text;
}

int ListPumps(const PumpArguments& arguments, std::ostream& out, std::ostream& err) {
    if (arguments.Words.size() != 1) {
        return UsageError(err, "usage: quench pump list [--database FILE]");
    }
    const auto database = DatabaseFile(arguments);
    const auto pumps = LoadPumpDatabase(database);
    if (pumps.empty()) {
        out << "No pumps in " << Quoted(database) << ".\n";
        return ExitSuccess;
    }
    out << "  No.  Name                              Unit  Points\n";
    for (std::size_t number = 0; number < pumps.size(); ++number) {
        const PumpRecord& pump = pumps[number];
        out << Padded(std::to_string(number + 1), 5) << "  "
            << PrintableName(FixedWidth(pump.Name, PumpNameLength)) << "  "
            << FixedWidth(UnitOf(pump), 4) << "  " << PumpRecordPoints(pump).size() << '\n';
    }
    return ExitSuccess;
}

int ShowPump(const PumpArguments& arguments, std::ostream& out, std::ostream& err) {
    if (arguments.Words.size() != 2) {
        return UsageError(err, "usage: quench pump show N [--database FILE]");
    }
    const auto pumps = LoadPumpDatabase(DatabaseFile(arguments));
    const auto number = PumpNumber(arguments.Words[1], pumps.size(), err);
    if (!number) {
        return ExitUsage;
    }
    const PumpRecord& pump = pumps[static_cast<std::size_t>(*number - 1)];
    const std::string unit = UnitOf(pump);
    out << "Pump " << *number << ": " << PrintableName(pump.Name) << '\n'
        << "Point  Flow (gpm)  Pressure (" << unit << ")\n";
    const CurveSlotArray slots = PumpRecordSlots(pump);
    for (std::size_t slot = 0; slot < MaximumCurvePoints; ++slot) {
        out << Padded(std::to_string(slot + 1), 5);
        if (slots[slot].Used) {
            out << Padded(NumberText(slots[slot].Point.Flow), 12)
                << Padded(NumberText(slots[slot].Point.Pressure), 13 + unit.size()) << '\n';
        } else {
            out << "  (no point)\n";
        }
    }
    const CurveFit fit = FitPumpCurve(PumpRecordPoints(pump));
    if (fit.Status == CurveFitStatus::Fitted) {
        PrintCurve(out, fit);
    } else {
        out << "No curve: " << CurveFitMessage(fit.Status) << '\n';
    }
    return ExitSuccess;
}

int FitPoints(const PumpArguments& arguments, std::ostream& out, std::ostream& err) {
    const std::size_t numbers = arguments.Words.size() - 1;
    if (numbers < 2 * MinimumCurvePoints || numbers > 2 * MaximumCurvePoints || numbers % 2 != 0) {
        return UsageError(err, "usage: quench pump fit Q1 P1 Q2 P2 Q3 P3 [Q4 P4 [Q5 P5]]");
    }
    std::vector<CurvePoint> points;
    for (std::size_t i = 1; i < arguments.Words.size(); i += 2) {
        for (const std::string& text : {arguments.Words[i], arguments.Words[i + 1]}) {
            if (!IsNumeric(text)) {
                return UsageError(err, "\"" + text + "\" is not a number");
            }
        }
        points.push_back({ToNumber(arguments.Words[i]), ToNumber(arguments.Words[i + 1])});
    }
    const CurveFit fit = FitPumpCurve(points);
    if (fit.Status != CurveFitStatus::Fitted) {
        return UsageError(err, CurveFitMessage(fit.Status));
    }
    PrintCurve(out, fit);
    return ExitSuccess;
}

int UsePump(const PumpArguments& arguments, std::ostream& out, std::ostream& err) {
    if (arguments.Words.size() != 3) {
        return UsageError(err, "usage: quench pump use PROJECT N [--database FILE]");
    }
    const std::filesystem::path file = arguments.Words[1];
    if (!EqualsIgnoreCase(file.extension().string(), ".qnw")) {
        return UsageError(err, Quoted(file) + " is not a project file (.qnw)");
    }
    const auto pumps = LoadPumpDatabase(DatabaseFile(arguments));
    const auto number = PumpNumber(arguments.Words[2], pumps.size(), err);
    if (!number) {
        return ExitUsage;
    }
    const PumpRecord& pump = pumps[static_cast<std::size_t>(*number - 1)];
    const CurveFit fit = FitPumpCurve(PumpRecordPoints(pump));
    if (fit.Status != CurveFitStatus::Fitted) {
        return UsageError(err, "pump " + std::to_string(*number) + ": " +
                                   std::string(CurveFitMessage(fit.Status)));
    }
    Project project;
    std::string error;
    if (!ReadProject(project, file, &error)) {
        return UsageError(err, "cannot read " + Quoted(file) + (error.empty() ? "" : ": " + error));
    }
    StoreProjectPump(project.CalculationData, PumpRecordSlots(pump), fit.Coefficients,
                     pump.FeetOfHead != 0, static_cast<Integer>(*number));
    LeavePumpRowsToCurve(project);
    project.InputChanged = True;
    const WriteOutcome outcome = WriteProject(project, file, &error);
    if (outcome != WriteOutcome::Written) {
        return UsageError(err, "cannot write " + Quoted(file) +
                                   (outcome == WriteOutcome::Skipped
                                        ? ": its tables hold more rows than a project can"
                                        : ": " + error));
    }
    out << "Pump " << *number << " (" << PrintableName(pump.Name) << ") is the pump curve of "
        << Quoted(file) << ".\n"
        << PumpCurveText(fit.Coefficients, fit.PointCount) << '\n';
    return ExitSuccess;
}

int RunPump(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    const auto split = SplitArguments(arguments, err);
    if (!split) {
        return ExitUsage;
    }
    const std::string action = split->Words.empty() ? "" : split->Words.front();
    if (action == "list") {
        return ListPumps(*split, out, err);
    }
    if (action == "show") {
        return ShowPump(*split, out, err);
    }
    if (action == "fit") {
        return FitPoints(*split, out, err);
    }
    if (action == "use") {
        return UsePump(*split, out, err);
    }
    return UsageError(err, "usage: quench pump list|show N|fit Q1 P1 ...|use PROJECT N");
}

const CommandRegistration registration(
    "pump", "list|show N|fit Q1 P1 Q2 P2 Q3 P3 [Q4 P4 [Q5 P5]]|use PROJECT N [--database FILE]",
    "List the fire pump database, show a pump with its curve, fit a curve through 3 to 5 points, "
    "or make a database pump the pump curve of a project.",
    RunPump);

} // namespace

} // namespace quench::cli
