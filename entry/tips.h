#pragma once

// The tips of the day: one tip a line of "TIPOFDAY.TXT", blank lines skipped.

#include <filesystem>
#include <string>
#include <vector>

namespace quench {

constexpr const char* TipOfTheDayTitle = "Tip of the Day";
constexpr const char* NoTipsText = "No tips are available: the file TIPOFDAY.TXT was not found.";

// The tips of the file; none when it is missing or unreadable. Line ends of either kind are taken.
std::vector<std::string> ReadTips(const std::filesystem::path& file);

// The tip shown after `index`, round the end; 0 when there are none.
std::size_t NextTip(std::size_t index, std::size_t count);

} // namespace quench
