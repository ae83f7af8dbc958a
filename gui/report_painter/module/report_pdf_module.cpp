// The entry of the PDF writer module (see report_pdf_module.h).

#include "gui/report_painter/report_pdf_module.h"

#include "gui/report_painter/report_pdf.h"

#include <exception>
#include <string>

// Nothing is thrown out of the module: the program and the module may unwind with runtimes of
// their own.
extern "C" bool QuenchWriteReportPdf(const quench::ReportInput& input,
                                     const quench::ReportOptions& options,
                                     const std::filesystem::path& file, std::string* error) {
    try {
        return quench::WriteReportPdf(input, options, file, nullptr, error);
    } catch (const std::exception& failure) {
        if (error != nullptr) {
            *error = std::string("the PDF writer stopped: ") + failure.what();
        }
    } catch (...) {
        if (error != nullptr) {
            *error = "the PDF writer stopped";
        }
    }
    return false;
}
