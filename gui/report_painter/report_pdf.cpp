#include "gui/report_painter/report_pdf.h"

#include "core/atomic_write.h"
#include "gui/report_painter/painted_document.h"

#include <cstdlib>
#include <memory>

#include <QBuffer>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>

namespace quench {

namespace {

constexpr int PdfResolution = 600; // dots per inch of the PDF's coordinate space

} // namespace

void EnsureReportApplication() {
    if (QCoreApplication::instance() != nullptr) {
        return;
    }
    if (std::getenv("QT_QPA_PLATFORM") == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // The application lives as long as the program; Qt keeps the arguments it is given.
    static int argumentCount = 1;
    static char name[] = "quench";
    static char* arguments[] = {name, nullptr};
    // Start-up notes of the platform (such as a missing XDG_RUNTIME_DIR) are no concern of a
    // report on the command line.
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    static std::unique_ptr<QGuiApplication> application =
        std::make_unique<QGuiApplication>(argumentCount, arguments);
    qInstallMessageHandler(previous);
}

bool WriteReportPdf(const ReportInput& input, const ReportOptions& options,
                    const std::filesystem::path& file, ReportOutcome* outcome, std::string* error) {
    EnsureReportApplication();
    PaintedDocument document;
    PaintCanvas canvas(document);
    const ReportOutcome built = BuildReport(canvas, input, options);
    if (outcome != nullptr) {
        *outcome = built;
    }
    QByteArray bytes;
    {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setCreator("Quench");
        writer.setTitle(QString::fromStdString(input.ProjectFileName));
        writer.setResolution(PdfResolution);
        writer.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait,
                                         QMarginsF(0, 0, 0, 0)));
        PaintPages(document, writer, 1, document.PageCount());
    }
    return WriteFileAtomically(file, std::string_view(bytes.constData(), bytes.size()), error);
}

} // namespace quench
