#include "entry/pipe_table.h"

#include "calc/build_working_rows.h"
#include "core/formats.h"
#include "core/text.h"
#include "entry/device_loss_text.h"
#include "entry/fitting_entry.h"
#include "entry/k_factor_text.h"
#include "library/equivalent_length.h"
#include "library/fitting_text.h"

#include <algorithm>
#include <cctype>

namespace quench {

namespace {

using enum PipeColumn;
namespace words = pipe_table_words;

// A dialog that says nothing: the fitting text is parsed quietly while it is typed and with its
// messages when the field is left.
class SilentDialogs final : public Dialogs {
public:
    void ShowMessage(MessageStyle, std::string_view, std::string_view) override {}
    Answer Ask(Buttons, Answer defaultAnswer, MessageStyle, std::string_view,
               std::string_view) override {
        return defaultAnswer;
    }
};

bool IsLetter(char character) {
    return character >= 'A' && character <= 'Z';
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

char Capital(char key) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(key)));
}

// The text of a field after a key replaces its selection.
std::string WithKey(const FieldState& field, char key) {
    const std::size_t start =
        std::min(static_cast<std::size_t>(std::max(field.SelectionStart, 0)), field.Text.size());
    const std::size_t length = std::min(
        static_cast<std::size_t>(std::max(field.SelectionLength, 0)), field.Text.size() - start);
    return field.Text.substr(0, start) + std::string(1, key) + field.Text.substr(start + length);
}

KeyOutcome Taken(const FieldState& field, char key) {
    FieldState result = field;
    const int start = std::clamp(field.SelectionStart, 0, static_cast<int>(field.Text.size()));
    result.Text = WithKey(field, key);
    result.SelectionStart = start + 1;
    result.SelectionLength = 0;
    return {true, result};
}

KeyOutcome BackspaceOf(const FieldState& field) {
    return FilterTextKey(BackspaceKey, field, TextAttribute{});
}

bool IsMaterialText(std::string_view text) {
    if (text.empty()) {
        return true;
    }
    if (IsLetter(text.front())) {
        return text.size() == 1 && MaterialOfText(text) != 0;
    }
    return std::all_of(text.begin(), text.end(), IsDigit) && text.front() != '0' &&
           LibraryMaterialOfText(text) != 0;
}

bool IsGroupText(std::string_view text) {
    return std::all_of(text.begin(), text.end(), IsLetter);
}

bool HasMaterial(const PipeRecord& record) {
    return record.Material >= 1 && record.Material <= MaterialFirePump;
}

bool SameNode(const std::string& left, const std::string& right) {
    return ToNumber(left) == ToNumber(right);
}

bool DependsOnEquivLength(PipeColumn column) {
    return column == Material || column == Diameter || column == Length ||
           column == NonStandardFitLength || column == FittingText;
}

void Append(std::vector<int>& rows, const std::vector<int>& more) {
    for (int row : more) {
        if (std::find(rows.begin(), rows.end(), row) == rows.end()) {
            rows.push_back(row);
        }
    }
}

} // namespace

PipeTable::PipeTable(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                     MeasureSystem system, char decimalCharacter)
    : project_(project), library_(library), dialogs_(dialogs), system_(system),
      decimalCharacter_(decimalCharacter) {}

PipeRecord& PipeTable::Record(int row) {
    return project_.PipeRecord[static_cast<std::size_t>(row)];
}

NumberAttribute PipeTable::Attribute(PipeColumn column) const {
    const PipeColumnInfo& info = ColumnInfo(column);
    if (!info.Number) {
        return {};
    }
    return ConvertAttribute(NumberAttributeOf(*info.Number), info.Unit, system_);
}

std::string PipeTable::StatusText(PipeColumn column) const {
    const PipeColumnInfo& info = ColumnInfo(column);
    if (info.Text) {
        return ShowTextLength(TextAttributeOf(*info.Text)) + "     " + ShowUnits("Text");
    }
    if (!info.Number) {
        return {};
    }
    return ShowRange(Attribute(column)) + "     " + ShowUnits(UnitWordOnScreen(info.Unit, system_));
}

KeyOutcome PipeTable::FilterKey(int row, PipeColumn column, char key, const FieldState& field,
                                bool* focusMaterial) {
    key = Capital(key);
    const NumberKeyOptions options{decimalCharacter_, true};
    KeyOutcome outcome;
    switch (column) {
    case KFactorB:
    case KFactorE:
        outcome = FilterKFactorKey(key, field, Attribute(column), options);
        break;
    case AreaGroupB:
    case AreaGroupE:
        if (key == BackspaceKey) {
            outcome = BackspaceOf(field);
        } else if (IsLetter(key)) {
            outcome = FilterTextKey(key, field, TextAttributeOf(TextFieldKind::AreaGroup));
        }
        break;
    case Material:
        if (key == BackspaceKey) {
            outcome = BackspaceOf(field);
        } else if (IsMaterialText(WithKey(field, key))) {
            outcome = Taken(field, key);
        }
        break;
    case FittingText: {
        const std::size_t selected = static_cast<std::size_t>(std::max(field.SelectionLength, 0));
        if (FilterFittingKey(key, field.Text, project_, selected) == RefusedKey) {
            return {};
        }
        outcome = key == BackspaceKey ? BackspaceOf(field) : Taken(field, key);
        break;
    }
    case Diameter:
    case Length:
        if ((IsDigit(key) || key == '.' || key == ',') && row >= 1 && row <= MaxPipes &&
            !HasMaterial(Record(row))) {
            dialogs_.ShowMessage(MessageStyle::Information, words::Title,
                                 column == Diameter ? words::MaterialBeforeDiameter
                                                    : words::MaterialBeforeLength);
            if (focusMaterial != nullptr) {
                *focusMaterial = true;
            }
            return {};
        }
        outcome = FilterNumberKey(key, field, Attribute(column), options);
        break;
    case DeviceLoss:
        outcome = FilterLossKey(row, key, field);
        break;
    case Active:
    case EquivLength:
    case Count:
        return {};
    default:
        outcome = FilterNumberKey(key, field, Attribute(column), options);
        break;
    }
    if (outcome.Accepted) {
        project_.InputChanged = True;
    }
    return outcome;
}

// In a pump row C writes the whole word "Curve", and the word goes as a whole: a number typed over
// it or a Backspace starts the field afresh.
KeyOutcome PipeTable::FilterLossKey(int row, char key, const FieldState& field) {
    const NumberKeyOptions options{decimalCharacter_, true};
    const bool pump = row >= 1 && row <= MaxPipes && Record(row).Material == MaterialFirePump;
    if (pump && key == 'C') {
        const std::string word = PumpCurveLossText;
        return {true, {word, static_cast<int>(word.size()), 0}};
    }
    if (field.Text != PumpCurveLossText) {
        return FilterNumberKey(key, field, Attribute(DeviceLoss), options);
    }
    if (key == BackspaceKey) {
        return {true, {}};
    }
    return FilterNumberKey(key, {}, Attribute(DeviceLoss), options);
}

std::string PipeTable::TestOnChange(PipeColumn column, std::string_view text) const {
    const std::string capitals = ToUpper(text);
    switch (column) {
    case KFactorB:
    case KFactorE:
        return TestKFactorOnChange(capitals, Attribute(column), decimalCharacter_);
    case AreaGroupB:
    case AreaGroupE:
        return IsGroupText(Trim(capitals))
                   ? TestTextOnChange(Trim(capitals), TextAttributeOf(TextFieldKind::AreaGroup))
                   : std::string();
    case Material:
        return IsMaterialText(Trim(capitals)) ? Trim(capitals) : std::string();
    case FittingText:
        return TestTextOnChange(Trim(capitals), TextAttributeOf(TextFieldKind::FittingText));
    case DeviceLoss:
        if (capitals == ToUpper(PumpCurveLossText)) {
            return PumpCurveLossText;
        }
        return quench::TestOnChange(Trim(text), Attribute(column), decimalCharacter_);
    case Active:
    case EquivLength:
    case Count:
        return std::string(text);
    default:
        return quench::TestOnChange(Trim(text), Attribute(column), decimalCharacter_);
    }
}

bool PipeTable::SaveField(int row, PipeColumn column, const std::string& text) {
    RowTexts texts;
    texts.Set(column, text);
    const bool changed = SaveCurrentRow(project_, row, texts, system_, decimalCharacter_);
    if (changed) {
        project_.InputChanged = True;
    }
    return changed;
}

PipeEdit PipeTable::Change(int row, PipeColumn column, std::string_view text) {
    PipeEdit edit;
    if (row < 1 || row > MaxPipes || column == Active || column == EquivLength || column == Count) {
        return edit;
    }
    const std::string tested = TestOnChange(column, text);
    if (column == FittingText) {
        edit = ChangeFitting(row, tested, false);
    } else if (column == BegNode || column == EndNode) {
        edit = ChangeNodeNumber(row, column, tested);
    } else if (IsNodeDataColumn(column)) {
        edit = ChangeNodeData(row, column, tested);
    } else {
        edit = ChangePipeField(row, column, tested);
    }
    // The Loss field refuses only the word "Curve" outside a pump row.
    const bool refusedText = tested != Trim(ToUpper(text)) &&
                             !(tested.empty() && TrimmedView(text).empty()) &&
                             !IsNodeDataColumn(column);
    edit.Refused = column == DeviceLoss ? edit.Refused : refusedText;
    if (IsNodeDataColumn(column) && tested.empty() && !TrimmedView(text).empty()) {
        edit.Refused = !KFactorWord(text);
    }
    return edit;
}

PipeEdit PipeTable::ChangeNodeNumber(int row, PipeColumn column, const std::string& text) {
    PipeEdit edit;
    SaveField(row, column, text);
    project_.NumberOfPipeRows = CountPipeRows(project_);
    edit.Rows = {row};
    edit.Text = text;
    edit.NodesChanged = true;
    return edit;
}

PipeEdit PipeTable::ChangeNodeData(int row, PipeColumn column, const std::string& text) {
    PipeEdit edit;
    SaveField(row, column, text);
    edit.Rows = {row};
    edit.Text = text;
    if (!syncInProgress_) {
        syncInProgress_ = true;
        const NodeEnd end =
            EndOfColumn(column) == ColumnEnd::Beginning ? NodeEnd::Beginning : NodeEnd::Ending;
        Append(edit.Rows, SyncNodeData(project_, row, end, SyncDirection::Spread));
        syncInProgress_ = false;
    }
    return edit;
}

PipeEdit PipeTable::ChangePipeField(int row, PipeColumn column, const std::string& text) {
    PipeEdit edit;
    const Integer material = Record(row).Material;
    if (column == DeviceLoss && text == PumpCurveLossText) {
        return ChooseLossCurve(row);
    }
    SaveField(row, column, text);
    if (DependsOnEquivLength(column)) {
        RecalcEquivLength(project_, library_, row);
    }
    edit.Rows = {row};
    edit.Text = text;
    if (column == Material && Record(row).Material != material) {
        edit.OpenPumpScreen = Record(row).Material == MaterialFirePump;
        FollowMaterialWithLoss(row);
    }
    return edit;
}

// "Curve" in a pump row's Loss hands its boost to the project's pump curve; in any other row the
// word means nothing and the field shows the row's loss again.
PipeEdit PipeTable::ChooseLossCurve(int row) {
    PipeEdit edit;
    PipeRecord& record = Record(row);
    if (record.Material == MaterialFirePump && record.DeviceLoss != NotGiven) {
        record.DeviceLoss = NotGiven;
        project_.InputChanged = True;
    }
    edit.Rows = {row};
    edit.Refused = record.Material != MaterialFirePump;
    edit.Text = edit.Refused
                    ? DeviceLossText(record, project_.CalculationData, system_, decimalCharacter_)
                    : PumpCurveLossText;
    return edit;
}

// A row made a pump takes its boost from the curve until one is typed; a row that stops being a
// pump loses the curve's mark and shows a loss of 0.
void PipeTable::FollowMaterialWithLoss(int row) {
    PipeRecord& record = Record(row);
    if (record.Material == MaterialFirePump) {
        record.DeviceLoss = NotGiven;
    } else if (record.DeviceLoss == NotGiven) {
        record.DeviceLoss = 0;
    }
}

PipeEdit PipeTable::ChangeFitting(int row, const std::string& text, bool withMessages) {
    PipeEdit edit;
    SilentDialogs silent;
    const FittingParse parse = ParseFittingText(text, withMessages ? dialogs_ : silent);
    PipeRecord& record = Record(row);
    const PipeRecord before = record;
    if (IsUntypedRow(record, project_)) {
        record = EmptyPipeRow(project_);
    }
    record.FittingCounts = parse.Counts;
    record.FittingText = BuildFittingText(parse.Counts);
    RecalcEquivLength(project_, library_, row);
    if (!(record == before)) {
        project_.InputChanged = True;
    }
    edit.Rows = {row};
    edit.Text = withMessages ? record.FittingText : text;
    edit.Refused = !parse.Clean;
    return edit;
}

PipeEdit PipeTable::Leave(int row, PipeColumn column, std::string_view text) {
    if (row < 1 || row > MaxPipes) {
        return {};
    }
    switch (column) {
    case BegNode:
    case EndNode:
        return LeaveNodeNumber(row, column, text);
    case FittingText:
        return ChangeFitting(row, TestOnChange(column, text), true);
    case KFactorB:
    case KFactorE:
        if (KFactorWord(text)) {
            return Change(row, column, text);
        }
        return LeaveNumber(row, column, text);
    case AreaGroupB:
    case AreaGroupE:
    case Material:
        return Change(row, column, text);
    case DeviceLoss:
        if (TestOnChange(column, text) == PumpCurveLossText) {
            return Change(row, column, text);
        }
        return LeaveNumber(row, column, text);
    case Active:
    case EquivLength:
    case Count:
        return {};
    default:
        return LeaveNumber(row, column, text);
    }
}

PipeEdit PipeTable::LeaveNumber(int row, PipeColumn column, std::string_view text) {
    const std::string tested = TestOnChange(column, text);
    const NumberAttribute attribute = Attribute(column);
    const LeaveOutcome left = LeaveNumberField(tested, attribute, decimalCharacter_);
    if (left.TooLow) {
        dialogs_.ShowMessage(MessageStyle::Information, words::Title, ValueTooLowText);
    }
    // An empty diameter or loss keeps its meaning of "not given"; other fields show 0.
    const bool keepEmpty =
        (column == Diameter || column == DeviceLoss) && TrimmedView(tested).empty();
    PipeEdit edit = Change(row, column, keepEmpty ? tested : left.Text);
    edit.Refused = edit.Refused || left.TooLow || tested != Trim(text);
    if (!keepEmpty) {
        edit.Text = left.Text;
    }
    return edit;
}

PipeEdit PipeTable::LeaveNodeNumber(int row, PipeColumn column, std::string_view text) {
    PipeEdit edit = Change(row, column, text);
    const PipeRecord& record = Record(row);
    const bool ending = column == EndNode;
    const std::string& node = ending ? record.EndNode : record.BegNode;
    if (TrimmedView(node).empty()) {
        return edit;
    }
    std::string_view problem;
    if (HasBothNodes(record) && SameNode(record.BegNode, record.EndNode)) {
        problem = words::SameNodes;
    } else if (HasBothNodes(record)) {
        for (int other = 1; other <= MaxPipes && problem.empty(); ++other) {
            const PipeRecord& pipe = project_.PipeRecord[static_cast<std::size_t>(other)];
            if (other == row || !HasBothNodes(pipe)) {
                continue;
            }
            const bool same =
                SameNode(pipe.BegNode, record.BegNode) && SameNode(pipe.EndNode, record.EndNode);
            const bool turned =
                SameNode(pipe.BegNode, record.EndNode) && SameNode(pipe.EndNode, record.BegNode);
            if (same || turned) {
                problem = words::DuplicatePipe;
            }
        }
    }
    if (!problem.empty()) {
        dialogs_.ShowMessage(MessageStyle::Information, words::Title, problem);
        PipeEdit emptied = Change(row, column, "");
        emptied.Refused = true;
        return emptied;
    }
    Append(edit.Rows, SyncNodeData(project_, row, ending ? NodeEnd::Ending : NodeEnd::Beginning,
                                   SyncDirection::Fetch));
    return edit;
}

PipeEdit PipeTable::Enter(int row, PipeColumn column, std::string_view text) {
    PipeEdit changed = Change(row, column, text);
    if (changed.Refused && column != FittingText) {
        return changed;
    }
    PipeEdit left = Leave(row, column, column == FittingText ? text : changed.Text);
    Append(changed.Rows, left.Rows);
    left.Rows = changed.Rows;
    left.OpenPumpScreen = left.OpenPumpScreen || changed.OpenPumpScreen;
    left.NodesChanged = left.NodesChanged || changed.NodesChanged;
    left.Refused = left.Refused || changed.Refused;
    return left;
}

std::vector<int> PipeTable::LeaveRow(int row) {
    if (row < 1 || row > MaxPipes) {
        return {};
    }
    return SpreadBothEnds(project_, row);
}

std::vector<int> PipeTable::ToggleStatus(int row, int selectionFirst, int selectionLast) {
    std::vector<int> rows;
    Append(rows, {row});
    for (int edge : {selectionFirst, selectionLast}) {
        if (edge >= 1 && edge <= MaxPipes && edge != row) {
            Append(rows, {edge});
        }
    }
    std::vector<int> toggled;
    bool told = false;
    for (int each : rows) {
        if (each < 1 || each > MaxPipes) {
            continue;
        }
        PipeRecord& record = Record(each);
        if (!IsTrue(record.Active) && !HasBothNodes(record)) {
            if (!told) {
                dialogs_.ShowMessage(MessageStyle::Information, words::Title,
                                     words::NoNodeForStatus);
                told = true;
            }
            continue;
        }
        record.Active = ToFlag(!IsTrue(record.Active));
        toggled.push_back(each);
    }
    if (!toggled.empty()) {
        project_.InputChanged = True;
    }
    return toggled;
}

int PipeTable::AddPipe(int row) {
    if (CountPipeRows(project_) >= MaxPipes) {
        dialogs_.ShowMessage(MessageStyle::Information, words::Title,
                             std::string(words::TooManyPipes) + std::to_string(MaxPipes) + ".");
        return 0;
    }
    const Answer answer = dialogs_.Ask(Buttons::YesNo, Answer::No, MessageStyle::Question,
                                       words::CopyPipeTitle, words::CopyPipe);
    const bool valid = row >= 1 && row <= MaxPipes;
    if (valid) {
        SpreadBothEnds(project_, row);
    }
    int added = 0;
    for (int each = 1; each <= MaxPipes && added == 0; ++each) {
        if (IsBlankRow(Record(each))) {
            added = each;
        }
    }
    if (added == 0) {
        return 0;
    }
    PipeRecord& target = Record(added);
    if (answer == Answer::Yes && valid) {
        const int node = NextFreeNodeNumber(project_);
        target = Record(row);
        target.BegIsInflow = False;
        target.EndIsInflow = False;
        target.BegNode = std::to_string(node);
        target.EndNode = std::to_string(node + 10);
    } else if (IsUntypedRow(target, project_)) {
        target = EmptyPipeRow(project_);
    }
    project_.NumberOfPipeRows = CountPipeRows(project_);
    project_.InputChanged = True;
    return added;
}

bool PipeTable::DeletePipe(int row, bool confirm) {
    if (row < 1 || row > MaxPipes) {
        return false;
    }
    if (confirm &&
        dialogs_.Ask(Buttons::YesNo, Answer::No, MessageStyle::Question, words::ConfirmDeleteTitle,
                     "Delete pipe number " + std::to_string(row) + "?") != Answer::Yes) {
        return false;
    }
    ClearPipeRow(project_, row);
    project_.NumberOfPipeRows = CountPipeRows(project_);
    project_.InputChanged = True;
    return true;
}

bool PipeTable::ClearPipes() {
    if (dialogs_.Ask(Buttons::YesNoCancel, Answer::Cancel, MessageStyle::Warning,
                     words::ClearAllTitle, words::ClearAll) != Answer::Yes) {
        return false;
    }
    for (int row = 1; row <= std::max<int>(project_.NumberOfPipeRows, CountPipeRows(project_));
         ++row) {
        ClearPipeRow(project_, row);
    }
    SortPipes();
    project_.InflowNode = 0;
    project_.CalculationData.SystemInflowNode = 0;
    project_.InputChanged = True;
    return true;
}

void PipeTable::SortPipes() {
    // The distinct node numbers in order of first appearance, then ascending.
    std::vector<double> nodes;
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& record = Record(row);
        if (!HasBothNodes(record)) {
            continue;
        }
        for (const std::string* text : {&record.BegNode, &record.EndNode}) {
            const double node = ToNumber(*text);
            if (node != 0 && nodes.size() < static_cast<std::size_t>(MaxPipes) &&
                std::find(nodes.begin(), nodes.end(), node) == nodes.end()) {
                nodes.push_back(node);
            }
        }
    }
    std::stable_sort(nodes.begin(), nodes.end());
    // Rows by the smaller of their two numbers; rows of one smaller number keep their order.
    std::vector<PipeRecord> sorted;
    sorted.reserve(static_cast<std::size_t>(MaxPipes));
    for (double node : nodes) {
        for (int row = 1; row <= MaxPipes; ++row) {
            const PipeRecord& record = Record(row);
            if (!HasBothNodes(record)) {
                continue;
            }
            const double begin = ToNumber(record.BegNode);
            const double end = ToNumber(record.EndNode);
            if ((begin == node && begin < end) || (end == node && end < begin)) {
                sorted.push_back(record);
            }
        }
    }
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        Record(static_cast<int>(i) + 1) = sorted[i];
    }
    for (int row = static_cast<int>(sorted.size()) + 1; row <= MaxPipes; ++row) {
        ClearPipeRow(project_, row);
    }
    project_.NumberOfPipeRows = CountPipeRows(project_);
    project_.InputChanged = True;
}

bool PipeTable::MarkChecks(int row, NodeEnd end) {
    PipeRecord& record = Record(row);
    const double node = NodeNumberAt(record, end);
    int connected = 0;
    for (int other = 1; other <= MaxPipes; ++other) {
        const PipeRecord& pipe = Record(other);
        if (IsTrue(pipe.Active) && PlaceOfNode(pipe, node) != NodePlace::None &&
            !Trim(NodeText(pipe, PlaceOfNode(pipe, node) == NodePlace::Beginning
                                     ? NodeEnd::Beginning
                                     : NodeEnd::Ending))
                 .empty()) {
            ++connected;
        }
    }
    if (connected >= 2) {
        dialogs_.ShowMessage(MessageStyle::Information, words::Title, words::InflowTwoPipes);
        return false;
    }
    NodeData data = NodeDataAt(record, end);
    if (TrimmedView(data.KFactor).empty()) {
        data.KFactor = "0";
        SetNodeData(record, end, data);
    } else if (KFactorValue(data.KFactor, project_.SystemData.DefaultKFactor) != 0) {
        dialogs_.ShowMessage(MessageStyle::Critical, words::InputDataErrorTitle,
                             InDischargeWords(words::InflowSprinkler, project_));
        return false;
    }
    if (data.NonSprinklerFlow != 0) {
        dialogs_.ShowMessage(MessageStyle::Critical, words::InputDataErrorTitle,
                             InDischargeWords(words::InflowFlow, project_));
        return false;
    }
    return true;
}

bool PipeTable::MarkInflowNode(int row, NodeEnd end) {
    if (row < 1 || row > MaxPipes || Trim(NodeText(Record(row), end)).empty()) {
        return false;
    }
    if (!MarkChecks(row, end)) {
        return false;
    }
    for (int each = 1; each <= MaxPipes; ++each) {
        Record(each).BegIsInflow = 0;
        Record(each).EndIsInflow = 0;
    }
    PipeRecord& record = Record(row);
    (end == NodeEnd::Beginning ? record.BegIsInflow : record.EndIsInflow) = 1;
    const auto node = static_cast<Integer>(NodeNumberAt(record, end));
    project_.InflowNode = node;
    project_.CalculationData.SystemInflowNode = node;
    SyncNodeData(project_, row, end, SyncDirection::Spread);
    project_.InputChanged = True;
    return true;
}

bool PipeTable::UnmarkInflowNode(int row) {
    if (row < 1 || row > MaxPipes) {
        return false;
    }
    const PipeRecord& record = Record(row);
    NodeEnd end = NodeEnd::Beginning;
    if (IsTrue(record.EndIsInflow)) {
        end = NodeEnd::Ending;
    } else if (!IsTrue(record.BegIsInflow)) {
        return false;
    }
    const double node = NodeNumberAt(record, end);
    for (int each = 1; each <= MaxPipes; ++each) {
        PipeRecord& pipe = Record(each);
        if (NodeNumberAt(pipe, NodeEnd::Beginning) == node) {
            pipe.BegIsInflow = 0;
        }
        if (NodeNumberAt(pipe, NodeEnd::Ending) == node) {
            pipe.EndIsInflow = 0;
        }
    }
    if (project_.InflowNode == node) {
        project_.InflowNode = 0;
    }
    if (project_.CalculationData.SystemInflowNode == node) {
        project_.CalculationData.SystemInflowNode = 0;
    }
    project_.InputChanged = True;
    return true;
}

std::string PipeTable::Caption(int row) const {
    return std::string(words::Title) + ": Pipe " + std::to_string(row) + " of " +
           std::to_string(MaxPipes) + "   " + std::to_string(CountPipeRows(project_)) +
           " Pipes Defined";
}

std::string PipeTable::ShortCaption() const {
    return std::string(words::Title) + ": " + std::to_string(CountPipeRows(project_)) +
           " Pipes Defined";
}

std::string PipeTable::DefaultKFactorLabel() const {
    return "Dflt=" + DefaultKFactorText(project_, system_, decimalCharacter_);
}

std::string PipeTable::SprinklerAreaLabel() const {
    const double total = ShownValue(UnitKind::Area, SprinklerAreaTotal(project_), system_);
    std::string text = Format(total, "##0.0##");
    if (decimalCharacter_ != '.') {
        std::replace(text.begin(), text.end(), '.', decimalCharacter_);
    }
    return InDischargeWords("Total Sprk Area = ", project_) + text;
}

bool PipeTable::CheckInflowOnLeaving() {
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& record = Record(row);
        if (IsTrue(record.BegIsInflow) || IsTrue(record.EndIsInflow)) {
            return true;
        }
    }
    dialogs_.ShowMessage(MessageStyle::Information, words::Title, words::NoInflow);
    return false;
}

Integer CountPipeRows(const Project& project) {
    for (int row = MaxPipes; row >= 1; --row) {
        if (HasBothNodes(project.PipeRecord[static_cast<std::size_t>(row)])) {
            return static_cast<Integer>(row);
        }
    }
    return 0;
}

int NextFreeNodeNumber(const Project& project) {
    double highest = 0;
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        highest = std::max({highest, ToNumber(record.BegNode), ToNumber(record.EndNode)});
    }
    return (static_cast<int>(highest / 10) + 1) * 10;
}

void ClearPipeRow(Project& project, int row) {
    if (row < 1 || row > MaxPipes) {
        return;
    }
    PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
    const Single estimateB = record.PressEstimateB;
    const Single estimateE = record.PressEstimateE;
    record = EmptyPipeRow(project);
    record.PressEstimateB = estimateB;
    record.PressEstimateE = estimateE;
    WorkPipeRecord& work = project.WorkPipeRecord[static_cast<std::size_t>(row)];
    work = {};
    work.Material = project.SystemData.DefaultPipeMaterial;
    work.Active = True;
}

double SprinklerAreaTotal(const Project& project) {
    std::vector<bool> seen(10001, false);
    double total = 0;
    bool previousBlank = false;
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        const bool blank = IsBlankRow(record);
        if (blank && previousBlank) {
            break;
        }
        previousBlank = blank;
        for (NodeEnd end : {NodeEnd::Beginning, NodeEnd::Ending}) {
            const std::string node = Trim(NodeText(record, end));
            const double number = ToNumber(node);
            if (node.empty() || number < 0 || number > 10000) {
                continue;
            }
            const auto index = static_cast<std::size_t>(number);
            if (seen[index]) {
                continue;
            }
            seen[index] = true;
            const NodeData data = NodeDataAt(record, end);
            if (TrimmedView(data.KFactor).empty() || ToNumber(data.KFactor) == 0) {
                continue;
            }
            total += data.SprinklerArea != 0 ? data.SprinklerArea
                                             : project.SystemData.MaximumAreaPerSprinkler;
        }
    }
    return total;
}

} // namespace quench
