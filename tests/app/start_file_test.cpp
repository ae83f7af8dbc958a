#include "app/start_file.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

namespace fs = std::filesystem;

TEST(StartFile, WhatTheProgramOpensFirst) {
    const fs::path projects = "/home/user/Quench Projects";
    StartFile start = DecideStartFile("", false, "/x/last.qnw", projects, false);
    EXPECT_EQ(start.What, StartFile::Action::Nothing);
    start = DecideStartFile("  ", false, "", projects, true);
    EXPECT_EQ(start.What, StartFile::Action::Recover);

    start = DecideStartFile("/data/Site.QNW", false, "", projects, true);
    EXPECT_EQ(start.What, StartFile::Action::Open);
    EXPECT_EQ(start.File, fs::path("/data/Site.QNW"));
    start = DecideStartFile("site.qnw", false, "", projects, false);
    EXPECT_EQ(start.File, projects / "site.qnw");
    // Names that are no project file keep the old rule.
    start = DecideStartFile("site", false, "", projects, false);
    EXPECT_EQ(start.File, projects / "site.TEM");
    start = DecideStartFile("/data/site.tem", false, "", projects, false);
    EXPECT_EQ(start.File, fs::path("/data/site.tem"));
    // A relative name with a directory is taken from the current directory.
    start = DecideStartFile("examples/site.qnw", false, "", projects, false);
    EXPECT_EQ(start.File, fs::current_path() / "examples/site.qnw");

    // The last project stands in for an empty command line when the options ask for it.
    start = DecideStartFile("", true, "/x/last.qnw", projects, true);
    EXPECT_EQ(start.What, StartFile::Action::Open);
    EXPECT_EQ(start.File, fs::path("/x/last.qnw"));
    start = DecideStartFile("/data/site.qnw", true, "/x/last.qnw", projects, false);
    EXPECT_EQ(start.File, fs::path("/data/site.qnw"));
    start = DecideStartFile("", true, "", projects, true);
    EXPECT_EQ(start.What, StartFile::Action::Recover);
}

} // namespace
} // namespace quench
