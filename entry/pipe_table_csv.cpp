#include "entry/pipe_table_csv.h"

#include "core/formats.h"
#include "core/text.h"
#include "entry/fitting_entry.h"
#include "entry/k_factor_text.h"
#include "entry/node_data_sync.h"
#include "entry/pipe_row_text.h"
#include "entry/pipe_table.h"
#include "library/equivalent_length.h"
#include "library/fitting_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>

namespace quench {

namespace {

enum class Field {
    BegNode,
    EndNode,
    KFactorB,
    KFactorE,
    ElevationB,
    ElevationE,
    PressEstimateB,
    PressEstimateE,
    SprinklerAreaB,
    SprinklerAreaE,
    AreaGroupB,
    AreaGroupE,
    NonSprinklerFlowB,
    NonSprinklerFlowE,
    Active,
    Material,
    DeviceLoss,
    Diameter,
    DiameterFixed,
    Length,
    OldFittingLength,
    FittingText,
    TotalEquivLength,
    TypeGroup,
    BegIsInflow,
    EndIsInflow,
    NonStandardFitLength,
    CadHandle,
    Count,
};

constexpr std::size_t FieldCount = static_cast<std::size_t>(Field::Count);

const std::array<std::string_view, FieldCount> Names{"BegNode",
                                                     "EndNode",
                                                     "KFactorB",
                                                     "KFactorE",
                                                     "ElevationB",
                                                     "ElevationE",
                                                     "PressEstimateB",
                                                     "PressEstimateE",
                                                     "SprinklerAreaB",
                                                     "SprinklerAreaE",
                                                     "AreaGroupB",
                                                     "AreaGroupE",
                                                     "NonSprinklerFlowB",
                                                     "NonSprinklerFlowE",
                                                     "Active",
                                                     "Material",
                                                     "DeviceLoss",
                                                     "Diameter",
                                                     "DiameterFixed",
                                                     "Length",
                                                     "OldFittingLength",
                                                     "FittingText",
                                                     "TotalEquivLength",
                                                     "TypeGroup",
                                                     "BegIsInflow",
                                                     "EndIsInflow",
                                                     "NonStandardFitLength",
                                                     "CadHandle"};

std::string Shortest(Single value) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return std::string(buffer.data(), result.ptr);
}

std::string Quoted(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        return std::string(text);
    }
    std::string quoted = "\"";
    for (char character : text) {
        quoted += character;
        if (character == '"') {
            quoted += '"';
        }
    }
    return quoted + "\"";
}

std::array<std::string, FieldCount> Cells(const PipeRecord& row) {
    return {Quoted(row.BegNode),
            Quoted(row.EndNode),
            Quoted(row.KFactorB),
            Quoted(row.KFactorE),
            Shortest(row.ElevationB),
            Shortest(row.ElevationE),
            Shortest(row.PressEstimateB),
            Shortest(row.PressEstimateE),
            Shortest(row.SprinklerAreaB),
            Shortest(row.SprinklerAreaE),
            Quoted(row.AreaGroupB),
            Quoted(row.AreaGroupE),
            Shortest(row.NonSprinklerFlowB),
            Shortest(row.NonSprinklerFlowE),
            std::to_string(row.Active),
            std::to_string(row.Material),
            Shortest(row.DeviceLoss),
            Shortest(row.Diameter),
            std::to_string(row.DiameterFixed),
            Shortest(row.Length),
            std::to_string(row.OldFittingLength),
            Quoted(row.FittingText),
            Shortest(row.TotalEquivLength),
            std::to_string(row.TypeGroup),
            std::to_string(row.BegIsInflow),
            std::to_string(row.EndIsInflow),
            Shortest(row.NonStandardFitLength),
            Quoted(row.CadHandle)};
}

// Records of a comma-separated text with quoted fields; each with the line it starts on.
struct CsvRecord {
    int Line = 0;
    std::vector<std::string> Cells;
};

std::optional<std::vector<CsvRecord>> ParseCsv(std::string_view text, std::string& problem) {
    std::vector<CsvRecord> records;
    CsvRecord record{1, {}};
    std::string cell;
    bool quoted = false;
    bool started = false;
    int line = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (quoted) {
            if (character == '"' && i + 1 < text.size() && text[i + 1] == '"') {
                cell += '"';
                ++i;
            } else if (character == '"') {
                quoted = false;
            } else {
                line += character == '\n' ? 1 : 0;
                cell += character;
            }
            continue;
        }
        if (character == '"' && cell.empty()) {
            quoted = started = true;
        } else if (character == ',') {
            record.Cells.push_back(std::move(cell));
            cell.clear();
            started = true;
        } else if (character == '\n' || character == '\r') {
            if (character == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                ++i;
            }
            if (started || !cell.empty()) {
                record.Cells.push_back(std::move(cell));
                records.push_back(std::move(record));
            }
            cell.clear();
            started = false;
            record = CsvRecord{++line, {}};
        } else {
            cell += character;
            started = true;
        }
    }
    if (quoted) {
        problem = "line " + std::to_string(record.Line) + ": a quoted cell is not closed";
        return std::nullopt;
    }
    if (started || !cell.empty()) {
        record.Cells.push_back(std::move(cell));
        records.push_back(std::move(record));
    }
    return records;
}

std::optional<double> Number(std::string_view cell) {
    const std::string text = Trim(cell);
    if (!IsNumeric(text)) {
        return std::nullopt;
    }
    return ToNumber(text);
}

std::optional<double> InRange(std::string_view cell, double minimum, double maximum) {
    const std::optional<double> value = Number(cell);
    if (!value || !(*value >= minimum && *value <= maximum)) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> Whole(std::string_view cell, double minimum, double maximum) {
    const std::optional<double> value = InRange(cell, minimum, maximum);
    if (!value || std::floor(*value) != *value) {
        return std::nullopt;
    }
    return value;
}

bool IsLetters(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

bool IsDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// A dialog that keeps the first message: the fitting parse reports through it.
class FirstMessage final : public Dialogs {
public:
    void ShowMessage(MessageStyle, std::string_view, std::string_view text) override {
        if (Text.empty()) {
            Text = text;
        }
    }
    Answer Ask(Buttons, Answer answer, MessageStyle, std::string_view, std::string_view) override {
        return answer;
    }
    std::string Text;
};

// One cell into the row: the rule broken, or nothing.
std::optional<std::string> Apply(Field field, const std::string& raw, PipeRecord& row,
                                 bool& fixedGiven, bool& oldLengthGiven) {
    const std::string cell = Trim(raw);
    const auto single = [&cell](double minimum, double maximum, Single& target) {
        const std::optional<double> value = InRange(cell, minimum, maximum);
        if (value) {
            target = static_cast<Single>(*value);
        }
        return value.has_value();
    };
    const auto flag = [&cell](Integer on, Integer& target) {
        if (cell != "0" && cell != std::to_string(on)) {
            return false;
        }
        target = cell == "0" ? Integer{0} : on;
        return true;
    };
    switch (field) {
    case Field::BegNode:
    case Field::EndNode:
        if (!cell.empty() && (!IsDigits(cell) || !Whole(cell, 0, 9999))) {
            return "a node number is a whole number from 0 to 9999";
        }
        (field == Field::BegNode ? row.BegNode : row.EndNode) = cell;
        return std::nullopt;
    case Field::KFactorB:
    case Field::KFactorE: {
        std::string stored = cell;
        if (auto word = KFactorWord(cell)) {
            stored = *word;
        } else if (!cell.empty() && !InRange(cell, 0, 326.99)) {
            return "a K-factor is a number from 0 to 326.99, Dflt, Inact or None";
        }
        (field == Field::KFactorB ? row.KFactorB : row.KFactorE) = stored;
        return std::nullopt;
    }
    case Field::ElevationB:
        return single(-3276.5, 3276.5, row.ElevationB)
                   ? std::nullopt
                   : std::optional<std::string>("an elevation is a number from -3276.5 to 3276.5");
    case Field::ElevationE:
        return single(-3276.5, 3276.5, row.ElevationE)
                   ? std::nullopt
                   : std::optional<std::string>("an elevation is a number from -3276.5 to 3276.5");
    case Field::PressEstimateB:
    case Field::PressEstimateE:
        return single(0, 3276.5,
                      field == Field::PressEstimateB ? row.PressEstimateB : row.PressEstimateE)
                   ? std::nullopt
                   : std::optional<std::string>("a pressure estimate is a number from 0 to 3276.5");
    case Field::SprinklerAreaB:
    case Field::SprinklerAreaE:
        return single(0, 3276.5,
                      field == Field::SprinklerAreaB ? row.SprinklerAreaB : row.SprinklerAreaE)
                   ? std::nullopt
                   : std::optional<std::string>("an area is a number from 0 to 3276.5");
    case Field::AreaGroupB:
    case Field::AreaGroupE: {
        const std::string group = ToUpper(cell);
        if (group.size() > 6 || !IsLetters(group)) {
            return "an area group is up to 6 letters A to Z";
        }
        (field == Field::AreaGroupB ? row.AreaGroupB : row.AreaGroupE) = group;
        return std::nullopt;
    }
    case Field::NonSprinklerFlowB:
    case Field::NonSprinklerFlowE:
        return single(0, 3250,
                      field == Field::NonSprinklerFlowB ? row.NonSprinklerFlowB
                                                        : row.NonSprinklerFlowE)
                   ? std::nullopt
                   : std::optional<std::string>("a flow is a number from 0 to 3250");
    case Field::Active:
        return flag(True, row.Active) ? std::nullopt
                                      : std::optional<std::string>("Active is -1 or 0");
    case Field::Material: {
        const Integer letter = cell.size() == 1 && !IsDigits(cell) ? MaterialOfText(cell) : 0;
        if (letter != 0) {
            row.Material = letter;
        } else if (auto value = Whole(cell, 1, MaterialFirePump)) {
            row.Material = static_cast<Integer>(*value);
        } else {
            return "a material is a number from 1 to 54 or one of M, B, A, P";
        }
        return std::nullopt;
    }
    case Field::DeviceLoss:
        if (cell == Shortest(NotGiven)) {
            row.DeviceLoss = NotGiven;
            return std::nullopt;
        }
        return single(0, 99999.99, row.DeviceLoss)
                   ? std::nullopt
                   : std::optional<std::string>("a loss is -4 or a number from 0 to 99999.99");
    case Field::Diameter:
        if (cell == Shortest(NotGiven)) {
            row.Diameter = NotGiven;
            return std::nullopt;
        }
        return single(0, 32, row.Diameter)
                   ? std::nullopt
                   : std::optional<std::string>("a diameter is -4 or a number from 0 to 32");
    case Field::DiameterFixed:
        fixedGiven = true;
        return flag(True, row.DiameterFixed)
                   ? std::nullopt
                   : std::optional<std::string>("DiameterFixed is -1 or 0");
    case Field::Length:
        return single(0, 9999.99, row.Length)
                   ? std::nullopt
                   : std::optional<std::string>("a length is a number from 0 to 9999.99");
    case Field::OldFittingLength:
        if (auto value = Whole(cell, -32768, 32767)) {
            row.OldFittingLength = static_cast<Integer>(*value);
            oldLengthGiven = true;
            return std::nullopt;
        }
        return "OldFittingLength is a whole number";
    case Field::FittingText: {
        const std::string text = ToUpper(cell);
        if (text.size() > FittingTextLength ||
            text.find_first_not_of("0123456789FELTBGC") != std::string::npos) {
            return "a fitting text is up to 10 digits and letters F, E, L, T, B, G, C";
        }
        FirstMessage messages;
        const FittingParse parse = ParseFittingText(text, messages);
        if (!parse.Clean || !messages.Text.empty()) {
            return messages.Text;
        }
        row.FittingCounts = parse.Counts;
        row.FittingText = BuildFittingText(parse.Counts);
        return std::nullopt;
    }
    case Field::TotalEquivLength:
        return Number(cell) || cell.empty()
                   ? std::nullopt
                   : std::optional<std::string>("an equivalent length is a number");
    case Field::TypeGroup:
        if (auto value = Whole(cell, 0, 10)) {
            row.TypeGroup = static_cast<Integer>(*value);
            return std::nullopt;
        }
        return "a type group is a whole number from 0 to 10";
    case Field::BegIsInflow:
        return flag(1, row.BegIsInflow) ? std::nullopt
                                        : std::optional<std::string>("BegIsInflow is 1 or 0");
    case Field::EndIsInflow:
        return flag(1, row.EndIsInflow) ? std::nullopt
                                        : std::optional<std::string>("EndIsInflow is 1 or 0");
    case Field::NonStandardFitLength:
        return single(0, 999.9, row.NonStandardFitLength)
                   ? std::nullopt
                   : std::optional<std::string>(
                         "a non-standard fitting length is a number from 0 to 999.9");
    case Field::CadHandle:
        if (cell.size() > 6) {
            return "a CAD handle is up to 6 characters";
        }
        row.CadHandle = cell;
        return std::nullopt;
    case Field::Count:
        break;
    }
    return std::nullopt;
}

std::string Refused(int line, std::string_view column, std::string_view rule) {
    return "line " + std::to_string(line) + ", column " + std::string(column) + ": " +
           std::string(rule);
}

struct ImportedRow {
    PipeRecord Row;
    int Line = 0;
};

// The header's columns by position; nothing (and the refusal) for an unknown or repeated name.
std::optional<std::vector<Field>> HeaderFields(const CsvRecord& header, std::string& refusal) {
    std::vector<Field> fields;
    for (const std::string& cell : header.Cells) {
        const std::string name = Trim(cell);
        const auto found = std::find(Names.begin(), Names.end(), name);
        if (found == Names.end()) {
            refusal = Refused(1, name, "no such column of the pipe table");
            return std::nullopt;
        }
        const auto field = static_cast<Field>(found - Names.begin());
        if (std::find(fields.begin(), fields.end(), field) != fields.end()) {
            refusal = Refused(1, name, "the column is given twice");
            return std::nullopt;
        }
        fields.push_back(field);
    }
    return fields;
}

std::optional<ImportedRow> ReadRow(const Project& project, const CsvRecord& record,
                                   const std::vector<Field>& fields, std::string& refusal) {
    if (record.Cells.size() != fields.size()) {
        refusal = "line " + std::to_string(record.Line) + ": " +
                  std::to_string(record.Cells.size()) + " cells where the header has " +
                  std::to_string(fields.size());
        return std::nullopt;
    }
    ImportedRow imported{EmptyPipeRow(project), record.Line};
    bool fixedGiven = false;
    bool oldLengthGiven = false;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (auto rule =
                Apply(fields[i], record.Cells[i], imported.Row, fixedGiven, oldLengthGiven)) {
            refusal = Refused(record.Line, Names[static_cast<std::size_t>(fields[i])], *rule);
            return std::nullopt;
        }
    }
    PipeRecord& row = imported.Row;
    if (!fixedGiven) {
        row.DiameterFixed = ToFlag(row.Diameter != 0 && row.Diameter != NotGiven);
    }
    if (!oldLengthGiven) {
        row.OldFittingLength = OldFittingLength(row.NonStandardFitLength);
    }
    return imported;
}

// A typed row fetches the data of a node it names from the first row before it that names the
// node; a row that gives other data is warned of once per node.
std::vector<std::string> KeepFirstNodeData(std::vector<ImportedRow>& rows) {
    std::map<double, std::pair<int, NodeData>> first;
    std::vector<std::string> warnings;
    std::vector<double> warned;
    for (ImportedRow& imported : rows) {
        if (!HasBothNodes(imported.Row)) {
            continue;
        }
        for (NodeEnd end : {NodeEnd::Beginning, NodeEnd::Ending}) {
            const double node = NodeNumberAt(imported.Row, end);
            const auto found = first.find(node);
            if (found == first.end()) {
                first.emplace(node, std::make_pair(imported.Line, NodeDataAt(imported.Row, end)));
                continue;
            }
            if (!(NodeDataAt(imported.Row, end) == found->second.second) &&
                std::find(warned.begin(), warned.end(), node) == warned.end()) {
                warned.push_back(node);
                warnings.push_back("node " + Trim(NodeText(imported.Row, end)) +
                                   " is given other data on line " + std::to_string(imported.Line) +
                                   " than on line " + std::to_string(found->second.first) +
                                   "; the data of line " + std::to_string(found->second.first) +
                                   " are kept");
            }
            SetNodeData(imported.Row, end, found->second.second);
        }
    }
    return warnings;
}

// The inflow flags: one node at most, and one that marking would take.
std::optional<std::string> CheckInflow(const std::vector<ImportedRow>& rows, const Project& project,
                                       double& inflow) {
    inflow = 0;
    for (const ImportedRow& imported : rows) {
        for (NodeEnd end : {NodeEnd::Beginning, NodeEnd::Ending}) {
            const Integer flag =
                end == NodeEnd::Beginning ? imported.Row.BegIsInflow : imported.Row.EndIsInflow;
            if (flag == 0) {
                continue;
            }
            const std::string_view column =
                end == NodeEnd::Beginning ? "BegIsInflow" : "EndIsInflow";
            const double node = NodeNumberAt(imported.Row, end);
            if (Trim(NodeText(imported.Row, end)).empty()) {
                return Refused(imported.Line, column, "the inflow flag of an empty node");
            }
            if (inflow != 0 && node != inflow) {
                return Refused(imported.Line, column, "a second inflow node");
            }
            inflow = node;
            int connected = 0;
            for (const ImportedRow& other : rows) {
                connected += IsTrue(other.Row.Active) && HasBothNodes(other.Row) &&
                                     PlaceOfNode(other.Row, node) != NodePlace::None
                                 ? 1
                                 : 0;
            }
            const NodeData data = NodeDataAt(imported.Row, end);
            if (connected >= 2) {
                return Refused(imported.Line, column, pipe_table_words::InflowTwoPipes);
            }
            if (ToNumber(data.KFactor) != 0 ||
                (Trim(data.KFactor) == DefaultKWord && project.SystemData.DefaultKFactor != 0)) {
                return Refused(imported.Line, column,
                               InDischargeWords(pipe_table_words::InflowSprinkler, project));
            }
            if (data.NonSprinklerFlow != 0) {
                return Refused(imported.Line, column,
                               InDischargeWords(pipe_table_words::InflowFlow, project));
            }
        }
    }
    return std::nullopt;
}

} // namespace

const std::vector<std::string_view>& PipeCsvColumns() {
    static const std::vector<std::string_view> columns(Names.begin(), Names.end());
    return columns;
}

std::string PipeRowsCsv(const Project& project) {
    std::string text;
    for (std::size_t i = 0; i < FieldCount; ++i) {
        text += (i == 0 ? "" : ",") + std::string(Names[i]);
    }
    text += '\n';
    const int rows = std::clamp<int>(project.NumberOfPipeRows, 0, MaxPipes);
    for (int row = 1; row <= rows; ++row) {
        const auto cells = Cells(project.PipeRecord[static_cast<std::size_t>(row)]);
        for (std::size_t i = 0; i < FieldCount; ++i) {
            text += (i == 0 ? "" : ",") + cells[i];
        }
        text += '\n';
    }
    return text;
}

PipeCsvImport ImportPipeRowsCsv(Project& project, const PipeLibrary& library,
                                std::string_view text) {
    PipeCsvImport result;
    const std::optional<std::vector<CsvRecord>> records = ParseCsv(text, result.Refusal);
    if (!records) {
        return result;
    }
    if (records->empty()) {
        result.Refusal = "line 1: the header is missing";
        return result;
    }
    const std::optional<std::vector<Field>> fields = HeaderFields(records->front(), result.Refusal);
    if (!fields) {
        return result;
    }
    if (records->size() - 1 > static_cast<std::size_t>(MaxPipes)) {
        result.Refusal = "line " + std::to_string((*records)[MaxPipes + 1].Line) +
                         ": a project holds at most " + std::to_string(MaxPipes) + " pipe rows";
        return result;
    }
    std::vector<ImportedRow> rows;
    for (std::size_t i = 1; i < records->size(); ++i) {
        std::optional<ImportedRow> row = ReadRow(project, (*records)[i], *fields, result.Refusal);
        if (!row) {
            return result;
        }
        rows.push_back(std::move(*row));
    }
    std::vector<std::string> warnings = KeepFirstNodeData(rows);
    double inflow = 0;
    if (auto refusal = CheckInflow(rows, project, inflow)) {
        result.Refusal = *refusal;
        return result;
    }
    for (int row = 1; row <= MaxPipes; ++row) {
        PipeRecord& target = project.PipeRecord[static_cast<std::size_t>(row)];
        if (static_cast<std::size_t>(row) <= rows.size()) {
            target = rows[static_cast<std::size_t>(row) - 1].Row;
            RecalcEquivLength(project, library, row);
        } else {
            target = {};
            target.Material = project.SystemData.DefaultPipeMaterial;
        }
    }
    project.NumberOfPipeRows = CountPipeRows(project);
    if (inflow != 0) {
        project.InflowNode = static_cast<Integer>(inflow);
        project.CalculationData.SystemInflowNode = static_cast<Integer>(inflow);
    }
    project.InputChanged = True;
    result.Accepted = true;
    result.Warnings = std::move(warnings);
    return result;
}

} // namespace quench
