// quench calc FILE: the Calculate command of the Calculation screen, from the settings stored in
// FILE, and on success the project saved back with its results as Save does.

#include "calc/calculation.h"
#include "cli/command.h"
#include "cli/library_arguments.h"
#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/json_writer.h"
#include "core/project_file.h"
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

std::string Quoted(const std::filesystem::path& file) {
    return "\"" + file.string() + "\"";
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

// The working file of a project: the name with ".tmp" in place of its last four characters. A
// project that is itself named so gets ".tmp" added, so that its working file is another file.
std::filesystem::path WorkingFileOf(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    std::string working =
        name.size() >= 4 ? name.substr(0, name.size() - 4) + ".tmp" : name + ".tmp";
    if (working == name) {
        working = name + ".tmp";
    }
    return file.parent_path() / working;
}

bool CountsFit(const Project& project) {
    return project.NumberOfPipeRows <= MaxPipes && project.NumberOfNodes <= MaxNodes &&
           project.NumberOfPipes <= MaxPipes;
}

// Copy of a node text with the supply's internal 10000 as its own number.
std::string TypedNode(const Project& project, const std::string& text) {
    return ToNumber(Trim(text)) == InflowNodeCode ? std::to_string(project.InflowNode) : text;
}

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
        json.String(TypedNode(project, pipe.BegNode));
        json.Key("EndNode");
        json.String(TypedNode(project, pipe.EndNode));
        json.Key("reason");
        json.String(SizingNoteName(note));
        json.Key("note");
        json.String(SizingNoteText(note));
        json.EndObject();
    }
    json.EndArray();
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
        NodeRecord node = project.NodeRecord[static_cast<std::size_t>(row)];
        if (node.Number == InflowNodeCode) {
            node.Number = project.InflowNode;
        }
        WriteRecordJson(json, node);
    }
    json.EndArray();

    json.Key("pipes");
    json.BeginArray();
    for (int row = 1; row <= project.NumberOfPipes; ++row) {
        CalcPipeRecord pipe = project.CalcPipeRecord[static_cast<std::size_t>(row)];
        pipe.BegNode = TypedNode(project, pipe.BegNode);
        pipe.EndNode = TypedNode(project, pipe.EndNode);
        WriteRecordJson(json, pipe);
    }
    json.EndArray();

    json.Key("results");
    json.BeginArray();
    for (int row = 1; row <= data.NumberOfUniquePipeSections; ++row) {
        WriteRecordJson(json, project.PipeResultRecord[static_cast<std::size_t>(row)]);
    }
    json.EndArray();
    WriteSizingNotesJson(project, json);
    json.EndObject();
    out << '\n';
}

// Removes the working file when the command ends, whatever way it ends.
class WorkingFile {
public:
    explicit WorkingFile(std::filesystem::path file) : file_(std::move(file)) {}
    ~WorkingFile() {
        if (made_) {
            std::error_code ignored;
            std::filesystem::remove(file_, ignored);
        }
    }
    WorkingFile(const WorkingFile&) = delete;
    WorkingFile& operator=(const WorkingFile&) = delete;

    const std::filesystem::path& Path() const { return file_; }
    void Made() { made_ = true; }

private:
    std::filesystem::path file_;
    bool made_ = false;
};

// Open: the named file copied to its working file and read from there.
bool OpenProject(const CalcArguments& arguments, WorkingFile& working, Project& project,
                 std::ostream& err) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(arguments.File, error)) {
        UsageError(err, "cannot read " + Quoted(arguments.File) + ": no such project file");
        return false;
    }
    if (ToLower(arguments.File.extension().string()) == ".qnd") {
        UsageError(err, "cannot calculate " + Quoted(arguments.File) +
                            ": a DOS project file; convert it first");
        return false;
    }
    if (std::filesystem::exists(working.Path(), error)) {
        UsageError(err, "the working file " + Quoted(working.Path()) +
                            " of an unfinished session exists; open the project in Quench to "
                            "recover it");
        return false;
    }
    std::string bytes;
    if (!ReadWholeFile(arguments.File, bytes)) {
        UsageError(err, "cannot read " + Quoted(arguments.File));
        return false;
    }
    std::string reason;
    if (!WriteFileAtomically(working.Path(), bytes, &reason)) {
        UsageError(err, "cannot write the working file " + Quoted(working.Path()) + ": " + reason);
        return false;
    }
    working.Made();
    ResetProject(project);
    if (!ReadProject(project, working.Path(), &reason)) {
        UsageError(err, "cannot read " + Quoted(arguments.File) + ": " + reason);
        return false;
    }
    if (!CountsFit(project)) {
        UsageError(err, "cannot open " + Quoted(arguments.File) +
                            ": it holds more pipes or nodes than a project may have");
        return false;
    }
    return true;
}

// Save: the model to the working file, then the named file replaced by a copy of it.
bool SaveProject(const CalcArguments& arguments, const WorkingFile& working, const Project& project,
                 std::ostream& err) {
    std::string reason;
    const WriteOutcome written = WriteProject(project, working.Path(), &reason);
    if (written != WriteOutcome::Written) {
        UsageError(err, "cannot save " + Quoted(arguments.File) + ": " +
                            (written == WriteOutcome::Skipped
                                 ? std::string("the network has more nodes than a project may hold")
                                 : reason));
        return false;
    }
    std::string bytes;
    if (!ReadWholeFile(working.Path(), bytes) ||
        !WriteFileAtomically(arguments.File, bytes, &reason)) {
        UsageError(err, "cannot save " + Quoted(arguments.File) + ": " + reason);
        return false;
    }
    return true;
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
    WorkingFile working(WorkingFileOf(arguments->File));
    const auto project = std::make_unique<Project>();
    if (!OpenProject(*arguments, working, *project, err)) {
        return ExitUsage;
    }
    CommandLineProgress progress(err, arguments->Progress);
    CommandLineDialogs dialogs(err, arguments->Reply, progress);
    NoScreens screens;
    Calculation calculation(*project, *library, dialogs, progress, screens);
    const bool posted = calculation.Calculate(CalculationScreenFromProject(*project));
    progress.EndLine();
    if (!posted) {
        return ExitStopped; // the named file is left as it was
    }
    if (!SaveProject(*arguments, working, *project, err)) {
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
