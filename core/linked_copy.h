#pragma once

// A copy of a file that costs no bytes: a second name for the same file. The program writes a
// file only by renaming a new one over its name (atomic_write.h), never into it, so the two
// names part at the first write to either and each keeps what it held.

#include <cstdint>
#include <filesystem>

namespace quench {

// True when `copy` now names the file `file` names (a symbolic link followed), holding `size`
// bytes. False, with nothing made, where the file system has no such names, the two lie on
// different ones, `copy` exists already, or the file is no longer `size` bytes long; the caller
// then writes the copy itself.
bool MakeLinkedCopy(const std::filesystem::path& file, const std::filesystem::path& copy,
                    std::uintmax_t size);

} // namespace quench
