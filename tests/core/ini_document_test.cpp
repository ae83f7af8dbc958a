#include "core/ini_document.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(IniDocument, TextComesBackLineForLine) {
    const std::string text = "; top\n[A]\nx=1\n\n  [ B ]  \n y = two words \n[]\n=no name\n";
    const IniDocument document = IniDocument::Parse(text);
    EXPECT_EQ(document.Text(), text);
    EXPECT_EQ(document.Value("b", "Y"), "two words");
    EXPECT_TRUE(document.HasSection("A"));
    EXPECT_FALSE(document.HasSection("C"));
    EXPECT_FALSE(document.Value("A", "y").has_value());
    EXPECT_EQ(IniDocument::Parse("").Text(), "");
    EXPECT_EQ(IniDocument::Parse("no end of line").Text(), "no end of line\n");
}

TEST(IniDocument, NewKeysFollowTheLastKeyOfTheirSection) {
    IniDocument document = IniDocument::Parse("[A]\nx=1\n; about B\n\n[B]\n");
    ASSERT_TRUE(document.SetValue("A", "y", "2"));
    ASSERT_TRUE(document.SetValue("B", "z", "3"));
    ASSERT_TRUE(document.SetValue("C", "w", "4"));
    EXPECT_EQ(document.Text(), "[A]\nx=1\ny=2\n; about B\n\n[B]\nz=3\n\n[C]\nw=4\n");

    const auto entries = document.SectionEntries("a");
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0], (std::pair<std::string, std::string>{"x", "1"}));
    EXPECT_EQ(entries[1], (std::pair<std::string, std::string>{"y", "2"}));
}

TEST(IniDocument, NamesTheFormatCannotHoldAreRefused) {
    for (const char* good : {"Options", "Double-clicking in Explorer", "Program Folders"}) {
        EXPECT_TRUE(IniDocument::IsValidSectionName(good)) << good;
        EXPECT_TRUE(IniDocument::IsValidKeyName(good)) << good;
    }
    for (const char* bad : {"", " lead", "trail ", "a\nb", "a\rb"}) {
        EXPECT_FALSE(IniDocument::IsValidSectionName(bad)) << bad;
        EXPECT_FALSE(IniDocument::IsValidKeyName(bad)) << bad;
    }
    EXPECT_FALSE(IniDocument::IsValidSectionName("a]b"));
    EXPECT_TRUE(IniDocument::IsValidKeyName("a]b"));
    for (const char* bad : {"a=b", "[a", ";a", "#a"}) {
        EXPECT_FALSE(IniDocument::IsValidKeyName(bad)) << bad;
    }
}

} // namespace
} // namespace quench
