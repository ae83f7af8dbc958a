// quench calc FILE: the Calculate command of the Calculation screen, from the settings stored in
// FILE, and on success the project saved back with its results as Save does.

#include "calc/calculation.h"
#include "calc/independent_check.h"
#include "cli/command.h"
#include "cli/library_arguments.h"
#include "cli/project_session.h"
#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/json_writer.h"
#include "core/project_json.h"
#include "core/text.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>

namespace quench::cli {

namespace {

constexpr const char* Usage = "FILE [--json OUT] [--yes | --no] [--progress] [--library FILE]";

struct CalcArguments {
    std::filesystem::path File;
    std::filesystem::path Json;
    std::optional<Answer> Reply; // the answer to every question; none takes the default
    bool Progress = false;
    LibraryArguments Library;
};

std::optional<CalcArguments> ParseArguments(const Arguments& arguments, std::ostream& err) {
    CalcArguments parsed;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "--json" || word == "--library") {
            if (i + 1 == arguments.size() || arguments[i + 1].empty()) {
                UsageError(err, word + " needs a file name");
                return std::nullopt;
            }
            (word == "--json" ? parsed.Json : parsed.Library.Library) = arguments[++i];
        } else if (word == "--yes" || word == "--no") {
            const Answer reply = word == "--yes" ? Answer::Yes : Answer::No;
            if (parsed.Reply && *parsed.Reply != reply) {
                UsageError(err, "--yes and --no exclude each other");
                return std::nullopt;
            }
            parsed.Reply = reply;
        } else if (word == "--progress") {
            parsed.Progress = true;
        } else if (word.rfind("--", 0) == 0 || !parsed.File.empty() || word.empty()) {
            UsageError(err, std::string("usage: quench calc ") + Usage);
            return std::nullopt;
        } else {
            parsed.File = word;
        }
    }
    if (parsed.File.empty()) {
        UsageError(err, std::string("usage: quench calc ") + Usage);
        return std::nullopt;
    }
    return parsed;
}

// A line on stderr redrawn as the run goes: the gauge, the iteration and its imbalance.
class CommandLineProgress final : public Progress {
public:
    CommandLineProgress(std::ostream& err, bool shown) : err_(err), shown_(shown) {}

    void SetGauge(int percent) override {
        gauge_ = percent;
        Draw();
    }
    void ShowIteration(const IterationRow& row) override {
        row_ = row;
        Draw();
    }
    void CloseStatus() override { EndLine(); }

    // A message starts on a line of its own.
    void EndLine() {
        if (open_) {
            err_ << '\n';
            open_ = false;
        }
    }

private:
    void Draw() {
        if (!shown_) {
            return;
        }
        err_ << "\rCalculating... " << gauge_ << "%  iteration " << row_.Iteration
             << "  maximum imbalance " << NumberText(row_.MaximumImbalance) << "   ";
        err_.flush();
        open_ = true;
    }

    std::ostream& err_;
    bool shown_;
    bool open_ = false;
    int gauge_ = 0;
    IterationRow row_;
};

// Every box as one line on stderr; a question is answered from the options or by its default.
class CommandLineDialogs final : public Dialogs {
public:
    CommandLineDialogs(std::ostream& err, std::optional<Answer> reply,
                       CommandLineProgress& progress)
        : err_(err), reply_(reply), progress_(progress) {}

    void ShowMessage(MessageStyle, std::string_view title, std::string_view text) override {
        Print(title, text);
        err_ << '\n';
    }

    Answer Ask(Buttons, Answer defaultAnswer, MessageStyle, std::string_view title,
               std::string_view text) override {
        const Answer answer = reply_.value_or(defaultAnswer);
        Print(title, text);
        err_ << (answer == Answer::Yes ? " -> Yes" : " -> No") << '\n';
        return answer;
    }

private:
    void Print(std::string_view title, std::string_view text) {
        progress_.EndLine();
        if (!title.empty()) {
            err_ << title << ": ";
        }
        err_ << text;
    }

    std::ostream& err_;
    std::optional<Answer> reply_;
    CommandLineProgress& progress_;
};

// The pipes that sizing left over a limit, by their row of "pipes" (1-based), with the reason.
void WriteSizingNotesJson(const Project& project, JsonWriter& json) {
    json.Key("sizingNotes");
    json.BeginArray();
    for (std::size_t row = 1; row < project.SizingNotes.size(); ++row) {
        const SizingNote note = project.SizingNotes[row];
        if (note == SizingNote::None) {
            continue;
        }
        const CalcPipeRecord& pipe = project.CalcPipeRecord[row];
        json.BeginObject();
        json.Key("pipe");
        json.Number(row);
        json.Key("BegNode");
        json.String(TypedNodeText(project, pipe.BegNode));
        json.Key("EndNode");
        json.String(TypedNodeText(project, pipe.EndNode));
        json.Key("reason");
        json.String(SizingNoteName(note));
        json.Key("note");
        json.String(SizingNoteText(note));
        json.EndObject();
    }
    json.EndArray();
}

// The verdict of the independent check; it is reported, never the run's exit status.
void WriteCheckJson(const CheckVerdict& verdict, JsonWriter& json) {
    json.Key("check");
    json.BeginObject();
    json.Key("max_pressure_difference_psi");
    json.Number(verdict.MaxPressureDifference);
    json.Key("max_flow_difference_gpm");
    json.Number(verdict.MaxFlowDifference);
    json.Key("max_flow_imbalance_gpm");
    json.Number(verdict.MaxFlowImbalance);
    json.Key("passed");
    json.Boolean(verdict.Passed);
    json.EndObject();
}

void WriteResultsJson(const Project& project, std::ostream& out) {
    JsonWriter json(out);
    const CalculationData& data = project.CalculationData;
    json.BeginObject();
    json.Key("summary");
    json.BeginObject();
    JsonRecordFields fields(json);
    fields.Number("NumberOfUniquePipeSections", data.NumberOfUniquePipeSections);
    fields.Number("NumberOfFlowingSprinklers", data.NumberOfFlowingSprinklers);
    fields.Number("MaximumFlowVelocity", data.MaximumFlowVelocity);
    fields.Number("MaximumVelocityPipe", data.MaximumVelocityPipe);
    fields.Number("SprinklerFlow", data.SprinklerFlow);
    fields.Number("NonSprinklerFlow", data.NonSprinklerFlow);
    fields.Number("ResultFlag", data.ResultFlag);
    fields.Number("HMDNodeNumber", data.HMDNodeNumber);
    fields.Number("HMDActualResidualPressure", data.HMDActualResidualPressure);
    fields.Number("HMDActualFlow", data.HMDActualFlow);
    fields.Number("InflowResidualPressure", data.InflowResidualPressure);
    fields.Number("InflowFlow", data.InflowFlow);
    fields.Number("MaxNodePressureImbalanceResult", project.MaxNodePressureImbalanceResult);
    fields.Number("AvgNodePressureImbalanceResult", project.AvgNodePressureImbalanceResult);
    fields.Number("MaxNodeFlowImbalanceResult", project.MaxNodeFlowImbalanceResult);
    fields.Number("AvgNodeFlowImbalanceResult", project.AvgNodeFlowImbalanceResult);
    json.EndObject();

    json.Key("nodes");
    json.BeginArray();
    for (int row = 1; row <= project.NumberOfNodes; ++row) {
        NodeRecord node = project.NodeRecord[row];
        node.Number = static_cast<Integer>(TypedNodeNumber(project, node.Number));
        WriteRecordJson(json, node);
    }
    json.EndArray();

    json.Key("pipes");
    json.BeginArray();
    for (int row = 1; row <= project.NumberOfPipes; ++row) {
        CalcPipeRecord pipe = project.CalcPipeRecord[row];
        pipe.BegNode = TypedNodeText(project, pipe.BegNode);
        pipe.EndNode = TypedNodeText(project, pipe.EndNode);
        WriteRecordJson(json, pipe);
    }
    json.EndArray();

    json.Key("results");
    json.BeginArray();
    for (int row = 1; row <= data.NumberOfUniquePipeSections; ++row) {
        WriteRecordJson(json, project.PipeResultRecord[row]);
    }
    json.EndArray();
    WriteSizingNotesJson(project, json);
    WriteCheckJson(CheckPostedResults(project), json);
    json.EndObject();
    out << '\n';
}

bool WriteJson(const std::filesystem::path& file, const Project& project, std::ostream& err) {
    std::ostringstream text;
    WriteResultsJson(project, text);
    std::string reason;
    if (!WriteFileAtomically(file, text.str(), &reason)) {
        UsageError(err, "cannot write " + Quoted(file) + ": " + reason);
        return false;
    }
    return true;
}

int RunCalc(const Arguments& words, std::ostream& /*out*/, std::ostream& err) {
    const std::optional<CalcArguments> arguments = ParseArguments(words, err);
    if (!arguments) {
        return ExitUsage;
    }
    const std::optional<PipeLibrary> library = LoadCommandLibrary(arguments->Library, err);
    if (!library) {
        return ExitUsage;
    }
    const auto project = std::make_unique<Project>();
    CommandLineProgress progress(err, arguments->Progress);
    CommandLineDialogs dialogs(err, arguments->Reply, progress);
    ProjectSession session(*project, dialogs, arguments->File);
    if (!session.Open(err, "calculate")) {
        return ExitUsage;
    }
    NoScreens screens;
    Calculation calculation(*project, *library, dialogs, progress, screens);
    const bool posted = calculation.Calculate(CalculationScreenFromProject(*project));
    progress.EndLine();
    if (!posted) {
        return ExitStopped; // the named file is left as it was
    }
    if (!session.Save()) {
        return ExitUsage;
    }
    if (!arguments->Json.empty() && !WriteJson(arguments->Json, *project, err)) {
        return ExitUsage;
    }
    return ExitSuccess;
}

const CommandRegistration registration(
    "calc", Usage,
    "Calculate the project in FILE as its Calculation screen would, and save the results into "
    "it; --json writes the results to OUT, --yes or --no answers the questions.",
    RunCalc);

} // namespace

} // namespace quench::cli
