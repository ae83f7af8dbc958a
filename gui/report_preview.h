#pragma once

// frmPreview: the report's pages with a toolbar: previous and next page, the page number, print
// this page, close, the zoom list, the report list that jumps to the first page of a section, and
// Calculate. The status field shows the number of pages.

#include "gui/report_page_view.h"
#include "gui/report_source.h"

#include <functional>

#include <QDialog>

class QComboBox;
class QLabel;
class QScrollArea;
class QSpinBox;

namespace quench::gui {

class ReportPreview : public QDialog {
    Q_OBJECT

public:
    ReportPreview(ReportSource source, ReportOptions options, QWidget* parent = nullptr);

    // The document again from the project and the options (after a run, a change of units or
    // of the options).
    void Rebuild(const ReportOptions& options);
    // The commands of the toolbar by their keys ("ToolNextPage", ...).
    void Dispatch(const QString& key);

    int PageCount() const { return document_.PageCount(); }
    int Page() const { return view_->Page(); }
    void ShowPage(int page);
    const ReportOutcome& Outcome() const { return outcome_; }
    QComboBox* ReportList() const { return reports_; }
    QComboBox* ZoomList() const { return zoom_; }
    QString StatusText() const;

    // What Print Page and Calculate do; the frame supplies them.
    std::function<void(const PaintedDocument&, int page)> PrintPage;
    std::function<void()> Calculate;

private:
    void BuildToolbar();
    void FillReportList();

    ReportSource source_;
    ReportOptions options_;
    PaintedDocument document_;
    ReportOutcome outcome_;
    ReportPageView* view_;
    QScrollArea* scroll_;
    QSpinBox* pageNumber_ = nullptr;
    QComboBox* zoom_ = nullptr;
    QComboBox* reports_ = nullptr;
    QLabel* status_ = nullptr;
};

} // namespace quench::gui
