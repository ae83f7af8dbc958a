#pragma once

// "AUTOLOAD.QNW": the template whose general data and calculation settings a new project can take.
// A projects directory made by the program gets one with the model's defaults.

#include <filesystem>
#include <string>

namespace quench {

// Writes a project with every default as "AUTOLOAD.QNW" in the directory, unless one is there.
// False when it cannot be written; error says why.
bool CreateAutoloadTemplate(const std::filesystem::path& directory, std::string* error = nullptr);

} // namespace quench
