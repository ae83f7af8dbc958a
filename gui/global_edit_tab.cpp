#include "gui/global_edit_tab.h"

#include "gui/global_edit_frame.h"
#include "gui/qt_text.h"

#include <QHBoxLayout>
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
