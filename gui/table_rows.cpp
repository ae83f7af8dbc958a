#include "gui/table_rows.h"

#include <algorithm>

#include <QHeaderView>
#include <QTableView>
#include <QWidget>

namespace quench::gui {

namespace {

int RowHeight(const QTableView& table) {
    return std::max(1, table.verticalHeader()->defaultSectionSize());
}

} // namespace

int WholeRowsShown(const QTableView& table) {
    return table.viewport()->height() / RowHeight(table);
}

void FitWindowToTableRows(QWidget& window, const QTableView& table, int rows, int largestHeight) {
    if (window.isMaximized() || rows < 1) {
        return;
    }
    // The viewport takes every pixel the window gains or loses: the toolbar, the labels and the
    // header stay as they are.
    const int change = rows * RowHeight(table) - table.viewport()->height();
    // Never below what the window's other pages need (a tab with more fields than the table).
    const int least = std::max(window.minimumHeight(), window.minimumSizeHint().height());
    const int height = std::clamp(window.height() + change, least, std::max(least, largestHeight));
    window.resize(window.width(), height);
}

} // namespace quench::gui
