#include "core/settings_keys.h"
#include "tests/support/scratch_directory.h"

#include <set>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScratchDirectory;

TEST(SettingsKeys, DefaultsWhenNothingIsStored) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    EXPECT_TRUE(ConfirmPipeDeletion(ini));
    EXPECT_EQ(NumOfPipesToDisplay(ini), 6);
    EXPECT_FALSE(NewProjectsCopyAutoload(ini));
    EXPECT_EQ(NumberOfPreviousProjectsOnFileMenu(ini), 8);
    EXPECT_TRUE(AutoSave(ini));
    EXPECT_EQ(AutoSaveInterval(ini), 5);
    EXPECT_EQ(ProjectPath(ini), "");
    EXPECT_EQ(RecentFile(ini, 0), "");
    EXPECT_EQ(LastOpened(ini), "");
    EXPECT_FALSE(Metric(ini));
    EXPECT_TRUE(ShowDefaultColors(ini));
    EXPECT_EQ(TabOnTop(ini, sections::GPDForm), 0);
    EXPECT_FALSE(ShowExplorerAtStartup(ini));
    EXPECT_FALSE(ShowTipsAtStartup(ini));
    EXPECT_FALSE(OpenLastProject(ini));
    EXPECT_EQ(DoubleClickingInExplorer(ini), 0);
    EXPECT_EQ(NumberOfNodeRows(ini), 10);
    EXPECT_EQ(ReadSetting(ini, sections::ReportOptions, "MainHeaderFont"), "Arial");
    EXPECT_EQ(ReadIntegerSetting(ini, sections::ReportOptions, "txtLineSpacing"), 100);
}

TEST(SettingsKeys, StoredValuesWinAndDeletingTheFileRestoresDefaults) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "AutoSaveInterval", "15"));
    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "AutoSave", " false "));
    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "ConfirmPipeDeletion", "Yes"));
    ASSERT_TRUE(WriteMetric(ini, true));
    ASSERT_TRUE(WriteProjectPath(ini, "/home/me/Quench Projects"));
    ASSERT_TRUE(WriteRecentFile(ini, 1, "/home/me/job.qnw"));
    ASSERT_TRUE(WriteLastOpened(ini, "/home/me/job.qnw"));
    ASSERT_TRUE(WriteTabOnTop(ini, sections::Calculation, 2));

    EXPECT_EQ(AutoSaveInterval(ini), 15);
    EXPECT_FALSE(AutoSave(ini));
    EXPECT_FALSE(ConfirmPipeDeletion(ini)); // only "True" is true
    EXPECT_TRUE(Metric(ini));
    EXPECT_EQ(ProjectPath(ini), "/home/me/Quench Projects");
    EXPECT_EQ(RecentFile(ini, 1), "/home/me/job.qnw");
    EXPECT_EQ(ini.MyGetAppProfileString("RecentFiles", "File1", ""), "/home/me/job.qnw");
    EXPECT_EQ(LastOpened(ini), "/home/me/job.qnw");
    EXPECT_EQ(TabOnTop(ini, sections::Calculation), 2);
    EXPECT_EQ(TabOnTop(ini, sections::GPDForm), 0);

    // A number that cannot be read falls back on the table's default.
    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "AutoSaveInterval", "soon"));
    EXPECT_EQ(AutoSaveInterval(ini), 5);

    std::filesystem::remove(ini.AppProfileFileName);
    EXPECT_EQ(AutoSaveInterval(ini), 5);
    EXPECT_TRUE(AutoSave(ini));
    EXPECT_FALSE(Metric(ini));
    EXPECT_EQ(ProjectPath(ini), "");
}

TEST(SettingsKeys, TableHoldsEveryKeyOnceWithAUsableDefault) {
    std::set<std::pair<std::string, std::string>> seen;
    int reportOptions = 0;
    for (const SettingDefinition& setting : SettingsTable()) {
        EXPECT_TRUE(seen.emplace(std::string(setting.Section), std::string(setting.Key)).second)
            << setting.Section << " " << setting.Key;
        EXPECT_EQ(FindSetting(setting.Section, setting.Key), &setting);
        reportOptions += setting.Section == sections::ReportOptions ? 1 : 0;
    }
    EXPECT_EQ(reportOptions, 39);
    EXPECT_EQ(SettingDefault("options", "autosaveinterval"), "5");
    EXPECT_EQ(SettingDefault("Options", "NoSuchKey"), "");
    EXPECT_EQ(FindSetting("Nowhere", "AutoSave"), nullptr);
    for (const char* key : {"Double-clicking in Explorer", "Show Explorer at Startup",
                            "Show Tips at Startup", "OpenLastProject"}) {
        EXPECT_NE(FindSetting(sections::Options, key), nullptr) << key;
    }
}

} // namespace
} // namespace quench
