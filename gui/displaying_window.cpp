#include "gui/displaying_window.h"

#include "core/formats.h"
#include "entry/field_rules.h"
#include "gui/qt_text.h"
#include "gui/validated_field.h"
#include "gui/window_placement.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace quench::gui {

DisplayingWindow::DisplayingWindow(const QString& title, bool demandMode, IniFileHandler settings,
                                   char decimalCharacter, QWidget* parent)
    : QDialog(parent, Qt::Tool), decimalCharacter_(decimalCharacter),
      initialDamping_(Box("txtInitDampFact", NumberFieldKind::DampingFactor)),
      minimumDamping_(Box("txtMinDampFactor", NumberFieldKind::DampingFactor)),
      maximumIterations_(Box("txtMaxIterations", NumberFieldKind::MaximumIterations)),
      list_(new QTableWidget(IterationListRows, IterationListColumns, this)),
      status_(new QLabel(this)), percent_(new QLabel(this)),
      hmdCaption_(new QLabel("HMD Node:", this)), hmd_(new QLabel(this)),
      settings_(std::move(settings)) {
    setObjectName("frmDisplaying");
    setWindowTitle(title);
    setModal(false);
    setAttribute(Qt::WA_DeleteOnClose);

    auto* boxes = new QFormLayout;
    boxes->addRow("Init Damp Fact", initialDamping_);
    boxes->addRow("Min Damp Fact", minimumDamping_);
    boxes->addRow("Max Iterations", maximumIterations_);
    boxes->addRow(hmdCaption_, hmd_);
    hmdCaption_->setVisible(demandMode);
    hmd_->setVisible(demandMode);

    QStringList headings;
    for (const char* heading : IterationListHeadings) {
        headings << heading;
    }
    list_->setHorizontalHeaderLabels(headings);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setSelectionMode(QAbstractItemView::NoSelection);
    list_->verticalHeader()->setVisible(false);
    list_->verticalHeader()->setDefaultSectionSize(list_->fontMetrics().height() + 6);
    list_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(boxes);
    layout->addWidget(list_);
    layout->addWidget(status_);
    layout->addWidget(percent_);
    for (ValidatedField* box : {initialDamping_, minimumDamping_, maximumIterations_}) {
        box->setMaximumWidth(box->fontMetrics().horizontalAdvance("0") * 12);
    }
    resize(720, 460);
    RestorePlacement(*this, settings_, "Displaying");

    connect(initialDamping_, &ValidatedField::Edited, this, [this](const QString& text) {
        if (!text.isEmpty()) {
            typed_.InitialDamping = Value(text);
        }
        emit InitialDampingTyped(text);
    });
    connect(minimumDamping_, &ValidatedField::Edited, this, [this](const QString& text) {
        if (!text.isEmpty()) {
            typed_.MinimumDamping = Value(text);
        }
        emit MinimumDampingTyped(text);
    });
    connect(maximumIterations_, &ValidatedField::Edited, this, [this](const QString& text) {
        if (!text.isEmpty()) {
            typed_.IterationLimit = Value(text);
        }
    });
}

ValidatedField* DisplayingWindow::Box(const char* name, NumberFieldKind kind) {
    auto* box = new ValidatedField(this);
    box->setObjectName(name);
    const NumberAttribute attribute = NumberAttributeOf(kind);
    box->SetNumberRules(attribute, decimalCharacter_);
    box->SetStatusText(Text(ShowRange(attribute)));
    // A box left below its minimum takes the minimum, as every field does.
    connect(box, &ValidatedField::Left, this, [this, box, attribute] {
        const LeaveOutcome outcome =
            LeaveNumberField(Latin1(box->text()), attribute, decimalCharacter_);
        if (outcome.Text != Latin1(box->text())) {
            box->SetTextQuietly(Latin1(outcome.Text));
            emit box->Edited(box->text());
        }
    });
    return box;
}

double DisplayingWindow::Value(const QString& text) const {
    return FieldValue(Latin1(text), decimalCharacter_);
}

void DisplayingWindow::ShowControls(const IterationControls& controls) {
    const auto show = [this](ValidatedField* box, const std::optional<double>& value) {
        if (value && !box->hasFocus()) {
            QString shown = Latin1(NumberText(*value));
            shown.replace('.', QChar::fromLatin1(decimalCharacter_));
            box->SetTextQuietly(shown);
        }
    };
    show(initialDamping_, controls.InitialDamping);
    show(minimumDamping_, controls.MinimumDamping);
    show(maximumIterations_, controls.IterationLimit);
}

IterationControls DisplayingWindow::TakeTyped() {
    IterationControls typed = typed_;
    typed_ = {};
    return typed;
}

void DisplayingWindow::ShowIteration(const IterationRow& row) {
    rows_.Show(row);
    Refresh();
}

void DisplayingWindow::Refresh() {
    for (int row = 0; row < IterationListRows; ++row) {
        const IterationCells& cells = rows_.Rows()[static_cast<std::size_t>(row)];
        for (int column = 0; column < IterationListColumns; ++column) {
            const QString text = Text(cells[static_cast<std::size_t>(column)]);
            QTableWidgetItem* item = list_->item(row, column);
            if (item == nullptr) {
                item = new QTableWidgetItem;
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                list_->setItem(row, column, item);
            }
            item->setText(text);
        }
    }
}

void DisplayingWindow::SetStatusText(const QString& text) {
    status_->setText(text);
}

void DisplayingWindow::SetPercentText(const QString& text) {
    percent_->setText(text);
}

void DisplayingWindow::SetHmdText(const QString& text) {
    hmd_->setText(text);
}

// Alt with O, C or A would reach the screens underneath, which belong to the run: swallowed.
void DisplayingWindow::keyPressEvent(QKeyEvent* event) {
    if ((event->modifiers() & Qt::AltModifier) != 0 &&
        (event->key() == Qt::Key_O || event->key() == Qt::Key_C || event->key() == Qt::Key_A)) {
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

} // namespace quench::gui

namespace quench::gui {

void DisplayingWindow::hideEvent(QHideEvent* event) {
    SavePlacement(*this, settings_, "Displaying");
    QDialog::hideEvent(event);
}

} // namespace quench::gui
