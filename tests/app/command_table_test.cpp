#include "app/command_table.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

namespace quench {
namespace {

// Every key of the main frame's command table.
const std::vector<std::string_view> FrameKeys{"ToolNew",
                                              "ToolOpen",
                                              "ToolOpenDosQUENCHProject",
                                              "ToolSaveAsDosQUENCHProject",
                                              "ToolOpenAutocadDatafile",
                                              "ToolReadFromDWG",
                                              "CalculatedSizestoDWG",
                                              "ToolClose",
                                              "ToolSave",
                                              "ToolSaveAs",
                                              "ToolExit",
                                              "ToolGPD",
                                              "ToolEnterEditPipeData",
                                              "ToolNodalEditor",
                                              "ToolCalculation",
                                              "ToolPipeDB",
                                              "ToolPumpDB",
                                              "ToolReportOptions",
                                              "ToolDXF_Graph",
                                              "ToolPreview",
                                              "ToolPrint",
                                              "ToolPrinterSetup",
                                              "ToolVantorToolbar",
                                              "ToolOptions",
                                              "ToolUnits",
                                              "ToolProjectExplorer",
                                              "ToolCalculator",
                                              "ToolBranchLineCalculator",
                                              "ToolSprinklerCalculator",
                                              "ToolAlignTop",
                                              "ToolAlignLeft",
                                              "ToolAlignRight",
                                              "ToolAlignBottom",
                                              "ToolCustomizeToolbar",
                                              "ToolContents",
                                              "ToolSearchForHelp",
                                              "ToolOverview",
                                              "ToolReadme",
                                              "ToolTutorial",
                                              "ToolFrequentlyAskedQuestions",
                                              "ToolTipOfTheDay",
                                              "ToolSendMailToTechSupport",
                                              "tbCheckForUpdate",
                                              "ToolAboutVantorSoftware",
                                              "ToolAboutQUENCH",
                                              "ToolFreeSoftware",
                                              "ToolNewsRoom",
                                              "ToolProgramUpdates",
                                              "ToolTrainingServices",
                                              "ToolVantorHomePage"};

TEST(CommandTable, EveryKeyOnceWithItsMenu) {
    std::set<std::string_view> keys;
    for (const CommandEntry& entry : CommandTable()) {
        EXPECT_TRUE(keys.insert(entry.Key).second) << entry.Key;
        EXPECT_FALSE(entry.Caption.empty()) << entry.Key;
        EXPECT_EQ(FindCommand(entry.Key), &entry);
    }
    for (const std::string_view key : FrameKeys) {
        EXPECT_NE(FindCommand(key), nullptr) << key;
    }
    EXPECT_EQ(FindCommand("toolnew"), nullptr);
    EXPECT_EQ(FindCommand("RecentFile1"), nullptr);

    // The menus that the availability functions name.
    for (const char* key : {"ToolClose", "ToolSave", "ToolSaveAs", "ToolPreview", "ToolPrint",
                            "ToolSaveAsDosQUENCHProject", "CalculatedSizestoDWG"}) {
        EXPECT_EQ(FindCommand(key)->Menu, Menu::File) << key;
    }
    for (const char* key :
         {"ToolGPD", "ToolEnterEditPipeData", "ToolNodalEditor", "ToolCalculation"}) {
        EXPECT_EQ(FindCommand(key)->Menu, Menu::Project) << key;
    }
    for (const char* key : {"ToolReportOptions", "ToolDXF_Graph"}) {
        EXPECT_EQ(FindCommand(key)->Menu, Menu::Reports) << key;
    }
    EXPECT_EQ(MenuCaption(Menu::File), "&File");
    EXPECT_EQ(MenuCaption(Menu::Help), "&Help");
}

TEST(CommandTable, OnlyTheFirstScreensAreInTheMenus) {
    std::vector<std::string_view> file;
    for (const CommandEntry* entry : MenuCommands(Menu::File)) {
        file.push_back(entry->Key);
    }
    EXPECT_EQ(file, (std::vector<std::string_view>{
                        "ToolNew", "ToolOpen", "ToolClose", "ToolSave", "ToolSaveAs",
                        "ToolOpenDosQUENCHProject", "ToolSaveAsDosQUENCHProject",
                        "ToolOpenAutocadDatafile", "ToolReadFromDWG", "CalculatedSizestoDWG",
                        "ToolPreview", "ToolPrint", "ToolPrinterSetup", "ToolExit"}));
    const auto keys = [](Menu menu) {
        std::vector<std::string_view> found;
        for (const CommandEntry* entry : MenuCommands(menu)) {
            found.push_back(entry->Key);
        }
        return found;
    };
    const auto has = [](const std::vector<std::string_view>& list, std::string_view key) {
        return std::find(list.begin(), list.end(), key) != list.end();
    };
    const auto project = keys(Menu::Project);
    EXPECT_TRUE(has(project, "ToolGPD"));
    EXPECT_TRUE(has(project, "ToolEnterEditPipeData"));
    EXPECT_EQ(project.back(), "ToolCalculation");
    const auto tools = keys(Menu::Tools);
    for (const char* key : {"ToolUnits", "ToolBranchLineCalculator", "ToolSprinklerCalculator"}) {
        EXPECT_TRUE(has(tools, key)) << key;
    }
    EXPECT_TRUE(has(keys(Menu::Reports), "ToolReportOptions"));
    EXPECT_EQ(MenuCommands(Menu::Window).size(), 8u);
    for (const CommandEntry* entry : ToolbarCommands()) {
        EXPECT_TRUE(entry->OnToolbar && entry->Available) << entry->Key;
    }
}

TEST(CommandTable, AvailabilityFollowsTheTwoLists) {
    const auto disabled = DisabledWithoutProject();
    const auto enabled = EnabledWithProject();
    EXPECT_EQ(std::vector<std::string_view>(disabled.begin(), disabled.end()),
              (std::vector<std::string_view>{
                  "ToolClose", "ToolSave", "ToolSaveAs", "ToolPreview", "ToolPrint",
                  "ToolSaveAsDosQUENCHProject", "CalculatedSizestoDWG", "ToolGPD",
                  "ToolEnterEditPipeData", "ToolNodalEditor", "ToolCalculation",
                  "ToolReportOptions", "ToolDXF_Graph"}));
    ASSERT_EQ(enabled.size(), disabled.size() + 2);
    EXPECT_TRUE(std::equal(disabled.begin(), disabled.end(), enabled.begin()));
    EXPECT_EQ(enabled[disabled.size()], "ToolPipeDB");
    EXPECT_EQ(enabled[disabled.size() + 1], "ToolPumpDB");

    CommandAvailability tools;
    // At start no project is open.
    EXPECT_FALSE(tools.IsEnabled("ToolClose"));
    EXPECT_FALSE(tools.IsEnabled("ToolPipeDB"));
    EXPECT_TRUE(tools.IsEnabled("ToolNew"));
    EXPECT_TRUE(tools.IsEnabled("ToolUnits"));
    EXPECT_FALSE(tools.IsEnabled("NoSuchTool"));

    tools.DisableActiveBarTools();
    EXPECT_FALSE(tools.IsEnabled("ToolPipeDB"));
    tools.EnableActiveBarTools();
    EXPECT_TRUE(tools.IsEnabled("ToolClose"));
    EXPECT_TRUE(tools.IsEnabled("ToolPumpDB"));
    EXPECT_TRUE(tools.CanRun("ToolCalculation"));
    // The libraries are not in the disabling list: they stay on once a project has been open.
    tools.DisableActiveBarTools();
    EXPECT_FALSE(tools.IsEnabled("ToolCalculation"));
    EXPECT_FALSE(tools.IsEnabled("ToolDXF_Graph"));
    EXPECT_TRUE(tools.IsEnabled("ToolPipeDB"));
    EXPECT_TRUE(tools.IsEnabled("ToolPumpDB"));
    EXPECT_TRUE(tools.IsEnabled("ToolOpen"));

    // A command whose screen is not there cannot run, on or off; recent files always can.
    EXPECT_FALSE(tools.CanRun("ToolProjectExplorer"));
    EXPECT_FALSE(tools.CanRun("ToolCalculation"));
    EXPECT_TRUE(tools.CanRun("ToolNew"));
    EXPECT_TRUE(tools.CanRun("RecentFile2"));
    EXPECT_FALSE(tools.CanRun("NoSuchTool"));
}

TEST(CommandTable, RecentFileKeysAndTheFrameTitle) {
    EXPECT_EQ(RecentFileIndex("RecentFile0"), 0);
    EXPECT_EQ(RecentFileIndex("RecentFile12"), 12);
    EXPECT_EQ(RecentFileKey(3), "RecentFile3");
    EXPECT_EQ(RecentFileIndex(RecentFileKey(7)), 7);
    for (const char* key :
         {"RecentFile", "RecentFilex", "RecentFile-1", "RecentFile1a", "recentfile1", "ToolNew"}) {
        EXPECT_FALSE(RecentFileIndex(key).has_value()) << key;
    }
    EXPECT_EQ(FrameTitle("/home/me/Quench Projects/Job.qnw"),
              "Quench - /home/me/Quench Projects/Job.qnw");
    EXPECT_EQ(FrameTitle("/home/me/Quench Projects/Untitled.hid"), "Quench - (UNTITLED)");
    EXPECT_EQ(FrameTitle("UNTITLED.HID"), "Quench - (UNTITLED)");
    EXPECT_EQ(FrameTitle(""), "Quench - (UNTITLED)");
}

} // namespace
} // namespace quench
