#pragma once

// Projects for the report tests, typed through the network builders and calculated, and their
// reports rendered through the plain-text canvas with a fixed date so that a render is stable.

#include "reports/build_report.h"
#include "reports/text_canvas.h"
#include "tests/support/network_builder.h"
#include "tests/support/network_shapes.h"

#include <memory>
#include <string>
#include <vector>

namespace quench::testing {

inline ReportOptions EverySection() {
    ReportOptions options = DefaultReportOptions();
    options.Sections.fill(true);
    return options;
}

inline DateTime FixedDate() {
    return DateTime{2026, 11, 25, 14, 30, 0};
}

struct Rendered {
    std::string Text;
    ReportOutcome Outcome;
    ScriptedDialogs Dialogs;
};

inline std::unique_ptr<Rendered> Render(const Project& project, const ReportOptions& options,
                                        std::optional<MeasureSystem> units = std::nullopt,
                                        const std::string& fileName = "Office.qnw") {
    auto rendered = std::make_unique<Rendered>();
    ReportInput input(project);
    input.Library = &DefaultLibrary();
    input.ProjectFileName = fileName;
    input.CompanyLine = "Sprinkler Design Co.";
    input.Printed = FixedDate();
    input.Units = units;
    input.Dialogs = &rendered->Dialogs;
    TextCanvas canvas;
    rendered->Outcome = BuildReport(canvas, input, options);
    rendered->Text = canvas.Result();
    return rendered;
}

// A project with its general data filled as a designer would.
inline std::unique_ptr<Project> DescribedProject() {
    auto project = std::make_unique<Project>();
    ResetProject(*project);
    project->ProjectData.Title = "Warehouse Addition";
    project->ProjectData.DesignedBy = "J. Engineer";
    project->ProjectData.Date = "11/25/2026";
    project->ProjectData.CodeReference = "NFPA 13";
    project->ProjectData.ApprovingAgency = "City Fire Marshal";
    project->SystemData.HazardDescription = "Ordinary Hazard Group 1";
    project->SystemData.AreaOfSprinklerOperation = 1500;
    project->SystemData.MaximumAreaPerSprinkler = 130;
    project->SystemData.MinimumDesiredDensity = 0.15f;
    project->SystemData.DefaultKFactor = 5.6f;
    project->SystemData.TestStaticPressure = 80;
    project->SystemData.TestResidualPressure = 60;
    project->SystemData.TestFlowRate = 1000;
    return project;
}

// A calculated branch line: four K 5.6 sprinklers on 1" pipe, fed from node 10.
inline std::unique_ptr<Project> CalculatedBranchLine() {
    auto project = DescribedProject();
    NetworkBuilder network(*project);
    BuildBranchLine(network);
    network.DemandMode(7, 0.1f);
    CalculationRun run(*project);
    return project;
}

} // namespace quench::testing

namespace quench::testing {

// The lines of a render.
inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        lines.push_back(text.substr(start, end - start));
        if (end == std::string::npos) {
            break;
        }
        start = end + 1;
    }
    return lines;
}

inline int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t place = text.find(part); place != std::string::npos;
         place = text.find(part, place + part.size())) {
        ++count;
    }
    return count;
}

} // namespace quench::testing
