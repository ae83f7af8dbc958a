#include "core/text.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

// The fixed-width texts of the files are padded with blanks; only blanks are trimmed.
TEST(Text, TrimmingAndComparingWithoutCase) {
    EXPECT_EQ(Trim("  12 "), "12");
    EXPECT_EQ(TrimmedView("  12 "), "12");
    EXPECT_EQ(TrimmedView("    "), "");
    EXPECT_EQ(TrimmedView(""), "");
    EXPECT_EQ(TrimmedView("\t1 "), "\t1");
    EXPECT_EQ(TrimLeft("  a b "), "a b ");
    EXPECT_EQ(TrimRight("  a b "), "  a b");
    EXPECT_TRUE(EqualsIgnoreCase("Dry", "DRY"));
    EXPECT_TRUE(EqualsIgnoreCase("", ""));
    EXPECT_FALSE(EqualsIgnoreCase("Dry", "Dr"));
    EXPECT_FALSE(EqualsIgnoreCase("Wet", "Dry"));
    EXPECT_EQ(ToUpper("sch 40"), "SCH 40");
    EXPECT_EQ(FixedWidth("abc", 5), "abc  ");
    EXPECT_EQ(FixedWidth("abcdef", 3), "abc");
}

} // namespace
} // namespace quench
