#pragma once

// The report options of the section "ReportOptions" of the settings file: which sections print,
// the three fonts and their colours, the footer, the page range, the line spacing, the logo.
// Check boxes are stored as 1 or 0, font flags as "True"/"False", colours as the decimal number
// of blue, green and red bytes (red lowest), sizes and page numbers as decimal texts.

#include "core/settings.h"
#include "reports/report_canvas.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quench {

// The sections in the order they print, by their check box keys.
enum class ReportSection {
    TitlePage,
    GeneralProjectData,
    InputNodeData,
    InputPipeData,
    InputPumpData,
    OutputNodeGroup,
    OutputPipeData,
    OutputSprinkler,
    OutputSummary,
    HydraulicGraph,
};

inline constexpr int ReportSectionCount = 10;

struct ReportSectionName {
    ReportSection Section;
    std::string_view Key;     // "chkTitlePage"
    std::string_view Caption; // the report list of the preview: "Title Page Reports"
    std::string_view Word;    // the command line's name: "title"
};

// The ten sections in print order.
const std::array<ReportSectionName, ReportSectionCount>& ReportSectionNames();
// A section by its command line word; nothing for another word.
std::optional<ReportSection> SectionFromWord(std::string_view word);

struct ReportFont {
    FontSpec Font;
    Rgb Band; // the colour behind the text (lblMainHeader, lblSecondaryHeader, lblBody)
    Rgb Text; // the text's colour (lblMainHeaderText, ...)

    bool operator==(const ReportFont&) const = default;
};

struct ReportOptions {
    std::array<bool, ReportSectionCount> Sections{};
    bool InputPipeFittingData = false; // kept and shown; no section of its own
    ReportFont MainHeader;
    ReportFont SecondaryHeader;
    ReportFont Body;
    bool PageNumbers = true;
    bool Date = true;
    bool FileName = true;
    int StartingPageNo = 0; // 0: none given
    int EndingPageNo = 0;
    int LineSpacing = 100; // per cent
    bool ColorGraphs = true;
    bool AutoRefresh = true;
    bool PrintLogo = false;
    std::string TitlePageLogo;

    bool On(ReportSection section) const { return Sections[static_cast<int>(section)]; }
    void Set(ReportSection section, bool on) { Sections[static_cast<int>(section)] = on; }
    bool AnySection() const;

    bool operator==(const ReportOptions&) const = default;
};

// Every default of the options, as a deleted settings file gives them.
ReportOptions DefaultReportOptions();

// "Show Default": the fonts and colours of the defaults, the rest as it stands.
void ShowDefaultFonts(ReportOptions& options);

ReportOptions LoadReportOptions(const IniFileHandler& settings);
// False when the settings file cannot be written.
bool SaveReportOptions(const IniFileHandler& settings, const ReportOptions& options);

// A colour as the settings store it, and back; nothing for a text that is no colour.
std::string ColorText(Rgb color);
std::optional<Rgb> ColorFromText(std::string_view text);

// The page number printed on a page of the document.
int PrintedPageNumber(const ReportOptions& options, int documentPage);

// The pages to print: from the starting page to the ending page when the end is above the start,
// below the page count and above 0; otherwise to the last page. The start is at least 1.
struct PageRange {
    int First = 1;
    int Last = 1;
};
PageRange PrintRange(const ReportOptions& options, int pageCount);

} // namespace quench
