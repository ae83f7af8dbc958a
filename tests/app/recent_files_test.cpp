#include "app/recent_files.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(RecentFiles, NewestFirstWithinTheCapacity) {
    testing::ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "NumberOfPreviousProjectsOnFileMenu", "3"));
    const RecentFiles recent(ini);
    EXPECT_EQ(recent.Capacity(), 3);
    EXPECT_TRUE(recent.Entries().empty());

    EXPECT_TRUE(recent.Add("/p/a.qnw"));
    EXPECT_TRUE(recent.Add("/p/b.qnw"));
    EXPECT_TRUE(recent.Add("/p/c.qnw"));
    EXPECT_EQ(recent.Entries(), (std::vector<std::string>{"/p/c.qnw", "/p/b.qnw", "/p/a.qnw"}));
    EXPECT_EQ(ini.MyGetAppProfileString("RecentFiles", "File0", ""), "/p/c.qnw");
    EXPECT_EQ(ini.MyGetAppProfileString("RecentFiles", "File2", ""), "/p/a.qnw");

    // The oldest falls off the end; a name in the list moves up rather than standing twice.
    EXPECT_TRUE(recent.Add("/p/d.qnw"));
    EXPECT_EQ(recent.Entries(), (std::vector<std::string>{"/p/d.qnw", "/p/c.qnw", "/p/b.qnw"}));
    EXPECT_TRUE(recent.Add("/p/b.qnw"));
    EXPECT_EQ(recent.Entries(), (std::vector<std::string>{"/p/b.qnw", "/p/d.qnw", "/p/c.qnw"}));
    EXPECT_TRUE(recent.Add("/p/b.qnw"));
    EXPECT_EQ(recent.Entries(), (std::vector<std::string>{"/p/b.qnw", "/p/d.qnw", "/p/c.qnw"}));

    // A smaller menu shows fewer; the default is eight places.
    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "NumberOfPreviousProjectsOnFileMenu", "1"));
    EXPECT_EQ(recent.Entries(), std::vector<std::string>{"/p/b.qnw"});
    ASSERT_TRUE(ini.MyDeleteAppProfileItem("Options", "NumberOfPreviousProjectsOnFileMenu"));
    EXPECT_EQ(recent.Capacity(), 8);

    EXPECT_EQ(RecentFileCaption(0, "/p/b.qnw"), "&1: /p/b.qnw");
    EXPECT_EQ(RecentFileCaption(7, "x.qnw"), "&8: x.qnw");
}

} // namespace
} // namespace quench
