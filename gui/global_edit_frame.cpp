#include "gui/global_edit_frame.h"

#include "entry/field_attributes.h"
#include "gui/qt_text.h"
#include "gui/validated_field.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

QString Name(std::string_view prefix, GlobalItem item) {
    return Text(prefix) + Text(ItemInfo(item).Name);
}

// Fields holding a word or a letter take text; the others the limits of their item.
constexpr TextAttribute WordField{0, 8};

// The keys of an item's field go through the item's rule before the field sees them.
class ItemKeys final : public QObject {
public:
    ItemKeys(const GlobalEdit& rules, GlobalItem item, ValidatedField* field)
        : QObject(field), rules_(rules), item_(item), field_(field) {
        field->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) {
            return false;
        }
        const auto* press = static_cast<QKeyEvent*>(event);
        if ((press->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0) {
            return false;
        }
        char key = BackspaceKey;
        if (press->key() != Qt::Key_Backspace) {
            const QString typed = press->text();
            if (typed.size() != 1 || !typed.at(0).isPrint()) {
                return false;
            }
            key = typed.at(0).toLatin1();
        }
        const KeyOutcome outcome = rules_.FilterKey(item_, key, State());
        if (key != 0 && outcome.Accepted) {
            field_->SetTextQuietly(Latin1(outcome.Field.Text));
            field_->setCursorPosition(outcome.Field.SelectionStart);
        }
        return true; // a refused key leaves no trace
    }

private:
    FieldState State() const {
        FieldState state{Latin1(field_->text()), static_cast<int>(field_->cursorPosition()), 0};
        if (field_->hasSelectedText()) {
            state.SelectionStart = static_cast<int>(field_->selectionStart());
            state.SelectionLength = static_cast<int>(field_->selectedText().size());
        }
        return state;
    }

    const GlobalEdit& rules_;
    GlobalItem item_;
    ValidatedField* field_;
};

} // namespace

ValueBox::ValueBox(Source source, QWidget* parent)
    : QComboBox(parent), source_(std::move(source)), field_(new ValidatedField(this)) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setLineEdit(field_);
    setMinimumContentsLength(8);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
}

void ValueBox::FillList() {
    const QString typed = currentText();
    clear();
    for (const std::string& value : source_()) {
        addItem(Latin1(value));
    }
    field_->SetTextQuietly(typed);
}

void ValueBox::showPopup() {
    FillList();
    QComboBox::showPopup();
}

GlobalEditFrame::GlobalEditFrame(GlobalEdit& rules, GlobalFrame frame, QWidget* parent)
    : QGroupBox(frame == GlobalFrame::Pipe ? tr("Pipe") : tr("Node"), parent), rules_(rules),
      frame_(frame) {
    setObjectName(frame == GlobalFrame::Pipe ? "fraGlobalEditPipe" : "fraGlobalEditNode");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(BuildSelection());
    layout->addWidget(BuildItems());
    layout->addStretch();
    layout->addWidget(BuildCommands());
    ShowUnits();
}

ValidatedField* GlobalEditFrame::MakeField(const QString& name) {
    auto* field = new ValidatedField(this);
    field->setObjectName(name);
    connect(field, &ValidatedField::StatusTextWanted, this, &GlobalEditFrame::StatusTextWanted);
    return field;
}

ValueBox* GlobalEditFrame::MakeBox(const QString& name, ValueBox::Source source) {
    auto* box = new ValueBox(std::move(source), this);
    box->setObjectName(name);
    box->Field()->setObjectName(name + "Text");
    connect(box->Field(), &ValidatedField::StatusTextWanted, this,
            &GlobalEditFrame::StatusTextWanted);
    return box;
}

QWidget* GlobalEditFrame::BuildSelection() {
    const bool pipes = frame_ == GlobalFrame::Pipe;
    const QString prefix = pipes ? "GlobalEditPipe" : "GlobalEditNode";
    auto* box = new QWidget(this);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    byNode_ = new QRadioButton(tr("Node"), box);
    byNode_->setObjectName("opt" + prefix + "Node");
    byGroup_ = new QRadioButton(pipes ? tr("Pipe Type Group") : tr("Area Group"), box);
    byGroup_->setObjectName(pipes ? "optGlobalEditPipeTypeGroup" : "optGlobalEditAreaGroup");
    all_ = new QRadioButton(pipes ? tr("All Pipes") : tr("All Nodes"), box);
    all_->setObjectName(pipes ? "optGlobalEditAllPipes" : "optGlobalEditAllNodes");
    byNode_->setChecked(true);
    from_ = MakeField("txt" + prefix + "NodeFrom");
    to_ = MakeField("txt" + prefix + "NodeTo");
    group_ = MakeField(pipes ? "txtGlobalEditPipeTypeGroup" : "txtGlobalEditAreaGroup");
    from_->setProperty(HelpKeyProperty, "EEPipeDataGlobalNodeFrom");
    to_->setProperty(HelpKeyProperty, "EEPipeDataGlobalNodeTo");
    group_->setProperty(HelpKeyProperty,
                        pipes ? "EEPipeDataGlobalPipeTypeGroup" : "EEPipeDataGlobalNodeAreaGroup");
    for (ValidatedField* node : {from_, to_}) {
        node->SetNumberRules(NumberAttributeOf(NumberFieldKind::NodeNumber), '.');
        node->SetStatusText(Text(ShowRange(NumberAttributeOf(NumberFieldKind::NodeNumber))));
    }
    if (pipes) {
        group_->SetNumberRules(NumberAttributeOf(NumberFieldKind::TypeGroup), '.');
    } else {
        group_->SetTextRules(TextAttributeOf(TextFieldKind::AreaGroup));
    }
    grid->addWidget(byNode_, 0, 0);
    grid->addWidget(new QLabel(tr("From No."), box), 0, 1);
    grid->addWidget(from_, 0, 2);
    grid->addWidget(new QLabel(tr("To No."), box), 0, 3);
    grid->addWidget(to_, 0, 4);
    grid->addWidget(byGroup_, 1, 0);
    grid->addWidget(group_, 1, 2);
    grid->addWidget(all_, 2, 0);
    auto* values = new QPushButton(tr("Current Values"), box);
    values->setObjectName(pipes ? "cmdPipeCurrentValues" : "cmdNodeCurrentValues");
    values->setProperty(HelpKeyProperty,
                        pipes ? "GlobalPipeCurrentValues" : "GlobalNodeCurrentValues");
    grid->addWidget(values, 2, 3, 1, 2);
    connect(values, &QPushButton::clicked, this, &GlobalEditFrame::FillCurrentLists);
    return box;
}

QWidget* GlobalEditFrame::BuildItems() {
    auto* box = new QWidget(this);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 8, 0, 0);
    grid->addWidget(new QLabel(tr("Current Values"), box), 0, 1);
    grid->addWidget(new QLabel(tr("New Values"), box), 0, 2);
    int line = 1;
    for (GlobalItem item : ItemsOf(frame_)) {
        ItemRow row{item};
        row.Check = new QCheckBox(Latin1(rules_.Caption(item)), box);
        row.Check->setObjectName(Name("chkGlobalNew", item));
        row.Current = MakeBox(Name("txtGlobalCurrent", item), [this, item] {
            Take();
            return rules_.CurrentValues(item);
        });
        const std::string key = "GlobalNew" + std::string(ItemInfo(item).Name);
        row.New = MakeBox(Name("txtGlobalNew", item), [this, key] {
            Take();
            return rules_.HelpValues(key);
        });
        row.Unit = new QLabel(box);
        row.Current->Field()->setProperty(HelpKeyProperty, Name("GlobalCurrent", item));
        row.New->Field()->setProperty(HelpKeyProperty, Name("GlobalNew", item));
        new ItemKeys(rules_, item, row.Current->Field());
        new ItemKeys(rules_, item, row.New->Field());
        grid->addWidget(row.Check, line, 0);
        grid->addWidget(row.Current, line, 1);
        grid->addWidget(row.New, line, 2);
        grid->addWidget(row.Unit, line, 3);
        ++line;
        rows_.push_back(row);
    }
    if (frame_ == GlobalFrame::Node) {
        auto* absolute = new QRadioButton(tr("Absolute"), box);
        absolute->setObjectName("optElevAbsolute");
        absolute->setChecked(true);
        relative_ = new QRadioButton(tr("Relative"), box);
        relative_->setObjectName("optElevRelative");
        auto* choice = new QHBoxLayout;
        choice->addWidget(absolute);
        choice->addWidget(relative_);
        choice->addStretch();
        grid->addLayout(choice, line, 2, 1, 2);
        total_ = new QLabel(box);
        total_->setObjectName("lblGlobalTotalSprkArea");
        grid->addWidget(total_, line + 1, 0, 1, 4);
    }
    grid->setColumnStretch(4, 1);
    return box;
}

QWidget* GlobalEditFrame::BuildCommands() {
    const QString prefix = frame_ == GlobalFrame::Pipe ? "cmdPipe" : "cmdNode";
    auto* box = new QWidget(this);
    auto* buttons = new QHBoxLayout(box);
    buttons->setContentsMargins(0, 0, 0, 0);
    const std::pair<const char*, GlobalCommand> commands[] = {
        {"Execute", GlobalCommand::Execute},
        {"Delete", GlobalCommand::Delete},
        {"Duplicate", GlobalCommand::Duplicate},
    };
    for (const auto& [caption, command] : commands) {
        auto* button = new QPushButton(tr(caption), box);
        button->setObjectName(prefix + caption);
        connect(button, &QPushButton::clicked, this,
                [this, command] { emit CommandWanted(frame_, command); });
        buttons->addWidget(button);
    }
    buttons->addStretch();
    return box;
}

void GlobalEditFrame::SetRules(ValidatedField* field, GlobalItem item) {
    if (const std::optional<NumberAttribute> attribute = rules_.Attribute(item);
        attribute && item != GlobalItem::KFactor) {
        field->SetNumberRules(*attribute, rules_.DecimalCharacter());
        field->SetStatusText(
            Text(ShowRange(*attribute) + "     " +
                 quench::ShowUnits(UnitWordOnScreen(ItemInfo(item).Unit, rules_.System()))));
        return;
    }
    // A K-factor takes its words beside a number; a material its letters; a status its words.
    field->SetTextRules(WordField);
    field->setAlignment(Qt::AlignLeft);
    field->SetStatusText(Text(ShowTextLength(WordField)));
}

void GlobalEditFrame::ShowUnits() {
    for (ItemRow& row : rows_) {
        SetRules(row.Current->Field(), row.Item);
        SetRules(row.New->Field(), row.Item);
        const std::optional<UnitKind> unit = ItemInfo(row.Item).Unit;
        row.Unit->setText(unit ? Text(UnitWord(*unit, rules_.System())) : QString());
        row.Check->setText(Latin1(rules_.Caption(row.Item)));
    }
}

void GlobalEditFrame::ShowTotal(const QString& text) {
    if (total_ != nullptr) {
        total_->setText(text);
    }
}

void GlobalEditFrame::FillCurrentLists() {
    Take();
    for (ItemRow& row : rows_) {
        row.Current->FillList();
    }
}

void GlobalEditFrame::Take() {
    GlobalSelection& selection = rules_.Selection(frame_);
    selection.Choice = byNode_->isChecked()    ? SelectionChoice::NodeRange
                       : byGroup_->isChecked() ? SelectionChoice::Group
                                               : SelectionChoice::All;
    selection.From = Latin1(from_->text());
    selection.To = Latin1(to_->text());
    selection.Group = Latin1(group_->text());
    for (const ItemRow& row : rows_) {
        GlobalEntry& entry = rules_.Entry(row.Item);
        entry.Checked = row.Check->isChecked();
        entry.Current = Latin1(row.Current->Text());
        entry.New = Latin1(row.New->Text());
    }
    if (relative_ != nullptr) {
        rules_.RelativeElevation = relative_->isChecked();
    }
}

} // namespace quench::gui
