#include "gui/global_edit_tab.h"

#include "gui/global_edit_frame.h"
#include "gui/help_window.h"
#include "gui/qt_text.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

namespace quench::gui {

GlobalEditTab::GlobalEditTab(PipeTable& table, const PipeLibrary& library, Dialogs& dialogs,
                             UndoStack& undo, std::function<bool()> confirmDeletion,
                             QWidget* parent)
    : QWidget(parent), table_(table),
      rules_(table.Model(), library, dialogs, undo, table.System(), table.DecimalCharacter()),
      confirmDeletion_(std::move(confirmDeletion)),
      pipes_(new GlobalEditFrame(rules_, GlobalFrame::Pipe, this)),
      nodes_(new GlobalEditFrame(rules_, GlobalFrame::Node, this)) {
    setObjectName("tabGlobalEdit");
    auto* frames = new QHBoxLayout;
    frames->addWidget(pipes_);
    frames->addWidget(nodes_);
    frames->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(frames);
    layout->addStretch();
    for (GlobalEditFrame* frame : {pipes_, nodes_}) {
        connect(frame, &GlobalEditFrame::CommandWanted, this, &GlobalEditTab::Run);
        connect(frame, &GlobalEditFrame::StatusTextWanted, this, &GlobalEditTab::StatusTextWanted);
    }
    // F1 on a field or button opens the help under its key.
    for (QWidget* widget : findChildren<QWidget*>()) {
        if (widget->property(HelpKeyProperty).isValid()) {
            widget->installEventFilter(this);
        }
    }
    Refresh();
}

GlobalEditFrame* GlobalEditTab::Frame(GlobalFrame frame) const {
    return frame == GlobalFrame::Pipe ? pipes_ : nodes_;
}

void GlobalEditTab::SwitchUnits(MeasureSystem system) {
    rules_.SwitchUnits(system);
    Refresh();
}

void GlobalEditTab::Refresh() {
    pipes_->ShowUnits();
    nodes_->ShowUnits();
    nodes_->ShowTotal(Text(table_.SprinklerAreaLabel()));
}

bool GlobalEditTab::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() != QEvent::KeyPress || help_ == nullptr || widget == nullptr ||
        static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1) {
        return false;
    }
    ShowHelp(widget);
    return true;
}

void GlobalEditTab::ShowHelp(QWidget* widget) {
    pipes_->Take();
    nodes_->Take();
    helpKey_ = widget->property(HelpKeyProperty).toString();
    helpField_ = qobject_cast<QLineEdit*>(widget);
    HelpRequest request;
    request.Key = Latin1(helpKey_);
    request.FieldText = helpField_ != nullptr ? Latin1(helpField_->text()) : std::string();
    request.Screen = "frmEEPipeData";
    help_->Show(request, rules_.HelpValues(request.Key));
}

bool GlobalEditTab::TakeHelpChoice(const HelpState& state) {
    if (helpField_ == nullptr || Latin1(helpKey_) != state.CurrentHelpKey) {
        return false;
    }
    helpField_->setText(Latin1(state.HelpSelection));
    helpField_->setFocus();
    helpField_ = nullptr;
    return true;
}

void GlobalEditTab::Run(GlobalFrame frame, GlobalCommand command) {
    emit CommandStarting();
    Frame(frame)->Take();
    GlobalOutcome outcome;
    switch (command) {
    case GlobalCommand::Execute:
        outcome = rules_.Execute(frame);
        break;
    case GlobalCommand::Delete:
        outcome = rules_.Delete(frame, confirmDeletion_());
        break;
    case GlobalCommand::Duplicate:
        outcome = rules_.Duplicate(frame);
        break;
    }
    if (!outcome.Stopped && outcome.Count > 0) {
        Refresh();
        emit TablesChanged();
    }
}

} // namespace quench::gui
