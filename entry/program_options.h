#pragma once

// The options a user sets for the program (Tools, Options), read from and written to the
// "Options" section of the settings file. A value outside its range is refused with a message
// naming the range, and nothing is written until every value is good.

#include "core/settings.h"

#include <string>

namespace quench {

constexpr const char* OptionsErrorTitle = "Options";
constexpr int LeastAutoSaveMinutes = 1;
constexpr int MostAutoSaveMinutes = 120;
constexpr int LeastVisiblePipes = 1;
constexpr int MostVisiblePipes = 100;
constexpr std::size_t CompanyLineLength = 60;

struct ProgramOptions {
    bool AutoSave = true;
    int AutoSaveMinutes = 5;
    bool ConfirmPipeDeletion = true;
    int VisiblePipes = 6;
    bool ShowTipsAtStartup = false;
    // Printed right of the second line of a report's header; empty prints the project's company.
    std::string CompanyLine;
    // The character that separates decimals in typed and shown numbers: '.' or ','.
    char DecimalCharacter = '.';
};

ProgramOptions ReadProgramOptions(const IniFileHandler& ini, char defaultDecimalCharacter);

// The text telling what is wrong with the options, or "" when they may be written.
std::string ProgramOptionsProblem(const ProgramOptions& options);

// Writes the options when they are good; false, with nothing written, when not.
bool WriteProgramOptions(const IniFileHandler& ini, const ProgramOptions& options);

// Only the company line and "Show Tips at Startup", read where they are used.
std::string CompanyLineOption(const IniFileHandler& ini);
bool WriteShowTipsAtStartup(const IniFileHandler& ini, bool show);

} // namespace quench
