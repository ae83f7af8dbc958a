#pragma once

// The file "PIPE.DAT": 50 records of 2500 bytes, record n holding material n. A record is the
// packed image of PipeMaterialRecord: the name as 30 blank-padded 8-bit characters at offset 0,
// the C value as a little-endian 16-bit integer at 30, 15 diameter records of 34 little-endian
// IEEE Singles at 32, the 30 reserved bytes at 2072; the bytes after them carry no meaning and are
// written as zeros.

#include "library/pipe_library.h"

#include <filesystem>
#include <string>

namespace quench {

// The library file "PIPE.DAT" in a directory.
std::filesystem::path PipeLibraryPath(const std::filesystem::path& directory);

// Reads the 50 records from the file. A missing or unreadable file gives blank names with
// FileFound false. A short file reads as far as it goes and the rest stays blank; a number that is
// not finite (a damaged record) reads as 0. Nothing else of the content is judged here.
PipeLibrary LoadPipeLibrary(const std::filesystem::path& file);

struct LibrarySaveResult {
    bool Saved = false;
    std::string Error; // what went wrong when not saved
};

// Writes the 50 records to a temporary file beside `file` and renames it into place, so that a
// failed write leaves the old file as it was (a missing directory is made). The reserved bytes
// are written as they are held.
LibrarySaveResult SavePipeLibrary(const PipeLibrary& library, const std::filesystem::path& file);

} // namespace quench
