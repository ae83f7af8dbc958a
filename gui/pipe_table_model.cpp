#include "gui/pipe_table_model.h"

#include "gui/qt_text.h"

#include <QBrush>
#include <QColor>
#include <QKeyEvent>
#include <QTimer>

namespace quench::gui {

namespace {

int PipeRow(const QModelIndex& index) {
    return index.row() + 1;
}

PipeColumn Column(const QModelIndex& index) {
    return ColumnAt(index.column());
}

QColor Colour(TextColour colour) {
    switch (colour) {
    case TextColour::Red:
        return QColor(255, 0, 0);
    case TextColour::Green:
        return QColor(0, 128, 0);
    case TextColour::Black:
        break;
    }
    return QColor(0, 0, 0);
}

bool IsNumberColumn(PipeColumn column) {
    return ColumnInfo(column).Number.has_value();
}

} // namespace

PipeTableModel::PipeTableModel(PipeTable& table, UndoStack& undo, QObject* parent)
    : QAbstractTableModel(parent), table_(table), undo_(undo) {}

int PipeTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : MaxPipes;
}

int PipeTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : PipeColumnCount;
}

QVariant PipeTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const PipeColumn column = Column(index);
    if (role == Qt::TextAlignmentRole) {
        return IsNumberColumn(column) || column == PipeColumn::EquivLength
                   ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                   : QVariant(Qt::AlignCenter);
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ForegroundRole &&
        role != Qt::BackgroundRole) {
        return {};
    }
    const RowView& view = View(PipeRow(index));
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        return view.Blank ? QString() : Latin1(view[column]);
    }
    if (view.Blank) {
        return {};
    }
    if (role == Qt::ForegroundRole) {
        if (column == PipeColumn::Diameter) {
            return QBrush(Colour(view.DiameterColour));
        }
        if (column == PipeColumn::Active) {
            return QBrush(Colour(view.StatusColour));
        }
        return {};
    }
    // The inflow mark, and the fields a sprinkler node does not take.
    if ((column == PipeColumn::BegNode && view.BeginningIsInflow) ||
        (column == PipeColumn::EndNode && view.EndingIsInflow)) {
        return QBrush(QColor(110, 170, 255));
    }
    if ((column == PipeColumn::NonSprinklerFlowB && !view.NonSprinklerFlowEnabledB) ||
        (column == PipeColumn::NonSprinklerFlowE && !view.NonSprinklerFlowEnabledE)) {
        return QBrush(QColor(225, 225, 225));
    }
    return {};
}

QVariant PipeTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        return section + 1;
    }
    QString caption = Latin1(ColumnCaption(ColumnAt(section), table_.Model()));
    caption.replace(' ', '\n');
    return caption;
}

Qt::ItemFlags PipeTableModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const PipeColumn column = Column(index);
    if (column == PipeColumn::Active || column == PipeColumn::EquivLength) {
        return flags;
    }
    return flags | Qt::ItemIsEditable;
}

const RowView& PipeTableModel::View(int row) const {
    if (cachedRow_ != row) {
        if (cachedRow_ == 0) {
            // Kept for one pass of the event loop: another screen may change the rows after.
            QTimer::singleShot(0, this, [this] { Forget(); });
        }
        cached_ = table_.Show(row);
        cachedRow_ = row;
    }
    return cached_;
}

void PipeTableModel::After(const PipeEdit& edit) {
    RowsChanged(edit.Rows);
    if (edit.OpenPumpScreen) {
        emit PumpScreenWanted();
    }
}

void PipeTableModel::RowsChanged(const std::vector<int>& rows) {
    Forget();
    for (int row : rows) {
        if (row >= 1 && row <= MaxPipes) {
            emit dataChanged(index(row - 1, 0), index(row - 1, PipeColumnCount - 1));
        }
    }
    emit Edited();
}

bool PipeTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole) {
        return false;
    }
    After(table_.Leave(PipeRow(index), Column(index), Latin1(value.toString())));
    return true;
}

void PipeTableModel::ChangeCell(const QModelIndex& index, const QString& text) {
    After(table_.Change(PipeRow(index), Column(index), Latin1(text)));
}

void PipeTableModel::Reload() {
    Forget();
    beginResetModel();
    endResetModel();
    emit Edited();
}

// --- Editor

PipeCellEditor::PipeCellEditor(PipeTableModel& model, const QModelIndex& index, QWidget* parent)
    : QLineEdit(parent), model_(model), index_(index) {
    setFrame(false);
}

void PipeCellEditor::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        event->accept(); // Enter does nothing in a field
        return;
    }
    char typed = 0;
    if (key == Qt::Key_Backspace) {
        typed = BackspaceKey;
    } else if (!event->text().isEmpty() && event->text().front().unicode() >= 32 &&
               event->text().front().unicode() < 127) {
        typed = event->text().front().toUpper().toLatin1();
    }
    if (typed == 0) {
        const QString before = text();
        QLineEdit::keyPressEvent(event); // moving, Delete, shortcuts
        if (text() != before) {
            const std::string tested =
                model_.Table().TestOnChange(ColumnAt(index_.column()), Latin1(text()));
            setText(Latin1(tested));
            setModified(true);
            model_.ChangeCell(index_, text());
        }
        return;
    }
    FieldState field;
    field.Text = Latin1(text());
    if (hasSelectedText()) {
        field.SelectionStart = selectionStart();
        field.SelectionLength = static_cast<int>(selectedText().size());
    } else {
        field.SelectionStart = cursorPosition();
    }
    bool focusMaterial = false;
    const KeyOutcome outcome = model_.Table().FilterKey(index_.row() + 1, ColumnAt(index_.column()),
                                                        typed, field, &focusMaterial);
    event->accept();
    if (!outcome.Accepted) {
        return; // a refused key leaves no trace
    }
    setText(Latin1(outcome.Field.Text));
    setCursorPosition(outcome.Field.SelectionStart);
    setModified(true); // the model's refresh of this row leaves a typed text alone
    model_.ChangeCell(index_, text());
}

// --- Delegate

PipeCellDelegate::PipeCellDelegate(PipeTableModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model) {}

QWidget* PipeCellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                        const QModelIndex& index) const {
    model_.Undo().Begin(model_.Table().Model());
    auto* editor = new PipeCellEditor(model_, index, parent);
    editor->installEventFilter(const_cast<PipeCellDelegate*>(this));
    return editor;
}

void PipeCellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* field = static_cast<QLineEdit*>(editor);
    if (field->isModified()) {
        return;
    }
    field->setText(index.data(Qt::EditRole).toString());
    field->selectAll();
}

void PipeCellDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                    const QModelIndex& index) const {
    model->setData(index, static_cast<QLineEdit*>(editor)->text(), Qt::EditRole);
}

void PipeCellDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
    model_.Undo().Commit(model_.Table().Model());
    QStyledItemDelegate::destroyEditor(editor, index);
}

bool PipeCellDelegate::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            return true; // Enter does nothing in a field
        }
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            auto* editor = static_cast<QWidget*>(object);
            emit commitData(editor);
            emit closeEditor(editor, NoHint);
            emit MoveRow(key == Qt::Key_Up ? -1 : 1);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

} // namespace quench::gui
