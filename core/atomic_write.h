#pragma once

// Replacing a file so that a reader (or a crash) sees either the old file or the new one, never
// a half-written one: the bytes go to a temporary file beside it, reach the disk, and the
// temporary file is renamed over the old name.

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace quench {

// How far a replaced file is carried to the disk: Synced waits for the file and for the folder
// that names it (the new file survives a power cut); Unsynced leaves that to the system, for a
// scratch copy whose bytes stand durably in another file.
enum class Durability { Synced, Unsynced };

// False when the file cannot be written; error then says why, and the old file is untouched.
// The parent directory is made when it is missing. An existing file keeps its permissions. The
// bytes go out in one write, then one rename. A symbolic link stays and its target is replaced;
// a device or a pipe (/dev/stdout) is written into, as nothing can be renamed over it.
bool WriteFileAtomically(const std::filesystem::path& file, std::string_view bytes,
                         std::string* error = nullptr, Durability durability = Durability::Synced);

// The bytes of a file handed over in pieces, in order, so that a large file is never laid out
// whole in memory: the producer calls write for each piece and returns false to give up, which
// leaves the old file as it was (error is then empty unless the writing failed). A synced file
// starts on its way to the disk piece by piece, so that the final sync has little left to wait
// for.
using WritePiece = std::function<bool(std::string_view piece)>;
using PieceProducer = std::function<bool(const WritePiece& write)>;
bool WriteFileAtomically(const std::filesystem::path& file, const PieceProducer& pieces,
                         std::string* error = nullptr, Durability durability = Durability::Synced);

// The whole file as bytes; false when it cannot be read, and error says why ("it is a
// directory", "No such file or directory"). Only a regular file is read: a device or a pipe
// (/dev/zero, a FIFO) is refused rather than read without end or waited on.
bool ReadWholeFile(const std::filesystem::path& file, std::string& bytes,
                   std::string* error = nullptr);

} // namespace quench
