#pragma once

// Why the sizing of a run left a pipe over a limit of water velocity or friction loss: no size
// that the library and the pipe's group allow meets it. Kept beside the results for the Results
// tab and the reports; never stored in the project file.

#include <string>

namespace quench {

enum class SizingNote { None, Velocity, Friction, Other };

// The words shown with such a pipe, empty for None.
std::string SizingNoteText(SizingNote note);

// A short name for machine-readable output: "velocity", "friction", "other", or "".
std::string SizingNoteName(SizingNote note);

} // namespace quench
