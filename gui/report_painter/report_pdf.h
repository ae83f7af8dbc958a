#pragma once

// The report as a PDF file, for the command line and the desktop alike. No window is needed: when
// no Qt application runs, one is made on the offscreen platform (unless QT_QPA_PLATFORM names
// another), since fonts need a GUI application but not a display.

#include "reports/build_report.h"

#include <filesystem>
#include <string>

namespace quench {

void EnsureReportApplication();

// Builds the report and writes it to the file through a temporary file and a rename, so that a
// failed write leaves no half-written file. False with the reason in error.
bool WriteReportPdf(const ReportInput& input, const ReportOptions& options,
                    const std::filesystem::path& file, ReportOutcome* outcome = nullptr,
                    std::string* error = nullptr);

} // namespace quench
