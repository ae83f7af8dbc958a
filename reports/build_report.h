#pragma once

// BuildReport: the whole report in one pass over a ReportCanvas, the sections of the options in
// their fixed order, each after the first on a new page.

#include "core/dialogs.h"
#include "core/formats.h"
#include "core/project.h"
#include "core/units.h"
#include "library/pipe_library.h"
#include "reports/report_canvas.h"
#include "reports/report_options.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string>

namespace quench {

namespace report_texts {
inline constexpr std::string_view InputsChangedTitle = "Warning!  Inputs changed";
inline constexpr std::string_view InputsChanged =
    "Input data has been changed since calculations were last run.  The contents of this report "
    "may not match your inputs.";
inline constexpr std::string_view InputsChangedSuffix = " (Inputs may have changed)";
} // namespace report_texts

struct ReportInput {
    explicit ReportInput(const ::quench::Project& project) : Project(project) {}

    // The open project; the report reads it and never changes it.
    const ::quench::Project& Project;
    // The library, for material names and for the network tables of changed inputs; the
    // fire pump database, for the pump's name. Either may be missing.
    const PipeLibrary* Library = nullptr;
    std::filesystem::path PumpDatabase;
    // The project's file name as the footer and the general data show it ("Office.qnw").
    std::string ProjectFileName;
    // Right of the second header line; empty takes the company of the project's general data.
    std::string CompanyLine;
    DateTime Printed;
    // The project's UnitSystem unless given.
    std::optional<MeasureSystem> Units;
    // The warning of changed inputs goes here; none shows nothing.
    ::quench::Dialogs* Dialogs = nullptr;
};

struct ReportOutcome {
    int Pages = 0;
    // The page on which each section starts, 0 for a section not printed, in the order of
    // ReportSectionNames().
    std::array<int, ReportSectionCount> SectionPages{};
};

ReportOutcome BuildReport(ReportCanvas& target, const ReportInput& input,
                          const ReportOptions& options);

// The discharge word of a project: "Hose" when PrimaryDischargeName trimmed is "Hose", else
// "Sprinkler"; and its fixed-flow word, "Fixed" or "Non-Sprinkler".
std::string DischargeWord(const SystemData& system);
std::string FixedFlowWord(const SystemData& system);

// The area group of the peak sections: with automatic peaking, the group of the first flowing
// node that has one; empty otherwise.
std::string PeakGroup(const Project& project);

} // namespace quench
