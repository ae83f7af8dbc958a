#pragma once

// The project file: records of 1000 bytes holding the model, read and written field for field.
// ReadProject and WriteProject work on the project's working file, never on the named file.
//
// The layout of each record is core/record_layout.h, their order core/record_sequence.h.

#include "core/project.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace quench {

constexpr int ProjectRecordLength = 1000;
// The record counter is an Integer: no record lies beyond this one.
constexpr int LastRecordNumber = 32767;
// The changed-project test compares the first bytes of these records only.
constexpr int ComparedRecords = 4100;
constexpr int ComparedRecordBytes = 640;

// Reads the file into the project, over what the project holds (a caller resets it first).
// Whatever cannot be read (a short, damaged or hostile file) keeps the value it had: a record or
// a field past the end of the file, or a String longer than its record, stops the reading of that
// record. Table counts are kept as the file gives them; only rows within capacity are stored,
// and the rows beyond are skipped so that the records after them stay in step. While
// project.LoadingTemplate is set the three output tables are skipped. The repairs follow: a
// Material above 54 becomes 4, UnitSystem outside 0 to 2 becomes 0, blank device names get their
// defaults, and a file older than format 60121 has no ExteriorHoseFlow.
// Returns false only when the file cannot be opened (missing, unreadable, not a regular file);
// the project is then untouched. Here and below, error gets the reason, such as "No such file or
// directory" or "it is a directory", for the caller to put beside the file's name.
bool ReadProject(Project& project, const std::filesystem::path& file, std::string* error = nullptr);

// ReadProject on the bytes of a file held in memory.
void ReadProjectImage(Project& project, std::span<const std::uint8_t> image);

// The bytes of a whole file, read as ReadProject reads that file.
void ReadProjectFileBytes(Project& project, std::span<const std::uint8_t> fileBytes);

// Only the general records 1 to 5 of any project file (used for the AUTOLOAD template), with the
// same forgiving reading as ReadProject.
bool ReadProjectHeader(Project& project, const std::filesystem::path& file,
                       std::string* error = nullptr);

enum class WriteOutcome {
    Written,
    Skipped, // a table count above MaxPipes or a blank file name: nothing is written
    Failed,  // the file could not be written; error says why, and the old file is untouched
};

// Writes the model over the file, every record on a background of blanks, the extension records
// always (GPDProjectFormat is written as it stands). The file is not truncated: bytes beyond the
// new last record stay as they were. The new file is complete and flushed before it replaces the
// old one. A record whose texts do not fit in 1000 bytes fails the whole write.
WriteOutcome WriteProject(const Project& project, const std::filesystem::path& file,
                          std::string* error = nullptr);

// Saving: the model written over the working file, and the named file replaced by a copy of the
// working file. The image is laid once and the files are not read back, but for what lay beyond
// the image in the working file. The named file is synced with its folder; the working file,
// a scratch copy of the same bytes, is not. On failure `failed` names the file that could not be
// written and error says why; a failed named file leaves the working file written.
WriteOutcome SaveProject(const Project& project, const std::filesystem::path& workingFile,
                         const std::filesystem::path& namedFile, std::string* error = nullptr,
                         std::filesystem::path* failed = nullptr);

// The bytes that WriteProject lays for the model, in memory: every record of the sequence, the
// counts taken within capacity. False when a record's texts do not fit in it; error says which.
bool LayProjectImage(const Project& project, std::vector<std::uint8_t>& image,
                     std::string* error = nullptr);

// True when the working file differs from the named file in the first 640 bytes of any of
// records 1 to 4100; a record present in one file only differs. A blank name has nothing to
// compare and gives false. A file that cannot be read has no records.
bool CompareProjectFiles(const std::filesystem::path& workingFile,
                         const std::filesystem::path& namedFile);

} // namespace quench
