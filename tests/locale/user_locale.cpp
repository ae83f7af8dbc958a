// Every test program takes the locale of its environment before any test runs, as the desktop
// does at start-up, so that a suite run under a comma locale shows whether the program's own
// number texts hold whatever the user's settings.

#include <clocale>

namespace {

[[maybe_unused]] const bool UserLocaleTaken = std::setlocale(LC_ALL, "") != nullptr;

} // namespace
