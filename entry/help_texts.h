#pragma once

// The help texts of the input fields: for every help key a title and a plain explanation of the
// field in the user's words (what it means, its unit, its limits, its special words). All of them
// stand in one table; a text names the discharge device through the marks {W} ("Sprinkler" or
// "Hose") and {w} (the same in small letters), filled in from the project's discharge word.

#include <span>
#include <string>
#include <string_view>

namespace quench {

struct HelpText {
    std::string Title;
    std::string Description;
};

// The title and text of a key with the discharge word put in; an unknown key gives both empty.
HelpText HelpTextOf(std::string_view key, std::string_view dischargeWord);

bool HasHelpText(std::string_view key);

// Every key of the table, in table order.
std::span<const std::string_view> HelpTextKeys();

// The keys whose help is a plain window (no pick list).
std::span<const std::string_view> PlainHelpKeys();

// The discharge word as the screens use it: the trimmed name, "Sprinkler" when it is empty.
std::string DischargeWordOf(std::string_view primaryDischargeName);

// {W} and {w} of a text replaced by the word and the word in small letters.
std::string WithDischargeWord(std::string_view text, std::string_view word);

} // namespace quench
