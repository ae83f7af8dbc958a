#pragma once

// What the library commands share: the options --library FILE and --json, and the library file
// they read.

#include "cli/command.h"
#include "library/pipe_library.h"

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace quench::cli {

struct LibraryArguments {
    Arguments Words;               // the operands, options taken out
    std::filesystem::path Library; // --library, or empty for the program's own library
    bool Json = false;
};

// The operands and options; nothing, after a usage line on err, when an option lacks its value.
std::optional<LibraryArguments> SplitLibraryArguments(const Arguments& arguments,
                                                      std::ostream& err);

// A material name as a terminal shows it: Latin-1 as UTF-8, the control bytes of a damaged record
// as '?', so that one record stays one line.
std::string PrintableName(std::string_view name);

// The library the command reads; nothing, after a line on err, when the file cannot be found.
std::optional<PipeLibrary> LoadCommandLibrary(const LibraryArguments& arguments, std::ostream& err);

} // namespace quench::cli
