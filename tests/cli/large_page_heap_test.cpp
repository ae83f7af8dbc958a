#include "cli/large_page_heap.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

namespace quench::cli {
namespace {

// The sanitizer's allocator keeps no heap of its own to grow: nothing to see there.
#if !defined(__SANITIZE_ADDRESS__)

constexpr std::uintptr_t Megabyte = 1u << 20;

std::uintptr_t HeapEnd() {
    return reinterpret_cast<std::uintptr_t>(::sbrk(0));
}

// The flags of the mapping that holds `address`, from the process's own map.
std::string MappingFlags(std::uintptr_t address) {
    std::ifstream maps("/proc/self/smaps");
    std::string line;
    bool inside = false;
    while (std::getline(maps, line)) {
        std::uintptr_t start = 0;
        std::uintptr_t end = 0;
        char dash = 0;
        std::istringstream range(line);
        if (range >> std::hex >> start >> dash >> end && dash == '-') {
            inside = start <= address && address < end;
        } else if (inside && line.rfind("VmFlags:", 0) == 0) {
            return line;
        }
    }
    return {};
}

// The heap grows once by the whole reserve from the first large page on, and what a command
// allocates afterwards (a table of the model, its file image) lies in memory marked for large
// pages. Only crumbs of the space the heap held before may still serve small blocks.
TEST(LargePageHeap, GrowsOnceAndMarksWhatCommandsAllocate) {
    if (!std::filesystem::exists("/sys/kernel/mm/transparent_hugepage")) {
        GTEST_SKIP() << "this kernel has no large pages";
    }
    const std::uintptr_t before = HeapEnd();
    PrepareLargePageHeap();
    const std::uintptr_t after = HeapEnd();
    EXPECT_GE(after - before, 16 * Megabyte);

    const std::uintptr_t firstLargePage = (before + 2 * Megabyte - 1) & ~(2 * Megabyte - 1);
    void* table = std::malloc(344 * 1024);
    void* image = std::malloc(4 * Megabyte);
    ASSERT_NE(table, nullptr);
    ASSERT_NE(image, nullptr);
    for (void* block : {table, image}) {
        const auto address = reinterpret_cast<std::uintptr_t>(block);
        EXPECT_GE(address, firstLargePage);
        EXPECT_LT(address, after);
        EXPECT_NE(MappingFlags(address).find(" hg"), std::string::npos) << MappingFlags(address);
    }
    // Memory given back stays for the next allocation.
    std::free(image);
    EXPECT_EQ(HeapEnd(), after);
    std::free(table);
}

#endif

} // namespace
} // namespace quench::cli
