#pragma once

// The file side of the project file: reading the head of a file, and replacing the head of a file
// safely. Only regular files are read or written; a directory, a device or a pipe is refused, so
// that nothing can hang or read without end.

#include "core/atomic_write.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace quench {

// The first bytes of a regular file, at most limit of them. On failure error says why (the
// reason alone, such as "No such file or directory").
bool ReadFileHead(const std::filesystem::path& file, std::size_t limit,
                  std::vector<std::uint8_t>& bytes, std::string& error);

// The bytes of a regular file from offset to its end; none when the file is no longer than that.
bool ReadFileTail(const std::filesystem::path& file, std::size_t offset,
                  std::vector<std::uint8_t>& bytes, std::string& error);

// The head followed by whatever of the file lay beyond it: the bytes the file holds once the head
// is written over it. Only that tail is read. A missing file has no tail; a directory, a device
// or a pipe is refused. A symbolic link is followed.
bool LayFileOverHead(const std::filesystem::path& file, std::span<const std::uint8_t> head,
                     std::string& bytes, std::string& error);

// Appends to image whatever of the file lies beyond image's length, with the checks of
// LayFileOverHead, so that image holds the bytes the file holds once image is written over it.
bool AppendFileTail(const std::filesystem::path& file, std::vector<std::uint8_t>& image,
                    std::string& error);

// Puts head at the start of the file and keeps whatever lay beyond it. The file is never left
// half-written: the new bytes and the old tail are written atomically (core/atomic_write.h).
// A symbolic link is followed; a missing directory is not made. On failure the old file is
// untouched and error says why.
bool ReplaceFileHead(const std::filesystem::path& file, std::span<const std::uint8_t> head,
                     std::string& error, Durability durability = Durability::Synced);

// Replaces the file by the bytes, as ReplaceFileHead checks and writes them (a symbolic link
// followed, no directory made).
bool ReplaceFile(const std::filesystem::path& file, std::string_view bytes, std::string& error,
                 Durability durability = Durability::Synced);

// The same with the bytes handed over in pieces (core/atomic_write.h), followed by whatever of the
// file lay beyond the first `head` bytes, so that a head of that length replaces the file's head.
bool ReplaceFileHeadInPieces(const std::filesystem::path& file, std::size_t head,
                             const PieceProducer& pieces, std::string& error,
                             Durability durability = Durability::Synced);

} // namespace quench
