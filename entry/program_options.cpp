#include "entry/program_options.h"

#include "core/settings_keys.h"

#include <string_view>

namespace quench {
namespace {

using namespace std::string_literals;

constexpr std::string_view CompanyLineKey = "CompanyLine";
constexpr std::string_view DecimalCharacterKey = "DecimalCharacter";
constexpr std::string_view ShowTipsKey = "Show Tips at Startup";

std::string RangeText(std::string_view what, int least, int most) {
    return std::string(what) + " must be a whole number from " + std::to_string(least) + " to " +
           std::to_string(most) + ".";
}

} // namespace

ProgramOptions ReadProgramOptions(const IniFileHandler& ini, char defaultDecimalCharacter) {
    ProgramOptions options;
    options.AutoSave = AutoSave(ini);
    options.AutoSaveMinutes = AutoSaveInterval(ini);
    options.ConfirmPipeDeletion = ConfirmPipeDeletion(ini);
    options.VisiblePipes = NumOfPipesToDisplay(ini);
    options.ShowTipsAtStartup = ShowTipsAtStartup(ini);
    options.CompanyLine = CompanyLineOption(ini);
    const std::string decimal = ini.MyGetAppProfileString(sections::Options, DecimalCharacterKey,
                                                          std::string(1, defaultDecimalCharacter));
    options.DecimalCharacter = decimal == "," ? ',' : '.';
    return options;
}

std::string ProgramOptionsProblem(const ProgramOptions& options) {
    if (options.AutoSaveMinutes < LeastAutoSaveMinutes ||
        options.AutoSaveMinutes > MostAutoSaveMinutes) {
        return RangeText("The auto-save interval in minutes", LeastAutoSaveMinutes,
                         MostAutoSaveMinutes);
    }
    if (options.VisiblePipes < LeastVisiblePipes || options.VisiblePipes > MostVisiblePipes) {
        return RangeText("The number of pipe rows shown", LeastVisiblePipes, MostVisiblePipes);
    }
    if (options.CompanyLine.size() > CompanyLineLength) {
        return "The company line may hold at most " + std::to_string(CompanyLineLength) +
               " characters.";
    }
    if (options.DecimalCharacter != '.' && options.DecimalCharacter != ',') {
        return "The decimal character must be a point or a comma."s;
    }
    return {};
}

bool WriteProgramOptions(const IniFileHandler& ini, const ProgramOptions& options) {
    if (!ProgramOptionsProblem(options).empty()) {
        return false;
    }
    const auto section = sections::Options;
    bool written = ini.MyWriteAppProfileBoolean(section, "AutoSave", options.AutoSave);
    written = ini.MyWriteAppProfileString(section, "AutoSaveInterval",
                                          std::to_string(options.AutoSaveMinutes)) &&
              written;
    written =
        ini.MyWriteAppProfileBoolean(section, "ConfirmPipeDeletion", options.ConfirmPipeDeletion) &&
        written;
    written = ini.MyWriteAppProfileString(section, "NumOfPipesToDisplay",
                                          std::to_string(options.VisiblePipes)) &&
              written;
    written = WriteShowTipsAtStartup(ini, options.ShowTipsAtStartup) && written;
    written = ini.MyWriteAppProfileString(section, CompanyLineKey, options.CompanyLine) && written;
    written = ini.MyWriteAppProfileString(section, DecimalCharacterKey,
                                          std::string(1, options.DecimalCharacter)) &&
              written;
    return written;
}

std::string CompanyLineOption(const IniFileHandler& ini) {
    return ini.MyGetAppProfileString(sections::Options, CompanyLineKey, "");
}

bool WriteShowTipsAtStartup(const IniFileHandler& ini, bool show) {
    return ini.MyWriteAppProfileBoolean(sections::Options, ShowTipsKey, show);
}

} // namespace quench
