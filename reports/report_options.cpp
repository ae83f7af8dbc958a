#include "reports/report_options.h"

#include "core/formats.h"
#include "core/settings_keys.h"
#include "core/text.h"

#include <algorithm>
#include <map>

namespace quench {

namespace {

using namespace std::string_view_literals;

constexpr std::array<ReportSectionName, ReportSectionCount> Names{{
    {ReportSection::TitlePage, "chkTitlePage"sv, "Title Page Reports"sv, "title"sv},
    {ReportSection::GeneralProjectData, "chkGeneralProjectData"sv, "General Project Data"sv,
     "general"sv},
    {ReportSection::InputNodeData, "chkInputNodeData"sv, "Input Node Data"sv, "nodes"sv},
    {ReportSection::InputPipeData, "chkInputPipeData"sv, "Input Pipe Data"sv, "pipes"sv},
    {ReportSection::InputPumpData, "chkInputPumpData"sv, "Input Pump Curve Data"sv, "pump"sv},
    {ReportSection::OutputNodeGroup, "chkOutputNodeGroup"sv, "Output Node Group"sv, "groups"sv},
    {ReportSection::OutputPipeData, "chkOutputPipeData"sv, "Output Pipe Data"sv, "pipe-output"sv},
    {ReportSection::OutputSprinkler, "chkOutputSprinkler"sv, "Output Sprinkler"sv, "sprinklers"sv},
    {ReportSection::OutputSummary, "chkOutputSummary"sv, "Output Summary"sv, "summary"sv},
    {ReportSection::HydraulicGraph, "chkHydraulicGraph"sv, "Hydraulic Graph"sv, "graph"sv},
}};

constexpr std::string_view FittingKey = "chkInputPipeFittingData";

// Colours of the scheme when none is stored: a dark blue band with white text for the main
// titles, a pale blue band for the secondary titles, black on white for the body.
constexpr Rgb MainBand{0, 51, 102};
constexpr Rgb MainText{255, 255, 255};
constexpr Rgb SecondaryBand{214, 227, 240};
constexpr Rgb SecondaryText{0, 0, 0};
constexpr Rgb BodyBand{255, 255, 255};
constexpr Rgb BodyText{0, 0, 0};

struct FontKeys {
    std::string_view Band, Text, Name, Size, Bold, Italic;
};

constexpr FontKeys MainKeys{"lblMainHeader",      "lblMainHeaderText",  "MainHeaderFont",
                            "MainHeaderFontSize", "MainHeaderFontBold", "MainHeaderFontItalic"};
constexpr FontKeys SecondaryKeys{"lblSecondaryHeader",      "lblSecondaryHeaderText",
                                 "SecondaryHeaderFont",     "SecondaryHeaderFontSize",
                                 "SecondaryHeaderFontBold", "SecondaryHeaderFontItalic"};
constexpr FontKeys BodyKeys{"lblBody",      "lblBodyText",  "BodyFont",
                            "BodyFontSize", "BodyFontBold", "BodyFontItalic"};

using Section = std::map<std::string, std::string>;

// A stored value, or the default of the settings table when the key is missing.
std::string Value(const Section& stored, std::string_view key) {
    for (const auto& [name, value] : stored) {
        if (EqualsIgnoreCase(name, key)) {
            return value;
        }
    }
    return std::string(SettingDefault(sections::ReportOptions, key));
}

bool Check(const Section& stored, std::string_view key) {
    return ToNumber(Value(stored, key)) != 0;
}

bool Flag(const Section& stored, std::string_view key) {
    return EqualsIgnoreCase(Trim(Value(stored, key)), "True");
}

int WholeNumber(const Section& stored, std::string_view key, int fallback) {
    const std::string text = Trim(Value(stored, key));
    if (!IsNumeric(text)) {
        return fallback;
    }
    return static_cast<int>(std::clamp(ToNumber(text), -32768.0, 32767.0));
}

ReportFont ReadFont(const Section& stored, const FontKeys& keys, const ReportFont& fallback) {
    ReportFont font = fallback;
    const std::string name = Trim(Value(stored, keys.Name));
    font.Font.Name = name.empty() ? fallback.Font.Name : name;
    const double size = ToNumber(Value(stored, keys.Size));
    font.Font.Size = size >= 4 && size <= 72 ? size : fallback.Font.Size;
    font.Font.Bold = Flag(stored, keys.Bold);
    font.Font.Italic = Flag(stored, keys.Italic);
    font.Band = ColorFromText(Value(stored, keys.Band)).value_or(fallback.Band);
    font.Text = ColorFromText(Value(stored, keys.Text)).value_or(fallback.Text);
    return font;
}

void WriteFont(Section& out, const FontKeys& keys, const ReportFont& font) {
    out[std::string(keys.Band)] = ColorText(font.Band);
    out[std::string(keys.Text)] = ColorText(font.Text);
    out[std::string(keys.Name)] = font.Font.Name;
    out[std::string(keys.Size)] = NumberText(font.Font.Size);
    out[std::string(keys.Bold)] = font.Font.Bold ? "True" : "False";
    out[std::string(keys.Italic)] = font.Font.Italic ? "True" : "False";
}

std::string PageText(int page) {
    return page > 0 ? std::to_string(page) : std::string();
}

} // namespace

const std::array<ReportSectionName, ReportSectionCount>& ReportSectionNames() {
    return Names;
}

std::optional<ReportSection> SectionFromWord(std::string_view word) {
    for (const ReportSectionName& name : Names) {
        if (name.Word == word) {
            return name.Section;
        }
    }
    return std::nullopt;
}

bool ReportOptions::AnySection() const {
    return std::any_of(Sections.begin(), Sections.end(), [](bool on) { return on; });
}

ReportOptions DefaultReportOptions() {
    return LoadReportOptions(IniFileHandler());
}

void ShowDefaultFonts(ReportOptions& options) {
    const ReportOptions defaults = DefaultReportOptions();
    options.MainHeader = defaults.MainHeader;
    options.SecondaryHeader = defaults.SecondaryHeader;
    options.Body = defaults.Body;
}

ReportOptions LoadReportOptions(const IniFileHandler& settings) {
    const Section stored = settings.AppProfileFileName.empty()
                               ? Section{}
                               : settings.MyGetAppProfileSection(sections::ReportOptions);
    ReportOptions options;
    for (const ReportSectionName& name : Names) {
        options.Set(name.Section, Check(stored, name.Key));
    }
    options.InputPipeFittingData = Check(stored, FittingKey);
    options.MainHeader =
        ReadFont(stored, MainKeys, {{"Arial", 16, true, false}, MainBand, MainText});
    options.SecondaryHeader =
        ReadFont(stored, SecondaryKeys, {{"Arial", 14, true, false}, SecondaryBand, SecondaryText});
    options.Body = ReadFont(stored, BodyKeys, {{"Arial", 10, false, false}, BodyBand, BodyText});
    options.PageNumbers = Check(stored, "chkPageNumbers");
    options.Date = Check(stored, "chkDate");
    options.FileName = Check(stored, "chkFilename");
    options.StartingPageNo = std::max(0, WholeNumber(stored, "txtStartingPageNo", 0));
    options.EndingPageNo = std::max(0, WholeNumber(stored, "txtEndingPageNo", 0));
    const int spacing = WholeNumber(stored, "txtLineSpacing", 100);
    options.LineSpacing = spacing >= 50 && spacing <= 400 ? spacing : 100;
    options.ColorGraphs = Check(stored, "chkColorGraphs");
    options.AutoRefresh = Check(stored, "chkAutoRefresh");
    options.PrintLogo = Check(stored, "chkPrintLogo");
    options.TitlePageLogo = Value(stored, "txtTitlePageLogo");
    return options;
}

bool SaveReportOptions(const IniFileHandler& settings, const ReportOptions& options) {
    Section out = settings.MyGetAppProfileSection(sections::ReportOptions);
    for (const ReportSectionName& name : Names) {
        out[std::string(name.Key)] = options.On(name.Section) ? "1" : "0";
    }
    out[std::string(FittingKey)] = options.InputPipeFittingData ? "1" : "0";
    WriteFont(out, MainKeys, options.MainHeader);
    WriteFont(out, SecondaryKeys, options.SecondaryHeader);
    WriteFont(out, BodyKeys, options.Body);
    out["chkPageNumbers"] = options.PageNumbers ? "1" : "0";
    out["chkDate"] = options.Date ? "1" : "0";
    out["chkFilename"] = options.FileName ? "1" : "0";
    out["txtStartingPageNo"] = PageText(options.StartingPageNo);
    out["txtEndingPageNo"] = PageText(options.EndingPageNo);
    out["txtLineSpacing"] = std::to_string(options.LineSpacing);
    out["chkColorGraphs"] = options.ColorGraphs ? "1" : "0";
    out["chkAutoRefresh"] = options.AutoRefresh ? "1" : "0";
    out["chkPrintLogo"] = options.PrintLogo ? "1" : "0";
    out["txtTitlePageLogo"] = options.TitlePageLogo;
    return settings.MyWriteAppProfileSection(sections::ReportOptions, out);
}

std::string ColorText(Rgb color) {
    const long value = color.Red + 256L * color.Green + 65536L * color.Blue;
    return std::to_string(value);
}

std::optional<Rgb> ColorFromText(std::string_view text) {
    const std::string trimmed = Trim(text);
    if (!IsNumeric(trimmed)) {
        return std::nullopt;
    }
    const double value = ToNumber(trimmed);
    if (value < 0 || value > 0xFFFFFF || value != static_cast<long>(value)) {
        return std::nullopt;
    }
    const long whole = static_cast<long>(value);
    return Rgb{static_cast<std::uint8_t>(whole & 0xFF),
               static_cast<std::uint8_t>((whole >> 8) & 0xFF),
               static_cast<std::uint8_t>((whole >> 16) & 0xFF)};
}

int PrintedPageNumber(const ReportOptions& options, int documentPage) {
    return documentPage + std::max(1, options.StartingPageNo) - 1;
}

PageRange PrintRange(const ReportOptions& options, int pageCount) {
    PageRange range;
    const int count = std::max(1, pageCount);
    range.First = std::clamp(options.StartingPageNo, 1, count);
    const int end = options.EndingPageNo;
    range.Last = end > options.StartingPageNo && end < count && end > 0 ? end : count;
    range.Last = std::max(range.Last, range.First);
    return range;
}

} // namespace quench
