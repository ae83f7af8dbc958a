#include "core/atomic_write.h"
#include "core/linked_copy.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

namespace fs = std::filesystem;
using testing::FileText;
using testing::ScratchDirectory;

// The copy holds the file's bytes, and a write to either name leaves the other as it was.
TEST(LinkedCopy, TheTwoNamesPartAtTheFirstWrite) {
    const ScratchDirectory scratch;
    const fs::path file = scratch / "plant.qnw";
    const fs::path copy = scratch / "plant.tmp";
    ASSERT_TRUE(WriteFileAtomically(file, "saved"));
    ASSERT_TRUE(MakeLinkedCopy(file, copy, 5));
    EXPECT_EQ(FileText(copy), "saved");

    ASSERT_TRUE(WriteFileAtomically(copy, "edited", nullptr, Durability::Unsynced));
    EXPECT_EQ(FileText(file), "saved");
    EXPECT_EQ(FileText(copy), "edited");
    ASSERT_TRUE(WriteFileAtomically(file, "saved again"));
    EXPECT_EQ(FileText(copy), "edited");

    // Removing the copy leaves the file.
    fs::remove(copy);
    EXPECT_EQ(FileText(file), "saved again");
}

// Where no copy can be made this way, nothing is made and nothing is touched: the caller writes
// the copy itself.
TEST(LinkedCopy, RefusesAndLeavesEverythingAsItWas) {
    const ScratchDirectory scratch;
    const fs::path file = scratch / "plant.qnw";
    const fs::path copy = scratch / "plant.tmp";
    ASSERT_TRUE(WriteFileAtomically(file, "saved"));

    // A working file already there (left by a session that ended badly) stays.
    ASSERT_TRUE(WriteFileAtomically(copy, "recovered"));
    EXPECT_FALSE(MakeLinkedCopy(file, copy, 5));
    EXPECT_EQ(FileText(copy), "recovered");
    fs::remove(copy);

    // The file changed since it was read: its length is no longer the one read.
    EXPECT_FALSE(MakeLinkedCopy(file, copy, 4));
    EXPECT_FALSE(fs::exists(copy));

    EXPECT_FALSE(MakeLinkedCopy(scratch / "missing.qnw", copy, 5));
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_FALSE(MakeLinkedCopy(scratch.Path(), copy, 0)); // a folder
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_FALSE(MakeLinkedCopy(file, scratch / "no folder" / "plant.tmp", 5));
    EXPECT_EQ(FileText(file), "saved");
}

// A project opened through a symbolic link: the copy names the file the link points to, and is
// an ordinary file of its own, so writing it never reaches through the link.
TEST(LinkedCopy, FollowsASymbolicLinkToItsFile) {
    const ScratchDirectory scratch;
    const fs::path target = scratch / "plant.qnw";
    const fs::path link = scratch / "shortcut.qnw";
    const fs::path copy = scratch / "shortcut.tmp";
    ASSERT_TRUE(WriteFileAtomically(target, "saved"));
    fs::create_symlink(target, link);
    ASSERT_TRUE(MakeLinkedCopy(link, copy, 5));
    EXPECT_FALSE(fs::is_symlink(copy));
    EXPECT_EQ(FileText(copy), "saved");
    ASSERT_TRUE(WriteFileAtomically(copy, "edited", nullptr, Durability::Unsynced));
    EXPECT_EQ(FileText(target), "saved");
    EXPECT_TRUE(fs::is_symlink(link));
}

} // namespace
} // namespace quench
