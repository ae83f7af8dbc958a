#pragma once

#include <filesystem>
#include <string>

namespace quench::testing {

// A fresh directory under the system's temporary directory, removed with everything in it when
// the object goes.
class ScratchDirectory {
public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

// The whole of a file as bytes; the test fails (and gets "") when it cannot be read.
std::string FileText(const std::filesystem::path& file);

// The source tree and the directory of the built binaries and data files.
std::filesystem::path SourceDirectory();
std::filesystem::path DataDirectory();

} // namespace quench::testing
