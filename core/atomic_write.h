#pragma once

// Replacing a file so that a reader (or a crash) sees either the old file or the new one, never
// a half-written one: the bytes go to a temporary file beside it, reach the disk, and the
// temporary file is renamed over the old name.

#include <filesystem>
#include <string>
#include <string_view>

namespace quench {

// False when the file cannot be written; error then says why, and the old file is untouched.
// The parent directory is made when it is missing. An existing file keeps its permissions.
bool WriteFileAtomically(const std::filesystem::path& file, std::string_view bytes,
                         std::string* error = nullptr);

// The whole file as bytes; false when it cannot be read.
bool ReadWholeFile(const std::filesystem::path& file, std::string& bytes);

} // namespace quench
