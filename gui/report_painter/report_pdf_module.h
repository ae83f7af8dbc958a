#pragma once

// The PDF writer as a module that the command line loads only when a report asks for PDF, so that
// every other command starts without the Qt libraries. No Qt header here: the command line
// includes this.

#include "reports/build_report.h"

#include <filesystem>
#include <string>

namespace quench {

// The module's file, beside the program or in lib/quench beside its bin folder.
inline constexpr const char* ReportPdfModuleFile = "quench-report-pdf.so";
inline constexpr const char* ReportPdfFunctionName = "QuenchWriteReportPdf";

// WriteReportPdf of report_pdf.h, as the module exports it.
using WriteReportPdfFunction = bool (*)(const ReportInput& input, const ReportOptions& options,
                                        const std::filesystem::path& file, std::string* error);

} // namespace quench
