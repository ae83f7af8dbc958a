#pragma once

// What every section of a report shares: the canvas, the options, the project's tables in the
// report's units, the discharge words, and the page frame and titles drawn on each page.

#include "core/formats.h"
#include "core/project.h"
#include "core/units.h"
#include "library/pipe_library.h"
#include "reports/report_canvas.h"
#include "reports/report_options.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

// The texts of the page frame that do not come from the project.
struct ReportFrame {
    std::string ProjectFileName; // with ".qnw"
    std::string CompanyLine;     // the user's company, right of the second header line
    DateTime Printed;            // the date and time of the footer
};

class ReportDocument {
public:
    ReportDocument(ReportCanvas& canvas, const ReportOptions& options, const ReportFrame& frame,
                   const Project& project, MeasureSystem system);

    ReportCanvas& Canvas;
    const ReportOptions& Options;
    const ReportFrame& Frame;
    const Project& Model; // US tables, the typed rows, and the SI copies when SI is shown
    const MeasureSystem System;
    const PipeLibrary* Library = nullptr;
    std::filesystem::path PumpDatabase;

    // "Sprinkler" or "Hose", and "Non-Sprinkler" or "Fixed".
    std::string Word;
    std::string Word2;
    // " (Inputs may have changed)" when the inputs changed since the last run, else empty.
    std::string OutputSuffix;
    // The area group of the peak sections; empty for the overall form.
    std::string PeakGroup;

    bool SI() const { return System == MeasureSystem::SI; }
    std::string_view Unit(std::string_view us, std::string_view si) const { return SI() ? si : us; }
    // A stored US value in the report's units.
    double Shown(UnitKind kind, double usValue) const;

    // The tables in the report's units.
    const ::quench::SystemData& SystemData() const;
    const ::quench::CalculationData& CalculationData() const;
    const ::quench::NodeRecord& Node(int row) const;
    const ::quench::CalcPipeRecord& Pipe(int row) const;
    const ::quench::PipeResultRecord& Result(int row) const;

    // The rows in use of the three tables, within their capacity.
    int NodeCount() const;
    int PipeCount() const;
    int ResultCount() const;

    // A node number as typed: the supply's internal 10000 is InflowNode.
    std::string NodeText(double number) const;
    std::string NodeText(std::string_view text) const;

    // A project text (8-bit) as report text.
    static std::string ProjectText(std::string_view text);

    // The frame of a page: header, second header line, footer; the body font afterwards.
    void DrawFrame();
    // A main title on the band of the main header colour, and a secondary title below it.
    void MainTitle(std::string_view text);
    void SecondaryTitle(std::string_view text);
    // The first page of a section: its frame and its titles.
    void BeginSection(std::string_view main, std::string_view secondary);

    // Table rows in a format; the cell form keeps texts with "|" or ";" whole.
    void Rows(std::string_view format, const std::vector<TableRow>& rows);
    void Heading(std::string_view format, std::string_view heading);

    // What a page started for a row that did not fit shows before the row: the frame, the
    // titles and the headings. Cleared at the end of each section.
    void OnPageBreak(std::function<void()> handler);

private:
    void Band(std::string_view text, const ReportFont& font);
    void UseBody();
};

// A number through a picture, as every cell of the reports is written. A value that rounds to
// zero prints without a sign: "-0.00000" would tell a direction that the figure does not have.
std::string Cell(double value, std::string_view picture);

} // namespace quench
