#include "core/atomic_write.h"
#include "core/settings.h"
#include "tests/support/scratch_directory.h"

#include <fstream>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScratchDirectory;

std::string FileText(const std::filesystem::path& file) {
    std::string text;
    ReadWholeFile(file, text);
    return text;
}

void WriteText(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

TEST(IniFileHandler, MissingFileOrKeyGivesTheDefault) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    EXPECT_EQ(ini.MyGetAppProfileString("Options", "AutoSaveInterval", "5"), "5");
    EXPECT_EQ(ini.MyGetAppProfileInteger("Options", "NumOfPipesToDisplay", 6), 6);
    EXPECT_EQ(ini.MyGetAppProfileLong("MDIForm", "Left", 70000), 70000);
    EXPECT_EQ(ini.MyGetAppProfileSingle("Miscellaneous", "TagFactor", 1.5f), 1.5f);
    EXPECT_TRUE(ini.MyGetAppProfileBoolean("Options", "AutoSave", true));
    EXPECT_FALSE(ini.MyGetAppProfileBoolean("Options", "AutoSave", false));
    EXPECT_TRUE(ini.MyGetAppProfileSection("Options").empty());
    EXPECT_FALSE(std::filesystem::exists(scratch / "QUENCH.ini")); // reading makes no file

    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "AutoSaveInterval", "10"));
    EXPECT_EQ(ini.MyGetAppProfileString("Options", "AutoSaveInterval", "5"), "10");
    EXPECT_EQ(ini.MyGetAppProfileString("Options", "Other", "x"), "x");
    EXPECT_EQ(ini.MyGetAppProfileString("Paths", "AutoSaveInterval", "x"), "x");
    EXPECT_EQ(FileText(scratch / "QUENCH.ini"), "[Options]\nAutoSaveInterval=10\n");
}

TEST(IniFileHandler, BooleanIsTrueOnlyForTheWordTrue) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    WriteText(ini.AppProfileFileName, "[Options]\n"
                                      "a=True   \n"
                                      "b=  tRUE\n"
                                      "c=TRUE\t\n"
                                      "d=1\n"
                                      "e=Yes\n"
                                      "f=\n"
                                      "g=Truely\n"
                                      "h=-1\n"
                                      "i=False\n");
    for (const char* key : {"a", "b", "c"}) {
        EXPECT_TRUE(ini.MyGetAppProfileBoolean("Options", key, false)) << key;
    }
    for (const char* key : {"d", "e", "f", "g", "h", "i"}) {
        EXPECT_FALSE(ini.MyGetAppProfileBoolean("Options", key, true)) << key;
    }
    ASSERT_TRUE(ini.MyWriteAppProfileBoolean("Options", "j", true));
    ASSERT_TRUE(ini.MyWriteAppProfileBoolean("Options", "k", false));
    EXPECT_EQ(ini.MyGetAppProfileString("Options", "j", ""), "True");
    EXPECT_EQ(ini.MyGetAppProfileString("Options", "k", ""), "False");
}

TEST(IniFileHandler, NamesCompareWithoutCaseAndKeepTheirSpelling) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    WriteText(ini.AppProfileFileName, "[options]\nAUTOSAVE=False\nautosave=True\n");
    // The first of two equal names wins, as in Windows profiles.
    EXPECT_FALSE(ini.MyGetAppProfileBoolean("Options", "AutoSave", true));
    ASSERT_TRUE(ini.MyWriteAppProfileBoolean("OPTIONS", "AutoSave", true));
    EXPECT_EQ(FileText(ini.AppProfileFileName), "[options]\nAUTOSAVE=True\nautosave=True\n");
}

TEST(IniFileHandler, NumbersReadWithTheirDefault) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    WriteText(ini.AppProfileFileName, "[N]\n"
                                      "whole= 12 \n"
                                      "half=12.5\n"
                                      "odd=13.5\n"
                                      "negative=-7\n"
                                      "text=abc\n"
                                      "trailing=12abc\n"
                                      "big=99999\n"
                                      "huge=3000000000\n"
                                      "real=1.5e3\n"
                                      "empty=\n");
    EXPECT_EQ(ini.MyGetAppProfileInteger("N", "whole", 0), 12);
    EXPECT_EQ(ini.MyGetAppProfileInteger("N", "half", 0), 12); // half to even
    EXPECT_EQ(ini.MyGetAppProfileInteger("N", "odd", 0), 14);
    EXPECT_EQ(ini.MyGetAppProfileInteger("N", "negative", 0), -7);
    EXPECT_EQ(ini.MyGetAppProfileInteger("N", "text", 5), 5);
    EXPECT_EQ(ini.MyGetAppProfileInteger("N", "trailing", 5), 5);
    EXPECT_EQ(ini.MyGetAppProfileInteger("N", "empty", 5), 5);
    EXPECT_EQ(ini.MyGetAppProfileInteger("N", "big", 5), 5); // beyond an Integer
    EXPECT_EQ(ini.MyGetAppProfileLong("N", "big", 5), 99999);
    EXPECT_EQ(ini.MyGetAppProfileLong("N", "huge", 5), 5);
    EXPECT_EQ(ini.MyGetAppProfileSingle("N", "real", 0), 1500.0f);
    EXPECT_EQ(ini.MyGetAppProfileSingle("N", "text", 2.5f), 2.5f);

    // The older module functions read a text that is no number as 0.
    EXPECT_EQ(ProfileNumber(ini.AppProfileFileName, "N", "text", "5"), 0);
    EXPECT_EQ(ProfileNumber(ini.AppProfileFileName, "N", "real", "5"), 1500);
    EXPECT_EQ(ProfileNumber(ini.AppProfileFileName, "N", "missing", "5"), 5);
    EXPECT_EQ(ProfileNumber(ini.AppProfileFileName, "N", "missing", "x"), 0);
    ASSERT_TRUE(WriteProfileString(ini.AppProfileFileName, "Paths", "ProjectPath", "/p"));
    EXPECT_EQ(ProfileString(ini.AppProfileFileName, "Paths", "ProjectPath", ""), "/p");
}

TEST(IniFileHandler, RewriteKeepsCommentsForeignLinesAndOrder) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    const std::string original = "; written by hand\r\n"
                                 "stray line before any section\r\n"
                                 "[Options]\r\n"
                                 "# a comment\r\n"
                                 "AutoSave=True\r\n"
                                 "\r\n"
                                 "[Foreign]\r\n"
                                 "Key = Value with = sign\r\n"
                                 "not a key line\r\n";
    WriteText(ini.AppProfileFileName, original);
    EXPECT_EQ(ini.MyGetAppProfileString("Foreign", "Key", ""), "Value with = sign");

    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "AutoSaveInterval", "7"));
    ASSERT_TRUE(ini.MyWriteAppProfileString("Units", "Metric", "True"));
    EXPECT_EQ(FileText(ini.AppProfileFileName), "; written by hand\n"
                                                "stray line before any section\n"
                                                "[Options]\n"
                                                "# a comment\n"
                                                "AutoSave=True\n"
                                                "AutoSaveInterval=7\n"
                                                "\n"
                                                "[Foreign]\n"
                                                "Key = Value with = sign\n"
                                                "not a key line\n"
                                                "\n"
                                                "[Units]\n"
                                                "Metric=True\n");
    // Nothing but the file itself is left in the directory.
    int files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(scratch.Path())) {
        ++files;
    }
    EXPECT_EQ(files, 1);
}

TEST(IniFileHandler, ValuesComeBackAsWritten) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    for (const std::string value : {"  padded  ", "\"quoted\"", "'single'", "a;b#c=d", "", "x\ty",
                                    "C:\\Projects\\Job 12", "Größe ²"}) {
        ASSERT_TRUE(ini.MyWriteAppProfileString("Values", "Key", value));
        EXPECT_EQ(ini.MyGetAppProfileString("Values", "Key", "default"), value);
    }
    // A line break cannot stand in a line: it becomes a blank, and the file keeps its shape.
    ASSERT_TRUE(ini.MyWriteAppProfileString("Values", "Key", "two\nlines"));
    EXPECT_EQ(ini.MyGetAppProfileString("Values", "Key", ""), "two lines");
    EXPECT_EQ(ini.MyGetAppProfileString("Values", "lines", "none"), "none");

    // Names that the format cannot hold are refused and change nothing.
    const std::string before = FileText(ini.AppProfileFileName);
    EXPECT_FALSE(ini.MyWriteAppProfileString("Values", "a=b", "1"));
    EXPECT_FALSE(ini.MyWriteAppProfileString("Values", "", "1"));
    EXPECT_FALSE(ini.MyWriteAppProfileString("Values", ";comment", "1"));
    EXPECT_FALSE(ini.MyWriteAppProfileString("Val]ues", "Key", "1"));
    EXPECT_FALSE(ini.MyWriteAppProfileString("Values", "new\nline", "1"));
    EXPECT_FALSE(ini.MyWriteAppProfileString(" Values", "Key", "1"));
    EXPECT_EQ(FileText(ini.AppProfileFileName), before);
}

TEST(IniFileHandler, DeletesKeysAndSections) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    WriteText(ini.AppProfileFileName, "[RecentFiles]\nFile0=a.qnw\nFile1=b.qnw\n; keep\n"
                                      "[Options]\nAutoSave=True\n"
                                      "[recentfiles]\nFile9=z.qnw\n");
    ASSERT_TRUE(ini.MyDeleteAppProfileItem("RecentFiles", "file0"));
    EXPECT_EQ(ini.MyGetAppProfileString("RecentFiles", "File0", "gone"), "gone");
    EXPECT_EQ(ini.MyGetAppProfileString("RecentFiles", "File1", ""), "b.qnw");

    // Removing what is not there is no failure and leaves the file alone.
    const auto stamp = std::filesystem::last_write_time(ini.AppProfileFileName);
    EXPECT_TRUE(ini.MyDeleteAppProfileItem("RecentFiles", "File7"));
    EXPECT_TRUE(ini.MyDeleteAppProfileItem("Nowhere", "File7"));
    EXPECT_TRUE(ini.MyDeleteAppProfileSection("Nowhere"));
    EXPECT_EQ(std::filesystem::last_write_time(ini.AppProfileFileName), stamp);

    ASSERT_TRUE(ini.MyDeleteAppProfileSection("RECENTFILES"));
    EXPECT_EQ(FileText(ini.AppProfileFileName), "[Options]\nAutoSave=True\n");
}

TEST(IniFileHandler, SectionWideOperations) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");
    WriteText(ini.AppProfileFileName, "[ReportOptions]\n; layout\nchkTitlePage=1\nCHKTITLEPAGE=0\n"
                                      "BodyFont=Arial\n\n[Units]\nMetric=False\n");
    const auto section = ini.MyGetAppProfileSection("reportoptions");
    ASSERT_EQ(section.size(), 2u);
    EXPECT_EQ(section.at("chkTitlePage"), "1");
    EXPECT_EQ(section.at("BodyFont"), "Arial");

    ASSERT_TRUE(ini.MyWriteAppProfileSection("ReportOptions",
                                             {{"chkDate", "1"}, {"txtLineSpacing", "120"}}));
    EXPECT_EQ(FileText(ini.AppProfileFileName), "[ReportOptions]\nchkDate=1\ntxtLineSpacing=120\n"
                                                "; layout\n\n[Units]\nMetric=False\n");
    ASSERT_TRUE(ini.MyWriteAppProfileSection("Colors", {{"ShowDefaultColors", "True"}}));
    EXPECT_TRUE(ini.MyGetAppProfileBoolean("Colors", "ShowDefaultColors", false));
    EXPECT_FALSE(ini.MyWriteAppProfileSection("Colors", {{"bad=key", "1"}}));
    EXPECT_TRUE(ini.MyGetAppProfileBoolean("Colors", "ShowDefaultColors", false));
}

TEST(IniFileHandler, DamagedFilesAreReadAsFarAsTheyMakeSense) {
    ScratchDirectory scratch;
    const IniFileHandler ini(scratch / "QUENCH.ini");

    std::string junk;
    for (int i = 0; i < 20000; ++i) {
        const char c = static_cast<char>((i * 7919) % 256);
        junk += c == '\r' ? 'r' : c; // a carriage return before a line end is not kept
    }
    const std::string longLine(2'000'000, 'x');
    const std::string text = junk + "\n[Options]\nAutoSaveInterval=9\n" + longLine + "=long\n" +
                             std::string("nul\0inside=1\n", 13) + "[" + longLine + "\n" +
                             "[Paths]\nProjectPath=/home/p\n[unclosed\nkey=value\n";
    WriteText(ini.AppProfileFileName, text);
    EXPECT_EQ(ini.MyGetAppProfileInteger("Options", "AutoSaveInterval", 5), 9);
    EXPECT_EQ(ini.MyGetAppProfileString("Options", longLine, ""), "long");
    // "[unclosed" is not a header: its key line still belongs to "Paths".
    EXPECT_EQ(ini.MyGetAppProfileString("Paths", "key", ""), "value");
    EXPECT_EQ(ini.MyGetAppProfileString("Paths", "ProjectPath", ""), "/home/p");
    EXPECT_EQ(ini.MyGetAppProfileInteger("Missing", "AutoSaveInterval", 5), 5);

    ASSERT_TRUE(ini.MyWriteAppProfileString("Options", "AutoSave", "False"));
    const std::string rewritten = FileText(ini.AppProfileFileName);
    EXPECT_NE(rewritten.find(junk.substr(0, 200)), std::string::npos);
    EXPECT_NE(rewritten.find(longLine + "=long"), std::string::npos);
    EXPECT_EQ(ini.MyGetAppProfileInteger("Options", "AutoSaveInterval", 5), 9);

    // Keys before any section belong to none.
    WriteText(ini.AppProfileFileName, "AutoSave=False\nMetric=True\n");
    EXPECT_TRUE(ini.MyGetAppProfileBoolean("Options", "AutoSave", true));
    EXPECT_FALSE(ini.MyGetAppProfileBoolean("Units", "Metric", false));
}

TEST(IniFileHandler, AFileThatCannotBeWrittenIsLeftAsItWas) {
    ScratchDirectory scratch;
    WriteText(scratch / "plain", "not a directory");
    // The parent is a file: nothing can be made there.
    const IniFileHandler blocked(scratch / "plain" / "QUENCH.ini");
    EXPECT_FALSE(blocked.MyWriteAppProfileString("Options", "AutoSave", "True"));
    EXPECT_EQ(blocked.MyGetAppProfileString("Options", "AutoSave", "d"), "d");

    // A name that is a directory is no profile: reads give defaults, writes fail.
    std::filesystem::create_directory(scratch / "QUENCH.ini");
    const IniFileHandler directory(scratch / "QUENCH.ini");
    EXPECT_EQ(directory.MyGetAppProfileString("Options", "AutoSave", "d"), "d");
    EXPECT_FALSE(directory.MyWriteAppProfileString("Options", "AutoSave", "True"));
    EXPECT_TRUE(std::filesystem::is_directory(scratch / "QUENCH.ini"));

    const IniFileHandler unnamed;
    EXPECT_EQ(unnamed.MyGetAppProfileString("Options", "AutoSave", "d"), "d");
    EXPECT_FALSE(unnamed.MyWriteAppProfileString("Options", "AutoSave", "True"));
}

} // namespace
} // namespace quench
