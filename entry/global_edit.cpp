#include "entry/global_edit.h"

#include "core/formats.h"
#include "core/text.h"
#include "entry/field_rules.h"
#include "entry/k_factor_text.h"
#include "entry/node_data_sync.h"
#include "entry/pipe_row_text.h"
#include "entry/pipe_table.h"
#include "entry/pipe_table_columns.h"
#include "library/equivalent_length.h"

#include <algorithm>
#include <cctype>

namespace quench {

namespace {

namespace words = global_edit_words;
using enum GlobalItem;

constexpr int HighestNodeNumber = 9999;

std::string CountText(int count, std::string_view what) {
    return std::to_string(count) + std::string(what);
}

// The row field an item writes, at the beginning's column for a node item.
PipeColumn ColumnOf(GlobalItem item) {
    switch (item) {
    case Material:
        return PipeColumn::Material;
    case Diameter:
        return PipeColumn::Diameter;
    case Length:
        return PipeColumn::Length;
    case KFactor:
        return PipeColumn::KFactorB;
    case SprinklerArea:
        return PipeColumn::SprinklerAreaB;
    case Elevation:
        return PipeColumn::ElevationB;
    case Status:
        break;
    }
    return PipeColumn::Active;
}

std::optional<GlobalItem> ItemNamed(std::string_view name) {
    for (int index = 0; index < GlobalItemCount; ++index) {
        if (ItemInfo(ItemAt(index)).Name == name) {
            return ItemAt(index);
        }
    }
    return std::nullopt;
}

// The current value that limits a change, or none when the change goes to the whole selection:
// an empty field, or an exact zero that the selection does not hold.
std::optional<GlobalValue> CurrentFilter(const Project& project, GlobalItem item,
                                         const GlobalEntry& entry, const GlobalSelection& selection,
                                         MeasureSystem system, char decimalCharacter) {
    std::optional<GlobalValue> current = ValueOfText(item, entry.Current, decimalCharacter);
    if (!current || current->IsWord() || current->Number != 0) {
        return current;
    }
    if (!InValueList(ValueList(project, item, selection, system), GlobalValue{"", 0})) {
        return std::nullopt;
    }
    return current;
}

} // namespace

GlobalEdit::GlobalEdit(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                       UndoStack& undo, MeasureSystem system, char decimalCharacter)
    : project_(project), library_(library), dialogs_(dialogs), undo_(undo), system_(system),
      decimalCharacter_(decimalCharacter) {}

GlobalSelection& GlobalEdit::Selection(GlobalFrame frame) {
    return frame == GlobalFrame::Pipe ? pipeSelection_ : nodeSelection_;
}

const GlobalSelection& GlobalEdit::Selection(GlobalFrame frame) const {
    return frame == GlobalFrame::Pipe ? pipeSelection_ : nodeSelection_;
}

GlobalEntry& GlobalEdit::Entry(GlobalItem item) {
    return entries_[static_cast<std::size_t>(item)];
}

const GlobalEntry& GlobalEdit::Entry(GlobalItem item) const {
    return entries_[static_cast<std::size_t>(item)];
}

std::optional<NumberAttribute> GlobalEdit::Attribute(GlobalItem item) const {
    const GlobalItemInfo& info = ItemInfo(item);
    if (!info.Number) {
        return std::nullopt;
    }
    return ConvertAttribute(NumberAttributeOf(*info.Number), info.Unit, system_);
}

std::string GlobalEdit::Caption(GlobalItem item) const {
    return InDischargeWords(ItemInfo(item).Caption, project_);
}

KeyOutcome GlobalEdit::FilterKey(GlobalItem item, char key, const FieldState& field) const {
    key = static_cast<char>(std::toupper(static_cast<unsigned char>(key)));
    const NumberKeyOptions options{decimalCharacter_, true};
    switch (item) {
    case Material: {
        KeyOutcome outcome = FilterTextKey(key, field, TextAttribute{0, 2});
        const std::string& text = outcome.Field.Text;
        outcome.Accepted = outcome.Accepted && (text.empty() || MaterialOfText(text) != 0);
        return outcome;
    }
    case Status:
        if (key != BackspaceKey && (key < 'A' || key > 'Z')) {
            return {};
        }
        return FilterTextKey(key, field, TextAttribute{0, 8});
    case KFactor:
        return FilterKFactorKey(key, field, *Attribute(item), options);
    default:
        return FilterNumberKey(key, field, *Attribute(item), options);
    }
}

std::vector<std::string> GlobalEdit::CurrentValues(GlobalItem item) const {
    std::vector<std::string> texts;
    for (const GlobalValue& value :
         ValueList(project_, item, Selection(ItemInfo(item).Frame), system_)) {
        texts.push_back(ValueText(item, value, decimalCharacter_));
    }
    return texts;
}

std::vector<std::string> GlobalEdit::HelpValues(std::string_view key) const {
    const bool current = key.starts_with("GlobalCurrent");
    if (!current && !key.starts_with("GlobalNew")) {
        return {};
    }
    const std::optional<GlobalItem> item = ItemNamed(key.substr(
        current ? std::string_view("GlobalCurrent").size() : std::string_view("GlobalNew").size()));
    if (!item) {
        return {};
    }
    if (current) {
        return CurrentValues(*item);
    }
    if (*item == Status) {
        return {ActiveStatusWord, InactiveStatusWord};
    }
    std::vector<std::string> texts;
    if (*item == KFactor) {
        texts = {DefaultKWord, InactiveKWord, NoneKWord};
    }
    const GlobalSelection everything{SelectionChoice::All, "", "", ""};
    for (const GlobalValue& value : ValueList(project_, *item, everything, system_)) {
        if (!value.IsWord()) {
            texts.push_back(ValueText(*item, value, decimalCharacter_));
        }
    }
    return texts;
}

ItemState GlobalEdit::StateOf(GlobalItem item) const {
    const GlobalItemInfo& info = ItemInfo(item);
    const GlobalEntry& entry = Entry(item);
    const bool noCurrent = TrimmedView(entry.Current).empty();
    if (noCurrent && TrimmedView(entry.New).empty() && !info.EmptyName.empty()) {
        return ItemState::BothEmpty;
    }
    const std::optional<GlobalValue> fresh = ValueOfText(item, entry.New, decimalCharacter_);
    const std::optional<NumberAttribute> limits = Attribute(item);
    if (!fresh || (!fresh->IsWord() && limits &&
                   (fresh->Number < limits->Min || fresh->Number > limits->Max))) {
        return ItemState::NoNewValue; // none, or none that the field could hold
    }
    if (noCurrent) {
        return ItemState::Unspecified;
    }
    if (!ValueOfText(item, entry.Current, decimalCharacter_)) {
        return ItemState::NotInList;
    }
    const GlobalSelection& selection = Selection(info.Frame);
    const std::optional<GlobalValue> current =
        CurrentFilter(project_, item, entry, selection, system_, decimalCharacter_);
    if (!current) {
        return ItemState::Unspecified;
    }
    return InValueList(ValueList(project_, item, selection, system_), *current)
               ? ItemState::Ready
               : ItemState::NotInList;
}

bool GlobalEdit::CheckItem(GlobalItem item) {
    const GlobalItemInfo& info = ItemInfo(item);
    const auto error = [this](const std::string& text) {
        dialogs_.ShowMessage(MessageStyle::Critical, words::InputDataErrorTitle,
                             InDischargeWords(text, project_));
        return false;
    };
    switch (StateOf(item)) {
    case ItemState::Ready:
        return true;
    case ItemState::BothEmpty: {
        const std::string name(info.EmptyName);
        error("Select a current value for " + name + ".");
        return error("Select a new value for " + name + ".");
    }
    case ItemState::NoNewValue:
        return error("Since you have checked the " + std::string(info.CheckWord) +
                     " check box, you should " + (info.Specify ? "Specify" : "enter") +
                     " a new value which the specified current value will change to, then click "
                     "the Execute button again.");
    case ItemState::NotInList:
        return error("The current " + std::string(info.ListWord) + " you input is not one of the " +
                     std::string(info.ListWords) +
                     " you specified in the project. You may choose one from the drop down list "
                     "by clicking the downward arrow button by the data field");
    case ItemState::Unspecified:
        break;
    }
    const std::string text =
        "You have not entered a specified current value or selected one from the drop down list "
        "by clicking the downward arrow by the current " +
        std::string(info.ListWord) +
        " data field.  So the change you are making will be applied to all " +
        (info.Frame == GlobalFrame::Pipe ? "pipes" : "nodes") +
        " in the specified range.  Are you sure you want to continue?";
    return dialogs_.Ask(Buttons::YesNoCancel, Answer::No, MessageStyle::Warning,
                        words::WarningTitle, InDischargeWords(text, project_)) == Answer::Yes;
}

GlobalOutcome GlobalEdit::Execute(GlobalFrame frame) {
    const std::vector<GlobalItem> items = ItemsOf(frame);
    for (GlobalItem item : items) {
        if (Entry(item).Checked && !CheckItem(item)) {
            return {true, 0};
        }
    }
    int count = 0;
    undo_.Record(project_, [&] {
        std::vector<RowEnd> changedEnds;
        for (GlobalItem item : items) {
            if (Entry(item).Checked) {
                count += Apply(item, changedEnds);
            }
        }
        // Every other row naming a changed node takes its new data, as after a typed edit.
        for (const RowEnd& end : changedEnds) {
            SyncNodeData(project_, end.Row, end.End, SyncDirection::Spread);
        }
        if (count > 0) {
            project_.InputChanged = True;
        }
    });
    Tell(count > 0 ? CountText(count, words::ChangesMade) : std::string(words::NoMatches));
    return {false, count};
}

int GlobalEdit::Apply(GlobalItem item, std::vector<RowEnd>& changedEnds) {
    const GlobalItemInfo& info = ItemInfo(item);
    const GlobalEntry& entry = Entry(item);
    const std::optional<GlobalValue> current =
        CurrentFilter(project_, item, entry, Selection(info.Frame), system_, decimalCharacter_);
    const GlobalValue* filter = current ? &*current : nullptr;
    const std::string text = Trim(entry.New);
    if (info.Frame == GlobalFrame::Pipe) {
        return ApplyToPipes(item, filter, text);
    }
    return ApplyToEnds(item, filter, text, changedEnds);
}

int GlobalEdit::ApplyToPipes(GlobalItem item, const GlobalValue* current, const std::string& text) {
    int count = 0;
    for (int row : SelectedPipes(project_, pipeSelection_)) {
        PipeRecord& record = project_.PipeRecord[static_cast<std::size_t>(row)];
        if (current != nullptr &&
            !SameAtDecimals(item, ValueAt(record, item, NodeEnd::Beginning, system_), *current)) {
            continue;
        }
        if (item == Status) {
            const bool active = EqualsIgnoreCase(text, ActiveStatusWord);
            if (active && !HasBothNodes(record)) {
                continue; // a pipe without both its nodes can not be made active
            }
            record.Active = ToFlag(active);
        } else {
            RowTexts texts;
            texts.Set(ColumnOf(item), ToUpper(text));
            SaveCurrentRow(project_, row, texts, system_, decimalCharacter_);
            RecalcEquivLength(project_, library_, row);
        }
        ++count;
    }
    return count;
}

int GlobalEdit::ApplyToEnds(GlobalItem item, const GlobalValue* current, const std::string& text,
                            std::vector<RowEnd>& changedEnds) {
    int count = 0;
    for (const RowEnd& end : SelectedEnds(project_, nodeSelection_)) {
        const PipeRecord& record = project_.PipeRecord[static_cast<std::size_t>(end.Row)];
        if (current != nullptr &&
            !SameAtDecimals(item, ValueAt(record, item, end.End, system_), *current)) {
            continue;
        }
        WriteNodeValue(item, end, text);
        if (std::find(changedEnds.begin(), changedEnds.end(), end) == changedEnds.end()) {
            changedEnds.push_back(end);
        }
        ++count;
    }
    return count;
}

void GlobalEdit::WriteNodeValue(GlobalItem item, const RowEnd& end, const std::string& text) {
    const bool ending = end.End == NodeEnd::Ending;
    if (item == Elevation && RelativeElevation) {
        PipeRecord& record = project_.PipeRecord[static_cast<std::size_t>(end.Row)];
        Single& elevation = ending ? record.ElevationE : record.ElevationB;
        elevation += static_cast<Single>(
            StoredValue(UnitKind::Length, FieldValue(text, decimalCharacter_), system_));
        return;
    }
    RowTexts texts;
    texts.Set(NodeColumn(ColumnOf(item), ending), text);
    SaveCurrentRow(project_, end.Row, texts, system_, decimalCharacter_);
}

std::vector<int> GlobalEdit::SourceRows(GlobalFrame frame) const {
    if (frame == GlobalFrame::Pipe) {
        return SelectedPipes(project_, pipeSelection_);
    }
    return RowsOfEnds(SelectedEnds(project_, nodeSelection_));
}

GlobalOutcome GlobalEdit::Delete(GlobalFrame frame, bool confirm) {
    const bool pipes = frame == GlobalFrame::Pipe;
    if ((!pipes || confirm) &&
        dialogs_.Ask(Buttons::YesNo, Answer::No, MessageStyle::Question,
                     pipes ? words::ConfirmPipeDeleteTitle : words::ConfirmNodeDeleteTitle,
                     pipes ? words::ConfirmPipeDelete : words::ConfirmNodeDelete) != Answer::Yes) {
        return {true, 0};
    }
    const std::vector<int> rows = SourceRows(frame);
    undo_.Record(project_, [&] {
        for (int row : rows) {
            ClearPipeRow(project_, row); // nothing is closed up: the row stays blank until sorted
        }
        AfterStructuralChange(!rows.empty());
    });
    const int count = static_cast<int>(rows.size());
    Tell(count > 0 ? CountText(count, words::PipesDeleted) : std::string(words::NoMatches));
    return {false, count};
}

GlobalOutcome GlobalEdit::Duplicate(GlobalFrame frame) {
    const bool pipes = frame == GlobalFrame::Pipe;
    if (dialogs_.Ask(Buttons::YesNo, Answer::No, MessageStyle::Question,
                     pipes ? words::ConfirmPipeDuplicateTitle : words::ConfirmNodeDuplicateTitle,
                     pipes ? words::ConfirmPipeDuplicate : words::ConfirmNodeDuplicate) !=
        Answer::Yes) {
        return {true, 0};
    }
    const std::vector<int> sources = SourceRows(frame);
    int count = 0;
    undo_.Record(project_, [&] {
        count = DuplicateRows(sources);
        AfterStructuralChange(count > 0);
    });
    if (count == static_cast<int>(sources.size())) {
        Tell(CountText(count, words::PipesDuplicated));
    }
    return {false, count};
}

int GlobalEdit::DuplicateRows(const std::vector<int>& sources) {
    int node = NextFreeNodeNumber(project_);
    int target = CountPipeRows(project_) + 1;
    int count = 0;
    for (int source : sources) {
        if (target > MaxPipes || node + 10 > HighestNodeNumber) {
            dialogs_.ShowMessage(MessageStyle::Critical, words::ErrorTitle, words::NoRoom);
            return count;
        }
        const auto at = static_cast<std::size_t>(target);
        PipeRecord& copy = project_.PipeRecord[at];
        copy = project_.PipeRecord[static_cast<std::size_t>(source)];
        copy.BegNode = std::to_string(node);
        copy.EndNode = std::to_string(node + 10);
        copy.BegIsInflow = 0;
        copy.EndIsInflow = 0;
        WorkPipeRecord& work = project_.WorkPipeRecord[at];
        work = project_.WorkPipeRecord[static_cast<std::size_t>(source)];
        work.BegNode = copy.BegNode;
        work.EndNode = copy.EndNode;
        // Consecutive duplicates share a node: its data are those written last.
        SyncNodeData(project_, target, NodeEnd::Beginning, SyncDirection::Spread);
        node += 10;
        ++target;
        ++count;
    }
    return count;
}

void GlobalEdit::Tell(std::string_view text) {
    dialogs_.ShowMessage(MessageStyle::Information, words::Title, text);
}

void GlobalEdit::AfterStructuralChange(bool changed) {
    project_.NumberOfPipeRows = CountPipeRows(project_);
    if (changed) {
        project_.InputChanged = True;
    }
}

} // namespace quench
