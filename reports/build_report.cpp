#include "reports/build_report.h"

#include "calc/prepare_network.h"
#include "core/si_tables.h"
#include "core/text.h"
#include "reports/report_sections.h"

#include <memory>

namespace quench {

namespace {

using Section = void (*)(ReportDocument&);

constexpr std::array<Section, ReportSectionCount> Sections{
    TitlePageSection,     GeneralProjectDataSection, NodeInputSection,  PipeInputSection,
    PumpInputSection,     NodeGroupingsSection,      PipeOutputSection, SprinklerOutputSection,
    OutputSummarySection, HydraulicGraphSection,
};

// The report's own copy of the project: the network tables made again from the typed rows when
// the inputs changed, and the SI copies when SI is shown.
std::unique_ptr<Project> ReportTables(const ReportInput& input, MeasureSystem system) {
    auto copy = std::make_unique<Project>(input.Project);
    if (IsTrue(copy->InputChanged) && input.Library != nullptr) {
        PrepareNetwork(*copy, *input.Library);
    }
    if (system == MeasureSystem::SI) {
        BuildSITables(*copy);
    }
    return copy;
}

} // namespace

std::string DischargeWord(const SystemData& system) {
    return Trim(system.PrimaryDischargeName) == "Hose" ? "Hose" : "Sprinkler";
}

std::string FixedFlowWord(const SystemData& system) {
    return DischargeWord(system) == "Hose" ? "Fixed" : "Non-Sprinkler";
}

std::string PeakGroup(const Project& project) {
    if (!IsTrue(project.CalculationData.UseAutomaticPeaking)) {
        return "";
    }
    const int nodes =
        std::clamp<int>(project.NumberOfNodes, 0, static_cast<int>(project.NodeRecord.size()) - 1);
    for (int row = 1; row <= nodes; ++row) {
        const NodeRecord& node = project.NodeRecord[static_cast<std::size_t>(row)];
        const std::string group = Trim(node.AreaGroup);
        if (node.Discharge > 0 && !group.empty()) {
            return group;
        }
    }
    return "";
}

ReportOutcome BuildReport(ReportCanvas& target, const ReportInput& input,
                          const ReportOptions& options) {
    const bool changed = IsTrue(input.Project.InputChanged);
    if (changed && input.Dialogs != nullptr) {
        input.Dialogs->ShowMessage(MessageStyle::Warning, report_texts::InputsChangedTitle,
                                   report_texts::InputsChanged);
    }
    const MeasureSystem system =
        input.Units.value_or(input.Project.UnitSystem == 1 ? MeasureSystem::SI : MeasureSystem::US);
    const std::unique_ptr<Project> tables = ReportTables(input, system);

    // The company line is the designer's company of the project unless the caller gives one.
    const std::string company =
        input.CompanyLine.empty() ? input.Project.CompanyData.Name : input.CompanyLine;
    ReportFrame frame{input.ProjectFileName, company, input.Printed};
    ReportDocument document(target, options, frame, *tables, system);
    document.Library = input.Library;
    document.PumpDatabase = input.PumpDatabase;
    document.Word = DischargeWord(tables->SystemData);
    document.Word2 = FixedFlowWord(tables->SystemData);
    document.OutputSuffix = changed ? std::string(report_texts::InputsChangedSuffix) : "";
    document.PeakGroup = Latin1ToUtf8(PeakGroup(*tables));

    target.LineSpacing = options.LineSpacing;
    target.StartDoc();
    target.HdrFont = FontSpec{"Arial", 9.75, false, false};
    target.PenColor = Rgb{};
    ReportOutcome outcome;
    bool printed = false;
    for (int section = 0; section < ReportSectionCount; ++section) {
        if (!options.Sections[static_cast<std::size_t>(section)]) {
            continue;
        }
        if (printed) {
            target.NewPage();
        }
        printed = true;
        outcome.SectionPages[static_cast<std::size_t>(section)] = target.PageCount();
        target.SetPageHandler([&document] { document.DrawFrame(); });
        Sections[static_cast<std::size_t>(section)](document);
        target.SetPageHandler(nullptr);
    }
    target.Action(3);
    outcome.Pages = target.PageCount();
    return outcome;
}

} // namespace quench
