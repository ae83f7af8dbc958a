#pragma once

// The sections of the report, each drawn on the document from its first page on; the caller
// starts the page. Each leaves no page handler behind.

#include "reports/report_document.h"

#include <map>
#include <utility>

namespace quench {

void TitlePageSection(ReportDocument& document);
void GeneralProjectDataSection(ReportDocument& document);
void NodeInputSection(ReportDocument& document);
void PipeInputSection(ReportDocument& document);
void PumpInputSection(ReportDocument& document);
void NodeGroupingsSection(ReportDocument& document);
void PipeOutputSection(ReportDocument& document);
void SprinklerOutputSection(ReportDocument& document);
void OutputSummarySection(ReportDocument& document);
void HydraulicGraphSection(ReportDocument& document);

// "Quench " + word + " Input Data", and the output form with the suffix of changed inputs.
std::string InputTitle(const ReportDocument& document);
std::string OutputTitle(const ReportDocument& document);

// The typed rows of the pipes of the calculated tables, found by their two nodes either way
// round (the supply's 10000 is InflowNode).
class TypedRows {
public:
    explicit TypedRows(const Project& project);

    // The first active row with both nodes joining the two; 0 when there is none.
    int Find(double begin, double end) const;
    int Find(std::string_view begin, std::string_view end) const;

private:
    double Typed(double number) const;

    const Project& project_;
    std::map<std::pair<double, double>, int> rows_;
};

} // namespace quench
