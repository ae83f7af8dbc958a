// The entry of the PDF writer module (see report_pdf_module.h).

#include "gui/report_painter/report_pdf_module.h"

#include "gui/report_painter/report_pdf.h"

extern "C" bool QuenchWriteReportPdf(const quench::ReportInput& input,
                                     const quench::ReportOptions& options,
                                     const std::filesystem::path& file, std::string* error) {
    return quench::WriteReportPdf(input, options, file, nullptr, error);
}
