#include "gui/report_commands.h"

#include "gui/report_options_dialog.h"
#include "gui/report_preview.h"

#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>

namespace quench::gui {

ReportCommands::ReportCommands(QWidget* frame, std::function<ReportSource()> source,
                               IniFileHandler settings)
    : QObject(frame), frame_(frame), source_(std::move(source)), settings_(std::move(settings)) {}

ReportCommands::~ReportCommands() = default;

bool ReportCommands::IsReportCommand(const QString& key) {
    return key == "ToolReportOptions" || key == "ToolPreview" || key == "ToolPrint" ||
           key == "ToolPrinterSetup";
}

void ReportCommands::Dispatch(const QString& key) {
    if (key == "ToolReportOptions") {
        OpenOptions();
    } else if (key == "ToolPreview") {
        OpenPreview();
    } else if (key == "ToolPrint") {
        Print();
    } else if (key == "ToolPrinterSetup") {
        PrinterSetup();
    }
}

void ReportCommands::OpenOptions() {
    ReportOptionsDialog dialog(source_(), settings_, frame_);
    if (dialog.exec() == QDialog::Accepted) {
        RefreshPreview();
    }
}

void ReportCommands::OpenPreview() {
    if (preview_ != nullptr) {
        preview_->Rebuild(LoadReportOptions(settings_));
        preview_->raise();
        preview_->activateWindow();
        return;
    }
    preview_ = new ReportPreview(source_(), LoadReportOptions(settings_), frame_);
    preview_->setAttribute(Qt::WA_DeleteOnClose);
    preview_->PrintPage = [this](const PaintedDocument& document, int page) {
        PrintPages(document, page, page);
    };
    preview_->Calculate = [this] {
        if (Calculate) {
            Calculate();
        }
    };
    preview_->show();
}

void ReportCommands::RefreshPreview() {
    if (preview_ != nullptr) {
        preview_->Rebuild(LoadReportOptions(settings_));
    }
}

void ReportCommands::Print() {
    const ReportOptions options = LoadReportOptions(settings_);
    PaintedDocument document;
    source_().Build(document, options, true);
    const PageRange range = PrintRange(options, document.PageCount());
    PrintPages(document, range.First, range.Last);
}

void ReportCommands::PrintPages(const PaintedDocument& document, int first, int last) {
    if (!printer_) {
        printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    printer_->setFromTo(first, last);
    QPrintDialog dialog(printer_.get(), frame_);
    dialog.setMinMax(1, std::max(1, document.PageCount()));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    int from = first;
    int to = last;
    if (printer_->printRange() == QPrinter::PageRange) {
        from = printer_->fromPage();
        to = printer_->toPage();
    } else if (printer_->printRange() == QPrinter::AllPages) {
        from = 1;
        to = document.PageCount();
    }
    printer_->setFullPage(true);
    PaintPages(document, *printer_, from, to);
}

void ReportCommands::PrinterSetup() {
    if (!printer_) {
        printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    QPageSetupDialog dialog(printer_.get(), frame_);
    dialog.exec();
}

} // namespace quench::gui
