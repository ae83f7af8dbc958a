#pragma once

// The project file: records of 1000 bytes holding the model, read and written field for field.
// ReadProject and WriteProject work on the project's working file, never on the named file.

#include "core/project.h"

#include <filesystem>
#include <string>

namespace quench {

constexpr int ProjectRecordLength = 1000;

// Reads the file into the project. What cannot be read (a short, damaged or hostile file) keeps
// the value it had, so a reset before the read leaves those fields at their defaults. Returns
// false only when the file cannot be opened; no other fault surfaces.
bool ReadProject(Project& project, const std::filesystem::path& file);

// Only the general records 1 to 5 of any project file (used for the AUTOLOAD template).
bool ReadProjectHeader(Project& project, const std::filesystem::path& file);

enum class WriteOutcome {
    Written,
    Skipped, // a table count above capacity or a blank file name: nothing is written
    Failed,  // the file could not be written; error says why, and the old file is untouched
};

// Writes the model over the file. The file is not truncated: bytes beyond the new last record
// stay as they were. The new file is complete before it replaces the old one.
WriteOutcome WriteProject(const Project& project, const std::filesystem::path& file,
                          std::string* error = nullptr);

// True when the working file differs from the named file in the first 640 bytes of any of
// records 1 to 4100. A blank name has nothing to compare and gives false.
bool CompareProjectFiles(const std::filesystem::path& workingFile,
                         const std::filesystem::path& namedFile);

} // namespace quench
