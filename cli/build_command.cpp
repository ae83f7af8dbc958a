// quench build tree|grid FILE KEY=VALUE...: the Tree Creation or Grid Creation of the Enter/Edit
// Pipe Data screen on a project file. The keys are the fields of the builder's stored inputs; a
// key left out keeps the stored value. The rows are saved into the file as Save does, with the
// inputs used.

#include "cli/command.h"
#include "cli/library_arguments.h"
#include "cli/project_session.h"
#include "core/formats.h"
#include "entry/builder_input_text.h"
#include "entry/grid_builder.h"
#include "entry/tree_builder.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace quench::cli {

namespace {

constexpr const char* Usage = "tree|grid FILE KEY=VALUE... [--yes | --no] [--library FILE]";

// The limits of a key's value, as the field on the screen holds it (US units).
struct Limits {
    double Minimum = 0;
    double Maximum = 0;
    int Decimals = 0;
    bool Letters = false; // an area group: up to 6 letters
};

constexpr Limits NodeNumber{0, 9999, 0};
constexpr Limits Count{0, 9999, 0};
constexpr Limits Distance{0, 9999.99, 2};
constexpr Limits Material{0, 50, 0};
constexpr Limits TypeGroup{0, 10, 0};
constexpr Limits Diameter{0, 32, 3};
constexpr Limits Elevation{-3276.5, 3276.5, 1};
constexpr Limits KFactor{0, 326.99, 2};
constexpr Limits Area{0, 3276.5, 1};
constexpr Limits AreaGroup{0, 0, 0, true};

struct Key {
    Limits Limit;
    std::function<std::string&(void*)> Text; // the input's text in the builder's inputs
};

template <class Inputs>
Key KeyOf(Limits limits, std::string Inputs::*member) {
    return {limits, [member](void* inputs) -> std::string& {
                return static_cast<Inputs*>(inputs)->*member;
            }};
}

template <class Inputs>
Key KeyAt(Limits limits, int index) {
    return {limits, [index](void* inputs) -> std::string& {
                return static_cast<Inputs*>(inputs)->Network[static_cast<std::size_t>(index)];
            }};
}

const std::map<std::string, Key>& TreeKeys() {
    using T = TreeInputs;
    static const std::map<std::string, Key> keys{
        {"CrossDiameter", KeyOf(Diameter, &T::CrossDiameter)},
        {"CrossMaterial", KeyOf(Material, &T::CrossMaterial)},
        {"CrossTypeGroup", KeyOf(TypeGroup, &T::CrossTypeGroup)},
        {"BranchDiameter", KeyOf(Diameter, &T::BranchDiameter)},
        {"BranchMaterial", KeyOf(Material, &T::BranchMaterial)},
        {"BranchTypeGroup", KeyOf(TypeGroup, &T::BranchTypeGroup)},
        {"Elevation", KeyOf(Elevation, &T::Elevation)},
        {"KFactor", KeyOf(KFactor, &T::KFactor)},
        {"AreaGroup", KeyOf(AreaGroup, &T::AreaGroup)},
        {"SourceNode", KeyAt<T>(NodeNumber, TreeSourceNode)},
        {"MaxSpaceBetweenBranches", KeyOf(Distance, &T::MaxSpaceBetweenBranches)},
        {"MaxSpaceBetweenSprinklers", KeyOf(Distance, &T::MaxSpaceBetweenSprinklers)},
        {"ExitNode", KeyAt<T>(NodeNumber, TreeExitNode)},
        {"NodalNumberingIncrement", KeyAt<T>(NodeNumber, TreeIncrement)},
        {"LengthOfCrossMain", KeyAt<T>(Distance, TreeCrossMainLength)},
        {"DistanceBetweenBranchLines", KeyAt<T>(Distance, TreeBranchSpacing)},
        {"LengthOfLeftBranchLine", KeyAt<T>(Distance, TreeLeftLength)},
        {"LengthOfRightBranchLine", KeyAt<T>(Distance, TreeRightLength)},
        {"LeftDistanceToFirstSprinkler", KeyAt<T>(Distance, TreeLeftFirst)},
        {"RightDistanceToFirstSprinkler", KeyAt<T>(Distance, TreeRightFirst)},
        {"LeftDistanceBetweenSprinklers", KeyAt<T>(Distance, TreeLeftSpacing)},
        {"RightDistanceBetweenSprinklers", KeyAt<T>(Distance, TreeRightSpacing)},
        {"SprinklerArea", KeyOf(Area, &T::SprinklerArea)},
    };
    return keys;
}

const std::map<std::string, Key>& GridKeys() {
    using G = GridInputs;
    static const std::map<std::string, Key> keys{
        {"PerimeterDiameter", KeyOf(Diameter, &G::PerimeterDiameter)},
        {"PerimeterMaterial", KeyOf(Material, &G::PerimeterMaterial)},
        {"PerimeterTypeGroup", KeyOf(TypeGroup, &G::PerimeterTypeGroup)},
        {"BranchDiameter", KeyOf(Diameter, &G::BranchDiameter)},
        {"BranchMaterial", KeyOf(Material, &G::BranchMaterial)},
        {"BranchTypeGroup", KeyOf(TypeGroup, &G::BranchTypeGroup)},
        {"Elevation", KeyOf(Elevation, &G::Elevation)},
        {"KFactor", KeyOf(KFactor, &G::KFactor)},
        {"AreaGroup", KeyOf(AreaGroup, &G::AreaGroup)},
        {"SourceNode", KeyAt<G>(NodeNumber, GridSourceNode)},
        {"NodalNumberingIncrement", KeyAt<G>(NodeNumber, GridIncrement)},
        {"SourceEntryPoint", KeyAt<G>(Distance, GridSourceEntryPoint)},
        {"DistanceToFirstBranch", KeyAt<G>(Distance, GridFirstBranch)},
        {"DistanceBetweenBranchLines", KeyAt<G>(Distance, GridBranchSpacing)},
        {"NumberOfBranchLines", KeyAt<G>(Count, GridBranchLines)},
        {"LeftDistanceToFirstSprinkler", KeyAt<G>(Distance, GridLeftFirst)},
        {"DistanceBetweenSprinklers", KeyAt<G>(Distance, GridHeadSpacing)},
        {"SprinklersPerBranchLine", KeyAt<G>(Count, GridHeadsPerLine)},
        {"RightDistanceToPerimeter", KeyAt<G>(Distance, GridRightToPerimeter)},
        {"SprinklerArea", KeyOf(Area, &G::SprinklerArea)},
    };
    return keys;
}

struct BuildArguments {
    bool Grid = false;
    std::filesystem::path File;
    std::vector<std::pair<std::string, std::string>> Values; // KEY=VALUE in order
    std::optional<Answer> Reply;
    LibraryArguments Library;
};

// Why a value cannot stand in its field, or "" when it can.
std::string RefusalOf(const std::string& value, const Limits& limits) {
    if (limits.Letters) {
        const bool letters = std::all_of(value.begin(), value.end(), [](char c) {
            return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        });
        return letters && value.size() <= 6 ? "" : "up to 6 letters";
    }
    const std::string range = NumberText(limits.Minimum) + " to " + NumberText(limits.Maximum);
    const std::size_t point = value.find('.');
    const bool tooPrecise =
        point != std::string::npos && value.size() - point - 1 > std::size_t(limits.Decimals);
    if (value.empty() || !IsNumeric(value) || value.find_first_of("eE") != std::string::npos ||
        tooPrecise) {
        return limits.Decimals == 0
                   ? "a whole number from " + range
                   : "a number from " + range + " with at most " + std::to_string(limits.Decimals) +
                         (limits.Decimals == 1 ? " decimal" : " decimals");
    }
    const double number = ToNumber(value);
    return number < limits.Minimum || number > limits.Maximum ? "a number from " + range : "";
}

std::optional<BuildArguments> ParseArguments(const Arguments& words, std::ostream& err) {
    const auto usage = [&]() {
        UsageError(err, std::string("usage: quench build ") + Usage);
        return std::nullopt;
    };
    const std::optional<LibraryArguments> split = SplitLibraryArguments(words, err);
    if (!split) {
        return std::nullopt;
    }
    if (split->Json) {
        return usage();
    }
    BuildArguments parsed;
    parsed.Library = *split;
    const Arguments& operands = split->Words;
    if (operands.size() < 2 || (operands[0] != "tree" && operands[0] != "grid")) {
        return usage();
    }
    parsed.Grid = operands[0] == "grid";
    const auto& keys = parsed.Grid ? GridKeys() : TreeKeys();
    for (std::size_t i = 1; i < operands.size(); ++i) {
        const std::string& word = operands[i];
        const std::size_t equals = word.find('=');
        if (word == "--yes" || word == "--no") {
            const Answer reply = word == "--yes" ? Answer::Yes : Answer::No;
            if (parsed.Reply && *parsed.Reply != reply) {
                UsageError(err, "--yes and --no exclude each other");
                return std::nullopt;
            }
            parsed.Reply = reply;
        } else if (equals != std::string::npos && !word.starts_with("-")) {
            const std::string key = word.substr(0, equals);
            const std::string value = word.substr(equals + 1);
            const auto found = keys.find(key);
            if (found == keys.end()) {
                UsageError(err, "unknown key \"" + key + "\" for a " + operands[0] +
                                    "; the keys are the fields of " +
                                    (parsed.Grid ? "GridBuilderData" : "TreeBuilderData"));
                return std::nullopt;
            }
            const std::string refusal = RefusalOf(value, found->second.Limit);
            if (!refusal.empty()) {
                UsageError(err, key + "=" + value + ": the value must be " + refusal);
                return std::nullopt;
            }
            parsed.Values.emplace_back(key, value);
        } else if (word.starts_with("-") || !parsed.File.empty() || word.empty()) {
            return usage();
        } else {
            parsed.File = word;
        }
    }
    if (parsed.File.empty()) {
        return usage();
    }
    return parsed;
}

// Every box as one line on stderr; a question is answered from the options or by its default.
class AnsweringLines final : public Dialogs {
public:
    AnsweringLines(std::ostream& err, std::optional<Answer> reply) : err_(err), reply_(reply) {}

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
        if (!title.empty()) {
            err_ << title << ": ";
        }
        err_ << text;
    }

    std::ostream& err_;
    std::optional<Answer> reply_;
};

bool IsHose(const Project& project) {
    return project.SystemData.PrimaryDischargeName == "Hose";
}

template <class Inputs>
void Apply(const BuildArguments& arguments, const std::map<std::string, Key>& keys,
           Inputs& inputs) {
    for (const auto& [key, value] : arguments.Values) {
        std::string text = value;
        if (keys.at(key).Limit.Letters) {
            std::transform(text.begin(), text.end(), text.begin(),
                           [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
        }
        keys.at(key).Text(&inputs) = text;
    }
}

BuildResult BuildTreeInto(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                          const BuildArguments& arguments, std::ostream& out) {
    TreeInputs inputs = TreeInputsFromData(project.TreeBuilderData, MeasureSystem::US);
    Apply(arguments, TreeKeys(), inputs);
    const BuildResult result = CreateTree(project, library, dialogs, inputs);
    if (!result.Built()) {
        return result;
    }
    const TreeSpacing spacing = CalculateTreeSpacing(inputs);
    if (spacing.Pieces > 0) {
        inputs.Network[TreeExitNode] = std::to_string(result.ExitNode);
    }
    StoreTreeInputs(inputs, project.TreeBuilderData);
    out << "Calculated Number Of Rows: " << spacing.Rows << '\n'
        << (IsHose(project) ? "Calculated Number Of Hose Outlets Per Row: "
                            : "Calculated Number Of Sprinklers Per Row: ")
        << spacing.SprinklersPerRow() << '\n'
        << "Tree Exit Node Number: " << project.TreeBuilderData.ExitNode << '\n';
    return result;
}

BuildResult BuildGridInto(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                          const BuildArguments& arguments, std::ostream& out) {
    GridInputs inputs = GridInputsFromData(project.GridBuilderData, MeasureSystem::US);
    Apply(arguments, GridKeys(), inputs);
    const BuildResult result = CreateGrid(project, library, dialogs, inputs);
    if (!result.Built()) {
        return result;
    }
    StoreGridInputs(inputs, project.GridBuilderData);
    out << "Number Of Branch Lines: " << project.GridBuilderData.NumberOfBranchLines << '\n'
        << (IsHose(project) ? "Number Of Hoses Per Branch Line: "
                            : "Number Of Sprinkler Heads Per Branch Line: ")
        << project.GridBuilderData.SprinklersPerBranchLine << '\n';
    return result;
}

int RunBuild(const Arguments& words, std::ostream& out, std::ostream& err) {
    const std::optional<BuildArguments> arguments = ParseArguments(words, err);
    if (!arguments) {
        return ExitUsage;
    }
    const std::optional<PipeLibrary> library = LoadCommandLibrary(arguments->Library, err);
    if (!library) {
        return ExitUsage;
    }
    const auto project = std::make_unique<Project>();
    AnsweringLines dialogs(err, arguments->Reply);
    ProjectSession session(*project, dialogs, arguments->File);
    if (!session.Open(err, "build in")) {
        return ExitUsage;
    }
    const BuildResult result = arguments->Grid
                                   ? BuildGridInto(*project, *library, dialogs, *arguments, out)
                                   : BuildTreeInto(*project, *library, dialogs, *arguments, out);
    if (!result.Built()) {
        return ExitStopped; // the named file is left as it was
    }
    if (!session.Save()) {
        return ExitUsage;
    }
    out << "Pipe rows written: " << result.FirstRow << " to "
        << result.FirstRow + result.RowsWritten - 1 << '\n';
    return ExitSuccess;
}

const CommandRegistration registration(
    "build", Usage,
    "Run the tree or grid builder on the project in FILE with the stored inputs, each KEY=VALUE "
    "(a field of TreeBuilderData or GridBuilderData, US units) replacing one, and save the rows; "
    "--yes or --no answers the questions.",
    RunBuild);

} // namespace

} // namespace quench::cli
