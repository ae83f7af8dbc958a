#include "cli/library_arguments.h"

#include "app/directories.h"
#include "core/text.h"
#include "library/pipe_library_file.h"

namespace quench::cli {

namespace {

// The library the program itself uses.
std::filesystem::path LibraryFile(const LibraryArguments& arguments) {
    if (!arguments.Library.empty()) {
        return arguments.Library;
    }
    return PipeLibraryPath(PrepareLibraryDirectory(ProcessEnvironment()).Directory);
}

} // namespace

std::optional<LibraryArguments> SplitLibraryArguments(const Arguments& arguments,
                                                      std::ostream& err) {
    LibraryArguments split;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--json") {
            split.Json = true;
        } else if (arguments[i] == "--library") {
            if (i + 1 == arguments.size()) {
                UsageError(err, "--library needs a file name");
                return std::nullopt;
            }
            split.Library = arguments[++i];
        } else {
            split.Words.push_back(arguments[i]);
        }
    }
    return split;
}

std::string PrintableName(std::string_view name) {
    std::string printable(name);
    for (char& c : printable) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            c = '?';
        }
    }
    return Latin1ToUtf8(printable);
}

std::optional<PipeLibrary> LoadCommandLibrary(const LibraryArguments& arguments,
                                              std::ostream& err) {
    const auto file = LibraryFile(arguments);
    PipeLibrary library = LoadPipeLibrary(file);
    if (!library.FileFound) {
        UsageError(err, "cannot read the pipe materials library \"" + file.string() + "\"");
        return std::nullopt;
    }
    return library;
}

} // namespace quench::cli
