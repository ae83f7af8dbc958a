#include "tests/support/scratch_directory.h"

#include "core/atomic_write.h"

#include <atomic>
#include <random>
#include <unistd.h>

#include <gtest/gtest.h>

namespace quench::testing {

ScratchDirectory::ScratchDirectory() {
    static std::atomic<int> counter{0};
    std::random_device random;
    const auto name = "quench-test-" + std::to_string(::getpid()) + "-" +
                      std::to_string(counter++) + "-" + std::to_string(random() % 100000);
    path_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(path_);
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path SourceDirectory() {
    return QUENCH_SOURCE_DIR;
}

std::filesystem::path DataDirectory() {
    return QUENCH_DATA_DIR;
}

std::string FileText(const std::filesystem::path& file) {
    std::string bytes;
    EXPECT_TRUE(ReadWholeFile(file, bytes)) << file;
    return bytes;
}

} // namespace quench::testing
