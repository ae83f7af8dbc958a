#pragma once

// The report commands of the main frame: Report Options, Print Preview, Print and Printer Setup.
// One printer is kept for the session, so that Printer Setup's choices hold for the next Print.

#include "core/settings.h"
#include "gui/report_source.h"

#include <functional>
#include <memory>

#include <QObject>
#include <QPointer>

class QPrinter;
class QWidget;

namespace quench::gui {

class ReportOptionsDialog;
class ReportPreview;

class ReportCommands : public QObject {
    Q_OBJECT

public:
    ReportCommands(QWidget* frame, std::function<ReportSource()> source, IniFileHandler settings);
    ~ReportCommands() override;

    static bool IsReportCommand(const QString& key);
    void Dispatch(const QString& key);

    // The open preview, rebuilt after a run or a change of units; null when none is open.
    ReportPreview* Preview() const { return preview_; }
    void RefreshPreview();
    // What the preview's Calculate runs.
    std::function<void()> Calculate;

private:
    void OpenOptions();
    void OpenPreview();
    void Print();
    void PrinterSetup();
    // Pages first to last of a document on the printer, through the print dialog.
    void PrintPages(const PaintedDocument& document, int first, int last);

    QWidget* frame_;
    std::function<ReportSource()> source_;
    IniFileHandler settings_;
    std::unique_ptr<QPrinter> printer_;
    QPointer<ReportPreview> preview_;
};

} // namespace quench::gui
