#pragma once

// A window holding a scrolling table, sized so that the table shows a given number of whole rows:
// the number of rows a user asks to see at once. The window's other parts keep their size.

class QTableView;
class QWidget;

namespace quench::gui {

// The rows the table's viewport shows in full.
int WholeRowsShown(const QTableView& table);

// Grows or shrinks the laid-out window (a top-level window or an MDI child holding the table) so
// that the table shows `rows` whole rows, but never beyond `largestHeight` nor below the least
// height its contents need. A maximised window keeps its size.
void FitWindowToTableRows(QWidget& window, const QTableView& table, int rows, int largestHeight);

} // namespace quench::gui
