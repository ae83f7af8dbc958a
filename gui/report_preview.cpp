#include "gui/report_preview.h"

#include "gui/qt_text.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolBar>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

constexpr int ZoomSteps[] = {25, 50, 75, 100, 125, 150, 175, 200};

} // namespace

ReportPreview::ReportPreview(ReportSource source, ReportOptions options, QWidget* parent)
    : QDialog(parent), source_(std::move(source)), options_(std::move(options)),
      view_(new ReportPageView), scroll_(new QScrollArea) {
    setObjectName("frmPreview");
    setWindowTitle("Print Preview");
    setModal(false);
    scroll_->setWidget(view_);
    scroll_->setWidgetResizable(false);
    scroll_->setAlignment(Qt::AlignHCenter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    BuildToolbar();
    layout->addWidget(findChild<QToolBar*>());
    layout->addWidget(scroll_, 1);
    status_ = new QLabel;
    status_->setObjectName("lblStatus");
    layout->addWidget(status_);
    resize(900, 1000);
    outcome_ = source_.Build(document_, options_, true);
    view_->SetDocument(&document_);
    view_->SetZoom(75);
    FillReportList();
    ShowPage(1);
}

void ReportPreview::BuildToolbar() {
    auto* toolbar = new QToolBar(this);
    const auto command = [&](const QString& key, const QString& caption) {
        QAction* action = toolbar->addAction(caption);
        action->setObjectName(key);
        connect(action, &QAction::triggered, this, [this, key] { Dispatch(key); });
    };
    command("ToolPreviousPage", "< Previous");
    command("ToolNextPage", "Next >");
    pageNumber_ = new QSpinBox;
    pageNumber_->setObjectName("ToolPageNumber");
    pageNumber_->setMinimum(1);
    toolbar->addWidget(pageNumber_);
    connect(pageNumber_, &QSpinBox::valueChanged, this, [this](int page) { ShowPage(page); });
    command("ToolPrintPage", "Print Page");
    zoom_ = new QComboBox;
    zoom_->setObjectName("ToolZoom");
    for (const int step : ZoomSteps) {
        zoom_->addItem(QString::number(step) + "%", step);
    }
    zoom_->setCurrentIndex(2);
    toolbar->addWidget(zoom_);
    connect(zoom_, &QComboBox::currentIndexChanged, this,
            [this](int) { view_->SetZoom(zoom_->currentData().toInt()); });
    reports_ = new QComboBox;
    reports_->setObjectName("ToolReportName");
    reports_->setMinimumContentsLength(22);
    toolbar->addWidget(reports_);
    connect(reports_, &QComboBox::activated, this,
            [this](int index) { ShowPage(reports_->itemData(index).toInt()); });
    command("ToolCalculate", "Calculate");
    command("ToolClose", "Close");
}

void ReportPreview::FillReportList() {
    const QSignalBlocker blocker(reports_);
    reports_->clear();
    const auto& names = ReportSectionNames();
    for (std::size_t section = 0; section < names.size(); ++section) {
        const int page = outcome_.SectionPages[section];
        if (page > 0) {
            reports_->addItem(Text(names[section].Caption), page);
        }
    }
    pageNumber_->setMaximum(std::max(1, PageCount()));
    status_->setText(StatusText());
}

QString ReportPreview::StatusText() const {
    const QString pages = QString("Pages: %1").arg(PageCount());
    // A new user's settings have every section off: the blank page says where to choose them.
    if (reports_->count() == 0) {
        return pages + "  (no report section is chosen: tick them in Report Options)";
    }
    return pages;
}

void ReportPreview::ShowPage(int page) {
    const int shown = std::clamp(page, 1, std::max(1, PageCount()));
    view_->SetPage(shown);
    const QSignalBlocker blocker(pageNumber_);
    pageNumber_->setValue(shown);
    // The report list names the section the page belongs to.
    const QSignalBlocker listBlocker(reports_);
    for (int entry = reports_->count() - 1; entry >= 0; --entry) {
        if (reports_->itemData(entry).toInt() <= shown) {
            reports_->setCurrentIndex(entry);
            break;
        }
    }
    scroll_->ensureVisible(0, 0);
}

void ReportPreview::Rebuild(const ReportOptions& options) {
    options_ = options;
    const int page = Page();
    outcome_ = source_.Build(document_, options_, false);
    view_->SetDocument(&document_);
    FillReportList();
    ShowPage(page);
}

void ReportPreview::Dispatch(const QString& key) {
    if (key == "ToolPreviousPage") {
        ShowPage(Page() - 1);
    } else if (key == "ToolNextPage") {
        ShowPage(Page() + 1);
    } else if (key == "ToolPrintPage" && PrintPage) {
        PrintPage(document_, Page());
    } else if (key == "ToolCalculate" && Calculate) {
        Calculate();
        Rebuild(options_);
    } else if (key == "ToolClose") {
        close();
    }
}

} // namespace quench::gui
