#pragma once

// What the library commands share: the options --library FILE and --json, and the library file
// they read.

#include "cli/command.h"
#include "library/pipe_library.h"

#include <filesystem>
#include <optional>
#include <ostream>

namespace quench::cli {

struct LibraryArguments {
    Arguments Words;               // the operands, options taken out
    std::filesystem::path Library; // --library, or empty for the program's own library
    bool Json = false;
};

// The operands and options; nothing, after a usage line on err, when an option lacks its value.
std::optional<LibraryArguments> SplitLibraryArguments(const Arguments& arguments,
                                                      std::ostream& err);

// The library the command reads; nothing, after a line on err, when the file cannot be found.
std::optional<PipeLibrary> LoadCommandLibrary(const LibraryArguments& arguments, std::ostream& err);

} // namespace quench::cli
