#pragma once

// The pipe table as a Qt item model: one row per PipeRecord row, one column per field of a row
// editor. It holds no copy of the data; every cell is read through ShowRow and every edit goes to
// the PipeTable operation a test calls. The cells' editors apply the field's key filter.

#include "entry/pipe_table.h"
#include "entry/undo_stack.h"

#include <QAbstractTableModel>
#include <QLineEdit>
#include <QStyledItemDelegate>

namespace quench::gui {

class PipeTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    PipeTableModel(PipeTable& table, UndoStack& undo, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // A whole text left in a cell (the leaving rule); used by the delegate and by picks.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    PipeTable& Table() { return table_; }
    UndoStack& Undo() { return undo_; }

    // Each accepted change while a cell is typed in: the row saved, node data spread.
    void ChangeCell(const QModelIndex& index, const QString& text);
    // The whole table again, as after a command.
    void Reload();
    // The rows an operation changed.
    void RowsChanged(const std::vector<int>& rows);

signals:
    void Edited(); // labels and caption follow
    void PumpScreenWanted();

private:
    void After(const PipeEdit& edit);
    // A painted row asks for each of its cells and roles: the row is formatted once.
    const RowView& View(int row) const;
    void Forget() const { cachedRow_ = 0; }

    PipeTable& table_;
    UndoStack& undo_; // shared with the node editor: one history of the tables
    mutable int cachedRow_ = 0;
    mutable RowView cached_;
};

// The editor of one cell: every key a capital through the field's key filter; Enter does nothing.
class PipeCellEditor : public QLineEdit {
    Q_OBJECT

public:
    PipeCellEditor(PipeTableModel& model, const QModelIndex& index, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    PipeTableModel& model_;
    QPersistentModelIndex index_;
};

class PipeCellDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit PipeCellDelegate(PipeTableModel& model, QObject* parent = nullptr);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

signals:
    // Up or Down pressed in an editor: the same field of the row above or below.
    void MoveRow(int step) const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    PipeTableModel& model_;
};

} // namespace quench::gui
