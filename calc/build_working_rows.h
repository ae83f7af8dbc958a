#pragma once

#include "core/project.h"

namespace quench {

// The K-factor a text of a pipe row stands for: "Dflt" the project's default, "Inact" and "None"
// no sprinkler, anything else its value.
Single KFactorValue(const std::string& text, Single defaultKFactor);

// The calculation's copy of every row: inactive rows blanked in place, K-factor words resolved.
void BuildWorkingRows(Project& project);

} // namespace quench
